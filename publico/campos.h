// Reading database values into fields.
#pragma once

#include <string>

#include "platform/com/variant.h"

namespace kv207 {

// Text of a value; NULL, which other programs may have stored, shows as an empty text.
inline std::string TextoDe(const com::Variant& valor) { return valor.EsNulo() ? std::string() : com::CStr(valor); }

}  // namespace kv207
