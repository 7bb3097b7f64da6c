// Occupancy of the board's rows: how many reservations, stays and blocks take a row's rooms each night.
//
// Two forms with one result. Cell by cell: three counts for each cell, for any connection. Whole sets: one statement
// per source for all rows and nights, counted in memory, for a connection that says it can (LeeConjuntos).
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "availability/frmDisponibilidad.h"
#include "availability/sentencias.h"
#include "platform/ado/ado.h"

namespace kv207 {

// What takes the rooms of one row on one night.
struct Ocupacion {
  int reservaciones = 0, estancias = 0, bloqueos = 0;
  bool operator==(const Ocupacion&) const = default;
};

// Free rooms (zero or less when more is taken than there is) and state of one cell.
struct CeldaTablero {
  int libres = 0;
  EstadoCelda estado = EstadoCelda::Disponible;
  bool operator==(const CeldaTablero&) const = default;
};

// Error kDesbordamiento when the free rooms do not fit 16 bits.
[[nodiscard]] CeldaTablero CalculaCelda(ModoVista modo, int total, const Ocupacion& ocupacion);

// Rooms that are not withdrawn, by row key. Keys compare as the database compares them: case-blind, trailing blanks
// ignored.
class TotalesTablero {
 public:
  TotalesTablero() = default;
  // CLAVE and Total of every row; rows without a key do not count.
  explicit TotalesTablero(ado::Recordset& filas);
  bool Vacio() const { return totales_.empty(); }
  // 0 for a key that is not there.
  int De(std::string_view clave) const;

 private:
  std::unordered_map<std::string, int> totales_;
};

// Reads the occupancy row by row.
class LectorOcupacion {
 public:
  virtual ~LectorOcupacion() = default;
  // The row that Noche answers for; clave as the rows statement gives it. To be called first.
  virtual void Fila(const std::string& clave) = 0;
  // dia: index into the nights given at creation.
  virtual Ocupacion Noche(int dia) = 0;
};

// Both read through the host's connection; database failures come from the constructor (whole sets) or from Noche.
// noches: the board's nights, from the first day column on.
[[nodiscard]] std::unique_ptr<LectorOcupacion> LeePorCelda(sentencias::Criterio criterio,
                                                           const std::vector<com::Fecha>& noches);
[[nodiscard]] std::unique_ptr<LectorOcupacion> LeePorConjuntos(sentencias::Criterio criterio,
                                                               const std::vector<com::Fecha>& noches);

}  // namespace kv207
