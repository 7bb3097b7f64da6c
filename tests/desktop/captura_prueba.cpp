// What is captured survives its program, and room lines a change of nights, at the windows.
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QToolTip>

#include "desktop/cuida_captura.h"
#include "schema/esquema.h"
#include "tests/desktop/recorrido.h"

namespace pruebas {
namespace {

class CapturaPrueba : public RecorridoPrueba {
 protected:
  static constexpr int kNunca = 3600000;  // ms: the test says when
  std::unique_ptr<vista::CuidaCaptura> Cuida(const char* carpeta = "") {
    return std::make_unique<vista::CuidaCaptura>(escritorio_, anfitrion_, mostrador_.quitados(),
                                                 carpeta_.path().toStdString() + carpeta, kNunca);
  }
  QStringList Archivos(const char* cuales) const { return QDir(carpeta_.path()).entryList({QLatin1String(cuales)}); }
  QStringList Borradores() const { return Archivos("*.borrador"); }
  // Gives the draft that is there another version of the database's definition.
  void CambiaVersion(int version) {
    QFile archivo(carpeta_.filePath(Borradores().front()));
    ASSERT_TRUE(archivo.open(QIODevice::ReadWrite));
    QByteArrayList lineas = archivo.readAll().split('\n');
    ASSERT_EQ(lineas[2], QByteArray::number(esquema::kVersion));
    lineas[2] = QByteArray::number(version);
    quint64 suma = 14695981039346656037ULL;
    for (const char c : lineas.mid(2).join('\n')) suma = (suma ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
    lineas[1] = QByteArray::number(suma, 16).rightJustified(16, '0');
    ASSERT_TRUE(archivo.resize(0) && archivo.seek(0) && archivo.write(lineas.join('\n')) > 0);
  }
  std::string Texto(const char* campo) { return Control<controles::LookupField>(Forma(), campo).text(); }
  controles::Grid& Renglones() { return Control<controles::Grid>(Forma(), "ssReservaciones"); }
  void Limpia() {
    EsperaMensaje("en captura", "Sí");
    Tecla(Qt::Key_L, Qt::ControlModifier);
  }

  QTemporaryDir carpeta_;
};

// The program that had it is gone; the next one offers it, and its draft goes with Accept.
TEST_F(CapturaPrueba, LoCapturadoSeOfreceVuelveYSeAcepta) {
  auto cuida = Cuida();
  CapturaEncabezado();
  Espera("frmDisponibilidad", [this](QWidget& w) { MarcaDosNoches(w); });
  Tecla(Qt::Key_F6);
  CapturaPersonas("2");
  cuida->Guarda();
  EXPECT_EQ(Borradores().size(), 1);
  const std::string total = Texto("txtTotal");
  cuida.reset();
  Limpia();

  cuida = Cuida();
  EsperaMensaje("Quedó una captura sin guardar, del 09/03/2026", "Después");
  EXPECT_FALSE(cuida->Ofrece());
  EXPECT_EQ(Borradores().size(), 1);
  cuida = Cuida();
  EsperaMensaje("11/03/2026 – 14/03/2026, 1 habitación", "Sí");
  EXPECT_TRUE(cuida->Ofrece());
  EXPECT_EQ(Texto("txtHuesped"), "0000000002");
  EXPECT_EQ(Texto("txtTotal"), total);
  EXPECT_EQ(Renglones().Texto(0, "Clave"), habitacion_);
  cuida->Guarda();
  EXPECT_EQ(Borradores().size(), 1);
  EsperaMensaje("¿Desea enviar", "No");
  EsperaImpreso();
  Tecla(Qt::Key_Return, Qt::ControlModifier);
  cuida->Guarda();
  EXPECT_EQ(Borradores().size(), 0);

  // Stored just before the program died: the offer says so, and No forgets it.
  CapturaEncabezado();
  cuida->Guarda();
  cuida.reset();
  Limpia();
  cuida = Cuida();
  EsperaMensaje("la 0000000046: puede que se haya guardado", "No");
  EXPECT_FALSE(cuida->Ofrece());
  EXPECT_EQ(Borradores().size(), 0);
}

// Nothing entered, nothing kept; what cannot be edited any more stays for another time.
TEST_F(CapturaPrueba, SinCapturaNoHayBorradorYLoQueNoSePuedeSeConserva) {
  auto cuida = Cuida();
  Tecla(Qt::Key_N, Qt::ControlModifier);
  cuida->Guarda();
  EXPECT_EQ(Borradores().size(), 0);
  Tecla(Qt::Key_L, Qt::ControlModifier);
  Carga("0000000016");
  Tecla(Qt::Key_E, Qt::ControlModifier);
  Control<controles::LookupField>(Forma(), "txtReferencia").Teclea("x");
  cuida->Guarda();
  EXPECT_EQ(Borradores().size(), 1);
  cuida.reset();
  Limpia();
  Sql("UPDATE Reservacion SET Es_Cve_Estado = 'CA' WHERE Rs_Folio = '0000000016'");
  cuida = Cuida();
  EsperaMensaje("Reservación 0000000016, Francisco", "Sí");
  EsperaMensaje("ya no se puede editar", "Aceptar");
  EXPECT_FALSE(cuida->Ofrece());
  EXPECT_EQ(Borradores().size(), 1);
}

// What is typed and no date yet is there again as it was typed, over the date that Esc brings back.
TEST_F(CapturaPrueba, UnaFechaAMediasVuelveComoSeTecleo) {
  auto cuida = Cuida();
  CapturaEncabezado();
  Forma().Enfoca(*Forma().Busca("dpFecha_salida"));
  Escribe("3x");
  cuida->Guarda();
  cuida.reset();
  Limpia();
  cuida = Cuida();
  EsperaMensaje("11/03/2026 – 14/03/2026", "Sí");
  EXPECT_TRUE(cuida->Ofrece());
  EXPECT_EQ(Foco(), "dpFecha_salida");
  auto& campo = dynamic_cast<QLineEdit&>(*ConFoco());
  EXPECT_EQ(campo.text(), QStringLiteral("3x"));
  Tecla(Qt::Key_Tab);
  EXPECT_EQ(Foco(), "dpFecha_salida") << "it is no date";
  Tecla(Qt::Key_Escape);
  EXPECT_EQ(campo.text(), QStringLiteral("14/03/2026"));
  cuida.reset();
  Limpia();
}

// The program dies with the editor open: its text comes back as notes, be it all that was entered. An editor that is
// left without it leaves no draft behind.
TEST_F(CapturaPrueba, LasNotasEnSuEditorVuelven) {
  auto cuida = Cuida();
  Tecla(Qt::Key_N, Qt::ControlModifier);
  Forma().Enfoca(*Forma().Busca("txtNotas"));
  Espera("notas", [&](QWidget& w) {
    cuida->Guarda();
    EXPECT_EQ(Borradores().size(), 0) << "nothing typed";
    QTest::keyClicks(w.focusWidget(), QStringLiteral("Cuna en el cuarto"));
    QTest::keyClick(w.focusWidget(), Qt::Key_Return);
    QTest::keyClicks(w.focusWidget(), QStringLiteral("y piso alto"));
    cuida->Guarda();
    EXPECT_EQ(Borradores().size(), 1);
    cuida.reset();
    EsperaMensaje("no se ha guardado", "Sí");
    QTest::keyClick(&w, Qt::Key_Escape);
  });
  Tecla(Qt::Key_F2);
  const auto& notas = Control<controles::CampoNotas>(Forma(), "txtNotas");
  EXPECT_EQ(notas.text(), "");
  Tecla(Qt::Key_L, Qt::ControlModifier);
  cuida = Cuida();
  EsperaMensaje("Reservación nueva", "Sí");
  EXPECT_TRUE(cuida->Ofrece());
  EXPECT_EQ(notas.text(), "Cuna en el cuarto\ny piso alto");
  // Typed on, and given up: the draft has the notes as they are.
  Forma().Enfoca(*Forma().Busca("txtNotas"));
  Espera("notas", [&](QWidget& w) {
    QTest::keyClicks(w.focusWidget(), QStringLiteral(" no"));
    cuida->Guarda();
    EsperaMensaje("no se ha guardado", "Sí");
    QTest::keyClick(&w, Qt::Key_Escape);
  });
  Tecla(Qt::Key_F2);
  cuida->Guarda();
  cuida.reset();
  Limpia();
  cuida = Cuida();
  EsperaMensaje("Reservación nueva", "Sí");
  EXPECT_TRUE(cuida->Ofrece());
  EXPECT_EQ(notas.text(), "Cuna en el cuarto\ny piso alto");
  Limpia();
}

// Told at once, while the clerk types on, and once; the mark is there as long as it is so.
TEST_F(CapturaPrueba, SinDondeGuardarElBorradorSeDiceEnLaVentana) {
  const QString estorbo = carpeta_.filePath(QStringLiteral("estado"));
  ASSERT_TRUE(QFile(estorbo).open(QIODevice::WriteOnly));
  auto cuida = Cuida("/estado");
  CapturaEncabezado();
  const auto& marca = *escritorio_.ventana(Forma())->findChild<QLabel*>(QStringLiteral("sin_borrador"));
  const auto escribe = [&](const char* texto) {
    Control<controles::LookupField>(Forma(), "txtReferencia").Teclea(texto);
    QToolTip::hideText();
    QTest::qWait(400);  // a tip goes slowly
    cuida->Guarda();
  };
  EXPECT_FALSE(marca.isVisible());
  escribe("a");
  EXPECT_TRUE(marca.isVisible());
  EXPECT_TRUE(QToolTip::text().contains(QStringLiteral("borrador de lo capturado"))) << QToolTip::text().toStdString();
  EXPECT_EQ(Foco(), "txtDias") << "nothing is taken out of her hands";
  escribe("b");
  EXPECT_FALSE(QToolTip::isVisible());
  EXPECT_TRUE(marca.isVisible());
  ASSERT_TRUE(QFile::remove(estorbo));
  escribe("c");
  EXPECT_FALSE(marca.isVisible());

  // A full disk: the draft of before stays, and is told why.
  const QString borrador = QDir(estorbo).filePath(QDir(estorbo).entryList({QStringLiteral("*.borrador")}).front());
  ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), borrador + QStringLiteral(".nuevo")));
  escribe("d");
  EXPECT_TRUE(marca.toolTip().endsWith(QStringLiteral("el disco está lleno"))) << marca.toolTip().toStdString();
  EXPECT_TRUE(QFile::exists(borrador));
  Limpia();
  cuida->Guarda();
  EXPECT_FALSE(marca.isVisible());
}

// Older or newer: the draft comes back whole, or stays where it is told.
TEST_F(CapturaPrueba, ElDeOtraVersionVuelveEnteroONoVuelve) {
  auto cuida = Cuida();
  const auto deja = [&](int version) {
    CapturaEncabezado();
    Espera("frmDisponibilidad", [this](QWidget& w) { MarcaDosNoches(w); });
    Tecla(Qt::Key_F6);
    CapturaPersonas("2");
    cuida->Guarda();
    cuida.reset();
    Limpia();
    CambiaVersion(version);
    cuida = Cuida();
  };
  deja(esquema::kVersion - 1);
  EsperaMensaje("otra versión del programa: vuelve entera o no vuelve", "Sí");
  EXPECT_TRUE(cuida->Ofrece());
  EXPECT_EQ(Renglones().Texto(0, "Clave") + Texto("txtHuesped"), habitacion_ + "0000000002");
  Limpia();
  cuida->Guarda();
  for (const int version : {esquema::kVersion - 1, esquema::kVersion + 1}) {
    deja(version);
    Sql("UPDATE Habitacion SET Es_Cve_Estado = 'BA' WHERE Hb_Cve_Habitacion = '" + habitacion_ + "'");
    EsperaMensaje("otra versión del programa", "Sí");
    EsperaMensaje("no existe", "Aceptar");
    EsperaMensaje("No se repuso nada; el borrador se conserva en", "Aceptar");
    EXPECT_FALSE(cuida->Ofrece());
    EXPECT_EQ(Foco(), "txtFolio");
    EXPECT_EQ(Renglones().Filas(), 0);
    EXPECT_EQ(Borradores().size(), 0);
  }
  EXPECT_EQ(Archivos("*.ilegible*").size(), 2);
}

// By the menu of the main window.
TEST_F(CapturaPrueba, LasHabitacionesQuitadasVuelvenPorElMenu) {
  mostrador_.Vigila(Forma());
  const auto menu = [this](const char* titulo) {
    for (const auto& opcion : escritorio_.contexto().menu) {
      if (opcion.titulo == QString::fromUtf8(titulo)) return opcion.abre();
    }
    ADD_FAILURE();
  };
  EsperaMensaje("No hay habitaciones que reponer", "Aceptar");
  menu("Repon&er habitaciones");
  CapturaEncabezado();
  Espera("frmDisponibilidad", [this](QWidget& w) { MarcaDosNoches(w); });
  Tecla(Qt::Key_F6);
  CapturaPersonas("2");
  Forma().Enfoca(*Forma().Busca("dpFecha_salida"));
  Enter("13/3");
  EXPECT_EQ(Renglones().Filas(), 0);
  const auto* dicho = escritorio_.ventana(Forma())->findChild<QLabel*>(QStringLiteral("aviso_precio"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return dicho->text().contains(QStringLiteral("quitó una habitación")); }))
      << dicho->text().toStdString();
  menu("Repon&er habitaciones");
  ASSERT_EQ(Renglones().Filas(), 1);
  EXPECT_TRUE(QTest::qWaitFor([&] { return dicho->text().isEmpty(); })) << dicho->text().toStdString();
  EXPECT_EQ(Renglones().Texto(0, "Clave") + Renglones().Texto(0, "FECHAF"), habitacion_ + "13/03/2026");
  EXPECT_EQ(Renglones().Texto(0, "Adultos"), "2");
}

}  // namespace
}  // namespace pruebas
