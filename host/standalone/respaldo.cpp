#include "host/standalone/respaldo.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <regex>
#include <system_error>
#include <thread>
#include <utility>

#include "host/standalone/errores.h"
#include "host/standalone/integridad.h"
#include "host/standalone/manija.h"
#include "host/standalone/motivo_archivo.h"
#include "host/standalone/parametros.h"
#include "host/standalone/sentencia.h"
#include "host/standalone/sumas.h"
#include "platform/com/variant.h"

namespace autonomo {
namespace {

namespace fs = std::filesystem;

// Pages between two looks at whether to go on.
constexpr int kPaginasPorPaso = 256;
// What a copy that takes its time waits between them: a megabyte each few milliseconds at most.
constexpr auto kPausa = std::chrono::milliseconds(5);
// A copy that was cut short leaves its unfinished file; one of this age is nobody's any more.
constexpr auto kAbandonada = std::chrono::hours(24);

[[noreturn]] void Rechaza(int numero, const std::string& texto) { throw com::Error(numero, texto); }

[[noreturn]] void RechazaArchivo(const std::string& ruta, int errnoSistema) {
  Rechaza(CategoriaSqlite(SQLITE_CANTOPEN, errnoSistema),
          "No se puede escribir " + ruta + ": " + MotivoDeArchivo(errnoSistema));
}

// --- one copy

// Gives what was made beside the hotel the hotel's owner and group, as far as this account may, and these rights; the
// group has none when it is another one.
void Comparte(const std::string& ruta, const struct stat& hotel, mode_t modo) {
  const bool suya = chown(ruta.c_str(), hotel.st_uid, hotel.st_gid) == 0 ||
                    chown(ruta.c_str(), static_cast<uid_t>(-1), hotel.st_gid) == 0;
  chmod(ruta.c_str(), suya ? modo : modo & ~mode_t{S_ISGID | S_IRWXG});  // a disk without rights has its own
}

// From the root on; as it was given when the folder that this program was started in is gone.
fs::path Absoluta(const std::string& ruta) {
  std::error_code ec;
  const fs::path absoluta = fs::absolute(ruta, ec);
  return ec ? fs::path(ruta) : absoluta;
}

// A file of the copy's own, readable by its owner alone until it is whole, that goes unless it got its name.
class Inacabada {
 public:
  explicit Inacabada(const std::string& copia) : ruta_(copia + ".XXXXXX") {
    const int archivo = mkstemp(ruta_.data());
    if (archivo < 0) RechazaArchivo(copia, errno);
    close(archivo);
  }
  ~Inacabada() {
    for (const char* cola : {"", "-journal", "-wal", "-shm"}) unlink((ruta_ + cola).c_str());
  }
  Inacabada(const Inacabada&) = delete;
  Inacabada& operator=(const Inacabada&) = delete;

  const std::string& ruta() const { return ruta_; }

  // hotel: whose accounts may use it; without it, its owner alone.
  void Nombra(const std::string& copia, bool sustituye, const std::optional<struct stat>& hotel) {
    if (hotel) Comparte(ruta_, *hotel, hotel->st_mode & 0777U);
    if (sustituye) OlvidaSumas(copia);
    // Two that end at once do not take each other's name.
    const unsigned modo = sustituye ? 0 : RENAME_NOREPLACE;
    if (renameat2(AT_FDCWD, ruta_.c_str(), AT_FDCWD, copia.c_str(), modo) != 0) {
      if (errno == EEXIST) RechazaExistente(copia);
      RechazaArchivo(copia, errno);
    }
    // The name is to outlive a power cut as the pages do.
    const int carpeta = open(fs::path(copia).parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (carpeta < 0) return;
    fsync(carpeta);
    close(carpeta);
  }

  [[noreturn]] static void RechazaExistente(const std::string& copia) {
    Rechaza(com::error::kArgumento, "Ya existe " + copia +
                                        ": dé otro nombre, o --sustituye para que la nueva quede en "
                                        "su lugar");
  }

 private:
  std::string ruta_;
};

// A transaction that only reads: what it sees stays as it is, whatever others write.
class Instantanea {
 public:
  explicit Instantanea(sqlite3* base) : base_(base) {
    Corre(base_, "BEGIN");
    Entero(base_, "SELECT COUNT(*) FROM sqlite_master");
  }
  ~Instantanea() { sqlite3_exec(base_, "ROLLBACK", nullptr, nullptr, nullptr); }
  Instantanea(const Instantanea&) = delete;
  Instantanea& operator=(const Instantanea&) = delete;

 private:
  sqlite3* base_;
};

void ExigeSeguir(const OpcionesRespaldo& opciones) {
  if (opciones.termina != nullptr && *opciones.termina) {
    Rechaza(com::error::kBaseDatos, "La copia de respaldo se interrumpió al cerrar el programa");
  }
}

void CopiaPaginas(sqlite3* de, sqlite3* a, const OpcionesRespaldo& opciones) {
  const std::unique_ptr<sqlite3_backup, decltype(&sqlite3_backup_finish)> copia(
      sqlite3_backup_init(a, "main", de, "main"), sqlite3_backup_finish);
  if (copia == nullptr) throw ErrorSqlite(a, sqlite3_errcode(a), {});
  int rc = SQLITE_OK;
  while (rc == SQLITE_OK) {
    ExigeSeguir(opciones);
    if (opciones.despacio) std::this_thread::sleep_for(kPausa);
    rc = sqlite3_backup_step(copia.get(), kPaginasPorPaso);
  }
  if (rc != SQLITE_DONE) throw ErrorSqlite(a, rc, {});
}

// Rows of each table, in the order of their names.
std::vector<std::pair<std::string, std::int64_t>> Cuenta(sqlite3* base) {
  constexpr std::string_view kTablas =
      "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite[_]%' ORDER BY name";
  std::vector<std::pair<std::string, std::int64_t>> cuenta;
  const auto tablas = Sentencia(base, kTablas, {}, kTablas).Corre(kTablas);
  for (; !tablas->Eof(); tablas->MoveNext()) {
    const std::string tabla = com::CStr(tablas->Fields(0).Value());
    cuenta.emplace_back(tabla, Entero(base, "SELECT COUNT(*) FROM \"" + tabla + '"'));
  }
  return cuenta;
}

// siNo: what is told of a copy that is damaged.
void ExigeSana(sqlite3* base, const char* siNo) {
  const std::string dano = RevisaPaginas(base);
  if (!dano.empty()) throw com::Error(com::error::kDanada, siNo, dano);
}

Respaldo Resume(const std::vector<std::pair<std::string, std::int64_t>>& cuenta) {
  Respaldo r;
  for (const auto& [tabla, filas] : cuenta) {
    r.filas += filas;
    if (tabla == "Reservacion") r.reservaciones = filas;
  }
  return r;
}

// The hotel, open for reading.
Manija AbreHotel(const std::string& hotel) {
  struct stat datos {};
  if (stat(hotel.c_str(), &datos) != 0) Rechaza(com::error::kBaseDatos, "No existe " + hotel);
  if (S_ISREG(datos.st_mode) && datos.st_size == 0) Rechaza(com::error::kDanada, "El archivo está vacío (0 bytes)");
  RevisaBitacora(hotel);
  Manija base = AbreManija(hotel, SQLITE_OPEN_READONLY);
  if (!EsHotel(base.get())) Rechaza(com::error::kAjena, "El archivo no es una base de datos de reservaciones");
  ExigeBitacora(base.get());
  const Instantanea instantanea(base.get());
  if (const std::string dano = Sumas::Lee(base.get()).Dano(base.get()); !dano.empty()) {
    throw com::Error(com::error::kDanada, "El archivo está dañado: no es el que se dejó al cerrarlo", dano);
  }
  return base;
}

// Fills the unfinished file with a checked copy.
Respaldo Llena(const Manija& de, const std::string& archivo, const OpcionesRespaldo& opciones, const char* siNo) {
  const Manija a = AbreManija(archivo, SQLITE_OPEN_READWRITE);
  if (opciones.termina != nullptr) {
    TerminaCon(de.get(), *opciones.termina);
    TerminaCon(a.get(), *opciones.termina);
  }
  const Instantanea instantanea(de.get());
  CopiaPaginas(de.get(), a.get(), opciones);
  // One file without a log, and known for a copy.
  Corre(a.get(), "PRAGMA journal_mode=DELETE");
  Corre(a.get(), "PRAGMA application_id=" + std::to_string(kMarcaCopia));
  ExigeSana(a.get(), siNo);
  const auto cuenta = Cuenta(a.get());
  if (cuenta != Cuenta(de.get())) {
    Rechaza(com::error::kBaseDatos, "La copia de respaldo no tiene los mismos renglones que el hotel");
  }
  return Resume(cuenta);
}

// --- the folder

struct Cuidado {
  std::string carpeta;
  int dias = 0;
};

// Reads them without the services: the hotel may be damaged, or in use by another thread.
Cuidado LeeCuidado(const std::string& hotel) {
  const auto valor = [&](const anfitrion::Parametro& parametro) {
    std::string v(parametro.defecto);
    try {
      const Manija base = AbreManija(hotel, SQLITE_OPEN_READONLY);
      const std::string sql = "SELECT Pm_Valor FROM Parametro WHERE Pm_Clave = '" + std::string(parametro.clave) + "'";
      const auto filas = Sentencia(base.get(), sql, {}, sql).Corre(sql);
      if (!filas->Eof() && !filas->Fields(0).Value().EsNulo()) v = com::Recorta(com::CStr(filas->Fields(0).Value()));
    } catch (const com::Error&) {  // the default holds
    }
    return v;
  };
  Cuidado c;
  const std::string dias = valor(anfitrion::parametro::kRespaldoDias);
  std::from_chars(dias.data(), dias.data() + dias.size(), c.dias);
  c.carpeta =
      (Absoluta(hotel).parent_path() / valor(anfitrion::parametro::kRespaldoCarpeta)).lexically_normal().string();
  return c;
}

// Names in the folder, after the hotel's own: a day's copy, any copy, one that is not finished.
constexpr char kDelDia[] = R"(-\d{4}-\d{2}-\d{2}\.db)";
constexpr char kCualquiera[] = R"(-\d{4}-\d{2}-\d{2}(_\d{6})?\.db)";
constexpr char kInacabada[] = R"(-\d{4}-\d{2}-\d{2}(_\d{6})?\.db\.[A-Za-z0-9]{6}(-journal|-wal|-shm)?)";

// "hotel" of "/srv/hotel.db".
std::string Tronco(const std::string& hotel) { return fs::path(hotel).stem().string(); }

// The newest first: their names hold the moment. One that a desk ahead of its time named goes last: nobody can tell
// what is newer than it.
std::vector<std::string> Archivos(const std::string& carpeta, const std::string& hotel, const char* patron) {
  const std::string tronco = Tronco(hotel);
  const std::regex resto(patron);
  std::vector<std::string> rutas;
  std::error_code ec;
  // Its ++ would raise where a folder cannot be read to its end.
  for (fs::directory_iterator archivo(carpeta, ec); !ec && archivo != fs::directory_iterator(); archivo.increment(ec)) {
    const std::string nombre = archivo->path().filename().string();
    if (nombre.starts_with(tronco) && std::regex_match(nombre.substr(tronco.size()), resto)) {
      rutas.push_back(archivo->path().string());
    }
  }
  const std::string hoy = (fs::path(carpeta) / (tronco + "-" + Momento())).string();
  std::ranges::sort(rutas, std::greater<>(), [&](const std::string& ruta) { return std::pair(ruta <= hoy, ruta); });
  return rutas;
}

// Those who may write the hotel's file and in its folder may write in the folder of its copies, whatever the account
// that makes it; nobody else.
void CreaCarpeta(const fs::path& carpeta, const std::string& hotel) {
  struct stat datos {
  }, archivo{}, padre{};
  if (carpeta.empty() || stat(carpeta.c_str(), &datos) == 0) return;
  CreaCarpeta(carpeta.parent_path(), hotel);
  if (mkdir(carpeta.c_str(), 0700) != 0) {
    if (errno == EEXIST) return;  // another desk was first
    RechazaArchivo(carpeta.string(), errno);
  }
  if (stat(hotel.c_str(), &archivo) != 0 || stat((Absoluta(hotel).parent_path() / ".").c_str(), &padre) != 0) return;
  const mode_t entra = (archivo.st_mode & 0444U) >> 2U;  // who may read it may enter
  Comparte(carpeta.string(), archivo, padre.st_mode & (S_ISGID | S_IRWXU | (archivo.st_mode & 0066U) | entra));
}

// Days are counted by the copies that are there, not by the calendar: a hotel that was closed for a month, or a desk
// whose clock is off, loses none of them; nor the one that it just made.
void Depura(const std::string& carpeta, const std::string& hotel, int dias, const std::string& recien) {
  const auto delDia = Archivos(carpeta, hotel, kDelDia);
  std::error_code ec;
  for (auto i = static_cast<std::size_t>(dias); i < delDia.size(); ++i) {
    if (delDia[i] == recien) continue;
    for (const char* cola : {"", "-suma"}) fs::remove(delDia[i] + cola, ec);
  }
  for (const std::string& ruta : Archivos(carpeta, hotel, kInacabada)) {
    const auto escrita = fs::last_write_time(ruta, ec);
    if (!ec && fs::file_time_type::clock::now() - escrita > kAbandonada) fs::remove(ruta, ec);
  }
}

std::string NombreDeCopia(const std::string& hotel, std::string_view momento) {
  return (fs::path(LeeCuidado(hotel).carpeta) / (Tronco(hotel) + '-' + std::string(momento) + ".db")).string();
}

bool EsBuena(const std::string& copia) {
  try {
    return RevisaPaginas(AbreHotel(copia).get()).empty();
  } catch (const com::Error&) {
    return false;
  }
}

// --- putting back

// While it is held no program has the file open nor can open it: it covers the engine's own lock bytes. A file that is
// not there needs none.
class Cerrojo {
 public:
  explicit Cerrojo(const std::string& ruta) : archivo_(open(ruta.c_str(), O_RDWR | O_CLOEXEC)) {
    if (archivo_ < 0 && errno == ENOENT) return;
    if (archivo_ < 0) RechazaArchivo(ruta, errno);
    struct flock cerrojo {};
    cerrojo.l_type = F_WRLCK;
    cerrojo.l_whence = SEEK_SET;
    cerrojo.l_start = 0x40000000;
    cerrojo.l_len = 512;
    if (fcntl(archivo_, F_SETLK, &cerrojo) == 0) return;
    close(archivo_);
    Rechaza(com::error::kOcupada, "Otro programa tiene abierto " + ruta + ": ciérrelo en todos los escritorios");
  }
  ~Cerrojo() {
    if (archivo_ >= 0) close(archivo_);
  }
  Cerrojo(const Cerrojo&) = delete;
  Cerrojo& operator=(const Cerrojo&) = delete;

  // Owner, group and rights of the file, when there is one.
  std::optional<struct stat> Datos() const {
    struct stat datos {};
    if (archivo_ < 0 || fstat(archivo_, &datos) != 0) return std::nullopt;
    return datos;
  }

 private:
  int archivo_;
};

// Moves the hotel's file and its log to a name of their own.
std::vector<std::string> Aparta(const std::string& hotel) {
  const std::string nuevo = hotel + ".apartado-" + Momento();
  std::vector<std::string> apartados;
  for (const char* cola : {"", "-wal", "-journal", "-suma"}) {
    if (rename((hotel + cola).c_str(), (nuevo + cola).c_str()) == 0) {
      apartados.push_back(nuevo + cola);
    } else if (errno != ENOENT) {
      RechazaArchivo(hotel + cola, errno);
    }
  }
  unlink((hotel + "-shm").c_str());  // says nothing once nobody is there
  return apartados;
}

// The way back stands in the error of a damaged hotel.
template <class Accion>
auto ConLaVuelta(const std::string& hotel, Accion accion) {
  try {
    return accion();
  } catch (const com::Error& e) {
    if (e.Numero() != com::error::kDanada) throw;
    throw com::Error(e.Numero(), e.Descripcion() + ComoVolver(hotel), e.Sentencia());
  }
}

}  // namespace

std::string Momento() {
  std::string momento = com::AIso(Reloj().Ahora());
  momento.resize(19, '0');
  momento[10] = '_';
  std::erase(momento, ':');
  return momento;
}

Respaldo Respalda(const std::string& hotel, const std::string& copia, const OpcionesRespaldo& opciones) {
  const std::string destino = Absoluta(copia).string();
  std::error_code ec;
  if (fs::equivalent(hotel, destino, ec)) Rechaza(com::error::kArgumento, "La copia no puede ser el mismo archivo");
  if (!opciones.sustituye && fs::exists(destino, ec)) Inacabada::RechazaExistente(copia);
  const std::optional<Cerrojo> cerrojo =
      opciones.sustituye ? std::make_optional<Cerrojo>(destino) : std::optional<Cerrojo>();
  return ConLaVuelta(hotel, [&] {
    const Manija de = AbreHotel(hotel);
    Inacabada archivo(destino);
    Respaldo r = Llena(de, archivo.ruta(), opciones, "El hotel está dañado: no se hizo la copia");
    struct stat datos {};
    if (stat(hotel.c_str(), &datos) != 0) RechazaArchivo(hotel, errno);
    archivo.Nombra(destino, opciones.sustituye, datos);
    GuardaSumas(AbreManija(destino, SQLITE_OPEN_READONLY).get());
    r.ruta = copia;
    return r;
  });
}

Respaldo RespaldaEnSuCarpeta(const std::string& hotel, std::string_view momento, const OpcionesRespaldo& opciones) {
  ConLaVuelta(hotel, [&] { return AbreHotel(hotel); });  // no folder for what is no hotel
  CreaCarpeta(CarpetaDeCopias(hotel), hotel);
  return Respalda(hotel, NombreDeCopia(hotel, momento), opciones);
}

std::string CarpetaDeCopias(const std::string& hotel) { return LeeCuidado(hotel).carpeta; }

std::vector<std::string> Copias(const std::string& hotel) {
  return Archivos(CarpetaDeCopias(hotel), hotel, kCualquiera);
}

std::optional<std::string> UltimaBuena(const std::string& hotel) {
  for (const std::string& copia : Copias(hotel)) {
    if (EsBuena(copia)) return copia;
  }
  return std::nullopt;
}

std::string ComoVolver(const std::string& hotel) {
  const auto copia = UltimaBuena(hotel);
  if (!copia) {
    return ". No hay copias de respaldo buenas en " + CarpetaDeCopias(hotel) +
           "; si tiene una en otra parte, escriba en una terminal: reservas-base repone '" + hotel + "' COPIA";
  }
  return ". La última copia buena es " + *copia +
         ". Para ponerla en su lugar, cierre el programa en todos los escritorios y escriba en una terminal: "
         "reservas-base repone '" +
         hotel + "'";
}

std::optional<Respaldo> RespaldaDia(const std::string& hotel, std::string_view dia, const OpcionesRespaldo& opciones) {
  const Cuidado cuidado = LeeCuidado(hotel);
  std::error_code ec;
  if (cuidado.dias < 1 || fs::exists(NombreDeCopia(hotel, dia), ec)) return std::nullopt;
  try {
    Respaldo r = RespaldaEnSuCarpeta(hotel, dia, opciones);
    Depura(cuidado.carpeta, hotel, cuidado.dias, r.ruta);
    return r;
  } catch (const com::Error& e) {
    if (e.Numero() == com::error::kArgumento) return std::nullopt;  // another desk was first
    throw;
  }
}

Repuesto Repone(const std::string& hotel, const std::string& copia) {
  const std::string destino = Absoluta(hotel).string();
  std::error_code ec;
  if (fs::equivalent(copia, destino, ec)) Rechaza(com::error::kArgumento, "La copia no puede ser el mismo archivo");
  const Manija de = AbreHotel(copia);
  const Cerrojo cerrojo(destino);
  Inacabada archivo(destino);
  Repuesto r{Llena(de, archivo.ruta(), {}, "La copia está dañada: el hotel queda como estaba"), {}};
  r.respaldo.ruta = copia;
  r.apartados = Aparta(destino);
  archivo.Nombra(destino, false, cerrojo.Datos());
  return r;
}

}  // namespace autonomo
