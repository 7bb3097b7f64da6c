// The figures in a window: period and branch above, a plot, a table with the numbers that it draws.
#pragma once

#include <QBoxLayout>
#include <QComboBox>
#include <QDateEdit>
#include <QDialog>
#include <QLabel>
#include <QTableWidget>

#include "desktop/grafica.h"
#include "recepcion/cifras.h"

namespace vista {

class VentanaCifras : public QDialog {
 public:
  VentanaCifras(recepcion::Cifras& cifras, QWidget* padre);
  // Asks for that, as if it had been chosen; com::Error when it cannot be had, and what is shown stays.
  void Pide(const recepcion::PedidoCifras& pedido);

 protected:
  void keyPressEvent(QKeyEvent* evento) override;

 private:
  void CreaPedido(QBoxLayout& caja);
  void CreaResultado(QBoxLayout& caja);
  QDateEdit* Fecha(QBoxLayout& fila, const QString& titulo, const char* nombre);
  QComboBox* Lista(QBoxLayout& fila, const QString& titulo, const char* nombre);
  recepcion::PedidoCifras Leido() const;
  bool PorMes() const;
  const std::vector<recepcion::CuentaDe>& Cuentas() const;
  void Calcula();
  void MueveMes(int meses);
  void MuestraTodo();
  void MuestraResumen();
  void MuestraTabla();
  void MuestraGrafica();

  recepcion::Cifras& cifras_;
  QDateEdit *desde_ = nullptr, *hasta_ = nullptr;
  QComboBox *sucursal_ = nullptr, *por_ = nullptr, *que_ = nullptr;
  QLabel* resumen_ = nullptr;
  Grafica* grafica_ = nullptr;
  QTableWidget* tabla_ = nullptr;
  QLabel* nota_ = nullptr;
};

}  // namespace vista
