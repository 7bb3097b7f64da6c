#include "recepcion/pasos.h"

namespace recepcion {

bool TecleaFolio(controles::Formulario& principal, const std::string& folio) {
  auto* campo = controles::Como<controles::LookupField>(principal.Busca("txtFolio"));
  const auto* barra = principal.Primero<controles::ScreenToolbar>();
  if (campo == nullptr || barra == nullptr || barra->EnEdicion() || !campo->PuedeEnfocarse()) return false;
  principal.Enfoca(*campo);
  campo->Teclea(folio);
  principal.PulsaTecla(controles::tecla::kEnter);
  return true;
}

}  // namespace recepcion
