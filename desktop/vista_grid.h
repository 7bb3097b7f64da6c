// View of a grid: two tables side by side on one item model, the left one with the columns that stay in sight (Clave
// and Nombre). Cells are painted in the hotel's state colours; moves, typing and marks go to the grid's
// user members.
#pragma once

#include <QFrame>
#include <QHash>
#include <QTableView>
#include <QToolButton>
#include <memory>
#include <optional>

#include "desktop/modelo_grid.h"
#include "desktop/vista.h"
#include "platform/controls/grid.h"

namespace vista {

class VistaGrid : public Vista {
 public:
  VistaGrid(controles::Grid& grid, QWidget* padre, const Contexto& contexto);
  ~VistaGrid() override;

  void Refresca() override;
  void Suelta() override;
  QWidget* foco() const override;
  bool Tecla(const QKeyEvent& evento) override;
  std::function<void()> Blanco(QWidget& donde, const QMouseEvent& evento) override;

  ModeloGrid& modelo() const { return *modelo_; }
  // The table that shows a column.
  QTableView* tabla(int columna) const;
  // Place of a cell in the view's widget, after scrolling to it; empty when there is no such cell.
  QRect ZonaCelda(int fila, int columna);
  // A text typed at once (input method): what the grid accepts of it is appended to what was typed in the cell.
  void Escribe(const QString& texto);
  // A text that the grid accepts whole is appended likewise; any other is refused with a beep.
  void Pega(const QString& texto);
  // The header of a row, to click on.
  QRect ZonaEncabezado(int fila);
  QWidget* encabezadoFilas() const;

 private:
  class Tabla;
  class Encabezado;
  class Manijas;
  class Pintor;
  friend class Tabla;
  friend class Pintor;

  void Acomoda();         // places both tables in the frame
  void AjustaColumnas();  // widths and visibility
  void AlCambiarTamano(int anchoAnterior);
  void MuestraActual();
  // What a board without cells says in their place; empty when it has some.
  QString Aviso() const;
  // Takes the keyboard; false when the screen keeps it in a field that is to be corrected.
  bool TomaFoco();
  bool CeldaAbierta() const;  // there is a current cell, and it may be typed in
  // A row by its key and which of the rows with that key it is, a column by its key: they outlive a load.
  struct Senas {
    std::string clave;
    int repeticion = 0;
    std::string columna;
  };
  Senas SenasDe(int fila, int columna) const;
  // Where it stands now; nothing when it is gone.
  std::optional<std::pair<int, int>> Busca(const Senas& senas) const;
  void AlPulsar(int fila, int columna);
  void AlPulsarFila(int fila);
  // A person's right button: goes to the row, offers what can be done with it.
  void AlPedirMenu(QWidget& donde, const QPoint& punto);
  bool PuedeQuitar() const;
  void Quita(int fila);
  void AlArrastrar(int fila, int columna);
  void AlSoltar() { arrastre_.reset(); }
  void MarcaTramo(int paso, bool vertical);
  bool TeclaDeTablero(const QKeyEvent& evento);
  void AgregaRenglon();
  QString LoQueAcepta(const QString& texto) const;
  void Agrega(const QString& aceptado);
  void Respalda();
  bool Deshace();
  void EntraPrimera();
  bool EntraHuespedes();
  bool PuedeAgregar() const;
  bool EsTablero() const { return !grid_.Estilos().empty(); }
  int AnchoMinimo(int columna, bool estrechos, bool centavos) const;
  QString Importe(int fila, int columna, const QString& texto) const;
  QString ImporteCorto(int fila, int columna, const QString& texto) const;
  // Pixels of a text in the font of the cells.
  int AnchoTexto(const QString& texto) const;
  bool TieneFoco() const;

  controles::Grid& grid_;
  QFrame* marco_;
  std::unique_ptr<Pintor> pintor_;
  ModeloGrid* modelo_;
  Tabla* fija_;
  Tabla* movil_;
  QToolButton* agrega_ = nullptr;
  mutable QHash<QString, int> anchos_;
  bool reemplaza_ = false;  // Ctrl+A: what is typed next replaces the cell's text
  int senalada_ = -1;       // room line whose header was clicked: Supr takes it away
  struct Respaldo {
    int fila = -1, columna = -1;
    std::vector<com::Variant> celdas;
  };
  Respaldo respaldo_;
  // State that a drag over the board gives to the cells that it enters.
  std::optional<bool> arrastre_;
};

}  // namespace vista
