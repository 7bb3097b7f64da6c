// The hotel that the figures are taken on: 300 rooms, five years of history, about 150,000 room lines.
#pragma once

#include <string>
#include <vector>

#include "platform/com/fecha.h"

namespace banco {

inline constexpr int kHabitaciones = 300;
inline constexpr int kNoches = 30;

// The day on which the hotel is measured; the board shows the nights from it on.
com::Fecha Hoy();

// File of the hotel, filled when it is missing.
void ConstruyeHotel(const std::string& ruta);

// Number of room lines in the file.
int CuentaLineas(const std::string& ruta);

// Folio of a live reservation with three lines.
std::string FolioDeTresLineas(const std::string& ruta);

}  // namespace banco
