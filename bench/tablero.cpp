// The board: loads in both forms and marks.
#include <benchmark/benchmark.h>

#include <memory>

#include "bench/a_mano.h"
#include "bench/hotel.h"
#include "bench/pantallas.h"
#include "bench/razones.h"

namespace banco {

namespace {

using kv207::ModoVista;

// What is timed must be the same work: both fill the same matrix, or the run ends.
void ExigeIguales(const kv207::frmDisponibilidad& tablero, const Matriz& matriz) {
  const controles::Grid& grid = tablero.ssDisponibilidad;
  if (grid.Filas() != static_cast<int>(matriz.claves.size())) Falla("The two boards differ in their rows");
  for (int r = 0; r < grid.Filas(); ++r) {
    const auto fila = static_cast<std::size_t>(r);
    if (grid.Texto(r, 0) != matriz.claves[fila] || grid.Texto(r, 1) != matriz.nombres[fila]) {
      Falla("The two boards differ in row " + matriz.claves[fila]);
    }
    for (int d = 0; d < kNoches; ++d) {
      const std::size_t celda = fila * kNoches + static_cast<std::size_t>(d);
      if (grid.celda(r, kv207::kColumnasFijas + d) != com::Variant(static_cast<int>(matriz.libres[celda])) ||
          tablero.Estados(d, r) != matriz.estados[celda]) {
        Falla("The two boards differ in row " + matriz.claves[fila] + ", night " + std::to_string(d));
      }
    }
  }
}

void CargaConjuntos(benchmark::State& estado, ModoVista modo) {
  Sesion sesion(RutaHotel());
  const auto tablero = AbreTablero(modo);
  const Base base(RutaHotel());
  TableroAMano aMano(base, modo);
  ExigeIguales(*tablero, aMano.Carga());
  for (auto _ : estado) CargaTablero(*tablero);
}

void CargaConjuntosAMano(benchmark::State& estado, ModoVista modo) {
  const Base base(RutaHotel());
  TableroAMano aMano(base, modo);
  for (auto _ : estado) benchmark::DoNotOptimize(aMano.Carga());
}

void CargaCeldas(benchmark::State& estado) {
  Sesion sesion(RutaHotel(), false);
  const auto tablero = AbreTablero(ModoVista::PorHabitacion);
  const Base base(RutaHotel());
  TableroAMano aMano(base, ModoVista::PorHabitacion);
  ExigeIguales(*tablero, aMano.Carga());
  for (auto _ : estado) CargaTablero(*tablero);
}

void CargaCeldasAMano(benchmark::State& estado) {
  const Base base(RutaHotel());
  TableroAMano filas(base, ModoVista::PorHabitacion);
  CeldasAMano celdas(base);
  const Matriz& matriz = filas.Carga();
  int tomadas = 0;
  for (std::size_t i = 0; i < matriz.libres.size(); ++i) tomadas += matriz.totales[i / kNoches] - matriz.libres[i];
  if (celdas.Cuenta(matriz.claves) != tomadas) Falla("The counts of the cells differ from the board's");
  for (auto _ : estado) benchmark::DoNotOptimize(celdas.Cuenta(matriz.claves));
}

// Marks a free cell and takes the mark away; the rows are those of one room type, or all.
void Marca(benchmark::State& estado, const char* tipo, int filas) {
  Sesion sesion(RutaHotel());
  const auto tablero = AbreTablero(ModoVista::PorHabitacion);
  tablero->txtTipo_Habitacion.text(std::string(tipo));
  CargaTablero(*tablero);
  if (tablero->NumeroFilas != filas) Falla("The board has " + std::to_string(tablero->NumeroFilas) + " rows");
  for (int r = 0; r < filas; ++r) {
    for (int d = 0; d < kNoches; ++d) {
      if (tablero->Estados(d, r) != kv207::EstadoCelda::Disponible) continue;
      tablero->ssDisponibilidad.VaA(r, kv207::kColumnasFijas + d);
      for (auto _ : estado) tablero->MarcarCelda();
      return;
    }
  }
  Falla("No free cell");
}

// The fastest of some repetitions: other programs' work only ever adds time.
template <class... Argumentos>
benchmark::internal::Benchmark* Registra(const std::string& nombre, Argumentos... argumentos) {
  return benchmark::RegisterBenchmark(nombre.c_str(), argumentos...)->Repetitions(5);
}

}  // namespace

void RegistraTablero() {
  using benchmark::kMillisecond;
  for (const auto modo : {ModoVista::PorHabitacion, ModoVista::PorTipo}) {
    const bool porTipo = modo == ModoVista::PorTipo;
    const std::string nombre = std::string("tablero/") + (porTipo ? "tipo" : "habitacion");
    Registra(nombre, CargaConjuntos, modo)->Unit(kMillisecond);
    Registra(nombre + "/a_mano", CargaConjuntosAMano, modo)->Unit(kMillisecond);
    Anota({std::string("Board by ") + (porTipo ? "type" : "room") + ", whole sets / by hand", nombre,
           nombre + "/a_mano", 2.0});
  }
  // Seconds each: once is enough.
  benchmark::RegisterBenchmark("tablero/celdas", CargaCeldas)->Unit(kMillisecond)->Iterations(1);
  benchmark::RegisterBenchmark("tablero/celdas/a_mano", CargaCeldasAMano)->Unit(kMillisecond)->Iterations(1);
  Anota({"Board by room, cell by cell / by hand", "tablero/celdas", "tablero/celdas/a_mano", 1.5});
  Registra("marca/300", Marca, "%", kHabitaciones);
  Registra("marca/30", Marca, "0001", kHabitaciones / 10);
  Anota({"Mark, 300 rooms / 30 rooms", "marca/300", "marca/30", 0});
}

}  // namespace banco
