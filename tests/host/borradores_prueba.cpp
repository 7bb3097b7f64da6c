// Drafts in files: whose they are, what becomes of those that a program left behind, and of damaged ones.
#include "host/standalone/borradores.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

#include "platform/com/error.h"
#include "schema/esquema.h"

namespace pruebas {
namespace {

using autonomo::Borradores;

constexpr const char* kTexto = "campo\ttxtNotas\tCuna\nfin\n";
const com::Fecha kCuando = *com::DeIso("2026-03-09T10:12:30");

std::vector<std::filesystem::path> Archivos(const std::filesystem::path& carpeta, const char* extension) {
  std::vector<std::filesystem::path> archivos;
  for (const auto& archivo : std::filesystem::directory_iterator(carpeta)) {
    if (archivo.path().extension().string().starts_with(extension)) archivos.push_back(archivo.path());
  }
  return archivos;
}

class BorradoresPrueba : public testing::Test {
 protected:
  Borradores De(const char* usuario = "ANA") { return {"/hotel.db", usuario, ruta_}; }
  void Deja(const char* usuario = "ANA") {
    Borradores muerto = De(usuario);
    muerto.Guarda(kTexto, kCuando);
  }

  QTemporaryDir carpeta_;
  std::string ruta_ = carpeta_.filePath(QStringLiteral("estado/reservas")).toStdString();
};

// Two programs of one user write a draft each; what the one that is gone left is the other's to take, once.
TEST_F(BorradoresPrueba, CadaProgramaTieneElSuyoYTomaElDeQuienYaNoEsta) {
  auto viva = std::make_unique<Borradores>("/hotel.db", "ANA", ruta_);
  viva->Guarda("una", kCuando);
  Deja();
  Deja("LUIS");
  EXPECT_EQ(Archivos(ruta_, ".borrador").size(), 3U);
  for (const auto& archivo : Archivos(ruta_, ".borrador")) {
    EXPECT_EQ(std::filesystem::status(archivo).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  }

  Borradores otra = De("ana");  // the login is one, however it is written
  auto hallado = otra.Toma();
  ASSERT_TRUE(hallado);
  EXPECT_EQ(hallado->contenido, kTexto);
  EXPECT_EQ(hallado->cuando, kCuando);
  EXPECT_EQ(hallado->esquema, esquema::kVersion);
  EXPECT_EQ(hallado->motivo, "");
  Borradores tercera = De();
  EXPECT_FALSE(tercera.Toma()) << "another program has it";
  // It goes on in the same file, and is gone when it is forgotten.
  otra.Guarda("mas", kCuando);
  EXPECT_EQ(Archivos(ruta_, ".borrador").size(), 3U);
  EXPECT_FALSE(otra.Toma());

  // Left for another session: what is captured meanwhile does not write over it.
  viva.reset();
  Borradores cuarta = De();
  for (const char* contenido : {"una", "mas"}) {
    hallado = cuarta.Toma();
    ASSERT_TRUE(hallado);
    EXPECT_EQ(hallado->contenido, contenido);
    cuarta.Suelta();
  }
  cuarta.Guarda("nueva", kCuando);
  EXPECT_EQ(Archivos(ruta_, ".borrador").size(), 4U);
  cuarta.Olvida();
  EXPECT_EQ(Archivos(ruta_, ".borrador").size(), 3U);
}

// Told and kept, never half read; the others are found all the same.
TEST_F(BorradoresPrueba, UnoDanadoODeOtraVersionSeApartaYSeDice) {
  struct Caso {
    const char* motivo;
    std::string (*cambia)(const std::string&);
  };
  const Caso casos[] = {
      {"está dañado", [](const std::string& t) { return std::string(t).replace(t.find("Cuna"), 1, "X"); }},
      {"está dañado", [](const std::string& t) { return t.substr(0, t.size() - 3); }},
      {"no es un borrador o está dañado", [](const std::string&) { return std::string(); }},
      {"lo escribió otra versión del programa",
       [](const std::string& t) { return std::string(t).replace(t.find("reservas 1"), 10, "reservas 2"); }},
  };
  for (const Caso& caso : casos) {
    Deja();
    const std::filesystem::path archivo = Archivos(ruta_, ".borrador").front();
    std::ifstream lee(archivo, std::ios::binary);
    const std::string danado = caso.cambia({std::istreambuf_iterator<char>(lee), {}});
    std::ofstream(archivo, std::ios::binary | std::ios::trunc) << danado;
    const auto antes = Archivos(ruta_, ".ilegible").size();
    Borradores otra = De();
    const auto hallado = otra.Toma();
    ASSERT_TRUE(hallado);
    EXPECT_EQ(hallado->motivo, caso.motivo);
    EXPECT_EQ(hallado->contenido, "");
    EXPECT_EQ(Archivos(ruta_, ".ilegible").size(), antes + 1);
    std::ifstream aparte(hallado->ruta, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(aparte), {}), danado);
    EXPECT_FALSE(otra.Toma());
  }
  Deja();
  Borradores otra = De();
  EXPECT_EQ(otra.Toma().value().contenido, kTexto);
}

// Where it cannot be written the clerk is told; the draft that was there stays.
TEST_F(BorradoresPrueba, SinDondeEscribirSeDiceYElAnteriorSeQueda) {
  Borradores borradores = De();
  borradores.Guarda(kTexto, kCuando);
  const std::string archivo = Archivos(ruta_, ".borrador").front().string();
  std::filesystem::create_directories(archivo + ".nuevo/x");
  try {
    borradores.Guarda("otro", kCuando);
    ADD_FAILURE();
  } catch (const com::Error& e) {
    EXPECT_EQ(e.Numero(), com::error::kSoloLectura);
    EXPECT_TRUE(e.Descripcion().starts_with("No se puede guardar el borrador")) << e.Descripcion();
  }
  EXPECT_TRUE(std::filesystem::exists(archivo));
}

}  // namespace
}  // namespace pruebas
