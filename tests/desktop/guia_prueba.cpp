// The tour of the demo hotel, over the real windows.
#include "desktop/guia.h"
#include "tests/desktop/recorrido.h"

namespace pruebas {
namespace {

class GuiaPrueba : public RecorridoPrueba {
 protected:
  QWidget* VeloDe(controles::Formulario& forma) {
    // The board's window is a child of the main one.
    for (QWidget* velo :
         escritorio_.ventana(forma)->findChildren<QWidget*>(QStringLiteral("velo"), Qt::FindDirectChildrenOnly)) {
      if (velo->isVisible()) return velo;
    }
    return nullptr;
  }
  QString Paso() { return VeloDe(Forma())->findChild<QLabel*>(QStringLiteral("paso"))->text(); }
  void Sigue() { QTest::keyClick(VeloDe(Forma()), Qt::Key_Return); }
  bool EnCaptura() { return Control<controles::ScreenToolbar>(Forma(), "Controles").EnEdicion(); }
  std::string Reservaciones() { return Sql("SELECT COUNT(*) FROM Reservacion"); }

  vista::Guia guia_{escritorio_};
};

TEST_F(GuiaPrueba, CapturaYGuardaUnaReservacionComoUnRecepcionista) {
  const std::string antes = Sql("SELECT MAX(Rs_Folio) FROM Reservacion");
  guia_.Empieza();
  EXPECT_EQ(Paso(), QStringLiteral("1 de 11"));
  Sigue();
  // Nothing but the tour acts: neither keys nor shortcuts nor clicks on what lies below.
  QTest::keyClick(VeloDe(Forma()), Qt::Key_F5);
  QTest::keyClick(VeloDe(Forma()), Qt::Key_N, Qt::ControlModifier);
  QTest::keyClick(VeloDe(Forma()), Qt::Key_Tab);
  QTest::mouseClick(VeloDe(Forma()), Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
  EXPECT_FALSE(EnCaptura());
  Sigue();
  EXPECT_TRUE(EnCaptura());
  Sigue();
  EXPECT_FALSE(Control<controles::LookupField>(Forma(), "txtNHuesped").text().empty());
  Sigue();
  Sigue();
  EXPECT_EQ(Control<controles::DateField>(Forma(), "dpFecha_llegada").text(), "10/03/2026");
  Espera("frmDisponibilidad", [this](QWidget&) {
    EXPECT_EQ(VeloDe(Forma()), nullptr);
    QTest::keyClick(VeloDe(TableroForma()), Qt::Key_Return);
  });
  Sigue();
  EXPECT_EQ(Paso(), QStringLiteral("8 de 11"));
  auto& grid = Control<controles::Grid>(Forma(), "ssReservaciones");
  ASSERT_EQ(grid.Filas(), 1);
  // The sign stands beside the cell and leaves it in sight.
  Sigue();
  EXPECT_EQ(grid.Texto(0, "Adultos"), "2");
  Sigue();
  EsperaMensaje("¿Desea enviar", "No");
  EsperaImpreso();
  Sigue();
  EXPECT_NE(Sql("SELECT MAX(Rs_Folio) FROM Reservacion"), antes);
  EXPECT_EQ(Paso(), QStringLiteral("11 de 11"));
  Sigue();
  EXPECT_EQ(VeloDe(Forma()), nullptr);
  EXPECT_FALSE(guia_.EnMarcha());
  EXPECT_FALSE(EnCaptura());
}

// Skipped at each of its steps, also over the board, it leaves neither a capture nor a reservation.
TEST_F(GuiaPrueba, SaltadoEnCualquierPasoNoDejaNada) {
  const std::string antes = Reservaciones();
  for (int paso = 0; paso < 10; ++paso) {
    SCOPED_TRACE(paso);
    guia_.Empieza();
    bool saltado = false;
    for (int i = 0; i < paso && !saltado; ++i) {
      if (i == 5) {
        Espera("frmDisponibilidad", [&](QWidget&) {
          saltado = paso == 6;
          if (paso == 6)
            return QTest::mouseClick(VeloDe(TableroForma())->findChild<QPushButton*>(QStringLiteral("saltar")),
                                     Qt::LeftButton);
          QTest::keyClick(VeloDe(TableroForma()), Qt::Key_Return);
        });
        ++i;
      }
      Sigue();
    }
    if (!saltado) QTest::keyClick(VeloDe(Forma()), Qt::Key_Escape);
    EXPECT_EQ(VeloDe(Forma()), nullptr);
    EXPECT_FALSE(guia_.EnMarcha());
    EXPECT_FALSE(EnCaptura());
    EXPECT_FALSE(TableroForma().visible());
    EXPECT_EQ(Reservaciones(), antes);
  }
  // The board closed by its window ends the tour too.
  guia_.Empieza();
  for (int i = 0; i < 5; ++i) Sigue();
  Espera("frmDisponibilidad", [](QWidget& w) { w.close(); });
  Sigue();
  EXPECT_FALSE(guia_.EnMarcha());
  EXPECT_FALSE(EnCaptura());

  // What the person has in capture is hers: the tour begins only when she lets it go.
  Tecla(Qt::Key_N, Qt::ControlModifier);
  Forma().Enfoca(*Forma().Busca("txtReferencia"));
  Enter("suya");
  EsperaMensaje("en captura", "No");
  guia_.Empieza();
  EXPECT_FALSE(guia_.EnMarcha());
  EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtReferencia").text(), "suya");
}

}  // namespace
}  // namespace pruebas
