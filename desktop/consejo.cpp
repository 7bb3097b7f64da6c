#include "desktop/consejo.h"

#include <QCursor>
#include <QFontMetrics>
#include <QPointer>
#include <QToolTip>

#include "desktop/despues.h"

namespace vista {

namespace {

struct Rechazo {
  QPointer<QWidget> de;
  QString texto;
  int duraMs = -1;

  void Muestra() const {
    if (de != nullptr && de->isVisible()) MuestraConsejo(*de, de->rect(), texto, duraMs);
  }
};
// That was told since the mouse was pressed.
Rechazo& Ultimo() {
  static Rechazo ultimo;
  return ultimo;
}

}  // namespace

void MuestraConsejo(QWidget& widget, const QRect& zona, const QString& texto, int duraMs) {
  constexpr int kOrilla = 16;     // around the text, at most
  constexpr int kBajoPunto = 24;  // how far below the point the toolkit shows it, at most
  const QSize tamano = QFontMetrics(QToolTip::font()).size(0, texto) + QSize(2 * kOrilla, 2 * kOrilla + kBajoPunto);
  QRect lugar(widget.mapToGlobal(zona.bottomLeft()), tamano);
  if (lugar.contains(QCursor::pos())) lugar.moveBottom(widget.mapToGlobal(zona.topLeft()).y() - kBajoPunto);
  // With the pointer on what it tells of, it goes when the pointer does.
  const bool senalado = zona.contains(widget.mapFromGlobal(QCursor::pos()));
  QToolTip::showText(lugar.topLeft(), texto, &widget, senalado ? zona : QRect(), duraMs);
}

void MuestraRechazo(QWidget& widget, const QString& texto, int duraMs) {
  Ultimo() = {&widget, texto, duraMs};
  Ultimo().Muestra();
}

void OlvidaRechazo() { Ultimo() = {}; }

// Whatever still moves the keyboard comes before.
void RepiteRechazo() {
  if (Ultimo().de != nullptr) Despues(*Ultimo().de, [] { Ultimo().Muestra(); });
}

}  // namespace vista
