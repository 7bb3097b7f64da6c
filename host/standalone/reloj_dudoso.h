// Whether this desk's clock can be trusted with what cannot be taken back.
#pragma once

#include <string>

#include "host/standalone/conexion.h"

namespace autonomo {

// Why not, in words for the clerk; "" when nothing speaks against it. The server's clock is asked where there is one;
// of a file, the last that was written in it: nobody worked in the future, nor leaves a hotel for half a year. Nothing
// is said of a clock that was set to try something. Errors of Consulta.
[[nodiscard]] std::string DudaDelReloj(Conexion& conexion, com::Fecha ahora);

}  // namespace autonomo
