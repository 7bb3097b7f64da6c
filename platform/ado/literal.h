// Text that stands between quotes in a statement.
#pragma once

#include <string>
#include <string_view>

namespace ado {

// The text without the quotes around it: its own quotes become pairs.
std::string Literal(std::string_view texto, char comilla = '\'');

}  // namespace ado
