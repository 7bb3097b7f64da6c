#include "desktop/estilo.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPolygonF>
#include <QProxyStyle>
#include <QPushButton>
#include <QStyleOption>
#include <QToolButton>
#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

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
QPlainTextEdit {
  background: %superficie%; color: %texto%; border: 1px solid %bordeCampo%; border-radius: 5px;
  padding: 1px 5px; selection-background-color: %acento%; selection-color: %sobreAcento%; }
QPlainTextEdit:focus { border: 2px solid %acento%; padding: 0px 4px; }
QPlainTextEdit:disabled { background: %fondo%; color: %texto%; border-color: %borde%; }
QComboBox QAbstractItemView { background: %superficie%; border: 1px solid %bordeCampo%;
  selection-background-color: %acentoSuave%; selection-color: %texto%; outline: 0; }
QTabWidget::pane { border: 1px solid %borde%; background: %fondo%; }
QTabBar::tab { background: %fondo%; color: %tenue%; border: none; border-bottom: 2px solid transparent; padding: 6px 10px; }
QTabBar::tab:selected { color: %texto%; border-bottom: 2px solid %acento%; }
QTabBar::tab:hover { background: %realce%; }
QTabBar:focus { background: %acentoSuave%; }
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

// One for each Letra.
std::array<QFont, 4> fuentes;
// A very wide letter is set a little narrower.
constexpr int kEstrecha = 93;

}  // namespace

namespace {

// What is drawn many times alike is drawn once, and copied.
struct Sello {
  enum class Forma { Estado, Esquinas, Eleccion } forma;
  QRgb relleno, tinta;
  int detalle;
  int ancho = 0, alto = 0;
  qreal escala = 1;
  auto operator<=>(const Sello&) const = default;
};

// Where a point is no whole number of pixels a copy would blur.
bool Entera(qreal escala) { return escala == std::floor(escala); }

// The picture of what a seal's drawer draws in a place.
template <class Dibujo>
const QImage& Copia(const Sello& sello, Dibujo&& dibuja) {
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

// Draws in the place, by a copy where that is as sharp.
template <class Dibujo>
void Estampa(QPainter& p, const QRect& zona, Sello sello, Dibujo&& dibuja) {
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

}  // namespace

namespace {

// How an input looks: what it only shows has no box, what cannot be used just now a fainter one.
Caja CajaDeCampo(const QStyleOption& opcion, const QWidget* w) {
  const Paleta& c = Colores();
  const auto tiene = [w](const char* propiedad) { return w != nullptr && w->property(propiedad).toBool(); };
  if (tiene("muestra")) return {};
  const bool usable = opcion.state.testFlag(QStyle::State_Enabled) && !tiene("apagado");
  Caja caja{usable ? c.superficie : c.fondo, usable ? c.bordeCampo : c.borde, 1};
  if (opcion.state.testFlag(QStyle::State_HasFocus)) caja = {caja.relleno, c.acento, 2};
  if (tiene("malo")) caja = {caja.relleno, c.peligro, 2};
  return caja;
}

// A button on the screen; the one that Enter presses stands out.
Caja CajaDeBoton(const QStyleOptionButton& opcion) {
  const Paleta& c = Colores();
  if (!opcion.state.testFlag(QStyle::State_Enabled)) return {c.fondo, c.borde};
  const bool enfocado = opcion.state.testFlag(QStyle::State_HasFocus);
  if (opcion.features.testFlag(QStyleOptionButton::DefaultButton)) {
    return {c.acento, enfocado ? c.texto : c.acento, enfocado ? 2 : 1};
  }
  const QColor fondo = opcion.state.testFlag(QStyle::State_Sunken)      ? c.acentoSuave
                       : opcion.state.testFlag(QStyle::State_MouseOver) ? c.realce
                                                                        : c.superficie;
  return {fondo, enfocado ? c.acento : c.bordeCampo, enfocado ? 2 : 1};
}

bool Principal(const QWidget* w) { return w != nullptr && w->property("principal").toBool(); }

// A button of a bar: flat until the pointer or the keyboard is on it, but for the bar's main one.
Caja CajaDeHerramienta(const QStyleOption& opcion, const QWidget* w) {
  const Paleta& c = Colores();
  Caja caja;
  if (!opcion.state.testFlag(QStyle::State_Enabled)) return caja;
  const bool encima = opcion.state.testFlag(QStyle::State_MouseOver);
  if (opcion.state.testFlag(QStyle::State_HasFocus)) caja = {{}, Principal(w) ? c.texto : c.acento, 2};
  if (Principal(w)) {
    caja.relleno = c.acento;
    if (encima) caja = {c.acento, c.texto, 2};
  } else if (opcion.state.testFlag(QStyle::State_Sunken)) {
    caja.relleno = c.acentoSuave;
  } else if (encima) {
    caja.relleno = c.realce;
  }
  return caja;
}

// Inputs and buttons in the theme's colours. What a screen has many of is drawn here and not by the style sheet, which
// takes several times as long.
class EstiloBase : public QProxyStyle {
 public:
  EstiloBase() : QProxyStyle(QStringLiteral("Fusion")) {}

  void drawPrimitive(PrimitiveElement cual, const QStyleOption* opcion, QPainter* p, const QWidget* w) const override {
    switch (cual) {
      case PE_IndicatorCheckBox:
      case PE_IndicatorRadioButton:
        return DibujaEleccion(cual, *opcion, *p);
      case PE_PanelLineEdit:
        if (ConMarco(opcion)) return PintaCaja(*p, opcion->rect, CajaDeCampo(*opcion, w));
        break;
      case PE_PanelButtonCommand:
        if (const auto* boton = qstyleoption_cast<const QStyleOptionButton*>(opcion))
          return PintaCaja(*p, boton->rect, CajaDeBoton(*boton));
        break;
      case PE_PanelButtonTool:
        return PintaCaja(*p, opcion->rect, CajaDeHerramienta(*opcion, w));
      case PE_FrameFocusRect:  // their boxes show it
        if (qobject_cast<const QPushButton*>(w) != nullptr || qobject_cast<const QToolButton*>(w) != nullptr) return;
        break;
      default:
        break;
    }
    QProxyStyle::drawPrimitive(cual, opcion, p, w);
  }

  void drawControl(ControlElement cual, const QStyleOption* opcion, QPainter* p, const QWidget* w) const override {
    const Paleta& c = Colores();
    const bool activa = opcion->state.testFlag(State_Enabled), enfocada = opcion->state.testFlag(State_HasFocus);
    if (const auto* boton = qstyleoption_cast<const QStyleOptionButton*>(opcion)) {
      const bool deEnter = boton->features.testFlag(QStyleOptionButton::DefaultButton);
      if (cual == CE_PushButtonLabel && activa && deEnter) return Rotula(cual, *boton, c.sobreAcento, p, w);
      const bool eleccion = cual == CE_RadioButtonLabel || cual == CE_CheckBoxLabel;
      if (eleccion && enfocada) return Rotula(cual, *boton, c.acento, p, w);
    }
    if (const auto* boton = qstyleoption_cast<const QStyleOptionToolButton*>(opcion)) {
      QStyleOptionToolButton rotulo = *boton;
      if (boton->toolButtonStyle == Qt::ToolButtonTextBesideIcon) rotulo.rect.adjust(5, 0, -5, 0);
      if (!activa) return Rotula(cual, rotulo, c.bordeCampo, p, w);
      if (Principal(w)) return Rotula(cual, rotulo, c.sobreAcento, p, w);
      return QProxyStyle::drawControl(cual, &rotulo, p, w);
    }
    QProxyStyle::drawControl(cual, opcion, p, w);
  }

  // A bar without arrows: a track and a handle.
  void drawComplexControl(ComplexControl cual, const QStyleOptionComplex* opcion, QPainter* p,
                          const QWidget* w) const override {
    const auto* barra = qstyleoption_cast<const QStyleOptionSlider*>(opcion);
    if (cual != CC_ScrollBar || barra == nullptr) return QProxyStyle::drawComplexControl(cual, opcion, p, w);
    p->fillRect(barra->rect, Colores().fondo);
    const bool tomada = barra->state.testFlag(State_MouseOver) && barra->activeSubControls.testFlag(SC_ScrollBarSlider);
    if (barra->minimum == barra->maximum) return;
    const QColor tinta = tomada ? Colores().tenue : Colores().bordeCampo;
    PintaCaja(*p, subControlRect(cual, opcion, SC_ScrollBarSlider, w).adjusted(2, 2, -2, -2), {tinta, {}});
  }

  QRect subControlRect(ComplexControl cual, const QStyleOptionComplex* opcion, SubControl parte,
                       const QWidget* w) const override {
    const auto* barra = qstyleoption_cast<const QStyleOptionSlider*>(opcion);
    if (cual != CC_ScrollBar || barra == nullptr) return QProxyStyle::subControlRect(cual, opcion, parte, w);
    return visualRect(barra->direction, barra->rect, ParteDeBarra(*barra, parte));
  }

  QRect subElementRect(SubElement cual, const QStyleOption* opcion, const QWidget* w) const override {
    if (cual == SE_LineEditContents && ConMarco(opcion)) return opcion->rect.adjusted(6, 2, -6, -2);
    return QProxyStyle::subElementRect(cual, opcion, w);
  }

  QSize sizeFromContents(ContentsType cual, const QStyleOption* opcion, const QSize& dentro,
                         const QWidget* w) const override {
    if (cual == CT_PushButton) return dentro + QSize(22, 6);
    if (cual == CT_ToolButton) return dentro + QSize(18, EnBarra(w) ? 2 : 8);
    return QProxyStyle::sizeFromContents(cual, opcion, dentro, w);
  }

  int pixelMetric(PixelMetric cual, const QStyleOption* opcion, const QWidget* w) const override {
    switch (cual) {
      case PM_CheckBoxLabelSpacing:
      case PM_RadioButtonLabelSpacing:
        return 6;
      case PM_ScrollBarExtent:
        return 12;
      case PM_ScrollBarSliderMin:
        return kManijaMinima;
      default:
        break;
    }
    return QProxyStyle::pixelMetric(cual, opcion, w);
  }

 private:
  // The entry inside a spin box has no frame of its own.
  static bool ConMarco(const QStyleOption* opcion) {
    const auto* marco = qstyleoption_cast<const QStyleOptionFrame*>(opcion);
    return marco != nullptr && marco->lineWidth > 0;
  }

  static bool EnBarra(const QWidget* w) {
    return w != nullptr && w->parentWidget() != nullptr && w->parentWidget()->property("barra").toBool();
  }

  static constexpr int kManijaMinima = 28;

  // Place of the track, of the handle or of what is before and after it.
  static QRect ParteDeBarra(const QStyleOptionSlider& barra, SubControl parte) {
    const QRect& zona = barra.rect;
    const bool acostada = barra.orientation == Qt::Horizontal;
    const int largo = acostada ? zona.width() : zona.height();
    const qint64 pasos = qint64{barra.maximum} - barra.minimum;
    const qint64 todo = pasos + barra.pageStep;
    int manija = largo;
    if (pasos > 0 && todo > 0) manija = static_cast<int>(qint64{largo} * barra.pageStep / todo);
    manija = std::clamp(manija, std::min(kManijaMinima, largo), largo);
    const int desde =
        sliderPositionFromValue(barra.minimum, barra.maximum, barra.sliderPosition, largo - manija, barra.upsideDown);
    const auto tramo = [&](int inicio, int fin) {
      return acostada ? QRect(zona.left() + inicio, zona.top(), fin - inicio, zona.height())
                      : QRect(zona.left(), zona.top() + inicio, zona.width(), fin - inicio);
    };
    switch (parte) {
      case SC_ScrollBarGroove:
        return zona;
      case SC_ScrollBarSlider:
        return tramo(desde, desde + manija);
      case SC_ScrollBarSubPage:
        return tramo(0, desde);
      case SC_ScrollBarAddPage:
        return tramo(desde + manija, largo);
      default:
        return {};
    }
  }

  // Draws a label in another colour.
  template <class Opcion>
  void Rotula(ControlElement cual, Opcion opcion, const QColor& tinta, QPainter* p, const QWidget* w) const {
    for (const auto papel : {QPalette::WindowText, QPalette::ButtonText}) opcion.palette.setColor(papel, tinta);
    QProxyStyle::drawControl(cual, &opcion, p, w);
  }

  static void DibujaEleccion(PrimitiveElement cual, const QStyleOption& opcion, QPainter& p) {
    const bool activa = opcion.state.testFlag(State_Enabled), puesta = opcion.state.testFlag(State_On);
    const bool enfocada = opcion.state.testFlag(State_HasFocus);
    const Paleta& c = Colores();
    const QColor tinta = activa ? c.acento : c.tenue;
    const auto dibuja = [&](QPainter& pincel, const QRectF& zona) {
      pincel.setRenderHint(QPainter::Antialiasing);
      pincel.setPen(QPen(puesta || enfocada ? tinta : c.bordeCampo, enfocada ? 2.0 : 1.2));
      pincel.setBrush(activa ? c.superficie : c.fondo);
      if (cual == PE_IndicatorRadioButton) {
        DibujaOpcion(pincel, zona, tinta, puesta);
      } else {
        DibujaCasilla(pincel, zona, tinta, puesta);
      }
    };
    const int detalle = (cual == PE_IndicatorRadioButton ? 1 : 0) + 2 * puesta + 4 * enfocada + 8 * activa;
    Estampa(p, opcion.rect, {Sello::Forma::Eleccion, c.superficie.rgba(), tinta.rgba(), detalle},
            [&](QPainter& pincel, const QRect& zona) { dibuja(pincel, QRectF(zona).adjusted(1, 1, -1, -1)); });
  }

  static void DibujaOpcion(QPainter& p, const QRectF& zona, const QColor& tinta, bool puesta) {
    p.drawEllipse(zona);
    if (!puesta) return;
    p.setPen(Qt::NoPen);
    p.setBrush(tinta);
    const double margen = zona.width() * 0.26;
    p.drawEllipse(zona.adjusted(margen, margen, -margen, -margen));
  }

  static void DibujaCasilla(QPainter& p, const QRectF& zona, const QColor& tinta, bool puesta) {
    if (puesta) p.setBrush(tinta);
    p.drawRoundedRect(zona, 3, 3);
    if (!puesta) return;
    const auto en = [&](double x, double y) { return zona.topLeft() + QPointF(zona.width() * x, zona.height() * y); };
    p.setPen(QPen(Colores().sobreAcento, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPolyline(QPolygonF({en(0.24, 0.54), en(0.43, 0.72), en(0.77, 0.30)}));
  }
};

}  // namespace

void AplicaEstilo(QApplication& app, Tema tema, double letra) {
  const bool sistema = SistemaOscuro();
  oscuro = tema == Tema::Oscuro || (tema == Tema::Sistema && sistema);
  QApplication::setStyle(new EstiloBase);
  QFont base = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
  base.setPointSizeF(std::clamp(base.pointSizeF(), 9.0, 11.0) * letra);
  if (QFontInfo(base).family() == QLatin1String("DejaVu Sans")) base.setStretch(kEstrecha);
  QApplication::setFont(base);
  fuentes.fill(QApplication::font());
  const auto cambia = [&](Letra cual, double tamano, QFont::Weight peso) {
    QFont& fuente = fuentes[static_cast<std::size_t>(cual)];
    fuente.setPointSizeF(base.pointSizeF() * tamano);
    fuente.setWeight(peso);
  };
  cambia(Letra::Chica, 0.85, QFont::Normal);
  cambia(Letra::Fuerte, 1.0, QFont::DemiBold);
  cambia(Letra::Titulo, 1.2, QFont::DemiBold);
  QPalette paleta = PaletaQt(Colores());
  QApplication::setPalette(paleta);
  // What stands in an input can be read whether or not it may be changed.
  paleta.setColor(QPalette::Disabled, QPalette::Text, Colores().texto);
  QApplication::setPalette(paleta, "QLineEdit");
  app.setStyleSheet(Hoja(Colores()));
}

bool EsOscuro() { return oscuro; }
const Paleta& Colores() { return oscuro ? kOscura : kClara; }

QFont Fuente(Letra letra) { return fuentes[static_cast<std::size_t>(letra)]; }

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

void Atenua(QWidget& w) { w.setForegroundRole(QPalette::PlaceholderText); }

}  // namespace vista
