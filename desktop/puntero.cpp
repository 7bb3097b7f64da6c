#include "desktop/puntero.h"

#include <QApplication>

#include "desktop/consejo.h"
#include "desktop/despues.h"
#include "desktop/guarda.h"
#include "desktop/ventana.h"

namespace vista {

Puntero::Puntero(Ventana& ventana) : QObject(&ventana), ventana_(ventana) {
  QCoreApplication::instance()->installEventFilter(this);
}

bool Puntero::eventFilter(QObject* objeto, QEvent* evento) {
  switch (evento->type()) {
    case QEvent::WindowBlocked:
      interrumpida_ = interrumpida_ || objeto == &ventana_;
      return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
    case QEvent::ContextMenu:
      break;
    default:
      return false;
  }
  auto* donde = qobject_cast<QWidget*>(objeto);
  if (donde == nullptr || donde->window() != &ventana_) return false;
  switch (evento->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      return Pulsa(*donde, *static_cast<QMouseEvent*>(evento));
    case QEvent::MouseButtonRelease:
      atendida_ = false;
      RepiteRechazo();
      return std::exchange(traga_, false);
    default:
      return traga_;
  }
}

bool Puntero::Pulsa(QWidget& donde, const QMouseEvent& evento) {
  if (atendida_) return traga_;
  atendida_ = true;
  OlvidaRechazo();
  traga_ = interrumpida_ = false;
  Despues(*this, [this] { atendida_ = false; });
  Vista* vista = ventana_.VistaBajo(donde);
  // Nothing that the keyboard goes to; the toolbar asks by itself, for its keys too.
  if (vista == nullptr || !vista->control().PuedeEnfocarse()) return false;
  const bool pendiente = ventana_.HayPendiente(vista->control());
  if (!pendiente && !vista->foco()->hasFocus()) return false;
  const auto blanco = pendiente ? vista->Blanco(donde, evento) : nullptr;
  const bool entra = ventana_.Entra(*vista);
  if (!pendiente && entra) return false;
  // A press during which something else was asked has been let go long ago.
  traga_ = !entra || interrumpida_ || !vista->control().PuedeEnfocarse() || blanco;
  if (entra && !interrumpida_ && blanco && vista->control().PuedeEnfocarse()) Corre(blanco);
  return traga_;
}

}  // namespace vista
