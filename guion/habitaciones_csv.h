// Rooms in bulk: a file with the columns of the catalogue, all of it or nothing.
#pragma once

#include <string>
#include <vector>

#include "host/standalone/conexion.h"

namespace guion {

struct LineaMala {
  int linea = 0;  // in the file, from 1
  std::string motivo;
};

struct AltaHabitaciones {
  struct Fila {
    std::string clave, descripcion, tipo, grupo, area;  // keys as they are stored; grupo and area maybe of new ones
  };
  struct Nueva {
    std::string clave, nombre;
  };
  std::vector<Fila> filas;
  std::vector<Nueva> grupos, areas;  // named in the file, and not there yet
  std::vector<LineaMala> malas;      // in the order of the file; with one of them nothing is stored
};

// Columns "habitacion,descripcion,tipo,grupo,area". Type, group and area are keys or names; a type must be there, a
// group or area that is not is made. Without a description the room's number is it, without a group or area it is
// "General". com::Error kArgumento for a file that cannot be read, that has other columns or no rooms.
AltaHabitaciones RevisaHabitaciones(autonomo::Conexion& conexion, const std::string& ruta);
// Stores them in one transaction. com::Error kArgumento when there are bad lines, kRestriccion for a room that has come
// up meanwhile; nothing is stored then.
void GuardaHabitaciones(autonomo::Conexion& conexion, const AltaHabitaciones& alta);
// "24 habitaciones. Áreas nuevas: Piso 3"; or the bad lines, one below the other.
std::string Dice(const AltaHabitaciones& alta);

}  // namespace guion
