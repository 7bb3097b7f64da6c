// What a person is asked before a button of the main toolbar throws something away, or stores what looks wrong.
#pragma once

#include "platform/controls/barra.h"
#include "platform/controls/formulario.h"

class QWidget;

namespace vista {

// The toolbar of a screen; null when it has none.
controles::ScreenToolbar* BarraDe(const controles::Formulario& formulario);
// Whether the program may end: a reservation half captured is asked about; the screen itself never refuses to close.
bool PreguntaSalida(const controles::Formulario& principal, QWidget* padre);
// Whether the button may go on: Close as above; New and Clear ask when the capture has room lines, Cancel reservation
// always; Accept asks about an exchange rate more than a tenth off the hotel's, or of a currency that has none.
bool PreguntaAccion(const controles::Formulario& principal, controles::Accion accion, QWidget* padre);
// Whether what was marked on the board may become room lines: only in a capture; says so otherwise.
bool PermiteMarcas(const controles::Formulario& principal, QWidget* padre);

}  // namespace vista
