// The day's report, one page: who arrives, leaves, sleeps here and did not come, what is sold tonight and in the seven
// nights after it, the month's figures and the next one's, and their pace against the year before. The figures mean
// what recepcion/cifras.h says, the lists what recepcion/hoy.h says.
#pragma once

#include <string>
#include <vector>

#include "recepcion/cifras.h"
#include "recepcion/hoy.h"
#include "recepcion/lectura.h"

namespace recepcion {

inline constexpr int kNochesDelParte = 8;

struct Parte {
  std::string hotel, moneda;
  com::Fecha momento;            // of what moment it tells
  com::Fecha hecho;              // when it was made, where that was on a later day; none otherwise
  Dia dia;                       // its lists
  std::vector<CuentaDe> noches;  // tonight and seven more
  CuentaDe mes, siguiente;       // the whole month and the next one
};

// As things stand now, whatever the moment. com::Error for database failures.
[[nodiscard]] Parte LeeParte(const Fuente& fuente, com::Fecha momento, std::string hotel, std::string moneda);

// "Parte del 09/03/2026 · Hotel Bahía".
[[nodiscard]] std::string TituloDe(const Parte& parte);
// As lines of text, and as a page.
[[nodiscard]] std::string TextoDe(const Parte& parte);
[[nodiscard]] std::string HtmlDe(const Parte& parte);

}  // namespace recepcion
