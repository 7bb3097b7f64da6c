// The one style of the program: palette, spacing, type scale, state colours. Every colour and size that a view uses
// comes from here.
#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <cstdint>

class QApplication;
class QWidget;

namespace vista {

enum class Tema { Sistema, Claro, Oscuro };

// Named colours of the theme in force.
struct Paleta {
  QColor fondo;       // window
  QColor superficie;  // fields, grids, cards
  QColor realce;      // headers, hovered buttons
  QColor borde;       // lines between things
  QColor bordeCampo;  // outline of an input
  QColor texto;
  QColor tenue;        // captions, hints
  QColor acento;       // focus, default button, selection
  QColor sobreAcento;  // text on it
  QColor acentoSuave;  // selected row
  QColor peligro;
  QColor aviso;
  QColor informe;
  QColor finSemana;  // weekend columns
};

// Spacing, pixels at 96 dots an inch.
namespace espacio {
inline constexpr int kChico = 8, kMedio = 12;
inline constexpr int kRadio = 5;
inline constexpr int kRenglon = 26;  // height of a grid row
}  // namespace espacio

// Applies the style to the application: font, palette, style sheet. letra: size of the letters, 1 the system's own.
// Call it again to change the theme.
void AplicaEstilo(QApplication& app, Tema tema = Tema::Sistema, double letra = 1.0);
bool EsOscuro();
const Paleta& Colores();

// Type scale.
enum class Letra { Normal, Chica, Fuerte, Titulo };
QFont Fuente(Letra letra);
// The same set narrower, down to four fifths, then in small letters, as far as a text needs to fit in so many pixels.
QFont FuenteEstrecha(Letra letra, const QString& texto, int ancho);

// A state colour of the hotel (0x00BBGGRR) toned for the theme: the hue stays, glaring tones are softened so that text
// on it can be read.
QColor TonoEstado(std::int32_t color);
// What a state is painted in: a colour that the hotel gives exactly as it is, a designed one toned.
QColor ColorEstado(std::int32_t color, bool dado);
// How well two colours stand out from one another: 1 not at all, 21 black on white.
double Contraste(const QColor& uno, const QColor& otro);
// Least contrast of a text that can be read.
inline constexpr double kContrasteLegible = 4.5;
// Dark or light, whichever can be read on that background.
QColor TextoSobre(const QColor& fondo);

// Sets a property of a widget that the style looks at ("malo", "muestra", "apagado").
void Marca(QWidget& w, const char* propiedad, bool valor);
// Writes a widget's text in the colour of captions and hints.
void Atenua(QWidget& w);

}  // namespace vista
