// How the amounts of a reservation came about: each room line from the price source's own steps, the screen's discount,
// tax and total, and the footer as the sum of the lines.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "platform/controls/formulario.h"
#include "publico/captura.h"

namespace recepcion {

struct CuentaExplicada {
  struct Paso {
    std::string concepto;  // "2 noches, tarifa 3"
    std::string detalle;   // how it was worked out
    double importe = 0;    // in the reservation's currency
    bool suma = false;     // what the steps above come to
  };
  std::string titulo;  // "Sencilla / 0101, 12/03/2026 – 15/03/2026"
  std::vector<Paso> pasos;
  std::string nota;       // what is to be known besides; "" nothing
  bool acordado = false;  // not the hotel's price: it is lost when dates or persons are typed
};

// A room line of the reservation screen, from 0. com::Error kSubindice for one that is not there; the host's failures.
[[nodiscard]] CuentaExplicada ExplicaRenglon(const controles::Formulario& principal, int fila);
// Sub-total, taxes and total of the footer, line by line.
[[nodiscard]] CuentaExplicada ExplicaTotal(const controles::Formulario& principal);
// Which lines have a price that was agreed, asked often: what the price source said is kept as long as a line stays as
// it is.
class Acordados {
 public:
  // False for a line that is not there, or about which the source fails.
  bool Es(const controles::Formulario& principal, int fila);

 private:
  std::unordered_map<std::string, bool> dichos_;  // by all that a line's price depends on
};
// As the screen tells them (publico/captura.h); of another form Ninguno and "".
[[nodiscard]] publico::OrigenPrecio OrigenDelPrecio(const controles::Formulario& principal, int fila);
[[nodiscard]] std::string AvisoDePrecio(const controles::Formulario& principal);
// As a tip shows it: a step a line.
[[nodiscard]] std::string TextoDe(const CuentaExplicada& explicacion);

}  // namespace recepcion
