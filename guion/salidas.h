// Calendars of rooms and the day's report as files, for every program that writes them.
#pragma once

#include <memory>
#include <string>

#include "host/standalone/conexion.h"
#include "recepcion/parte.h"

namespace guion {

// Writes the calendar (recepcion/agenda.h) of a room, of all rooms in one with "". com::Error kArgumento for a room
// that is not there or a file that does not end in ".ics"; those of EscribePrivado.
void ExportaAgenda(const std::shared_ptr<autonomo::Conexion>& conexion, const std::string& habitacion, bool conNombres,
                   com::Fecha ahora, const std::string& ruta);
// One for each room in service, as "0101.ics" in the folder, which must be there; one whose nights are the same is left
// as it is. Gives how many rooms there are, and how many files were written.
struct Agendas {
  int habitaciones = 0, escritas = 0;
};
Agendas ExportaAgendas(const std::shared_ptr<autonomo::Conexion>& conexion, bool conNombres, com::Fecha ahora,
                       const std::string& carpeta);

// As the ending says: ".pdf" (needs a QGuiApplication) or ".txt". com::Error kArgumento for another one.
void ExportaParte(const recepcion::Parte& parte, const std::string& ruta);

}  // namespace guion
