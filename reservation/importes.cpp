// Pricing of a room line and totals of the reservation. All prices include tax.
#include <string>
#include <string_view>
#include <utility>

#include "publico/avisos.h"
#include "publico/columnas.h"
#include "publico/publico.h"
#include "reservation/frmKV207.h"
#include "reservation/renglones.h"

namespace kv207 {

namespace mensaje = anfitrion::mensaje;

namespace {

struct Personas {
  int adultos = 0, menores = 0, infantes = 0;
};

// The errors of PersonasDeCelda.
Personas LeePersonas(const controles::Grid& grid, int fila) {
  Personas p;
  p.adultos = PersonasDeCelda(grid.celda(fila, col::kAdultos));
  p.menores = PersonasDeCelda(grid.celda(fila, col::kMenores));
  p.infantes = PersonasDeCelda(grid.celda(fila, col::kInfantes));
  return p;
}

// What is to be broken down: a total that stays, in which the discount is already.
anfitrion::Desglose DelTotal(const controles::Grid& grid, int fila, double total) {
  anfitrion::Desglose d;
  d.precioNeto = d.total = total;
  d.descuentoFactor = com::CDbl(grid.celda(fila, col::kDescuento)) / 100;
  return d;
}

struct PrecioDelHotel {
  anfitrion::Desglose porDesglosar;
  bool conError = false;  // the hotel had no price, which the clerk has been told
};

// Asks the hotel for the line's price, for its room, dates and persons, and writes it without a discount.
PrecioDelHotel PidePrecio(frmKV207& f, int fila, const Personas& p) {
  controles::Grid& grid = f.ssReservaciones;
  double precioExtra = 0;
  int personasExtra = 0;
  const double precio = publico::Hotel().PrecioHabitacion(
      com::CStr(grid.celda(fila, col::kClave)), com::SoloFecha(FechaDeCelda(grid.celda(fila, col::kInicio))),
      com::SoloFecha(FechaDeCelda(grid.celda(fila, col::kFin))), p.adultos, p.menores, p.infantes, precioExtra,
      personasExtra, f.txtMoneda.text(), f.dpFecha.valor(), com::CDbl(f.txtTipoCambio.valor()));
  PrecioDelHotel dado;
  dado.porDesglosar.precioNeto = precio + precioExtra;
  grid.celda(fila, col::kDescuento, 0.0);
  grid.celda(fila, col::kPrecio, precio);
  grid.celda(fila, col::kPrecioExtra, precioExtra);
  grid.celda(fila, col::kPersonasExtra, personasExtra);
  grid.celda(fila, col::kTotal, com::Redondea(dado.porDesglosar.precioNeto, 2));
  const std::string error = publico::Hotel().ErrorHotel();
  dado.conError = !error.empty();
  if (dado.conError) Avisa(f, mensaje::kPrecioFallido, error);
  return dado;
}

// The host breaks the line's amount down at the line's tax factor; its results go into the cells, in this order.
void DesglosaRenglon(controles::Grid& grid, int fila, anfitrion::Desglose d) {
  d.impuestoFactor = com::CDbl(grid.celda(fila, col::kImpuesto));
  publico::Hotel().CalculaImpuestos(d.precioLista, d.precioListaImporte, d.descuentoFactor, d.descuentoImporte,
                                    d.precioDescontado, d.precioDescontadoImporte, d.globalFactor, d.globalImporte,
                                    d.impuestoFactor, d.impuestoImporte, d.precioNeto, d.total);
  const std::pair<std::string_view, double> resultados[] = {
      {col::kPrecioLista, d.precioLista},           {col::kPrecioListaImporte, d.precioListaImporte},
      {col::kDescuento, d.descuentoFactor * 100},   {col::kDescuentoImporte, d.descuentoImporte},
      {col::kPrecioDescontado, d.precioDescontado}, {col::kPrecioDescontadoImporte, d.precioDescontadoImporte},
      {col::kGlobalFactor, d.globalFactor},         {col::kGlobalImporte, d.globalImporte},
      {col::kImpuestoImporte, d.impuestoImporte},   {col::kPrecioNeto, d.precioNeto},
      {col::kTotal, com::Redondea(d.total, 2)},
  };
  for (const auto& [columna, valor] : resultados) grid.celda(fila, columna, valor);
}

}  // namespace

void frmKV207::CalculaImportes(bool soloRecalcular) {
  if (ssReservaciones.fila() >= 0) CalculaRenglon(ssReservaciones.fila(), soloRecalcular);
}

bool frmKV207::CalculaRenglon(int fila, bool soloRecalcular) {
  controles::Grid& grid = ssReservaciones;
  if (CeldaVacia(grid.celda(fila, col::kNombre))) return false;
  const Personas personas = LeePersonas(grid, fila);
  if (personas.adultos == 0 && personas.menores == 0 && personas.infantes == 0) return false;
  const OrigenPrecio origen = OrigenDe(fila);
  const double total = com::CDbl(grid.celda(fila, col::kTotal));
  if (!soloRecalcular) OlvidaPrecio(fila);
  if (txtNHuesped.text().empty()) {
    Avisa(*this, mensaje::kPrecioSinHuesped);
    Enfoca(txtHuesped);
    return false;
  }
  if (soloRecalcular) {
    DesglosaRenglon(grid, fila, DelTotal(grid, fila, total));
    return true;
  }
  const PrecioDelHotel dado = PidePrecio(*this, fila, personas);
  DesglosaRenglon(grid, fila, dado.porDesglosar);
  AnotaTarifa(fila, dado.conError);
  if (EsAcordado(origen)) AnotaPerdido(fila, origen, total);
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
