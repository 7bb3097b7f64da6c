// reservas-base as a process, beside clerks that are processes.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/guion/proceso.h"

namespace pruebas {
namespace {

namespace fs = std::filesystem;

class Base : public ::testing::Test {
 protected:
  Salida Di(std::vector<std::string> palabras) const {
    palabras.insert(palabras.begin(), RESERVAS_BASE);
    palabras.insert(palabras.end(), {"--registro", carpeta.Ruta("diario")});
    return Corre(palabras);
  }
  Carpeta carpeta;
  std::string hotel = carpeta.Ruta("hotel.db"), copia = carpeta.Ruta("copia.db");
};

TEST_F(Base, ElUsoErroneoDa2YExplica) {
  for (const std::vector<std::string>& palabras : {std::vector<std::string>{},
                                                   {"baila"},
                                                   {"respalda"},
                                                   {"respalda", hotel, copia, "de más"},
                                                   {"respalda", hotel, "--nada"}}) {
    const Salida s = Di(palabras);
    EXPECT_EQ(s.estado, 2);
    EXPECT_NE(s.errores.find("Uso: reservas-base"), std::string::npos);
  }
  EXPECT_EQ(Di({"--ayuda"}).estado, 0);
}

TEST_F(Base, RespaldaConElHotelAbiertoYSoloReponeConElHotelCerrado) {
  Dialogo recepcion({RESERVAS_GUION, "--base", hotel, "--demo", "--ahora", "2026-03-09T10:00"});
  recepcion.Di("sql INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('UNA')");
  recepcion.Oye();
  EXPECT_EQ(Di({"respalda", hotel}).estado, 0);
  Salida s = Di({"respalda", hotel, copia});
  EXPECT_EQ(s.estado, 0) << s.errores;
  EXPECT_NE(s.texto.find("45 reservaciones"), std::string::npos) << s.texto;
  EXPECT_EQ(Di({"respalda", hotel, copia}).estado, 1);
  recepcion.Di("sql INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('DOS')");
  recepcion.Oye();
  s = Di({"repone", hotel, copia});
  EXPECT_EQ(s.estado, 1);
  EXPECT_NE(s.errores.find("ciérrelo"), std::string::npos) << s.errores;
  // The other way round the open file is not overwritten either.
  EXPECT_EQ(Di({"respalda", copia, hotel, "--sustituye"}).estado, 1);
  recepcion.Termina();
  EXPECT_EQ(Sql(hotel, "SELECT COUNT(*) FROM Moneda WHERE Mn_Cve_Moneda IN ('UNA', 'DOS')").at(0), "2");
  s = Di({"repone", hotel});
  EXPECT_EQ(s.estado, 0) << s.errores;
  EXPECT_EQ(Sql(hotel, "SELECT Mn_Cve_Moneda FROM Moneda WHERE Mn_Cve_Moneda IN ('UNA', 'DOS')").at(0), "UNA");
  // Killed in the middle a copy is not there, and another can be made.
  for (int ms = 1; ms < 40; ms += 4) {
    Corre({RESERVAS_BASE, "respalda", hotel, carpeta.Ruta("matada.db"), "--sustituye"}, {}, ms);
    if (fs::exists(carpeta.Ruta("matada.db"))) {
      EXPECT_EQ(Sql(carpeta.Ruta("matada.db"), "PRAGMA quick_check").at(0), "ok");
    }
  }
  EXPECT_EQ(Di({"respalda", hotel, carpeta.Ruta("matada.db"), "--sustituye"}).estado, 0);
}

}  // namespace
}  // namespace pruebas
