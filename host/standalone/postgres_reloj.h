// The server's clock.
#pragma once

#include <cstdint>

#include "host/standalone/conexion.h"

namespace autonomo {

// Seconds by which the server's clock is ahead of this machine's, whatever the time zones of both; 0 for a file. Errors
// of Directa.
std::int64_t AdelantoDelServidor(Conexion& conexion);

// What the time is for the hotel.
Reloj RelojDe(Conexion& conexion);

}  // namespace autonomo
