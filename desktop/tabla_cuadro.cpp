#include "desktop/tabla_cuadro.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/pintura.h"
#include "desktop/teclas.h"
#include "desktop/vista.h"
#include "desktop/vista_campos.h"
#include "platform/regional/regional.h"
#include "schema/esquema.h"

namespace vista {

namespace {

constexpr int kMeses = 18, kCabeza = kMeses + 40, kLado = 170, kMargen = 6;  // pixels
constexpr int kPintadas = 150;                                               // rows whose pictures are kept
constexpr double kMedio = 0.5;  // bars begin and end in the middle of a day

QString Dia(com::Fecha dia, const char* formato) {
  return QLocale(QLocale::Spanish, QLocale::Mexico).toString(ADate(dia), QString::fromUtf8(formato));
}

// A state shows by fill, by border and in words.
Caja CajaDe(const recepcion::Barra& barra) {
  const Paleta& c = Colores();
  if (barra.clase == recepcion::Barra::Clase::Bloqueo) return {c.realce, c.tenue, 1};
  if (barra.enCasa || barra.estado == esquema::kAplicada) return {c.tenue, c.tenue, 1};
  if (barra.estado == esquema::kConfirmada) return {c.acento, c.acento, 1};
  return {c.acentoSuave, c.acento, 1};
}

QString Titulo(const recepcion::Barra& barra) {
  const QString estado = Q(recepcion::EstadoDe(barra));
  return barra.huesped.empty() ? estado : Q(barra.huesped) + QStringLiteral(" · ") + estado;
}

QString Consejo(const recepcion::Barra& barra) {
  QString texto;
  if (!barra.folio.empty()) texto += QStringLiteral("Folio ") + Q(barra.folio) + QLatin1Char('\n');
  texto += Titulo(barra) + QLatin1Char('\n') + Q(regional::FechaCorta(barra.inicio)) + QStringLiteral(" – ") +
           Q(regional::FechaCorta(recepcion::UltimoDia(barra)));
  if (!barra.folio.empty()) {
    texto += QStringLiteral("\nTotal ") + Q(regional::Moneda(barra.total)) + QLatin1Char(' ') + Q(barra.moneda);
  }
  return texto;
}

}  // namespace

TablaCuadro::TablaCuadro(recepcion::Cuadro& cuadro, QWidget* padre) : QAbstractScrollArea(padre), cuadro_(cuadro) {
  setObjectName(QStringLiteral("cuadro_noches"));
  setAccessibleName(QStringLiteral("Habitaciones por noche"));
  setFocusPolicy(Qt::StrongFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFrameShape(QFrame::NoFrame);
  viewport()->setMouseTracking(false);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  pintadas_.setMaxCost(kPintadas);
}

void TablaCuadro::Refresca() {
  const int filas = static_cast<int>(cuadro_.habitaciones().size());
  actual_.fila = std::clamp(actual_.fila, 0, std::max(filas - 1, 0));
  actual_.desde = ALaVista(actual_.desde);
  actual_.hasta = ALaVista(actual_.hasta);
  AjustaBarra();
  pintadas_.clear();
  viewport()->update();
  if (!dicho_.isEmpty()) Di();
}

void TablaCuadro::VaA(com::Fecha noche) { Mueve(actual_.fila, noche, false); }

com::Fecha TablaCuadro::ALaVista(com::Fecha noche) const {
  return std::clamp(noche, cuadro_.desde(), NocheDe(cuadro_.noches() - 1));
}

void TablaCuadro::AjustaBarra() {
  const int enVista = std::max((viewport()->height() - kCabeza) / espacio::kRenglon, 1);
  verticalScrollBar()->setPageStep(enVista);
  verticalScrollBar()->setRange(0, std::max(static_cast<int>(cuadro_.habitaciones().size()) - enVista, 0));
}

void TablaCuadro::resizeEvent(QResizeEvent* evento) {
  QAbstractScrollArea::resizeEvent(evento);
  pintadas_.clear();
  AjustaBarra();
}

void TablaCuadro::changeEvent(QEvent* evento) {
  QAbstractScrollArea::changeEvent(evento);
  pintadas_.clear();  // colours or letters are others
  viewport()->update();
}

// What stays in sight is moved; the rows that come are painted.
void TablaCuadro::scrollContentsBy(int /*dx*/, int dy) {
  viewport()->scroll(0, dy * espacio::kRenglon, viewport()->rect().adjusted(0, kCabeza, 0, 0));
}

// --- places ----------------------------------------------------------------------------------------------------------

int TablaCuadro::Primera() const { return verticalScrollBar()->value(); }
double TablaCuadro::AnchoNoche() const {
  return std::max(viewport()->width() - kLado, 1) / static_cast<double>(cuadro_.noches());
}
int TablaCuadro::Y(int fila) const { return kCabeza + (fila - Primera()) * espacio::kRenglon; }
int TablaCuadro::X(double noche) const { return kLado + static_cast<int>(std::lround(noche * AnchoNoche())); }

int TablaCuadro::FilaEn(const QPoint& punto) const {
  if (punto.y() < kCabeza) return -1;
  const int fila = Primera() + (punto.y() - kCabeza) / espacio::kRenglon;
  return fila < static_cast<int>(cuadro_.habitaciones().size()) ? fila : -1;
}

// A night begins in the middle of its day: a free one is meant by that day as well as by the morning after, when
// somebody arrives then.
int TablaCuadro::ColumnaEn(int fila, const QPoint& punto) const {
  if (punto.x() < kLado) return -1;
  const double dia = (punto.x() - kLado) / AnchoNoche();
  const int columna = std::min(static_cast<int>(dia), cuadro_.noches() - 1);
  const bool deManana = columna > 0 && dia - columna < kMedio;
  const auto tomada = [&](int noche) { return cuadro_.En(fila, NocheDe(noche)) != nullptr; };
  return deManana && tomada(columna) && !tomada(columna - 1) ? columna - 1 : columna;
}

QRect TablaCuadro::ZonaNoche(int fila, com::Fecha noche) const {
  const int columna = com::DiasEntre(cuadro_.desde(), noche);
  return {X(columna), Y(fila), X(columna + 1) - X(columna), espacio::kRenglon};
}

QRect TablaCuadro::ZonaDe(const Seleccion& s) const {
  return ZonaNoche(s.fila, s.Primera()).united(ZonaNoche(s.fila, s.Ultima()));
}

// A block ends with its last night; who stays leaves on the day after the last one.

QRect TablaCuadro::ZonaBarra(const recepcion::Barra& barra) const {
  const int desde = com::DiasEntre(cuadro_.desde(), barra.inicio), hasta = com::DiasEntre(cuadro_.desde(), barra.fin);
  const double fin = hasta + (barra.clase == recepcion::Barra::Clase::Bloqueo ? 0 : kMedio);
  const int x1 = std::max(X(desde + kMedio), kLado - kMargen), x2 = X(std::min(fin, cuadro_.noches() + kMedio));
  return QRect(x1, Y(barra.fila), x2 - x1, espacio::kRenglon).adjusted(1, 3, -1, -3);
}

const recepcion::Barra* TablaCuadro::BarraEn(const QPoint& punto) const {
  if (punto.x() < kLado) return nullptr;
  const auto [desde, hasta] = cuadro_.BarrasDe(FilaEn(punto));
  for (std::size_t b = hasta; b > desde; --b) {  // of two the one that was painted over the other
    if (ZonaBarra(cuadro_.barras()[b - 1]).contains(punto)) return &cuadro_.barras()[b - 1];
  }
  return nullptr;
}

void TablaCuadro::Descubre(int fila) {
  const int enVista = verticalScrollBar()->pageStep();
  if (fila < Primera()) verticalScrollBar()->setValue(fila);
  if (fila >= Primera() + enVista) verticalScrollBar()->setValue(fila - enVista + 1);
}

// --- painting --------------------------------------------------------------------------------------------------------

void TablaCuadro::paintEvent(QPaintEvent* evento) {
  QPainter p(viewport());
  const QRect cuerpo = viewport()->rect().adjusted(0, kCabeza, 0, 0);
  const int filas = static_cast<int>(cuadro_.habitaciones().size());
  for (const QRect& zona : evento->region()) {
    if (zona.top() < kCabeza) {
      p.setClipRect(zona);
      PintaCabeza(p);
    }
    const QRect abajo = zona.intersected(cuerpo);
    if (abajo.isEmpty()) continue;
    p.setClipRect(abajo);
    int fila = Primera() + (abajo.top() - kCabeza) / espacio::kRenglon;
    for (; fila < filas && Y(fila) <= abajo.bottom(); ++fila) p.drawPixmap(0, Y(fila), Pintada(fila));
    if (fila == filas) p.fillRect(abajo.adjusted(0, Y(filas) - abajo.top(), 0, 0), Colores().superficie);
    PintaSeleccion(p);
  }
}

const QPixmap& TablaCuadro::Pintada(int fila) {
  const QSize tamano = QSize(viewport()->width(), espacio::kRenglon) * devicePixelRatioF();
  const QPixmap* hecha = pintadas_.object(fila);
  if (hecha != nullptr && hecha->size() == tamano) return *hecha;
  auto* nueva = new QPixmap(tamano);
  nueva->setDevicePixelRatio(devicePixelRatioF());
  nueva->fill(Colores().superficie);
  QPainter p(nueva);
  p.setFont(Fuente(Letra::Normal));
  p.translate(0, -Y(fila));
  PintaDias(p, Y(fila));
  PintaFila(p, fila);
  p.fillRect(kLado - 1, Y(fila), 1, espacio::kRenglon, Colores().borde);
  p.end();
  pintadas_.insert(fila, nueva);
  return *nueva;
}

// Today, weekends and the lines between days, behind a row.
void TablaCuadro::PintaDias(QPainter& p, int y) const {
  const Paleta& c = Colores();
  for (int n = 0; n < cuadro_.noches(); ++n) {
    const com::Fecha dia = NocheDe(n);
    if (dia == cuadro_.hoy()) {
      p.fillRect(X(n), y, X(n + 1) - X(n), espacio::kRenglon, c.acentoSuave);
    } else if (com::DiaSemana(dia) >= 6) {
      p.fillRect(X(n), y, X(n + 1) - X(n), espacio::kRenglon, c.finSemana);
    }
    p.fillRect(X(n), y, 1, espacio::kRenglon, c.borde);
  }
}

void TablaCuadro::PintaFila(QPainter& p, int fila) const {
  const Paleta& c = Colores();
  const int y = Y(fila);
  const auto [desde, hasta] = cuadro_.BarrasDe(fila);
  for (std::size_t b = desde; b < hasta; ++b) PintaBarra(p, cuadro_.barras()[b]);
  p.fillRect(0, y, kLado, espacio::kRenglon, c.superficie);
  const recepcion::Habitacion& h = cuadro_.habitaciones()[static_cast<std::size_t>(fila)];
  const QRect zona(kMargen, y, kLado - 2 * kMargen, espacio::kRenglon);
  p.setPen(c.texto);
  p.drawText(zona, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, Q(h.clave));
  const int clave = p.fontMetrics().horizontalAdvance(Q(h.clave)) + 2 * kMargen;
  const QRect resto = zona.adjusted(clave, 0, 0, 0);
  p.setPen(c.tenue);
  p.drawText(resto, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
             p.fontMetrics().elidedText(Q(h.tipo), Qt::ElideRight, resto.width()));
  p.fillRect(0, y + espacio::kRenglon - 1, viewport()->width(), 1, c.borde);
}

void TablaCuadro::PintaBarra(QPainter& p, const recepcion::Barra& barra) const {
  const QRect zona = ZonaBarra(barra);
  const Caja caja = CajaDe(barra);
  PintaCaja(p, zona, caja);
  const bool bloqueo = barra.clase == recepcion::Barra::Clase::Bloqueo;
  if (bloqueo) p.fillRect(zona.adjusted(1, 1, -1, -1), QBrush(Colores().bordeCampo, Qt::BDiagPattern));
  const QRect texto = zona.adjusted(kMargen, 0, -kMargen, 0)
                          .intersected(QRect(kLado + 2, zona.top(), viewport()->width(), zona.height()));
  constexpr int kCabeAlgo = 18;  // pixels
  if (bloqueo || texto.width() < kCabeAlgo) return;
  p.setPen(TextoSobre(caja.relleno));
  p.drawText(texto, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
             p.fontMetrics().elidedText(Titulo(barra), Qt::ElideRight, texto.width()));
}

void TablaCuadro::PintaSeleccion(QPainter& p) const {
  if (cuadro_.habitaciones().empty()) return;
  PintaAnillo(p, ZonaDe(actual_), hasFocus() ? Colores().acento : Colores().bordeCampo, 2);
}

// Months above, then weekdays and days.
void TablaCuadro::PintaCabeza(QPainter& p) const {
  const Paleta& c = Colores();
  p.fillRect(0, 0, viewport()->width(), kCabeza, c.realce);
  p.setPen(c.texto);
  p.setFont(Fuente(Letra::Fuerte));
  p.drawText(QRect(kMargen, 0, kLado - kMargen, kCabeza), Qt::AlignVCenter | Qt::AlignLeft,
             QStringLiteral("Habitación"));
  const bool estrecho = AnchoNoche() < p.fontMetrics().horizontalAdvance(QStringLiteral("mié")) + 4;
  const int medio = kMeses + (kCabeza - kMeses) / 2;
  for (int n = 0; n < cuadro_.noches(); ++n) {
    const com::Fecha dia = NocheDe(n);
    if (n == 0 || com::ACivil(dia).dia == 1) PintaMes(p, n);
    const QRect zona(X(n), kMeses, X(n + 1) - X(n), kCabeza - kMeses);
    if (dia == cuadro_.hoy()) p.fillRect(zona, c.acento);
    p.fillRect(zona.left(), kMeses, 1, kCabeza, c.borde);
    p.setPen(dia == cuadro_.hoy() ? c.sobreAcento : com::DiaSemana(dia) >= 6 ? c.tenue : c.texto);
    p.setFont(estrecho ? FuenteEstrecha(Letra::Chica, QStringLiteral("30"), zona.width() - 2) : Fuente(Letra::Chica));
    const QString arriba = estrecho ? Dia(dia, "ddd").left(1).toUpper() : Dia(dia, "ddd");
    p.drawText(QRect(zona.left(), kMeses + 3, zona.width(), medio - kMeses - 3), Qt::AlignCenter, arriba);
    // Where the days are narrower than their numbers, one a week stands for all.
    const int sobra = p.fontMetrics().horizontalAdvance(QStringLiteral("30")) + 2 - zona.width();
    if (sobra > 0 && com::DiaSemana(dia) != 1) continue;
    p.drawText(QRect(zona.left(), medio, zona.width(), kCabeza - medio - 3)
                   .adjusted(-std::max(sobra, 0), 0, std::max(sobra, 0), 0),
               Qt::AlignCenter, Dia(dia, "d"));
  }
  p.fillRect(0, kCabeza - 1, viewport()->width(), 1, c.borde);
  p.fillRect(kLado - 1, 0, 1, kCabeza, c.borde);
}

// The month that begins at that night, over its days in sight; cut short where there are few.
void TablaCuadro::PintaMes(QPainter& p, int noche) const {
  const com::Fecha dia = NocheDe(noche);
  int fin = noche + 1;
  while (fin < cuadro_.noches() && com::ACivil(NocheDe(fin)).dia != 1) ++fin;
  const QRect zona = QRect(X(noche), 0, X(fin) - X(noche), kMeses).adjusted(kMargen, 0, -2, 0);
  p.fillRect(X(noche), 0, 1, kMeses, Colores().borde);
  p.setFont(Fuente(Letra::Chica));
  p.setPen(Colores().texto);
  for (const char* formato : {"MMMM yyyy", "MMM yyyy", "MMM"}) {
    const QString mes = Dia(dia, formato);
    if (p.fontMetrics().horizontalAdvance(mes) > zona.width()) continue;
    return p.drawText(zona, Qt::AlignVCenter | Qt::AlignLeft, mes);
  }
}

// --- the user --------------------------------------------------------------------------------------------------------

bool TablaCuadro::viewportEvent(QEvent* evento) {
  if (evento->type() == QEvent::ToolTip) {
    const auto* ayuda = static_cast<QHelpEvent*>(evento);
    const recepcion::Barra* barra = BarraEn(ayuda->pos());
    QToolTip::showText(ayuda->globalPos(), barra == nullptr ? QString() : Consejo(*barra), viewport());
    return true;
  }
  return QAbstractScrollArea::viewportEvent(evento);
}

void TablaCuadro::mousePressEvent(QMouseEvent* evento) {
  pulsado_.reset();
  if (evento->button() != Qt::LeftButton) return;
  const int fila = FilaEn(evento->pos()), columna = ColumnaEn(fila, evento->pos());
  if (fila < 0 || columna < 0) return;
  pulsado_ = evento->pos();
  Mueve(fila, NocheDe(columna), false);
}

// A drag stays in its room and ends before the first night that is taken.
void TablaCuadro::mouseMoveEvent(QMouseEvent* evento) {
  if (!pulsado_ || BarraEn(*pulsado_) != nullptr) return;
  const com::Fecha meta = NocheDe(std::clamp(ColumnaEn(actual_.fila, evento->pos()), 0, cuadro_.noches() - 1));
  com::Fecha noche = actual_.desde;
  const int paso = meta < noche ? -1 : 1;
  while (noche != meta && cuadro_.En(actual_.fila, com::MasDias(noche, paso)) == nullptr)
    noche = com::MasDias(noche, paso);
  Mueve(actual_.fila, noche, true);
}

// A press on a bar opens it; a drag over free nights, one at least, takes them. A mere click only goes there.
void TablaCuadro::mouseReleaseEvent(QMouseEvent* evento) {
  if (!pulsado_ || evento->button() != Qt::LeftButton) return;
  const QPoint desde = *std::exchange(pulsado_, std::nullopt);
  constexpr int kArrastre = 8;  // pixels
  if (const recepcion::Barra* barra = BarraEn(desde)) {
    if (barra == BarraEn(evento->pos()) && alAbrir) Corre([&] { alAbrir(*barra); });
  } else if ((evento->pos() - desde).manhattanLength() >= kArrastre) {
    Acepta();
  }
}

void TablaCuadro::Acepta() {
  Corre([&] {
    if (const recepcion::Barra* barra = cuadro_.En(actual_.fila, actual_.hasta)) {
      if (alAbrir) alAbrir(*barra);
    } else if (alReservar) {
      alReservar(actual_.fila, actual_.Primera(), com::MasDias(actual_.Ultima(), 1));
    }
  });
}

void TablaCuadro::Mueve(int fila, com::Fecha noche, bool extiende) {
  const int filas = static_cast<int>(cuadro_.habitaciones().size());
  if (filas == 0) return;
  viewport()->update(ZonaDe(actual_));
  actual_.fila = std::clamp(fila, 0, filas - 1);
  actual_.hasta = ALaVista(noche);
  if (!extiende) actual_.desde = actual_.hasta;
  Descubre(actual_.fila);
  Di();
  viewport()->update(ZonaDe(actual_));
}

void TablaCuadro::Di() {
  dicho_ = cuadro_.habitaciones().empty() ? QString() : Dice();
  setAccessibleDescription(dicho_);
  if (alMover) alMover(dicho_);
}

QString TablaCuadro::Dice() const {
  const QString cuarto = Q(cuadro_.habitaciones()[static_cast<std::size_t>(actual_.fila)].clave) + QStringLiteral(", ");
  const int noches = com::DiasEntre(actual_.Primera(), actual_.Ultima()) + 1;
  if (noches > 1) {
    return cuarto + Q(regional::FechaCorta(actual_.Primera())) + QStringLiteral(" – ") +
           Q(regional::FechaCorta(com::MasDias(actual_.Ultima(), 1))) +
           QStringLiteral(": %1 noches. Pulse Enter para reservarlas").arg(noches);
  }
  const recepcion::Barra* barra = cuadro_.En(actual_.fila, actual_.hasta);
  const QString noche = cuarto + Dia(actual_.hasta, "ddd d 'de' MMMM") + QStringLiteral(": ");
  if (barra == nullptr)
    return noche + QStringLiteral("libre. Pulse Enter para reservarla; Mayús y flechas toman más noches");
  return noche + Consejo(*barra).replace(QLatin1Char('\n'), QStringLiteral(" · "));
}

void TablaCuadro::keyPressEvent(QKeyEvent* evento) {
  if (evento->modifiers().testFlag(Qt::ControlModifier)) return evento->ignore();
  const bool extiende = evento->modifiers().testFlag(Qt::ShiftModifier);
  const int pagina = verticalScrollBar()->pageStep();
  switch (evento->key()) {
    case Qt::Key_Left:
      return Mueve(actual_.fila, com::MasDias(actual_.hasta, -1), extiende);
    case Qt::Key_Right:
      return Mueve(actual_.fila, com::MasDias(actual_.hasta, 1), extiende);
    case Qt::Key_Up:
      return Mueve(actual_.fila - 1, actual_.hasta, false);
    case Qt::Key_Down:
      return Mueve(actual_.fila + 1, actual_.hasta, false);
    case Qt::Key_PageUp:
      return Mueve(actual_.fila - pagina, actual_.hasta, false);
    case Qt::Key_PageDown:
      return Mueve(actual_.fila + pagina, actual_.hasta, false);
    case Qt::Key_Home:
      return Mueve(actual_.fila, cuadro_.desde(), extiende);
    case Qt::Key_End:
      return Mueve(actual_.fila, NocheDe(cuadro_.noches() - 1), extiende);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return Acepta();
    case Qt::Key_Escape:
      // In mid-drag it takes the drag back, and the release means nothing.
      if (!pulsado_) break;
      pulsado_.reset();
      return Mueve(actual_.fila, actual_.desde, false);
    default:
      break;
  }
  QAbstractScrollArea::keyPressEvent(evento);
}

}  // namespace vista
