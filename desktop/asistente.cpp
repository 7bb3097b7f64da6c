#include "desktop/asistente.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "desktop/dialogos.h"
#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/vista.h"
#include "host/standalone/tecleado.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"

namespace vista {

using autonomo::ParteHotel;

namespace {

constexpr int kPaginaResumen = static_cast<int>(std::size(autonomo::kPartesHotel));
constexpr int kAltoLinea = 26;  // pixels

struct MonedaUsual {
  const char *clave, *nombre;
};
constexpr MonedaUsual kMonedas[] = {
    {"MXN", "Peso mexicano"},
    {"USD", "Dólar estadounidense"},
    {"EUR", "Euro"},
    {"ARS", "Peso argentino"},
    {"BOB", "Boliviano"},
    {"CLP", "Peso chileno"},
    {"COP", "Peso colombiano"},
    {"CRC", "Colón costarricense"},
    {"CUP", "Peso cubano"},
    {"DOP", "Peso dominicano"},
    {"GTQ", "Quetzal"},
    {"HNL", "Lempira"},
    {"NIO", "Córdoba"},
    {"PAB", "Balboa"},
    {"PEN", "Sol"},
    {"PYG", "Guaraní"},
    {"UYU", "Peso uruguayo"},
    {"VES", "Bolívar"},
};

QString MonedaLegible(const MonedaUsual& m) {
  return QString::fromUtf8(m.clave) + QLatin1Char(' ') + QString::fromUtf8(m.nombre);
}

QComboBox* ListaDeMonedas(const char* nombre, bool conNinguna, QWidget* padre) {
  auto* lista = new QComboBox(padre);
  lista->setObjectName(QLatin1String(nombre));
  lista->setEditable(true);
  lista->setInsertPolicy(QComboBox::NoInsert);
  lista->setCompleter(nullptr);  // its Enter would not go on
  if (conNinguna) lista->addItem(QString());
  for (const MonedaUsual& m : kMonedas) lista->addItem(MonedaLegible(m));
  lista->setMinimumHeight(kAltoLinea);
  return lista;
}

// "MXN Peso mexicano" as key and name; a known key alone has its name.
void LeeMoneda(const QComboBox& lista, std::string& clave, std::string& nombre) {
  const QString texto = lista.currentText().trimmed();
  clave = texto.section(QLatin1Char(' '), 0, 0).toStdString();
  nombre = texto.section(QLatin1Char(' '), 1).trimmed().toStdString();
  if (!nombre.empty()) return;
  for (const MonedaUsual& m : kMonedas) {
    if (com::IgualSinCaja(m.clave, clave)) nombre = m.nombre;
  }
}

QLabel* Rotulo(const QString& texto, QWidget* padre) {
  auto* rotulo = new QLabel(texto, padre);
  rotulo->setTextFormat(Qt::PlainText);
  rotulo->setWordWrap(true);
  return rotulo;
}

}  // namespace

Asistente::Asistente(autonomo::Anfitrion& anfitrion, QWidget* padre) : QWizard(padre), anfitrion_(anfitrion) {
  setWindowTitle(QStringLiteral("Hotel nuevo"));
  setObjectName(QStringLiteral("asistente"));
  setWindowModality(Qt::ApplicationModal);
  setWizardStyle(QWizard::ClassicStyle);
  setOptions(QWizard::NoBackButtonOnStartPage | QWizard::NoCancelButtonOnLastPage);
  setButtonText(QWizard::BackButton, QStringLiteral("&Atrás"));
  setButtonText(QWizard::NextButton, QStringLiteral("&Siguiente"));
  setButtonText(QWizard::FinishButton, QStringLiteral("&Crear el hotel"));
  setButtonText(QWizard::CancelButton, QStringLiteral("Salir"));
  CreaPaginaHotel();
  CreaPaginaTipos();
  CreaPaginaHabitaciones();
  CreaPaginaUsuarios();
  CreaPaginaResumen();
  vacio_ = Escrito();
  connect(this, &QWizard::currentIdChanged, this, [this] { EnfocaPrimera(); });
  AjustaAPantalla(*this, {760, 560});
}

QVBoxLayout* Asistente::CreaPagina(const char* titulo, const char* explicacion) {
  auto* pagina = new QWizardPage(this);
  auto* caja = new QVBoxLayout(pagina);
  auto* cabeza = Rotulo(QString::fromUtf8(titulo), pagina);
  cabeza->setFont(Fuente(Letra::Titulo));
  caja->addWidget(cabeza);
  if (*explicacion != '\0') {
    auto* texto = Rotulo(QString::fromUtf8(explicacion), pagina);
    Atenua(*texto);
    caja->addWidget(texto);
  }
  auto* motivo = Rotulo({}, pagina);
  motivo->setObjectName(QStringLiteral("motivo"));
  QPalette rojo = motivo->palette();
  rojo.setColor(QPalette::WindowText, Colores().peligro);
  motivo->setPalette(rojo);
  motivos_.push_back(motivo);
  addPage(pagina);
  auto* contenido = new QVBoxLayout;
  caja->addLayout(contenido, 1);
  caja->addWidget(motivo);
  return contenido;
}

QLineEdit* Asistente::Linea(ParteHotel parte, const char* campo, int fila, const QString& nombre, const QString& texto,
                            QWidget* padre) {
  auto* linea = new QLineEdit(texto, padre);
  linea->setObjectName(QLatin1String(campo) + (fila < 0 ? QString() : QString::number(fila)));
  linea->setAccessibleName(fila < 0 ? nombre : nombre + QStringLiteral(", renglón %1").arg(fila + 1));
  linea->setMinimumHeight(kAltoLinea);
  lineas_[static_cast<std::size_t>(parte)][{campo, fila}] = linea;
  return linea;
}

void Asistente::CreaPaginaHotel() {
  QVBoxLayout* caja = CreaPagina("El hotel",
                                 "En cinco pasos queda listo para reservar. Nada se guarda hasta el último; todo se "
                                 "puede cambiar después en el menú del hotel.");
  QWidget* pagina = page(0);
  auto* forma = new QFormLayout;
  const auto linea = [&](const char* titulo, const char* campo, const char* texto) {
    auto* l = Linea(ParteHotel::Hotel, campo, -1, QString::fromUtf8(titulo), QString::fromUtf8(texto), pagina);
    forma->addRow(QString::fromUtf8(titulo) + QLatin1Char(':'), l);
    return l;
  };
  linea("Nombre del hotel", "nombre", "");
  linea("Sucursal", "sucursal", "Matriz");
  moneda_ = ListaDeMonedas("moneda", false, pagina);
  moneda_->setAccessibleName(QStringLiteral("Moneda de los precios"));
  forma->addRow(QStringLiteral("Moneda de los precios:"), moneda_);
  linea("Impuesto, por ciento", "impuesto", "16")->setMaximumWidth(100);
  divisa_ = ListaDeMonedas("divisa", true, pagina);
  divisa_->setAccessibleName(QStringLiteral("Otra moneda que se acepta"));
  divisa_->lineEdit()->setPlaceholderText(QStringLiteral("ninguna"));
  forma->addRow(QStringLiteral("Otra moneda que se acepta:"), divisa_);
  auto* cambio = linea("Cuánto cuesta una", "tipoCambio", "");
  cambio->setMaximumWidth(100);
  cambio->setEnabled(false);
  connect(divisa_, &QComboBox::currentTextChanged, cambio,
          [cambio](const QString& texto) { cambio->setEnabled(!texto.trimmed().isEmpty()); });
  caja->addLayout(forma);
  caja->addStretch();
}

QGridLayout* Asistente::Rejilla(QVBoxLayout& caja, const std::vector<Columna>& columnas) {
  auto* area = new QScrollArea(this);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  auto* dentro = new QWidget(area);
  auto* alto = new QVBoxLayout(dentro);
  alto->setContentsMargins(0, 0, 0, 0);
  auto* rejilla = new QGridLayout;
  for (std::size_t c = 0; c < columnas.size(); ++c) {
    auto* titulo = Rotulo(QString::fromUtf8(columnas[c].titulo), dentro);
    titulo->setFont(Fuente(Letra::Chica));
    titulo->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
    rejilla->addWidget(titulo, 0, static_cast<int>(c));
    rejilla->setColumnStretch(static_cast<int>(c), columnas[c].ancho);
  }
  alto->addLayout(rejilla);
  alto->addStretch();
  area->setWidget(dentro);
  caja.addWidget(area, 1);
  return rejilla;
}

namespace {

constexpr std::pair<const char*, const char*> kCamposTipo[] = {{"nombre", "Tipo"},
                                                               {"incluidas", "Personas incluidas"},
                                                               {"maximo", "Máximo de personas"},
                                                               {"precio", "Precio por noche"},
                                                               {"adultoExtra", "Adulto extra"},
                                                               {"menorExtra", "Menor extra"}};
constexpr std::pair<const char*, const char*> kCamposUsuario[] = {
    {"clave", "Usuario"}, {"nombre", "Nombre"}, {"contrasena", "Contraseña"}, {"otraVez", "Contraseña, otra vez"}};

}  // namespace

void Asistente::CreaPaginaTipos() {
  QVBoxLayout* caja = CreaPagina("Tipos de habitación y precios",
                                 "Un renglón por tipo; los que sobran se dejan vacíos. El precio es de una noche para "
                                 "las personas incluidas; sin precio, se pone después.");
  std::vector<Columna> columnas;
  constexpr int kAnchos[] = {30, 13, 13, 17, 14, 13};
  for (std::size_t c = 0; c < std::size(kCamposTipo); ++c) {
    columnas.push_back({kCamposTipo[c].second, kCamposTipo[c].first, kAnchos[c]});
  }
  tipos_ = Rejilla(*caja, columnas);
  constexpr int kProposta = 4;
  for (int i = 0; i < kProposta; ++i) AgregaTipo();
  auto* otro = new QPushButton(Icono(QStringLiteral("mas")), QStringLiteral("&Otro tipo"), page(1));
  otro->setObjectName(QStringLiteral("otro_tipo"));
  otro->setAutoDefault(false);
  connect(otro, &QPushButton::clicked, this, [this] { AgregaTipo(); });
  conImpuesto_ = new QCheckBox(QStringLiteral("Los precios &ya incluyen el impuesto"), page(1));
  conImpuesto_->setObjectName(QStringLiteral("conImpuesto"));
  conImpuesto_->setChecked(true);
  auto* fila = new QHBoxLayout;
  fila->addWidget(conImpuesto_);
  fila->addStretch();
  fila->addWidget(otro);
  caja->addLayout(fila);
}

void Asistente::AgregaTipo() {
  const int fila = filasTipos_++;
  for (std::size_t c = 0; c < std::size(kCamposTipo); ++c) {
    const auto& [campo, titulo] = kCamposTipo[c];
    const bool personas = c == 1 || c == 2;
    auto* linea = Linea(ParteHotel::Tipos, campo, fila, QString::fromUtf8(titulo),
                        personas ? QStringLiteral("2") : QString(), tipos_->parentWidget());
    if (c > 0) linea->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    tipos_->addWidget(linea, fila + 1, static_cast<int>(c));
    if (c == 0 && isVisible()) linea->setFocus();
  }
}

void Asistente::CreaPaginaHabitaciones() {
  QVBoxLayout* caja =
      CreaPagina("Habitaciones",
                 "Los números de cada tipo, sueltos o por rango: 101-125, 201-210, 301A. El piso se toma del número. "
                 "Muchas se traen también de un archivo, en Hotel · Habitaciones.");
  habitaciones_ = Rejilla(*caja, {{"Tipo", "", 22}, {"Habitaciones", "habitaciones", 58}, {"", "", 20}});
}

// The types are known once their page is left; what was typed for a type stays with its row.
void Asistente::MuestraHabitaciones() {
  while (static_cast<int>(cuentas_.size()) < filasTipos_) {
    const int fila = static_cast<int>(cuentas_.size());
    QWidget* padre = habitaciones_->parentWidget();
    auto* nombre = Rotulo({}, padre);
    nombre->setObjectName(QStringLiteral("tipo%1").arg(fila));
    auto* linea = Linea(ParteHotel::Habitaciones, "habitaciones", fila, QStringLiteral("Habitaciones"), {}, padre);
    linea->setPlaceholderText(QStringLiteral("101-110"));
    auto* cuenta = Rotulo({}, padre);
    cuentas_.push_back(cuenta);
    habitaciones_->addWidget(nombre, fila + 1, 0);
    habitaciones_->addWidget(linea, fila + 1, 1);
    habitaciones_->addWidget(cuenta, fila + 1, 2);
    connect(linea, &QLineEdit::textChanged, this, [this] { CuentaHabitaciones(); });
  }
  for (int fila = 0; fila < filasTipos_; ++fila) {
    const bool hay = !com::Recorta(Texto(ParteHotel::Tipos, "nombre", fila)).empty();
    auto* nombre = habitaciones_->parentWidget()->findChild<QLabel*>(QStringLiteral("tipo%1").arg(fila));
    nombre->setText(Q(Texto(ParteHotel::Tipos, "nombre", fila)));
    QLineEdit* linea = lineas_[static_cast<std::size_t>(ParteHotel::Habitaciones)].at({"habitaciones", fila});
    linea->setAccessibleName(QStringLiteral("Habitaciones de tipo ") + nombre->text());
    for (QWidget* w : {static_cast<QWidget*>(nombre), static_cast<QWidget*>(linea),
                       static_cast<QWidget*>(cuentas_[static_cast<std::size_t>(fila)])}) {
      w->setVisible(hay);
    }
  }
  CuentaHabitaciones();
}

void Asistente::CuentaHabitaciones() {
  for (int fila = 0; fila < static_cast<int>(cuentas_.size()); ++fila) {
    QString cuenta;
    try {
      const auto n = autonomo::HabitacionesDe(Texto(ParteHotel::Habitaciones, "habitaciones", fila)).size();
      if (n > 0) cuenta = n == 1 ? QStringLiteral("1 habitación") : QStringLiteral("%1 habitaciones").arg(n);
    } catch (const com::Error&) {  // half typed; said when the page is left
      cuenta = QStringLiteral("…");
    }
    cuentas_[static_cast<std::size_t>(fila)]->setText(cuenta);
  }
}

void Asistente::CreaPaginaUsuarios() {
  QVBoxLayout* caja = CreaPagina("Quién trabaja aquí",
                                 "¿Quién administra este hotel? Con un usuario y su contraseña (ocho caracteres o más) "
                                 "se entra desde ahora; los demás renglones son de quienes trabajan con él, y sus "
                                 "permisos se dan en la configuración. Si no escribe nada, el hotel queda sin "
                                 "contraseñas; se pueden poner después.");
  std::vector<Columna> columnas;
  for (const auto& [campo, titulo] : kCamposUsuario) columnas.push_back({titulo, campo, 25});
  usuarios_ = Rejilla(*caja, columnas);
  constexpr int kProposta = 3;
  for (int i = 0; i < kProposta; ++i) AgregaUsuario();
  auto* otro = new QPushButton(Icono(QStringLiteral("mas")), QStringLiteral("&Otro usuario"), page(3));
  otro->setObjectName(QStringLiteral("otro_usuario"));
  otro->setAutoDefault(false);
  connect(otro, &QPushButton::clicked, this, [this] { AgregaUsuario(); });
  caja->addWidget(otro, 0, Qt::AlignRight);
}

void Asistente::AgregaUsuario() {
  const int fila = filasUsuarios_++;
  for (std::size_t c = 0; c < std::size(kCamposUsuario); ++c) {
    const auto& [campo, titulo] = kCamposUsuario[c];
    auto* linea = Linea(ParteHotel::Usuarios, campo, fila, QString::fromUtf8(titulo), {}, usuarios_->parentWidget());
    if (c >= 2) linea->setEchoMode(QLineEdit::Password);
    if (fila == 0 && c == 0) linea->setPlaceholderText(QStringLiteral("administra el hotel"));
    usuarios_->addWidget(linea, fila + 1, static_cast<int>(c));
    if (c == 0 && isVisible()) linea->setFocus();
  }
}

void Asistente::CreaPaginaResumen() {
  QVBoxLayout* caja = CreaPagina("Así queda", "");
  resumen_ = Rotulo({}, page(kPaginaResumen));
  resumen_->setObjectName(QStringLiteral("resumen"));
  resumen_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  caja->addWidget(resumen_);
  caja->addStretch();
}

std::string Asistente::Texto(ParteHotel parte, const char* campo, int fila) const {
  const auto& suyas = lineas_[static_cast<std::size_t>(parte)];
  const auto linea = suyas.find({campo, fila});
  return linea == suyas.end() ? std::string() : linea->second->text().toStdString();
}

std::string Asistente::Escrito() const {
  QString todo = moneda_->currentText() + QLatin1Char('\n') + divisa_->currentText() +
                 QString::number(static_cast<int>(conImpuesto_->isChecked()));
  for (const auto& parte : lineas_) {
    for (const auto& [sitio, linea] : parte) {
      if (!linea->text().isEmpty()) todo += QLatin1Char('\n') + linea->objectName() + linea->text();
    }
  }
  return todo.toStdString();
}

void Asistente::Recoge() {
  autonomo::HotelNuevo h;
  h.nombre = Texto(ParteHotel::Hotel, "nombre");
  h.sucursal = Texto(ParteHotel::Hotel, "sucursal");
  h.impuesto = Texto(ParteHotel::Hotel, "impuesto");
  LeeMoneda(*moneda_, h.moneda, h.nombreMoneda);
  LeeMoneda(*divisa_, h.divisa, h.nombreDivisa);
  if (!h.divisa.empty()) h.tipoCambio = Texto(ParteHotel::Hotel, "tipoCambio");
  h.conImpuesto = conImpuesto_->isChecked();
  for (int i = 0; i < filasTipos_; ++i) {
    const auto texto = [&](const char* campo) { return Texto(ParteHotel::Tipos, campo, i); };
    h.tipos.push_back({texto("nombre"), texto("incluidas"), texto("maximo"), texto("precio"), texto("adultoExtra"),
                       texto("menorExtra"), Texto(ParteHotel::Habitaciones, "habitaciones", i)});
    // Rooms of a row whose type was taken away since are nobody's.
    if (com::Recorta(h.tipos.back().nombre).empty()) h.tipos.back().habitaciones.clear();
  }
  for (int i = 0; i < filasUsuarios_; ++i) {
    const auto texto = [&](const char* campo) { return Texto(ParteHotel::Usuarios, campo, i); };
    h.usuarios.push_back({texto("clave"), texto("nombre"), texto("contrasena")});
  }
  hotel_ = std::move(h);
}

void Asistente::initializePage(int pagina) {
  if (pagina == static_cast<int>(ParteHotel::Habitaciones)) MuestraHabitaciones();
  if (pagina != kPaginaResumen) return;
  Recoge();
  QStringList lineas;
  for (const std::string& linea : autonomo::ResumenDe(hotel_)) lineas << QStringLiteral("•  ") + Q(linea);
  resumen_->setText(lineas.join(QStringLiteral("\n\n")));
}

std::optional<autonomo::Reparo> Asistente::ContrasenasDistintas() const {
  for (int i = 0; i < filasUsuarios_; ++i) {
    if (Texto(ParteHotel::Usuarios, "contrasena", i) != Texto(ParteHotel::Usuarios, "otraVez", i)) {
      return autonomo::Reparo{"Las dos contraseñas no son iguales", "otraVez", i};
    }
  }
  return std::nullopt;
}

void Asistente::EnfocaPrimera() {
  if (currentPage() == nullptr) return;
  for (QLineEdit* linea : currentPage()->findChildren<QLineEdit*>()) {
    if (!linea->isEnabled() || linea->isHidden()) continue;
    linea->setFocus();
    return linea->selectAll();
  }
  button(QWizard::FinishButton)->setFocus();
}

// Always false.
bool Asistente::Rechaza(const autonomo::Reparo& reparo) {
  motivos_[static_cast<std::size_t>(currentId())]->setText(Q(reparo.motivo));
  if (currentId() == kPaginaResumen) return false;
  QWidget* campo = nullptr;
  if (reparo.campo == "moneda" || reparo.campo == "nombreMoneda") campo = moneda_;
  if (reparo.campo == "divisa" || reparo.campo == "nombreDivisa") campo = divisa_;
  const auto& suyas = lineas_[static_cast<std::size_t>(currentId())];
  if (const auto linea = suyas.find({reparo.campo, reparo.fila}); linea != suyas.end()) {
    campo = linea->second;
    linea->second->selectAll();
  }
  if (campo != nullptr) campo->setFocus();
  return false;
}

bool Asistente::validateCurrentPage() {
  motivos_[static_cast<std::size_t>(currentId())]->clear();
  if (currentId() == kPaginaResumen) return Crea();
  Recoge();
  if (Parte() == ParteHotel::Usuarios) {
    if (const auto reparo = ContrasenasDistintas()) return Rechaza(*reparo);
  }
  if (const auto reparo = autonomo::Revisa(hotel_, Parte())) return Rechaza(*reparo);
  return true;
}

bool Asistente::Crea() {
  try {
    autonomo::CreaHotel(anfitrion_, hotel_);
    return true;
  } catch (const com::Error& e) {
    return Rechaza({e.Descripcion(), "", -1});
  }
}

void Asistente::reject() {
  if (Escrito() != vacio_ &&
      !Confirma("El hotel todavía no está hecho: si sale ahora, nada de lo que escribió se guarda. Con No sigue donde "
                "estaba.\r\n¿Desea salir y perderlo?",
                caja::kAviso, this)) {
    return;
  }
  QWizard::reject();
}

bool OfreceHotel(autonomo::Anfitrion& anfitrion, QWidget* padre) {
  Asistente asistente(anfitrion, padre);
  return Atiende(asistente) == QDialog::Accepted;
}

}  // namespace vista
