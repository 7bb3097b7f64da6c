// Rules of a room line: how its cells are read, where its dates may lie, what an edited amount does to the others.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/com/fecha.h"
#include "platform/com/variant.h"
#include "platform/controls/grid.h"

namespace kv207 {

// Nothing was entered in the cell.
[[nodiscard]] bool CeldaVacia(const com::Variant& celda);
// Date of a cell; Error kTipos when it holds none (an empty cell holds none).
[[nodiscard]] com::Fecha FechaDeCelda(const com::Variant& celda);
// The same; nothing where that raises.
[[nodiscard]] std::optional<com::Fecha> FechaSiLaHay(const com::Variant& celda);
// Number of persons in a cell: 0 when empty, halves to the even neighbour. Error kTipos for a text that is no number,
// kDesbordamiento for more than 32,767, kArgumento for a negative number.
[[nodiscard]] std::int16_t PersonasDeCelda(const com::Variant& celda);
// Adults, minors and infants of a line together; the errors of PersonasDeCelda.
[[nodiscard]] int PersonasDelRenglon(const controles::Grid& grid, int fila);

// A cell of the current line, of which there must be one: its text, and writing it.
[[nodiscard]] std::string TextoDelRenglon(const controles::Grid& grid, std::string_view columna);
void PonEnRenglon(controles::Grid& grid, std::string_view columna, const com::Variant& valor);

// Day on which a line starts, after the clerk left it: one outside the stay, equal to the line's end, or missing (what
// was typed is no date) becomes the arrival. Times of day do not count.
[[nodiscard]] com::Fecha AjustaInicio(std::optional<com::Fecha> inicio, std::optional<com::Fecha> fin,
                                      com::Fecha llegada, com::Fecha salida);
// Day on which a line ends: one outside the stay, not after the line's start, or missing becomes the departure.
[[nodiscard]] com::Fecha AjustaFin(std::optional<com::Fecha> inicio, std::optional<com::Fecha> fin, com::Fecha llegada,
                                   com::Fecha salida);

// Amounts of a line for its whole stay, in the reservation's currency.
struct ImportesRenglon {
  double precio = 0;            // room price, tax included
  double personaExtra = 0;      // price of the extra persons, tax included
  double impuesto = 0;          // tax factor, a fraction
  double descuento = 0;         // per cent
  double descuentoImporte = 0;  // before tax
  double impuestoImporte = 0;   // after discount, 4 decimals
  double total = 0;             // after discount, tax included, 2 decimals
};
// Discount, tax and total that follow from the prices and, when porImporte, from the discount amount, else from the
// discount's percentage. A discount amount on prices that add up to nothing becomes 0.
[[nodiscard]] ImportesRenglon RederivaImportes(ImportesRenglon renglon, bool porImporte);

}  // namespace kv207
