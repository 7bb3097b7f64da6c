#include "desktop/escala.h"

#include <algorithm>

namespace vista {

namespace {
double ampliacion = 1.0;
}

double Ampliacion() { return ampliacion; }

double FijaAmpliacion(double ppp, int ancho) {
  constexpr double kMinima = 0.8;
  const double pedida = std::max(1.0, ppp / 96.0);
  const double cabe = static_cast<double>(ancho) * kTwipsPorPixel / kAnchoPantalla;
  ampliacion = ancho <= 0 ? pedida : std::clamp(cabe, pedida * kMinima, pedida);
  return ampliacion / pedida;
}

}  // namespace vista
