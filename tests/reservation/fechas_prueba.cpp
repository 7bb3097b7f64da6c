// Arrival, departure and nights.
#include "reservation/fechas.h"

#include <gtest/gtest.h>

#include "tests/comun/hotel_prueba.h"

namespace {

using com::FechaDe;
using com::Variant;
using kv207::FijaLlegada;
using kv207::NochesTecleadas;

const com::Fecha kCaptura = FechaDe(2026, 3, 9, 10, 30);
const com::Fecha kDia10 = FechaDe(2026, 3, 10);

TEST(FijaLlegada, TakesTheCaptureDayAsTheEarliestOne) {
  const auto mismoDia = FijaLlegada(kCaptura, FechaDe(2026, 3, 9), FechaDe(2026, 3, 12), 1);
  EXPECT_FALSE(mismoDia.corregida);
  EXPECT_EQ(mismoDia.llegada, FechaDe(2026, 3, 9));
  EXPECT_EQ(mismoDia.noches, 3);

  const auto antes = FijaLlegada(kCaptura, FechaDe(2026, 3, 8), FechaDe(2026, 3, 12), 1);
  EXPECT_TRUE(antes.corregida);
  EXPECT_EQ(antes.llegada, kDia10);
  EXPECT_EQ(antes.noches, 2);
}

TEST(FijaLlegada, DragsAnEarlierDepartureToTheSameDay) {
  const auto e = FijaLlegada(kCaptura, FechaDe(2026, 3, 20), FechaDe(2026, 3, 12), 1);
  EXPECT_EQ(e.salida, FechaDe(2026, 3, 20));
  EXPECT_EQ(e.noches, 0);
  // Corrected first, then compared.
  const auto ambas = FijaLlegada(kCaptura, FechaDe(2026, 3, 1), FechaDe(2026, 3, 9), 5);
  EXPECT_EQ(ambas.llegada, FechaDe(2026, 3, 14));
  EXPECT_EQ(ambas.salida, FechaDe(2026, 3, 14));
}

TEST(NochesTecleadas, AcceptsWholeNightsOfTheCalendarOnly) {
  EXPECT_EQ(NochesTecleadas(Variant(3.0), kDia10), 3);
  EXPECT_EQ(NochesTecleadas(Variant(2.5), kDia10), 2);
  for (const auto& ninguna : {Variant(), Variant(0.0), Variant(0.4), Variant(-0.4)}) {
    EXPECT_EQ(NochesTecleadas(ninguna, kDia10), 0);
  }
  EXPECT_EQ(NochesTecleadas(Variant(1.0), FechaDe(9999, 12, 30)), 1);
  EXPECT_THROW(static_cast<void>(NochesTecleadas(Variant(2.0), FechaDe(9999, 12, 30))), com::Error);
  for (const double malas : {-1.0, -1e300, 3e6, 1e300}) {
    EXPECT_THROW(static_cast<void>(NochesTecleadas(Variant(malas), kDia10)), com::Error) << malas;
  }
}

class Fechas : public pruebas::HotelPrueba {
 protected:
  std::string Rango() const {
    return pantalla.dpFecha_llegada.text() + " " + pantalla.dpFecha_salida.text() + " " + pantalla.txtDias.text();
  }
  void AgregaRenglon() {
    pantalla.ssReservaciones.AgregaFila();
    pantalla.ssReservaciones.celda(0, "Nombre", "Sencilla / Vista al mar");
  }
};

TEST_F(Fechas, ArrivalMovedByTheClerkKeepsTheLines) {
  Nueva();
  AgregaRenglon();
  pantalla.dpFecha_llegada.Fija(Dia(2026, 3, 11));
  EXPECT_EQ(Rango(), "11/03/2026 12/03/2026 1");
  pantalla.dpFecha_llegada.Fija(Dia(2026, 3, 20));
  EXPECT_EQ(Rango(), "20/03/2026 20/03/2026 0");
  EXPECT_EQ(pantalla.ssReservaciones.Filas(), 1);
  EXPECT_TRUE(escritorio.Mensajes().empty());

  escritorio.alAvisar = [&](const controles::CajaMensaje&) {
    EXPECT_EQ(Rango(), "08/03/2026 20/03/2026 0") << "told before it is corrected";
  };
  pantalla.dpFecha_llegada.Fija(Dia(2026, 3, 8));
  escritorio.alAvisar = {};
  EXPECT_EQ(Rango(), "10/03/2026 20/03/2026 10");
  ASSERT_EQ(escritorio.Ids(), std::vector<std::string>{"ERR-ID:7500030"});
  EXPECT_EQ(escritorio.Mensajes()[0].titulo, "Fecha");
}

TEST_F(Fechas, DepartureEmptiesTheLinesOnlyWhenTheNightsChange) {
  Nueva();
  AgregaRenglon();
  pantalla.dpFecha_salida.Fija(Dia(2026, 3, 12));
  EXPECT_EQ(pantalla.ssReservaciones.Filas(), 1);
  tablero.HaySeleccion = tablero.ConservarVista = true;
  pantalla.dpFecha_salida.Fija(Dia(2026, 3, 14));
  EXPECT_EQ(Rango(), "10/03/2026 14/03/2026 4");
  EXPECT_EQ(pantalla.ssReservaciones.Filas(), 0);
  EXPECT_FALSE(tablero.HaySeleccion);
  EXPECT_FALSE(tablero.ConservarVista);

  pantalla.dpFecha_salida.Fija(Dia(2026, 3, 10));
  EXPECT_EQ(Rango(), "10/03/2026 10/03/2026 0");
  EXPECT_TRUE(escritorio.Mensajes().empty());

  pantalla.Enfoca(pantalla.txtReferencia);
  pantalla.dpFecha_salida.Fija(Dia(2026, 3, 9));
  EXPECT_EQ(Rango(), "10/03/2026 09/03/2026 0");
  EXPECT_EQ(pantalla.foco(), &pantalla.dpFecha_salida);
  ASSERT_EQ(escritorio.Ids(), std::vector<std::string>{"ERR-ID:7500032"});
  EXPECT_EQ(escritorio.Mensajes()[0].texto, "Debe seleccionar una fecha mayor a: 10/03/2026");
}

TEST_F(Fechas, NightsMoveTheDepartureInEditModeOnly) {
  Nueva();
  AgregaRenglon();
  pantalla.txtDias.Teclea("5");
  EXPECT_EQ(Rango(), "10/03/2026 15/03/2026 5");
  EXPECT_EQ(pantalla.ssReservaciones.Filas(), 0);
  EXPECT_EQ(pantalla.txtTotal.text(), "0");
  for (const char* ninguna : {"0", "muchas"}) {
    pantalla.txtDias.Teclea(ninguna);
    EXPECT_EQ(Rango(), "10/03/2026 11/03/2026 1") << ninguna;
    pantalla.txtDias.Teclea("5");
  }
  pantalla.txtDias.Teclea("");
  EXPECT_EQ(Rango(), "10/03/2026 15/03/2026 ") << "an emptied field waits for a number";
  Pulsa(controles::Accion::Limpiar);
  InsertaReservacion("0000000077", {"0101"});
  Carga("77");
  pantalla.txtDias.text("9");
  EXPECT_EQ(Rango(), "10/03/2026 12/03/2026 9");
  EXPECT_EQ(pantalla.ssReservaciones.Filas(), 1);
}

// What was marked and captured for other nights goes, and neither the board nor a save counts millions of nights.
TEST_F(Fechas, NightsBelowZeroBeyondTheCalendarOrTheHotelsLimitAreTold) {
  const auto dicho = [](const auto& accion) -> std::string {
    try {
      accion();
    } catch (const com::Error& e) {
      return e.Descripcion();
    }
    return "";
  };
  host.Parametro("HT_MAXIMO_NOCHES", "40");
  Nueva();
  AgregaRenglon();
  const auto teclea = [&](const char* noches) {
    tablero.HaySeleccion = true;
    std::string motivo = dicho([&] { pantalla.txtDias.Teclea(noches); });
    EXPECT_FALSE(tablero.HaySeleccion) << noches;
    EXPECT_EQ(pantalla.ssReservaciones.Filas(), 0) << noches;
    return motivo;
  };
  EXPECT_EQ(teclea("-2"), "El número de noches no puede ser negativo");
  EXPECT_EQ(teclea("2912456"), "La salida quedaría después del 31/12/9999: corrija el número de noches");
  EXPECT_EQ(Rango(), "10/03/2026 12/03/2026 2912456") << "not rewritten";
  EXPECT_EQ(teclea("41"), "La estancia de 41 noches pasa del máximo de 40: corrija la llegada o la salida");
  EXPECT_EQ(Rango(), "10/03/2026 20/04/2026 41");
  EXPECT_EQ(teclea("40"), "");
  EXPECT_EQ(Rango(), "10/03/2026 19/04/2026 40");

  const std::string larga = "La estancia de 2912374 noches pasa del máximo de 40: corrija la llegada o la salida";
  EXPECT_EQ(dicho([&] { pantalla.dpFecha_salida.Fija(Dia(9999, 12, 31)); }), larga);
  EXPECT_EQ(pantalla.dpFecha_salida.text(), "31/12/9999") << "the rejected date stays to be corrected";
  EXPECT_EQ(dicho([&] { pantalla.dpFecha_llegada.Fija(Dia(2026, 3, 10)); }), larga);
  pantalla.cmdDisponibilidad.Pulsa();
  AgregaRenglon();
  Pulsa(controles::Accion::Aceptar);
  ASSERT_EQ(escritorio.Ids(), (std::vector<std::string>{"ERR-ID:7500003", "ERR-ID:7500010"}));
  for (const controles::CajaMensaje& caja : escritorio.Mensajes()) EXPECT_EQ(caja.texto, larga);
}

TEST_F(Fechas, DatePickedInThePopUpIsTheClerksEntryOfThatCell) {
  Nueva();
  controles::Grid& grid = pantalla.ssReservaciones;
  ASSERT_TRUE(grid.NuevaFila());
  grid.Teclea("101");
  ASSERT_TRUE(grid.VaA(0, grid.IndiceColumna("Adultos")));
  grid.Teclea("2");
  ASSERT_TRUE(grid.VaA(0, grid.IndiceColumna("FECHAI")));
  ASSERT_TRUE(pantalla.pcFecha.visible());
  EXPECT_EQ(pantalla.ColumnaFechaActiva, "FECHAI");
  EXPECT_EQ(grid.Texto(0, "Total"), "$2,320.00");
  pantalla.dpFechaGrid.Fija(Dia(2026, 3, 11));
  EXPECT_EQ(grid.Texto(0, "FECHAI"), "11/03/2026");
  EXPECT_EQ(grid.Texto(0, "Total"), "$1,160.00");
  // The Tab that follows goes to the other date, which opens its own pop-up.
  EXPECT_EQ(grid.ClaveColumna(), "FECHAF");
  EXPECT_EQ(pantalla.ColumnaFechaActiva, "FECHAF");

  grid.celda(0, "Nombre", "");
  pantalla.dpFechaGrid.Fija(Dia(2026, 3, 20));
  EXPECT_EQ(grid.Texto(0, "FECHAF"), "12/03/2026");
  EXPECT_FALSE(pantalla.pcFecha.visible());
  EXPECT_EQ(pantalla.foco(), &grid);
}

}  // namespace
