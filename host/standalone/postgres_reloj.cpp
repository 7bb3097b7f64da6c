#include "host/standalone/postgres_reloj.h"

#include <chrono>

#include "platform/com/variant.h"

namespace autonomo {

Reloj RelojDe(Conexion& conexion) {
  Reloj reloj;
  if (conexion.Motor() != esquema::Motor::PostgreSQL) return reloj;
  const auto rs = conexion.Directa("SELECT CAST(EXTRACT(EPOCH FROM now()) AS bigint)");
  const auto aqui = std::chrono::system_clock::now().time_since_epoch();
  reloj.Adelanta(static_cast<std::int64_t>(com::CDbl(rs->Fields(0).Value())) -
                 std::chrono::duration_cast<std::chrono::seconds>(aqui).count());
  return reloj;
}

}  // namespace autonomo
