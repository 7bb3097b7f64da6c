#include "platform/ado/literal.h"

namespace ado {

std::string Literal(std::string_view texto, char comilla) {
  std::string literal;
  for (const char c : texto) literal.append(c == comilla ? 2 : 1, c);
  return literal;
}

}  // namespace ado
