#include "guion/alcance.h"

#include "platform/com/error.h"

namespace guion {

void Error(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

com::Fecha DiaDe(const std::string& palabra) { return com::SoloFecha(FechaDe(palabra)); }

controles::Formulario& Alcance::Activo() const {
  controles::Formulario* activo = piezas.componente.Activo();
  if (activo == nullptr) throw com::Error(com::error::kSinObjeto, "La pantalla no está abierta; use la orden «abre»");
  return *activo;
}

controles::Formulario& Alcance::FormularioDe(const std::string& nombre) const {
  for (controles::Formulario* f : {&piezas.componente.formulario(), &piezas.componente.tablero()}) {
    if (f->nombre() == nombre) return *f;
  }
  Error("No existe la ventana «" + nombre + "»");
}

controles::Control& Alcance::ControlDe(const std::string& nombre) const {
  const std::size_t punto = nombre.find('.');
  const bool calificado = punto != std::string::npos;
  controles::Formulario& formulario = calificado ? FormularioDe(nombre.substr(0, punto)) : Activo();
  const std::string propio = calificado ? nombre.substr(punto + 1) : nombre;
  controles::Control* control = formulario.Busca(propio);
  if (control == nullptr) Error("No existe el control «" + propio + "» en " + formulario.nombre());
  return *control;
}

controles::Control& Alcance::ControlActivo(const std::string& nombre) const {
  controles::Control& control = ControlDe(nombre);
  if (&control.formulario() != &Activo()) Error("La ventana " + control.formulario().nombre() + " no está activa");
  return control;
}

controles::Grid& Alcance::GridDe(controles::Formulario& formulario) const {
  if (auto* grid = formulario.Primero<controles::Grid>()) return *grid;
  Error(formulario.nombre() + " no tiene renglones");
}

controles::Grid& Alcance::Renglones() const {
  controles::Formulario& activo = Activo();
  if (&activo != &piezas.componente.formulario()) Error("La pantalla de reservación no está activa");
  return GridDe(activo);
}

controles::Grid& Alcance::Tablero() const {
  controles::Formulario& activo = Activo();
  if (&activo != &piezas.componente.tablero()) Error("El tablero de disponibilidad no está a la vista");
  return GridDe(activo);
}

controles::ScreenToolbar& Alcance::BarraDe(controles::Formulario& formulario) const {
  if (auto* barra = formulario.Primero<controles::ScreenToolbar>()) return *barra;
  Error(formulario.nombre() + " no tiene barra de acciones");
}

bool Alcance::Pulsa(controles::Accion accion) const {
  piezas.manos.Accion(BarraDe(piezas.componente.formulario()), accion);
  return true;
}

void Alcance::ExigeSinModal() const {
  if (modales > 0) Error("El tablero de disponibilidad está abierto; acéptelo o cancélelo antes");
}

void Alcance::ExigePantalla() const {
  ExigeSinModal();
  static_cast<void>(Activo());
}

}  // namespace guion
