#include "desktop/eventos.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPointer>

namespace vista {

void EnviaTecla(QWidget* destino, int teclaQt, Qt::KeyboardModifiers modificadores, const QString& texto) {
  // The key may end the window.
  const QPointer<QWidget> vivo(destino);
  QKeyEvent abajo(QEvent::KeyPress, teclaQt, modificadores, texto);
  QApplication::sendEvent(destino, &abajo);
  if (!vivo) return;
  QKeyEvent arriba(QEvent::KeyRelease, teclaQt, modificadores, texto);
  QApplication::sendEvent(destino, &arriba);
}

void EnviaClic(QWidget* destino, const QPoint& donde) {
  const QPointer<QWidget> vivo(destino);
  const QPointF local(donde), global(destino->mapToGlobal(donde));
  QMouseEvent abajo(QEvent::MouseButtonPress, local, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(destino, &abajo);
  if (!vivo) return;
  QMouseEvent arriba(QEvent::MouseButtonRelease, local, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(destino, &arriba);
}

void EnviaArrastre(QWidget* destino, const QPoint& desde, const QPoint& hasta) {
  const auto envia = [&](QEvent::Type tipo, const QPoint& donde, Qt::MouseButton boton, Qt::MouseButtons pulsados) {
    QMouseEvent evento(tipo, QPointF(donde), QPointF(destino->mapToGlobal(donde)), boton, pulsados, Qt::NoModifier);
    QApplication::sendEvent(destino, &evento);
  };
  envia(QEvent::MouseButtonPress, desde, Qt::LeftButton, Qt::LeftButton);
  envia(QEvent::MouseMove, hasta, Qt::NoButton, Qt::LeftButton);
  envia(QEvent::MouseButtonRelease, hasta, Qt::LeftButton, Qt::NoButton);
}

void EnviaTexto(QWidget* destino, const QString& texto) {
  if (texto.isEmpty()) return EnviaTecla(destino, Qt::Key_Delete);
  EnviaTecla(destino, Qt::Key_unknown, Qt::NoModifier, texto);
}

void PreparaTexto(QWidget* widget, bool selecciona) {
  if (auto* linea = qobject_cast<QLineEdit*>(widget)) {
    if (selecciona) return linea->selectAll();
    linea->deselect();
    linea->end(false);
  } else if (auto* notas = qobject_cast<QPlainTextEdit*>(widget)) {
    if (selecciona) return notas->selectAll();
    notas->moveCursor(QTextCursor::End);
  }
}

}  // namespace vista
