// Grids: the item model against the grid's changes, typing, moves, marks, the date pop-up over its cell.
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QImage>
#include <QScrollBar>
#include <random>

#include "desktop/escala.h"
#include "desktop/estilo.h"
#include "desktop/modelo_grid.h"
#include "tests/desktop/forma_prueba.h"

namespace pruebas {
namespace {

// A board of the given size: three states, all cells free.
void LlenaTablero(controles::Grid& grid, int filas, int noches) {
  grid.DefineEstilo("OCUPADO", 0x0000FF);
  grid.DefineEstilo("DISPONIBLE", 0x00FF00);
  grid.DefineEstilo("OCUPANDO", 0x008000);
  while (grid.NumColumnas() > 2) grid.QuitaColumna(grid.NumColumnas() - 1);
  for (int d = 0; d < noches; ++d) {
    controles::Columna c;
    c.titulo = "MIE";
    c.ancho = 800;
    c.bloqueada = true;
    const QDate dia = QDate(2026, 3, 11).addDays(d);
    c.fecha = vista::DeDate(dia);
    grid.AgregaColumna(c);
  }
  for (int f = 0; f < filas; ++f) {
    grid.AgregaFila();
    grid.celda(f, 0, std::to_string(f));
    for (int c = 2; c < grid.NumColumnas(); ++c) grid.estilo(f, c, "DISPONIBLE");
  }
}

// What the board's own marking does.
void Marca(controles::Grid& grid) {
  if (grid.columna() < 2) return;
  const bool libre = grid.estilo(grid.fila(), grid.columna()) == grid.IndiceEstilo("DISPONIBLE");
  const bool marcada = grid.estilo(grid.fila(), grid.columna()) == grid.IndiceEstilo("OCUPANDO");
  if (libre) grid.estilo(grid.fila(), grid.columna(), "OCUPANDO");
  if (marcada) grid.estilo(grid.fila(), grid.columna(), "DISPONIBLE");
}

std::string Marcas(const controles::Grid& grid, int fila) {
  std::string marcas;
  for (int c = 2; c < grid.NumColumnas(); ++c) {
    marcas += grid.estilo(fila, c) == grid.IndiceEstilo("OCUPANDO") ? 'x' : '.';
  }
  return marcas;
}

TEST(ModeloGridPrueba, SigueCualquierCambioDelGrid) {
  Forma forma;
  controles::Grid& grid = forma.ssRenglones;
  vista::ModeloGrid modelo(grid);
  QAbstractItemModelTester revisor(&modelo, QAbstractItemModelTester::FailureReportingMode::Fatal);
  std::mt19937 azar(20261124);
  for (int paso = 0; paso < 600; ++paso) {
    switch (azar() % 7) {
      case 0:
      case 1:
        grid.AgregaFila();
        break;
      case 2:
        if (grid.Filas() > 0) grid.QuitaFila(static_cast<int>(azar() % static_cast<unsigned>(grid.Filas())));
        break;
      case 3:
        if (grid.Filas() > 0) grid.celda(grid.Filas() - 1, 0, "fila " + std::to_string(paso));
        break;
      case 4:
        if (grid.NumColumnas() < 12) grid.AgregaColumna({});
        break;
      case 5:
        if (grid.NumColumnas() > 5) grid.QuitaColumna(grid.NumColumnas() - 1);
        break;
      default:
        if (azar() % 10 == 0) grid.QuitaTodas();
        break;
    }
    if (azar() % 3 == 0) modelo.Sincroniza();
  }
  modelo.Sincroniza();
  ASSERT_EQ(modelo.rowCount(), grid.Filas());
  ASSERT_EQ(modelo.columnCount(), grid.NumColumnas());
  for (int f = 0; f < grid.Filas(); ++f) {
    EXPECT_EQ(modelo.index(f, 0).data().toString().toStdString(), grid.Texto(f, 0));
  }
}

TEST(VistaGridPrueba, TeclearLlegaALaCeldaConLasReglasDeLaPantalla) {
  EnPantalla p;
  controles::Grid& grid = p.forma.ssRenglones;
  grid.KeyPress = [&](int& caracter) {
    const bool digito = (caracter >= '0' && caracter <= '9') || caracter == controles::tecla::kRetroceso;
    if (grid.ClaveColumna() == "Adultos" && !digito) caracter = 0;
  };
  int cambios = 0, confirmadas = 0;
  grid.Change = [&] { ++cambios; };
  grid.RowCommitted = [&] { ++confirmadas; };
  grid.AgregaFila();
  grid.columnaActual(3);
  p.forma.Enfoca(grid);
  QWidget* celdas = p.renglones().foco();
  EXPECT_TRUE(celdas->hasFocus());
  QTest::keyClicks(celdas, QStringLiteral("1x2"));
  EXPECT_EQ(grid.Texto(0, 3), "12");
  EXPECT_EQ(cambios, 2);
  QTest::keyClick(celdas, Qt::Key_Backspace);
  EXPECT_EQ(grid.Texto(0, 3), "1");
  QTest::keyClick(celdas, Qt::Key_Left);
  EXPECT_EQ(grid.columna(), 2);
  EXPECT_EQ(confirmadas, 1) << "leaving the typed cell completes the line, so that totals follow";
  QTest::keyClick(celdas, Qt::Key_Tab);
  EXPECT_EQ(grid.columna(), 3);

  // A whole text at once is one change; one that does not pass whole is none.
  cambios = 0;
  QApplication::clipboard()->setText(QStringLiteral("9.5 abc"));
  QTest::keyClick(celdas, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(celdas, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(grid.Texto(0, 3), "1");
  EXPECT_EQ(cambios, 0);
  QApplication::clipboard()->setText(QStringLiteral("45\n"));
  QTest::keyClick(celdas, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(grid.Texto(0, 3), "45") << "in place of what Ctrl+A chose";
  EXPECT_EQ(cambios, 1);
  QTest::keyClick(celdas, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(celdas, Qt::Key_Delete);
  EXPECT_EQ(grid.Texto(0, 3), "");
  EXPECT_EQ(confirmadas, 1);
  // Turning to another field ends the edit.
  QTest::mouseClick(p.widget<QLineEdit>(p.forma.txtClave), Qt::LeftButton);
  EXPECT_EQ(confirmadas, 2);
}

TEST(VistaGridPrueba, SinCeldaActualSeEmpiezaPorLosHuespedes) {
  EnPantalla p;
  controles::Grid& grid = p.forma.ssRenglones;
  grid.AgregaFila();
  grid.AgregaFila();
  p.forma.Enfoca(grid);
  ASSERT_EQ(grid.columna(), -1);
  QTest::keyClicks(p.renglones().foco(), QStringLiteral("12"));
  EXPECT_EQ(grid.Texto(0, "Adultos"), "12");
  grid.columnaActual(-1);
  grid.fila(1);
  QTest::keyClick(p.renglones().foco(), Qt::Key_Return);
  EXPECT_EQ(grid.fila(), 0);
  EXPECT_EQ(grid.ClaveColumna(), "Adultos");
  EXPECT_FALSE(grid.Tecleada());
  grid.columnaActual(-1);
  grid.bloqueada("Adultos", true);
  QTest::keyClicks(p.renglones().foco(), QStringLiteral("3"));
  EXPECT_EQ(grid.columna(), -1);
}

TEST(VistaGridPrueba, EscDevuelveElRenglonComoEstaba) {
  EnPantalla p;
  controles::Grid& grid = p.forma.ssRenglones;
  grid.Change = [&] {
    if (grid.ClaveColumna() != "Clave") return;
    grid.celda(grid.fila(), "Nombre", "");
    if (grid.Texto(grid.fila(), 0).empty()) grid.QuitaFila(grid.fila());
  };
  grid.AgregaFila();
  grid.celda(0, "Clave", "101");
  grid.celda(0, "Nombre", "Sencilla");
  grid.columnaActual(0);
  p.forma.Enfoca(grid);
  QWidget* celdas = p.renglones().foco();
  QTest::keyClicks(celdas, QStringLiteral("20"));
  EXPECT_EQ(grid.Texto(0, "Nombre"), "");
  QTest::keyClick(celdas, Qt::Key_Escape);
  EXPECT_EQ(grid.Texto(0, "Clave"), "101");
  EXPECT_EQ(grid.Texto(0, "Nombre"), "Sencilla");
  EXPECT_FALSE(grid.Tecleada()) << "leaving the cell must not price the line again";
  QTest::keyClick(celdas, Qt::Key_Backspace);
  EXPECT_EQ(grid.Texto(0, "Clave"), "10");
  QTest::keyClick(celdas, Qt::Key_Escape);
  EXPECT_EQ(grid.Texto(0, "Clave"), "101");

  // A line begun with what was typed goes with it. A script's Esc is the form's.
  ASSERT_TRUE(grid.NuevaFila());
  QTest::keyClicks(celdas, QStringLiteral("3"));
  QTest::keyClick(celdas, Qt::Key_Escape);
  EXPECT_EQ(grid.Filas(), 1);
  p.escritorio.FijaPiloto({});
  QTest::keyClicks(celdas, QStringLiteral("7"));
  QTest::keyClick(celdas, Qt::Key_Escape);
  EXPECT_EQ(grid.Texto(0, "Clave"), "7");
}

TEST(VistaGridPrueba, LasColumnasSiguenElAnchoYElTotalSeVeEntero) {
  EnPantalla p;
  controles::Grid& grid = p.forma.ssRenglones;
  for (int c = 0; c < 3; ++c) {
    controles::Columna precio;
    precio.clave = precio.titulo = "P" + std::to_string(c);
    precio.tipo = controles::TipoColumna::Doble;
    precio.formato = "$#,##0.0000";
    precio.ancho = 2400;
    grid.AgregaColumna(precio);
  }
  grid.AgregaFila();
  grid.celda(0, "Total", "11940.25");
  for (int c = 5; c < 8; ++c) grid.celda(0, c, 10293.1034);
  const auto ancho = [&](int columna) { return p.renglones().tabla(columna)->columnWidth(columna); };
  QScrollBar* barra = p.renglones().tabla(4)->horizontalScrollBar();
  const QFontMetrics letra(vista::Fuente(vista::Letra::Normal));
  const auto pon = [&](int twips) {
    grid.width(twips);
    QApplication::processEvents();
  };
  int twips = 20000;
  pon(twips);
  EXPECT_EQ(ancho(5), vista::APixel(2400));
  while (barra->maximum() == 0 && twips > 5000) pon(twips -= 150);
  pon(twips + 150);  // the narrowest that shows all
  constexpr int kOrillas = 13;
  EXPECT_EQ(barra->maximum(), 0);
  EXPECT_LT(ancho(5), letra.horizontalAdvance(QStringLiteral("$10,293.1034")) + kOrillas) << "decimals give way";
  EXPECT_GE(ancho(5), letra.horizontalAdvance(QStringLiteral("$10,293.…")) + kOrillas);
  EXPECT_GE(ancho(4), letra.horizontalAdvance(vista::Q(grid.Texto(0, 4))) + kOrillas);
  pon(20000);
  EXPECT_EQ(ancho(5), vista::APixel(2400));
}

TEST(EscalaPrueba, UnaPantallaAngostaDibujaMasChico) {
  const double antes = vista::Ampliacion();
  EXPECT_DOUBLE_EQ(vista::FijaAmpliacion(96, 1920), 1.0);
  EXPECT_DOUBLE_EQ(vista::Ampliacion(), 1.0);
  EXPECT_DOUBLE_EQ(vista::FijaAmpliacion(96, 960), 0.96) << "full HD at 200 %";
  EXPECT_LE(vista::APixel(vista::kAnchoPantalla), 960);
  EXPECT_DOUBLE_EQ(vista::FijaAmpliacion(120, 1000), 0.8);
  EXPECT_DOUBLE_EQ(vista::Ampliacion(), 1.0);
  EXPECT_DOUBLE_EQ(vista::FijaAmpliacion(96, 400), 0.8) << "no smaller than can be read";
  vista::FijaAmpliacion(antes * 96);
}

TEST(VistaGridPrueba, SinCeldaActualElMarcoDiceDondeEstaElTeclado) {
  EnPantalla p;
  p.forma.ssRenglones.AgregaFila();
  p.forma.ssRenglones.columnaActual(-1);
  QWidget* marco = p.renglones().widget();
  const auto orilla = [&] { return marco->grab().toImage().pixelColor(marco->width() / 2, 0); };
  p.forma.Enfoca(p.forma.ssRenglones);
  EXPECT_EQ(orilla(), vista::Colores().acento);
  p.forma.Enfoca(p.forma.txtClave);
  EXPECT_NE(orilla(), vista::Colores().acento);
}

TEST(VistaGridPrueba, UnaCeldaQueRetieneConservaElTeclado) {
  EnPantalla p;
  controles::Grid& grid = p.forma.ssRenglones;
  grid.BeforeRowColChange = [](bool& cancela) { cancela = true; };
  grid.AgregaFila();
  grid.columnaActual(0);
  p.forma.Enfoca(grid);
  QTest::keyClicks(p.renglones().foco(), QStringLiteral("7"));
  QTest::mouseClick(p.widget<QLineEdit>(p.forma.txtClave), Qt::LeftButton);
  EXPECT_EQ(p.forma.foco(), &grid);
  EXPECT_TRUE(QTest::qWaitFor([&] { return p.renglones().foco()->hasFocus(); }));
}

TEST(VistaGridPrueba, InsertarYFlechaAbajoAgreganRenglonSoloEnCaptura) {
  EnPantalla p;
  controles::Grid& grid = p.forma.ssRenglones;
  p.forma.Enfoca(grid);
  QTest::keyClick(p.renglones().foco(), Qt::Key_Insert);
  EXPECT_EQ(grid.Filas(), 0);
  p.forma.Controles.PermiteAccion6(true);
  p.forma.Controles.Pulsa(controles::Accion::Nuevo);
  QTest::keyClick(p.renglones().foco(), Qt::Key_Insert);
  EXPECT_EQ(grid.Filas(), 1);
  QTest::keyClicks(p.renglones().foco(), QStringLiteral("101"));
  QTest::keyClick(p.renglones().foco(), Qt::Key_Down);
  EXPECT_EQ(grid.Filas(), 2);
  EXPECT_EQ(grid.Texto(0, 0), "101");
  EXPECT_EQ(grid.fila(), 1);
  auto* agrega = p.renglones().widget()->findChild<QToolButton*>();
  EXPECT_TRUE(agrega->isVisible());
  p.forma.Controles.Pulsa(controles::Accion::Limpiar);
  p.renglones().Refresca();
  EXPECT_FALSE(agrega->isVisible());
}

TEST(VistaGridPrueba, LaFechaSePoneSobreSuCeldaAunqueLaTablaCorra) {
  EnPantalla p;
  controles::Grid& grid = p.forma.ssRenglones;
  for (int f = 0; f < 40; ++f) grid.AgregaFila();
  grid.RowColChange = [&] {
    p.forma.pcFecha.visible(grid.ClaveColumna() == "FECHAI");
    if (p.forma.pcFecha.visible()) p.forma.Enfoca(p.forma.dpFechaGrid);
  };
  ASSERT_TRUE(grid.VaA(35, 2));
  QApplication::processEvents();
  QWidget* fecha = p.widget<QLineEdit>(p.forma.dpFechaGrid);
  EXPECT_TRUE(fecha->isVisible());
  EXPECT_TRUE(fecha->hasFocus());
  const QRect celda = p.renglones().ZonaCelda(35, 2);
  const QPoint centro = p.renglones().widget()->mapToGlobal(celda.center());
  EXPECT_TRUE(QRect(fecha->mapToGlobal(QPoint(0, 0)), fecha->size()).contains(centro));
  grid.VaA(35, 3);
  EXPECT_FALSE(fecha->isVisible());
}

class TableroPrueba : public testing::Test {
 protected:
  TableroPrueba() {
    controles::FijaEscritorio(&escritorio_);
    LlenaTablero(Grid(), 60, 30);
    Grid().Click = [this] { Marca(Grid()); };
    Grid().SelChange = [this](int tipo) { seleccionada_ = tipo == 2 ? Grid().fila() : -1; };
    forma_.Muestra();
    static_cast<void>(QTest::qWaitForWindowActive(escritorio_.ventana(forma_)));
    forma_.Enfoca(Grid());
  }
  ~TableroPrueba() override {
    forma_.Descarga();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    controles::FijaEscritorio(nullptr);
  }
  controles::Grid& Grid() { return forma_.ssRenglones; }
  vista::VistaGrid& Vista() { return dynamic_cast<vista::VistaGrid&>(*escritorio_.ventana(forma_)->vista(Grid())); }
  void Clic(int fila, int columna) {
    const QPoint donde = Vista().ZonaCelda(fila, columna).center();
    QWidget* tabla = Vista().tabla(columna)->viewport();
    QTest::mouseClick(tabla, Qt::LeftButton, Qt::NoModifier, tabla->mapFrom(Vista().widget(), donde));
  }

  Forma forma_;
  vista::EscritorioQt escritorio_;
  int seleccionada_ = -1;
};

TEST_F(TableroPrueba, ClicYTecladoMarcanNochesYFilas) {
  Clic(3, 2);
  Clic(3, 4);
  Clic(3, 4);
  EXPECT_EQ(Marcas(Grid(), 3).substr(0, 4), "x...");
  QWidget* celdas = Vista().foco();
  QTest::keyClick(celdas, Qt::Key_Space);
  EXPECT_EQ(Marcas(Grid(), 3).substr(0, 4), "x.x.");
  QTest::keyClick(celdas, Qt::Key_Right);
  QTest::keyClick(celdas, Qt::Key_Right, Qt::ShiftModifier);
  QTest::keyClick(celdas, Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(Marcas(Grid(), 3).substr(0, 7), "x.xxxx.") << "the run that Shift and arrows went over";
  QTest::keyClick(celdas, Qt::Key_Space, Qt::ShiftModifier);
  EXPECT_EQ(seleccionada_, 3);
  QTest::keyClick(celdas, Qt::Key_End);
  EXPECT_EQ(Grid().columna(), 31);
  QTest::keyClick(celdas, Qt::Key_Home);
  EXPECT_EQ(Grid().columna(), 2);
  const QRect manija = Vista().ZonaEncabezado(5);
  QTest::mouseClick(Vista().encabezadoFilas(), Qt::LeftButton, Qt::NoModifier, manija.center());
  EXPECT_EQ(seleccionada_, 5);
}

TEST_F(TableroPrueba, ElTecladoEntraPorLaPrimeraNoche) {
  ASSERT_EQ(Grid().columna(), -1);
  QTest::keyClick(Vista().foco(), Qt::Key_Down);
  EXPECT_EQ(Grid().columna(), 2);
  QTest::keyClick(Vista().foco(), Qt::Key_Space);
  QTest::keyClick(Vista().foco(), Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(Marcas(Grid(), Grid().fila()).substr(0, 3), "xx.");
}

TEST_F(TableroPrueba, VuelveDondeSeDejoYUnaCargaNuevaEmpiezaArriba) {
  Clic(30, 25);
  QScrollBar* vertical = Vista().tabla(2)->verticalScrollBar();
  QScrollBar* horizontal = Vista().tabla(2)->horizontalScrollBar();
  const int y = vertical->value(), x = horizontal->value();
  ASSERT_GT(y, 0);
  ASSERT_LT(y, vertical->maximum());
  ASSERT_GT(x, 0);
  forma_.Oculta();
  for (int f = 0; f < Grid().Filas(); ++f) Grid().fila(f);
  forma_.Muestra();
  QApplication::processEvents();
  EXPECT_EQ(vertical->value(), y);
  EXPECT_EQ(horizontal->value(), x);
  forma_.Oculta();
  Grid().QuitaTodas();
  LlenaTablero(Grid(), 60, 30);
  Grid().MuevePrimera();
  forma_.Muestra();
  QApplication::processEvents();
  EXPECT_EQ(vertical->value(), 0);
  EXPECT_EQ(horizontal->value(), 0);
}

TEST_F(TableroPrueba, SinCeldasDiceComoHallarlas) {
  const auto escrito = [this] {
    QApplication::processEvents();
    const QImage celdas = Vista().tabla(2)->viewport()->grab().toImage();
    for (int y = 0; y < celdas.height(); ++y) {
      for (int x = 0; x < celdas.width(); ++x) {
        if (celdas.pixelColor(x, y) != vista::Colores().superficie) return true;
      }
    }
    return false;
  };
  Grid().QuitaTodas();
  EXPECT_TRUE(escrito());
  LlenaTablero(Grid(), 60, 0);
  EXPECT_TRUE(escrito());
}

TEST_F(TableroPrueba, ArrastrarPoneATodasElEstadoDeLaPrimera) {
  Clic(2, 4);
  QWidget* tabla = Vista().tabla(3)->viewport();
  const auto en = [&](int columna) { return tabla->mapFrom(Vista().widget(), Vista().ZonaCelda(2, columna).center()); };
  QTest::mousePress(tabla, Qt::LeftButton, Qt::NoModifier, en(2));
  for (const int c : {3, 6}) {  // a fast mouse
    QMouseEvent mueve(QEvent::MouseMove, QPointF(en(c)), QPointF(tabla->mapToGlobal(en(c))), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tabla, &mueve);
  }
  QTest::mouseRelease(tabla, Qt::LeftButton, Qt::NoModifier, en(6));
  EXPECT_EQ(Marcas(Grid(), 2).substr(0, 6), "xxxxx.");
}

TEST_F(TableroPrueba, ClaveYNombreNoSeMuevenYUnaMarcaPintaSuCeldaSola) {
  const QRect antes = Vista().ZonaCelda(0, 1);
  Clic(0, 31);
  EXPECT_EQ(Vista().ZonaCelda(0, 1).left(), antes.left());
  const QRect celda = Vista().ZonaCelda(0, 31);
  EXPECT_TRUE(Vista().widget()->rect().contains(celda.center()));
  const QImage imagen = Vista().widget()->grab().toImage();
  EXPECT_EQ(imagen.pixelColor(celda.left() + 8, celda.top() + 5).name(), vista::TonoEstado(0x008000).name());
  // The 16 ms of a frame, with room for a busy machine.
  QElapsedTimer reloj;
  reloj.start();
  constexpr int kVueltas = 20;
  for (int i = 0; i < kVueltas; ++i) {
    Grid().ClicCelda(0, 30 + i % 2);
    QApplication::processEvents();
  }
  EXPECT_LT(reloj.elapsed() / kVueltas, 100);
}

}  // namespace
}  // namespace pruebas
