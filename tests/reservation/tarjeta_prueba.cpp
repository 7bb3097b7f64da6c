// Card data of a reservation.
#include "reservation/tarjeta.h"

#include <gtest/gtest.h>

#include "reservation/sentencias.h"
#include "tests/comun/hotel_prueba.h"

namespace {

using controles::Accion;

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

TEST_F(Tarjeta, CheckNamesTheFirstEmptyField) {
  Nueva();
  Campo(pantalla.txtForma_Pago, "4");
  struct Paso {
    controles::LookupField& campo;
    const char* id;
    const char* texto;
  };
  const Paso pasos[] = {{pantalla.txtBanco, "ERR-ID:7500041", "Debe especificar un banco"},
                        {pantalla.txtTarjeta, "ERR-ID:7500042", "Debe especificar un número de tarjeta"},
                        {pantalla.txtCodigo, "ERR-ID:7500043", "Debe especificar un código de seguridad"}};
  bool ok = true;
  for (const Paso& p : pasos) {
    escritorio.Olvida();
    pantalla.ValidaTarjeta(ok);
    EXPECT_FALSE(ok);
    ASSERT_EQ(escritorio.Ids(), std::vector<std::string>{p.id});
    EXPECT_EQ(escritorio.Mensajes()[0].texto, p.texto);
    EXPECT_EQ(escritorio.Mensajes()[0].titulo, "Atención");
    EXPECT_EQ(pantalla.foco(), &p.campo);
    EXPECT_TRUE(pantalla.Controles.EnEdicion());
    p.campo.Teclea("x");
  }
  pantalla.ValidaTarjeta(ok);
  EXPECT_TRUE(ok);
}

TEST(SentenciasTarjeta, ReadAsWritten) {
  ado::TextoSQL reservacion, cliente;
  kv207::ArmaTarjetaReservacion(reservacion, "7");
  kv207::ArmaTarjetaCliente(cliente, "9");
  EXPECT_EQ(reservacion.Texto(),
            "SELECT Rdt_Banco as Banco,  Rdt_Numero as Numero,  ISNULL(Rdt_Vencimiento,GETDATE()) as Vencimiento,  "
            "Rdt_Codigo_Seguridad as Codigo FROM Reservacion_Datos_Tarjeta WHERE Rs_Folio = '7' ");
  EXPECT_EQ(cliente.Texto(),
            "SELECT Cl_Tarjeta_Banco as Banco,  Cl_Tarjeta_Numero as Numero,  ISNULL(Cl_Tarjeta_Vencimiento,GETDATE()) "
            "as Vencimiento,  Cl_Tarjeta_Codigo_Seguridad as Codigo FROM Cliente WHERE Cl_Cve_Cliente = '9' ");
}

}  // namespace
