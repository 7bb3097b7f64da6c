// The front desk around the reservation screen, as a person reaches it: what she picks there is typed in the screens
// for her, after the questions that she gets when she does it herself.
#pragma once

#include <string>

#include "recepcion/hoy.h"

namespace vista {

class EscritorioQt;

class Mostrador {
 public:
  explicit Mostrador(EscritorioQt& escritorio);
  // The day; what is opened from it comes up in the reservation screen.
  void AbreHoy();

 private:
  void AbreReservacion(const std::string& folio);

  EscritorioQt& escritorio_;
  recepcion::Hoy hoy_;
};

}  // namespace vista
