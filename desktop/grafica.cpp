#include "desktop/grafica.h"

#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "desktop/estilo.h"

namespace vista {

namespace {

constexpr int kRenglones = 4;  // lines of the scale
constexpr int kLeyenda = 24, kPie = 22, kDerecha = 12;

QPen Pluma(const Serie& serie) {
  return {serie.color, 2, serie.forma == Serie::Forma::Punteada ? Qt::DashLine : Qt::SolidLine, Qt::RoundCap,
          Qt::RoundJoin};
}

}  // namespace

Grafica::Grafica(QWidget* padre) : QWidget(padre) {
  setMinimumHeight(200);
  setFont(Fuente(Letra::Chica));
  setMouseTracking(true);
}

double Grafica::Redondo(double valor) {
  if (!(valor > 0)) return 1;
  const double potencia = std::pow(10.0, std::floor(std::log10(valor)));
  for (const double veces : {1.0, 2.0, 2.5, 5.0}) {
    if (valor <= veces * potencia * (1 + 1e-9)) return veces * potencia;
  }
  return 10 * potencia;
}

void Grafica::Muestra(const QStringList& lugares, std::vector<Serie> series, std::function<QString(double)> escribe,
                      int marcado) {
  lugares_ = lugares;
  series_ = std::move(series);
  escribe_ = std::move(escribe);
  marcado_ = marcado;
  double mayor = 0;
  for (const Serie& s : series_) {
    if (!s.valores.empty()) mayor = std::max(mayor, *std::ranges::max_element(s.valores));
  }
  tope_ = Redondo(mayor);
  update();
}

QRectF Grafica::Trazo() const {
  const double izquierda = escribe_ ? fontMetrics().horizontalAdvance(escribe_(tope_)) + 14 : 14;
  return {izquierda, kLeyenda + 4.0, std::max(10.0, width() - izquierda - kDerecha),
          std::max(10.0, height() - kLeyenda - kPie - 4.0)};
}

double Grafica::Alto(double valor) const { return Trazo().bottom() - valor / tope_ * Trazo().height(); }

void Grafica::PintaEscala(QPainter& p) const {
  const QRectF trazo = Trazo();
  const Paleta& c = Colores();
  if (marcado_ >= 0) {
    p.fillRect(QRectF(trazo.left() + marcado_ * Ancho(), trazo.top(), std::max(2.0, Ancho()), trazo.height()),
               c.acentoSuave);
  }
  for (int r = 0; r <= kRenglones; ++r) {
    const double valor = tope_ * r / kRenglones, y = Alto(valor);
    p.setPen(c.borde);
    p.drawLine(QPointF(trazo.left(), y), QPointF(trazo.right(), y));
    p.setPen(c.tenue);
    p.drawText(QRectF(0, y - 9, trazo.left() - 6, 18), Qt::AlignRight | Qt::AlignVCenter, escribe_(valor));
  }
  // As many places are named as have room.
  int ancho = 1;
  for (const QString& lugar : lugares_) ancho = std::max(ancho, fontMetrics().horizontalAdvance(lugar) + 10);
  const int cada = std::max(1, static_cast<int>(std::ceil(ancho / Ancho())));
  for (int i = 0; i < lugares_.size(); i += cada) {
    const double medio = trazo.left() + (i + 0.5) * Ancho();
    p.drawText(QRectF(medio - ancho / 2.0, trazo.bottom() + 4, ancho, kPie - 4), Qt::AlignHCenter | Qt::AlignTop,
               lugares_[i]);
  }
}

void Grafica::PintaSerie(QPainter& p, const Serie& serie) const {
  const QRectF trazo = Trazo();
  if (serie.forma == Serie::Forma::Barras) {
    const double hueco = Ancho() > 6 ? Ancho() * 0.2 : 0;
    for (std::size_t i = 0; i < serie.valores.size(); ++i) {
      const double y = Alto(serie.valores[i]);
      p.fillRect(
          QRectF(trazo.left() + static_cast<double>(i) * Ancho() + hueco / 2, y, Ancho() - hueco, trazo.bottom() - y),
          serie.color);
    }
    return;
  }
  QPainterPath linea;
  for (std::size_t i = 0; i < serie.valores.size(); ++i) {
    const QPointF punto(trazo.left() + (static_cast<double>(i) + 0.5) * Ancho(), Alto(serie.valores[i]));
    i == 0 ? linea.moveTo(punto) : linea.lineTo(punto);
    if (Ancho() > 14 || serie.valores.size() == 1) {
      p.setPen(Qt::NoPen);
      p.setBrush(serie.color);
      p.drawEllipse(punto, 3, 3);
    }
  }
  p.setBrush(Qt::NoBrush);
  p.setPen(Pluma(serie));
  p.drawPath(linea);
}

void Grafica::PintaLeyenda(QPainter& p) const {
  constexpr int kMuestra = 22;
  double x = Trazo().left();
  for (const Serie& serie : series_) {
    if (serie.forma == Serie::Forma::Barras) {
      p.fillRect(QRectF(x, 6, kMuestra, 11), serie.color);
    } else {
      p.setPen(Pluma(serie));
      p.drawLine(QPointF(x, 12), QPointF(x + kMuestra, 12));
    }
    x += kMuestra + 6;
    const int ancho = fontMetrics().horizontalAdvance(serie.nombre);
    p.setPen(Colores().texto);
    p.drawText(QRectF(x, 0, ancho + 2, kLeyenda), Qt::AlignVCenter | Qt::AlignLeft, serie.nombre);
    x += ancho + 22;
  }
}

void Grafica::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  p.fillRect(rect(), Colores().superficie);
  if (lugares_.isEmpty() || !escribe_) return;
  PintaEscala(p);
  for (const Serie& serie : series_) PintaSerie(p, serie);
  PintaLeyenda(p);
}

QString Grafica::Lectura(const QPoint& punto) const {
  const QRectF trazo = Trazo();
  if (lugares_.isEmpty() || !trazo.contains(punto)) return {};
  const auto lugar =
      std::min<qsizetype>(static_cast<qsizetype>((punto.x() - trazo.left()) / Ancho()), lugares_.size() - 1);
  QString texto = lugares_[lugar];
  for (const Serie& s : series_) {
    texto += QStringLiteral(" · ") + s.nombre + QLatin1Char(' ') + escribe_(s.valores[static_cast<std::size_t>(lugar)]);
  }
  return texto;
}

bool Grafica::event(QEvent* evento) {
  if (evento->type() == QEvent::ToolTip) {
    const auto* ayuda = static_cast<QHelpEvent*>(evento);
    QToolTip::showText(ayuda->globalPos(), Lectura(ayuda->pos()), this);
    return true;
  }
  return QWidget::event(evento);
}

}  // namespace vista
