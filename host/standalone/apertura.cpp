#include "host/standalone/apertura.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlError>
#include <QTemporaryFile>
#include <QVariant>
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <memory>
#include <thread>
#include <utility>

#include "host/standalone/colaciones.h"
#include "host/standalone/errores.h"
#include "host/standalone/integridad.h"
#include "host/standalone/manija.h"
#include "host/standalone/respaldo.h"
#include "host/standalone/sentencia.h"
#include "host/standalone/sumas.h"
#include "schema/esquema.h"

namespace autonomo {
namespace {

[[noreturn]] void RechazaAjena(const std::string& porQue) {
  throw com::Error(com::error::kAjena, "El archivo no es una base de datos de reservaciones" + porQue);
}

[[noreturn]] void RechazaVacio() {
  throw com::Error(com::error::kDanada,
                   "El archivo está vacío (0 bytes). Si aquí estaba el hotel, se perdió; si no, bórrelo para crear uno "
                   "nuevo");
}

[[noreturn]] void RechazaPerdido() {
  throw com::Error(
      com::error::kDanada,
      "El archivo del hotel no está, pero hay copias de respaldo. Si quiere un hotel nuevo, use otro nombre");
}

[[noreturn]] void RechazaAusente() {
  throw com::Error(com::error::kBaseDatos, "No existe el archivo del hotel: no está aquí, o lo movieron o borraron");
}

[[noreturn]] void RechazaSoloLectura() {
  throw com::Error(com::error::kSoloLectura, DescribeSqlite(SQLITE_READONLY, 0, {}));
}

bool EstaVacia(sqlite3* base) {
  return Entero(base, "PRAGMA application_id") == 0 && Entero(base, "PRAGMA user_version") == 0 &&
         Entero(base, "SELECT COUNT(*) FROM sqlite_master") == 0;
}

// Creates the schema in an empty database, whole or not at all. Of two programs that meet here the second finds it
// done.
void CreaEsquema(sqlite3* base) {
  Corre(base, "BEGIN IMMEDIATE");
  try {
    if (EstaVacia(base)) {
      for (const auto& sentencia : esquema::Ddl(esquema::Motor::Sqlite)) Corre(base, sentencia);
      Corre(base, "PRAGMA application_id=" + std::to_string(kMarca));
      Corre(base, "PRAGMA user_version=" + std::to_string(esquema::kVersion));
    }
    Corre(base, "COMMIT");
  } catch (const com::Error&) {
    if (sqlite3_get_autocommit(base) == 0) sqlite3_exec(base, "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }
}

// --- creation of the file

struct LiberaImagen {
  void operator()(unsigned char* imagen) const { sqlite3_free(imagen); }
};

// Bytes of a database file with the empty schema.
QByteArray ImagenVacia() {
  const Manija base = AbreManija(kEnMemoria, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  CreaEsquema(base.get());
  sqlite3_int64 largo = 0;
  const std::unique_ptr<unsigned char, LiberaImagen> imagen(sqlite3_serialize(base.get(), "main", &largo, 0));
  if (imagen == nullptr) throw com::Error(com::error::kBaseDatos, "No hay memoria para crear la base de datos");
  QByteArray bytes(reinterpret_cast<const char*>(imagen.get()), static_cast<qsizetype>(largo));
  // Write and read version of the file format: 2 is the write-ahead log, so that no program has to switch to it later.
  bytes[18] = bytes[19] = 2;
  return bytes;
}

[[noreturn]] void FallaCreacion(int errnoSistema) {
  const int categoria = CategoriaSqlite(SQLITE_CANTOPEN, errnoSistema);
  if (categoria != com::error::kBaseDatos)
    throw com::Error(categoria, DescribeSqlite(SQLITE_CANTOPEN, errnoSistema, {}));
  throw com::Error(categoria, "No se pudo crear el archivo de la base de datos");
}

// The file appears under its name only when it is complete. When another program creates it at the same moment, that
// one stays. Only the owner may read it: it holds card data.
void CreaArchivo(const QString& ruta) {
  const QByteArray imagen = ImagenVacia();
  QTemporaryFile archivo(ruta + ".XXXXXX");
  if (!archivo.open()) FallaCreacion(errno);
  const bool escrito = archivo.write(imagen) == imagen.size() && archivo.flush();
  if (!escrito) FallaCreacion(errno);
  if (archivo.rename(ruta)) {
    archivo.setAutoRemove(false);
  } else if (!QFileInfo::exists(ruta)) {
    FallaCreacion(errno);
  }
}

// --- opening

sqlite3* ManijaDe(const QSqlDatabase& base) {
  const QVariant v = base.driver()->handle();
  return qstrcmp(v.typeName(), "sqlite3*") == 0 ? *static_cast<sqlite3* const*>(v.constData()) : nullptr;
}

void RevisaDuenio(sqlite3* base, bool crea) {
  if (EstaVacia(base)) {
    if (!crea) RechazaAjena(": no tiene nada");
    return CreaEsquema(base);
  }
  if (!EsHotel(base)) RechazaAjena("");
  if (Entero(base, "PRAGMA user_version") <= esquema::kVersion) return;
  throw com::Error(com::error::kBaseDatos,
                   "El archivo no es una base de datos de reservaciones de esta versión: lo creó una más nueva");
}

// The log's mode is kept in the file. A file that was closed whole has to be switched to it, which needs it for itself
// for a moment: programs that open it at once take turns.
void PasaABitacora(sqlite3* base, int esperaMs) {
  using std::chrono::steady_clock;
  const auto limite = steady_clock::now() + std::chrono::milliseconds(esperaMs);
  for (int ms = 1;; ms = std::min(ms * 2, 50)) {
    const int rc = sqlite3_exec(base, "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
    if (rc == SQLITE_OK) return;
    if ((rc & 0xFF) != SQLITE_BUSY || steady_clock::now() > limite) throw ErrorSqlite(base, rc, "PRAGMA journal_mode");
    std::this_thread::sleep_for(std::chrono::milliseconds(ms + static_cast<int>(getpid() % 7)));
  }
}

// Inode of the write-ahead log's file; 0 when there is none.
std::uint64_t InodoBitacora(sqlite3* base) {
  const char* ruta = sqlite3_db_filename(base, "main");
  struct stat datos {};
  if (ruta == nullptr || *ruta == '\0' || stat(sqlite3_filename_wal(ruta), &datos) != 0) return 0;
  return datos.st_ino;
}

// Whether the engine leaves the log where it is when the last program closes the file.
void ConservaBitacora(sqlite3* base, bool conserva) {
  int valor = conserva ? 1 : 0;
  sqlite3_file_control(base, "main", SQLITE_FCNTL_PERSIST_WAL, &valor);
}

// Whether the log of the file stays out of it when the last program closes it: nothing is written to a refused file.
void DejaComoEsta(sqlite3* base, bool deja) {
  sqlite3_db_config(base, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, deja ? 1 : 0, nullptr);
}

// Before the engine touches it: a hotel that is new, or one that is there whole.
void ExigeArchivo(const QString& ruta, bool crea) {
  if (!QFileInfo::exists(ruta)) {
    if (!Copias(ruta.toStdString()).empty()) RechazaPerdido();
    if (!crea) RechazaAusente();
    CreaArchivo(ruta);
  }
  if (QFileInfo(ruta).size() == 0) RechazaVacio();
  // Before the engine leaves its side files beside one that it cannot write.
  if (!QFileInfo(ruta).isWritable()) RechazaSoloLectura();
  RevisaBitacora(ruta.toStdString());
}

// Damage, or another file where the hotel was.
bool Remediable(const std::string& ruta, const com::Error& e) {
  return e.Numero() == com::error::kDanada || (e.Numero() == com::error::kAjena && !Copias(ruta).empty());
}

}  // namespace

BaseSqlite::BaseSqlite(const OpcionesConexion& opciones) {
  const std::string& ruta = opciones.ruta;
  static std::atomic<int> cuenta{0};
  nombre_ = QStringLiteral("autonomo-%1").arg(++cuenta);
  QString absoluta = QString::fromStdString(ruta);
  if (ruta.empty()) throw com::Error(com::error::kBaseDatos, "Falta la ruta de la base de datos");
  if (ruta != kEnMemoria) {
    absoluta = QFileInfo(absoluta).absoluteFilePath();
    if (QFileInfo(absoluta).isDir()) RechazaAjena(": es una carpeta");
  }
  try {
    if (ruta != kEnMemoria) ExigeArchivo(absoluta, opciones.crea);
    Abre(absoluta, opciones.esperaMs);
    Prepara(absoluta.toStdString(), opciones);
  } catch (const com::Error& e) {
    Cierra();
    if (ruta == kEnMemoria || !Remediable(absoluta.toStdString(), e)) throw;
    throw com::Error(e.Numero(), e.Descripcion() + ComoVolver(absoluta.toStdString()), e.Sentencia());
  }
}

BaseSqlite::~BaseSqlite() { Cierra(); }

void BaseSqlite::Abre(const QString& ruta, int esperaMs) {
  base_ = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), nombre_);
  if (!base_.isValid())
    throw com::Error(com::error::kBaseDatos, "No se pudo cargar el controlador de la base de datos");
  base_.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(esperaMs));
  base_.setDatabaseName(ruta);
  if (!base_.open()) {
    throw ErrorSqlite(nullptr, base_.lastError().nativeErrorCode().toInt(), {});
  }
  manija_ = ManijaDe(base_);
  if (manija_ == nullptr)
    throw com::Error(com::error::kBaseDatos, "El controlador de la base de datos no es el de SQLite");
}

void BaseSqlite::Prepara(const std::string& ruta, const OpcionesConexion& opciones) {
  RegistraColaciones(manija_);
  DejaComoEsta(manija_, true);
  RevisaDuenio(manija_, opciones.crea);
  if (sqlite3_db_readonly(manija_, "main") == 1) RechazaSoloLectura();
  ExigeBitacora(manija_);
  ExigeTablas(manija_);
  paginas_ = std::make_unique<RevisionDePaginas>(manija_, ruta, ComoVolver);
  DejaComoEsta(manija_, false);
  PasaABitacora(manija_, opciones.esperaMs);
  Corre(manija_, "PRAGMA synchronous=FULL");
  // KiB. What a board or an availability check of a hotel with years behind it reads stays in memory.
  Corre(manija_, "PRAGMA cache_size=-16000");
  // An earlier program cannot open what this one has brought forward.
  if (ruta != kEnMemoria && Entero(manija_, "PRAGMA user_version") < esquema::kVersion) {
    RespaldaEnSuCarpeta(ruta, Momento(), {});
  }
  avisos_ = Completa(manija_);
  if (ruta == kEnMemoria) return;
  Marca(manija_, opciones.esperaMs);
  paginas_->Sigue();
  ConservaBitacora(manija_, true);
  bitacora_ = InodoBitacora(manija_);
}

std::vector<std::string> BaseSqlite::TomaAvisos() {
  if (paginas_ != nullptr && !dijoDano_) {
    try {
      paginas_->Exige();
    } catch (const com::Error& e) {
      dijoDano_ = true;
      avisos_.push_back(e.Descripcion());
    }
  }
  return std::exchange(avisos_, {});
}

bool BaseSqlite::EnSuLugar() const {
  int movido = 0;
  sqlite3_file_control(manija_, "main", SQLITE_FCNTL_HAS_MOVED, &movido);
  return movido == 0 && InodoBitacora(manija_) == bitacora_;
}

void BaseSqlite::RevisaArchivos() const {
  if (paginas_ != nullptr) paginas_->Exige();
  if (EnSuLugar()) return;
  throw com::Error(com::error::kBaseDatos,
                   "Alguien movió, borró o cambió el archivo de la base de datos mientras se usaba. No se guardó nada: "
                   "devuélvalo a su lugar, o cierre el programa y ábralo otra vez");
}

// A lock on a byte far behind the end of the file, one for each work. Its descriptor stays open: closing it would drop
// the engine's own locks on the file.
bool BaseSqlite::TomaTurno(const std::string& trabajo) const {
  constexpr std::int64_t kLejos = std::int64_t{1} << 60;
  if (bitacora_ == 0) return true;
  const int archivo = open(sqlite3_db_filename(manija_, "main"), O_RDWR | O_CLOEXEC);
  struct flock turno {};
  turno.l_type = F_WRLCK;
  turno.l_whence = SEEK_SET;
  turno.l_start = kLejos + static_cast<std::int64_t>(qHash(QByteArray::fromStdString(trabajo), 0) & 0xFFFFFFFFU);
  turno.l_len = 1;
  return archivo >= 0 && fcntl(archivo, F_OFD_SETLK, &turno) == 0;
}

// The last program to leave makes the file whole again; while others are there the engine refuses. Without its file in
// its place nothing is touched: the log there may be another's. Nor is a file that anybody found damaged; one of which
// nobody knows gets no checksums.
void BaseSqlite::DejaEntera() {
  if (manija_ == nullptr || bitacora_ == 0 || !EnSuLugar()) return;
  paginas_->Termina();
  if (paginas_->Danada() || AnotadaDanada(manija_)) return DejaComoEsta(manija_, true);
  sqlite3_busy_timeout(manija_, 0);
  ConservaBitacora(manija_, false);
  if (sqlite3_exec(manija_, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr) == SQLITE_OK) {
    QuitaMarcas(manija_);
    if (paginas_->Entera()) GuardaSumas(manija_);
  } else {
    ConservaBitacora(manija_, true);
  }
}

void BaseSqlite::Cierra() {
  DejaEntera();
  paginas_.reset();
  manija_ = nullptr;
  base_.close();
  base_ = {};
  QSqlDatabase::removeDatabase(nombre_);
}

}  // namespace autonomo
