// How the room lines of one reservation must lie in its stay and follow one another.
#pragma once

#include <vector>

#include "platform/com/fecha.h"

namespace kv207 {

// Nights of a room line: from inicio up to the day before fin.
struct PeriodoRenglon {
  com::Fecha inicio, fin;
};

enum class FallaPeriodos { Ninguna, InicioFueraDelPeriodo, FinFueraDelPeriodo, NoCorrelativas };

// First fault, line by line: a start before the arrival, an end after the departure, then a line that starts neither on
// the arrival nor clear of its neighbour: the next or the previous one starts no later and ends after its start.
// llegada and salida count as days; the lines' dates are days.
[[nodiscard]] FallaPeriodos RevisaPeriodos(com::Fecha llegada, com::Fecha salida,
                                           const std::vector<PeriodoRenglon>& renglones);

}  // namespace kv207
