// State codes of the hotel's records (Es_Cve_Estado), as the database keeps them.
#pragma once

#include <string_view>

namespace anfitrion::estado {

inline constexpr std::string_view kActiva = "AC", kConfirmada = "CO", kCancelada = "CA", kCerrada = "CE",
                                  kAplicada = "AP", kBaja = "BA";

}  // namespace anfitrion::estado
