// Two programs on one database file.
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <barrier>
#include <filesystem>
#include <set>
#include <thread>

#include "tests/servicios/hotel_prueba.h"

namespace autonomo {
namespace {

class DosHoteles : public testing::Test {
 protected:
  DosHoteles() : carpeta_(std::filesystem::temp_directory_path() / ("kv207_servicios_" + std::to_string(::getpid()))) {
    std::filesystem::remove_all(carpeta_);
    std::filesystem::create_directory(carpeta_);
    ruta = (carpeta_ / "hotel.db").string();
    Anfitrion host(pruebas::OpcionesDePrueba(ruta));
    pruebas::LlenaHotelChico(host);
  }
  ~DosHoteles() override { std::filesystem::remove_all(carpeta_); }

  // Runs the work in two threads at once, each with a host of its own.
  template <class Trabajo>
  void ALaVez(Trabajo trabajo) {
    std::barrier salida(2);
    const auto corre = [&](int quien) {
      try {
        Anfitrion host(pruebas::OpcionesDePrueba(ruta));
        trabajo(host, quien, salida);
      } catch (const com::Error& e) {
        ADD_FAILURE() << e.Descripcion();
        salida.arrive_and_drop();  // the other one goes on alone
      }
    };
    std::thread otro(corre, 1);
    corre(0);
    otro.join();
  }

  std::string ruta;

 private:
  std::filesystem::path carpeta_;
};

TEST_F(DosHoteles, UnCuartoSeVendeUnaVezPorNoche) {
  constexpr int kNoches = 40;
  std::array<std::array<std::string, kNoches>, 2> folios, errores;
  ALaVez([&](Anfitrion& host, int quien, std::barrier<>& salida) {
    for (int n = 0; n < kNoches; ++n) {
      const com::Fecha noche = com::MasDias(pruebas::Dia("2026-04-01"), n);
      salida.arrive_and_wait();
      folios[quien][n] = pruebas::GuardaUna(host, "0101", com::AIso(noche), com::AIso(com::MasDias(noche, 1)), 100,
                                            &errores[quien][n]);
    }
  });
  std::set<std::string> usados;
  for (int n = 0; n < kNoches; ++n) {
    const int gana = folios[0][n].empty() ? 1 : 0;
    EXPECT_FALSE(folios[gana][n].empty()) << "night " << n;
    EXPECT_EQ(folios[1 - gana][n], "") << "night " << n;
    // The loser is told which reservation holds the room.
    EXPECT_NE(errores[1 - gana][n].find("por la reservación " + folios[gana][n]), std::string::npos)
        << errores[1 - gana][n];
    usados.insert(folios[gana][n]);
  }
  EXPECT_EQ(usados.size(), static_cast<std::size_t>(kNoches));
  EXPECT_EQ(*usados.rbegin(), "0000000040");  // refused saves left no hole
}

TEST_F(DosHoteles, DemoDosVecesALaVezSeLlenaUna) {
  const std::string otra = ruta + ".demo";
  ALaVez([&](Anfitrion&, int, std::barrier<>& salida) {
    Opciones o = pruebas::OpcionesDePrueba(otra);
    o.demo = true;
    salida.arrive_and_wait();
    const Anfitrion host(o);
  });
  Anfitrion host(pruebas::OpcionesDePrueba(otra));
  EXPECT_EQ(com::CLng(host.conexion()->Consulta("SELECT COUNT(*) AS N FROM Habitacion")->Fields(0).Value()), 40);
}

TEST_F(DosHoteles, DemoNoTocaUnHotelConDatos) {
  Opciones o = pruebas::OpcionesDePrueba(ruta);
  o.demo = true;
  Anfitrion host(o);
  EXPECT_EQ(com::CLng(host.conexion()->Consulta("SELECT COUNT(*) AS N FROM Habitacion")->Fields(0).Value()), 3);
  EXPECT_EQ(com::CLng(host.conexion()->Consulta("SELECT COUNT(*) AS N FROM Reservacion")->Fields(0).Value()), 0);
}

}  // namespace
}  // namespace autonomo
