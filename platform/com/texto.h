// UTF-8 texts: their code points, their case, their digits, their blanks.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace com {

// Number of code points.
std::size_t LargoUtf8(std::string_view texto);
// Length in bytes of the code point that begins at the front, 0 when none does (an empty text, a broken sequence, a
// form longer than needed, a surrogate).
std::size_t LargoDeSecuencia(std::string_view texto);
// Reads the code point at the position, which lies in the text, and moves past it; a byte that begins none is given as
// it is.
char32_t LeeUtf8(std::string_view texto, std::size_t& posicion);
void AgregaUtf8(std::string& texto, char32_t caracter);
// Removes the last code point; nothing on an empty text.
void QuitaUltimoUtf8(std::string& texto);
// The first n code points.
std::string PrincipioUtf8(std::string_view texto, std::size_t n);

// The platform's table of letters, one code point for one. plegada is the same for two letters that differ by their
// case alone.
struct Letras {
  char32_t (*mayuscula)(char32_t) = nullptr;
  char32_t (*minuscula)(char32_t) = nullptr;
  char32_t (*plegada)(char32_t) = nullptr;
};
// The host gives the table before it opens a database. Without one only the letters of ASCII, which never ask it, have
// case. The functions must outlive every use.
void FijaLetras(const Letras& letras);

std::string Mayusculas(std::string_view texto);
std::string Minusculas(std::string_view texto);
// What texts that differ by case alone have in common; for keys of tables in memory, not to be shown.
std::string Plegado(std::string_view texto);
// The same letter whatever its case; ASCII letters become capitals.
char32_t LetraPlegada(char32_t letra);
bool IgualSinCaja(std::string_view a, std::string_view b);

// Those of ASCII, whatever the process locale.
inline bool EsDigito(char c) { return c >= '0' && c <= '9'; }
bool SoloDigitos(std::string_view texto);  // false for an empty text

std::string Recorta(std::string_view texto);         // blanks at both ends
std::string RecortaDerecha(std::string_view texto);  // blanks at the end

}  // namespace com
