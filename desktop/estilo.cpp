#include "desktop/estilo.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>
#include <QPalette>
#include <QWidget>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "desktop/estilo_base.h"

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
                                                    {"acentoSuave", c.acentoSuave}};
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

void AplicaEstilo(QApplication& app, Tema tema, double letra) {
  const bool sistema = SistemaOscuro();
  oscuro = tema == Tema::Oscuro || (tema == Tema::Sistema && sistema);
  QApplication::setStyle(CreaEstiloBase());
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

QFont FuenteEstrecha(Letra letra, const QString& texto, int ancho) {
  constexpr int kPaso = 4, kMinimo = 80;  // per cent
  QFont f;
  for (const Letra tamano : {letra, Letra::Chica}) {
    f = Fuente(tamano);
    const int natural = f.stretch() > 0 ? f.stretch() : 100;
    for (int porciento = 100; porciento >= kMinimo; porciento -= kPaso) {
      f.setStretch(natural * porciento / 100);
      if (QFontMetrics(f).horizontalAdvance(texto) <= ancho) return f;
    }
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

QColor ColorEstado(std::int32_t color, bool dado) {
  return dado ? QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF) : TonoEstado(color);
}

double Contraste(const QColor& uno, const QColor& otro) {
  // Light as the eye weighs it.
  const auto luz = [](const QColor& c) {
    const auto lineal = [](double v) { return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * lineal(c.redF()) + 0.7152 * lineal(c.greenF()) + 0.0722 * lineal(c.blueF()) + 0.05;
  };
  const double a = luz(uno), b = luz(otro);
  return std::max(a, b) / std::min(a, b);
}

QColor TextoSobre(const QColor& fondo) {
  const QColor tinta(0x12, 0x19, 0x24), blanco(0xFF, 0xFF, 0xFF), negro(0x00, 0x00, 0x00);
  if (Contraste(tinta, fondo) >= kContrasteLegible) return tinta;
  // On some middling tone only black will do.
  return Contraste(blanco, fondo) >= kContrasteLegible ? blanco : negro;
}

void Marca(QWidget& w, const char* propiedad, bool valor) {
  if (w.property(propiedad).toBool() == valor) return;
  w.setProperty(propiedad, valor);
  w.update();
}

void Atenua(QWidget& w) { w.setForegroundRole(QPalette::PlaceholderText); }

}  // namespace vista
