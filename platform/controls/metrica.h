// Text widths in the forms' font, from one fixed table, so that every view gives the same column widths.
#pragma once

#include <string_view>

namespace controles {

// Width in twips of a text in the forms' font, a proportional sans-serif at 8.25 points. Accented letters are as wide
// as their base letter; characters outside the table are as wide as a digit.
int AnchoTextoEstandar(std::string_view utf8);

}  // namespace controles
