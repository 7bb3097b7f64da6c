// The front desk around the reservation screen, as a person reaches it: what she picks there is typed in the screens
// for her, after the questions that she gets when she does it herself.
#pragma once

#include <string>

#include "recepcion/cotizacion.h"
#include "recepcion/cuadro.h"
#include "recepcion/hoy.h"
#include "recepcion/renglones.h"

namespace vista {

class EscritorioQt;

class Mostrador {
 public:
  explicit Mostrador(EscritorioQt& escritorio);
  // The day; what is opened from it comes up in the reservation screen.
  void AbreHoy();
  // The tape chart; free nights that are picked become a New through the board.
  void AbreCuadro();
  // A quote over the telephone; what is picked becomes a New through the board.
  void AbreCotizacion();
  // The room lines that a change of nights took away come back where they fit; what does not is told.
  void ReponeHabitaciones();
  // From now on what a change of nights takes away from that screen is kept.
  void Vigila(controles::Formulario& principal) { quitados_.Vigila(principal); }
  recepcion::RenglonesQuitados& quitados() { return quitados_; }

 private:
  // What is captured is left, after the question that a person gets; false when she keeps it.
  bool DejaCaptura();
  void AbreReservacion(const std::string& folio);
  void Reserva(const recepcion::Pedido& pedido, const std::vector<recepcion::Tramo>& tramos);

  EscritorioQt& escritorio_;
  recepcion::Hoy hoy_;
  recepcion::Cuadro cuadro_;
  recepcion::Cotizacion cotizacion_;
  recepcion::RenglonesQuitados quitados_;
};

}  // namespace vista
