#include "desktop/velo.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/estilo.h"
#include "desktop/guarda.h"

namespace vista {

namespace {

constexpr int kOrilla = 4;       // around the place, pixels
constexpr int kSeparacion = 14;  // between it and the sign
constexpr int kAnchoLetrero = 420;

// The sign is a card of the style's colours.
class Letrero : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setBrush(Colores().superficie);
    p.setPen(QPen(Colores().acento, 2));
    p.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), espacio::kRadio, espacio::kRadio);
  }
};

}  // namespace

Velo::Velo(QWidget& ventana, const QRect& hueco, const QString& texto, const QString& cuenta, bool ultimo)
    : QWidget(&ventana), hueco_(hueco), letrero_(new Letrero(this)) {
  setObjectName(QStringLiteral("velo"));
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(texto);
  setAccessibleDescription(QStringLiteral("Enter sigue, Esc salta el recorrido"));
  auto* caja = new QVBoxLayout(letrero_);
  caja->setContentsMargins(espacio::kMedio + 4, espacio::kMedio, espacio::kMedio + 4, espacio::kMedio);
  auto* rotulo = new QLabel(texto, letrero_);
  rotulo->setObjectName(QStringLiteral("texto"));
  rotulo->setWordWrap(true);
  rotulo->setMinimumWidth(kAnchoLetrero - 40);
  caja->addWidget(rotulo);
  auto* fila = new QHBoxLayout;
  auto* paso = new QLabel(cuenta, letrero_);
  paso->setObjectName(QStringLiteral("paso"));
  Atenua(*paso);
  fila->addWidget(paso);
  fila->addStretch();
  const auto boton = [&](const QString& titulo, const char* nombre, std::function<void()> Velo::*accion) {
    auto* b = new QPushButton(titulo, letrero_);
    b->setObjectName(QLatin1String(nombre));
    b->setFocusPolicy(Qt::NoFocus);
    connect(b, &QPushButton::clicked, this, [this, accion] { Responde(this->*accion); });
    fila->addWidget(b);
  };
  if (!ultimo) boton(QStringLiteral("Saltar (Esc)"), "saltar", &Velo::alSaltar);
  boton(ultimo ? QStringLiteral("Terminar (Enter)") : QStringLiteral("Siguiente (Enter)"), "seguir", &Velo::alSeguir);
  caja->addLayout(fila);
  letrero_->setFixedWidth(kAnchoLetrero);
  ventana.installEventFilter(this);
  Coloca();
  show();
  raise();
  setFocus(Qt::OtherFocusReason);
}

// Below the place, else above it, else where there is most room.
void Velo::Coloca() {
  setGeometry(parentWidget()->rect());
  letrero_->adjustSize();
  letrero_->resize(kAnchoLetrero, std::max(letrero_->sizeHint().height(), letrero_->heightForWidth(kAnchoLetrero)));
  const QSize suyo = letrero_->size();
  if (hueco_.isEmpty()) return letrero_->move((width() - suyo.width()) / 2, (height() - suyo.height()) / 2);
  const int x =
      std::clamp(hueco_.center().x() - suyo.width() / 2, kOrilla, std::max(kOrilla, width() - suyo.width() - kOrilla));
  const int debajo = hueco_.bottom() + kSeparacion, encima = hueco_.top() - kSeparacion - suyo.height();
  const int y = debajo + suyo.height() <= height() - kOrilla ? debajo
                : encima >= kOrilla                          ? encima
                                                             : height() - suyo.height() - kOrilla;
  letrero_->move(x, y);
}

void Velo::Responde(const std::function<void()>& accion) {
  if (respondido_ || !accion) return;
  respondido_ = true;
  // The answer takes this veil away; it ends after this event.
  const std::function<void()> suya = accion;
  Corre(suya);
}

bool Velo::event(QEvent* evento) {
  // No shortcut of the window's acts.
  if (evento->type() == QEvent::ShortcutOverride) {
    evento->accept();
    return true;
  }
  // Tab would leave.
  if (evento->type() == QEvent::KeyPress) {
    keyPressEvent(static_cast<QKeyEvent*>(evento));
    return true;
  }
  return QWidget::event(evento);
}

bool Velo::eventFilter(QObject* objeto, QEvent* evento) {
  if (objeto == parent() && evento->type() == QEvent::Resize) Coloca();
  return QWidget::eventFilter(objeto, evento);
}

void Velo::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  QPainterPath todo;
  todo.addRect(rect());
  const QRectF claro = QRectF(hueco_).adjusted(-kOrilla, -kOrilla, kOrilla, kOrilla);
  if (!hueco_.isEmpty()) {
    QPainterPath hueco;
    hueco.addRoundedRect(claro, espacio::kRadio, espacio::kRadio);
    todo -= hueco;
  }
  constexpr int kSombra = 120;  // of 255
  p.fillPath(todo, QColor(0, 0, 0, kSombra));
  if (hueco_.isEmpty()) return;
  p.setPen(QPen(Colores().acento, 3));
  p.drawRoundedRect(claro, espacio::kRadio, espacio::kRadio);
}

void Velo::keyPressEvent(QKeyEvent* evento) {
  evento->accept();
  if (evento->isAutoRepeat() || evento->modifiers().testFlag(Qt::ControlModifier)) return;
  switch (evento->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Right:
    case Qt::Key_Space:
      return Responde(alSeguir);
    case Qt::Key_Escape:
      return Responde(alSaltar ? alSaltar : alSeguir);
    default:
      return;
  }
}

// What the screen does for a step moves the keyboard to its fields; it comes back.
void Velo::focusOutEvent(QFocusEvent* evento) {
  QWidget::focusOutEvent(evento);
  const bool deOtro = evento->reason() == Qt::ActiveWindowFocusReason || evento->reason() == Qt::PopupFocusReason;
  if (deOtro || respondido_) return;
  QTimer::singleShot(0, this, [this] {
    if (!respondido_) setFocus(Qt::OtherFocusReason);
  });
}

void Velo::mousePressEvent(QMouseEvent* evento) { evento->accept(); }

}  // namespace vista
