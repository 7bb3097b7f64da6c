// Splits a statement into the template that it shares with others and the values that are its own.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace autonomo {

// A literal or a "?" of a statement.
struct ValorPartido {
  std::string_view texto;  // between the quotes, as it stands in the statement
  bool comillas = false;   // holds doubled quotes
  bool pregunta = false;   // a "?", not a literal
};

struct Partida {
  std::string plantilla;              // key: the statement with a mark for each value
  std::vector<ValorPartido> valores;  // in order; views of the statement
};

// Whether a character of a template stands for a value.
bool EsMarcaDeValor(char c);

// Fills `partida`, whose memory is used again. "?" is a value only with conPreguntas. com::Error kSentencia for a
// literal without end. It knows nothing of comments or other quotes: the translator refuses both.
void Parte(std::string_view sentencia, bool conPreguntas, Partida& partida);

// The value of a literal: doubled quotes become one.
std::string SinComillasDobles(std::string_view texto);

}  // namespace autonomo
