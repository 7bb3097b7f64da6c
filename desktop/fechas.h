// Dates of the models and of the toolkit, and dates as clerks type them.
#pragma once

#include <QDate>
#include <QString>
#include <optional>

#include "platform/com/fecha.h"

namespace vista {

[[nodiscard]] QDate ADate(com::Fecha fecha);
[[nodiscard]] com::Fecha DeDate(const QDate& fecha);
// A date as clerks type it: "15/03/2026", "15-3-26", "15/3", "15" (nearest to the base), "15032026", "+3" (days from
// the base). Nothing for anything else.
[[nodiscard]] std::optional<com::Fecha> LeeFecha(const QString& texto, com::Fecha base);

// What is said of a text that is none.
QString NoEsFecha(const QString& texto);

}  // namespace vista
