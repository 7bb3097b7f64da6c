// A clerk and a server far away: how often she waits for it, and what its going away costs her.
#include <gtest/gtest.h>

#include "proceso.h"
#include "tests/comun/base_postgres.h"
#include "tests/comun/puente.h"

namespace {

class ViajesPostgres : public testing::Test {
 protected:
  ~ViajesPostgres() override { pruebas::QuitaBasePostgres(base); }
  std::string Responde(const std::string& orden) {
    programa.Di(orden);
    return programa.Oye();
  }
  // Round trips of the last of the orders.
  int Viajes(const std::vector<std::string>& ordenes) {
    int viajes = 0;
    for (const auto& orden : ordenes) {
      puente.Viajes();
      const std::string respuesta = Responde(orden);
      EXPECT_NE(respuesta.find(R"("ok":true)"), std::string::npos) << respuesta;
      viajes = puente.Viajes();
    }
    return viajes;
  }

  std::string base = pruebas::NuevaBasePostgres();
  pruebas::Puente puente{base};
  pruebas::Dialogo programa{
      {RESERVAS_GUION, "--conexion", puente.direccion(), "--demo", "--ahora", "2026-03-09T10:00"}};
};

// 300 rooms and 30 nights.
TEST_F(ViajesPostgres, ElTableroSeLeePorConjuntos) {
  Viajes({("sql INSERT INTO Habitacion (Hb_Cve_Habitacion, Hb_Descripcion, Th_Cve_Tipo_Habitacion) "
           "SELECT to_char(n, 'FM0000'), 'Cuarto', '0001' FROM generate_series(1001, 1260) n"),
          "abre", "accion nuevo", "fecha dpFecha_llegada 2026-03-16", "fecha dpFecha_salida 2026-04-15", "tecla F6"});
  const int viajes = Viajes({"clic opHabitacion"});
  const std::string campos = Responde("muestra campos");
  EXPECT_NE(campos.find(R"("NumeroDias":30,"NumeroFilas":300)"), std::string::npos) << campos;
  EXPECT_GE(viajes, 5);
  EXPECT_LE(viajes, 8);
}

TEST_F(ViajesPostgres, UnServidorQueSeVaNoCuestaLaCaptura) {
  Viajes({"abre", "accion nuevo", "campo txtHuesped 3", "campo txtForma_Pago 1", "texto txtReferencia FAX-7",
          "fecha dpFecha_llegada 2026-03-20", "fecha dpFecha_salida 2026-03-21", "tecla F6", "clic opHabitacion",
          "marca 0 0", "accion aceptar", "celda 0 Adultos 1"});
  puente.Corta("Reservacion_Detalle (Rs_Folio", pruebas::Puente::Lado::Servidor);
  const std::string falla = Responde("accion aceptar");
  EXPECT_NE(falla.find("Se perdió la conexión con el servidor de la base de datos. No se guardó nada"),
            std::string::npos)
      << falla;
  EXPECT_NE(Responde("muestra Controles").find(R"("EnEdicion":true)"), std::string::npos);
  EXPECT_NE(Responde("muestra txtReferencia").find("FAX-7"), std::string::npos);
  EXPECT_EQ(Responde("accion aceptar").find("Se perdió"), std::string::npos);
  EXPECT_NE(Responde("sql SELECT Rs_Folio, Rs_Referencia FROM Reservacion WHERE Rs_Folio > '0000000045'")
                .find(R"([{"Rs_Folio":"0000000046","Rs_Referencia":"FAX-7"}])"),
            std::string::npos);
}

TEST_F(ViajesPostgres, GuardarTresRenglonesEsperaPocasVeces) {
  for (const int dia : {16, 18}) {  // a statement that is prepared on its way takes no trip more
    const std::string entra = std::to_string(dia), sale = std::to_string(dia + 1);
    Viajes({"abre", "accion nuevo", "campo txtHuesped 3", "campo txtForma_Pago 1",
            "fecha dpFecha_llegada 2026-03-" + entra, "fecha dpFecha_salida 2026-03-" + sale, "tecla F6",
            "clic opHabitacion", "marca 0 0", "marca 1 0", "marca 2 0", "accion aceptar"});
    for (int i = 0; i < 3; ++i) Viajes({"celda " + std::to_string(i) + " Adultos 1"});
    Viajes({"accion aceptar"});
    EXPECT_GE(puente.ViajesDeTransaccion(), 10);
    EXPECT_LE(puente.ViajesDeTransaccion(), 20);
  }
}

}  // namespace
