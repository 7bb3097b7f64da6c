// What a "muestra" order tells about a hotel that is being set up, and about what it lacks.
#pragma once

#include <vector>

#include "guion/json.h"
#include "host/standalone/hotel_nuevo.h"
#include "host/standalone/pendientes.h"

namespace guion {

// What is wrong with it by part; what would be made, once nothing is.
Json MuestraHotel(const autonomo::HotelNuevo& hotel, bool sinHotel);
Json MuestraPendientes(const std::vector<autonomo::Pendiente>& pendientes);

}  // namespace guion
