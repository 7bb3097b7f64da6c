// The tape chart's surface: rooms down, nights across, bars over them. Paints only what is in sight, each row once:
// what is painted again comes from the rows' pictures.
#pragma once

#include <QAbstractScrollArea>
#include <QCache>
#include <QPainter>
#include <QPixmap>
#include <functional>
#include <optional>

#include "recepcion/cuadro.h"

namespace vista {

class TablaCuadro : public QAbstractScrollArea {
 public:
  TablaCuadro(recepcion::Cuadro& cuadro, QWidget* padre);
  // The chart was read anew.
  void Refresca();

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
    int fila = 0, desde = 0, hasta = 0;
  };
  int Primera() const;  // row that is topmost in sight
  double AnchoNoche() const;
  int X(double noche) const;
  com::Fecha NocheDe(int columna) const { return com::MasDias(cuadro_.desde(), columna); }
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
  void Mueve(int fila, int columna, bool extiende);
  void Acepta();
  QString Dice(int fila, int columna) const;
  void AjustaBarra();

  recepcion::Cuadro& cuadro_;
  Seleccion actual_;
  std::optional<QPoint> pulsado_;
  QCache<int, QPixmap> pintadas_;  // rows, by their number
};

}  // namespace vista
