// Keys by hand: their names, those that do not exist, names typed in their place.
#include <QLabel>
#include <QListWidget>

#include "tests/desktop/recorrido.h"

namespace pruebas {
namespace {

class ClavesPrueba : public RecorridoPrueba {
 protected:
  // New, with the keyboard in a field.
  void NuevaEn(const char* campo) {
    Tecla(Qt::Key_N, Qt::ControlModifier);
    Forma().Enfoca(*Forma().Busca(campo));
  }
  controles::LookupField& Campo(const char* nombre) { return Control<controles::LookupField>(Forma(), nombre); }
  QLineEdit& Linea(const char* nombre) {
    return *escritorio_.ventana(Forma())->findChild<QLineEdit*>(QString::fromUtf8(nombre));
  }
};

TEST_F(ClavesPrueba, LaSucursalDiceSuNombreYLaQueNoExisteRetiene) {
  NuevaEn("txtSucursal");
  EXPECT_EQ(Linea("txtSucursal_nombre").text(), QStringLiteral("Matriz"));
  Enter("9999");
  EXPECT_EQ(Foco(), "txtSucursal");
  EXPECT_EQ(Linea("txtSucursal_nombre").placeholderText(), QStringLiteral("No existe"));
  Tecla(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(Foco(), "txtSucursal") << "nothing is accepted";
  QTest::mouseClick(&Linea("txtReferencia"), Qt::LeftButton);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Linea("txtSucursal").hasFocus(); }));
  Enter("2");
  EXPECT_EQ(Campo("txtSucursal").text(), "0002") << "with its zeros";
  EXPECT_EQ(Linea("txtSucursal_nombre").text(), QStringLiteral("Frontera"));
  EXPECT_EQ(Foco(), "txtCliente");
  Enter("999");
  EXPECT_EQ(Foco(), "txtCliente") << "as any other key";
  // One that was only proposed is not stored either.
  Campo("txtSucursal").text("9");
  QTest::mouseClick(&Linea("txtReferencia"), Qt::LeftButton);
  EXPECT_EQ(Foco(), "txtReferencia");
  Tecla(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(Foco(), "txtSucursal");
}

TEST_F(ClavesPrueba, UnNombreEnElHuespedAbreLaBusquedaYUnClienteNuevoVuelveAlCampo) {
  NuevaEn("txtHuesped");
  Espera("busqueda", [](QWidget& w) {
    EXPECT_EQ(w.findChild<QListWidget*>()->count(), 1);
    QTest::keyClick(w.focusWidget(), Qt::Key_Return);
  });
  Enter("sofia ram");
  EXPECT_EQ(Campo("txtHuesped").text(), "0000000003");
  EXPECT_EQ(Foco(), "txtForma_Pago");

  Forma().Enfoca(*Forma().Busca("txtHuesped"));
  Espera("busqueda", [this](QWidget& w) {
    auto* nada = w.findChild<QLabel*>(QStringLiteral("nada"));
    EXPECT_TRUE(nada->isVisible());
    EXPECT_TRUE(nada->text().contains(QStringLiteral("ZOE MORA"))) << "keys are in capitals";
    EXPECT_FALSE(w.findChild<QPushButton*>(QStringLiteral("aceptar"))->isEnabled());
    Espera("editor_fila", [](QWidget& editor) {
      EXPECT_EQ(editor.findChild<QLineEdit*>(QStringLiteral("Cl_Cve_Cliente"))->text(), QStringLiteral("0000000026"));
      auto* nombre = editor.findChild<QLineEdit*>(QStringLiteral("Cl_Razon_Social_1"));
      EXPECT_EQ(nombre->text(), QStringLiteral("Zoe Mora"));
      nombre->setText(QStringLiteral("<i>Zoe</i>"));
      QTest::mouseClick(editor.findChild<QPushButton*>(QStringLiteral("guardar")), Qt::LeftButton);
    });
    QTest::mouseClick(w.findChild<QPushButton*>(QStringLiteral("nuevo")), Qt::LeftButton);
  });
  Enter("zoe mora");
  EXPECT_EQ(Campo("txtHuesped").text(), "0000000026");
  EXPECT_EQ(Campo("txtNHuesped").text(), "<i>Zoe</i>");

  // The record shows the name as it is.
  Forma().Enfoca(*Forma().Busca("txtHuesped"));
  Espera("cliente", [](QWidget& w) {
    int veces = 0;
    for (const QLabel* r : w.findChildren<QLabel*>()) {
      if (r->text() != QStringLiteral("<i>Zoe</i>")) continue;
      ++veces;
      EXPECT_EQ(r->textFormat(), Qt::PlainText);
    }
    EXPECT_EQ(veces, 1);
    w.close();
  });
  Tecla(Qt::Key_Return, Qt::AltModifier);
}

}  // namespace
}  // namespace pruebas
