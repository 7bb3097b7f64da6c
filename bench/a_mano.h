// The board's matrix filled by hand-written statements on the engine's own interface: the mark to measure the board by.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "availability/frmDisponibilidad.h"
#include "bench/sqlite.h"

namespace banco {

struct Matriz {
  std::vector<std::string> claves, nombres;
  std::vector<int> totales;                 // by row
  std::vector<std::int16_t> libres;         // rows x nights
  std::vector<kv207::EstadoCelda> estados;  // rows x nights
};

// Whole sets: rows, totals and one statement per source, prepared once.
class TableroAMano {
 public:
  TableroAMano(const Base& base, kv207::ModoVista modo);
  const Matriz& Carga();

 private:
  void LeeFilas();
  void Cuenta(Preparada& fuente, int segundo, std::vector<std::int16_t>& cuenta);
  std::size_t FilaDe(std::string_view clave);

  kv207::ModoVista modo_;
  Preparada filas_, totales_, reservaciones_, estancias_, bloqueos_;
  Matriz matriz_;
  std::vector<std::int16_t> cuentas_[3];
  std::size_t ultima_ = 0;
};

// The three counts of each cell of the room view, prepared once.
class CeldasAMano {
 public:
  explicit CeldasAMano(const Base& base);
  // Sum of all counts, so that none is left out.
  int Cuenta(const std::vector<std::string>& claves);

 private:
  Preparada reservaciones_, estancias_, bloqueos_;
  std::vector<std::string> noches_, finales_;
};

}  // namespace banco
