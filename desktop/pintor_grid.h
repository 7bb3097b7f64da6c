// Paints the cells, captions and row numbers of a grid. A board has thousands of them, of few looks: each look is drawn
// once and copied.
#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QRgb>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "desktop/estilo.h"
#include "desktop/pintura.h"

namespace vista {

class VistaGrid;

class PintorGrid {
 public:
  explicit PintorGrid(const VistaGrid& vista) : vista_(vista) {}

  // Called before a painting: what was drawn for other colours, font or screen is forgotten.
  void Comienza(const QPaintDevice& donde);
  void Celda(QPainter& p, const QRect& zona, int fila, int columna);
  void Titulo(QPainter& p, const QRect& zona, int columna);
  void Manija(QPainter& p, const QRect& zona, int fila);

 private:
  // What is painted, but for the current cell.
  struct Aspecto {
    enum class Parte { Celda, Dia, Titulo, Manija } parte;
    int columna;  // of a cell: the days are alike
    int estilo;
    bool
        senalado;  // a cell in the current row, where that shows; a day that names its month; a row taken by its number
    std::string texto;
    int ancho = 0, alto = 0;
    auto Rasgos() const { return std::tie(parte, columna, estilo, senalado, texto, ancho, alto); }
    bool operator<(const Aspecto& otro) const { return Rasgos() < otro.Rasgos(); }
  };
  struct Ambiente {
    QFont fuente;
    qreal escala = 0;
    bool oscuro = false;
    std::vector<QRgb> fondos;
    bool operator==(const Ambiente&) const = default;
  };
  // What a cell is written with.
  struct Letrero {
    QString texto;
    Qt::Alignment alineada;
    QColor tinta;
    QRect caja;
  };

  // Copies what was drawn for the look, pixel for pixel; the first time it is drawn.
  template <class Hace>
  void Copia(QPainter& p, const QRect& zona, Aspecto aspecto, const Hace& dibuja);

  void DibujaCelda(QPainter& p, const QRect& zona, int fila, int columna) const;
  // Ground of a cell; gives the colour that is written on it.
  QColor DibujaFondoCelda(QPainter& p, const QRect& zona, int fila, int columna) const;
  // What of a text is shown in so many pixels.
  QString Cabe(const QString& texto, int fila, int columna, int ancho) const;
  void DibujaActual(QPainter& p, const QRect& zona, bool conEstado, const Letrero& letrero) const;
  static void DibujaAcuerdo(QPainter& p, const QRect& zona);
  void DibujaTitulo(QPainter& p, const QRect& zona, int columna) const;
  void DibujaDia(QPainter& p, const QRect& zona, int columna) const;

  const VistaGrid& vista_;
  Ambiente ambiente_;
  std::map<Aspecto, QImage> aspectos_;
  std::int64_t puntos_ = 0;  // pixels kept
};

}  // namespace vista
