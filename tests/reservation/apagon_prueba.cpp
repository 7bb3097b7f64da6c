// A server of the test's own that is killed (kill -9) around a commit: what the clerk is told is what is stored.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "host/standalone/conexion.h"
#include "tests/comun/base_postgres.h"
#include "tests/comun/error_de.h"
#include "tests/comun/puente.h"
#include "tests/reservation/renglones_comun.h"

namespace {

class Servidor {
 public:
  Servidor() {
    Corre("arranca");
    pruebas::EnPostgres(Direccion("postgres"), "CREATE DATABASE hotel");
  }
  ~Servidor() { EXPECT_TRUE(Acepta(Orden("detiene"))); }
  Servidor(const Servidor&) = delete;
  Servidor& operator=(const Servidor&) = delete;

  void Corre(const std::string& orden) {
    const std::string programa = Orden(orden);
    if (!Acepta(programa)) throw std::runtime_error(programa);
  }
  void Muere() { Corre("mata"); }
  void Vuelve() { Corre("sigue"); }
  std::string Direccion(const std::string& base = "hotel") const {
    return "postgresql://hotel@/" + base + "?port=" + puerto_ + "&host=" + carpeta_;
  }

 private:
  std::string Orden(const std::string& orden) const {
    return RAIZ "/tests/postgres/servidor " + orden + " " + carpeta_;
  }
  // NOLINTNEXTLINE(cert-env33-c): the order is ours, whole
  static bool Acepta(const std::string& programa) { return std::system(programa.c_str()) == 0; }

  std::string puerto_ = std::to_string(40000 + getpid() % 10000), carpeta_ = "/tmp/kv207-apagon-" + puerto_;
};

class ConServidor {
 protected:
  Servidor servidor;
};

class ApagonAlGuardar : protected ConServidor, public pruebas::RenglonesPrueba {
 protected:
  ApagonAlGuardar() : RenglonesPrueba(servidor.Direccion()) {}
};

TEST_F(ApagonAlGuardar, LoGuardadoNoSeDaPorPerdido) {
  for (const int respuesta : {controles::kNo, controles::kSi}) {
    Nueva();
    Linea(respuesta == controles::kNo ? "0101" : "0102", 2);
    escritorio.Olvida();
    escritorio.Responde("ERR-ID:7500051", respuesta);
    escritorio.alAvisar = [&](const controles::CajaMensaje& caja) {
      if (caja.id == "ERR-ID:7500051") servidor.Muere();
    };
    Pulsa(controles::Accion::Aceptar);
    escritorio.alAvisar = nullptr;
    servidor.Vuelve();
    const controles::CajaMensaje& ultima = escritorio.Mensajes().back();
    EXPECT_NE(ultima.texto.find("servidor de la base de datos"), std::string::npos) << ultima.texto;
    EXPECT_EQ(ultima.texto.find("No se guardó"), std::string::npos) << ultima.texto;
    const std::string folio = respuesta == controles::kNo ? "0000000001" : "0000000002";
    if (ultima.id == "ERR-ID:7500021") {
      EXPECT_EQ(ultima.detalle, "La reservación " + folio + " ya quedó guardada.");
    }
    EXPECT_FALSE(pantalla.Controles.EnEdicion());
    EXPECT_EQ(Celda("SELECT MAX(Rs_Folio) FROM Reservacion"), folio);
    Pulsa(controles::Accion::Limpiar);
  }
}

// A server that dies gives the numbers of transactions again that did not reach its disk: another one's end is not
// taken for the one that is asked after.
TEST(Apagon, UnNumeroDeTransaccionQueSeRepiteNoEngana) {
  Servidor servidor;
  pruebas::EnPostgres(servidor.Direccion("postgres"), "ALTER SYSTEM SET wal_writer_delay = '10s'");
  pruebas::EnPostgres(servidor.Direccion("postgres"), "SELECT pg_reload_conf()");
  pruebas::Puente puente(servidor.Direccion());
  const autonomo::Reloj reloj;
  autonomo::OpcionesConexion opciones;
  opciones.conexion = servidor.Direccion();
  autonomo::AbreMotor(opciones, reloj);
  opciones.conexion = puente.direccion();
  opciones.esperaMs = 50;
  const auto c = autonomo::AbreConexion(opciones, reloj);
  const std::string numero = "SELECT pg_current_xact_id()";
  pruebas::EnPostgres(servidor.Direccion(), "CHECKPOINT");
  c->BeginTrans();
  c->Execute("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('a')");
  const std::string suyo = com::CStr(c->Directa(numero)->Fields(0).Value());
  puente.Abre(false);
  puente.Corta("COMMIT", pruebas::Puente::Lado::Servidor);
  EXPECT_EQ(pruebas::ErrorDe([&] { c->CommitTrans(); }), com::error::kEnDuda);
  c->RollbackTrans();
  servidor.Muere();
  servidor.Vuelve();
  std::string otro;
  for (int i = 0; i < 20 && otro != suyo; ++i) {
    otro = pruebas::EnPostgres(servidor.Direccion(), "INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('b" +
                                                         std::to_string(i) + "') RETURNING pg_current_xact_id()");
  }
  ASSERT_EQ(otro, suyo) << "the server did not give the number again";
  puente.Abre(true);
  EXPECT_NO_THROW(c->Execute("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('a')"));
  EXPECT_EQ(pruebas::EnPostgres(servidor.Direccion(), "SELECT COUNT(*) FROM Moneda WHERE Mn_Cve_Moneda = 'a'"), "1");
}

}  // namespace
