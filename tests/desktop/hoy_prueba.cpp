// The day in its window, worked by keyboard and mouse.
#include <QDialog>
#include <QTabBar>
#include <QTableWidget>

#include "tests/desktop/recorrido.h"

namespace pruebas {
namespace {

class HoyVentanaPrueba : public RecorridoPrueba {
 protected:
  static QTableWidget& Filas(QWidget& w) { return *w.findChild<QTableWidget*>(QStringLiteral("filas")); }
  static QString Texto(QWidget& w, int fila, int columna) { return Filas(w).item(fila, columna)->text(); }
  static QString Nota(QWidget& w) { return w.findChild<QLabel*>(QStringLiteral("nota"))->text(); }
  std::string Folio() { return Control<controles::ScreenToolbar>(Forma(), "Controles").ClaveActual(); }
};

TEST_F(HoyVentanaPrueba, SeBuscaAlTeclearYEnterAbre) {
  Espera("hoy", [](QWidget& w) {
    EXPECT_EQ(w.findChild<QLabel*>(QStringLiteral("dia"))->text(), QStringLiteral("Lunes 9 de marzo de 2026"));
    auto& listas = *w.findChild<QTabBar*>(QStringLiteral("listas"));
    EXPECT_EQ(listas.tabText(0), QStringLiteral("Llegadas  7"));
    EXPECT_EQ(Filas(w).rowCount(), 7);
    QTest::mouseClick(&listas, Qt::LeftButton, Qt::NoModifier, listas.tabRect(2).center());
    EXPECT_EQ(Filas(w).rowCount(), 12);
    EXPECT_EQ(Nota(w), QStringLiteral("12 reservaciones"));
    // Each key narrows what is found; the arrows walk the rows without leaving the text.
    int antes = 1000;
    for (const QChar c : QStringLiteral("ana so")) {
      QTest::keyClick(w.findChild<QLineEdit*>(QStringLiteral("busca")), c.toLatin1());
      EXPECT_LE(Filas(w).rowCount(), antes);
      antes = Filas(w).rowCount();
    }
    EXPECT_EQ(Nota(w), QStringLiteral("2 halladas"));
    EXPECT_EQ(Texto(w, 0, 1), QString::fromUtf8("Ana Sofía Ramírez Torres"));
    QTest::keyClick(w.focusWidget(), Qt::Key_Down);
    QTest::keyClick(w.focusWidget(), Qt::Key_Return);
  });
  Tecla(Qt::Key_F5);
  EXPECT_EQ(Folio(), "0000000028");

  // The text is still there; Esc takes it away first, then the window.
  Espera("hoy", [](QWidget& w) {
    EXPECT_EQ(Filas(w).rowCount(), 2);
    QTest::keyClick(w.focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(w.isVisible());
    EXPECT_EQ(Filas(w).rowCount(), 12);
    // A stay without a reservation opens nothing.
    Filas(w).selectRow(11);
    QTest::keyClick(&Filas(w), Qt::Key_Return);
    EXPECT_TRUE(Nota(w).contains(QString::fromUtf8("no tiene reservación"))) << Nota(w).toStdString();
    QTest::keyClick(&Filas(w), Qt::Key_Escape);
  });
  Tecla(Qt::Key_F5);
  EXPECT_EQ(Folio(), "0000000028");
}

// What is half typed is handed over before the day comes up; a capture is left only after the question.
TEST_F(HoyVentanaPrueba, UnaCapturaNoSePierdeSinPreguntar) {
  Tecla(Qt::Key_N, Qt::ControlModifier);
  Forma().Enfoca(*Forma().Busca("txtCliente"));
  Escribe("3");
  const auto abreLaPrimera = [](QWidget& w) {
    QTest::mouseDClick(Filas(w).viewport(), Qt::LeftButton, Qt::NoModifier,
                       Filas(w).visualItemRect(Filas(w).item(0, 1)).center());
  };
  const auto elige = [&](QWidget& w) {
    QTest::mouseClick(Filas(w).viewport(), Qt::LeftButton, Qt::NoModifier,
                      Filas(w).visualItemRect(Filas(w).item(0, 1)).center());
    abreLaPrimera(w);
  };
  Espera("hoy", [&](QWidget& w) {
    EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtNCliente").text(), "Ana Sofía Ramírez Torres");
    elige(w);
  });
  EsperaMensaje("en captura", "No");
  Espera("hoy", [&](QWidget& w) {
    EXPECT_TRUE(Control<controles::ScreenToolbar>(Forma(), "Controles").EsNuevo());
    EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtCliente").text(), "0000000003");
    elige(w);
  });
  EsperaMensaje("en captura", "Sí");
  Tecla(Qt::Key_F5);
  EXPECT_EQ(Folio(), "0000000010");

  // A date that cannot be read keeps the clerk where she is.
  Tecla(Qt::Key_N, Qt::ControlModifier);
  Forma().Enfoca(*Forma().Busca("dpFecha_llegada"));
  Escribe("99/99");
  Tecla(Qt::Key_F5);
  EXPECT_EQ(Foco(), "dpFecha_llegada");

  // And a New begins from the day as well.
  Tecla(Qt::Key_L, Qt::ControlModifier);
  Espera("hoy", [](QWidget& w) { QTest::keyClick(w.focusWidget(), Qt::Key_N, Qt::ControlModifier); });
  Tecla(Qt::Key_F5);
  EXPECT_TRUE(Control<controles::ScreenToolbar>(Forma(), "Controles").EsNuevo());
}

}  // namespace
}  // namespace pruebas
