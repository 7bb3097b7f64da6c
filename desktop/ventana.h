// The window of a screen: a view for each control at the control's place, keys and focus handed to the form.
#pragma once

#include <QWidget>
#include <map>
#include <memory>
#include <vector>

#include "desktop/vista.h"
#include "platform/controls/barra.h"
#include "platform/controls/formulario.h"

namespace vista {

class Puntero;

class Ventana : public QWidget {
  Q_OBJECT
 public:
  // padre: window that a dialog belongs to; null for the main window.
  Ventana(controles::Formulario& formulario, const Contexto& contexto, QWidget* padre = nullptr);
  ~Ventana() override;

  controles::Formulario& formulario() const { return formulario_; }
  // Null for a control without a view.
  Vista* vista(const controles::Control& control) const;
  // Brings every widget in line with its control.
  void Refresca();
  // Gives the keyboard to the form's active control.
  void SigueFoco();
  // Ends what the user has begun and the form does not know yet: a date half typed, a cell being edited. False when the
  // screen holds the user there. destino: control that the user turns to; null for none.
  bool TerminaEdicion(const controles::Control* destino);
  // Inner size in exactly these twips, whatever the pixels make of it.
  void FijaTamano(int ancho, int alto);

  // Input that is pending elsewhere than in the control.
  bool HayPendiente(const controles::Control& destino) const;
  // The user turns to the view's control: what is pending elsewhere is handed over, then the form hears of it. False
  // when the screen keeps the user somewhere else.
  bool Entra(Vista& vista);
  // Forgets what the user has begun.
  void Descarta();
  // Presses a button of the toolbar as the user does. False when it is not offered, or was kept from acting.
  bool Pulsa(controles::Accion accion);
  // The view that a widget is part of; null for the window's own ground.
  Vista* VistaBajo(const QWidget& widget) const;
  // The form tells the window of its changes no more: another window may take its place.
  void Suelta();

  // The user closes the window; whoever shows it decides what that means.
  std::function<void()> alCerrar;
  // Asked before a button of the toolbar; false leaves everything as it is.
  std::function<bool(controles::Accion)> puedePulsar;
  // Called once a button has done its work.
  std::function<void(controles::Accion)> alPulsar;

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;
  void resizeEvent(QResizeEvent* evento) override;
  void closeEvent(QCloseEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;

 private:
  void CreaVistas();
  void Coloca(Vista& vista);
  // The date pop-up lies over the cell that it edits.
  void ColocaSobreCelda(Vista& vista);
  bool MuestraExplicacion(const Vista& v, const QPoint& donde) const;
  Vista* DueniaDe(QObject* objeto) const;
  void AdoptaFoco();
  // A host's screen that has this key comes up. False when the key is none of theirs.
  bool AbreOpcion(const QKeyEvent& evento);
  bool AntesDePulsar(controles::Accion accion);
  void DespuesDePulsar(controles::Accion accion);
  void AlEntrar(Vista& vista, Qt::FocusReason motivo);

  controles::Formulario& formulario_;
  const Contexto& contexto_;
  std::vector<std::unique_ptr<Vista>> vistas_;
  std::map<const controles::Control*, Vista*> porControl_;
  std::unique_ptr<Puntero> puntero_;
  bool enfocando_ = false;
  bool exacto_ = false;
  bool suelta_ = false;
};

}  // namespace vista
