// Room lines as they were captured, and typed again: those of a draft, and those that another number of nights took
// away.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/com/fecha.h"
#include "platform/controls/formulario.h"
#include "platform/controls/grid.h"
#include "publico/columnas.h"

namespace recepcion {

// What the cells of a line hold, in the words that a clerk types.
struct Renglon {
  std::string habitacion, nombre;
  std::string inicio, fin;  // short dates
  std::string adultos, menores, infantes;
  double precio = 0, personaExtra = 0;  // tax included
  double descuento = 0;                 // per cent
  double descuentoImporte = 0, total = 0;
  bool acordado = false;  // a price that was agreed: typed, discounted or stored
};

// Which cell of the grid each of them is, in the order of the columns.
struct CeldaDeTexto {
  std::string_view columna;
  std::string Renglon::*dato;
};
inline constexpr CeldaDeTexto kTextosDeRenglon[] = {
    {kv207::col::kClave, &Renglon::habitacion}, {kv207::col::kNombre, &Renglon::nombre},
    {kv207::col::kInicio, &Renglon::inicio},    {kv207::col::kFin, &Renglon::fin},
    {kv207::col::kAdultos, &Renglon::adultos},  {kv207::col::kMenores, &Renglon::menores},
    {kv207::col::kInfantes, &Renglon::infantes}};
struct CeldaDeImporte {
  std::string_view columna;
  double Renglon::*dato;
};
inline constexpr CeldaDeImporte kImportesDeRenglon[] = {{kv207::col::kPrecio, &Renglon::precio},
                                                        {kv207::col::kPrecioExtra, &Renglon::personaExtra},
                                                        {kv207::col::kDescuento, &Renglon::descuento},
                                                        {kv207::col::kDescuentoImporte, &Renglon::descuentoImporte},
                                                        {kv207::col::kTotal, &Renglon::total}};

// "0101 Doble / Vista, 10/03/2026 – 12/03/2026, 2 adultos, $2,500.00": for messages.
[[nodiscard]] std::string EnPalabras(const Renglon& renglon);

// Of the reservation screen's grid; lines without a room are left out.
[[nodiscard]] std::vector<Renglon> LeeRenglones(const controles::Formulario& principal);
// Makes the grid's lines these ones by typing: in those that are there what differs, then the others; those that are
// not among them go. What the screen does not take stays out.
void TecleaRenglones(controles::Formulario& principal, const std::vector<Renglon>& renglones);
// What of these lines the screen does not hold, a text for each.
[[nodiscard]] std::vector<std::string> RenglonesQueFaltan(const controles::Formulario& principal,
                                                          const std::vector<Renglon>& renglones);

// The lines that another number of nights took away in the capture that is open, to be brought back.
class RenglonesQuitados {
 public:
  // Watches the reservation screen from now on; whoever watched it before does so no more.
  void Vigila(controles::Formulario& principal);
  const std::vector<Renglon>& renglones() const { return estado_->renglones; }
  void Fija(std::vector<Renglon> renglones) { *estado_ = {std::move(renglones), false}; }
  // Types those that fit the stay as it is now. A line that began or ended with the lines' first or last day does so
  // with the stay, or where somebody else holds these nights keeps its own; rooms that somebody else holds on those
  // too, and lines without nights in the stay, stay out; an agreed price comes back with the nights that it was agreed
  // for. Gives a text for each line that is not as it was, or whose price is not. com::Error kArgumento outside a
  // capture, and when no line was taken away.
  [[nodiscard]] std::vector<std::string> Repone(controles::Formulario& principal);

 private:
  struct Estado {
    std::vector<Renglon> renglones;
    bool pedidos = false;  // the clerk wanted these back, and they did not fit
  };
  std::shared_ptr<Estado> estado_ = std::make_shared<Estado>();  // the screen may outlive this
};

}  // namespace recepcion
