// Every statement of the board runs on the real schema, is translated for all engines, and reads no history that it
// does not need.
#include <gtest/gtest.h>

#include "availability/sentencias.h"
#include "host/standalone/traductor.h"
#include "tests/availability/tablero_prueba.h"

namespace pruebas {
namespace {

using kv207::ModoVista;
namespace sentencias = kv207::sentencias;

struct Caso {
  std::string nombre;
  ado::TextoSQL texto;
  bool delRango = false;
};

std::vector<Caso> Casos() {
  std::vector<Caso> casos;
  for (const auto modo : {ModoVista::PorTipo, ModoVista::PorHabitacion}) {
    for (const bool conFiltros : {false, true}) {
      const std::string sufijo =
          std::string(modo == ModoVista::PorTipo ? ", by type" : ", by room") + (conFiltros ? ", filtered" : "");
      sentencias::Criterio criterio{modo, sentencias::Condicion(modo, {}), ""};
      if (conFiltros) criterio = {modo, sentencias::Condicion(modo, {"0001", "0002", "SEN"}), "R1"};
      const auto agrega = [&](const char* nombre, auto arma, bool delRango = false) {
        casos.push_back({nombre + sufijo, {}, delRango});
        arma(casos.back().texto);
      };
      agrega("totals", [&](ado::TextoSQL& s) { sentencias::ArmaTotales(s, modo); });
      agrega("rows", [&](ado::TextoSQL& s) { sentencias::ArmaFilas(s, modo, criterio.condicion); });
      agrega("reservations",
             [&](ado::TextoSQL& s) { sentencias::ArmaReservaciones(s, criterio, "101", "2026-03-09"); });
      agrega("stays", [&](ado::TextoSQL& s) { sentencias::ArmaEstancias(s, criterio, "101", "2026-03-09"); });
      agrega("blocks", [&](ado::TextoSQL& s) { sentencias::ArmaBloqueos(s, criterio, "101", "2026-03-09"); });
      const auto rango = [&](auto arma) {
        return [&criterio, arma](ado::TextoSQL& s) { arma(s, criterio, "2026-03-09", "2026-03-15"); };
      };
      agrega("reservations of the range", rango(sentencias::ArmaReservacionesDelRango), true);
      agrega("stays of the range", rango(sentencias::ArmaEstanciasDelRango), true);
      agrega("blocks of the range", rango(sentencias::ArmaBloqueosDelRango), true);
    }
  }
  return casos;
}

class Sentencias : public TableroPrueba {};

TEST_F(Sentencias, CorrenEnElEsquemaYSeTraducenParaTodosLosMotores) {
  for (const Caso& caso : Casos()) {
    SCOPED_TRACE(caso.nombre);
    EXPECT_NO_THROW(host.conexion()->Execute(caso.texto));
    for (const auto motor : {esquema::Motor::Sqlite, esquema::Motor::PostgreSQL, esquema::Motor::SqlServer}) {
      EXPECT_NO_THROW(autonomo::Traduce(caso.texto.Texto(), motor));
    }
    // What SQL Server is given is what the screen wrote.
    EXPECT_EQ(autonomo::Traduce(caso.texto.Texto(), esquema::Motor::SqlServer).texto, caso.texto.Texto());
  }
}

TEST_F(Sentencias, LosConjuntosNoRecorrenLaHistoria) {
  for (const Caso& caso : Casos()) {
    if (!caso.delRango) continue;
    const std::string sql = autonomo::Traduce(caso.texto.Texto(), esquema::Motor::Sqlite).texto;
    const ado::RecordsetPtr plan = host.conexion()->Directa("EXPLAIN QUERY PLAN " + sql);
    ASSERT_FALSE(plan->Eof());
    for (; !plan->Eof(); plan->MoveNext()) {
      const std::string paso = com::CStr(plan->Fields("detail").Value());
      for (const char* grande : {"RSd", "RS", "CI", "CId", "HBb"}) {
        EXPECT_FALSE((paso + " ").starts_with("SCAN " + std::string(grande) + " ")) << caso.nombre << ": " << paso;
      }
    }
  }
}

}  // namespace
}  // namespace pruebas
