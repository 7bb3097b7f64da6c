// Read-only tables and the dialogs that show them.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QStringList>
#include <QTableWidget>
#include <QVBoxLayout>
#include <functional>
#include <utility>
#include <vector>

namespace vista {

QTableWidget* CreaTabla(const QStringList& titulos, QWidget* padre);
// A line in the colour of hints, "nota", at the end of the box.
QLabel* AgregaNota(QBoxLayout& caja, QWidget* padre);
// A table and such a line below it. nombre: the table's object; titulo: what a screen reader says of it, "" nothing
// yet. parte: the table's share of the room.
std::pair<QTableWidget*, QLabel*> AgregaTablaYNota(QBoxLayout& caja, const QStringList& titulos, const char* nombre,
                                                   const QString& titulo, int parte, QWidget* padre);
// A line to search in, "busca", at the end of the box. sugerencia: what may be searched for.
QLineEdit* AgregaBusqueda(QBoxLayout& caja, const QString& titulo, const QString& sugerencia, QWidget* padre);
// apagada: in the colour of hints. derecha: columns whose texts stand at the right, under captions that do.
void AgregaFila(QTableWidget* tabla, const QStringList& textos, bool apagada = false,
                const std::vector<int>& derecha = {});

// For the event filter of a line that filters a table: hands on to the table the keys that walk it; whether this was
// one.
bool RecorreTabla(QEvent* evento, QTableWidget* tabla);

// A dialog with a close button.
class Ficha : public QDialog {
 public:
  Ficha(const QString& titulo, QWidget* padre);
  QVBoxLayout* caja() { return caja_; }
  // Text at the head, as it stands.
  void Titula(const QString& texto);
  // The button; conEnter: Enter presses it, where there is nothing else that it could mean.
  void Termina(bool conEnter = false);

 private:
  QVBoxLayout* caja_;
};

// A table under a line that filters it: every word must be found in the row. Up and Down walk it from the filter, Enter
// and a double click open a row.
class TablaFiltrada : public QWidget {
 public:
  TablaFiltrada(const QStringList& titulos, const QString& nombre, QWidget* padre);
  QTableWidget* tabla() { return tabla_; }
  // Row that is chosen and in sight; -1 none.
  int Actual() const;
  // After the rows have changed.
  void Filtra();

  std::function<void()> alAbrir;
  std::function<void()> alElegir;  // another row, or none

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  QLineEdit* filtro_;
  QTableWidget* tabla_;
};

}  // namespace vista
