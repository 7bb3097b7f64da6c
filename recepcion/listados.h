// The front desk's lists as tables of typed cells, for spreadsheets and paper.
#pragma once

#include "platform/listado/listado.h"
#include "recepcion/cotizacion.h"
#include "recepcion/cuadro.h"
#include "recepcion/hoy.h"

namespace recepcion {

// The rows before the clerk's eyes: a list of the day, or what a search found.
[[nodiscard]] listado::Listado ListadoDe(const Hoy& hoy);
// What holds the rooms in the period, by room and first night.
[[nodiscard]] listado::Listado ListadoDe(const Cuadro& cuadro);
// What the quote offers, by type.
[[nodiscard]] listado::Listado ListadoDe(const Cotizacion& cotizacion);

}  // namespace recepcion
