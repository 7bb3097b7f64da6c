// What the reservation screen knows of its prices beside the amounts, for views and scripts.
#pragma once

#include <string>

#include "platform/controls/formulario.h"
#include "publico/origen_precio.h"

namespace kv207 {

// What the price of a room line rests on; Ninguno for a line without a price, and on another form. Acordado: typed, or
// with a discount; Guardado: read with a stored reservation.
OrigenPrecio OrigenDelPrecio(const controles::Formulario& pantalla, int fila);
// What a clerk is to know before and after an agreed price is lost: the current cell is a date or the persons of a line
// whose price would be asked for again; or it was. "" nothing.
std::string AvisoDePrecio(const controles::Formulario& pantalla);

}  // namespace kv207
