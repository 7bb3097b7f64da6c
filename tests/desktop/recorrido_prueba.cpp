// Whole reservations through the real windows, by keyboard and mouse, on the demo hotel; what is stored is checked.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>

#include "desktop/dialogos.h"
#include "desktop/escritorio_qt.h"
#include "desktop/preguntas.h"
#include "desktop/programa.h"
#include "desktop/vista_barra.h"
#include "desktop/vista_grid.h"
#include "guion/componente.h"
#include "platform/com/error.h"
#include "publico/publico.h"

namespace pruebas {
namespace {

autonomo::Opciones HotelDemo() {
  autonomo::Opciones opciones;
  opciones.demo = true;
  opciones.ahora = com::DeIso("2026-03-09T10:00");
  return opciones;
}

class RecorridoPrueba : public testing::Test {
 protected:
  RecorridoPrueba() : anfitrion_(HotelDemo()) {
    anfitrion_.RegistraClases();
    controles::FijaEscritorio(&escritorio_);
    vista::ConectaAnfitrion(escritorio_, anfitrion_);
    componente_ = std::make_unique<guion::Componente>();
    escritorio_.puedePulsar = [this](controles::Accion accion) {
      return vista::PreguntaAccion(Forma(), accion, escritorio_.Frente());
    };
    componente_->Abre(anfitrion_.Padre());
    static_cast<void>(QTest::qWaitForWindowActive(escritorio_.ventana(Forma())));
    Vigila();
  }

  ~RecorridoPrueba() override {
    EXPECT_TRUE(esperados_.empty()) << "a window that was waited for never came: " << Esperado();
    componente_.reset();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    publico::Olvida();
    anfitrion_.QuitaClases();
    controles::FijaEscritorio(nullptr);
  }

  // --- what comes up while the clerk works, in order
  using Modal = std::function<void(QWidget&)>;
  void Espera(const char* nombre, Modal hace) { esperados_.emplace_back(QString::fromUtf8(nombre), std::move(hace)); }
  // Answers the next message box, which must have the text, by clicking a button.
  void EsperaMensaje(const char* texto, const char* boton) {
    Espera("mensaje", [texto = QString::fromUtf8(texto), boton = QString::fromUtf8(boton)](QWidget& w) {
      auto& caja = dynamic_cast<QMessageBox&>(w);
      EXPECT_TRUE(caja.text().contains(texto)) << caja.text().toStdString();
      for (QAbstractButton* b : caja.buttons()) {
        if (b->text().remove(QLatin1Char('&')) == boton) return QTest::mouseClick(b, Qt::LeftButton);
      }
      ADD_FAILURE() << "no button " << boton.toStdString();
      caja.close();
    });
  }
  void EsperaImpreso() {
    Espera("impreso", [](QWidget& w) { QTest::keyClick(&w, Qt::Key_Escape); });
  }

  // --- the clerk's hands
  QWidget* ConFoco() {
    // A window that comes to the front is active once the window system has said so.
    static_cast<void>(QTest::qWaitFor([this] { return QApplication::activeWindow() == escritorio_.Frente(); }));
    if (QWidget* w = QApplication::focusWidget()) return w;
    QWidget* frente = escritorio_.Frente();
    return frente->focusWidget() != nullptr ? frente->focusWidget() : frente;
  }
  void Tecla(Qt::Key tecla, Qt::KeyboardModifiers m = Qt::NoModifier) { QTest::keyClick(ConFoco(), tecla, m); }
  void Escribe(const char* texto) { QTest::keyClicks(ConFoco(), QString::fromUtf8(texto)); }
  void Enter(const char* texto) {
    Escribe(texto);
    Tecla(Qt::Key_Return);
  }

  controles::Formulario& Forma() { return componente_->formulario(); }
  controles::Formulario& TableroForma() { return componente_->tablero(); }
  template <class C>
  C& Control(controles::Formulario& forma, const char* nombre) {
    return dynamic_cast<C&>(*forma.Busca(nombre));
  }
  std::string Foco() { return Forma().foco() == nullptr ? "" : Forma().foco()->nombre(); }
  std::string Sql(const std::string& sentencia) {
    const auto rs = anfitrion_.conexion()->Directa(sentencia);
    std::string todo;
    for (; !rs->Eof(); rs->MoveNext()) {
      for (std::size_t i = 0; i < rs->Nombres().size(); ++i) {
        const com::Variant& v = rs->Fields(i).Value();
        todo += (i == 0 ? "" : "|") + (v.EsNulo()    ? std::string("NULL")
                                       : v.EsFecha() ? com::AIso(com::CDate(v))
                                                     : com::CStr(v));
      }
      todo += "\n";
    }
    return todo;
  }
  std::string Estado(const std::string& folio) {
    return Sql("SELECT Es_Cve_Estado FROM Reservacion WHERE Rs_Folio = '" + folio + "'");
  }

  // New reservation of client 1 for guest 2, cash, from 11 to 14 March: the header by keyboard alone.
  void CapturaEncabezado() {
    Tecla(Qt::Key_N, Qt::ControlModifier);
    ASSERT_EQ(Foco(), "dpFecha");
    Tecla(Qt::Key_Tab);
    Tecla(Qt::Key_Tab);
    ASSERT_EQ(Foco(), "txtCliente");
    Enter("1");
    Enter("2");
    Enter("1");
    Tecla(Qt::Key_Return);
    ASSERT_EQ(Foco(), "dpFecha_llegada");
    Enter("11/3");
    Enter("14/03/2026");
    ASSERT_EQ(Foco(), "txtDias");
    EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtDias").text(), "3");
  }

  // On the board: rooms, the first row that is free all along, its first two nights marked, accepted.
  void MarcaDosNoches(QWidget& tablero) {
    auto& ventana = dynamic_cast<vista::Ventana&>(tablero);
    auto& grid = Control<controles::Grid>(TableroForma(), "ssDisponibilidad");
    QWidget* opcion = ventana.vista(*TableroForma().Busca("opHabitacion"))->foco();
    QTest::mouseClick(opcion, Qt::LeftButton, Qt::NoModifier, QPoint(8, opcion->height() / 2));
    const int libre = grid.IndiceEstilo("DISPONIBLE");
    for (fila_ = 0; fila_ < grid.Filas(); ++fila_) {
      bool todas = true;
      for (int c = 2; c < grid.NumColumnas(); ++c) todas = todas && grid.estilo(fila_, c) == libre;
      if (todas) break;
    }
    ASSERT_LT(fila_, grid.Filas());
    habitacion_ = grid.Texto(fila_, "Clave");
    auto& vista = dynamic_cast<vista::VistaGrid&>(*ventana.vista(grid));
    const QRect zona = vista.ZonaCelda(fila_, 2);
    QWidget* tabla = vista.tabla(2)->viewport();
    QTest::mouseClick(tabla, Qt::LeftButton, Qt::NoModifier, tabla->mapFrom(vista.widget(), zona.center()));
    QTest::keyClick(vista.foco(), Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(vista.foco(), Qt::Key_Return, Qt::ControlModifier);
  }

  void CapturaPersonas(const char* adultos) {
    auto& grid = Control<controles::Grid>(Forma(), "ssReservaciones");
    for (int i = 0; i < 8 && grid.ClaveColumna() != "Adultos"; ++i) Tecla(Qt::Key_Return);
    ASSERT_EQ(grid.ClaveColumna(), "Adultos");
    Enter(adultos);
  }

  // A stored reservation of two nights; gives its folio.
  std::string Reserva() {
    CapturaEncabezado();
    Espera("frmDisponibilidad", [this](QWidget& w) { MarcaDosNoches(w); });
    Tecla(Qt::Key_F6);
    CapturaPersonas("2");
    EsperaMensaje("¿Desea enviar", "No");
    EsperaImpreso();
    Tecla(Qt::Key_Return, Qt::ControlModifier);
    std::string folio = Sql("SELECT MAX(Rs_Folio) FROM Reservacion");
    folio.pop_back();
    return folio;
  }

  void Carga(const std::string& folio) {
    ASSERT_EQ(Foco(), "txtFolio");
    Enter(std::to_string(std::stoi(folio)).c_str());
    ASSERT_EQ(Control<controles::ScreenToolbar>(Forma(), "Controles").ClaveActual(), folio);
  }

  autonomo::Anfitrion anfitrion_;
  vista::EscritorioQt escritorio_;
  std::unique_ptr<guion::Componente> componente_;
  int fila_ = -1;
  std::string habitacion_;

 private:
  std::string Esperado() const { return esperados_.empty() ? "" : esperados_.front().first.toStdString(); }

  // A new timer each time: one that is running does not fire again while its handler opens a further window.
  void Vigila() {
    QTimer::singleShot(5, &atento_, [this] {
      Vigila();
      AtiendeModal();
    });
  }

  void AtiendeModal() {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || modal != QApplication::activeWindow() || modal == atendido_) return;
    if (esperados_.empty() || esperados_.front().first != modal->objectName()) {
      ADD_FAILURE() << "unexpected window " << modal->objectName().toStdString() << " while waiting for " << Esperado();
      modal->close();
      return;
    }
    const Modal hace = std::move(esperados_.front().second);
    esperados_.pop_front();
    atendido_ = modal;
    hace(*modal);
    atendido_ = nullptr;
  }

  std::deque<std::pair<QString, Modal>> esperados_;
  QWidget* atendido_ = nullptr;
  QObject atento_;
};

TEST_F(RecorridoPrueba, UnaReservacionDeNuevoAAceptar) {
  const std::string folio = Reserva();
  EXPECT_EQ(Sql("SELECT Cl_Cve_Cliente, Rs_Huesped, Fp_Cve_Forma_Pago, Rs_Llegada, Rs_Salida, Es_Cve_Estado "
                "FROM Reservacion WHERE Rs_Folio = '" +
                folio + "'"),
            "0000000001|0000000002|0001|2026-03-11|2026-03-14|AC\n");
  EXPECT_EQ(Sql("SELECT Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin, Rsd_Adultos FROM Reservacion_Detalle "
                "WHERE Rs_Folio = '" +
                folio + "'"),
            habitacion_ + "|2026-03-11|2026-03-13|2\n");
  ASSERT_EQ(anfitrion_.Impresiones().size(), 1U);
  EXPECT_EQ(anfitrion_.Impresiones().front().clave, folio);
  EXPECT_EQ(Foco(), "txtFolio") << "the screen is clear and waits for a folio";
}

TEST_F(RecorridoPrueba, ConfirmaEditaCancelaReactivaEImprime) {
  const std::string folio = Reserva();
  Carga(folio);
  EsperaMensaje("¿Desea enviar email", "Cancelar");
  Tecla(Qt::Key_K, Qt::ControlModifier);
  EXPECT_EQ(Estado(folio), "CO\n");

  Carga(folio);
  Tecla(Qt::Key_E, Qt::ControlModifier);
  auto* referencia =
      qobject_cast<QLineEdit*>(escritorio_.ventana(Forma())->vista(*Forma().Busca("txtReferencia"))->foco());
  QTest::mouseClick(referencia, Qt::LeftButton);
  Escribe("agencia 7");
  EsperaMensaje("¿Desea enviar", "No");
  EsperaImpreso();
  auto& barra = dynamic_cast<vista::VistaBarra&>(*escritorio_.ventana(Forma())->vista(*Forma().Busca("Controles")));
  QTest::mouseClick(barra.boton(controles::Accion::Aceptar), Qt::LeftButton);
  EXPECT_EQ(Sql("SELECT Rs_Referencia FROM Reservacion WHERE Rs_Folio = '" + folio + "'"), "agencia 7\n");

  Carga(folio);
  EsperaMensaje("¿Desea cancelar la reservación", "No");
  QTest::mouseClick(barra.boton(controles::Accion::Eliminar), Qt::LeftButton);
  EXPECT_EQ(Estado(folio), "CO\n");
  EsperaMensaje("¿Desea cancelar la reservación", "Sí");
  QTest::mouseClick(barra.boton(controles::Accion::Eliminar), Qt::LeftButton);
  EXPECT_EQ(Estado(folio), "CA\n");

  Carga(folio);
  Tecla(Qt::Key_R, Qt::ControlModifier);
  EXPECT_EQ(Estado(folio), "AC\n");

  Carga(folio);
  EsperaMensaje("¿Desea envuar", "No");
  EsperaImpreso();
  Tecla(Qt::Key_P, Qt::ControlModifier);
  EXPECT_EQ(anfitrion_.Impresiones().size(), 3U);

  Espera("registro", [](QWidget& w) { QTest::keyClick(&w, Qt::Key_Escape); });
  Tecla(Qt::Key_I, Qt::ControlModifier);
  EXPECT_EQ(anfitrion_.Vistos().size(), 1U);
}

TEST_F(RecorridoPrueba, CerrarElTableroEsCancelarlo) {
  CapturaEncabezado();
  Espera("frmDisponibilidad", [](QWidget& w) {
    const auto* filtro = qobject_cast<QLineEdit*>(w.focusWidget());
    ASSERT_NE(filtro, nullptr);
    EXPECT_EQ(filtro->selectedText(), "%") << "a code typed at once replaces it";
    w.close();
  });
  Tecla(Qt::Key_F6);
  EXPECT_FALSE(TableroForma().visible());
  EXPECT_EQ(Foco(), "ssReservaciones");
  EXPECT_EQ(Control<controles::Grid>(Forma(), "ssReservaciones").Filas(), 0);
  // Without a mark nothing is accepted; the board stays and Esc leaves it.
  Espera("frmDisponibilidad", [this](QWidget& w) {
    EsperaMensaje("Debe seleccionar al menos una habitación", "Aceptar");
    QTest::keyClick(w.focusWidget(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(TableroForma().visible());
    QTest::keyClick(w.focusWidget(), Qt::Key_Escape);
  });
  Tecla(Qt::Key_F6);
  EXPECT_FALSE(TableroForma().visible());
}

TEST_F(RecorridoPrueba, CerrarEnPlenaCapturaPregunta) {
  CapturaEncabezado();
  QWidget* ventana = escritorio_.ventana(Forma());
  EsperaMensaje("¿Desea salir y descartarla?", "No");
  ventana->close();
  EXPECT_TRUE(Forma().visible());
  EsperaMensaje("¿Desea salir y descartarla?", "No");
  Tecla(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_TRUE(Forma().visible()) << "the toolbar's Close asks like the window's";
  EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtNCliente").text().empty(), false);
  EsperaMensaje("¿Desea salir y descartarla?", "Sí");
  bool termino = false;
  escritorio_.alTerminar = [&] { termino = true; };
  ventana->close();
  EXPECT_FALSE(Forma().cargado());
  EXPECT_TRUE(termino);
}

TEST_F(RecorridoPrueba, NadaCapturadoSeTiraSinPreguntar) {
  CapturaEncabezado();
  auto& grid = Control<controles::Grid>(Forma(), "ssReservaciones");
  Espera("frmDisponibilidad", [this](QWidget& w) { MarcaDosNoches(w); });
  Tecla(Qt::Key_F6);
  for (const auto tecla : {Qt::Key_N, Qt::Key_L}) {
    EsperaMensaje("¿Desea descartarla?", "No");
    Tecla(tecla, Qt::ControlModifier);
    EXPECT_EQ(grid.Filas(), 1);
  }
  // A cell that is wrong does not stand in the way of leaving.
  grid.VaA(0, grid.IndiceColumna("Clave"));
  Escribe("9x");
  EsperaMensaje("¿Desea descartarla?", "Sí");
  Tecla(Qt::Key_L, Qt::ControlModifier);
  EXPECT_EQ(grid.Filas(), 0);
  EXPECT_FALSE(Control<controles::ScreenToolbar>(Forma(), "Controles").EnEdicion());
}

TEST_F(RecorridoPrueba, UnaReservacionQueSoloSeMuestraNoSeCambia) {
  const std::string folio = Reserva();
  Carga(folio);
  auto& grid = Control<controles::Grid>(Forma(), "ssReservaciones");
  const std::string total = grid.Texto(0, "Total");
  Espera("frmDisponibilidad", [this](QWidget& w) {
    EsperaMensaje("sólo de consulta", "Aceptar");
    MarcaDosNoches(w);
    EXPECT_TRUE(TableroForma().visible());
    QTest::keyClick(w.focusWidget(), Qt::Key_Escape);
  });
  Tecla(Qt::Key_F6);
  EXPECT_EQ(grid.Texto(0, "Total"), total);
  Espera("notas", [](QWidget& w) {
    QTest::keyClicks(w.focusWidget(), QStringLiteral("hola"));
    QTest::keyClick(w.focusWidget(), Qt::Key_Return, Qt::ControlModifier);
  });
  Control<controles::Boton>(Forma(), "cmdNotas").Pulsa();
  EXPECT_EQ(Control<controles::CampoNotas>(Forma(), "txtNotas").text(), "");
}

TEST_F(RecorridoPrueba, UnaClaveSinConfirmarSeBuscaYUnaQueNoExisteLoDice) {
  Tecla(Qt::Key_N, Qt::ControlModifier);
  auto& huesped = Control<controles::LookupField>(Forma(), "txtHuesped");
  Forma().Enfoca(huesped);
  Escribe("5");
  EsperaMensaje("forma de pago", "Aceptar");
  Tecla(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_FALSE(Control<controles::LookupField>(Forma(), "txtNHuesped").text().empty());

  Forma().Enfoca(huesped);
  Enter("9999");
  const auto* nombre =
      qobject_cast<QLineEdit*>(escritorio_.ventana(Forma())->vista(*Forma().Busca("txtNHuesped"))->foco());
  EXPECT_EQ(nombre->placeholderText(), QStringLiteral("No existe"));
  Forma().Enfoca(huesped);
  Enter("5");
  EXPECT_EQ(nombre->placeholderText(), QString());
  Forma().Enfoca(huesped);
  Espera("cliente", [](QWidget& w) { QTest::keyClick(&w, Qt::Key_Escape); });
  Tecla(Qt::Key_Return, Qt::AltModifier);
}

TEST_F(RecorridoPrueba, PasarPorLasFechasNoCambiaElPrecioYSePuedeVolver) {
  CapturaEncabezado();
  Espera("frmDisponibilidad", [this](QWidget& w) { MarcaDosNoches(w); });
  Tecla(Qt::Key_F6);
  CapturaPersonas("2");
  auto& grid = Control<controles::Grid>(Forma(), "ssReservaciones");
  grid.VaA(0, grid.IndiceColumna("Precio"));
  Enter("900");
  const std::string total = grid.Texto(0, "Total");
  grid.VaA(0, grid.IndiceColumna("Nombre"));
  for (const char* fecha : {"FECHAI", "FECHAF"}) {
    Tecla(Qt::Key_Tab);
    EXPECT_EQ(grid.ClaveColumna(), fecha);
    EXPECT_EQ(Foco(), "dpFechaGrid");
  }
  Tecla(Qt::Key_Return);
  EXPECT_EQ(grid.ClaveColumna(), "Adultos");
  EXPECT_EQ(grid.Texto(0, "Total"), total);
  Tecla(Qt::Key_Tab, Qt::ShiftModifier);
  EXPECT_EQ(grid.ClaveColumna(), "FECHAF");
  Tecla(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(grid.ClaveColumna(), "FECHAI");
  EXPECT_EQ(grid.Texto(0, "Total"), total);
}

TEST_F(RecorridoPrueba, LaLupaEncuentraPorNombreSinAcentos) {
  Tecla(Qt::Key_N, Qt::ControlModifier);
  Tecla(Qt::Key_Tab);
  Tecla(Qt::Key_Tab);
  Espera("busqueda", [](QWidget& w) {
    QTest::keyClicks(w.focusWidget(), QStringLiteral("jose mart"));
    QTest::keyClick(w.focusWidget(), Qt::Key_Return);
  });
  Tecla(Qt::Key_F2);
  EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtCliente").text(), "0000000002");
  EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtNCliente").text(), "José Luis Martínez García");
  EXPECT_EQ(Foco(), "txtHuesped");
}

// Accepted while the rate's field still holds what was typed.
TEST_F(RecorridoPrueba, ARateFarFromTheHotelsIsAskedAboutBeforeItIsAccepted) {
  CapturaEncabezado();
  auto& cambio = Control<controles::LookupField>(Forma(), "txtTipoCambio");
  Forma().Enfoca(Control<controles::LookupField>(Forma(), "txtMoneda"));
  Enter("USD");
  const std::string vigente = cambio.text();
  ASSERT_EQ(Foco(), "txtTipoCambio");
  Escribe("100000");
  EsperaMensaje(("El tipo de cambio de USD que se va a guardar es 100000; el del hotel es " + vigente).c_str(), "No");
  Tecla(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(Foco(), "txtTipoCambio");
  EXPECT_TRUE(Control<controles::ScreenToolbar>(Forma(), "Controles").EnEdicion());
  // Within a tenth nothing is asked: the screen's own checks answer.
  cambio.Teclea(com::CStr(com::Variant(com::CDbl(vigente) * 1.05)));
  EsperaMensaje("Debe especificar al menos una habitación", "Aceptar");
  Tecla(Qt::Key_Return, Qt::ControlModifier);
}

TEST_F(RecorridoPrueba, AStayOfCenturiesIsToldAndNotShown) {
  CapturaEncabezado();
  auto& salida = Control<controles::DateField>(Forma(), "dpFecha_salida");
  Forma().Enfoca(salida);
  Escribe("31/12/9999");
  EsperaMensaje("noches pasa del máximo de 366", "Aceptar");
  Tecla(Qt::Key_Tab);
  EXPECT_EQ(salida.text(), "31/12/9999");
  EsperaMensaje("noches pasa del máximo de 366", "Aceptar");
  Tecla(Qt::Key_F6);
  Forma().Enfoca(salida);
  Escribe("14/03/2026");
  Tecla(Qt::Key_Tab);
  EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtDias").text(), "3");
}

}  // namespace
}  // namespace pruebas
