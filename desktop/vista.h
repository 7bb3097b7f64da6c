// A view: one widget bound to one control of a screen. The control holds text, value and switches; the widget shows
// them and hands what the user does to the control's user members.
#pragma once

#include <QDate>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QString>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "desktop/pistas.h"
#include "platform/controls/formulario.h"

namespace vista {

// What a view needs from the desktop.
struct Contexto {
  Pistas pistas;
  // Catalogue that holds a field's keys, as the host's searches name it: that of its own lookup, or the host's where
  // the screen has none (the branch). "" for a field without keys.
  std::function<std::string(const controles::LookupField& campo)> catalogo;
  // Name of a key in a catalogue, "" where the catalogue has no rows; nothing for a key that does not exist.
  std::function<std::optional<QString>(const std::string& catalogo, const std::string& clave)> nombre;
  // Search dialog of a field's keys, filtered by a text; the chosen key, "" when cancelled.
  std::function<std::string(const controles::LookupField& campo, const QString& filtro)> busca;
  // Opens the catalogue screen that edits the field's keys.
  std::function<void(const controles::LookupField& campo)> abreCatalogo;
  // The host's own screens, offered at the end of the main toolbar.
  struct Opcion {
    QString titulo;
    std::function<void()> abre;
    int tecla = 0;           // Qt key, with its modifiers, that opens it from the main window; 0 none
    const char* grupo = "";  // caption of the menu's part that holds it; "" the menu itself
  };
  std::vector<Opcion> menu;
  // The hotel is there to practise in, and says so.
  bool demo = false;
  // State of a stored reservation in words ("Cancelada").
  std::function<QString(const std::string& folio)> estado;
  // What was done last to a reservation, and its folio; both empty as long as nothing was.
  struct Novedad {
    QString texto, folio;
  };
  std::function<Novedad()> novedad;
  // Why a cell of a board is as it is, in several lines: who holds it, and what is free instead; "" for one that needs
  // no words.
  std::function<QString(const controles::Grid& grid, int fila, int columna)> porque;
  // The server's date.
  std::function<QDate()> hoy;
  QDate Hoy() const { return hoy ? hoy() : QDate::currentDate(); }
  // How the amounts of a room line came about, as a tip; of the footer with -1. "" where nothing can be said.
  std::function<QString(int fila)> explica;
  // The line's price was agreed: it would be lost when dates or persons are typed.
  std::function<bool(int fila)> acordado;
  // What is to be known before and after that, and of lines that were taken away; "" nothing.
  std::function<QString()> avisoDeRenglones;
  // Why no draft of what is captured can be kept, to be seen as long as it cannot; "" it can.
  std::function<QString()> sinBorrador;
  // A person works at the window, no script.
  bool interactivo = true;
};

inline QString Q(const std::string& texto) { return QString::fromStdString(texto); }
inline QString Q(std::string_view texto) {
  return QString::fromUtf8(texto.data(), static_cast<qsizetype>(texto.size()));
}

// A frame without caption that holds a date: laid over a grid while one of its cells is edited.
bool Flota(const controles::Control& control);

class Vista {
 public:
  Vista(controles::Control& control, const Contexto& contexto) : control_(control), contexto_(contexto) {}
  virtual ~Vista() { Vista::Suelta(); }
  Vista(const Vista&) = delete;
  Vista& operator=(const Vista&) = delete;

  controles::Control& control() const { return control_; }
  // The outer widget, placed by the window; owned by its parent widget.
  QWidget* widget() const { return widget_; }
  // Takes the keyboard focus for the control.
  virtual QWidget* foco() const { return widget_; }
  // Shows what the control holds.
  virtual void Refresca() = 0;
  // The control tells the view of its changes no more: another view may take its place.
  virtual void Suelta() {
    if (std::exchange(suelta_, true)) return;
    control_.alAvisar = nullptr;
  }
  // A key pressed in the widget; true when it is dealt with. Keys that are no characters go to the form.
  virtual bool Tecla(const QKeyEvent& evento);
  // The widget holds what the control does not know yet: a date half typed, a key not confirmed.
  virtual bool Pendiente() const { return false; }
  // Hands it over. False when it cannot be: the user is told, and stays.
  virtual bool Entrega() { return true; }
  // Forgets it.
  virtual void Descarta() {}
  // The text that is pending and that the control knows nothing of; nothing where there is none. And typed again, to be
  // handed over when the field is left.
  virtual std::optional<QString> Tecleado() const { return std::nullopt; }
  virtual void Teclea(const QString& /*texto*/) {}
  // Whether what the control holds may be stored. False when it may not: the user is told, and goes there.
  virtual bool Admite() { return true; }
  // What a press at that point of one of the view's widgets acts on, settled before anything moves; run once what was
  // pending elsewhere is handed over. Null where the press is the widget's own to deal with.
  virtual std::function<void()> Blanco(QWidget& /*donde*/, const QMouseEvent& /*evento*/) { return nullptr; }
  // The focus left the widget.
  virtual void Deja(Qt::FocusReason) {}

 protected:
  // Called once by the constructor of each kind.
  void Adopta(QWidget* widget);
  const Contexto& contexto() const { return contexto_; }
  controles::Formulario& formulario() const { return control_.formulario(); }
  // Says below the widget what is wrong with what it holds.
  void Dice(const QString& texto) const;
  // The form's key handling, guarded.
  void PasaTecla(int codigo, int mayus = 0);

 private:
  controles::Control& control_;
  const Contexto& contexto_;
  QWidget* widget_ = nullptr;
  bool suelta_ = false;
};

// The view as one of a kind (Como<VistaGrid>(v)); null for one of another kind, and for null. The only way from a view
// to its kind, which is its control's.
template <class V>
V* Como(Vista* vista) {
  return vista != nullptr && vista->control().clase() == V::kClase ? static_cast<V*>(vista) : nullptr;
}

// The view for a control by its class, inside the given parent.
std::unique_ptr<Vista> CreaVista(controles::Control& control, QWidget* padre, const Contexto& contexto);

}  // namespace vista
