#include "desktop/pintura.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <map>

#include "desktop/estilo.h"

namespace vista {

namespace {

using Dibujo = std::function<void(QPainter&, const QRect&)>;

// Where a point is no whole number of pixels a copy would blur.
bool Entera(qreal escala) { return escala == std::floor(escala); }

// The picture of what a seal's drawer draws in a place.
const QImage& Copia(const Sello& sello, const Dibujo& dibuja) {
  constexpr std::size_t kSellos = 400;
  static std::map<Sello, QImage> copias;
  if (const auto hecha = copias.find(sello); hecha != copias.end()) return hecha->second;
  if (copias.size() >= kSellos) copias.clear();
  const QSize tamano(sello.ancho, sello.alto);
  QImage imagen(tamano * sello.escala, QImage::Format_ARGB32_Premultiplied);
  imagen.setDevicePixelRatio(sello.escala);
  imagen.fill(Qt::transparent);
  QPainter pincel(&imagen);
  dibuja(pincel, QRect(QPoint(0, 0), tamano));
  pincel.end();
  return copias.emplace(sello, std::move(imagen)).first->second;
}

}  // namespace

// By a copy where that is as sharp.
void Estampa(QPainter& p, const QRect& zona, Sello sello, const Dibujo& dibuja) {
  sello.escala = p.device()->devicePixelRatioF();
  if (!Entera(sello.escala)) {
    p.save();
    dibuja(p, zona);
    p.restore();
    return;
  }
  sello.ancho = zona.width();
  sello.alto = zona.height();
  p.drawImage(zona.topLeft(), Copia(sello, dibuja));
}

Trama TramaDe(const QString& estilo) {
  const QString e = estilo.toUpper();
  if (e == QLatin1String("BLOQUEADO")) return Trama::Rayas;
  if (e == QLatin1String("RESERVADO")) return Trama::Puntos;
  if (e == QLatin1String("OCUPADO")) return Trama::Franja;
  if (e == QLatin1String("OCUPANDO") || e == QLatin1String("RESERVANDO")) return Trama::Marca;
  return Trama::Ninguna;
}

QString LetraDe(const QString& estilo) {
  switch (TramaDe(estilo)) {
    case Trama::Rayas:
      return QStringLiteral("B");
    case Trama::Puntos:
      return QStringLiteral("R");
    case Trama::Franja:
      return QStringLiteral("O");
    case Trama::Marca:
    case Trama::Ninguna:
      break;
  }
  return {};
}

namespace {

// Draws colour and pattern.
void DibujaEstado(QPainter& p, const QRect& zona, Trama trama, const QColor& tono) {
  p.fillRect(zona, tono);
  const QColor tinta = TextoSobre(tono);
  QColor velo = tinta;
  velo.setAlphaF(0.22F);
  p.save();
  p.setClipRect(zona);
  switch (trama) {
    case Trama::Rayas:
      p.setRenderHint(QPainter::Antialiasing);
      p.setPen(QPen(velo, 1.5));
      for (int x = zona.left() - zona.height(); x < zona.right(); x += 7) {
        p.drawLine(x, zona.bottom() + 1, x + zona.height() + 1, zona.top());
      }
      break;
    case Trama::Puntos:
      p.setPen(Qt::NoPen);
      p.setBrush(velo);
      p.setRenderHint(QPainter::Antialiasing);
      for (int y = zona.top() + 3, fila = 0; y < zona.bottom(); y += 6, ++fila) {
        for (int x = zona.left() + 3 + (fila % 2) * 4; x < zona.right(); x += 8) p.drawEllipse(QPoint(x, y), 1, 1);
      }
      break;
    case Trama::Franja: {
      QColor banda = tinta;
      banda.setAlphaF(0.55F);
      p.fillRect(QRect(zona.left(), zona.top(), 3, zona.height()), banda);
      break;
    }
    case Trama::Marca: {
      p.setRenderHint(QPainter::Antialiasing);
      const int lado = std::min(zona.height(), zona.width()) / 2;
      const QPointF origen(zona.right() - lado - 2, zona.center().y() - lado / 2.0);
      QPainterPath palomita(origen + QPointF(lado * 0.12, lado * 0.55));
      palomita.lineTo(origen + QPointF(lado * 0.40, lado * 0.82));
      palomita.lineTo(origen + QPointF(lado * 0.90, lado * 0.18));
      p.setPen(QPen(tinta, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      p.drawPath(palomita);
      break;
    }
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

void DibujaCaja(QPainter& p, const QRectF& zona, const Caja& caja) {
  const double medio = caja.borde.isValid() ? caja.grosor / 2.0 : 0.0;
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(caja.borde.isValid() ? QPen(caja.borde, caja.grosor) : QPen(Qt::NoPen));
  p.setBrush(caja.relleno.isValid() ? QBrush(caja.relleno) : QBrush(Qt::NoBrush));
  const double radio = espacio::kRadio - medio;
  p.drawRoundedRect(zona.adjusted(medio, medio, -medio, -medio), radio, radio);
}

constexpr int kEsquina = espacio::kRadio + 1;

// The four corners, out of the picture of the smallest box.
void PintaEsquinas(QPainter& p, const QRect& zona, const QImage& caja) {
  const double lado = caja.width() / 2.0;
  const int derecha = zona.right() + 1 - kEsquina, abajo = zona.bottom() + 1 - kEsquina;
  for (const int y : {zona.top(), abajo}) {
    for (const int x : {zona.left(), derecha}) {
      const QRectF parte(x == zona.left() ? 0 : lado, y == zona.top() ? 0 : lado, lado, lado);
      p.drawImage(QRectF(x, y, kEsquina, kEsquina), caja, parte);
    }
  }
}

// Fill and lines between the corners.
void PintaLados(QPainter& p, const QRect& zona, const Caja& caja) {
  const int grosor = caja.borde.isValid() ? caja.grosor : 0;
  const QRect vertical = zona.adjusted(kEsquina, grosor, -kEsquina, -grosor);
  const QRect horizontal = zona.adjusted(grosor, kEsquina, -grosor, -kEsquina);
  if (caja.relleno.isValid()) {
    const int alto = kEsquina - grosor;
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
  constexpr int kLado = 2 * kEsquina;
  const qreal escala = p.device()->devicePixelRatioF();
  if (!Entera(escala) || zona.width() < kLado || zona.height() < kLado) {
    p.save();
    DibujaCaja(p, zona, caja);
    p.restore();
    return;
  }
  const auto color = [](const QColor& c) { return c.isValid() ? c.rgba() : 0; };
  const Sello sello{Sello::Forma::Esquinas, color(caja.relleno), color(caja.borde), caja.grosor, kLado, kLado, escala};
  PintaEsquinas(p, zona, Copia(sello, [&](QPainter& pincel, const QRect& lugar) { DibujaCaja(pincel, lugar, caja); }));
  PintaLados(p, zona, caja);
}

}  // namespace vista
