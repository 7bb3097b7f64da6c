// The server's clock.
#pragma once

#include "host/standalone/conexion.h"

namespace autonomo {

// What the time is for the hotel: the server's, whatever the time zones of both; this machine's for a file. Errors of
// Directa.
Reloj RelojDe(Conexion& conexion);

}  // namespace autonomo
