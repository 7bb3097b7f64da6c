// The keys that the program has, gathered from the tables by which it acts on them.
#pragma once

#include <QString>
#include <vector>

#include "desktop/vista.h"

namespace vista {

struct TeclaUsada {
  QString tecla;  // as the manual writes it: "Ctrl+Enter"
  QString que;    // what it does
  QString donde;  // where it does
};

// Of the toolbar and the menu, the fields, the room lines and the board.
std::vector<TeclaUsada> TeclasDelPrograma(const Contexto& contexto);

}  // namespace vista
