// Pricing of a room line and totals of the reservation. All prices include tax.
#include <string>

#include "publico/avisos.h"
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
  if (CeldaVacia(grid.celda(fila, "Nombre"))) return false;
  const int adultos = PersonasDeCelda(grid.celda(fila, "Adultos"));
  const int menores = PersonasDeCelda(grid.celda(fila, "Menores"));
  const int infantes = PersonasDeCelda(grid.celda(fila, "Infantes"));
  if (adultos == 0 && menores == 0 && infantes == 0) return false;
  if (!soloRecalcular) OlvidaPrecio(fila);
  if (txtNHuesped.text().empty()) {
    Avisa(*this, mensaje::kPrecioSinHuesped);
    Enfoca(txtHuesped);
    return false;
  }

  anfitrion::Desglose d;
  bool conError = false;
  if (soloRecalcular) {
    d.precioNeto = d.total = com::CDbl(grid.celda(fila, "Total"));
    d.descuentoFactor = com::CDbl(grid.celda(fila, "Descuento")) / 100;
  } else {
    double precioExtra = 0;
    int personasExtra = 0;
    const double precio = publico::Hotel().PrecioHabitacion(
        com::CStr(grid.celda(fila, "Clave")), com::SoloFecha(FechaDeCelda(grid.celda(fila, "FECHAI"))),
        com::SoloFecha(FechaDeCelda(grid.celda(fila, "FECHAF"))), adultos, menores, infantes, precioExtra,
        personasExtra, txtMoneda.text(), dpFecha.valor(), com::CDbl(txtTipoCambio.valor()));
    d.precioNeto = precio + precioExtra;
    grid.celda(fila, "Descuento", 0.0);
    grid.celda(fila, "Precio", precio);
    grid.celda(fila, "PERSONA_EXTRA", precioExtra);
    grid.celda(fila, "NUM_PERSONAS_EXTRA", personasExtra);
    grid.celda(fila, "Total", com::Redondea(d.precioNeto, 2));
    const std::string error = publico::Hotel().ErrorHotel();
    conError = !error.empty();
    if (conError) Avisa(*this, mensaje::kPrecioFallido, error);
  }
  d.impuestoFactor = com::CDbl(grid.celda(fila, "Impuesto"));

  publico::Hotel().CalculaImpuestos(d.precioLista, d.precioListaImporte, d.descuentoFactor, d.descuentoImporte,
                                    d.precioDescontado, d.precioDescontadoImporte, d.globalFactor, d.globalImporte,
                                    d.impuestoFactor, d.impuestoImporte, d.precioNeto, d.total);

  grid.celda(fila, "Precio_Lista", d.precioLista);
  grid.celda(fila, "Precio_Lista_Importe", d.precioListaImporte);
  grid.celda(fila, "Descuento", d.descuentoFactor * 100);
  grid.celda(fila, "DESCUENTO_IMPORTE", d.descuentoImporte);
  grid.celda(fila, "Precio_Descontado", d.precioDescontado);
  grid.celda(fila, "Precio_Descontado_Importe", d.precioDescontadoImporte);
  grid.celda(fila, "Descuento_Global_Factor", d.globalFactor);
  grid.celda(fila, "Descuento_Global_Importe", d.globalImporte);
  grid.celda(fila, "IMPUESTO_IMPORTE", d.impuestoImporte);
  grid.celda(fila, "Precio_Neto", d.precioNeto);
  grid.celda(fila, "Total", com::Redondea(d.total, 2));
  if (!soloRecalcular) AnotaTarifa(fila, conError);
  return true;
}

void frmKV207::Totalizar() {
  Atrapa(*this, mensaje::kTotalizar, [&] {
    controles::Grid& grid = ssReservaciones;
    double subtotal = 0, impuestos = 0;
    const auto suma = [&](int fila) {
      grid.fila(fila);
      if (CeldaVacia(grid.celda(fila, "Nombre"))) return;
      const double base = com::CDbl(grid.celda(fila, "Precio_Descontado_Importe"));
      subtotal += base;
      impuestos += com::CDbl(grid.celda(fila, "Impuesto")) * base;
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
