// Which keys a hotel's cards are sealed with, and sealing all of them with another one.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "host/standalone/conexion.h"
#include "host/standalone/llave.h"

namespace autonomo {

// Numbers and codes that a database holds, each counted once.
struct Sellos {
  std::map<std::string, std::size_t> porLlave;  // sealed with the key of that fingerprint, whether it is here or not
  std::size_t enClaro = 0;                      // an earlier version's, sealed when the hotel is opened to work in
  std::size_t danados = 0;                      // sealed with a key that is here and does not open them
};
Sellos CuentaSellos(ConexionDeMotor& motor, const std::vector<Llave>& llaves);

// Seals them all with the key `nueva`, which is in its file already, in one transaction; nobody else writes a card
// meanwhile. Gives how many. com::Error kBaseDatos, and nothing changed, when one cannot be opened with `llaves`.
std::size_t CambiaLlave(ConexionDeMotor& motor, const std::vector<Llave>& llaves, const Llave& nueva);

}  // namespace autonomo
