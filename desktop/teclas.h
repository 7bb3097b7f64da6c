// Key codes of the toolkit and of the models.
#pragma once

#include <QKeyEvent>

namespace vista {

// Code of F1; the other function keys follow.
inline constexpr int kTeclaF1 = 112;

// The models' code (controles::tecla) of a key that is no plain character; 0 for any other, F10 and later among them.
int CodigoTecla(int teclaQt);
// The toolkit's key for a models' code; Qt::Key_unknown when there is none.
int TeclaQt(int codigo);
// No Shift, Ctrl, Alt or the like; the keypad's keys are keys like the others.
bool SinModificadores(const QKeyEvent& evento);
// 1 Shift, 2 Ctrl.
int MayusDe(Qt::KeyboardModifiers modificadores);
Qt::KeyboardModifiers ModificadoresDe(int mayus);

}  // namespace vista
