#include "guion/usable.h"

#include "platform/com/error.h"
#include "platform/controls/formulario.h"

namespace guion {

using controles::Clase;

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
  switch (control.clase()) {
    case Clase::LookupField:
      return static_cast<const controles::LookupField&>(control).locked();
    case Clase::CampoNotas:
      return static_cast<const controles::CampoNotas&>(control).locked();
    case Clase::DateField:
      return !static_cast<const controles::DateField&>(control).AceptaEntrada();
    default:
      return false;
  }
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
