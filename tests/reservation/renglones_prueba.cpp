// Room lines: how they come into being, what leaving a cell does, the date pop-up, the keys.
#include "reservation/renglones.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/reservation/renglones_comun.h"

namespace {

using controles::Accion;
using pruebas::Cajas;
using pruebas::Vistos;
namespace tecla = controles::tecla;

std::optional<com::Fecha> Marzo(int dia) {
  if (dia == 0) return std::nullopt;
  return com::FechaDe(2026, 3, dia, 15, 0);  // times of day do not count
}

TEST(FechasDelRenglon, StayInsideTheReservationForOneNightAtLeast) {
  const com::Fecha llegada = com::FechaDe(2026, 3, 10, 12, 0), salida = com::FechaDe(2026, 3, 14);
  struct Caso {
    int inicio, fin, inicioAjustado, finAjustado;  // days of March, 0: no date
  };
  for (const Caso& c : {Caso{10, 14, 10, 14}, Caso{11, 13, 11, 13}, Caso{9, 13, 10, 13}, Caso{15, 13, 10, 14},
                        Caso{12, 12, 10, 14}, Caso{12, 9, 12, 14}, Caso{12, 15, 12, 14}, Caso{13, 12, 13, 14},
                        Caso{0, 13, 10, 13}, Caso{12, 0, 12, 14}, Caso{14, 14, 10, 14}}) {
    SCOPED_TRACE(testing::Message() << c.inicio << " a " << c.fin);
    const auto inicio = Marzo(c.inicio), fin = Marzo(c.fin);
    EXPECT_EQ(kv207::AjustaInicio(inicio, fin, llegada, salida), com::FechaDe(2026, 3, c.inicioAjustado));
    EXPECT_EQ(kv207::AjustaFin(inicio, fin, llegada, salida), com::FechaDe(2026, 3, c.finAjustado));
  }
}

TEST(ImportesDelRenglon, FollowTheEditedAmount) {
  struct Caso {
    double precio, extra, impuesto, descuento, importe;
    bool porImporte;
    double descuentoDerivado, importeDerivado, impuestoDerivado, total;
  };
  for (const Caso& c : {
           Caso{116, 0, 0.16, 10, 0, false, 10, 10, 14.4, 104.4}, Caso{116, 0, 0.16, 10, 20, true, 20, 20, 12.8, 92.8},
           Caso{116, 0, 0.16, 10, 0, true, 0, 0, 16, 116}, Caso{100, 16, 0.16, 0, 50, false, 0, 0, 16, 116},
           Caso{0, 0, 0.16, 10, 20, true, 0, 0, 0, 0}, Caso{0, 0, 0.16, 10, 20, false, 10, 0, 0, 0},
           Caso{0.25, 0, 0, 50, 0, false, 50, 0.125, 0, 0.12},  // halves go to the even cent
       }) {
    SCOPED_TRACE(testing::Message() << c.precio << "+" << c.extra << " " << c.descuento << "% " << c.importe);
    kv207::ImportesRenglon r;
    r.precio = c.precio;
    r.personaExtra = c.extra;
    r.impuesto = c.impuesto;
    r.descuento = c.descuento;
    r.descuentoImporte = c.importe;
    r = kv207::RederivaImportes(r, c.porImporte);
    EXPECT_NEAR(r.descuento, c.descuentoDerivado, 1e-9);
    EXPECT_NEAR(r.descuentoImporte, c.importeDerivado, 1e-9);
    EXPECT_NEAR(r.impuestoImporte, c.impuestoDerivado, 1e-9);
    EXPECT_NEAR(r.total, c.total, 1e-9);
  }
}

TEST(PersonasDeCelda, AreWholeAndNeverNegative) {
  EXPECT_EQ(kv207::PersonasDeCelda(com::Variant()), 0);
  EXPECT_EQ(kv207::PersonasDeCelda("2.5"), 2);
  for (const char* malo : {"dos", "-1", "40000"})
    EXPECT_THROW(static_cast<void>(kv207::PersonasDeCelda(malo)), com::Error) << malo;
}

class Renglones : public pruebas::RenglonesPrueba {};

TEST_F(Renglones, MissingOrFailingPersonLimitsKeepTheAmounts) {
  Nueva();
  Linea("0101", 2);
  conexion->Falla("Th_Num_Personas_Maximo FROM Tipo_Habitacion TH");
  EXPECT_THROW(Teclea(0, "Adultos", "1"), com::Error);
  EXPECT_DOUBLE_EQ(Numero(0, "Total"), 2320);
  EXPECT_EQ(Vistos(escritorio), Cajas{});
  ASSERT_TRUE(Teclea(0, "Adultos", "2"));

  Sql("DELETE FROM Habitacion WHERE Hb_Cve_Habitacion = '0101'");
  EXPECT_TRUE(Teclea(0, "Adultos", "1"));
  EXPECT_EQ(Vistos(escritorio), Cajas{"ERR-ID:7500033|48|Vormalix|La habitación: Sencilla / Vista al mar no tiene "
                                      "configurado el número de personas"});
  EXPECT_DOUBLE_EQ(Numero(0, "Total"), 2320);
}

TEST_F(Renglones, TabbingAcrossARowCostsNoDiscountAndADateChangeDoes) {
  host.Permiso("CHDS02", true);
  Nueva();
  Linea("0101", 2);
  ASSERT_TRUE(Teclea(0, "Descuento", "10"));
  EXPECT_DOUBLE_EQ(Numero(0, "DESCUENTO_IMPORTE"), 200);
  EXPECT_DOUBLE_EQ(Numero(0, "Total"), 2088);
  ASSERT_TRUE(Ve(0, "Clave"));
  while (grid().Siguiente()) {
  }
  EXPECT_EQ(grid().ClaveColumna(), "Total");
  EXPECT_NEAR(Numero(0, "Descuento"), 10, 1e-9);
  EXPECT_DOUBLE_EQ(Numero(0, "Total"), 2088);

  ASSERT_TRUE(Teclea(0, "DESCUENTO_IMPORTE", "500"));
  EXPECT_NEAR(Numero(0, "Descuento"), 25, 1e-9);
  EXPECT_DOUBLE_EQ(Numero(0, "Total"), 1740);
  EXPECT_EQ(Pie(pantalla.txtTotal), 1740);
  ASSERT_TRUE(Teclea(0, "DESCUENTO_IMPORTE", "0"));
  EXPECT_DOUBLE_EQ(Numero(0, "Descuento"), 0);
  EXPECT_DOUBLE_EQ(Numero(0, "Total"), 2320);

  ASSERT_TRUE(Teclea(0, "Descuento", "10"));
  ASSERT_TRUE(Teclea(0, "FECHAF", "11/03/2026"));
  EXPECT_DOUBLE_EQ(Numero(0, "Descuento"), 0);
  EXPECT_DOUBLE_EQ(Numero(0, "Total"), 1160);
  EXPECT_EQ(Vistos(escritorio), Cajas{});
}

TEST_F(Renglones, AnAgreedPriceIsKept) {
  host.Permiso("CHPR02", true);
  Nueva();
  Linea("0101", 2);
  ASSERT_TRUE(Teclea(0, "Precio", "1740"));
  EXPECT_EQ(Numero(0, "Precio"), 1740);
  EXPECT_DOUBLE_EQ(Numero(0, "Total"), 1740);
  EXPECT_DOUBLE_EQ(Numero(0, "IMPUESTO_IMPORTE"), 240);
  ASSERT_TRUE(Teclea(0, "PERSONA_EXTRA", ""));
  EXPECT_EQ(grid().celda(0, "PERSONA_EXTRA"), com::Variant(0.0));
  EXPECT_THROW(Teclea(0, "Precio", "mucho"), com::Error);
  EXPECT_DOUBLE_EQ(Numero(0, "Total"), 1740);
}

// What was typed before the guest, or while the hotel had no rate, is priced by passing over a cell.
TEST_F(Renglones, AnUnpricedLineIsPricedWhenOneOfItsCellsIsLeft) {
  Nueva();
  Campo(pantalla.txtHuesped, "");
  const int fila = Linea("0101", 2);
  EXPECT_EQ(escritorio.Ids(), Cajas{"ERR-ID:7500036"});
  EXPECT_EQ(Numero(fila, "Total"), 0);
  Campo(pantalla.txtHuesped, "1");
  ASSERT_TRUE(Ve(fila, "Menores"));
  ASSERT_TRUE(Ve(fila, "Infantes"));
  EXPECT_DOUBLE_EQ(Numero(fila, "Total"), 2320);
  EXPECT_EQ(Pie(pantalla.txtTotal), 2320) << "nothing was typed, the footer follows all the same";

  Sql("DELETE FROM Tarifa");
  Sql("UPDATE Producto_Precio SET Pp_Precio_1 = NULL");
  escritorio.Olvida();
  ASSERT_TRUE(Teclea(fila, "Adultos", "1"));
  EXPECT_EQ(escritorio.Ids(), Cajas{"ERR-ID:7500037"});
  EXPECT_EQ(Numero(fila, "Total"), 0);
  Sql("UPDATE Producto_Precio SET Pp_Precio_1 = 900");
  ASSERT_TRUE(Ve(fila, "FECHAF"));
  ASSERT_TRUE(Ve(fila, "Adultos"));
  EXPECT_DOUBLE_EQ(Numero(fila, "Total"), 1800);
}

// The hotel's prices are asked for again in the new currency; agreed ones, a discount and stored ones are converted,
// and come back to the cent. Another guest or rate alone touches no agreed price.
TEST_F(Renglones, LinesFollowTheCurrency) {
  host.Permiso("CHPR02", true);
  host.Permiso("CHDS02", true);
  Nueva();
  Linea("0101", 2);
  Linea("0102", 2);
  Linea("0201", 2);
  ASSERT_TRUE(Teclea(1, "Precio", "1750"));
  ASSERT_TRUE(Teclea(2, "Descuento", "10"));
  const auto totales = [&] { return Texto(0, "Total") + " " + Texto(1, "Total") + " " + Texto(2, "Total"); };
  EXPECT_EQ(totales(), "2320 1750 3132");
  Campo(pantalla.txtMoneda, "USD");
  EXPECT_EQ(totales(), "132.58 100 178.97");
  EXPECT_EQ(Texto(0, "Precio") + " " + Texto(1, "Precio") + " " + Texto(2, "Precio"), "132.58 100 198.86");
  EXPECT_NEAR(Numero(2, "Descuento"), 10, 1e-9);
  EXPECT_NEAR(Pie(pantalla.txtTotal), 411.55, 0.01);
  Campo(pantalla.txtTipoCambio, "20");
  EXPECT_EQ(totales(), "116 87.5 156.6");
  EXPECT_NEAR(Pie(pantalla.txtTotal), 360.1, 0.01);
  // An agreed price in dollars is one: the rate no longer matters.
  ASSERT_TRUE(Teclea(1, "Precio", "90"));
  Campo(pantalla.txtTipoCambio, "10");
  Campo(pantalla.txtHuesped, "2");
  for (int fila = 0; fila < 3; ++fila) {
    ASSERT_TRUE(Ve(fila, "FECHAF"));
    ASSERT_TRUE(Ve(fila, "Adultos"));
    ASSERT_TRUE(Ve(fila, "Menores"));
  }
  EXPECT_EQ(totales(), "232 90 313.2");
  Campo(pantalla.txtMoneda, "MXN");
  EXPECT_EQ(totales(), "2320 1800 3132") << "as agreed, at the rate of then";
  Pulsa(Accion::Limpiar);

  // A stored price counts as agreed, whatever the hotel's rate has become.
  InsertaReservacion("0000000077", {"0101"});
  host.Tarifa("0001", 5000, 0, 0);
  Carga("0000000077");
  Pulsa(Accion::Editar);
  ASSERT_TRUE(Ve(0, "FECHAF"));
  ASSERT_TRUE(Ve(0, "Menores"));
  Campo(pantalla.txtHuesped, "2");
  ASSERT_TRUE(Ve(0, "Adultos"));
  EXPECT_EQ(Texto(0, "Total"), "2320");
  Campo(pantalla.txtMoneda, "USD");
  EXPECT_EQ(Texto(0, "Total"), "132.57");
  Campo(pantalla.txtMoneda, "MXN");
  EXPECT_EQ(Texto(0, "Total"), "2320");
  EXPECT_EQ(Vistos(escritorio), Cajas{});
}

// Without a rate there is nothing to convert by.
TEST(Tasacion, AnAgreedPriceWaitsForARate) {
  kv207::PrecioRenglon precio;
  precio.incompleto = true;
  precio.acuerdo = kv207::Acuerdo{"MXN", 1, 100, 0};
  kv207::CondicionesPrecio ahora;
  ahora.encabezado.moneda = "USD";
  EXPECT_EQ(QueFalta(&precio, ahora), kv207::Falta::Nada);
  ahora.encabezado.tipoCambio = 17.5;
  EXPECT_EQ(QueFalta(&precio, ahora), kv207::Falta::Convertir);
}

TEST_F(Renglones, DatesOutsideTheStayAndTextsThatAreNoDatesFallBack) {
  Nueva();
  Linea("0101", 2);
  ASSERT_TRUE(Teclea(0, "FECHAI", "11/03/2026"));
  EXPECT_DOUBLE_EQ(Numero(0, "Total"), 1160);
  ASSERT_TRUE(Teclea(0, "FECHAI", "mañana"));
  EXPECT_EQ(grid().celda(0, "FECHAI"), com::Variant(Dia(2026, 3, 10)));
  ASSERT_TRUE(Teclea(0, "FECHAF", "31/02/2026"));
  EXPECT_EQ(grid().celda(0, "FECHAF"), com::Variant(Dia(2026, 3, 12)));
  EXPECT_DOUBLE_EQ(Numero(0, "Total"), 2320);
  // A stay that has been moved takes the line with it when the cell is left.
  pantalla.dpFecha_llegada.valor(Dia(2026, 3, 11));
  ASSERT_TRUE(Ve(0, "FECHAI"));
  ASSERT_TRUE(Ve(0, "Adultos"));
  EXPECT_EQ(grid().celda(0, "FECHAI"), com::Variant(Dia(2026, 3, 11)));
  EXPECT_DOUBLE_EQ(Numero(0, "Total"), 1160);
}

TEST_F(Renglones, TheDatePopUpLiesOverTheCellAndItsDatePricesTheLine) {
  Nueva();
  Linea("0101", 2);
  ASSERT_TRUE(Ve(0, "FECHAI"));
  const controles::Lugar celda = grid().LugarCelda(0, grid().IndiceColumna("FECHAI"));
  EXPECT_TRUE(pantalla.pcFecha.visible());
  EXPECT_EQ(pantalla.ColumnaFechaActiva, "FECHAI");
  EXPECT_EQ(pantalla.pcFecha.left(), grid().left() + celda.left);
  EXPECT_EQ(pantalla.pcFecha.top(), grid().top() + celda.top);
  EXPECT_EQ(pantalla.pcFecha.width(), grid().columna("FECHAI").ancho + 10);
  EXPECT_EQ(pantalla.pcFecha.height(), celda.height + 10);
  EXPECT_EQ(pantalla.dpFechaGrid.width(), pantalla.pcFecha.width() + 33);
  EXPECT_EQ(pantalla.dpFechaGrid.height(), pantalla.pcFecha.height() + 33);
  EXPECT_EQ(pantalla.foco(), &pantalla.dpFechaGrid);
  EXPECT_EQ(pantalla.dpFechaGrid.valor(), Dia(2026, 3, 10));

  // The picked date goes into the cell, and the pop-up on to the next one.
  pantalla.dpFechaGrid.Fija(Dia(2026, 3, 11));
  EXPECT_EQ(grid().celda(0, "FECHAI"), com::Variant(Dia(2026, 3, 11)));
  EXPECT_DOUBLE_EQ(Numero(0, "Total"), 1160);
  EXPECT_EQ(pantalla.ColumnaFechaActiva, "FECHAF");
  EXPECT_TRUE(pantalla.pcFecha.visible());

  ASSERT_TRUE(Ve(0, "Adultos"));
  EXPECT_FALSE(pantalla.pcFecha.visible());
  EXPECT_EQ(pantalla.ColumnaFechaActiva, "");

  // An empty date cell proposes the server's day; typing takes the pop-up away.
  ASSERT_TRUE(Ve(0, "FECHAF"));
  grid().Teclea("");
  EXPECT_FALSE(pantalla.pcFecha.visible());
  ASSERT_TRUE(Ve(0, "Adultos"));
  ASSERT_TRUE(Ve(0, "FECHAF"));
  EXPECT_EQ(pantalla.dpFechaGrid.valor(), Dia(2026, 3, 9));

  // It goes with the clerk who turns to something else, and by Esc back to the cell.
  ASSERT_TRUE(Ve(0, "FECHAI"));
  pantalla.Enfoca(pantalla.txtReferencia);
  EXPECT_FALSE(pantalla.pcFecha.visible());
  EXPECT_EQ(pantalla.ColumnaFechaActiva, "");
  ASSERT_TRUE(Ve(0, "FECHAF"));
  pantalla.PulsaTecla(controles::tecla::kEsc);
  EXPECT_FALSE(pantalla.pcFecha.visible());
  EXPECT_EQ(pantalla.foco(), &grid());
  EXPECT_EQ(grid().ClaveColumna(), "FECHAF");

  // Nothing to lay it over: a line without a room, a locked column.
  grid().NuevaFila();
  ASSERT_TRUE(Ve(1, "FECHAI"));
  EXPECT_FALSE(pantalla.pcFecha.visible());
  pantalla.BloqueaColumnas();
  ASSERT_TRUE(Ve(0, "FECHAI"));
  EXPECT_FALSE(pantalla.pcFecha.visible());
}

TEST_F(Renglones, OnlyTheCharactersOfANumberPass) {
  host.Permiso("CHPR02", true);
  host.Permiso("CHDS02", true);
  Nueva();
  Linea("0101", 2);
  const auto pasan = [this](const char* columna) {
    EXPECT_TRUE(Ve(0, columna));
    std::string cuales;
    for (const int c : {tecla::kRetroceso, tecla::kEnter, int{'5'}, int{'.'}, int{'-'}, int{'a'}, 0x0661}) {
      int caracter = c;
      pantalla.ssReservaciones_KeyPress(caracter);
      cuales += caracter == c ? '1' : '0';
    }
    return cuales;
  };
  EXPECT_EQ(pasan("Menores"), "1010000");
  EXPECT_EQ(pasan("Precio"), "1011000");
  EXPECT_EQ(pasan("Descuento"), "1011000");
  EXPECT_EQ(pasan("DESCUENTO_IMPORTE"), "1011111");
  EXPECT_EQ(pasan("Clave"), "1011111");

  // As the clerk types: letters never reach the cell, Enter moves on.
  ASSERT_TRUE(Ve(0, "Adultos"));
  for (const char32_t c : U"1x") grid().PulsaCaracter(c);
  pantalla.Enfoca(grid());
  grid().PulsaTecla(tecla::kEnter);
  EXPECT_EQ(grid().celda(0, "Adultos"), com::Variant(1));
  EXPECT_EQ(grid().ClaveColumna(), "Menores");
}

TEST_F(Renglones, AnEmptiedKeyTakesTheLineAndItsAmountsAway) {
  Nueva();
  Linea("0101", 2);
  Linea("0102", 1);
  EXPECT_EQ(Pie(pantalla.txtTotal), 4640);
  ASSERT_TRUE(Ve(1, "Clave"));
  grid().Teclea("");
  EXPECT_EQ(grid().Filas(), 1);
  EXPECT_EQ(Pie(pantalla.txtTotal), 2320);

  // Another key blanks the line until it is resolved.
  ASSERT_TRUE(Ve(0, "Clave"));
  grid().Teclea("0201");
  EXPECT_EQ(Texto(0, "Nombre"), "");
  EXPECT_DOUBLE_EQ(Numero(0, "Total"), 0);

  grid().antesDeCambiar = [] { throw com::Error(com::error::kInyectada, "falla inyectada"); };
  grid().Teclea("0102");
  grid().antesDeCambiar = {};
  EXPECT_EQ(Vistos(escritorio), Cajas{"ERR-ID:7500035|16|ssReservaciones_Change()|falla inyectada"});
}

}  // namespace
