// Toolbar actions of the reservation screen.
#include <gtest/gtest.h>

#include <tuple>
#include <utility>

#include "tests/comun/hotel_prueba.h"

namespace {

using controles::Accion;

class Acciones : public pruebas::HotelPrueba {};

TEST_F(Acciones, NewWithoutAnyCurrencyLeavesTheRateClosed) {
  Sql("DELETE FROM Parametro");
  Abre();
  Pulsa(Accion::Nuevo);
  EXPECT_EQ(pantalla.txtMoneda.text() + pantalla.txtTipoCambio.text(), "");
  EXPECT_FALSE(pantalla.txtTipoCambio.enabled());
}

TEST_F(Acciones, NewOverAShownReservationOffersNothingOfIt) {
  InsertaReservacion("0000000077", {"0101", "0102"}, "CA");
  Carga("77");
  EXPECT_EQ(pantalla.ssReservaciones.fila(), 0);
  ASSERT_TRUE(pantalla.Controles.PermiteReactivar());
  pantalla.MonedaDefault.clear();
  Pulsa(Accion::Nuevo);
  EXPECT_FALSE(pantalla.Controles.PermiteReactivar());
  EXPECT_EQ(pantalla.txtMoneda.text(), "MXN") << "the local one";
}

TEST_F(Acciones, ClearWaitsForAFolioWithEveryFieldClosed) {
  tablero.HaySeleccion = true;
  Nueva();
  pantalla.txtReferencia.Teclea("x");
  Pulsa(Accion::Limpiar);
  EXPECT_FALSE(pantalla.Controles.EnEdicion());
  EXPECT_EQ(pantalla.foco(), &pantalla.txtFolio);
  for (const controles::Control* c : pantalla.controles()) {
    const bool entrada = c->grupo() != 0 && c->tabStop() && c != &pantalla.chkMostrarCodigo;
    EXPECT_FALSE(entrada && c->enabled()) << c->nombre();
  }
  EXPECT_FALSE(tablero.HaySeleccion);
  EXPECT_EQ(pantalla.TipoFormaPago, "");
}

TEST_F(Acciones, AFailingRollBackIsTriedAgainAndHidesNothing) {
  InsertaReservacion("0000000077", {"0101"});
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
      if (fallo_++ == 0) throw com::Error(com::error::kInyectada, "otra falla");
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

TEST_F(Acciones, AFailureBehindAChangeOfStateSaysThatItIsDone) {
  InsertaReservacion("0000000077", {"0101"});
  for (const auto& [accion, id, hecho, estado] :
       {std::tuple{Accion::Confirmar, "ERR-ID:7500024", "confirmada", "CO"},
        std::tuple{Accion::Eliminar, "ERR-ID:7500025", "cancelada", "CA"},
        std::tuple{Accion::Reactivar, "ERR-ID:7500029", "reactivada", "AC"}}) {
    Carga("77");
    escritorio.Olvida();
    if (accion == Accion::Confirmar) escritorio.Responde("ERR-ID:7500052", controles::kCancelar);
    // What clears the screen behind the commit.
    const auto alCambiar = std::exchange(pantalla.txtReferencia.Change,
                                         [] { throw com::Error(com::error::kInyectada, "falla inyectada"); });
    Pulsa(accion);
    pantalla.txtReferencia.Change = alCambiar;
    ASSERT_EQ(escritorio.Ids().back(), id);
    EXPECT_EQ(escritorio.Mensajes().back().texto, "falla inyectada");
    EXPECT_EQ(escritorio.Mensajes().back().detalle, std::string("La reservación 0000000077 ya quedó ") + hecho + ".");
    EXPECT_EQ(Celda("SELECT Es_Cve_Estado FROM Reservacion"), estado);
    Pulsa(Accion::Limpiar);
  }
}

TEST_F(Acciones, ARefusedConfirmationThatCannotBeRolledBackIsAFailure) {
  InsertaReservacion("0000000077", {"0101"});
  Carga("77");
  host.FallaCorreo("");
  conexion->Falla("RollbackTrans");
  escritorio.Responde("ERR-ID:7500052", controles::kAceptar);
  Pulsa(Accion::Confirmar);
  EXPECT_EQ(escritorio.Ids(), (std::vector<std::string>{"ERR-ID:7500052", "ERR-ID:7500022", "ERR-ID:7500024"}));
  EXPECT_FALSE(host.conexion()->EnTransaccion());
  EXPECT_EQ(Celda("SELECT Es_Cve_Estado FROM Reservacion"), "AC");
}

}  // namespace
