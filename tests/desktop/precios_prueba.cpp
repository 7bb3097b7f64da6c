// What the windows tell of prices: tips, the mark of an agreed one, what is said before and after it is lost.
#include <QHelpEvent>
#include <QTableWidget>
#include <QToolTip>

#include "tests/desktop/recorrido.h"

namespace pruebas {
namespace {

autonomo::Opciones HotelDemoConPrecios() {
  autonomo::Opciones opciones = HotelDemo();
  opciones.usuario = "RECEPCION";
  return opciones;
}

class PreciosVentanaPrueba : public RecorridoPrueba {
 protected:
  PreciosVentanaPrueba() : RecorridoPrueba(HotelDemoConPrecios()) {}
  controles::Grid& Lineas() { return Control<controles::Grid>(Forma(), "ssReservaciones"); }
  vista::VistaGrid& Vista() { return dynamic_cast<vista::VistaGrid&>(*escritorio_.ventana(Forma())->vista(Lineas())); }
  QLabel& Aviso() { return *Vista().widget()->findChild<QLabel*>(QStringLiteral("aviso_precio")); }
  QString Consejo(const char* columna) {
    return Vista()
        .modelo()
        .data(Vista().modelo().index(0, Lineas().IndiceColumna(columna)), Qt::ToolTipRole)
        .toString();
  }
  // The colour in the corner of the price's cell.
  QColor Esquina() {
    const int columna = Lineas().IndiceColumna("Precio");
    const QRect zona = Vista().ZonaCelda(0, columna);
    const QImage foto = Vista().widget()->grab().toImage();
    return foto.pixelColor((zona.topLeft() + QPoint(2, 2)) * foto.devicePixelRatio());
  }
  // One line of room 0101, for one.
  void UnRenglon() {
    CapturaEncabezado();
    Lineas().NuevaFila();
    Lineas().Teclea("101");
    Lineas().VaA(0, Lineas().IndiceColumna("Adultos"));
    Escribe("1");
    Tecla(Qt::Key_Return);
  }
};

TEST_F(PreciosVentanaPrueba, UnPrecioAcordadoSeVeYSeDiceAntesYDespues) {
  UnRenglon();
  const QColor sinMarca = Esquina();
  EXPECT_TRUE(Consejo("Total").contains(QStringLiteral("tarifa 1"))) << Consejo("Total").toStdString();
  EXPECT_TRUE(Consejo("Total").contains(QStringLiteral("= Precio del hotel")));
  EXPECT_FALSE(Consejo("FECHAI").contains(QStringLiteral("tarifa")));

  Lineas().VaA(0, Lineas().IndiceColumna("Precio"));
  Enter("900");
  Lineas().VaA(0, Lineas().IndiceColumna("Nombre"));
  EXPECT_NE(Esquina(), sinMarca);
  EXPECT_TRUE(Consejo("Precio").contains(QStringLiteral("Precio acordado")));
  const QModelIndex precio = Vista().modelo().index(0, Lineas().IndiceColumna("Precio"));
  EXPECT_TRUE(
      Vista().modelo().data(precio, Qt::AccessibleTextRole).toString().endsWith(QStringLiteral("precio acordado")));
  EXPECT_FALSE(Aviso().isVisible());

  // Before: the clerk comes to a cell that would lose it. After: with old and new.
  Lineas().VaA(0, Lineas().IndiceColumna("Menores"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Aviso().isVisible(); }));
  EXPECT_TRUE(Aviso().text().contains(QStringLiteral("el precio acordado, $900.00, se pierde")))
      << Aviso().text().toStdString();
  Lineas().VaA(0, Lineas().IndiceColumna("Infantes"));
  Enter("1");
  Lineas().VaA(0, Lineas().IndiceColumna("Precio"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Aviso().text().contains(QStringLiteral("cambió al del hotel")); }))
      << Aviso().text().toStdString();
  EXPECT_TRUE(Aviso().text().contains(QStringLiteral("$900.00")));
  EXPECT_EQ(Esquina(), sinMarca);
  Tecla(Qt::Key_Escape);
}

// Told at the cell when it would be stored; the capture goes on.
TEST_F(PreciosVentanaPrueba, UnPrecioDesmedidoSeDiceEnSuCelda) {
  UnRenglon();
  Lineas().VaA(0, Lineas().IndiceColumna("Precio"));
  Enter("1000000000000000");
  Forma().Enfoca(*Forma().Busca("txtReferencia"));
  Tecla(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_TRUE(QToolTip::text().contains(QStringLiteral("el máximo es 999,999,999"))) << QToolTip::text().toStdString();
  EXPECT_EQ(Foco() + Lineas().ClaveColumna(), "ssReservacionesPrecio");
  QToolTip::hideText();
}

TEST_F(PreciosVentanaPrueba, ElTotalSeExplicaConElPunteroYConUnaTecla) {
  UnRenglon();
  QWidget* total = escritorio_.ventana(Forma())->vista(*Forma().Busca("txtTotal"))->foco();
  QHelpEvent ayuda(QEvent::ToolTip, QPoint(5, 5), total->mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(total, &ayuda);
  EXPECT_TRUE(QToolTip::text().startsWith(QStringLiteral("Total de la reservación"))) << QToolTip::text().toStdString();
  QToolTip::hideText();
  // What is half typed is handed over first.
  Lineas().VaA(0, Lineas().IndiceColumna("Adultos"));
  Escribe("2");
  Espera("explicacion", [](QWidget& w) {
    auto& pasos = *w.findChild<QTableWidget*>(QStringLiteral("pasos"));
    EXPECT_TRUE(pasos.item(0, 0)->text().startsWith(QStringLiteral("Sencilla / 101")));
    QString todo;
    for (int f = 0; f < pasos.rowCount(); ++f) todo += pasos.item(f, 0)->text() + QLatin1Char('\n');
    EXPECT_TRUE(todo.contains(QStringLiteral("1 adulto extra"))) << todo.toStdString();
    EXPECT_TRUE(todo.contains(QStringLiteral("Total de la reservación")));
    QTest::keyClick(&w, Qt::Key_Escape);
  });
  Tecla(Qt::Key_T, Qt::ControlModifier);
}

}  // namespace
}  // namespace pruebas
