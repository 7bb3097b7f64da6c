// bench_kv207 [--hotel=FILE] [Google Benchmark's options]: times the screens against hand-written SQLite on a hotel of
// 300 rooms with five years of history, and prints the ratios. The hotel is built once, in the given file or in the
// system's temporary folder.
#include <benchmark/benchmark.h>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>

#include "bench/hotel.h"
#include "bench/razones.h"

namespace banco {

namespace {

std::string& Ruta() {
  static std::string ruta = (std::filesystem::temp_directory_path() / "bench_kv207.db").string();
  return ruta;
}

// Seconds of one iteration, the fastest repetition.
struct Tiempo {
  double procesador = 1e9, transcurrido = 1e9;
};

// Prints as usual and keeps the times.
class Reportero : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& corridas) override {
    for (const Run& c : corridas) {
      if (c.run_type != Run::RT_Iteration || c.error_occurred) continue;
      Tiempo& t = tiempos[c.run_name.function_name];
      const auto n = static_cast<double>(c.iterations);
      t.procesador = std::min(t.procesador, c.cpu_accumulated_time / n);
      t.transcurrido = std::min(t.transcurrido, c.real_accumulated_time / n);
    }
    ConsoleReporter::ReportRuns(corridas);
  }
  std::map<std::string, Tiempo> tiempos;
};

void Imprime(const std::map<std::string, Tiempo>& tiempos) {
  std::printf("\n%-46s %12s %12s %8s %8s\n", "Ratio", "time", "reference", "ratio", "at most");
  for (const Razon& r : Razones()) {
    const auto medida = tiempos.find(r.medida), referencia = tiempos.find(r.referencia);
    if (medida == tiempos.end() || referencia == tiempos.end()) continue;
    const double t = r.disco ? medida->second.transcurrido : medida->second.procesador;
    const double base = r.disco ? referencia->second.transcurrido : referencia->second.procesador;
    std::printf("%-46s %9.4f ms %9.4f ms %8.2f ", r.titulo.c_str(), 1e3 * t, 1e3 * base, t / base);
    if (r.limite > 0) std::printf("%8.1f", r.limite);
    std::printf("\n");
  }
  rusage uso{};
  getrusage(RUSAGE_SELF, &uso);
  std::printf("Peak memory %ld MB\n", uso.ru_maxrss / 1024);
}

}  // namespace

std::vector<Razon>& Razones() {
  static std::vector<Razon> razones;
  return razones;
}

const std::string& RutaHotel() { return Ruta(); }

}  // namespace banco

int main(int argc, char** argv) {
  int quedan = 1;
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--hotel=", 8) == 0) {
      banco::Ruta() = argv[i] + 8;
    } else {
      argv[quedan++] = argv[i];
    }
  }
  argc = quedan;
  banco::RegistraTablero();
  banco::RegistraReservacion();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  banco::ConstruyeHotel(banco::RutaHotel());
  std::printf("Hotel %s: %d room lines\n", banco::RutaHotel().c_str(), banco::CuentaLineas(banco::RutaHotel()));
  banco::Reportero reportero;
  benchmark::RunSpecifiedBenchmarks(&reportero);
  banco::Imprime(reportero.tiempos);
  return 0;
}
