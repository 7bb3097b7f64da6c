// SQL text with values.
//
// A statement is written as the SQL that it is, with a "?" where something is put in: between the quotes that the text
// supplies a value, as it is, unescaped; outside them text that was built elsewhere. The text remembers where each
// value stands, so that a value can never become SQL: Verifica refuses the statement, as the server's parser would,
// when a value does not stand wholly inside one string literal (for example a key with a lone quote).
#pragma once

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ado {

// Half-open byte range of a value in the text.
struct Tramo {
  std::size_t inicio = 0;
  std::size_t fin = 0;
};

class TextoSQL;

// What takes the place of a "?"; refers to what it is made from.
class Parte {
 public:
  Parte(std::string_view valor) : valor_(valor) {}
  Parte(const std::string& valor) : valor_(valor) {}
  Parte(const char* valor) : valor_(valor) {}
  Parte(const TextoSQL& texto) : texto_(&texto) {}

 private:
  friend class TextoSQL;
  std::string_view valor_;
  const TextoSQL* texto_ = nullptr;
};

class TextoSQL {
 public:
  TextoSQL() = default;
  // A statement without values.
  explicit TextoSQL(std::string_view fragmento) { Agrega(fragmento); }
  // A statement with a part for each "?", as Agrega.
  TextoSQL(std::string_view plantilla, std::initializer_list<Parte> partes) { Agrega(plantilla, partes); }

  // Appends text as it stands; a "?" is nothing special.
  TextoSQL& Agrega(std::string_view fragmento);
  // Appends text that was built elsewhere, with its values.
  TextoSQL& Agrega(const TextoSQL& otro);
  // Appends text with a part for each "?", in order. Error kSentencia when there are more or fewer parts.
  TextoSQL& Agrega(std::string_view plantilla, std::initializer_list<Parte> partes) {
    return Agrega(plantilla, std::span(partes.begin(), partes.size()));
  }
  TextoSQL& Agrega(std::string_view plantilla, std::span<const Parte> partes);
  void Limpia();

  [[nodiscard]] const std::string& Texto() const { return texto_; }
  [[nodiscard]] const std::vector<Tramo>& Valores() const { return valores_; }
  [[nodiscard]] bool Vacio() const { return texto_.empty(); }

  // Error kSentencia with the whole text as statement when a value has left its literal: it stands outside quotes, or
  // holds a run of quotes of odd length.
  void Verifica() const;

 private:
  void Valor(std::string_view valor);

  std::string texto_;
  std::vector<Tramo> valores_;
};

}  // namespace ado
