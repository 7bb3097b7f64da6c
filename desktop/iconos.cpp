#include "desktop/iconos.h"

#include <QGuiApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>

#include "desktop/estilo.h"

namespace vista {

namespace {

// Strokes on a 24 by 24 field: M x y moves, L x y draws a line, C a curve (six numbers), Z closes, O x y r a circle.
const QHash<QString, const char*>& Trazos() {
  static const QHash<QString, const char*> trazos{
      {"nuevo", "M 14 3 L 6 3 L 6 21 L 18 21 L 18 7 L 14 3 M 12 10 L 12 17 M 8.5 13.5 L 15.5 13.5"},
      {"editar", "M 4 20 L 5 15 L 16 4 L 20 8 L 9 19 L 4 20 M 13.5 6.5 L 17.5 10.5"},
      {"aceptar", "M 4 12.5 L 10 18.5 L 20 6"},
      {"limpiar", "M 9 20 L 20 20 M 14.5 4.5 L 20 10 L 11.5 18.5 L 8 18.5 L 4 14.5 L 14.5 4.5 M 9 10 L 14.5 15.5"},
      {"cerrar", "M 10 4 L 5 4 L 5 20 L 10 20 M 10 12 L 20 12 M 16 8 L 20 12 L 16 16"},
      {"confirmar", "O 12 12 9 M 8 12.3 L 11 15.3 L 16.2 9"},
      {"eliminar", "O 12 12 9 M 8.5 8.5 L 15.5 15.5 M 15.5 8.5 L 8.5 15.5"},
      {"reactivar",
       "M 20 12 C 20 16.4 16.4 20 12 20 C 7.6 20 4 16.4 4 12 C 4 7.6 7.6 4 12 4 C 14.9 4 17.3 5.4 18.8 7.6 "
       "M 19.5 3.5 L 19.2 8 L 14.8 7.8"},
      {"correo", "M 3.5 6 L 20.5 6 L 20.5 18 L 3.5 18 Z M 3.5 6.5 L 12 13 L 20.5 6.5"},
      {"registro", "M 5 3 L 19 3 L 19 21 L 5 21 Z M 8.5 8 L 15.5 8 M 8.5 12 L 15.5 12 M 8.5 16 L 13 16"},
      {"cancelar", "M 6 6 L 18 18 M 18 6 L 6 18"},
      {"buscar", "O 10.5 10.5 6 M 15 15 L 20.5 20.5"},
      {"calendario", "M 4 6 L 20 6 L 20 20 L 4 20 Z M 4 10.5 L 20 10.5 M 8.5 3 L 8.5 7.5 M 15.5 3 L 15.5 7.5"},
      {"ficha", "O 12 8 4 M 4.5 20.5 C 4.5 16 8 14.5 12 14.5 C 16 14.5 19.5 16 19.5 20.5"},
      {"notas", "M 4 4 L 20 4 L 20 14 L 14 20 L 4 20 Z M 20 14 L 14 14 L 14 20 M 8 8.5 L 16 8.5 M 8 12 L 13 12"},
      {"tablero",
       "M 3.5 5 L 20.5 5 L 20.5 19 L 3.5 19 Z M 3.5 10 L 20.5 10 M 3.5 14.5 L 20.5 14.5 M 9 5 L 9 19 "
       "M 15 10 L 15 19"},
      {"precios", "M 12 3 L 21 3 L 21 12 L 11.5 21.5 L 2.5 12.5 Z O 17 7 1.4"},
      {"hotel",
       "M 5 21 L 5 4 L 15 4 L 15 21 M 15 10 L 19 10 L 19 21 M 3 21 L 21 21 M 8.5 8 L 11.5 8 M 8.5 12 L 11.5 12 "
       "M 8.5 16 L 11.5 16"},
      {"izquierda", "M 14.5 5 L 8 12 L 14.5 19"},
      {"derecha", "M 9.5 5 L 16 12 L 9.5 19"},
      {"mas", "M 12 5 L 12 19 M 5 12 L 19 12"},
      {"critico",
       "M 8.3 3 L 15.7 3 L 21 8.3 L 21 15.7 L 15.7 21 L 8.3 21 L 3 15.7 L 3 8.3 Z M 9 9 L 15 15 M 15 9 L 9 15"},
      {"aviso", "M 12 3.5 L 21.5 20 L 2.5 20 Z M 12 9.5 L 12 14.5 M 12 17 L 12 17.3"},
      {"informe", "O 12 12 9 M 12 11 L 12 16.5 M 12 7.5 L 12 7.8"},
      {"pregunta", "O 12 12 9 M 9.2 9.8 C 9.2 6 15 6.2 14.8 9.8 C 14.7 12 12 12 12 14.2 M 12 17 L 12 17.3"},
  };
  return trazos;
}

QPainterPath Trazo(const char* texto) {
  QPainterPath camino;
  const QStringList partes = QString::fromLatin1(texto).split(QLatin1Char(' '), Qt::SkipEmptyParts);
  qsizetype i = 0;
  const auto numero = [&] { return partes.value(i++).toDouble(); };
  const auto punto = [&] {
    const double x = numero();
    return QPointF(x, numero());
  };
  while (i < partes.size()) {
    const QChar orden = partes[i++].front();
    if (orden == QLatin1Char('M')) {
      camino.moveTo(punto());
    } else if (orden == QLatin1Char('L')) {
      camino.lineTo(punto());
    } else if (orden == QLatin1Char('C')) {
      const QPointF a = punto(), b = punto();
      camino.cubicTo(a, b, punto());
    } else if (orden == QLatin1Char('Z')) {
      camino.closeSubpath();
    } else if (orden == QLatin1Char('O')) {
      const QPointF centro = punto();
      const double r = numero();
      camino.addEllipse(centro, r, r);
    }
  }
  return camino;
}

class Motor : public QIconEngine {
 public:
  Motor(QString nombre, QColor tinta) : nombre_(std::move(nombre)), tinta_(tinta) {}

  void paint(QPainter* p, const QRect& zona, QIcon::Mode modo, QIcon::State) override {
    const char* trazo = Trazos().value(nombre_, nullptr);
    if (trazo == nullptr) return;
    p->save();
    p->setRenderHint(QPainter::Antialiasing);
    const double lado = std::min(zona.width(), zona.height());
    p->translate(zona.x() + (zona.width() - lado) / 2, zona.y() + (zona.height() - lado) / 2);
    p->scale(lado / 24.0, lado / 24.0);
    p->setPen(QPen(Color(modo), 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p->setBrush(Qt::NoBrush);
    p->drawPath(Trazo(trazo));
    p->restore();
  }

  // Asked for at every painting of a button: drawn once for each colour and size.
  QPixmap pixmap(const QSize& tamano, QIcon::Mode modo, QIcon::State estado) override {
    const QString clave = QStringLiteral("icono_%1_%2_%3x%4")
                              .arg(nombre_)
                              .arg(Color(modo).rgba())
                              .arg(tamano.width())
                              .arg(tamano.height());
    QPixmap mapa;
    if (QPixmapCache::find(clave, &mapa)) return mapa;
    mapa = QPixmap(tamano);
    mapa.fill(Qt::transparent);
    QPainter p(&mapa);
    paint(&p, QRect(QPoint(0, 0), tamano), modo, estado);
    p.end();
    QPixmapCache::insert(clave, mapa);
    return mapa;
  }

  QString iconName() override { return nombre_; }

  QIconEngine* clone() const override { return new Motor(nombre_, tinta_); }

 private:
  QColor Color(QIcon::Mode modo) const {
    if (modo == QIcon::Disabled) return Colores().bordeCampo;
    return tinta_.isValid() ? tinta_ : Colores().texto;
  }

  QString nombre_;
  QColor tinta_;
};

}  // namespace

QIcon Icono(const QString& nombre, const QColor& tinta) {
  return Trazos().contains(nombre) ? QIcon(new Motor(nombre, tinta)) : QIcon();
}

}  // namespace vista
