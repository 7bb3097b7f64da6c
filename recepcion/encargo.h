// What is picked at the front desk becomes a capture in the reservation screen: a New with its rooms through the board,
// then its guest and the persons that were quoted. Who presses the buttons, a person's windows or a script, says how.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/controls/barra.h"
#include "platform/controls/formulario.h"
#include "recepcion/cotizacion.h"
#include "recepcion/cuadro.h"
#include "recepcion/hoy.h"
#include "recepcion/huespedes.h"
#include "recepcion/pasos.h"

namespace recepcion {

class Encargo {
 public:
  // Presses a button of the screen's toolbar; false when it was kept from acting.
  using Pulsa = std::function<bool(controles::Accion)>;
  // Marks the nights on the board; why it could not, "" done (MarcaTramos).
  using Marca = std::function<std::string(controles::Formulario& tablero)>;
  // Calls the board up from the screen, and has it marked once it is there.
  using AbreTablero = std::function<void(const Marca& marca)>;
  // How far it came: the New did not begin, it does not take the dates, the board was left without a room.
  enum class Llego { SinNuevo, SinFechas, SinHabitacion, ConHabitaciones };

  // Clear comes first: it also forgets what was marked on the board before.
  Llego Reserva(controles::Formulario& principal, const Pedido& pedido, const std::vector<Tramo>& tramos,
                const Pulsa& pulsa, const AbreTablero& abreTablero);
  // The person that was picked for the field; in a New where nothing is being captured. False when the field takes no
  // key now.
  bool TomaHuesped(controles::Formulario& principal, const std::string& campo, const Toma& toma, const Pulsa& pulsa);

 private:
  // The quote that the capture came from: its persons are typed once there is a guest.
  Pedido pedido_;
  std::vector<Tramo> tramos_;
};

// What the front desk's models do once something is picked in them.
struct Destinos {
  std::function<void(const std::string& folio)> abre;
  std::function<void(const std::string& campo, const Toma& toma)> toma;
  std::function<void(const Pedido& pedido, const std::vector<Tramo>& tramos)> reserva;
};
void Conecta(const Destinos& destinos, Hoy& hoy, Cuadro& cuadro, Cotizacion& cotizacion, Huespedes& huespedes);

}  // namespace recepcion
