#include "desktop/pintura.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <map>

#include "desktop/estilo.h"

namespace vista {

QRect EnPixeles(const QPainter& p, const QRect& zona) {
  const QTransform& aqui = p.deviceTransform();
  const QPointF desde = aqui.map(QPointF(zona.topLeft()));
  const QPointF hasta = aqui.map(QPointF(zona.left() + zona.width(), zona.top() + zona.height()));
  return QRect(qRound(desde.x()), qRound(desde.y()), qRound(hasta.x()) - qRound(desde.x()),
               qRound(hasta.y()) - qRound(desde.y()));
}

PorPixel::PorPixel(QPainter& p) : p_(p) {
  p_.save();
  p_.setWorldTransform(p_.deviceTransform().inverted() * p_.worldTransform());
}

PorPixel::~PorPixel() { p_.restore(); }

QImage Retrato(const QSize& pixeles, double escala, const QSize& tamano, const QColor& fondo, const Dibujo& dibuja) {
  QImage imagen(pixeles, fondo.alpha() == 255 ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
  imagen.fill(fondo);
  imagen.setDevicePixelRatio(escala);
  QPainter p(&imagen);
  p.scale(pixeles.width() / escala / tamano.width(), pixeles.height() / escala / tamano.height());
  dibuja(p, QRect(QPoint(0, 0), tamano));
  p.end();
  imagen.setDevicePixelRatio(1);
  return imagen;
}

void PintaOrillas(QPainter& p, const QRect& zona, const QColor& color) {
  const QRect lugar = EnPixeles(p, zona);
  const int grosor = std::max(1, static_cast<int>(p.device()->devicePixelRatioF()));
  const PorPixel pixeles(p);
  p.fillRect(lugar.right() + 1 - grosor, lugar.top(), grosor, lugar.height(), color);
  p.fillRect(lugar.left(), lugar.bottom() + 1 - grosor, lugar.width(), grosor, color);
}

void PintaAnillo(QPainter& p, const QRect& zona, const QColor& color, int grosor) {
  const QRect lugar = EnPixeles(p, zona);
  const int g = std::max(1, qRound(grosor * p.device()->devicePixelRatioF()));
  const PorPixel pixeles(p);
  p.fillRect(lugar.left(), lugar.top(), lugar.width(), g, color);
  p.fillRect(lugar.left(), lugar.bottom() + 1 - g, lugar.width(), g, color);
  p.fillRect(lugar.left(), lugar.top() + g, g, lugar.height() - 2 * g, color);
  p.fillRect(lugar.right() + 1 - g, lugar.top() + g, g, lugar.height() - 2 * g, color);
}

namespace {

// The picture of a seal, drawn the first time.
template <class Hace>
const QImage& Guardada(const Sello& sello, Hace&& hace) {
  constexpr std::size_t kSellos = 400;
  static std::map<Sello, QImage> copias;
  if (const auto hecha = copias.find(sello); hecha != copias.end()) return hecha->second;
  if (copias.size() >= kSellos) copias.clear();
  return copias.emplace(sello, hace()).first->second;
}

}  // namespace

void Estampa(QPainter& p, const QRect& zona, Sello sello, const Dibujo& dibuja) {
  const QRect lugar = EnPixeles(p, zona);
  sello.escala = p.device()->devicePixelRatioF();
  sello.ancho = lugar.width();
  sello.alto = lugar.height();
  const QImage& copia =
      Guardada(sello, [&] { return Retrato(lugar.size(), sello.escala, zona.size(), QColor(0, 0, 0, 0), dibuja); });
  const PorPixel pixeles(p);
  p.drawImage(lugar.topLeft(), copia);
}

namespace {

void DibujaRayas(QPainter& p, const QRect& zona, const QColor& velo) {
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(QPen(velo, 1.5));
  for (int x = zona.left() - zona.height(); x < zona.right(); x += 7) {
    p.drawLine(x, zona.bottom() + 1, x + zona.height() + 1, zona.top());
  }
}

void DibujaPuntos(QPainter& p, const QRect& zona, const QColor& velo) {
  p.setPen(Qt::NoPen);
  p.setBrush(velo);
  p.setRenderHint(QPainter::Antialiasing);
  for (int y = zona.top() + 3, fila = 0; y < zona.bottom(); y += 6, ++fila) {
    for (int x = zona.left() + 3 + (fila % 2) * 4; x < zona.right(); x += 8) p.drawEllipse(QPoint(x, y), 1, 1);
  }
}

void DibujaMarca(QPainter& p, const QRect& zona, const QColor& tinta) {
  p.setRenderHint(QPainter::Antialiasing);
  const int lado = std::min(zona.height(), zona.width()) / 2;
  const QPointF origen(zona.right() - lado - 2, zona.center().y() - lado / 2.0);
  QPainterPath palomita(origen + QPointF(lado * 0.12, lado * 0.55));
  palomita.lineTo(origen + QPointF(lado * 0.40, lado * 0.82));
  palomita.lineTo(origen + QPointF(lado * 0.90, lado * 0.18));
  p.setPen(QPen(tinta, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.drawPath(palomita);
}

QColor ConVelo(QColor color, float opaco) {
  color.setAlphaF(opaco);
  return color;
}

// Draws colour and pattern.
void DibujaEstado(QPainter& p, const QRect& zona, Trama trama, const QColor& tono) {
  constexpr float kVelo = 0.22F, kBanda = 0.55F;
  p.fillRect(zona, tono);
  const QColor tinta = TextoSobre(tono);
  p.save();
  p.setClipRect(zona);
  switch (trama) {
    case Trama::Rayas:
      DibujaRayas(p, zona, ConVelo(tinta, kVelo));
      break;
    case Trama::Puntos:
      DibujaPuntos(p, zona, ConVelo(tinta, kVelo));
      break;
    case Trama::Franja:
      p.fillRect(QRect(zona.left(), zona.top(), 3, zona.height()), ConVelo(tinta, kBanda));
      break;
    case Trama::Marca:
      DibujaMarca(p, zona, tinta);
      break;
    case Trama::Ninguna:
      break;
  }
  p.restore();
}

}  // namespace

void PintaEstado(QPainter& p, const QRect& zona, const QString& estilo, const QColor& tono) {
  const Trama trama = TramaDe(estilo);
  if (trama == Trama::Ninguna) return p.fillRect(zona, tono);
  Estampa(p, zona, {Sello::Forma::Estado, tono.rgba(), 0, static_cast<int>(trama)},
          [&](QPainter& pincel, const QRect& lugar) { DibujaEstado(pincel, lugar, trama, tono); });
}

namespace {

// Everything below counts pixels of the device.

QImage DibujaEsquinas(int lado, int radio, const Caja& caja) {
  QImage imagen(lado, lado, QImage::Format_ARGB32_Premultiplied);
  imagen.fill(Qt::transparent);
  QPainter p(&imagen);
  const double medio = caja.borde.isValid() ? caja.grosor / 2.0 : 0.0;
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(caja.borde.isValid() ? QPen(caja.borde, caja.grosor) : QPen(Qt::NoPen));
  p.setBrush(caja.relleno.isValid() ? QBrush(caja.relleno) : QBrush(Qt::NoBrush));
  p.drawRoundedRect(QRectF(0, 0, lado, lado).adjusted(medio, medio, -medio, -medio), radio - medio, radio - medio);
  return imagen;
}

// The four corners, out of the picture of the smallest box.
void PintaEsquinas(QPainter& p, const QRect& zona, const QImage& caja) {
  const int esquina = caja.width() / 2;
  const int derecha = zona.right() + 1 - esquina, abajo = zona.bottom() + 1 - esquina;
  for (const int y : {zona.top(), abajo}) {
    for (const int x : {zona.left(), derecha}) {
      p.drawImage(QPoint(x, y), caja,
                  QRect(x == zona.left() ? 0 : esquina, y == zona.top() ? 0 : esquina, esquina, esquina));
    }
  }
}

// Fill and lines between the corners.
void PintaLados(QPainter& p, const QRect& zona, int esquina, const Caja& caja) {
  const int grosor = caja.borde.isValid() ? caja.grosor : 0;
  const QRect vertical = zona.adjusted(esquina, grosor, -esquina, -grosor);
  const QRect horizontal = zona.adjusted(grosor, esquina, -grosor, -esquina);
  if (caja.relleno.isValid()) {
    const int alto = esquina - grosor;
    p.fillRect(vertical.left(), vertical.top(), vertical.width(), alto, caja.relleno);
    p.fillRect(horizontal, caja.relleno);
    p.fillRect(vertical.left(), vertical.bottom() + 1 - alto, vertical.width(), alto, caja.relleno);
  }
  if (grosor == 0) return;
  p.fillRect(vertical.left(), zona.top(), vertical.width(), grosor, caja.borde);
  p.fillRect(vertical.left(), vertical.bottom() + 1, vertical.width(), grosor, caja.borde);
  p.fillRect(zona.left(), horizontal.top(), grosor, horizontal.height(), caja.borde);
  p.fillRect(horizontal.right() + 1, horizontal.top(), grosor, horizontal.height(), caja.borde);
}

}  // namespace

void PintaCaja(QPainter& p, const QRect& zona, const Caja& caja) {
  if (!caja.relleno.isValid() && !caja.borde.isValid()) return;
  const double escala = p.device()->devicePixelRatioF();
  const QRect lugar = EnPixeles(p, zona);
  Caja enPixeles = caja;
  enPixeles.grosor = std::max(1, qRound(caja.grosor * escala));
  // A box too small for its corners has smaller ones.
  const int cabe = std::min(lugar.width(), lugar.height()) / 2;
  const int esquina = std::min(qRound(espacio::kRadio * escala) + 1, cabe);
  if (esquina < 1) return;
  const auto color = [](const QColor& c) { return c.isValid() ? c.rgba() : 0; };
  const Sello sello{Sello::Forma::Esquinas,
                    color(caja.relleno),
                    color(caja.borde),
                    enPixeles.grosor,
                    2 * esquina,
                    2 * esquina,
                    escala};
  const QImage& esquinas = Guardada(sello, [&] {
    return DibujaEsquinas(2 * esquina, std::min(esquina, qRound(espacio::kRadio * escala)), enPixeles);
  });
  const PorPixel pixeles(p);
  PintaEsquinas(p, lugar, esquinas);
  PintaLados(p, lugar, esquina, enPixeles);
}

}  // namespace vista
