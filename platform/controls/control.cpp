#include "platform/controls/control.h"

#include <algorithm>
#include <utility>

#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/controls/formulario.h"
#include "platform/regional/regional.h"

namespace controles {
namespace {

[[noreturn]] void Rechaza(const Control& control, const char* motivo) {
  throw com::Error(com::error::kTamanio, "El control " + control.nombre() + " " + motivo);
}

void ExigeClic(const Control& control) {
  for (const Control* c = &control; c != nullptr; c = c->contenedor()) {
    if (!c->enabled()) Rechaza(control, "no está habilitado");
    if (!c->visible()) Rechaza(control, "no está visible");
  }
}

bool Habilitado(const Control& control) {
  for (const Control* c = &control; c != nullptr; c = c->contenedor()) {
    if (!c->enabled()) return false;
  }
  return true;
}

void ExigeEntrada(const Control& control, bool bloqueado) {
  if (!Habilitado(control)) Rechaza(control, "no está habilitado");
  if (bloqueado) Rechaza(control, "es de solo lectura");
}

// Fields show NULL as an empty text, and the empty date as date fields do.
std::string TextoDeCampo(const com::Variant& v) {
  return v.EsFecha() && com::CDate(v) == com::Fecha{} ? std::string() : com::TextoDe(v);
}

void Lanza(const std::function<void()>& evento) {
  if (evento) evento();
}

}  // namespace

// --- Control

Control::Control(Formulario& formulario, Clase clase, std::string nombre, Lugar lugar)
    : formulario_(formulario), clase_(clase), nombre_(std::move(nombre)), lugar_(lugar) {
  formulario_.controles_.push_back(this);
}

void Control::enabled(bool v) {
  if (v == enabled_) return;
  enabled_ = v;
  Avisa();
}

void Control::visible(bool v) {
  if (v == visible_) return;
  visible_ = v;
  Avisa();
}

void Control::left(int v) {
  if (v == lugar_.left) return;
  lugar_.left = v;
  Avisa();
}

void Control::top(int v) {
  if (v == lugar_.top) return;
  lugar_.top = v;
  Avisa();
}

void Control::width(int v) {
  if (v < 0) Rechaza(*this, "no admite un ancho negativo");
  if (v == lugar_.width) return;
  lugar_.width = v;
  Avisa();
}

void Control::height(int v) {
  if (v < 0) Rechaza(*this, "no admite un alto negativo");
  if (v == lugar_.height) return;
  lugar_.height = v;
  Avisa();
}

bool Control::PuedeEnfocarse() const {
  if (clase_ == Clase::Marco || clase_ == Clase::Etiqueta || clase_ == Clase::Barra) return false;
  for (const Control* c = this; c != nullptr; c = c->contenedor_) {
    if (!c->enabled_ || !c->visible_) return false;
  }
  return formulario_.visible();
}

// --- LookupField

LookupField::LookupField(Formulario& formulario, std::string nombre, Lugar lugar, DisenoLookup diseno)
    : Control(formulario, Clase::LookupField, std::move(nombre), lugar),
      diseno_(std::move(diseno)),
      text_(diseno_.text) {}

void LookupField::text(std::string v) {
  if (v == text_) return;
  text_ = std::move(v);
  pendiente_ = false;
  Busca();
  Avisa();
  Lanza(Change);
}

void LookupField::text(const com::Variant& v) { text(TextoDeCampo(v)); }

com::Variant LookupField::valor() const {
  switch (diseno_.tipo) {
    case TipoDato::Texto:
      return text_;
    case TipoDato::Numero:
      if (const auto n = com::NumeroDe(text_)) return *n;
      break;
    case TipoDato::Fecha:
      if (const auto f = com::FechaDeTexto(text_)) return *f;
      break;
  }
  return {};
}

void LookupField::valor(const com::Variant& v) {
  // A date field given a date as ISO text or number shows it like any other date.
  const auto fecha = diseno_.tipo == TipoDato::Fecha && v.EsTexto() ? com::FechaDeTexto(com::CStr(v)) : std::nullopt;
  std::string texto = fecha ? regional::TextoFecha(*fecha) : TextoDeCampo(v);
  if (texto == text_) return;
  text_ = std::move(texto);
  pendiente_ = false;
  Avisa();
}

void LookupField::locked(bool v) {
  if (v == diseno_.locked) return;
  diseno_.locked = v;
  Avisa();
}

void LookupField::passwordChar(std::string v) {
  if (v == passwordChar_) return;
  passwordChar_ = std::move(v);
  Avisa();
}

void LookupField::Refresca() {
  Busca();
  Avisa();
}

void LookupField::Limpia() { text(diseno_.text); }

void LookupField::Teclea(std::string v) {
  ExigeEntrada(*this, diseno_.locked);
  if (diseno_.largo > 0) v = com::PrincipioUtf8(v, static_cast<std::size_t>(diseno_.largo));
  if (diseno_.mayusculas || MayusculasForzadas()) v = com::Mayusculas(v);
  Asigna(std::move(v));
}

void LookupField::Confirma() {
  ExigeEntrada(*this, diseno_.locked);
  if (diseno_.esclave && !formato_.empty()) Asigna(regional::ConMascara(text_, formato_));
  Busca();
  pendiente_ = false;
  Avisa();
  Lanza(Enter);
}

void LookupField::Descarta() {
  if (!pendiente_) return;
  pendiente_ = false;
  text_ = antesText_;
  if (diseno_.sql_control_resultado != nullptr) diseno_.sql_control_resultado->valor(antesResultado_);
  Avisa();
}

// A text of the user's: the name beside it no longer belongs to it.
void LookupField::Asigna(std::string v) {
  if (v == text_) return;
  if (!pendiente_) {
    antesText_ = text_;
    antesResultado_ = diseno_.sql_control_resultado == nullptr ? "" : diseno_.sql_control_resultado->text();
  }
  text_ = std::move(v);
  pendiente_ = true;
  if (diseno_.sql_control_resultado != nullptr) diseno_.sql_control_resultado->valor("");
  Avisa();
  Lanza(Change);
}

void LookupField::Busca() {
  if (diseno_.sql.empty() || diseno_.sql_control_resultado == nullptr) return;
  std::optional<std::string> hallado;
  if (!text_.empty() && BuscadorActual()) {
    const auto lugares = std::count(diseno_.sql.begin(), diseno_.sql.end(), '?');
    ado::TextoSQL sentencia;
    sentencia.Agrega(diseno_.sql, std::vector<ado::Parte>(static_cast<std::size_t>(lugares), ado::Parte(text_)));
    // A query that fails must not leave the name of another key.
    diseno_.sql_control_resultado->valor("");
    hallado = BuscadorActual()(sentencia);
  }
  diseno_.sql_control_resultado->valor(hallado.value_or(std::string()));
}

// --- DateField

DateField::DateField(Formulario& formulario, std::string nombre, Lugar lugar)
    : Control(formulario, Clase::DateField, std::move(nombre), lugar) {}

void DateField::valor(com::Fecha v) {
  if (v == valor_) return;
  valor_ = v;
  Avisa();
}

void DateField::editable(bool v) {
  if (v == editable_) return;
  editable_ = v;
  Avisa();
}

void DateField::Limpia() { valor(com::Fecha{}); }

void DateField::Habilita() {
  enabled(true);
  editable(true);
}

std::string DateField::text() const { return Vacio() ? std::string() : regional::FechaCorta(valor_); }

void DateField::Fija(com::Fecha v) {
  ExigeEntrada(*this, !editable_);
  const bool cambia = v != valor_;
  valor(v);
  Lanza(AlFijar);
  if (cambia) Lanza(AlCambiar);
}

// --- CampoNotas

CampoNotas::CampoNotas(Formulario& formulario, std::string nombre, Lugar lugar)
    : Control(formulario, Clase::CampoNotas, std::move(nombre), lugar) {}

void CampoNotas::text(std::string v) {
  if (v == text_) return;
  text_ = std::move(v);
  cursor_ = std::min(cursor_, static_cast<int>(com::LargoUtf8(text_)));
  Avisa();
  Lanza(Change);
}

void CampoNotas::cursor(int v) {
  const int dentro = std::clamp(v, 0, static_cast<int>(com::LargoUtf8(text_)));
  if (dentro == cursor_) return;
  cursor_ = dentro;
  Avisa();
}

void CampoNotas::locked(bool v) {
  if (v == locked_) return;
  locked_ = v;
  Avisa();
}

void CampoNotas::Limpia() { text(std::string()); }

void CampoNotas::Habilita() {
  enabled(true);
  locked(false);
}

void CampoNotas::Teclea(std::string v) {
  ExigeEntrada(*this, locked_);
  if (MayusculasForzadas()) v = com::Mayusculas(v);
  if (v == text_) return;
  cursor_ = static_cast<int>(com::LargoUtf8(v));
  text(std::move(v));
}

// --- Boton, Casilla, Opcion

Boton::Boton(Formulario& formulario, std::string nombre, Lugar lugar, std::string caption)
    : Control(formulario, Clase::Boton, std::move(nombre), lugar), caption_(std::move(caption)) {}

void Boton::Pulsa() {
  ExigeClic(*this);
  Lanza(Click);
}

Casilla::Casilla(Formulario& formulario, std::string nombre, Lugar lugar, std::string caption)
    : Control(formulario, Clase::Casilla, std::move(nombre), lugar), caption_(std::move(caption)) {}

void Casilla::value(bool v) {
  if (v == value_) return;
  value_ = v;
  Avisa();
  Lanza(Click);
}

void Casilla::Limpia() { value(false); }

void Casilla::Pulsa() {
  ExigeClic(*this);
  value(!value_);
}

Opcion::Opcion(Formulario& formulario, std::string nombre, Lugar lugar, std::string caption, bool value)
    : Control(formulario, Clase::Opcion, std::move(nombre), lugar), caption_(std::move(caption)), value_(value) {}

void Opcion::Selecciona() {
  if (value_) return;
  for (Control* c : formulario().controles()) {
    auto* otra = Como<Opcion>(c);
    if (otra == nullptr || otra == this || otra->contenedor() != contenedor() || !otra->value_) continue;
    otra->value_ = false;
    otra->Avisa();
  }
  value_ = true;
  Avisa();
  Lanza(Click);
}

void Opcion::Pulsa() {
  ExigeClic(*this);
  Selecciona();
}

// --- Marco, Etiqueta

Marco::Marco(Formulario& formulario, std::string nombre, Lugar lugar, std::string caption)
    : Control(formulario, Clase::Marco, std::move(nombre), lugar), caption_(std::move(caption)) {
  tabStop(false);
}

Etiqueta::Etiqueta(Formulario& formulario, std::string nombre, Lugar lugar, std::string caption, std::string clave)
    : Control(formulario, Clase::Etiqueta, std::move(nombre), lugar),
      caption_(std::move(caption)),
      clave_(std::move(clave)) {
  tabStop(false);
}

void Etiqueta::caption(std::string v) {
  if (v == caption_) return;
  caption_ = std::move(v);
  Avisa();
}

void Etiqueta::color(std::int32_t v, bool dado) {
  if (v == color_ && dado == dado_) return;
  color_ = v;
  dado_ = dado;
  Avisa();
}

}  // namespace controles
