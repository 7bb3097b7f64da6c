// Painting that the views share: state colours and their patterns, boxes with round corners. What is drawn many times
// alike is drawn once, and copied.
#pragma once

#include <QColor>
#include <QImage>
#include <QRgb>
#include <QString>
#include <functional>
#include <tuple>

#include "desktop/estados.h"

class QPainter;
class QRect;

namespace vista {

// Fills a cell or swatch with a state's colour and pattern.
void PintaEstado(QPainter& p, const QRect& zona, const QString& estilo, const QColor& tono);

// A box with round corners: an input, a button, a card.
struct Caja {
  QColor relleno;  // invalid: none
  QColor borde;    // invalid: none
  int grosor = 1;  // of the border, pixels
};
void PintaCaja(QPainter& p, const QRect& zona, const Caja& caja);

// Lines along the right and the lower edge of a place, as thin as the screen draws them sharp.
void PintaOrillas(QPainter& p, const QRect& zona, const QColor& color);
// A square ring just inside a place, evenly thick on all sides; grosor in points.
void PintaAnillo(QPainter& p, const QRect& zona, const QColor& color, int grosor);

// The pixels of its device that a place of the painter takes: neighbours neither overlap nor leave a gap, at any scale.
QRect EnPixeles(const QPainter& p, const QRect& zona);
// While it lives the painter counts pixels from its device's upper left corner.
class PorPixel {
 public:
  explicit PorPixel(QPainter& p);
  ~PorPixel();
  PorPixel(const PorPixel&) = delete;
  PorPixel& operator=(const PorPixel&) = delete;

 private:
  QPainter& p_;
};

// Draws in the place that it is given.
using Dibujo = std::function<void(QPainter&, const QRect&)>;
// Picture of so many pixels of a drawing of that size (points), on a ground; to be put PorPixel.
QImage Retrato(const QSize& pixeles, double escala, const QSize& tamano, const QColor& fondo, const Dibujo& dibuja);

// A small picture that comes again and again, told by what makes it look different.
struct Sello {
  enum class Forma { Estado, Esquinas, Eleccion } forma = Forma::Estado;
  QRgb relleno = 0, tinta = 0;
  int detalle = 0;
  int ancho = 0, alto = 0;  // pixels
  double escala = 1;        // pixels a point
  auto Rasgos() const { return std::tie(forma, relleno, tinta, detalle, ancho, alto, escala); }
  bool operator<(const Sello& otro) const { return Rasgos() < otro.Rasgos(); }
};
// Puts it in the place; its size and scale are the place's. dibuja must draw no more than the seal tells.
void Estampa(QPainter& p, const QRect& zona, Sello sello, const Dibujo& dibuja);

}  // namespace vista
