// The rules that the database itself keeps, whoever writes: no room sold twice, a version for each reservation.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "schema/esquema.h"

namespace esquema {

// Functions and triggers, after the tables.
std::vector<Objeto> Guardas(Motor motor);

// --- what the statements of this folder are made with
// s with each `clave` replaced.
std::string Reemplaza(std::string s, std::string_view clave, std::string_view valor);
// " DEFAULT ..." of a column that an insert does not name; "" none.
std::string_view Omision(const Columna& c);

}  // namespace esquema
