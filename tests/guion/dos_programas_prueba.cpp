// Two clerks at one hotel, each in a program of their own: nobody's work is overwritten.
#include <gtest/gtest.h>

#include "proceso.h"
#include "tests/comun/base_postgres.h"

namespace {

using pruebas::Carpeta;
using pruebas::Dialogo;

class DosEmpleados : public testing::TestWithParam<const char*> {
 protected:
  ~DosEmpleados() override {
    if (enServidor) pruebas::QuitaBasePostgres(base);
  }
  std::vector<std::string> Programa(const char* usuario) const {
    return {RESERVAS_GUION, GetParam(), base, "--demo", "--ahora", "2026-03-09T10:00", "--usuario", usuario};
  }
  // What the clerk sees after each order; the last answer.
  static std::string Hace(Dialogo& quien, const std::vector<std::string>& ordenes) {
    std::string ultima;
    for (const auto& orden : ordenes) {
      quien.Di(orden);
      ultima = quien.Oye();
      EXPECT_NE(ultima.find(R"("ok":true)"), std::string::npos) << ultima;
    }
    return ultima;
  }
  static bool Dice(const std::string& respuesta, const std::string& texto) {
    return respuesta.find(texto) != std::string::npos;
  }
  static std::string Estado(Dialogo& quien, const std::string& columna = "Es_Cve_Estado") {
    const std::string r =
        Hace(quien, {"sql SELECT " + columna + " AS X FROM Reservacion WHERE Rs_Folio = '0000000016'"});
    const std::size_t desde = r.find(R"("X":")");
    return desde == std::string::npos ? r : r.substr(desde + 5, r.find('"', desde + 5) - desde - 5);
  }
  static std::string Carga(Dialogo& quien) { return Hace(quien, {"campo txtFolio 16"}); }

  Carpeta carpeta;
  const bool enServidor = std::string_view(GetParam()) == "--conexion";
  std::string base = enServidor ? pruebas::NuevaBasePostgres() : carpeta.Ruta("hotel.db");
  Dialogo ana{Programa("ANA")}, beto{Programa("BETO")};
};

INSTANTIATE_TEST_SUITE_P(Sqlite, DosEmpleados, testing::Values("--base"));
INSTANTIATE_TEST_SUITE_P(Postgres, DosEmpleados, testing::Values("--conexion"));

TEST_P(DosEmpleados, QuienGuardaDespuesSeEnteraYPuedeSeguir) {
  for (Dialogo* quien : {&ana, &beto}) Hace(*quien, {"abre", "campo txtFolio 16", "accion editar"});
  Hace(beto, {"texto txtNotas \"Alergia a las nueces\"", "celda 0 Infantes 0", "accion aceptar"});
  Hace(ana, {"texto txtReferencia \"OTRA\""});
  const std::string rechazo = Hace(ana, {"accion aceptar"});
  for (const char* parte : {"ERR-ID:7500012", "La reservación 0000000016 cambió después de que usted la abrió.",
                            "09/03/2026 10:00:00, BETO: CAMBIO EL DETALLE DE LA RESERVACION", "- Notas: ",
                            " -> Alergia a las nueces", "1 infantes, $1,780.00 -> 1 adultos, 0 menores, 0 infantes"}) {
    EXPECT_TRUE(Dice(rechazo, parte)) << parte << "\n" << rechazo;
  }
  EXPECT_EQ(Estado(beto, "Rs_Notas"), "Alergia a las nueces");
  EXPECT_TRUE(Dice(Hace(ana, {"muestra txtReferencia"}), "OTRA"));
  EXPECT_TRUE(Dice(Hace(ana, {"muestra Controles"}), R"("EnEdicion":true)"));
  // Looked at: what she captured stands now.
  EXPECT_FALSE(Dice(Hace(ana, {"accion aceptar"}), "7500012"));
  EXPECT_EQ(Estado(beto, "Rs_Referencia"), "OTRA");
}

TEST_P(DosEmpleados, UnEstadoNoSeCambiaSobreOtro) {
  for (Dialogo* quien : {&ana, &beto}) Hace(*quien, {"abre", "campo txtFolio 16"});
  Hace(beto, {"accion eliminar"});
  const std::string confirma = Hace(ana, {"accion confirmar"});
  for (const char* parte : {"ERR-ID:7500024", "BETO: Baja", "está cancelada: no se puede confirmar"}) {
    EXPECT_TRUE(Dice(confirma, parte)) << parte << "\n" << confirma;
  }
  EXPECT_TRUE(Dice(Hace(ana, {"accion confirmar"}), "está cancelada: no se puede confirmar"));
  EXPECT_EQ(Estado(ana), "CA");
  // Active again and confirmed by one: reactivated by the other it would be active.
  Carga(ana);
  Carga(beto);
  Hace(beto, {"accion reactivar", "campo txtFolio 16", "accion confirmar"});
  const std::string reactiva = Hace(ana, {"accion reactivar"});
  EXPECT_TRUE(Dice(reactiva, "ERR-ID:7500029") && Dice(reactiva, "está confirmada: no se puede reactivar")) << reactiva;
  // Checked in meanwhile, by whatever program.
  Carga(ana);
  Hace(beto, {"sql UPDATE Reservacion SET Es_Cve_Estado = 'AP' WHERE Rs_Folio = '0000000016'"});
  const std::string cancela = Hace(ana, {"accion eliminar"});
  EXPECT_TRUE(Dice(cancela, "ERR-ID:7500025") && Dice(cancela, "está aplicada: no se puede cancelar")) << cancela;
  EXPECT_EQ(Estado(ana), "AP");
  // A change that leaves the state asks to be looked at once.
  Hace(beto, {"sql UPDATE Reservacion SET Es_Cve_Estado = 'AC' WHERE Rs_Folio = '0000000016'"});
  Carga(ana);
  Hace(beto, {"sql UPDATE Reservacion_Detalle SET Rsd_Adultos = 1 WHERE Rs_Folio = '0000000016'"});
  EXPECT_TRUE(Dice(Hace(ana, {"accion confirmar"}), "Si vuelve a pedirlo"));
  EXPECT_EQ(Estado(ana), "AC");
  EXPECT_FALSE(Dice(Hace(ana, {"accion confirmar"}), "7500024"));
  EXPECT_EQ(Estado(ana), "CO");
  Hace(beto, {"campo txtFolio 16", "sql DELETE FROM Reservacion WHERE Rs_Folio = '0000000016'"});
  EXPECT_TRUE(Dice(Hace(beto, {"accion eliminar"}), "ya no existe"));
}

}  // namespace
