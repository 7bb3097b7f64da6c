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
// Zero-fill mask of folios: parameter HT_FORMATO_FOLIO, "0000000000" without one.
std::string MascaraDeFolio(Conexion& conexion);

}  // namespace autonomo
