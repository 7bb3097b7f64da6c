#include "platform/controls/utf8.h"

namespace controles {
namespace {

bool EsContinuacion(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace

std::size_t LargoUtf8(std::string_view texto) {
  std::size_t n = 0;
  for (const char c : texto) {
    if (!EsContinuacion(c)) ++n;
  }
  return n;
}

char32_t LeeUtf8(std::string_view texto, std::size_t& posicion) {
  const auto primero = static_cast<unsigned char>(texto[posicion++]);
  if (primero < 0xC0) return primero;
  const int siguen = primero >= 0xF0 ? 3 : primero >= 0xE0 ? 2 : 1;
  char32_t c = primero & (0x3F >> siguen);
  for (int i = 0; i < siguen && posicion < texto.size() && EsContinuacion(texto[posicion]); ++i) {
    c = (c << 6) | (static_cast<unsigned char>(texto[posicion++]) & 0x3F);
  }
  return c;
}

void AgregaUtf8(std::string& texto, char32_t caracter) {
  const auto byte = [&](char32_t b) { texto.push_back(static_cast<char>(static_cast<unsigned char>(b))); };
  if (caracter < 0x80) {
    byte(caracter);
  } else if (caracter < 0x800) {
    byte(0xC0 | (caracter >> 6));
    byte(0x80 | (caracter & 0x3F));
  } else if (caracter < 0x10000) {
    byte(0xE0 | (caracter >> 12));
    byte(0x80 | ((caracter >> 6) & 0x3F));
    byte(0x80 | (caracter & 0x3F));
  } else {
    byte(0xF0 | ((caracter >> 18) & 0x07));
    byte(0x80 | ((caracter >> 12) & 0x3F));
    byte(0x80 | ((caracter >> 6) & 0x3F));
    byte(0x80 | (caracter & 0x3F));
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

}  // namespace controles
