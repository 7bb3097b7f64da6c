// With over-booking off the database itself keeps two live reservations from holding one room on one night.
#include <atomic>
#include <barrier>
#include <string>
#include <thread>
#include <vector>

#include "tests/host/base_prueba.h"

namespace {

using pruebas::ErrorDe;
using pruebas::Uno;

class SobreventaPrueba : public pruebas::EnCadaMotor {
 protected:
  SobreventaPrueba() {
    Parametro("0");
    Reservacion("0000000012", "AC");
    Linea("0000000012", "0101", "2026-03-10", "2026-03-13");
    Reservacion("0000000020", "AC");
  }
  void Parametro(const std::string& valor) {
    c->Execute("DELETE FROM Parametro WHERE Pm_Clave = 'HT_OVER_BOOKING'");
    c->Execute("INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES ('HT_OVER_BOOKING','" + valor + "')");
  }
  void Reservacion(const std::string& folio, const std::string& estado) {
    c->Execute("INSERT INTO Reservacion (Rs_Folio, Es_Cve_Estado) VALUES ('" + folio + "','" + estado + "')");
  }
  void Linea(const std::string& folio, const std::string& cuarto, const std::string& inicio, const std::string& fin) {
    c->Execute(
        "INSERT INTO Reservacion_Detalle (Rs_Folio, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin) VALUES ('" +
        folio + "','" + cuarto + "','" + inicio + "','" + fin + "')");
  }
  std::string Rechazo(const std::function<void()>& llama) {
    const auto e = ErrorDe(llama);
    EXPECT_TRUE(e.Numero() == 0 || e.Numero() == com::error::kRestriccion) << e.Numero();
    return e.Numero() == 0 ? "" : e.Descripcion();
  }
  std::string Lineas() { return Uno(*c, "SELECT COUNT(*) FROM Reservacion_Detalle"); }

  std::shared_ptr<autonomo::Conexion> c = Abre();
};
EN_CADA_MOTOR(SobreventaPrueba);

TEST_P(SobreventaPrueba, SoloChocanLasNochesComunes) {
  struct Caso {
    const char *cuarto, *inicio, *fin, *noche;  // noche: "" when there is room
  };
  for (const auto& [cuarto, inicio, fin, noche] : std::vector<Caso>{
           {"0101", "2026-03-13", "2026-03-15", ""},        // arrives on the day of departure
           {"0101", "2026-03-08", "2026-03-10", ""},        // leaves on the day of arrival
           {"0102", "2026-03-10", "2026-03-13", ""},        // another room
           {"0101", "2026-03-11", "2026-03-11", ""},        // no night at all
           {"0101", "2026-03-13 09:00", "2026-03-14", ""},  // times of day do not count
           {"0101", "2026-03-08", "2026-03-10 18:00:00", ""},
           {"0101", "2026-03-08", "2026-03-11", "10/03/2026"},
           {"0101", "2026-03-12 23:00", "2026-03-13 01:00", "12/03/2026"},
           {"0101 ", "2026-03-01", "2026-04-01", "10/03/2026"},
           {"0101", "2026-03-11", "2026-03-12", "11/03/2026"},
       }) {
    const std::string antes = Lineas();
    const std::string espera = *noche == '\0'
                                   ? ""
                                   : "La habitación " + std::string(cuarto) + " ya está reservada la noche del " +
                                         noche + " por la reservación 0000000012";
    const auto linea = [&, cuarto = cuarto, inicio = inicio, fin = fin] { Linea("0000000020", cuarto, inicio, fin); };
    EXPECT_EQ(Rechazo(linea), espera) << inicio << " " << fin;
    if (!espera.empty()) {
      EXPECT_EQ(Lineas(), antes);
    }
    c->Execute("DELETE FROM Reservacion_Detalle WHERE Rs_Folio = '0000000020'");
  }
}

TEST_P(SobreventaPrueba, SinElParametroOConVerdaderoSePermite) {
  for (const char* valor : {"1", "true", "Verdadero", "-1", "0.5", "10"}) {
    Parametro(valor);
    EXPECT_EQ(Rechazo([&] { Linea("0000000020", "0101", "2026-03-10", "2026-03-11"); }), "") << valor;
  }
  for (const char* valor : {"0", "FALSE", " Falso ", "", " 00", "0.0"}) {
    Parametro(valor);
    EXPECT_NE(Rechazo([&] { Linea("0000000020", "0101", "2026-03-10", "2026-03-11"); }), "") << valor;
  }
  c->Execute("DELETE FROM Parametro");
  EXPECT_EQ(Rechazo([&] { Linea("0000000020", "0101", "2026-03-10", "2026-03-11"); }), "");
}

// Every way in which two live reservations could come to share a night.
TEST_P(SobreventaPrueba, TodosLosCaminosEstanGuardados) {
  const std::string choque =
      "La habitación 0101 ya está reservada la noche del 10/03/2026 por la reservación 0000000012";
  const auto corre = [&](const std::string& s) { return Rechazo([&] { c->Execute(s); }); };
  Linea("0000000020", "0102", "2026-03-10", "2026-03-11");
  EXPECT_EQ(corre("UPDATE Reservacion_Detalle SET Hb_Cve_Habitacion = '0101' WHERE Rs_Folio = '0000000020'"), choque);
  Linea("0000000020", "0101", "2026-03-01", "2026-03-10");
  EXPECT_EQ(corre("UPDATE Reservacion_Detalle SET Rsd_Fecha_Fin = '2026-03-11' WHERE Rs_Folio = '0000000020'"), choque);
  // A dead one does not hold, until it lives again.
  Reservacion("0000000021", "CA");
  EXPECT_EQ(Rechazo([&] { Linea("0000000021", "0101", "2026-03-10", "2026-03-20"); }), "");
  EXPECT_EQ(corre("UPDATE Reservacion SET Es_Cve_Estado = 'AC' WHERE Rs_Folio = '0000000021'"), choque);
  EXPECT_EQ(Uno(*c, "SELECT Es_Cve_Estado FROM Reservacion WHERE Rs_Folio = '0000000021'"), "CA");
  // Lines before their header.
  EXPECT_EQ(Rechazo([&] { Linea("0000000022", "0101", "2026-03-10", "2026-03-20"); }), "");
  EXPECT_EQ(Rechazo([&] { Reservacion("0000000022", "CO"); }), choque);
  EXPECT_EQ(corre("UPDATE Reservacion SET Rs_Folio = '0000000022' WHERE Rs_Folio = '0000000020'"), choque);
  // A day in another spelling is refused, or holds its night.
  for (const char* dia : {"20261225", "2026/12/25", "25/12/2026", "2026-02-30"}) {
    for (const char* folio : {"0000000012", "0000000020"}) ErrorDe([&] { Linea(folio, "0103", dia, "2026-12-27"); });
    EXPECT_LE(Uno(*c, "SELECT COUNT(*) FROM Reservacion_Detalle WHERE Hb_Cve_Habitacion = '0103'"), "1") << dia;
    c->Execute("DELETE FROM Reservacion_Detalle WHERE Hb_Cve_Habitacion = '0103'");
  }
  // The holder may go on being changed, cancelled and reactivated.
  EXPECT_EQ(corre("UPDATE Reservacion SET Es_Cve_Estado = 'CO' WHERE Rs_Folio = '0000000012'"), "");
  EXPECT_EQ(corre("UPDATE Reservacion SET Es_Cve_Estado = 'CA' WHERE Rs_Folio = '0000000012'"), "");
  EXPECT_EQ(corre("UPDATE Reservacion SET Es_Cve_Estado = 'AC' WHERE Rs_Folio = '0000000012'"), "");
  EXPECT_EQ(corre("UPDATE Reservacion_Detalle SET Rsd_Fecha_Fin = '2026-03-14' WHERE Rs_Folio = '0000000012'"), "");
  // Once it is cancelled, another may take the night.
  corre("UPDATE Reservacion SET Es_Cve_Estado = 'CE' WHERE Rs_Folio = '0000000012'");
  EXPECT_EQ(corre("UPDATE Reservacion SET Es_Cve_Estado = 'AC' WHERE Rs_Folio = '0000000021'"), "");
  EXPECT_EQ(corre("UPDATE Reservacion SET Es_Cve_Estado = 'AC' WHERE Rs_Folio = '0000000012'"),
            "La habitación 0101 ya está reservada la noche del 10/03/2026 por la reservación 0000000021");
}

TEST_P(SobreventaPrueba, UnaReservacionNoRepiteHabitacionYNoche) {
  EXPECT_EQ(Rechazo([&] { Linea("0000000012", "0101", "2026-03-12", "2026-03-14"); }),
            "La habitación 0101 ya está reservada la noche del 12/03/2026 en esta misma reservación");
  EXPECT_EQ(Rechazo([&] { Linea("0000000012", "0101", "2026-03-13", "2026-03-14"); }), "");
}

// In one statement with several rows the refusal undoes all of them, and the transaction goes on.
TEST_P(SobreventaPrueba, ElRechazoDeshaceLaSentenciaEntera) {
  c->BeginTrans();
  EXPECT_NE(Rechazo([&] {
              c->Execute(
                  "INSERT INTO Reservacion_Detalle (Rs_Folio, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin) "
                  "VALUES ('0000000020', '0105', '2026-03-10', '2026-03-11'), "
                  "('0000000020', '0101', '2026-03-10', '2026-03-11')");
            }),
            "");
  EXPECT_NE(Rechazo([&] { Linea("0000000020", "0101", "2026-03-12", "2026-03-14"); }), "");
  Linea("0000000020", "0106", "2026-03-10", "2026-03-11");
  c->CommitTrans();
  EXPECT_EQ(Uno(*c, "SELECT Hb_Cve_Habitacion FROM Reservacion_Detalle WHERE Rs_Folio = '0000000020'"), "0106");
  EXPECT_EQ(Lineas(), "2");
}

// Two programs that both found the night free: one gets it.
TEST_P(SobreventaPrueba, DeDosALaVezUnaGana) {
  constexpr int kRondas = 40, kProgramas = 2;
  c->Execute("DELETE FROM Reservacion_Detalle");
  std::atomic<int> ganadas{0}, rechazadas{0}, otras{0};
  std::barrier salida(kProgramas);
  const auto programa = [&](int yo) {
    const auto mia = Abre();
    for (int ronda = 0; ronda < kRondas; ++ronda) {
      const std::string folio = std::to_string(1000 * (yo + 1) + ronda), cuarto = std::to_string(ronda);
      const auto libre =
          mia->Consulta("SELECT 1 FROM Reservacion_Detalle WHERE Hb_Cve_Habitacion = ?", {cuarto})->Eof();
      salida.arrive_and_wait();
      try {
        mia->BeginTrans();
        mia->Consulta("INSERT INTO Reservacion (Rs_Folio) VALUES (?)", {folio});
        mia->Consulta(
            "INSERT INTO Reservacion_Detalle (Rs_Folio, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin) "
            "VALUES (?, ?, '2026-03-10', '2026-03-12')",
            {folio, cuarto});
        mia->CommitTrans();
        ganadas += libre ? 1 : 0;
      } catch (const com::Error& e) {
        (e.Numero() == com::error::kRestriccion ? rechazadas : otras)++;
        if (mia->EnTransaccion()) mia->RollbackTrans();
      }
      salida.arrive_and_wait();
    }
  };
  std::thread a(programa, 0), b(programa, 1);
  a.join();
  b.join();
  EXPECT_EQ(ganadas, kRondas);
  EXPECT_EQ(rechazadas, kRondas);
  EXPECT_EQ(otras, 0);
  EXPECT_EQ(Uno(*Abre(), "SELECT COUNT(DISTINCT Hb_Cve_Habitacion) * 100 + COUNT(*) FROM Reservacion_Detalle"), "4040");
}

}  // namespace
