// Views of fields, buttons, boxes, frames and captions.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <optional>
#include <string>

#include "desktop/vista.h"
#include "platform/com/fecha.h"

class QAction;
class QDate;

namespace vista {

QDate ADate(com::Fecha fecha);
com::Fecha DeDate(const QDate& fecha);
// A date as clerks type it: "15/03/2026", "15-3-26", "15/3", "15" (nearest to the base), "15032026", "+3" (days from
// the base). Nothing for anything else.
std::optional<com::Fecha> LeeFecha(const QString& texto, com::Fecha base);

// Key or text entry with its search button; names and totals are shown without a box.
class VistaLookup : public Vista {
 public:
  VistaLookup(controles::LookupField& campo, QWidget* padre, const Contexto& contexto);
  void Refresca() override;
  bool Tecla(const QKeyEvent& evento) override;
  bool Pendiente() const override;
  bool Entrega() override;
  bool Admite() override;
  void Descarta() override;
  void Deja(Qt::FocusReason motivo) override;
  // Opens the search, filtered by a text, and confirms what was chosen.
  void Busca(const QString& filtro = {});

 private:
  void Escribe(const QString& tecleado);
  QString SinDiseno(const QString& texto) const;
  // The key's name is shown beside it, by the screen or by the view.
  bool TieneNombre() const { return vecino_ != nullptr || campo_.diseno().sql_control_resultado != nullptr; }
  // Name of the key that stands in the field; nothing for none, for one that is not confirmed and for one that does not
  // exist.
  std::optional<QString> Nombre() const;
  bool Desconocida() const;
  void DiceNombre();
  // What was typed is no key but part of a name: searched for. False when it is not.
  bool BuscaTecleado();
  // A branch that was typed and does not exist is told, and has the keyboard.
  void CompletaClave();
  bool Retiene();
  // A key that was typed and not confirmed is looked up as if it were, once: when its field is left.
  void Confirma();
  // Opens the record of the key, where the screen has a button for it; false where it has none.
  bool AbreFicha();

  controles::LookupField& campo_;
  QLineEdit* edicion_;
  QAction* lupa_ = nullptr;
  std::string catalogo_;         // see Contexto::catalogo
  QLineEdit* vecino_ = nullptr;  // the name, where the screen shows none
  std::string desconocida_;      // typed, and found not to exist
  QString avisoNombre_;          // told in the place of the name beside it
};

// Date entry: typed, stepped by the arrow keys, or picked from a calendar (F4 or Alt+Down).
class VistaFecha : public Vista {
 public:
  VistaFecha(controles::DateField& campo, QWidget* padre, const Contexto& contexto);
  void Refresca() override;
  bool Tecla(const QKeyEvent& evento) override;
  bool Pendiente() const override { return tecleada_; }
  // False when what was typed is no date: the field says so and keeps it.
  bool Entrega() override;
  void Descarta() override;
  void Deja(Qt::FocusReason motivo) override;
  void AbreCalendario();

 private:
  void Fija(com::Fecha fecha);
  // Enter or Tab; true when the key has done its work.
  bool TeclaDePaso(int mayus);
  void DejaCelda(int mayus);

  controles::DateField& campo_;
  QLineEdit* edicion_;
  QAction* calendario_;
  bool tecleada_ = false;
};

class VistaNotas : public Vista {
 public:
  VistaNotas(controles::CampoNotas& campo, QWidget* padre, const Contexto& contexto);
  void Refresca() override;
  bool Tecla(const QKeyEvent& evento) override;

 private:
  controles::CampoNotas& campo_;
  QPlainTextEdit* edicion_;
  bool refrescando_ = false;
};

class VistaBoton : public Vista {
 public:
  VistaBoton(controles::Boton& boton, QWidget* padre, const Contexto& contexto);
  void Refresca() override;
};

class VistaCasilla : public Vista {
 public:
  VistaCasilla(controles::Casilla& casilla, QWidget* padre, const Contexto& contexto);
  void Refresca() override;
  bool Tecla(const QKeyEvent& evento) override;

 private:
  controles::Casilla& casilla_;
  QCheckBox* caja_;
};

class VistaOpcion : public Vista {
 public:
  VistaOpcion(controles::Opcion& opcion, QWidget* padre, const Contexto& contexto);
  void Refresca() override;
  bool Tecla(const QKeyEvent& evento) override;

 private:
  controles::Opcion& opcion_;
  QRadioButton* boton_;
};

// Frame: a card with a small title, or nothing but a place when it has no caption.
class VistaMarco : public Vista {
 public:
  VistaMarco(controles::Marco& marco, QWidget* padre, const Contexto& contexto);
  void Refresca() override {}
};

// Caption, or a swatch in a state's colour and pattern; the state is the key of the caption before it.
class VistaEtiqueta : public Vista {
 public:
  VistaEtiqueta(controles::Etiqueta& etiqueta, QWidget* padre, const Contexto& contexto);
  void Refresca() override;

 private:
  controles::Etiqueta& etiqueta_;
  QLabel* rotulo_ = nullptr;
  int ancho_ = -1;  // pixels that the caption was last fitted to
};

}  // namespace vista
