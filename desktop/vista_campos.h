// Views of fields, buttons, boxes, frames and captions; the fields of keys and of dates have files of their own.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>

#include "desktop/fechas.h"
#include "desktop/vista.h"
#include "desktop/vista_fecha.h"
#include "desktop/vista_lookup.h"

namespace vista {

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
