// Loading a stored reservation.
#include <gtest/gtest.h>

#include "platform/controls/metrica.h"
#include "reservation/sentencias.h"
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
  std::string OfreceEn(const std::string& estado) {
    Sql("UPDATE Reservacion SET Es_Cve_Estado = '" + estado + "' WHERE Rs_Folio = '0000000077'");
    HotelPrueba::Carga("77");
    return Ofrece();
  }
};

TEST_F(Carga, ShowsHeaderLinesAndTotals) {
  InsertaReservacion("0000000077", {"0101", "0102", "0201"});
  Sql("UPDATE Reservacion_Detalle SET Rsd_Descuento_Factor = 0.1, Rsd_Descuento_Importe = 200, Rsd_Menores = 1, "
      "Rsd_Cantidad_Personas_Extra = 1, Rsd_Precio_Personas_Extra = 232, Rsd_Precio_Neto_Importe = 2320.005 WHERE "
      "Rsd_Id = 1");
  HotelPrueba::Carga("77");
  EXPECT_TRUE(escritorio.Mensajes().empty());
  EXPECT_EQ(pantalla.txtFolio.text(), "0000000077");
  EXPECT_EQ(pantalla.dpFecha.text() + " " + pantalla.dpFecha_llegada.text() + " " + pantalla.dpFecha_salida.text() +
                " " + pantalla.txtDias.text(),
            "01/03/2026 10/03/2026 12/03/2026 2");
  EXPECT_EQ(pantalla.txtNMoneda.text(), "Peso mexicano");
  EXPECT_EQ(pantalla.txtTipoCambio.text(), "1");
  EXPECT_EQ(pantalla.txtSucursal.text(), "0001");
  EXPECT_EQ(pantalla.txtNCliente.text(), "Ana López");
  EXPECT_EQ(pantalla.txtNHuesped.text(), "Ana López");
  EXPECT_EQ(pantalla.txtNForma_Pago.text(), "Efectivo");
  EXPECT_EQ(pantalla.txtReferencia.text(), "REF");
  EXPECT_EQ(pantalla.txtComentario.text(), "Piso alto");
  EXPECT_EQ(pantalla.txtNotas.text(), "Llega tarde");

  const controles::Grid& grid = pantalla.ssReservaciones;
  ASSERT_EQ(grid.Filas(), 3);
  EXPECT_EQ(grid.fila(), 0);
  EXPECT_EQ(grid.Texto(0, "Nombre"), "Sencilla / Vista al mar");
  EXPECT_EQ(grid.Texto(2, "Nombre"), "Doble / Terraza");
  const std::pair<const char*, const char*> celdas[] = {
      {"Clave", "0101"},
      {"FECHAI", "10/03/2026"},
      {"FECHAF", "12/03/2026"},
      {"Adultos", "2"},
      {"Menores", "1"},
      {"Infantes", "0"},
      {"NUM_PERSONAS_EXTRA", "1"},
      {"PersonasMax", "3"},
      {"Producto", "HAB1"},
      {"Unidad", "NOCHE"},
      {"Precio", "$2,320.0000"},
      {"PERSONA_EXTRA", "$232.0000"},
      {"Descuento", "10.00"},
      {"DESCUENTO_IMPORTE", "$200.00"},
      {"Impuesto", "16.00%"},
      {"IMPUESTO_IMPORTE", "$320.00"},
      {"Precio_Neto", "$1,160.0000"},
      {"Precio_Lista", "$1,000.0000"},
      {"Precio_Lista_Importe", "$2,000.0000"},
      {"Precio_Descontado", "$1,000.0000"},
      {"Precio_Descontado_Importe", "$2,000.0000"},
      {"Descuento_Global_Factor", "0"},
      {"Descuento_Global_Importe", "$0.0000"},
      {"Total", "$2,320.00"},
      {"ID", "1"},
  };
  for (const auto& [clave, texto] : celdas) EXPECT_EQ(grid.Texto(0, clave), texto) << clave;
  EXPECT_EQ(grid.Texto(2, "ID"), "3");
  EXPECT_EQ(pantalla.UltimoRenglon, 3);
  EXPECT_EQ(grid.columna("Nombre").ancho, controles::AnchoTextoEstandar("Sencilla / Vista al mar") + 200);
  for (int c = 0; c < grid.NumColumnas(); ++c) {
    EXPECT_TRUE(!grid.columna(c).visible || grid.columna(c).bloqueada) << grid.columna(c).clave;
  }
  EXPECT_EQ(pantalla.txtSubTotal.text() + " " + pantalla.txtImpuestos.text() + " " + pantalla.txtTotal.text(),
            "6000 960 6960");
  for (const controles::Control* c :
       {static_cast<controles::Control*>(&pantalla.txtHuesped), static_cast<controles::Control*>(&pantalla.txtNotas),
        static_cast<controles::Control*>(&pantalla.txtTipoCambio)}) {
    EXPECT_FALSE(c->enabled()) << c->nombre();
  }
  EXPECT_FALSE(pantalla.dpFecha_llegada.AceptaEntrada());
}

TEST_F(Carga, OffersWhatTheStateAllows) {
  InsertaReservacion("0000000077", {"0101"});
  EXPECT_EQ(OfreceEn("AC"), "editar confirmar eliminar correo registro ");
  EXPECT_EQ(OfreceEn("ac"), "editar eliminar correo registro ");
  EXPECT_EQ(OfreceEn("CO"), "editar eliminar correo registro ");
  EXPECT_EQ(OfreceEn("CE"), "correo registro ");
  EXPECT_EQ(OfreceEn("AP"), "correo registro ");
  EXPECT_EQ(OfreceEn("CA"), "reactivar correo registro ");
  EXPECT_EQ(OfreceEn("XX"), "correo registro ");
}

TEST_F(Carga, WithoutPriceRowOrLinesThereIsNoReservation) {
  InsertaReservacion("0000000077", {"0101", "0201"});
  Sql("DELETE FROM Producto_Precio WHERE Pr_Cve_Producto = 'HAB2'");
  HotelPrueba::Carga("77");
  EXPECT_EQ(pantalla.ssReservaciones.Filas(), 1);
  Sql("DELETE FROM Producto_Precio");
  HotelPrueba::Carga("77");
  HotelPrueba::Carga("78");
  ASSERT_EQ(escritorio.Ids(), (std::vector<std::string>{"ERR-ID:7500038", "ERR-ID:7500038"}));
  EXPECT_EQ(escritorio.Mensajes()[0].estilo, 64);
  EXPECT_EQ(escritorio.Mensajes()[0].titulo, "");
  EXPECT_EQ(pantalla.txtNHuesped.text(), "");
  EXPECT_EQ(Ofrece(), "");
}

TEST_F(Carga, NothingIsReadInMidEditOrWithoutAFolio) {
  Abre();
  conexion->sentencias.clear();
  Campo(pantalla.txtFolio, "");
  Nueva();
  pantalla.txtFolio.text("77");
  pantalla.txtFolio_Enter();
  for (const std::string& s : conexion->sentencias) EXPECT_EQ(s.find("From Reservacion"), std::string::npos) << s;
}

TEST_F(Carga, ADayReservationKeepsTheNightsAsTheyWere) {
  InsertaReservacion("0000000077", {"0101"});
  Sql("UPDATE Reservacion SET Rs_Salida = Rs_Llegada");
  HotelPrueba::Carga("77");
  EXPECT_EQ(pantalla.txtDias.text(), "");
}

TEST_F(Carga, CardOfTheClientOrOfTheWebReservation) {
  host.Parametro("HT_CLIENTE_RESERVACION_WEB", "0000000009");
  InsertaReservacion("0000000077", {"0101"});
  Sql("UPDATE Reservacion SET Fp_Cve_Forma_Pago = '0004', Cl_Cve_Cliente = '0000000002'");
  HotelPrueba::Carga("77");
  EXPECT_TRUE(pantalla.frTarjeta.visible());
  EXPECT_TRUE(pantalla.TarjetaCargada);
  EXPECT_EQ(pantalla.txtBanco.text(), "Banco Azul");
  EXPECT_FALSE(pantalla.txtBanco.enabled());

  // The web client's reservation without a card of its own: the client's is not shown for it.
  Sql("UPDATE Reservacion SET Cl_Cve_Cliente = '0000000009'");
  HotelPrueba::Carga("77");
  EXPECT_EQ(pantalla.txtBanco.text(), "");
  Sql("INSERT INTO Reservacion_Datos_Tarjeta (Rs_Folio, Rdt_Banco, Rdt_Numero, Rdt_Codigo_Seguridad, Rdt_Vencimiento) "
      "VALUES ('0000000077', 'Banco Rojo ', '5500 ', '999', '2028-01-31')");
  pantalla.txtFolio.Confirma();
  EXPECT_EQ(pantalla.txtBanco.text(), "Banco Rojo ");
  EXPECT_EQ(pantalla.txtCodigo.text(), "999");
  EXPECT_EQ(pantalla.dpVencimiento.valor(), Dia(2028, 1, 31));

  HotelPrueba::Carga("");
  EXPECT_FALSE(pantalla.frTarjeta.visible());
  EXPECT_EQ(pantalla.txtCodigo.text(), "");
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
  HotelPrueba::Carga("77");
  conexion->sentencias.clear();
  Pulsa(Accion::Editar);
  EXPECT_TRUE(pantalla.Controles.EnEdicion());
  EXPECT_EQ(pantalla.ssReservaciones.Filas(), 2);
  for (const std::string& s : conexion->sentencias) EXPECT_EQ(s.find("From Reservacion"), std::string::npos) << s;
}

TEST(SentenciasCarga, ReadsAsWritten) {
  ado::TextoSQL sql;
  kv207::ArmaCargaReservacion(sql, "77");
  EXPECT_EQ(sql.Texto(),
            "SELECT Reservacion.*, Reservacion_Detalle.*,   Habitacion.Hb_Descripcion,  "
            "Tipo_Habitacion.Pr_Cve_Producto,   Tipo_Habitacion.Th_Descripcion,   "
            "Tipo_Habitacion.Th_Num_Personas_Maximo,   Producto.Pr_Descripcion,   Producto.Pr_Unidad_Venta,   "
            "Producto_Precio.Pp_Precio_1 From Reservacion    INNER JOIN Reservacion_Detalle ON Reservacion.Rs_Folio = "
            "Reservacion_Detalle.Rs_Folio    INNER JOIN Habitacion ON Reservacion_Detalle.Hb_Cve_Habitacion = "
            "Habitacion.Hb_Cve_Habitacion    INNER JOIN Tipo_Habitacion ON Habitacion.Th_Cve_Tipo_Habitacion = "
            "Tipo_Habitacion.Th_Cve_Tipo_Habitacion    INNER JOIN Producto ON Tipo_Habitacion.Pr_Cve_Producto = "
            "Producto.Pr_Cve_Producto    INNER JOIN Producto_Precio ON Producto_Precio.Pr_Cve_Producto = "
            "Producto.Pr_Cve_Producto WHERE Reservacion.Rs_Folio= '77'");
}

}  // namespace
