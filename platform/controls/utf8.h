// Code points of UTF-8 texts.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace controles {

// Number of code points.
std::size_t LargoUtf8(std::string_view texto);
// Reads the code point at the position and moves past it; a byte that begins none is given as it is.
char32_t LeeUtf8(std::string_view texto, std::size_t& posicion);
void AgregaUtf8(std::string& texto, char32_t caracter);
// Removes the last code point; nothing on an empty text.
void QuitaUltimoUtf8(std::string& texto);
// The first n code points.
std::string PrincipioUtf8(std::string_view texto, std::size_t n);

}  // namespace controles
