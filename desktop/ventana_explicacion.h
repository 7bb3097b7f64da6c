// How the amounts of the reservation came about, in a window: each room line and the footer.
#pragma once

#include <QDialog>
#include <QTableWidget>
#include <vector>

#include "recepcion/explicacion.h"

namespace vista {

class VentanaExplicacion : public QDialog {
 public:
  // primera: which of them is in sight first.
  VentanaExplicacion(const std::vector<recepcion::CuentaExplicada>& explicaciones, std::size_t primera, QWidget* padre);

 private:
  void Agrega(const recepcion::CuentaExplicada& explicacion);

  QTableWidget* tabla_;
};

}  // namespace vista
