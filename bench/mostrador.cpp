// The front desk on the measured hotel: the day, the search's preparation, and each key of a search.
#include "availability/frmDisponibilidad.h"
#include "bench/hotel.h"
#include "bench/pantallas.h"
#include "bench/razones.h"
#include "host/standalone/letras.h"
#include "recepcion/cifras.h"
#include "recepcion/hoy.h"
#include "recepcion/parte.h"

namespace banco {

namespace {

void Dia(benchmark::State& estado) {
  const Sesion sesion(RutaHotel());
  for ([[maybe_unused]] auto _ : estado) benchmark::DoNotOptimize(recepcion::LeeDia(Hoy()));
}

void Preparacion(benchmark::State& estado) {
  const Sesion sesion(RutaHotel());
  for ([[maybe_unused]] auto _ : estado) {
    recepcion::Indice indice(autonomo::LetraBuscada);
    while (indice.Adelanta()) {
    }
    estado.counters["reservaciones"] = static_cast<double>(indice.Reservaciones());
  }
}

void Busqueda(benchmark::State& estado, const char* texto) {
  const Sesion sesion(RutaHotel());
  recepcion::Hoy hoy(autonomo::LetraBuscada);
  hoy.Abre();
  hoy.Busca("x");
  for ([[maybe_unused]] auto _ : estado) {
    hoy.Busca(texto);
    estado.counters["halladas"] = static_cast<double>(hoy.hallazgo().total);
  }
}

// Figures of so many nights around the measured day, the year before beside them; the day's report.
void Cifras(benchmark::State& estado, int noches) {
  const Sesion sesion(RutaHotel());
  const recepcion::Fuente fuente = recepcion::DelAnfitrion();
  const com::Fecha desde = com::MasDias(Hoy(), -noches / 2);
  for ([[maybe_unused]] auto _ : estado) {
    const auto cifras = recepcion::LeeCifras(fuente, {desde, com::MasDias(desde, noches - 1), ""}, Hoy());
    estado.counters["vendidas"] = recepcion::Suma(cifras).vendidas;
  }
}

void Parte(benchmark::State& estado) {
  const Sesion sesion(RutaHotel());
  const recepcion::Fuente fuente = recepcion::DelAnfitrion();
  for ([[maybe_unused]] auto _ : estado) benchmark::DoNotOptimize(recepcion::LeeParte(fuente, Hoy(), "", ""));
}

}  // namespace

void RegistraMostrador() {
  const auto registra = [](const char* nombre, auto&&... mas) {
    benchmark::RegisterBenchmark(nombre, mas...)->Unit(benchmark::kMillisecond)->UseRealTime();
  };
  registra("hoy/dia", Dia);
  registra("hoy/preparacion", Preparacion);
  registra("cifras/mes", Cifras, 31);
  registra("cifras/año", Cifras, 366);
  registra("cifras/cinco años", Cifras, 1830);
  registra("cifras/parte", Parte);
  for (const char* texto : {"h", "huesped", "numero 1234", "301", "12345", "próxima semana", "huésped 12 al 15 mar"}) {
    registra((std::string("hoy/busca/") + texto).c_str(), Busqueda, texto);
  }
}

}  // namespace banco
