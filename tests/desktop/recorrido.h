// The front desk with real windows on the demo hotel, worked by keyboard and mouse; what comes up meanwhile is expected
// in order.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <deque>
#include <functional>
#include <map>

#include "desktop/ayuda.h"
#include "desktop/conexiones.h"
#include "desktop/dialogos.h"
#include "desktop/escritorio_qt.h"
#include "desktop/mostrador.h"
#include "desktop/vista_barra.h"
#include "desktop/vista_grid.h"
#include "guion/componente.h"
#include "host/standalone/anfitrion.h"
#include "platform/com/error.h"
#include "publico/publico.h"

namespace pruebas {

inline autonomo::Opciones HotelDemo() {
  autonomo::Opciones opciones;
  opciones.demo = true;
  opciones.ahora = com::DeIso("2026-03-09T10:00");
  return opciones;
}

class RecorridoPrueba : public testing::Test {
 protected:
  explicit RecorridoPrueba(const autonomo::Opciones& opciones = HotelDemo()) : anfitrion_(opciones) {
    anfitrion_.RegistraClases();
    controles::FijaEscritorio(&escritorio_);
    vista::ConectaAnfitrion(escritorio_, anfitrion_, mostrador_);
    componente_ = std::make_unique<guion::Componente>();
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
  // Answers a message box, which must have the text, by clicking a button.
  static void Responde(QWidget& w, const QString& texto, const QString& boton) {
    auto& caja = dynamic_cast<QMessageBox&>(w);
    EXPECT_TRUE(caja.text().contains(texto)) << caja.text().toStdString();
    for (QAbstractButton* b : caja.buttons()) {
      if (b->text().remove(QLatin1Char('&')) == boton) return QTest::mouseClick(b, Qt::LeftButton);
    }
    ADD_FAILURE() << "no button " << boton.toStdString();
    caja.close();
  }
  void EsperaMensaje(const char* texto, const char* boton) {
    Espera("mensaje", [texto = QString::fromUtf8(texto), boton = QString::fromUtf8(boton)](QWidget& w) {
      Responde(w, texto, boton);
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
    auto& grid = Control<controles::Grid>(TableroForma(), "ssDisponibilidad");
    ClicControl(TableroForma(), "opHabitacion");
    const int libre = grid.IndiceEstilo("DISPONIBLE");
    for (fila_ = 0; fila_ < grid.Filas(); ++fila_) {
      bool todas = true;
      for (int c = 2; c < grid.NumColumnas(); ++c) todas = todas && grid.estilo(fila_, c) == libre;
      if (todas) break;
    }
    ASSERT_LT(fila_, grid.Filas());
    habitacion_ = grid.Texto(fila_, "Clave");
    ClicCelda(TableroForma(), fila_, 2);
    QTest::keyClick(tablero.focusWidget(), Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(tablero.focusWidget(), Qt::Key_Return, Qt::ControlModifier);
  }

  // Clicks a cell, or a row's header (columna -1), of the screen's grid.
  void ClicCelda(controles::Formulario& forma, int fila, int columna) {
    vista::Ventana& ventana = *escritorio_.ventana(forma);
    auto& vista = dynamic_cast<vista::VistaGrid&>(*ventana.vista(*forma.Primero<controles::Grid>()));
    QWidget* donde = columna < 0 ? vista.encabezadoFilas() : vista.tabla(columna)->viewport();
    const QPoint centro = columna < 0 ? vista.ZonaEncabezado(fila).center()
                                      : donde->mapFrom(vista.widget(), vista.ZonaCelda(fila, columna).center());
    QTest::mouseClick(donde, Qt::LeftButton, Qt::NoModifier, centro);
  }
  void ClicControl(controles::Formulario& forma, const char* nombre) {
    QWidget* w = escritorio_.ventana(forma)->vista(*forma.Busca(nombre))->foco();
    QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, QPoint(8, w->height() / 2));
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
  vista::Mostrador mostrador_{escritorio_};
  std::unique_ptr<guion::Componente> componente_;
  int fila_ = -1;
  std::string habitacion_;

  // What is done with a window that comes up over the others.
  virtual void AtiendeModal(QWidget& modal) {
    if (esperados_.empty() || esperados_.front().first != modal.objectName()) {
      ADD_FAILURE() << "unexpected window " << modal.objectName().toStdString() << " while waiting for " << Esperado();
      modal.close();
      return;
    }
    EXPECT_TRUE(vista::CapitulosDelManual().contains(vista::LugarDelManual(&modal)))
        << "the window " << modal.objectName().toStdString() << " has no chapter in the manual (desktop/ayuda.cpp)";
    const Modal hace = std::move(esperados_.front().second);
    esperados_.pop_front();
    hace(modal);
  }
  // A menu or calendar that drops down.
  virtual void AtiendeEmergente(QWidget&) {}

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
    if (QWidget* emergente = QApplication::activePopupWidget()) return AtiendeEmergente(*emergente);
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || modal != QApplication::activeWindow() || modal == atendido_) return;
    QWidget* const fuera = std::exchange(atendido_, modal);
    AtiendeModal(*modal);
    atendido_ = fuera;
  }

  std::deque<std::pair<QString, Modal>> esperados_;
  QWidget* atendido_ = nullptr;
  QObject atento_;
};

}  // namespace pruebas
