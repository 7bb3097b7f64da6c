// View of a grid: two tables side by side on one item model, the left one with the columns that stay in sight (Clave
// and Nombre). It places them; its parts paint, measure, and hand keys, typing and the mouse to the grid's user
// members.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QToolButton>
#include <optional>

#include "desktop/escritura_grid.h"
#include "desktop/medidas_grid.h"
#include "desktop/modelo_grid.h"
#include "desktop/pintor_grid.h"
#include "desktop/raton_grid.h"
#include "desktop/tabla_grid.h"
#include "desktop/teclado_grid.h"
#include "desktop/vista.h"
#include "platform/controls/grid.h"

namespace vista {

// A cell, or with column -1 the header of a row; row -1 beside them.
struct LugarGrid {
  int fila = -1, columna = -1;
};

class VistaGrid : public Vista {
 public:
  static constexpr controles::Clase kClase = controles::Clase::Grid;
  VistaGrid(controles::Grid& grid, QWidget* padre, const Contexto& contexto);
  ~VistaGrid() override;

  void Refresca() override;
  void Suelta() override;
  QWidget* foco() const override;
  bool Admite() override;
  bool Tecla(const QKeyEvent& evento) override;
  std::function<void()> Blanco(QWidget& donde, const QMouseEvent& evento) override;

  ModeloGrid& modelo() const { return *modelo_; }
  // The table that shows a column.
  QTableView* tabla(int columna) const;
  // Place of a cell in the view's widget, after scrolling to it; empty when there is no such cell.
  QRect ZonaCelda(int fila, int columna);
  // The header of a row, to click on.
  QRect ZonaEncabezado(int fila);
  QWidget* encabezadoFilas() const;

  // --- for its parts
  using Vista::contexto;
  controles::Grid& grid() const { return grid_; }
  const PistasGrid& pistas() const { return contexto().pistas.De(grid_); }
  const MedidasGrid& medidas() const { return medidas_; }
  const EscrituraGrid& escritura() const { return escritura_; }
  EscrituraGrid& escritura() { return escritura_; }
  const RatonGrid& raton() const { return raton_; }
  RatonGrid& raton() { return raton_; }
  PintorGrid& pintor() { return pintor_; }
  bool TieneFoco() const;
  // Takes the keyboard; false when the screen keeps it in a field that is to be corrected.
  bool TomaFoco();
  // What a point of one of its widgets shows; nothing for a widget that shows neither cells nor row headers.
  std::optional<LugarGrid> LugarEn(const QWidget& donde, const QPoint& punto) const;
  int FilasPorPagina() const;
  // Says at the cell why it is not free; false where there is nothing to say.
  bool Explica(int fila, int columna);
  // What a board without cells says in their place; empty when it has some.
  QString Aviso() const;
  // The cell shows that the price of its line was agreed.
  bool EsAcordada(int fila, int columna) const;
  // Says below the lines what is to be known of an agreed price, as long as it is.
  void DiceDelPrecio();
  // A row more, where one may be added.
  void AgregaRenglon();
  // A row less, where it may go; the screen asks before it does.
  void QuitaRenglon(int fila);

 private:
  void CreaTablas();
  void UneTablas();    // they scroll together
  void SigueModelo();  // what changes in the grid is shown, and said
  void AtiendeMenu();
  void CreaAgrega();
  void CreaAviso();
  void AvisaActual(const QModelIndex& desde, const QModelIndex& hasta);
  void Acomoda();         // places both tables in the frame
  void AjustaColumnas();  // widths and visibility
  void AlCambiarTamano(int anchoAnterior);
  void MuestraActual();

  controles::Grid& grid_;
  QFrame* marco_;
  MedidasGrid medidas_;
  EscrituraGrid escritura_;
  RatonGrid raton_;
  TecladoGrid teclado_;
  PintorGrid pintor_;
  ModeloGrid* modelo_;
  TablaGrid* fija_ = nullptr;
  TablaGrid* movil_ = nullptr;
  QToolButton* agrega_ = nullptr;
  QLabel* aviso_ = nullptr;
};

}  // namespace vista
