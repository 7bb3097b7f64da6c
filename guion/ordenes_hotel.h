// The order that sets up a hotel: what the assistant asks, in the same words.
#pragma once

#include "guion/alcance.h"
#include "host/standalone/hotel_nuevo.h"

namespace guion {

class OrdenesHotel {
 public:
  explicit OrdenesHotel(Alcance& alcance) : piezas_(alcance.piezas) {}
  OrdenesHotel(const OrdenesHotel&) = delete;
  OrdenesHotel& operator=(const OrdenesHotel&) = delete;

  std::vector<Orden> Ordenes();
  // The hotel as it is told so far, what a hotel lacks; nothing for another name.
  std::optional<Json> Muestra(const std::string& que);

 private:
  void Hotel(const Palabras& p);

  const Piezas& piezas_;
  autonomo::HotelNuevo hotelNuevo_;
};

}  // namespace guion
