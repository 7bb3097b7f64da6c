#include "platform/com/texto.h"

#include <algorithm>

namespace com {
namespace {

unsigned char Byte(char c) { return static_cast<unsigned char>(c); }
bool EsContinuacion(char c) { return (Byte(c) & 0xC0U) == 0x80U; }
bool EsAscii(char c) { return Byte(c) < 0x80; }

char32_t Misma(char32_t letra) { return letra; }

Letras& LasLetras() {
  static Letras letras{Misma, Misma, Misma};
  return letras;
}

bool EsMayusculaAscii(char32_t c) { return c >= U'A' && c <= U'Z'; }
bool EsMinusculaAscii(char32_t c) { return c >= U'a' && c <= U'z'; }
char32_t Mayuscula(char32_t c) {
  if (c >= 0x80) return LasLetras().mayuscula(c);
  return EsMinusculaAscii(c) ? c ^ 0x20U : c;
}
char32_t Minuscula(char32_t c) {
  if (c >= 0x80) return LasLetras().minuscula(c);
  return EsMayusculaAscii(c) ? c ^ 0x20U : c;
}

// Each code point changed; what is no code point stays as it stands.
template <char32_t (*Cambia)(char32_t)>
std::string CadaLetra(std::string_view texto) {
  std::string salida;
  salida.reserve(texto.size());
  for (std::size_t i = 0; i < texto.size();) {
    const std::size_t largo = LargoDeSecuencia(texto.substr(i));
    if (largo == 0) {
      salida.push_back(texto[i++]);
    } else if (largo == 1) {
      salida.push_back(static_cast<char>(Cambia(Byte(texto[i++]))));
    } else {
      AgregaUtf8(salida, Cambia(LeeUtf8(texto, i)));
    }
  }
  return salida;
}

}  // namespace

std::size_t LargoUtf8(std::string_view texto) {
  return static_cast<std::size_t>(std::count_if(texto.begin(), texto.end(), [](char c) { return !EsContinuacion(c); }));
}

std::size_t LargoDeSecuencia(std::string_view texto) {
  if (texto.empty()) return 0;
  const unsigned char b = Byte(texto[0]);
  if (b < 0x80) return 1;
  std::size_t largo = 0;
  if (b >= 0xC2 && b < 0xE0) largo = 2;
  if (b >= 0xE0 && b < 0xF0) largo = 3;
  if (b >= 0xF0 && b <= 0xF4) largo = 4;
  if (largo == 0 || texto.size() < largo) return 0;
  if (!std::all_of(texto.begin() + 1, texto.begin() + static_cast<std::ptrdiff_t>(largo), EsContinuacion)) return 0;
  const unsigned char segundo = Byte(texto[1]);
  const bool fuera = (b == 0xE0 && segundo < 0xA0) || (b == 0xED && segundo >= 0xA0) || (b == 0xF0 && segundo < 0x90) ||
                     (b == 0xF4 && segundo >= 0x90);
  return fuera ? 0 : largo;
}

char32_t LeeUtf8(std::string_view texto, std::size_t& posicion) {
  const unsigned char primero = Byte(texto[posicion]);
  if (primero < 0x80) {
    ++posicion;
    return primero;
  }
  const std::size_t largo = LargoDeSecuencia(texto.substr(posicion));
  ++posicion;
  if (largo == 0) return primero;
  char32_t c = primero & (0xFFU >> (largo + 1));
  for (std::size_t i = 1; i < largo; ++i) c = (c << 6) | (Byte(texto[posicion++]) & 0x3FU);
  return c;
}

void AgregaUtf8(std::string& texto, char32_t caracter) {
  const auto byte = [&](char32_t b) { texto.push_back(static_cast<char>(static_cast<unsigned char>(b))); };
  const auto cola = [&](unsigned corrimiento) { byte(0x80U | ((caracter >> corrimiento) & 0x3FU)); };
  if (caracter < 0x80) {
    byte(caracter);
  } else if (caracter < 0x800) {
    byte(0xC0U | (caracter >> 6));
    cola(0);
  } else if (caracter < 0x10000) {
    byte(0xE0U | (caracter >> 12));
    cola(6);
    cola(0);
  } else {
    byte(0xF0U | ((caracter >> 18) & 0x07U));
    cola(12);
    cola(6);
    cola(0);
  }
}

void QuitaUltimoUtf8(std::string& texto) {
  while (!texto.empty() && EsContinuacion(texto.back())) texto.pop_back();
  if (!texto.empty()) texto.pop_back();
}

std::string PrincipioUtf8(std::string_view texto, std::size_t n) {
  std::size_t i = 0;
  while (i < texto.size()) {
    if (!EsContinuacion(texto[i]) && n-- == 0) break;
    ++i;
  }
  return std::string(texto.substr(0, i));
}

void FijaLetras(const Letras& letras) { LasLetras() = letras; }

char32_t LetraPlegada(char32_t letra) {
  if (letra < 0x80) return Mayuscula(letra);
  const char32_t plegada = LasLetras().plegada(letra);
  return plegada < 0x80 ? Mayuscula(plegada) : plegada;
}

std::string Mayusculas(std::string_view texto) { return CadaLetra<Mayuscula>(texto); }
std::string Minusculas(std::string_view texto) { return CadaLetra<Minuscula>(texto); }
std::string Plegado(std::string_view texto) { return CadaLetra<LetraPlegada>(texto); }

bool IgualSinCaja(std::string_view a, std::string_view b) {
  if (a == b) return true;
  const auto [x, y] = std::mismatch(a.begin(), a.end(), b.begin(), b.end(), [](char m, char n) {
    return EsAscii(m) && EsAscii(n) && Mayuscula(Byte(m)) == Mayuscula(Byte(n));
  });
  if (x == a.end() && y == b.end()) return true;
  // A difference in plain ASCII on both sides decides; the rest is rare.
  if ((x == a.end() || EsAscii(*x)) && (y == b.end() || EsAscii(*y))) return false;
  return Plegado(a) == Plegado(b);
}

bool SoloDigitos(std::string_view texto) { return !texto.empty() && std::all_of(texto.begin(), texto.end(), EsDigito); }

std::string Recorta(std::string_view texto) {
  const auto inicio = texto.find_first_not_of(' ');
  return inicio == std::string_view::npos ? std::string() : RecortaDerecha(texto.substr(inicio));
}

std::string RecortaDerecha(std::string_view texto) {
  const auto fin = texto.find_last_not_of(' ');
  return std::string(texto.substr(0, fin == std::string_view::npos ? 0 : fin + 1));
}

}  // namespace com
