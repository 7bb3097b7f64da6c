#include "recepcion/pasos.h"

#include <algorithm>

#include "availability/tablero.h"
#include "platform/com/texto.h"
#include "platform/controls/grid.h"
#include "publico/columnas.h"
#include "publico/controles.h"
#include "recepcion/cotizacion.h"
#include "recepcion/huespedes.h"
#include "recepcion/porque.h"

namespace recepcion {

namespace {

namespace control = kv207::control;

using kv207::kColumnasFijas;

// Row of the board; -1 when a filter hides the room.
int FilaDe(const controles::Grid& grid, const std::string& habitacion) {
  for (int fila = 0; fila < grid.Filas(); ++fila) {
    if (com::IgualSinCaja(com::RecortaDerecha(grid.Texto(fila, kv207::col::kClave)), habitacion)) return fila;
  }
  return -1;
}

void QuitaFiltros(controles::Formulario& tablero) {
  for (const char* nombre : {control::kGrupo, control::kArea, control::kTipo}) {
    auto* filtro = controles::Como<controles::LookupField>(tablero.Busca(nombre));
    if (filtro == nullptr || filtro->text() == kv207::kTodosLosCodigos) continue;
    tablero.Enfoca(*filtro);
    filtro->Teclea(kv207::kTodosLosCodigos);
    tablero.PulsaTecla(controles::tecla::kEnter);
  }
}

}  // namespace

bool TecleaFolio(controles::Formulario& principal, const std::string& folio) {
  auto* campo = controles::Como<controles::LookupField>(principal.Busca(control::kFolio));
  const auto* barra = principal.Primero<controles::ScreenToolbar>();
  if (campo == nullptr || barra == nullptr || barra->EnEdicion() || !campo->PuedeEnfocarse()) return false;
  principal.Enfoca(*campo);
  campo->Teclea(folio);
  principal.PulsaTecla(controles::tecla::kEnter);
  return true;
}

bool TecleaEstancia(controles::Formulario& principal, com::Fecha llegada, com::Fecha salida) {
  const std::pair<const char*, com::Fecha> fechas[] = {{control::kLlegada, llegada}, {control::kSalida, salida}};
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
  auto* porHabitacion = controles::Como<controles::Opcion>(tablero.Busca(control::kPorHabitacion));
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
  const auto* campo = controles::Como<controles::LookupField>(principal.Busca(control::kMoneda));
  if (campo == nullptr || com::IgualSinCaja(campo->text(), moneda)) return;
  static_cast<void>(TecleaClave(principal, control::kMoneda, moneda));
}

std::optional<EstanciaCaptada> EstanciaEnCaptura(const controles::Formulario& principal) {
  const auto* barra = principal.Primero<controles::ScreenToolbar>();
  const auto* llegada = controles::Como<controles::DateField>(principal.Busca(control::kLlegada));
  const auto* salida = controles::Como<controles::DateField>(principal.Busca(control::kSalida));
  if (barra == nullptr || !barra->EnEdicion() || llegada == nullptr || salida == nullptr) return std::nullopt;
  if (llegada->Vacio() || salida->Vacio()) return std::nullopt;
  return EstanciaCaptada{{com::SoloFecha(llegada->valor()), com::SoloFecha(salida->valor())},
                         barra->EsNuevo() ? std::string() : barra->ClaveActual()};
}

bool TecleaClave(controles::Formulario& principal, const std::string& campo, const std::string& clave) {
  auto* donde = controles::Como<controles::LookupField>(principal.Busca(campo));
  if (donde == nullptr || !donde->PuedeEnfocarse()) return false;
  principal.Enfoca(*donde);
  donde->Teclea(clave);
  principal.PulsaTecla(controles::tecla::kEnter);
  return true;
}

namespace {

void TecleaNotas(controles::Formulario& principal, const std::string& notas) {
  auto* campo = controles::Como<controles::CampoNotas>(principal.Busca(control::kNotas));
  if (campo == nullptr || !campo->PuedeEnfocarse() || campo->locked()) return;
  if (campo->text().find(notas) != std::string::npos) return;
  principal.Enfoca(*campo);
  campo->Teclea(campo->text().empty() ? notas : campo->text() + "\n" + notas);
}

void TecleaHabitacion(controles::Formulario& principal, const std::string& habitacion) {
  auto* grid = principal.Primero<controles::Grid>();
  if (grid == nullptr || !grid->PuedeEnfocarse() || FilaDe(*grid, habitacion) >= 0) return;
  principal.Enfoca(*grid);
  if (!grid->NuevaFila()) return;
  grid->Teclea(habitacion);
  if (grid->Deja()) static_cast<void>(grid->VaA(grid->Filas() - 1, grid->IndiceColumna(kv207::col::kAdultos)));
}

bool SinForma(controles::Formulario& principal) {
  const auto* campo = controles::Como<controles::LookupField>(principal.Busca(control::kFormaPago));
  return campo != nullptr && campo->PuedeEnfocarse() && campo->text().empty();
}

// Whether the line holds the stretch and nobody yet.
bool EsSinPersonas(const controles::Grid& grid, int fila, const Tramo& t) {
  using namespace kv207;
  const auto vacia = [&](std::string_view columna) {
    const std::string texto = grid.Texto(fila, columna);
    return texto.empty() || texto == "0";
  };
  const auto dia = [&](std::string_view columna) { return com::SoloFecha(com::CDate(grid.celda(fila, columna))); };
  return com::IgualSinCaja(com::RecortaDerecha(grid.Texto(fila, col::kClave)), t.habitacion) &&
         dia(col::kInicio) == t.desde && dia(col::kFin) == t.hasta && vacia(col::kAdultos) && vacia(col::kMenores) &&
         vacia(col::kInfantes);
}

}  // namespace

bool TecleaToma(controles::Formulario& principal, const std::string& campo, const Toma& toma) {
  if (!TecleaClave(principal, campo, toma.clave)) return false;
  if (!toma.formaPago.empty() && SinForma(principal)) {
    static_cast<void>(TecleaClave(principal, control::kFormaPago, toma.formaPago));
  }
  if (!toma.notas.empty()) TecleaNotas(principal, toma.notas);
  if (!toma.habitacion.empty()) TecleaHabitacion(principal, toma.habitacion);
  return true;
}

void TecleaPersonas(controles::Formulario& principal, const Pedido& pedido, const std::vector<Tramo>& tramos) {
  auto* grid = principal.Primero<controles::Grid>();
  if (tramos.empty() || grid == nullptr || !grid->PuedeEnfocarse()) return;
  if (grid->Filas() != static_cast<int>(tramos.size())) return;
  // The board hands its rooms over in its own order.
  const auto tieneRenglon = [&](const Tramo& t) {
    for (int fila = 0; fila < grid->Filas(); ++fila) {
      if (EsSinPersonas(*grid, fila, t)) return true;
    }
    return false;
  };
  if (!std::ranges::all_of(tramos, tieneRenglon)) return;
  const std::pair<std::string_view, int> personas[] = {{kv207::col::kAdultos, pedido.adultos},
                                                       {kv207::col::kMenores, pedido.menores},
                                                       {kv207::col::kInfantes, pedido.infantes}};
  principal.Enfoca(*grid);
  for (int fila = 0; fila < grid->Filas(); ++fila) {
    for (const auto& [columna, cuantas] : personas) {
      if (cuantas == 0) continue;
      if (!grid->VaA(fila, grid->IndiceColumna(columna))) return;
      grid->Teclea(std::to_string(cuantas));
    }
    if (!grid->Deja()) return;
  }
}

void EnfocaLoQueFalta(controles::Formulario& principal) {
  if (SinForma(principal)) principal.Enfoca(*principal.Busca(control::kFormaPago));
}

}  // namespace recepcion
