// The keys of a grid, by its kind: a board is marked, lines are written in.
#pragma once

#include <QKeyEvent>

namespace controles {
class Grid;
}

namespace vista {

class VistaGrid;

class TecladoGrid {
 public:
  explicit TecladoGrid(VistaGrid& vista) : vista_(vista) {}

  // The grid's own keys; true when the key is dealt with. The form's keys and plain characters are none.
  bool Atiende(const QKeyEvent& evento);
  // A plain character is typed; false for any other key.
  bool Escribe(const QKeyEvent& evento);

 private:
  enum class En { Tablero, Renglones, Todos };
  struct Regla {
    En en;
    bool (*es)(const QKeyEvent& evento);
    // True when the key is dealt with; false hands it to the rules below.
    bool (TecladoGrid::*hace)(const QKeyEvent& evento);
  };
  // In the order in which they are asked.
  static const Regla kReglas[];

  bool Explica(const QKeyEvent& evento);
  bool MarcaNoche(const QKeyEvent& evento);
  bool MarcaTramo(const QKeyEvent& evento);
  bool Deshace(const QKeyEvent& evento);
  bool QuitaSenalada(const QKeyEvent& evento);
  bool EntraAEscribir(const QKeyEvent& evento);
  bool Respalda(const QKeyEvent& evento);
  bool SeleccionaTodo(const QKeyEvent& evento);
  bool VaciaCelda(const QKeyEvent& evento);
  bool OlvidaSeleccion(const QKeyEvent& evento);
  bool EntraPrimera(const QKeyEvent& evento);
  bool AgregaAlFinal(const QKeyEvent& evento);
  bool Agrega(const QKeyEvent& evento);
  bool VaAlExtremo(const QKeyEvent& evento);
  bool VaDePagina(const QKeyEvent& evento);
  bool Copia(const QKeyEvent& evento);
  bool Pega(const QKeyEvent& evento);
  bool PasaAlGrid(const QKeyEvent& evento);

  controles::Grid& grid() const;
  // The keyboard comes to a grid without a current cell: the first night, or the first cell.
  void VaALaPrimera();
  // Goes to a cell that can be seen.
  void VaA(int fila, int columna);

  VistaGrid& vista_;
};

}  // namespace vista
