// What a person writes into the cells of a grid, and takes back.
#pragma once

#include <QString>
#include <vector>

#include "desktop/vista.h"
#include "platform/controls/grid.h"

namespace vista {

// Whether a row may be added now: to lines that are open, under the capture of a screen that has one.
bool PuedeAgregar(const controles::Grid& grid);
// Whether a row may be taken away now.
bool PuedeQuitar(const controles::Grid& grid);

class EscrituraGrid {
 public:
  EscrituraGrid(controles::Grid& grid, const Contexto& contexto) : grid_(grid), contexto_(contexto) {}

  // A text typed at once (input method): what the grid accepts of it is appended to what was typed in the cell. In an
  // empty grid it begins a row.
  void Escribe(const QString& texto);
  // A text that the grid accepts whole is appended likewise; any other is refused with a beep.
  void Pega(const QString& texto);

  // Ctrl+A: what is typed next replaces the cell's text.
  void SeleccionaTodo();
  bool Reemplaza() const { return reemplaza_; }
  void OlvidaSeleccion() { reemplaza_ = false; }
  // Empties the cell whose text is selected; false when none is.
  bool Vacia();

  // Keeps the row as it is before its current cell is typed in.
  void Respalda();
  // Esc: what was typed in the cell, and what the screen has done to the row for it, is taken back. A row that was
  // begun with it is emptied as by hand. False when there is nothing to take back.
  bool Deshace();

  // A person's first key in lines without a current cell goes to the first line, where writing goes on. False when it
  // cannot.
  bool EntraAEscribir();

 private:
  bool CeldaAbierta() const;  // there is a current cell, and it may be typed in
  // What the rules of the current cell let through.
  QString LoQueAcepta(const QString& texto) const;
  // Behind what was typed in the cell, or in its place.
  void Agrega(const QString& aceptado);

  controles::Grid& grid_;
  const Contexto& contexto_;
  bool reemplaza_ = false;
  struct Respaldo {
    int fila = -1, columna = -1;
    std::vector<com::Variant> celdas;
  };
  Respaldo respaldo_;
};

}  // namespace vista
