// The server's clock.
#pragma once

#include "host/standalone/conexion.h"

namespace autonomo {

// Seconds since 1970, whatever the time zones of server and desk. Of a PostgreSQL connection; errors of Directa.
double EpocaDelServidor(Conexion& conexion);

}  // namespace autonomo
