// Whether the room lines can be had: each night of each line against blocks, stays and other reservations; the lines
// against the stay and one another; persons in every line.
#include "reservation/valida_disponibilidad.h"

#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "platform/regional/regional.h"
#include "publico/columnas.h"
#include "publico/publico.h"
#include "reservation/fechas.h"
#include "reservation/frmKV207.h"
#include "reservation/renglones.h"
#include "reservation/sentencias.h"

namespace kv207 {

// --- rules ---

FallaPeriodos RevisaPeriodos(com::Fecha llegada, com::Fecha salida, const std::vector<PeriodoRenglon>& renglones) {
  const com::Fecha primerDia = com::SoloFecha(llegada), ultimoDia = com::SoloFecha(salida);
  for (std::size_t k = 0; k < renglones.size(); ++k) {
    const com::Fecha inicio = renglones[k].inicio;
    if (primerDia > inicio) return FallaPeriodos::InicioFueraDelPeriodo;
    if (ultimoDia < renglones[k].fin) return FallaPeriodos::FinFueraDelPeriodo;
    const auto cubre = [&](const PeriodoRenglon& vecino) { return vecino.inicio <= inicio && vecino.fin > inicio; };
    const bool encimado = (k + 1 < renglones.size() && cubre(renglones[k + 1])) || (k > 0 && cubre(renglones[k - 1]));
    if (encimado && inicio != primerDia) return FallaPeriodos::NoCorrelativas;
  }
  return FallaPeriodos::Ninguna;
}

// --- statements; fecha: a night, as Utilerias.FechaSQL gives it ---

void ArmaBloqueo(ado::TextoSQL& sql, std::string_view habitacion, std::string_view fecha) {
  sql.Agrega(
      "SELECT COUNT(HBb.Hb_Cve_Habitacion) AS Cantidad "
      "FROM Habitacion_Bloqueo HBb "
      "WHERE HBb.Es_Cve_Estado = 'AC' AND "
      "   HBb.Hb_Cve_Habitacion = '?'AND "
      " '?' BETWEEN  HBb.Hbb_Fecha_Inicio AND HBb.Hbb_Fecha_Fin ",
      {habitacion, fecha});
}

void ArmaOcupacion(ado::TextoSQL& sql, std::string_view habitacion, std::string_view fecha) {
  sql.Agrega(
      "SELECT COUNT(CId.Hb_Cve_Habitacion)AS Cantidad "
      "FROM Check_In CI "
      "   INNER JOIN Check_In_Detalle CId ON CId.Ci_Folio = CI.Ci_Folio "
      "WHERE CI.Es_Cve_Estado NOT IN ('CA','CE') AND "
      "   CId.Hb_Cve_Habitacion = '?'AND "
      " '? 23:59' BETWEEN  CI.Ci_Llegada  AND CI.Ci_Salida ",
      {habitacion, fecha});
}

void ArmaOtraReservacion(ado::TextoSQL& sql, std::string_view habitacion, std::string_view fecha,
                         std::string_view folioPropio) {
  ado::TextoSQL otras;
  if (!folioPropio.empty()) otras.Agrega("   RS.Rs_Folio <> '?' AND", {folioPropio});
  sql.Agrega(
      "SELECT COUNT(RSd.Hb_Cve_Habitacion)AS Cantidad "
      "FROM Reservacion RS "
      "   INNER JOIN Reservacion_Detalle RSd ON RSd.Rs_Folio = RS.Rs_Folio "
      "WHERE RS.Es_Cve_Estado NOT IN ('CA','CE') AND ?"
      "   RSd.Hb_Cve_Habitacion = '?'AND "
      " '? 23:59' BETWEEN  RSd.Rsd_Fecha_Inicio  AND RSd.Rsd_Fecha_Fin ",
      {otras, habitacion, fecha});
}

namespace {

// Text of what is wrong; nothing when all is well.
using Motivo = std::optional<std::string>;

// Runs the statement in the buffer.
bool HayAlguno() {
  const ado::RecordsetPtr cuenta = publico::Ejecuta();
  const bool hay = com::CDbl(cuenta->Fields("Cantidad").Value()) > 0;
  cuenta->Close();
  return hay;
}

Motivo RevisaNoche(const frmKV207& f, const std::string& clave, const std::string& nombre, com::Fecha noche) {
  const std::string fecha = publico::Utilerias().FechaSQL(noche);
  const std::string dia = regional::FechaCorta(noche);
  ArmaBloqueo(publico::NuevaSentencia(), clave, fecha);
  if (HayAlguno()) return "la habitación '" + nombre + "' \r\n se encuentra bloqueada en la fecha: " + dia;
  ArmaOcupacion(publico::NuevaSentencia(), clave, fecha);
  if (HayAlguno()) return "la habitación '" + nombre + "' \r\n se encuentra ocupada en la fecha: " + dia;
  ArmaOtraReservacion(publico::NuevaSentencia(), clave, fecha, f.txtFolio.text());
  if (HayAlguno() && !f.PermiteSobreventa) {
    return "la habitación '" + nombre + "'\r\nestá reservado para la fecha: " + dia;
  }
  return std::nullopt;
}

PeriodoRenglon PeriodoDe(const controles::Grid& grid, int fila) {
  return {FechaDeCelda(grid.celda(fila, col::kInicio)), FechaDeCelda(grid.celda(fila, col::kFin))};
}

// Of the lines with a room.
std::vector<PeriodoRenglon> PeriodosDe(const controles::Grid& grid) {
  std::vector<PeriodoRenglon> periodos;
  for (int fila = 0; fila < grid.Filas(); ++fila) {
    if (!com::CStr(grid.celda(fila, col::kClave)).empty()) periodos.push_back(PeriodoDe(grid, fila));
  }
  return periodos;
}

// All nights of all lines. The line that is looked at becomes the current one, here and in RevisaPersonas: what the
// clerk is told concerns it.
Motivo RevisaNoches(frmKV207& f) {
  controles::Grid& grid = f.ssReservaciones;
  const int filas = grid.Filas();
  for (int fila = 0; fila < filas; ++fila) {
    grid.fila(fila);
    const std::string clave = com::CStr(grid.celda(fila, col::kClave));
    if (clave.empty()) continue;
    const std::string nombre = com::CStr(grid.celda(fila, col::kNombre));
    const PeriodoRenglon periodo = PeriodoDe(grid, fila);
    const int noches = com::DiasEntre(periodo.inicio, periodo.fin);
    if (auto motivo = MotivoDeEstanciaLarga(noches)) return motivo;
    for (int n = 0; n < noches; ++n) {
      if (auto motivo = RevisaNoche(f, clave, nombre, com::MasDias(periodo.inicio, n))) return motivo;
    }
  }
  return std::nullopt;
}

Motivo TextoDe(FallaPeriodos falla) {
  switch (falla) {
    case FallaPeriodos::InicioFueraDelPeriodo:
      return "la fecha de inicial de la habitación esta fuera del periodo de reservación";
    case FallaPeriodos::FinFueraDelPeriodo:
      return "la fecha de final de la habitación esta fuera del periodo de reservación";
    case FallaPeriodos::NoCorrelativas:
      return "Las fechas de las habitaciones deben ser correlativas, favor de verificar ";
    case FallaPeriodos::Ninguna:
      break;
  }
  return std::nullopt;
}

Motivo RevisaPersonas(controles::Grid& grid) {
  const int filas = grid.Filas();
  for (int fila = 0; fila < filas; ++fila) {
    grid.fila(fila);
    if (com::CStr(grid.celda(fila, col::kClave)).empty() || PersonasDelRenglon(grid, fila) > 0) continue;
    return "especifique el número de personas para la habitación: " + com::CStr(grid.celda(fila, col::kNombre));
  }
  return std::nullopt;
}

Motivo RevisaTodo(frmKV207& f) {
  if (f.ssReservaciones.Filas() == 0) return "Debe especificar al menos una habitación para reservar";
  const int noches = com::DiasEntre(f.dpFecha_llegada.valor(), f.dpFecha_salida.valor());
  if (auto motivo = MotivoDeEstanciaLarga(noches)) return motivo;
  controles::Grid& grid = f.ssReservaciones;
  if (auto motivo = RevisaNoches(f)) return motivo;
  if (auto motivo = TextoDe(RevisaPeriodos(f.dpFecha_llegada.valor(), f.dpFecha_salida.valor(), PeriodosDe(grid)))) {
    return motivo;
  }
  return RevisaPersonas(grid);
}

}  // namespace

void frmKV207::Valida_Disponibilidad(bool& ok) {
  ok = false;
  MensajeDisponibilidad.clear();
  try {
    const Motivo motivo = RevisaTodo(*this);
    ok = !motivo;
    if (motivo) MensajeDisponibilidad = *motivo;
  } catch (const std::exception& e) {
    MensajeDisponibilidad = std::string("Valida_Disponibilidad() - ") + e.what();
  }
}

}  // namespace kv207
