#include "desktop/tablas.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QShortcut>
#include <algorithm>

#include "desktop/dialogos.h"
#include "desktop/estilo.h"
#include "desktop/iconos.h"

namespace vista {

QTableWidget* CreaTabla(const QStringList& titulos, QWidget* padre) {
  auto* tabla = new QTableWidget(0, static_cast<int>(titulos.size()), padre);
  tabla->setHorizontalHeaderLabels(titulos);
  tabla->setEditTriggers(QAbstractItemView::NoEditTriggers);
  tabla->setSelectionBehavior(QAbstractItemView::SelectRows);
  tabla->setSelectionMode(QAbstractItemView::SingleSelection);
  tabla->setShowGrid(false);
  tabla->setTabKeyNavigation(false);
  tabla->setWordWrap(false);
  tabla->verticalHeader()->hide();
  tabla->verticalHeader()->setDefaultSectionSize(espacio::kRenglon);
  tabla->horizontalHeader()->setStretchLastSection(true);
  tabla->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  return tabla;
}

QLabel* AgregaNota(QBoxLayout& caja, QWidget* padre) {
  auto* nota = new QLabel(padre);
  nota->setObjectName(QStringLiteral("nota"));
  Atenua(*nota);
  caja.addWidget(nota);
  return nota;
}

std::pair<QTableWidget*, QLabel*> AgregaTablaYNota(QBoxLayout& caja, const QStringList& titulos, const char* nombre,
                                                   const QString& titulo, int parte, QWidget* padre) {
  QTableWidget* tabla = CreaTabla(titulos, padre);
  tabla->setObjectName(QLatin1String(nombre));
  tabla->setAccessibleName(titulo);
  caja.addWidget(tabla, parte);
  return {tabla, AgregaNota(caja, padre)};
}

QLineEdit* AgregaBusqueda(QBoxLayout& caja, const QString& titulo, const QString& sugerencia, QWidget* padre) {
  auto* linea = new QLineEdit(padre);
  linea->setObjectName(QStringLiteral("busca"));
  linea->setAccessibleName(titulo);
  linea->setPlaceholderText(sugerencia);
  linea->setClearButtonEnabled(true);
  linea->setMinimumHeight(30);
  linea->addAction(Icono(QStringLiteral("buscar"), Colores().tenue), QLineEdit::LeadingPosition);
  caja.addWidget(linea);
  return linea;
}

void AgregaFila(QTableWidget* tabla, const QStringList& textos, bool apagada, const std::vector<int>& derecha) {
  const int fila = tabla->rowCount();
  tabla->insertRow(fila);
  for (int c = 0; c < textos.size(); ++c) {
    auto* celda = new QTableWidgetItem(textos[c]);
    if (apagada) celda->setForeground(Colores().tenue);
    const bool alaDerecha = std::find(derecha.begin(), derecha.end(), c) != derecha.end();
    const Qt::Alignment lado = (alaDerecha ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
    celda->setTextAlignment(lado);
    tabla->horizontalHeaderItem(c)->setTextAlignment(lado);
    tabla->setItem(fila, c, celda);
  }
}

bool RecorreTabla(QEvent* evento, QTableWidget* tabla) {
  if (evento->type() != QEvent::KeyPress) return false;
  switch (static_cast<QKeyEvent*>(evento)->key()) {
    case Qt::Key_Down:
    case Qt::Key_Up:
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
      QApplication::sendEvent(tabla, evento);
      return true;
    default:
      return false;
  }
}

// --- Ficha

Ficha::Ficha(const QString& titulo, QWidget* padre) : QDialog(padre), caja_(new QVBoxLayout(this)) {
  Presenta(*this, titulo);
}

void Ficha::Titula(const QString& texto) {
  auto* rotulo = new QLabel(texto, this);
  rotulo->setFont(Fuente(Letra::Titulo));
  caja_->addWidget(rotulo);
}

void Ficha::Termina(bool conEnter) {
  auto* botones = new QDialogButtonBox(this);
  auto* cierra = botones->addButton(QStringLiteral("&Cerrar"), QDialogButtonBox::RejectRole);
  cierra->setAutoDefault(false);
  cierra->setDefault(conEnter);
  connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
  caja_->addWidget(botones);
}

// --- TablaFiltrada

TablaFiltrada::TablaFiltrada(const QStringList& titulos, const QString& nombre, QWidget* padre)
    : QWidget(padre), filtro_(new QLineEdit(this)), tabla_(CreaTabla(titulos, this)) {
  auto* caja = new QVBoxLayout(this);
  caja->setContentsMargins(0, 0, 0, 0);
  filtro_->setPlaceholderText(QStringLiteral("Filtrar"));
  filtro_->setAccessibleName(QStringLiteral("Filtrar ") + nombre);
  filtro_->setMinimumHeight(28);
  filtro_->addAction(Icono(QStringLiteral("buscar"), Colores().tenue), QLineEdit::LeadingPosition);
  tabla_->setAccessibleName(nombre);
  caja->addWidget(filtro_);
  caja->addWidget(tabla_);
  setFocusProxy(filtro_);
  const auto abre = [this] {
    if (Actual() >= 0 && alAbrir) alAbrir();
  };
  connect(filtro_, &QLineEdit::textChanged, this, [this] { Filtra(); });
  connect(filtro_, &QLineEdit::returnPressed, this, abre);
  filtro_->installEventFilter(this);
  connect(tabla_, &QTableWidget::cellDoubleClicked, this, abre);
  connect(tabla_, &QTableWidget::itemSelectionChanged, this, [this] {
    if (alElegir) alElegir();
  });
  for (const char* tecla : {"Return", "Enter", "F2"}) {
    auto* s = new QShortcut(QKeySequence(QLatin1String(tecla)), tabla_);
    s->setContext(Qt::WidgetShortcut);
    connect(s, &QShortcut::activated, this, abre);
  }
}

int TablaFiltrada::Actual() const {
  const int f = tabla_->currentRow();
  return f < 0 || tabla_->isRowHidden(f) ? -1 : f;
}

void TablaFiltrada::Filtra() {
  const Buscado buscado(filtro_->text());
  int primera = -1;
  for (int f = 0; f < tabla_->rowCount(); ++f) {
    QString fila;
    for (int c = 0; c < tabla_->columnCount(); ++c) fila += tabla_->item(f, c)->text() + QLatin1Char(' ');
    const bool entra = buscado.Esta(fila);
    tabla_->setRowHidden(f, !entra);
    if (entra && primera < 0) primera = f;
  }
  if (Actual() < 0 && primera >= 0) tabla_->selectRow(primera);
  if (alElegir) alElegir();
}

bool TablaFiltrada::eventFilter(QObject* objeto, QEvent* evento) {
  return (objeto == filtro_ && RecorreTabla(evento, tabla_)) || QWidget::eventFilter(objeto, evento);
}

}  // namespace vista
