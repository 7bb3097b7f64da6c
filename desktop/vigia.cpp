#include "desktop/vigia.h"

#include <QTimer>
#include <iterator>
#include <utility>

namespace vista {

Vigia::Vigia(std::function<std::vector<std::string>()> toma, std::function<bool()> ocupada,
             std::function<void(const std::string&)> dice, int cadaMs)
    : toma_(std::move(toma)), ocupada_(std::move(ocupada)), dice_(std::move(dice)) {
  QTimer::singleShot(0, this, [this] { Mira(); });
  auto* reloj = new QTimer(this);
  QObject::connect(reloj, &QTimer::timeout, this, [this] { Mira(); });
  reloj->start(cadaMs);
}

void Vigia::Mira() {
  auto nuevas = toma_();
  std::move(nuevas.begin(), nuevas.end(), std::back_inserter(pendientes_));
  while (!pendientes_.empty() && !ocupada_()) {
    const std::string noticia = std::move(pendientes_.front());
    pendientes_.erase(pendientes_.begin());
    dice_(noticia);
  }
}

}  // namespace vista
