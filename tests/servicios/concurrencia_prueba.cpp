// Two programs on one database.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <new>
#include <set>
#include <thread>

#include "tests/comun/base_postgres.h"
#include "tests/servicios/hotel_prueba.h"

namespace autonomo {
namespace {

constexpr int kNoches = 40;

// What the two programs have in common.
struct Compartida {
  std::atomic<int> llegados = 0;
  std::array<std::array<std::array<char, 16>, kNoches>, 2> folios{};
  std::array<std::array<std::array<char, 256>, kNoches>, 2> errores{};

  // Both start the round together; one that is left alone goes on after a while.
  void Espera(int ronda) {
    ++llegados;
    for (int ms = 0; llegados < 2 * ronda && ms < 5000; ++ms) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
};

template <std::size_t N>
void Copia(std::array<char, N>& destino, const std::string& texto) {
  std::strncpy(destino.data(), texto.c_str(), N - 1);
}

class DosProgramas : public testing::TestWithParam<esquema::Motor> {
 protected:
  DosProgramas() : carpeta_(std::filesystem::temp_directory_path() / ("kv207_servicios_" + std::to_string(getpid()))) {
    std::filesystem::remove_all(carpeta_);
    std::filesystem::create_directory(carpeta_);
    ruta = GetParam() == esquema::Motor::Sqlite ? (carpeta_ / "hotel.db").string() : pruebas::NuevaBasePostgres();
    void* memoria = mmap(nullptr, sizeof(Compartida), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    comun = new (memoria) Compartida;
  }
  ~DosProgramas() override {
    munmap(comun, sizeof(Compartida));
    if (GetParam() == esquema::Motor::PostgreSQL) pruebas::QuitaBasePostgres(ruta);
    std::filesystem::remove_all(carpeta_);
  }

  // Runs the work in two processes at once; quien is 0 here and 1 in the other.
  template <class Trabajo>
  void ALaVez(Trabajo trabajo) {
    const pid_t otro = fork();
    ASSERT_GE(otro, 0);
    if (otro == 0) {
      int salida = 0;
      try {
        trabajo(1);
      } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
        salida = 1;
      }
      _exit(salida);
    }
    EXPECT_NO_THROW(trabajo(0));
    int estado = -1;
    waitpid(otro, &estado, 0);
    EXPECT_EQ(estado, 0);
  }
  int Cuenta(const std::string& archivo, const std::string& tabla) {
    Anfitrion host(pruebas::OpcionesDePrueba(archivo));
    return com::CLng(host.conexion()->Consulta("SELECT COUNT(*) AS N FROM " + tabla)->Fields(0).Value());
  }

  std::string ruta;
  Compartida* comun;

 private:
  std::filesystem::path carpeta_;
};

INSTANTIATE_TEST_SUITE_P(Sqlite, DosProgramas, testing::Values(esquema::Motor::Sqlite));
INSTANTIATE_TEST_SUITE_P(Postgres, DosProgramas, testing::Values(esquema::Motor::PostgreSQL));

TEST_P(DosProgramas, UnCuartoSeVendeUnaVezPorNoche) {
  {
    Anfitrion host(pruebas::OpcionesDePrueba(ruta));
    pruebas::LlenaHotelChico(host);
  }
  ALaVez([this](int quien) {
    Anfitrion host(pruebas::OpcionesDePrueba(ruta));
    for (int n = 0; n < kNoches; ++n) {
      const com::Fecha noche = com::MasDias(pruebas::Dia("2026-04-01"), n);
      std::string error;
      comun->Espera(n + 1);
      Copia(comun->folios[quien][n],
            pruebas::GuardaUna(host, "0101", com::AIso(noche), com::AIso(com::MasDias(noche, 1)), 100, &error));
      Copia(comun->errores[quien][n], error);
    }
  });
  std::set<std::string> usados;
  for (int n = 0; n < kNoches; ++n) {
    const std::array<std::string, 2> folio = {comun->folios[0][n].data(), comun->folios[1][n].data()};
    const int gana = folio[0].empty() ? 1 : 0;
    EXPECT_NE(folio[gana], "") << "night " << n;
    EXPECT_EQ(folio[1 - gana], "") << "night " << n;
    // The loser is told which reservation holds the room.
    const std::string error = comun->errores[1 - gana][n].data();
    EXPECT_NE(error.find("por la reservación " + folio[gana]), std::string::npos) << error;
    usados.insert(folio[gana]);
  }
  EXPECT_EQ(usados.size(), static_cast<std::size_t>(kNoches));
  EXPECT_EQ(*usados.rbegin(), "0000000040");  // refused saves left no hole
  EXPECT_EQ(Cuenta(ruta, "Reservacion"), kNoches);
}

TEST_P(DosProgramas, ElHotelDeDemostracionSeLlenaUnaVez) {
  ALaVez([this](int) {
    Opciones o = pruebas::OpcionesDePrueba(ruta);
    o.demo = true;
    comun->Espera(1);
    const Anfitrion host(o);
  });
  EXPECT_EQ(Cuenta(ruta, "Habitacion"), 40);
}

TEST_P(DosProgramas, LaDemostracionNoTocaUnHotelConDatos) {
  {
    Anfitrion host(pruebas::OpcionesDePrueba(ruta));
    pruebas::LlenaHotelChico(host);
  }
  Opciones o = pruebas::OpcionesDePrueba(ruta);
  o.demo = true;
  const Anfitrion host(o);
  EXPECT_EQ(Cuenta(ruta, "Habitacion"), 3);
  EXPECT_EQ(Cuenta(ruta, "Reservacion"), 0);
}

}  // namespace
}  // namespace autonomo
