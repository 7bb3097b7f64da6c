#include "desktop/vista_fecha.h"

#include <QAction>
#include <QLocale>
#include <QSignalBlocker>

#include "desktop/calendario.h"
#include "desktop/consejo.h"
#include "desktop/despues.h"
#include "desktop/estilo.h"
#include "desktop/fechas.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/teclas.h"
#include "platform/controls/grid.h"
#include "platform/regional/regional.h"

namespace vista {

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
    Marca(*edicion_, "malo", false);
  });
  VistaFecha::Refresca();
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
  Marca(*edicion_, "apagado", !campo_.AceptaEntrada());
}

void VistaFecha::Fija(com::Fecha fecha) {
  tecleada_ = false;
  Marca(*edicion_, "malo", false);
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
  Marca(*edicion_, "malo", true);
  edicion_->selectAll();
  QString aviso = NoEsFecha(edicion_->text());
  if (!campo_.Vacio()) aviso += QStringLiteral(", o pulse Esc para dejar %1").arg(Q(campo_.text()));
  Dice(aviso);
  return false;
}

void VistaFecha::Descarta() {
  if (!tecleada_) return;
  tecleada_ = false;
  Marca(*edicion_, "malo", false);
  Refresca();
}

std::optional<QString> VistaFecha::Tecleado() const {
  return tecleada_ ? std::optional(edicion_->text()) : std::nullopt;
}

void VistaFecha::Teclea(const QString& texto) {
  edicion_->setText(texto);
  tecleada_ = true;
}

void VistaFecha::Deja(Qt::FocusReason motivo) {
  if (!tecleada_ || motivo == Qt::PopupFocusReason || motivo == Qt::ActiveWindowFocusReason) return;
  Despues(*edicion_, [this] {
    if (Entrega()) return;
    formulario().Enfoca(campo_);
    RepiteRechazo();
  });
}

bool VistaFecha::Tecla(const QKeyEvent& evento) {
  const bool acepta = campo_.AceptaEntrada();
  const bool alt = evento.modifiers().testFlag(Qt::AltModifier);
  if (acepta && (kTeclaCalendario.Es(evento) || (alt && evento.key() == Qt::Key_Down))) {
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

}  // namespace vista
