#include "desktop/preguntas.h"

#include <cmath>
#include <optional>
#include <string>

#include "desktop/dialogos.h"
#include "platform/com/error.h"
#include "platform/controls/grid.h"
#include "publico/publico.h"

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

const controles::LookupField* CampoDe(const controles::Formulario& formulario, const char* nombre) {
  return dynamic_cast<const controles::LookupField*>(formulario.Busca(nombre));
}

// The hotel's rate of a currency on a day; nothing when it has none.
std::optional<double> TipoVigente(const std::string& moneda, com::Fecha dia) {
  try {
    return publico::Utilerias().TipoCambio(moneda, dia);
  } catch (const com::Error&) {
    return std::nullopt;
  }
}

// A rate decides what a stay costs: one that was typed far from the hotel's is asked about.
bool PreguntaTipoCambio(const controles::Formulario& principal, QWidget* padre) {
  constexpr double kDiferencia = 0.1;
  const auto *moneda = CampoDe(principal, "txtMoneda"), *cambio = CampoDe(principal, "txtTipoCambio");
  const auto* captura = dynamic_cast<const controles::DateField*>(principal.Busca("dpFecha"));
  if (moneda == nullptr || cambio == nullptr || captura == nullptr || moneda->text().empty()) return true;
  const double tecleado = com::CDbl(cambio->valor());
  if (tecleado <= 0) return true;  // the screen refuses it
  const auto vigente = TipoVigente(moneda->text(), captura->valor());
  if (vigente && std::abs(tecleado - *vigente) <= kDiferencia * *vigente) return true;
  const std::string hotel = vigente ? "el del hotel es " + com::CStr(com::Variant(*vigente)) : "el hotel no tiene uno";
  if (Confirma("El tipo de cambio de " + moneda->text() + " que se va a guardar es " + cambio->text() + "; " + hotel +
                   " para el " + captura->text() + ".\r\n¿Es correcto?",
               kSiNo, padre)) {
    return true;
  }
  cambio->formulario().Enfoca(*principal.Busca("txtTipoCambio"));
  return false;
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
    case Accion::Aceptar:
      return PreguntaTipoCambio(principal, padre);
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
