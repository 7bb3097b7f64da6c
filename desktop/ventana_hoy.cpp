#include "desktop/ventana_hoy.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>
#include <tuple>

#include "desktop/dialogos.h"
#include "desktop/estilo.h"
#include "desktop/exportar.h"
#include "desktop/guarda.h"
#include "desktop/tablas.h"
#include "desktop/teclas.h"
#include "desktop/vista_campos.h"
#include "host/standalone/documento.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"
#include "recepcion/listados.h"
#include "recepcion/periodo.h"
#include "schema/esquema.h"

namespace vista {

namespace {

constexpr const char* kTitulos[] = {"Folio",  "Huésped",  "Habitaciones", "Llegada",
                                    "Salida", "Personas", "Estado",       "Referencia"};
constexpr int kColumnaPersonas = 5;

QStringList Titulos() {
  QStringList titulos;
  for (const char* t : kTitulos) titulos << QString::fromUtf8(t);
  return titulos;
}

QLocale Espanol() { return {QLocale::Spanish, QLocale::Mexico}; }

QString Estado(const recepcion::Fila& fila) {
  if (fila.folio.empty()) return QStringLiteral("Estancia");
  const QString estado = Q(autonomo::EstadoLegible(fila.estado));
  return fila.estancia.empty() ? estado : estado + QStringLiteral(", en casa");
}

// "3 reservaciones"; of a search "3 halladas", "100 de 2,345 halladas; escriba más para precisar".
QString Cuenta(const recepcion::Hoy& hoy) {
  const auto hay = static_cast<int>(hoy.filas().size());
  if (hoy.busqueda().empty()) {
    return hay == 1 ? QStringLiteral("1 reservación") : QStringLiteral("%1 reservaciones").arg(hay);
  }
  if (hoy.hallazgo().total <= recepcion::Hoy::kLimite) {
    return hay == 1 ? QStringLiteral("1 hallada") : QStringLiteral("%1 halladas").arg(hay);
  }
  return QStringLiteral("%1 de %2 halladas; escriba más para precisar")
      .arg(hay)
      .arg(Espanol().toString(static_cast<int>(hoy.hallazgo().total)));
}

QString EnPalabras(const recepcion::Periodo& dias) {
  const QString desde = DiaEnPalabras(ADate(dias.desde));
  return dias.desde == dias.hasta ? desde : desde + QStringLiteral(" al ") + DiaEnPalabras(ADate(dias.hasta));
}

}  // namespace

QString DiaEnPalabras(QDate dia) { return Espanol().toString(dia, QStringLiteral("dddd d 'de' MMMM 'de' yyyy")); }

VentanaHoy::VentanaHoy(recepcion::Hoy& hoy, const Contexto& contexto, QWidget* padre)
    : QDialog(padre), hoy_(hoy), contexto_(contexto) {
  Presenta(*this, QStringLiteral("Hoy"), "hoy");
  auto* caja = new QVBoxLayout(this);
  CreaCabeza(*caja);
  CreaListas(*caja);
  CreaLibres(*caja);
  CreaBotones(*caja);
  setTabOrder(busqueda_, tabla_);
  {
    // What was looked for last; typing replaces it.
    const QSignalBlocker callado(busqueda_);
    busqueda_->setText(Q(hoy.busqueda()));
    busqueda_->selectAll();
  }
  busqueda_->setFocus();
  AjustaAPantalla(*this, {1040, 680});
  Actualiza();
}

void VentanaHoy::CreaCabeza(QBoxLayout& caja) {
  titulo_ = new QLabel(this);
  titulo_->setObjectName(QStringLiteral("dia"));
  titulo_->setFont(Fuente(Letra::Titulo));
  caja.addWidget(titulo_);
  busqueda_ = AgregaBusqueda(
      caja, QStringLiteral("Buscar reservaciones"),
      QStringLiteral("Buscar: nombre, teléfono, correo, folio, habitación, referencia, «mañana», «12 al 15 mar»"),
      this);
  busqueda_->installEventFilter(this);
  connect(busqueda_, &QLineEdit::textChanged, this, [this](const QString& texto) { Busca(texto); });
}

void VentanaHoy::CreaListas(QBoxLayout& caja) {
  listas_ = new QTabBar(this);
  listas_->setObjectName(QStringLiteral("listas"));
  listas_->setAccessibleName(QStringLiteral("Listas del día"));
  listas_->setExpanding(false);
  listas_->setDrawBase(false);
  for (std::size_t i = 0; i < recepcion::kListas; ++i) listas_->addTab(QString());
  connect(listas_, &QTabBar::tabBarClicked, this, [this](int lista) {
    if (lista >= 0) Elige(lista);
  });
  connect(listas_, &QTabBar::currentChanged, this, [this](int lista) { Elige(lista); });
  caja.addWidget(listas_);
  std::tie(tabla_, nota_) = AgregaTablaYNota(caja, Titulos(), "filas", {}, 3, this);
  tabla_->horizontalHeader()->setResizeContentsPrecision(0);  // what is in sight decides: it changes with each key
  connect(tabla_, &QTableWidget::cellDoubleClicked, this, [this] { Abre(); });
}

void VentanaHoy::CreaLibres(QBoxLayout& caja) {
  auto* rotulo = new QLabel(QStringLiteral("Habitaciones libres"), this);
  rotulo->setFont(Fuente(Letra::Fuerte));
  caja.addWidget(rotulo);
  libres_ = CreaTabla(QStringList(recepcion::kNochesLibres + 2), this);
  libres_->setObjectName(QStringLiteral("libres"));
  libres_->setAccessibleName(QStringLiteral("Habitaciones libres por tipo y noche"));
  libres_->setSelectionMode(QAbstractItemView::NoSelection);
  libres_->horizontalHeader()->setStretchLastSection(false);
  caja.addWidget(libres_, 2);
}

void VentanaHoy::CreaBotones(QBoxLayout& caja) {
  auto* fila = new QHBoxLayout;
  const auto boton = [&](const char* titulo, const char* nombre, Salida salida, const char* atajo) {
    auto* b = new QPushButton(QString::fromUtf8(titulo), this);
    b->setObjectName(QLatin1String(nombre));
    b->setAutoDefault(false);
    connect(b, &QPushButton::clicked, this, [this, salida] { done(salida); });
    if (atajo != nullptr) {
      connect(new QShortcut(QKeySequence(QLatin1String(atajo)), this), &QShortcut::activated, b, &QPushButton::click);
    }
    fila->addWidget(b);
  };
  boton("&Nueva reservación (Ctrl+N)", "nueva", kNueva, "Ctrl+N");
  boton("Cua&dro de habitaciones (F7)", "cuadro", kCuadro, "F7");
  boton("Coti&zar (F8)", "cotizar", kCotiza, "F8");
  fila->addStretch();
  fila->addWidget(BotonExportar(
      this, [this] { return recepcion::ListadoDe(hoy_); }, [this](const QString& texto) { nota_->setText(texto); }));
  boton("Cerrar (Esc)", "cerrar", kCierra, nullptr);
  caja.addLayout(fila);
}

void VentanaHoy::Actualiza() {
  hoy_.Abre();
  MuestraDia();
  PreparaBusqueda();
}

void VentanaHoy::PreparaBusqueda() {
  if (!contexto_.interactivo) return;
  QTimer::singleShot(0, this, [this] {
    Corre([this] {
      if (hoy_.Prepara()) PreparaBusqueda();
    });
  });
}

void VentanaHoy::MuestraDia() {
  const recepcion::Dia& dia = hoy_.dia();
  QString titulo = DiaEnPalabras(ADate(dia.fecha));
  titulo_->setText(titulo.replace(0, 1, titulo.left(1).toUpper()));
  const QSignalBlocker callado(listas_);
  for (std::size_t i = 0; i < recepcion::kListas; ++i) {
    const auto lista = static_cast<recepcion::Lista>(i);
    const bool sabe = lista != recepcion::Lista::NoLlegaron || dia.llevaEstancias;
    listas_->setTabText(static_cast<int>(i), Q(recepcion::TituloDe(lista)) + QStringLiteral("  ") +
                                                 (sabe ? QString::number(dia.listas[i].size()) : QStringLiteral("—")));
  }
  listas_->setTabToolTip(
      static_cast<int>(recepcion::Lista::NoLlegaron),
      dia.llevaEstancias ? QString() : QStringLiteral("El hotel no registra entradas: no se sabe quién falta"));
  MuestraFilas();
  MuestraLibres();
}

void VentanaHoy::MuestraFilas() {
  const bool busca = !hoy_.busqueda().empty();
  {
    const QSignalBlocker callado(listas_);
    listas_->setCurrentIndex(static_cast<int>(hoy_.lista()));
    listas_->setEnabled(true);
  }
  tabla_->setAccessibleName(busca ? QStringLiteral("Reservaciones halladas") : Q(recepcion::TituloDe(hoy_.lista())));
  tabla_->setUpdatesEnabled(false);
  tabla_->setRowCount(0);
  for (const recepcion::Fila& fila : hoy_.filas()) {
    AgregaFila(tabla_,
               {Q(fila.folio), Q(fila.huesped), Q(fila.habitaciones), Q(regional::FechaCorta(fila.llegada)),
                Q(regional::FechaCorta(fila.salida)), fila.personas > 0 ? QString::number(fila.personas) : QString(),
                Estado(fila), Q(fila.referencia)},
               fila.estado == esquema::kCancelada || fila.estado == esquema::kCerrada, {kColumnaPersonas});
  }
  tabla_->resizeColumnsToContents();
  tabla_->setUpdatesEnabled(true);
  if (tabla_->rowCount() > 0) tabla_->selectRow(0);
  QString nota = Cuenta(hoy_);
  if (const auto& dias = hoy_.hallazgo().periodo; busca && dias) nota += QStringLiteral(" · ") + EnPalabras(*dias);
  if (const std::string dia = recepcion::DiaInexistente(hoy_.busqueda()); hoy_.filas().empty() && !dia.empty()) {
    nota = QStringLiteral("El día %1 no existe").arg(Q(dia));
  }
  nota_->setText(nota);
}

void VentanaHoy::MuestraLibres() {
  const recepcion::Dia& dia = hoy_.dia();
  QStringList titulos{QStringLiteral("Tipo"), QStringLiteral("Hay")};
  std::vector<int> derecha{1};
  for (int n = 0; n < recepcion::kNochesLibres; ++n) {
    titulos << (n == 0 ? QStringLiteral("Esta noche")
                       : Espanol().toString(ADate(com::MasDias(dia.fecha, n)), QStringLiteral("ddd d")));
    derecha.push_back(n + 2);
  }
  libres_->setHorizontalHeaderLabels(titulos);
  libres_->setRowCount(0);
  for (const recepcion::LibresDeTipo& tipo : dia.libres) {
    QStringList celdas{Q(tipo.nombre), QString::number(tipo.total)};
    for (const int libres : tipo.noches) celdas << QString::number(libres);
    AgregaFila(libres_, celdas, false, derecha);
    for (std::size_t n = 0; n < tipo.noches.size(); ++n) {
      if (tipo.noches[n] <= 0)
        libres_->item(libres_->rowCount() - 1, static_cast<int>(n) + 2)->setForeground(Colores().peligro);
    }
  }
  libres_->resizeColumnsToContents();
}

void VentanaHoy::Busca(const QString& texto) {
  Corre([&] {
    hoy_.Busca(texto.toStdString());
    MuestraFilas();
  });
}

void VentanaHoy::Elige(int lista) {
  Corre([&] {
    const QSignalBlocker callado(busqueda_);
    busqueda_->clear();
    hoy_.Elige(static_cast<recepcion::Lista>(lista));
    MuestraFilas();
  });
}

void VentanaHoy::Abre() {
  const int fila = tabla_->currentRow();
  if (fila < 0) return;
  const recepcion::Fila& elegida = hoy_.filas()[static_cast<std::size_t>(fila)];
  if (!elegida.folio.empty()) return accept();
  nota_->setText(QStringLiteral("La estancia ") + Q(elegida.estancia) + QStringLiteral(" no tiene reservación"));
}

bool VentanaHoy::eventFilter(QObject* objeto, QEvent* evento) {
  return (objeto == busqueda_ && RecorreTabla(evento, tabla_)) || QDialog::eventFilter(objeto, evento);
}

void VentanaHoy::keyPressEvent(QKeyEvent* evento) {
  if (EsEnter(*evento)) return Abre();
  if (evento->key() == Qt::Key_F5) return Corre([this] { Actualiza(); });
  if (evento->key() == Qt::Key_Escape && !busqueda_->text().isEmpty()) return busqueda_->clear();
  QDialog::keyPressEvent(evento);
}

}  // namespace vista
