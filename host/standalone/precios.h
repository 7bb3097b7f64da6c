// The price source: what a stay in a room costs, night by night.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/standalone/conexion.h"
#include "platform/com/fecha.h"

namespace autonomo {

// Price of a night of a room type, tax included, in local currency.
struct Tarifa {
  int id = 0;
  std::optional<com::Fecha> inicio;  // first night in force; none: from any night on
  std::optional<com::Fecha> fin;     // last night in force; none: without end
  std::string dias;                  // weekdays in force as digits, 1 Monday to 7 Sunday; empty: all
  double precio = 0;                 // up to the persons included
  double adultoExtra = 0;            // each further adult
  double menorExtra = 0;             // each further minor
};

bool CubreNoche(const Tarifa& tarifa, com::Fecha noche);
// The rate of a night: of those that cover it the most special one (dated before undated, with weekdays before without,
// then the latest id). Null when none covers it.
const Tarifa* TarifaDeNoche(std::span<const Tarifa> tarifas, com::Fecha noche);

struct Personas {
  int adultos = 0;
  int menores = 0;
};
// Those beyond the persons included. Adults take the included places first, then minors; infants take none.
Personas PersonasExtra(int incluidas, Personas personas);

// Amounts are held in whole cents of the currency asked for.
struct NochePrecio {
  com::Fecha noche;
  const Tarifa* tarifa = nullptr;  // of those given; null: the list price
  double precio = 0;               // in local currency, without extra persons
  std::int64_t habitacion = 0, extra = 0;
};
struct PrecioEstancia {
  std::int64_t habitacion = 0;
  std::int64_t extra = 0;
  std::vector<NochePrecio> noches;      // the steps whose sum it is
  std::optional<com::Fecha> sinTarifa;  // first night without any price; the amounts are 0 then
};
// Sum over the nights inicio to fin - 1. precioLista: the night's price where no rate covers it, extra persons free.
// tipoCambio: local currency for one unit, above 0. Each night's amounts are converted and rounded to cents, halves to
// the even neighbour.
PrecioEstancia PrecioDeEstancia(std::span<const Tarifa> tarifas, std::optional<double> precioLista, com::Fecha inicio,
                                com::Fecha fin, Personas extra, double tipoCambio);

// What pricing needs of a room.
struct CuartoConTipo {
  std::string habitacion;
  std::string tipo;
  std::string descripcionTipo;
  std::string producto;
  int personasIncluidas = 0;
  int preciosDeLista = 0;  // rows of its product's list price
  bool deBaja = false;
};
// Nothing when the room does not exist or its type is missing.
std::optional<CuartoConTipo> LeeCuarto(Conexion& conexion, const std::string& habitacion);
// The type's rates that may cover a night from inicio to fin - 1.
std::vector<Tarifa> LeeTarifas(Conexion& conexion, const std::string& tipo, com::Fecha inicio, com::Fecha fin);
// Price list 1 of the product (its first row), tax included; nothing when it has no price.
std::optional<double> LeePrecioLista(Conexion& conexion, const std::string& producto);
bool ExisteMoneda(Conexion& conexion, const std::string& moneda);

// The price of a stay in a room as Hotel.PrecioHabitacion gives it, with all that it rests on. Not to be copied: the
// nights refer to the rates.
struct Cotizado {
  Cotizado() = default;
  Cotizado(Cotizado&&) = default;
  std::string motivo;  // why there is none, for the clerk; "" there is
  CuartoConTipo cuarto;
  Personas extra;
  double tipoCambio = 1;  // 1 in local currency
  std::vector<Tarifa> tarifas;
  PrecioEstancia precio;
};
Cotizado CotizaEstancia(Conexion& conexion, const std::string& habitacion, com::Fecha inicio, com::Fecha fin,
                        Personas personas, const std::string& moneda, double tipoCambio);

}  // namespace autonomo
