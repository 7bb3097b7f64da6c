// A message box: what it shows, the bits of its style, its answers.
#pragma once

#include <string>

namespace controles {

struct CajaMensaje {
  std::string texto;
  int estilo = 0;  // of controles::caja
  std::string titulo;
  int ventana = 0;
  std::string pantalla;
  std::string id;
  std::string detalle;  // told below the text; "" nothing
};

// Bits of a style, as the platform counts them: one of the buttons, one of the icons, which button is the default.
namespace caja {
inline constexpr int kAceptarCancelar = 1, kSiNo = 4, kBotones = 7;  // none of these: OK alone
inline constexpr int kCritico = 16, kPregunta = 32, kAviso = 48, kInforme = 64, kIconos = 112;
inline constexpr int kSegundo = 256;  // the second button, not the first
}  // namespace caja

inline constexpr int kAceptar = 1, kCancelar = 2, kSi = 6, kNo = 7;
// The answer of the box's default button.
int RespuestaPredeterminada(int estilo);

}  // namespace controles
