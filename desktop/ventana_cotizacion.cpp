#include "desktop/ventana_cotizacion.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <tuple>

#include "desktop/dialogos.h"
#include "desktop/estilo.h"
#include "desktop/exportar.h"
#include "desktop/fechas.h"
#include "desktop/guarda.h"
#include "desktop/tablas.h"
#include "desktop/teclas.h"
#include "desktop/vista.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"
#include "publico/publico.h"
#include "recepcion/listados.h"

namespace vista {

namespace {

constexpr int kMaximoPersonas = 99;

// One room; or each room with its nights.
QString Habitaciones(const recepcion::Oferta& oferta) {
  if (oferta.tramos.size() == 1) return Q(oferta.tramos.front().habitacion);
  QString texto;
  for (const recepcion::Tramo& t : oferta.tramos) {
    if (!texto.isEmpty()) texto += QStringLiteral(", ");
    texto += Q(t.habitacion) + QStringLiteral(" hasta ") + Q(regional::FechaCorta(t.hasta)).left(5);
  }
  return texto;
}

}  // namespace

VentanaCotizacion::VentanaCotizacion(recepcion::Cotizacion& cotizacion, QWidget* padre)
    : QDialog(padre), cotizacion_(cotizacion) {
  Presenta(*this, QStringLiteral("Cotizar"), "cotizacion");
  auto* caja = new QVBoxLayout(this);
  CreaPedido(*caja);
  std::tie(tabla_, nota_) =
      AgregaTablaYNota(*caja,
                       {QStringLiteral("Tipo"), QStringLiteral("Libres"), QStringLiteral("Total"),
                        QStringLiteral("Impuestos"), QStringLiteral("Por noche"), QStringLiteral("Habitación")},
                       "ofertas", QStringLiteral("Ofertas por tipo de habitación"), 1, this);
  connect(tabla_, &QTableWidget::cellDoubleClicked, this, [this] { Vende(); });
  auto* botones = new QHBoxLayout;
  auto* vende = new QPushButton(QStringLiteral("&Reservar (Enter)"), this);
  vende->setObjectName(QStringLiteral("reservar"));
  vende->setAutoDefault(false);
  connect(vende, &QPushButton::clicked, this, [this] { Vende(); });
  auto* cierra = new QPushButton(QStringLiteral("Cerrar (Esc)"), this);
  cierra->setAutoDefault(false);
  connect(cierra, &QPushButton::clicked, this, &QDialog::reject);
  botones->addWidget(vende);
  botones->addStretch();
  exporta_ = BotonExportar(
      this, [this] { return recepcion::ListadoDe(cotizacion_); },
      [this](const QString& texto) { nota_->setText(texto); });
  botones->addWidget(exporta_);
  botones->addWidget(cierra);
  caja->addLayout(botones);
  for (QWidget* w : std::initializer_list<QWidget*>{linea_, noches_, adultos_, menores_, infantes_})
    w->installEventFilter(this);
  AjustaAPantalla(*this, {760, 420});
  Corre([&] {
    // What was asked for last, unless that day has passed; or tomorrow's night.
    recepcion::Pedido pedido = cotizacion_.pedido();
    const com::Fecha hoy = com::SoloFecha(publico::Utilerias().FechaServidor());
    if (pedido.llegada == com::Fecha{} || pedido.llegada < hoy) {
      const int noches = pedido.llegada == com::Fecha{} ? 1 : com::DiasEntre(pedido.llegada, pedido.salida);
      pedido.llegada = com::MasDias(hoy, 1);
      pedido.salida = com::MasDias(pedido.llegada, noches);
    }
    Intenta(pedido);
  });
  linea_->setFocus();
  linea_->selectAll();
}

QSpinBox* VentanaCotizacion::Numero(QBoxLayout& fila, const QString& titulo, const char* nombre, int menor, int mayor) {
  auto* caja = new QVBoxLayout;
  auto* numero = new QSpinBox(this);
  numero->setObjectName(QLatin1String(nombre));
  numero->setAccessibleName(titulo);
  numero->setRange(menor, mayor);
  connect(numero, &QSpinBox::valueChanged, this, [this] { Calcula(); });
  caja->addWidget(new QLabel(titulo, this));
  caja->addWidget(numero);
  fila.addLayout(caja);
  return numero;
}

void VentanaCotizacion::CreaPedido(QBoxLayout& caja) {
  auto* fila = new QHBoxLayout;
  auto* columna = new QVBoxLayout;
  llegada_ = EntradaFecha({}, {}, this);
  linea_ = qobject_cast<QLineEdit*>(llegada_.widget);
  linea_->setObjectName(QStringLiteral("llegada"));
  linea_->setAccessibleName(QStringLiteral("Llegada"));
  linea_->setToolTip(QStringLiteral("15, 15/3, 15/3/2026 o +3 (días desde hoy) · F4 abre el calendario"));
  connect(linea_, &QLineEdit::textChanged, this, [this] { Calcula(); });
  connect(linea_, &QLineEdit::editingFinished, this, [this] { MuestraLlegada(); });
  columna->addWidget(new QLabel(QStringLiteral("Llegada"), this));
  columna->addWidget(linea_);
  fila->addLayout(columna);
  noches_ = Numero(*fila, QStringLiteral("Noches"), "noches", 1, recepcion::kNochesMaximas);
  adultos_ = Numero(*fila, QStringLiteral("Adultos"), "adultos", 1, kMaximoPersonas);
  menores_ = Numero(*fila, QStringLiteral("Menores"), "menores", 0, kMaximoPersonas);
  infantes_ = Numero(*fila, QStringLiteral("Infantes"), "infantes", 0, kMaximoPersonas);
  auto* monedas = new QVBoxLayout;
  moneda_ = new QComboBox(this);
  moneda_->setObjectName(QStringLiteral("moneda"));
  moneda_->setAccessibleName(QStringLiteral("Moneda"));
  for (const std::string& clave : recepcion::Monedas()) moneda_->addItem(Q(clave));
  connect(moneda_, &QComboBox::activated, this, [this] { Calcula(); });
  monedas->addWidget(new QLabel(QStringLiteral("Moneda"), this));
  monedas->addWidget(moneda_);
  fila->addLayout(monedas);
  fila->addStretch();
  caja.addLayout(fila);
}

// The entry writes a day that it can read in full.
std::optional<com::Fecha> VentanaCotizacion::Llegada() const { return LeeFecha(Q(llegada_.texto()), com::Fecha{}); }

recepcion::Pedido VentanaCotizacion::Leido() const {
  const auto dia = Llegada();
  if (!dia) throw com::Error(com::error::kArgumento, NoEsFecha(Q(llegada_.texto())).toStdString());
  const com::Fecha llegada = *dia;
  return {llegada,
          com::MasDias(llegada, noches_->value()),
          adultos_->value(),
          menores_->value(),
          infantes_->value(),
          moneda_->currentText().toStdString()};
}

void VentanaCotizacion::Llena(const recepcion::Pedido& p) {
  for (QWidget* w : std::initializer_list<QWidget*>{linea_, noches_, adultos_, menores_, infantes_})
    w->blockSignals(true);
  if (const std::string dia = regional::FechaCorta(p.llegada); llegada_.texto() != dia) linea_->setText(Q(dia));
  noches_->setValue(com::DiasEntre(p.llegada, p.salida));
  adultos_->setValue(p.adultos);
  menores_->setValue(p.menores);
  infantes_->setValue(p.infantes);
  moneda_->setCurrentText(Q(p.moneda));
  for (QWidget* w : std::initializer_list<QWidget*>{linea_, noches_, adultos_, menores_, infantes_})
    w->blockSignals(false);
}

void VentanaCotizacion::Pide(const recepcion::Pedido& pedido) {
  cotizacion_.Calcula(pedido);
  const recepcion::Pedido& p = cotizacion_.pedido();
  Llena(p);
  const int noches = com::DiasEntre(p.llegada, p.salida);
  // The type that was chosen stays, whatever else is asked for.
  const QString tipo = tabla_->currentRow() < 0 ? QString() : tabla_->item(tabla_->currentRow(), 0)->text();
  tabla_->setRowCount(0);
  for (const recepcion::Oferta& o : cotizacion_.ofertas()) {
    const bool hay = o.motivo.empty();
    AgregaFila(tabla_,
               {Q(o.nombre), QString::number(o.libres), hay ? Q(regional::Moneda(o.total)) : QString(),
                hay ? Q(regional::Moneda(o.impuestos)) : QString(),
                hay ? Q(regional::Moneda(o.total / noches)) : QString(), hay ? Habitaciones(o) : Q(o.motivo)},
               !hay, {1, 2, 3, 4});
  }
  tabla_->resizeColumnsToContents();
  const QList<QTableWidgetItem*> mismo = tabla_->findItems(tipo, Qt::MatchExactly);
  if (tabla_->rowCount() > 0) tabla_->selectRow(tipo.isEmpty() || mismo.isEmpty() ? 0 : mismo.front()->row());
  exporta_->setEnabled(true);
  nota_->setText(QStringLiteral("Por la estancia, con impuestos, en %1. Salida el %2")
                     .arg(Q(p.moneda), Q(regional::FechaCorta(p.salida))));
}

// As it was understood, once it is left.
void VentanaCotizacion::MuestraLlegada() {
  const QSignalBlocker callada(linea_);
  linea_->setText(Q(llegada_.texto()));
}

// What cannot be quoted is told where the answer would stand.
void VentanaCotizacion::Calcula() {
  Corre([this] {
    Marca(*linea_, "malo", false);
    try {
      Pide(Leido());
    } catch (const com::Error& e) {
      const auto dia = Llegada();
      Marca(*linea_, "malo", !dia || *dia < com::SoloFecha(publico::Utilerias().FechaServidor()));
      DiceQueNo(e);
    }
  });
}

void VentanaCotizacion::Intenta(const recepcion::Pedido& pedido) {
  try {
    Pide(pedido);
  } catch (const com::Error& e) {
    Llena(pedido);
    DiceQueNo(e);
  }
}

// The quote before, which the model keeps, is no answer to what was asked: it is not given out either.
void VentanaCotizacion::DiceQueNo(const com::Error& e) {
  tabla_->setRowCount(0);
  exporta_->setEnabled(false);
  nota_->setText(Q(e.Descripcion()));
}

void VentanaCotizacion::Vende() {
  const int fila = Elegida();
  if (fila < 0) return;
  const recepcion::Oferta& oferta = cotizacion_.ofertas()[static_cast<std::size_t>(fila)];
  if (oferta.motivo.empty()) return accept();
  nota_->setText(Q(oferta.nombre + ": " + oferta.motivo));
}

void VentanaCotizacion::Recorre(int paso) {
  tabla_->selectRow(std::clamp(tabla_->currentRow() + paso, 0, std::max(tabla_->rowCount() - 1, 0)));
}

// With Ctrl the arrows walk the offers from the fields too, where alone they change what is asked for.
bool VentanaCotizacion::eventFilter(QObject* objeto, QEvent* evento) {
  if (evento->type() == QEvent::KeyPress) {
    const auto* tecla = static_cast<QKeyEvent*>(evento);
    const bool flecha = tecla->key() == Qt::Key_Down || tecla->key() == Qt::Key_Up;
    if (flecha && tecla->modifiers().testFlag(Qt::ControlModifier)) {
      Recorre(tecla->key() == Qt::Key_Down ? 1 : -1);
      return true;
    }
  }
  return QDialog::eventFilter(objeto, evento);
}

void VentanaCotizacion::keyPressEvent(QKeyEvent* evento) {
  if (EsEnter(*evento)) return Vende();
  if (evento->key() == Qt::Key_Down || evento->key() == Qt::Key_Up) {
    return Recorre(evento->key() == Qt::Key_Down ? 1 : -1);
  }
  QDialog::keyPressEvent(evento);
}

}  // namespace vista
