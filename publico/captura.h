// What the reservation screen tells of a capture beyond its controls, for what is built around the screens.
#pragma once

#include <functional>
#include <string>

namespace publico {

// What the price of a room line rests on. Acordado: typed by the clerk, or with a discount. Guardado: read with a
// stored reservation. Ninguno: not priced.
enum class OrigenPrecio { Ninguno, Hotel, Acordado, Guardado };

class Captura {
 public:
  virtual ~Captura() = default;
  // Ninguno for a line that is not there, too.
  [[nodiscard]] virtual OrigenPrecio OrigenDe(int fila) const = 0;
  // What a clerk is to know before and after an agreed price is lost: the current cell is a date or the persons of a
  // line whose price would be asked for again; or it was. "" nothing.
  [[nodiscard]] virtual std::string AvisoDePrecio() const = 0;
  // Both are hung on by whoever builds around the screen, and must not raise.
  // A New or an Edit has begun.
  std::function<void()> alEmpezar;
  // Another number of nights is about to take the room lines away.
  std::function<void()> antesDeQuitarRenglones;
};

}  // namespace publico
