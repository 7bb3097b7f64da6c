// Start-up, layout and life of the reservation screen.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/comun/hotel_prueba.h"

namespace {

using controles::Accion;
using controles::Control;

class Arranque : public pruebas::HotelPrueba {};

// Asked anything, unloading goes on: the board first, while the hotel is still there, then the hotel, then the screen.
TEST_F(Arranque, TheBoardGoesBeforeTheHotelAndTheHotelBeforeTheScreen) {
  Nueva();
  std::string orden;
  escritorio.alDescargar = [&](controles::Formulario& formulario) {
    bool hotel = true;
    try {
      publico::Hotel();
    } catch (const com::Error&) {
      hotel = false;
    }
    orden += formulario.nombre() + (hotel ? " con hotel, " : " sin hotel, ");
  };
  pantalla.Descarga();
  EXPECT_EQ(orden, "frmDisponibilidad con hotel, frmKV207 sin hotel, ");
  EXPECT_TRUE(publico::Arrancado());
}

TEST_F(Arranque, AFailingLoadLeavesAScreenThatCanBeLoadedLater) {
  host.Parametro("HT_DIAS_RESERVACION", "pronto");
  EXPECT_THROW(Abre(), com::Error);
  EXPECT_FALSE(pantalla.cargado());
  EXPECT_THROW(publico::Hotel(), com::Error);
  host.Parametro("HT_DIAS_RESERVACION", "2");
  Abre();
  EXPECT_EQ(pantalla.DiasReservacion, 2);
  EXPECT_NO_THROW(publico::Hotel());
}

TEST_F(Arranque, LoadsAnewAsDesignedAfterBeingClosedInMidEdit) {
  InsertaReservacion("0000000077", {"0101"});
  Nueva();
  Campo(pantalla.txtForma_Pago, "4");
  ASSERT_TRUE(pantalla.frTarjeta.visible());
  pantalla.txtReferencia.Teclea("a medias");
  pantalla.txtNotas.Teclea("a medias");
  pantalla.ssReservaciones.AgregaFila();
  pantalla.ssReservaciones.ancho("Nombre", 5000);
  Pulsa(Accion::Cerrar);
  EXPECT_FALSE(pantalla.cargado());
  EXPECT_FALSE(tablero.cargado());
  EXPECT_THROW(publico::Hotel(), com::Error);

  Abre();
  EXPECT_FALSE(pantalla.Controles.EnEdicion());
  EXPECT_TRUE(pantalla.txtFolio.enabled());
  EXPECT_EQ(pantalla.txtReferencia.text() + pantalla.txtNotas.text() + pantalla.txtHuesped.text(), "");
  EXPECT_FALSE(pantalla.txtReferencia.enabled());
  EXPECT_FALSE(pantalla.frTarjeta.visible());
  EXPECT_EQ(pantalla.TipoFormaPago, "");
  EXPECT_EQ(pantalla.ssReservaciones.Filas(), 0);
  EXPECT_EQ(pantalla.ssReservaciones.columna("Nombre").ancho, 1746);
  pantalla.Descarga();
  pantalla.Descarga();
}

TEST_F(Arranque, TransactionCodeComesFromTheOwner) {
  EXPECT_THROW(static_cast<void>(pantalla.Transaccion()), com::Error);
  pantalla.Padre = host.Padre();
  EXPECT_EQ(pantalla.Transaccion(), "KV207");
}

TEST_F(Arranque, ActivationGoesToTheFolioOnlyWhenItWaits) {
  Nueva();
  pantalla.Enfoca(pantalla.txtReferencia);
  pantalla.Activa();
  EXPECT_EQ(pantalla.foco(), &pantalla.txtReferencia);
  Pulsa(Accion::Limpiar);
  pantalla.Enfoca(pantalla.cmdDisponibilidad);
  pantalla.Activa();
  EXPECT_EQ(pantalla.foco(), &pantalla.txtFolio);
}

TEST_F(Arranque, DesignFitsTheWindowWithoutOverlaps) {
  const auto& controles = pantalla.controles();
  for (const Control* a : controles) {
    if (a == &pantalla.pcFecha || a == &pantalla.dpFechaGrid) continue;  // laid over the grid
    const Control* marco = a->contenedor();
    EXPECT_LE(a->left() + a->width(), marco != nullptr ? marco->width() : pantalla.width()) << a->nombre();
    // The totals stand 100 twips below the grid, over the form's lower edge.
    if (marco != nullptr) {
      EXPECT_LE(a->top() + a->height(), marco->height() - (marco == &pantalla.frTotales ? 100 : 0)) << a->nombre();
    }
    for (const Control* b : controles) {
      if (a == b || a->contenedor() != b->contenedor() || b == &pantalla.pcFecha) continue;
      const bool aparte = a->left() + a->width() <= b->left() || b->left() + b->width() <= a->left() ||
                          a->top() + a->height() <= b->top() || b->top() + b->height() <= a->top();
      EXPECT_TRUE(aparte) << a->nombre() << " over " << b->nombre();
    }
  }
  // The designed places are those of the resize rules.
  const int ancho = pantalla.ssReservaciones.width(), alto = pantalla.ssReservaciones.height();
  const int top = pantalla.frTotales.top(), left = pantalla.frTotales.left();
  pantalla.Form_Resize();
  EXPECT_EQ(pantalla.ssReservaciones.width(), ancho);
  EXPECT_EQ(pantalla.ssReservaciones.height(), alto);
  EXPECT_EQ(pantalla.frTotales.top(), top);
  EXPECT_EQ(pantalla.frTotales.left(), left);
}

TEST_F(Arranque, TabOrderIsReadingOrder) {
  std::vector<std::string> paradas;
  for (const Control* c : pantalla.controles()) {
    if (!c->tabStop()) continue;
    paradas.push_back(c->nombre());
    EXPECT_FALSE(c->descripcion().empty()) << c->nombre();
  }
  EXPECT_EQ(paradas, (std::vector<std::string>{
                         "txtFolio",       "dpFecha",       "txtSucursal",   "txtCliente",       "txtHuesped",
                         "txtForma_Pago",  "txtMoneda",     "txtTipoCambio", "dpFecha_llegada",  "dpFecha_salida",
                         "txtDias",        "txtReferencia", "txtComentario", "txtNotas",         "txtBanco",
                         "txtTarjeta",     "txtCodigo",     "dpVencimiento", "chkMostrarCodigo", "cmdDisponibilidad",
                         "ssReservaciones"}));
}

}  // namespace
