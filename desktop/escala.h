// Twips and pixels meet here: the models count in twips (1440 an inch), widgets in device-independent pixels.
#pragma once

#include <cmath>

namespace vista {

// 15 twips a pixel at 96 dots an inch; larger on a screen whose fonts are set larger.
inline constexpr int kTwipsPorPixel = 15;

// Enlargement of the whole layout over 96 dots an inch; 1 unless the system asks for larger text.
double Ampliacion();
// ppp: logical dots an inch of the screen. Values under 96 count as 96.
void FijaAmpliacion(double ppp);

inline int APixel(int twips) { return static_cast<int>(std::lround(twips * Ampliacion() / kTwipsPorPixel)); }
inline int ATwips(int pixeles) { return static_cast<int>(std::lround(pixeles * kTwipsPorPixel / Ampliacion())); }

}  // namespace vista
