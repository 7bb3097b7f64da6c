// Opens the availability board and turns the marks that the clerk accepts into room lines.
#include "reservation/entrega.h"

#include <string>

#include "platform/regional/regional.h"
#include "publico/avisos.h"
#include "publico/publico.h"
#include "reservation/frmKV207.h"

namespace kv207 {

namespace mensaje = anfitrion::mensaje;

std::vector<Racha> RachasMarcadas(const std::vector<EstadoCelda>& noches) {
  std::vector<Racha> rachas;
  bool enRacha = false;
  for (std::size_t n = 0; n < noches.size(); ++n) {
    const int noche = static_cast<int>(n);
    const bool marcada = noches[n] == EstadoCelda::Ocupando;
    if (marcada && !enRacha) rachas.push_back({noche, noche});
    if (marcada) rachas.back().ultima = noche;
    enRacha = marcada;
  }
  return rachas;
}

namespace {

constexpr int kHolguraNombre = 200;  // twips beyond the widest name

// Columns and rows for the nights of the reservation; false when the board could not be built and the clerk was told.
bool PreparaTablero(frmKV207& f) {
  frmDisponibilidad& tablero = f.tablero();
  tablero.txtDEL.text(com::Variant(com::SoloFecha(f.dpFecha_llegada.valor())));
  tablero.txtAL.text(com::Variant(com::SoloFecha(f.dpFecha_salida.valor())));
  if (!tablero.Agregar_Columnas(com::CLng(f.txtDias.valor()))) {
    Avisa(f, mensaje::kColumnasTablero, tablero.MensajeError);
    return false;
  }
  if (!tablero.CargarDatos()) {
    Avisa(f, mensaje::kCargaTablero, tablero.MensajeError);
    return false;
  }
  return true;
}

// States of one board row for the first nights of the board.
std::vector<EstadoCelda> EstadosDeFila(const frmDisponibilidad& tablero, int fila, int noches) {
  std::vector<EstadoCelda> estados;
  for (int n = 0; n < noches; ++n) estados.push_back(tablero.Estados(n, fila));
  return estados;
}

std::string TextoNoche(const frmDisponibilidad& tablero, int noche) {
  return regional::FechaCorta(com::CDate(tablero.ssDisponibilidad.columna(kColumnasFijas + noche).fecha));
}

// Replaces the room lines by one for each run of marked nights.
void RecibeMarcas(frmKV207& f) {
  frmDisponibilidad& tablero = f.tablero();
  controles::Grid& grid = f.ssReservaciones;
  const int noches = com::CLng(f.txtDias.valor());
  const int filas = tablero.ssDisponibilidad.Filas();
  if (noches > tablero.Estados.Dias() || filas > tablero.Estados.Filas() ||
      kColumnasFijas + noches > tablero.ssDisponibilidad.NumColumnas()) {
    throw com::Error(com::error::kSubindice, "El tablero tiene menos noches o habitaciones que las pedidas");
  }
  f.VaciaRenglones();
  std::int32_t ancho = 0;
  for (int fila = 0; fila < filas; ++fila) {
    tablero.ssDisponibilidad.fila(fila);
    const std::string clave = com::CStr(tablero.ssDisponibilidad.celda(fila, "Clave"));
    const std::string nombre = com::CStr(tablero.ssDisponibilidad.celda(fila, "Nombre"));
    const std::vector<Racha> rachas = RachasMarcadas(EstadosDeFila(tablero, fila, noches));
    for (const Racha& racha : rachas) {
      f.AgregaHabitacion(TextoNoche(tablero, racha.primera), TextoNoche(tablero, racha.ultima), clave, nombre, ancho);
    }
    if (!rachas.empty()) f.ssReservaciones_RowCommitted();
  }
  grid.ancho("Nombre", ancho + kHolguraNombre);
  for (const char* columna : {"FECHAI", "FECHAF"}) {
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
