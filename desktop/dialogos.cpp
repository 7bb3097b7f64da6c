#include "desktop/dialogos.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/escala.h"
#include "desktop/estilo.h"
#include "desktop/iconos.h"
#include "desktop/vista.h"
#include "host/standalone/letras.h"
#include "recepcion/plano.h"

namespace vista {

namespace {

constexpr int kLado = 40;  // icon, pixels

std::pair<QString, QColor> IconoDe(int estilo) {
  switch (estilo & caja::kIconos) {
    case caja::kCritico:
      return {QStringLiteral("critico"), Colores().peligro};
    case caja::kPregunta:
      return {QStringLiteral("pregunta"), Colores().informe};
    case caja::kAviso:
      return {QStringLiteral("aviso"), Colores().aviso};
    case caja::kInforme:
      return {QStringLiteral("informe"), Colores().informe};
    default:
      return {QString(), QColor()};
  }
}

QString Lineas(const std::string& texto) { return Q(texto).replace(QStringLiteral("\r\n"), QStringLiteral("\n")); }

QDialogButtonBox* ConBotones(QDialog* dialogo, QVBoxLayout* caja) {
  auto* botones = new QDialogButtonBox(dialogo);
  botones->addButton(QStringLiteral("Aceptar"), QDialogButtonBox::AcceptRole)->setObjectName(QStringLiteral("aceptar"));
  botones->addButton(QStringLiteral("Cancelar"), QDialogButtonBox::RejectRole)
      ->setObjectName(QStringLiteral("cancelar"));
  QObject::connect(botones, &QDialogButtonBox::accepted, dialogo, &QDialog::accept);
  QObject::connect(botones, &QDialogButtonBox::rejected, dialogo, &QDialog::reject);
  caja->addWidget(botones);
  return botones;
}

}  // namespace

int Atiende(QDialog& dialogo) {
  const int resultado = dialogo.exec();
  if (const QWidget* duenio = dialogo.parentWidget()) duenio->window()->activateWindow();
  return resultado;
}

void AjustaAPantalla(QDialog& dialogo, QSize deseado) {
  constexpr QSize kMarco(8, 36);  // what a window manager puts around, pixels
  dialogo.resize(deseado.boundedTo(dialogo.screen()->availableSize() - kMarco));
}

void Presenta(QDialog& dialogo, const QString& titulo, const char* nombre) {
  dialogo.setWindowTitle(titulo);
  dialogo.setObjectName(QLatin1String(nombre));
  dialogo.setWindowModality(dialogo.parentWidget() == nullptr ? Qt::ApplicationModal : Qt::WindowModal);
}

// --- CajaAviso

CajaAviso::CajaAviso(const controles::CajaMensaje& caja, QWidget* padre) : QMessageBox(padre) {
  Presenta(*this, Q(caja.titulo), "mensaje");
  setTextFormat(Qt::PlainText);
  setText(Lineas(caja.texto));
  if (!caja.detalle.empty()) setInformativeText(Lineas(caja.detalle));
  setTextInteractionFlags(Qt::TextSelectableByMouse);
  const auto [icono, tinta] = IconoDe(caja.estilo);
  if (!icono.isEmpty()) setIconPixmap(Icono(icono, tinta).pixmap(QSize(kLado, kLado), devicePixelRatioF()));
  CreaBotones(caja.estilo);
  // No narrower than its title.
  constexpr int kBotonesDeVentana = 120;  // pixels
  const int titulo =
      QFontMetrics(QApplication::font())
          .horizontalAdvance(windowTitle() + QStringLiteral(" — ") + QGuiApplication::applicationDisplayName());
  auto* rejilla = qobject_cast<QGridLayout*>(layout());
  if (rejilla == nullptr) return;
  rejilla->addItem(new QSpacerItem(titulo + kBotonesDeVentana, 0), rejilla->rowCount(), 0, 1, rejilla->columnCount());
  if (caja.id.empty()) return;
  auto* id = new QLabel(Q(caja.id), this);
  id->setFont(Fuente(Letra::Chica));
  Atenua(*id);
  id->setTextInteractionFlags(Qt::TextSelectableByMouse);
  rejilla->addWidget(id, rejilla->rowCount(), 0, 1, rejilla->columnCount());
}

void CajaAviso::CreaBotones(int estilo) {
  const auto agrega = [this](int respuesta, const char* titulo, QMessageBox::ButtonRole papel) {
    QPushButton* b = addButton(QString::fromUtf8(titulo), papel);
    b->setMinimumWidth(84);
    botones_.emplace_back(respuesta, b);
  };
  switch (estilo & caja::kBotones) {
    case caja::kAceptarCancelar:
      agrega(controles::kAceptar, "&Aceptar", QMessageBox::AcceptRole);
      agrega(controles::kCancelar, "&Cancelar", QMessageBox::RejectRole);
      break;
    case caja::kSiNo:
      agrega(controles::kSi, "&Sí", QMessageBox::YesRole);
      agrega(controles::kNo, "&No", QMessageBox::NoRole);
      break;
    default:
      agrega(controles::kAceptar, "&Aceptar", QMessageBox::AcceptRole);
      break;
  }
  setDefaultButton(Boton(controles::RespuestaPredeterminada(estilo)));
  setEscapeButton(botones_.back().second);
}

QPushButton* CajaAviso::Boton(int respuesta) const {
  for (const auto& [cual, boton] : botones_) {
    if (cual == respuesta) return boton;
  }
  return nullptr;
}

int CajaAviso::Pregunta() {
  Atiende(*this);
  for (const auto& [respuesta, boton] : botones_) {
    if (clickedButton() == boton) return respuesta;
  }
  return botones_.back().first;
}

namespace {

int Pregunta(const std::string& texto, int estilo, QWidget* padre, const char* titulo) {
  controles::CajaMensaje caja;
  caja.texto = texto;
  caja.estilo = estilo;
  caja.titulo = titulo;
  return CajaAviso(caja, padre).Pregunta();
}

}  // namespace

void Avisa(const std::string& texto, int icono, QWidget* padre, const char* titulo) {
  Pregunta(texto, icono, padre, titulo);
}

bool Confirma(const std::string& pregunta, int icono, QWidget* padre) {
  return Pregunta(pregunta, icono | caja::kSiNo | caja::kSegundo, padre, "Reservaciones") == controles::kSi;
}

bool PermiteDejar(bool hayAlgo, QWidget* padre) {
  return !hayAlgo || Confirma("Lo que escribió no se ha guardado. Con No sigue donde estaba.\r\n¿Desea perderlo?",
                              caja::kAviso, padre);
}

// --- EditorNotas

EditorNotas::EditorNotas(const QString& titulo, const QString& texto, int ancho, QWidget* padre)
    : QDialog(padre), edicion_(new QPlainTextEdit(this)), ayuda_(new QLabel(this)), texto_(texto) {
  Presenta(*this, QStringLiteral("Notas · ") + titulo, "notas");
  auto* caja = new QVBoxLayout(this);
  edicion_->setAccessibleName(QStringLiteral("Texto de las notas"));
  edicion_->setTabChangesFocus(true);
  edicion_->setPlainText(texto);
  edicion_->moveCursor(QTextCursor::End);
  const QFontMetrics medidas(edicion_->font());
  edicion_->setMinimumSize(medidas.averageCharWidth() * ancho + 48, medidas.height() * 10);
  caja->addWidget(edicion_);
  ayuda_->setText(QStringLiteral("Ctrl+Enter acepta, Esc cancela"));
  ayuda_->setFont(Fuente(Letra::Chica));
  Atenua(*ayuda_);
  caja->addWidget(ayuda_);
  ConBotones(this, caja);
  auto* atajo = new QAction(this);
  atajo->setShortcuts({QKeySequence(QStringLiteral("Ctrl+Return")), QKeySequence(QStringLiteral("Ctrl+Enter"))});
  connect(atajo, &QAction::triggered, this, &QDialog::accept);
  addAction(atajo);
  edicion_->setFocus();
}

void EditorNotas::SoloLee() {
  edicion_->setReadOnly(true);
  ayuda_->setText(QStringLiteral("Sólo lectura: pulse Editar en la reservación para cambiarlas"));
}

QString EditorNotas::Texto() const { return edicion_->toPlainText(); }

bool EditorNotas::Cambio() const {
  const auto lineas = [](QString texto) { return texto.replace(QStringLiteral("\r\n"), QStringLiteral("\n")); };
  return lineas(Texto()) != lineas(texto_);
}

void EditorNotas::reject() {
  if (PermiteDejar(Cambio(), this)) QDialog::reject();
}

// --- Busqueda

namespace {

// With a blank between them.
QString Unidas(const std::vector<std::string>& palabras) {
  QStringList unidas;
  for (const std::string& palabra : palabras) unidas << Q(palabra);
  return unidas.join(QLatin1Char(' '));
}

std::string PlanoDe(const QString& texto) { return recepcion::Plano(texto.toStdString(), autonomo::LetraBuscada); }

}  // namespace

Buscado::Buscado(const QString& texto) {
  for (const QString& parte : texto.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
    const std::string plano = PlanoDe(parte);
    partes_.emplace_back(Unidas(recepcion::Palabras(plano)),
                         Unidas(recepcion::Palabras(recepcion::SinApostrofos(plano))));
  }
}

bool Buscado::Esta(const QString& fila) const {
  const QString plano = Unidas(recepcion::PalabrasBuscadas(PlanoDe(fila)));
  return std::all_of(partes_.begin(), partes_.end(),
                     [&](const auto& p) { return plano.contains(p.first) || plano.contains(p.second); });
}

Busqueda::Busqueda(const QString& titulo, Filas filas, QWidget* padre)
    : QDialog(padre),
      filas_(std::move(filas)),
      filtro_(new QLineEdit(this)),
      lista_(new QListWidget(this)),
      nada_(new QLabel(this)) {
  Presenta(*this, titulo, "busqueda");
  auto* caja = new QVBoxLayout(this);
  filtro_->setPlaceholderText(QStringLiteral("Escriba parte de la clave o del nombre"));
  filtro_->setAccessibleName(QStringLiteral("Filtro"));
  filtro_->addAction(Icono(QStringLiteral("buscar"), Colores().tenue), QLineEdit::LeadingPosition);
  filtro_->setMinimumHeight(28);
  lista_->setAccessibleName(titulo);
  lista_->setUniformItemSizes(true);
  nada_->setObjectName(QStringLiteral("nada"));
  Atenua(*nada_);
  caja->addWidget(filtro_);
  caja->addWidget(nada_);
  caja->addWidget(lista_);
  botones_ = ConBotones(this, caja);
  filtro_->installEventFilter(this);
  connect(filtro_, &QLineEdit::textChanged, this, [this](const QString& texto) { Lista(texto); });
  connect(lista_, &QListWidget::itemActivated, this, [this] { accept(); });
  connect(this, &QDialog::accepted, this, [this] { Elige(); });
  Lista({});
  // Wide enough for the longest row.
  constexpr int kAncho = 460, kAlto = 420, kMargen = 60;  // pixels
  AjustaAPantalla(*this, {std::max(kAncho, lista_->sizeHintForColumn(0) + kMargen), kAlto});
  filtro_->setFocus();
}

void Busqueda::Filtra(const QString& texto) { filtro_->setText(texto); }

// Every word must be found in key or name.
void Busqueda::Lista(const QString& texto) {
  const Buscado buscado(texto);
  lista_->clear();
  for (const auto& [clave, nombre] : filas_) {
    const QString fila = Q(clave) + QStringLiteral("   ") + Q(nombre);
    if (!buscado.Esta(fila)) continue;
    auto* renglon = new QListWidgetItem(fila, lista_);
    renglon->setData(Qt::UserRole, Q(clave));
  }
  const bool hay = lista_->count() > 0;
  if (hay) lista_->setCurrentRow(0);
  nada_->setText(filas_.empty() ? QStringLiteral("El catálogo está vacío")
                                : QStringLiteral("Nada coincide con «%1»").arg(texto));
  nada_->setVisible(!hay);
  if (auto* acepta = botones_->findChild<QPushButton*>(QStringLiteral("aceptar"))) acepta->setEnabled(hay);
}

void Busqueda::Elige() {
  if (const QListWidgetItem* renglon = lista_->currentItem()) {
    elegida_ = renglon->data(Qt::UserRole).toString().toStdString();
  }
}

bool Busqueda::eventFilter(QObject* objeto, QEvent* evento) {
  if (objeto == filtro_ && evento->type() == QEvent::KeyPress) {
    auto* tecla = static_cast<QKeyEvent*>(evento);
    const int paso = tecla->key() == Qt::Key_Down       ? 1
                     : tecla->key() == Qt::Key_Up       ? -1
                     : tecla->key() == Qt::Key_PageDown ? 10
                     : tecla->key() == Qt::Key_PageUp   ? -10
                                                        : 0;
    if (paso != 0 && lista_->count() > 0) {
      lista_->setCurrentRow(std::clamp(lista_->currentRow() + paso, 0, lista_->count() - 1));
      return true;
    }
  }
  return QDialog::eventFilter(objeto, evento);
}

}  // namespace vista
