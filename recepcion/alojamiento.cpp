#include "recepcion/alojamiento.h"

#include <limits>

namespace recepcion {

bool SeTocan(const Noches& a, const Noches& b) { return a.inicio < b.fin && b.inicio < a.fin; }

std::optional<int> Lejania(const Noches& linea, const Noches& estancia) {
  constexpr int kDespues = std::numeric_limits<int>::max() / 2;  // further than any line that began before
  if (!SeTocan(linea, estancia)) return std::nullopt;
  const int dias = com::DiasEntre(linea.inicio, estancia.inicio);
  return dias >= 0 ? dias : kDespues - dias;
}

}  // namespace recepcion
