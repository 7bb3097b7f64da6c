#include "host/standalone/postgres_reloj.h"

#include <chrono>

#include "platform/com/variant.h"

namespace autonomo {

std::int64_t AdelantoDelServidor(Conexion& conexion) {
  if (conexion.Motor() != esquema::Motor::PostgreSQL) return 0;
  const auto rs = conexion.Directa("SELECT CAST(EXTRACT(EPOCH FROM now()) AS bigint)");
  const auto aqui = std::chrono::system_clock::now().time_since_epoch();
  return static_cast<std::int64_t>(com::CDbl(rs->Fields(0).Value())) -
         std::chrono::duration_cast<std::chrono::seconds>(aqui).count();
}

Reloj RelojDe(Conexion& conexion) {
  Reloj reloj;
  reloj.Adelanta(AdelantoDelServidor(conexion));
  return reloj;
}

}  // namespace autonomo
