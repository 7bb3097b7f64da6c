// A list as a table of typed cells: what a window shows of it, and what a spreadsheet is given.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/com/variant.h"

namespace listado {

// PorCiento: parts of one. Momento: a date with its time.
enum class Clase { Texto, Entero, Importe, PorCiento, Fecha, Momento };

struct Columna {
  std::string titulo;
  Clase clase = Clase::Texto;
};

struct Listado {
  std::string titulo;   // "Llegadas"
  std::string detalle;  // of when or of what: "Lunes 9 de marzo de 2026"; "" nothing more to say
  std::vector<Columna> columnas;
  // A value for each column; empty or NULL for a cell with nothing in it, a text ("Total") in any of them.
  std::vector<std::vector<com::Variant>> filas;
};

// Whether the class's texts stand at the right.
bool ALaDerecha(Clase clase);
// A cell as it is read: "$1,234.50", "45.2 %", "09/03/2026".
std::string Texto(Clase clase, const com::Variant& valor);

// How a spreadsheet expects its text. Which of the two it opens into columns hangs on the country that its system is
// set to.
struct FormatoCsv {
  char separador = ',';
  char decimal = '.';
};
inline constexpr FormatoCsv kConComas{',', '.'};       // Mexico, Central America
inline constexpr FormatoCsv kConPuntoYComa{';', ','};  // Spain, most of South America

// The list as a CSV text: UTF-8 with its mark, a line of captions, lines that end in CR and LF. Dates are written
// AAAA-MM-DD, which every spreadsheet reads as a date whatever its country; amounts with two decimals and without
// grouping; parts of one per cent, with one decimal, under a caption that says "%". A text that a spreadsheet would run
// as a formula (it begins with "=", "+", "-", "@" or a control character) gets an apostrophe before it.
std::string Csv(const Listado& lista, FormatoCsv formato);

}  // namespace listado
