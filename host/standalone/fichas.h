// A statement cut into tokens, and the words of the language that the translator knows.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace autonomo {

enum class Clase {
  Palabra,
  Nombre,
  Numero,
  Literal,
  Pregunta,
  Comparacion,
  Suma,
  Aritmetica,
  Coma,
  Punto,
  Abre,
  Cierra,
  Fin
};

struct Ficha {
  Clase clase;
  std::size_t inicio, fin;  // bytes of the statement
  std::string texto;        // upper-case for words and names, as it stands for signs
};

// Words of the language that it knows. With a parenthesis right after: whether that is a group, not a call.
struct Palabra {
  std::string_view texto;
  bool antesDeGrupo;
};

// Of an upper-case word; null for a name.
const Palabra* BuscaPalabra(std::string_view texto);

// Whether the upper-case word means something to SQL Server or to one of the engines, and is not translated.
bool EsPalabraAjena(std::string_view texto);

// Every token of the statement in order; "?" is one where it stands for a value. com::Error kSentencia, with the place,
// for a text without its closing quote, a number ill-written, and a sign that it does not know.
std::vector<Ficha> LeeFichas(std::string_view sentencia, bool admitePreguntas);

// "Línea 1, columna 8: " of a byte of the statement; both from 1, in characters.
std::string Lugar(std::string_view sentencia, std::size_t byte);

// com::Error kSentencia that tells the place and what is wrong there, with the statement.
[[noreturn]] void Rechaza(std::string_view sentencia, std::size_t byte, const std::string& que);

}  // namespace autonomo
