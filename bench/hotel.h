// The hotel that the figures are taken on: 300 rooms and, unless asked for another one, five years of history, about
// 150,000 room lines.
#pragma once

#include <string>
#include <vector>

#include "platform/com/fecha.h"

namespace banco {

inline constexpr int kHabitaciones = 300;
inline constexpr int kNoches = 30;

// The day on which the hotel is measured; the board shows the nights from it on.
com::Fecha Hoy();

inline constexpr int kDiasDeHistoria = 5 * 365;

// Key of the n-th room, counted from 0.
std::string ClaveHabitacion(int n);

// File of the hotel, filled with so many days of history when it is missing. It sells no room twice.
void ConstruyeHotel(const std::string& ruta, int dias = kDiasDeHistoria);

// Number of room lines in the file.
int CuentaLineas(const std::string& ruta);

// Folio of a live reservation with three lines.
std::string FolioDeTresLineas(const std::string& ruta);

}  // namespace banco
