// What the reservation screen tells of a capture beyond its controls, for what is built around the screens.
#pragma once

#include <functional>

namespace publico {

class Captura {
 public:
  virtual ~Captura() = default;
  // The amounts of the room line rest on a price that was agreed: typed, discounted, or stored.
  [[nodiscard]] virtual bool PrecioAcordado(int fila) const = 0;
  // Called when a New or an Edit has begun. Must not raise, nor may the next one.
  std::function<void()> alEmpezar;
  // Called before another number of nights takes the room lines away.
  std::function<void()> antesDeQuitarRenglones;
};

}  // namespace publico
