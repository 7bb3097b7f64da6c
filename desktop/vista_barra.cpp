#include "desktop/vista_barra.h"

#include <QApplication>
#include <QClipboard>
#include <QFrame>
#include <QHBoxLayout>
#include <QMenu>
#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>

#include "desktop/accesible.h"
#include "desktop/consejo.h"
#include "desktop/escala.h"
#include "desktop/estados.h"
#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/pintura.h"
#include "platform/com/error.h"

namespace vista {

using controles::Accion;

namespace {

struct Atajo {
  Accion accion;
  const char* teclas;
  const char* que;
};
constexpr Atajo kAtajos[] = {
    {Accion::Nuevo, "Ctrl+N", "una reservación nueva"},
    {Accion::Editar, "Ctrl+E", "editar la reservación"},
    {Accion::Aceptar, "Ctrl+Return", "aceptar y guardar; en el tablero, aceptar lo marcado"},
    {Accion::Limpiar, "Ctrl+L", "limpiar la pantalla, o abandonar la captura"},
    {Accion::Cerrar, "Ctrl+Q", "cerrar"},
    {Accion::Confirmar, "Ctrl+K", "confirmar la reservación"},
    {Accion::Eliminar, "Ctrl+Shift+X", "cancelar la reservación"},
    {Accion::Reactivar, "Ctrl+R", "reactivar una cancelada"},
    {Accion::Correo, "Ctrl+P", "correo o imprimir"},
    {Accion::Registro, "Ctrl+I", "registro de la reservación"},
};
constexpr const char *kAtajoMenu = "F10", *kAtajoNovedad = "Ctrl+O";

}  // namespace

std::vector<std::pair<QString, QString>> AtajosDeLaBarra() {
  std::vector<std::pair<QString, QString>> atajos;
  const auto agrega = [&](const char* teclas, const char* que) {
    atajos.emplace_back(NombreDeAtajo(QKeySequence(QLatin1String(teclas))), QString::fromUtf8(que));
  };
  for (const Atajo& a : kAtajos) agrega(a.teclas, a.que);
  agrega(kAtajoNovedad, "abrir otra vez la reservación de lo último que se hizo");
  agrega(kAtajoMenu, "menú del hotel");
  return atajos;
}

QKeySequence AtajoDe(Accion accion, bool dialogo) {
  // Esc itself belongs to the screen.
  if (accion == Accion::Cancelar) return dialogo ? QKeySequence(QStringLiteral("Ctrl+W")) : QKeySequence();
  const auto* atajo =
      std::find_if(std::begin(kAtajos), std::end(kAtajos), [&](const Atajo& a) { return a.accion == accion; });
  return atajo == std::end(kAtajos) ? QKeySequence() : QKeySequence(QLatin1String(atajo->teclas));
}

namespace {

// The strip that the buttons stand on.
class Franja : public QFrame {
 public:
  explicit Franja(QWidget* padre) : QFrame(padre) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setProperty("barra", true);  // its buttons are flatter
  }

 protected:
  void paintEvent(QPaintEvent* evento) override {
    QPainter p(this);
    p.fillRect(evento->rect(), Colores().superficie);
    p.fillRect(0, height() - 1, width(), 1, Colores().borde);
  }
};

// The state of a reservation, each in colours of its own; and the mark of a hotel to practise in.
class Distintivo : public QLabel {
 public:
  explicit Distintivo(QWidget* padre) : QLabel(padre) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    const Paleta& c = Colores();
    Caja caja{c.superficie, c.tenue, 1};
    QColor tinta = c.tenue;
    switch (TonoDe(text())) {
      case Tono::Borde:
        caja.borde = tinta = c.acento;
        break;
      case Tono::Lleno:
        caja = {c.acento, c.acento, 1};
        tinta = c.sobreAcento;
        break;
      case Tono::Peligro:
        caja = {c.peligro, c.peligro, 1};
        tinta = TextoSobre(c.peligro);
        break;
      case Tono::Aviso:
        caja = {c.aviso, c.aviso, 1};
        tinta = TextoSobre(c.aviso);
        break;
      case Tono::Discreto:
        break;
    }
    QPainter p(this);
    PintaCaja(p, rect(), caja);
    p.setPen(tinta);
    p.drawText(rect(), Qt::AlignCenter, text());
  }
};

// The right end of the bar; it tells when it is wider or narrower than it was.
class Lado : public QWidget {
 public:
  Lado(std::function<void()> alCambiar, QWidget* padre) : QWidget(padre), alCambiar_(std::move(alCambiar)) {}

 protected:
  void resizeEvent(QResizeEvent* evento) override {
    QWidget::resizeEvent(evento);
    if (evento->oldSize().width() != evento->size().width()) alCambiar_();
  }

 private:
  std::function<void()> alCambiar_;
};

}  // namespace

// As the manual writes it.
QString NombreDeAtajo(const QKeySequence& atajo) {
  return atajo.toString(QKeySequence::PortableText)
      .replace(QStringLiteral("Shift"), QStringLiteral("Mayús"))
      .replace(QStringLiteral("Return"), QStringLiteral("Enter"));
}

VistaBarra::VistaBarra(controles::ScreenToolbar& barra, QWidget* padre, const Contexto& contexto)
    : Vista(barra, contexto), barra_(barra) {
  auto* marco = new Franja(padre);
  FijaPapel(marco, QAccessible::ToolBar);
  Adopta(marco);
  marco->setAccessibleName(QStringLiteral("Barra de acciones"));
  auto* caja = new QHBoxLayout(marco);
  caja->setContentsMargins(espacio::kChico, 1, espacio::kMedio, 1);
  caja->setSpacing(2);
  for (const Accion a : barra_.Acciones()) {
    QToolButton* b = CreaBoton(a);
    caja->addWidget(b);
    botones_[a] = b;
    CreaAtajo(a);
  }
  if (barra_.EsDialogo()) {
    caja->addStretch();
  } else {
    if (!contexto.menu.empty()) caja->addWidget(CreaMenu());
    caja->addWidget(CreaLado(), 1);
  }
  VistaBarra::Refresca();
}

QToolButton* VistaBarra::CreaBoton(Accion accion) {
  const bool dialogo = barra_.EsDialogo(), principal = accion == Accion::Aceptar;
  auto* b = new QToolButton(widget());
  b->setObjectName(Q(NombreAccion(accion)));
  b->setToolButtonStyle(dialogo ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonTextUnderIcon);
  const int lado = APixel(dialogo ? 300 : 270);
  b->setIconSize(QSize(lado, lado));
  b->setFont(Fuente(dialogo ? Letra::Normal : Letra::Chica));
  b->setFocusPolicy(Qt::TabFocus);
  b->setProperty("principal", principal);
  b->setIcon(Icono(Q(NombreAccion(accion)), principal ? Colores().sobreAcento : QColor()));
  b->setAccessibleName(Q(barra_.Titulo(accion)));
  QObject::connect(b, &QToolButton::clicked, widget(), [this, accion] { Pulsa(accion); });
  // A button that is not offered leaves its place empty: the others stay where the hand knows them.
  QSizePolicy lugar(QSizePolicy::Fixed, QSizePolicy::Fixed);
  lugar.setRetainSizeWhenHidden(true);
  b->setSizePolicy(lugar);
  return b;
}

void VistaBarra::CreaAtajo(Accion accion) {
  const QKeySequence atajo = AtajoDe(accion, barra_.EsDialogo());
  if (atajo.isEmpty()) return;
  QList<QKeySequence> teclas{atajo};
  // The keypad has an Enter of its own.
  if (accion == Accion::Aceptar) teclas << QKeySequence(QStringLiteral("Ctrl+Enter"));
  auto* s = new QShortcut(widget()->parentWidget());
  s->setKeys(teclas);
  s->setAutoRepeat(false);
  QObject::connect(s, &QShortcut::activated, widget(), [this, accion] {
    if (barra_.Ofrece(accion)) Pulsa(accion);
  });
}

QToolButton* VistaBarra::CreaMenu() {
  auto* menu = new QMenu(widget());
  // Its parts come behind what stands in the menu itself.
  std::map<std::string, QMenu*> partes;
  for (const Contexto::Opcion& opcion : contexto().menu) {
    if (*opcion.grupo == '\0' || partes.contains(opcion.grupo)) continue;
    partes[opcion.grupo] = new QMenu(QString::fromUtf8(opcion.grupo), menu);
  }
  for (const Contexto::Opcion& opcion : contexto().menu) {
    QMenu* donde = *opcion.grupo == '\0' ? menu : partes.at(opcion.grupo);
    QAction* accion = donde->addAction(opcion.titulo);
    if (opcion.tecla != 0)
      accion->setText(opcion.titulo + QLatin1Char('\t') + NombreDeAtajo(QKeySequence(opcion.tecla)));
    QObject::connect(accion, &QAction::triggered, widget(), [&opcion] { Corre(opcion.abre); });
  }
  for (const auto& [titulo, parte] : partes) menu->addMenu(parte);
  auto* b = new QToolButton(widget());
  b->setObjectName(QStringLiteral("menu"));
  b->setText(QStringLiteral("Hotel"));
  b->setToolTip(QStringLiteral("Catálogos y configuración del hotel (F10)"));
  b->setAccessibleName(QStringLiteral("Catálogos y configuración del hotel"));
  b->setIcon(Icono(QStringLiteral("hotel")));
  const int lado = APixel(270);
  b->setIconSize(QSize(lado, lado));
  b->setFont(Fuente(Letra::Chica));
  b->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  b->setFocusPolicy(Qt::TabFocus);
  b->setPopupMode(QToolButton::InstantPopup);
  b->setMenu(menu);
  auto* atajo = new QShortcut(QKeySequence(QLatin1String(kAtajoMenu)), widget()->parentWidget());
  QObject::connect(atajo, &QShortcut::activated, b, &QToolButton::showMenu);
  return b;
}

QToolButton* VistaBarra::boton(Accion accion) const {
  const auto b = botones_.find(accion);
  return b == botones_.end() ? nullptr : b->second;
}

void VistaBarra::Refresca() {
  for (const auto& [accion, boton] : botones_) {
    const QString titulo = Q(barra_.Titulo(accion));
    if (boton->text() != titulo) {
      const QString atajo = NombreDeAtajo(AtajoDe(accion, barra_.EsDialogo()));
      boton->setText(titulo);
      boton->setToolTip(atajo.isEmpty() ? titulo : titulo + QStringLiteral(" (") + atajo + QStringLiteral(")"));
    }
    boton->setEnabled(barra_.Ofrece(accion));
  }
  // An action without a caption is not there.
  if (QToolButton* b = boton(Accion::Confirmar)) b->setVisible(!barra_.TituloConfirmar().empty());
  if (QToolButton* b = boton(Accion::Reactivar)) b->setVisible(barra_.PermiteReactivar());
  if (folio_ != barra_.ClaveActual()) {
    folio_ = barra_.ClaveActual();
    estado_ = EstadoDe(folio_);
  }
  if (mostrada_ != nullptr) RefrescaLado();
}

QWidget* VistaBarra::CreaLado() {
  auto* lado = new Lado([this] { RefrescaLado(); }, widget());
  auto* caja = new QVBoxLayout(lado);
  caja->setContentsMargins(0, 0, 0, 0);
  caja->setSpacing(0);
  mostrada_ = new QLabel(lado);
  mostrada_->setFont(Fuente(Letra::Fuerte));
  mostrada_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  mostrada_->setMinimumWidth(1);
  auto* arriba = new QHBoxLayout;
  arriba->setSpacing(espacio::kChico);
  arriba->addWidget(mostrada_, 1);
  sinBorrador_ = new Distintivo(lado);
  sinBorrador_->setObjectName(QStringLiteral("sin_borrador"));
  sinBorrador_->setText(QLatin1String(kMarcaSinBorrador));
  sinBorrador_->setFont(Fuente(Letra::Fuerte));
  sinBorrador_->setContentsMargins(espacio::kChico, 0, espacio::kChico, 0);
  sinBorrador_->hide();
  arriba->addWidget(sinBorrador_, 0, Qt::AlignVCenter);
  if (contexto().demo) {
    auto* demo = new Distintivo(lado);
    demo->setObjectName(QStringLiteral("demo"));
    demo->setText(QLatin1String(kMarcaDemo));
    demo->setToolTip(QStringLiteral("Hotel para practicar: lo que se reserva aquí no es de nadie"));
    demo->setFont(Fuente(Letra::Fuerte));
    demo->setContentsMargins(espacio::kChico, 0, espacio::kChico, 0);
    arriba->addWidget(demo, 0, Qt::AlignVCenter);
  }
  caja->addLayout(arriba);
  auto* abajo = new QHBoxLayout;
  abajo->setSpacing(2);
  abajo->addStretch();
  CreaNovedad(lado);
  abajo->addWidget(novedad_);
  distintivo_ = new Distintivo(lado);
  distintivo_->setObjectName(QStringLiteral("estado"));
  distintivo_->setFont(Fuente(Letra::Fuerte));
  distintivo_->setContentsMargins(espacio::kChico, 0, espacio::kChico, 0);
  abajo->addWidget(distintivo_);
  caja->addLayout(abajo);
  lado->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  return lado;
}

void VistaBarra::CreaNovedad(QWidget* padre) {
  novedad_ = new QToolButton(padre);
  novedad_->setObjectName(QStringLiteral("novedad"));
  novedad_->setFont(Fuente(Letra::Chica));
  novedad_->setFocusPolicy(Qt::TabFocus);
  novedad_->setAutoRaise(true);
  novedad_->setMinimumWidth(1);
  novedad_->setPopupMode(QToolButton::InstantPopup);
  novedad_->hide();
  auto* menu = new QMenu(novedad_);
  abre_ = menu->addAction(contexto().pistas.barra.abrir);
  QObject::connect(abre_, &QAction::triggered, novedad_, [this] { AbreNovedad(); });
  QObject::connect(menu->addAction(contexto().pistas.barra.copiar), &QAction::triggered, novedad_,
                   [this] { QApplication::clipboard()->setText(contexto().novedad().folio); });
  QObject::connect(menu, &QMenu::aboutToShow, novedad_, [this] { abre_->setEnabled(!barra_.EnEdicion()); });
  novedad_->setMenu(menu);
  auto* atajo = new QShortcut(QKeySequence(QLatin1String(kAtajoNovedad)), widget()->parentWidget());
  QObject::connect(atajo, &QShortcut::activated, novedad_, [this] { AbreNovedad(); });
}

// As the clerk does it: the folio typed in its field, and Enter.
void VistaBarra::AbreNovedad() {
  auto* campo = controles::Como<controles::LookupField>(formulario().Busca(contexto().pistas.abre));
  if (campo == nullptr || !campo->PuedeEnfocarse() || barra_.EnEdicion() || !contexto().novedad) return;
  const std::string folio = contexto().novedad().folio.toStdString();
  if (folio.empty()) return;
  Corre([&] {
    formulario().Enfoca(*campo);
    campo->Teclea(folio);
    formulario().PulsaTecla(controles::tecla::kEnter);
  });
}

// What was done, its folio and the mail stay longest: the guest goes first, and then what stands before the folio's
// end.
QString VistaBarra::Abreviada(const QString& texto, const QFontMetrics& medidas, int ancho) {
  QStringList partes = texto.split(QStringLiteral(" · "));
  const auto cabe = [&] { return medidas.horizontalAdvance(partes.join(QStringLiteral(" · "))) <= ancho; };
  while (partes.size() > 1 && !cabe()) partes.removeAt(1);
  return medidas.elidedText(partes.join(QStringLiteral(" · ")), Qt::ElideMiddle, ancho);
}

// Told at once, where it takes nothing out of the clerk's hands; the mark stays as long as it cannot be kept.
void VistaBarra::RefrescaBorrador() {
  const QString texto = contexto().sinBorrador ? contexto().sinBorrador() : QString();
  if (texto == sinBorrador_->toolTip()) return;
  sinBorrador_->setToolTip(texto);
  sinBorrador_->setAccessibleName(texto);
  sinBorrador_->setVisible(!texto.isEmpty());
  if (texto.isEmpty()) return;
  constexpr int kDura = 10000;  // ms
  MuestraConsejo(*sinBorrador_, sinBorrador_->rect(), texto, kDura);
  QAccessibleEvent aviso(sinBorrador_, QAccessible::Alert);
  QAccessible::updateAccessibility(&aviso);
}

void VistaBarra::RefrescaLado() {
  RefrescaBorrador();
  const PistasBarra& pistas = contexto().pistas.barra;
  const bool conClave = !barra_.EsNuevo() && !barra_.ClaveActual().empty();
  QString mostrada = barra_.EsNuevo() ? pistas.nueva : QString();
  if (conClave) mostrada = (barra_.EnEdicion() ? pistas.editada : pistas.mostrada) + Q(barra_.ClaveActual());
  mostrada_->setText(mostrada);
  distintivo_->setText(conClave ? estado_ : QString());
  distintivo_->setVisible(!distintivo_->text().isEmpty());
  const Contexto::Novedad nueva = contexto().novedad ? contexto().novedad() : Contexto::Novedad();
  // Cut short where there is little room; the tip tells it whole.
  constexpr int kOrilla = 28;  // of the button, pixels
  const int cabe = mostrada_->parentWidget()->width() - kOrilla -
                   (distintivo_->isHidden() ? 0 : distintivo_->sizeHint().width() + espacio::kChico);
  novedad_->setText(Abreviada(nueva.texto, novedad_->fontMetrics(), std::max(cabe, 40)));
  novedad_->setToolTip(nueva.texto + QStringLiteral(" (Ctrl+O la abre)"));
  novedad_->setAccessibleName(QStringLiteral("Lo último: ") + nueva.texto);
  novedad_->setVisible(!nueva.texto.isEmpty());
}

// A caption more; a reservation is shown without it too.
QString VistaBarra::EstadoDe(const std::string& folio) const {
  if (folio.empty() || !contexto().estado) return {};
  try {
    return contexto().estado(folio);
  } catch (const com::Error&) {
    return {};
  }
}

bool VistaBarra::Pulsa(Accion accion) {
  bool hecho = false;
  Corre([&] {
    if (antesDePulsar && !antesDePulsar(accion)) return;
    // What was handed over meanwhile may have changed what is offered.
    if (!barra_.Ofrece(accion)) return;
    barra_.Pulsa(accion);
    hecho = true;
    Refresca();
    if (despuesDePulsar) despuesDePulsar(accion);
  });
  Refresca();
  return hecho;
}

}  // namespace vista
