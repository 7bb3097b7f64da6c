#include "desktop/ventana_cifras.h"

#include <QKeyEvent>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <cmath>
#include <utility>

#include "desktop/dialogos.h"
#include "desktop/estilo.h"
#include "desktop/exportar.h"
#include "desktop/fechas.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/tablas.h"
#include "desktop/teclas.h"
#include "desktop/vista.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"

namespace vista {

namespace {

using recepcion::Cuenta;
using recepcion::CuentaDe;

// What the plot can show: a series of each night or month.
struct Trazo {
  const char* nombre;
  Serie::Forma forma;
  QColor Paleta::*color;
  double (*valor)(const Cuenta&);
};
struct Dibujo {
  const char* titulo;
  listado::Clase clase;
  std::vector<Trazo> trazos;
};
const std::vector<Dibujo>& Dibujos() {
  using enum Serie::Forma;
  static const std::vector<Dibujo> dibujos{
      {"Ocupación",
       listado::Clase::PorCiento,
       {{"Ocupación", Barras, &Paleta::acento, [](const Cuenta& c) { return c.Ocupacion(); }}}},
      {"Tarifa e ingreso por disponible",
       listado::Clase::Importe,
       {{"Tarifa promedio", Linea, &Paleta::acento, [](const Cuenta& c) { return c.Tarifa(); }},
        {"Ingreso por disponible", Punteada, &Paleta::aviso, [](const Cuenta& c) { return c.PorHabitacion(); }}}},
      {"Ritmo contra el año anterior, noches",
       listado::Clase::Entero,
       {{"Vendidas", Barras, &Paleta::acento, [](const Cuenta& c) { return double(c.vendidas); }},
        {"Hace un año a estas alturas", Linea, &Paleta::aviso,
         [](const Cuenta& c) { return double(c.vendidasEntonces); }},
        {"Hace un año al final", Punteada, &Paleta::tenue, [](const Cuenta& c) { return double(c.vendidasAlFinal); }}}},
      {"Ritmo contra el año anterior, ingreso",
       listado::Clase::Importe,
       {{"Ingreso", Barras, &Paleta::acento, [](const Cuenta& c) { return c.ingreso; }},
        {"Hace un año a estas alturas", Linea, &Paleta::aviso, [](const Cuenta& c) { return c.ingresoEntonces; }},
        {"Hace un año al final", Punteada, &Paleta::tenue, [](const Cuenta& c) { return c.ingresoAlFinal; }}}},
  };
  return dibujos;
}

QLocale Espanol() { return {QLocale::Spanish, QLocale::Mexico}; }

// "12 mar", "mar 2026".
QString Lugar(const CuentaDe& c, bool porMes) {
  const QDate dia = ADate(c.desde);
  return Espanol().toString(dia, porMes ? QStringLiteral("MMM yyyy") : QStringLiteral("d MMM"));
}

// Amounts of a scale need no cents.
QString EnEscala(listado::Clase clase, double valor) {
  if (clase == listado::Clase::Importe) return Q(regional::Moneda(valor, 0));
  if (clase == listado::Clase::Entero) return Espanol().toString(std::round(valor), 'f', 0);
  return Q(listado::Texto(clase, valor));
}

// A caption of several words stands on two lines, so that all columns are in sight.
QString EnDosLineas(QString titulo) {
  constexpr qsizetype kCorto = 12;  // letters
  if (titulo.size() <= kCorto) return titulo;
  const qsizetype medio = titulo.size() / 2, antes = titulo.lastIndexOf(QLatin1Char(' '), medio),
                  despues = titulo.indexOf(QLatin1Char(' '), medio);
  const qsizetype corte = antes < 0 || (despues >= 0 && despues - medio < medio - antes) ? despues : antes;
  return corte < 0 ? titulo : titulo.replace(corte, 1, QLatin1Char('\n'));
}

// "+12 (8.1 %) contra hace un año".
QString Contra(double ahora, double antes, const std::function<QString(double)>& escribe) {
  if (antes == 0) return escribe(0) + QStringLiteral(" hace un año a estas alturas");
  const double mas = ahora - antes;
  return (mas < 0 ? QStringLiteral("−") : QStringLiteral("+")) + escribe(std::abs(mas)) + QStringLiteral(" (") +
         Q(listado::Texto(listado::Clase::PorCiento, mas / antes)) + QStringLiteral(") contra hace un año");
}

}  // namespace

VentanaCifras::VentanaCifras(recepcion::Cifras& cifras, QWidget* padre) : QDialog(padre), cifras_(cifras) {
  Presenta(*this, QStringLiteral("Cifras"), "cifras");
  auto* caja = new QVBoxLayout(this);
  CreaPedido(*caja);
  CreaResultado(*caja);
  auto* botones = new QHBoxLayout;
  botones->addStretch();
  botones->addWidget(BotonExportar(
      this, [this] { return recepcion::ListadoDe(cifras_, PorMes()); },
      [this](const QString& texto) { nota_->setText(texto); }));
  auto* cierra = new QPushButton(QStringLiteral("Cerrar (Esc)"), this);
  cierra->setObjectName(QStringLiteral("cerrar"));
  cierra->setAutoDefault(false);
  connect(cierra, &QPushButton::clicked, this, &QDialog::reject);
  botones->addWidget(cierra);
  caja->addLayout(botones);
  tabla_->setFocus();
  AjustaAPantalla(*this, {1180, 760});
  Corre([this] {
    cifras_.Abre();
    MuestraTodo();
  });
}

QDateEdit* VentanaCifras::Fecha(QBoxLayout& fila, const QString& titulo, const char* nombre) {
  auto* caja = new QVBoxLayout;
  auto* fecha = new QDateEdit(this);
  fecha->setObjectName(QLatin1String(nombre));
  fecha->setAccessibleName(titulo);
  fecha->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
  fecha->setCalendarPopup(true);
  fecha->setKeyboardTracking(false);
  connect(fecha, &QDateEdit::dateChanged, this, [this] { Calcula(); });
  caja->addWidget(new QLabel(titulo, this));
  caja->addWidget(fecha);
  fila.addLayout(caja);
  return fecha;
}

QComboBox* VentanaCifras::Lista(QBoxLayout& fila, const QString& titulo, const char* nombre) {
  auto* caja = new QVBoxLayout;
  auto* lista = new QComboBox(this);
  lista->setObjectName(QLatin1String(nombre));
  lista->setAccessibleName(titulo);
  caja->addWidget(new QLabel(titulo, this));
  caja->addWidget(lista);
  fila.addLayout(caja);
  return lista;
}

void VentanaCifras::CreaResultado(QBoxLayout& caja) {
  resumen_ = new QLabel(this);
  resumen_->setObjectName(QStringLiteral("resumen"));
  resumen_->setFont(Fuente(Letra::Fuerte));
  resumen_->setWordWrap(true);
  caja.addWidget(resumen_);
  grafica_ = new Grafica(this);
  grafica_->setObjectName(QStringLiteral("grafica"));
  caja.addWidget(grafica_, 2);
  tabla_ = CreaTabla(QStringList(13), this);
  tabla_->setObjectName(QStringLiteral("cuentas"));
  caja.addWidget(tabla_, 3);
  // The table has a use of its own for these keys.
  for (const auto& [teclas, meses] : {std::pair("Ctrl+Left", -1), {"Ctrl+Right", 1}}) {
    const int cuantos = meses;
    auto* atajo = new QShortcut(QKeySequence(QLatin1String(teclas)), this);
    connect(atajo, &QShortcut::activated, this, [this, cuantos] { MueveMes(cuantos); });
  }
  nota_ = AgregaNota(caja, this);
  nota_->setWordWrap(true);
}

void VentanaCifras::CreaPedido(QBoxLayout& caja) {
  auto* fila = new QHBoxLayout;
  const auto boton = [&](const char* icono, const char* nombre, const QString& ayuda, int meses) {
    auto* b = new QPushButton(Icono(QLatin1String(icono)), {}, this);
    b->setObjectName(QLatin1String(nombre));
    b->setAutoDefault(false);
    b->setToolTip(ayuda);
    b->setAccessibleName(ayuda);
    connect(b, &QPushButton::clicked, this, [this, meses] { MueveMes(meses); });
    fila->addWidget(b, 0, Qt::AlignBottom);
  };
  boton("izquierda", "antes", QStringLiteral("Mes anterior (Ctrl+Izquierda)"), -1);
  desde_ = Fecha(*fila, QStringLiteral("Desde la noche"), "desde");
  hasta_ = Fecha(*fila, QStringLiteral("Hasta la noche"), "hasta");
  boton("derecha", "despues", QStringLiteral("Mes siguiente (Ctrl+Derecha)"), 1);
  sucursal_ = Lista(*fila, QStringLiteral("Sucursal"), "sucursal");
  sucursal_->addItem(QStringLiteral("Todas"), QString());
  for (const auto& [clave, nombre] : recepcion::Sucursales())
    sucursal_->addItem(Q(clave) + QLatin1Char(' ') + Q(nombre), Q(clave));
  connect(sucursal_, &QComboBox::activated, this, [this] { Calcula(); });
  por_ = Lista(*fila, QStringLiteral("Por"), "por");
  por_->addItems({QStringLiteral("noche"), QStringLiteral("mes")});
  connect(por_, &QComboBox::activated, this, [this] { MuestraTodo(); });
  que_ = Lista(*fila, QStringLiteral("Gráfica"), "que");
  for (const Dibujo& v : Dibujos()) que_->addItem(QString::fromUtf8(v.titulo));
  connect(que_, &QComboBox::activated, this, [this] { MuestraGrafica(); });
  fila->addStretch();
  caja.addLayout(fila);
}

recepcion::PedidoCifras VentanaCifras::Leido() const {
  return {DeDate(desde_->date()), DeDate(hasta_->date()), sucursal_->currentData().toString().toStdString()};
}

bool VentanaCifras::PorMes() const { return por_->currentIndex() == 1; }

const std::vector<CuentaDe>& VentanaCifras::Cuentas() const { return PorMes() ? cifras_.meses() : cifras_.noches(); }

void VentanaCifras::Pide(const recepcion::PedidoCifras& pedido) {
  cifras_.Abre(pedido);
  MuestraTodo();
}

// What cannot be counted is told below; the figures that were there stay.
void VentanaCifras::Calcula() {
  Corre([this] {
    try {
      Pide(Leido());
    } catch (const com::Error& e) {
      nota_->setText(Q(e.Descripcion()));
    }
  });
}

void VentanaCifras::MueveMes(int meses) {
  Corre([&] {
    const QDate primero = desde_->date().addMonths(meses).addDays(1 - desde_->date().addMonths(meses).day());
    Pide({DeDate(primero), DeDate(primero.addMonths(1).addDays(-1)), Leido().sucursal});
  });
}

void VentanaCifras::MuestraTodo() {
  for (QWidget* w : std::initializer_list<QWidget*>{desde_, hasta_}) w->blockSignals(true);
  desde_->setDate(ADate(cifras_.pedido().desde));
  hasta_->setDate(ADate(cifras_.pedido().hasta));
  for (QWidget* w : std::initializer_list<QWidget*>{desde_, hasta_}) w->blockSignals(false);
  sucursal_->setCurrentIndex(std::max(0, sucursal_->findData(Q(cifras_.pedido().sucursal))));
  MuestraResumen();
  MuestraTabla();
  MuestraGrafica();
}

void VentanaCifras::MuestraResumen() {
  const Cuenta& t = cifras_.total();
  const auto noches = [](double n) { return Espanol().toString(n, 'f', 0); };
  resumen_->setText(
      QStringLiteral("Ocupación %1  ·  Tarifa promedio %2  ·  Ingreso por disponible %3  ·  Noches vendidas %4, %5")
          .arg(Q(listado::Texto(listado::Clase::PorCiento, t.Ocupacion())), Q(regional::Moneda(t.Tarifa())),
               Q(regional::Moneda(t.PorHabitacion())), noches(t.vendidas),
               Contra(t.vendidas, t.vendidasEntonces, noches)));
  QString nota = QStringLiteral("Sin impuestos, en %1. Hace un año a estas alturas: lo que estaba reservado al %2.")
                     .arg(Q(cifras_.moneda()), Q(regional::FechaCorta(recepcion::UnAnoAntes(cifras_.hoy()))));
  if (!cifras_.pedido().sucursal.empty()) {
    nota += QStringLiteral(" La ocupación es la parte de todo el hotel que vendió la sucursal.");
  }
  nota_->setText(nota);
}

void VentanaCifras::MuestraTabla() {
  const listado::Listado lista = recepcion::ListadoDe(cifras_, PorMes());
  QStringList titulos;
  std::vector<int> derecha;
  for (const listado::Columna& c : lista.columnas) {
    if (listado::ALaDerecha(c.clase)) derecha.push_back(static_cast<int>(titulos.size()));
    titulos << EnDosLineas(Q(c.titulo));
  }
  tabla_->setUpdatesEnabled(false);
  tabla_->setHorizontalHeaderLabels(titulos);
  tabla_->setAccessibleName(Q(lista.titulo + ", " + lista.detalle));
  tabla_->setRowCount(0);
  for (const auto& fila : lista.filas) {
    QStringList textos;
    for (std::size_t c = 0; c < fila.size(); ++c) textos << Q(listado::Texto(lista.columnas[c].clase, fila[c]));
    AgregaFila(tabla_, textos, false, derecha);
  }
  for (int c = 0; c < tabla_->columnCount(); ++c)
    tabla_->item(tabla_->rowCount() - 1, c)->setFont(Fuente(Letra::Fuerte));
  tabla_->resizeColumnsToContents();
  tabla_->setUpdatesEnabled(true);
}

void VentanaCifras::MuestraGrafica() {
  const Dibujo& dibujo = Dibujos()[static_cast<std::size_t>(que_->currentIndex())];
  QStringList lugares;
  int hoy = -1;
  for (const CuentaDe& c : Cuentas()) {
    if (c.desde <= cifras_.hoy() && cifras_.hoy() <= c.hasta) hoy = static_cast<int>(lugares.size());
    lugares << Lugar(c, PorMes());
  }
  std::vector<Serie> series;
  for (const Trazo& t : dibujo.trazos) {
    Serie serie{QString::fromUtf8(t.nombre), t.forma, Colores().*t.color, {}};
    for (const CuentaDe& c : Cuentas()) serie.valores.push_back(t.valor(c.cuenta));
    series.push_back(std::move(serie));
  }
  const listado::Clase clase = dibujo.clase;
  grafica_->Muestra(
      lugares, std::move(series), [clase](double valor) { return EnEscala(clase, valor); }, hoy);
  grafica_->setAccessibleName(QStringLiteral("Gráfica: ") + QString::fromUtf8(dibujo.titulo));
  grafica_->setAccessibleDescription(QStringLiteral("Los números están en la tabla que sigue"));
}

void VentanaCifras::keyPressEvent(QKeyEvent* evento) {
  if (evento->key() == Qt::Key_F5) return Calcula();
  if (evento->key() == Qt::Key_F11) return reject();
  if (EsEnter(*evento)) return;
  QDialog::keyPressEvent(evento);
}

}  // namespace vista
