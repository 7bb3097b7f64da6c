// A quote over the telephone: what each room type costs for the stay, what is free, and the way to sell it.
//
// Prices are the hotel's own (Hotel.PrecioHabitacion, with the tax factor of the default branch), in the currency asked
// for, so that the room lines of the reservation cost what was said. Where no room of a type is free on all nights, the
// stay is offered in the fewest rooms, one after the other; where rooms of several types are fewer than those of any
// one, that is the last offer.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/com/fecha.h"
#include "recepcion/cuadro.h"
#include "recepcion/pasos.h"

namespace recepcion {

struct Pedido {
  com::Fecha llegada, salida;
  int adultos = 2, menores = 0, infantes = 0;
  std::string moneda;  // "" the hotel's own
};

struct Oferta {
  std::string tipo, nombre;  // no type for an offer of several
  int libres = 0;            // rooms that are free on all nights
  std::vector<Tramo>
      tramos;            // what would be sold: one room, or several one after the other; empty when there is nothing
  double total = 0;      // of the stay, tax included
  double impuestos = 0;  // part of it
  std::string motivo;    // why it cannot be sold; "" when it can
};

class Cotizacion {
 public:
  // com::Error kArgumento for an arrival before today, a stay without nights or longer than kNochesMaximas, without
  // adults, in a currency that the hotel has no rate for; database failures. The quote before stays then.
  void Calcula(const Pedido& pedido);
  // As it was calculated: with the currency that holds.
  const Pedido& pedido() const { return pedido_; }
  // By type.
  const std::vector<Oferta>& ofertas() const { return ofertas_; }
  // Starts a New with the offer's currency, dates and rooms; the persons are typed once the screen, which wants it
  // first, knows the guest. com::Error kArgumento for one that cannot be
  // sold.
  void Reserva(int oferta) const;
  // Set by whoever shows the quote.
  std::function<void(const Pedido& pedido, const std::vector<Tramo>& tramos)> alReservar;

 private:
  Pedido pedido_;
  std::vector<Oferta> ofertas_;
};

// Keys of the currencies that can be asked for, in order.
[[nodiscard]] std::vector<std::string> Monedas();
// The fewest rooms that hold the stay one after the other, among those of the rows; empty when on some night none is
// free.
[[nodiscard]] std::vector<Tramo> MenosCambios(const Cuadro& cuadro, const std::vector<int>& filas, com::Fecha llegada,
                                              com::Fecha salida);

}  // namespace recepcion
