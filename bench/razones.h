// What the program measures: one side against another, turn by turn, so that whatever else the machine does falls on
// both. The ratios are printed in one table at the end.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

namespace banco {

// Runs one side once; gives the seconds that count.
using Lado = std::function<double()>;
// Seconds that a piece of work takes.
double Cronometra(const std::function<void()>& trabajo);

struct Comparacion {
  std::string titulo;
  double limite;       // most that the ratio may be; 0 none
  bool disco = false;  // waits for the disk: medians are compared, else the fastest turns
};

// Runs both sides by turns and keeps the comparison for the table. The benchmark's own time is the measured side's.
void MidePorTurnos(benchmark::State& estado, const Comparacion& comparacion, const Lado& medida,
                   const Lado& referencia);
void ImprimeRazones();

// Path of the hotel's file.
const std::string& RutaHotel();

// Registration of the benchmarks, by file.
void RegistraTablero();
void RegistraReservacion();
void RegistraMostrador();

}  // namespace banco
