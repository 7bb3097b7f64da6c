// The guest's search in a window, and the entry of a client who is not there, next to those who may be the same person.
#pragma once

#include <QBoxLayout>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <vector>

#include "recepcion/huespedes.h"

namespace vista {

class VentanaHuesped : public QDialog {
 public:
  // How it is left: nobody, the person pointed at, one of his reservations, a new client to be entered.
  enum Salida { kCierra = QDialog::Rejected, kElige = QDialog::Accepted, kAbre, kNuevo };

  // huespedes: opened, with what was searched for last.
  VentanaHuesped(recepcion::Huespedes& huespedes, QWidget* padre);
  // Shows what the model holds.
  void Muestra();
  // Row of the reservation to open, of huespedes.reservaciones().
  int Visita() const { return visitas_->currentRow(); }
  bool ConHabitacion() const { return habitacion_->isChecked() && habitacion_->isEnabled(); }
  bool ConNotas() const { return notas_->isChecked() && notas_->isEnabled(); }
  QString Nota() const { return nota_->text(); }

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;

 private:
  void CreaBusqueda(QBoxLayout& caja);
  void CreaUltima(QBoxLayout& caja);
  void CreaBotones(QBoxLayout& caja);
  void MuestraSenalado();
  void Busca(const QString& texto);
  void Senala(int fila);
  void Elige();
  void AbreVisita();

  recepcion::Huespedes& huespedes_;
  QLineEdit* busqueda_ = nullptr;
  QTableWidget* personas_ = nullptr;
  QLabel* nota_ = nullptr;
  QLabel* ultima_ = nullptr;
  QCheckBox *habitacion_ = nullptr, *notas_ = nullptr;
  QTableWidget* visitas_ = nullptr;
  QPushButton* elige_ = nullptr;
};

class VentanaClienteNuevo : public QDialog {
 public:
  // kParecida: one who is there already was chosen; the model points at him.
  enum Salida { kCierra = QDialog::Rejected, kCreado = QDialog::Accepted, kParecida };

  VentanaClienteNuevo(recepcion::Huespedes& huespedes, QWidget* padre);
  void Escribe(const recepcion::Persona& persona);
  // Those to whom the one that is written here is similar, as they are shown.
  const std::vector<recepcion::Parecida>& parecidas() const { return parecidas_; }
  // What is wrong, or what is to be decided.
  QString Nota() const { return nota_->text(); }
  // It was not stored because there are similar ones.
  bool Pregunta() const { return pregunta_; }
  // Stores; with similar ones there only when aunqueParezca. True when it is done.
  bool Guarda(bool aunqueParezca);
  void reject() override;

 protected:
  void keyPressEvent(QKeyEvent* evento) override;

 private:
  void CreaCampos(QBoxLayout& caja);
  void CreaParecidas(QBoxLayout& caja);
  void CreaBotones(QBoxLayout& caja);
  recepcion::Persona Escrita() const;
  void MuestraParecidas();
  void EligeParecida();
  void Dice(const QString& texto);

  recepcion::Huespedes& huespedes_;
  QLineEdit *clave_ = nullptr, *nombre_ = nullptr, *telefono_ = nullptr, *correo_ = nullptr;
  QLabel* nota_ = nullptr;
  QLabel* rotulo_ = nullptr;
  QTableWidget* tabla_ = nullptr;
  QPushButton *guarda_ = nullptr, *aunque_ = nullptr;
  std::vector<recepcion::Parecida> parecidas_;
  bool pregunta_ = false;
  bool escrito_ = false;  // by a person, since it came up
};

}  // namespace vista
