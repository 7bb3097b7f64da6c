// What a hotel still lacks before its desk can rely on it.
#pragma once

#include <string>
#include <vector>

#include "host/standalone/anfitrion.h"

namespace autonomo {

// Where what is no catalogue's row is mended, in the place of a table: the sheets of the configuration, and the
// assistant of a new hotel.
inline constexpr const char *kHojaParametros = "Parametro", *kHojaUsuarios = "Usuario", *kAsistente = "Asistente";

struct Pendiente {
  std::string clave;     // "sin_habitaciones"
  bool estorba = false;  // reservations cannot be stored, or not rightly
  std::string texto;
  // Where it is mended: a catalogue's table or one of those above; of a parameter its key. "" outside the program.
  std::string tabla, parametro;
};

// Those that stand in the way first; empty when nothing is missing. Failures of the database.
std::vector<Pendiente> Pendientes(Anfitrion& anfitrion);

}  // namespace autonomo
