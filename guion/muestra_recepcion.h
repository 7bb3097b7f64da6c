// What a "muestra" order tells about the front desk around the screens.
#pragma once

#include "guion/json.h"
#include "recepcion/borrador.h"
#include "recepcion/cifras.h"
#include "recepcion/cotizacion.h"
#include "recepcion/cuadro.h"
#include "recepcion/explicacion.h"
#include "recepcion/hoy.h"
#include "recepcion/huespedes.h"
#include "recepcion/porque.h"

namespace guion {

// The day: counts of the lists, free rooms, and the rows before the clerk's eyes, of a list or of a search.
Json MuestraHoy(const recepcion::Hoy& hoy);
// The tape chart: period, and the bars of each room.
Json MuestraCuadro(const recepcion::Cuadro& cuadro);
// What the quote offers, by type.
Json MuestraCotizacion(const recepcion::Cotizacion& cotizacion);
// The figures: of the period, by month and by night; amounts with two decimals.
Json MuestraCifras(const recepcion::Cifras& cifras);
// A draft of the capture; the version that it started from is the host's own affair.
Json MuestraBorrador(const recepcion::Borrador& borrador);
Json MuestraLineas(const std::vector<recepcion::Renglon>& renglones);
// Why a cell of the board is not free.
Json MuestraPorQue(const recepcion::Explicacion& explicacion);
// Those to whom a new client is similar.
Json MuestraParecidas(const std::vector<recepcion::Parecida>& parecidas);
// How an amount came about.
Json MuestraExplicacion(const recepcion::CuentaExplicada& explicacion);
// The guest's search: who was found, reservations and last stay of whom is pointed at, what a new one would begin with,
// and to whom the last new one was similar.
Json MuestraHuesped(const recepcion::Huespedes& huespedes, const std::vector<recepcion::Parecida>& parecidas);

}  // namespace guion
