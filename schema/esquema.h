// The one definition of the hotel's database: tables, columns, keys, indexes, state codes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/contract/estados.h"

namespace esquema {

// What a column holds. Texts compare case-blind with trailing blanks ignored; dates have a day and maybe a time.
enum class Tipo { Clave, Texto, Nota, Entero, Numero, Dinero, Factor, Fecha, FechaHora };

// Longest Clave and Texto, in characters; a Nota has no limit.
inline constexpr std::size_t kLargoClave = 20, kLargoTexto = 200;

struct Columna {
  std::string_view nombre;
  Tipo tipo;
};

struct Tabla {
  std::string_view nombre;
  std::vector<Columna> columnas;
  std::vector<std::string_view> llave;                 // primary key columns; empty when rows have none
  std::vector<std::vector<std::string_view>> indices;  // columns of each further index
};

// Tables that the screens use, then those of the stand-alone host.
const std::vector<Tabla>& Tablas();
// Case-blind; null when there is none.
const Tabla* BuscaTabla(std::string_view nombre);
// Type of a column by its name alone (names carry their table's prefix); null when no table has it.
const Columna* BuscaColumna(std::string_view nombre);

// State codes (Es_Cve_Estado).
using anfitrion::estado::kActiva, anfitrion::estado::kConfirmada, anfitrion::estado::kCancelada,
    anfitrion::estado::kCerrada, anfitrion::estado::kAplicada, anfitrion::estado::kBaja;

// Dialects of the data definition.
enum class Motor { Sqlite, PostgreSQL, SqlServer };
// The engine's one of the three.
template <class T>
const T& DelMotor(Motor motor, const T& sqlite, const T& postgres, const T& sqlServer) {
  switch (motor) {
    case Motor::PostgreSQL:
      return postgres;
    case Motor::SqlServer:
      return sqlServer;
    case Motor::Sqlite:
      break;
  }
  return sqlite;
}
// Statements that create tables, indexes and guards, in order. Columns but keys have neutral defaults ('' and 0; dates
// NULL; states 'AC').
std::vector<std::string> Ddl(Motor motor);

// What the definition consists of, in the order of creation.
struct Objeto {
  // A Funcion's statement also replaces what an earlier version had.
  enum class Clase { Tabla, Indice, Guarda, Funcion, Otro };
  Clase clase;
  std::string nombre;
  std::string sql;
};
std::vector<Objeto> Objetos(Motor motor);
// Statement that adds a column to a table of an earlier version.
std::string AgregaColumna(Motor motor, const Tabla& tabla, const Columna& columna);
// Statement after which numbers that the engine assigns go on behind those that are there; "" where they do by
// themselves.
std::string ContinuaIdentidad(Motor motor, const Tabla& tabla);

// A column whose values, but for "", are keys of another table.
struct Referencia {
  std::string_view tabla, columna, otra, llave;
};
const std::vector<Referencia>& Referencias();
// Version of the definition, kept in the database. An earlier database gets what it lacks when it is opened.
inline constexpr int kVersion = 8;

// Statements (plain inserts with literals, SQL Server text) that fill an empty database with the demo hotel around the
// given day, "AAAA-MM-DD".
std::vector<std::string> HotelDemo(std::string_view hoy);

}  // namespace esquema
