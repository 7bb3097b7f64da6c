// What a "muestra" order tells about the front desk around the screens.
#pragma once

#include "guion/json.h"
#include "recepcion/borrador.h"
#include "recepcion/cotizacion.h"
#include "recepcion/cuadro.h"
#include "recepcion/hoy.h"
#include "recepcion/porque.h"

namespace guion {

// The day: counts of the lists, free rooms, and the rows before the clerk's eyes, of a list or of a search.
Json MuestraHoy(const recepcion::Hoy& hoy);
// The tape chart: period, and the bars of each room.
Json MuestraCuadro(const recepcion::Cuadro& cuadro);
// What the quote offers, by type.
Json MuestraCotizacion(const recepcion::Cotizacion& cotizacion);
// A draft of the capture; the version that it started from is the host's own affair.
Json MuestraBorrador(const recepcion::Borrador& borrador);
Json MuestraLineas(const std::vector<recepcion::Renglon>& renglones);
// Why a cell of the board is not free.
Json MuestraPorQue(const recepcion::Explicacion& explicacion);

}  // namespace guion
