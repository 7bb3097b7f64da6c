#include "host/standalone/errores.h"

#include <sqlite3.h>

#include <array>
#include <cerrno>

#include "host/standalone/registro.h"

namespace autonomo {
namespace {

using namespace com::error;

bool EsDiscoLleno(int errnoSistema) {
  return errnoSistema == ENOSPC || errnoSistema == EDQUOT || errnoSistema == EFBIG;
}

bool EsSoloLectura(int errnoSistema) {
  return errnoSistema == EACCES || errnoSistema == EPERM || errnoSistema == EROFS;
}

// The engine's English texts that a tester or an administrator meets, by their beginning.
struct Traduccion {
  std::string_view ingles, espanol;
};
constexpr std::array kTraducciones{
    Traduccion{"no such table: ", "No existe la tabla "},
    Traduccion{"no such column: ", "No existe la columna "},
    Traduccion{"ambiguous column name: ", "Columna ambigua: "},
    Traduccion{"UNIQUE constraint failed: ", "Ya existe un registro con la misma clave: "},
    Traduccion{"unable to open database file", "No se pudo abrir el archivo de la base de datos"},
    Traduccion{"NOT NULL constraint failed: ", "Falta un valor obligatorio: "},
};

std::string Traduce(std::string_view mensaje, const std::string& sino) {
  for (const auto& t : kTraducciones)
    if (mensaje.starts_with(t.ingles)) return std::string(t.espanol).append(mensaje.substr(t.ingles.size()));
  return sino;
}

}  // namespace

int CategoriaSqlite(int codigo, int errnoSistema) {
  switch (codigo & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
      return kOcupada;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return kSoloLectura;
    case SQLITE_FULL:
      return kLlena;
    case SQLITE_CORRUPT:
      return kDanada;
    case SQLITE_NOTADB:
    case SQLITE_FORMAT:
      return kAjena;
    case SQLITE_CONSTRAINT:
      return kRestriccion;
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
      if (EsDiscoLleno(errnoSistema)) return kLlena;
      if (EsSoloLectura(errnoSistema)) return kSoloLectura;
      return kBaseDatos;
    default:
      return kBaseDatos;
  }
}

std::string DescribeSqlite(int codigo, int errnoSistema, std::string_view mensaje) {
  switch (CategoriaSqlite(codigo, errnoSistema)) {
    case kOcupada:
      return "La base de datos está ocupada por otro programa";
    case kSoloLectura:
      return "La base de datos es de solo lectura";
    case kLlena:
      return "No hay espacio en el disco para la base de datos";
    case kDanada:
      return "La base de datos está dañada";
    case kAjena:
      return "El archivo no es una base de datos de reservaciones o está dañado";
    case kRestriccion:
      return Traduce(mensaje, std::string(mensaje));
    default:
      return Traduce(mensaje, "La base de datos no pudo ejecutar la sentencia: «" + std::string(mensaje) + "»");
  }
}

com::Error ErrorSqlite(sqlite3* base, int codigo, std::string_view sentencia) {
  const int extendido = base != nullptr ? sqlite3_extended_errcode(base) : codigo;
  const int completo = (extendido & 0xFF) == (codigo & 0xFF) ? extendido : codigo;
  const int errnoSistema = base != nullptr ? sqlite3_system_errno(base) : 0;
  const std::string_view mensaje = base != nullptr ? sqlite3_errmsg(base) : sqlite3_errstr(codigo);
  // Of a byte of the file's head that no version of the engine writes.
  const int dice = mensaje == "unsupported file format" ? SQLITE_CORRUPT : completo;
  registro::AnotaMotor(std::to_string(completo) + ", errno " + std::to_string(errnoSistema));
  return {CategoriaSqlite(dice, errnoSistema), DescribeSqlite(dice, errnoSistema, mensaje), std::string(sentencia)};
}

}  // namespace autonomo
