// The ratios that the run is for: one benchmark's time over another's, printed in one table at the end.
#pragma once

#include <string>
#include <vector>

namespace banco {

struct Razon {
  std::string titulo;
  std::string medida, referencia;  // names of benchmarks
  double limite;                   // most that the ratio may be; 0 none
  bool disco = false;              // compares elapsed time, the disk's included; else processor time
};

// Every ratio of the program, in the order of the table.
std::vector<Razon>& Razones();
inline void Anota(Razon razon) { Razones().push_back(std::move(razon)); }

// Path of the hotel's file.
const std::string& RutaHotel();

// Registration of the benchmarks, by file.
void RegistraTablero();
void RegistraReservacion();

}  // namespace banco
