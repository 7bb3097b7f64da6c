// reservas-base clave as a process, on each engine: the same cards are read whatever happens to their keys.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "tests/guion/proceso.h"
#include "tests/host/base_prueba.h"

namespace pruebas {
namespace {

class Claves : public EnCadaMotor {
 protected:
  Claves() {
    setenv("RESERVAS_LLAVE", llaves.c_str(), 1);
    std::string altas;
    for (int i = 100; i < 100 + kClientes; ++i) {
      const std::string n = std::to_string(i);
      altas += "sql INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Tarjeta_Numero, Cl_Tarjeta_Codigo_Seguridad) VALUES ('C" +
               n + "', '4000123412345" + n + "', '" + n + "')\n";
    }
    EXPECT_EQ(Guion(altas + "sql INSERT INTO Reservacion_Datos_Tarjeta (Rs_Folio, Rdt_Numero) VALUES ('F1', '4111')\n")
                  .estado,
              0);
    antes = Tarjetas();
    EXPECT_NE(antes.find("4000123412345119"), std::string::npos) << antes;
  }
  ~Claves() override { unsetenv("RESERVAS_LLAVE"); }

  std::vector<std::string> ConBase(std::vector<std::string> palabras) const {
    palabras.insert(palabras.end(), {autonomo::EsDireccion(ruta) ? "--conexion" : "--base", ruta});
    return palabras;
  }
  Salida Guion(const std::string& ordenes) const { return Corre(ConBase({RESERVAS_GUION}), ordenes); }
  std::string Tarjetas() const {
    return Guion(
               "sql SELECT Cl_Tarjeta_Numero, Cl_Tarjeta_Codigo_Seguridad FROM Cliente ORDER BY Cl_Cve_Cliente\n"
               "sql SELECT Rdt_Numero FROM Reservacion_Datos_Tarjeta\n")
        .texto;
  }
  Salida Clave(std::vector<std::string> opciones = {}, int matarMs = -1) const {
    opciones.insert(opciones.begin(), {RESERVAS_BASE, "clave", ruta});
    return Corre(opciones, {}, matarMs);
  }
  // The one key that all cards are under.
  std::string Llave() const {
    const Salida s = Clave();
    EXPECT_EQ(s.estado, 0) << s.texto << s.errores;
    const std::size_t abre = s.texto.find(": abre " + std::to_string(2 * kClientes + 1) + " datos");
    EXPECT_NE(abre, std::string::npos) << s.texto;
    return abre == std::string::npos ? s.texto : s.texto.substr(abre - 8, 8);
  }
  void EnElMotor(const std::string& sqlite, const std::string& postgres) const {
    if (autonomo::EsDireccion(ruta)) {
      EnPostgres(ruta, postgres);
    } else {
      Sql(ruta, sqlite);
    }
  }

  static constexpr int kClientes = 20;
  const std::string llaves = (carpeta / "llaves").string(), copia = (carpeta / "copia").string();
  std::string antes;
};

TEST_P(Claves, CambiadaOInterrumpidaSeLeenLasMismasTarjetas) {
  const std::string primera = Llave();
  Dialogo recepcion(ConBase({RESERVAS_GUION}));
  recepcion.Di("sql UPDATE Cliente SET Cl_Tarjeta_Codigo_Seguridad = '100' WHERE Cl_Cve_Cliente = 'C100'");
  recepcion.Oye();
  Salida s = Clave({"--cambia"});
  EXPECT_EQ(s.estado, 0) << s.errores;
  const std::string segunda = Llave();
  EXPECT_NE(segunda, primera);
  EXPECT_EQ(Tarjetas(), antes);
  // A program that was at work goes on with the new key.
  recepcion.Di("sql UPDATE Cliente SET Cl_Tarjeta_Codigo_Seguridad = '100' WHERE Cl_Cve_Cliente = 'C100'");
  recepcion.Oye();
  recepcion.Termina();
  EXPECT_EQ(Llave(), segunda);
  // Killed when some cards are written: each takes a tenth of a second.
  EnElMotor(
      "CREATE TRIGGER Lenta BEFORE UPDATE ON Cliente BEGIN SELECT COUNT(*) FROM (WITH RECURSIVE n(i) AS (SELECT 1 "
      "UNION ALL SELECT i + 1 FROM n WHERE i < 400000) SELECT i FROM n); END",
      "CREATE FUNCTION Lenta() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN PERFORM pg_sleep(0.1); RETURN NEW; END'; "
      "CREATE TRIGGER Lenta BEFORE UPDATE ON Cliente FOR EACH ROW EXECUTE FUNCTION Lenta()");
  s = Clave({"--cambia"}, 800);
  EXPECT_EQ(s.estado, -1) << "it was still at it";
  EXPECT_EQ(Llave(), segunda);
  EXPECT_EQ(Tarjetas(), antes);
  // One card that cannot be written.
  EnElMotor("DROP TRIGGER Lenta", "DROP TRIGGER Lenta ON Cliente");
  EnElMotor("CREATE TRIGGER Falla BEFORE UPDATE ON Reservacion_Datos_Tarjeta BEGIN SELECT RAISE(ABORT, 'no'); END",
            "CREATE FUNCTION Falla() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN RAISE EXCEPTION ''no''; END'; "
            "CREATE TRIGGER Falla BEFORE UPDATE ON Reservacion_Datos_Tarjeta FOR EACH ROW EXECUTE FUNCTION Falla()");
  EXPECT_EQ(Clave({"--cambia"}).estado, 1);
  EXPECT_EQ(Llave(), segunda);
  EXPECT_EQ(Tarjetas(), antes);
}

TEST_P(Claves, SeLlevaAOtroEquipoYNoSePisaNada) {
  const std::string suya = Llave();
  EXPECT_EQ(Clave({"--exporta", copia, "--cambia"}).estado, 1);
  EXPECT_EQ(Clave({"--agrega"}).estado, 0);
  EXPECT_EQ(Llave(), suya) << "another one is at hand, not in use";
  Salida s = Clave({"--exporta", copia});
  EXPECT_EQ(s.estado, 0) << s.errores;
  EXPECT_EQ(s.texto.find(Lee(copia).substr(0, 64)), std::string::npos) << "the key itself is not shown";
  EXPECT_EQ(std::filesystem::status(copia).permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  const std::string copiada = Lee(copia);
  EXPECT_EQ(copiada.size(), 65) << "this hotel's alone";
  EXPECT_EQ(Clave({"--exporta", llaves}).estado, 1);
  EXPECT_EQ(Clave({"--exporta", copia}).estado, 1);
  EXPECT_EQ(Lee(copia), copiada);
  // On another computer, which has the key of another hotel.
  const std::string ajena = std::string(64, 'a') + "\n";
  std::ofstream(llaves) << ajena;
  s = Clave();
  EXPECT_EQ(s.estado, 1);
  EXPECT_NE(s.texto.find("MAL   Llave " + suya + ": no está"), std::string::npos) << s.texto;
  for (const auto& opciones :
       {std::vector<std::string>{"--cambia"}, {"--exporta", copia + "2"}, {"--importa", llaves}, {"--importa", ruta}}) {
    EXPECT_EQ(Clave(opciones).estado, 1) << opciones[0];
    EXPECT_EQ(Lee(llaves), ajena) << opciones[0];
  }
  std::filesystem::permissions(copia, std::filesystem::perms::all);  // as on a stick
  EXPECT_EQ(Clave({"--importa", copia}).estado, 0);
  EXPECT_EQ(Clave({"--importa", copia}).estado, 0);
  EXPECT_EQ(Lee(llaves), copiada + ajena);
  EXPECT_EQ(Tarjetas(), antes);
}

EN_CADA_MOTOR(Claves);

}  // namespace
}  // namespace pruebas
