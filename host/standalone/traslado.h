// A hotel from one database into another, also of another engine.
#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "host/standalone/conexion.h"

namespace autonomo {

// Whether it holds nothing but what a new hotel begins with.
bool EsNueva(ConexionDeMotor& base);

// Copies every row, in one transaction of each database, and compares all rows of both before it commits; gives the
// rows of each table. What is written to the source meanwhile is not in it. com::Error kArgumento when the target is
// not new, kSoloLectura for a session that cards are hidden from, kBaseDatos when a row did not arrive as it was; the
// engines' own errors. Nothing stays of a copy that failed.
std::vector<std::pair<std::string_view, std::int64_t>> Traslada(ConexionDeMotor& de, ConexionDeMotor& a);

}  // namespace autonomo
