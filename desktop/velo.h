// A veil over a window: darkens all but a place and says something beside it. It takes every key and click meanwhile.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QRect>
#include <QString>
#include <QWidget>
#include <functional>

namespace vista {

class Velo : public QWidget {
 public:
  // hueco: the place, in the window; empty for none. cuenta: "2 de 9".
  Velo(QWidget& ventana, const QRect& hueco, const QString& texto, const QString& cuenta, bool ultimo);
  std::function<void()> alSeguir, alSaltar;

 protected:
  bool event(QEvent* evento) override;
  bool eventFilter(QObject* objeto, QEvent* evento) override;
  void paintEvent(QPaintEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;
  void focusOutEvent(QFocusEvent* evento) override;
  void mousePressEvent(QMouseEvent* evento) override;

 private:
  void Coloca();
  // Once each, whatever is pressed.
  void Responde(const std::function<void()>& accion);

  QRect hueco_;
  QWidget* letrero_;
  bool respondido_ = false;
};

}  // namespace vista
