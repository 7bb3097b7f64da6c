// Availability validation: periods of the lines, and what holds a room on a night.
#include <gtest/gtest.h>

#include <algorithm>

#include "reservation/valida_disponibilidad.h"
#include "tests/reservation/renglones_comun.h"

namespace {

using kv207::FallaPeriodos;

TEST(PeriodosDeLosRenglones, LieInTheStayAndFollowOneAnother) {
  using enum FallaPeriodos;
  struct Caso {
    std::vector<std::pair<int, int>> dias;  // of March
    FallaPeriodos falla;
  };
  const com::Fecha llegada = com::FechaDe(2026, 3, 10, 15, 0), salida = com::FechaDe(2026, 3, 15, 12, 0);
  const Caso casos[] = {
      {{}, Ninguna},
      {{{10, 15}}, Ninguna},
      {{{9, 12}}, InicioFueraDelPeriodo},
      {{{10, 16}}, FinFueraDelPeriodo},
      {{{9, 16}}, InicioFueraDelPeriodo},
      {{{10, 13}, {13, 15}}, Ninguna},                   // one after the other
      {{{10, 13}, {12, 15}}, NoCorrelativas},            // a night in common
      {{{10, 13}, {14, 15}}, Ninguna},                   // a gap
      {{{10, 15}, {10, 12}}, Ninguna},                   // both from the arrival
      {{{12, 15}, {10, 13}}, NoCorrelativas},            // the next one reaches into the first
      {{{12, 15}, {12, 14}}, NoCorrelativas},            // both later than the arrival
      {{{10, 12}, {12, 13}, {11, 15}}, NoCorrelativas},  // neighbours are compared
      {{{10, 13}, {14, 15}, {11, 12}}, Ninguna},         // and only neighbours
      {{{10, 13}, {9, 12}}, InicioFueraDelPeriodo},
      {{{11, 13}, {9, 12}}, NoCorrelativas},       // line by line
      {{{10, 13}, {12, 16}}, FinFueraDelPeriodo},  // the period comes before the neighbours
  };
  for (std::size_t i = 0; i < std::size(casos); ++i) {
    std::vector<kv207::PeriodoRenglon> renglones;
    for (const auto& [a, b] : casos[i].dias) {
      renglones.push_back({com::FechaDe(2026, 3, a), com::FechaDe(2026, 3, b)});
    }
    EXPECT_EQ(kv207::RevisaPeriodos(llegada, salida, renglones), casos[i].falla) << "case " << i;
  }
}

class Disponibilidad : public pruebas::RenglonesPrueba {
 protected:
  // "" when all is well.
  std::string Valida() {
    bool ok = false;
    pantalla.Valida_Disponibilidad(ok);
    EXPECT_EQ(ok, pantalla.MensajeDisponibilidad.empty());
    EXPECT_TRUE(escritorio.Mensajes().empty());
    return pantalla.MensajeDisponibilidad;
  }
  void Bloqueo(const std::string& inicio, const std::string& fin, const std::string& estado = "AC") {
    Sql("INSERT INTO Habitacion_Bloqueo (Hb_Cve_Habitacion, Hbb_Fecha_Inicio, Hbb_Fecha_Fin, Es_Cve_Estado) VALUES "
        "('0101', '" +
        inicio + "', '" + fin + "', '" + estado + "')");
  }
  void Estancia(const std::string& folio, const std::string& inicio, const std::string& fin,
                const std::string& estado = "AC") {
    Sql("INSERT INTO Check_In (Ci_Folio, Ci_Llegada, Ci_Salida, Es_Cve_Estado) VALUES ('" + folio + "', '" + inicio +
        "', '" + fin + "', '" + estado + "')");
    Sql("INSERT INTO Check_In_Detalle (Ci_Folio, Hb_Cve_Habitacion) VALUES ('" + folio + "', '0101')");
  }
};

TEST_F(Disponibilidad, ABlockHoldsItsLastDayToo) {
  Nueva();
  Linea("0101", 2);
  Bloqueo("2026-03-12", "2026-03-20");  // the day of departure
  Bloqueo("2026-03-01", "2026-03-11", "CA");
  Bloqueo("2026-03-01", "2026-03-09");
  EXPECT_EQ(Valida(), "");
  Bloqueo("2026-03-05", "2026-03-10");
  EXPECT_EQ(Valida(), "la habitación 'Sencilla / Vista al mar' \r\n se encuentra bloqueada en la fecha: 10/03/2026");
}

TEST_F(Disponibilidad, AStayHoldsItsNights) {
  Nueva();
  Linea("0101", 2);
  Estancia("1", "2026-03-05", "2026-03-10 12:00:00");
  Estancia("2", "2026-03-05", "2026-03-20", "CA");
  Estancia("3", "2026-03-05", "2026-03-20", "CE");
  EXPECT_EQ(Valida(), "");
  Estancia("4", "2026-03-11", "2026-03-12");
  EXPECT_EQ(Valida(), "la habitación 'Sencilla / Vista al mar' \r\n se encuentra ocupada en la fecha: 11/03/2026");
}

TEST_F(Disponibilidad, AnotherReservationHoldsItsNightsUnlessOverBookingIsAllowed) {
  host.Parametro("HT_OVER_BOOKING", "0");
  Nueva();
  Linea("0101", 2);
  InsertaReservacion("0000000071", {"0101"}, "CA");
  InsertaReservacion("0000000072", {"0101"}, "CE");
  InsertaReservacion("0000000073", {"0102"});
  EXPECT_EQ(Valida(), "");
  InsertaReservacion("0000000074", {"0101"}, "AP");
  EXPECT_EQ(Valida(), "la habitación 'Sencilla / Vista al mar'\r\nestá reservado para la fecha: 10/03/2026");
  pantalla.PermiteSobreventa = true;
  EXPECT_EQ(Valida(), "");
  Bloqueo("2026-03-10", "2026-03-10");
  EXPECT_NE(Valida(), "");
}

TEST_F(Disponibilidad, TellsEachFaultOfThePeriods) {
  Nueva();
  Linea("0101", 2);
  Linea("0102", 0);
  const auto pon = [this](int inicio0, int fin0, int inicio1) {
    grid().celda(0, "FECHAI", Dia(2026, 3, inicio0));
    grid().celda(0, "FECHAF", Dia(2026, 3, fin0));
    grid().celda(1, "FECHAI", Dia(2026, 3, inicio1));
  };
  pantalla.dpFecha_salida.valor(Dia(2026, 3, 14));
  grid().celda(1, "FECHAF", Dia(2026, 3, 14));
  pon(9, 12, 12);
  EXPECT_EQ(Valida(), "la fecha de inicial de la habitación esta fuera del periodo de reservación");
  pon(10, 15, 12);
  EXPECT_EQ(Valida(), "la fecha de final de la habitación esta fuera del periodo de reservación");
  pon(10, 13, 12);
  EXPECT_EQ(Valida(), "Las fechas de las habitaciones deben ser correlativas, favor de verificar ");
  pon(10, 12, 12);
  EXPECT_EQ(Valida(), "especifique el número de personas para la habitación: Sencilla / Interior");
}

TEST_F(Disponibilidad, AFailureIsTheReasonAndASingleQuoteChangesNothing) {
  Nueva();
  Linea("0101", 2);
  conexion->Falla("FROM Check_In CI");
  EXPECT_EQ(Valida(), "Valida_Disponibilidad() - falla inyectada");
  EXPECT_EQ(Valida(), "");
  for (const char* fecha : {"", "mañana"}) {
    grid().celda(0, "FECHAF", fecha);
    EXPECT_EQ(Valida().rfind("Valida_Disponibilidad() - ", 0), 0U) << fecha;
  }
  grid().celda(0, "FECHAF", Dia(2026, 3, 12));
  grid().celda(0, "Clave", "0101'; DELETE FROM Habitacion --");
  EXPECT_EQ(Valida().rfind("Valida_Disponibilidad() - ", 0), 0U);
  EXPECT_EQ(Celda("SELECT COUNT(*) FROM Habitacion"), "4");
}

}  // namespace
