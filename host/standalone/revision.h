// What support looks at in a hotel's database.
#pragma once

#include <string>
#include <vector>

#include "host/standalone/conexion.h"

namespace autonomo {

struct Hallazgo {
  bool mal = false;
  std::string texto;  // Spanish, one line or more
};

// Looks at the whole of it, opens it and so brings it forward and puts back guards that are missing: pages and indexes
// of a file, definition, keys that no row has, nights that are sold twice, parameters that cannot be read, copies. What
// keeps it from being opened is a finding, the last one.
std::vector<Hallazgo> Revisa(const OpcionesConexion& opciones, const Reloj& reloj);

}  // namespace autonomo
