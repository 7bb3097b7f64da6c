// How wide the columns of a grid are, and how an amount is written where there is little room.
#pragma once

#include <QHash>
#include <QString>
#include <vector>

#include "desktop/pistas.h"

namespace vista {

class MedidasGrid {
 public:
  MedidasGrid(const controles::Grid& grid, const Pistas& pistas) : grid_(grid), pistas_(pistas) {}

  // Pixels of a text in the font of the cells.
  int AnchoTexto(const QString& texto) const;
  // The text of a cell where there is room: an amount with more than four decimals is in cents, so that a column lines
  // up.
  QString Importe(int fila, int columna, const QString& texto) const;
  // An amount in cents, where the place is too narrow for all its decimals; another text as it is. The tip tells it
  // whole.
  QString ImporteCorto(int fila, int columna, const QString& texto) const;
  // Width of each of the first columns, pixels; 0 for one that is not shown. cuantas: no more than the grid has. cabe:
  // pixels for all of them.
  std::vector<int> Anchos(int cuantas, int cabe) const;

 private:
  // What the columns ask for, each list with a width for every column.
  struct Reparto {
    std::vector<int> anchos;   // as designed
    std::vector<int> minimos;  // with caption and contents in sight
    std::vector<int> estrechos, centavos, cortado;
    int deseado = 0, minimo = 0;  // of all together
    void Cede(const std::vector<int>& hasta, int cabe);
  };
  Reparto Mide(int cuantas) const;
  // Room for the caption and the contents of a column; estrechos: with a narrow caption; centavos: with amounts in
  // cents.
  int AnchoMinimo(int columna, bool estrechos, bool centavos) const;

  const controles::Grid& grid_;
  const Pistas& pistas_;
  mutable QHash<QString, int> anchos_;  // of texts
};

}  // namespace vista
