#include "host/standalone/version.h"

#include <libpq-fe.h>
#include <sqlite3.h>

#include "host/standalone/postgres.h"
#include "schema/esquema.h"

namespace autonomo {

std::string TextoVersion(std::string_view programa, std::string_view base) {
  if (EsDireccion(base)) RevisaDireccion(std::string(base));
  const int libpq = PQlibVersion();
  const std::string motor = EsDireccion(base) ? "PostgreSQL (libpq " + std::to_string(libpq / 10000) + "." +
                                                    std::to_string(libpq % 10000) + ")"
                                              : std::string("SQLite ") + sqlite3_libversion();
  return std::string(programa) + " " KV207_VERSION "\nMotor: " + motor +
         "\nVersión del esquema: " + std::to_string(esquema::kVersion) + "\nBase de datos: " + std::string(base) + '\n';
}

}  // namespace autonomo
