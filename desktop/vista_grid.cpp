#include "desktop/vista_grid.h"

#include <QApplication>
#include <QClipboard>
#include <QDate>
#include <QHeaderView>
#include <QMenu>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <utility>

#include "desktop/accesible.h"
#include "desktop/escala.h"
#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/pintura.h"
#include "desktop/preguntas.h"
#include "desktop/teclas.h"
#include "platform/controls/barra.h"
#include "platform/regional/regional.h"

namespace vista {

namespace {

constexpr int kColumnasFijas = 2;  // Clave and Nombre
constexpr int kAnchoManija = 30;   // row headers
constexpr int kOrla = 2;           // the frame, as wide as it is drawn with the keyboard in it

bool Fija(int columna) { return columna < kColumnasFijas; }

// An amount of a line, whose decimals may be cut short; the total may not.
bool EsImporte(const controles::Columna& columna) {
  return columna.tipo == controles::TipoColumna::Doble && columna.clave != "Total";
}

// The grid style that a mark of the user gives, and the one that it takes away.
constexpr const char* kMarcada = "OCUPANDO";
constexpr const char* kLibre = "DISPONIBLE";

}  // namespace

// --- painting

// Paints cells, captions and row numbers. A board has thousands of them, of few looks: each look is drawn once and
// copied.
class VistaGrid::Pintor {
 public:
  explicit Pintor(const VistaGrid& vista) : vista_(vista) {}

  // What is painted, but for the current cell.
  struct Aspecto {
    enum class Parte { Celda, Dia, Titulo, Manija } parte;
    int columna;  // of a cell: the days are alike
    int estilo;
    bool senalado;  // a cell in the current row, where that shows; a day that names its month
    std::string texto;
    int ancho = 0, alto = 0;
    auto operator<=>(const Aspecto&) const = default;
  };

  void Celda(QPainter& p, const QRect& zona, int fila, int columna) {
    const controles::Grid& grid = vista_.grid_;
    if (fila >= grid.Filas() || columna >= grid.NumColumnas()) {
      p.fillRect(zona, Colores().superficie);
      return;
    }
    if (!vista_.EsTablero() || (fila == grid.fila() && columna == grid.columna())) {
      Dibuja(p, zona, fila, columna);
      return;
    }
    const int estilo = grid.estilo(fila, columna);
    const bool enFila = estilo < 0 && fila == grid.fila();
    Copia(p, zona,
          {Aspecto::Parte::Celda, Fija(columna) ? columna : kColumnasFijas, estilo, enFila, grid.Texto(fila, columna)},
          [&](QPainter& pincel, const QRect& lugar) { Dibuja(pincel, lugar, fila, columna); });
  }

  // Copies what was drawn for the look, pixel for pixel; the first time it is drawn.
  template <class Hace>
  void Copia(QPainter& p, const QRect& zona, Aspecto aspecto, Hace&& dibuja) {
    const QRect lugar = EnPixeles(p, zona);
    aspecto.ancho = lugar.width();
    aspecto.alto = lugar.height();
    auto visto = aspectos_.find(aspecto);
    if (visto == aspectos_.end()) {
      QImage copia = Retrato(lugar.size(), ambiente_.escala, zona.size(), Colores().superficie, dibuja);
      puntos_ += std::int64_t{copia.width()} * copia.height();
      visto = aspectos_.emplace(std::move(aspecto), std::move(copia)).first;
    }
    if (ambiente_.escala == 1.0) return p.drawImage(zona.topLeft(), visto->second);
    const PorPixel pixeles(p);
    p.drawImage(lugar.topLeft(), visto->second);
  }

  // Called before a painting: what was drawn for other colours, font or screen is forgotten.
  void Comienza(const QPaintDevice& donde) {
    constexpr std::int64_t kPuntos = 2'000'000;  // 8 MB
    std::vector<QRgb> fondos;
    for (const auto& e : vista_.grid_.Estilos()) fondos.push_back(ColorEstado(e.fondo, e.dado).rgb());
    Ambiente ahora{Fuente(Letra::Normal), donde.devicePixelRatioF(), EsOscuro(), std::move(fondos)};
    if (ahora == ambiente_ && puntos_ < kPuntos) return;
    aspectos_.clear();
    puntos_ = 0;
    ambiente_ = std::move(ahora);
  }

 private:
  struct Ambiente {
    QFont fuente;
    qreal escala = 0;
    bool oscuro = false;
    std::vector<QRgb> fondos;
    bool operator==(const Ambiente&) const = default;
  };

  void Dibuja(QPainter& p, const QRect& zona, int fila, int columna) const {
    const controles::Grid& grid = vista_.grid_;
    const QFont& fuente = ambiente_.fuente;
    const Paleta& colores = Colores();
    const bool enFila = fila == grid.fila();
    const bool actual = enFila && columna == grid.columna();
    const int estilo = grid.estilo(fila, columna);
    QColor tinta = colores.texto;
    QString letra;
    if (estilo >= 0 && static_cast<std::size_t>(estilo) < grid.Estilos().size()) {
      const auto& e = grid.Estilos()[static_cast<std::size_t>(estilo)];
      const QColor tono = ColorEstado(e.fondo, e.dado);
      PintaEstado(p, zona, Q(e.nombre), tono);
      tinta = TextoSobre(tono);
      letra = LetraDe(Q(e.nombre));
    } else {
      const bool soloMuestra = grid.columna(columna).bloqueada && !vista_.EsTablero();
      p.fillRect(zona, enFila ? colores.acentoSuave : soloMuestra ? colores.fondo : colores.superficie);
    }
    PintaOrillas(p, zona, colores.borde);

    const QModelIndex indice = vista_.modelo_->index(fila, columna);
    const QString texto = vista_.modelo_->data(indice, Qt::DisplayRole).toString();
    const auto alineada = vista_.modelo_->data(indice, Qt::TextAlignmentRole).value<Qt::Alignment>();
    const QRect caja = zona.adjusted(6, 0, -7, 0);
    p.setPen(tinta);
    if (!letra.isEmpty()) {
      p.setFont(Fuente(Letra::Chica));
      p.drawText(zona.adjusted(6, 0, -4, 0), Qt::AlignLeft | Qt::AlignVCenter, letra);
    }
    p.setFont(fuente);
    const QFontMetrics medidas(fuente);
    if (actual && vista_.reemplaza_) {
      p.fillRect(caja.adjusted(-2, 3, 2, -4), colores.acento);
      p.setPen(colores.sobreAcento);
    }
    // Counts of rooms always fit.
    const bool editada = actual && grid.Edicion();
    QString corto = editada ? texto : vista_.Importe(indice.row(), indice.column(), texto);
    if (texto.size() > 3 && vista_.AnchoTexto(corto) > caja.width()) {
      if (!editada) corto = vista_.ImporteCorto(indice.row(), indice.column(), texto);
      if (vista_.AnchoTexto(corto) > caja.width()) corto = medidas.elidedText(corto, Qt::ElideRight, caja.width());
    }
    p.drawText(caja, static_cast<int>(alineada), corto);

    if (!actual) return;
    const bool enfocada = vista_.formulario().foco() == &grid && vista_.TieneFoco();
    if (!enfocada) return PintaAnillo(p, zona, colores.tenue, 1);
    PintaAnillo(p, zona.adjusted(0, 0, -1, -1), colores.acento, 2);
    // A ring that shows on every state colour.
    if (estilo >= 0) PintaAnillo(p, zona.adjusted(2, 2, -3, -3), colores.superficie, 1);
    if (grid.Edicion()) {
      const int ancho = std::min(medidas.horizontalAdvance(corto), caja.width());
      int x = caja.left() + ancho + 1;
      if (alineada.testFlag(Qt::AlignRight)) x = caja.right() + 2;
      if (alineada.testFlag(Qt::AlignHCenter)) x = caja.center().x() + ancho / 2 + 1;
      p.fillRect(QRect(x, zona.center().y() - medidas.ascent() / 2 - 1, 1, medidas.height() - 2), tinta);
    }
  }

  const VistaGrid& vista_;
  Ambiente ambiente_;
  std::map<Aspecto, QImage> aspectos_;
  std::int64_t puntos_ = 0;  // pixels kept
};

// Paints the sections of a header that are in sight, and what is left beside them.
template <class Dibujo>
void PintaSecciones(const QHeaderView& cabeza, const QRect& zona, Dibujo&& seccion) {
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
class VistaGrid::Encabezado : public QHeaderView {
 public:
  Encabezado(VistaGrid& vista, QWidget* padre) : QHeaderView(Qt::Horizontal, padre), vista_(vista) {
    setSectionResizeMode(QHeaderView::Fixed);
    setHighlightSections(false);
    setSectionsClickable(false);
    setMinimumSectionSize(10);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  }

  // The captions need not be measured: only the height counts.
  QSize sizeHint() const override {
    const int alto = fontMetrics().height();
    return QSize(length(), vista_.EsTablero() ? 2 * alto + 8 : alto + 10);
  }

 protected:
  void paintEvent(QPaintEvent* evento) override {
    vista_.pintor_->Comienza(*viewport());
    PintaSecciones(*this, evento->rect(), [this](QPainter& p, const QRect& zona, int i) { Seccion(p, zona, i); });
  }

 private:
  void Seccion(QPainter& p, const QRect& zona, int seccion) const {
    if (seccion >= vista_.grid_.NumColumnas()) return p.fillRect(zona, Colores().realce);
    using Parte = Pintor::Aspecto::Parte;
    const auto& columna = vista_.grid_.columna(seccion);
    if (columna.fecha.empty()) {
      vista_.pintor_->Copia(p, zona,
                            {Parte::Titulo, static_cast<int>(columna.alineacionTitulo), -1, false, columna.titulo},
                            [&](QPainter& pincel, const QRect& lugar) { DibujaTitulo(pincel, lugar, seccion); });
    } else {
      vista_.pintor_->Copia(p, zona, {Parte::Dia, -1, -1, seccion == kColumnasFijas, columna.fecha + columna.titulo},
                            [&](QPainter& pincel, const QRect& lugar) { DibujaDia(pincel, lugar, seccion); });
    }
  }

  static void DibujaFondo(QPainter& p, const QRect& zona, const QColor& color) {
    p.fillRect(zona, color);
    PintaOrillas(p, zona, Colores().borde);
  }

  void DibujaTitulo(QPainter& p, const QRect& zona, int seccion) const {
    DibujaFondo(p, zona, Colores().realce);
    const QString titulo = model()->headerData(seccion, Qt::Horizontal, Qt::DisplayRole).toString();
    const auto alineada = model()->headerData(seccion, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>();
    const QRect caja = zona.adjusted(6, 0, -6, 0);
    p.setFont(FuenteEstrecha(Letra::Normal, titulo, caja.width() - 1));
    p.setPen(Colores().tenue);
    p.drawText(caja, static_cast<int>(alineada), p.fontMetrics().elidedText(titulo, Qt::ElideRight, caja.width()));
  }

  void DibujaDia(QPainter& p, const QRect& zona, int seccion) const {
    const Paleta& colores = Colores();
    const QDate dia = model()->headerData(seccion, Qt::Horizontal, ModeloGrid::kFecha).toDate();
    const bool descanso = dia.isValid() && dia.dayOfWeek() >= Qt::Saturday;
    DibujaFondo(p, zona, descanso ? colores.finSemana : colores.realce);
    const QRect arriba(zona.left(), zona.top() + 3, zona.width(), zona.height() / 2 - 2);
    const QRect abajo(zona.left(), zona.center().y(), zona.width(), zona.height() / 2);
    p.setFont(Fuente(Letra::Chica));
    p.setPen(descanso ? colores.texto : colores.tenue);
    p.drawText(arriba, Qt::AlignCenter, model()->headerData(seccion, Qt::Horizontal, Qt::DisplayRole).toString());
    p.setFont(Fuente(Letra::Fuerte));
    p.setPen(colores.texto);
    QString numero = QString::number(dia.day());
    // The month is named where it begins.
    if (dia.day() == 1 || seccion == kColumnasFijas) {
      const QLocale mexico(QLocale::Spanish, QLocale::Mexico);
      numero += QLatin1Char(' ') + mexico.monthName(dia.month(), QLocale::ShortFormat).left(3);
    }
    p.drawText(abajo, Qt::AlignCenter, numero);
  }

  VistaGrid& vista_;
};

// Numbers of the rows.
class VistaGrid::Manijas : public QHeaderView {
 public:
  Manijas(VistaGrid& vista, QWidget* padre) : QHeaderView(Qt::Vertical, padre), vista_(vista) {
    setSectionResizeMode(QHeaderView::Fixed);
    setMinimumSectionSize(10);
    setHighlightSections(false);
    setFixedWidth(APixel(kAnchoManija * kTwipsPorPixel));
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  }

  QSize sizeHint() const override { return QSize(minimumWidth(), length()); }

 protected:
  void paintEvent(QPaintEvent* evento) override {
    vista_.pintor_->Comienza(*viewport());
    PintaSecciones(*this, evento->rect(), [this](QPainter& p, const QRect& zona, int i) {
      const std::string numero = std::to_string(i + 1);
      const bool senalada = i == vista_.senalada_ && i == vista_.grid_.fila();
      vista_.pintor_->Copia(p, zona, {Pintor::Aspecto::Parte::Manija, -1, -1, senalada, numero},
                            [&](QPainter& pincel, const QRect& lugar) { Dibuja(pincel, lugar, numero, senalada); });
    });
  }

 private:
  static void Dibuja(QPainter& p, const QRect& zona, const std::string& numero, bool senalada) {
    const Paleta& colores = Colores();
    p.fillRect(zona, senalada ? colores.acento : colores.realce);
    PintaOrillas(p, zona, colores.borde);
    p.setFont(Fuente(Letra::Normal));
    p.setPen(senalada ? colores.sobreAcento : colores.texto);
    p.drawText(zona.adjusted(0, 0, -1, 0), Qt::AlignCenter, Q(numero));
  }

  VistaGrid& vista_;
};

// --- one of the two tables

class VistaGrid::Tabla : public QTableView {
 public:
  Tabla(VistaGrid& vista, QWidget* padre) : QTableView(padre), vista_(vista) {
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
    setAutoScroll(false);  // MuestraActual scrolls
    verticalHeader()->setDefaultSectionSize(APixel(espacio::kRenglon * kTwipsPorPixel));
    // Everything in sight is painted below.
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  }

 protected:
  // The cells in sight are painted straight from the grid: the style's way to each cell costs more than the cell.
  void paintEvent(QPaintEvent* evento) override {
    QPainter p(viewport());
    const QRect zona = evento->rect();
    const QHeaderView* columnas = horizontalHeader();
    const QHeaderView* filas = verticalHeader();
    vista_.pintor_->Comienza(*p.device());
    const int ancho = columnas->length() - columnas->offset(), alto = filas->length() - filas->offset();
    if (zona.right() >= ancho) p.fillRect(QRect(QPoint(ancho, zona.top()), zona.bottomRight()), Colores().superficie);
    if (zona.bottom() >= alto) p.fillRect(QRect(QPoint(zona.left(), alto), zona.bottomRight()), Colores().superficie);
    const int ultima =
        filas->visualIndexAt(zona.bottom()) < 0 ? filas->count() - 1 : filas->visualIndexAt(zona.bottom());
    for (int f = std::max(0, filas->visualIndexAt(zona.top())); f <= ultima; ++f) {
      const int y = filas->sectionViewportPosition(f), altoFila = filas->sectionSize(f);
      for (int c = std::max(0, columnas->visualIndexAt(zona.left())); c < columnas->count(); ++c) {
        const int x = columnas->sectionViewportPosition(c);
        if (x > zona.right()) break;
        if (columnas->isSectionHidden(c)) continue;
        vista_.pintor_->Celda(p, QRect(x, y, columnas->sectionSize(c), altoFila), f, c);
      }
    }
    if (this != vista_.movil_) return;
    const QString aviso = vista_.Aviso();
    if (aviso.isEmpty()) return;
    p.setFont(Fuente(Letra::Normal));
    p.setPen(Colores().tenue);
    p.drawText(viewport()->rect().adjusted(12, 0, -12, 0), int{Qt::AlignCenter} | int{Qt::TextWordWrap}, aviso);
  }
  void scrollContentsBy(int dx, int dy) override {
    QTableView::scrollContentsBy(dx, dy);
    if (!vista_.Aviso().isEmpty()) viewport()->update();  // it stays in the middle
  }
  void mousePressEvent(QMouseEvent* evento) override {
    if (evento->button() != Qt::LeftButton) return;
    const QModelIndex celda = indexAt(evento->position().toPoint());
    if (celda.isValid()) vista_.AlPulsar(celda.row(), celda.column());
  }
  void mouseMoveEvent(QMouseEvent* evento) override {
    if (!evento->buttons().testFlag(Qt::LeftButton)) return;
    const QModelIndex celda = indexAt(evento->position().toPoint());
    if (celda.isValid()) vista_.AlArrastrar(celda.row(), celda.column());
  }
  void mouseReleaseEvent(QMouseEvent*) override { vista_.AlSoltar(); }
  void mouseDoubleClickEvent(QMouseEvent* evento) override { mousePressEvent(evento); }
  void inputMethodEvent(QInputMethodEvent* evento) override {
    if (!evento->commitString().isEmpty()) vista_.Escribe(evento->commitString());
    evento->accept();
  }
  void focusInEvent(QFocusEvent* evento) override {
    QTableView::focusInEvent(evento);
    viewport()->update();
    vista_.marco_->update();
  }
  void focusOutEvent(QFocusEvent* evento) override {
    QTableView::focusOutEvent(evento);
    viewport()->update();
    vista_.marco_->update();
  }
  void changeEvent(QEvent* evento) override {
    QTableView::changeEvent(evento);
    if (evento->type() == QEvent::PaletteChange) viewport()->update();
  }

 private:
  VistaGrid& vista_;
};

namespace {

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

// --- VistaGrid

VistaGrid::VistaGrid(controles::Grid& grid, QWidget* padre, const Contexto& contexto)
    : Vista(grid, contexto),
      grid_(grid),
      marco_(new Cuadro([this](int anchoAnterior) { AlCambiarTamano(anchoAnterior); }, [this] { return TieneFoco(); },
                        padre)),
      pintor_(std::make_unique<Pintor>(*this)) {
  modelo_ = new ModeloGrid(grid, marco_);
  fija_ = new Tabla(*this, marco_);
  movil_ = new Tabla(*this, marco_);
  for (Tabla* tabla : {fija_, movil_}) tabla->setModel(modelo_);
  movil_->verticalHeader()->hide();
  movil_->setObjectName(Q(grid.nombre()) + QStringLiteral("_celdas"));
  fija_->setObjectName(Q(grid.nombre()) + QStringLiteral("_fijas"));
  fija_->setFocusPolicy(Qt::NoFocus);
  fija_->verticalHeader()->setSectionsClickable(true);
  fija_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  fija_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  fija_->setCornerButtonEnabled(false);
  movil_->setAttribute(Qt::WA_InputMethodEnabled);
  // What the cell with the keyboard holds now is said again.
  QObject::connect(modelo_, &ModeloGrid::dataChanged, marco_,
                   [this](const QModelIndex& desde, const QModelIndex& hasta) {
                     const int fila = grid_.fila(), columna = grid_.columna();
                     if (!TieneFoco() || fila < desde.row() || fila > hasta.row() || columna < desde.column() ||
                         columna > hasta.column())
                       return;
                     AvisaCelda(*tabla(columna), modelo_->index(fila, columna), QAccessible::NameChanged);
                   });
  QObject::connect(movil_->verticalScrollBar(), &QScrollBar::valueChanged, fija_->verticalScrollBar(),
                   &QScrollBar::setValue);
  QObject::connect(fija_->verticalScrollBar(), &QScrollBar::valueChanged, movil_->verticalScrollBar(),
                   &QScrollBar::setValue);
  QObject::connect(movil_->horizontalScrollBar(), &QScrollBar::rangeChanged, marco_, [this] { Acomoda(); });
  QObject::connect(fija_->verticalHeader(), &QHeaderView::sectionPressed, marco_,
                   [this](int fila) { AlPulsarFila(fila); });
  QObject::connect(modelo_, &ModeloGrid::columnasCambiaron, marco_, [this] { AjustaColumnas(); });
  QObject::connect(modelo_, &ModeloGrid::modelReset, marco_, [this] { AjustaColumnas(); });
  // New contents may need more room; a load's many changes are looked at once.
  auto* ajuste = new QTimer(marco_);
  ajuste->setSingleShot(true);
  QObject::connect(ajuste, &QTimer::timeout, marco_, [this] { AjustaColumnas(); });
  QObject::connect(modelo_, &ModeloGrid::dataChanged, ajuste, [this, ajuste] {
    if (!EsTablero() && !ajuste->isActive()) ajuste->start(0);
  });
  QObject::connect(modelo_, &ModeloGrid::actualCambio, marco_, [this] { MuestraActual(); });
  for (QAbstractItemView* v : {static_cast<QAbstractItemView*>(fija_), static_cast<QAbstractItemView*>(movil_),
                               static_cast<QAbstractItemView*>(fija_->verticalHeader())}) {
    v->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(v, &QWidget::customContextMenuRequested, marco_,
                     [this, v](const QPoint& punto) { AlPedirMenu(*v->viewport(), punto); });
  }
  agrega_ = new QToolButton(marco_);
  agrega_->setText(QStringLiteral("Agregar habitación"));
  agrega_->setToolTip(QStringLiteral("Agregar habitación (Ins)"));
  agrega_->setIcon(Icono(QStringLiteral("mas"), Colores().acento));
  agrega_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  agrega_->setFocusPolicy(Qt::NoFocus);
  agrega_->hide();
  QObject::connect(agrega_, &QToolButton::clicked, marco_, [this] { AgregaRenglon(); });
  FijaPapel(marco_, QAccessible::Grouping);
  Adopta(marco_);
  fija_->setAccessibleName(Q(grid.descripcion()) + QStringLiteral(", columnas fijas"));
  fija_->verticalHeader()->setToolTip(EsTablero() ? QStringLiteral("Clic: marca o desmarca toda la fila")
                                                  : QStringLiteral("Clic y Supr quitan la habitación"));
  AjustaColumnas();
}

VistaGrid::~VistaGrid() { VistaGrid::Suelta(); }

void VistaGrid::Suelta() {
  modelo_->Suelta();
  Vista::Suelta();
}

QWidget* VistaGrid::foco() const { return movil_; }

bool VistaGrid::TieneFoco() const { return movil_->hasFocus(); }

QTableView* VistaGrid::tabla(int columna) const { return Fija(columna) ? fija_ : movil_; }

QWidget* VistaGrid::encabezadoFilas() const { return fija_->verticalHeader()->viewport(); }

void VistaGrid::Refresca() {
  modelo_->Sincroniza();
  movil_->viewport()->update();
  fija_->viewport()->update();
  Acomoda();
}

// Texts come again with every load: each is measured once.
int VistaGrid::AnchoTexto(const QString& texto) const {
  constexpr qsizetype kTextos = 2000;
  if (const auto medido = anchos_.constFind(texto); medido != anchos_.constEnd()) return *medido;
  if (anchos_.size() >= kTextos) anchos_.clear();
  const int ancho = QFontMetrics(Fuente(Letra::Normal)).horizontalAdvance(texto);
  anchos_.insert(texto, ancho);
  return ancho;
}

// An amount in cents, where the place is too narrow for all its decimals; another text as it is. The tip tells it
// whole.
QString VistaGrid::ImporteCorto(int fila, int columna, const QString& texto) const {
  const auto& c = grid_.columna(columna);
  if (EsTablero() || !EsImporte(c) || fila < 0 || fila >= grid_.Filas()) return texto;
  const auto importe = com::NumeroDe(com::CStr(grid_.celda(fila, columna)));
  return importe ? Q(regional::ConFormato(*importe, c.formato.starts_with('$') ? "$#,##0.00" : "#,##0.00")) : texto;
}

// As a cell shows it where there is room: an amount with more than four decimals is in cents, so that a column lines
// up.
QString VistaGrid::Importe(int fila, int columna, const QString& texto) const {
  constexpr qsizetype kDecimales = 4;
  const qsizetype punto = texto.indexOf(QLatin1Char('.'));
  return punto >= 0 && texto.size() - punto - 1 > kDecimales ? ImporteCorto(fila, columna, texto) : texto;
}

// Room for the caption and the contents of a column; estrechos: with a narrow caption; centavos: with
// amounts in cents.
int VistaGrid::AnchoMinimo(int columna, bool estrechos, bool centavos) const {
  constexpr int kOrilla = 15, kMuestras = 60, kEstrecho = 84;  // pixels, rows, per cent
  const auto& c = grid_.columna(columna);
  int ancho = AnchoTexto(Q(c.titulo)) * (estrechos ? kEstrecho : 100) / 100 + kOrilla;
  if (!c.fecha.empty()) return std::max(ancho, AnchoTexto(QStringLiteral("R 88")) + kOrilla);
  for (int f = 0; f < std::min(grid_.Filas(), kMuestras); ++f) {
    const QString texto = Q(grid_.Texto(f, columna));
    ancho =
        std::max(ancho, AnchoTexto(centavos ? ImporteCorto(f, columna, texto) : Importe(f, columna, texto)) + kOrilla);
  }
  return ancho;
}

// A column is as wide as designed; where the window is too narrow for all, they give way down to their captions and
// contents. Before the total goes out of sight the captions are set narrower, then amounts are shown in cents, then the
// room's name is cut short: tips tell them whole.
void VistaGrid::AjustaColumnas() {
  constexpr std::size_t kNombre = 1;
  const int n = std::min(modelo_->columnCount(), grid_.NumColumnas());
  const auto cuantas = static_cast<std::size_t>(n);
  int deseado = 0, minimo = 0;
  std::vector<int> anchos(cuantas), minimos(cuantas), estrechos(cuantas), centavos(cuantas), cortado(cuantas);
  const bool tablero = EsTablero();
  for (int c = 0; c < n; ++c) {
    const auto& columna = grid_.columna(c);
    for (Tabla* t : {fija_, movil_}) t->setColumnHidden(c, !columna.visible || Fija(c) != (t == fija_));
    if (!columna.visible) continue;
    const auto i = static_cast<std::size_t>(c);
    minimos[i] = AnchoMinimo(c, false, false);
    anchos[i] = std::max(APixel(columna.ancho), minimos[i]);
    deseado += anchos[i];
    minimo += minimos[i];
    if (tablero) continue;
    estrechos[i] = AnchoMinimo(c, true, false);
    cortado[i] = centavos[i] = AnchoMinimo(c, true, true);
    if (i == kNombre) cortado[i] = std::min(cortado[i], AnchoTexto(Q(columna.titulo)) + kAnchoManija);
  }
  const int cabe = marco_->width() - 2 * kOrla - fija_->verticalHeader()->width() - 14;
  // Each column gives up its part of what is missing, down to those widths.
  const auto ceden = [&](const std::vector<int>& hasta) {
    int puede = 0;
    for (std::size_t i = 0; i < cuantas; ++i) puede += minimos[i] - hasta[i];
    if (puede <= 0 || minimo <= cabe) return;
    const double parte = std::min(1.0, double(minimo - cabe) / puede);
    for (std::size_t i = 0; i < cuantas; ++i) {
      const int quita = static_cast<int>(std::ceil((minimos[i] - hasta[i]) * parte));
      minimos[i] -= quita;
      minimo -= quita;
    }
  };
  if (!tablero && n > kColumnasFijas) {
    ceden(estrechos);
    ceden(centavos);
    ceden(cortado);
  }
  const double cede = tablero || deseado <= cabe ? 0.0
                      : deseado == minimo        ? 1.0
                                                 : std::min(1.0, double(deseado - cabe) / (deseado - minimo));
  for (int c = 0; c < n; ++c) {
    const auto i = static_cast<std::size_t>(c);
    if (anchos[i] == 0) continue;
    tabla(c)->setColumnWidth(c, anchos[i] - static_cast<int>((anchos[i] - minimos[i]) * cede));
  }
  Acomoda();
}

void VistaGrid::AlCambiarTamano(int anchoAnterior) {
  if (agrega_ != nullptr && !EsTablero() && marco_->width() != anchoAnterior) return AjustaColumnas();
  Acomoda();
}

void VistaGrid::Acomoda() {
  if (agrega_ == nullptr) return;
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
  agrega_->setVisible(PuedeAgregar());
  agrega_->setFixedHeight(alto);
  agrega_->adjustSize();
  agrega_->move(fija_->mapTo(marco_, fija_->viewport()->geometry().topLeft()) + QPoint(2, debajo));
  agrega_->raise();
}

QString VistaGrid::Aviso() const {
  if (!EsTablero()) return {};
  if (grid_.NumColumnas() <= kColumnasFijas) {
    return QStringLiteral("Sin noches que mostrar: revise llegada y salida");
  }
  return grid_.Filas() > 0 ? QString() : QStringLiteral("Ninguna habitación con estos filtros");
}

void VistaGrid::MuestraActual() {
  reemplaza_ = false;
  const int fila = grid_.fila(), columna = grid_.columna();
  // Out of sight it is the program that walks over the cells: the user finds them where they were left, or at the first
  // one of a new load.
  const bool aLaVista = movil_->isVisible();
  if (!aLaVista && EsTablero() && fila <= 0 && columna < 0) {
    movil_->verticalScrollBar()->setValue(0);
    movil_->horizontalScrollBar()->setValue(0);
  }
  if (fila >= 0 && fila < modelo_->rowCount()) {
    const int donde = columna >= 0 && !Fija(columna) && columna < modelo_->columnCount() ? columna : -1;
    if (donde >= 0) {
      if (aLaVista) movil_->scrollTo(modelo_->index(fila, donde));
      movil_->setCurrentIndex(modelo_->index(fila, donde));
      fija_->selectionModel()->clearCurrentIndex();
    } else if (columna >= 0 && columna < modelo_->columnCount()) {
      // The keyboard stays with the other table, which has no current cell then.
      if (aLaVista) fija_->scrollTo(modelo_->index(fila, columna));
      fija_->setCurrentIndex(modelo_->index(fila, columna));
      movil_->selectionModel()->clearCurrentIndex();
    }
  }
  movil_->viewport()->update();
  fija_->viewport()->update();
  Acomoda();
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

// --- mouse

bool VistaGrid::TomaFoco() {
  // Entered at once: a change of the keyboard by the mouse would wait for its press, which has been.
  if (!movil_->hasFocus()) movil_->setFocus(Qt::OtherFocusReason);
  return !movil_->hasFocus() || formulario().foco() == &grid_;
}

void VistaGrid::AlPulsar(int fila, int columna) {
  senalada_ = -1;
  if (!grid_.enabled() || fila >= grid_.Filas() || columna >= grid_.NumColumnas()) return;
  arrastre_.reset();
  if (!TomaFoco()) return;
  Corre([&] { grid_.ClicCelda(fila, columna); });
  if (EsTablero() && fila < grid_.Filas() && columna < grid_.NumColumnas()) {
    const int marcada = grid_.IndiceEstilo(kMarcada), libre = grid_.IndiceEstilo(kLibre);
    const int estilo = grid_.estilo(fila, columna);
    if (marcada >= 0 && (estilo == marcada || estilo == libre)) arrastre_ = estilo == marcada;
  }
}

void VistaGrid::AlPulsarFila(int fila) {
  // Below the last row the header tells -1.
  if (!grid_.enabled() || !TomaFoco() || fila < 0 || fila >= grid_.Filas()) return;
  Corre([&] { grid_.SeleccionaFila(fila); });
  if (EsTablero() || !contexto().interactivo || fila >= grid_.Filas() || grid_.fila() != fila) return;
  Corre([&] { formulario().Enfoca(grid_); });  // the line itself, not the date laid over its cell
  modelo_->Sincroniza();
  senalada_ = fila;
  Refresca();
}

bool VistaGrid::PuedeQuitar() const { return !EsTablero() && grid_.enabled() && EnCaptura(formulario()); }

// The screen asks before it does.
void VistaGrid::Quita(int fila) {
  if (!PuedeQuitar() || fila < 0 || fila >= grid_.Filas()) return;
  Corre([&] { grid_.Borra(fila); });
}

void VistaGrid::AlPedirMenu(QWidget& donde, const QPoint& punto) {
  if (EsTablero() || !contexto().interactivo || !TomaFoco()) return;
  const bool enManija = &donde == encabezadoFilas();
  const int fila = enManija ? fija_->verticalHeader()->logicalIndexAt(punto)
                            : (&donde == fija_->viewport() ? fija_ : movil_)->indexAt(punto).row();
  if (fila >= 0) AlPulsarFila(fila);
  if (fila >= 0 && grid_.fila() != fila) return;  // held in another line
  auto* menu = new QMenu(marco_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setObjectName(QStringLiteral("renglon"));
  const auto agrega = [&](const QString& titulo, bool puede, const std::function<void()>& hace) {
    QAction* accion = menu->addAction(titulo);
    accion->setEnabled(puede);
    QObject::connect(accion, &QAction::triggered, marco_, hace);
  };
  agrega(QStringLiteral("Agregar habitación\tIns"), PuedeAgregar(), [this] { AgregaRenglon(); });
  agrega(QStringLiteral("Quitar habitación\tCtrl+Supr"), fila >= 0 && PuedeQuitar(), [this, fila] { Quita(fila); });
  menu->popup(donde.mapToGlobal(punto));
}

VistaGrid::Senas VistaGrid::SenasDe(int fila, int columna) const {
  Senas senas{grid_.Texto(fila, 0), 0, columna < 0 ? "" : grid_.columna(columna).clave};
  for (int f = 0; f < fila; ++f) senas.repeticion += grid_.Texto(f, 0) == senas.clave ? 1 : 0;
  return senas;
}

std::optional<std::pair<int, int>> VistaGrid::Busca(const Senas& senas) const {
  const int columna = senas.columna.empty() ? -1 : grid_.IndiceColumna(senas.columna);
  if (columna < 0 && !senas.columna.empty()) return std::nullopt;
  int repeticion = senas.repeticion;
  for (int f = 0; f < grid_.Filas(); ++f) {
    if (grid_.Texto(f, 0) == senas.clave && repeticion-- == 0) return std::pair(f, columna);
  }
  return std::nullopt;
}

std::function<void()> VistaGrid::Blanco(QWidget& donde, const QMouseEvent& evento) {
  modelo_->Sincroniza();
  const QPoint lugar = evento.position().toPoint();
  const bool enManija = &donde == encabezadoFilas();
  const bool enCelda = &donde == fija_->viewport() || &donde == movil_->viewport();
  if (!enManija && !enCelda) return nullptr;
  int fila = -1, columna = -1;
  if (enManija) {
    fila = fija_->verticalHeader()->logicalIndexAt(lugar);
  } else {
    const QModelIndex celda = (&donde == fija_->viewport() ? fija_ : movil_)->indexAt(lugar);
    fila = celda.row();
    columna = celda.column();
  }
  if (fila < 0 || fila >= grid_.Filas() || evento.button() != Qt::LeftButton) return [] {};
  return [this, senas = SenasDe(fila, columna)] {
    const auto ahora = Busca(senas);
    if (!ahora) return;
    if (ahora->second < 0) return AlPulsarFila(ahora->first);
    AlPulsar(ahora->first, ahora->second);
  };
}

// Drawing over nights of the row gives them the state that the first one got; a fast mouse jumps over some.
void VistaGrid::AlArrastrar(int fila, int columna) {
  if (!arrastre_ || Fija(columna)) return;
  const int quiere = grid_.IndiceEstilo(*arrastre_ ? kLibre : kMarcada);
  Corre([&] {
    while (fila == grid_.fila() && columna != grid_.columna() && columna < grid_.NumColumnas()) {
      const int c = grid_.columna() + (columna > grid_.columna() ? 1 : -1);
      if (grid_.estilo(fila, c) == quiere) {
        grid_.ClicCelda(fila, c);
      } else {
        grid_.VaA(fila, c);
      }
      if (c != grid_.columna()) return;  // held
    }
  });
}

// --- keyboard

bool VistaGrid::PuedeAgregar() const {
  if (EsTablero() || !grid_.enabled()) return false;
  if (formulario().Primero<controles::ScreenToolbar>() != nullptr && !EnCaptura(formulario())) return false;
  for (int c = 0; c < grid_.NumColumnas(); ++c) {
    const auto& columna = grid_.columna(c);
    if (columna.visible) return !columna.bloqueada;  // the key must be open
  }
  return false;
}

void VistaGrid::AgregaRenglon() {
  if (!PuedeAgregar() || !TomaFoco()) return;
  Corre([this] { grid_.NuevaFila(); });
  modelo_->Sincroniza();
}

bool VistaGrid::CeldaAbierta() const {
  return grid_.fila() >= 0 && grid_.columna() >= 0 && !grid_.columna(grid_.columna()).bloqueada;
}

// What the rules of the current cell let through.
QString VistaGrid::LoQueAcepta(const QString& texto) const {
  std::u32string aceptado;
  for (const uint c : texto.toUcs4()) {
    int codigo = static_cast<int>(c);
    if (grid_.KeyPress) grid_.KeyPress(codigo);
    if (codigo >= 32) aceptado.push_back(static_cast<char32_t>(codigo));
  }
  return QString::fromUcs4(aceptado.data(), static_cast<qsizetype>(aceptado.size()));
}

// Behind what was typed in the cell, or in its place.
void VistaGrid::Agrega(const QString& aceptado) {
  const bool reemplaza = std::exchange(reemplaza_, false);
  const std::string antes = reemplaza ? std::string() : grid_.Edicion().value_or(std::string());
  grid_.Teclea(antes + aceptado.toStdString());
}

void VistaGrid::Escribe(const QString& texto) {
  Corre([&] {
    if (grid_.Filas() == 0 && PuedeAgregar()) grid_.NuevaFila();
    Respalda();
    const auto codigos = texto.toUcs4();
    if (codigos.size() == 1 && !reemplaza_) return formulario().PulsaCaracter(codigos.front());
    if (contexto().interactivo && !CeldaAbierta()) return QApplication::beep();
    const QString aceptado = LoQueAcepta(texto);
    reemplaza_ = reemplaza_ && !aceptado.isEmpty();
    if (!aceptado.isEmpty()) Agrega(aceptado);
  });
}

void VistaGrid::Pega(const QString& texto) {
  if (texto.isEmpty()) return;
  EntraHuespedes();
  Corre([&] {
    if (grid_.Filas() == 0 && PuedeAgregar()) grid_.NuevaFila();
    const QString aceptado = CeldaAbierta() ? LoQueAcepta(texto) : QString();
    if (aceptado.size() != texto.size()) return QApplication::beep();
    Respalda();
    Agrega(aceptado);
  });
}

// The row as it is before its current cell is typed in.
void VistaGrid::Respalda() {
  const int fila = grid_.fila(), columna = grid_.columna();
  if (!contexto().interactivo || EsTablero() || grid_.Tecleada() || fila < 0 || columna < 0) return;
  respaldo_ = {fila, columna, {}};
  for (int c = 0; c < grid_.NumColumnas(); ++c) respaldo_.celdas.push_back(grid_.celda(fila, c));
}

// Esc: what was typed in the cell, and what the screen has done to the row for it, is taken back. A row that was begun
// with it is emptied as by hand.
bool VistaGrid::Deshace() {
  const int fila = respaldo_.fila, columna = respaldo_.columna;
  const auto& celdas = respaldo_.celdas;
  if (!grid_.Tecleada() || fila != grid_.fila() || columna != grid_.columna() ||
      static_cast<int>(celdas.size()) != grid_.NumColumnas())
    return false;
  const bool nueva = std::all_of(celdas.begin(), celdas.end(), [](const com::Variant& v) { return v.EsVacio(); });
  Corre([&] {
    if (nueva) return grid_.Teclea({});
    for (int c = 0; c < grid_.NumColumnas(); ++c) grid_.celda(fila, c, celdas[static_cast<std::size_t>(c)]);
    grid_.columnaActual(columna);  // as just entered
  });
  return true;
}

// A person's first key in room lines without a current cell goes to the guests of the first line, what there is left
// to write after the board. False when it cannot.
bool VistaGrid::EntraHuespedes() {
  if (!contexto().interactivo || EsTablero() || grid_.Filas() == 0 || grid_.columna() >= 0) return false;
  const int adultos = grid_.IndiceColumna("Adultos");
  if (adultos < 0 || grid_.columna(adultos).bloqueada || !grid_.columna(adultos).visible) return false;
  Corre([&] { grid_.VaA(0, adultos); });
  return grid_.columna() == adultos;
}

// Shift and an arrow: the night that is left and the one that is entered are marked, if they are free.
void VistaGrid::MarcaTramo(int paso, bool vertical) {
  const int libre = grid_.IndiceEstilo(kLibre);
  const auto marca = [&] {
    const int f = grid_.fila(), c = grid_.columna();
    if (f >= 0 && c >= 0 && grid_.estilo(f, c) == libre) grid_.ClicCelda(f, c);
  };
  Corre([&] {
    const int f = grid_.fila() + (vertical ? paso : 0), c = grid_.columna() + (vertical ? 0 : paso);
    if (grid_.fila() < 0 || grid_.columna() < 0) return;
    marca();
    if (f < 0 || f >= grid_.Filas() || c < kColumnasFijas || c >= grid_.NumColumnas()) return;
    if (grid_.VaA(f, c)) marca();
  });
}

// The keyboard comes to a grid without a current cell: the first night, or the first cell.
void VistaGrid::EntraPrimera() {
  if (EsTablero() && grid_.NumColumnas() > kColumnasFijas) {
    grid_.VaA(std::max(grid_.fila(), 0), kColumnasFijas);
  } else {
    grid_.Siguiente();
  }
}

bool VistaGrid::TeclaDeTablero(const QKeyEvent& evento) {
  const bool mayus = evento.modifiers().testFlag(Qt::ShiftModifier);
  if (grid_.columna() < 0 && grid_.Filas() > 0 && evento.key() == Qt::Key_Space && !mayus) {
    Corre([this] { EntraPrimera(); });
  }
  const int fila = grid_.fila(), columna = grid_.columna();
  switch (evento.key()) {
    case Qt::Key_Space:
      if (fila < 0) return true;
      Corre([&] {
        if (mayus) {
          grid_.SeleccionaFila(fila);
        } else if (columna >= 0) {
          grid_.ClicCelda(fila, columna);
        }
      });
      return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
      if (!mayus) return false;
      MarcaTramo(evento.key() == Qt::Key_Right ? 1 : -1, false);
      return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
      if (!mayus) return false;
      MarcaTramo(evento.key() == Qt::Key_Down ? 1 : -1, true);
      return true;
    default:
      return false;
  }
}

bool VistaGrid::Tecla(const QKeyEvent& evento) {
  if (!grid_.enabled()) return Vista::Tecla(evento);
  if (EsTablero() && TeclaDeTablero(evento)) return true;
  const int fila = grid_.fila(), columna = grid_.columna();
  const auto va = [&](int f, int c) {
    Corre([&] {
      if (f < 0 || f >= grid_.Filas() || c < 0 || c >= grid_.NumColumnas() || !grid_.columna(c).visible) return;
      grid_.VaA(f, c);
    });
    return true;
  };
  const int codigo = CodigoTecla(evento.key());
  if (codigo == controles::tecla::kEsc && Deshace()) return true;
  const int senalada = std::exchange(senalada_, -1);
  if (senalada >= 0 && senalada == fila && codigo == controles::tecla::kSupr && SinModificadores(evento)) {
    Quita(senalada);
    return true;
  }
  if (codigo == controles::tecla::kEnter && SinModificadores(evento) && EntraHuespedes()) return true;
  Respalda();
  if (evento.matches(QKeySequence::SelectAll)) {
    reemplaza_ = fila >= 0 && columna >= 0 && !grid_.columna(columna).bloqueada;
    tabla(columna)->viewport()->update();
    return true;
  }
  const bool borra = codigo == controles::tecla::kSupr || codigo == controles::tecla::kRetroceso;
  if (reemplaza_ && borra && SinModificadores(evento)) {
    reemplaza_ = false;
    Corre([this] { grid_.Teclea({}); });
    return true;
  }
  if (codigo != 0) reemplaza_ = false;
  const bool flecha = codigo >= controles::tecla::kIzquierda && codigo <= controles::tecla::kAbajo;
  if (flecha && columna < 0 && grid_.Filas() > 0) {
    Corre([this] { EntraPrimera(); });
    return true;
  }
  switch (evento.key()) {
    case Qt::Key_Down:
      if (fila == grid_.Filas() - 1 && PuedeAgregar() && contexto().interactivo) {
        AgregaRenglon();
        return true;
      }
      break;
    case Qt::Key_Insert:
      AgregaRenglon();
      return true;
    case Qt::Key_Home:
    case Qt::Key_End: {
      if (fila < 0) return true;
      const bool inicio = evento.key() == Qt::Key_Home;
      int c = inicio ? (EsTablero() ? kColumnasFijas : 0) : grid_.NumColumnas() - 1;
      while (c >= 0 && c < grid_.NumColumnas() && !grid_.columna(c).visible) c += inicio ? 1 : -1;
      const int f = !evento.modifiers().testFlag(Qt::ControlModifier) ? fila : inicio ? 0 : grid_.Filas() - 1;
      return va(f, c);
    }
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
      const int pagina = std::max(1, movil_->viewport()->height() / movil_->verticalHeader()->defaultSectionSize() - 1);
      const int f = fila + (evento.key() == Qt::Key_PageDown ? pagina : -pagina);
      return va(std::clamp(f, 0, std::max(0, grid_.Filas() - 1)), columna);
    }
    default:
      break;
  }
  if (evento.matches(QKeySequence::Copy)) {
    if (fila >= 0 && columna >= 0) QApplication::clipboard()->setText(Q(grid_.Texto(fila, columna)));
    return true;
  }
  if (evento.matches(QKeySequence::Paste)) {
    Pega(QApplication::clipboard()->text().simplified());
    return true;
  }
  if (codigo != 0 && (flecha || codigo == controles::tecla::kRetroceso || codigo == controles::tecla::kSupr)) {
    PasaTecla(codigo, MayusDe(evento.modifiers()));
    return true;
  }
  if (Vista::Tecla(evento)) return true;
  const bool orden = evento.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
  if (orden || evento.text().isEmpty() || !evento.text().front().isPrint()) return false;
  EntraHuespedes();
  Escribe(evento.text());
  return true;
}

}  // namespace vista
