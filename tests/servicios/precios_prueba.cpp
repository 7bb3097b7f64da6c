#include "host/standalone/precios.h"

#include <gtest/gtest.h>

#include "tests/servicios/hotel_prueba.h"

namespace autonomo {
namespace {

using pruebas::Dia;
using pruebas::HotelChico;

Tarifa UnaTarifa(int id, std::string_view inicio, std::string_view fin, std::string dias, double precio,
                 double adulto = 0, double menor = 0) {
  Tarifa t{id, {}, {}, std::move(dias), precio, adulto, menor};
  if (!inicio.empty()) t.inicio = Dia(inicio);
  if (!fin.empty()) t.fin = Dia(fin);
  return t;
}

TEST(Tarifas, LaMasEspecialGana) {
  const std::vector<Tarifa> tarifas = {
      UnaTarifa(1, "", "", "", 100),
      UnaTarifa(2, "", "", "56", 150),
      UnaTarifa(3, "2026-07-01", "2026-08-20", "", 200),
      UnaTarifa(4, "2026-08-01", "", "", 300),
  };
  const auto precio = [&](std::string_view noche) { return TarifaDeNoche(tarifas, Dia(noche))->precio; };
  EXPECT_EQ(precio("2026-03-05"), 100);  // Thursday
  EXPECT_EQ(precio("2026-03-06"), 150);  // Friday
  EXPECT_EQ(precio("2026-03-07"), 150);
  EXPECT_EQ(precio("2026-03-08"), 100);  // Sunday
  EXPECT_EQ(precio("2026-06-30"), 100);
  EXPECT_EQ(precio("2026-07-01"), 200);
  EXPECT_EQ(precio("2026-07-03"), 200);  // a season beats a weekend
  EXPECT_EQ(precio("2026-08-01"), 300);  // of two seasons the later rate
  EXPECT_EQ(TarifaDeNoche(std::span(tarifas).subspan(2, 1), Dia("2026-08-21")), nullptr);
}

TEST(Tarifas, PersonasExtra) {
  struct Caso {
    int incluidas = 0;
    Personas van, extra;
  };
  for (const Caso& c : {Caso{2, {2, 0}, {0, 0}}, Caso{2, {1, 1}, {0, 0}}, Caso{2, {1, 3}, {0, 2}},
                        Caso{2, {3, 2}, {1, 2}}, Caso{0, {1, 1}, {1, 1}}}) {
    const Personas p = PersonasExtra(c.incluidas, c.van);
    EXPECT_EQ(p.adultos, c.extra.adultos) << c.van.adultos << "/" << c.van.menores;
    EXPECT_EQ(p.menores, c.extra.menores) << c.van.adultos << "/" << c.van.menores;
  }
}

TEST(Tarifas, CentavosExactos) {
  const std::vector<Tarifa> seis = {UnaTarifa(1, "", "", "", 6.54)};
  EXPECT_EQ(PrecioDeEstancia(seis, {}, Dia("2026-03-01"), Dia("2026-03-07"), {}, 1).habitacion, 3924);
  // Each night is converted and rounded, halves to the even cent: 2.25 / 2 is 1.12, not 1.125.
  const std::vector<Tarifa> medio = {UnaTarifa(1, "", "", "", 2.25, 2.35)};
  const PrecioEstancia p = PrecioDeEstancia(medio, {}, Dia("2026-03-01"), Dia("2026-03-03"), {1, 0}, 2);
  EXPECT_EQ(p.habitacion, 224);
  EXPECT_EQ(p.extra, 236);
}

class Precios : public testing::Test, public HotelChico {
 protected:
  // Room 0101.
  double Precio(std::string_view inicio, std::string_view fin, int adultos, int menores = 0, int infantes = 0,
                const std::string& moneda = "MXN", double tipoCambio = 1) {
    return hotel->PrecioHabitacion("0101", Dia(inicio), Dia(fin), adultos, menores, infantes, extra, cuantas, moneda,
                                   Dia(pruebas::kHoy), tipoCambio);
  }
  double extra = -1;
  int cuantas = -1;
};

TEST_F(Precios, PrecioDeListaSinTarifa) {
  EXPECT_EQ(Precio("2026-03-05", "2026-03-08", 4), 3 * 1160.0);
  EXPECT_EQ(extra, 0);
  EXPECT_EQ(cuantas, 2);
}

TEST_F(Precios, TemporadaFinDeSemanaYExtras) {
  host.Tarifa("0001", 1000, 250, 100);
  base().Consulta(
      "INSERT INTO Tarifa (Th_Cve_Tipo_Habitacion, Tf_Dias, Tf_Precio, Tf_Adulto_Extra, Tf_Menor_Extra) "
      "VALUES ('0001', '56', 1200.5, 300, 150)");
  base().Consulta(
      "INSERT INTO Tarifa (Th_Cve_Tipo_Habitacion, Tf_Inicio, Tf_Fin, Tf_Precio, Tf_Adulto_Extra, Tf_Menor_Extra) "
      "VALUES ('0001', '2026-03-08', '2026-03-10', 2000, 0, 0)");
  // Thursday 5, Friday 6, Saturday 7, Sunday 8; the departure day costs nothing, infants neither.
  EXPECT_EQ(Precio("2026-03-05", "2026-03-09", 3, 1, 2), 1000 + 2 * 1200.5 + 2000);
  EXPECT_EQ(extra, (250 + 100) + 2 * (300 + 150) + 0);
  EXPECT_EQ(cuantas, 2);
  // The order of the clerk replaces the undated rate and no other.
  host.Tarifa("0001", 900, 0, 0);
  EXPECT_EQ(Precio("2026-03-05", "2026-03-07", 2), 900 + 1200.5);
  EXPECT_EQ(Cuenta("Tarifa"), 3);
}

TEST_F(Precios, OtraMoneda) {
  host.Tarifa("0001", 1000, 250, 0);
  EXPECT_EQ(Precio("2026-03-05", "2026-03-08", 3, 0, 0, "USD", 17.5), 171.42);
  EXPECT_EQ(extra, 42.87);
  // The local currency takes no part in rates.
  EXPECT_EQ(Precio("2026-03-05", "2026-03-06", 2, 0, 0, "mxn ", 17.5), 1000);
}

TEST_F(Precios, FallasConTextoYQuedanEnCero) {
  base().Consulta("DELETE FROM Producto_Precio");
  base().Consulta(
      "INSERT INTO Tarifa (Th_Cve_Tipo_Habitacion, Tf_Inicio, Tf_Fin, Tf_Precio) "
      "VALUES ('0001', '2026-03-01', '2026-03-06', 800)");
  const auto falla = [&](double precio) {
    EXPECT_EQ(precio, 0);
    EXPECT_EQ(extra, 0);
    EXPECT_EQ(cuantas, 0);
    return hotel->ErrorHotel();
  };
  EXPECT_EQ(falla(Precio("2026-03-05", "2026-03-08", 2)), "No hay tarifa para Doble la noche del 07/03/2026");
  EXPECT_EQ(falla(Precio("2026-03-05", "2026-03-05", 2)), "La fecha final debe ser posterior a la fecha inicial");
  EXPECT_EQ(falla(Precio("2026-03-05", "2026-03-06", 2, 0, 0, "XXX")), "La moneda 'XXX' no existe");
  EXPECT_EQ(falla(Precio("2026-03-05", "2026-03-06", 2, 0, 0, "USD", 0)),
            "El tipo de cambio de la moneda USD debe ser mayor a 0");
  EXPECT_EQ(falla(hotel->PrecioHabitacion("0999", Dia("2026-03-05"), Dia("2026-03-06"), 1, 0, 0, extra, cuantas, "MXN",
                                          {}, 1)),
            "La habitación 0999 no existe");
  EXPECT_EQ(Precio("2026-03-05", "2026-03-07", 2), 1600);
  EXPECT_EQ(hotel->ErrorHotel(), "");
}

}  // namespace
}  // namespace autonomo
