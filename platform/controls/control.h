// Controls of a screen as plain models: text, value, switches and events, nothing is drawn here. A view (a window
// toolkit, the scripted clerk) reads them, raises the user's actions through the members marked "user", and is told of
// every change.
//
// What fires: assigning an equal text is a no-op; assigning another text, by user or by program, raises the change
// event; only the user's confirmation raises Enter. An untrapped error in a handler reaches whoever raised the event.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ado/texto_sql.h"
#include "platform/com/fecha.h"
#include "platform/com/variant.h"

namespace controles {

class Formulario;

enum class Clase { LookupField, DateField, CampoNotas, Boton, Casilla, Opcion, Marco, Etiqueta, Barra, Grid };

// Place of a control on its form or container, in twips (1440 an inch).
struct Lugar {
  int left = 0, top = 0, width = 0, height = 0;
};

// Key codes (the platform's virtual keys).
namespace tecla {
inline constexpr int kRetroceso = 8, kTab = 9, kEnter = 13, kEsc = 27, kEspacio = 32, kSupr = 46;
inline constexpr int kF2 = 113, kF3 = 114, kF5 = 116, kF6 = 117, kF7 = 118;
inline constexpr int kIzquierda = 37, kArriba = 38, kDerecha = 39, kAbajo = 40;
}  // namespace tecla

// Members common to all controls. The constructor adds the control to its form, in tab order.
class Control {
 public:
  Control(Formulario& formulario, Clase clase, std::string nombre, Lugar lugar);
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  Formulario& formulario() const { return formulario_; }
  Clase clase() const { return clase_; }
  const std::string& nombre() const { return nombre_; }

  bool enabled() const { return enabled_; }
  void enabled(bool v);
  bool visible() const { return visible_; }
  void visible(bool v);
  // Not a stop of the Tab key when false (labels, name fields, pop-ups).
  bool tabStop() const { return tabStop_; }
  void tabStop(bool v) { tabStop_ = v; }

  // Twips. A negative width or height raises com::Error kTamanio and changes nothing.
  int left() const { return lugar_.left; }
  int top() const { return lugar_.top; }
  int width() const { return lugar_.width; }
  int height() const { return lugar_.height; }
  void left(int v);
  void top(int v);
  void width(int v);
  void height(int v);

  // Frame or panel that holds the control; none when it stands on the form itself. left and top count from it.
  Control* contenedor() const { return contenedor_; }
  void contenedor(Control& c) { contenedor_ = &c; }
  // Field group of the host's LimpiaGrupo and HabilitaGrupo: 1, 2 or 4; 0 none.
  int grupo() const { return grupo_; }
  void grupo(int v) { grupo_ = v; }
  // Text for assistive tools and tips ("Cliente que paga").
  const std::string& descripcion() const { return descripcion_; }
  void descripcion(std::string v) { descripcion_ = std::move(v); }

  // Enabled and visible, with all its containers, on a shown form.
  bool PuedeEnfocarse() const;
  // Empties an input (host's LimpiaGrupo); nothing for other kinds. Raises the change event like any assignment.
  virtual void Limpia() {}
  // Makes an input editable (host's HabilitaGrupo).
  virtual void Habilita() { enabled(true); }

  // Slot of the view: called after anything that it may show has changed.
  std::function<void()> alAvisar;
  void Avisa() {
    if (alAvisar) alAvisar();
  }

 private:
  Formulario& formulario_;
  Clase clase_;
  std::string nombre_;
  Lugar lugar_;
  bool enabled_ = true, visible_ = true, tabStop_ = true;
  Control* contenedor_ = nullptr;
  int grupo_ = 0;
  std::string descripcion_;
};

// The control as one of a kind (Como<Grid>(c)); null for one of another kind, and for null. The only way from a control
// to its kind.
template <class C>
C* Como(Control* control) {
  return control != nullptr && control->clase() == C::kClase ? static_cast<C*>(control) : nullptr;
}
template <class C>
const C* Como(const Control* control) {
  return control != nullptr && control->clase() == C::kClase ? static_cast<const C*>(control) : nullptr;
}

// What a LookupField's text stands for.
enum class TipoDato { Texto, Numero, Fecha };

// Design properties of a LookupField.
struct DisenoLookup {
  std::string idconsulta{};
  std::string sql{};  // each "?" stands for the typed key, between quotes that the text supplies
  class LookupField* sql_control_resultado = nullptr;
  std::string transaccion{};  // catalogue screen that edits the keys
  bool esclave = false;       // the text is a key: zero-filled with formato when confirmed
  bool mayusculas = false;
  bool tabonenter = true;
  bool locked = false;  // shows only
  TipoDato tipo = TipoDato::Texto;
  int largo = 0;       // most characters that the user can type; 0 no limit
  std::string text{};  // text at design
};

// Entry field with an optional key lookup.
//
// text and valor are two views of one content: valor is the text itself, or for Numero fields a number (Empty when the
// text is empty or no number), for Fecha fields a date. A field that is given a text by program runs its query at once
// and fills its result field, before the change event and without Enter; typing empties the result field before the
// change event. Assigning valor shows it and raises nothing, and runs no query.
class LookupField : public Control {
 public:
  static constexpr Clase kClase = Clase::LookupField;
  LookupField(Formulario& formulario, std::string nombre, Lugar lugar, DisenoLookup diseno = {});

  const std::string& text() const { return text_; }
  void text(std::string v);
  template <std::size_t N>
  void text(const char (&v)[N]) {
    text(std::string(v));
  }
  // Writes a number in its shortest form, a date in the regional short form, NULL and the empty date as an empty text.
  void text(const com::Variant& v);
  void text(int v) { text(com::Variant(v)); }
  void text(double v) { text(com::Variant(v)); }
  com::Variant valor() const;
  void valor(const com::Variant& v);
  const std::string& formato() const { return formato_; }
  void formato(std::string v) { formato_ = std::move(v); }
  const DisenoLookup& diseno() const { return diseno_; }
  bool locked() const { return diseno_.locked; }
  void locked(bool v);
  // "*" shows stars for every character; empty shows the text.
  const std::string& passwordChar() const { return passwordChar_; }
  void passwordChar(std::string v);
  // The user typed and has not confirmed yet.
  bool pendiente() const { return pendiente_; }

  // Runs the lookup again (the refresh operation): fills or empties the result field; nothing without sql.
  void Refresca();
  void Limpia() override;

  // User: replaces the text by typing. Respects mayusculas and largo. Error kTamanio when disabled or locked.
  void Teclea(std::string v);
  // User: confirms the key: zero-fills with formato (a changed text raises Change), looks it up, then raises Enter.
  void Confirma();
  // User: takes back what was typed since the key was last confirmed or assigned, the name beside it too. Raises
  // nothing.
  void Descarta();

  std::function<void()> Change;
  std::function<void()> Enter;

 private:
  void Asigna(std::string v);
  void Busca();

  DisenoLookup diseno_;
  std::string text_;
  std::string formato_;
  std::string passwordChar_;
  bool pendiente_ = false;                  // typed and not confirmed yet
  std::string antesText_, antesResultado_;  // what stood there before
};

// Date entry. Assigning by program shows the date and raises nothing.
class DateField : public Control {
 public:
  static constexpr Clase kClase = Clase::DateField;
  DateField(Formulario& formulario, std::string nombre, Lugar lugar);
  com::Fecha valor() const { return valor_; }
  void valor(com::Fecha v);
  // The switch that makes the field accept input.
  bool editable() const { return editable_; }
  void editable(bool v);
  bool AceptaEntrada() const { return editable_ && enabled(); }
  void Limpia() override;  // leaves 30/12/1899, shown as empty
  void Habilita() override;
  bool Vacio() const { return valor_ == com::Fecha{}; }
  // Short date, "" when empty.
  std::string text() const;

  // User: picks or types a date; raises AlFijar always and AlCambiar when it differs. Error kTamanio when the field
  // accepts no input.
  void Fija(com::Fecha v);
  std::function<void()> AlFijar;
  std::function<void()> AlCambiar;

 private:
  com::Fecha valor_{};
  bool editable_ = true;
};

// Notes: text of several lines with a caret.
class CampoNotas : public Control {
 public:
  static constexpr Clase kClase = Clase::CampoNotas;
  CampoNotas(Formulario& formulario, std::string nombre, Lugar lugar);
  const std::string& text() const { return text_; }
  void text(std::string v);
  // Caret, in characters (code points) from the start.
  int cursor() const { return cursor_; }
  void cursor(int v);
  bool locked() const { return locked_; }
  void locked(bool v);
  void Limpia() override;
  void Habilita() override;
  // User: replaces the text. Error kTamanio when disabled or locked.
  void Teclea(std::string v);
  std::function<void()> Change;
  std::function<void(int codigo, int mayus)> KeyDown;

 private:
  std::string text_;
  int cursor_ = 0;
  bool locked_ = false;
};

class Boton : public Control {
 public:
  static constexpr Clase kClase = Clase::Boton;
  Boton(Formulario& formulario, std::string nombre, Lugar lugar, std::string caption);
  const std::string& caption() const { return caption_; }
  // User: clicks. Error kTamanio when disabled or hidden.
  void Pulsa();
  std::function<void()> Click;

 private:
  std::string caption_;
};

class Casilla : public Control {
 public:
  static constexpr Clase kClase = Clase::Casilla;
  Casilla(Formulario& formulario, std::string nombre, Lugar lugar, std::string caption);
  const std::string& caption() const { return caption_; }
  bool value() const { return value_; }
  // Raises Click when it changes, by program too.
  void value(bool v);
  void Limpia() override;
  // User: toggles.
  void Pulsa();
  std::function<void()> Click;

 private:
  std::string caption_;
  bool value_ = false;
};

// Option button; the options of one container exclude each other.
class Opcion : public Control {
 public:
  static constexpr Clase kClase = Clase::Opcion;
  Opcion(Formulario& formulario, std::string nombre, Lugar lugar, std::string caption, bool value = false);
  const std::string& caption() const { return caption_; }
  bool value() const { return value_; }
  // Selecting deselects the others of its container, then raises Click; selecting the selected one is a no-op.
  void Selecciona();
  // User: clicks; as Selecciona. Error kTamanio when disabled or hidden.
  void Pulsa();
  std::function<void()> Click;

 private:
  std::string caption_;
  bool value_;
};

// Frame or panel.
class Marco : public Control {
 public:
  static constexpr Clase kClase = Clase::Marco;
  Marco(Formulario& formulario, std::string nombre, Lugar lugar, std::string caption = {});
  const std::string& caption() const { return caption_; }

 private:
  std::string caption_;
};

// Caption, or a colour swatch when it has no caption.
class Etiqueta : public Control {
 public:
  static constexpr Clase kClase = Clase::Etiqueta;
  Etiqueta(Formulario& formulario, std::string nombre, Lugar lugar, std::string caption, std::string clave = {});
  const std::string& caption() const { return caption_; }
  void caption(std::string v);
  const std::string& clave() const { return clave_; }
  // 0x00BBGGRR; -1 none. dado: the hotel's own, shown exactly as it is; a designed one may be toned.
  std::int32_t color() const { return color_; }
  bool dado() const { return dado_; }
  void color(std::int32_t v, bool dado = false);

 private:
  std::string caption_, clave_;
  std::int32_t color_ = -1;
  bool dado_ = false;
};

}  // namespace controles
