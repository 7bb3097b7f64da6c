// From marked nights to room lines.
#pragma once

#include <vector>

#include "availability/frmDisponibilidad.h"

namespace kv207 {

// Nights of a board row that are marked without a gap; both counted from 0, both included.
struct Racha {
  int primera = 0;
  int ultima = 0;
  bool operator==(const Racha&) const = default;
};

// Every run of marked nights of one board row, in order. noches: the row's states by night.
std::vector<Racha> RachasMarcadas(const std::vector<EstadoCelda>& noches);

}  // namespace kv207
