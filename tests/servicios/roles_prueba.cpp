// Rights that hold in the server itself, past the program: what a clerk's session and a clerk's own role may do there.
#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <thread>
#include <vector>

#include "host/standalone/cifrado.h"
#include "host/standalone/permisos.h"
#include "host/standalone/usuarios.h"
#include "platform/com/error.h"
#include "schema/roles.h"
#include "tests/comun/base_postgres.h"
#include "tests/comun/error_de.h"
#include "tests/servicios/hotel_prueba.h"

namespace autonomo {
namespace {

using pruebas::EnPostgres;
using pruebas::ErrorDe;

// Statements that only the right to cards allows, and those that nobody but the owner may.
constexpr const char* kDeTarjetas[] = {
    "SELECT Rdt_Numero FROM public.Reservacion_Datos_Tarjeta",
    "SELECT Cl_Tarjeta_Numero FROM public.Cliente",
    "DELETE FROM public.Reservacion_Datos_Tarjeta",
};
constexpr const char* kDeNadie[] = {
    "INSERT INTO public.Bitacora (Bt_Texto) VALUES ('inventado')",
    "UPDATE Bitacora SET Bt_Texto = 'cambiado'",
    "DELETE FROM Bitacora",
    "DELETE FROM public.Bitacora",
    "DELETE FROM Noche_Vendida",
    "SELECT * FROM kv207_mostrador.Retirada",
    "UPDATE kv207_usuarios.Usuario SET Us_Nombre = ''",
    "DROP TRIGGER Sobreventa_Linea ON Reservacion_Detalle",
};
constexpr const char* kDeAdministra[] = {
    "UPDATE Parametro SET Pm_Valor = Pm_Valor", "UPDATE Permiso SET Pe_Opcion = Pe_Opcion",
    "UPDATE Usuario SET Us_Nombre = Us_Nombre", "SELECT Us_Contrasena FROM public.Usuario",
    "UPDATE Tarifa SET Tf_Precio = Tf_Precio",
};

class RolesPostgres : public ::testing::Test {
 protected:
  RolesPostgres() {
    Anfitrion dueno(Como("JEFE"));
    pruebas::LlenaHotelChico(dueno);
    for (const char* sentencia :
         {"INSERT INTO Reservacion (Rs_Folio, Cl_Cve_Cliente) VALUES ('77', '0000000001')",
          "INSERT INTO Reservacion_Datos_Tarjeta (Rs_Folio, Rdt_Banco, Rdt_Numero, Rdt_Codigo_Seguridad) "
          "VALUES ('77', 'Azul', '4111111111111111 ', '987')",
          "UPDATE Cliente SET Cl_Tarjeta_Numero = '5222222222222223' WHERE Cl_Cve_Cliente = '0000000001'"})
      dueno.conexion()->Execute(sentencia);
    GuardaUsuario(*dueno.conexion(), {"JEFE", ""}, "bastante larga", {kPermisoTarjetas, kPermisoConfiguracion});
  }
  ~RolesPostgres() override { pruebas::QuitaBasePostgres(ruta); }

  Opciones Como(const std::string& usuario, const std::string& direccion = {}) const {
    Opciones opciones = pruebas::OpcionesDePrueba(direccion.empty() ? ruta : direccion);
    opciones.usuario = usuario;
    opciones.identifica = [usuario](Conexion&) { return usuario; };
    return opciones;
  }
  std::string Nombre() const { return ruta.substr(ruta.find("@/") + 2, ruta.find('?') - ruta.find("@/") - 2); }
  // The address with another role.
  std::string Con(const std::string& rol) const { return "postgresql://" + rol + ruta.substr(ruta.find('@')); }
  static std::string Uno(Anfitrion& host, const std::string& sentencia) {
    const auto filas = host.conexion()->Directa(sentencia);
    return filas->Eof() ? "(nada)" : com::CStr(filas->Fields(0).Value());
  }
  template <class Sentencias>
  static void Puede(Anfitrion& host, const Sentencias& sentencias, bool puede) {
    for (const char* sentencia : sentencias) {
      host.conexion()->BeginTrans();
      EXPECT_EQ(ErrorDe([&] { host.conexion()->Directa(sentencia); }), puede ? 0 : com::error::kSoloLectura)
          << sentencia;
      host.conexion()->RollbackTrans();
    }
  }
  // As a save writes it.
  static void GuardaTarjeta(Anfitrion& host, const std::string& numero, const std::string& codigo) {
    host.conexion()->BeginTrans();
    try {
      host.conexion()->Execute("DELETE FROM Reservacion_Datos_Tarjeta WHERE Rs_Folio = '77' ");
      host.conexion()->Execute(
          "INSERT INTO Reservacion_Datos_Tarjeta(Rs_Folio,Rdt_Banco,Rdt_Numero,Rdt_Codigo_Seguridad)VALUES ("
          "'77','Azul ','" +
          numero + " ','" + codigo + "')");
      host.conexion()->CommitTrans();
    } catch (const com::Error&) {
      host.conexion()->RollbackTrans();
      throw;
    }
  }
  std::string LasTarjetas() {
    Anfitrion jefe(Como("JEFE"));
    return Uno(jefe,
               "SELECT Rdt_Numero || '|' || Rdt_Codigo_Seguridad FROM Reservacion_Datos_Tarjeta WHERE Rs_Folio = '77'");
  }

  const std::string ruta = pruebas::NuevaBasePostgres();
};

TEST_F(RolesPostgres, LaSesionDeUnRecepcionistaNoPuedeMasQueEl) {
  {
    Anfitrion ana(Como("ANA"));
    Puede(ana, kDeTarjetas, false);
    Puede(ana, kDeNadie, false);
    Puede(ana, kDeAdministra, false);
    // She works as ever: cards hidden, saves that keep or replace them, nights guarded, the change log added to.
    constexpr const char* kTarjeta = "SELECT Rdt_Numero FROM Reservacion_Datos_Tarjeta WHERE Rs_Folio = '77'";
    EXPECT_EQ(Uno(ana, kTarjeta), "************1111");
    EXPECT_EQ(Uno(ana, "SELECT Cl_Tarjeta_Numero FROM Cliente WHERE Cl_Cve_Cliente = '0000000001'"),
              "************2223");
    GuardaTarjeta(ana, "************1111", "***");
    EXPECT_EQ(LasTarjetas(), "4111111111111111 |987");
    EXPECT_EQ(ErrorDe([&] { GuardaTarjeta(ana, "************9999", "***"); }), com::error::kRestriccion);
    EXPECT_EQ(LasTarjetas(), "4111111111111111 |987");
    GuardaTarjeta(ana, "************2223", "***");  // of its client, as a new reservation shows it
    EXPECT_EQ(LasTarjetas().substr(0, 16), "5222222222222223");
    GuardaTarjeta(ana, "6333333333333334", "");
    EXPECT_EQ(Uno(ana, kTarjeta), "************3334");
    ana.conexion()->Execute(
        "UPDATE Cliente SET Cl_Tarjeta_Numero = '************2223', Cl_Telefono = '55' "
        "WHERE Cl_Cve_Cliente = '0000000001'");
    ana.conexion()->Execute("INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1) VALUES ('9', 'Nueva')");
    EXPECT_EQ(EnPostgres(ruta, "SELECT Es_Cve_Estado || Cl_Telefono FROM Cliente WHERE Cl_Cve_Cliente = '9'"), "AC");
    EXPECT_EQ(EnPostgres(ruta, "SELECT COUNT(*) FROM kv207_mostrador.Retirada"), "0");
    std::string error;
    EXPECT_EQ(pruebas::GuardaUna(ana, "0101", "2026-04-01", "2026-04-02", 100, &error), "0000000001") << error;
    EXPECT_EQ(pruebas::GuardaUna(ana, "0101", "2026-04-01", "2026-04-02", 100, &error), "");
    EXPECT_NE(error.find("ya está reservada la noche"), std::string::npos) << error;
    CreaUtilerias(ana)->RegistraBitacora("RESERVACION", "77", "anotado");
    EXPECT_EQ(EnPostgres(ruta, "SELECT Bt_Texto || Bt_Usuario FROM Bitacora"), "anotadoANA");
    // Whoever knows a password gets in by it, and no more of it is to be seen than how it is worked out.
    const com::Fecha ahora = com::FechaDe(2026, 3, 9, 10);
    EXPECT_TRUE(Accede(*ana.conexion(), "JEFE", "bastante larga", ahora).Bien());
    EXPECT_FALSE(Accede(*ana.conexion(), "JEFE", "bastante larda", ahora).Bien());
    EXPECT_EQ(EnPostgres(ruta, "SELECT Us_Fallas FROM Usuario"), "1");
    const std::string resumen = EnPostgres(ruta, "SELECT Us_Contrasena FROM Usuario");
    EXPECT_EQ(Uno(ana, "SELECT Us_Contrasena FROM Usuario"), resumen.substr(0, resumen.rfind('$') + 1));
    // Nor does she lay them down.
    for (const char* salida :
         {"RESET ROLE", "/* x */ RESET ROLE", "SET SESSION AUTHORIZATION DEFAULT", "DISCARD ALL",
          "SELECT set_config('role', 'none', false)", "UPDATE pg_settings SET setting = 'none' WHERE name = 'role'",
          "DO $$BEGIN EXECUTE 'RESET ROLE'; END$$", "SELECT query_to_xml('RESET ROLE', true, true, '')"})
      EXPECT_EQ(ErrorDe([&] { ana.conexion()->Directa(salida); }), com::error::kSoloLectura) << salida;
    Puede(ana, kDeTarjetas, false);
    // A connection that is made anew is hers too.
    EnPostgres(ruta,
               "SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity "
               "WHERE application_name = 'reservas' AND datname = current_database()");
    Puede(ana, kDeTarjetas, false);
    EXPECT_EQ(Uno(ana, kTarjeta), "************3334");
  }
  Anfitrion jefe(Como("JEFE"));
  EXPECT_EQ(Uno(jefe, "SELECT Cl_Tarjeta_Numero || Cl_Telefono FROM Cliente WHERE Cl_Cve_Cliente = '0000000001'"),
            "522222222222222355");
  Puede(jefe, kDeAdministra, true);
}

TEST_F(RolesPostgres, ElRolPropioDeUnUsuarioTieneSusDerechos) {
  const std::string rol = "ñ_" + Nombre(), clave = "Ñ_" + Nombre();
  const auto deja = [&](const std::string& sentencia) {
    try {
      EnPostgres(Con(rol), sentencia);
      return true;
    } catch (const std::runtime_error&) {
      return false;
    }
  };
  Anfitrion jefe(Como("JEFE"));
  Conexion& base = *jefe.conexion();
  const auto lasClaves = [&] {
    return EnPostgres(ruta, "SELECT rolpassword FROM pg_authid WHERE rolname = '" + rol + "'");
  };
  GuardaUsuario(base, {clave, ""}, "bastante larga", {});
  EXPECT_FALSE(base.roles().AjustaRol(clave, {})) << "nobody has let it in";
  for (const char* ajeno : {"pg_monitor", "conclave", "hotel"})
    EXPECT_EQ(ErrorDe([&] { base.roles().AdmiteRol(ajeno, "bastante larga"); }), com::error::kArgumento) << ajeno;
  base.roles().AdmiteRol(clave, "bastante larga");
  const std::string laPrimera = lasClaves();
  base.roles().AdmiteRol(clave, "otra bien larga");
  EXPECT_NE(lasClaves(), laPrimera);
  for (const bool ve : {false, true, false}) {
    GuardaUsuario(base, {clave, ""}, std::nullopt,
                  ve ? std::vector<std::string>{kPermisoTarjetas} : std::vector<std::string>{});
    for (const char* sentencia : {kDeTarjetas[0], kDeTarjetas[1]}) EXPECT_EQ(deja(sentencia), ve) << sentencia;
    for (const char* sentencia : kDeNadie) EXPECT_FALSE(deja(sentencia)) << sentencia;
    for (const char* sentencia : kDeAdministra) EXPECT_FALSE(deja(sentencia)) << sentencia;
    EXPECT_TRUE(deja("INSERT INTO kv207_bitacora.Bitacora (Bt_Texto) VALUES ('por la función')"));
  }
  // As in a database that was brought here: the roles are the server's, what they may do is not.
  EnPostgres(ruta, "DROP OWNED BY " + esquema::RolesDe(Nombre()).recepcion);
  EXPECT_FALSE(deja("SELECT Rs_Folio FROM public.Reservacion"));
  EXPECT_EQ(base.roles().PreparaRoles(), "");
  // She works with it, whatever the program would grant her.
  {
    Anfitrion ana(Como(clave, Con(rol)));
    EXPECT_EQ(Uno(ana, "SELECT Rdt_Numero FROM Reservacion_Datos_Tarjeta"), "************1111");
    std::string error;
    EXPECT_NE(pruebas::GuardaUna(ana, "0101", "2026-04-01", "2026-04-02", 100, &error), "") << error;
  }
  for (const bool deBaja : {true, false}) {
    GuardaUsuario(base, {clave, "", deBaja}, std::nullopt, {});
    EXPECT_NE(deja("SELECT Rs_Folio FROM public.Reservacion"), deBaja);
  }
}

// A copy made by the server's own means has another name, and so needs roles of its own.
TEST_F(RolesPostgres, UnaBaseConOtroNombreHaceSusRoles) {
  const std::string otra = pruebas::NuevaBasePostgres(), clon = Nombre() + "_clon";
  EnPostgres(otra, "CREATE DATABASE " + clon + " TEMPLATE " + Nombre());
  const std::string direccion = ruta.substr(0, ruta.find("@/") + 2) + clon + ruta.substr(ruta.find('?'));
  {
    Anfitrion ana(Como("ANA", direccion));
    Puede(ana, kDeTarjetas, false);
    Puede(ana, kDeAdministra, false);
    EXPECT_TRUE(ana.conexion()->TomaAvisos().empty());
  }
  for (const std::string& base : {direccion, otra}) pruebas::QuitaBasePostgres(base);
}

// --- users at the same time

TEST_F(RolesPostgres, MuchosIntentosALaVezEsperanComoUnoTrasOtro) {
  constexpr int kIntentos = 8;
  std::barrier juntos(kIntentos);
  std::atomic<int> probadas = 0;
  std::vector<std::thread> hilos;
  hilos.reserve(kIntentos);
  for (int i = 0; i < kIntentos; ++i) {
    hilos.emplace_back([&] {
      Reloj reloj;
      OpcionesConexion opciones;
      opciones.conexion = ruta;
      const auto base = AbreConexion(opciones, reloj);
      juntos.arrive_and_wait();
      const Acceso acceso = Accede(*base, "JEFE", "mala", com::FechaDe(2026, 3, 9, 10, 0, 0));
      probadas += acceso.motivo.find("no son correctos") != std::string::npos ? 1 : 0;
    });
  }
  for (std::thread& hilo : hilos) hilo.join();
  EXPECT_EQ(probadas, 3);
  // By the server's clock; one that was set back makes nobody wait for longer.
  Anfitrion jefe(Como("JEFE"));
  const auto entra = [&](int segundo) {
    return Accede(*jefe.conexion(), "JEFE", "bastante larga", com::FechaDe(2026, 3, 9, 9, 0, segundo)).Bien();
  };
  EXPECT_FALSE(entra(0));
  EXPECT_TRUE(entra(5));
}

TEST_F(RolesPostgres, DosQueSeQuitanElMandoNoDejanElHotelSinNadie) {
  Anfitrion jefe(Como("JEFE")), otro(Como("JEFE"));
  GuardaUsuario(*jefe.conexion(), {"OTRO", ""}, "bastante larga", {kPermisoConfiguracion});
  jefe.conexion()->BeginTrans();
  GuardaUsuario(*jefe.conexion(), {"JEFE", ""}, std::nullopt, {});
  std::atomic<int> error = -1;
  std::thread hilo([&] { error = ErrorDe([&] { GuardaUsuario(*otro.conexion(), {"OTRO", ""}, std::nullopt, {}); }); });
  while (error < 0 && EnPostgres(ruta,
                                 "SELECT COUNT(*) FROM pg_stat_activity "
                                 "WHERE datname = current_database() AND wait_event_type = 'Lock'") == "0") {
  }
  jefe.conexion()->CommitTrans();
  hilo.join();
  EXPECT_EQ(error, com::error::kArgumento);
  EXPECT_TRUE(Administra(*otro.conexion(), "OTRO"));
}

// An owner who may make no roles: told, and worked with as before.
TEST_F(RolesPostgres, SinRolesSeTrabajaYSeDice) {
  const std::string dueno = "d_" + Nombre();
  EnPostgres(ruta, "CREATE ROLE " + dueno + " LOGIN");
  const std::string otra = pruebas::NuevaBasePostgres(), suya = "postgresql://" + dueno + otra.substr(otra.find('@'));
  const std::string nombre = otra.substr(otra.find("@/") + 2, otra.find('?') - otra.find("@/") - 2);
  EnPostgres(ruta, "ALTER DATABASE " + nombre + " OWNER TO " + dueno);
  {
    Anfitrion host(Como("ANA", suya));
    const auto avisos = host.conexion()->TomaAvisos();
    ASSERT_EQ(avisos.size(), 1U);
    EXPECT_NE(avisos[0].find("ALTER ROLE \"" + dueno + "\" CREATEROLE"), std::string::npos) << avisos[0];
    pruebas::LlenaHotelChico(host);
    GuardaUsuario(*host.conexion(), {"JEFE", ""}, "bastante larga", {kPermisoTarjetas, kPermisoConfiguracion});
    std::string error;
    EXPECT_NE(pruebas::GuardaUna(host, "0101", "2026-04-01", "2026-04-02", 100, &error), "") << error;
  }
  {
    Anfitrion ana(Como("ANA", suya));  // told to whom it concerns, each time
    const auto avisos = ana.conexion()->TomaAvisos();
    EXPECT_TRUE(avisos.size() == 1 && avisos[0].find("CREATEROLE") != std::string::npos);
  }
  // Once he may, they are made, and hold for one who is no superuser either.
  EnPostgres(ruta, "ALTER ROLE " + dueno + " CREATEROLE");
  Anfitrion eva(Como("EVA", suya));
  Puede(eva, kDeTarjetas, false);
  Puede(eva, kDeAdministra, false);
  std::string error;
  EXPECT_NE(pruebas::GuardaUna(eva, "0102", "2026-04-01", "2026-04-02", 100, &error), "") << error;
}

}  // namespace
}  // namespace autonomo
