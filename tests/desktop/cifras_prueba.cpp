// The figures and what goes out as a file, in their windows, worked by keyboard and mouse.
#include <QComboBox>
#include <QDateEdit>
#include <QFile>
#include <QTableWidget>
#include <QTemporaryDir>

#include "desktop/exportar.h"
#include "desktop/grafica.h"
#include "host/standalone/catalogos.h"
#include "tests/desktop/recorrido.h"

namespace pruebas {
namespace {

class CifrasVentanaPrueba : public RecorridoPrueba {
 protected:
  template <class W>
  static W& Hijo(QWidget& w, const char* nombre) {
    return *w.findChild<W*>(QLatin1String(nombre));
  }
  static QString Celda(QWidget& w, int fila, int columna) {
    return Hijo<QTableWidget>(w, "cuentas").item(fila, columna)->text();
  }
  static void Elige(QWidget& w, const char* nombre, int cual) {
    auto& lista = Hijo<QComboBox>(w, nombre);
    lista.setFocus();
    while (lista.currentIndex() < cual) QTest::keyClick(&lista, Qt::Key_Down);
    while (lista.currentIndex() > cual) QTest::keyClick(&lista, Qt::Key_Up);
  }
  // Types a name in the save dialog, after choosing the kind.
  void EsperaGuardar(const QString& nombre, int tipo = 0) {
    Espera("guardar", [=](QWidget& w) {
      if (tipo > 0) Elige(w, "fileTypeCombo", tipo);
      auto& linea = Hijo<QLineEdit>(w, "fileNameEdit");
      linea.setFocus();
      linea.selectAll();
      QTest::keyClicks(&linea, nombre);
      QTest::keyClick(&linea, Qt::Key_Return);
    });
  }
  QString Ruta(const char* nombre) const { return carpeta_.filePath(QLatin1String(nombre)); }
  static QByteArray Lee(const QString& ruta) {
    QFile archivo(ruta);
    return archivo.open(QIODevice::ReadOnly) ? archivo.readAll() : QByteArray();
  }

  QTemporaryDir carpeta_;
};

TEST_F(CifrasVentanaPrueba, SePideSeVeYSeExporta) {
  Espera("cifras", [this](QWidget& w) {
    auto& tabla = Hijo<QTableWidget>(w, "cuentas");
    EXPECT_EQ(tabla.rowCount(), 32) << "March and its total";
    EXPECT_EQ(Celda(w, 0, 0), QStringLiteral("01/03/2026"));
    const QString vendidas = Celda(w, 31, 2);
    EXPECT_GT(vendidas.toInt(), 50);
    auto& resumen = Hijo<QLabel>(w, "resumen");
    EXPECT_TRUE(resumen.text().contains(QStringLiteral("Noches vendidas ") + vendidas)) << resumen.text().toStdString();
    // The plot says what the table says.
    auto& grafica = Hijo<vista::Grafica>(w, "grafica");
    const auto lectura = [&](double parte) {
      return grafica.Lectura({static_cast<int>(grafica.width() * parte), grafica.height() / 2});
    };
    EXPECT_TRUE(lectura(0.985).startsWith(QStringLiteral("31 mar"))) << lectura(0.985).toStdString();
    EXPECT_TRUE(lectura(0.985).endsWith(Celda(w, 30, 5))) << lectura(0.985).toStdString();
    Elige(w, "que", 2);
    EXPECT_TRUE(lectura(0.985).contains(QStringLiteral("Vendidas ") + Celda(w, 30, 2))) << lectura(0.985).toStdString();
    EXPECT_EQ(lectura(0), QString());
    // By month; the next month by its key; a date typed.
    Elige(w, "por", 1);
    EXPECT_EQ(tabla.rowCount(), 2);
    EXPECT_EQ(Celda(w, 0, 2), vendidas);
    QTest::keyClick(&tabla, Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(Celda(w, 0, 0), QStringLiteral("2026-04"));
    auto& hasta = Hijo<QDateEdit>(w, "hasta");
    EXPECT_EQ(hasta.date(), QDate(2026, 4, 30));
    const auto teclea = [&](const char* texto) {
      hasta.setFocus();
      hasta.setSelectedSection(QDateTimeEdit::DaySection);
      QTest::keyClicks(&hasta, QLatin1String(texto));
      QTest::keyClick(&hasta, Qt::Key_Tab);
    };
    teclea("15052026");
    EXPECT_EQ(tabla.rowCount(), 3);
    teclea("01032026");
    EXPECT_TRUE(Hijo<QLabel>(w, "nota").text().contains(QStringLiteral("termina antes")))
        << "told, what was shown stays";
    EXPECT_EQ(tabla.rowCount(), 3);
    teclea("30042026");
    // As a file: the kind chosen, the ending typed, a folder that is not there.
    EsperaGuardar(Ruta("abril"), 1);
    QTest::keyClick(&tabla, Qt::Key_E, Qt::ControlModifier);
    EXPECT_TRUE(Lee(Ruta("abril.csv")).contains("\r\n2026-04;"));
    EsperaGuardar(Ruta("abril.pdf"));
    QTest::mouseClick(&Hijo<QPushButton>(w, "exportar"), Qt::LeftButton);
    EXPECT_TRUE(Lee(Ruta("abril.pdf")).startsWith("%PDF"));
    EXPECT_EQ(Hijo<QLabel>(w, "nota").text(), QStringLiteral("Quedó en ") + Ruta("abril.pdf"));
    EsperaGuardar(Ruta("no_hay/abril.csv"));
    EsperaMensaje("la carpeta no existe", "Aceptar");
    Espera("guardar", [this](QWidget& g) {
      EXPECT_EQ(Hijo<QLineEdit>(g, "fileNameEdit").text(), Ruta("no_hay/abril.csv")) << "what was typed";
      QTest::keyClick(&g, Qt::Key_Escape);
    });
    QTest::mouseClick(&Hijo<QPushButton>(w, "exportar"), Qt::LeftButton);
    QTest::keyClick(&tabla, Qt::Key_Escape);
  });
  Tecla(Qt::Key_F11);
}

TEST_F(CifrasVentanaPrueba, ElCalendarioYElParteSalenDelMenu) {
  Espera("calendario", [](QWidget& w) {
    Elige(w, "habitacion", 0);
    QTest::mouseClick(&Hijo<QPushButton>(w, "guardar"), Qt::LeftButton);
  });
  EsperaGuardar(Ruta("todas"));
  vista::ExportaCalendario(anfitrion_, escritorio_.Frente());
  const QByteArray calendario = Lee(Ruta("todas.ics"));
  EXPECT_GT(calendario.count("BEGIN:VEVENT"), 20);
  EXPECT_FALSE(calendario.contains("Ram\xc3\xadrez")) << "nobody is named who was not asked for";

  const auto envia = [this](const char* dice) {
    Espera("parte", [=, this](QWidget& w) {
      EsperaMensaje(dice, "Aceptar");
      QTest::mouseClick(&Hijo<QPushButton>(w, "enviar"), Qt::LeftButton);
      QTest::keyClick(&w, Qt::Key_Escape);
    });
    vista::MuestraParte(anfitrion_, escritorio_.Frente());
  };
  envia("PARTE_CORREOS no tiene ninguna");
  anfitrion_.Parametro("PARTE_CORREOS", "gerencia@hotel.mx");
  envia("para una dirección");
  EXPECT_EQ(Sql("SELECT Cs_Para, Cs_Asunto FROM Correo_Salida"),
            "gerencia@hotel.mx|Parte del 09/03/2026 · Hotel Mirador de la Bahía\n");
}

// Rows of a catalogue with typed cells, names beside the keys of others, what was withdrawn.
TEST_F(CifrasVentanaPrueba, LosCatalogosSonListas) {
  Sql("UPDATE Forma_Pago SET Es_Cve_Estado = 'BA' WHERE Fp_Cve_Forma_Pago = '0001'");
  const auto csv = [this](const char* tabla) {
    return listado::Csv(autonomo::ListadoDe(*anfitrion_.conexion(), *autonomo::BuscaCatalogo(tabla)),
                        listado::kConComas);
  };
  EXPECT_NE(csv("Forma_Pago").find("De baja\r\n"), std::string::npos);
  for (const autonomo::Catalogo& catalogo : autonomo::Catalogos()) {
    const std::string texto = csv(std::string(catalogo.tabla).c_str());
    EXPECT_GE(std::ranges::count(texto, '\n'),
              1 + std::stoi(Sql("SELECT COUNT(*) FROM " + std::string(catalogo.tabla))))
        << catalogo.tabla;
  }
}

TEST(GraficaPrueba, LaEscalaTerminaEnNumerosRedondos) {
  const std::pair<double, double> casos[] = {{0, 1},   {-3, 1},   {0.4567, 0.5}, {1, 1},       {2.1, 2.5},
                                             {26, 50}, {99, 100}, {100, 100},    {100.5, 200}, {123456, 200000}};
  for (const auto& [valor, tope] : casos) EXPECT_NEAR(vista::Grafica::Redondo(valor), tope, 1e-9) << valor;
}

}  // namespace
}  // namespace pruebas
