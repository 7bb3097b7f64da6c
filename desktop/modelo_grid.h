// A grid of a screen as an item model for Qt's views.
#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "platform/controls/grid.h"

namespace vista {

using controles::kColumnaNombre, controles::kColumnasFijas;
inline bool EsFija(int columna) { return columna < kColumnasFijas; }

// Rows and columns are the grid's own. The grid may change between two looks of the views at it (a load adds rows one
// by one); such changes are gathered, and told once, by Sincroniza or when the event loop is reached. Cells that change
// one by one are told at once.
class ModeloGrid : public QAbstractTableModel {
  Q_OBJECT
 public:
  // Style index of a cell (-1 none); date of a day column, "dd/mm/yyyy".
  enum Papel { kEstilo = Qt::UserRole, kFecha };

  explicit ModeloGrid(controles::Grid& grid, QObject* padre = nullptr);
  ~ModeloGrid() override;

  int rowCount(const QModelIndex& padre = {}) const override;
  int columnCount(const QModelIndex& padre = {}) const override;
  QVariant data(const QModelIndex& indice, int papel) const override;
  QVariant headerData(int seccion, Qt::Orientation orientacion, int papel) const override;

  // The grid tells the model of its changes no more.
  // Tip of a cell, "" the usual one; whether a cell shows that its line's price was agreed. Both may be missing.
  std::function<QString(int fila, int columna)> consejo;
  std::function<bool(int fila, int columna)> esAcordada;
  void Suelta();
  // Tells the views what has been gathered.
  void Sincroniza();
  controles::Grid& grid() const { return grid_; }

 Q_SIGNALS:
  // The current cell moved; columns changed their width, caption or visibility.
  void actualCambio();
  void columnasCambiaron();

 private:
  void AlCambiar(controles::CambioGrid cambio, int fila, int columna);
  void Pendiente();

  controles::Grid& grid_;
  int filas_ = 0, columnas_ = 0;  // as told to the views
  bool suelta_ = false;
  bool pendiente_ = false, todo_ = false, lasColumnas_ = false, actual_ = false;
};

}  // namespace vista
