// The letters that names and numbers of a statement are made of, whatever reads it, and whether it only reads; and
// where a text may be cut.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "platform/com/texto.h"

namespace autonomo {

// Letters outside ASCII count: a table's name may have an accent.
inline bool EsInicioDeNombre(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
inline bool EsDeNombre(char c) { return EsInicioDeNombre(c) || com::EsDigito(c); }

// Whether a statement only reads, by its first word.
inline bool SoloLee(std::string_view sentencia) {
  constexpr std::string_view kLee = "SELECT";
  const std::size_t inicio = std::min(sentencia.find_first_not_of(" \t\r\n"), sentencia.size());
  return com::IgualSinCaja(sentencia.substr(inicio, kLee.size()), kLee);
}

// The most bytes, up to maximo, that hold whole characters of a UTF-8 text; maximo where the text is not UTF-8.
inline std::size_t BytesEnteros(std::string_view texto, std::size_t maximo) {
  if (texto.size() <= maximo) return texto.size();
  for (std::size_t n = maximo; n > 0 && n + 4 > maximo; --n)
    if ((static_cast<unsigned char>(texto[n]) & 0xC0U) != 0x80U) return n;
  return maximo;
}

}  // namespace autonomo
