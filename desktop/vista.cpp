#include "desktop/vista.h"

#include <algorithm>

#include "desktop/consejo.h"
#include "desktop/guarda.h"
#include "desktop/teclas.h"

namespace vista {

bool Flota(const controles::Control& control) {
  const auto* marco = controles::Como<controles::Marco>(&control);
  if (marco == nullptr || !marco->caption().empty()) return false;
  const auto& todos = control.formulario().controles();
  return std::any_of(todos.begin(), todos.end(), [&](const controles::Control* c) {
    return c->contenedor() == &control && c->clase() == controles::Clase::DateField;
  });
}

void Vista::Adopta(QWidget* widget) {
  widget_ = widget;
  widget_->setObjectName(Q(control_.nombre()));
  const QString descripcion = Q(control_.descripcion());
  widget_->setAccessibleName(descripcion);
  if (QWidget* f = foco(); f != nullptr && f != widget_) {
    f->setAccessibleName(descripcion);
    f->setObjectName(Q(control_.nombre()) + QStringLiteral("_foco"));
  }
}

void Vista::Dice(const QString& texto) const {
  constexpr int kDura = 8000;  // ms
  MuestraRechazo(*foco(), texto, kDura);
}

void Vista::PasaTecla(int codigo, int mayus) {
  Corre([&] { formulario().PulsaTecla(codigo, mayus); });
}

bool Vista::Tecla(const QKeyEvent& evento) {
  namespace t = controles::tecla;
  const int codigo = CodigoTecla(evento.key());
  const bool deLaForma = codigo == t::kTab || codigo == t::kEnter || codigo == t::kEsc || codigo >= kTeclaF1;
  if (codigo == 0 || !deLaForma) return false;
  if (evento.isAutoRepeat() && codigo >= kTeclaF1) return true;
  const int mayus = MayusDe(evento.modifiers()) | (evento.key() == Qt::Key_Backtab ? 1 : 0);
  PasaTecla(codigo, mayus);
  return true;
}

}  // namespace vista
