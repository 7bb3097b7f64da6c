// Loading a stored reservation.
#include <gtest/gtest.h>

#include "tests/comun/hotel_prueba.h"

namespace {

using controles::Accion;

class Carga : public pruebas::HotelPrueba {
 protected:
  // Actions on the record that the toolbar offers.
  std::string Ofrece() const {
    std::string acciones;
    for (const Accion a :
         {Accion::Editar, Accion::Confirmar, Accion::Eliminar, Accion::Reactivar, Accion::Correo, Accion::Registro}) {
      if (pantalla.Controles.Ofrece(a)) acciones += std::string(controles::NombreAccion(a)) + " ";
    }
    return acciones;
  }
};

TEST_F(Carga, NothingIsReadInMidEditOrWithoutAFolio) {
  Abre();
  conexion->sentencias.clear();
  Campo(pantalla.txtFolio, "");
  Nueva();
  pantalla.txtFolio.text("77");
  pantalla.txtFolio_Enter();
  for (const std::string& s : conexion->sentencias) EXPECT_EQ(s.find("From Reservacion"), std::string::npos) << s;
}

TEST_F(Carga, FailuresAreToldOnceAndKeepWhatWasShown) {
  InsertaReservacion("0000000077", {"0101"});
  Abre();
  conexion->Falla("From Reservacion ");
  HotelPrueba::Carga("77");
  EXPECT_EQ(pantalla.txtNHuesped.text(), "");
  Sql("UPDATE Reservacion_Detalle SET Rsd_Descuento_Factor = NULL");
  HotelPrueba::Carga("78");
  escritorio.Olvida();
  HotelPrueba::Carga("77");
  ASSERT_EQ(escritorio.Ids(), std::vector<std::string>{"ERR-ID:7500039"});
  EXPECT_EQ(escritorio.Mensajes()[0].titulo, "txtFolio_Enter()");
  EXPECT_EQ(pantalla.txtNHuesped.text(), "Ana López");
  EXPECT_EQ(Ofrece(), "editar confirmar eliminar correo registro ");
  EXPECT_EQ(pantalla.UltimoRenglon, 0);
  // A view that cannot paint the lines is told of too.
  Sql("UPDATE Reservacion_Detalle SET Rsd_Descuento_Factor = 0");
  escritorio.Olvida();
  pantalla.txtFolio.text("0000000077");
  pantalla.ssReservaciones.alCambiar = [](controles::CambioGrid, int, int) { throw std::runtime_error("sin lienzo"); };
  EXPECT_FALSE(pantalla.CargaReservacion());
  pantalla.ssReservaciones.alCambiar = {};
  ASSERT_EQ(escritorio.Ids(), std::vector<std::string>{"ERR-ID:7500039"});
  EXPECT_EQ(escritorio.Mensajes()[0].texto, "sin lienzo");
  // A folio that would leave its quotes never runs.
  escritorio.Olvida();
  HotelPrueba::Carga("7'; DELETE FROM Reservacion; --");
  EXPECT_EQ(escritorio.Ids(), std::vector<std::string>{"ERR-ID:7500039"});
  EXPECT_EQ(Celda("SELECT COUNT(*) FROM Reservacion"), "1");
}

// Accepting a reservation that was read in part only would store that part.
TEST_F(Carga, AnEditOfWhatWasReadInPartReadsItAgainFirst) {
  InsertaReservacion("0000000077", {"0101", "0102"});
  Abre();
  pantalla.ssReservaciones.antesDeCambiar = [this] {
    if (pantalla.ssReservaciones.Filas() == 1) throw com::Error(com::error::kInyectada, "falla inyectada");
  };
  HotelPrueba::Carga("77");
  ASSERT_EQ(pantalla.ssReservaciones.Filas(), 1);
  Pulsa(Accion::Editar);
  EXPECT_EQ(escritorio.Ids(), (std::vector<std::string>{"ERR-ID:7500039", "ERR-ID:7500039"}));
  EXPECT_FALSE(pantalla.Controles.EnEdicion());
  EXPECT_FALSE(pantalla.txtComentario.enabled());

  // It can be read now; cancelled by somebody since, it must not be edited, and active it is edited whole.
  pantalla.ssReservaciones.antesDeCambiar = {};
  Sql("UPDATE Reservacion SET Es_Cve_Estado = 'CA'");
  Pulsa(Accion::Editar);
  EXPECT_FALSE(pantalla.Controles.EnEdicion());
  EXPECT_EQ(Ofrece(), "reactivar correo registro ");
  Sql("UPDATE Reservacion SET Es_Cve_Estado = 'AC'");
  conexion->Falla("From Reservacion ");
  HotelPrueba::Carga("77");
  Pulsa(Accion::Limpiar);
  pantalla.ssReservaciones.antesDeCambiar = [this] {
    if (pantalla.ssReservaciones.Filas() == 1) throw com::Error(com::error::kInyectada, "falla inyectada");
  };
  HotelPrueba::Carga("77");
  pantalla.ssReservaciones.antesDeCambiar = {};
  Pulsa(Accion::Editar);
  EXPECT_TRUE(pantalla.Controles.EnEdicion());
  EXPECT_EQ(pantalla.ssReservaciones.Filas(), 2) << "read whole by the edit";
  EXPECT_EQ(pantalla.txtDias.text(), "2");
  Pulsa(Accion::Limpiar);
  HotelPrueba::Carga("77");
  conexion->sentencias.clear();
  Pulsa(Accion::Editar);
  EXPECT_EQ(pantalla.ssReservaciones.Filas(), 2);
  for (const std::string& s : conexion->sentencias) EXPECT_EQ(s.find("From Reservacion"), std::string::npos) << s;
}

}  // namespace
