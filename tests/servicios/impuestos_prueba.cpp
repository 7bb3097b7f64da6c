#include "host/standalone/impuestos.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "tests/servicios/hotel_prueba.h"

namespace autonomo {
namespace {

using anfitrion::Desglose;

// Equal to double precision, relative to the size of the amounts.
void EsperaIgual(double a, double b, const char* que) {
  EXPECT_NEAR(a, b, 1e-12 * std::max({1.0, std::fabs(a), std::fabs(b)})) << que;
}

void RevisaRelaciones(const Desglose& d) {
  EsperaIgual(d.impuestoImporte, d.impuestoFactor * d.precioDescontadoImporte, "tax");
  EsperaIgual(d.total, d.precioDescontadoImporte + d.impuestoImporte, "total");
  EsperaIgual(d.descuentoImporte, d.descuentoFactor * d.precioListaImporte, "discount");
  EsperaIgual(d.precioListaImporte, d.precioDescontadoImporte + d.descuentoImporte + d.globalImporte, "list");
  EsperaIgual(d.precioLista, d.precioListaImporte * (1 + d.impuestoFactor), "list price");
  EsperaIgual(d.precioDescontado, d.total, "discounted price");
  EsperaIgual(d.precioNeto, d.total, "net price");
}

TEST(Desglose, EjemplosHaciaAdelanteYHaciaAtras) {
  Desglose d;
  d.precioNeto = 116;
  d.impuestoFactor = 0.16;
  Desglosa(d);
  EsperaIgual(d.precioDescontadoImporte, 100, "base");
  EsperaIgual(d.impuestoImporte, 16, "tax");
  EsperaIgual(d.total, 116, "total");

  // The total already holds the discount: it is not taken a second time.
  Desglose atras;
  atras.precioNeto = atras.total = 104.4;
  atras.impuestoFactor = 0.16;
  atras.descuentoFactor = 0.1;
  Desglosa(atras);
  EsperaIgual(atras.precioDescontadoImporte, 90, "base");
  EsperaIgual(atras.descuentoImporte, 10, "discount");
  EsperaIgual(atras.precioListaImporte, 100, "list");
  EsperaIgual(atras.total, 104.4, "total");
}

TEST(Desglose, RelacionesEnAmbosSentidos) {
  std::mt19937 azar(7);
  const auto entre = [&](double a, double b) { return a + (b - a) * static_cast<double>(azar() % 100001) / 100000; };
  for (int i = 0; i < 5000; ++i) {
    Desglose d;
    d.precioNeto = std::round(entre(1, 500000)) / 100;
    d.impuestoFactor = i % 4 == 0 ? 0 : entre(0, 0.3);
    d.descuentoFactor = i % 3 == 0 ? 0 : entre(0, 0.99);
    d.globalFactor = i % 5 == 0 ? entre(0, 0.5) : 0;
    const double bruto = d.precioNeto;
    Desglosa(d);
    RevisaRelaciones(d);
    EsperaIgual(d.precioListaImporte, bruto / (1 + d.impuestoFactor), "gross without tax");

    // Back from the total, the same amounts.
    Desglose vuelta;
    vuelta.precioNeto = vuelta.total = d.total;
    vuelta.impuestoFactor = d.impuestoFactor;
    vuelta.descuentoFactor = d.descuentoFactor;
    vuelta.globalFactor = d.globalFactor;
    Desglosa(vuelta);
    RevisaRelaciones(vuelta);
    EXPECT_NEAR(vuelta.precioListaImporte, d.precioListaImporte, 1e-9 * d.precioListaImporte);
    EXPECT_NEAR(vuelta.globalImporte, d.globalImporte, 1e-9 * d.precioListaImporte);
    EsperaIgual(vuelta.total, d.total, "total kept");
  }
}

// A line priced without a discount loads with the list price that it was saved with, to the last digit.
TEST(Desglose, SinDescuentoElPrecioDeListaEsElTotal) {
  Desglose d;
  d.precioNeto = d.total = 3480;
  d.impuestoFactor = 0.16;
  Desglosa(d);
  EXPECT_EQ(d.precioLista, 3480);
}

TEST(Desglose, DescuentoTotal) {
  Desglose d;
  d.precioNeto = 116;
  d.impuestoFactor = 0.16;
  d.descuentoFactor = 1;
  Desglosa(d);
  EsperaIgual(d.descuentoImporte, 100, "discount");
  EXPECT_EQ(d.total, 0);
  // No list amount explains a total that such a discount left; nothing becomes infinite.
  Desglose imposible;
  imposible.precioNeto = imposible.total = 50;
  imposible.descuentoFactor = 1;
  Desglosa(imposible);
  EXPECT_EQ(imposible.precioListaImporte, 50);
  EXPECT_EQ(imposible.total, 50);
  // Beyond it the total is below zero and still says what the discount was taken from.
  Desglose demas;
  demas.precioNeto = demas.total = -58;
  demas.impuestoFactor = 0.16;
  demas.descuentoFactor = 1.5;
  Desglosa(demas);
  RevisaRelaciones(demas);
  EsperaIgual(demas.descuentoImporte, 150, "discount");
}

TEST(Impuestos, TasaDeSucursalAntesQueLaDeCualquiera) {
  pruebas::HotelChico hotel;
  const auto tasa = [&](const char* sucursal, const char* producto) {
    return CreaCalculoImpuesto(hotel.host)->TasaImpuesto(sucursal, "0000000001", producto);
  };
  EXPECT_EQ(tasa("0001", "HAB1"), 0.16);
  hotel.host.Impuesto("0002", "HAB1", 0.08);
  EXPECT_EQ(tasa("0002", "HAB1"), 0.08);
  EXPECT_EQ(tasa("0001", "HAB1"), 0.16);
  EXPECT_EQ(tasa("", "HAB1"), 0.16);
  EXPECT_EQ(tasa("0001", "OTRO"), 0);
  EXPECT_THROW(hotel.host.Impuesto("", "HAB1", -1), com::Error);
}

}  // namespace
}  // namespace autonomo
