// Rules between capture, arrival, departure and nights. Days count, times of day do not.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/com/fecha.h"
#include "platform/com/variant.h"

namespace kv207 {

// Arrival proposed that many days after the capture, at midnight.
[[nodiscard]] com::Fecha LlegadaPropuesta(com::Fecha captura, int diasReservacion);

struct Estancia {
  com::Fecha llegada, salida;
  std::int32_t noches = 0;  // from arrival to departure, 0 on one day
  bool corregida = false;   // the arrival was before the capture
};
// A stay whose arrival has been set: an arrival before the capture becomes the proposed one, a departure before the
// arrival the arrival's day. diasReservacion: days from capture to the arrival proposed.
[[nodiscard]] Estancia FijaLlegada(com::Fecha captura, com::Fecha llegada, com::Fecha salida, int diasReservacion);

// Nights typed by the clerk; fractions go to the nearest whole number, halves to the even one. 0, which the screen
// turns into one night, for an empty value. Error kArgumento when they are below 0 or the departure would lie beyond
// the calendar; kTipos for a text that is no number.
[[nodiscard]] std::int32_t NochesTecleadas(const com::Variant& valor, com::Fecha llegada);

// Why a stay of that many nights is too long for the hotel (its parameter HT_MAXIMO_NOCHES); nothing when it is not.
// Stays of up to a month never are: the host is not asked about them.
[[nodiscard]] std::optional<std::string> MotivoDeEstanciaLarga(std::int32_t noches);
// Error kArgumento with that reason.
void ExigeEstanciaPosible(std::int32_t noches);

}  // namespace kv207
