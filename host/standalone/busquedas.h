// Catalogues that a search offers: rows by key and name, without the withdrawn ones.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/standalone/conexion.h"

namespace autonomo {

struct Busqueda {
  std::string_view nombre;  // "Cliente"; how a field's lookup names it, case-blind
  std::string_view titulo;
  std::string_view clave, descripcion;  // what a row is known by, and its name, as the rows' statement gives them
  std::string_view filas;               // from where, and which: " FROM ... WHERE ..."
};

// com::Error kArgumento when there is none of that name.
const Busqueda& BusquedaDe(std::string_view nombre);
// Key and name of each row, by key.
std::vector<std::pair<std::string, std::string>> LeeFilas(Conexion& conexion, const Busqueda& busqueda);
// Name of a row by its key, compared as the database compares; nothing when there is no such row.
std::optional<std::string> NombreDe(Conexion& conexion, const Busqueda& busqueda, const std::string& clave);
bool HayFilas(Conexion& conexion, const Busqueda& busqueda);

}  // namespace autonomo
