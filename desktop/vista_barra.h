// View of a screen's toolbar: one button for each action, with icon, caption and shortcut; at its end the record that
// is shown with its state, and below what was done last, which stays and opens its reservation again.
#pragma once

#include <QKeySequence>
#include <QLabel>
#include <QToolButton>
#include <map>
#include <utility>
#include <vector>

#include "desktop/vista.h"
#include "platform/controls/barra.h"

namespace vista {

// Shortcut of an action; empty when it has none.
QKeySequence AtajoDe(controles::Accion accion, bool dialogo);
// All of them, as a clerk reads them, and what they do.
std::vector<std::pair<QString, QString>> AtajosDeLaBarra();
// How a clerk reads it ("Ctrl+Mayús+X"), whatever the toolkit's language.
QString NombreDeAtajo(const QKeySequence& atajo);

class VistaBarra : public Vista {
 public:
  static constexpr controles::Clase kClase = controles::Clase::Barra;
  VistaBarra(controles::ScreenToolbar& barra, QWidget* padre, const Contexto& contexto);
  void Refresca() override;
  QToolButton* boton(controles::Accion accion) const;
  // Shows whether a draft can be kept; why not is told when that begins.
  void RefrescaBorrador();
  // Presses a button as the user does. False when it is not offered, or was kept from acting.
  bool Pulsa(controles::Accion accion);
  // Asked before an action: what is half typed is ended there; false keeps the action from running.
  std::function<bool(controles::Accion)> antesDePulsar;
  // Called once the action is done; the bar shows its state already.
  std::function<void(controles::Accion)> despuesDePulsar;

 private:
  QString EstadoDe(const std::string& folio) const;
  QToolButton* CreaBoton(controles::Accion accion);
  void CreaAtajo(controles::Accion accion);
  QToolButton* CreaMenu();  // the host's own screens
  QWidget* CreaLado();
  void CreaNovedad(QWidget* padre);
  void RefrescaLado();
  static QString Abreviada(const QString& texto, const QFontMetrics& medidas, int ancho);
  void AbreNovedad();

  controles::ScreenToolbar& barra_;
  std::string folio_;  // whose state is shown
  QString estado_;
  std::map<controles::Accion, QToolButton*> botones_;
  QLabel* mostrada_ = nullptr;      // the record that is shown
  QLabel* distintivo_ = nullptr;    // the record's state
  QToolButton* novedad_ = nullptr;  // what was done last
  QAction* abre_ = nullptr;
  QLabel* sinBorrador_ = nullptr;  // no draft can be kept
};

}  // namespace vista
