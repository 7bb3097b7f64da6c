// The orders of the front desk around the screens: day, tape chart, quote, guest, figures, and what leaves it as files.
#pragma once

#include "guion/alcance.h"
#include "platform/listado/listado.h"
#include "recepcion/encargo.h"

namespace guion {

class OrdenesRecepcion {
 public:
  explicit OrdenesRecepcion(Alcance& alcance);
  OrdenesRecepcion(const OrdenesRecepcion&) = delete;
  OrdenesRecepcion& operator=(const OrdenesRecepcion&) = delete;

  std::vector<Orden> Ordenes();
  // What was asked for last of each; nothing for another name. com::Error kArgumento before the order that shows it.
  std::optional<Json> Muestra(const std::string& que);
  // A board came up: marks and accepts the nights when an order here opened it. False when none did.
  bool MarcaLoPedido(controles::Formulario& tablero);

 private:
  void Hoy(const Palabras& p);
  void Cuadro(const Palabras& p);
  void Cotiza(const Palabras& p);
  void Cifras(const Palabras& p);
  void Exporta(const Palabras& p);
  void Agenda(const Palabras& p);
  void Parte(const Palabras& p);
  void PorQue(const Palabras& p);
  void Huesped(const Palabras& p);
  void Explica(const Palabras& p);

  // What the models hand on to the screens.
  void AbreReservacion(const std::string& folio);
  void Reserva(const recepcion::Pedido& pedido, const std::vector<recepcion::Tramo>& tramos);
  void TomaHuesped(const std::string& campo, const recepcion::Toma& toma);

  listado::Listado ListadoDe(const std::string& que);
  // com::Error kArgumento before the order that shows it.
  const recepcion::Hoy& DiaALaVista() const;
  const recepcion::Cuadro& CuadroALaVista() const;
  const recepcion::Cifras& CifrasALaVista() const;

  Alcance& alcance_;
  const Piezas& piezas_;
  recepcion::Hoy hoy_;
  recepcion::Cuadro cuadro_;
  recepcion::Cotizacion cotizacion_;
  recepcion::Cifras cifras_;
  std::string parte_;  // as text
  recepcion::Huespedes huespedes_;
  std::vector<recepcion::Parecida> parecidas_;  // to whom the last new client was similar
  recepcion::Encargo encargo_;
  // What the order does on the board once it is there.
  std::function<void(controles::Formulario&)> pasosDelTablero_;
};

}  // namespace guion
