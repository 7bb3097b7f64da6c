// The board: loads in both forms and marks.
#include <memory>
#include <string>

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
  const char* vista = modo == ModoVista::PorTipo ? "type" : "room";
  MidePorTurnos(
      estado, {std::string("Board by ") + vista + ", whole sets / by hand", 2.0},
      [&] { return Cronometra([&] { CargaTablero(*tablero); }); }, [&] { return Cronometra([&] { aMano.Carga(); }); });
}

void CargaCeldas(benchmark::State& estado) {
  Sesion sesion(RutaHotel(), false);
  const auto tablero = AbreTablero(ModoVista::PorHabitacion);
  const Base base(RutaHotel());
  TableroAMano filas(base, ModoVista::PorHabitacion);
  const Matriz& matriz = filas.Carga();
  ExigeIguales(*tablero, matriz);
  CeldasAMano celdas(base);
  int tomadas = 0;
  for (std::size_t i = 0; i < matriz.libres.size(); ++i) tomadas += matriz.totales[i / kNoches] - matriz.libres[i];
  MidePorTurnos(
      estado, {"Board by room, cell by cell / by hand", 1.5},
      [&] { return Cronometra([&] { CargaTablero(*tablero); }); },
      [&] {
        int cuenta = 0;
        const double t = Cronometra([&] { cuenta = celdas.Cuenta(matriz.claves); });
        if (cuenta != tomadas) Falla("The counts of the cells differ from the board's");
        return t;
      });
}

// A board of the rooms of one type, or of all, its current cell free.
std::unique_ptr<kv207::frmDisponibilidad> TableroParaMarcar(const std::string& tipo, int filas) {
  auto tablero = AbreTablero(ModoVista::PorHabitacion);
  tablero->txtTipo_Habitacion.text(tipo);
  CargaTablero(*tablero);
  if (tablero->NumeroFilas != filas) Falla("The board has " + std::to_string(tablero->NumeroFilas) + " rows");
  for (int r = 0; r < filas; ++r) {
    for (int d = 0; d < kNoches; ++d) {
      if (tablero->Estados(d, r) != kv207::EstadoCelda::Disponible) continue;
      tablero->ssDisponibilidad.VaA(r, kv207::kColumnasFijas + d);
      return tablero;
    }
  }
  Falla("No free cell");
}

// A thousand times a turn: marks the free cell or takes the mark away; for all rooms, for a tenth of them, and the scan
// for marks that follows each time.
void Marca(benchmark::State& estado, const Comparacion& comparacion, bool soloBusca) {
  constexpr int kVeces = 1000;
  Sesion sesion(RutaHotel());
  const auto grande = TableroParaMarcar("%", kHabitaciones), chico = TableroParaMarcar("0001", kHabitaciones / 10);
  const auto repite = [](const auto& trabajo) {
    const double t = Cronometra([&] {
      for (int i = 0; i < kVeces; ++i) trabajo();
    });
    return t / kVeces;
  };
  MidePorTurnos(
      estado, comparacion, [&] { return repite([&] { grande->MarcarCelda(); }); },
      [&] {
        return soloBusca ? repite([&] { grande->ActualizarSeleccion(); }) : repite([&] { chico->MarcarCelda(); });
      });
}

}  // namespace

void RegistraTablero() {
  using benchmark::RegisterBenchmark;
  RegisterBenchmark("tablero/habitacion", CargaConjuntos, ModoVista::PorHabitacion)->UseManualTime();
  RegisterBenchmark("tablero/tipo", CargaConjuntos, ModoVista::PorTipo)->UseManualTime();
  RegisterBenchmark("tablero/celdas", CargaCeldas)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
  RegisterBenchmark("marca/300/30", Marca, Comparacion{"Mark, 300 rooms / 30 rooms", 0}, false)
      ->UseManualTime()
      ->Iterations(200);
  RegisterBenchmark("marca/300/busca", Marca, Comparacion{"Mark, 300 rooms / its scan for marks", 0}, true)
      ->UseManualTime()
      ->Iterations(200);
}

}  // namespace banco
