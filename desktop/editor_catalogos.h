// The catalogues' dialogs: lists to filter, and an editor of one row.
#pragma once

#include <QDialog>
#include <QString>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "desktop/entradas.h"
#include "host/standalone/conexion.h"

class QFormLayout;
class QLabel;

namespace vista {

// A dialog of named entries.
class Editor : public QDialog {
 public:
  struct Rechazo {
    std::string motivo;
    std::size_t campo = 0;  // entry to correct, in the order in which they were added
  };
  Editor(const QString& titulo, QWidget* padre);
  // explicacion stands over the entry, "" none.
  void Agrega(const QString& titulo, const QString& nombre, const Entrada& entrada, const QString& explicacion = {});
  // Stores the texts; says why not, then what was typed stays and the keyboard goes to the entry to correct. A
  // com::Error is told in the same way.
  std::function<std::optional<Rechazo>(const std::vector<std::string>&)> guarda;
  // Whether the row was stored.
  bool Edita();
  void reject() override;

 private:
  void Guarda();
  void Rechaza(const Rechazo& rechazo);
  std::vector<std::string> Textos() const;

  QFormLayout* forma_;
  QLabel* motivo_;
  std::vector<Entrada> entradas_;
  std::vector<std::string> inicio_;  // as it came up
};

// The sheet that a catalogues' dialog begins with: as autonomo::Pendiente names it; of the parameters a key.
struct HojaInicial {
  std::string tabla, parametro;
};
// The list-and-edit dialog of the catalogues behind a screen of the host; of its configuration the parameters come
// first.
void AbreCatalogos(autonomo::Conexion& conexion, const std::string& codigo, QWidget* padre,
                   const HojaInicial& inicial = {});

}  // namespace vista
