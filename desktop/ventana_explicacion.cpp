#include "desktop/ventana_explicacion.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/dialogos.h"
#include "desktop/estilo.h"
#include "desktop/tablas.h"
#include "desktop/vista.h"
#include "platform/regional/regional.h"

namespace vista {

namespace {

constexpr int kConcepto = 0, kDetalle = 1, kImporte = 2;

void Resalta(QTableWidget& tabla, int fila) {
  for (int c = 0; c < tabla.columnCount(); ++c) tabla.item(fila, c)->setFont(Fuente(Letra::Fuerte));
}

}  // namespace

VentanaExplicacion::VentanaExplicacion(const std::vector<recepcion::CuentaExplicada>& explicaciones,
                                       std::size_t primera, QWidget* padre)
    : QDialog(padre),
      tabla_(CreaTabla({QStringLiteral("Concepto"), QStringLiteral("Cómo"), QStringLiteral("Importe")}, this)) {
  Presenta(*this, QStringLiteral("De dónde sale el total"), "explicacion");
  auto* caja = new QVBoxLayout(this);
  tabla_->setObjectName(QStringLiteral("pasos"));
  tabla_->setAccessibleName(windowTitle());
  int fila = 0;
  for (std::size_t i = 0; i < explicaciones.size(); ++i) {
    if (i == primera) fila = tabla_->rowCount();
    Agrega(explicaciones[i]);
  }
  tabla_->resizeColumnsToContents();
  tabla_->horizontalHeader()->setStretchLastSection(false);
  tabla_->horizontalHeader()->setSectionResizeMode(kDetalle, QHeaderView::Stretch);
  caja->addWidget(tabla_);
  auto* botones = new QDialogButtonBox(this);
  botones->addButton(QStringLiteral("&Cerrar"), QDialogButtonBox::RejectRole);
  connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
  caja->addWidget(botones);
  AjustaAPantalla(*this, {820, 460});
  if (tabla_->rowCount() > 0) {
    tabla_->selectRow(fila);
    tabla_->scrollToItem(tabla_->item(fila, kConcepto), QAbstractItemView::PositionAtTop);
  }
  tabla_->setFocus();
}

void VentanaExplicacion::Agrega(const recepcion::CuentaExplicada& explicacion) {
  AgregaFila(tabla_, {Q(explicacion.titulo), {}, {}});
  Resalta(*tabla_, tabla_->rowCount() - 1);
  for (const recepcion::CuentaExplicada::Paso& p : explicacion.pasos) {
    AgregaFila(tabla_, {QStringLiteral("    ") + Q(p.concepto), Q(p.detalle), Q(regional::Moneda(p.importe))}, false,
               {kImporte});
    if (p.suma) Resalta(*tabla_, tabla_->rowCount() - 1);
  }
  if (!explicacion.nota.empty()) AgregaFila(tabla_, {QStringLiteral("    ") + Q(explicacion.nota), {}, {}}, true);
}

}  // namespace vista
