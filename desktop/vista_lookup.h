// View of a field of keys, texts or numbers, with its search and the name beside it.
#pragma once

#include <QLineEdit>
#include <QString>
#include <optional>
#include <string>

#include "desktop/vista.h"

class QAction;

namespace vista {

// Key or text entry with its search button; names and totals are shown without a box.
class VistaLookup : public Vista {
 public:
  VistaLookup(controles::LookupField& campo, QWidget* padre, const Contexto& contexto);
  void Refresca() override;
  bool Tecla(const QKeyEvent& evento) override;
  bool Pendiente() const override;
  bool Entrega() override;
  bool Admite() override;
  void Descarta() override;
  void Deja(Qt::FocusReason motivo) override;
  // Opens the search, filtered by a text, and confirms what was chosen.
  void Busca(const QString& filtro = {});

 private:
  void CreaVecino();
  void CreaLupa();
  void LimitaCifras();
  void AtiendeMenu();
  void AbreCatalogo();
  void Escribe(const QString& tecleado);
  QString SinDiseno(const QString& texto) const;
  // The key's name is shown beside it, by the screen or by the view.
  bool TieneNombre() const { return vecino_ != nullptr || campo_.diseno().sql_control_resultado != nullptr; }
  // Name of the key that stands in the field; nothing for none, for one that is not confirmed and for one that does not
  // exist.
  std::optional<QString> Nombre() const;
  // What a field holds by design ("%" for all) is no key.
  bool HayClave() const;
  bool Desconocida() const;
  void DiceNombre();
  // What was typed is no key but part of a name: searched for. False when it is not.
  bool BuscaTecleado();
  // A branch that was typed and does not exist is told, and has the keyboard.
  void CompletaClave();
  bool Retiene();
  // A key that was typed and not confirmed is looked up as if it were, once: when its field is left.
  void Confirma();
  // Opens the record of the key, where the screen has a button for it; false where it has none.
  bool AbreFicha();

  controles::LookupField& campo_;
  QLineEdit* edicion_;
  QAction* lupa_ = nullptr;
  std::string catalogo_;         // see Contexto::catalogo
  QLineEdit* vecino_ = nullptr;  // the name, where the screen shows none
  std::string desconocida_;      // typed, and found not to exist
  QString avisoNombre_;          // told in the place of the name beside it
};

}  // namespace vista
