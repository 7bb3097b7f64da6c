// Printed formats as plain text.
#pragma once

#include <string>

#include "host/standalone/documento.h"

namespace autonomo {

// The format that is used when the hotel has none of its own.
std::string_view FormatoIncluido();
// Plain text of a reservation by a format (text with the fields of CamposDe). Lines that hold fields only, all of them
// empty, are left out.
std::string ImprimeTexto(std::string_view formato, const Documento& documento);

}  // namespace autonomo
