// The figures on hotels made at random, against statements of the tests' own; and how a list becomes a spreadsheet.
#include "recepcion/cifras.h"

#include <algorithm>
#include <random>

#include "platform/ado/celda.h"
#include "tests/comun/hotel_prueba.h"

namespace pruebas {
namespace {

using recepcion::Cuenta;

class CifrasPrueba : public HotelPrueba {
 protected:
  // Two Marches a year apart: reservations of every state and branch, captured and cancelled at any distance, some for
  // nothing, some in dollars; stays with and without them; blocks; a withdrawn room that was sold.
  void LlenaDosMeses(std::mt19937& azar) {
    const auto entre = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(azar); };
    const char* estados[] = {"AC", "CO", "AP", "CE", "CA", "ca", "ce"};
    int numero = 0;
    host.conexion()->BeginTrans();
    for (const int anio : {2025, 2026}) {
      const auto iso = [&](int dia) { return "'" + com::AIso(com::MasDias(Dia(anio, 3, 1), dia)) + "'"; };
      for (const std::string habitacion : {"0101", "0102", "0109", "0201"}) {
        for (int dia = -4; dia < 34;) {
          dia += entre(0, 2);
          const int noches = entre(1, 5);
          const std::string folio = std::to_string(1000 + ++numero), estado = estados[entre(0, 6)];
          const bool dolares = entre(0, 3) == 0, reservada = entre(0, 5) > 0;
          const std::string importe = std::to_string(entre(0, 4) * 1160);
          if (reservada) {
            Sql("INSERT INTO Reservacion (Rs_Folio, Rs_Fecha, Rs_Llegada, Rs_Salida, Sc_Cve_Sucursal, Mn_Cve_Moneda, "
                "Rs_Tipo_Cambio, Es_Cve_Estado, Fecha_Baja) VALUES ('" +
                folio + "', " + iso(dia - entre(0, 30)) + ", " + iso(dia) + ", " + iso(dia + noches) + ", '000" +
                std::to_string(entre(1, 2)) + "', '" + (dolares ? "USD" : "MXN") + "', " +
                (dolares ? "17.5" : std::to_string(entre(0, 1))) + ", '" + estado + "', " +
                (estado == "CA" ? iso(dia - entre(-5, 20)) : "NULL") + ")");
            Sql("INSERT INTO Reservacion_Detalle (Rs_Folio, Rsd_Id, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, "
                "Rsd_Fecha_Fin, Rsd_Precio_Neto_Importe, Rsd_Impuesto_Importe) VALUES ('" +
                folio + "', 1, '" + habitacion + "', " + iso(dia) + ", " + iso(dia + noches) + ", " + importe + ", " +
                importe + " / 8.0)");
          }
          if (!reservada || entre(0, 2) == 0) {
            Sql("INSERT INTO Check_In (Ci_Folio, Ci_Llegada, Ci_Salida, Es_Cve_Estado) VALUES ('" + folio + "', " +
                iso(dia - entre(0, 1)) + " || ' 15:00:00', " + iso(dia + entre(1, noches + 2)) + " || ' 12:00:00', '" +
                estados[entre(0, 4)] + "')");
            Sql("INSERT INTO Check_In_Detalle VALUES ('" + folio + "', '" + habitacion + "')");
          }
          dia += entre(0, 9) == 0 ? noches - 1 : noches;  // now and then a room is sold twice
        }
      }
      Sql("INSERT INTO Habitacion_Bloqueo VALUES ('0201', " + iso(10) + ", " + iso(14) + ", 'AC'), ('0101', " +
          iso(12) + ", " + iso(13) + ", 'BA')");
    }
    host.conexion()->CommitTrans();
  }

  // noche in place of @, branch in place of #.
  double Numero(std::string sentencia, const std::string& noche, const std::string& sucursal) {
    for (const auto& [marca, valor] : {std::pair('@', "'" + noche + "'"), std::pair('#', "'" + sucursal + "'")}) {
      for (std::size_t i = sentencia.find(marca); i != std::string::npos; i = sentencia.find(marca))
        sentencia.replace(i, 1, valor);
    }
    return ado::CeldaNumero(*Sql(sentencia), 0);
  }
};

// A stay holds the room H on the night; a line of it is sold then, of a closed reservation only by a stay that no other
// line of the room is nearer to.
const std::string kAlojada =
    "EXISTS (SELECT 1 FROM Check_In C JOIN Check_In_Detalle CD ON CD.Ci_Folio = C.Ci_Folio WHERE CD.Hb_Cve_Habitacion "
    "= H.Hb_Cve_Habitacion AND C.Es_Cve_Estado <> 'CA' AND date(C.Ci_Llegada) <= @ AND date(C.Ci_Salida) > @ AND "
    "(C.Es_Cve_Estado <> 'CE' OR @ < '2026-03-09'))";
const std::string kLinea =
    "Reservacion R JOIN Reservacion_Detalle D ON D.Rs_Folio = R.Rs_Folio JOIN Habitacion H ON H.Hb_Cve_Habitacion = "
    "D.Hb_Cve_Habitacion WHERE D.Rsd_Fecha_Inicio <= @ AND D.Rsd_Fecha_Fin > @ AND ";
const auto kLejania = [](const std::string& linea) {
  const std::string dias = "julianday(date(C.Ci_Llegada)) - julianday(" + linea + ".Rsd_Fecha_Inicio)";
  return "CASE WHEN " + dias + " >= 0 THEN " + dias + " ELSE 100000 - (" + dias + ") END";
};
const std::string kAlojadaSuya = kAlojada.substr(0, kAlojada.size() - 1) +
                                 " AND NOT EXISTS (SELECT 1 FROM Reservacion RO JOIN Reservacion_Detalle O ON "
                                 "O.Rs_Folio = RO.Rs_Folio WHERE RO.Es_Cve_Estado <> 'CA' AND O.Hb_Cve_Habitacion = "
                                 "D.Hb_Cve_Habitacion AND O.Rsd_Fecha_Fin > date(C.Ci_Llegada) AND O.Rsd_Fecha_Inicio "
                                 "< date(C.Ci_Salida) AND (" +
                                 kLejania("O") + " < " + kLejania("D") + " OR " + kLejania("O") + " = " +
                                 kLejania("D") + " AND O.Rs_Folio < D.Rs_Folio)))";
const std::string kVendida = "(R.Es_Cve_Estado NOT IN ('CA','CE') OR R.Es_Cve_Estado = 'CE' AND " + kAlojadaSuya + ")";
const std::string kEnLibros = "date(R.Rs_Fecha) <= '2025-03-09' AND (" + kVendida +
                              " OR R.Es_Cve_Estado = 'CA' AND date(R.Fecha_Baja) > '2025-03-09')";
const std::string kImporte =
    "SELECT SUM((D.Rsd_Precio_Neto_Importe - D.Rsd_Impuesto_Importe) * CASE R.Rs_Tipo_Cambio WHEN 0 THEN 1 ELSE "
    "R.Rs_Tipo_Cambio END / (julianday(D.Rsd_Fecha_Fin) - julianday(D.Rsd_Fecha_Inicio))) FROM ";
const std::string kTomada =
    "EXISTS (SELECT 1 FROM Reservacion R JOIN Reservacion_Detalle D ON D.Rs_Folio = R.Rs_Folio "
    "WHERE D.Hb_Cve_Habitacion = H.Hb_Cve_Habitacion AND D.Rsd_Fecha_Inicio <= @ AND "
    "D.Rsd_Fecha_Fin > @ AND " +
    kVendida + ")";

TEST_F(CifrasPrueba, SonLasDeLaBase) {
  Abre();
  Sql("INSERT INTO Sucursal (Sc_Cve_Sucursal, Sc_Descripcion) VALUES ('0002', 'Playa')");
  Cuenta todo;
  for (unsigned semilla = 1; semilla <= 5; ++semilla) {
    SCOPED_TRACE(semilla);
    std::mt19937 azar(semilla);
    for (const char* tabla :
         {"Reservacion_Detalle", "Reservacion", "Check_In_Detalle", "Check_In", "Habitacion_Bloqueo"})
      Sql(std::string("DELETE FROM ") + tabla);
    LlenaDosMeses(azar);
    const std::string sucursal = semilla % 3 == 0 ? "0002" : "";
    const std::string suya = sucursal.empty() ? "" : " AND R.Sc_Cve_Sucursal = #";
    recepcion::Cifras cifras;
    cifras.Abre({Dia(2026, 2, 27), Dia(2026, 4, 3), sucursal});
    ASSERT_EQ(cifras.noches().size(), 36U);
    for (const recepcion::CuentaDe& de : cifras.noches()) {
      const std::string noche = com::AIso(de.desde), antes = com::AIso(recepcion::UnAnoAntes(de.desde));
      SCOPED_TRACE(noche);
      const Cuenta& c = de.cuenta;
      const auto es = [&](double dado, const std::string& sentencia, const std::string& dia) {
        EXPECT_NEAR(dado, Numero(sentencia, dia, sucursal), 1e-6) << sentencia;
      };
      es(c.vendidas, "SELECT COUNT(*) FROM " + kLinea + kVendida + suya, noche);
      es(c.cortesias, "SELECT COUNT(*) FROM " + kLinea + kVendida + suya + " AND D.Rsd_Precio_Neto_Importe = 0", noche);
      es(c.ingreso, kImporte + kLinea + kVendida + suya, noche);
      es(c.disponibles,
         "SELECT COUNT(*) FROM Habitacion H WHERE " + kTomada + " OR " + kAlojada +
             " OR H.Es_Cve_Estado <> 'BA' AND NOT EXISTS (SELECT 1 FROM Habitacion_Bloqueo B WHERE "
             "B.Hb_Cve_Habitacion = H.Hb_Cve_Habitacion AND B.Es_Cve_Estado = 'AC' AND @ BETWEEN B.Hbb_Fecha_Inicio "
             "AND B.Hbb_Fecha_Fin)",
         noche);
      if (sucursal.empty()) {
        es(c.sinPrecio, "SELECT COUNT(*) FROM Habitacion H WHERE " + kAlojada + " AND NOT " + kTomada, noche);
      } else {
        EXPECT_EQ(c.sinPrecio, 0);
      }
      es(c.vendidasEntonces, "SELECT COUNT(*) FROM " + kLinea + kEnLibros + suya, antes);
      es(c.ingresoEntonces, kImporte + kLinea + kEnLibros + suya, antes);
      es(c.vendidasAlFinal, "SELECT COUNT(*) FROM " + kLinea + kVendida + suya, antes);
      es(c.ingresoAlFinal, kImporte + kLinea + kVendida + suya, antes);
    }
    // Months and total are their nights.
    ASSERT_EQ(cifras.meses().size(), 3U);
    EXPECT_EQ(com::AIso(cifras.meses()[1].desde) + com::AIso(cifras.meses()[1].hasta), "2026-03-012026-03-31");
    EXPECT_NEAR(recepcion::Suma(cifras.meses()).ingreso, cifras.total().ingreso, 1e-6);
    todo += cifras.total();
  }
  // The hotels have something of everything.
  for (const int cuantas : {todo.cortesias, todo.sinPrecio, todo.vendidasEntonces,
                            todo.vendidasAlFinal - todo.vendidasEntonces, todo.vendidas})
    EXPECT_GT(cuantas, 20);
}

TEST_F(CifrasPrueba, LoQueSeDivideYLoQueSeRechaza) {
  Abre();
  InsertaReservacion("1", {"0101", "0102"});
  InsertaReservacion("2", {"0201"});
  Sql("UPDATE Reservacion_Detalle SET Rsd_Precio_Neto_Importe = 0, Rsd_Impuesto_Importe = 0 WHERE Rs_Folio = '2'");
  recepcion::Cifras cifras;
  cifras.Abre();
  EXPECT_EQ(com::AIso(cifras.pedido().desde) + com::AIso(cifras.pedido().hasta), "2026-03-012026-03-31");
  cifras.Abre({Dia(2026, 3, 10), Dia(2026, 3, 12), ""});
  const Cuenta& total = cifras.total();
  EXPECT_EQ(total.disponibles, 9);
  EXPECT_NEAR(total.Ocupacion(), 6.0 / 9, 1e-9);
  EXPECT_NEAR(total.Tarifa(), 1000, 1e-9) << "courtesy nights are in no rate";
  EXPECT_NEAR(total.PorHabitacion(), 4000.0 / 9, 1e-9);
  EXPECT_EQ(Cuenta().Ocupacion() + Cuenta().Tarifa() + Cuenta().PorHabitacion(), 0) << "a hotel without rooms";
  for (const auto& [desde, hasta] :
       {std::pair(Dia(2026, 3, 12), Dia(2026, 3, 11)), std::pair(Dia(2020, 1, 1), Dia(2031, 1, 1))})
    EXPECT_THROW(cifras.Abre({desde, hasta, ""}), com::Error);
  EXPECT_EQ(cifras.noches().size(), 3U) << "what was shown stays";
  // A leap day has no date a year before, and those around it keep theirs.
  EXPECT_EQ(com::AIso(recepcion::UnAnoAntes(Dia(2028, 2, 29))), "2027-02-28");
  Sql("UPDATE Reservacion SET Rs_Fecha = '2023-01-01'");
  Sql("UPDATE Reservacion_Detalle SET Rsd_Fecha_Inicio = '2027-02-27', Rsd_Fecha_Fin = '2027-03-02'");
  cifras.Abre({Dia(2028, 2, 28), Dia(2028, 3, 2), ""});
  std::string alFinal;
  for (const auto& de : cifras.noches()) alFinal += std::to_string(de.cuenta.vendidasAlFinal) + " ";
  EXPECT_EQ(alFinal, "3 0 3 0 ");
  // The year behind it is compared by as many nights as it has.
  Sql("UPDATE Reservacion_Detalle SET Rsd_Fecha_Inicio = '2028-02-28', Rsd_Fecha_Fin = '2028-03-02'");
  cifras.Abre({Dia(2029, 2, 28), Dia(2029, 3, 1), ""});
  EXPECT_EQ(cifras.total().vendidasAlFinal, 6);
}

// Who stayed on a reservation's nights is the guest of the one before, also where the period begins behind it.
TEST_F(CifrasPrueba, QuienSeQuedaMasNoVendeLaSiguiente) {
  Abre();
  InsertaReservacion("1", {"0101"}, "CE");
  InsertaReservacion("2", {"0101"}, "CE");
  Sql("UPDATE Reservacion_Detalle SET Rsd_Fecha_Inicio = '2026-03-01', Rsd_Fecha_Fin = '2026-03-03' WHERE Rs_Folio = "
      "'1'");
  Sql("UPDATE Reservacion_Detalle SET Rsd_Fecha_Inicio = '2026-03-03', Rsd_Fecha_Fin = '2026-03-05' WHERE Rs_Folio = "
      "'2'");
  Sql("INSERT INTO Check_In (Ci_Folio, Ci_Llegada, Ci_Salida, Es_Cve_Estado) VALUES ('1', '2026-03-01 15:00', "
      "'2026-03-05 12:00', 'CE')");
  Sql("INSERT INTO Check_In_Detalle VALUES ('1', '0101')");
  recepcion::Cifras cifras;
  for (const int desde : {1, 2, 3, 4}) {
    cifras.Abre({Dia(2026, 3, desde), Dia(2026, 3, 6), ""});
    EXPECT_EQ(cifras.total().vendidas, std::max(3 - desde, 0)) << desde;
    EXPECT_EQ(cifras.total().sinPrecio, std::min(5 - desde, 2)) << desde;
  }
}

TEST(ListadoPrueba, LaHojaDeCalculoLoAbreSinSorpresas) {
  using enum listado::Clase;
  listado::Listado lista;
  lista.columnas = {{"Nombre", Texto},        {"Noches", Entero}, {"Total", Importe},
                    {"Ocupación", PorCiento}, {"Llegada", Fecha}, {"Cuándo", Momento}};
  lista.filas = {
      {"O'Brien, \"Pat\"", 3, -1234.505, 0.4567, com::FechaDe(2026, 3, 9), com::FechaDe(2026, 3, 9, 10, 5)},
      {"=HYPERLINK(\"http://x\")", com::Variant::Null(), 0.0, 1.0, com::Variant(), com::Variant()},
      {"dos\nlíneas; sí", 0, -0.001, 0.0, "Total", com::Variant()},
  };
  EXPECT_EQ(listado::Csv(lista, listado::kConComas),
            "\xEF\xBB\xBFNombre,Noches,Total,Ocupación %,Llegada,Cuándo\r\n"
            "\"O'Brien, \"\"Pat\"\"\",3,-1234.50,45.7,2026-03-09,2026-03-09 10:05:00\r\n"
            "\"'=HYPERLINK(\"\"http://x\"\")\",,0.00,100.0,,\r\n"
            "\"dos\nlíneas; sí\",0,0.00,0.0,Total,\r\n");
  const std::string espanol = listado::Csv(lista, listado::kConPuntoYComa);
  EXPECT_NE(espanol.find("\";3;-1234,50;45,7;2026-03-09;"), std::string::npos) << espanol;
  lista.columnas.resize(1);
  lista.filas.clear();
  for (const char* malo : {"+52 55 1234", "-1+1", "@SUM(A1)", "\t=1", "\r=1", "＝1"}) lista.filas.push_back({malo});
  std::string csv = listado::Csv(lista, listado::kConComas);
  EXPECT_EQ(std::ranges::count(csv, '\''), 6) << csv;
  lista.filas = {{"a=b"}, {" =1"}, {"'ya"}, {""}};
  csv = listado::Csv(lista, listado::kConComas);
  EXPECT_EQ(std::ranges::count(csv, '\''), 1) << csv;
}

}  // namespace
}  // namespace pruebas
