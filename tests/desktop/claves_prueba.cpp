// Keys by hand: their names, those that do not exist, names typed in their place.
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

// A list's filter, as the search.
TEST(FiltroPrueba, LosApostrofosNoEstorban) {
  const auto halla = [](const char* filtro, const char* fila) {
    return vista::Buscado(QString::fromUtf8(filtro)).Esta(QString::fromUtf8(fila));
  };
  for (const char* filtro : {"ohara", "o'hara", "O’HARA pat", "hara"})
    EXPECT_TRUE(halla(filtro, "7   Pat O'Hara")) << filtro;
  EXPECT_TRUE(halla("o´hara", "7   Pat Ohara"));
  EXPECT_FALSE(halla("oharas", "7   Pat O'Hara"));
}

}  // namespace
}  // namespace pruebas
