// Twips and pixels meet here: the models count in twips (1440 an inch), widgets in device-independent pixels.
#pragma once

#include <cmath>

namespace vista {

// 15 twips a pixel at 96 dots an inch; larger on a screen whose fonts are set larger.
inline constexpr int kTwipsPorPixel = 15;

// Width of the reservation screen, twips.
inline constexpr int kAnchoPantalla = 15000;

// Enlargement of the whole layout over 96 dots an inch; 1 unless the system asks for larger text or its screen is
// narrow.
double Ampliacion();
// ppp: logical dots an inch of the screen; values under 96 count as 96. ancho: its device-independent pixels of width,
// 0 for any; where they are too few for the reservation screen the layout is drawn smaller, down to four fifths. Gives
// the factor by which letters must follow.
double FijaAmpliacion(double ppp, int ancho = 0);

inline int APixel(int twips) { return static_cast<int>(std::lround(twips * Ampliacion() / kTwipsPorPixel)); }
inline int ATwips(int pixeles) { return static_cast<int>(std::lround(pixeles * kTwipsPorPixel / Ampliacion())); }

}  // namespace vista
