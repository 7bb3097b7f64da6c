// Card data rest sealed, are read in clear by who may, and codes are forgotten.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/standalone/anfitrion.h"
#include "host/standalone/bandeja.h"
#include "host/standalone/cambio_llave.h"
#include "host/standalone/conexion.h"
#include "platform/regional/regional.h"
#include "tests/comun/error_de.h"

namespace autonomo {
namespace {

constexpr const char* kNumero = "4000123412345678";

class Tarjetas : public testing::Test {
 protected:
  Tarjetas() {
    std::filesystem::remove_all(carpeta);
    std::filesystem::create_directories(carpeta);
    setenv("RESERVAS_LLAVE", (carpeta / "llave").c_str(), 1);
    Abre();
    base().Execute(
        "INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Tarjeta_Numero, Cl_Tarjeta_Codigo_Seguridad) VALUES ('C1', "
        "'4000123412345678 ', '739')");
  }
  ~Tarjetas() override { unsetenv("RESERVAS_LLAVE"); }

  void Abre(const std::string& usuario = "ANA", com::Fecha ahora = com::FechaDe(2026, 3, 9, 10)) {
    host.reset();
    Opciones o;
    o.base.ruta = (carpeta / "hotel.db").string();
    o.usuario = usuario;
    o.ahora = ahora;
    host = std::make_unique<Anfitrion>(o);
  }
  Conexion& base() { return *host->conexion(); }
  std::string Lee(const std::string& columna, const std::string& tabla = "Cliente") {
    const auto rs = base().Directa("SELECT " + columna + " FROM " + tabla);
    return rs->Eof() ? "(nada)" : com::CStr(rs->Fields(0).Value());
  }
  // Whether a file of the folder holds the text.
  bool EnDisco(const std::string& texto) const {
    for (const auto& archivo : std::filesystem::directory_iterator(carpeta)) {
      std::ifstream f(archivo.path(), std::ios::binary);
      if (std::string(std::istreambuf_iterator<char>(f), {}).find(texto) != std::string::npos) return true;
    }
    return false;
  }

  const std::filesystem::path carpeta =
      std::filesystem::temp_directory_path() / ("tarjetas-" + std::to_string(getpid()));
  std::unique_ptr<Anfitrion> host;
};

TEST_F(Tarjetas, ElArchivoNoLasTieneYQuienPuedeLasLee) {
  base().Directa("INSERT INTO Reservacion_Datos_Tarjeta VALUES ('F1', 'Banco', '5111222233334444', '846', NULL)");
  base().Consulta("UPDATE Cliente SET Cl_Correo = ?, Cl_Tarjeta_Codigo_Seguridad = ?", {"a@b.mx", "627"});
  EXPECT_EQ(Lee("'[' + Cl_Tarjeta_Numero + ']'"), "[4000123412345678 ]") << "as typed";
  EXPECT_EQ(Lee("Rdt_Codigo_Seguridad", "Reservacion_Datos_Tarjeta"), "846");
  EXPECT_EQ(com::CStr(base().Execute("SELECT * FROM Cliente")->Fields("Cl_Tarjeta_Codigo_Seguridad").Value()), "627");
  for (const char* claro : {kNumero, "5111222233334444"}) EXPECT_FALSE(EnDisco(claro)) << "also in the log";
  EXPECT_EQ(std::filesystem::status(carpeta / "llave").permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  for (const char* mala : {"UPDATE Cliente SET Cl_Tarjeta_Numero = 4111222233334444",
                           "UPDATE Cliente SET Cl_Tarjeta_Numero = '41' + '11', Cl_Correo = 'x'",
                           "INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Tarjeta_Numero) VALUES ('C2', 4111222233334444)"}) {
    EXPECT_EQ(pruebas::ErrorDe([&] { base().Directa(mala); }), com::error::kSentencia) << mala;
  }
  host.reset();
  for (const char* claro : {kNumero, "5111222233334444"}) EXPECT_FALSE(EnDisco(claro)) << "closed";
  Abre();
  EXPECT_EQ(Lee("Cl_Tarjeta_Numero"), "4000123412345678 ");
}

// While they are sealed, another program changes the second one.
TEST_F(Tarjetas, LasQueEstabanEnClaroSeCifranSinPisarLoQueOtroGuarda) {
  host.reset();
  OpcionesConexion o;
  o.ruta = (carpeta / "hotel.db").string();
  const Reloj reloj;
  const auto motor = AbreMotor(o, reloj);
  motor->Directa("UPDATE Cliente SET Cl_Tarjeta_Numero = '4000123412345678'");
  motor->Directa("INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Tarjeta_Numero) VALUES ('C2', '4111222233334444')");
  motor->Directa(
      "CREATE TRIGGER otro AFTER UPDATE ON Cliente WHEN NEW.Cl_Cve_Cliente = 'C1' BEGIN UPDATE Cliente SET "
      "Cl_Tarjeta_Numero = '5111222233334444' WHERE Cl_Cve_Cliente = 'C2'; END");
  Abre();
  motor->Directa("DROP TRIGGER otro");
  EXPECT_EQ(Lee("Cl_Tarjeta_Numero", "Cliente WHERE Cl_Cve_Cliente = 'C2'"), "5111222233334444");
  const auto enBase = [&](const char* clave) {
    return com::CStr(
        motor->Consulta("SELECT Cl_Tarjeta_Numero FROM Cliente WHERE Cl_Cve_Cliente = ?", {clave})->Fields(0).Value());
  };
  EXPECT_NE(enBase("C1"), kNumero);
  Abre();
  EXPECT_EQ(Lee("Cl_Tarjeta_Numero"), kNumero);
  EXPECT_NE(enBase("C2"), "5111222233334444") << "sealed at the next opening";
}

TEST_F(Tarjetas, QuienNoTieneElPermisoVeLasUltimasCuatroYNoLasPierde) {
  base().Directa("INSERT INTO Permiso (Pe_Usuario, Pe_Pantalla, Pe_Opcion) VALUES ('ANA', 'KV207', 'CHTARJ')");
  EXPECT_EQ(Lee("Cl_Tarjeta_Numero"), "4000123412345678 ");
  Abre("LUPE");
  EXPECT_EQ(Lee("Cl_Tarjeta_Numero"), "************5678");
  EXPECT_EQ(Lee("Cl_Tarjeta_Codigo_Seguridad"), "***");
  base().Execute("UPDATE Cliente SET Cl_Tarjeta_Numero = '************5678 ', Cl_Tarjeta_Codigo_Seguridad = '***'");
  EXPECT_EQ(pruebas::TextoDeError([&] { base().Execute("UPDATE Cliente SET Cl_Tarjeta_Numero = '************9999'"); }),
            "Escriba completo el dato de la tarjeta: no se conoce el que se ocultó");
  // Also when the key is changed while it is masked.
  const std::string ruta = (carpeta / "llave").string();
  const Llave nueva = Llave::Nueva();
  const auto antes = Llave::Lee(ruta);
  Llave::Agrega(ruta, {nueva});
  OpcionesConexion hotel;
  hotel.ruta = (carpeta / "hotel.db").string();
  const auto motor = AbreMotor(hotel, host->reloj());
  EXPECT_EQ(CambiaLlave(*motor, antes, nueva), 2);
  base().Execute("UPDATE Cliente SET Cl_Tarjeta_Numero = '************5678 ', Cl_Tarjeta_Codigo_Seguridad = '***'");
  EXPECT_EQ(CuentaSellos(*motor, {nueva}).porLlave[nueva.Huella()], 2);
  Abre("ANA");
  EXPECT_EQ(Lee("Cl_Tarjeta_Numero"), "4000123412345678 ");
  EXPECT_EQ(Lee("Cl_Tarjeta_Codigo_Seguridad"), "739");
}

// All that a masked session sees of them is the same; each row keeps its own, and no other gets one of them.
TEST_F(Tarjetas, DosQueTerminanIgualNoSeMezclan) {
  base().Directa(
      "INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Tarjeta_Numero, Cl_Tarjeta_Codigo_Seguridad) VALUES ('C2', "
      "'5111999912345678', '846'), ('C3', '4111222233334444', '321')");
  base().Directa("INSERT INTO Reservacion_Datos_Tarjeta VALUES ('F1', 'Banco', '6011777712345678', '159', NULL)");
  base().Directa("INSERT INTO Permiso (Pe_Usuario, Pe_Pantalla, Pe_Opcion) VALUES ('ANA', 'KV207', 'CHTARJ')");
  const std::string deCliente =
                        "SELECT Cl_Tarjeta_Numero, Cl_Tarjeta_Codigo_Seguridad FROM Cliente WHERE "
                        "Cl_Cve_Cliente = ",
                    deReservacion =
                        "SELECT Rdt_Numero, Rdt_Codigo_Seguridad FROM Reservacion_Datos_Tarjeta WHERE Rs_Folio = ";
  const auto lee = [&](const std::string& sentencia) {
    const auto rs = base().Directa(sentencia);
    return rs->Eof() ? "(nada)" : com::CStr(rs->Fields(0).Value()) + "/" + com::CStr(rs->Fields(1).Value());
  };
  const auto inserta = [&](const std::string& folio, const std::string& numero) {
    base().Execute("DELETE FROM Reservacion_Datos_Tarjeta WHERE Rs_Folio = '" + folio + "' ");
    base().Execute(
        "INSERT INTO Reservacion_Datos_Tarjeta(Rs_Folio, Rdt_Banco, Rdt_Numero, Rdt_Codigo_Seguridad) "
        "VALUES('" +
        folio + "', 'Banco', '" + numero + "', '***')");
  };
  Abre("LUPE");
  EXPECT_EQ(lee(deCliente + "'C3'"), "************4444/***");
  for (const char* clave : {"'C1'", "'C2'"}) EXPECT_EQ(lee(deCliente + clave), "************5678/***");
  EXPECT_EQ(com::CStr(base().Consulta(deReservacion + "?", {"F1"})->Fields(0).Value()), "************5678");
  for (const char* clave : {"C2", "c1 "})
    base().Execute(
        "UPDATE Cliente SET Cl_Tarjeta_Numero= '************5678', Cl_Tarjeta_Codigo_Seguridad = '***' WHERE "
        "Cl_Cve_Cliente = '" +
        std::string(clave) + "' ");
  inserta("F1", "************5678");
  inserta("F3", "************4444");
  EXPECT_EQ(pruebas::TextoDeError([&] { inserta("F2", "************5678"); }),
            "Escriba completo el dato de la tarjeta: hay más de una que se muestra igual");
  base().Consulta("UPDATE Cliente SET Cl_Tarjeta_Codigo_Seguridad = ?, Cl_Correo = 'a@b.mx' WHERE Cl_Cve_Cliente = ?",
                  {"***", "C2"});
  Abre("ANA");
  EXPECT_EQ(lee(deCliente + "'C1'"), "4000123412345678 /739");
  EXPECT_EQ(lee(deCliente + "'C2'"), "5111999912345678/846");
  EXPECT_EQ(lee(deReservacion + "'F1'"), "6011777712345678/159");
  EXPECT_EQ(lee(deReservacion + "'F3'"), "4111222233334444/321") << "the code that goes with the number";
  EXPECT_EQ(lee(deReservacion + "'F2'"), "(nada)");
}

// Each statement gives the other row alone.
TEST_F(Tarjetas, LoLeidoEsDeUnaFilaSoloSiSeNombraSinDuda) {
  base().Directa(
      "INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Tarjeta_Numero, Cl_Tarjeta_Codigo_Seguridad) VALUES ('C2', "
      "'5111999912345678', '846')");
  base().Consulta(
      "INSERT INTO Reservacion (Rs_Folio, Cl_Cve_Cliente, Rs_Huesped, Rs_Salida) VALUES ('F1', 'C1', 'C2', ?)",
      {com::FechaDe(2026, 3, 12)});
  base().Directa("INSERT INTO Permiso (Pe_Usuario, Pe_Pantalla, Pe_Opcion) VALUES ('ANA', 'KV207', 'CHTARJ')");
  const std::string lee = "SELECT Cl_Tarjeta_Numero, Cl_Tarjeta_Codigo_Seguridad FROM Cliente ";
  for (const char* otra :
       {"WHERE Cl_Cve_Cliente = 'C1' AND Cl_Correo = 'x' OR Cl_Cve_Cliente = 'C2'", "WHERE NOT Cl_Cve_Cliente = 'C1'",
        "WHERE (1 = 1 AND Cl_Cve_Cliente = 'C1' AND 1 = 1) = 0", "WHERE Cl_Cve_Cliente = 'C1' = 0",
        "WHERE CASE WHEN 1 = 1 AND Cl_Cve_Cliente = 'C1' AND 1 = 1 THEN 0 ELSE 1 END = 1",
        ("WHERE Cl_Cve_Cliente = 'C1' AND 1 = 0 UNION SELECT Cl_Tarjeta_Numero, '' FROM Cliente WHERE Cl_Cve_Cliente = "
         "'C2'"),
        "WHERE Cl_Cve_Cliente = (SELECT MAX(Rs_Huesped) FROM Reservacion WHERE Cl_Cve_Cliente = 'C1')",
        "c JOIN Reservacion r ON Rs_Huesped = c.Cl_Cve_Cliente WHERE r.Cl_Cve_Cliente = 'C1'",
        "c, Reservacion r WHERE Rs_Huesped = c.Cl_Cve_Cliente AND r.Cl_Cve_Cliente = 'C1'",
        "/* WHERE Cl_Cve_Cliente = 'C1' AND */ WHERE Cl_Cve_Cliente = 'C2'",
        "-- WHERE Cl_Cve_Cliente = 'C1' AND\nWHERE Cl_Cve_Cliente = 'C2'",
        "-- C1's is another\nWHERE Cl_Cve_Cliente = 'C2'"}) {
    Abre("LUPE");
    base().Directa(lee + "WHERE Cl_Cve_Cliente = 'C1'");
    const auto rs = base().Directa(lee + otra);
    ASSERT_EQ(rs->RecordCount(), 1) << otra;
    EXPECT_EQ(com::CStr(rs->Fields(0).Value()), "************5678") << otra;
    base().Execute(
        "UPDATE Cliente SET Cl_Tarjeta_Numero = '************5678', Cl_Tarjeta_Codigo_Seguridad = '***' WHERE "
        "Cl_Cve_Cliente = 'C1'");
    Abre("ANA");
    ASSERT_EQ(Lee("Cl_Tarjeta_Numero + Cl_Tarjeta_Codigo_Seguridad", "Cliente WHERE Cl_Cve_Cliente = 'C1'"),
              "4000123412345678 739")
        << otra;
  }
}

TEST_F(Tarjetas, LoQueYaNoTieneLaFilaNoVuelve) {
  base().Directa("INSERT INTO Permiso (Pe_Usuario, Pe_Pantalla, Pe_Opcion) VALUES ('ANA', 'KV207', 'CHTARJ')");
  base().Directa(
      "INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Tarjeta_Numero, Cl_Tarjeta_Codigo_Seguridad) VALUES ('C3', "
      "'4111222233330000', '321')");
  const auto lee = [&](const std::string& columnas, const char* clave = "C1") {
    base().Directa("SELECT " + columnas + " FROM Cliente WHERE Cl_Cve_Cliente = '" + clave + "'");
  };
  const auto escribe = [&](const std::string& numero) {
    return pruebas::TextoDeError([&] {
      base().Execute(
          "INSERT INTO Reservacion_Datos_Tarjeta (Rs_Folio, Rdt_Numero, Rdt_Codigo_Seguridad) VALUES ('F1', '" +
          numero + "', '***')");
    });
  };
  const std::string numero = "Cl_Tarjeta_Numero", codigo = "Cl_Tarjeta_Codigo_Seguridad";
  const std::string seOculto = "Escriba completo el dato de la tarjeta: no se conoce el que se ocultó";
  Opciones o;
  o.base.ruta = (carpeta / "hotel.db").string();
  o.usuario = "ANA";
  Anfitrion jefa(o);
  const auto cambia = [&](const std::string& columna, const char* valor) {
    jefa.conexion()->Directa("UPDATE Cliente SET " + columna + " = '" + valor + "' WHERE Cl_Cve_Cliente = 'C1'");
  };
  for (const std::string& columnas : {numero + ", " + codigo, codigo, std::string("*")}) {
    Abre("LUPE");
    lee("*", "C3");  // whose code must not serve either
    lee(numero);
    lee(codigo);
    cambia(numero, "4000123412345678 ");  // the same, sealed anew
    lee(numero);
    lee("LEN(Cl_Tarjeta_Numero) AS Largo, LEN(Cl_Tarjeta_Codigo_Seguridad) AS Otro");
    EXPECT_EQ(escribe("************5678"), "") << "asked for one after the other";
    base().Execute("DELETE FROM Reservacion_Datos_Tarjeta");
    cambia(codigo, "");
    lee(columnas);
    EXPECT_EQ(escribe("************5678"), seOculto) << columnas;
    cambia(codigo, "739");
  }
  lee(numero + ", " + codigo);
  cambia(numero, "5111222233339999");
  lee(numero);
  EXPECT_EQ(escribe("************9999"), seOculto) << "the code of the number before";
}

TEST_F(Tarjetas, SinLaLlaveSeDiceYLoDemasSigue) {
  std::filesystem::rename(carpeta / "llave", carpeta / "aparte");
  Abre();
  const auto pide = [&](const char* sentencia) { return pruebas::TextoDeError([&] { base().Directa(sentencia); }); };
  const std::string falta = "En este equipo no está la llave con que se guardan las tarjetas (";
  EXPECT_EQ(pide("SELECT Cl_Tarjeta_Numero FROM Cliente").substr(0, falta.size()), falta);
  EXPECT_EQ(pide("UPDATE Cliente SET Cl_Tarjeta_Numero = '1234'").substr(0, falta.size()), falta);
  EXPECT_FALSE(std::filesystem::exists(carpeta / "llave")) << "no second key beside the lost one";
  std::ofstream(carpeta / "llave") << std::string(64, 'a') << '\n';
  std::filesystem::permissions(carpeta / "llave", std::filesystem::perms::owner_all);
  Abre();
  EXPECT_EQ(pide("UPDATE Cliente SET Cl_Tarjeta_Numero = '1234'").substr(0, falta.size()), falta) << "another key";
  base().Directa("UPDATE Cliente SET Cl_Correo = 'a@b.mx'");
  EXPECT_EQ(com::CStr(base().Execute("SELECT * FROM Cliente")->Fields("Cl_Tarjeta_Numero").Value()), "");
  std::ofstream(carpeta / "llave", std::ios::app) << std::ifstream(carpeta / "aparte").rdbuf();
  Abre();
  EXPECT_EQ(Lee("Cl_Tarjeta_Numero"), "4000123412345678 ") << "its line beside the other";
  std::filesystem::permissions(carpeta / "llave", std::filesystem::perms::others_read,
                               std::filesystem::perm_options::add);
  Abre();
  EXPECT_EQ(pruebas::ErrorDe([&] { Lee("Cl_Tarjeta_Numero"); }), com::error::kSoloLectura);
}

TEST_F(Tarjetas, ElCodigoSeOlvidaAlCancelarYAlTerminarLaEstancia) {
  const auto reserva = [&](const char* folio, const char* cliente, const char* salida) {
    base().Consulta("INSERT INTO Reservacion (Rs_Folio, Rs_Huesped, Rs_Salida) VALUES (?, ?, ?)",
                    {folio, cliente, *com::DeIso(salida)});
    base().Consulta(
        "INSERT INTO Reservacion_Datos_Tarjeta (Rs_Folio, Rdt_Numero, Rdt_Codigo_Seguridad) "
        "VALUES (?, '4000123412345678', '846')",
        {folio});
  };
  const auto codigos = [&] {
    std::string todos;
    for (const char* s : {"SELECT Rdt_Codigo_Seguridad FROM Reservacion_Datos_Tarjeta ORDER BY Rs_Folio",
                          "SELECT Cl_Tarjeta_Codigo_Seguridad FROM Cliente"}) {
      for (const auto rs = base().Directa(s); !rs->Eof(); rs->MoveNext())
        todos += com::CStr(rs->Fields(0).Value()) + ";";
    }
    return todos;
  };
  reserva("F1", "C1", "2026-03-12");
  reserva("F2", "C1", "2026-03-13");
  reserva("F3", "C9", "2026-03-08");
  base().Execute("UPDATE Reservacion SET Es_Cve_Estado = 'CA' WHERE Rs_Folio = 'F1'");
  EXPECT_EQ(codigos(), ";846;846;739;") << "the client has another stay to come";
  const auto version = [&] { return Lee("Rv_Version", "Reservacion_Version WHERE Rs_Folio = 'F3'"); };
  EXPECT_EQ(version(), "2");
  Abre();
  EXPECT_EQ(codigos(), ";846;;739;") << "a stay that ended";
  EXPECT_EQ(version(), "2") << "who holds it can still store it";
  base().Execute("UPDATE Reservacion_Datos_Tarjeta SET Rdt_Numero = '5111222233334444' WHERE Rs_Folio = 'F3'");
  EXPECT_EQ(version(), "3");
  base().Execute("UPDATE Reservacion SET Es_Cve_Estado = 'CA' WHERE Rs_Folio = 'F2'");
  EXPECT_EQ(codigos(), ";;;;");
  EXPECT_EQ(Lee("Cl_Tarjeta_Numero"), "4000123412345678 ") << "the number stays";
  reserva("F4", "C9", com::AIso(com::MasDias(Reloj().Ahora(), 30)).c_str());
  Abre("ANA", com::FechaDe(2126, 3, 9));
  EXPECT_EQ(codigos(), ";;;846;;") << "a clock that was put forward to try something";
}

// What cannot be taken back waits while the desk's clock does not fit what was done in the hotel.
TEST_F(Tarjetas, ConElRelojEnDudaNoSeOlvidaNiSeVenceNada) {
  const com::Fecha ahora = Reloj().Ahora();
  base().Consulta("INSERT INTO Reservacion (Rs_Folio, Rs_Salida) VALUES ('F1', ?)", {com::MasDias(ahora, -20)});
  base().Consulta("INSERT INTO Reservacion (Rs_Folio, Rs_Huesped, Rs_Salida) VALUES ('F2', 'C1', ?)",
                  {com::MasDias(ahora, -20)});
  base().Execute("INSERT INTO Reservacion_Datos_Tarjeta (Rs_Folio, Rdt_Codigo_Seguridad) VALUES ('F1', '846')");
  base().Consulta("INSERT INTO Correo_Salida (Cs_Estado, Cs_Fecha) VALUES ('PENDIENTE', ?)",
                  {com::MasDias(ahora, -20)});
  for (const int dias : {-3650, 3, 0}) {
    base().Execute("DELETE FROM Bitacora");
    base().Consulta("INSERT INTO Bitacora (Bt_Fecha) VALUES (?)", {com::MasDias(ahora, dias)});
    Abre("ANA", ahora);
    const auto avisos = host->TomaAvisos();
    const bool duda =
        !avisos.empty() && avisos[0].starts_with("El reloj de este equipo dice " + regional::FechaCorta(ahora));
    EXPECT_EQ(duda, dias != 0) << dias;
    EXPECT_EQ(Lee("Rdt_Codigo_Seguridad", "Reservacion_Datos_Tarjeta"), duda ? "846" : "") << dias;
    const std::string cancelada = "F" + std::to_string(10 + dias);
    base().Consulta("INSERT INTO Reservacion (Rs_Folio, Rs_Huesped, Rs_Salida) VALUES (?, 'C1', ?)",
                    {cancelada, com::MasDias(ahora, 20)});
    base().Execute("UPDATE Reservacion SET Es_Cve_Estado = 'CA' WHERE Rs_Folio = '" + cancelada + "'");
    EXPECT_EQ(Lee("Cl_Tarjeta_Codigo_Seguridad"), duda ? "739" : "") << "his other stay may be to come, " << dias;
    PorEnviar(base(), "yo", ahora);
    EXPECT_EQ(Lee("Cs_Estado", "Correo_Salida"), duda ? "PENDIENTE" : "VENCIDO") << dias;
  }
}

}  // namespace
}  // namespace autonomo
