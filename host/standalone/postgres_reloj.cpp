#include "host/standalone/postgres_reloj.h"

#include "platform/com/variant.h"

namespace autonomo {

double EpocaDelServidor(Conexion& conexion) {
  return com::CDbl(conexion.Directa("SELECT CAST(EXTRACT(EPOCH FROM now()) AS bigint)")->Fields(0).Value());
}

}  // namespace autonomo
