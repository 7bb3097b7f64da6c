// A database in a folder of its own, and short forms for the tests of the connection.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "host/standalone/conexion.h"
#include "host/standalone/postgres.h"
#include "platform/com/error.h"
#include "tests/comun/base_postgres.h"

namespace pruebas {

class BasePrueba : public ::testing::Test {
 protected:
  BasePrueba() {
    std::string plantilla = (std::filesystem::temp_directory_path() / "kv207-XXXXXX").string();
    carpeta = mkdtemp(plantilla.data());
    ruta = (carpeta / "hotel.db").string();
    reloj.Fija(com::FechaDe(2026, 3, 9, 10, 30, 15));
  }
  ~BasePrueba() override {
    std::error_code ignorado;
    std::filesystem::remove_all(carpeta, ignorado);
  }

  std::shared_ptr<autonomo::Conexion> Abre(int esperaMs = 5000) const { return Abre(ruta, esperaMs); }
  std::shared_ptr<autonomo::Conexion> Abre(const std::string& archivo, int esperaMs = 5000) const {
    autonomo::OpcionesConexion opciones;
    (autonomo::EsDireccion(archivo) ? opciones.conexion : opciones.ruta) = archivo;
    opciones.esperaMs = esperaMs;
    return autonomo::AbreConexion(opciones, reloj);
  }
  // Files in the folder, but for the checksums of one that was closed.
  std::size_t Archivos() const {
    std::size_t n = 0;
    for (const auto& archivo : std::filesystem::directory_iterator(carpeta))
      n += archivo.path().string().ends_with("-suma") ? 0 : 1;
    return n;
  }

  autonomo::Reloj reloj;
  std::filesystem::path carpeta;
  std::string ruta;
};

// The same tests on each engine: `ruta` is the file or the address of an empty database.
class EnCadaMotor : public BasePrueba, public ::testing::WithParamInterface<esquema::Motor> {
 protected:
  EnCadaMotor() {
    if (GetParam() == esquema::Motor::PostgreSQL) ruta = NuevaBasePostgres();
  }
  ~EnCadaMotor() override {
    if (GetParam() == esquema::Motor::PostgreSQL) QuitaBasePostgres(ruta);
  }
};
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): the cases of a table are named by a macro of the test library
#define EN_CADA_MOTOR(suite)                                                          \
  INSTANTIATE_TEST_SUITE_P(Sqlite, suite, ::testing::Values(esquema::Motor::Sqlite)); \
  INSTANTIATE_TEST_SUITE_P(Postgres, suite, ::testing::Values(esquema::Motor::PostgreSQL))

// First value of a query, as text; "(nada)" without rows.
inline std::string Uno(autonomo::Conexion& c, const std::string& sentencia) {
  const auto r = c.Directa(sentencia);
  return r->Eof() ? "(nada)" : com::CStr(r->Fields(0).Value());
}

// The error that a call raises; number 0 when it raises none.
inline com::Error ErrorDe(const std::function<void()>& llama) {
  try {
    llama();
  } catch (const com::Error& e) {
    return e;
  }
  return {0, "(sin error)"};
}

}  // namespace pruebas
