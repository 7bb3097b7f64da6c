// Days as a clerk writes them in a search: "mañana", "próxima semana", "viernes", "12 al 15 mar", "12/03", "marzo".
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

struct TextoLeido {
  std::optional<Periodo> periodo;  // the first that stands in the text
  std::vector<std::string> resto;  // words beside it, plain
  std::vector<std::string> todas;  // all words, plain: a name may be a month's
};

// A week is Monday to Sunday; a weekend is Friday to Sunday, the nights that a hotel sells as such. A day without a
// year is the one that lies between 30 days ago and eleven months ahead; a weekday is the next one, today included.
TextoLeido LeeTexto(std::string_view texto, com::Fecha hoy, SinAcento sinAcento);

}  // namespace recepcion
