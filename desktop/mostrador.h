// The front desk around the reservation screen, as a person reaches it: what she picks there is typed in the screens
// for her, after the questions that she gets when she does it herself.
#pragma once

#include <QString>
#include <string>

#include "desktop/ayuda.h"
#include "recepcion/cifras.h"
#include "recepcion/cotizacion.h"
#include "recepcion/cuadro.h"
#include "recepcion/encargo.h"
#include "recepcion/hoy.h"
#include "recepcion/huespedes.h"
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
  // A quote over the telephone; what is picked becomes a New through the board, then its guest is asked for.
  void AbreCotizacion();
  // The room lines that a change of nights took away come back where they fit; what does not is told.
  void ReponeHabitaciones();
  // From now on what a change of nights takes away from that screen is kept.
  void Vigila(controles::Formulario& principal) { quitados_.Vigila(principal); }
  recepcion::RenglonesQuitados& quitados() { return quitados_; }
  // What a change of nights took away in the open capture, and how to have it back; "" nothing.
  QString AvisoDeQuitados() const;
  // The guest's search for the field with the keyboard, or for the guest's; what is picked is typed there, in a New
  // when nothing is being captured.
  void AbreHuesped();
  // For a field of clients, with what was typed there.
  void BuscaHuesped(const std::string& campo, const std::string& filtro);
  // How the amounts came about, the current line first; with the keyboard elsewhere the footer.
  void Explica();
  // The manual, at the place that fits what has the keyboard.
  void AbreAyuda() { ayuda_.Abre(); }
  // Opens a stored reservation in the reservation screen.
  void AbreReservacion(const std::string& folio);
  // The figures of a period.
  void AbreCifras();

 private:
  // What is captured is left, after the question that a person gets; false when she keeps it.
  bool DejaCaptura();
  void TomaHuesped(const std::string& campo, const recepcion::Toma& toma);
  // Has the board marked, and says why it could not be.
  void AbreTablero(controles::Formulario& principal, const recepcion::Encargo::Marca& marca);
  // False when the New did not begin, or refused the dates.
  bool Reserva(const recepcion::Pedido& pedido, const std::vector<recepcion::Tramo>& tramos);

  EscritorioQt& escritorio_;
  recepcion::Hoy hoy_;
  recepcion::Cuadro cuadro_;
  recepcion::Cotizacion cotizacion_;
  recepcion::RenglonesQuitados quitados_;
  recepcion::Huespedes huespedes_;
  TeclaAyuda ayuda_;
  bool empezada_ = false;  // what was picked last became a New
  recepcion::Encargo encargo_;
  recepcion::Cifras cifras_;
};

}  // namespace vista
