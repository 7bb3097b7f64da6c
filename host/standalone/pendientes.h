// What a hotel still lacks before its desk can rely on it.
#pragma once

#include <string>
#include <vector>

#include "host/standalone/anfitrion.h"

namespace autonomo {

// What is mended by the assistant of a new hotel, in the place of a table.
inline constexpr const char* kAsistente = "Asistente";

struct Pendiente {
  std::string clave;     // "sin_habitaciones"
  bool estorba = false;  // reservations cannot be stored, or not rightly
  std::string texto;
  // Where it is mended: a catalogue's table, "Parametro", "Usuario" or kAsistente; of a parameter its key. "" outside
  // the program.
  std::string tabla, parametro;
};

// Those that stand in the way first; empty when nothing is missing. Failures of the database.
std::vector<Pendiente> Pendientes(Anfitrion& anfitrion);

}  // namespace autonomo
