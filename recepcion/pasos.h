// What the front desk types for the clerk in the screens: each step is a user's, so the screens' own rules hold.
#pragma once

#include <string>
#include <vector>

#include "platform/com/fecha.h"
#include "platform/controls/barra.h"
#include "platform/controls/formulario.h"

namespace recepcion {

// Types a folio in the reservation screen's field and confirms it. False while a capture or a disabled field does not
// let it.
bool TecleaFolio(controles::Formulario& principal, const std::string& folio);

}  // namespace recepcion
