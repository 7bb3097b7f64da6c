// The tape chart in a window: period, zoom, chart.
#pragma once

#include <QBoxLayout>
#include <QComboBox>
#include <QDialog>
#include <QLabel>

#include "desktop/tabla_cuadro.h"
#include "recepcion/cuadro.h"

namespace vista {

class VentanaCuadro : public QDialog {
 public:
  // How it is left.
  enum Salida { kCierra = QDialog::Rejected, kAbre = QDialog::Accepted, kReserva };
  // What was picked: a bar, or free nights of a room.
  struct Eleccion {
    recepcion::Barra barra;
    int fila = -1;
    com::Fecha desde, hasta;
  };

  VentanaCuadro(recepcion::Cuadro& cuadro, QWidget* padre);
  void Actualiza();
  void Muestra(com::Fecha desde, int noches);
  TablaCuadro& tabla() { return *tabla_; }
  const Eleccion& eleccion() const { return eleccion_; }
  QString Nota() const { return nota_->text(); }

 protected:
  void keyPressEvent(QKeyEvent* evento) override;

 private:
  void CreaCabeza(QBoxLayout& caja);
  void CreaTablaYNota(QBoxLayout& caja);
  void Mueve(int dias);
  void VaAHoy();
  void Elige(const recepcion::Barra& barra);

  recepcion::Cuadro& cuadro_;
  QLabel* titulo_ = nullptr;
  QComboBox* zoom_ = nullptr;
  TablaCuadro* tabla_ = nullptr;
  QLabel* nota_ = nullptr;
  Eleccion eleccion_;
};

}  // namespace vista
