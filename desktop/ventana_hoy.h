// The front desk's day in a window: a search over all reservations, the day's lists with their counts, free rooms.
#pragma once

#include <QBoxLayout>
#include <QDate>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTableWidget>

#include "desktop/vista.h"
#include "recepcion/hoy.h"

namespace vista {

// "lunes 9 de marzo de 2026".
QString DiaEnPalabras(QDate dia);

class VentanaHoy : public QDialog {
 public:
  // How it is left.
  enum Salida { kCierra = QDialog::Rejected, kAbre = QDialog::Accepted, kNueva, kCuadro, kCotiza };

  VentanaHoy(recepcion::Hoy& hoy, const Contexto& contexto, QWidget* padre);
  // Reads the day anew.
  void Actualiza();
  // Row to be opened, of hoy.filas(); -1 none.
  int Elegida() const { return tabla_->currentRow(); }
  // What stands under the rows ("3 reservaciones").
  QString Nota() const { return nota_->text(); }

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;

 private:
  void CreaCabeza(QBoxLayout& caja);
  void CreaListas(QBoxLayout& caja);
  void CreaLibres(QBoxLayout& caja);
  void CreaBotones(QBoxLayout& caja);
  void MuestraDia();
  void MuestraFilas();
  void MuestraLibres();
  void Busca(const QString& texto);
  void Elige(int lista);
  void Abre();
  // Prepares the search bit by bit while a person reads.
  void PreparaBusqueda();

  recepcion::Hoy& hoy_;
  const Contexto& contexto_;
  QLabel* titulo_ = nullptr;
  QLineEdit* busqueda_ = nullptr;
  QTabBar* listas_ = nullptr;
  QTableWidget* tabla_ = nullptr;
  QLabel* nota_ = nullptr;
  QTableWidget* libres_ = nullptr;
};

}  // namespace vista
