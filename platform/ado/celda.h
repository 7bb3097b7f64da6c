// A column of the current row as a plain value. NULL, which other programs may have stored, reads as "", 0 or the first
// day (30/12/1899). Errors of Fields, and of the conversions (variant.h) for what is stored and cannot be read so.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/ado/ado.h"

namespace ado {

// Without blanks at the end, which no comparison sees.
std::string Celda(const Recordset& rs, std::size_t columna);
std::string Celda(const Recordset& rs, std::string_view columna);
double CeldaNumero(const Recordset& rs, std::size_t columna);
double CeldaNumero(const Recordset& rs, std::string_view columna);
std::int32_t CeldaEntero(const Recordset& rs, std::size_t columna);
std::int32_t CeldaEntero(const Recordset& rs, std::string_view columna);
// With its time of day.
com::Fecha CeldaFecha(const Recordset& rs, std::size_t columna);
com::Fecha CeldaFecha(const Recordset& rs, std::string_view columna);

}  // namespace ado
