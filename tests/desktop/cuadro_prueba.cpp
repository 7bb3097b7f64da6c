// The tape chart and the quote in their windows, worked by mouse and keyboard.
#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QTableWidget>
#include <QToolTip>

#include "desktop/ventana_cuadro.h"
#include "tests/desktop/recorrido.h"

namespace pruebas {
namespace {

class CuadroVentanaPrueba : public RecorridoPrueba {
 protected:
  using Hace = std::function<void(vista::VentanaCuadro&)>;
  void EsperaCuadro(Hace hace) {
    Espera("cuadro", [hace = std::move(hace)](QWidget& w) { hace(dynamic_cast<vista::VentanaCuadro&>(w)); });
  }
  static QWidget* Lienzo(vista::VentanaCuadro& w) { return w.tabla().viewport(); }
  static com::Fecha Marzo(int dia) { return com::FechaDe(2026, 3, dia); }
  // The middle of a night, where its bar would be.
  static QPoint Noche(vista::VentanaCuadro& w, int fila, int dia) {
    const QRect zona = w.tabla().ZonaNoche(fila, Marzo(dia));
    return {zona.right(), zona.center().y()};
  }
  static void Arrastra(vista::VentanaCuadro& w, const QPoint& desde, const QPoint& hasta) {
    QTest::mousePress(Lienzo(w), Qt::LeftButton, Qt::NoModifier, desde);
    QTest::mouseMove(Lienzo(w), (desde + hasta) / 2);
    QTest::mouseMove(Lienzo(w), hasta);
    QTest::mouseRelease(Lienzo(w), Qt::LeftButton, Qt::NoModifier, hasta);
  }
  // The guest is asked for, and left open.
  void EsperaNadie() {
    Espera("huesped", [](QWidget& w) { QTest::keyClick(&w, Qt::Key_Escape); });
  }
  std::string Renglones() {
    auto& grid = Control<controles::Grid>(Forma(), "ssReservaciones");
    std::string todos;
    for (int f = 0; f < grid.Filas(); ++f) {
      todos += grid.Texto(f, "Clave") + " " + grid.Texto(f, "FECHAI") + " " + grid.Texto(f, "FECHAF") + ";";
    }
    return todos;
  }
  controles::ScreenToolbar& Barra() { return Control<controles::ScreenToolbar>(Forma(), "Controles"); }
};

// Rows 14 and 15 are rooms 0201, held from the 9th to the 11th, and 0202, free for weeks.
TEST_F(CuadroVentanaPrueba, UnClicAbreYUnArrastreReserva) {
  EsperaCuadro([](vista::VentanaCuadro& w) {
    QHelpEvent ayuda(QEvent::ToolTip, Noche(w, 14, 9), Lienzo(w)->mapToGlobal(Noche(w, 14, 9)));
    QApplication::sendEvent(Lienzo(w), &ayuda);
    for (const char* dice : {"0000000016", "Francisco Morales Ríos · Activa", "09/03/2026 – 11/03/2026", "Total $"})
      EXPECT_TRUE(QToolTip::text().contains(QString::fromUtf8(dice))) << QToolTip::text().toStdString();
    QToolTip::hideText();
    // A click beside the bar, in the morning of its first day, opens nothing.
    QTest::mouseClick(Lienzo(w), Qt::LeftButton, Qt::NoModifier,
                      w.tabla().ZonaNoche(14, Marzo(9)).topLeft() + QPoint(3, 8));
    EXPECT_TRUE(w.isVisible());
    QTest::mouseClick(Lienzo(w), Qt::LeftButton, Qt::NoModifier, Noche(w, 14, 9));
  });
  Tecla(Qt::Key_F7);
  EXPECT_EQ(Barra().ClaveActual(), "0000000016");

  // A drag that runs into a taken night ends before it; one from right to left is the same nights. The guest is asked
  // for as after a quote.
  EsperaCuadro([](vista::VentanaCuadro& w) { Arrastra(w, Noche(w, 15, 13), Noche(w, 15, 10)); });
  Espera("huesped", [](QWidget& w) {
    QTest::keyClicks(w.focusWidget(), QStringLiteral("sofia ram"));
    QTest::keyClick(w.focusWidget(), Qt::Key_Return);
  });
  Tecla(Qt::Key_F7);
  EXPECT_TRUE(Barra().EsNuevo());
  EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtHuesped").text(), "0000000003");
  EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtForma_Pago").text(), "0001");
  EXPECT_EQ(Renglones(), "0202 10/03/2026 14/03/2026;");
  EXPECT_EQ(Foco(), "ssReservaciones");

  // That is a capture now: it is not lost without asking.
  EsperaCuadro([](vista::VentanaCuadro& w) { Arrastra(w, Noche(w, 14, 13), Noche(w, 14, 14)); });
  // The chart is there again as it was, for another choice.
  EsperaMensaje("en captura", "No");
  EsperaCuadro([this](vista::VentanaCuadro& w) {
    EXPECT_EQ(Renglones(), "0202 10/03/2026 14/03/2026;");
    EXPECT_TRUE(w.Nota().startsWith(QStringLiteral("0201, 13/03/2026"))) << w.Nota().toStdString();
    Arrastra(w, Noche(w, 14, 14), Noche(w, 14, 8));
  });
  EsperaMensaje("en captura", "Sí");
  EsperaNadie();
  Tecla(Qt::Key_F7);
  EXPECT_EQ(Renglones(), "0201 11/03/2026 15/03/2026;");
}

// Who has room 0201 stays a night longer than booked, into the next guest's: each half of that day opens its own bar.
// The morning of a day on which somebody arrives is still the free night before it.
TEST_F(CuadroVentanaPrueba, CadaMitadDelDiaEsDeSuNoche) {
  const auto cambia = [this](const std::string& folio, const std::string& cuarto, const std::string& inicio) {
    const std::string suya = " WHERE Rs_Folio = '" + folio + "'";
    Sql("UPDATE Reservacion SET Rs_Llegada = '" + inicio + "', Rs_Salida = '2026-03-14'" + suya);
    Sql("UPDATE Reservacion_Detalle SET Hb_Cve_Habitacion = '" + cuarto + "', Rsd_Fecha_Inicio = '" + inicio +
        "', Rsd_Fecha_Fin = '2026-03-14'" + suya);
  };
  cambia("0000000028", "0201", "2026-03-11");
  cambia("0000000045", "0202", "2026-03-12");
  Sql("INSERT INTO Check_In (Ci_Folio, Ci_Llegada, Ci_Salida, Es_Cve_Estado) VALUES "
      "('S1', '2026-03-09 15:00:00', '2026-03-12 12:00:00', 'AC')");
  Sql("INSERT INTO Check_In_Detalle (Ci_Folio, Hb_Cve_Habitacion) VALUES ('S1', '0201')");
  const auto abre = [this](int dia, int lado) {
    EsperaCuadro([=](vista::VentanaCuadro& w) {
      const QRect zona = w.tabla().ZonaNoche(14, Marzo(dia));
      const QPoint donde = zona.center() + QPoint(lado * zona.width() / 4, 0);
      QTest::mouseClick(Lienzo(w), Qt::LeftButton, Qt::NoModifier, donde);
    });
    Tecla(Qt::Key_F7);
    return Barra().ClaveActual();
  };
  EXPECT_EQ(abre(11, -1), "0000000016");
  EXPECT_EQ(abre(11, 1), "0000000028");
  EXPECT_EQ(abre(12, 1), "0000000028");
  EsperaCuadro([](vista::VentanaCuadro& w) {
    Arrastra(w, w.tabla().ZonaNoche(15, Marzo(12)).topLeft() + QPoint(4, 8), Noche(w, 15, 10));
  });
  EsperaNadie();
  Tecla(Qt::Key_F7);
  EXPECT_EQ(Renglones(), "0202 10/03/2026 12/03/2026;");
}

// A quote: each change is answered at once; Enter sells what is chosen.
TEST_F(CuadroVentanaPrueba, SeCotizaYEnterReserva) {
  Espera("cotizacion", [](QWidget& w) {
    auto& ofertas = *w.findChild<QTableWidget*>(QStringLiteral("ofertas"));
    const auto celda = [&](int fila, int columna) { return ofertas.item(fila, columna)->text().toStdString(); };
    QTest::keyClick(w.findChild<QSpinBox*>(QStringLiteral("noches")), Qt::Key_Up);
    EXPECT_EQ(celda(1, 0), "Doble");
    EXPECT_EQ(celda(1, 2), "$2,500.00");
    QTest::keyClick(w.findChild<QSpinBox*>(QStringLiteral("adultos")), Qt::Key_Up);
    EXPECT_EQ(celda(0, 5), "Caben 2 personas");
    EXPECT_EQ(celda(1, 2), "$3,000.00") << "an extra adult";
    ofertas.selectRow(0);
    QTest::keyClick(&ofertas, Qt::Key_Return);
    EXPECT_TRUE(w.isVisible());
    ofertas.selectRow(1);
    QTest::keyClick(&ofertas, Qt::Key_Return);
  });
  EsperaNadie();
  Tecla(Qt::Key_F8);
  EXPECT_TRUE(Barra().EsNuevo());
  EXPECT_EQ(Renglones(), "0108 10/03/2026 12/03/2026;");

  // What cannot be quoted any more when the window comes back is told there, beside what was asked for.
  Espera("cotizacion", [](QWidget& w) {
    QTest::keyClick(w.findChild<QComboBox*>(QStringLiteral("moneda")), Qt::Key_Down);
    QTest::keyClick(&w, Qt::Key_Escape);
  });
  Tecla(Qt::Key_F8);
  Sql("DELETE FROM Tipo_Cambio");
  Espera("cotizacion", [](QWidget& w) {
    EXPECT_EQ(w.findChild<QSpinBox*>(QStringLiteral("adultos"))->value(), 3);
    EXPECT_EQ(w.findChild<QTableWidget*>(QStringLiteral("ofertas"))->rowCount(), 0);
    const QString nota = w.findChild<QLabel*>(QStringLiteral("nota"))->text();
    EXPECT_TRUE(nota.startsWith(QStringLiteral("No hay tipo de cambio de la moneda USD"))) << nota.toStdString();
    // Nothing to be given out: the quote before was another.
    auto& exporta = *w.findChild<QPushButton*>(QStringLiteral("exportar"));
    QTest::keyClick(w.focusWidget(), Qt::Key_E, Qt::ControlModifier);
    QTest::mouseClick(&exporta, Qt::LeftButton);
    EXPECT_FALSE(exporta.isEnabled());
    QTest::keyClick(w.findChild<QComboBox*>(QStringLiteral("moneda")), Qt::Key_Up);
    EXPECT_TRUE(exporta.isEnabled());
    QTest::keyClick(&w, Qt::Key_Escape);
  });
  Tecla(Qt::Key_F8);
}

// A room that was sold while the chart was looked at: told over the board, whose cells say the same when asked.
TEST_F(CuadroVentanaPrueba, SeDicePorQueNoEstaLibre) {
  const auto consejo = [] { return QToolTip::text().toStdString(); };
  EsperaCuadro([this](vista::VentanaCuadro& w) {
    Sql("INSERT INTO Habitacion_Bloqueo (Hb_Cve_Habitacion, Hbb_Fecha_Inicio, Hbb_Fecha_Fin) "
        "VALUES ('0202', '2026-03-11', '2026-03-12')");
    Arrastra(w, Noche(w, 15, 10), Noche(w, 15, 12));
  });
  Espera("mensaje", [this](QWidget& caja) {
    EXPECT_TRUE(TableroForma().visible());
    Responde(caja, QStringLiteral("Bloqueada, 11/03/2026 – 12/03/2026"), QStringLiteral("Aceptar"));
  });
  Espera("frmDisponibilidad", [&](QWidget& tablero) {
    auto& grid = Control<controles::Grid>(TableroForma(), "ssDisponibilidad");
    auto& vista = dynamic_cast<vista::VistaGrid&>(*escritorio_.ventana(TableroForma())->vista(grid));
    const auto pasa = [&](int fila, int columna) {
      const QRect zona = vista.ZonaCelda(fila, columna);
      QWidget* donde = vista.tabla(columna)->viewport();
      const QPoint punto = donde->mapFrom(vista.widget(), zona.center());
      QHelpEvent ayuda(QEvent::ToolTip, punto, donde->mapToGlobal(punto));
      QApplication::sendEvent(donde, &ayuda);
    };
    pasa(14, 2);
    EXPECT_NE(consejo().find(
                  "Reservación 0000000016, Francisco Morales Ríos, Activa, 09/03/2026 – 11/03/2026\nEn su lugar: "),
              std::string::npos)
        << consejo();
    QToolTip::hideText();
    // By the keyboard, with the pointer where the tip would come up.
    grid.VaA(15, 3);
    const QPoint antes = QCursor::pos();
    const QPoint estorba = vista.widget()->mapToGlobal(vista.ZonaCelda(15, 3).bottomLeft() + QPoint(40, 40));
    QCursor::setPos(estorba);
    EXPECT_EQ(QCursor::pos(), estorba);
    QTest::keyClick(tablero.focusWidget(), Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_NE(consejo().find("0202"), std::string::npos) << consejo();
    int vistos = 0;
    for (const QWidget* w : QApplication::topLevelWidgets()) {
      if (!w->inherits("QTipLabel") || !w->isVisible()) continue;
      ++vistos;
      EXPECT_FALSE(w->geometry().contains(QCursor::pos())) << "it would go at once";
    }
    EXPECT_EQ(vistos, 1);
    QCursor::setPos(antes);
    QToolTip::hideText();
    QTest::keyClick(tablero.focusWidget(), Qt::Key_Escape);
  });
  Tecla(Qt::Key_F7);
  EXPECT_TRUE(Barra().EsNuevo());
  EXPECT_EQ(Renglones(), "");
}

TEST_F(CuadroVentanaPrueba, ElTecladoRecorreTomaYReserva) {
  EsperaCuadro([](vista::VentanaCuadro& w) {
    auto* zoom = w.findChild<QComboBox*>(QStringLiteral("zoom"));
    QTest::keyClick(w.focusWidget(), Qt::Key_Minus, Qt::ControlModifier);
    QTest::keyClick(w.focusWidget(), Qt::Key_Minus, Qt::ControlModifier);
    QTest::keyClick(w.focusWidget(), Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(zoom->currentText(), QStringLiteral("60 noches"));
    QTest::keyClick(w.focusWidget(), Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(zoom->currentText(), QStringLiteral("60 noches"));
    QTest::keyClick(w.focusWidget(), Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(w.focusWidget(), Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(zoom->currentText(), QStringLiteral("30 noches"));
    for (int i = 0; i < 15; ++i) QTest::keyClick(w.focusWidget(), Qt::Key_Down);
    QTest::keyClick(w.focusWidget(), Qt::Key_Right);
    EXPECT_TRUE(w.Nota().startsWith(QStringLiteral("0202, mar 10 de marzo: libre"))) << w.Nota().toStdString();
    QTest::keyClick(w.focusWidget(), Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_TRUE(w.Nota().contains(QStringLiteral("2 noches"))) << w.Nota().toStdString();
    QTest::keyClick(w.focusWidget(), Qt::Key_Return);
  });
  EsperaNadie();
  Tecla(Qt::Key_F7);
  EXPECT_EQ(Renglones(), "0202 10/03/2026 12/03/2026;");
  EsperaMensaje("en captura", "Sí");
  Tecla(Qt::Key_L, Qt::ControlModifier);

  // From the day, and back to a block, which opens nothing.
  Espera("hoy", [](QWidget& w) { QTest::keyClick(w.focusWidget(), Qt::Key_F7); });
  EsperaCuadro([](vista::VentanaCuadro& w) {
    QTest::mouseClick(Lienzo(w), Qt::LeftButton, Qt::NoModifier, Noche(w, 4, 9));
    EXPECT_TRUE(w.Nota().contains(QStringLiteral("Un bloqueo no tiene"))) << w.Nota().toStdString();
    QTest::keyClick(w.focusWidget(), Qt::Key_F7);
  });
  Tecla(Qt::Key_F5);
  EXPECT_EQ(Barra().ClaveActual(), "");
}

// What is marked stays marked as far as it is in sight, and is what Enter takes; a drag is taken back by Esc.
TEST_F(CuadroVentanaPrueba, LoMarcadoSigueAlZoomYEscDejaElArrastre) {
  EsperaCuadro([](vista::VentanaCuadro& w) {
    QTest::mousePress(Lienzo(w), Qt::LeftButton, Qt::NoModifier, Noche(w, 15, 10));
    QTest::mouseMove(Lienzo(w), Noche(w, 15, 12));
    QTest::keyClick(w.focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(w.Nota().startsWith(QStringLiteral("0202, mar 10"))) << w.Nota().toStdString();
    QTest::mouseRelease(Lienzo(w), Qt::LeftButton, Qt::NoModifier, Noche(w, 15, 12));
    EXPECT_TRUE(w.isVisible());
    for (int i = 0; i < 9; ++i) QTest::keyClick(w.focusWidget(), Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(w.focusWidget(), Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_TRUE(w.Nota().contains(QStringLiteral(": 6 noches"))) << w.Nota().toStdString();
    QTest::keyClick(w.focusWidget(), Qt::Key_Minus, Qt::ControlModifier);
    QTest::keyClick(w.focusWidget(), Qt::Key_Return);
  });
  EsperaNadie();
  Tecla(Qt::Key_F7);
  EXPECT_EQ(Renglones(), "0202 10/03/2026 16/03/2026;");
}

// The arrival is typed as anywhere else; a day that has passed is told at once and not quoted.
TEST_F(CuadroVentanaPrueba, LaLlegadaSeTecleaComoEnTodasPartes) {
  Espera("cotizacion", [this](QWidget& w) {
    auto& llegada = *w.findChild<QLineEdit*>(QStringLiteral("llegada"));
    auto& ofertas = *w.findChild<QTableWidget*>(QStringLiteral("ofertas"));
    auto& nota = *w.findChild<QLabel*>(QStringLiteral("nota"));
    EXPECT_EQ(w.focusWidget(), &llegada);
    const auto teclea = [&](const char* texto) {
      llegada.selectAll();
      QTest::keyClicks(&llegada, QLatin1String(texto));
      return nota.text();
    };
    for (const auto& [texto, salida] : std::initializer_list<std::pair<const char*, const char*>>{
             {"15/12/2026", "16/12/2026"}, {"5/6", "06/06/2026"}, {"15", "16/03/2026"}, {"+3", "13/03/2026"}}) {
      EXPECT_TRUE(teclea(texto).endsWith(QLatin1String(salida))) << texto << ": " << nota.text().toStdString();
    }
    QTest::keyClick(&llegada, Qt::Key_Up);
    EXPECT_EQ(llegada.text(), QStringLiteral("13/03/2026"));
    for (const auto& [texto, dice] : std::initializer_list<std::pair<const char*, const char*>>{
             {"1/3/2026", "ya pasó"}, {"31/2", "«31/2» no es una fecha"}}) {
      EXPECT_TRUE(teclea(texto).contains(QString::fromUtf8(dice))) << nota.text().toStdString();
      EXPECT_EQ(ofertas.rowCount(), 0);
      QTest::keyClick(&llegada, Qt::Key_Return);
      EXPECT_TRUE(w.isVisible());
    }
    EXPECT_EQ(w.findChild<QSpinBox*>(QStringLiteral("noches"))->value(), 1);
    // A field's own use of the key gives way to the list's.
    teclea("15");
    int ofrecido = 0;
    Espera("guardar", [&](QWidget& g) {
      ++ofrecido;
      QTest::keyClick(&g, Qt::Key_Escape);
    });
    QTest::keyClick(&llegada, Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(ofrecido, 1);
    QTest::keyClick(&llegada, Qt::Key_Escape);
  });
  Tecla(Qt::Key_F8);
}

}  // namespace
}  // namespace pruebas
