// From the engine's native codes to the system's error numbers, with descriptions for the clerk.
#pragma once

#include <string>
#include <string_view>

#include "platform/com/error.h"

struct sqlite3;

namespace autonomo {

// com::error number of a SQLite result code, primary or extended. errnoSistema: the operating system's code behind an
// input/output failure, 0 when unknown.
int CategoriaSqlite(int codigo, int errnoSistema);

// Description in Spanish. mensaje: the engine's own text; a refusal by rechaza() is given back as it stands.
std::string DescribeSqlite(int codigo, int errnoSistema, std::string_view mensaje);

// The error of the last call that failed on the connection, with its code.
com::Error ErrorSqlite(sqlite3* base, int codigo, std::string_view sentencia);

}  // namespace autonomo
