// Date fields of the header and the date pop-up of the room lines.
#include "reservation/fechas.h"

#include "platform/regional/regional.h"
#include "publico/avisos.h"
#include "publico/columnas.h"
#include "publico/publico.h"
#include "reservation/frmKV207.h"

namespace kv207 {

namespace mensaje = anfitrion::mensaje;

com::Fecha LlegadaPropuesta(com::Fecha captura, int diasReservacion) {
  return com::MasDias(com::SoloFecha(captura), diasReservacion);
}

Estancia FijaLlegada(com::Fecha captura, com::Fecha llegada, com::Fecha salida, int diasReservacion) {
  Estancia e{llegada, salida, 0, com::DiasEntre(captura, llegada) < 0};
  if (e.corregida) e.llegada = LlegadaPropuesta(captura, diasReservacion);
  if (com::DiasEntre(e.llegada, e.salida) < 0) e.salida = com::SoloFecha(e.llegada);
  e.noches = com::DiasEntre(e.llegada, e.salida);
  return e;
}

std::int32_t NochesTecleadas(const com::Variant& valor, com::Fecha llegada) {
  const double noches = com::Redondea(com::CDbl(valor), 0);
  if (noches < 0) throw com::Error(com::error::kArgumento, "El número de noches no puede ser negativo");
  if (!(noches <= com::DiasEntre(llegada, com::FechaDe(9999, 12, 31)))) {
    throw com::Error(com::error::kArgumento, "La salida quedaría después del 31/12/9999: corrija el número de noches");
  }
  return static_cast<std::int32_t>(noches);
}

std::optional<std::string> MotivoDeEstanciaLarga(std::int32_t noches) {
  constexpr std::int32_t kUnMes = 31;
  if (noches <= kUnMes) return std::nullopt;
  const std::int32_t maximo = com::CLng(publico::LeeParametro(anfitrion::parametro::kMaximoNoches));
  if (noches <= maximo) return std::nullopt;
  return "La estancia de " + std::to_string(noches) + " noches pasa del máximo de " + std::to_string(maximo) +
         ": corrija la llegada o la salida";
}

void ExigeEstanciaPosible(std::int32_t noches) {
  if (const auto motivo = MotivoDeEstanciaLarga(noches)) throw com::Error(com::error::kArgumento, *motivo);
}

void frmKV207::dpFecha_llegada_Set() {
  const Estancia e = FijaLlegada(dpFecha.valor(), dpFecha_llegada.valor(), dpFecha_salida.valor(), DiasReservacion);
  if (e.corregida) Avisa(*this, mensaje::kLlegadaAntesDeCaptura);
  // Shown alone, so that nothing more is raised: the room lines stay.
  dpFecha_llegada.valor(e.llegada);
  dpFecha_salida.valor(e.salida);
  txtDias.valor(e.noches);
  ExigeEstanciaPosible(e.noches);
}

void frmKV207::dpFecha_salida_Change() {
  const com::Fecha llegada = dpFecha_llegada.valor();
  const std::int32_t noches = com::DiasEntre(llegada, dpFecha_salida.valor());
  if (noches < 0) {
    Avisa(*this, mensaje::kSalidaAntesDeLlegada,
          std::string(mensaje::kSalidaAntesDeLlegada.texto) + regional::FechaCorta(llegada));
    Enfoca(dpFecha_salida);
    txtDias.valor(0);
  } else if (noches > 0) {
    txtDias.text(com::Variant(noches));  // as if typed: other nights take the room lines away
  } else {
    txtDias.valor(0);
  }
}

void frmKV207::OcultaFecha() {
  pcFecha.visible(false);
  ColumnaFechaActiva.clear();
}

void frmKV207::dpFechaGrid_Set() {
  controles::Grid& grid = ssReservaciones;
  const bool conHabitacion = grid.fila() >= 0 && !com::CStr(grid.celda(grid.fila(), col::kNombre)).empty();
  if (conHabitacion) {
    const std::string columna = ColumnaFechaActiva;
    if (columna == col::kInicio || columna == col::kFin) {
      if (grid.ClaveColumna() == columna && !grid.columna(columna).bloqueada) {
        // The clerk's own entry, so that leaving the cell prices the line again.
        grid.Teclea(regional::FechaCorta(dpFechaGrid.valor()));
        ColumnaFechaActiva = columna;
      } else {
        grid.celda(grid.fila(), columna, com::Variant(dpFechaGrid.valor()));
      }
    }
  }
  Enfoca(grid);
  pcFecha.visible(false);
  if (conHabitacion) publico::Utilerias().EnviaTeclas("\t");
}

}  // namespace kv207
