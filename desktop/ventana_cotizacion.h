// A quote over the telephone in a window: what is asked for above, what is offered below, each change answered at once.
#pragma once

#include <QBoxLayout>
#include <QComboBox>
#include <QDateEdit>
#include <QDialog>
#include <QLabel>
#include <QSpinBox>
#include <QTableWidget>

#include "recepcion/cotizacion.h"

namespace vista {

class VentanaCotizacion : public QDialog {
 public:
  VentanaCotizacion(recepcion::Cotizacion& cotizacion, QWidget* padre);
  // Asks for that, as if it had been typed.
  void Pide(const recepcion::Pedido& pedido);
  // Offer to be sold; -1 none.
  int Elegida() const { return tabla_->currentRow(); }

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;

 private:
  void CreaPedido(QBoxLayout& caja);
  QSpinBox* Numero(QBoxLayout& fila, const QString& titulo, const char* nombre, int menor, int mayor);
  recepcion::Pedido Leido() const;
  void Llena(const recepcion::Pedido& pedido);
  void Intenta(const recepcion::Pedido& pedido);
  void Vende();
  void Recorre(int paso);

  recepcion::Cotizacion& cotizacion_;
  QDateEdit* llegada_ = nullptr;
  QSpinBox *noches_ = nullptr, *adultos_ = nullptr, *menores_ = nullptr, *infantes_ = nullptr;
  QComboBox* moneda_ = nullptr;
  QTableWidget* tabla_ = nullptr;
  QLabel* nota_ = nullptr;
};

}  // namespace vista
