#include "desktop/tabla_grid.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

#include "desktop/escala.h"
#include "desktop/estilo.h"
#include "desktop/vista_grid.h"

namespace vista {

namespace {

constexpr int kAnchoManija = 30;    // row headers, pixels
constexpr int kSeccionMinima = 10;  // pixels

// Paints the sections of a header that are in sight, and what is left beside them.
template <class Dibujo>
void PintaSecciones(const QHeaderView& cabeza, const QRect& zona, const Dibujo& seccion) {
  QPainter p(cabeza.viewport());
  const bool acostada = cabeza.orientation() == Qt::Horizontal;
  const int desde = acostada ? zona.left() : zona.top(), hasta = acostada ? zona.right() : zona.bottom();
  const int fin = cabeza.length() - cabeza.offset();
  if (hasta >= fin) {
    const QPoint esquina = acostada ? QPoint(fin, zona.top()) : QPoint(zona.left(), fin);
    p.fillRect(QRect(esquina, zona.bottomRight()), Colores().realce);
  }
  for (int i = std::max(0, cabeza.visualIndexAt(desde)); i < cabeza.count(); ++i) {
    const int donde = cabeza.sectionViewportPosition(i), largo = cabeza.sectionSize(i);
    if (donde > hasta) break;
    if (cabeza.isSectionHidden(i)) continue;
    seccion(p, acostada ? QRect(donde, 0, largo, cabeza.height()) : QRect(0, donde, cabeza.width(), largo), i);
  }
}

// Captions of the columns; a day's has its weekday above its day of the month.
class Encabezado : public QHeaderView {
 public:
  Encabezado(VistaGrid& vista, QWidget* padre) : QHeaderView(Qt::Horizontal, padre), vista_(vista) {
    setSectionResizeMode(QHeaderView::Fixed);
    setHighlightSections(false);
    setSectionsClickable(false);
    setMinimumSectionSize(kSeccionMinima);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  }

  // The captions need not be measured: only the height counts.
  QSize sizeHint() const override {
    const int alto = fontMetrics().height();
    return QSize(length(), EsTablero(vista_.grid()) ? 2 * alto + 8 : alto + 10);
  }

 protected:
  void paintEvent(QPaintEvent* evento) override {
    PintorGrid& pintor = vista_.pintor();
    pintor.Comienza(*viewport());
    PintaSecciones(*this, evento->rect(), [&](QPainter& p, const QRect& zona, int i) { pintor.Titulo(p, zona, i); });
  }

 private:
  VistaGrid& vista_;
};

// Numbers of the rows.
class Manijas : public QHeaderView {
 public:
  Manijas(VistaGrid& vista, QWidget* padre) : QHeaderView(Qt::Vertical, padre), vista_(vista) {
    setSectionResizeMode(QHeaderView::Fixed);
    setMinimumSectionSize(kSeccionMinima);
    setHighlightSections(false);
    setFixedWidth(APixel(kAnchoManija * kTwipsPorPixel));
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  }

  QSize sizeHint() const override { return QSize(minimumWidth(), length()); }

 protected:
  void paintEvent(QPaintEvent* evento) override {
    PintorGrid& pintor = vista_.pintor();
    pintor.Comienza(*viewport());
    PintaSecciones(*this, evento->rect(), [&](QPainter& p, const QRect& zona, int i) { pintor.Manija(p, zona, i); });
  }

 private:
  VistaGrid& vista_;
};

}  // namespace

TablaGrid::TablaGrid(VistaGrid& vista, QWidget* padre) : QTableView(padre), vista_(vista) {
  setHorizontalHeader(new Encabezado(vista, this));
  setVerticalHeader(new Manijas(vista, this));
  setSelectionMode(QAbstractItemView::NoSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setShowGrid(false);
  setTabKeyNavigation(false);
  setFrameShape(QFrame::NoFrame);
  setWordWrap(false);
  setAutoScroll(false);  // the view scrolls to the current cell
  verticalHeader()->setDefaultSectionSize(APixel(espacio::kRenglon * kTwipsPorPixel));
  // Everything in sight is painted below.
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
}

// --- painting

// The cells in sight are painted straight from the grid: the style's way to each cell costs more than the cell.
void TablaGrid::paintEvent(QPaintEvent* evento) {
  QPainter p(viewport());
  vista_.pintor().Comienza(*p.device());
  PintaCeldas(p, evento->rect());
  PintaAviso(p);
}

void TablaGrid::PintaCeldas(QPainter& p, const QRect& zona) {
  const QHeaderView& columnas = *horizontalHeader();
  const QHeaderView& filas = *verticalHeader();
  const int ancho = columnas.length() - columnas.offset(), alto = filas.length() - filas.offset();
  if (zona.right() >= ancho) p.fillRect(QRect(QPoint(ancho, zona.top()), zona.bottomRight()), Colores().superficie);
  if (zona.bottom() >= alto) p.fillRect(QRect(QPoint(zona.left(), alto), zona.bottomRight()), Colores().superficie);
  const int abajo = filas.visualIndexAt(zona.bottom());
  const int ultima = abajo < 0 ? filas.count() - 1 : abajo;
  for (int f = std::max(0, filas.visualIndexAt(zona.top())); f <= ultima; ++f) PintaFila(p, zona, f);
}

void TablaGrid::PintaFila(QPainter& p, const QRect& zona, int fila) {
  const QHeaderView& columnas = *horizontalHeader();
  const int y = verticalHeader()->sectionViewportPosition(fila), alto = verticalHeader()->sectionSize(fila);
  for (int c = std::max(0, columnas.visualIndexAt(zona.left())); c < columnas.count(); ++c) {
    const int x = columnas.sectionViewportPosition(c);
    if (x > zona.right()) break;
    if (columnas.isSectionHidden(c)) continue;
    vista_.pintor().Celda(p, QRect(x, y, columnas.sectionSize(c), alto), fila, c);
  }
}

void TablaGrid::PintaAviso(QPainter& p) {
  if (vista_.foco() != this) return;
  const QString aviso = vista_.Aviso();
  if (aviso.isEmpty()) return;
  p.setFont(Fuente(Letra::Normal));
  p.setPen(Colores().tenue);
  p.drawText(viewport()->rect().adjusted(12, 0, -12, 0), int{Qt::AlignCenter} | int{Qt::TextWordWrap}, aviso);
}

void TablaGrid::scrollContentsBy(int dx, int dy) {
  QTableView::scrollContentsBy(dx, dy);
  if (!vista_.Aviso().isEmpty()) viewport()->update();  // it stays in the middle
}

void TablaGrid::changeEvent(QEvent* evento) {
  QTableView::changeEvent(evento);
  if (evento->type() == QEvent::PaletteChange) viewport()->update();
}

// --- mouse, input methods and focus

bool TablaGrid::viewportEvent(QEvent* evento) {
  if (evento->type() != QEvent::ToolTip) return QTableView::viewportEvent(evento);
  const QModelIndex celda = indexAt(static_cast<QHelpEvent*>(evento)->pos());
  if (celda.isValid() && vista_.Explica(celda.row(), celda.column())) return true;
  return QTableView::viewportEvent(evento);
}

void TablaGrid::mousePressEvent(QMouseEvent* evento) {
  if (evento->button() != Qt::LeftButton) return;
  const QModelIndex celda = indexAt(evento->position().toPoint());
  if (celda.isValid()) vista_.raton().Pulsa(celda.row(), celda.column());
}

void TablaGrid::mouseMoveEvent(QMouseEvent* evento) {
  if (!evento->buttons().testFlag(Qt::LeftButton)) return;
  const QModelIndex celda = indexAt(evento->position().toPoint());
  if (celda.isValid()) vista_.raton().Arrastra(celda.row(), celda.column());
}

void TablaGrid::mouseReleaseEvent(QMouseEvent* /*evento*/) { vista_.raton().Suelta(); }

void TablaGrid::mouseDoubleClickEvent(QMouseEvent* evento) { mousePressEvent(evento); }

void TablaGrid::inputMethodEvent(QInputMethodEvent* evento) {
  if (!evento->commitString().isEmpty()) vista_.escritura().Escribe(evento->commitString());
  evento->accept();
}

void TablaGrid::focusInEvent(QFocusEvent* evento) {
  QTableView::focusInEvent(evento);
  viewport()->update();
  vista_.widget()->update();
}

void TablaGrid::focusOutEvent(QFocusEvent* evento) {
  QTableView::focusOutEvent(evento);
  viewport()->update();
  vista_.widget()->update();
  vista_.DiceDelPrecio();
}

}  // namespace vista
