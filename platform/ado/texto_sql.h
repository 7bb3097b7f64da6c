// SQL text built from literal fragments and values.
//
// Fragments are the system's own text and supply the quotes; values go in as they are, unescaped. The text remembers
// where each value stands, so that a value can never become SQL: Verifica refuses the statement, as the server's parser
// would, when a value does not stand wholly inside one string literal (for example a key with a lone quote).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ado {

// Half-open byte range of a value in the text.
struct Tramo {
  std::size_t inicio = 0;
  std::size_t fin = 0;
};

class TextoSQL {
 public:
  TextoSQL() = default;
  // A statement without values.
  explicit TextoSQL(std::string_view fragmento) { Agrega(fragmento); }

  TextoSQL& Agrega(std::string_view fragmento);
  // Appends text that was built elsewhere, with its values.
  TextoSQL& Agrega(const TextoSQL& otro);
  TextoSQL& Valor(std::string_view valor);
  void Limpia();

  const std::string& Texto() const { return texto_; }
  const std::vector<Tramo>& Valores() const { return valores_; }
  bool Vacio() const { return texto_.empty(); }

  // Error kSentencia with the whole text as statement when a value has left its literal: it stands outside quotes, or
  // holds a run of quotes of odd length.
  void Verifica() const;

 private:
  std::string texto_;
  std::vector<Tramo> valores_;
};

}  // namespace ado
