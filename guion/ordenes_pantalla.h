// The orders of the two screens: what a clerk does to their controls and grids, and what she sees of them.
#pragma once

#include "guion/alcance.h"

namespace guion {

class OrdenesPantalla {
 public:
  explicit OrdenesPantalla(Alcance& alcance) : alcance_(alcance), piezas_(alcance.piezas) {}
  OrdenesPantalla(const OrdenesPantalla&) = delete;
  OrdenesPantalla& operator=(const OrdenesPantalla&) = delete;

  std::vector<Orden> Ordenes();
  // A control, or a part of a screen by the name that the manual gives it. com::Error when there is none.
  Json Muestra(const std::string& que);
  // Called with the reservation screen once it is open.
  std::function<void(controles::Formulario&)> alAbrir;

 private:
  void Abre(const Palabras& p);
  void Cierra(const Palabras& p);
  void Texto(const Palabras& p);
  void Enter(const Palabras& p);
  void Campo(const Palabras& p);
  void Fecha(const Palabras& p);
  void Clic(const Palabras& p);
  void Tecla(const Palabras& p);
  void Accion(const Palabras& p);
  void Celda(const Palabras& p);
  void Ve(const Palabras& p);
  void Borra(const Palabras& p);
  void Marca(const Palabras& p);
  void MarcaFila(const Palabras& p);
  void Tamano(const Palabras& p);
  void Responde(const Palabras& p);
  void Foto(const Palabras& p);

  Alcance& alcance_;
  const Piezas& piezas_;
};

}  // namespace guion
