// One of the two tables of a grid's view, with its headers: what the toolkit asks of them goes to the view's parts.
#pragma once

#include <QTableView>

namespace vista {

class VistaGrid;

class TablaGrid : public QTableView {
 public:
  TablaGrid(VistaGrid& vista, QWidget* padre);

 protected:
  void paintEvent(QPaintEvent* evento) override;
  bool viewportEvent(QEvent* evento) override;
  void scrollContentsBy(int dx, int dy) override;
  void mousePressEvent(QMouseEvent* evento) override;
  void mouseMoveEvent(QMouseEvent* evento) override;
  void mouseReleaseEvent(QMouseEvent* evento) override;
  void mouseDoubleClickEvent(QMouseEvent* evento) override;
  void inputMethodEvent(QInputMethodEvent* evento) override;
  void focusInEvent(QFocusEvent* evento) override;
  void focusOutEvent(QFocusEvent* evento) override;
  void changeEvent(QEvent* evento) override;

 private:
  void PintaCeldas(QPainter& p, const QRect& zona);
  void PintaFila(QPainter& p, const QRect& zona, int fila);
  void PintaAviso(QPainter& p);

  VistaGrid& vista_;
};

}  // namespace vista
