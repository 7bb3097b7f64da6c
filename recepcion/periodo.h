// Days as a clerk writes them in a search: "mañana", "próxima semana", "viernes", "sábado 14 de marzo", "12 al 15 mar",
// "hoy al domingo", "12/03", "marzo".
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/com/fecha.h"
#include "recepcion/plano.h"

namespace recepcion {

// Both days belong to it.
struct Periodo {
  com::Fecha desde, hasta;
  bool operator==(const Periodo&) const = default;
};

// A way to understand a text.
struct Lectura {
  std::optional<Periodo> periodo;     // the first days that stand in it
  std::vector<std::string> palabras;  // those beside it, plain
  bool operator==(const Lectura&) const = default;
};

// The ways to understand a text, the likeliest first; the last ones are without days, as a name may be a month's. A
// number alone behind a weekday ("viernes 14") may be a room too, and an apostrophe inside a word nothing.
//
// A week is Monday to Sunday; a weekend is Friday to Sunday, the nights that a hotel sells as such. A day without a
// year is the one that lies between 30 days ago and eleven months ahead; one without a month, and a weekday, are the
// next one, today included, both together the nearest one. In a range each day takes from the other what it lacks: the
// second follows the first.
[[nodiscard]] std::vector<Lectura> LeeTexto(std::string_view texto, com::Fecha hoy, SinAcento sinAcento);

// The first day in figures that stands in the text and is in no calendar ("31/02"), as it was written; "" none.
[[nodiscard]] std::string DiaInexistente(std::string_view texto);

}  // namespace recepcion
