// Databases on the tests' own PostgreSQL server, whose folder the variable KV207_POSTGRES names (tests/postgres).
#pragma once

#include <ostream>
#include <string>

#include "schema/esquema.h"

namespace esquema {

// Names the engine in a test's name.
inline void PrintTo(Motor motor, std::ostream* os) { *os << (motor == Motor::Sqlite ? "SQLite" : "PostgreSQL"); }

}  // namespace esquema

namespace pruebas {

// Makes an empty database and gives its address. What stands behind the last "=" is the server's socket folder. Raises
// std::runtime_error when there is no server: a test that needs one fails without it.
std::string NuevaBasePostgres();
void QuitaBasePostgres(const std::string& direccion);

// Runs a statement on the database, past the system under test; the first value, "" without rows. Raises
// std::runtime_error with the server's message.
std::string EnPostgres(const std::string& direccion, const std::string& sentencia);

}  // namespace pruebas
