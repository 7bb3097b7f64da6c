// Tips that the keyboard or the program calls for.
#pragma once

#include <QRect>
#include <QString>
#include <QWidget>

namespace vista {

// Shows a text below a part of a widget, or above it where the pointer lies below: a tip that comes up under the
// pointer goes at once. duraMs: -1 as long as the toolkit thinks fit.
void MuestraConsejo(QWidget& widget, const QRect& zona, const QString& texto, int duraMs = -1);

}  // namespace vista
