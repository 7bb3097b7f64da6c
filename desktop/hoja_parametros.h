// The sheet of parameters: every key with its value and what it is for.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "host/standalone/conexion.h"
#include "host/standalone/parametros.h"

class QPushButton;

namespace vista {

class TablaFiltrada;

class HojaParametros : public QWidget {
 public:
  HojaParametros(autonomo::Conexion& conexion, QWidget* padre);
  // Chooses the row of a key; nothing for one that is not there.
  void Elige(const std::string& clave);

 private:
  void Carga();
  void AgregaParametro(const autonomo::DefinicionParametro& definicion);
  void Edita();
  void Restablece();
  void Botones();
  // Definition of the chosen row; null for none and for a stored key that does not exist.
  const autonomo::DefinicionParametro* Actual() const;
  // Key of the chosen row; "" none.
  std::string Clave() const;

  autonomo::Conexion& conexion_;
  TablaFiltrada* lista_;
  QPushButton *edita_, *restablece_;
};

}  // namespace vista
