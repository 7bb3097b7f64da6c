// A room's nights as a calendar (iCalendar, RFC 5545) that other programs read: what holds the room, as whole days from
// the arrival up to the departure, which is free again.
//
// An event keeps its identity (UID) while its reservation keeps the room from that first night on: whoever reads the
// calendar again changes the event instead of adding another. Its stamp is when the reservation was changed last, so
// that the same nights give the same text. No guest is named unless that is asked for.
#pragma once

#include <string>
#include <vector>

#include "recepcion/cuadro.h"
#include "recepcion/lectura.h"

namespace recepcion {

struct PedidoAgenda {
  com::Fecha desde;  // first night
  int noches = 0;
  bool conNombres = false;
  std::string hotel;  // name
};
// From a month before that day to a year after it.
[[nodiscard]] PedidoAgenda PedidoDeAgenda(com::Fecha hoy, std::string hotel, bool conNombres);

struct Agenda {
  std::string habitacion;
  std::string texto;
};
// One for each room in service, by key. com::Error for database failures.
[[nodiscard]] std::vector<Agenda> LeeAgendas(const Fuente& fuente, const PedidoAgenda& pedido);
// A room's alone, or with "" all rooms in one calendar; com::Error kArgumento for a room that is not there.
[[nodiscard]] std::string LeeAgenda(const Fuente& fuente, const std::string& habitacion, const PedidoAgenda& pedido);

// A name of the room's own for its file: letters, digits and "-" of the key as they are, other bytes as "_" and their
// number.
[[nodiscard]] std::string NombreDeArchivo(const std::string& habitacion);

}  // namespace recepcion
