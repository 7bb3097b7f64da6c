// F1 and the manual: every window has its place in it, and the keys that are told are the program's.
#include "desktop/ayuda.h"

#include <QFile>
#include <QListWidget>
#include <QTableWidget>
#include <QTextBlock>
#include <QTextBrowser>

#include "tests/desktop/recorrido.h"

namespace pruebas {
namespace {

class AyudaPrueba : public RecorridoPrueba {
 protected:
  static QString Capitulo(QWidget& w) { return w.findChild<QListWidget*>()->currentItem()->text(); }
  // F1 where the keyboard is; the manual comes up there.
  void EsperaCapitulo(const char* titulo) {
    Espera("ayuda", [titulo = QString::fromUtf8(titulo)](QWidget& w) {
      EXPECT_EQ(Capitulo(w), titulo);
      auto* hojas = w.findChild<QTextBrowser*>(QStringLiteral("hojas"));
      QTextCursor arriba = hojas->cursorForPosition(QPoint(4, 4));
      EXPECT_EQ(arriba.block().text(), titulo) << "the chapter is at the top";
      QTest::keyClick(w.focusWidget(), Qt::Key_F1);  // no second one
      QTest::keyClick(&w, Qt::Key_Escape);
    });
  }
};

TEST_F(AyudaPrueba, F1AbreElManualEnElLugar) {
  EsperaCapitulo("Una reservación guardada");
  Tecla(Qt::Key_F1);
  EXPECT_EQ(Foco(), "txtFolio") << "the screen saw nothing of it";
  Espera("hoy", [this](QWidget& w) {
    EsperaCapitulo("El día");
    QTest::keyClick(w.focusWidget(), Qt::Key_F1);
    QTest::keyClick(w.focusWidget(), Qt::Key_Escape);
  });
  Tecla(Qt::Key_F5);
  CapturaEncabezado();
  EsperaCapitulo("Una reservación nueva");
  Tecla(Qt::Key_F1);
  Forma().Enfoca(*Forma().Busca("txtHuesped"));
  EsperaCapitulo("El huésped");
  Tecla(Qt::Key_F1);
  Forma().Enfoca(*Forma().Busca("ssReservaciones"));
  EsperaCapitulo("Los renglones");
  Tecla(Qt::Key_F1);
}

TEST_F(AyudaPrueba, LasTeclasDelProgramaEstanEnElManual) {
  QFile archivo(QStringLiteral(":/manual/manual.md"));
  ASSERT_TRUE(archivo.open(QIODevice::ReadOnly));
  const QString capitulo = QString::fromUtf8(archivo.readAll()).section(QStringLiteral("\n## Teclas"), 1);
  const auto teclas = vista::TeclasDelPrograma(escritorio_.contexto());
  EXPECT_GT(teclas.size(), 30U);
  for (const vista::TeclaUsada& t : teclas) {
    for (const QString& una : t.tecla.split(QStringLiteral(", "))) {
      EXPECT_TRUE(capitulo.contains(una)) << una.toStdString() << " (" << t.que.toStdString() << ")";
    }
  }
  Espera("ayuda", [&](QWidget& w) {
    EXPECT_EQ(w.findChild<QTableWidget*>(QStringLiteral("teclas"))->rowCount(), static_cast<int>(teclas.size()));
    QTest::keyClick(&w, Qt::Key_Escape);
  });
  Tecla(Qt::Key_F1);
}

TEST_F(AyudaPrueba, AcercaDeDiceVersionMotorEsquemaYBase) {
  for (const vista::Contexto::Opcion& o : escritorio_.contexto().menu) {
    if (!o.titulo.contains(QStringLiteral("Acerca"))) continue;
    Espera("mensaje", [](QWidget& w) {
      const QString texto = dynamic_cast<QMessageBox&>(w).text();
      for (const char* dice :
           {"Reservaciones 1.", "Motor: SQLite 3.", "Versión del esquema: ", "Base de datos: :memory:"})
        EXPECT_TRUE(texto.contains(QString::fromUtf8(dice))) << texto.toStdString();
      w.close();
    });
    o.abre();
  }
}

}  // namespace
}  // namespace pruebas
