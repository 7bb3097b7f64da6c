#include "desktop/vista_lookup.h"

#include <QAction>
#include <QMenu>
#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>
#include <algorithm>

#include "desktop/escala.h"
#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/teclas.h"
#include "platform/regional/regional.h"

namespace vista {

namespace {

// Stands beside a field and goes with it.
class Vecino : public QLineEdit {
 public:
  explicit Vecino(QLineEdit& campo) : QLineEdit(campo.parentWidget()), campo_(campo) {
    setReadOnly(true);
    setFocusPolicy(Qt::NoFocus);
    Marca(*this, "muestra", true);
    campo.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject*, QEvent* evento) override {
    if (evento->type() == QEvent::Move || evento->type() == QEvent::Resize) {
      constexpr int kAire = 60, kAncho = 3660;  // twips
      setGeometry(campo_.x() + campo_.width() + APixel(kAire), campo_.y(), APixel(kAncho), campo_.height());
    }
    return false;
  }

 private:
  QLineEdit& campo_;
};

}  // namespace

VistaLookup::VistaLookup(controles::LookupField& campo, QWidget* padre, const Contexto& contexto)
    : Vista(campo, contexto), campo_(campo), edicion_(new QLineEdit(padre)) {
  Adopta(edicion_);
  const auto& diseno = campo_.diseno();
  if (diseno.largo > 0) edicion_->setMaxLength(diseno.largo);
  if (diseno.tipo == controles::TipoDato::Numero) edicion_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  catalogo_ = contexto.catalogo ? contexto.catalogo(campo_) : diseno.idconsulta;
  if (diseno.idconsulta.empty() && !catalogo_.empty() && contexto.nombre) CreaVecino();
  edicion_->setToolTip(Q(campo_.descripcion()));
  if (!catalogo_.empty() && !campo_.locked()) CreaLupa();
  QObject::connect(edicion_, &QLineEdit::textEdited, edicion_, [this](const QString& texto) { Escribe(texto); });
  if (diseno.tipo == controles::TipoDato::Numero && !campo_.locked() && contexto.interactivo) LimitaCifras();
  if (!diseno.transaccion.empty()) AtiendeMenu();
  VistaLookup::Refresca();
}

void VistaLookup::CreaVecino() {
  vecino_ = new Vecino(*edicion_);
  vecino_->setObjectName(Q(campo_.nombre()) + QStringLiteral("_nombre"));
  vecino_->setAccessibleName(QStringLiteral("Nombre: ") + Q(campo_.descripcion()));
}

void VistaLookup::CreaLupa() {
  lupa_ = edicion_->addAction(Icono(QStringLiteral("buscar"), Colores().tenue), QLineEdit::TrailingPosition);
  lupa_->setText(QStringLiteral("Buscar"));
  lupa_->setToolTip(QStringLiteral("Buscar (F2)"));
  QObject::connect(lupa_, &QAction::triggered, edicion_, [this] { Busca(); });
  edicion_->setToolTip(Q(campo_.descripcion()) + QStringLiteral(" · F2 busca"));
}

// A person's keys that are no part of a number do nothing.
void VistaLookup::LimitaCifras() {
  static const QRegularExpression cifras(QStringLiteral("[0-9]{0,9}([.][0-9]{0,9})?"));
  static const QRegularExpression enteras(QStringLiteral("[0-9]{0,4}"));
  const bool entero = contexto().pistas.EsEntero(campo_.nombre());
  edicion_->setValidator(new QRegularExpressionValidator(entero ? enteras : cifras, edicion_));
}

// The field's own menu, and the catalogue that edits its keys.
void VistaLookup::AtiendeMenu() {
  edicion_->setContextMenuPolicy(Qt::CustomContextMenu);
  QObject::connect(edicion_, &QLineEdit::customContextMenuRequested, edicion_, [this](const QPoint& donde) {
    QMenu* menu = edicion_->createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addSeparator();
    QAction* catalogo = menu->addAction(QStringLiteral("Abrir el catálogo…"));
    QObject::connect(catalogo, &QAction::triggered, edicion_, [this] { AbreCatalogo(); });
    menu->popup(edicion_->mapToGlobal(donde));
  });
}

void VistaLookup::AbreCatalogo() {
  if (contexto().abreCatalogo) Corre([this] { contexto().abreCatalogo(campo_); });
}

void VistaLookup::Refresca() {
  const bool numero = campo_.diseno().tipo == controles::TipoDato::Numero;
  QString texto = Q(campo_.text());
  if (campo_.locked() && numero && !campo_.formato().empty()) {
    texto = Q(regional::ConFormato(campo_.valor(), campo_.formato()));
  }
  if (edicion_->text() != texto) {
    const int cursor = edicion_->cursorPosition(), fin = static_cast<int>(texto.size());
    const bool alFinal = cursor == edicion_->text().size();
    const QSignalBlocker calla(edicion_);
    edicion_->setText(texto);
    edicion_->setCursorPosition(!edicion_->hasFocus() ? 0 : alFinal ? fin : std::min(cursor, fin));
    // Whole, where the place is narrow.
    if (campo_.locked()) edicion_->setToolTip(texto.isEmpty() ? Q(campo_.descripcion()) : texto);
  }
  const QLineEdit::EchoMode eco = campo_.passwordChar().empty() ? QLineEdit::Normal : QLineEdit::Password;
  if (edicion_->echoMode() != eco) edicion_->setEchoMode(eco);
  edicion_->setReadOnly(campo_.locked());
  edicion_->setFocusPolicy(campo_.locked() ? Qt::ClickFocus : Qt::StrongFocus);
  Marca(*edicion_, "muestra", campo_.locked());
  constexpr int kOrillas = 18;  // a field's frame and margins, pixels
  const Letra letra = campo_.locked() && numero ? Letra::Fuerte : Letra::Normal;
  edicion_->setFont(campo_.locked() ? FuenteEstrecha(letra, texto, APixel(campo_.width()) - kOrillas) : Fuente(letra));
  if (lupa_ != nullptr) lupa_->setVisible(campo_.enabled() && !campo_.locked());
  DiceNombre();
}

// The text that a field has by design ("%" for all) gives way to what is typed beside it.
QString VistaLookup::SinDiseno(const QString& texto) const {
  const QString diseno = Q(campo_.diseno().text);
  if (!contexto().interactivo || diseno.isEmpty() || Q(campo_.text()) != diseno) return texto;
  if (texto.size() <= diseno.size()) return texto;
  if (texto.startsWith(diseno)) return texto.mid(diseno.size());
  return texto.endsWith(diseno) ? texto.chopped(diseno.size()) : texto;
}

// What the screen's rules make of a typed text can be typed over.
void VistaLookup::Escribe(const QString& tecleado) {
  const QString texto = SinDiseno(tecleado);
  Corre([&] { campo_.Teclea(texto.toStdString()); });
  Refresca();
  if (contexto().interactivo && edicion_->text().compare(texto, Qt::CaseInsensitive) != 0) edicion_->selectAll();
}

std::optional<QString> VistaLookup::Nombre() const {
  if (campo_.text().empty() || campo_.pendiente()) return std::nullopt;
  if (vecino_ != nullptr) {
    std::optional<QString> nombre;
    Corre([&] { nombre = contexto().nombre(catalogo_, campo_.text()); });
    return nombre;
  }
  const auto* nombre = campo_.diseno().sql_control_resultado;
  return nombre == nullptr || nombre->text().empty() ? std::nullopt : std::optional(Q(nombre->text()));
}

bool VistaLookup::HayClave() const { return !campo_.text().empty() && campo_.text() != campo_.diseno().text; }

bool VistaLookup::Desconocida() const { return TieneNombre() && HayClave() && !campo_.pendiente() && !Nombre(); }

// The name beside a typed key comes with Enter; a key that has none says so.
void VistaLookup::DiceNombre() {
  if (!TieneNombre()) return;
  const std::optional<QString> nombre = Nombre();
  if (vecino_ != nullptr) vecino_->setText(nombre.value_or(QString()));
  const bool sin = HayClave() && !nombre;
  const QString aviso = !sin                 ? QString()
                        : campo_.pendiente() ? QStringLiteral("Enter para buscar el nombre")
                                             : QStringLiteral("No existe");
  if (aviso == avisoNombre_) return;
  avisoNombre_ = aviso;
  auto* vecino = vecino_ != nullptr
                     ? vecino_
                     : edicion_->parentWidget()->findChild<QLineEdit*>(
                           Q(campo_.diseno().sql_control_resultado->nombre()), Qt::FindDirectChildrenOnly);
  if (vecino == nullptr) return;
  vecino->setPlaceholderText(aviso);
  Marca(*edicion_, "malo", sin && !campo_.pendiente());
}

bool VistaLookup::BuscaTecleado() {
  const QString tecleado = edicion_->text();
  const bool letras =
      std::any_of(tecleado.begin(), tecleado.end(), [](const QChar& c) { return c.isLetter() || c.isSpace(); });
  if (!letras || !TieneNombre() || !campo_.pendiente() || !contexto().busca || !contexto().nombre) return false;
  bool existe = true;
  Corre([&] {
    existe = contexto().nombre(catalogo_, regional::ConMascara(campo_.text(), campo_.formato())).has_value();
  });
  if (!existe) Busca(tecleado);
  return !existe;
}

bool VistaLookup::Retiene() {
  if (vecino_ == nullptr || desconocida_.empty() || campo_.text() != desconocida_) return false;
  if (!Desconocida() || !campo_.PuedeEnfocarse()) return false;
  Corre([this] { formulario().Enfoca(campo_); });
  edicion_->selectAll();
  Dice(QStringLiteral("%1: «%2» no existe. Corríjala, o F2 para buscarla")
           .arg(Q(campo_.descripcion()), edicion_->text()));
  return true;
}

bool VistaLookup::Tecla(const QKeyEvent& evento) {
  const bool enter = EsEnter(evento);
  if (kTeclaFicha.Es(evento) && AbreFicha()) return true;
  if (lupa_ != nullptr && contexto().interactivo && kTeclaCatalogo.Es(evento)) {
    AbreCatalogo();
    return true;
  }
  if (lupa_ != nullptr && contexto().interactivo && kTeclaBusca.Es(evento)) {
    Busca();
    return true;
  }
  if (CodigoTecla(evento.key()) >= kTeclaF1 && !Entrega()) return true;
  const bool paso = enter || evento.key() == Qt::Key_Tab;
  if (!paso || !contexto().interactivo) return Vista::Tecla(evento);
  if (BuscaTecleado()) return true;
  CompletaClave();
  const bool tecleada = campo_.pendiente() || campo_.text() == desconocida_;
  const bool hecha = Vista::Tecla(evento);
  // A key that does not exist keeps the keyboard, to be corrected.
  if (tecleada && Desconocida() && campo_.PuedeEnfocarse()) {
    desconocida_ = campo_.text();
    if (formulario().foco() != &campo_) Corre([this] { formulario().Enfoca(campo_); });
    edicion_->selectAll();
  }
  return hecha;
}

bool VistaLookup::Pendiente() const {
  return contexto().interactivo && formulario().foco() == &campo_ && campo_.pendiente() && TieneNombre() &&
         !campo_.text().empty() && campo_.enabled() && !campo_.locked();
}

void VistaLookup::Descarta() {
  if (contexto().interactivo && TieneNombre()) campo_.Descarta();
}

bool VistaLookup::Entrega() {
  Confirma();
  return !Retiene();
}

// A key typed without its zeros, where no mask gives them.
void VistaLookup::CompletaClave() {
  const std::string clave = campo_.text();
  if (vecino_ == nullptr || !campo_.pendiente() || clave.find_first_not_of("0123456789") != std::string::npos) return;
  Corre([&] {
    const std::string completa = regional::ConMascara(clave, "0000");
    const auto existe = [this](const std::string& k) { return contexto().nombre(catalogo_, k).has_value(); };
    if (completa != clave && !existe(clave) && existe(completa)) campo_.Teclea(completa);
  });
}

bool VistaLookup::Admite() {
  if (vecino_ == nullptr || !contexto().interactivo || !Desconocida()) return true;
  desconocida_ = campo_.text();
  return !Retiene();
}

void VistaLookup::Confirma() {
  if (!Pendiente()) return;
  CompletaClave();
  Corre([this] { campo_.Confirma(); });
  if (Desconocida()) desconocida_ = campo_.text();
}

void VistaLookup::Deja(Qt::FocusReason motivo) {
  if (motivo == Qt::ActiveWindowFocusReason || motivo == Qt::PopupFocusReason) return;
  edicion_->setCursorPosition(0);  // a long text shows its beginning
}

bool VistaLookup::AbreFicha() {
  auto* boton = controles::Como<controles::Boton>(formulario().Busca(contexto().pistas.FichaDe(campo_.nombre())));
  if (boton == nullptr || !boton->PuedeEnfocarse()) return false;
  Entrega();
  Corre([&] { boton->Pulsa(); });
  return true;
}

void VistaLookup::Busca(const QString& filtro) {
  if (!contexto().busca || !campo_.enabled() || campo_.locked()) return;
  Corre([&] {
    formulario().Enfoca(campo_);
    const std::string clave = contexto().busca(campo_, filtro);
    if (clave.empty()) {
      // Cancelled, or typed already by what was searched in.
      if (formulario().foco() == &campo_) edicion_->selectAll();
      return;
    }
    campo_.Teclea(clave);
    formulario().PulsaTecla(controles::tecla::kEnter);
  });
}

}  // namespace vista
