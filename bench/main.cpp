// bench_kv207 [--hotel=FILE] [Google Benchmark's options]: times the screens against hand-written SQLite on a hotel of
// 300 rooms with five years of history, and prints the ratios. The hotel is built once, in the given file or in the
// system's temporary folder.
#include <sys/resource.h>

#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>

#include "bench/hotel.h"
#include "bench/razones.h"

namespace banco {

namespace {

std::string& Ruta() {
  static std::string ruta = (std::filesystem::temp_directory_path() / "bench_kv207.db").string();
  return ruta;
}

void ImprimeMemoria() {
  rusage uso{};
  getrusage(RUSAGE_SELF, &uso);
  // NOLINTNEXTLINE(*-union-access): the system's library declares its fields so
  std::printf("Peak memory %ld MB\n", uso.ru_maxrss / 1024);
}

int Mide(int argc, char** argv) {
  int quedan = 1;
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--hotel=", 8) == 0) {
      Ruta() = argv[i] + 8;
    } else {
      argv[quedan++] = argv[i];
    }
  }
  argc = quedan;
  RegistraTablero();
  RegistraReservacion();
  RegistraMostrador();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  ConstruyeHotel(RutaHotel());
  std::printf("Hotel %s: %d room lines\n", RutaHotel().c_str(), CuentaLineas(RutaHotel()));
  benchmark::RunSpecifiedBenchmarks();
  ImprimeRazones();
  ImprimeMemoria();
  return 0;
}

}  // namespace

const std::string& RutaHotel() { return Ruta(); }

}  // namespace banco

int main(int argc, char** argv) {
  try {
    return banco::Mide(argc, argv);
  } catch (const std::exception& e) {
    std::cerr << "bench_kv207: " << e.what() << '\n';
    return 1;
  }
}
