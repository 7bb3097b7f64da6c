// The desktop's own dialogs: message boxes, notes editor, catalogue search.
#pragma once

#include <QDialog>
#include <QMessageBox>
#include <QString>
#include <QStringList>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/controls/formulario.h"

class QDialogButtonBox;
class QLineEdit;
class QListWidget;
class QLabel;
class QPlainTextEdit;

namespace vista {

// Message box by the platform's style bits, with Spanish buttons and the identifier in small print.
class CajaAviso : public QMessageBox {
 public:
  CajaAviso(const controles::CajaMensaje& caja, QWidget* padre);
  // controles::kAceptar, kCancelar, kSi or kNo; Esc and the close button refuse.
  int Pregunta();
  // The button of an answer; null when the box has none.
  QPushButton* Boton(int respuesta) const;

 private:
  void CreaBotones(int estilo);

  std::vector<std::pair<int, QPushButton*>> botones_;
};

// Editor of notes, ancho characters a line.
class EditorNotas : public QDialog {
 public:
  EditorNotas(const QString& titulo, const QString& texto, int ancho, QWidget* padre);
  // The notes are only shown.
  void SoloLee();
  QString Texto() const;
  // Whether it differs from what it was opened with.
  bool Cambio() const;
  void reject() override;

 private:
  QPlainTextEdit* edicion_;
  QLabel* ayuda_;
  QString texto_;  // as it was
};

// Search over rows of key and name: type to filter, arrows, Enter. Says so when nothing fits.
class Busqueda : public QDialog {
 public:
  using Filas = std::vector<std::pair<std::string, std::string>>;
  Busqueda(const QString& titulo, Filas filas, QWidget* padre);
  // Filters as if the text had been typed.
  void Filtra(const QString& texto);
  // Key of the chosen row; empty when the search was cancelled.
  std::string Elegida() const { return elegida_; }

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  void Lista(const QString& texto);
  void Elige();

  Filas filas_;
  QLineEdit* filtro_;
  QListWidget* lista_;
  QLabel* nada_;
  QDialogButtonBox* botones_;
  std::string elegida_;
};

// Shows the dialog until it is answered; gives exec()'s result. Its owner has the keyboard again, also on a display
// without a window manager.
int Atiende(QDialog& dialogo);

namespace caja = controles::caja;
// A box of the program's own with one button; icono: kCritico, kAviso or kInforme.
void Avisa(const std::string& texto, int icono, QWidget* padre, const char* titulo = "Reservaciones");
// One with Yes and No, where Enter says no; icono: kPregunta or kAviso.
[[nodiscard]] bool Confirma(const std::string& pregunta, int icono, QWidget* padre);
// Whether a dialog may be left: asks where something was typed in it that is stored nowhere.
[[nodiscard]] bool PermiteDejar(bool hayAlgo, QWidget* padre);

// What a dialog is called, by people and by tests, and that it keeps the window that it belongs to, or all, waiting.
void Presenta(QDialog& dialogo, const QString& titulo, const char* nombre = "");
// Gives a dialog this size, or what the screen has room for.
void AjustaAPantalla(QDialog& dialogo, QSize deseado);

// What a filter holds, to be found in rows as the front desk's search finds it, without case, accents and signs: each
// part between blanks anywhere in the row.
class Buscado {
 public:
  explicit Buscado(const QString& texto);
  bool Esta(const QString& fila) const;

 private:
  std::vector<std::pair<QString, QString>> partes_;  // each also without its apostrophes
};

}  // namespace vista
