// Binding of each kind of control, both ways: what the user does reaches the control, what the control holds is shown.
#include <gtest/gtest.h>

#include <QTimer>

#include <QImage>
#include <QScreen>
#include <QToolTip>

#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/manos_qt.h"
#include "platform/com/error.h"
#include "tests/desktop/forma_prueba.h"

namespace pruebas {
namespace {

using com::FechaDe;

TEST(VistaLookupPrueba, TecleaEnElControlYMuestraLoQueElControlHaceDelTexto) {
  EnPantalla p;
  int cambios = 0, confirmaciones = 0;
  p.forma.txtClave.Change = [&] { ++cambios; };
  p.forma.txtClave.Enter = [&] { ++confirmaciones; };
  auto* campo = p.widget<QLineEdit>(p.forma.txtClave);
  campo->setFocus();
  QTest::keyClicks(campo, QStringLiteral("ab12"));
  EXPECT_EQ(p.forma.txtClave.text(), "AB12");
  EXPECT_EQ(campo->text(), QStringLiteral("AB12"));
  EXPECT_EQ(cambios, 4);
  QTest::keyClick(campo, Qt::Key_Return);
  EXPECT_EQ(confirmaciones, 1);
  EXPECT_EQ(p.forma.foco(), &p.forma.txtNombre) << "Enter moves on";

  p.forma.txtClave.text("xyz");
  EXPECT_EQ(campo->text(), QStringLiteral("xyz"));
  p.forma.txtClave.passwordChar("*");
  EXPECT_EQ(campo->echoMode(), QLineEdit::Password);
  p.forma.txtClave.enabled(false);
  EXPECT_FALSE(campo->isEnabled());
}

TEST(VistaLookupPrueba, LosCamposDeSoloMuestraNoAceptanTecleoYDanFormatoALosImportes) {
  EnPantalla p;
  auto* total = p.widget<QLineEdit>(p.forma.txtTotal);
  p.forma.txtTotal.formato("$#,##0.00");
  p.forma.txtTotal.valor(1234.5);
  EXPECT_EQ(total->text(), QStringLiteral("$1,234.50"));
  QTest::keyClicks(total, QStringLiteral("9"));
  EXPECT_EQ(p.forma.txtTotal.text(), "1234.5");
}

TEST(VistaLookupPrueba, F2BuscaYConfirmaLoElegido) {
  EnPantalla p;
  std::vector<std::string> preguntas;
  p.escritorio.contexto().busca = [&](const controles::LookupField& campo, const QString&) {
    preguntas.push_back(campo.diseno().idconsulta);
    return std::string("0007");
  };
  int confirmaciones = 0;
  p.forma.txtClave.Enter = [&] { ++confirmaciones; };
  auto* campo = p.widget<QLineEdit>(p.forma.txtClave);
  campo->setFocus();
  QTest::keyClick(campo, Qt::Key_F2);
  EXPECT_EQ(preguntas, std::vector<std::string>{"CLIENTE"});
  EXPECT_EQ(p.forma.txtClave.text(), "0007");
  EXPECT_EQ(confirmaciones, 1);
}

TEST(LeeFechaPrueba, EntiendeComoEscribenLosRecepcionistas) {
  const com::Fecha base = FechaDe(2026, 12, 20);
  const std::pair<const char*, com::Fecha> casos[] = {
      {"15/03/2026", FechaDe(2026, 3, 15)}, {"5-3-26", FechaDe(2026, 3, 5)},    {"15032026", FechaDe(2026, 3, 15)},
      {"3/1", FechaDe(2027, 1, 3)},         {"24", FechaDe(2026, 12, 24)},      {"+3", FechaDe(2026, 12, 23)},
      {"-20", FechaDe(2026, 11, 30)},       {" 1/2/2027 ", FechaDe(2027, 2, 1)}};
  for (const auto& [texto, esperada] : casos) {
    const auto leida = vista::LeeFecha(QString::fromUtf8(texto), base);
    ASSERT_TRUE(leida) << texto;
    EXPECT_EQ(com::AIso(*leida), com::AIso(esperada)) << texto;
  }
  for (const char* malo : {"", "31/02/2026", "2026", "hoy", "1/13", "99"}) {
    EXPECT_FALSE(vista::LeeFecha(QString::fromUtf8(malo), base)) << malo;
  }
}

TEST(VistaFechaPrueba, EntregaLaFechaUnaVezAlSalirYRetieneLaQueNoSeLee) {
  EnPantalla p;
  int fijadas = 0;
  p.forma.dpFecha.AlFijar = [&] { ++fijadas; };
  auto* campo = p.widget<QLineEdit>(p.forma.dpFecha);
  p.forma.dpFecha.valor(FechaDe(2026, 3, 9));
  EXPECT_EQ(campo->text(), QStringLiteral("09/03/2026"));

  p.forma.Enfoca(p.forma.dpFecha);
  campo->selectAll();
  QTest::keyClicks(campo, QStringLiteral("15/3"));
  EXPECT_EQ(fijadas, 0) << "half typed";
  QTest::keyClick(campo, Qt::Key_Tab);
  EXPECT_EQ(fijadas, 1);
  EXPECT_EQ(com::AIso(p.forma.dpFecha.valor()), "2026-03-15");
  EXPECT_EQ(p.forma.foco(), &p.forma.txtNotas);

  p.forma.Enfoca(p.forma.dpFecha);
  QTest::keyClick(campo, Qt::Key_Up);
  QTest::keyClick(campo, Qt::Key_Up);
  QTest::keyClick(campo, Qt::Key_Return);
  EXPECT_EQ(com::AIso(p.forma.dpFecha.valor()), "2026-03-17");
  EXPECT_EQ(fijadas, 2);

  p.forma.Enfoca(p.forma.dpFecha);
  campo->selectAll();
  QTest::keyClicks(campo, QStringLiteral("40/40"));
  QTest::keyClick(campo, Qt::Key_Tab);
  EXPECT_EQ(p.forma.foco(), &p.forma.dpFecha);
  EXPECT_EQ(campo->text(), QStringLiteral("40/40")) << "to be corrected, or left by Esc";
  QTest::keyClick(campo, Qt::Key_Escape);
  EXPECT_EQ(campo->text(), QStringLiteral("17/03/2026"));
  EXPECT_EQ(com::AIso(p.forma.dpFecha.valor()), "2026-03-17");
  EXPECT_EQ(fijadas, 2);
}

// Why it stays is to be read once the button is let go, quickly or not.
TEST(VistaFechaPrueba, LaQueNoSeLeeDicePorQueTambienAlDejarlaConElRaton) {
  EnPantalla p;
  auto* campo = p.widget<QLineEdit>(p.forma.dpFecha);
  auto* otro = p.widget<QLineEdit>(p.forma.txtClave);
  p.forma.dpFecha.valor(FechaDe(2026, 3, 9));
  p.forma.Enfoca(p.forma.dpFecha);
  campo->selectAll();
  QTest::keyClicks(campo, QStringLiteral("40/40"));
  for (const int sostiene : {0, 50}) {
    QTest::mousePress(otro, Qt::LeftButton);
    if (sostiene > 0) QTest::qWait(sostiene);
    QTest::mouseRelease(otro, Qt::LeftButton);
    QTest::qWait(50);
    EXPECT_TRUE(QToolTip::isVisible()) << sostiene;
    EXPECT_EQ(QToolTip::text(), QStringLiteral("«40/40» no es una fecha. Escriba día/mes/año, o pulse Esc para dejar "
                                               "09/03/2026"))
        << sostiene;
    EXPECT_EQ(campo->text(), QStringLiteral("40/40"));
    EXPECT_EQ(p.forma.foco(), &p.forma.dpFecha);
    QToolTip::hideText();
    QTest::qWait(400);  // a tip goes slowly
  }
  QTest::keyClick(campo, Qt::Key_Escape);
  QTest::mouseClick(otro, Qt::LeftButton);
  QTest::qWait(50);
  EXPECT_FALSE(QToolTip::isVisible()) << "nothing is refused";
  EXPECT_EQ(p.forma.foco(), &p.forma.txtClave);
}

TEST(VistaFechaPrueba, SuReglaPuedeRetenerElFocoYLasTeclasDeFuncionLaEntreganAntes) {
  EnPantalla p;
  auto* campo = p.widget<QLineEdit>(p.forma.dpFecha);
  p.forma.dpFecha.valor(FechaDe(2026, 3, 9));
  std::string alPulsar;
  p.forma.KeyUp = [&](int, int) { alPulsar = com::AIso(p.forma.dpFecha.valor()); };
  p.forma.Enfoca(p.forma.dpFecha);
  QTest::keyClicks(campo, QStringLiteral("12/3"));
  QTest::keyClick(campo, Qt::Key_F6);
  EXPECT_EQ(alPulsar, "2026-03-12");

  p.forma.dpFecha.AlFijar = [&] { p.forma.Enfoca(p.forma.dpFecha); };
  campo->selectAll();
  QTest::keyClicks(campo, QStringLiteral("1/3"));
  QTest::keyClick(campo, Qt::Key_Return);
  EXPECT_EQ(p.forma.foco(), &p.forma.dpFecha);
  EXPECT_EQ(campo->selectedText(), QStringLiteral("01/03/2026")) << "typed over";
}

TEST(VistaFechaPrueba, ElCalendarioFijaElDiaYUnCampoCerradoNoSeEscribe) {
  EnPantalla p;
  p.forma.dpFecha.valor(FechaDe(2026, 3, 9));
  p.forma.Enfoca(p.forma.dpFecha);
  QTest::keyClick(p.widget<QLineEdit>(p.forma.dpFecha), Qt::Key_F4);
  QWidget* calendario = QApplication::activePopupWidget();
  ASSERT_NE(calendario, nullptr);
  QTest::keyClick(calendario->focusWidget(), Qt::Key_Right);
  QTest::keyClick(calendario->focusWidget(), Qt::Key_Return);
  EXPECT_EQ(com::AIso(p.forma.dpFecha.valor()), "2026-03-10");
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);

  p.forma.dpFecha.editable(false);
  auto* campo = p.widget<QLineEdit>(p.forma.dpFecha);
  QTest::keyClicks(campo, QStringLiteral("1"));
  QTest::keyClick(campo, Qt::Key_Up);
  QTest::keyClick(campo, Qt::Key_F4);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(com::AIso(p.forma.dpFecha.valor()), "2026-03-10");
}

TEST(VistaFechaPrueba, ElCalendarioCabeEnLaPantalla) {
  EnPantalla p;
  const QRect zona = p.ventana().screen()->availableGeometry();
  auto* campo = p.widget<QLineEdit>(p.forma.dpFecha);
  p.forma.Enfoca(p.forma.dpFecha);
  const QPoint abajo = campo->mapTo(&p.ventana(), QPoint(campo->width(), campo->height()));
  for (const QPoint& esquina : {zona.topLeft(), zona.bottomRight() - abajo}) {
    p.ventana().move(esquina);
    QTest::qWait(50);
    QTest::keyClick(campo, Qt::Key_F4);
    QWidget* calendario = QApplication::activePopupWidget();
    ASSERT_NE(calendario, nullptr);
    const QRect ocupa = calendario->geometry();
    EXPECT_TRUE(zona.contains(ocupa)) << ocupa.x() << ' ' << ocupa.y() << ' ' << ocupa.width() << 'x' << ocupa.height();
    EXPECT_FALSE(ocupa.intersects(QRect(campo->mapToGlobal(QPoint()), campo->size()))) << "the field stays in sight";
    calendario->close();
  }
}

TEST(VistaNotasPrueba, TextoYCursorPorCaracteresEnLosDosSentidos) {
  EnPantalla p;
  auto* notas = p.widget<QPlainTextEdit>(p.forma.txtNotas);
  notas->setFocus();
  for (const QChar c : QStringLiteral("piñata")) vista::EnviaTecla(notas, Qt::Key_unknown, Qt::NoModifier, c);
  QTest::keyClick(notas, Qt::Key_Return);
  EXPECT_EQ(p.forma.txtNotas.text(), "piñata\n");
  EXPECT_EQ(p.forma.txtNotas.cursor(), 7);
  p.forma.txtNotas.text("🛏 doble");
  p.forma.txtNotas.cursor(2);
  EXPECT_EQ(notas->toPlainText(), QString::fromUtf8("🛏 doble"));
  EXPECT_EQ(notas->textCursor().position(), 3) << "the first character takes two UTF-16 units";
  int tecla = 0;
  p.forma.txtNotas.KeyDown = [&](int codigo, int) { tecla = codigo; };
  QTest::keyClick(notas, Qt::Key_F2);
  EXPECT_EQ(tecla, controles::tecla::kF2);
  QTest::keyClick(notas, Qt::Key_Tab);
  EXPECT_EQ(p.forma.foco(), &p.forma.cmdBoton);
}

TEST(VistaBotonesPrueba, ClicYTecladoPulsanYLasOpcionesSeExcluyen) {
  EnPantalla p;
  int pulsado = 0;
  p.forma.cmdBoton.Click = [&] { ++pulsado; };
  auto* boton = p.widget<QPushButton>(p.forma.cmdBoton);
  QTest::mouseClick(boton, Qt::LeftButton);
  EXPECT_EQ(p.forma.foco(), &p.forma.cmdBoton);
  QTest::keyClick(boton, Qt::Key_Space);
  QTest::keyClick(boton, Qt::Key_Return);
  EXPECT_EQ(pulsado, 3);

  auto* casilla = p.widget<QCheckBox>(p.forma.chkCasilla);
  QTest::mouseClick(casilla, Qt::LeftButton, Qt::NoModifier, QPoint(8, casilla->height() / 2));
  EXPECT_TRUE(p.forma.chkCasilla.value());
  p.forma.chkCasilla.value(false);
  EXPECT_FALSE(casilla->isChecked());

  auto* dos = p.widget<QRadioButton>(p.forma.opDos);
  QTest::mouseClick(dos, Qt::LeftButton, Qt::NoModifier, QPoint(8, dos->height() / 2));
  EXPECT_TRUE(p.forma.opDos.value());
  EXPECT_FALSE(p.forma.opUno.value());
  EXPECT_FALSE(p.widget<QRadioButton>(p.forma.opUno)->isChecked());
  // A handler that refuses the choice puts the other one back.
  p.forma.opUno.Click = [&] { p.forma.opDos.Selecciona(); };
  auto* uno = p.widget<QRadioButton>(p.forma.opUno);
  QTest::keyClick(dos, Qt::Key_Left);
  EXPECT_TRUE(p.forma.opDos.value());
  EXPECT_TRUE(dos->isChecked());
  EXPECT_FALSE(uno->isChecked());
}

TEST(VistaBarraPrueba, LosBotonesSiguenALaBarraYLosAtajosPulsan) {
  EnPantalla p;
  auto& barra = dynamic_cast<vista::VistaBarra&>(*p.ventana().vista(p.forma.Controles));
  QToolButton* nuevo = barra.boton(controles::Accion::Nuevo);
  QToolButton* acepta = barra.boton(controles::Accion::Aceptar);
  EXPECT_FALSE(nuevo->isEnabled());
  p.forma.Controles.PermiteAccion6(true);
  EXPECT_TRUE(nuevo->isEnabled());
  EXPECT_FALSE(acepta->isEnabled());
  int nuevos = 0, aceptados = 0;
  p.forma.Controles.Nuevo = [&] { ++nuevos; };
  p.forma.Controles.Aceptar = [&](bool nueva) { aceptados += nueva ? 1 : 100; };
  QTest::mouseClick(nuevo, Qt::LeftButton);
  EXPECT_EQ(nuevos, 1);
  EXPECT_TRUE(acepta->isEnabled());
  QTest::keyClick(p.widget<QLineEdit>(p.forma.txtClave), Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(aceptados, 1);
}

TEST(VistaBarraPrueba, UnaFechaAMediasSeEntregaAntesDeLaAccion) {
  EnPantalla p;
  p.forma.Controles.PermiteAccion6(true);
  p.forma.Controles.Pulsa(controles::Accion::Nuevo);
  p.forma.dpFecha.valor(FechaDe(2026, 3, 9));
  p.forma.Enfoca(p.forma.dpFecha);
  auto* campo = p.widget<QLineEdit>(p.forma.dpFecha);
  campo->selectAll();
  QTest::keyClicks(campo, QStringLiteral("11/03/2026"));
  std::string alPulsar;
  p.forma.Controles.Aceptar = [&](bool) { alPulsar = com::AIso(p.forma.dpFecha.valor()); };
  auto& barra = dynamic_cast<vista::VistaBarra&>(*p.ventana().vista(p.forma.Controles));
  QTest::mouseClick(barra.boton(controles::Accion::Aceptar), Qt::LeftButton);
  EXPECT_EQ(alPulsar, "2026-03-11");

  // What leaves the capture does not wait for it.
  p.forma.Enfoca(p.forma.dpFecha);
  QTest::keyClicks(campo, QStringLiteral("hola"));
  QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_S); });
  bool limpio = false;
  p.forma.Controles.Limpiar = [&] { limpio = true; };
  QTest::mouseClick(barra.boton(controles::Accion::Limpiar), Qt::LeftButton);
  EXPECT_TRUE(limpio);
  EXPECT_EQ(campo->text(), QStringLiteral("11/03/2026"));
}

TEST(VistaEtiquetaPrueba, LaMuestraTieneElColorDelEstado) {
  EnPantalla p;
  p.forma.muestraOcupado.color(0x0000FF);
  const QImage imagen = p.ventana().vista(p.forma.muestraOcupado)->widget()->grab().toImage();
  const QColor tono = vista::TonoEstado(0x0000FF);
  EXPECT_EQ(imagen.pixelColor(imagen.width() - 6, 4).name(), tono.name());
  EXPECT_LT(std::abs(tono.hslHue()), 10) << "still red";
}

TEST(FocoPrueba, FormaYTecladoVanJuntos) {
  EnPantalla p;
  p.forma.Enfoca(p.forma.txtNotas);
  EXPECT_TRUE(p.widget<QPlainTextEdit>(p.forma.txtNotas)->hasFocus());
  QTest::mouseClick(p.widget<QLineEdit>(p.forma.txtClave), Qt::LeftButton);
  EXPECT_EQ(p.forma.foco(), &p.forma.txtClave);
  // A control that is switched off under the clerk's hands hands the keyboard on.
  p.forma.txtClave.enabled(false);
  EXPECT_TRUE(QTest::qWaitFor([&] { return p.forma.foco() == &p.forma.txtNombre; }));
}

TEST(FallasPrueba, LoQueNadieAtrapaSeAvisaUnaVezYNadaSePierde) {
  EnPantalla p;
  std::vector<QString> avisos;
  vista::FijaAvisadorDeFallas([&](const QString& texto) { avisos.push_back(texto); });
  p.forma.cmdBoton.Click = [] { throw com::Error(com::error::kBaseDatos, "la base no responde"); };
  p.forma.txtClave.text("abc");
  QTest::mouseClick(p.widget<QPushButton>(p.forma.cmdBoton), Qt::LeftButton);
  ASSERT_EQ(avisos.size(), 1U);
  EXPECT_EQ(avisos.front(), QStringLiteral("la base no responde"));
  EXPECT_EQ(p.forma.txtClave.text(), "abc");
  EXPECT_TRUE(p.ventana().isVisible());
  // A program that sends events gets the failure itself.
  EXPECT_THROW(vista::ConFallas([&] { QTest::mouseClick(p.widget<QPushButton>(p.forma.cmdBoton), Qt::LeftButton); }),
               com::Error);
  EXPECT_EQ(avisos.size(), 1U);
}

}  // namespace
}  // namespace pruebas
