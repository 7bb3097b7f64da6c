// Names and addresses of machines in the network.
#pragma once

#include <string>

namespace autonomo {

// Whether the text can be a machine's name or address; one with a port, a protocol or a user before it is none.
bool EsNombreDeEquipo(const std::string& texto);

// Whether it is this machine by the names that everybody uses for it: "localhost", "127.0.0.1", "::1". What else leads
// here counts as another machine, which costs encryption and no more.
bool EsDeEsteEquipo(const std::string& equipo);

}  // namespace autonomo
