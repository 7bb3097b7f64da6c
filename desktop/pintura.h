// Painting that the views share: state colours and their patterns, boxes with round corners. What is drawn many times
// alike is drawn once, and copied.
#pragma once

#include <QColor>
#include <QRgb>
#include <QString>
#include <functional>

class QPainter;
class QRect;

namespace vista {

// How a state looks besides its colour.
enum class Trama { Ninguna, Rayas, Puntos, Franja, Marca };
// By the name of a grid style ("Bloqueado", ...).
Trama TramaDe(const QString& estilo);
// One letter of the state ("B"), "" for free cells.
QString LetraDe(const QString& estilo);
// Fills a cell or swatch with a state's colour and pattern.
void PintaEstado(QPainter& p, const QRect& zona, const QString& estilo, const QColor& tono);

// A box with round corners: an input, a button, a card.
struct Caja {
  QColor relleno;  // invalid: none
  QColor borde;    // invalid: none
  int grosor = 1;  // of the border, pixels
};
void PintaCaja(QPainter& p, const QRect& zona, const Caja& caja);

// A small picture that comes again and again, told by what makes it look different.
struct Sello {
  enum class Forma { Estado, Esquinas, Eleccion } forma;
  QRgb relleno, tinta;
  int detalle;
  int ancho = 0, alto = 0;  // points
  double escala = 1;        // pixels a point
  auto operator<=>(const Sello&) const = default;
};
// Draws it in the place; its size and scale are the place's. dibuja must draw no more than the seal tells.
void Estampa(QPainter& p, const QRect& zona, Sello sello, const std::function<void(QPainter&, const QRect&)>& dibuja);

}  // namespace vista
