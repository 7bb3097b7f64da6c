#include "desktop/mostrador.h"

#include "desktop/dialogos.h"
#include "desktop/escritorio_qt.h"
#include "desktop/ventana_hoy.h"
#include "host/standalone/letras.h"
#include "recepcion/pasos.h"

namespace vista {

Mostrador::Mostrador(EscritorioQt& escritorio) : escritorio_(escritorio), hoy_(autonomo::SinAcentos) {
  hoy_.alAbrir = [this](const std::string& folio) { AbreReservacion(folio); };
}

void Mostrador::AbreHoy() {
  VentanaHoy ventana(hoy_, escritorio_.contexto(), escritorio_.Frente());
  const int salida = Atiende(ventana);
  escritorio_.VuelveAlFrente();
  if (salida == VentanaHoy::kAbre) hoy_.AbreFila(ventana.Elegida());
  if (salida == VentanaHoy::kNueva) escritorio_.Pulsa(controles::Accion::Nuevo);
}

void Mostrador::AbreReservacion(const std::string& folio) {
  controles::Formulario* principal = escritorio_.Principal();
  if (principal == nullptr) return;
  if (EnCaptura(*principal)) escritorio_.Pulsa(controles::Accion::Limpiar);
  static_cast<void>(recepcion::TecleaFolio(*principal, folio));
}

}  // namespace vista
