#include "guion/usable.h"

#include "platform/com/error.h"
#include "platform/controls/formulario.h"

namespace guion {

namespace {

[[noreturn]] void Rechaza(int numero, const std::string& nombre, const std::string& motivo) {
  throw com::Error(numero, "«" + nombre + "» " + motivo);
}

}  // namespace

void RevisaUsable(const controles::Control& control) {
  if (!control.formulario().visible()) {
    Rechaza(com::error::kTamanio, control.nombre(),
            "está en la ventana " + control.formulario().nombre() + ", que no se muestra");
  }
  for (const controles::Control* c = &control; c != nullptr; c = c->contenedor()) {
    if (!c->visible()) Rechaza(com::error::kTamanio, control.nombre(), "no está a la vista");
    if (!c->enabled()) Rechaza(com::error::kTamanio, control.nombre(), "está deshabilitado");
  }
}

bool Bloqueado(const controles::Control& control) {
  if (const auto* campo = controles::Como<controles::LookupField>(&control)) return campo->locked();
  if (const auto* notas = controles::Como<controles::CampoNotas>(&control)) return notas->locked();
  const auto* fecha = controles::Como<controles::DateField>(&control);
  return fecha != nullptr && !fecha->AceptaEntrada();
}

void RechazaSalida(const controles::Grid& grid) {
  throw com::Error(com::error::kTamanio,
                   "La celda «" + grid.ClaveColumna() + "» de «" + grid.nombre() + "» no se puede dejar");
}

void RevisaEntrada(const controles::Control& control) {
  RevisaUsable(control);
  if (Bloqueado(control)) Rechaza(com::error::kTamanio, control.nombre(), "no acepta captura");
}

void RevisaCelda(const controles::Grid& grid, int fila, int columna) {
  if (fila < -1 || fila >= grid.Filas()) {
    Rechaza(com::error::kSubindice, grid.nombre(),
            "no tiene el renglón " + std::to_string(fila) + "; tiene " + std::to_string(grid.Filas()));
  }
  if (!grid.columna(columna).visible) {
    Rechaza(com::error::kElemento, grid.nombre(), "no muestra la columna «" + grid.columna(columna).clave + "»");
  }
}

void RevisaCeldaEscribible(const controles::Grid& grid, int fila, int columna) {
  RevisaCelda(grid, fila, columna);
  if (grid.columna(columna).bloqueada) {
    Rechaza(com::error::kTamanio, grid.nombre(), "tiene bloqueada la columna «" + grid.columna(columna).clave + "»");
  }
}

}  // namespace guion
