#include "desktop/preguntas.h"

#include <cmath>
#include <optional>
#include <string>

#include "component/nombres.h"
#include "desktop/dialogos.h"
#include "platform/com/error.h"
#include "platform/controls/grid.h"
#include "publico/publico.h"

namespace vista {

namespace control = kv207::control;
using controles::Accion;

namespace {

// What a control holds that a person may have entered.
std::string Contenido(const controles::Control& control) {
  if (const auto* campo = controles::Como<controles::LookupField>(&control))
    return campo->locked() ? "" : campo->text();
  if (const auto* fecha = controles::Como<controles::DateField>(&control)) return fecha->text();
  if (const auto* notas = controles::Como<controles::CampoNotas>(&control)) return notas->text();
  const auto* grid = controles::Como<controles::Grid>(&control);
  std::string todo;
  for (int f = 0; grid != nullptr && f < grid->Filas(); ++f) {
    for (int c = 0; c < grid->NumColumnas(); ++c) {
      if (grid->columna(c).visible) todo += grid->Texto(f, c) + '\t';
    }
    todo += '\n';
  }
  return todo;
}

std::string Contenido(const controles::Formulario& formulario) {
  std::string todo;
  for (const controles::Control* c : formulario.controles()) {
    // The date that floats over a cell is the cell's.
    const bool flota = c->contenedor() != nullptr && !c->contenedor()->visible();
    if (!flota) todo += Contenido(*c) + '\n';
  }
  return todo;
}

const controles::LookupField* CampoDe(const controles::Formulario& formulario, const char* nombre) {
  return controles::Como<controles::LookupField>(formulario.Busca(nombre));
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
  const auto *moneda = CampoDe(principal, control::kMoneda), *cambio = CampoDe(principal, control::kTipoCambio);
  const auto* captura = controles::Como<controles::DateField>(principal.Busca(control::kFecha));
  if (moneda == nullptr || cambio == nullptr || captura == nullptr || moneda->text().empty()) return true;
  if (!cambio->enabled()) return true;  // the hotel's own, which nobody could type over
  const double tecleado = com::CDbl(cambio->valor());
  if (tecleado <= 0) return true;  // the screen refuses it
  const auto vigente = TipoVigente(moneda->text(), captura->valor());
  if (vigente && std::abs(tecleado - *vigente) <= kDiferencia * *vigente) return true;
  const std::string hotel = vigente ? "el del hotel es " + com::CStr(com::Variant(*vigente)) : "el hotel no tiene uno";
  if (Confirma("El tipo de cambio de " + moneda->text() + " que se va a guardar es " + cambio->text() + "; " + hotel +
                   " para el " + captura->text() + ".\r\n¿Es correcto?",
               caja::kAviso, padre)) {
    return true;
  }
  cambio->formulario().Enfoca(*principal.Busca(control::kTipoCambio));
  return false;
}

}  // namespace

bool EnCaptura(const controles::Formulario& principal) {
  const auto* barra = principal.Primero<controles::ScreenToolbar>();
  return barra != nullptr && barra->EnEdicion();
}

void Resguardo::Comienza(const controles::Formulario& principal) { inicio_ = Contenido(principal); }

bool Resguardo::HayCaptura(const controles::Formulario& principal) const {
  return EnCaptura(principal) && Contenido(principal) != inicio_;
}

bool Resguardo::PermiteSalir(const controles::Formulario& principal, QWidget* padre) const {
  return !HayCaptura(principal) ||
         Confirma("Hay una reservación en captura que no se ha guardado.\r\n¿Desea salir y descartarla?", caja::kAviso,
                  padre);
}

bool Resguardo::Permite(const controles::Formulario& principal, Accion accion, QWidget* padre) const {
  switch (accion) {
    case Accion::Cerrar:
      return PermiteSalir(principal, padre);
    case Accion::Nuevo:
    case Accion::Limpiar:
      return !HayCaptura(principal) ||
             Confirma("Hay una reservación en captura que no se ha guardado.\r\n¿Desea descartarla?", caja::kAviso,
                      padre);
    case Accion::Eliminar:
      return Confirma(
          "¿Desea cancelar la reservación " + principal.Primero<controles::ScreenToolbar>()->ClaveActual() + "?",
          caja::kAviso, padre);
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
      caja::kInforme, padre, "Disponibilidad");
  return false;
}

}  // namespace vista
