#include "desktop/preguntas.h"

#include "desktop/dialogos.h"
#include "platform/controls/grid.h"

namespace vista {

using controles::Accion;

namespace {

constexpr int kSiNo = 308;  // Yes and No, No first

bool HayRenglones(const controles::Formulario& formulario) {
  for (const controles::Control* c : formulario.controles()) {
    if (c->clase() == controles::Clase::Grid) return static_cast<const controles::Grid*>(c)->Filas() > 0;
  }
  return false;
}

bool EnCaptura(const controles::Formulario& formulario) {
  const controles::ScreenToolbar* barra = BarraDe(formulario);
  return barra != nullptr && barra->EnEdicion();
}

}  // namespace

controles::ScreenToolbar* BarraDe(const controles::Formulario& formulario) {
  for (controles::Control* c : formulario.controles()) {
    if (c->clase() == controles::Clase::Barra) return static_cast<controles::ScreenToolbar*>(c);
  }
  return nullptr;
}

bool PreguntaSalida(const controles::Formulario& principal, QWidget* padre) {
  return !EnCaptura(principal) ||
         Confirma("Hay una reservación en captura que no se ha guardado.\r\n¿Desea salir y descartarla?", kSiNo, padre);
}

bool PreguntaAccion(const controles::Formulario& principal, Accion accion, QWidget* padre) {
  switch (accion) {
    case Accion::Cerrar:
      return PreguntaSalida(principal, padre);
    case Accion::Nuevo:
    case Accion::Limpiar:
      return !EnCaptura(principal) || !HayRenglones(principal) ||
             Confirma("Hay una reservación en captura que no se ha guardado.\r\n¿Desea descartarla?", kSiNo, padre);
    case Accion::Eliminar:
      return Confirma("¿Desea cancelar la reservación " + BarraDe(principal)->ClaveActual() + "?", kSiNo, padre);
    default:
      return true;
  }
}

bool PermiteMarcas(const controles::Formulario& principal, QWidget* padre) {
  if (EnCaptura(principal)) return true;
  Avisa(
      "No hay una reservación en captura: el tablero es sólo de consulta.\r\n"
      "Para reservar habitaciones ciérrelo y pulse Nuevo o Editar.",
      64, padre, "Disponibilidad");
  return false;
}

}  // namespace vista
