// The board's grid: day columns, cell states, marks and keys.
#include <algorithm>
#include <array>
#include <exception>

#include "availability/frmDisponibilidad.h"
#include "platform/regional/regional.h"
#include "publico/columnas.h"
#include "publico/publico.h"

namespace kv207 {

namespace {

constexpr int kAnchoDia = 800;  // twips
constexpr int kFilaEntera = 2;  // selection kind of a whole row
constexpr int kShift = 1, kCtrl = 2;

// By weekday, Monday first.
constexpr std::array<const char*, 7> kDias = {"LUN", "MAR", "MIE", "JUE", "VIE", "SAB", "DOM"};

controles::Columna ColumnaDia(com::Fecha noche) {
  controles::Columna columna;
  columna.fecha = com::SoloFecha(noche);
  columna.clave = regional::FechaCorta(noche);
  columna.titulo = kDias[static_cast<std::size_t>(com::DiaSemana(noche) - 1)];
  columna.tipo = controles::TipoColumna::Entero;
  columna.ancho = kAnchoDia;
  columna.bloqueada = true;
  columna.alineacion = controles::Alineacion::Centro;
  columna.alineacionTitulo = controles::Alineacion::Centro;
  return columna;
}

}  // namespace

void MatrizEstados::Dimensiona(int dias, int filas) {
  if (dias < 0 || filas < 0) throw com::Error(com::error::kSubindice, "El subíndice está fuera del intervalo");
  dias_ = dias;
  filas_ = filas;
  celdas_.assign(static_cast<std::size_t>(dias) * static_cast<std::size_t>(filas), EstadoCelda::Ocupado);
}

void MatrizEstados::QuitaMarcas() {
  std::replace(celdas_.begin(), celdas_.end(), EstadoCelda::Ocupando, EstadoCelda::Disponible);
}

bool MatrizEstados::Contiene(EstadoCelda estado, int dias, int filas) const {
  for (int fila = 0; fila < std::min(filas, filas_); ++fila) {
    const auto inicio = celdas_.begin() + static_cast<std::ptrdiff_t>(Indice(0, fila));
    const auto fin = inicio + std::clamp(dias, 0, dias_);
    if (std::find(inicio, fin, estado) != fin) return true;
  }
  return false;
}

bool frmDisponibilidad::Agregar_Columnas(std::int32_t iDias) {
  MensajeError.clear();
  controles::Grid::Pausa pausa(ssDisponibilidad);
  try {
    ssDisponibilidad.titulo(col::kNombre, Modo() == ModoVista::PorTipo ? "Tipo habitación" : "Habitación");
    NumeroDias = iDias;
    QuitarColumnasDias();
    const com::Fecha primera = com::CDate(txtDEL.valor());
    for (std::int32_t d = 0; d < iDias; ++d) ssDisponibilidad.AgregaColumna(ColumnaDia(com::MasDias(primera, d)));
  } catch (const std::exception& e) {
    MensajeError = std::string("frmDisponibilidad.Agregar_Columnas() - ") + e.what();
  }
  pausa.Termina();
  ssDisponibilidad.Refresca();
  return MensajeError.empty();
}

void frmDisponibilidad::QuitarColumnasDias() {
  while (ssDisponibilidad.NumColumnas() > kColumnasFijas) {
    ssDisponibilidad.QuitaColumna(ssDisponibilidad.NumColumnas() - 1);
  }
}

void frmDisponibilidad::PintarCeldas() {
  const int filas = ssDisponibilidad.Filas(), dias = ssDisponibilidad.NumColumnas() - kColumnasFijas;
  for (int r = 0; r < filas; ++r) {
    for (int d = 0; d < dias; ++d) {
      if (!Estados.Tiene(d, r)) continue;
      const int estilo = static_cast<int>(Estados(d, r));
      // A cell that has its style already is not touched: the view would paint it again.
      if (ssDisponibilidad.estilo(r, kColumnasFijas + d) != estilo) {
        ssDisponibilidad.estilo(r, kColumnasFijas + d, estilo);
      }
    }
  }
  ActualizarSeleccion();
}

void frmDisponibilidad::ActualizarSeleccion() {
  HaySeleccion = Estados.Contiene(EstadoCelda::Ocupando, NumeroDias, NumeroFilas);
}

// Only rooms are marked, and only rows that a load has written.
bool frmDisponibilidad::PuedeMarcar() const {
  const int r = ssDisponibilidad.fila();
  return Modo() == ModoVista::PorHabitacion && r >= 0 && r < NumeroFilas && r < ssDisponibilidad.Filas();
}

void frmDisponibilidad::PonEstado(int dia, int fila, EstadoCelda estado) {
  ssDisponibilidad.estilo(fila, kColumnasFijas + dia, static_cast<int>(estado));
  Estados(dia, fila) = estado;
}

void frmDisponibilidad::MarcarCelda() {
  const int d = ssDisponibilidad.columna() - kColumnasFijas, r = ssDisponibilidad.fila();
  if (!PuedeMarcar() || d >= NumeroDias || !Estados.Tiene(d, r)) return;
  switch (Estados(d, r)) {
    case EstadoCelda::Disponible:
      PonEstado(d, r, EstadoCelda::Ocupando);
      break;
    case EstadoCelda::Ocupando:
      PonEstado(d, r, EstadoCelda::Disponible);
      break;
    case EstadoCelda::Ocupado:
    case EstadoCelda::Bloqueado:
    case EstadoCelda::Reservado:
      return;
  }
  ActualizarSeleccion();
}

void frmDisponibilidad::MarcarFila() {
  if (!PuedeMarcar()) return;
  const int r = ssDisponibilidad.fila(), dias = std::min<int>(NumeroDias, Estados.Dias());
  bool marcada = false;
  for (int d = 0; d < dias; ++d) marcada = marcada || Estados(d, r) == EstadoCelda::Ocupando;
  const EstadoCelda de = marcada ? EstadoCelda::Ocupando : EstadoCelda::Disponible;
  const EstadoCelda a = marcada ? EstadoCelda::Disponible : EstadoCelda::Ocupando;
  for (int d = 0; d < dias; ++d) {
    if (Estados(d, r) == de) PonEstado(d, r, a);
  }
  controles::EscritorioActual().ProcesaPendientes();
  ActualizarSeleccion();
}

void frmDisponibilidad::ssDisponibilidad_Click() { MarcarCelda(); }

void frmDisponibilidad::ssDisponibilidad_SelChange(int tipo) {
  if (tipo == kFilaEntera) MarcarFila();
}

void frmDisponibilidad::ssDisponibilidad_RowLoaded() {
  PintarCeldas();
  controles::EscritorioActual().ProcesaPendientes();
}

// Enter moves like Tab, Ctrl+Enter accepts; the space bar marks the cell, with Shift the row.
void frmDisponibilidad::ssDisponibilidad_KeyDown(int codigo, int mayus) {
  if (codigo == controles::tecla::kEnter) {
    if (mayus == kCtrl) {
      Controles_Aceptar();
    } else {
      publico::Utilerias().EnviaTeclas("\t");
    }
  } else if (codigo == controles::tecla::kEspacio) {
    if (mayus == 0) {
      MarcarCelda();
    } else if (mayus == kShift) {
      MarcarFila();
    }
  }
}

void frmDisponibilidad::ssDisponibilidad_KeyPress(int& caracter) {
  if (caracter == controles::tecla::kEnter) caracter = 0;
}

}  // namespace kv207
