// The mouse over a grid: cells gone to, nights marked by a drag, lines taken by their number, their menu.
#pragma once

#include <functional>
#include <optional>
#include <utility>

class QMouseEvent;
class QPoint;
class QWidget;

namespace vista {

class VistaGrid;

class RatonGrid {
 public:
  explicit RatonGrid(VistaGrid& vista) : vista_(vista) {}

  // A cell, or the header of a row, is pressed; a row that the grid does not have changes nothing.
  void Pulsa(int fila, int columna);
  void PulsaFila(int fila);
  // Drawing over nights of the row gives them the state that the first one got; a fast mouse jumps over some.
  void Arrastra(int fila, int columna);
  void Suelta() { arrastre_.reset(); }
  // A person's right button: goes to the row, offers what can be done with it.
  void PideMenu(QWidget& donde, const QPoint& punto);
  // See Vista::Blanco.
  std::function<void()> Blanco(QWidget& donde, const QMouseEvent& evento);

  // Line whose header was clicked: Supr takes it away; -1 none.
  int senalada() const { return senalada_; }
  int DejaSenalada() { return std::exchange(senalada_, -1); }

 private:
  VistaGrid& vista_;
  int senalada_ = -1;
  // State that a drag over the board gives to the cells that it enters.
  std::optional<bool> arrastre_;
};

}  // namespace vista
