#include "host/standalone/integridad.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <set>

#include "host/standalone/colaciones.h"
#include "host/standalone/errores.h"
#include "host/standalone/manija.h"
#include "host/standalone/sentencia.h"
#include "host/standalone/sumas.h"
#include "platform/com/variant.h"
#include "schema/esquema.h"

namespace autonomo {
namespace {

// Files up to this size are checked while the program opens them: some 20 ms.
constexpr std::uintmax_t kBytesAlAbrir = 8U << 20U;

[[noreturn]] void Rechaza(const std::string& texto, const std::string& detalle = {}) {
  throw com::Error(com::error::kDanada, texto, detalle);
}

[[noreturn]] void RechazaDanada(const std::string& detalle = {}, const std::string& remedio = {}) {
  Rechaza("La base de datos está dañada. No se trabaja en ella para no empeorarla" + remedio, detalle);
}

// --- the write-ahead log, as the engine lays it out

constexpr std::size_t kCabeceraBitacora = 32, kCabeceraCuadro = 24;

std::uint32_t Grande(const unsigned char* p) {
  return std::uint32_t{p[0]} << 24U | std::uint32_t{p[1]} << 16U | std::uint32_t{p[2]} << 8U | p[3];
}
std::uint32_t Chico(const unsigned char* p) {
  return std::uint32_t{p[3]} << 24U | std::uint32_t{p[2]} << 16U | std::uint32_t{p[1]} << 8U | p[0];
}

using Suma = std::array<std::uint32_t, 2>;

void Acumula(Suma& suma, bool grande, const unsigned char* p, std::size_t bytes) {
  const auto lee = grande ? Grande : Chico;
  for (std::size_t i = 0; i + 8 <= bytes; i += 8) {
    suma[0] += lee(p + i) + suma[1];
    suma[1] += lee(p + i + 4) + suma[0];
  }
}

bool EsSuma(const Suma& suma, const unsigned char* p) { return suma[0] == Grande(p) && suma[1] == Grande(p + 4); }

std::vector<unsigned char> LeeArchivo(const std::string& ruta) {
  std::ifstream archivo(ruta, std::ios::binary);
  return {std::istreambuf_iterator<char>(archivo), {}};
}

// What one look at a log gives.
struct Mirada {
  std::vector<unsigned char> cabecera;
  std::size_t lugar = 0;  // of the first unreadable frame
  int confirmadas = 0;    // transactions behind it

  // A transaction that a power cut tore leaves one at most, and only when its last frame reached the disk before
  // another one.
  bool Danada() const { return confirmadas > 1; }
};

Mirada MiraBitacora(const std::vector<unsigned char>& log) {
  if (log.size() <= kCabeceraBitacora) return {};
  Mirada m{{log.begin(), log.begin() + kCabeceraBitacora}};
  const unsigned char* cabecera = log.data();
  const std::uint32_t firma = Grande(cabecera);
  const std::size_t pagina = Grande(cabecera + 8);
  const bool grande = (firma & 1U) != 0;
  Suma suma{};
  Acumula(suma, grande, cabecera, 24);
  if ((firma & ~1U) != 0x377F0682 || pagina < 512 || !EsSuma(suma, cabecera + 24)) {
    m.confirmadas = 2;
    return m;
  }
  const std::size_t cuadro = kCabeceraCuadro + pagina;
  bool sana = true;
  for (std::size_t i = kCabeceraBitacora; i + cuadro <= log.size(); i += cuadro) {
    const unsigned char* p = log.data() + i;
    const bool deEsta = std::memcmp(p + 8, cabecera + 16, 8) == 0;
    if (sana) {
      Acumula(suma, grande, p, 8);
      Acumula(suma, grande, p + kCabeceraCuadro, pagina);
      sana = deEsta && EsSuma(suma, p + 16);
      if (sana) continue;
      m.lugar = i;
    }
    if (deEsta && Grande(p + 4) != 0) ++m.confirmadas;
  }
  return m;
}

// --- marks

// Pages in the log at which it is brought into the file.
constexpr int kPaginasDeBitacora = 1000;

bool PoneMarca(sqlite3* base, std::int64_t marca) {
  const std::string sql = "PRAGMA application_id=" + std::to_string(marca);
  return sqlite3_exec(base, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

// After a commit, outside any transaction. Another program that writes at this moment does it next time.
int AlConfirmar(void* espera, sqlite3* base, const char*, int paginas) {
  if (paginas < kPaginasDeBitacora) return SQLITE_OK;
  sqlite3_wal_hook(base, nullptr, nullptr);
  sqlite3_busy_timeout(base, 0);
  if (PoneMarca(base, kMarcaEnUso)) {
    sqlite3_wal_checkpoint_v2(base, "main", SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    PoneMarca(base, kMarcaBitacora);
  }
  const auto ms = static_cast<int>(reinterpret_cast<std::intptr_t>(espera));
  sqlite3_busy_timeout(base, ms);
  sqlite3_wal_hook(base, AlConfirmar, espera);
  return SQLITE_OK;
}

// --- the definition

struct Existentes {
  std::map<std::string, std::string> sql;  // by name
  std::map<std::string, std::set<std::string>> columnas;
};

Existentes Lee(sqlite3* base) {
  Existentes e;
  constexpr std::string_view kObjetos = "SELECT name, sql FROM sqlite_master WHERE sql IS NOT NULL";
  const auto objetos = Sentencia(base, kObjetos, {}, kObjetos).Corre(kObjetos);
  for (; !objetos->Eof(); objetos->MoveNext()) {
    e.sql[com::CStr(objetos->Fields(0).Value())] = com::CStr(objetos->Fields(1).Value());
  }
  constexpr std::string_view kColumnas =
      "SELECT m.name, c.name FROM sqlite_master m, pragma_table_info(m.name) c WHERE m.type = 'table'";
  const auto columnas = Sentencia(base, kColumnas, {}, kColumnas).Corre(kColumnas);
  for (; !columnas->Eof(); columnas->MoveNext()) {
    e.columnas[com::CStr(columnas->Fields(0).Value())].insert(com::CStr(columnas->Fields(1).Value()));
  }
  return e;
}

// What is to be run, and what of it somebody took away.
struct Remedios {
  std::vector<std::string> sentencias;
  std::vector<std::string> guardas;  // names of those of the present version
};

// Objects that are not there, and guards that read otherwise.
Remedios BuscaObjetos(const Existentes& hay, bool vigente) {
  Remedios r;
  for (const esquema::Objeto& o : esquema::Objetos(esquema::Motor::Sqlite)) {
    const auto esta = hay.sql.find(o.nombre);
    if (o.clase == esquema::Objeto::Clase::Guarda) {
      if (esta != hay.sql.end() && esta->second == o.sql) continue;
      if (esta != hay.sql.end()) r.sentencias.push_back("DROP TRIGGER " + o.nombre);
      if (vigente) r.guardas.push_back(o.nombre);
    } else if (esta != hay.sql.end()) {
      continue;
    } else if (vigente && o.clase == esquema::Objeto::Clase::Tabla) {
      RechazaDanada("Falta la tabla " + o.nombre);
    }
    r.sentencias.push_back(o.sql);
  }
  return r;
}

// Columns that the tables lack.
std::vector<std::string> BuscaColumnas(const Existentes& hay, bool vigente) {
  std::vector<std::string> sentencias;
  for (const esquema::Tabla& tabla : esquema::Tablas()) {
    const auto existentes = hay.columnas.find(std::string(tabla.nombre));
    if (existentes == hay.columnas.end()) continue;
    for (const esquema::Columna& columna : tabla.columnas) {
      if (existentes->second.contains(std::string(columna.nombre))) continue;
      if (vigente) RechazaDanada("Falta la columna " + std::string(columna.nombre));
      sentencias.push_back(esquema::AgregaColumna(esquema::Motor::Sqlite, tabla, columna));
    }
  }
  return sentencias;
}

Remedios Busca(sqlite3* base, bool vigente) {
  const Existentes hay = Lee(base);
  Remedios r = BuscaObjetos(hay, vigente);
  const std::vector<std::string> columnas = BuscaColumnas(hay, vigente);
  r.sentencias.insert(r.sentencias.begin(), columnas.begin(), columnas.end());
  return r;
}

// Begins a transaction that sees the database as it is now.
void Mira(sqlite3* base) {
  Corre(base, "BEGIN");
  Entero(base, "SELECT COUNT(*) FROM sqlite_master");
}

}  // namespace

std::string FaltabanGuardas(const std::vector<std::string>& guardas) {
  std::string texto =
      "A la base de datos le faltaban guardas contra vender dos veces una habitación o contra perder el "
      "trabajo de otro (";
  for (const std::string& guarda : guardas) texto += (&guarda == &guardas.front() ? "" : ", ") + guarda;
  return texto + "). ";
}

std::string GuardasPuestas(const std::vector<std::string>& guardas) {
  return FaltabanGuardas(guardas) + "Ya están puestas otra vez; averigüe qué programa las quitó.";
}

const std::string_view kNochesDobles =
    "SELECT DISTINCT una.Hb_Cve_Habitacion, una.Rs_Folio, otra.Rs_Folio FROM Reservacion_Detalle una "
    "INNER JOIN Reservacion_Detalle otra ON otra.Hb_Cve_Habitacion = una.Hb_Cve_Habitacion "
    "AND otra.Rsd_Fecha_Fin > una.Rsd_Fecha_Inicio AND otra.Rsd_Fecha_Inicio < una.Rsd_Fecha_Fin "
    "AND otra.Rs_Folio > una.Rs_Folio "
    "INNER JOIN Reservacion r ON r.Rs_Folio = una.Rs_Folio AND r.Es_Cve_Estado NOT IN ('CA', 'CE') "
    "INNER JOIN Reservacion s ON s.Rs_Folio = otra.Rs_Folio AND s.Es_Cve_Estado NOT IN ('CA', 'CE') LIMIT 10";

std::string ListaNochesDobles(ado::Recordset& filas) {
  std::string texto;
  for (; !filas.Eof(); filas.MoveNext()) {
    texto += "\r\n- Habitación " + com::CStr(filas.Fields(0).Value()) + ": reservaciones " +
             com::CStr(filas.Fields(1).Value()) + " y " + com::CStr(filas.Fields(2).Value());
  }
  return texto;
}

void RevisaBitacora(const std::string& ruta) {
  const Mirada una = MiraBitacora(LeeArchivo(ruta + "-wal"));
  if (!una.Danada()) return;
  // Another program may be writing it. A frame that was read too early is whole at the second look, since those behind
  // it were written later; a log that was begun anew has another head. Damage stays where it is.
  const Mirada otra = MiraBitacora(LeeArchivo(ruta + "-wal"));
  if (!otra.Danada() || otra.lugar != una.lugar || otra.cabecera != una.cabecera) return;
  if (MiraBitacora(LeeArchivo(ruta + "-wal")).cabecera != una.cabecera) return;
  Rechaza("La bitácora de la base de datos (" + ruta +
          "-wal) está dañada y guarda trabajo que ya se había aceptado. No se abre para no perderlo");
}

bool EsHotel(sqlite3* base) {
  const auto marca = Entero(base, "PRAGMA application_id");
  return marca >= kMarca && marca <= kMarcaCopia && Entero(base, "PRAGMA user_version") >= 1;
}

void Marca(sqlite3* base, int esperaMs) {
  const auto marca = Entero(base, "PRAGMA application_id");
  if (marca == kMarca || marca == kMarcaCopia) {
    Corre(base, "PRAGMA application_id=" + std::to_string(kMarcaEnUso));
    Corre(base, "PRAGMA wal_checkpoint(PASSIVE)");
  }
  if (marca != kMarcaBitacora) Corre(base, "PRAGMA application_id=" + std::to_string(kMarcaBitacora));
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the hook takes it for the number that it is
  sqlite3_wal_hook(base, AlConfirmar, reinterpret_cast<void*>(static_cast<std::intptr_t>(esperaMs)));
}

void QuitaMarcas(sqlite3* base) { PoneMarca(base, kMarca); }

void ExigeBitacora(sqlite3* base) {
  const char* ruta = sqlite3_db_filename(base, "main");
  if (ruta == nullptr || *ruta == '\0' || Entero(base, "PRAGMA application_id") != kMarcaEnUso) return;
  constexpr std::string_view kModo = "PRAGMA journal_mode";
  const auto modo = Sentencia(base, kModo, {}, kModo).Corre(kModo);
  if (com::CStr(modo->Fields(0).Value()) != "wal") return;
  const char* log = sqlite3_filename_wal(ruta);
  struct stat datos {};
  if (stat(log, &datos) == 0 && datos.st_size > 0) return;
  Rechaza("A la base de datos le falta su bitácora (" + std::string(log) +
          "), donde está lo último que se guardó: se borró, o el archivo se copió mientras estaba abierto. No se abre "
          "para no perder nada: devuélvala a su lugar si la encuentra");
}

void ExigeTablas(sqlite3* base) {
  if (Entero(base, "PRAGMA user_version") == esquema::kVersion) Busca(base, true);
}

std::vector<std::string> Completa(sqlite3* base) {
  const auto version = [&] { return Entero(base, "PRAGMA user_version"); };
  if (version() == esquema::kVersion && Busca(base, true).sentencias.empty()) return {};
  Corre(base, "BEGIN IMMEDIATE");
  try {
    const bool vigente = version() == esquema::kVersion;
    const Remedios remedios = Busca(base, vigente);
    for (const std::string& sentencia : remedios.sentencias) Corre(base, sentencia);
    if (!vigente) {
      Corre(base, "REINDEX ESPANOL");  // the first version ordered rare letters otherwise
      Corre(base, "PRAGMA user_version=" + std::to_string(esquema::kVersion));
      if (const std::string dano = RevisaPaginas(base); !dano.empty()) RechazaDanada(dano);
    }
    std::vector<std::string> avisos;
    if (!remedios.guardas.empty()) {
      const std::string dobles =
          ListaNochesDobles(*Sentencia(base, kNochesDobles, {}, kNochesDobles).Corre(kNochesDobles));
      avisos.push_back(GuardasPuestas(remedios.guardas) +
                       (dobles.empty() ? "" : " Estas habitaciones están en dos reservaciones a la vez:" + dobles));
    }
    Corre(base, "COMMIT");
    return avisos;
  } catch (const com::Error&) {
    if (sqlite3_get_autocommit(base) == 0) sqlite3_exec(base, "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }
}

std::string RevisaPaginas(sqlite3* base) {
  const bool anterior = Entero(base, "PRAGMA user_version") < esquema::kVersion;
  const std::string_view revisa = anterior ? "PRAGMA quick_check(1)" : "PRAGMA integrity_check(1)";
  try {
    const auto filas = Sentencia(base, revisa, {}, revisa).Corre(revisa);
    const std::string dice = filas->Eof() ? "ok" : com::CStr(filas->Fields(0).Value());
    return dice == "ok" ? std::string() : dice;
  } catch (const com::Error& e) {
    if (e.Numero() == com::error::kDanada) return e.Descripcion();  // it cannot even be walked through
    throw;
  }
}

RevisionDePaginas::RevisionDePaginas(sqlite3* base, std::string ruta, std::string (*remedio)(const std::string& ruta))
    : ruta_(std::move(ruta)), remedioDe_(remedio) {
  struct stat datos {};
  if (stat(ruta_.c_str(), &datos) != 0) return;  // in memory
  Mira(base);
  const Sumas sumas = Sumas::Lee(base);
  std::string dano = sumas.Dano(base);
  entera_ = sumas.Hay();
  if (dano.empty() && !entera_ && static_cast<std::uintmax_t>(datos.st_size) <= kBytesAlAbrir) {
    dano = RevisaPaginas(base);
    entera_ = dano.empty();
    if (!entera_) AnotaDano(base);
  }
  Corre(base, "COMMIT");
  if (!dano.empty()) RechazaDanada(dano);
}

void RevisionDePaginas::Sigue() {
  if (entera_) return;
  auto base = std::make_shared<Manija>(AbreManija(ruta_, SQLITE_OPEN_READONLY));
  Mira(base->get());
  hilo_ = std::thread([this, base] { Recorre(base->get()); });
}

void RevisionDePaginas::Termina() {
  termina_ = true;
  if (hilo_.joinable()) hilo_.join();
}

RevisionDePaginas::~RevisionDePaginas() { Termina(); }

void RevisionDePaginas::Recorre(sqlite3* base) {
  try {
    TerminaCon(base, termina_);
    entera_ = RevisaPaginas(base).empty();
    if (entera_) return;
  } catch (const std::exception&) {  // nothing is known, and no failure of this thread ends the clerk's program
    return;
  }
  try {
    AnotaDano(base);
    remedio_ = remedioDe_(ruta_);
  } catch (const std::exception&) {  // the damage is told without them
  }
  danada_ = true;
}

void RevisionDePaginas::Exige() const {
  if (danada_) RechazaDanada({}, remedio_);
}

}  // namespace autonomo
