#include "desktop/vista_campos.h"

#include <QAction>
#include <QMenu>
#include <QPainter>
#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>
#include <QTimer>
#include <QToolTip>
#include <algorithm>
#include <cstdlib>

#include "desktop/accesible.h"
#include "desktop/calendario.h"
#include "desktop/escala.h"
#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/pintura.h"
#include "desktop/teclas.h"
#include "platform/controls/grid.h"
#include "platform/regional/regional.h"

namespace vista {

namespace {

constexpr int kDuraAviso = 8000;  // how long what a field says stands, ms

// Marks a property that the style looks at.
void Marca(QWidget* w, const char* propiedad, bool valor) {
  if (w->property(propiedad).toBool() == valor) return;
  w->setProperty(propiedad, valor);
  w->update();
}

// Stands beside a field and goes with it.
class Vecino : public QLineEdit {
 public:
  explicit Vecino(QLineEdit& campo) : QLineEdit(campo.parentWidget()), campo_(campo) {
    setReadOnly(true);
    setFocusPolicy(Qt::NoFocus);
    Marca(this, "muestra", true);
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

// --- dates

QDate ADate(com::Fecha fecha) {
  const com::Civil c = com::ACivil(fecha);
  return QDate(c.anio, c.mes, c.dia);
}

com::Fecha DeDate(const QDate& fecha) { return com::FechaDe(fecha.year(), fecha.month(), fecha.day()); }

std::optional<com::Fecha> LeeFecha(const QString& texto, com::Fecha base) {
  static const QRegularExpression completa(QStringLiteral(R"(^(\d{1,2})[/\-. ](\d{1,2})[/\-. ](\d{2}|\d{4})$)"));
  static const QRegularExpression corta(QStringLiteral(R"(^(\d{1,2})[/\-. ](\d{1,2})$)"));
  static const QRegularExpression dia(QStringLiteral(R"(^\d{1,2}$)"));
  static const QRegularExpression corrida(QStringLiteral(R"(^(\d{2})(\d{2})(\d{4})$)"));
  static const QRegularExpression paso(QStringLiteral(R"(^([+-])(\d{1,3})$)"));
  const QString t = texto.trimmed();
  const QDate origen = ADate(base);
  QDate fecha;
  if (auto m = paso.match(t); m.hasMatch()) {
    const int dias = m.captured(2).toInt();
    fecha = origen.addDays(m.captured(1) == QLatin1String("-") ? -dias : dias);
  } else if (auto c = completa.match(t); c.hasMatch()) {
    int anio = c.captured(3).toInt();
    if (anio < 100) anio += 2000;
    fecha = QDate(anio, c.captured(2).toInt(), c.captured(1).toInt());
  } else if (auto r = corrida.match(t); r.hasMatch()) {
    fecha = QDate(r.captured(3).toInt(), r.captured(2).toInt(), r.captured(1).toInt());
  } else if (auto s = corta.match(t); s.hasMatch()) {
    // The year that brings it nearest to the base.
    for (const int anio : {origen.year(), origen.year() + 1, origen.year() - 1}) {
      const QDate candidata(anio, s.captured(2).toInt(), s.captured(1).toInt());
      if (!candidata.isValid()) continue;
      if (!fecha.isValid() || std::llabs(origen.daysTo(candidata)) < std::llabs(origen.daysTo(fecha)))
        fecha = candidata;
    }
  } else if (dia.match(t).hasMatch()) {
    fecha = QDate(origen.year(), origen.month(), t.toInt());
  }
  if (!fecha.isValid() || fecha.year() < 100 || fecha.year() > 9999) return std::nullopt;
  return DeDate(fecha);
}

// --- VistaLookup

VistaLookup::VistaLookup(controles::LookupField& campo, QWidget* padre, const Contexto& contexto)
    : Vista(campo, contexto), campo_(campo), edicion_(new QLineEdit(padre)) {
  Adopta(edicion_);
  const auto& diseno = campo_.diseno();
  if (diseno.largo > 0) edicion_->setMaxLength(diseno.largo);
  if (diseno.tipo == controles::TipoDato::Numero) edicion_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  catalogo_ = contexto.catalogo ? contexto.catalogo(campo_) : diseno.idconsulta;
  if (diseno.idconsulta.empty() && !catalogo_.empty() && contexto.nombre) {
    vecino_ = new Vecino(*edicion_);
    vecino_->setObjectName(Q(campo_.nombre()) + QStringLiteral("_nombre"));
    vecino_->setAccessibleName(QStringLiteral("Nombre: ") + Q(campo_.descripcion()));
  }
  QString consejo = Q(campo_.descripcion());
  if (!catalogo_.empty() && !campo_.locked()) {
    lupa_ = edicion_->addAction(Icono(QStringLiteral("buscar"), Colores().tenue), QLineEdit::TrailingPosition);
    lupa_->setText(QStringLiteral("Buscar"));
    lupa_->setToolTip(QStringLiteral("Buscar (F2)"));
    QObject::connect(lupa_, &QAction::triggered, edicion_, [this] { Busca(); });
    consejo += QStringLiteral(" · F2 busca");
  }
  edicion_->setToolTip(consejo);
  QObject::connect(edicion_, &QLineEdit::textEdited, edicion_, [this](const QString& texto) { Escribe(texto); });
  if (diseno.tipo == controles::TipoDato::Numero && !campo_.locked() && contexto.interactivo) {
    static const QRegularExpression cifras(QStringLiteral("[0-9]{0,9}([.][0-9]{0,9})?"));
    static const QRegularExpression noches(QStringLiteral("[0-9]{0,4}"));
    const bool entero = contexto.pistas.EsEntero(campo_.nombre());
    edicion_->setValidator(new QRegularExpressionValidator(entero ? noches : cifras, edicion_));
  }
  if (!diseno.transaccion.empty()) {
    edicion_->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(edicion_, &QLineEdit::customContextMenuRequested, edicion_, [this](const QPoint& donde) {
      QMenu* menu = edicion_->createStandardContextMenu();
      menu->setAttribute(Qt::WA_DeleteOnClose);
      menu->addSeparator();
      QAction* catalogo = menu->addAction(QStringLiteral("Abrir el catálogo…"));
      QObject::connect(catalogo, &QAction::triggered, edicion_, [this] {
        if (this->contexto().abreCatalogo) Corre([this] { this->contexto().abreCatalogo(campo_); });
      });
      menu->popup(edicion_->mapToGlobal(donde));
    });
  }
  Refresca();
}

void VistaLookup::Refresca() {
  const bool numero = campo_.diseno().tipo == controles::TipoDato::Numero;
  QString texto = Q(campo_.text());
  if (campo_.locked() && numero && !campo_.formato().empty()) {
    texto = Q(regional::ConFormato(campo_.valor(), campo_.formato()));
  }
  if (edicion_->text() != texto) {
    const int cursor = edicion_->cursorPosition();
    const QSignalBlocker calla(edicion_);
    edicion_->setText(texto);
    edicion_->setCursorPosition(edicion_->hasFocus() ? std::min(cursor, static_cast<int>(texto.size())) : 0);
    // Whole, where the place is narrow.
    if (campo_.locked()) edicion_->setToolTip(texto.isEmpty() ? Q(campo_.descripcion()) : texto);
  }
  const QLineEdit::EchoMode eco = campo_.passwordChar().empty() ? QLineEdit::Normal : QLineEdit::Password;
  if (edicion_->echoMode() != eco) edicion_->setEchoMode(eco);
  edicion_->setReadOnly(campo_.locked());
  edicion_->setFocusPolicy(campo_.locked() ? Qt::ClickFocus : Qt::StrongFocus);
  Marca(edicion_, "muestra", campo_.locked());
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

bool VistaLookup::Desconocida() const {
  return TieneNombre() && !campo_.text().empty() && campo_.text() != "%" && !campo_.pendiente() && !Nombre();
}

// The name beside a typed key comes with Enter; a key that has none says so.
void VistaLookup::DiceNombre() {
  if (!TieneNombre()) return;
  const std::optional<QString> nombre = Nombre();
  if (vecino_ != nullptr) vecino_->setText(nombre.value_or(QString()));
  const bool sin = !campo_.text().empty() && campo_.text() != "%" && !nombre;
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
  Marca(edicion_, "malo", sin && !campo_.pendiente());
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
  QToolTip::showText(edicion_->mapToGlobal(QPoint(0, edicion_->height())),
                     QStringLiteral("%1: «%2» no existe. Corríjala, o F2 para buscarla")
                         .arg(Q(campo_.descripcion()), edicion_->text()),
                     edicion_, {}, kDuraAviso);
  return true;
}

bool VistaLookup::Tecla(const QKeyEvent& evento) {
  const bool enter = evento.key() == Qt::Key_Return || evento.key() == Qt::Key_Enter;
  if (enter && evento.modifiers().testFlag(Qt::AltModifier) && AbreFicha()) return true;
  if (evento.key() == Qt::Key_F2 && lupa_ != nullptr && contexto().interactivo) {
    if (evento.modifiers().testFlag(Qt::ControlModifier)) {
      if (contexto().abreCatalogo) Corre([this] { contexto().abreCatalogo(campo_); });
    } else {
      Busca();
    }
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

// The button of a field's record is named after it: cmdCliente of txtCliente.
bool VistaLookup::AbreFicha() {
  if (!campo_.nombre().starts_with("txt")) return false;
  auto* boton = controles::Como<controles::Boton>(formulario().Busca("cmd" + campo_.nombre().substr(3)));
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
    if (clave.empty()) return edicion_->selectAll();
    campo_.Teclea(clave);
    formulario().PulsaTecla(controles::tecla::kEnter);
  });
}

// --- VistaFecha

VistaFecha::VistaFecha(controles::DateField& campo, QWidget* padre, const Contexto& contexto)
    : Vista(campo, contexto), campo_(campo), edicion_(new QLineEdit(padre)) {
  Adopta(edicion_);
  edicion_->setMaxLength(10);
  calendario_ = edicion_->addAction(Icono(QStringLiteral("calendario"), Colores().tenue), QLineEdit::TrailingPosition);
  calendario_->setText(QStringLiteral("Calendario"));
  calendario_->setToolTip(QStringLiteral("Calendario (F4)"));
  QObject::connect(calendario_, &QAction::triggered, edicion_, [this] { AbreCalendario(); });
  QObject::connect(edicion_, &QLineEdit::textEdited, edicion_, [this] {
    tecleada_ = true;
    Marca(edicion_, "malo", false);
  });
  Refresca();
}

void VistaFecha::Refresca() {
  const QString texto = Q(campo_.text());
  if (!tecleada_ && edicion_->text() != texto) {
    const QSignalBlocker calla(edicion_);
    edicion_->setText(texto);
    edicion_->setCursorPosition(0);
    if (edicion_->hasFocus()) edicion_->selectAll();
  }
  QString consejo = Q(campo_.descripcion());
  if (!campo_.Vacio()) {
    consejo += QStringLiteral(": ") +
               QLocale(QLocale::Spanish, QLocale::Mexico).toString(ADate(campo_.valor()), QLocale::LongFormat);
  }
  edicion_->setToolTip(consejo + QStringLiteral(" · F4 abre el calendario"));
  edicion_->setReadOnly(!campo_.editable());
  calendario_->setVisible(campo_.AceptaEntrada());
  Marca(edicion_, "apagado", !campo_.AceptaEntrada());
}

void VistaFecha::Fija(com::Fecha fecha) {
  tecleada_ = false;
  Marca(edicion_, "malo", false);
  Corre([&] { campo_.Fija(fecha); });
  Refresca();
  if (contexto().interactivo) edicion_->selectAll();
}

bool VistaFecha::Entrega() {
  if (!tecleada_) return true;
  if (!campo_.AceptaEntrada()) {
    Descarta();
    return true;
  }
  const com::Fecha base = campo_.Vacio() ? DeDate(contexto().Hoy()) : campo_.valor();
  if (const auto fecha = LeeFecha(edicion_->text(), base)) {
    Fija(*fecha);
    return true;
  }
  Marca(edicion_, "malo", true);
  edicion_->selectAll();
  QString aviso = QStringLiteral("«%1» no es una fecha. Escriba día/mes/año").arg(edicion_->text());
  if (!campo_.Vacio()) aviso += QStringLiteral(", o pulse Esc para dejar %1").arg(Q(campo_.text()));
  QToolTip::showText(edicion_->mapToGlobal(QPoint(0, edicion_->height())), aviso, edicion_, {}, kDuraAviso);
  return false;
}

void VistaFecha::Descarta() {
  if (!tecleada_) return;
  tecleada_ = false;
  Marca(edicion_, "malo", false);
  Refresca();
}

void VistaFecha::Deja(Qt::FocusReason motivo) {
  if (!tecleada_ || motivo == Qt::PopupFocusReason || motivo == Qt::ActiveWindowFocusReason) return;
  QTimer::singleShot(0, edicion_, [this] {
    if (!Entrega()) formulario().Enfoca(campo_);
  });
}

bool VistaFecha::Tecla(const QKeyEvent& evento) {
  const bool acepta = campo_.AceptaEntrada();
  const bool alt = evento.modifiers().testFlag(Qt::AltModifier);
  if (acepta && (evento.key() == Qt::Key_F4 || (alt && evento.key() == Qt::Key_Down))) {
    AbreCalendario();
    return true;
  }
  const int paso = evento.key() == Qt::Key_Up ? 1 : evento.key() == Qt::Key_Down ? -1 : 0;
  if (acepta && paso != 0 && !campo_.Vacio()) {
    // Steps are typed, so that rules run once, when the field is left.
    const com::Fecha base = LeeFecha(edicion_->text(), campo_.valor()).value_or(campo_.valor());
    edicion_->setText(Q(regional::FechaCorta(com::MasDias(base, paso))));
    edicion_->selectAll();
    tecleada_ = true;
    return true;
  }
  const int codigo = CodigoTecla(evento.key());
  if (codigo == controles::tecla::kEsc && tecleada_) {
    Descarta();
    return true;
  }
  const int mayus = MayusDe(evento.modifiers()) | (evento.key() == Qt::Key_Backtab ? 1 : 0);
  if ((codigo == controles::tecla::kTab || codigo == controles::tecla::kEnter) && TeclaDePaso(mayus)) return true;
  if (codigo >= kTeclaF1 && !Entrega()) return true;
  return Vista::Tecla(evento);
}

bool VistaFecha::TeclaDePaso(int mayus) {
  const bool flotante = campo_.contenedor() != nullptr && Flota(*campo_.contenedor());
  const bool entrega = tecleada_;
  const int veces = formulario().vecesEnfocado();
  if (entrega) {
    if (!Entrega()) return true;
  } else if (flotante && contexto().interactivo) {
    DejaCelda(mayus);
  }
  if (flotante && (entrega || contexto().interactivo)) return true;  // the screen moves on to the next cell
  // The date's own rules may have sent the focus somewhere, be it back to the field.
  return formulario().vecesEnfocado() != veces;
}

// The cell keeps its date, untouched: the grid moves on, or back.
void VistaFecha::DejaCelda(int mayus) {
  auto* grid = formulario().Primero<controles::Grid>();
  if (grid == nullptr) return;
  Corre([&] { formulario().Enfoca(*grid); });
  PasaTecla(controles::tecla::kTab, mayus);
}

void VistaFecha::AbreCalendario() {
  if (!campo_.AceptaEntrada()) return;
  const QDate dia = campo_.Vacio() ? contexto().Hoy() : ADate(campo_.valor());
  MuestraCalendario(
      *edicion_, Q(campo_.descripcion()), dia, [this](const QDate& elegido) { Fija(DeDate(elegido)); },
      contexto().Hoy());
}

// --- VistaNotas

VistaNotas::VistaNotas(controles::CampoNotas& campo, QWidget* padre, const Contexto& contexto)
    : Vista(campo, contexto), campo_(campo), edicion_(new QPlainTextEdit(padre)) {
  Adopta(edicion_);
  edicion_->setTabChangesFocus(true);
  edicion_->setToolTip(Q(campo_.descripcion()));
  edicion_->document()->setDocumentMargin(2);
  QObject::connect(edicion_, &QPlainTextEdit::textChanged, edicion_, [this] {
    if (refrescando_) return;
    Corre([this] { campo_.Teclea(edicion_->toPlainText().toStdString()); });
  });
  QObject::connect(edicion_, &QPlainTextEdit::cursorPositionChanged, edicion_, [this] {
    if (refrescando_) return;
    const QString antes = edicion_->toPlainText().left(edicion_->textCursor().position());
    campo_.cursor(static_cast<int>(antes.toUcs4().size()));
  });
  Refresca();
}

void VistaNotas::Refresca() {
  refrescando_ = true;
  const QString texto = Q(campo_.text()).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  if (edicion_->toPlainText() != texto) edicion_->setPlainText(texto);
  const auto codigos = texto.toUcs4();
  const auto hasta = std::min<qsizetype>(campo_.cursor(), codigos.size());
  const auto posicion =
      static_cast<int>(QString::fromUcs4(reinterpret_cast<const char32_t*>(codigos.constData()), hasta).size());
  if (edicion_->textCursor().position() != posicion) {
    QTextCursor cursor = edicion_->textCursor();
    cursor.setPosition(posicion);
    edicion_->setTextCursor(cursor);
  }
  edicion_->setReadOnly(campo_.locked());
  refrescando_ = false;
}

bool VistaNotas::Tecla(const QKeyEvent& evento) {
  const int codigo = CodigoTecla(evento.key());
  if (codigo == controles::tecla::kEnter) return false;  // a new line
  return Vista::Tecla(evento);
}

// --- buttons

VistaBoton::VistaBoton(controles::Boton& boton, QWidget* padre, const Contexto& contexto) : Vista(boton, contexto) {
  auto* b = new QPushButton(padre);
  Adopta(b);
  b->setAutoDefault(false);
  b->setToolTip(Q(boton.descripcion()));
  const QString icono = contexto.pistas.IconoDe(boton.nombre());
  const bool soloIcono = boton.caption() == "…" && !icono.isEmpty();
  if (!icono.isEmpty()) b->setIcon(Icono(icono));
  if (!soloIcono) b->setText(Q(boton.caption()));
  QObject::connect(b, &QPushButton::clicked, b, [this, &boton] {
    Corre([&] { boton.Pulsa(); });
    Refresca();
  });
}

void VistaBoton::Refresca() {}

VistaCasilla::VistaCasilla(controles::Casilla& casilla, QWidget* padre, const Contexto& contexto)
    : Vista(casilla, contexto), casilla_(casilla), caja_(new QCheckBox(Q(casilla.caption()), padre)) {
  Adopta(caja_);
  caja_->setToolTip(Q(casilla.descripcion()));
  QObject::connect(caja_, &QCheckBox::clicked, caja_, [this] {
    Corre([this] { casilla_.Pulsa(); });
    Refresca();
  });
  Refresca();
}

void VistaCasilla::Refresca() { caja_->setChecked(casilla_.value()); }

bool VistaCasilla::Tecla(const QKeyEvent& evento) { return evento.key() != Qt::Key_Space && Vista::Tecla(evento); }

VistaOpcion::VistaOpcion(controles::Opcion& opcion, QWidget* padre, const Contexto& contexto)
    : Vista(opcion, contexto), opcion_(opcion), boton_(new QRadioButton(padre)) {
  FijaPapel(boton_, QAccessible::RadioButton);
  boton_->setText(Q(opcion.caption()));
  Adopta(boton_);
  boton_->setAutoExclusive(false);  // the model's options exclude each other
  boton_->setToolTip(Q(opcion.descripcion()));
  QObject::connect(boton_, &QRadioButton::clicked, boton_, [this] {
    Corre([this] { opcion_.Pulsa(); });
    Refresca();
  });
  Refresca();
}

void VistaOpcion::Refresca() { boton_->setChecked(opcion_.value()); }

bool VistaOpcion::Tecla(const QKeyEvent& evento) {
  if (evento.key() == Qt::Key_Space) return false;
  // The arrows go over the options of the frame, and choose.
  const int paso = evento.key() == Qt::Key_Right || evento.key() == Qt::Key_Down ? 1
                   : evento.key() == Qt::Key_Left || evento.key() == Qt::Key_Up  ? -1
                                                                                 : 0;
  if (paso == 0) return Vista::Tecla(evento);
  std::vector<controles::Opcion*> grupo;
  for (controles::Control* c : formulario().controles()) {
    auto* otra = controles::Como<controles::Opcion>(c);
    if (otra != nullptr && otra->contenedor() == opcion_.contenedor()) grupo.push_back(otra);
  }
  const auto aqui = std::find(grupo.begin(), grupo.end(), &opcion_) - grupo.begin();
  const auto n = static_cast<std::ptrdiff_t>(grupo.size());
  controles::Opcion& otra = *grupo[static_cast<std::size_t>((aqui + paso + n) % n)];
  Corre([&] {
    formulario().Enfoca(otra);
    otra.Pulsa();
  });
  return true;
}

// --- frames and captions

namespace {

class Tarjeta : public QWidget {
 public:
  Tarjeta(const QString& titulo, QWidget* padre) : QWidget(padre), titulo_(titulo) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    if (titulo_.isEmpty()) return;
    QPainter p(this);
    PintaCaja(p, rect(), {Colores().superficie, Colores().borde, 1});
    p.setFont(Fuente(Letra::Chica));
    p.setPen(Colores().tenue);
    p.drawText(rect().adjusted(espacio::kChico, 3, -espacio::kChico, 0), Qt::AlignLeft | Qt::AlignTop, titulo_);
  }

 private:
  QString titulo_;
};

// Caption of a field.
class Rotulo : public QLabel {
 public:
  explicit Rotulo(QWidget* padre) : QLabel(padre) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    p.setPen(Colores().tenue);
    p.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, text());
  }
};

class Muestra : public QLabel {
 public:
  Muestra(controles::Etiqueta& etiqueta, QString estado, QWidget* padre)
      : QLabel(padre), etiqueta_(etiqueta), estado_(std::move(estado)) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    if (etiqueta_.color() < 0) return;
    QPainter p(this);
    const QColor tono = ColorEstado(etiqueta_.color(), etiqueta_.dado());
    PintaEstado(p, rect(), estado_, tono);
    p.setPen(TextoSobre(tono));
    p.setFont(Fuente(Letra::Fuerte));
    p.drawText(rect(), Qt::AlignCenter, LetraDe(estado_));
    PintaAnillo(p, rect(), Colores().bordeCampo, 1);
  }

 private:
  controles::Etiqueta& etiqueta_;
  QString estado_;
};

// Key of the caption before the swatch.
QString EstadoDe(const controles::Etiqueta& muestra) {
  QString clave;
  for (const controles::Control* c : muestra.formulario().controles()) {
    if (c == &muestra) break;
    const auto* etiqueta = controles::Como<controles::Etiqueta>(c);
    if (etiqueta != nullptr && !etiqueta->clave().empty()) clave = Q(etiqueta->clave());
  }
  return clave;
}

}  // namespace

VistaMarco::VistaMarco(controles::Marco& marco, QWidget* padre, const Contexto& contexto) : Vista(marco, contexto) {
  auto* tarjeta = new Tarjeta(Q(marco.caption()), padre);
  FijaPapel(tarjeta, QAccessible::Grouping);
  Adopta(tarjeta);
  if (marco.descripcion().empty()) widget()->setAccessibleName(Q(marco.caption()));
}

VistaEtiqueta::VistaEtiqueta(controles::Etiqueta& etiqueta, QWidget* padre, const Contexto& contexto)
    : Vista(etiqueta, contexto), etiqueta_(etiqueta) {
  if (etiqueta.caption().empty() && etiqueta.clave().empty()) {
    Adopta(new Muestra(etiqueta, EstadoDe(etiqueta), padre));
    const QString letra = LetraDe(EstadoDe(etiqueta));
    widget()->setAccessibleName(letra.isEmpty() ? QStringLiteral("Color") : QStringLiteral("Color y letra ") + letra);
    return;
  }
  rotulo_ = new Rotulo(padre);
  Adopta(rotulo_);
  Refresca();
}

void VistaEtiqueta::Refresca() {
  if (rotulo_ == nullptr) return widget()->update();
  const QString texto = Q(etiqueta_.caption());
  const int ancho = APixel(etiqueta_.width());
  if (rotulo_->text() == texto && ancho_ == ancho) return;
  ancho_ = ancho;
  rotulo_->setText(texto);
  rotulo_->setFont(FuenteEstrecha(Letra::Normal, texto, ancho));
}

}  // namespace vista
