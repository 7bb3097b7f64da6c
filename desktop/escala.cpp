#include "desktop/escala.h"

#include <algorithm>

namespace vista {

namespace {
double ampliacion = 1.0;
}

double Ampliacion() { return ampliacion; }
void FijaAmpliacion(double ppp) { ampliacion = std::max(1.0, ppp / 96.0); }

}  // namespace vista
