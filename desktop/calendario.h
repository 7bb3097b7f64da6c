// The calendar that drops down from a date's field.
#pragma once

#include <QDate>
#include <QLineEdit>
#include <QString>
#include <functional>

namespace vista {

// Opens it beside the field, whole on the screen, on that day; hoy stands out; elige gets the day that is clicked or
// taken with Enter. Esc or a click elsewhere closes it and chooses nothing. nombre: what the date is, for assistive
// tools.
void MuestraCalendario(QLineEdit& campo, const QString& nombre, const QDate& dia,
                       std::function<void(const QDate&)> elige, const QDate& hoy = QDate::currentDate());

}  // namespace vista
