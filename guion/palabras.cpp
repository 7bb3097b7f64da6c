#include "guion/palabras.h"

namespace guion {

std::string NoEsNumero(const std::string& palabra) { return "«" + palabra + "» no es un número"; }
std::string NoEsFecha(const std::string& palabra) { return "«" + palabra + "» no es una fecha AAAA-MM-DD"; }

com::Fecha FechaDe(const std::string& palabra) {
  const auto fecha = com::DeIso(palabra);
  if (!fecha) throw com::Error(com::error::kArgumento, NoEsFecha(palabra));
  return *fecha;
}

com::Fecha MomentoDe(const std::string& palabra) {
  const auto momento = com::DeIso(palabra);
  if (!momento) throw com::Error(com::error::kArgumento, NoEsFecha(palabra) + "THH:MM[:SS]");
  return *momento;
}

}  // namespace guion
