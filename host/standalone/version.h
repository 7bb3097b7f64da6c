// What a program says about itself.
#pragma once

#include <string>
#include <string_view>

namespace autonomo {

// "reservas 1.0.0", then engine, schema version and database, a line each. com::Error kArgumento for an address that
// RevisaDireccion refuses: a password is shown nowhere.
std::string TextoVersion(std::string_view programa, std::string_view base);

}  // namespace autonomo
