// The in-process component as any host reaches it: its library is loaded, its class object gives Pantalla, Pantalla
// gives the screen.
#pragma once

#include <string>

#include "component/pantalla.h"

namespace guion {

class Componente {
 public:
  // Loads the library and enters its class in the registry. Error kClase when that is not possible.
  Componente();
  // Unloads the screen.
  ~Componente();
  Componente(const Componente&) = delete;
  Componente& operator=(const Componente&) = delete;

  // Creates Pantalla (once), reads GetPantalla, hands the screen its owner and shows it. Error kClase when the
  // component gives no screen; the load's own failures.
  void Abre(const com::Ptr<com::Despacho>& padre);
  void Cierra();

  // Whether the screen exists, shown or not.
  bool Creada() const { return static_cast<bool>(pantalla_); }
  bool Abierta() const { return Creada() && pantalla_->formulario().cargado(); }
  // Error kSinObjeto before the first Abre.
  kv207::PantallaReservacion& pantalla() const;
  controles::Formulario& formulario() const { return pantalla().formulario(); }
  controles::Formulario& tablero() const { return pantalla().tablero(); }
  // The form that takes the clerk's input: the board while it is shown, else the screen; null when neither is.
  controles::Formulario* Activo() const;

  // Whether another GetPantalla gives the same object.
  bool MismaPantalla() const;
  com::Variant Modulo() const;
  std::string Transaccion() const;

 private:
  com::Ptr<com::Despacho> objeto_;
  com::Ptr<kv207::PantallaReservacion> pantalla_;
};

}  // namespace guion
