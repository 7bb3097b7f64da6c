// What the hotel still lacks, each with the way to the place where it is mended.
#pragma once

#include <QDialog>
#include <vector>

#include "host/standalone/pendientes.h"

class QLabel;
class QPushButton;
class QTableWidget;

namespace vista {

class VentanaPendientes : public QDialog {
 public:
  // How it is left: kHecho once the assistant has made the hotel, which the screens do not know yet.
  enum Salida { kCierra = QDialog::Rejected, kHecho = QDialog::Accepted };

  VentanaPendientes(autonomo::Anfitrion& anfitrion, QWidget* padre);

 private:
  void Lee();
  void Botones();
  // Opens the catalogue, the parameter or the users of the chosen row; the list is read again after it.
  void Arregla();

  autonomo::Anfitrion& anfitrion_;
  std::vector<autonomo::Pendiente> pendientes_;
  QTableWidget* tabla_;
  QPushButton* arregla_;
  QLabel* nota_;
};

}  // namespace vista
