// The rules that the database itself keeps, whoever writes: no room sold twice, a version for each reservation.
#pragma once

#include <vector>

#include "schema/esquema.h"

namespace esquema {

// Functions and triggers, after the tables.
std::vector<Objeto> Guardas(Motor motor);

}  // namespace esquema
