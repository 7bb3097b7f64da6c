// Lines of a script: words, quotes, comments, and the check that they are UTF-8.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace guion {

// One order as it stands in the script.
struct Linea {
  std::string texto;                  // without comment and outer blanks; "" for a line without an order
  std::vector<std::string> palabras;  // quotes and escapes resolved
};

// Splits a line at blanks. A word that begins with a double quote ends at the next one and may hold blanks, \" \\ and
// \n.
// "#" where a word could begin starts a comment. The words of "sql" are "sql" and the whole statement, which may stand
// with or without quotes. com::Error kArgumento for an open quote, an unknown escape or text right after a quote.
Linea DivideLinea(std::string_view linea);

bool EsUtf8(std::string_view texto);
// The text with every byte that is not UTF-8 replaced by U+FFFD.
std::string Utf8Saneado(std::string_view texto);
// Characters (code points) of a text. com::Error kArgumento when it is not UTF-8.
std::u32string CodigosDe(std::string_view texto);

}  // namespace guion
