// What a clerk saw of a reservation, to tell her what has changed since.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/ado/ado.h"

namespace autonomo {

// Fields of a loaded reservation and its rooms, by the name that a clerk knows.
using Imagen = std::vector<std::pair<std::string, std::string>>;

// From the record set of the screen's load; empty without rows.
Imagen ImagenDe(ado::Recordset& filas);
// One line for each field or room that differs, "- NOMBRE: ANTES -> DESPUÉS".
std::string Diferencias(const Imagen& antes, const Imagen& despues);

}  // namespace autonomo
