// The keys of a grid, by its kind: a board is marked, lines are written in.
#pragma once

#include <QKeyEvent>
#include <vector>

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
  // The keys that a clerk is told of, what they do, and whether on the board, in the lines or in both.
  struct Dicha {
    const char *teclas, *que, *donde;
  };
  static std::vector<Dicha> Dichas();
  // A plain character is typed; false for any other key.
  bool Escribe(const QKeyEvent& evento);

 private:
  enum class En { Tablero, Renglones, Todos };
  struct Regla {
    En en = En::Todos;
    bool (*es)(const QKeyEvent& evento) = nullptr;
    // True when the key is dealt with; false hands it to the rules below.
    bool (TecladoGrid::*hace)(const QKeyEvent& evento) = nullptr;
    const char* teclas = nullptr;  // as the manual writes them, and what they do; null for what serves other rules
    const char* que = nullptr;
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
