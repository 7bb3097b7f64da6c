// How often a clerk waits for a server far away.
#include <gtest/gtest.h>

#include "proceso.h"
#include "tests/comun/base_postgres.h"
#include "tests/comun/puente.h"

namespace {

class ViajesPostgres : public testing::Test {
 protected:
  ~ViajesPostgres() override { pruebas::QuitaBasePostgres(base); }
  // Round trips of the last of the orders.
  int Viajes(const std::vector<std::string>& ordenes) {
    int viajes = 0;
    for (const auto& orden : ordenes) {
      puente.Viajes();
      programa.Di(orden);
      const std::string respuesta = programa.Oye();
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
  Viajes(
      {"sql INSERT INTO Habitacion (Hb_Cve_Habitacion, Hb_Descripcion, Th_Cve_Tipo_Habitacion) "
       "SELECT to_char(n, 'FM0000'), 'Cuarto', '0001' FROM generate_series(1001, 1260) n",
       "abre", "accion nuevo", "fecha dpFecha_llegada 2026-03-16", "fecha dpFecha_salida 2026-04-15", "tecla F6"});
  const int viajes = Viajes({"clic opHabitacion"});
  programa.Di("muestra campos");
  const std::string campos = programa.Oye();
  EXPECT_NE(campos.find(R"("NumeroDias":30,"NumeroFilas":300)"), std::string::npos) << campos;
  EXPECT_GE(viajes, 5);
  EXPECT_LE(viajes, 8);
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
