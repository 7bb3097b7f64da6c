#include "host/standalone/version.h"

#include <sqlite3.h>

#include "schema/esquema.h"

namespace autonomo {

std::string TextoVersion(std::string_view programa, std::string_view base) {
  return std::string(programa) + " " KV207_VERSION "\nMotor: SQLite " + sqlite3_libversion() +
         "\nVersión del esquema: " + std::to_string(esquema::kVersion) + "\nBase de datos: " + std::string(base) + '\n';
}

}  // namespace autonomo
