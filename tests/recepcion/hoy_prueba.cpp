// The day and the search on hotels made at random, against statements of the tests' own.
#include "recepcion/hoy.h"

#include <algorithm>
#include <random>

#include "host/standalone/letras.h"
#include "tests/comun/hotel_prueba.h"

namespace pruebas {
namespace {

using recepcion::Lista;

class HoyPrueba : public HotelPrueba {
 protected:
  std::string Iso(int dia) { return com::AIso(com::MasDias(Dia(2026, 3, 1), dia)); }

  // Rooms one after the other through the month: reservations of every state, some with a stay that ends earlier or
  // later than was booked, over the next ones too; stays of walk-ins, blocks.
  void LlenaMes(std::mt19937& azar, bool conEstancias) {
    const auto entre = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(azar); };
    const char* estados[] = {"AC", "CO", "AP", "CE", "CA", "ac"};
    int numero = 0;
    host.conexion()->BeginTrans();
    for (const std::string habitacion : {"0101", "0102", "0201"}) {
      for (int dia = 0; dia < 28;) {
        dia += entre(0, 2);
        const int noches = entre(1, 4);
        const std::string folio = std::to_string(1000 + ++numero);
        const bool reservada = entre(0, 4) > 0, estancia = conEstancias && (!reservada || entre(0, 1) == 1);
        if (reservada) {
          Sql("INSERT INTO Reservacion (Rs_Folio, Rs_Llegada, Rs_Salida, Rs_Huesped, Es_Cve_Estado) VALUES ('" + folio +
              "', '" + Iso(dia) + "', '" + Iso(dia + noches) + "', '0000000001', '" + estados[entre(0, 5)] + "')");
          Sql("INSERT INTO Reservacion_Detalle (Rs_Folio, Rsd_Id, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin, "
              "Rsd_Adultos) VALUES ('" +
              folio + "', 1, '" + habitacion + "', '" + Iso(dia) + "', '" + Iso(dia + noches) + "', 2)");
        }
        if (estancia) {
          Sql("INSERT INTO Check_In (Ci_Folio, Ci_Llegada, Ci_Salida, Es_Cve_Estado) VALUES ('" + folio + "', '" +
              Iso(dia) + " 15:00:00', '" + Iso(dia + entre(1, noches + 2)) + " 12:00:00', '" + estados[entre(0, 4)] +
              "')");
          Sql("INSERT INTO Check_In_Detalle VALUES ('" + folio + "', '" + habitacion + "')");
        }
        dia += noches;
      }
    }
    Sql("INSERT INTO Habitacion_Bloqueo VALUES ('0201', '" + Iso(10) + "', '" + Iso(12) + "', 'AC')");
    host.conexion()->CommitTrans();
  }

  int Cuenta(const std::string& sentencia, const std::string& dia) {
    std::string texto = sentencia;
    for (std::size_t i = texto.find('@'); i != std::string::npos; i = texto.find('@'))
      texto.replace(i, 1, "'" + dia + "'");
    return std::stoi(Celda(texto));
  }
};

// Stays begun that belong to the reservation: of the lines of their room on whose nights they are, it has the first.
const std::string kSuyas =
    "FROM Reservacion_Detalle D JOIN Check_In_Detalle CD ON CD.Hb_Cve_Habitacion = D.Hb_Cve_Habitacion JOIN Check_In C "
    "ON C.Ci_Folio = CD.Ci_Folio WHERE D.Rs_Folio = R.Rs_Folio AND C.Es_Cve_Estado <> 'CA' AND date(C.Ci_Llegada) <= @ "
    "AND date(C.Ci_Llegada) < D.Rsd_Fecha_Fin AND date(C.Ci_Salida) > D.Rsd_Fecha_Inicio AND NOT EXISTS (SELECT 1 FROM "
    "Reservacion_Detalle D2 JOIN Reservacion R2 ON R2.Rs_Folio = D2.Rs_Folio WHERE R2.Es_Cve_Estado <> 'CA' AND "
    "D2.Hb_Cve_Habitacion = D.Hb_Cve_Habitacion AND D2.Rsd_Fecha_Inicio < D.Rsd_Fecha_Inicio AND "
    "date(C.Ci_Llegada) < D2.Rsd_Fecha_Fin AND date(C.Ci_Salida) > D2.Rsd_Fecha_Inicio)";
const std::string kLlego = "EXISTS (SELECT 1 " + kSuyas + ")";
const std::string kSalidaAbierta =
    "(SELECT MAX(date(C.Ci_Salida)) " + kSuyas + " AND C.Es_Cve_Estado <> 'CE' AND date(C.Ci_Salida) >= @)";
const std::string kSalida = "(SELECT MAX(date(C.Ci_Salida)) " + kSuyas + " AND date(C.Ci_Salida) >= @)";
const std::string kSinEstancia =
    "CASE WHEN R.Es_Cve_Estado = 'AP' AND R.Rs_Llegada <= @ AND NOT " + kLlego + " THEN R.Rs_Salida END";
// Who came without a reservation.
const std::string kSinReservacion =
    "SELECT COUNT(*) FROM Check_In C JOIN Check_In_Detalle CD ON CD.Ci_Folio = C.Ci_Folio WHERE C.Es_Cve_Estado <> "
    "'CA' "
    "AND date(C.Ci_Llegada) <= @ AND NOT EXISTS (SELECT 1 FROM Reservacion_Detalle D JOIN Reservacion R ON R.Rs_Folio "
    "= "
    "D.Rs_Folio WHERE R.Es_Cve_Estado <> 'CA' AND D.Hb_Cve_Habitacion = CD.Hb_Cve_Habitacion AND date(C.Ci_Llegada) < "
    "D.Rsd_Fecha_Fin AND date(C.Ci_Salida) > D.Rsd_Fecha_Inicio) AND ";

TEST_F(HoyPrueba, LasCuentasSonLasDeLaBase) {
  Abre();
  const std::string viva = "SELECT COUNT(*) FROM Reservacion R WHERE R.Es_Cve_Estado NOT IN ('CA','CE') AND ";
  const std::string deAntes = "R.Rs_Llegada < @ AND R.Rs_Salida >= @ AND ";
  const std::string conReservacion = "SELECT COUNT(*) FROM Reservacion R WHERE R.Es_Cve_Estado <> 'CA' AND ";
  const auto mas = [](const std::string& a, const std::string& b) { return "SELECT (" + a + ") + (" + b + ")"; };
  const std::string enCasa = mas(conReservacion + "COALESCE(" + kSalidaAbierta + ", " + kSinEstancia + ") > @",
                                 kSinReservacion + "C.Es_Cve_Estado <> 'CE' AND date(C.Ci_Salida) > @");
  const std::string salen =
      mas(conReservacion + "COALESCE(" + kSalidaAbierta + ", " + kSalida + ", " + kSinEstancia + ") = @",
          kSinReservacion + "date(C.Ci_Salida) = @");
  int faltan = 0, casa = 0;
  for (unsigned semilla = 1; semilla <= 6; ++semilla) {
    SCOPED_TRACE(semilla);
    std::mt19937 azar(semilla);
    const bool conEstancias = semilla % 3 != 0;
    for (const char* tabla :
         {"Reservacion_Detalle", "Reservacion", "Check_In_Detalle", "Check_In", "Habitacion_Bloqueo"})
      Sql(std::string("DELETE FROM ") + tabla);
    LlenaMes(azar, conEstancias);
    for (int d = 2; d < 26; ++d) {
      const std::string dia = Iso(d);
      SCOPED_TRACE(dia);
      const recepcion::Dia hoy = recepcion::LeeDia(com::MasDias(Dia(2026, 3, 1), d));
      const auto cuenta = [&](Lista lista) {
        return static_cast<int>(hoy.listas[static_cast<std::size_t>(lista)].size());
      };
      EXPECT_EQ(hoy.llevaEstancias, conEstancias);
      EXPECT_EQ(cuenta(Lista::Llegadas), Cuenta(viva + "R.Rs_Llegada = @", dia));
      // Nobody has arrived because somebody else left the room today, or stays in it longer than was booked.
      EXPECT_EQ(std::ranges::count(hoy.listas[0], true, &recepcion::Fila::llego),
                Cuenta(viva + "R.Rs_Llegada = @ AND (R.Es_Cve_Estado = 'AP' OR " + kLlego + ")", dia));
      if (conEstancias) {
        EXPECT_EQ(cuenta(Lista::EnCasa), Cuenta(enCasa, dia));
        EXPECT_EQ(cuenta(Lista::Salidas), Cuenta(salen, dia));
        EXPECT_EQ(cuenta(Lista::NoLlegaron),
                  Cuenta(viva + deAntes + "R.Es_Cve_Estado IN ('AC','CO') AND NOT " + kLlego, dia));
      } else {
        EXPECT_EQ(cuenta(Lista::EnCasa),
                  Cuenta(viva + "(R.Rs_Llegada < @ OR R.Es_Cve_Estado = 'AP' AND R.Rs_Llegada = @) AND R.Rs_Salida > @",
                         dia));
        EXPECT_EQ(cuenta(Lista::Salidas), Cuenta(viva + "R.Rs_Salida = @", dia));
        EXPECT_EQ(cuenta(Lista::NoLlegaron), 0);
      }
      faltan += cuenta(Lista::NoLlegaron);
      casa += cuenta(Lista::EnCasa);
      // Free rooms of a type are those that nothing takes that night; a room of a stay in progress is not reserved too.
      for (const recepcion::LibresDeTipo& tipo : hoy.libres) {
        const int tomadas = Cuenta(
            "SELECT (SELECT COUNT(*) FROM Reservacion_Detalle D JOIN Reservacion R ON R.Rs_Folio = D.Rs_Folio "
            "JOIN Habitacion H ON H.Hb_Cve_Habitacion = D.Hb_Cve_Habitacion WHERE H.Th_Cve_Tipo_Habitacion = '" +
                tipo.tipo +
                "' AND R.Es_Cve_Estado NOT IN ('CA','CE') AND D.Rsd_Fecha_Inicio <= @ AND D.Rsd_Fecha_Fin > @ AND "
                "D.Hb_Cve_Habitacion NOT IN (SELECT CD.Hb_Cve_Habitacion FROM Check_In C JOIN Check_In_Detalle CD ON "
                "CD.Ci_Folio = C.Ci_Folio WHERE C.Es_Cve_Estado = 'AC')) + (SELECT COUNT(*) FROM Check_In C "
                "JOIN Check_In_Detalle CD ON CD.Ci_Folio = C.Ci_Folio JOIN Habitacion H ON H.Hb_Cve_Habitacion = "
                "CD.Hb_Cve_Habitacion WHERE H.Th_Cve_Tipo_Habitacion = '" +
                tipo.tipo +
                "' AND C.Es_Cve_Estado NOT IN ('CA','CE') AND "
                "date(C.Ci_Llegada) <= @ AND date(C.Ci_Salida) > @) + (SELECT COUNT(*) FROM Habitacion_Bloqueo B WHERE "
                "B.Hbb_Fecha_Inicio <= @ AND B.Hbb_Fecha_Fin >= @ AND '" +
                tipo.tipo + "' = '0002')",
            dia);
        EXPECT_EQ(tipo.noches.at(0), tipo.total - tomadas) << tipo.nombre;
      }
    }
  }
  EXPECT_GT(faltan, 20) << "the hotels have somebody who did not come";
  EXPECT_GT(casa, 100);
}

// Every change, whoever makes it and with or without a date, is found at once; so is a large hotel's last reservation.
TEST_F(HoyPrueba, LaBusquedaVeLoQueHayAhora) {
  Abre();
  host.conexion()->BeginTrans();
  for (int i = 0; i < 4500; ++i) {
    const std::string folio = std::to_string(100000 + i);
    Sql("INSERT INTO Reservacion (Rs_Folio, Rs_Llegada, Rs_Salida, Rs_Huesped, Rs_Referencia, Fecha_Ult_Modif) VALUES "
        "('" +
        folio + "', '" + Iso(i % 300) + "', '" + Iso(i % 300 + 2) + "', '000000000" + std::to_string(i % 3) +
        "', 'Ref" + folio + "', '2026-03-01 09:00:00')");
    for (const char* habitacion : {"0101", "0201"}) {
      if (i % 2 == 0 || habitacion[1] == '1')
        Sql("INSERT INTO Reservacion_Detalle (Rs_Folio, Hb_Cve_Habitacion) VALUES ('" + folio + "', '" + habitacion +
            "')");
    }
  }
  host.conexion()->CommitTrans();
  recepcion::Indice indice(autonomo::LetraBuscada);
  const com::Fecha hoy = Dia(2026, 3, 9);
  const auto busca = [&](std::string_view texto) { return indice.Busca(texto, hoy, 5); };
  EXPECT_EQ(busca("lopez").total, 1500U);
  EXPECT_EQ(busca("López 201").total, 750U);
  EXPECT_EQ(busca("201").total, 2250U) << "every reservation with all its rooms, also at the end of a part";
  EXPECT_EQ(busca("").total, 0U);
  EXPECT_EQ(busca("ref104499").folios, std::vector<std::string>{"104499"});
  // Next arrivals first: today's, then tomorrow's; all of the month that are past come after all that are not.
  const recepcion::Hallazgo lopez = busca("lopez");
  const std::vector<recepcion::Fila> filas = recepcion::LeeFilas(lopez.folios);
  ASSERT_EQ(filas.size(), 5U);
  EXPECT_GE(filas.front().llegada, hoy);
  EXPECT_TRUE(std::ranges::is_sorted(filas, {}, &recepcion::Fila::llegada));

  Sql("UPDATE Reservacion SET Rs_Referencia = 'Ñandú', Fecha_Ult_Modif = '2026-03-09 10:30:00' WHERE Rs_Folio = "
      "'102000'");
  EXPECT_EQ(busca("nandu").total, 1U);
  Sql("UPDATE Reservacion SET Rs_Referencia = 'Sin fecha', Fecha_Ult_Modif = NULL WHERE Rs_Folio = '101000'");
  EXPECT_EQ(busca("sin fecha").total, 1U);
  Sql("DELETE FROM Reservacion WHERE Rs_Folio = '104499'");
  EXPECT_EQ(busca("ref104499").total, 0U);
  Sql("INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1, Cl_Telefono, Cl_Correo) VALUES "
      "('77', 'O’Brien Nun\u0303ez', '(55) 1234-5678', 'pat.obrien@x.example')");
  Sql("UPDATE Reservacion SET Rs_Huesped = '77', Fecha_Ult_Modif = '2026-03-09 10:31:00' WHERE Rs_Folio = '103000'");
  for (const char* texto :
       {"o'brien", "pat.obrien@x", "345678", "55 1234 5678", "brien 101", "103000 brien", "«O´Brien»", "¿nunez?",
        "nuñez", "NUN\u0303EZ", "55-12345678 brien", "+52 (55) 1234-5678", "+5215512345678", "101 +52 55 1234 5678"})
    EXPECT_EQ(busca(texto).folios, std::vector<std::string>{"103000"}) << texto;
  EXPECT_EQ(busca("34567 8 9").total, 0U);
  // An apostrophe is one however it is typed, or left out; the parts that it joins are still found.
  const auto seLlama = [&](const char* nombre) {
    Sql(std::string("UPDATE Cliente SET Cl_Razon_Social_1 = '") + nombre + "' WHERE Cl_Cve_Cliente = '77'");
    indice.Relee();
  };
  for (const char* nombre : {"Pat O''Hara de la O", "Pat O’Hara de la O", "Pat O`Hara de la O", "Pat OʼHara de la O"}) {
    seLlama(nombre);
    for (const char* texto : {"ohara", "OHara pat", "o'hara", "o’hara", "o hara", "hara", "de la o hara", "ohara 101"})
      EXPECT_EQ(busca(texto).folios, std::vector<std::string>{"103000"}) << nombre << ": " << texto;
    for (const char* texto : {"pato", "delao", "harade", "'"}) EXPECT_EQ(busca(texto).total, 0U) << nombre << texto;
  }
  seLlama("Pat Ohara");
  for (const char* texto : {"o'hara", "O´Hara", "ohara"})
    EXPECT_EQ(busca(texto).folios, std::vector<std::string>{"103000"}) << texto;
  // A renamed client is found after the day was read again.
  Sql("UPDATE Cliente SET Cl_Razon_Social_1 = 'Patricia' WHERE Cl_Cve_Cliente = '77'");
  indice.Relee();
  EXPECT_EQ(busca("patricia").total, 1U);
  EXPECT_EQ(busca("brien").total, 0U) << "only the mail's beginning counts";
}

}  // namespace
}  // namespace pruebas
