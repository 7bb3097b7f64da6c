// The toolbar of a screen: which actions are offered, the edit mode, and the events that the buttons raise.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls/control.h"

namespace controles {

enum class Accion {
  Nuevo,
  Editar,
  Aceptar,
  Limpiar,
  Cerrar,
  Confirmar,
  Eliminar,
  Reactivar,
  Correo,
  Registro,
  Cancelar
};
// Script and object name of an action: "nuevo", "editar", ... ; Spanish caption: "Nuevo", "Editar", ...
std::string_view NombreAccion(Accion a);
// Nothing for an unknown name.
std::optional<Accion> AccionDe(std::string_view nombre);
// The action leaves what is being captured: nothing half typed stands in its way.
constexpr bool Abandona(Accion a) {
  return a == Accion::Nuevo || a == Accion::Limpiar || a == Accion::Cerrar || a == Accion::Cancelar;
}

// Members as the screens know them. A button is offered by:
//   nuevo PermiteAccion6; editar PermiteAccion4; eliminar PermiteAccion5; correo PermiteAccion1; registro
//   PermiteAccion2; confirmar TituloConfirmar not empty; reactivar PermiteReactivar; aceptar edit mode; limpiar and
//   cerrar always.
// editar, eliminar, correo, registro, confirmar and reactivar act on a record and need ClaveActual besides.
// On a dialog (the board) there are only aceptar and cancelar, always offered.
class ScreenToolbar : public Control {
 public:
  static constexpr Clase kClase = Clase::Barra;
  // acciones: the buttons, in order.
  ScreenToolbar(Formulario& formulario, std::string nombre, Lugar lugar, std::vector<Accion> acciones,
                bool dialogo = false);

  // Edit mode: entered before Nuevo or Editar is raised; left on ConcluyeAceptar and when Limpiar is raised.
  bool EnEdicion() const { return enEdicion_; }
  // The edit in progress is a new record.
  bool EsNuevo() const { return esNuevo_; }

  std::string ClaveActual() const { return claveActual_; }
  void ClaveActual(std::string v);
  std::string TituloConfirmar() const { return tituloConfirmar_; }
  void TituloConfirmar(std::string v);
  bool PermiteAccion1() const { return permite_[1]; }
  bool PermiteAccion2() const { return permite_[2]; }
  bool PermiteAccion4() const { return permite_[4]; }
  bool PermiteAccion5() const { return permite_[5]; }
  bool PermiteAccion6() const { return permite_[6]; }
  bool PermiteReactivar() const { return permite_[0]; }
  void PermiteAccion1(bool v) { Permite(1, v); }
  void PermiteAccion2(bool v) { Permite(2, v); }
  void PermiteAccion4(bool v) { Permite(4, v); }
  void PermiteAccion5(bool v) { Permite(5, v); }
  void PermiteAccion6(bool v) { Permite(6, v); }
  void PermiteReactivar(bool v) { Permite(0, v); }

  // The record shown.
  void CargaClave(const std::string& folio);
  // Answers of the accept handler: stay in edit mode, or leave it.
  void RechazaAceptar();
  void ConcluyeAceptar();
  // The form's window became active; conMenu is what the screen passes (kept for the view).
  void Activa(bool conMenu);

  const std::vector<Accion>& Acciones() const { return acciones_; }
  bool EsDialogo() const { return dialogo_; }
  bool Ofrece(Accion a) const;
  std::string Titulo(Accion a) const;
  // Leaves edit mode and its record without raising anything (a form that loads anew).
  void Reinicia();

  // User: presses a button. Error kTamanio when it is not offered.
  void Pulsa(Accion a);

  std::function<void()> Nuevo, Editar, Limpiar, Cerrar, B1Click, Eliminar, Reactivar, Correo, Registro, Cancelar;
  std::function<void(bool nuevo)> Aceptar;

 private:
  void Permite(int cual, bool v);

  std::vector<Accion> acciones_;
  bool dialogo_;
  bool enEdicion_ = false, esNuevo_ = false;
  std::string claveActual_, tituloConfirmar_;
  bool permite_[7] = {};
};

}  // namespace controles
