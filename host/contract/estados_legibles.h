// What a clerk calls the states of a reservation.
#pragma once

#include <string_view>

#include "host/contract/estados.h"

namespace anfitrion::estado {

struct Palabra {
  std::string_view codigo, palabra;
};
inline constexpr Palabra kPalabras[] = {{kActiva, "Activa"},
                                        {kConfirmada, "Confirmada"},
                                        {kCancelada, "Cancelada"},
                                        {kCerrada, "Cerrada"},
                                        {kAplicada, "Aplicada"}};
// The word for a code in capitals; a code that a reservation cannot have comes back as it is.
constexpr std::string_view PalabraDe(std::string_view codigo) {
  for (const Palabra& p : kPalabras) {
    if (p.codigo == codigo) return p.palabra;
  }
  return codigo;
}

}  // namespace anfitrion::estado
