// What the front desk types for the clerk in the screens: each step is a user's, so the screens' own rules hold.
#pragma once

#include <string>
#include <vector>

#include "platform/com/fecha.h"
#include "platform/controls/barra.h"
#include "platform/controls/formulario.h"

namespace recepcion {

// Types a folio in the reservation screen's field and confirms it. False while a capture or a disabled field does not
// let it.
bool TecleaFolio(controles::Formulario& principal, const std::string& folio);

// Dates of a New that has begun, as typed. False when the screen, which says why, does not take them.
bool TecleaEstancia(controles::Formulario& principal, com::Fecha llegada, com::Fecha salida);
// Nights of a room, from desde up to the one before hasta.
struct Tramo {
  std::string habitacion;
  com::Fecha desde, hasta;
};
// On the board, which begins with the night of llegada: the nights are marked and accepted, filters that hide a room
// are taken away. Gives why a night could not be marked, and the board stays as it is for another choice; "" when all
// were.
std::string MarcaTramos(controles::Formulario& tablero, com::Fecha llegada, const std::vector<Tramo>& tramos);
// The currency of a New that has begun, when it is another one.
void TecleaMoneda(controles::Formulario& principal, const std::string& moneda);

}  // namespace recepcion
