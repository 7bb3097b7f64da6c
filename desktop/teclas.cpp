#include "desktop/teclas.h"

#include "platform/controls/control.h"

namespace vista {

namespace {

namespace t = controles::tecla;

struct Par {
  int qt, codigo;
};
constexpr Par kTeclas[] = {
    {Qt::Key_Backspace, t::kRetroceso}, {Qt::Key_Tab, t::kTab},        {Qt::Key_Backtab, t::kTab},
    {Qt::Key_Return, t::kEnter},        {Qt::Key_Enter, t::kEnter},    {Qt::Key_Escape, t::kEsc},
    {Qt::Key_Delete, t::kSupr},         {Qt::Key_Left, t::kIzquierda}, {Qt::Key_Up, t::kArriba},
    {Qt::Key_Right, t::kDerecha},       {Qt::Key_Down, t::kAbajo},
};
constexpr int kFunciones = 9;  // the keys after F9 are the desktop's

}  // namespace

int CodigoTecla(int teclaQt) {
  if (teclaQt >= Qt::Key_F1 && teclaQt < Qt::Key_F1 + kFunciones) return kTeclaF1 + (teclaQt - Qt::Key_F1);
  for (const Par& par : kTeclas) {
    if (par.qt == teclaQt) return par.codigo;
  }
  return 0;
}

int TeclaQt(int codigo) {
  if (codigo >= kTeclaF1 && codigo < kTeclaF1 + kFunciones) return Qt::Key_F1 + (codigo - kTeclaF1);
  if (codigo == t::kEspacio) return Qt::Key_Space;
  for (const Par& par : kTeclas) {
    if (par.codigo == codigo) return par.qt;
  }
  return Qt::Key_unknown;
}

bool TeclaDeCampo::Es(const QKeyEvent& evento) const {
  const int suya = evento.key() == Qt::Key_Enter ? Qt::Key_Return : evento.key();
  return suya == tecla && (evento.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier)) ==
                              (modificador == Qt::NoModifier ? Qt::KeyboardModifiers() : modificador);
}

bool EsEnter(const QKeyEvent& evento) { return evento.key() == Qt::Key_Return || evento.key() == Qt::Key_Enter; }

bool SinModificadores(const QKeyEvent& evento) {
  return (evento.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier)) == Qt::NoModifier;
}

int MayusDe(Qt::KeyboardModifiers modificadores) {
  return (modificadores.testFlag(Qt::ShiftModifier) ? 1 : 0) | (modificadores.testFlag(Qt::ControlModifier) ? 2 : 0);
}

Qt::KeyboardModifiers ModificadoresDe(int mayus) {
  Qt::KeyboardModifiers m = Qt::NoModifier;
  if ((mayus & 1) != 0) m |= Qt::ShiftModifier;
  if ((mayus & 2) != 0) m |= Qt::ControlModifier;
  return m;
}

}  // namespace vista
