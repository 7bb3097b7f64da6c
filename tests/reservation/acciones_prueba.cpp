// Toolbar actions of the reservation screen.
#include <gtest/gtest.h>

#include "reservation/sentencias.h"
#include "tests/comun/hotel_prueba.h"

namespace {

using controles::Accion;

class Acciones : public pruebas::HotelPrueba {
 protected:
  Acciones() {
    InsertaReservacion("0000000077", {"0101"});
    host.Direccion("0000000001", "ana@correo.mx");
  }
  // State, who changed it and when, who cancelled it and when.
  std::string Guardado() {
    std::string todo;
    for (const char* columna : {"Es_Cve_Estado", "Oper_Ult_Modif", "Fecha_Ult_Modif", "Oper_Baja", "Fecha_Baja"}) {
      todo += Celda(std::string("SELECT ") + columna + " FROM Reservacion WHERE Rs_Folio = '0000000077'") + "|";
    }
    return todo;
  }
  void EsperaLimpia() {
    EXPECT_EQ(pantalla.txtFolio.text() + pantalla.txtNHuesped.text() + pantalla.dpFecha_salida.text(), "");
    EXPECT_EQ(pantalla.ssReservaciones.Filas(), 0);
    EXPECT_EQ(pantalla.foco(), &pantalla.txtFolio);
  }
  static constexpr const char* kSinTocar = "AC||(nulo)||(nulo)|";
};

TEST_F(Acciones, NewProposesAStay) {
  host.reloj().Fija(com::FechaDe(2026, 3, 10, 8));
  Carga("77");
  host.reloj().Fija(com::FechaDe(2026, 3, 11, 7));
  host.Permiso("CHDS02", true);
  pantalla.PuedeCambiarDescuento = true;
  tablero.ConservarVista = true;
  Pulsa(Accion::Nuevo);
  EXPECT_EQ(pantalla.txtFolio.text(), "");
  EXPECT_FALSE(pantalla.txtFolio.enabled());
  EXPECT_EQ(pantalla.txtMoneda.text() + " " + pantalla.txtTipoCambio.text(), "MXN 1");
  EXPECT_EQ(pantalla.dpFecha.valor(), com::FechaDe(2026, 3, 11, 7));
  EXPECT_EQ(pantalla.foco(), &pantalla.dpFecha);
  EXPECT_FALSE(pantalla.dpFecha.AceptaEntrada());
  EXPECT_EQ(pantalla.dpFecha_llegada.valor(), Dia(2026, 3, 12));
  EXPECT_EQ(pantalla.dpFecha_salida.valor(), Dia(2026, 3, 13));
  EXPECT_EQ(pantalla.txtDias.text(), "1");
  EXPECT_EQ(pantalla.txtSucursal.text(), "0001");
  EXPECT_EQ(pantalla.txtTotal.text(), "0");
  EXPECT_EQ(pantalla.ssReservaciones.Filas(), 0);
  EXPECT_EQ(pantalla.txtNHuesped.text() + pantalla.txtNotas.text(), "");
  EXPECT_TRUE(pantalla.txtHuesped.enabled());
  EXPECT_TRUE(pantalla.dpFecha_llegada.AceptaEntrada());
  EXPECT_FALSE(tablero.ConservarVista);
  const controles::Grid& grid = pantalla.ssReservaciones;
  EXPECT_FALSE(grid.columna("Clave").bloqueada);
  EXPECT_FALSE(grid.columna("Descuento").bloqueada);
  for (const char* clave : {"Nombre", "IMPUESTO_IMPORTE", "Total", "Precio", "PERSONA_EXTRA"}) {
    EXPECT_TRUE(grid.columna(clave).bloqueada) << clave;
  }
}

TEST_F(Acciones, NewWithoutAnyCurrencyLeavesTheRateClosed) {
  Sql("DELETE FROM Parametro");
  Abre();
  Pulsa(Accion::Nuevo);
  EXPECT_EQ(pantalla.txtMoneda.text() + pantalla.txtTipoCambio.text(), "");
  EXPECT_FALSE(pantalla.txtTipoCambio.enabled());
}

TEST_F(Acciones, EditOpensWhatMayChange) {
  Sql("UPDATE Reservacion SET Mn_Cve_Moneda = 'USD', Rs_Tipo_Cambio = 16, Fp_Cve_Forma_Pago = '0004'");
  Carga("77");
  Pulsa(Accion::Editar);
  EXPECT_EQ(pantalla.txtFolio.text(), "0000000077");
  EXPECT_FALSE(pantalla.txtFolio.enabled());
  EXPECT_TRUE(pantalla.txtHuesped.enabled());
  EXPECT_TRUE(pantalla.dpFecha_llegada.AceptaEntrada());
  EXPECT_TRUE(pantalla.dpFecha_salida.AceptaEntrada());
  EXPECT_FALSE(pantalla.dpFecha.AceptaEntrada());
  EXPECT_TRUE(pantalla.txtBanco.enabled());
  EXPECT_EQ(pantalla.txtTipoCambio.text(), "17.5");
  EXPECT_TRUE(pantalla.txtTipoCambio.enabled());
  EXPECT_EQ(pantalla.ssReservaciones.Filas(), 1);
  EXPECT_FALSE(pantalla.ssReservaciones.columna("Adultos").bloqueada);
  for (const Accion a : {Accion::Editar, Accion::Confirmar, Accion::Eliminar, Accion::Correo}) {
    EXPECT_FALSE(pantalla.Controles.Ofrece(a)) << controles::NombreAccion(a);
  }
}

TEST_F(Acciones, ClearWaitsForAFolioWithEveryFieldClosed) {
  tablero.HaySeleccion = true;
  Nueva();
  pantalla.txtReferencia.Teclea("x");
  Pulsa(Accion::Limpiar);
  EsperaLimpia();
  EXPECT_FALSE(pantalla.Controles.EnEdicion());
  EXPECT_TRUE(pantalla.txtFolio.enabled());
  EXPECT_EQ(pantalla.txtTotal.text(), "0");
  for (const controles::Control* c : pantalla.controles()) {
    const bool entrada = c->grupo() != 0 && c->tabStop() && c != &pantalla.chkMostrarCodigo;
    EXPECT_FALSE(entrada && c->enabled()) << c->nombre();
  }
  EXPECT_FALSE(tablero.HaySeleccion);
  EXPECT_EQ(pantalla.TipoFormaPago, "");
}

TEST_F(Acciones, ConfirmStampsLogsAndClears) {
  Carga("77");
  escritorio.Responde("ERR-ID:7500052", controles::kCancelar);
  Pulsa(Accion::Confirmar);
  EXPECT_EQ(Guardado(), "CO|MARTHA|09/03/2026 10:30:00||(nulo)|");
  ASSERT_EQ(host.Bitacora().size(), 1u);
  EXPECT_EQ(host.Bitacora()[0].clave + host.Bitacora()[0].texto, "0000000077CONFIRMADO");
  EXPECT_TRUE(host.Correos().empty());
  EsperaLimpia();
}

TEST_F(Acciones, ConfirmSendsItsMail) {
  host.Plantilla("PL17", "Confirmada", "Su reservación");
  Carga("77");
  escritorio.Responde("ERR-ID:7500052", controles::kAceptar);
  Pulsa(Accion::Confirmar);
  ASSERT_EQ(host.Correos().size(), 1u);
  EXPECT_EQ(host.Correos()[0].plantilla + " " + host.Correos()[0].consulta, "PL17 RESERVACION_EMAIL_CONFIRMADA");
  EXPECT_EQ(Guardado().substr(0, 2), "CO");
  EsperaLimpia();
}

TEST_F(Acciones, AMailThatFailsUndoesTheConfirmation) {
  host.Parametro("PL_MAIL_RESERVACION_HOTEL_CONFIRMADA", "PLX");
  Carga("77");
  for (const std::string motivo : {"", "Sin salida al servidor"}) {
    escritorio.Olvida();
    escritorio.Responde("ERR-ID:7500052", controles::kAceptar);
    host.FallaCorreo(motivo);
    Pulsa(Accion::Confirmar);
    ASSERT_EQ(escritorio.Mensajes().size(), 2u);
    const auto& m = escritorio.Mensajes()[1];
    EXPECT_EQ(m.id, motivo.empty() ? "ERR-ID:7500022" : "ERR-ID:7500023");
    EXPECT_EQ(m.texto, motivo.empty() ? "Imposible enviar correo, verifique la plantilla de email: PLX" : motivo);
    EXPECT_EQ(m.titulo, "Atención");
    EXPECT_EQ(Guardado(), kSinTocar);
    EXPECT_TRUE(host.Bitacora().empty());
    EXPECT_EQ(pantalla.txtNHuesped.text(), "Ana López");
    EXPECT_TRUE(pantalla.Controles.Ofrece(Accion::Confirmar));
  }
}

TEST_F(Acciones, CancelAndReactivate) {
  Carga("77");
  Pulsa(Accion::Eliminar);
  EXPECT_EQ(Guardado(), "CA|MARTHA|09/03/2026 10:30:00|MARTHA|09/03/2026 10:30:00|");
  EsperaLimpia();
  host.reloj().Fija(com::FechaDe(2026, 3, 9, 11));
  Carga("77");
  Pulsa(Accion::Reactivar);
  EXPECT_EQ(Guardado(), "AC|MARTHA|09/03/2026 11:00:00||(nulo)|");
  EsperaLimpia();
  ASSERT_EQ(host.Bitacora().size(), 2u);
  EXPECT_EQ(host.Bitacora()[0].texto, "Baja");
  EXPECT_EQ(host.Bitacora()[1].texto, "Reactivación");
  EXPECT_TRUE(escritorio.Mensajes().empty());
}

// Each state change, failing at each of its steps: told once, nothing stored, nothing left open, screen as it was.
TEST_F(Acciones, AFailedStateChangeLeavesTheReservationAsItWas) {
  struct Cambio {
    Accion accion;
    const char* estado;
    const char* id;
    const char* titulo;
  };
  const Cambio cambios[] = {{Accion::Confirmar, "AC", "ERR-ID:7500024", "Controles_B1Click()"},
                            {Accion::Eliminar, "AC", "ERR-ID:7500025", "Controles_Eliminar()"},
                            {Accion::Reactivar, "CA", "ERR-ID:7500029", "Controles_Reactivar()"}};
  Abre();
  for (const Cambio& c : cambios) {
    Sql(std::string("UPDATE Reservacion SET Es_Cve_Estado = '") + c.estado + "'");
    for (const char* paso : {"BeginTrans", "UPDATE Reservacion", "CommitTrans"}) {
      Carga("");
      Carga("77");
      escritorio.Olvida();
      const bool pregunta = c.accion == Accion::Confirmar && paso == std::string("CommitTrans");
      if (pregunta) escritorio.Responde("ERR-ID:7500052", controles::kCancelar);
      conexion->Falla(paso);
      Pulsa(c.accion);
      ASSERT_FALSE(escritorio.Mensajes().empty()) << c.titulo << paso;
      const auto& m = escritorio.Mensajes().back();
      EXPECT_EQ(m.id, c.id);
      EXPECT_EQ(m.titulo, c.titulo);
      EXPECT_EQ(m.texto, "falla inyectada");
      EXPECT_EQ(escritorio.Mensajes().size(), pregunta ? 2u : 1u);
      EXPECT_EQ(Guardado().substr(0, 5), std::string(c.estado) + "||(") << c.titulo << paso;
      EXPECT_FALSE(host.conexion()->EnTransaccion()) << c.titulo << paso;
      EXPECT_EQ(pantalla.txtNHuesped.text(), "Ana López");
    }
  }
  EXPECT_TRUE(host.Bitacora().empty());
}

TEST_F(Acciones, AFailingRollBackIsTriedAgainAndHidesNothing) {
  Carga("77");
  Sql("UPDATE Reservacion SET Es_Cve_Estado = 'AC'");
  conexion->Falla("UPDATE Reservacion");
  // The injected roll-back fault comes after the statement's.
  auto real = conexion;
  class FallaDos : public ado::Connection {
   public:
    explicit FallaDos(std::shared_ptr<pruebas::ConexionVigilada> real) : real_(std::move(real)) {}
    ado::RecordsetPtr Execute(const ado::TextoSQL& s) override { return real_->Execute(s); }
    void BeginTrans() override { real_->BeginTrans(); }
    void CommitTrans() override { real_->CommitTrans(); }
    void RollbackTrans() override {
      if (!fallo_++) throw com::Error(com::error::kInyectada, "otra falla");
      real_->RollbackTrans();
    }

   private:
    std::shared_ptr<pruebas::ConexionVigilada> real_;
    int fallo_ = 0;
  };
  host.conexion(std::make_shared<FallaDos>(real));
  Pulsa(Accion::Eliminar);
  ASSERT_EQ(escritorio.Ids(), std::vector<std::string>{"ERR-ID:7500025"});
  EXPECT_EQ(escritorio.Mensajes()[0].texto, "falla inyectada");
  EXPECT_FALSE(host.conexion()->EnTransaccion());
}

TEST_F(Acciones, MailOrPrint) {
  host.Plantilla("PL16", "Reservación", "Gracias");
  host.Parametro("FTO_IMP_RESERVACION", "HT0009");
  Sql("INSERT INTO Formato (Fm_Cve_Formato, Fm_Descripcion, Fm_Contenido) VALUES ('HT0009', 'Carta', 'Folio {folio}')");
  Carga("77");
  escritorio.Responde("ERR-ID:7500053", controles::kNo);
  Pulsa(Accion::Correo);
  ASSERT_EQ(host.Impresiones().size(), 1u);
  EXPECT_EQ(host.Impresiones()[0].formato + host.Impresiones()[0].clave, "HT00090000000077");
  EXPECT_TRUE(host.Correos().empty());

  escritorio.Responde("ERR-ID:7500053", controles::kSi);
  Pulsa(Accion::Correo);
  ASSERT_EQ(host.Correos().size(), 1u);
  EXPECT_EQ(host.Correos()[0].plantilla + " " + host.Correos()[0].consulta, "PL16 EMAIL_RESERVACION");
  EXPECT_EQ(host.Impresiones().size(), 1u);

  escritorio.Olvida();
  escritorio.Responde("ERR-ID:7500053", controles::kSi);
  host.FallaCorreo("");
  Pulsa(Accion::Correo);
  EXPECT_EQ(escritorio.Ids(), (std::vector<std::string>{"ERR-ID:7500053", "ERR-ID:7500026"}));
  escritorio.Responde("ERR-ID:7500053", controles::kSi);
  host.FallaCorreo("Buzón lleno");
  Pulsa(Accion::Correo);
  EXPECT_EQ(escritorio.Mensajes().back().id, "ERR-ID:7500027");
  EXPECT_EQ(pantalla.txtNHuesped.text(), "Ana López");
}

TEST_F(Acciones, RecordViewer) {
  Carga("77");
  Pulsa(Accion::Registro);
  ASSERT_EQ(host.Vistos().size(), 1u);
  EXPECT_EQ(host.Vistos()[0].tabla + host.Vistos()[0].columna + host.Vistos()[0].clave,
            "ReservacionRs_Folio0000000077");
  const auto sinVisor = com::RegistraClase(anfitrion::kClaseVisorRegistro, [] { return com::Ptr<com::Desconocido>(); });
  Pulsa(Accion::Registro);
  ASSERT_EQ(escritorio.Ids(), std::vector<std::string>{"ERR-ID:7500028"});
  EXPECT_EQ(escritorio.Mensajes()[0].titulo, "Vormalix");
}

TEST(SentenciasAcciones, ReadAsWritten) {
  ado::TextoSQL confirma, cancela, reactiva;
  kv207::ArmaConfirmacion(confirma, "U", "D", "7");
  kv207::ArmaCancelacion(cancela, "U", "D", "7");
  kv207::ArmaReactivacion(reactiva, "U", "D", "7");
  EXPECT_EQ(confirma.Texto(),
            "UPDATE Reservacion SET    Oper_Ult_Modif = 'U',    Fecha_Ult_Modif= 'D',    Es_Cve_Estado = 'CO' WHERE "
            "Rs_Folio = '7'");
  EXPECT_EQ(cancela.Texto(),
            "UPDATE Reservacion SET Oper_Ult_Modif = 'U', Fecha_Ult_Modif = 'D', Oper_Baja = 'U', Fecha_Baja= 'D', "
            "Es_Cve_Estado = 'CA' WHERE Rs_Folio = '7'");
  EXPECT_EQ(reactiva.Texto(),
            "UPDATE Reservacion SET Oper_Ult_Modif = 'U', Fecha_Ult_Modif = 'D', Oper_Baja = '', Fecha_Baja= NULL, "
            "Es_Cve_Estado = 'AC' WHERE Rs_Folio = '7'");
}

}  // namespace
