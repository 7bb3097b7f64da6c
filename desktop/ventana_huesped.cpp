#include "desktop/ventana_huesped.h"

#include <QApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QShortcut>
#include <QVBoxLayout>
#include <tuple>

#include "component/nombres.h"
#include "desktop/dialogos.h"
#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/tablas.h"
#include "desktop/teclas.h"
#include "desktop/vista.h"
#include "host/standalone/documento.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"
#include "schema/esquema.h"

namespace vista {

namespace {

QString Cuenta(const recepcion::Huespedes& huespedes) {
  const std::size_t hay = huespedes.hallados().size(), total = huespedes.total();
  if (total == 0) return QStringLiteral("Nadie coincide. Enter captura un cliente nuevo");
  if (total > hay) return QStringLiteral("%1 de %2; escriba más para precisar").arg(hay).arg(total);
  return total == 1 ? QStringLiteral("1 cliente") : QStringLiteral("%1 clientes").arg(total);
}

// Text in a caption where an & would be a mnemonic.
QString SinAtajo(const std::string& texto) { return Q(texto).replace(QLatin1Char('&'), QStringLiteral("&&")); }

// What leads to a button from anywhere in the dialog.
void ConAtajo(QDialog* dialogo, QAbstractButton* boton, const char* teclas) {
  QObject::connect(new QShortcut(QKeySequence(QLatin1String(teclas)), dialogo), &QShortcut::activated, boton,
                   &QAbstractButton::click);
}

QPushButton* Boton(QDialog* dialogo, QBoxLayout& fila, const char* titulo, const char* nombre) {
  auto* b = new QPushButton(QString::fromUtf8(titulo), dialogo);
  b->setObjectName(QLatin1String(nombre));
  b->setAutoDefault(false);
  fila.addWidget(b);
  return b;
}

}  // namespace

// --- the search

VentanaHuesped::VentanaHuesped(recepcion::Huespedes& huespedes, QWidget* padre)
    : QDialog(padre), huespedes_(huespedes) {
  Presenta(*this, huespedes.campo() == kv207::control::kCliente ? QStringLiteral("Cliente") : QStringLiteral("Huésped"),
           "huesped");
  auto* caja = new QVBoxLayout(this);
  CreaBusqueda(*caja);
  CreaUltima(*caja);
  CreaBotones(*caja);
  AjustaAPantalla(*this, {760, 600});
  Muestra();
  busqueda_->setFocus();
}

void VentanaHuesped::CreaBusqueda(QBoxLayout& caja) {
  busqueda_ =
      AgregaBusqueda(caja, QStringLiteral("Buscar clientes"), QStringLiteral("Nombre, teléfono, correo o clave"), this);
  busqueda_->installEventFilter(this);
  connect(busqueda_, &QLineEdit::textChanged, this, [this](const QString& texto) { Busca(texto); });
  std::tie(personas_, nota_) = AgregaTablaYNota(
      caja, {QStringLiteral("Nombre"), QStringLiteral("Teléfono"), QStringLiteral("Correo"), QStringLiteral("Clave")},
      "personas", QStringLiteral("Clientes"), 3, this);
  connect(personas_, &QTableWidget::currentCellChanged, this, [this](int fila, int, int, int) { Senala(fila); });
  connect(personas_, &QTableWidget::cellDoubleClicked, this, [this] { Elige(); });
}

void VentanaHuesped::CreaUltima(QBoxLayout& caja) {
  ultima_ = new QLabel(this);
  ultima_->setObjectName(QStringLiteral("ultima"));
  ultima_->setFont(Fuente(Letra::Fuerte));
  ultima_->setWordWrap(true);
  caja.addWidget(ultima_);
  habitacion_ = new QCheckBox(this);
  habitacion_->setObjectName(QStringLiteral("con_habitacion"));
  ConAtajo(this, habitacion_, "Alt+H");
  caja.addWidget(habitacion_);
  notas_ = new QCheckBox(this);
  notas_->setObjectName(QStringLiteral("con_notas"));
  ConAtajo(this, notas_, "Alt+N");
  caja.addWidget(notas_);
  visitas_ = CreaTabla({QStringLiteral("Folio"), QStringLiteral("Llegada"), QStringLiteral("Salida"),
                        QStringLiteral("Habitaciones"), QStringLiteral("Estado")},
                       this);
  visitas_->setObjectName(QStringLiteral("visitas"));
  visitas_->setAccessibleName(QStringLiteral("Sus reservaciones"));
  connect(visitas_, &QTableWidget::cellDoubleClicked, this, [this] { AbreVisita(); });
  caja.addWidget(visitas_, 2);
}

void VentanaHuesped::CreaBotones(QBoxLayout& caja) {
  auto* fila = new QHBoxLayout;
  elige_ = Boton(this, *fila, "&Elegir (Enter)", "elegir");
  connect(elige_, &QPushButton::clicked, this, [this] { Elige(); });
  QPushButton* nuevo = Boton(this, *fila, "Cliente nuevo (Ctrl+N)", "nuevo");
  connect(nuevo, &QPushButton::clicked, this, [this] { done(kNuevo); });
  ConAtajo(this, nuevo, "Ctrl+N");
  fila->addStretch();
  connect(Boton(this, *fila, "Cerrar (Esc)", "cerrar"), &QPushButton::clicked, this, &QDialog::reject);
  caja.addLayout(fila);
}

void VentanaHuesped::Muestra() {
  if (busqueda_->text() != Q(huespedes_.busqueda())) {
    const QSignalBlocker callado(busqueda_);
    busqueda_->setText(Q(huespedes_.busqueda()));
  }
  {
    const QSignalBlocker callada(personas_);
    personas_->setRowCount(0);
    for (const recepcion::Persona& p : huespedes_.hallados()) {
      AgregaFila(personas_, {Q(p.nombre), Q(p.telefono), Q(p.correo), Q(p.clave)});
    }
    personas_->resizeColumnsToContents();
    if (huespedes_.senalado() >= 0) personas_->selectRow(huespedes_.senalado());
  }
  nota_->setText(Cuenta(huespedes_));
  MuestraSenalado();
}

void VentanaHuesped::MuestraSenalado() {
  const auto& ultima = huespedes_.ultima();
  std::string ocupada;
  const std::string habitacion = ultima ? huespedes_.HabitacionDeSiempre(ocupada) : std::string();
  ultima_->setText(!ultima ? huespedes_.senalado() < 0 ? QString() : QStringLiteral("No se ha hospedado aquí")
                           : QStringLiteral("Última estancia: del %1 al %2, folio %3")
                                 .arg(Q(regional::FechaCorta(ultima->llegada)), Q(regional::FechaCorta(ultima->salida)),
                                      Q(ultima->folio)));
  habitacion_->setVisible(!habitacion.empty());
  habitacion_->setEnabled(ocupada.empty());
  if (!ocupada.empty()) habitacion_->setChecked(false);
  habitacion_->setText(ocupada.empty()
                           ? QStringLiteral("Con la misma habitación, %1 (Alt+H)").arg(Q(habitacion))
                           : QStringLiteral("La %1 no está libre: %2").arg(Q(habitacion), SinAtajo(ocupada)));
  const bool conNotas = ultima && !ultima->notas.empty();
  notas_->setVisible(conNotas);
  notas_->setEnabled(conNotas);
  if (conNotas) {
    notas_->setText(QStringLiteral("Con sus notas (Alt+N): %1").arg(SinAtajo(ultima->notas).simplified().left(80)));
  }
  visitas_->setRowCount(0);
  for (const recepcion::Fila& f : huespedes_.reservaciones()) {
    AgregaFila(visitas_,
               {Q(f.folio), Q(regional::FechaCorta(f.llegada)), Q(regional::FechaCorta(f.salida)), Q(f.habitaciones),
                Q(autonomo::EstadoLegible(f.estado))},
               f.estado == esquema::kCancelada || f.estado == esquema::kCerrada);
  }
  visitas_->resizeColumnsToContents();
  elige_->setEnabled(huespedes_.senalado() >= 0);
}

void VentanaHuesped::Busca(const QString& texto) {
  Corre([&] {
    huespedes_.Busca(texto.toStdString());
    Muestra();
  });
}

void VentanaHuesped::Senala(int fila) {
  if (fila < 0 || fila == huespedes_.senalado()) return;
  Corre([&] {
    huespedes_.Senala(fila);
    MuestraSenalado();
  });
}

void VentanaHuesped::Elige() {
  if (huespedes_.senalado() < 0) return done(kNuevo);
  accept();
}

void VentanaHuesped::AbreVisita() {
  if (visitas_->currentRow() >= 0) done(kAbre);
}

bool VentanaHuesped::eventFilter(QObject* objeto, QEvent* evento) {
  return (objeto == busqueda_ && RecorreTabla(evento, personas_)) || QDialog::eventFilter(objeto, evento);
}

void VentanaHuesped::keyPressEvent(QKeyEvent* evento) {
  if (EsEnter(*evento)) return visitas_->hasFocus() ? AbreVisita() : Elige();
  if (evento->key() == Qt::Key_Escape && !busqueda_->text().isEmpty()) return busqueda_->clear();
  QDialog::keyPressEvent(evento);
}

// --- a new client

VentanaClienteNuevo::VentanaClienteNuevo(recepcion::Huespedes& huespedes, QWidget* padre)
    : QDialog(padre), huespedes_(huespedes) {
  Presenta(*this, QStringLiteral("Cliente nuevo"), "cliente_nuevo");
  auto* caja = new QVBoxLayout(this);
  CreaCampos(*caja);
  CreaParecidas(*caja);
  CreaBotones(*caja);
  AjustaAPantalla(*this, {680, 420});
  Corre([this] { Escribe(huespedes_.Propuesta()); });
  // On with what was not searched for.
  (nombre_->text().isEmpty() ? nombre_ : telefono_->text().isEmpty() ? telefono_ : correo_)->setFocus();
}

void VentanaClienteNuevo::CreaCampos(QBoxLayout& caja) {
  auto* forma = new QFormLayout;
  const auto campo = [&](const char* titulo, const char* nombre) {
    auto* linea = new QLineEdit(this);
    linea->setObjectName(QLatin1String(nombre));
    linea->setAccessibleName(QString::fromUtf8(titulo));
    connect(linea, &QLineEdit::textEdited, this, [this] {
      escrito_ = true;
      MuestraParecidas();
    });
    forma->addRow(QString::fromUtf8(titulo) + QStringLiteral(":"), linea);
    return linea;
  };
  nombre_ = campo("Nombre", "nombre");
  telefono_ = campo("Teléfono", "telefono");
  correo_ = campo("Correo electrónico", "correo");
  clave_ = campo("Clave", "clave");
  caja.addLayout(forma);
}

void VentanaClienteNuevo::CreaParecidas(QBoxLayout& caja) {
  rotulo_ = new QLabel(QStringLiteral("¿Es alguno de éstos? Enter o doble clic lo elige"), this);
  rotulo_->setFont(Fuente(Letra::Fuerte));
  caja.addWidget(rotulo_);
  tabla_ = CreaTabla({QStringLiteral("Por qué"), QStringLiteral("Nombre"), QStringLiteral("Teléfono"),
                      QStringLiteral("Correo"), QStringLiteral("Clave")},
                     this);
  tabla_->setObjectName(QStringLiteral("parecidas"));
  tabla_->setAccessibleName(QStringLiteral("Clientes parecidos"));
  connect(tabla_, &QTableWidget::cellDoubleClicked, this, [this] { EligeParecida(); });
  caja.addWidget(tabla_, 1);
  nota_ = new QLabel(this);
  nota_->setObjectName(QStringLiteral("nota"));
  nota_->setWordWrap(true);
  QPalette tinta = nota_->palette();
  tinta.setColor(QPalette::WindowText, Colores().peligro);
  nota_->setPalette(tinta);
  caja.addWidget(nota_);
}

void VentanaClienteNuevo::CreaBotones(QBoxLayout& caja) {
  auto* fila = new QHBoxLayout;
  guarda_ = Boton(this, *fila, "&Guardar (Enter)", "guardar");
  connect(guarda_, &QPushButton::clicked, this, [this] { Guarda(false); });
  aunque_ = Boton(this, *fila, "Es otra persona: guardar (Ctrl+Enter)", "aunque");
  connect(aunque_, &QPushButton::clicked, this, [this] { Guarda(true); });
  fila->addStretch();
  connect(Boton(this, *fila, "Cancelar (Esc)", "cancelar"), &QPushButton::clicked, this, &QDialog::reject);
  caja.addLayout(fila);
}

void VentanaClienteNuevo::Escribe(const recepcion::Persona& persona) {
  nombre_->setText(Q(persona.nombre));
  telefono_->setText(Q(persona.telefono));
  correo_->setText(Q(persona.correo));
  clave_->setText(Q(persona.clave));
  MuestraParecidas();
}

recepcion::Persona VentanaClienteNuevo::Escrita() const {
  return {clave_->text().toStdString(), nombre_->text().toStdString(), telefono_->text().toStdString(),
          correo_->text().toStdString()};
}

void VentanaClienteNuevo::MuestraParecidas() {
  parecidas_ = huespedes_.ParecidasA(Escrita());
  tabla_->setRowCount(0);
  for (const recepcion::Parecida& p : parecidas_) {
    AgregaFila(tabla_,
               {Q(p.motivo), Q(p.persona.nombre), Q(p.persona.telefono), Q(p.persona.correo), Q(p.persona.clave)});
  }
  tabla_->resizeColumnsToContents();
  const bool hay = !parecidas_.empty();
  rotulo_->setVisible(hay);
  tabla_->setEnabled(hay);
  aunque_->setVisible(hay);
  Dice({});
}

void VentanaClienteNuevo::Dice(const QString& texto) { nota_->setText(texto); }

bool VentanaClienteNuevo::Guarda(bool aunqueParezca) {
  bool hecho = false;
  pregunta_ = false;
  Corre([&] {
    try {
      hecho = huespedes_.Crea(Escrita(), aunqueParezca).empty();
      if (hecho) return accept();
      MuestraParecidas();
      pregunta_ = true;
      Dice(QStringLiteral("Hay clientes parecidos: elija el suyo, o Ctrl+Enter si es otra persona"));
      tabla_->setFocus();
      tabla_->selectRow(0);
    } catch (const com::Error& e) {
      if (e.Numero() == com::error::kRestriccion) {
        // Who took the key may have entered this very person.
        clave_->setText(Q(huespedes_.Propuesta().clave));
        MuestraParecidas();
      }
      Dice(Q(e.Descripcion()));
    }
  });
  return hecho;
}

void VentanaClienteNuevo::reject() {
  if (PermiteDejar(escrito_, this)) QDialog::reject();
}

void VentanaClienteNuevo::EligeParecida() {
  const int fila = tabla_->currentRow();
  if (fila < 0 || fila >= static_cast<int>(parecidas_.size())) return;
  Corre([&] {
    huespedes_.SenalaClave(parecidas_[static_cast<std::size_t>(fila)].persona.clave);
    done(kParecida);
  });
}

void VentanaClienteNuevo::keyPressEvent(QKeyEvent* evento) {
  if (!EsEnter(*evento)) return QDialog::keyPressEvent(evento);
  if (evento->modifiers().testFlag(Qt::ControlModifier)) {
    Guarda(true);
  } else if (tabla_->hasFocus()) {
    EligeParecida();
  } else {
    Guarda(false);
  }
}

}  // namespace vista
