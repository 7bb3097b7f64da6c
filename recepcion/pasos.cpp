#include "recepcion/pasos.h"

#include <algorithm>

#include "availability/tablero.h"
#include "platform/com/texto.h"
#include "platform/controls/grid.h"
#include "publico/columnas.h"
#include "recepcion/porque.h"

namespace recepcion {

namespace {

using kv207::kColumnasFijas;

// Row of the board; -1 when a filter hides the room.
int FilaDe(const controles::Grid& grid, const std::string& habitacion) {
  for (int fila = 0; fila < grid.Filas(); ++fila) {
    if (com::IgualSinCaja(com::RecortaDerecha(grid.Texto(fila, kv207::col::kClave)), habitacion)) return fila;
  }
  return -1;
}

void QuitaFiltros(controles::Formulario& tablero) {
  for (const char* nombre : {"txtGrupo_Habitacion", "txtArea", "txtTipo_Habitacion"}) {
    auto* filtro = controles::Como<controles::LookupField>(tablero.Busca(nombre));
    if (filtro == nullptr || filtro->text() == "%") continue;
    tablero.Enfoca(*filtro);
    filtro->Teclea("%");
    tablero.PulsaTecla(controles::tecla::kEnter);
  }
}

}  // namespace

bool TecleaFolio(controles::Formulario& principal, const std::string& folio) {
  auto* campo = controles::Como<controles::LookupField>(principal.Busca("txtFolio"));
  const auto* barra = principal.Primero<controles::ScreenToolbar>();
  if (campo == nullptr || barra == nullptr || barra->EnEdicion() || !campo->PuedeEnfocarse()) return false;
  principal.Enfoca(*campo);
  campo->Teclea(folio);
  principal.PulsaTecla(controles::tecla::kEnter);
  return true;
}

bool TecleaEstancia(controles::Formulario& principal, com::Fecha llegada, com::Fecha salida) {
  const std::pair<const char*, com::Fecha> fechas[] = {{"dpFecha_llegada", llegada}, {"dpFecha_salida", salida}};
  for (const auto& [nombre, dia] : fechas) {
    auto* campo = controles::Como<controles::DateField>(principal.Busca(nombre));
    if (campo == nullptr || !campo->AceptaEntrada()) return false;
    principal.Enfoca(*campo);
    campo->Fija(dia);
    if (com::SoloFecha(campo->valor()) != dia) return false;
  }
  return true;
}

std::string MarcaTramos(controles::Formulario& tablero, com::Fecha llegada, const std::vector<Tramo>& tramos) {
  auto* porHabitacion = controles::Como<controles::Opcion>(tablero.Busca("opHabitacion"));
  auto* grid = tablero.Primero<controles::Grid>();
  auto* barra = tablero.Primero<controles::ScreenToolbar>();
  if (porHabitacion == nullptr || grid == nullptr || barra == nullptr) return "No hay tablero";
  tablero.Enfoca(*porHabitacion);
  porHabitacion->Pulsa();
  const auto seVe = [&](const Tramo& t) { return FilaDe(*grid, t.habitacion) >= 0; };
  if (!std::ranges::all_of(tramos, seVe)) QuitaFiltros(tablero);
  tablero.Enfoca(*grid);
  const int marcada = grid->IndiceEstilo(kv207::NombreEstado(kv207::EstadoCelda::Ocupando));
  for (const Tramo& t : tramos) {
    const int fila = FilaDe(*grid, t.habitacion);
    const int primera = kColumnasFijas + com::DiasEntre(llegada, t.desde);
    const int fin = kColumnasFijas + com::DiasEntre(llegada, t.hasta);
    if (fila < 0 || primera < kColumnasFijas || fin > grid->NumColumnas()) {
      return "La habitación " + t.habitacion + " o sus noches no están en el tablero";
    }
    for (int columna = primera; columna < fin; ++columna) {
      grid->ClicCelda(fila, columna);
      if (grid->estilo(fila, columna) != marcada) return EnLineas(PorQue(tablero, fila, columna));
    }
  }
  barra->Pulsa(controles::Accion::Aceptar);
  return {};
}

void TecleaMoneda(controles::Formulario& principal, const std::string& moneda) {
  auto* campo = controles::Como<controles::LookupField>(principal.Busca("txtMoneda"));
  if (campo == nullptr || !campo->PuedeEnfocarse() || com::IgualSinCaja(campo->text(), moneda)) return;
  principal.Enfoca(*campo);
  campo->Teclea(moneda);
  principal.PulsaTecla(controles::tecla::kEnter);
}

}  // namespace recepcion
