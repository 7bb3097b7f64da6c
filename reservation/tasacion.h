// What the amounts of a room line rest on: the hotel's price under certain conditions, or a price that was agreed.
#pragma once

#include <optional>
#include <string>

#include "platform/com/fecha.h"
#include "platform/controls/grid.h"
#include "publico/captura.h"

namespace kv207 {

using publico::OrigenPrecio;

struct CondicionesEncabezado {
  std::string huesped;
  std::string moneda;
  com::Fecha captura{};   // day of capture
  double tipoCambio = 0;  // local currency for one unit of moneda
  bool operator==(const CondicionesEncabezado&) const = default;
};

// Everything that a line's price depends on.
struct CondicionesPrecio {
  std::string habitacion;
  com::Fecha inicio{}, fin{};  // days
  int adultos = 0, menores = 0, infantes = 0;
  CondicionesEncabezado encabezado;
  bool operator==(const CondicionesPrecio&) const = default;
};

// A price typed by the clerk, or read with a stored reservation: it stays until dates or persons are typed. Amounts of
// the whole stay, tax included, in moneda.
struct Acuerdo {
  std::string moneda;
  double tipoCambio = 0;  // local currency for one unit of moneda
  double precio = 0, personaExtra = 0;
  bool tecleado = false;  // in this capture
};

struct PrecioRenglon {
  CondicionesPrecio condiciones;   // of the amounts that the line shows
  bool incompleto = false;         // the hotel had no price, or the agreed one could not be broken down
  std::optional<Acuerdo> acuerdo;  // none: the hotel's price
};

// A price that was agreed: changing dates or persons loses it.
[[nodiscard]] bool EsAcordado(OrigenPrecio origen);

enum class Falta { Nada, Convertir, Tasar };
// What the amounts of a line need under the conditions shown now. precio: null when the line has not been priced.
// The hotel's price is asked for again when any condition differs; an agreed one is only converted, when it was agreed
// in another currency than the one shown.
[[nodiscard]] Falta QueFalta(const PrecioRenglon* precio, const CondicionesPrecio& ahora);
// An agreed amount in another currency, 2 decimals; as agreed in its own. tipoCambio: of moneda, above 0.
[[nodiscard]] double Convierte(double importe, const Acuerdo& acuerdo, const std::string& moneda, double tipoCambio);

// Writes the discount, tax and total that follow from the line's prices and, when porImporte, from its discount
// amount, else from the discount's percentage. Error kTipos when one of these cells is a text that is no number.
void DerivaImportes(controles::Grid& grid, int fila, bool porImporte);

}  // namespace kv207
