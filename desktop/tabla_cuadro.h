// The tape chart's surface: rooms down, nights across, bars over them. Paints only what is in sight, each row once:
// what is painted again comes from the rows' pictures.
#pragma once

#include <QAbstractScrollArea>
#include <QCache>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <functional>
#include <optional>

#include "recepcion/cuadro.h"

namespace vista {

class TablaCuadro : public QAbstractScrollArea {
 public:
  TablaCuadro(recepcion::Cuadro& cuadro, QWidget* padre);
  // The chart was read anew, maybe other nights of it: what is marked stays marked, as far as it is in sight.
  void Refresca();
  // The keyboard goes to that night, of the same room.
  void VaA(com::Fecha noche);

  // Places in the viewport, for whoever works it by events; a bar may lie partly out of sight.
  QRect ZonaBarra(const recepcion::Barra& barra) const;
  QRect ZonaNoche(int fila, com::Fecha noche) const;
  void Descubre(int fila);

  // The user picked a bar, or free nights of a room.
  std::function<void(const recepcion::Barra& barra)> alAbrir;
  std::function<void(int fila, com::Fecha desde, com::Fecha hasta)> alReservar;
  // Where the keyboard stands, in words.
  std::function<void(const QString& texto)> alMover;

 protected:
  bool viewportEvent(QEvent* evento) override;
  void paintEvent(QPaintEvent* evento) override;
  void resizeEvent(QResizeEvent* evento) override;
  void changeEvent(QEvent* evento) override;
  void scrollContentsBy(int dx, int dy) override;
  void mousePressEvent(QMouseEvent* evento) override;
  void mouseMoveEvent(QMouseEvent* evento) override;
  void mouseReleaseEvent(QMouseEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;

 private:
  // Nights of one room, both ends in it.
  struct Seleccion {
    int fila = 0;
    com::Fecha desde, hasta;
    com::Fecha Primera() const { return std::min(desde, hasta); }
    com::Fecha Ultima() const { return std::max(desde, hasta); }
  };
  int Primera() const;  // row that is topmost in sight
  double AnchoNoche() const;
  int X(double noche) const;
  com::Fecha NocheDe(int columna) const { return com::MasDias(cuadro_.desde(), columna); }
  com::Fecha ALaVista(com::Fecha noche) const;  // the nearest night in sight
  int FilaEn(const QPoint& punto) const;
  int ColumnaEn(int fila, const QPoint& punto) const;
  const recepcion::Barra* BarraEn(const QPoint& punto) const;
  int Y(int fila) const;  // top of a row in the viewport
  QRect ZonaDe(const Seleccion& seleccion) const;
  const QPixmap& Pintada(int fila);
  void PintaFila(QPainter& p, int fila) const;
  void PintaDias(QPainter& p, int y) const;
  void PintaBarra(QPainter& p, const recepcion::Barra& barra) const;
  void PintaCabeza(QPainter& p) const;
  void PintaMes(QPainter& p, int noche) const;
  void PintaSeleccion(QPainter& p) const;
  void Mueve(int fila, com::Fecha noche, bool extiende);
  void Acepta();
  void Di();  // tells where the keyboard stands
  QString Dice() const;
  void AjustaBarra();

  recepcion::Cuadro& cuadro_;
  Seleccion actual_;
  QString dicho_;  // where the keyboard stands, as it was told last; empty when it was not
  std::optional<QPoint> pulsado_;
  QCache<int, QPixmap> pintadas_;  // rows, by their number
};

}  // namespace vista
