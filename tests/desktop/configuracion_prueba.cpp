// Catalogues and configuration by keyboard and mouse.
#include <QComboBox>
#include <QLabel>
#include <QTabWidget>
#include <QTableWidget>

#include "tests/desktop/recorrido.h"

namespace pruebas {
namespace {

class ConfiguracionPrueba : public RecorridoPrueba {
 protected:
  // Opens the screen and works it; it is closed at the end.
  void Abre(const char* codigo, const Modal& hace) {
    Espera("catalogos", [hace](QWidget& w) {
      hace(w);
      w.close();
    });
    escritorio_.AbrePantalla(codigo, {});
  }
  // In an editor: writes an entry, and saves.
  static void Pon(QWidget& editor, const char* entrada, const char* texto) {
    auto* w = editor.findChild<QWidget*>(QString::fromUtf8(entrada));
    ASSERT_NE(w, nullptr) << entrada;
    w->setFocus();
    if (auto* linea = qobject_cast<QLineEdit*>(w)) linea->selectAll();
    QTest::keyClicks(w, QString::fromUtf8(texto));
  }
  static void Guarda(QWidget& editor) {
    QTest::mouseClick(editor.findChild<QPushButton*>(QStringLiteral("guardar")), Qt::LeftButton);
  }
  static bool Dice(QWidget& editor, const char* texto) {
    const auto rotulos = editor.findChildren<QLabel*>();
    return std::any_of(rotulos.begin(), rotulos.end(),
                       [&](const QLabel* r) { return r->text().contains(QString::fromUtf8(texto)); });
  }
  // Filters the parameters to one and opens it.
  static void AbreParametro(QWidget& catalogos, const char* clave) {
    QWidget* filtro = catalogos.focusWidget();
    ASSERT_NE(qobject_cast<QLineEdit*>(filtro), nullptr);
    qobject_cast<QLineEdit*>(filtro)->selectAll();
    QTest::keyClicks(filtro, QString::fromUtf8(clave));
    QTest::keyClick(filtro, Qt::Key_Return);
  }
  std::string Parametro(const char* clave) {
    return Sql(std::string("SELECT Pm_Valor FROM Parametro WHERE Pm_Clave = '") + clave + "'");
  }
};

TEST_F(ConfiguracionPrueba, CadaParametroSeCambiaSegunSuTipoYLoIlegibleSeRechaza) {
  Abre("CONFIG", [this](QWidget& w) {
    Espera("editor_fila", [](QWidget& editor) {
      Pon(editor, "Pm_Valor", "s");
      Guarda(editor);
    });
    AbreParametro(w, "HT_OVER_BOOKING");
    Espera("editor_fila", [this](QWidget& editor) {
      Pon(editor, "Pm_Valor", "tres");
      Guarda(editor);
      EXPECT_TRUE(editor.isVisible());
      EXPECT_TRUE(Dice(editor, "HT_DIAS_RESERVACION lleva un número entero"));
      EsperaMensaje("no se ha guardado", "No");
      QTest::keyClick(&editor, Qt::Key_Escape);
      EXPECT_TRUE(editor.isVisible());
      Pon(editor, "Pm_Valor", "3");
      Guarda(editor);
    });
    AbreParametro(w, "HT_DIAS_RESERVACION");
    Espera("editor_fila", [](QWidget& editor) {
      Pon(editor, "Pm_Valor", "#FF8000");
      Guarda(editor);
    });
    AbreParametro(w, "HT_COLOR_OCUPADO");
  });
  EXPECT_EQ(Parametro("HT_OVER_BOOKING"), "1\n");
  EXPECT_EQ(Parametro("HT_DIAS_RESERVACION"), "3\n");
  EXPECT_EQ(Parametro("HT_COLOR_OCUPADO"), "33023\n") << "blue in the high byte";
  Sql("UPDATE Permiso SET Pe_Usuario = 'OTRA' WHERE Pe_Opcion = 'CHCONF'");
  EsperaMensaje("no puede abrir la configuración", "Aceptar");
  escritorio_.AbrePantalla("CONFIG", {});
}

TEST_F(ConfiguracionPrueba, UnBloqueoSeCapturaSeAlargaYSeLevanta) {
  const std::string folio = Reserva();  // nights of 11 and 12 March
  Abre("CA153", [&](QWidget& w) {
    auto* lista = w.findChild<QTableWidget*>(QStringLiteral("Habitacion_Bloqueo"));
    ASSERT_NE(lista, nullptr);
    QWidget* hoja = lista->parentWidget()->parentWidget();
    w.findChild<QTabWidget*>()->setCurrentWidget(hoja);
    Espera("editor_fila", [&](QWidget& editor) {
      auto* habitacion = editor.findChild<QComboBox*>(QStringLiteral("Hb_Cve_Habitacion"));
      habitacion->setCurrentIndex(habitacion->findData(QString::fromStdString(habitacion_)));
      Pon(editor, "Hbb_Fecha_Inicio", "13/3");
      Pon(editor, "Hbb_Fecha_Fin", "14/03/2026");
      Guarda(editor);
    });
    QTest::mouseClick(hoja->findChild<QPushButton*>(QStringLiteral("nuevo")), Qt::LeftButton);
    QTest::keyClicks(hoja->focusProxy()->focusProxy(), QString::fromStdString(habitacion_) + QStringLiteral(" 14/03"));
    // A night earlier it falls on the reservation. The calendar gives the date.
    Espera("editor_fila", [&](QWidget& editor) {
      auto* desde = editor.findChild<QLineEdit*>(QStringLiteral("Hbb_Fecha_Inicio"));
      desde->setFocus();
      QTest::keyClick(desde, Qt::Key_F4);
      QWidget* calendario = QApplication::activePopupWidget();
      ASSERT_NE(calendario, nullptr);
      QTest::keyClick(calendario->focusWidget(), Qt::Key_Left);
      QTest::keyClick(calendario->focusWidget(), Qt::Key_Return);
      EsperaMensaje(("Folio " + folio).c_str(), "Aceptar");
      Guarda(editor);
    });
    QTest::mouseClick(hoja->findChild<QPushButton*>(QStringLiteral("editar")), Qt::LeftButton);
    const std::string suyo =
        "SELECT Hbb_Fecha_Inicio, Hbb_Fecha_Fin, Es_Cve_Estado FROM Habitacion_Bloqueo WHERE "
        "Hb_Cve_Habitacion = '" +
        habitacion_ + "' AND Hbb_Fecha_Fin = '2026-03-14'";
    EXPECT_EQ(Sql(suyo), "2026-03-12|2026-03-14|AC\n");
    EsperaMensaje("¿Desea levantar", "Sí");
    QTest::mouseClick(hoja->findChild<QPushButton*>(QStringLiteral("quitar")), Qt::LeftButton);
    EXPECT_EQ(Sql(suyo), "2026-03-12|2026-03-14|CA\n");
  });
}

}  // namespace
}  // namespace pruebas
