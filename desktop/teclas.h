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
// A key of a field, and what it does, as the list of keys tells it.
struct TeclaDeCampo {
  Qt::Key tecla;
  Qt::KeyboardModifier modificador;
  const char* que;
  // Both Enters are one.
  bool Es(const QKeyEvent& evento) const;
};
inline constexpr TeclaDeCampo kTeclaBusca{Qt::Key_F2, Qt::NoModifier, "buscar la clave del campo"};
inline constexpr TeclaDeCampo kTeclaCatalogo{Qt::Key_F2, Qt::ControlModifier, "abrir el catálogo del campo"};
inline constexpr TeclaDeCampo kTeclaFicha{Qt::Key_Return, Qt::AltModifier, "abrir la ficha del cliente o del huésped"};
inline constexpr TeclaDeCampo kTeclaCalendario{Qt::Key_F4, Qt::NoModifier, "abrir el calendario de una fecha"};
inline constexpr const TeclaDeCampo* kTeclasDeCampo[] = {&kTeclaBusca, &kTeclaCatalogo, &kTeclaFicha,
                                                         &kTeclaCalendario};

// One of both.
bool EsEnter(const QKeyEvent& evento);
// No Shift, Ctrl, Alt or the like; the keypad's keys are keys like the others.
bool SinModificadores(const QKeyEvent& evento);
// 1 Shift, 2 Ctrl.
int MayusDe(Qt::KeyboardModifiers modificadores);
Qt::KeyboardModifiers ModificadoresDe(int mayus);

}  // namespace vista
