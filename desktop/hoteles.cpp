#include "desktop/hoteles.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/ajustes.h"
#include "desktop/archivos.h"
#include "desktop/dialogos.h"
#include "desktop/estilo.h"
#include "desktop/vista.h"
#include "guion/opciones.h"
#include "host/standalone/conexion.h"
#include "host/standalone/postgres.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"

namespace vista {

namespace {

QString CarpetaDe(const std::string& hotel) {
  if (!hotel.empty() && hotel != autonomo::kEnMemoria && !autonomo::EsDireccion(hotel))
    return QFileInfo(Q(hotel)).absolutePath();
  return QFileInfo(Q(guion::RutaBaseDelUsuario())).absolutePath();
}

// A name that no file has yet.
QString NombreLibre(const QString& carpeta) {
  for (int n = 1;; ++n) {
    QString ruta = carpeta + (n == 1 ? QStringLiteral("/mi_hotel.db") : QStringLiteral("/mi_hotel%1.db").arg(n));
    if (!QFileInfo::exists(ruta)) return ruta;
  }
}

}  // namespace

std::string NombreEntero(const std::string& hotel) {
  if (autonomo::EsDireccion(hotel) || hotel == autonomo::kEnMemoria) return hotel;
  return QDir::cleanPath(QFileInfo(Q(hotel)).absoluteFilePath()).toStdString();
}

DialogoHotel::DialogoHotel(bool nuevo, std::string abierto, QWidget* padre)
    : QDialog(padre),
      nuevo_(nuevo),
      abierto_(std::move(abierto)),
      hotel_(new QLineEdit(this)),
      motivo_(new QLabel(this)) {
  Presenta(*this, nuevo ? QStringLiteral("Nuevo hotel") : QStringLiteral("Abrir un hotel"), "otro_hotel");
  auto* caja = new QVBoxLayout(this);
  if (!nuevo) {
    CreaRecientes();
    caja->addWidget(recientes_);
  }
  auto* rotulo = new QLabel(QStringLiteral("Archi&vo, o dirección postgresql://usuario@servidor/base:"), this);
  rotulo->setBuddy(hotel_);
  caja->addWidget(rotulo);
  hotel_->setObjectName(QStringLiteral("hotel"));
  hotel_->setMinimumHeight(28);
  auto* examina = new QPushButton(QStringLiteral("E&xaminar…"), this);
  examina->setObjectName(QStringLiteral("examinar"));
  examina->setAutoDefault(false);
  auto* fila = new QHBoxLayout;
  fila->addWidget(hotel_);
  fila->addWidget(examina);
  caja->addLayout(fila);
  QPalette rojo = motivo_->palette();
  rojo.setColor(QPalette::WindowText, Colores().peligro);
  motivo_->setPalette(rojo);
  motivo_->setObjectName(QStringLiteral("motivo"));
  motivo_->setWordWrap(true);
  caja->addWidget(motivo_);
  auto* botones = new QDialogButtonBox(this);
  botones->addButton(nuevo ? QStringLiteral("&Crear") : QStringLiteral("&Abrir"), QDialogButtonBox::AcceptRole)
      ->setObjectName(QStringLiteral("aceptar"));
  botones->addButton(QStringLiteral("Cancelar"), QDialogButtonBox::RejectRole);
  caja->addWidget(botones);
  connect(examina, &QPushButton::clicked, this, [this] { Examina(); });
  connect(botones, &QDialogButtonBox::accepted, this, [this] { Acepta(); });
  connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
  if (nuevo) hotel_->setText(NombreLibre(CarpetaDe(abierto_)));
  hotel_->selectAll();
  if (recientes_ != nullptr) setTabOrder(recientes_, hotel_);
  if (recientes_ != nullptr && recientes_->count() > 0) {
    recientes_->setCurrentRow(0);
    recientes_->setFocus();
  } else {
    hotel_->setFocus();
  }
  AjustaAPantalla(*this, {620, nuevo ? sizeHint().height() : 360});
}

void DialogoHotel::CreaRecientes() {
  recientes_ = new QListWidget(this);
  recientes_->setObjectName(QStringLiteral("recientes"));
  recientes_->setAccessibleName(QStringLiteral("Hoteles que se abrieron antes"));
  for (const std::string& hotel : ajustes::Recientes()) {
    if (hotel != NombreEntero(abierto_)) recientes_->addItem(Q(hotel));
  }
  connect(recientes_, &QListWidget::currentTextChanged, this, [this](const QString& hotel) { hotel_->setText(hotel); });
  connect(recientes_, &QListWidget::itemDoubleClicked, this, [this] { Acepta(); });
}

std::string DialogoHotel::Hotel() const { return NombreEntero(com::Recorta(hotel_->text().toStdString())); }

void DialogoHotel::Examina() {
  const QString ruta = PreguntaRutaHotel(nuevo_, CarpetaDe(abierto_), this);
  if (!ruta.isEmpty()) hotel_->setText(ruta);
  hotel_->setFocus();
}

// Why it cannot be; "" it can.
std::string DialogoHotel::Motivo() const {
  const std::string escrito = com::Recorta(hotel_->text().toStdString());
  if (escrito.empty()) return "Escriba el archivo del hotel, o elíjalo con Examinar";
  if (Hotel() == NombreEntero(abierto_)) return "Ese hotel es el que está abierto";
  try {
    autonomo::RevisaHotel(escrito);
  } catch (const com::Error& e) {
    return e.Descripcion();
  }
  if (autonomo::EsDireccion(escrito)) return {};
  const QFileInfo archivo(Q(Hotel()));
  if (nuevo_ && archivo.exists()) return "Ese archivo ya existe: dé otro nombre, o ábralo con «Abrir otro hotel»";
  if (nuevo_ && !QFileInfo(archivo.absolutePath()).isDir()) return "No existe la carpeta de ese archivo";
  if (!nuevo_ && !archivo.isFile()) return "No existe ese archivo";
  return {};
}

void DialogoHotel::Acepta() {
  const std::string motivo = Motivo();
  if (motivo.empty()) return accept();
  motivo_->setText(Q(motivo));
  hotel_->setFocus();
}

std::optional<std::string> PreguntaHotel(bool nuevo, const std::string& abierto, QWidget* padre) {
  DialogoHotel dialogo(nuevo, abierto, padre);
  if (Atiende(dialogo) != QDialog::Accepted) return std::nullopt;
  return dialogo.Hotel();
}

}  // namespace vista
