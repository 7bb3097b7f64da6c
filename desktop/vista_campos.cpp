#include "desktop/vista_campos.h"

#include <QPainter>
#include <algorithm>
#include <utility>

#include "desktop/accesible.h"
#include "desktop/escala.h"
#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/pintura.h"
#include "desktop/teclas.h"

namespace vista {

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
  VistaNotas::Refresca();
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
  VistaCasilla::Refresca();
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
  VistaOpcion::Refresca();
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
  Tarjeta(QString titulo, QWidget* padre) : QWidget(padre), titulo_(std::move(titulo)) {}

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
  VistaEtiqueta::Refresca();
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
