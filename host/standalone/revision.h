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

// Looks at the whole of it: pages and indexes of a file, version of the definition, keys that no row has, nights that
// are sold twice, nights that a server keeps for nobody (it is made to keep what the lines hold), parameters that
// cannot be read, copies. Guards that are missing are put back, as at each opening; one of an earlier version stays as
// it is, and what it holds is not looked at. What keeps it from being opened is a finding, the last one.
[[nodiscard]] std::vector<Hallazgo> Revisa(const OpcionesConexion& opciones, const Reloj& reloj);

}  // namespace autonomo
