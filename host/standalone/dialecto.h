// What the engines spell differently: the functions that the screens' statements may call, and the rest in one record
// each.
#pragma once

#include <cstddef>
#include <string_view>

#include "schema/esquema.h"

namespace autonomo {

enum class Valor { Desconocido, Texto, Numero, Fecha, DelPrimero };

// Text that stands for the function's name and for its closing parenthesis.
struct Forma {
  std::string_view nombre;
  std::string_view cierre = ")";
};

struct Funcion {
  std::string_view nombre;
  std::size_t minimo, maximo;  // arguments
  Valor valor;
  Forma sqlite, postgres, sqlServer;  // empty name: as it stands
};

// Of an upper-case name; null for a function that is not translated.
const Funcion* BuscaFuncion(std::string_view nombre);

struct Dialecto {
  Forma Funcion::*forma;
  std::string_view ahora;         // the clock's value
  std::string_view concatena;     // text + text
  std::string_view like, noLike;  // case-blind, with sets
  bool limitaAlFinal;             // TOP n is LIMIT n at the end of the select
  bool omiteFromInto;             // DELETE without FROM and INSERT without INTO
  // Rows without an order of their own come in the order of their tables' keys, as the statement names the tables: so
  // they come from the embedded engine, and a clerk's lines and rooms stay where they were.
  bool ordenaPorLlaves;
  // Put after a function's value where it is compared: it has no column's collation.
  std::string_view comparaTexto, comparaFecha;
  // A table of rows of all years whose INNER JOIN keeps the written order. The embedded engine knows nothing of how
  // many rows a range of dates has: it would look up every stay that a room ever had, rather than those of the night.
  std::string_view juntaEnOrden;
};

const Dialecto& DialectoDe(esquema::Motor motor);

}  // namespace autonomo
