// Tips that the keyboard or the program calls for.
#pragma once

#include <QRect>
#include <QString>
#include <QWidget>

namespace vista {

// Shows a text below a part of a widget, or above it where the pointer lies below: a tip that comes up under the
// pointer goes at once. duraMs: -1 as long as the toolkit thinks fit.
void MuestraConsejo(QWidget& widget, const QRect& zona, const QString& texto, int duraMs = -1);

// A tip that tells why something was refused. The toolkit takes any tip away when the mouse is let go or the keyboard
// moves, so that one which came up meanwhile has to be shown again.
void MuestraRechazo(QWidget& widget, const QString& texto, int duraMs);
// Shows the last one again, once what runs now is over; nothing since OlvidaRechazo.
void RepiteRechazo();
// Another press begins.
void OlvidaRechazo();

}  // namespace vista
