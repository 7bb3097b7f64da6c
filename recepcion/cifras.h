// Figures of the hotel: occupancy, average rate, revenue per available room, and pace against the year before, by night
// and by month.
//
// What the figures rest on.
//   night       of a room; a reservation's line has those from its first day up to the one before its last.
//   sold        a night of a line whose reservation is neither cancelled nor closed (CA, CE): what the board shows as
//               taken. Of a closed one those count that a stay of its own (alojamiento.h), not cancelled, held: whoever
//               closes reservations behind their guests keeps the past. Who did not come counts until somebody cancels.
//               A room that is sold twice counts twice, so that occupancy above 1 tells of it.
//   unpriced    a night that a stay holds and no sold line: guests without a reservation, the house's own, who stays
//               longer than booked. It is occupied, has no price here, and is in no rate. A closed stay (CE) holds its
//               nights before today.
//   courtesy    a sold night that costs nothing. It is occupied, and is in no average rate.
//   available   rooms that are in service and not blocked that night; a room that was occupied was available, also one
//               that is blocked or withdrawn now.
//   revenue     the line's amount without its tax, in equal parts over its nights, in the hotel's own currency at the
//               reservation's own rate (a rate that is 0 or missing is 1).
//   occupancy   (sold + unpriced) / available
//   rate        revenue / (sold - courtesy)
//   per room    revenue / available; occupancy times rate where no night is courtesy or unpriced
//   pace        each night beside the same date a year before (29 February has none, and is nobody's in the year behind
//               a leap year: a month is compared by as many nights as it has), twice: as the books stood then,
//               that is with what had been captured (Rs_Fecha) by the day a year before today and not been cancelled
//               (Fecha_Baja) by its end, and as it ended. What a reservation was before it was changed is not kept: it
//               counts with the nights and amounts that it has now.
// Rooms belong to no branch. With one, sold nights, revenue and pace are those of its reservations, and occupancy is
// the part of the whole hotel that it sold; stays without reservation belong to none.
#pragma once

#include <string>
#include <vector>

#include "platform/com/fecha.h"
#include "platform/listado/listado.h"
#include "recepcion/lectura.h"

namespace recepcion {

struct PedidoCifras {
  com::Fecha desde, hasta;  // first and last night
  std::string sucursal;     // "" all
  bool operator==(const PedidoCifras&) const = default;
};

struct Cuenta {
  int disponibles = 0, vendidas = 0, cortesias = 0, sinPrecio = 0;  // nights
  double ingreso = 0;
  // The year before, at the same distance and as it ended.
  int vendidasEntonces = 0, vendidasAlFinal = 0;
  double ingresoEntonces = 0, ingresoAlFinal = 0;

  int Ocupadas() const { return vendidas + sinPrecio; }
  // 0 where there is nothing to divide by.
  double Ocupacion() const;
  double Tarifa() const;
  double PorHabitacion() const;
  Cuenta& operator+=(const Cuenta& otra);
};

// Nights from desde to hasta, both counted.
struct CuentaDe {
  com::Fecha desde, hasta;
  Cuenta cuenta;
};

inline constexpr int kNochesDeCifras = 3660;

// The nights of the period, in order. hoy: the day on which it is asked. com::Error kArgumento for a period that ends
// before it begins or is longer than kNochesDeCifras; database failures.
[[nodiscard]] std::vector<CuentaDe> LeeCifras(const Fuente& fuente, const PedidoCifras& pedido, com::Fecha hoy);
// The same by calendar month; the first and last one only as far as the period goes.
[[nodiscard]] std::vector<CuentaDe> PorMes(const std::vector<CuentaDe>& noches);
[[nodiscard]] Cuenta Suma(const std::vector<CuentaDe>& cuentas);
// The same date a year before; 28 February for the 29th.
[[nodiscard]] com::Fecha UnAnoAntes(com::Fecha fecha);

// What a person, or a script, has before the eyes.
class Cifras {
 public:
  // com::Error as LeeCifras; what was shown stays then.
  void Abre(const PedidoCifras& pedido);
  // The same anew; the first time the month of today.
  void Abre();

  const PedidoCifras& pedido() const { return pedido_; }
  com::Fecha hoy() const { return hoy_; }
  // Key of the currency of all amounts.
  const std::string& moneda() const { return moneda_; }
  const std::vector<CuentaDe>& noches() const { return noches_; }
  const std::vector<CuentaDe>& meses() const { return meses_; }
  const Cuenta& total() const { return total_; }

 private:
  PedidoCifras pedido_;
  com::Fecha hoy_;
  std::string moneda_;
  std::vector<CuentaDe> noches_, meses_;
  Cuenta total_;
};

// Keys and names of the branches, by key.
[[nodiscard]] std::vector<std::pair<std::string, std::string>> Sucursales();
// By night, or by month; the total is the last row.
[[nodiscard]] listado::Listado ListadoDe(const Cifras& cifras, bool porMes);

}  // namespace recepcion
