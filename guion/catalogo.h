// What a hotel needs before bookings can be imported into it.
#pragma once

#include <string>
#include <vector>

#include "guion/reservas_csv.h"
#include "host/standalone/anfitrion.h"

namespace guion {

// Guest and payment form of every imported booking.
inline constexpr const char* kHuespedImportado = "IMPORTADO";
inline constexpr const char* kFormaPagoImportada = "IMPO";

// Creates, in one transaction, the rows that are missing: types, products with their list price, groups, areas, rooms,
// the guest, the payment form and the local currency; stores the parameters that nobody has set (no over-booking, keys
// as they are typed) and grants the price right to the host's user. What exists stays as it is. Error kArgumento when a
// room of the file exists with another type, or when the key of a type would be another one once typed on the screen.
void PreparaHotel(autonomo::Anfitrion& anfitrion, const std::vector<HabitacionCsv>& habitaciones);

}  // namespace guion
