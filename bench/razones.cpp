#include "bench/razones.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace banco {

namespace {

struct Fila {
  Comparacion comparacion;
  double medida, referencia;  // seconds
};

std::vector<Fila>& Filas() {
  static std::vector<Fila> filas;
  return filas;
}

double Resume(std::vector<double>& tiempos, bool disco) {
  const auto cual = tiempos.begin() + (disco ? static_cast<std::ptrdiff_t>(tiempos.size() / 2) : 0);
  std::nth_element(tiempos.begin(), cual, tiempos.end());
  return *cual;
}

}  // namespace

double Cronometra(const std::function<void()>& trabajo) {
  const auto inicio = std::chrono::steady_clock::now();
  trabajo();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio).count();
}

void MidePorTurnos(benchmark::State& estado, const Comparacion& comparacion, const Lado& medida,
                   const Lado& referencia) {
  std::vector<double> tiempos, tiemposReferencia;
  for ([[maybe_unused]] auto _ : estado) {
    tiempos.push_back(medida());
    tiemposReferencia.push_back(referencia());
    estado.SetIterationTime(tiempos.back());
  }
  const Fila fila{comparacion, Resume(tiempos, comparacion.disco), Resume(tiemposReferencia, comparacion.disco)};
  estado.counters["reference_us"] = 1e6 * fila.referencia;
  estado.counters["ratio"] = fila.medida / fila.referencia;
  // The runs that find the number of iterations come first: the last one stays.
  std::erase_if(Filas(), [&](const Fila& f) { return f.comparacion.titulo == comparacion.titulo; });
  Filas().push_back(fila);
}

void ImprimeRazones() {
  std::printf("\n%-42s %14s %14s %8s %8s\n", "Ratio", "time", "reference", "ratio", "at most");
  for (const Fila& f : Filas()) {
    std::printf("%-42s %11.4f ms %11.4f ms %8.2f ", f.comparacion.titulo.c_str(), 1e3 * f.medida, 1e3 * f.referencia,
                f.medida / f.referencia);
    if (f.comparacion.limite > 0) std::printf("%8.1f", f.comparacion.limite);
    std::printf("\n");
  }
}

}  // namespace banco
