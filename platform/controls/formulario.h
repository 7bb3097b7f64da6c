// A screen: its controls in tab order, its life (load, show, hide, unload), focus and form-level keys. And Escritorio,
// the one interface to everything that a window system does for the screens.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/com/variant.h"
#include "platform/controls/caja.h"
#include "platform/controls/control.h"

namespace controles {

// Windows, focus, modal waits, text widths, message boxes, the notes editor and catalogue dialogs.
class Escritorio {
 public:
  virtual ~Escritorio() = default;
  // Shows a loaded form; the form's Activa runs from here when its window becomes active.
  virtual void Muestra(Formulario& formulario) = 0;
  // Shows it and returns when it has been hidden or unloaded.
  virtual void MuestraModal(Formulario& formulario) = 0;
  virtual void Oculta(Formulario& formulario) = 0;
  virtual void Descarga(Formulario& formulario) = 0;
  // A control took the focus (Formulario::Enfoca has noted it).
  virtual void Enfoca(Control& control) = 0;
  // Width of a text in the form's font, twips.
  virtual int AnchoTexto(const Formulario& formulario, std::string_view texto) = 0;
  // Lets pending repaints happen.
  virtual void ProcesaPendientes() = 0;
  // Answer: kAceptar, kCancelar, kSi or kNo.
  virtual int Mensaje(const CajaMensaje& caja) = 0;
  // Edited text; the given one when the user cancels. ancho: characters a line.
  virtual std::string EditaNotas(const std::string& titulo, const std::string& texto, int ancho) = 0;
  // Chosen key, "" when cancelled. filas: each a key and a name.
  virtual std::string EligeDeCatalogo(const std::string& titulo,
                                      const std::vector<std::pair<std::string, std::string>>& filas) = 0;
  // A host screen outside this component ("CA014", "MuestraCliente", ...), modal. argumentos as the host got them.
  virtual void AbrePantalla(const std::string& pantalla, const std::vector<com::Variant>& argumentos) = 0;
  // Keystrokes to the active form ("\t" is the Tab key).
  virtual void EnviaTeclas(const std::string& teclas) = 0;
};
// The one in use; com::Error kSinObjeto when none was set.
Escritorio& EscritorioActual();
// Not owned; null takes it away.
void FijaEscritorio(Escritorio* escritorio);

// While it lives, boxes have this detail: what the clerk is to know beyond a text that is fixed.
class ConDetalle {
 public:
  explicit ConDetalle(std::string detalle);
  ~ConDetalle();
  ConDetalle(const ConDetalle&) = delete;
  ConDetalle& operator=(const ConDetalle&) = delete;

 private:
  std::string antes_;
};
const std::string& DetalleActual();

// How LookupFields look a key up: runs the statement and gives the first column of the first row as text, nothing when
// there is no row. Set by the component at start-up.
using Buscador = std::function<std::optional<std::string>(const ado::TextoSQL& sentencia)>;
void FijaBuscador(Buscador buscador);
const Buscador& BuscadorActual();
// Typing is forced to upper case in every text field (host's ForzarMayusculas).
void FijaMayusculas(bool fuerza);
bool MayusculasForzadas();

class Formulario {
 public:
  // Inner size in twips.
  Formulario(std::string nombre, std::string caption, int width, int height);
  virtual ~Formulario() = default;
  Formulario(const Formulario&) = delete;
  Formulario& operator=(const Formulario&) = delete;

  const std::string& nombre() const { return nombre_; }
  const std::string& caption() const { return caption_; }
  int ventana() const { return ventana_; }  // window handle, unique in the process
  int width() const { return width_; }
  int height() const { return height_; }
  bool cargado() const { return cargado_; }
  bool visible() const { return visible_; }

  // In tab order.
  const std::vector<Control*>& controles() const { return controles_; }
  // Null when there is none; case-sensitive.
  Control* Busca(std::string_view nombre) const;
  // The first control of a kind (Primero<Grid>()); null when there is none.
  template <class C>
  C* Primero() const {
    for (Control* c : controles_) {
      if (C* suyo = Como<C>(c)) return suyo;
    }
    return nullptr;
  }

  // Runs Load once, then the grids' InitColumnProps; a failing load leaves the form unloaded and raises the error.
  void Carga();
  // Loads when needed, gives the focus to the first tab stop when no control has it, shows; the modal form returns when
  // the form is hidden.
  void Muestra();
  void MuestraModal();
  void Oculta();
  // Unload, hides, forgets that it was loaded. Nothing when it is not loaded.
  void Descarga();
  // The window became active.
  void Activa();
  // User or window system: new inner size, twips.
  void Redimensiona(int width, int height);

  // Focus. Nothing happens when the control cannot take it (as SetFocus of the screens uses it after a check).
  void Enfoca(Control& control);
  Control* foco() const { return foco_; }
  // How often the focus has been given, to whatever control: tells whether a handler wants it somewhere.
  int vecesEnfocado() const { return vecesEnfocado_; }
  // Next (1) or previous (-1) tab stop, round the form.
  void EnfocaSiguiente(int paso = 1);

  // User: a key on the active control, pressed and released. Pressed, it does what the control's kind does:
  // LookupField: Enter confirms it and moves on (tabonenter), Tab confirms a typed key and moves on; grids and notes
  // have their own key events; a button is clicked by Enter or the space bar. Released, the form sees it (KeyUp) before
  // the control. mayus: 1 Shift, 2 Ctrl. A control that accepts no input ignores keys and characters that would change
  // it.
  void PulsaTecla(int codigo, int mayus = 0) {
    TeclaAbajo(codigo, mayus);
    TeclaArriba(codigo, mayus);
  }
  void TeclaAbajo(int codigo, int mayus = 0);
  void TeclaArriba(int codigo, int mayus = 0);
  // User: one typed character to the active control (appended at the end of a field's text).
  void PulsaCaracter(char32_t caracter);

  // The screen's own fields, for support tools: name and value, in the order of declaration.
  virtual std::vector<std::pair<std::string, com::Variant>> Campos() const { return {}; }

  std::function<void()> Load, Activate, Resize, Unload;
  std::function<void(int codigo, int mayus)> KeyUp;
  std::function<void()> FocusChange;  // another control has the focus, see foco()

  // Slots of the view.
  std::function<void()> alAvisar;

 private:
  friend class Control;
  void EnfocaPrimera();
  void TeclaCampo(class LookupField& campo, int codigo, int paso);
  void TeclaNotas(class CampoNotas& campo, int codigo, int mayus);

  std::string nombre_, caption_;
  int ventana_, width_, height_;
  int vecesEnfocado_ = 0;
  bool cargado_ = false, visible_ = false, descargando_ = false;
  std::vector<Control*> controles_;
  Control* foco_ = nullptr;
};

}  // namespace controles
