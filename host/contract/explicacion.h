// How the hotel's price of a stay came about: the steps by which Hotel.PrecioHabitacion works, told by the price source
// itself. A host need not offer it; then nothing is explained.
#pragma once

#include <string>
#include <vector>

#include "platform/com/fecha.h"
#include "platform/com/objeto.h"

namespace anfitrion {

// Nights one after the other at the same price. Amounts of one night, tax included: the first three in local currency,
// the others in the one asked for.
struct PasoPrecio {
  com::Fecha desde, hasta;  // nights from desde up to the one before hasta
  std::string tarifa;       // what the price comes from, in words: "tarifa de viernes y sábado", "precio de lista"
  double precio = 0, adultoExtra = 0, menorExtra = 0;
  double importe = 0, importeExtra = 0;
};

struct ExplicacionPrecio {
  std::string motivo;  // why there is no price; "" when there is
  std::string tipo;    // the room type's name
  int incluidas = 0;   // persons in the night's price
  int adultosExtra = 0, menoresExtra = 0;
  double tipoCambio = 1;  // local currency for one unit of the one asked for
  std::vector<PasoPrecio> pasos;
  double precio = 0, precioExtra = 0;  // what PrecioHabitacion gives
};

class ExplicaPrecios : public com::Desconocido {
 public:
  static constexpr com::Guid kId{0x5A1B0007, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x07}};
  // Arguments as those of Hotel.PrecioHabitacion.
  virtual ExplicacionPrecio ExplicaHabitacion(const std::string& habitacion, com::Fecha inicio, com::Fecha fin,
                                              int adultos, int menores, const std::string& moneda,
                                              double tipoCambio) = 0;
};

inline constexpr com::Guid kClaseExplicaPrecios{
    0x5A1B1007, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x07}};

}  // namespace anfitrion
