#include "desktop/accesible.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QTableView>
#include <QVariant>

namespace vista {

namespace {

constexpr const char* kPapel = "papelAccesible";

class Accesible : public QAccessibleWidget {
 public:
  Accesible(QWidget* w, QAccessible::Role papel) : QAccessibleWidget(w, papel) {}

  QAccessible::State state() const override {
    QAccessible::State estado = QAccessibleWidget::state();
    if (const auto* boton = qobject_cast<QAbstractButton*>(widget())) {
      estado.checkable = boton->isCheckable();
      estado.checked = boton->isChecked();
    }
    return estado;
  }

  QStringList actionNames() const override {
    QStringList acciones = QAccessibleWidget::actionNames();
    if (qobject_cast<QAbstractButton*>(widget()) != nullptr && widget()->isEnabled()) acciones.prepend(pressAction());
    return acciones;
  }

  void doAction(const QString& accion) override {
    auto* boton = qobject_cast<QAbstractButton*>(widget());
    if (boton != nullptr && accion == pressAction()) return boton->click();
    QAccessibleWidget::doAction(accion);
  }
};

QAccessibleInterface* Crea(const QString&, QObject* objeto) {
  auto* w = qobject_cast<QWidget*>(objeto);
  const QVariant papel = objeto->property(kPapel);
  return w != nullptr && papel.isValid() ? new Accesible(w, static_cast<QAccessible::Role>(papel.toInt())) : nullptr;
}

}  // namespace

void FijaPapel(QWidget* widget, QAccessible::Role papel) {
  [[maybe_unused]] static const bool instalada = [] {
    QAccessible::installFactory(Crea);
    return true;
  }();
  widget->setProperty(kPapel, static_cast<int>(papel));
}

void AvisaCelda(QTableView& tabla, const QModelIndex& celda, QAccessible::Event suceso) {
  if (!QAccessible::isActive() || !celda.isValid()) return;
  QAccessibleInterface* interfaz = QAccessible::queryAccessibleInterface(&tabla);
  QAccessibleTableInterface* celdas = interfaz == nullptr ? nullptr : interfaz->tableInterface();
  QAccessibleInterface* cual = celdas == nullptr ? nullptr : celdas->cellAt(celda.row(), celda.column());
  if (cual == nullptr) return;
  QAccessibleEvent evento(cual, suceso);
  QAccessible::updateAccessibility(&evento);
}

}  // namespace vista
