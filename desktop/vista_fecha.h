// View of a date field.
#pragma once

#include <QLineEdit>

#include "desktop/vista.h"

class QAction;

namespace vista {

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
  std::optional<QString> Tecleado() const override;
  void Teclea(const QString& texto) override;
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

}  // namespace vista
