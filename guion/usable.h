// What a clerk can act on right now, and the text that says why not.
#pragma once

#include "platform/controls/control.h"
#include "platform/controls/grid.h"

namespace guion {

// Error kTamanio when the control or one of its containers is hidden or disabled, or its form is not shown.
void RevisaUsable(const controles::Control& control);
// The same, and the control must accept typing, a date or a choice.
void RevisaEntrada(const controles::Control& control);
// Error kSubindice or kElemento for a cell that cannot be reached. fila -1 stands for a row that is still to come.
void RevisaCelda(const controles::Grid& grid, int fila, int columna);
// The same, and kTamanio when nothing can be typed in the column.
void RevisaCeldaEscribible(const controles::Grid& grid, int fila, int columna);

// Raises kTamanio: the screen holds the user in the current cell.
[[noreturn]] void RechazaSalida(const controles::Grid& grid);

// Shows its content only: a locked field, a date field that accepts no input.
[[nodiscard]] bool Bloqueado(const controles::Control& control);

}  // namespace guion
