// What must hold in the database whatever a clerk did, asked for by statements of their own.
#pragma once

#include <string>
#include <vector>

#include "host/standalone/conexion.h"

namespace mono {

// What does not hold, the first rows that say so; "" when all does.
std::string Revisa(autonomo::Conexion& conexion);
// The stored folios, in their order.
std::vector<std::string> Folios(autonomo::Conexion& conexion);
// All that is stored of a reservation, but who wrote it last and when, and the exchange rate, which each edit takes
// anew from the host.
std::string Imagen(autonomo::Conexion& conexion, const std::string& folio);
// Sum of its lines, tax included.
double Total(autonomo::Conexion& conexion, const std::string& folio);

}  // namespace mono
