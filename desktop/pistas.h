// What the screens want of their views and the controls do not say themselves. The views know no screen: where one of
// its controls, columns or styles is special, the record here names it.
#pragma once

#include <QString>
#include <string>
#include <utility>
#include <vector>

#include "platform/controls/grid.h"

namespace vista {

// Of a kind of grid.
struct PistasGrid {
  std::string primera{};                  // column that a person's first key goes to where no cell is current
  std::vector<std::string> enteras{};     // columns whose amounts are never cut short
  std::string libre{}, marcada{};         // styles that a mark of the user takes away and gives
  std::vector<std::string> explicadas{};  // columns whose amounts can be explained
  std::string acordada{};                 // column that shows when a line's price was agreed
  // Texts: what adds a row and what takes it away, tip of the row headers, and what is told in place of cells.
  QString agregar{}, quitar{}, manija{}, sinColumnas{}, sinFilas{};
};

// Of a screen's toolbar, which tells the record that is shown and what was done last.
struct PistasBarra {
  QString nueva{};                // in place of a key that a new record has not yet
  QString editada{}, mostrada{};  // before the key of one that is edited, and that is shown
  QString abrir{}, copiar{};      // what opens the record of what was done last, and what copies its key
};

struct Pistas {
  std::vector<std::pair<std::string, QString>> iconos{};      // button, and what Icono calls its picture
  std::vector<std::pair<std::string, std::string>> fichas{};  // field, and the button that opens its key's record
  std::vector<std::string> enteros{};                         // fields that take whole numbers only
  std::string trasEditar{};                                   // field that a person goes on with after Edit
  std::string abre{};                                         // field that opens a stored record by its key
  std::vector<std::string> totales{};                         // fields that sum up the lines
  PistasBarra barra{};
  PistasGrid renglones{}, tablero{};

  const PistasGrid& De(const controles::Grid& grid) const;
  // "" for a button without a picture.
  QString IconoDe(const std::string& boton) const;
  // "" for a field whose key has no record to open.
  std::string FichaDe(const std::string& campo) const;
  bool EsEntero(const std::string& campo) const;
};

// A grid whose cells have states is a board: its cells are marked; those of the others are written in.
bool EsTablero(const controles::Grid& grid);

// Those of the reservation screen and of the board.
Pistas PistasDeLasPantallas();

}  // namespace vista
