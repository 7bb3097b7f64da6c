// What a program says about itself.
#pragma once

#include <string>
#include <string_view>

#include "host/standalone/conexion.h"

namespace autonomo {

// "reservas 1.0.0", then engine, schema version and database, a line each, as the program knows them by itself.
// com::Error kArgumento for an address that RevisaHotel refuses: a password is shown nowhere.
std::string TextoVersion(std::string_view programa, std::string_view base);
// The same with what the server of an address says: its version, and the schema version that the database holds.
// Nothing is changed there, and nobody is asked for a password; where there is no answer the text says why.
std::string TextoVersionPreguntando(std::string_view programa, const std::string& base);
// Likewise over the connection that is open.
std::string TextoVersionDe(ConexionDeMotor& abierta, std::string_view programa, const std::string& base);

}  // namespace autonomo
