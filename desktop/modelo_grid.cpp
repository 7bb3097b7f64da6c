#include "desktop/modelo_grid.h"

#include <QDate>
#include <QLocale>
#include <utility>

#include "desktop/despues.h"
#include "desktop/estados.h"
#include "desktop/fechas.h"
#include "desktop/pistas.h"
#include "desktop/vista.h"
#include "platform/com/error.h"

namespace vista {

using controles::CambioGrid;

namespace {

Qt::Alignment Alineada(controles::Alineacion a) {
  switch (a) {
    case controles::Alineacion::Izquierda:
      return Qt::AlignLeft | Qt::AlignVCenter;
    case controles::Alineacion::Centro:
      return Qt::AlignHCenter | Qt::AlignVCenter;
    case controles::Alineacion::Derecha:
      break;
  }
  return Qt::AlignRight | Qt::AlignVCenter;
}

// Day of a column; invalid for other columns.
QDate DiaDe(const controles::Columna& columna) { return columna.fecha ? ADate(*columna.fecha) : QDate(); }

// Caption of a column in full: the abbreviation of a day stands for its date.
QString TituloLargo(const controles::Columna& columna) {
  const QDate dia = DiaDe(columna);
  if (!dia.isValid()) return Q(columna.titulo);
  return QLocale(QLocale::Spanish, QLocale::Mexico).toString(dia, QStringLiteral("dddd d 'de' MMMM 'de' yyyy"));
}

// A cell as it is read aloud: row, column, value, state. The cells that name a row do not say it twice.
QString Leida(const controles::Grid& grid, int fila, int columna, bool acordada) {
  QString texto;
  if (columna > kColumnaNombre) {
    texto = !EsTablero(grid) ? QStringLiteral("Renglón %1").arg(fila + 1) : Q(grid.Texto(fila, kColumnaNombre));
    texto += QStringLiteral(", ");
  }
  const bool escribe = fila == grid.fila() && columna == grid.columna() && grid.Edicion();
  const QString valor = Q(escribe ? *grid.Edicion() : grid.Texto(fila, columna));
  texto += TituloLargo(grid.columna(columna)) + QStringLiteral(": ");
  texto += valor.isEmpty() ? QStringLiteral("vacío") : valor;
  if (acordada) texto += QStringLiteral(", precio acordado");
  const int estilo = grid.estilo(fila, columna);
  if (estilo >= 0)
    texto += QStringLiteral(", ") + PalabraDe(Q(grid.Estilos()[static_cast<std::size_t>(estilo)].nombre));
  return texto;
}

}  // namespace

ModeloGrid::ModeloGrid(controles::Grid& grid, QObject* padre)
    : QAbstractTableModel(padre), grid_(grid), filas_(grid.Filas()), columnas_(grid.NumColumnas()) {
  grid_.alCambiar = [this](CambioGrid cambio, int fila, int columna) { AlCambiar(cambio, fila, columna); };
}

ModeloGrid::~ModeloGrid() { Suelta(); }

void ModeloGrid::Suelta() {
  if (!std::exchange(suelta_, true)) grid_.alCambiar = nullptr;
}

int ModeloGrid::rowCount(const QModelIndex& padre) const { return padre.isValid() ? 0 : filas_; }
int ModeloGrid::columnCount(const QModelIndex& padre) const { return padre.isValid() ? 0 : columnas_; }

QVariant ModeloGrid::data(const QModelIndex& indice, int papel) const {
  const int fila = indice.row(), columna = indice.column();
  // Between a change and its telling the views may ask for what is gone.
  if (!indice.isValid() || fila >= grid_.Filas() || columna >= grid_.NumColumnas()) return {};
  switch (papel) {
    case Qt::DisplayRole: {
      const bool escribe = fila == grid_.fila() && columna == grid_.columna() && grid_.Edicion();
      return Q(escribe ? *grid_.Edicion() : grid_.Texto(fila, columna));
    }
    case Qt::TextAlignmentRole: {
      const auto& c = grid_.columna(columna);
      return QVariant::fromValue(c.fecha ? Qt::AlignCenter : Alineada(c.alineacion));
    }
    case Qt::AccessibleTextRole:
      return Leida(grid_, fila, columna, esAcordada && esAcordada(fila, columna));
    case Qt::ToolTipRole:
      if (const QString dicho = consejo ? consejo(fila, columna) : QString(); !dicho.isEmpty()) return dicho;
      return grid_.estilo(fila, columna) < 0 ? QVariant(Q(grid_.Texto(fila, columna)))
                                             : data(indice, Qt::AccessibleTextRole);
    case kEstilo:
      return grid_.estilo(fila, columna);
    default:
      return {};
  }
}

QVariant ModeloGrid::headerData(int seccion, Qt::Orientation orientacion, int papel) const {
  if (orientacion == Qt::Vertical) {
    if (papel == Qt::DisplayRole) return seccion + 1;
    return {};
  }
  if (seccion < 0 || seccion >= grid_.NumColumnas()) return {};
  const controles::Columna& c = grid_.columna(seccion);
  switch (papel) {
    case Qt::DisplayRole:
      return Q(c.titulo);
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(Alineada(c.alineacionTitulo));
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
      return TituloLargo(c);
    case kFecha:
      return DiaDe(c);
    default:
      return {};
  }
}

void ModeloGrid::Pendiente() {
  if (std::exchange(pendiente_, true)) return;
  Despues(*this, [this] { Sincroniza(); });
}

void ModeloGrid::AlCambiar(CambioGrid cambio, int fila, int columna) {
  switch (cambio) {
    case CambioGrid::Celda:
      if (!todo_ && fila < filas_ && columna < columnas_ && grid_.NumColumnas() == columnas_) {
        const QModelIndex celda = index(fila, columna);
        Q_EMIT dataChanged(celda, celda);
      } else {
        todo_ = true;
        Pendiente();
      }
      break;
    case CambioGrid::Fila:
    case CambioGrid::Todo:
      todo_ = true;
      Pendiente();
      break;
    case CambioGrid::Columnas:
      lasColumnas_ = true;
      Pendiente();
      break;
    case CambioGrid::Actual:
      actual_ = true;
      Pendiente();
      break;
  }
}

void ModeloGrid::Sincroniza() {
  if (!std::exchange(pendiente_, false)) return;
  const bool todo = std::exchange(todo_, false);
  const bool lasColumnas = std::exchange(lasColumnas_, false);
  const bool actual = std::exchange(actual_, false);
  if (grid_.NumColumnas() != columnas_) {
    beginResetModel();
    columnas_ = grid_.NumColumnas();
    filas_ = grid_.Filas();
    endResetModel();
  } else if (todo) {
    const int filas = grid_.Filas();
    if (filas > filas_) {
      beginInsertRows({}, filas_, filas - 1);
      filas_ = filas;
      endInsertRows();
    } else if (filas < filas_) {
      beginRemoveRows({}, filas, filas_ - 1);
      filas_ = filas;
      endRemoveRows();
    }
    if (filas_ > 0 && columnas_ > 0) Q_EMIT dataChanged(index(0, 0), index(filas_ - 1, columnas_ - 1));
  }
  if (lasColumnas && columnas_ > 0) Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnas_ - 1);
  if (lasColumnas || todo) Q_EMIT columnasCambiaron();
  if (actual || todo) Q_EMIT actualCambio();
}

}  // namespace vista
