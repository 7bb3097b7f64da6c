// The orders about what is kept of a capture: its draft, and the room lines that a change of nights took away.
#pragma once

#include "guion/alcance.h"
#include "recepcion/borrador.h"

namespace guion {

class OrdenesCaptura {
 public:
  explicit OrdenesCaptura(Alcance& alcance) : alcance_(alcance), piezas_(alcance.piezas) {}
  OrdenesCaptura(const OrdenesCaptura&) = delete;
  OrdenesCaptura& operator=(const OrdenesCaptura&) = delete;

  std::vector<Orden> Ordenes();
  // Draft, lines, and what the clerk is to know of an agreed price; nothing for another name.
  std::optional<Json> Muestra(const std::string& que);
  // From now on lines that are taken away on this screen are kept.
  void Vigila(controles::Formulario& pantalla) { quitados_.Vigila(pantalla); }

 private:
  void Borrador(const Palabras& p);
  void Repone(const Palabras& p);

  Alcance& alcance_;
  const Piezas& piezas_;
  recepcion::RenglonesQuitados quitados_;
  std::string borrador_;  // as text; "" none
};

}  // namespace guion
