// Why a night of the availability board is not free, and what is free instead. Reads when it is asked, beside the
// board's own load: it tells what holds now, also where the board was loaded before somebody else's change.
#pragma once

#include <string>
#include <vector>

#include "platform/controls/formulario.h"

namespace recepcion {

struct Explicacion {
  std::string titulo;  // "0201 Doble / Vista, 09/03/2026: no está libre"; "" where there is nothing to say
  std::vector<std::string> quienes;  // who holds it: reservations, stays and blocks
  std::string alternativa;           // "En su lugar: 0202 (Doble), libre toda la estancia"; "" for nothing free
};

// Of the cell at that row and column of the board's grid. A free room, a marked one and the columns before the nights
// need no words. What the reservation that is edited holds counts as free, as on the board. Database failures raise
// com::Error.
[[nodiscard]] Explicacion PorQue(const controles::Formulario& tablero, int fila, int columna);
// A line for each part; "" for nothing.
[[nodiscard]] std::string EnLineas(const Explicacion& explicacion);

}  // namespace recepcion
