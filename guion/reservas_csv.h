// The two files of an import: the hotel's rooms and its bookings.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/com/fecha.h"

namespace guion {

struct HabitacionCsv {
  std::string habitacion, descripcion, tipo, tipoDescripcion, grupo, area;
  int personas = 0, personasMax = 0;
  double precioNoche = 0;  // list price, tax included
};

struct ReservaCsv {
  std::string id;
  com::Fecha captura, llegada;
  int noches = 0;
  int adultos = 0, menores = 0, infantes = 0;
  std::string tipo;
  double tarifa = 0;  // agreed price of one night, tax included; 0 none
  bool cancelada = false;
  com::Fecha fechaEstado;
  int linea = 0;                    // where it stands in the file
  std::vector<std::string> campos;  // as they stand in the file; the id without blanks around it
};

// A row of the bookings file that cannot be captured.
struct FilaMala {
  int linea = 0;
  std::vector<std::string> campos;  // one for each column; empty where the row has none
  std::string motivo;               // what varies from row to row between «» or after a colon
  std::string texto;                // the whole line, when it could not be split into fields
};

struct ReservasCsv {
  std::vector<ReservaCsv> reservas;
  std::vector<FilaMala> malas;  // in the order of the file
};

const std::vector<std::string>& ColumnasReservas();

// The whole file, every value checked. The errors of LeeCsv, and the same with file and line for a line with a defect,
// a value that makes no sense, a repeated key or a room type with two descriptions.
std::vector<HabitacionCsv> LeeHabitaciones(const std::string& ruta);

// The whole file; the errors of LeeCsv alone. A row with a defect, with a value that makes no sense, with the id of an
// earlier booking or of a type that no room has is a bad one.
ReservasCsv LeeReservas(const std::string& ruta, const std::vector<HabitacionCsv>& habitaciones);

// What happened to a booking on a day.
struct Evento {
  com::Fecha dia;
  bool cancelacion = false;
  std::size_t reserva = 0;  // index of the booking
};

// In date order; on one day the captures come first, each kind in the order of the file. A cancellation dated before
// its capture happens on the day of the capture.
std::vector<Evento> OrdenaEventos(const std::vector<ReservaCsv>& reservas);

}  // namespace guion
