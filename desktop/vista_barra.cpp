#include "desktop/vista_barra.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QMenu>
#include <QPaintEvent>
#include <QPainter>
#include <QShortcut>

#include "desktop/accesible.h"
#include "desktop/escala.h"
#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "platform/com/error.h"

namespace vista {

using controles::Accion;

QKeySequence AtajoDe(Accion accion, bool dialogo) {
  switch (accion) {
    case Accion::Nuevo:
      return QKeySequence(QStringLiteral("Ctrl+N"));
    case Accion::Editar:
      return QKeySequence(QStringLiteral("Ctrl+E"));
    case Accion::Aceptar:
      return QKeySequence(QStringLiteral("Ctrl+Return"));
    case Accion::Limpiar:
      return QKeySequence(QStringLiteral("Ctrl+L"));
    case Accion::Cerrar:
      return QKeySequence(QStringLiteral("Ctrl+Q"));
    case Accion::Confirmar:
      return QKeySequence(QStringLiteral("Ctrl+K"));
    case Accion::Eliminar:
      return QKeySequence(QStringLiteral("Ctrl+Shift+X"));
    case Accion::Reactivar:
      return QKeySequence(QStringLiteral("Ctrl+R"));
    case Accion::Correo:
      return QKeySequence(QStringLiteral("Ctrl+P"));
    case Accion::Registro:
      return QKeySequence(QStringLiteral("Ctrl+I"));
    case Accion::Cancelar:
      // Esc itself belongs to the screen.
      return dialogo ? QKeySequence(QStringLiteral("Ctrl+W")) : QKeySequence();
  }
  return {};
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

}  // namespace

// As the manual writes it.
QString NombreDeAtajo(const QKeySequence& atajo) {
  return atajo.toString(QKeySequence::PortableText)
      .replace(QStringLiteral("Shift"), QStringLiteral("Mayús"))
      .replace(QStringLiteral("Return"), QStringLiteral("Enter"));
}

VistaBarra::VistaBarra(controles::ScreenToolbar& barra, QWidget* padre, const Contexto& contexto)
    : Vista(barra, contexto), barra_(barra), registro_(nullptr) {
  auto* marco = new Franja(padre);
  FijaPapel(marco, QAccessible::ToolBar);
  Adopta(marco);
  marco->setAccessibleName(QStringLiteral("Barra de acciones"));
  auto* caja = new QHBoxLayout(marco);
  caja->setContentsMargins(espacio::kChico, 1, espacio::kMedio, 1);
  caja->setSpacing(2);
  bool dialogo = false;
  for (const Accion a : barra_.Acciones()) dialogo = dialogo || a == Accion::Cancelar;
  for (const Accion a : barra_.Acciones()) {
    auto* b = new QToolButton(marco);
    b->setObjectName(Q(NombreAccion(a)));
    b->setToolButtonStyle(dialogo ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonTextUnderIcon);
    const int lado = APixel(dialogo ? 300 : 270);
    b->setIconSize(QSize(lado, lado));
    b->setFont(Fuente(dialogo ? Letra::Normal : Letra::Chica));
    b->setFocusPolicy(Qt::TabFocus);
    b->setProperty("principal", a == Accion::Aceptar);
    b->setIcon(Icono(Q(NombreAccion(a)), a == Accion::Aceptar ? Colores().sobreAcento : QColor()));
    b->setAccessibleName(Q(barra_.Titulo(a)));
    QObject::connect(b, &QToolButton::clicked, marco, [this, a] { Pulsa(a); });
    if (const QKeySequence atajo = AtajoDe(a, dialogo); !atajo.isEmpty()) {
      auto* s = new QShortcut(atajo, padre);
      s->setAutoRepeat(false);
      QObject::connect(s, &QShortcut::activated, marco, [this, a] {
        if (barra_.Ofrece(a)) Pulsa(a);
      });
    }
    caja->addWidget(b);
    botones_[a] = b;
  }
  caja->addStretch();
  if (!dialogo && !contexto.menu.empty()) {
    auto* menu = new QMenu(marco);
    for (const Contexto::Opcion& opcion : contexto.menu) {
      QObject::connect(menu->addAction(opcion.titulo), &QAction::triggered, marco, [&opcion] { Corre(opcion.abre); });
    }
    auto* b = new QToolButton(marco);
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
    auto* atajo = new QShortcut(QKeySequence(QStringLiteral("F10")), padre);
    QObject::connect(atajo, &QShortcut::activated, b, &QToolButton::showMenu);
    caja->insertWidget(static_cast<int>(botones_.size()), b);
  }
  registro_ = new QLabel(marco);
  registro_->setFont(Fuente(Letra::Titulo));
  registro_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  caja->addWidget(registro_);
  Refresca();
}

QToolButton* VistaBarra::boton(Accion accion) const {
  const auto b = botones_.find(accion);
  return b == botones_.end() ? nullptr : b->second;
}

void VistaBarra::Refresca() {
  for (const auto& [accion, boton] : botones_) {
    const QString titulo = Q(barra_.Titulo(accion));
    if (boton->text() != titulo) {
      const bool dialogo = botones_.contains(Accion::Cancelar);
      const QString atajo = NombreDeAtajo(AtajoDe(accion, dialogo));
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
  QString registro;
  if (barra_.EsNuevo()) {
    registro = QStringLiteral("Nueva reservación");
  } else if (barra_.EnEdicion()) {
    registro = QStringLiteral("Editando");
  } else if (!barra_.ClaveActual().empty()) {
    registro = QStringLiteral("Folio ") + Q(barra_.ClaveActual());
    if (!estado_.isEmpty()) registro += QStringLiteral(" · ") + estado_;
  }
  registro_->setText(registro);
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

void VistaBarra::Pulsa(Accion accion) {
  Corre([&] {
    if (antesDePulsar && !antesDePulsar(accion)) return;
    barra_.Pulsa(accion);
    Refresca();
    if (despuesDePulsar) despuesDePulsar(accion);
  });
  Refresca();
}

}  // namespace vista
