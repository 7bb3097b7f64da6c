// What the words of scripts, command lines and lists stand for.
#pragma once

#include <charconv>
#include <string>

#include "platform/com/error.h"
#include "platform/com/fecha.h"

namespace guion {

// Why a word is none of them: "«X» no es un número", "«X» no es una fecha AAAA-MM-DD".
std::string NoEsNumero(const std::string& palabra);
std::string NoEsFecha(const std::string& palabra);

// The whole word as a number. com::Error kArgumento for one that is none, here and below. antes: what the error's text
// says before the word ("noches ").
template <class Numero>
Numero NumeroDe(const std::string& palabra, const std::string& antes = {}) {
  Numero n{};
  const char* fin = palabra.data() + palabra.size();
  const auto [hasta, error] = std::from_chars(palabra.data(), fin, n);
  if (error != std::errc{} || hasta != fin) throw com::Error(com::error::kArgumento, antes + NoEsNumero(palabra));
  return n;
}
// AAAA-MM-DD, with a time of day or without.
com::Fecha FechaDe(const std::string& palabra);
// The same for a word that is to say the time: the error's text shows how.
com::Fecha MomentoDe(const std::string& palabra);

}  // namespace guion
