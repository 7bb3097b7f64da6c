// Events of keyboard and mouse, sent to widgets as the window system would.
#pragma once

#include <QPoint>
#include <QString>
#include <QWidget>

namespace vista {

// Sends a key, pressed and released, to a widget.
void EnviaTecla(QWidget* destino, int teclaQt, Qt::KeyboardModifiers modificadores = Qt::NoModifier,
                const QString& texto = {});
// Clicks a widget with the left button.
void EnviaClic(QWidget* destino, const QPoint& donde);
// Drags from one point of it to another.
void EnviaArrastre(QWidget* destino, const QPoint& desde, const QPoint& hasta);
// Types a text where the caret is, or over what is selected, in one key event; "" deletes.
void EnviaTexto(QWidget* destino, const QString& texto);
// Puts the caret of a text widget behind its text, or selects all of it.
void PreparaTexto(QWidget* widget, bool selecciona);

}  // namespace vista
