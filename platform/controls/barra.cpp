#include "platform/controls/barra.h"

#include <algorithm>
#include <utility>

#include "platform/com/error.h"

namespace controles {
namespace {

struct DatosAccion {
  Accion accion;
  std::string_view nombre, titulo;
};

constexpr DatosAccion kAcciones[] = {
    {Accion::Nuevo, "nuevo", "Nuevo"},
    {Accion::Editar, "editar", "Editar"},
    {Accion::Aceptar, "aceptar", "Aceptar"},
    {Accion::Limpiar, "limpiar", "Limpiar"},
    {Accion::Cerrar, "cerrar", "Cerrar"},
    {Accion::Confirmar, "confirmar", "Confirmar"},
    {Accion::Eliminar, "eliminar", "Cancelar reservación"},
    {Accion::Reactivar, "reactivar", "Reactivar"},
    {Accion::Correo, "correo", "Correo / Imprimir"},
    {Accion::Registro, "registro", "Registro"},
    {Accion::Cancelar, "cancelar", "Cancelar"},
};

const DatosAccion& DatosDe(Accion a) {
  return *std::find_if(std::begin(kAcciones), std::end(kAcciones), [a](const DatosAccion& d) { return d.accion == a; });
}

void Lanza(const std::function<void()>& evento) {
  if (evento) evento();
}

}  // namespace

std::string_view NombreAccion(Accion a) { return DatosDe(a).nombre; }

std::optional<Accion> AccionDe(std::string_view nombre) {
  for (const DatosAccion& d : kAcciones) {
    if (d.nombre == nombre) return d.accion;
  }
  return std::nullopt;
}

ScreenToolbar::ScreenToolbar(Formulario& formulario, std::string nombre, Lugar lugar, std::vector<Accion> acciones,
                             bool dialogo)
    : Control(formulario, Clase::Barra, std::move(nombre), lugar), acciones_(std::move(acciones)), dialogo_(dialogo) {
  tabStop(false);
}

void ScreenToolbar::ClaveActual(std::string v) {
  if (v == claveActual_) return;
  claveActual_ = std::move(v);
  Avisa();
}

void ScreenToolbar::TituloConfirmar(std::string v) {
  if (v == tituloConfirmar_) return;
  tituloConfirmar_ = std::move(v);
  Avisa();
}

void ScreenToolbar::Permite(int cual, bool v) {
  if (permite_[cual] == v) return;
  permite_[cual] = v;
  Avisa();
}

void ScreenToolbar::CargaClave(const std::string& folio) { ClaveActual(folio); }

void ScreenToolbar::RechazaAceptar() { Avisa(); }

void ScreenToolbar::ConcluyeAceptar() {
  enEdicion_ = esNuevo_ = false;
  Avisa();
}

void ScreenToolbar::Activa(bool) { Avisa(); }

bool ScreenToolbar::Ofrece(Accion a) const {
  if (!enabled() || std::find(acciones_.begin(), acciones_.end(), a) == acciones_.end()) return false;
  if (dialogo_) return a == Accion::Aceptar || a == Accion::Cancelar;
  const bool conClave = !claveActual_.empty();
  switch (a) {
    case Accion::Nuevo:
      return PermiteAccion6();
    case Accion::Editar:
      return PermiteAccion4() && conClave;
    case Accion::Aceptar:
      return enEdicion_;
    case Accion::Limpiar:
    case Accion::Cerrar:
      return true;
    case Accion::Confirmar:
      return !tituloConfirmar_.empty() && conClave;
    case Accion::Eliminar:
      return PermiteAccion5() && conClave;
    case Accion::Reactivar:
      return PermiteReactivar() && conClave;
    case Accion::Correo:
      return PermiteAccion1() && conClave;
    case Accion::Registro:
      return PermiteAccion2() && conClave;
    case Accion::Cancelar:
      return false;
  }
  return false;
}

std::string ScreenToolbar::Titulo(Accion a) const {
  if (a == Accion::Confirmar && !tituloConfirmar_.empty()) return tituloConfirmar_;
  return std::string(DatosDe(a).titulo);
}

void ScreenToolbar::Reinicia() {
  enEdicion_ = esNuevo_ = false;
  claveActual_.clear();
  Avisa();
}

void ScreenToolbar::Pulsa(Accion a) {
  if (!Ofrece(a)) throw com::Error(com::error::kTamanio, "La acción «" + Titulo(a) + "» no está disponible");
  const auto entra = [this](bool nuevo) {
    enEdicion_ = true;
    esNuevo_ = nuevo;
    Avisa();
  };
  switch (a) {
    case Accion::Nuevo:
      entra(true);
      return Lanza(Nuevo);
    case Accion::Editar:
      entra(false);
      return Lanza(Editar);
    case Accion::Aceptar:
      if (Aceptar) Aceptar(esNuevo_);
      return;
    case Accion::Limpiar:
      ConcluyeAceptar();
      return Lanza(Limpiar);
    case Accion::Cerrar:
      return Lanza(Cerrar);
    case Accion::Confirmar:
      return Lanza(B1Click);
    case Accion::Eliminar:
      return Lanza(Eliminar);
    case Accion::Reactivar:
      return Lanza(Reactivar);
    case Accion::Correo:
      return Lanza(Correo);
    case Accion::Registro:
      return Lanza(Registro);
    case Accion::Cancelar:
      return Lanza(Cancelar);
  }
}

}  // namespace controles
