#include "recepcion/encargo.h"

#include <utility>

#include "platform/controls/grid.h"
#include "publico/controles.h"

namespace recepcion {

using controles::Accion;

Encargo::Llego Encargo::Reserva(controles::Formulario& principal, const Pedido& pedido,
                                const std::vector<Tramo>& tramos, const Pulsa& pulsa, const AbreTablero& abreTablero) {
  tramos_.clear();
  if (!pulsa(Accion::Limpiar) || !pulsa(Accion::Nuevo)) return Llego::SinNuevo;
  if (!pedido.moneda.empty()) TecleaMoneda(principal, pedido.moneda);
  if (!TecleaEstancia(principal, pedido.llegada, pedido.salida)) return Llego::SinFechas;
  abreTablero([&](controles::Formulario& tablero) { return MarcaTramos(tablero, pedido.llegada, tramos); });
  const auto* renglones = principal.Primero<controles::Grid>();
  if (renglones == nullptr || renglones->Filas() == 0) return Llego::SinHabitacion;
  pedido_ = pedido;
  tramos_ = tramos;
  return Llego::ConHabitaciones;
}

bool Encargo::TomaHuesped(controles::Formulario& principal, const std::string& campo, const Toma& toma,
                          const Pulsa& pulsa) {
  const auto* barra = principal.Primero<controles::ScreenToolbar>();
  if (barra == nullptr || (!barra->EnEdicion() && !pulsa(Accion::Nuevo))) return false;
  if (!TecleaToma(principal, campo, toma)) return false;
  if (campo != kv207::control::kHuesped) return true;
  TecleaPersonas(principal, pedido_, std::exchange(tramos_, {}));
  EnfocaLoQueFalta(principal);
  return true;
}

void Conecta(const Destinos& destinos, Hoy& hoy, Cuadro& cuadro, Cotizacion& cotizacion, Huespedes& huespedes) {
  hoy.alAbrir = cuadro.alAbrir = huespedes.alAbrir = destinos.abre;
  huespedes.alElegir = destinos.toma;
  cotizacion.alReservar = destinos.reserva;
  cuadro.alReservar = [reserva = destinos.reserva](const std::string& habitacion, com::Fecha desde, com::Fecha hasta) {
    reserva({desde, hasta, 0, 0, 0, ""}, {{habitacion, desde, hasta}});
  };
}

}  // namespace recepcion
