// Catalogues that a search offers: rows by key and name, without the withdrawn ones.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/standalone/conexion.h"

namespace autonomo {

struct Busqueda {
  std::string_view nombre;  // "Cliente"; how a field's lookup names it, case-blind
  std::string_view titulo;
  std::string_view sentencia;
};

// com::Error kArgumento when there is none of that name.
const Busqueda& BusquedaDe(std::string_view nombre);
// Key and name of each row.
std::vector<std::pair<std::string, std::string>> LeeFilas(Conexion& conexion, const Busqueda& busqueda);

}  // namespace autonomo
