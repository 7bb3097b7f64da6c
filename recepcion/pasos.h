// What the front desk types for the clerk in the screens: each step is a user's, so the screens' own rules hold.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/com/fecha.h"
#include "platform/controls/barra.h"
#include "platform/controls/formulario.h"
#include "recepcion/periodo.h"

namespace recepcion {

struct Pedido;
struct Toma;

// Types a folio in the reservation screen's field and confirms it. False while a capture or a disabled field does not
// let it.
[[nodiscard]] bool TecleaFolio(controles::Formulario& principal, const std::string& folio);

// Dates of a New that has begun, as typed. False when the screen, which says why, does not take them.
[[nodiscard]] bool TecleaEstancia(controles::Formulario& principal, com::Fecha llegada, com::Fecha salida);
// Nights of a room, from desde up to the one before hasta.
struct Tramo {
  std::string habitacion;
  com::Fecha desde, hasta;
};
// On the board, which begins with the night of llegada: the nights are marked and accepted, filters that hide a room
// are taken away. Gives why a night could not be marked, and the board stays as it is for another choice; "" when all
// were.
[[nodiscard]] std::string MarcaTramos(controles::Formulario& tablero, com::Fecha llegada,
                                      const std::vector<Tramo>& tramos);
// The currency of a New that has begun, when it is another one.
void TecleaMoneda(controles::Formulario& principal, const std::string& moneda);

// The stay that is being captured.
struct EstanciaCaptada {
  Periodo periodo;    // arrival and departure
  std::string folio;  // of the reservation that is edited, whose own nights are no obstacle; "" for a new one
};
// Nothing outside a capture, or without dates.
[[nodiscard]] std::optional<EstanciaCaptada> EstanciaEnCaptura(const controles::Formulario& principal);
// Types a key in a field and confirms it. False when the field takes none.
[[nodiscard]] bool TecleaClave(controles::Formulario& principal, const std::string& campo, const std::string& clave);
// What was chosen for the client's or the guest's field, in a capture: the key; the payment form where none is typed
// yet, the notes behind those that are there, the room as a new line. False when the key could not be typed.
[[nodiscard]] bool TecleaToma(controles::Formulario& principal, const std::string& campo, const Toma& toma);
// The persons of a quote in its lines, as long as these are the lines that were quoted and have no persons yet.
void TecleaPersonas(controles::Formulario& principal, const Pedido& pedido, const std::vector<Tramo>& tramos);
// Where the clerk goes on: at the payment form while there is none.
void EnfocaLoQueFalta(controles::Formulario& principal);

}  // namespace recepcion
