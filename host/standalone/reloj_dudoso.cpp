#include "host/standalone/reloj_dudoso.h"

#include <cstdlib>
#include <optional>

#include "host/standalone/postgres_reloj.h"
#include "platform/com/variant.h"
#include "platform/regional/regional.h"

namespace autonomo {

namespace {

constexpr int kAusencia = 180;  // days without any work after which a clock is doubted

std::string NoSeBorra(com::Fecha ahora, const std::string& contra) {
  return "El reloj de este equipo dice " + regional::FechaCorta(ahora) + ", y " + contra +
         ". Si la fecha del equipo está mal, corríjala y vuelva a abrir el programa. Mientras tanto no se borra ningún "
         "código de tarjeta ni se vence ningún correo.";
}

// When something was written in the hotel last: of the change log and of the reservations, by the keys that grow.
std::optional<com::Fecha> UltimoTrabajo(Conexion& conexion) {
  std::optional<com::Fecha> ultimo;
  for (const char* sentencia : {"SELECT TOP 1 Bt_Fecha FROM Bitacora ORDER BY Bt_Id DESC",
                                "SELECT TOP 1 Fecha_Ult_Modif FROM Reservacion ORDER BY Rs_Folio DESC"}) {
    const ado::RecordsetPtr rs = conexion.Consulta(sentencia);
    if (rs->Eof() || rs->Fields(0).Value().EsNulo()) continue;
    const com::Fecha fecha = com::CDate(rs->Fields(0).Value());
    if (!ultimo || *ultimo < fecha) ultimo = fecha;
  }
  return ultimo;
}

}  // namespace

std::string DudaDelReloj(Conexion& conexion, com::Fecha ahora) {
  if (com::DiasEntre(ahora, Reloj().Ahora()) != 0) return {};
  if (conexion.Motor() == esquema::Motor::PostgreSQL) {
    const com::Fecha suyo = RelojDe(conexion).Ahora();
    if (std::abs(com::DiasEntre(ahora, suyo)) <= 1) return {};
    return NoSeBorra(ahora, "el del servidor, " + regional::FechaCorta(suyo));
  }
  const std::optional<com::Fecha> ultimo = UltimoTrabajo(conexion);
  if (!ultimo) return {};
  const int dias = com::DiasEntre(*ultimo, ahora);
  if (dias >= -1 && dias <= kAusencia) return {};
  return NoSeBorra(ahora, "lo último que se guardó en este hotel es del " + regional::FechaCorta(*ultimo));
}

}  // namespace autonomo
