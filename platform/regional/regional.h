// Regional texts: short date, currency, number formats. Always from this object, never from the process locale.
#pragma once

#include <string>
#include <string_view>

#include "platform/com/fecha.h"
#include "platform/com/variant.h"

namespace regional {

struct Ajustes {
  std::string simboloMoneda = "$";
  char separadorMiles = ',';
  char separadorDecimal = '.';
  char separadorFecha = '/';
};

// Settings in force, es-MX unless the host changed them at start.
const Ajustes& Actual();
void Fija(Ajustes ajustes);

// "dd/mm/yyyy".
std::string FechaCorta(com::Fecha f);
// Default date text: FechaCorta, followed by " HH:MM:SS" when the time is not midnight.
std::string TextoFecha(com::Fecha f);
// "$1,234.50"; negative "-$1,234.50". decimales 0 to 9; halves go to the even neighbour.
std::string Moneda(double importe, int decimales = 2);
// Number formats of the grids: optional "$", "#,##0" or "#...0", "." with '0' (always) and '#' (when not zero) digits,
// trailing "%" multiplies by 100 ("$#,##0.0000#####", "#,##0.00#######", "#########0.00#######", "#,##0.00#######%").
// An empty format gives the shortest text of the number. A value that is no number is shown as text.
std::string ConFormato(const com::Variant& valor, std::string_view formato);
// Zero-fill mask: a text of digits only is padded with zeros to the mask's length ("0000": "12" -> "0012"); anything
// else, and texts longer than the mask, come back unchanged. An empty mask changes nothing.
std::string ConMascara(std::string_view texto, std::string_view mascara);

}  // namespace regional
