// The pointer over a window of fields that may hold pending input. The toolkit moves the keyboard first and tells the
// press afterwards; what a field hands over in between can change everything under the pointer. So here, for every
// view: what a press is meant for is settled as it comes, what is pending is handed over, and only then the press acts,
// on what was under the pointer, or on nothing when that is gone.
#pragma once

#include <QMouseEvent>
#include <QObject>

namespace vista {

class Ventana;

class Puntero : public QObject {
 public:
  explicit Puntero(Ventana& ventana);
  // The press that a change of the keyboard by the mouse belongs to has not come yet.
  bool Espera() const { return !atendida_; }

  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  // Whether the press ends here.
  bool Pulsa(QWidget& donde, const QMouseEvent& evento);

  Ventana& ventana_;
  bool atendida_ = false;      // this press has been dealt with; its widgets' parents may still be offered it
  bool traga_ = false;         // up to its release nothing of it reaches a widget
  bool interrumpida_ = false;  // a dialog came up meanwhile
};

}  // namespace vista
