// Where a statement writes card data.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "host/standalone/llave.h"
#include "host/standalone/plantillas.h"

namespace autonomo {

// The columns that hold numbers and codes, numbers first.
struct ColumnaDeTarjeta {
  std::string_view tabla, llave, columna;  // llave: its table's key
  Llave::Clase clase;
};
std::span<const ColumnaDeTarjeta> ColumnasDeTarjeta();

// What a column holds of a card; nothing for other columns. Case-blind.
std::optional<Llave::Clase> ClaseDeColumna(std::string_view columna);

struct ValorDeTarjeta {
  std::size_t valor = 0;  // which of the statement's values
  const ColumnaDeTarjeta* columna = nullptr;
  std::size_t fila = 0;              // which of an INSERT's rows
  std::optional<std::size_t> llave;  // which of the statement's values names its row, where one does
};
// The values that an INSERT or UPDATE writes into columns of numbers and codes. com::Error kSentencia when it writes
// something else there than a text or NULL: a number without quotes, an expression.
std::vector<ValorDeTarjeta> ValoresDeTarjeta(std::string_view sentencia, const Partida& partida);

// The one row of a table of cards that a SELECT or UPDATE of that table alone names by its key, in conditions that must
// all hold. Nothing where that is not certain: another table, OR, a subquery, a comment.
struct FilaNombrada {
  std::string_view tabla;
  std::size_t llave = 0;                // which of the statement's values
  bool numero = false, codigo = false;  // which of them a SELECT asks for
};
std::optional<FilaNombrada> FilaDe(const Partida& partida);

// Whether the statement is an UPDATE that cancels reservations.
bool CancelaReservacion(const Partida& partida);

}  // namespace autonomo
