#include "desktop/vista_grid.h"

#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>

#include "desktop/accesible.h"
#include "desktop/consejo.h"
#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/pintura.h"
#include "host/standalone/impuestos.h"

namespace vista {

namespace {

constexpr int kOrla = 2;  // the frame, as wide as it is drawn with the keyboard in it

// The frame tells its former width when it is resized, and shows where the keyboard is while no cell does.
class Cuadro : public QFrame {
 public:
  Cuadro(std::function<void(int anchoAnterior)> alCambiar, std::function<bool()> enfocado, QWidget* padre)
      : QFrame(padre), alCambiar_(std::move(alCambiar)), enfocado_(std::move(enfocado)) {}

 protected:
  void resizeEvent(QResizeEvent* evento) override {
    QFrame::resizeEvent(evento);
    alCambiar_(evento->oldSize().width());
  }
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    PintaCaja(p, rect(), {Colores().superficie, Colores().borde, 1});
    if (!enfocado_()) return;
    PintaAnillo(p, rect(), Colores().acento, 2);
  }

 private:
  std::function<void(int)> alCambiar_;
  std::function<bool()> enfocado_;
};

}  // namespace

VistaGrid::VistaGrid(controles::Grid& grid, QWidget* padre, const Contexto& contexto)
    : Vista(grid, contexto),
      grid_(grid),
      marco_(new Cuadro([this](int anchoAnterior) { AlCambiarTamano(anchoAnterior); }, [this] { return TieneFoco(); },
                        padre)),
      medidas_(grid, contexto.pistas),
      escritura_(grid, contexto),
      raton_(*this),
      teclado_(*this),
      pintor_(*this),
      modelo_(new ModeloGrid(grid, marco_)) {
  CreaTablas();
  UneTablas();
  SigueModelo();
  AtiendeMenu();
  CreaAgrega();
  CreaAviso();
  FijaPapel(marco_, QAccessible::Grouping);
  Adopta(marco_);
  fija_->setAccessibleName(Q(grid.descripcion()) + QStringLiteral(", columnas fijas"));
  fija_->verticalHeader()->setToolTip(pistas().manija);
  AjustaColumnas();
}

void VistaGrid::CreaTablas() {
  fija_ = new TablaGrid(*this, marco_);
  movil_ = new TablaGrid(*this, marco_);
  for (TablaGrid* tabla : {fija_, movil_}) tabla->setModel(modelo_);
  movil_->verticalHeader()->hide();
  movil_->setObjectName(Q(grid_.nombre()) + QStringLiteral("_celdas"));
  movil_->setAttribute(Qt::WA_InputMethodEnabled);
  fija_->setObjectName(Q(grid_.nombre()) + QStringLiteral("_fijas"));
  fija_->setFocusPolicy(Qt::NoFocus);
  fija_->verticalHeader()->setSectionsClickable(true);
  fija_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  fija_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  fija_->setCornerButtonEnabled(false);
  QObject::connect(fija_->verticalHeader(), &QHeaderView::sectionPressed, marco_,
                   [this](int fila) { raton_.PulsaFila(fila); });
}

void VistaGrid::UneTablas() {
  QScrollBar *barra = movil_->verticalScrollBar(), *oculta = fija_->verticalScrollBar();
  QObject::connect(barra, &QScrollBar::valueChanged, oculta, &QScrollBar::setValue);
  QObject::connect(oculta, &QScrollBar::valueChanged, barra, &QScrollBar::setValue);
  QObject::connect(movil_->horizontalScrollBar(), &QScrollBar::rangeChanged, marco_, [this] { Acomoda(); });
}

void VistaGrid::SigueModelo() {
  QObject::connect(modelo_, &ModeloGrid::dataChanged, marco_,
                   [this](const QModelIndex& desde, const QModelIndex& hasta) { AvisaActual(desde, hasta); });
  QObject::connect(modelo_, &ModeloGrid::columnasCambiaron, marco_, [this] { AjustaColumnas(); });
  QObject::connect(modelo_, &ModeloGrid::modelReset, marco_, [this] { AjustaColumnas(); });
  // New contents may need more room; a load's many changes are looked at once.
  auto* ajuste = new QTimer(marco_);
  ajuste->setSingleShot(true);
  QObject::connect(ajuste, &QTimer::timeout, marco_, [this] { AjustaColumnas(); });
  QObject::connect(modelo_, &ModeloGrid::dataChanged, ajuste, [this, ajuste] {
    if (!EsTablero(grid_) && !ajuste->isActive()) ajuste->start(0);
    DiceDelPrecio();
  });
  QObject::connect(modelo_, &ModeloGrid::actualCambio, marco_, [this] { MuestraActual(); });
}

// What the cell with the keyboard holds now is said again.
void VistaGrid::AvisaActual(const QModelIndex& desde, const QModelIndex& hasta) {
  const int fila = grid_.fila(), columna = grid_.columna();
  const bool cambio =
      fila >= desde.row() && fila <= hasta.row() && columna >= desde.column() && columna <= hasta.column();
  if (!cambio || !TieneFoco()) return;
  AvisaCelda(*tabla(columna), modelo_->index(fila, columna), QAccessible::NameChanged);
}

void VistaGrid::AtiendeMenu() {
  for (QAbstractItemView* v : std::initializer_list<QAbstractItemView*>{fija_, movil_, fija_->verticalHeader()}) {
    v->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(v, &QWidget::customContextMenuRequested, marco_,
                     [this, v](const QPoint& punto) { raton_.PideMenu(*v->viewport(), punto); });
  }
}

void VistaGrid::CreaAgrega() {
  agrega_ = new QToolButton(marco_);
  agrega_->setText(pistas().agregar);
  agrega_->setToolTip(pistas().agregar + QStringLiteral(" (Ins)"));
  agrega_->setIcon(Icono(QStringLiteral("mas"), Colores().acento));
  agrega_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  agrega_->setFocusPolicy(Qt::NoFocus);
  agrega_->hide();
  QObject::connect(agrega_, &QToolButton::clicked, marco_, [this] { AgregaRenglon(); });
}

void VistaGrid::CreaAviso() {
  aviso_ = new QLabel(marco_);
  aviso_->setObjectName(QStringLiteral("aviso_precio"));
  aviso_->setFont(Fuente(Letra::Chica));
  aviso_->setMargin(espacio::kChico);
  aviso_->setAutoFillBackground(true);
  QPalette tinta = aviso_->palette();
  tinta.setColor(QPalette::Window, Colores().acentoSuave);
  tinta.setColor(QPalette::WindowText, Colores().texto);
  aviso_->setPalette(tinta);
  aviso_->hide();
  if (EsTablero(grid_)) return;
  modelo_->consejo = [this](int fila, int columna) {
    const auto& explicadas = pistas().explicadas;
    const bool explicada =
        std::find(explicadas.begin(), explicadas.end(), grid_.columna(columna).clave) != explicadas.end();
    QString texto;
    if (explicada && contexto().explica) Corre([&] { texto = contexto().explica(fila); });
    return texto;
  };
  modelo_->esAcordada = [this](int fila, int columna) { return EsAcordada(fila, columna); };
}

bool VistaGrid::EsAcordada(int fila, int columna) const {
  const bool suya = !pistas().acordada.empty() && grid_.columna(columna).clave == pistas().acordada;
  return suya && contexto().acordado && contexto().acordado(fila);
}

void VistaGrid::DiceDelPrecio() {
  if (EsTablero(grid_)) return;
  const QString texto = contexto().avisoDeRenglones ? contexto().avisoDeRenglones() : QString();
  if (texto != aviso_->text()) {
    aviso_->setText(texto);
    aviso_->setAccessibleName(texto);
    Acomoda();
  }
}

VistaGrid::~VistaGrid() { VistaGrid::Suelta(); }

void VistaGrid::Suelta() {
  modelo_->Suelta();
  Vista::Suelta();
}

// An amount that no store would take is told at its cell.
bool VistaGrid::Admite() {
  if (EsTablero(grid_) || !contexto().interactivo) return true;
  for (int fila = 0; fila < grid_.Filas(); ++fila) {
    for (const std::string& clave : pistas().explicadas) {
      const com::Variant& importe = grid_.celda(fila, clave);
      if (importe.EsVacio() || importe.EsNulo() || com::CDbl(importe) <= autonomo::kImporteMaximo) continue;
      Corre([&] {
        formulario().Enfoca(grid_);
        grid_.VaA(fila, grid_.IndiceColumna(clave));
      });
      Dice(QStringLiteral("«%1» es demasiado grande: el máximo es 999,999,999").arg(Q(grid_.columna(clave).titulo)));
      return false;
    }
  }
  return true;
}

QWidget* VistaGrid::foco() const { return movil_; }

bool VistaGrid::TieneFoco() const { return movil_->hasFocus(); }

bool VistaGrid::TomaFoco() {
  // Entered at once: a change of the keyboard by the mouse would wait for its press, which has been.
  if (!movil_->hasFocus()) movil_->setFocus(Qt::OtherFocusReason);
  return !movil_->hasFocus() || formulario().foco() == &grid_;
}

bool VistaGrid::Tecla(const QKeyEvent& evento) {
  if (!grid_.enabled()) return Vista::Tecla(evento);
  return teclado_.Atiende(evento) || Vista::Tecla(evento) || teclado_.Escribe(evento);
}

std::function<void()> VistaGrid::Blanco(QWidget& donde, const QMouseEvent& evento) {
  return raton_.Blanco(donde, evento);
}

void VistaGrid::AgregaRenglon() {
  if (!PuedeAgregar(grid_) || !TomaFoco()) return;
  Corre([this] { grid_.NuevaFila(); });
  modelo_->Sincroniza();
}

void VistaGrid::QuitaRenglon(int fila) {
  if (!PuedeQuitar(grid_) || fila < 0 || fila >= grid_.Filas()) return;
  Corre([&] { grid_.Borra(fila); });
}

// --- where things are

QTableView* VistaGrid::tabla(int columna) const { return EsFija(columna) ? fija_ : movil_; }

QWidget* VistaGrid::encabezadoFilas() const { return fija_->verticalHeader()->viewport(); }

std::optional<LugarGrid> VistaGrid::LugarEn(const QWidget& donde, const QPoint& punto) const {
  if (&donde == encabezadoFilas()) return LugarGrid{fija_->verticalHeader()->logicalIndexAt(punto), -1};
  for (const TablaGrid* tabla : {fija_, movil_}) {
    if (&donde != tabla->viewport()) continue;
    const QModelIndex celda = tabla->indexAt(punto);
    return LugarGrid{celda.row(), celda.column()};
  }
  return std::nullopt;
}

QRect VistaGrid::ZonaCelda(int fila, int columna) {
  modelo_->Sincroniza();
  if (fila < 0 || columna < 0 || fila >= modelo_->rowCount() || columna >= modelo_->columnCount()) return {};
  QTableView* t = tabla(columna);
  const QModelIndex celda = modelo_->index(fila, columna);
  t->scrollTo(celda);
  const QRect zona = t->visualRect(celda);
  return QRect(t->viewport()->mapTo(marco_, zona.topLeft()), zona.size());
}

QRect VistaGrid::ZonaEncabezado(int fila) {
  modelo_->Sincroniza();
  if (fila < 0 || fila >= modelo_->rowCount()) return {};
  fija_->scrollTo(modelo_->index(fila, fija_->isColumnHidden(0) ? 1 : 0));
  QHeaderView* cabeza = fija_->verticalHeader();
  return QRect(0, cabeza->sectionViewportPosition(fila), cabeza->width(), cabeza->sectionSize(fila));
}

int VistaGrid::FilasPorPagina() const {
  return std::max(1, movil_->viewport()->height() / movil_->verticalHeader()->defaultSectionSize() - 1);
}

// --- showing

void VistaGrid::Refresca() {
  modelo_->Sincroniza();
  movil_->viewport()->update();
  fija_->viewport()->update();
  DiceDelPrecio();
  Acomoda();
}

void VistaGrid::AjustaColumnas() {
  const int n = std::min(modelo_->columnCount(), grid_.NumColumnas());
  for (int c = 0; c < n; ++c) {
    for (TablaGrid* t : {fija_, movil_}) t->setColumnHidden(c, !grid_.columna(c).visible || EsFija(c) != (t == fija_));
  }
  const int cabe = marco_->width() - 2 * kOrla - fija_->verticalHeader()->width() - 14;
  const std::vector<int> anchos = medidas_.Anchos(n, cabe);
  for (int c = 0; c < n; ++c) {
    if (const int ancho = anchos[static_cast<std::size_t>(c)]; ancho != 0) tabla(c)->setColumnWidth(c, ancho);
  }
  Acomoda();
}

void VistaGrid::AlCambiarTamano(int anchoAnterior) {
  if (agrega_ != nullptr && !EsTablero(grid_) && marco_->width() != anchoAnterior) return AjustaColumnas();
  Acomoda();
}

void VistaGrid::Acomoda() {
  if (aviso_ == nullptr) return;
  const QRect dentro = marco_->rect().adjusted(kOrla, kOrla, -kOrla, -kOrla);
  int ancho = fija_->verticalHeader()->width();
  for (int c = 0; c < std::min(kColumnasFijas, modelo_->columnCount()); ++c) {
    if (!fija_->isColumnHidden(c)) ancho += fija_->columnWidth(c);
  }
  ancho = std::min(ancho, dentro.width());
  const int barra =
      movil_->horizontalScrollBar()->maximum() > 0 ? movil_->horizontalScrollBar()->sizeHint().height() : 0;
  fija_->setGeometry(dentro.left(), dentro.top(), ancho, dentro.height() - barra);
  movil_->setGeometry(dentro.left() + ancho, dentro.top(), dentro.width() - ancho, dentro.height());
  const int alto = fija_->verticalHeader()->defaultSectionSize();
  const int debajo = grid_.Filas() * alto - fija_->verticalScrollBar()->value();
  agrega_->setVisible(PuedeAgregar(grid_));
  agrega_->setFixedHeight(alto);
  agrega_->adjustSize();
  agrega_->move(fija_->mapTo(marco_, fija_->viewport()->geometry().topLeft()) + QPoint(2, debajo));
  agrega_->raise();
  const int altoAviso = aviso_->sizeHint().height();
  aviso_->setVisible(!aviso_->text().isEmpty());
  aviso_->setGeometry(dentro.left(), dentro.bottom() - barra - altoAviso + 1, dentro.width(), altoAviso);
  aviso_->raise();
}

bool VistaGrid::Explica(int fila, int columna) {
  if (!EsTablero(grid_) || !contexto().porque) return false;
  QString texto;
  Corre([&] { texto = contexto().porque(grid_, fila, columna); });
  if (texto.isEmpty()) return false;
  const QRect zona = ZonaCelda(fila, columna);
  MuestraConsejo(*marco_, zona, texto);
  return true;
}

QString VistaGrid::Aviso() const {
  if (!EsTablero(grid_)) return {};
  if (grid_.NumColumnas() <= kColumnasFijas) return pistas().sinColumnas;
  return grid_.Filas() > 0 ? QString() : pistas().sinFilas;
}

void VistaGrid::MuestraActual() {
  escritura_.OlvidaSeleccion();
  const int fila = grid_.fila(), columna = grid_.columna();
  // Out of sight it is the program that walks over the cells: the user finds them where they were left, or at the first
  // one of a new load.
  const bool aLaVista = movil_->isVisible();
  if (!aLaVista && EsTablero(grid_) && fila <= 0 && columna < 0) {
    movil_->verticalScrollBar()->setValue(0);
    movil_->horizontalScrollBar()->setValue(0);
  }
  if (fila >= 0 && fila < modelo_->rowCount() && columna >= 0 && columna < modelo_->columnCount()) {
    // The keyboard stays with one of the tables, even while the current cell is in the other.
    TablaGrid& suya = EsFija(columna) ? *fija_ : *movil_;
    TablaGrid& otra = EsFija(columna) ? *movil_ : *fija_;
    const QModelIndex celda = modelo_->index(fila, columna);
    if (aLaVista) suya.scrollTo(celda);
    suya.setCurrentIndex(celda);
    otra.selectionModel()->clearCurrentIndex();
  }
  movil_->viewport()->update();
  fija_->viewport()->update();
  DiceDelPrecio();
  Acomoda();
}

}  // namespace vista
