// Card data of a reservation.
#include "reservation/tarjeta.h"

#include <gtest/gtest.h>

#include "tests/comun/hotel_prueba.h"

namespace {

TEST(TipoFormaPago, TypeIsReadWithoutBlanks) {
  EXPECT_TRUE(kv207::EsTarjeta("04"));
  EXPECT_TRUE(kv207::EsTarjeta(" 04 "));
  EXPECT_FALSE(kv207::EsTarjeta("4"));
  EXPECT_FALSE(kv207::EsTarjeta(""));
}

class Tarjeta : public pruebas::HotelPrueba {};

TEST_F(Tarjeta, ANewReservationOfTheWebClientReadsThatClientsOwn) {
  host.Parametro("HT_CLIENTE_RESERVACION_WEB", "0000000009");
  Nueva();
  Campo(pantalla.txtCliente, "9");
  Campo(pantalla.txtForma_Pago, "4");
  EXPECT_EQ(pantalla.txtBanco.text(), "Banco Web");
  // No expiry stored: the server's date.
  EXPECT_EQ(pantalla.dpVencimiento.text(), "09/03/2026");
}

TEST_F(Tarjeta, AFailedReadIsToldAndKeepsTheFields) {
  Nueva();
  Campo(pantalla.txtForma_Pago, "4");
  Campo(pantalla.txtCliente, "2");
  pantalla.txtBanco.Teclea("a mano");
  conexion->Falla("FROM Cliente WHERE Cl_Cve_Cliente");
  pantalla.txtForma_Pago.Confirma();
  ASSERT_EQ(escritorio.Ids(), std::vector<std::string>{"ERR-ID:7500040"});
  EXPECT_EQ(escritorio.Mensajes()[0].titulo, "Datos_Tarjeta()");
  EXPECT_EQ(pantalla.txtBanco.text(), "a mano");
  EXPECT_FALSE(pantalla.TarjetaCargada);
  EXPECT_TRUE(pantalla.frTarjeta.visible());
}

}  // namespace
