// Names of tables and columns that come from outside, checked against the schema before they stand in a statement.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace autonomo {

// As the schema spells them.
struct NombresDeTabla {
  std::string tabla;
  std::vector<std::string> columnas;
};
// Case-blind. Error kArgumento when there is no such table or it has no such column.
NombresDeTabla RevisaNombres(std::string_view tabla, const std::vector<std::string>& columnas);

}  // namespace autonomo
