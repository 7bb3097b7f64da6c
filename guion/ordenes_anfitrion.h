// The orders that reach behind the screens: the host's set-up, its lists and its database, faults that are to happen.
#pragma once

#include "guion/alcance.h"

namespace guion {

class OrdenesAnfitrion {
 public:
  explicit OrdenesAnfitrion(Alcance& alcance) : alcance_(alcance), piezas_(alcance.piezas) {}
  OrdenesAnfitrion(const OrdenesAnfitrion&) = delete;
  OrdenesAnfitrion& operator=(const OrdenesAnfitrion&) = delete;

  std::vector<Orden> Ordenes();
  // What the host was called for and what it recorded; nothing for another name.
  std::optional<Json> Muestra(const std::string& que);

 private:
  void Parametro(const Palabras& p);
  void Permiso(const Palabras& p);
  void Cambio(const Palabras& p);
  void Impuesto(const Palabras& p);
  void Tarifa(const Palabras& p);
  void Plantilla(const Palabras& p);
  void Direccion(const Palabras& p);
  void Ahora(const Palabras& p);
  void Lista(const Palabras& p);
  void Reenvia(const Palabras& p);
  void Sql(const Palabras& p);
  void Falla(const Palabras& p);
  void FallaGrid(const Palabras& p);

  Alcance& alcance_;
  const Piezas& piezas_;
};

}  // namespace guion
