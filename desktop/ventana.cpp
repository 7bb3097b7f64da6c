#include "desktop/ventana.h"

#include <QCloseEvent>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QLineEdit>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "desktop/accesible.h"
#include "desktop/despues.h"
#include "desktop/escala.h"
#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/puntero.h"
#include "desktop/teclas.h"
#include "desktop/vista_barra.h"
#include "desktop/vista_campos.h"
#include "desktop/vista_grid.h"

namespace vista {

using controles::Clase;

namespace {

using Creador = std::unique_ptr<Vista> (*)(controles::Control&, QWidget*, const Contexto&);

// The view of a control of the kind; null for one of another.
template <class C, class V>
std::unique_ptr<Vista> Crea(controles::Control& control, QWidget* padre, const Contexto& contexto) {
  C* suyo = controles::Como<C>(&control);
  return suyo == nullptr ? nullptr : std::make_unique<V>(*suyo, padre, contexto);
}

constexpr Creador kCreadores[] = {
    Crea<controles::LookupField, VistaLookup>,  Crea<controles::DateField, VistaFecha>,
    Crea<controles::CampoNotas, VistaNotas>,    Crea<controles::Boton, VistaBoton>,
    Crea<controles::Casilla, VistaCasilla>,     Crea<controles::Opcion, VistaOpcion>,
    Crea<controles::Marco, VistaMarco>,         Crea<controles::Etiqueta, VistaEtiqueta>,
    Crea<controles::ScreenToolbar, VistaBarra>, Crea<controles::Grid, VistaGrid>,
};

// What the user works at: a date that floats over a grid is part of it.
const controles::Control* Mesa(const controles::Control* control) {
  if (control == nullptr || control->contenedor() == nullptr || !Flota(*control->contenedor())) return control;
  return control->formulario().Primero<controles::Grid>();
}

}  // namespace

std::unique_ptr<Vista> CreaVista(controles::Control& control, QWidget* padre, const Contexto& contexto) {
  for (const Creador crea : kCreadores) {
    if (auto vista = crea(control, padre, contexto)) return vista;
  }
  return nullptr;
}

Ventana::Ventana(controles::Formulario& formulario, const Contexto& contexto, QWidget* padre)
    : QWidget(padre, padre == nullptr ? Qt::Window
                                      : Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                            Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint),
      formulario_(formulario),
      contexto_(contexto) {
  setObjectName(Q(formulario.nombre()));
  setWindowTitle(Q(formulario.caption()));
  FijaPapel(this, padre == nullptr ? QAccessible::Window : QAccessible::Dialog);
  setFont(Fuente(Letra::Normal));
  setMinimumSize(APixel(9000), APixel(6000));
  CreaVistas();
  puntero_ = std::make_unique<Puntero>(*this);
  FijaTamano(formulario.width(), formulario.height());
}

Ventana::~Ventana() {
  Suelta();
  vistas_.clear();
}

void Ventana::Suelta() {
  if (std::exchange(suelta_, true)) return;
  formulario_.alAvisar = nullptr;
  for (const auto& v : vistas_) v->Suelta();
}

void Ventana::CreaVistas() {
  // Containers first: a control may stand before its frame in tab order.
  const auto crea = [this](controles::Control& c) {
    QWidget* padre = this;
    if (c.contenedor() != nullptr) padre = porControl_.at(c.contenedor())->widget();
    auto nueva = CreaVista(c, padre, contexto_);
    Vista* v = nueva.get();
    porControl_[&c] = v;
    vistas_.push_back(std::move(nueva));
    v->foco()->installEventFilter(this);
    c.alAvisar = [this, v] {
      v->Refresca();
      Coloca(*v);
    };
    v->widget()->show();
    Coloca(*v);
  };
  for (controles::Control* c : formulario_.controles()) {
    if (c->clase() == Clase::Marco) crea(*c);
  }
  for (controles::Control* c : formulario_.controles()) {
    if (c->clase() != Clase::Marco) crea(*c);
  }
  for (const auto& v : vistas_) {
    if (Flota(v->control())) v->widget()->raise();
    if (auto* barra = Como<VistaBarra>(v.get())) {
      barra->antesDePulsar = [this](controles::Accion accion) { return AntesDePulsar(accion); };
      barra->despuesDePulsar = [this](controles::Accion accion) { DespuesDePulsar(accion); };
    }
  }
}

// What leaves the capture anyway does not wait for its fields to be right. A dialog accepts what is marked in it; a
// field half typed is no part of that, and what it would set off could take the marks away.
bool Ventana::AntesDePulsar(controles::Accion accion) {
  const auto* barra = formulario_.Primero<controles::ScreenToolbar>();
  const bool descarta = controles::Abandona(accion) || (barra != nullptr && barra->EsDialogo());
  if (!descarta && !TerminaEdicion(nullptr)) return false;
  const auto admite = [](const std::unique_ptr<Vista>& v) { return v->Admite(); };
  if (accion == controles::Accion::Aceptar && !std::all_of(vistas_.begin(), vistas_.end(), admite)) return false;
  if (puedePulsar && !puedePulsar(accion)) return false;
  if (descarta) Descarta();
  return true;
}

bool Ventana::Pulsa(controles::Accion accion) {
  for (const auto& v : vistas_) {
    if (auto* barra = Como<VistaBarra>(v.get())) return barra->Pulsa(accion);
  }
  return false;
}

// What is pending is handed over first, as before a button.
bool Ventana::AbreOpcion(const QKeyEvent& evento) {
  if (parentWidget() != nullptr) return false;
  const Qt::KeyboardModifiers modificadores = evento.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
  const int tecla = QKeyCombination(modificadores, static_cast<Qt::Key>(evento.key())).toCombined();
  for (const Contexto::Opcion& opcion : contexto_.menu) {
    if (opcion.tecla == 0 || opcion.tecla != tecla) continue;
    Corre([&] {
      if (!evento.isAutoRepeat() && TerminaEdicion(nullptr)) opcion.abre();
    });
    return true;
  }
  return false;
}

void Ventana::Descarta() {
  for (const auto& v : vistas_) v->Descarta();
}

void Ventana::DespuesDePulsar(controles::Accion accion) {
  for (const auto& v : vistas_) {
    if (v->control().clase() == Clase::Grid) v->Refresca();  // rows can be added in a capture only
  }
  if (alPulsar) alPulsar(accion);
  if (accion != controles::Accion::Editar || !contexto_.interactivo) return;
  if (controles::Control* sigue = formulario_.Busca(contexto_.pistas.trasEditar)) formulario_.Enfoca(*sigue);
}

Vista* Ventana::vista(const controles::Control& control) const {
  const auto v = porControl_.find(&control);
  return v == porControl_.end() ? nullptr : v->second;
}

void Ventana::Coloca(Vista& v) {
  const controles::Control& c = v.control();
  QWidget* w = v.widget();
  if (Flota(c)) {
    ColocaSobreCelda(v);
  } else if (c.contenedor() != nullptr && Flota(*c.contenedor())) {
    w->setGeometry(w->parentWidget()->rect());
  } else {
    const int ancho = c.clase() == Clase::Barra ? width() : APixel(c.width());
    w->setGeometry(APixel(c.left()), APixel(c.top()), ancho, APixel(c.height()));
  }
  if (w->isEnabledTo(w->parentWidget()) == c.enabled() && w->isVisibleTo(w->parentWidget()) == c.visible()) return;
  // A widget that can no longer have the keyboard loses it; where it goes is the form's to say.
  const bool enfocaba = std::exchange(enfocando_, true);
  w->setEnabled(c.enabled());
  w->setVisible(c.visible());
  enfocando_ = enfocaba;
  SigueFoco();
  if (contexto_.interactivo) Despues(*this, [this] { AdoptaFoco(); });
}

// When the form's active control cannot be used any more, the next one takes the keyboard.
void Ventana::AdoptaFoco() {
  controles::Control* c = formulario_.foco();
  if (c == nullptr || c->PuedeEnfocarse() || !formulario_.visible()) return;
  formulario_.EnfocaSiguiente();
}

void Ventana::ColocaSobreCelda(Vista& v) {
  auto* grid = formulario_.Primero<controles::Grid>();
  auto* celdas = grid == nullptr ? nullptr : Como<VistaGrid>(vista(*grid));
  if (celdas == nullptr || !v.control().visible()) return;
  const QRect zona = celdas->ZonaCelda(grid->fila(), grid->columna());
  if (!zona.isValid()) return;
  const QPoint esquina = celdas->widget()->mapTo(this, zona.topLeft());
  const int ancho = std::max(zona.width(), APixel(1800));
  v.widget()->setGeometry(esquina.x() - 1, esquina.y() - 1, ancho + 2, zona.height() + 2);
  for (QObject* hijo : v.widget()->children()) {
    if (auto* w = qobject_cast<QWidget*>(hijo)) w->setGeometry(v.widget()->rect());
  }
  v.widget()->raise();
}

void Ventana::Refresca() {
  for (const auto& v : vistas_) {
    v->Refresca();
    Coloca(*v);
  }
}

void Ventana::SigueFoco() {
  controles::Control* c = formulario_.foco();
  if (c == nullptr || enfocando_) return;
  Vista* v = vista(*c);
  if (v == nullptr || v->foco()->hasFocus()) return;
  enfocando_ = true;
  v->foco()->setFocus(Qt::TabFocusReason);  // as by Tab: a field's text is selected
  enfocando_ = false;
}

bool Ventana::TerminaEdicion(const controles::Control* destino) {
  for (const auto& v : vistas_) {
    if (&v->control() != destino && !v->Entrega()) return false;
  }
  auto* grid = controles::Como<controles::Grid>(formulario_.foco());
  if (grid == nullptr || grid == destino) return true;
  return !(grid->Tecleada() || grid->Pendiente()) || grid->Deja();
}

bool Ventana::HayPendiente(const controles::Control& destino) const {
  for (const auto& v : vistas_) {
    if (&v->control() != &destino && v->Pendiente()) return true;
  }
  const auto* grid = controles::Como<controles::Grid>(formulario_.foco());
  return grid != nullptr && grid != &destino && (grid->Tecleada() || grid->Pendiente());
}

bool Ventana::Entra(Vista& v) {
  controles::Control& c = v.control();
  bool entra = false;
  Corre([&] {
    const int veces = formulario_.vecesEnfocado();
    entra = TerminaEdicion(&c);
    // A field that holds the user, or that a rule wants corrected first, keeps the keyboard.
    entra = entra && (formulario_.vecesEnfocado() == veces || Mesa(formulario_.foco()) == Mesa(&c));
    if (entra) formulario_.Enfoca(c);
  });
  if (!entra) Despues(*this, [this] { SigueFoco(); });
  return entra;
}

Vista* Ventana::VistaBajo(const QWidget& widget) const {
  for (const QWidget* w = &widget; w != nullptr && w != this; w = w->parentWidget()) {
    for (const auto& v : vistas_) {
      if (v->widget() == w) return v.get();
    }
  }
  return nullptr;
}

void Ventana::FijaTamano(int ancho, int alto) {
  exacto_ = true;
  resize(std::max(1, APixel(ancho)), std::max(1, APixel(alto)));
  exacto_ = false;
  formulario_.Redimensiona(ancho, alto);
  Refresca();
}

void Ventana::resizeEvent(QResizeEvent* evento) {
  QWidget::resizeEvent(evento);
  if (exacto_) return;
  Corre([this] { formulario_.Redimensiona(ATwips(width()), ATwips(height())); });
  for (const auto& v : vistas_) {
    if (v->control().clase() == Clase::Barra || Flota(v->control())) Coloca(*v);
  }
}

void Ventana::closeEvent(QCloseEvent* evento) {
  evento->ignore();
  if (alCerrar) alCerrar();
}

void Ventana::keyPressEvent(QKeyEvent* evento) {
  // Keys that no control took: with the focus nowhere, the form still has its own.
  if (AbreOpcion(*evento)) return;
  const int codigo = CodigoTecla(evento->key());
  if (codigo == controles::tecla::kEsc || codigo >= kTeclaF1 || codigo == controles::tecla::kTab) {
    Corre([&] { formulario_.PulsaTecla(codigo, MayusDe(evento->modifiers())); });
    return;
  }
  QWidget::keyPressEvent(evento);
}

// How the totals came about stands in their tip.
bool Ventana::MuestraExplicacion(const Vista& v, const QPoint& donde) const {
  const auto& totales = contexto_.pistas.totales;
  if (!contexto_.explica || std::find(totales.begin(), totales.end(), v.control().nombre()) == totales.end())
    return false;
  QString texto;
  Corre([&] { texto = contexto_.explica(-1); });
  if (texto.isEmpty()) return false;
  QToolTip::showText(donde, texto, v.widget());
  return true;
}

Vista* Ventana::DueniaDe(QObject* objeto) const {
  for (const auto& v : vistas_) {
    if (v->foco() == objeto) return v.get();
  }
  return nullptr;
}

void Ventana::AlEntrar(Vista& v, Qt::FocusReason motivo) {
  controles::Control& c = v.control();
  // A date that is clicked is typed over, as when it is entered by Tab.
  if (motivo == Qt::MouseFocusReason && contexto_.interactivo && c.clase() == Clase::DateField) {
    auto* linea = qobject_cast<QLineEdit*>(v.foco());
    Despues(*linea, [linea] { linea->selectAll(); });
  }
  if (enfocando_ || formulario_.foco() == &c) return;
  if (motivo == Qt::ActiveWindowFocusReason || motivo == Qt::PopupFocusReason) return;
  if (motivo == Qt::MouseFocusReason && puntero_ != nullptr && puntero_->Espera()) {
    // The press that brought the keyboard is yet to come. Should none come, the view is entered all the same.
    Despues(*this, [this, &v] {
      if (v.foco()->hasFocus() && formulario_.foco() != &v.control()) Entra(v);
    });
    return;
  }
  Entra(v);
}

bool Ventana::eventFilter(QObject* objeto, QEvent* evento) {
  switch (evento->type()) {
    case QEvent::KeyPress:
      if (Vista* v = DueniaDe(objeto)) {
        const auto& tecla = *static_cast<QKeyEvent*>(evento);
        if (AbreOpcion(tecla) || v->Tecla(tecla)) return true;
      }
      break;
    case QEvent::ShortcutOverride: {
      // Plain keys of the grids and fields are theirs before any shortcut's.
      const auto* tecla = static_cast<QKeyEvent*>(evento);
      if (SinModificadores(*tecla) && CodigoTecla(tecla->key()) != 0) evento->accept();
      break;
    }
    case QEvent::ToolTip:
      if (const Vista* v = DueniaDe(objeto)) {
        if (MuestraExplicacion(*v, static_cast<QHelpEvent*>(evento)->globalPos())) return true;
      }
      break;
    case QEvent::FocusIn:
      if (Vista* v = DueniaDe(objeto)) AlEntrar(*v, static_cast<QFocusEvent*>(evento)->reason());
      break;
    case QEvent::FocusOut:
      if (Vista* v = DueniaDe(objeto)) v->Deja(static_cast<QFocusEvent*>(evento)->reason());
      break;
    default:
      break;
  }
  return QWidget::eventFilter(objeto, evento);
}

}  // namespace vista
