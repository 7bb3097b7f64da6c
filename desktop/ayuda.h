// The manual inside the program: F1 opens it at the place that fits what has the keyboard; beside it, the keys that the
// program's own tables hold.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <vector>

#include "desktop/lista_teclas.h"

namespace vista {

// Chapter of the manual for a widget: that of the nearest of its ancestors up to its window, itself included, that has
// one; "" none. As an anchor ("el-día").
QString LugarDelManual(const QWidget* widget);
// Anchors of the manual's chapters, in order.
QStringList CapitulosDelManual();
// Shows the manual at a chapter, "" its beginning, until it is closed.
void AbreManual(const QString& lugar, const std::vector<TeclaUsada>& teclas, QWidget* padre);

// While it lives, F1 in any window opens the manual; the windows see none of it.
class TeclaAyuda : public QObject {
 public:
  // teclas: what the list of keys holds now.
  explicit TeclaAyuda(std::function<std::vector<TeclaUsada>()> teclas);
  void Abre();

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  std::function<std::vector<TeclaUsada>()> teclas_;
  bool abierta_ = false;
};

}  // namespace vista
