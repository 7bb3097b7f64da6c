// The sheet of users: who may enter, with what rights.
#pragma once

#include <QWidget>
#include <string>

#include "host/standalone/usuarios.h"

class QPushButton;

namespace vista {

class TablaFiltrada;

class HojaUsuarios : public QWidget {
 public:
  HojaUsuarios(autonomo::Conexion& conexion, QWidget* padre);

 private:
  void Carga();
  void Edita(autonomo::FichaUsuario vista);  // an empty one: a new user
  void EditaActual();

  autonomo::Conexion& conexion_;
  TablaFiltrada* lista_;
  QPushButton *nuevo_, *edita_;
};

}  // namespace vista
