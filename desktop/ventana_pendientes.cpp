#include "desktop/ventana_pendientes.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>

#include "desktop/asistente.h"
#include "desktop/dialogos.h"
#include "desktop/editor_catalogos.h"
#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/pantallas.h"
#include "desktop/tablas.h"
#include "desktop/vista.h"
#include "host/standalone/catalogos.h"

namespace vista {

namespace {

QString Lugar(const autonomo::Pendiente& p) {
  if (p.tabla.empty()) return {};
  if (p.tabla == autonomo::kAsistente) return QStringLiteral("Asistente de hotel nuevo");
  if (p.tabla == autonomo::kHojaParametros) return QStringLiteral("Configuración · ") + Q(p.parametro);
  if (p.tabla == autonomo::kHojaUsuarios) return QStringLiteral("Configuración · Usuarios");
  const autonomo::Catalogo* catalogo = autonomo::BuscaCatalogo(p.tabla);
  return catalogo == nullptr ? QString() : Q(catalogo->titulo);
}

}  // namespace

VentanaPendientes::VentanaPendientes(autonomo::Anfitrion& anfitrion, QWidget* padre)
    : QDialog(padre),
      anfitrion_(anfitrion),
      tabla_(CreaTabla({QStringLiteral("Qué falta"), QStringLiteral("Dónde se arregla")}, this)),
      arregla_(new QPushButton(Icono(QStringLiteral("editar")), QStringLiteral("&Ir a arreglarlo"), this)),
      nota_(new QLabel(this)) {
  Presenta(*this, QStringLiteral("Lista de pendientes"), "pendientes");
  auto* caja = new QVBoxLayout(this);
  nota_->setObjectName(QStringLiteral("nota"));
  nota_->setWordWrap(true);
  caja->addWidget(nota_);
  tabla_->setObjectName(QStringLiteral("filas"));
  tabla_->setAccessibleName(QStringLiteral("Lo que falta en el hotel"));
  caja->addWidget(tabla_);
  arregla_->setObjectName(QStringLiteral("arregla"));
  arregla_->setAutoDefault(false);
  auto* cierra = new QPushButton(QStringLiteral("Cerrar (Esc)"), this);
  cierra->setAutoDefault(false);
  auto* fila = new QHBoxLayout;
  fila->addWidget(arregla_);
  fila->addStretch();
  fila->addWidget(cierra);
  caja->addLayout(fila);
  connect(arregla_, &QPushButton::clicked, this, [this] { Arregla(); });
  connect(cierra, &QPushButton::clicked, this, &QDialog::reject);
  connect(tabla_, &QTableWidget::cellDoubleClicked, this, [this] { Arregla(); });
  connect(tabla_, &QTableWidget::itemSelectionChanged, this, [this] { Botones(); });
  for (const char* tecla : {"Return", "Enter"}) {
    auto* s = new QShortcut(QKeySequence(QLatin1String(tecla)), tabla_);
    s->setContext(Qt::WidgetShortcut);
    connect(s, &QShortcut::activated, this, [this] { Arregla(); });
  }
  Lee();
  tabla_->setFocus();
  AjustaAPantalla(*this, {860, 420});
}

void VentanaPendientes::Lee() {
  const int antes = tabla_->currentRow();
  tabla_->setRowCount(0);
  Corre([this] { pendientes_ = autonomo::Pendientes(anfitrion_); });
  int estorban = 0;
  for (const autonomo::Pendiente& p : pendientes_) {
    AgregaFila(tabla_, {Q(p.texto), Lugar(p)});
    QTableWidgetItem* celda = tabla_->item(tabla_->rowCount() - 1, 0);
    celda->setIcon(p.estorba ? Icono(QStringLiteral("aviso"), Colores().peligro)
                             : Icono(QStringLiteral("informe"), Colores().informe));
    celda->setData(Qt::AccessibleTextRole, (p.estorba ? QStringLiteral("Estorba: ") : QString()) + Q(p.texto));
    estorban += p.estorba ? 1 : 0;
  }
  tabla_->resizeColumnsToContents();
  nota_->setText(pendientes_.empty() ? QStringLiteral("No falta nada.")
                 : estorban == 0     ? QStringLiteral("Ya se puede reservar. Conviene arreglar además:")
                                     : QStringLiteral("Lo marcado en rojo estorba para reservar."));
  if (!pendientes_.empty()) tabla_->selectRow(std::clamp(antes, 0, tabla_->rowCount() - 1));
  Botones();
}

void VentanaPendientes::Botones() {
  const int fila = tabla_->currentRow();
  arregla_->setEnabled(fila >= 0 && fila < static_cast<int>(pendientes_.size()) &&
                       !pendientes_[static_cast<std::size_t>(fila)].tabla.empty());
}

void VentanaPendientes::Arregla() {
  if (!arregla_->isEnabled()) return;
  const autonomo::Pendiente p = pendientes_[static_cast<std::size_t>(tabla_->currentRow())];
  if (p.tabla == autonomo::kAsistente) {
    if (OfreceHotel(anfitrion_, this)) return done(kHecho);
    return activateWindow();
  }
  const std::string codigo(autonomo::PantallaDe(p.tabla));
  const HojaInicial hoja{p.tabla, p.parametro};
  Corre([&] {
    if (codigo == anfitrion::pantalla::kConfiguracion) {
      AbreConfiguracion(anfitrion_, this, hoja);
    } else {
      AbreCatalogos(*anfitrion_.conexion(), codigo, this, hoja);
    }
  });
  activateWindow();
  Lee();
}

}  // namespace vista
