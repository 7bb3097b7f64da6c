// A small plot: bars and lines over named places, drawn in the program's colours. What it shows stands in a table
// beside it for who cannot see it; its series differ by shape, not by colour alone.
#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <algorithm>
#include <functional>
#include <vector>

class QPainter;

namespace vista {

struct Serie {
  enum class Forma { Barras, Linea, Punteada };
  QString nombre;
  Forma forma = Forma::Linea;
  QColor color;
  std::vector<double> valores;  // not negative, one for each place
};

class Grafica : public QWidget {
 public:
  explicit Grafica(QWidget* padre);
  // escribe: a value as a text. marcado: place to be marked as today's; -1 none.
  void Muestra(const QStringList& lugares, std::vector<Serie> series, std::function<QString(double)> escribe,
               int marcado);
  // The next greater of 1, 2, 2.5 and 5 times a power of ten; 1 for what is not above 0.
  static double Redondo(double valor);
  // What the place under that point says: "12 mar · Vendidas 34 · Hace un año 30"; "" where there is none.
  QString Lectura(const QPoint& punto) const;

 protected:
  void paintEvent(QPaintEvent*) override;
  bool event(QEvent* evento) override;

 private:
  QRectF Trazo() const;
  double Ancho() const { return Trazo().width() / std::max<double>(1, static_cast<double>(lugares_.size())); }
  double Alto(double valor) const;
  void PintaEscala(QPainter& p) const;
  void PintaSerie(QPainter& p, const Serie& serie) const;
  void PintaLeyenda(QPainter& p) const;

  QStringList lugares_;
  std::vector<Serie> series_;
  std::function<QString(double)> escribe_;
  int marcado_ = -1;
  double tope_ = 1;
};

}  // namespace vista
