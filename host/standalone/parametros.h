// The host's stored parameters, and what is read from them in more than one place.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/standalone/conexion.h"

namespace autonomo {

// Stored value of the key; nothing when there is none.
std::optional<std::string> LeeParametro(Conexion& conexion, std::string_view clave);
// Whether it is the currency of parameter FIN_MONEDA_LOCAL; false for an empty key.
bool EsMonedaLocal(Conexion& conexion, const std::string& moneda);
// A folio of digits only is zero-filled to the mask of parameter HT_FORMATO_FOLIO ("0000000000" without one); blanks at
// both ends go.
std::string FormateaFolio(Conexion& conexion, std::string_view folio);

}  // namespace autonomo
