// Pricing of a room line and totals of the reservation. All prices include tax.
#include <string>

#include "platform/regional/regional.h"
#include "publico/avisos.h"
#include "publico/columnas.h"
#include "publico/publico.h"
#include "reservation/frmKV207.h"
#include "reservation/renglones.h"

namespace kv207 {

namespace mensaje = anfitrion::mensaje;

void frmKV207::CalculaImportes(bool soloRecalcular) {
  if (ssReservaciones.fila() >= 0) CalculaRenglon(ssReservaciones.fila(), soloRecalcular);
}

bool frmKV207::CalculaRenglon(int fila, bool soloRecalcular) {
  controles::Grid& grid = ssReservaciones;
  if (CeldaVacia(grid.celda(fila, col::kNombre))) return false;
  const int adultos = PersonasDeCelda(grid.celda(fila, col::kAdultos));
  const int menores = PersonasDeCelda(grid.celda(fila, col::kMenores));
  const int infantes = PersonasDeCelda(grid.celda(fila, col::kInfantes));
  if (adultos == 0 && menores == 0 && infantes == 0) return false;
  const OrigenPrecio origen = OrigenDe(fila);
  const double antes = com::CDbl(grid.celda(fila, col::kTotal));
  if (!soloRecalcular) OlvidaPrecio(fila);
  if (txtNHuesped.text().empty()) {
    Avisa(*this, mensaje::kPrecioSinHuesped);
    Enfoca(txtHuesped);
    return false;
  }

  anfitrion::Desglose d;
  bool conError = false;
  if (soloRecalcular) {
    d.precioNeto = d.total = com::CDbl(grid.celda(fila, col::kTotal));
    d.descuentoFactor = com::CDbl(grid.celda(fila, col::kDescuento)) / 100;
  } else {
    double precioExtra = 0;
    int personasExtra = 0;
    const double precio = publico::Hotel().PrecioHabitacion(
        com::CStr(grid.celda(fila, col::kClave)), com::SoloFecha(FechaDeCelda(grid.celda(fila, col::kInicio))),
        com::SoloFecha(FechaDeCelda(grid.celda(fila, col::kFin))), adultos, menores, infantes, precioExtra,
        personasExtra, txtMoneda.text(), dpFecha.valor(), com::CDbl(txtTipoCambio.valor()));
    d.precioNeto = precio + precioExtra;
    grid.celda(fila, col::kDescuento, 0.0);
    grid.celda(fila, col::kPrecio, precio);
    grid.celda(fila, col::kPrecioExtra, precioExtra);
    grid.celda(fila, col::kPersonasExtra, personasExtra);
    grid.celda(fila, col::kTotal, com::Redondea(d.precioNeto, 2));
    const std::string error = publico::Hotel().ErrorHotel();
    conError = !error.empty();
    if (conError) Avisa(*this, mensaje::kPrecioFallido, error);
  }
  d.impuestoFactor = com::CDbl(grid.celda(fila, col::kImpuesto));

  publico::Hotel().CalculaImpuestos(d.precioLista, d.precioListaImporte, d.descuentoFactor, d.descuentoImporte,
                                    d.precioDescontado, d.precioDescontadoImporte, d.globalFactor, d.globalImporte,
                                    d.impuestoFactor, d.impuestoImporte, d.precioNeto, d.total);

  grid.celda(fila, col::kPrecioLista, d.precioLista);
  grid.celda(fila, col::kPrecioListaImporte, d.precioListaImporte);
  grid.celda(fila, col::kDescuento, d.descuentoFactor * 100);
  grid.celda(fila, col::kDescuentoImporte, d.descuentoImporte);
  grid.celda(fila, col::kPrecioDescontado, d.precioDescontado);
  grid.celda(fila, col::kPrecioDescontadoImporte, d.precioDescontadoImporte);
  grid.celda(fila, col::kGlobalFactor, d.globalFactor);
  grid.celda(fila, col::kGlobalImporte, d.globalImporte);
  grid.celda(fila, col::kImpuestoImporte, d.impuestoImporte);
  grid.celda(fila, col::kPrecioNeto, d.precioNeto);
  grid.celda(fila, col::kTotal, com::Redondea(d.total, 2));
  if (soloRecalcular) return true;
  AnotaTarifa(fila, conError);
  if (origen == OrigenPrecio::Acordado || origen == OrigenPrecio::Guardado) {
    precioPerdido_ = "Renglón " + std::to_string(fila + 1) + ": el precio " +
                     (origen == OrigenPrecio::Acordado ? "acordado, " : "guardado, ") + regional::Moneda(antes) +
                     ", cambió al del hotel, " + regional::Moneda(com::CDbl(grid.celda(fila, col::kTotal)));
  }
  return true;
}

void frmKV207::Totalizar() {
  Atrapa(*this, mensaje::kTotalizar, [&] {
    controles::Grid& grid = ssReservaciones;
    double subtotal = 0, impuestos = 0;
    const auto suma = [&](int fila) {
      grid.fila(fila);
      if (CeldaVacia(grid.celda(fila, col::kNombre))) return;
      const double base = com::CDbl(grid.celda(fila, col::kPrecioDescontadoImporte));
      subtotal += base;
      impuestos += com::CDbl(grid.celda(fila, col::kImpuesto)) * base;
    };
    controles::Grid::Pausa pausa(grid);
    const int actual = grid.fila();
    const auto vuelve = [&] {
      if (actual >= 0) grid.fila(actual);
    };
    try {
      for (int fila = 0; fila < grid.Filas(); ++fila) suma(fila);
    } catch (...) {
      vuelve();
      throw;
    }
    vuelve();
    pausa.Termina();
    txtSubTotal.valor(subtotal);
    txtImpuestos.valor(impuestos);
    txtTotal.valor(subtotal + impuestos);
  });
}

}  // namespace kv207
