#include "desktop/estilo_base.h"

#include <QLabel>
#include <QPainter>
#include <QPalette>
#include <QPolygonF>
#include <QProxyStyle>
#include <QPushButton>
#include <QStyleOption>
#include <QToolButton>
#include <algorithm>

#include "desktop/estilo.h"
#include "desktop/iconos.h"
#include "desktop/pintura.h"

namespace vista {

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

  // Texts stand as they are, tips too: a guest's name is no markup.
  using QProxyStyle::polish;
  void polish(QWidget* w) override {
    if (auto* rotulo = qobject_cast<QLabel*>(w); rotulo != nullptr && rotulo->textFormat() == Qt::AutoText)
      rotulo->setTextFormat(Qt::PlainText);
    QProxyStyle::polish(w);
  }

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

  int styleHint(StyleHint cual, const QStyleOption* opcion, const QWidget* w, QStyleHintReturn* mas) const override {
    if (cual == SH_LineEdit_PasswordCharacter) return '*';
    return QProxyStyle::styleHint(cual, opcion, w, mas);
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

  // Draws a label in another colour, our icons with it.
  template <class Opcion>
  void Rotula(ControlElement cual, Opcion opcion, const QColor& tinta, QPainter* p, const QWidget* w) const {
    if (const QIcon icono = Icono(opcion.icon.name(), tinta); !icono.isNull()) opcion.icon = icono;
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
    const int detalle =
        (cual == PE_IndicatorRadioButton ? 1 : 0) | (puesta ? 2 : 0) | (enfocada ? 4 : 0) | (activa ? 8 : 0);
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

QStyle* CreaEstiloBase() { return new EstiloBase; }

}  // namespace vista
