#include "desktop/estilo.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmapCache>
#include <QPolygonF>
#include <QProxyStyle>
#include <QStyleOption>
#include <algorithm>

namespace vista {

namespace {

const Paleta kClara{
    .fondo = QColor(0xF3, 0xF5, 0xF8),
    .superficie = QColor(0xFF, 0xFF, 0xFF),
    .realce = QColor(0xE9, 0xED, 0xF3),
    .borde = QColor(0xD9, 0xDF, 0xE8),
    .bordeCampo = QColor(0xA9, 0xB4, 0xC4),
    .texto = QColor(0x1B, 0x24, 0x33),
    .tenue = QColor(0x56, 0x62, 0x75),
    .acento = QColor(0x1F, 0x5F, 0xBF),
    .sobreAcento = QColor(0xFF, 0xFF, 0xFF),
    .acentoSuave = QColor(0xDC, 0xE8, 0xFA),
    .peligro = QColor(0xB4, 0x23, 0x18),
    .aviso = QColor(0xB5, 0x6A, 0x00),
    .informe = QColor(0x1F, 0x5F, 0xBF),
    .finSemana = QColor(0xFB, 0xEE, 0xDC),
};

const Paleta kOscura{
    .fondo = QColor(0x1A, 0x1F, 0x27),
    .superficie = QColor(0x22, 0x29, 0x33),
    .realce = QColor(0x2C, 0x35, 0x41),
    .borde = QColor(0x38, 0x43, 0x52),
    .bordeCampo = QColor(0x5E, 0x6C, 0x80),
    .texto = QColor(0xE8, 0xEC, 0xF2),
    .tenue = QColor(0xA6, 0xB2, 0xC3),
    .acento = QColor(0x6F, 0xA8, 0xFF),
    .sobreAcento = QColor(0x0D, 0x18, 0x2A),
    .acentoSuave = QColor(0x2B, 0x40, 0x5F),
    .peligro = QColor(0xFF, 0x8A, 0x80),
    .aviso = QColor(0xFF, 0xC1, 0x6B),
    .informe = QColor(0x6F, 0xA8, 0xFF),
    .finSemana = QColor(0x3D, 0x35, 0x29),
};

bool oscuro = false;

// The system's own choice, read from the palette it gave before ours was set.
bool SistemaOscuro() {
  static const bool inicial = QApplication::palette().color(QPalette::Window).lightness() <
                              QApplication::palette().color(QPalette::WindowText).lightness();
  return inicial;
}

QPalette PaletaQt(const Paleta& c) {
  QPalette p;
  p.setColor(QPalette::Window, c.fondo);
  p.setColor(QPalette::WindowText, c.texto);
  p.setColor(QPalette::Base, c.superficie);
  p.setColor(QPalette::AlternateBase, c.realce);
  p.setColor(QPalette::Text, c.texto);
  p.setColor(QPalette::PlaceholderText, c.tenue);
  p.setColor(QPalette::Button, c.realce);
  p.setColor(QPalette::ButtonText, c.texto);
  p.setColor(QPalette::BrightText, c.peligro);
  p.setColor(QPalette::Highlight, c.acento);
  p.setColor(QPalette::HighlightedText, c.sobreAcento);
  p.setColor(QPalette::Link, c.acento);
  p.setColor(QPalette::ToolTipBase, c.superficie);
  p.setColor(QPalette::ToolTipText, c.texto);
  p.setColor(QPalette::Mid, c.borde);
  for (const auto rol : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    p.setColor(QPalette::Disabled, rol, c.tenue);
  }
  p.setColor(QPalette::Disabled, QPalette::Base, c.fondo);
  return p;
}

// Style sheet; names between % are colours of the palette.
constexpr const char* kHoja = R"(
QToolTip { background: %superficie%; color: %texto%; border: 1px solid %bordeCampo%; padding: 4px; }
QLineEdit, QPlainTextEdit {
  background: %superficie%; color: %texto%; border: 1px solid %bordeCampo%; border-radius: 5px;
  padding: 1px 5px; selection-background-color: %acento%; selection-color: %sobreAcento%; }
QLineEdit:focus, QPlainTextEdit:focus { border: 2px solid %acento%; padding: 0px 4px; }
QLineEdit:disabled, QPlainTextEdit:disabled { background: %fondo%; color: %texto%; border-color: %borde%; }
QLineEdit[apagado="true"] { background: %fondo%; border-color: %borde%; }
QLineEdit[muestra="true"] { background: transparent; border: none; padding: 2px 6px; color: %texto%; }
QLineEdit[importe="true"] { background: transparent; border: none; padding: 2px 6px; font-weight: 600; }
QLineEdit[malo="true"] { border: 2px solid %peligro%; padding: 0px 4px; }
QPushButton {
  background: %superficie%; color: %texto%; border: 1px solid %bordeCampo%; border-radius: 5px; padding: 2px 10px; }
QPushButton:hover { background: %realce%; }
QPushButton:pressed { background: %acentoSuave%; }
QPushButton:focus { border: 2px solid %acento%; padding: 1px 9px; }
QPushButton:disabled { color: %tenue%; border-color: %borde%; background: %fondo%; }
QPushButton:default { background: %acento%; color: %sobreAcento%; border-color: %acento%; }
QPushButton:default:focus { border: 2px solid %texto%; }
QPushButton[icono="true"] { padding: 0px; }
QToolButton { background: transparent; color: %texto%; border: 1px solid transparent; border-radius: 5px;
  padding: 3px 8px; }
QToolButton:hover:enabled { background: %realce%; }
QToolButton:pressed { background: %acentoSuave%; }
QToolButton:focus { border: 2px solid %acento%; }
QToolButton:disabled { color: %bordeCampo%; }
QToolButton[principal="true"]:enabled { background: %acento%; color: %sobreAcento%; }
QToolButton[principal="true"]:enabled:hover { background: %acento%; border: 2px solid %texto%; }
QLineEdit > QToolButton { padding: 0px; border: none; }
QGroupBox { background: %superficie%; border: 1px solid %borde%; border-radius: 6px; }
QGroupBox[titulado="true"] { margin-top: 0px; }
QFrame[barra="true"] QToolButton { padding: 0px 8px; }
QFrame[barra="true"] { background: %superficie%; border: none; border-bottom: 1px solid %borde%; }
QFrame[cuadro="true"] { background: %superficie%; border: 1px solid %borde%; border-radius: 5px; }
QFrame#estado { background: %superficie%; border: none; border-top: 1px solid %borde%; }
QLabel[tenue="true"] { color: %tenue%; }
QComboBox QAbstractItemView { background: %superficie%; border: 1px solid %bordeCampo%;
  selection-background-color: %acentoSuave%; selection-color: %texto%; outline: 0; }
QTabWidget::pane { border: 1px solid %borde%; background: %fondo%; }
QTabBar::tab { background: %fondo%; color: %tenue%; border: none; border-bottom: 2px solid transparent; padding: 6px 10px; }
QTabBar::tab:selected { color: %texto%; border-bottom: 2px solid %acento%; }
QTabBar::tab:hover { background: %realce%; }
QTabBar:focus { background: %acentoSuave%; }
QCheckBox, QRadioButton { spacing: 6px; }
QCheckBox:focus, QRadioButton:focus { color: %acento%; }
QTableView { background: %superficie%; alternate-background-color: %superficie%; color: %texto%;
  border: none; gridline-color: %borde%; selection-background-color: %acentoSuave%; selection-color: %texto%; outline: 0; }
QHeaderView { background: %realce%; border: none; }
QHeaderView::section { background: %realce%; color: %texto%; border: none; border-right: 1px solid %borde%;
  border-bottom: 1px solid %borde%; padding: 2px 5px; }
QTableCornerButton::section { background: %realce%; border: none; border-right: 1px solid %borde%;
  border-bottom: 1px solid %borde%; }
QListView, QTreeView { background: %superficie%; border: 1px solid %bordeCampo%; border-radius: 5px; outline: 0; }
QTableWidget { border: 2px solid %borde%; }
QListView:focus, QTableWidget:focus { border-color: %acento%; }
QListView::item, QTreeView::item { padding: 4px; }
QListView::item:selected, QTreeView::item:selected { background: %acentoSuave%; color: %texto%; }
QScrollBar:horizontal { background: %fondo%; height: 12px; margin: 0; }
QScrollBar:vertical { background: %fondo%; width: 12px; margin: 0; }
QScrollBar::handle { background: %bordeCampo%; border-radius: 4px; margin: 2px; min-width: 28px; min-height: 28px; }
QScrollBar::handle:hover { background: %tenue%; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QMenu { background: %superficie%; border: 1px solid %bordeCampo%; padding: 4px; }
QMenu::item { padding: 5px 22px; border-radius: 4px; }
QMenu::item:selected { background: %acentoSuave%; color: %texto%; }
QCalendarWidget QToolButton { padding: 4px 10px; font-weight: 600; }
QCalendarWidget QAbstractItemView { background: %superficie%; selection-background-color: %acento%;
  selection-color: %sobreAcento%; outline: 0; }
)";

QString Hoja(const Paleta& c) {
  const std::pair<const char*, QColor> nombres[] = {{"fondo", c.fondo},
                                                    {"superficie", c.superficie},
                                                    {"realce", c.realce},
                                                    {"borde", c.borde},
                                                    {"bordeCampo", c.bordeCampo},
                                                    {"texto", c.texto},
                                                    {"tenue", c.tenue},
                                                    {"acento", c.acento},
                                                    {"sobreAcento", c.sobreAcento},
                                                    {"acentoSuave", c.acentoSuave},
                                                    {"peligro", c.peligro}};
  QString hoja = QString::fromUtf8(kHoja);
  for (const auto& [nombre, color] : nombres) {
    hoja.replace(QLatin1Char('%') + QLatin1String(nombre) + QLatin1Char('%'), color.name());
  }
  return hoja;
}

double tamanoBase = 9.5;
// A very wide letter is set a little narrower.
constexpr int kEstrecha = 93;

}  // namespace

namespace {

// Boxes and buttons of choice in the theme's colours; the base style's are hardly seen on a dark screen.
class EstiloBase : public QProxyStyle {
 public:
  EstiloBase() : QProxyStyle(QStringLiteral("Fusion")) {}

  void drawPrimitive(PrimitiveElement cual, const QStyleOption* opcion, QPainter* p, const QWidget* w) const override {
    if (cual != PE_IndicatorCheckBox && cual != PE_IndicatorRadioButton) {
      return QProxyStyle::drawPrimitive(cual, opcion, p, w);
    }
    const Paleta& c = Colores();
    const bool activa = opcion->state.testFlag(State_Enabled), puesta = opcion->state.testFlag(State_On);
    const bool enfocada = opcion->state.testFlag(State_HasFocus);
    const QRectF zona = QRectF(opcion->rect).adjusted(1, 1, -1, -1);
    const QColor tinta = activa ? c.acento : c.tenue;
    p->save();
    p->setRenderHint(QPainter::Antialiasing);
    p->setPen(QPen(puesta || enfocada ? tinta : c.bordeCampo, enfocada ? 2.0 : 1.2));
    p->setBrush(activa ? c.superficie : c.fondo);
    if (cual == PE_IndicatorRadioButton) {
      p->drawEllipse(zona);
      p->setPen(Qt::NoPen);
      p->setBrush(tinta);
      const double margen = zona.width() * 0.26;
      if (puesta) p->drawEllipse(zona.adjusted(margen, margen, -margen, -margen));
    } else {
      if (puesta) p->setBrush(tinta);
      p->drawRoundedRect(zona, 3, 3);
      p->setPen(QPen(c.sobreAcento, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      const auto en = [&](double x, double y) { return zona.topLeft() + QPointF(zona.width() * x, zona.height() * y); };
      if (puesta) p->drawPolyline(QPolygonF({en(0.24, 0.54), en(0.43, 0.72), en(0.77, 0.30)}));
    }
    p->restore();
  }
};

}  // namespace

void AplicaEstilo(QApplication& app, Tema tema, double letra) {
  const bool sistema = SistemaOscuro();
  oscuro = tema == Tema::Oscuro || (tema == Tema::Sistema && sistema);
  QApplication::setStyle(new EstiloBase);
  QFont base = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
  tamanoBase = std::clamp(base.pointSizeF(), 9.0, 11.0) * letra;
  base.setPointSizeF(tamanoBase);
  if (QFontInfo(base).family() == QLatin1String("DejaVu Sans")) base.setStretch(kEstrecha);
  QApplication::setFont(base);
  QApplication::setPalette(PaletaQt(Colores()));
  app.setStyleSheet(Hoja(Colores()));
}

bool EsOscuro() { return oscuro; }
const Paleta& Colores() { return oscuro ? kOscura : kClara; }

QFont Fuente(Letra letra) {
  QFont f = QApplication::font();
  switch (letra) {
    case Letra::Normal:
      break;
    case Letra::Chica:
      f.setPointSizeF(tamanoBase * 0.85);
      break;
    case Letra::Fuerte:
      f.setWeight(QFont::DemiBold);
      break;
    case Letra::Titulo:
      f.setPointSizeF(tamanoBase * 1.2);
      f.setWeight(QFont::DemiBold);
      break;
  }
  return f;
}

QColor TonoEstado(std::int32_t color) {
  const QColor original(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF);
  float h = 0, s = 0, l = 0;
  original.getHslF(&h, &s, &l);
  const float saturacion = std::min(s, oscuro ? 0.45F : 0.62F);
  // On a light screen the hotel's dark tones stand out, on a dark one they are the bright ones.
  const float clara = l < 0.35F ? 0.22F + 0.80F * l : 0.40F + 0.58F * l;
  const float luz = oscuro ? 0.62F - 0.42F * l : clara;
  return QColor::fromHslF(std::max(h, 0.0F), saturacion, std::min(luz, 0.97F));
}

QColor TextoSobre(const QColor& fondo) {
  // Brightness as the eye weighs the colours; about the middle dark and white letters contrast equally.
  const double luminancia = 0.2126 * fondo.redF() + 0.7152 * fondo.greenF() + 0.0722 * fondo.blueF();
  return luminancia > 0.5 ? QColor(0x12, 0x19, 0x24) : QColor(0xFF, 0xFF, 0xFF);
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

// A board has thousands of cells of a few looks: each look is drawn once and copied.
void PintaEstado(QPainter& p, const QRect& zona, const QString& estilo, const QColor& tono) {
  const Trama trama = TramaDe(estilo);
  if (trama == Trama::Ninguna) return p.fillRect(zona, tono);
  const qreal escala = p.device()->devicePixelRatioF();
  const QString clave = QStringLiteral("estado%1_%2_%3x%4_%5")
                            .arg(static_cast<int>(trama))
                            .arg(tono.rgba())
                            .arg(zona.width())
                            .arg(zona.height())
                            .arg(escala);
  QPixmap dibujo;
  if (!QPixmapCache::find(clave, &dibujo)) {
    dibujo = QPixmap(zona.size() * escala);
    dibujo.setDevicePixelRatio(escala);
    dibujo.fill(tono);
    QPainter pincel(&dibujo);
    DibujaEstado(pincel, QRect(QPoint(0, 0), zona.size()), trama, tono);
    pincel.end();
    QPixmapCache::insert(clave, dibujo);
  }
  p.drawPixmap(zona.topLeft(), dibujo);
}

}  // namespace vista
