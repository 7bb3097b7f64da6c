#include "desktop/ventana_cuadro.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>

#include "desktop/dialogos.h"
#include "desktop/estilo.h"
#include "desktop/exportar.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/tablas.h"
#include "desktop/vista.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"
#include "recepcion/listados.h"

namespace vista {

namespace {

constexpr std::array kZooms{7, 14, 30, 60};  // nights
static_assert(kZooms.front() == recepcion::kNochesMinimas && kZooms.back() == recepcion::kNochesMaximas);

}  // namespace

VentanaCuadro::VentanaCuadro(recepcion::Cuadro& cuadro, QWidget* padre) : QDialog(padre), cuadro_(cuadro) {
  Presenta(*this, QStringLiteral("Cuadro de habitaciones"), "cuadro");
  auto* caja = new QVBoxLayout(this);
  CreaCabeza(*caja);
  CreaTablaYNota(*caja);
  tabla_->setFocus();
  AjustaAPantalla(*this, {1200, 720});
  Actualiza();
}

void VentanaCuadro::CreaCabeza(QBoxLayout& caja) {
  auto* fila = new QHBoxLayout;
  const auto boton = [&](const QString& titulo, const char* nombre, const QString& ayuda, auto hace) {
    auto* b = new QPushButton(titulo, this);
    b->setObjectName(QLatin1String(nombre));
    b->setAutoDefault(false);
    b->setToolTip(ayuda);
    b->setAccessibleName(ayuda);
    connect(b, &QPushButton::clicked, this, hace);
    fila->addWidget(b);
    return b;
  };
  const QString antes = QStringLiteral("Días anteriores (Ctrl+Izquierda)"),
                despues = QStringLiteral("Días siguientes (Ctrl+Derecha)");
  boton({}, "antes", antes, [this] { Mueve(-cuadro_.noches() / 2); })->setIcon(Icono(QStringLiteral("izquierda")));
  boton(QStringLiteral("Hoy"), "hoy", QStringLiteral("Desde hoy (Ctrl+Inicio)"), [this] { VaAHoy(); });
  boton({}, "despues", despues, [this] { Mueve(cuadro_.noches() / 2); })->setIcon(Icono(QStringLiteral("derecha")));
  titulo_ = new QLabel(this);
  titulo_->setFont(Fuente(Letra::Titulo));
  fila->addWidget(titulo_, 1);
  zoom_ = new QComboBox(this);
  zoom_->setObjectName(QStringLiteral("zoom"));
  zoom_->setAccessibleName(QStringLiteral("Noches a la vista"));
  zoom_->setToolTip(QStringLiteral("Noches a la vista (Ctrl+Más, Ctrl+Menos)"));
  for (const int noches : kZooms) zoom_->addItem(QStringLiteral("%1 noches").arg(noches), noches);
  connect(zoom_, &QComboBox::activated, this, [this](int i) { Muestra(cuadro_.desde(), zoom_->itemData(i).toInt()); });
  fila->addWidget(zoom_);
  fila->addWidget(BotonExportar(
      this, [this] { return recepcion::ListadoDe(cuadro_); }, [this](const QString& texto) { nota_->setText(texto); }));
  caja.addLayout(fila);
}

void VentanaCuadro::CreaTablaYNota(QBoxLayout& caja) {
  tabla_ = new TablaCuadro(cuadro_, this);
  tabla_->alAbrir = [this](const recepcion::Barra& barra) { Elige(barra); };
  tabla_->alReservar = [this](int fila, com::Fecha desde, com::Fecha hasta) {
    eleccion_ = {{}, fila, desde, hasta};
    done(kReserva);
  };
  tabla_->alMover = [this](const QString& dice) { nota_->setText(dice); };
  caja.addWidget(tabla_, 1);
  nota_ = AgregaNota(caja, this);
  nota_->setText(
      QStringLiteral("Un clic abre la reservación; al arrastrar sobre noches libres empieza una nueva con ellas"));
}

void VentanaCuadro::Actualiza() {
  cuadro_.Abre();
  Muestra(cuadro_.desde(), cuadro_.noches());
}

void VentanaCuadro::Muestra(com::Fecha desde, int noches) {
  Corre([&] {
    cuadro_.Abre(desde, noches);
    zoom_->setCurrentIndex(zoom_->findData(noches));
    titulo_->setText(Q(regional::FechaCorta(desde)) + QStringLiteral(" – ") +
                     Q(regional::FechaCorta(com::MasDias(desde, noches - 1))));
    tabla_->Refresca();
  });
}

void VentanaCuadro::Mueve(int dias) { Muestra(com::MasDias(cuadro_.desde(), dias), cuadro_.noches()); }

void VentanaCuadro::VaAHoy() {
  Muestra(cuadro_.hoy(), cuadro_.noches());
  tabla_->VaA(cuadro_.hoy());
}

// A stay without a reservation, or a block: told, and the window stays.
void VentanaCuadro::Elige(const recepcion::Barra& barra) {
  if (barra.folio.empty()) {
    const QString quien = barra.huesped.empty() ? QStringLiteral("Un bloqueo") : Q(barra.huesped);
    return nota_->setText(quien + QStringLiteral(" no tiene reservación"));
  }
  eleccion_ = {barra, barra.fila, {}, {}};
  done(kAbre);
}

void VentanaCuadro::keyPressEvent(QKeyEvent* evento) {
  const bool ctrl = evento->modifiers().testFlag(Qt::ControlModifier);
  const int cual = zoom_->currentIndex();
  switch (evento->key()) {
    case Qt::Key_F5:
      return Corre([this] { Actualiza(); });
    case Qt::Key_Left:
      return Mueve(-cuadro_.noches() / 2);
    case Qt::Key_Right:
      return Mueve(cuadro_.noches() / 2);
    case Qt::Key_Home:
      return VaAHoy();
    case Qt::Key_F7:
      return reject();
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      if (ctrl && cual > 0) Muestra(cuadro_.desde(), zoom_->itemData(cual - 1).toInt());
      return;
    case Qt::Key_Minus:
      if (ctrl && cual + 1 < zoom_->count()) Muestra(cuadro_.desde(), zoom_->itemData(cual + 1).toInt());
      return;
    default:
      QDialog::keyPressEvent(evento);
  }
}

}  // namespace vista
