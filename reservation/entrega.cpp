// Opens the availability board and turns the marks that the clerk accepts into room lines.
#include "reservation/entrega.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "availability/frmDisponibilidad.h"
#include "platform/regional/regional.h"
#include "publico/avisos.h"
#include "publico/columnas.h"
#include "publico/publico.h"
#include "reservation/fechas.h"
#include "reservation/frmKV207.h"

namespace kv207 {

namespace mensaje = anfitrion::mensaje;

void RecorreRachas(int noches, const std::function<bool(int noche)>& marcada,
                   const std::function<void(Racha racha)>& entrega) {
  std::optional<Racha> racha;
  for (int noche = 0; noche < noches; ++noche) {
    if (marcada(noche)) {
      racha = Racha{racha ? racha->primera : noche, noche};
    } else if (racha) {
      entrega(*std::exchange(racha, std::nullopt));
    }
  }
  if (racha) entrega(*racha);
}

namespace {

constexpr int kHolguraNombre = 200;  // twips beyond the widest name

// Columns and rows for the nights of the reservation; false when the board could not be built and the clerk was told.
bool PreparaTablero(frmKV207& f) {
  frmDisponibilidad& tablero = f.tablero();
  const std::int32_t noches = com::CLng(f.txtDias.valor());
  tablero.txtDEL.text(com::Variant(com::SoloFecha(f.dpFecha_llegada.valor())));
  tablero.txtAL.text(com::Variant(com::SoloFecha(f.dpFecha_salida.valor())));
  ExigeEstanciaPosible(std::max(noches, com::DiasEntre(f.dpFecha_llegada.valor(), f.dpFecha_salida.valor())));
  if (!tablero.Agregar_Columnas(noches)) {
    Avisa(f, mensaje::kColumnasTablero, tablero.MensajeError);
    return false;
  }
  if (!tablero.CargarDatos()) {
    Avisa(f, mensaje::kCargaTablero, tablero.MensajeError);
    return false;
  }
  return true;
}

std::string TextoNoche(const frmDisponibilidad& tablero, int noche) {
  return regional::FechaCorta(tablero.ssDisponibilidad.columna(kColumnasFijas + noche).fecha.value());
}

// Error kSubindice when the board has no such night.
bool Marcada(const frmDisponibilidad& tablero, int noche, int fila) {
  if (kColumnasFijas + noche >= tablero.ssDisponibilidad.NumColumnas() || !tablero.Estados.Tiene(noche, fila)) {
    throw com::Error(com::error::kSubindice,
                     "El tablero no muestra la noche " + std::to_string(noche + 1) + " de la estancia");
  }
  return tablero.Estados(noche, fila) == EstadoCelda::Ocupando;
}

// Replaces the room lines by one for each run of marked nights.
void RecibeMarcas(frmKV207& f) {
  frmDisponibilidad& tablero = f.tablero();
  controles::Grid& grid = f.ssReservaciones;
  f.VaciaRenglones();
  std::int32_t ancho = 0;
  const int filas = tablero.ssDisponibilidad.Filas();
  for (int fila = 0; fila < filas; ++fila) {
    tablero.ssDisponibilidad.fila(fila);
    const std::string clave = com::CStr(tablero.ssDisponibilidad.celda(fila, col::kClave));
    const std::string nombre = com::CStr(tablero.ssDisponibilidad.celda(fila, col::kNombre));
    bool agregadas = false;
    const auto agrega = [&](Racha racha) {
      agregadas = true;
      f.AgregaHabitacion(TextoNoche(tablero, racha.primera), TextoNoche(tablero, racha.ultima), clave, nombre, ancho);
    };
    RecorreRachas(
        com::CLng(f.txtDias.valor()), [&](int noche) { return Marcada(tablero, noche, fila); }, agrega);
    if (agregadas) f.ssReservaciones_RowCommitted();
  }
  grid.ancho(col::kNombre, ancho + kHolguraNombre);
  for (const std::string_view columna : {col::kInicio, col::kFin}) {
    grid.ancho(columna, controles::EscritorioActual().AnchoTexto(f, grid.columna(columna).titulo));
  }
  grid.MuevePrimera();
}

}  // namespace

void frmKV207::cmdDisponibilidad_Click() {
  Atrapa(*this, mensaje::kAbrirTablero, [&] {
    tablero_.FolioExcluido = txtFolio.text();
    if (tablero_.HaySeleccion) {
      tablero_.ConservarVista = true;
    } else if (!PreparaTablero(*this)) {
      return;
    }
    tablero_.MuestraModal();
    if (tablero_.HaySeleccion) RecibeMarcas(*this);
    Enfoca(ssReservaciones);
  });
}

}  // namespace kv207
