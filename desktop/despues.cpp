#include "desktop/despues.h"

#include <QTimer>
#include <utility>

namespace vista {

void Despues(QObject& de, std::function<void()> accion) {
  auto* reloj = new QTimer(&de);
  reloj->setSingleShot(true);
  QObject::connect(reloj, &QTimer::timeout, &de, [reloj, accion = std::move(accion)] {
    reloj->deleteLater();
    accion();
  });
  reloj->start(0);
}

}  // namespace vista
