// Header fields of the reservation.
#include <gtest/gtest.h>

#include "tests/comun/hotel_prueba.h"

namespace {

using controles::Accion;

class Encabezado : public pruebas::HotelPrueba {
 protected:
  std::string Tarjeta() const {
    return pantalla.txtBanco.text() + "|" + pantalla.txtTarjeta.text() + "|" + pantalla.txtCodigo.text() + "|" +
           pantalla.dpVencimiento.text();
  }
  static constexpr const char* kTarjetaNorte = "Banco Azul|4111|123|31/05/2027";
};

TEST_F(Encabezado, CurrencyBringsItsRateWhichOnlyAForeignOneOpens) {
  Nueva();
  EXPECT_EQ(pantalla.txtTipoCambio.text(), "1");
  EXPECT_FALSE(pantalla.txtTipoCambio.enabled());
  Campo(pantalla.txtMoneda, "usd");
  EXPECT_EQ(pantalla.txtNMoneda.text(), "Dólar");
  EXPECT_EQ(pantalla.txtTipoCambio.text(), "17.5");
  EXPECT_TRUE(pantalla.txtTipoCambio.enabled());
  Campo(pantalla.txtMoneda, "");
  EXPECT_EQ(pantalla.txtTipoCambio.text(), "17.5");

  host.Permiso("CHTC01", true);
  pantalla.Descarga();
  Nueva();
  Campo(pantalla.txtMoneda, "USD");
  EXPECT_EQ(pantalla.txtTipoCambio.text(), "17.5");
  EXPECT_FALSE(pantalla.txtTipoCambio.enabled());
}

TEST_F(Encabezado, ACurrencyWithoutRateLeavesTheRateAsItWas) {
  Sql("INSERT INTO Moneda (Mn_Cve_Moneda, Mn_Descripcion) VALUES ('GBP', 'Libra')");
  Nueva();
  Campo(pantalla.txtMoneda, "USD");
  EXPECT_THROW(Campo(pantalla.txtMoneda, "GBP"), com::Error);
  EXPECT_EQ(pantalla.txtNMoneda.text(), "Libra");
  EXPECT_EQ(pantalla.txtTipoCambio.text(), "17.5");
}

TEST_F(Encabezado, CardPaymentShowsTheCardOfWhoeverPays) {
  Nueva();
  Campo(pantalla.txtForma_Pago, "4");
  EXPECT_TRUE(pantalla.frTarjeta.visible());
  EXPECT_TRUE(pantalla.txtTarjeta.enabled());
  EXPECT_TRUE(pantalla.TarjetaCargada);
  // Ana has no card; no expiry stored means today's.
  EXPECT_EQ(Tarjeta(), "|||09/03/2026");

  // Another client: the card goes, and comes with the next confirmation, once.
  Campo(pantalla.txtCliente, "2");
  EXPECT_FALSE(pantalla.TarjetaCargada);
  EXPECT_EQ(Tarjeta(), "|||");
  EXPECT_TRUE(pantalla.txtTarjeta.enabled());
  pantalla.txtForma_Pago.Confirma();
  EXPECT_EQ(Tarjeta(), kTarjetaNorte);
  pantalla.txtTarjeta.Teclea("5555");
  pantalla.txtForma_Pago.Confirma();
  EXPECT_EQ(pantalla.txtTarjeta.text(), "5555");

  Campo(pantalla.txtForma_Pago, "1");
  EXPECT_FALSE(pantalla.frTarjeta.visible());
  EXPECT_EQ(Tarjeta(), "|||");
  EXPECT_EQ(pantalla.TipoFormaPago, "01");
  Campo(pantalla.txtForma_Pago, "4");
  EXPECT_EQ(Tarjeta(), kTarjetaNorte);
}

TEST_F(Encabezado, ANewGuestTakesTheCardAway) {
  Nueva();
  Campo(pantalla.txtHuesped, "2");
  Campo(pantalla.txtForma_Pago, "4");
  EXPECT_EQ(Tarjeta(), kTarjetaNorte);
  pantalla.txtHuesped.Teclea("1");
  EXPECT_EQ(Tarjeta(), "|||");
  EXPECT_FALSE(pantalla.TarjetaCargada);
  EXPECT_TRUE(pantalla.txtTarjeta.enabled());
}

TEST_F(Encabezado, AFolioThatChangesInMidEditKeepsTheFields) {
  InsertaReservacion("0000000077", {"0101"});
  Carga("77");
  Pulsa(Accion::Editar);
  pantalla.txtFolio.text("8");
  EXPECT_EQ(pantalla.Controles.ClaveActual(), "");
  EXPECT_EQ(pantalla.txtNHuesped.text(), "Ana López");
  EXPECT_EQ(pantalla.ssReservaciones.Filas(), 1);
  // Another branch, whose taxes are others, does away with the lines.
  pantalla.txtSucursal.Teclea("2");
  EXPECT_EQ(pantalla.ssReservaciones.Filas(), 0);
}

}  // namespace
