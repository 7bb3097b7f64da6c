// Whole numbers as digits of fixed width, whatever the process locale.
#pragma once

#include <cstdint>
#include <string>

namespace com {

// Appends the number with leading zeros up to the width; base 10 or 16 (capital letters).
inline void AgregaCifras(std::string& texto, std::uint32_t numero, std::size_t ancho, std::uint32_t base = 10) {
  const std::size_t inicio = texto.size();
  do {
    texto.insert(texto.begin() + static_cast<std::ptrdiff_t>(inicio), "0123456789ABCDEF"[numero % base]);
    numero /= base;
  } while (numero > 0);
  const std::size_t largo = texto.size() - inicio;
  if (largo < ancho) texto.insert(inicio, ancho - largo, '0');
}

}  // namespace com
