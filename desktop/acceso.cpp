#include "desktop/acceso.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>
#include <utility>

#include "desktop/dialogos.h"
#include "desktop/editor_catalogos.h"
#include "desktop/entradas.h"
#include "desktop/estilo.h"
#include "desktop/hoja_usuarios.h"
#include "desktop/vista.h"
#include "host/standalone/permisos.h"
#include "host/standalone/postgres_reloj.h"
#include "host/standalone/transaccion.h"
#include "host/standalone/usuarios.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"

namespace vista {

namespace {

// Lies over a window, whatever its size becomes.
class Tapa : public QWidget {
 public:
  explicit Tapa(QWidget* ventana) : QWidget(ventana) {
    setObjectName(QStringLiteral("tapa"));
    setAutoFillBackground(true);
    setGeometry(ventana->rect());
    ventana->installEventFilter(this);
    raise();
    show();
  }

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override {
    if (objeto == parent() && evento->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(objeto, evento);
  }
};

// The window that has the keyboard, or had it when the clerk went to another program.
QWidget* DeEnfrente() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  if (QWidget* activa = QApplication::activeWindow()) return activa;
  for (QWidget* ventana : QApplication::topLevelWidgets()) {
    if (ventana->isVisible()) return ventana;
  }
  return nullptr;
}

bool EsTrabajo(QEvent::Type tipo) {
  switch (tipo) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
      return true;
    default:
      return false;
  }
}

}  // namespace

DialogoAcceso::DialogoAcceso(const QString& explicacion, const std::string& usuario, QWidget* padre)
    : QDialog(padre),
      usuario_(new QLineEdit(Q(usuario), this)),
      contrasena_(new QLineEdit(this)),
      motivo_(new QLabel(this)) {
  setWindowTitle(QStringLiteral("Acceso"));
  setObjectName(QStringLiteral("acceso"));
  setWindowModality(Qt::ApplicationModal);
  usuario_->setObjectName(QStringLiteral("usuario"));
  contrasena_->setObjectName(QStringLiteral("contrasena"));
  contrasena_->setEchoMode(QLineEdit::Password);
  auto* caja = new QVBoxLayout(this);
  auto* rotulo = new QLabel(explicacion, this);
  rotulo->setTextFormat(Qt::PlainText);
  rotulo->setWordWrap(true);
  caja->addWidget(rotulo);
  auto* forma = new QFormLayout;
  forma->addRow(QStringLiteral("&Usuario:"), usuario_);
  forma->addRow(QStringLiteral("&Contraseña:"), contrasena_);
  caja->addLayout(forma);
  QPalette rojo = motivo_->palette();
  rojo.setColor(QPalette::WindowText, Colores().peligro);
  motivo_->setPalette(rojo);
  motivo_->setObjectName(QStringLiteral("motivo"));
  motivo_->setTextFormat(Qt::PlainText);
  motivo_->setWordWrap(true);
  caja->addWidget(motivo_);
  auto* botones = new QDialogButtonBox(this);
  botones->addButton(QStringLiteral("&Entrar"), QDialogButtonBox::AcceptRole)->setObjectName(QStringLiteral("entrar"));
  botones->addButton(QStringLiteral("&Salir"), QDialogButtonBox::RejectRole)->setObjectName(QStringLiteral("salir"));
  connect(botones, &QDialogButtonBox::accepted, this, [this] { Acepta(); });
  connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
  caja->addWidget(botones);
  (usuario.empty() ? usuario_ : contrasena_)->setFocus();
  constexpr int kAncho = 380;  // pixels
  AjustaAPantalla(*this, {kAncho, sizeHint().height()});
}

void DialogoAcceso::Encierra() {
  encerrado_ = true;
  findChild<QPushButton*>(QStringLiteral("salir"))->hide();
}

std::string DialogoAcceso::Usuario() const { return com::Recorta(usuario_->text().toStdString()); }

// Esc and the close button too.
void DialogoAcceso::reject() {
  if (!encerrado_) QDialog::reject();
}

void DialogoAcceso::Acepta() {
  std::string motivo;
  try {
    motivo = revisa(Usuario(), contrasena_->text().toStdString());
  } catch (const com::Error& e) {
    motivo = e.Descripcion();
  }
  if (motivo.empty()) return accept();
  motivo_->setText(Q(motivo));
  contrasena_->clear();
  contrasena_->setFocus();
}

std::string PideAcceso(autonomo::Conexion& conexion, const std::string& usuario) {
  // Whoever is no user of this hotel is not proposed.
  const bool suyo = std::ranges::any_of(autonomo::Usuarios(conexion), [&](const autonomo::Usuario& u) {
    return com::IgualSinCaja(com::Recorta(u.clave), com::Recorta(usuario));
  });
  DialogoAcceso dialogo(QStringLiteral("Escriba su usuario y su contraseña."), suyo ? usuario : "", nullptr);
  std::string propio;
  dialogo.revisa = [&](const std::string& quien, const std::string& contrasena) {
    const autonomo::Acceso acceso = autonomo::Accede(conexion, quien, contrasena, autonomo::RelojDe(conexion).Ahora());
    propio = acceso.usuario;
    return acceso.motivo;
  };
  if (dialogo.exec() != QDialog::Accepted) throw SinAcceso{};
  return propio;
}

// --- Bloqueo

Bloqueo::Bloqueo(autonomo::Anfitrion& anfitrion, autonomo::OpcionesConexion base, int ms,
                 std::function<void()> otraSesion)
    : anfitrion_(anfitrion), base_(std::move(base)), otraSesion_(std::move(otraSesion)) {
  reloj_.setSingleShot(true);
  connect(&reloj_, &QTimer::timeout, this, [this] { Bloquea(); });
  if (ms == 0) return;
  reloj_.start(ms);
  QApplication::instance()->installEventFilter(this);
}

bool Bloqueo::eventFilter(QObject* objeto, QEvent* evento) {
  if (!dialogo_ && EsTrabajo(evento->type())) reloj_.start();
  return QObject::eventFilter(objeto, evento);
}

std::shared_ptr<autonomo::Conexion> Bloqueo::ConexionPropia() const {
  if (base_.EnMemoria()) return anfitrion_.conexion();
  autonomo::OpcionesConexion base = base_;
  base.crea = false;  // the file may have been moved away meanwhile
  auto propia = autonomo::AbreConexion(base, anfitrion_.reloj());
  for (const std::string& aviso : propia->TomaAvisos()) anfitrion_.Avisa(aviso);
  return propia;
}

std::string Bloqueo::Revisa(const std::string& usuario, const std::string& contrasena) {
  const std::shared_ptr<autonomo::Conexion> propia = ConexionPropia();
  autonomo::Conexion& conexion = *propia;
  const autonomo::Acceso acceso = autonomo::Accede(conexion, usuario, contrasena, autonomo::RelojDe(conexion).Ahora());
  if (!acceso.Bien()) return acceso.motivo;
  const std::string& propio = anfitrion_.usuario();
  if (com::IgualSinCaja(acceso.usuario, propio)) return {};
  if (!autonomo::Administra(conexion, acceso.usuario)) {
    return "Sólo " + propio + " o quien administre el hotel puede seguir aquí";
  }
  const std::string pregunta =
      "¿Cerrar la sesión de " + propio + "? Lo que esté capturando se pierde; lo aceptado ya está guardado.";
  if (!Confirma(pregunta, caja::kAviso, dialogo_)) return "Sigue la sesión de " + propio;
  termina_ = true;
  return {};
}

void Bloqueo::Bloquea() {
  if (dialogo_) return;
  while (QWidget* suelto = QApplication::activePopupWidget()) suelto->close();
  std::vector<QPointer<QWidget>> tapas;
  for (QWidget* ventana : QApplication::topLevelWidgets()) {
    if (ventana->isVisible()) tapas.emplace_back(new Tapa(ventana));
  }
  // Nor does anything of the clerk's hold up the password, or another desk.
  std::optional<autonomo::SinBloqueo> pausa;
  try {
    pausa.emplace(*anfitrion_.conexion());
  } catch (const com::Error&) {  // a broken connection holds nothing
  }
  DialogoAcceso dialogo(
      Q("La pantalla está bloqueada. Lo que " + anfitrion_.usuario() + " estaba haciendo sigue como quedó."),
      anfitrion_.usuario(), DeEnfrente());
  dialogo.Encierra();
  dialogo.revisa = [this](const std::string& u, const std::string& c) { return Revisa(u, c); };
  dialogo_ = &dialogo;
  Atiende(dialogo);
  dialogo_ = nullptr;
  for (const auto& tapa : tapas) delete tapa;
  if (reloj_.interval() > 0) reloj_.start();
  if (termina_) otraSesion_();
}

}  // namespace vista
