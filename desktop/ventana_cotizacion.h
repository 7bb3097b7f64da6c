// A quote over the telephone in a window: what is asked for above, what is offered below, each change answered at once.
#pragma once

#include <QBoxLayout>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <optional>

#include "desktop/entradas.h"
#include "platform/com/error.h"
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
  // Nothing when what was typed is no day.
  std::optional<com::Fecha> Llegada() const;
  // com::Error kArgumento without an arrival.
  recepcion::Pedido Leido() const;
  void Llena(const recepcion::Pedido& pedido);
  // What comes up, and what was asked for in the fields; why it cannot be quoted stands in the answer's place.
  void Intenta(const recepcion::Pedido& pedido);
  void Calcula();
  void DiceQueNo(const com::Error& e);
  void MuestraLlegada();
  void Vende();
  void Recorre(int paso);

  recepcion::Cotizacion& cotizacion_;
  Entrada llegada_;
  QLineEdit* linea_ = nullptr;  // what the arrival is typed in
  QSpinBox *noches_ = nullptr, *adultos_ = nullptr, *menores_ = nullptr, *infantes_ = nullptr;
  QComboBox* moneda_ = nullptr;
  QTableWidget* tabla_ = nullptr;
  QLabel* nota_ = nullptr;
  QPushButton* exporta_ = nullptr;
};

}  // namespace vista
