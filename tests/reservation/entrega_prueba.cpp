// The board: runs of marks, and the hand-off to room lines.
#include "reservation/entrega.h"

#include <gtest/gtest.h>

#include "tests/reservation/renglones_comun.h"

namespace {

using controles::Accion;
using kv207::Racha;
using pruebas::Cajas;
using pruebas::Vistos;

TEST(RecorreRachas, HandsOverTheMarkedNightsWithoutAGap) {
  const auto rachas = [](const std::string& noches) {
    std::vector<Racha> entregadas;
    kv207::RecorreRachas(
        static_cast<int>(noches.size()), [&](int n) { return noches[static_cast<std::size_t>(n)] == '3'; },
        [&](Racha racha) { entregadas.push_back(racha); });
    return entregadas;
  };
  using Rachas = std::vector<Racha>;
  EXPECT_EQ(rachas(""), Rachas{});
  EXPECT_EQ(rachas("01241"), Rachas{});
  EXPECT_EQ(rachas("3"), (Rachas{{0, 0}}));
  EXPECT_EQ(rachas("3313"), (Rachas{{0, 1}, {3, 3}}));
  EXPECT_EQ(rachas("1333"), (Rachas{{1, 3}}));
  EXPECT_EQ(rachas("3040333"), (Rachas{{0, 0}, {4, 6}}));
}

class Entrega : public pruebas::RenglonesPrueba {
 protected:
  // Room view, marks of the first row given by night, then the toolbar's button.
  void AlAbrir(const std::vector<std::pair<int, int>>& marcas, Accion accion) {
    escritorio.alModal = [this, marcas, accion](controles::Formulario&) {
      if (!tablero.opHabitacion.value()) tablero.opHabitacion.Pulsa();
      for (const auto& [fila, noche] : marcas) tablero.ssDisponibilidad.ClicCelda(fila, kv207::kColumnasFijas + noche);
      tablero.Controles.Pulsa(accion);
    };
  }
  void Agrega(const std::string& clave) {
    std::int32_t ancho = 0;
    pantalla.AgregaHabitacion("10/03/2026", "12/03/2026", clave, "Cuarto " + clave, ancho);
  }
};

TEST_F(Entrega, ReopenedItShowsTheSameMarksWithoutLoading) {
  Nueva();
  AlAbrir({{0, 0}, {0, 1}}, Accion::Aceptar);
  pantalla.cmdDisponibilidad.Pulsa();
  ASSERT_EQ(grid().Filas(), 1);
  Linea("0102", 1);
  conexion->sentencias.clear();
  escritorio.alModal = [this](controles::Formulario&) {
    EXPECT_EQ(conexion->sentencias, std::vector<std::string>{});
    tablero.Controles.Pulsa(Accion::Aceptar);
  };
  pantalla.cmdDisponibilidad.Pulsa();
  EXPECT_EQ(grid().Filas(), 1);
  EXPECT_TRUE(tablero.ConservarVista);

  // More nights than the board was built for: the lines go, the runs that end before the missing night come, it is
  // told.
  escritorio.alModal = [this](controles::Formulario&) {
    tablero.ssDisponibilidad.ClicCelda(0, kv207::kColumnasFijas + 1);
    tablero.Controles.Pulsa(Accion::Aceptar);
  };
  pantalla.txtDias.valor(5);
  Linea("0102", 1);
  pantalla.cmdDisponibilidad.Pulsa();
  EXPECT_EQ(Vistos(escritorio),
            Cajas{"ERR-ID:7500003|16|cmdDisponibilidad_Click()|El tablero no muestra la noche 3 de la estancia"});
  ASSERT_EQ(grid().Filas(), 1);
  EXPECT_EQ(Texto(0, "FECHAI") + Texto(0, "FECHAF"), "10/03/202611/03/2026");

  // Another number of nights: a new board, by type, without marks.
  escritorio.Olvida();
  pantalla.txtDias.Teclea("3");
  escritorio.alModal = [this](controles::Formulario&) {
    EXPECT_TRUE(tablero.opTipoHabitacion.value());
    EXPECT_EQ(tablero.NumeroDias, 3);
    EXPECT_FALSE(tablero.HaySeleccion);
    tablero.Controles.Pulsa(Accion::Aceptar);
    EXPECT_TRUE(tablero.visible());
    tablero.Controles.Pulsa(Accion::Cancelar);
  };
  pantalla.cmdDisponibilidad.Pulsa();
  EXPECT_EQ(Vistos(escritorio), Cajas{"ERR-ID:7500055|48|Vormalix|Debe seleccionar al menos una habitación"});
}

TEST_F(Entrega, AFailingRoomIsReportedByTheButton) {
  Nueva();
  AlAbrir({{0, 0}, {1, 0}}, Accion::Aceptar);
  conexion->Falla("Habitacion.Hb_Cve_Habitacion = '0102'");
  pantalla.cmdDisponibilidad.Pulsa();
  EXPECT_EQ(Vistos(escritorio), Cajas{"ERR-ID:7500003|16|cmdDisponibilidad_Click()|falla inyectada"});
  EXPECT_EQ(grid().Filas(), 1) << "what was handed over before stays";
}

TEST_F(Entrega, ALineWhoseTaxCannotBeAskedIsThereAsFarAsItGot) {
  Nueva();
  const auto sinTasas = com::RegistraClase(anfitrion::kClaseCalculoImpuesto, []() -> com::Ptr<com::Desconocido> {
    throw com::Error(com::error::kInyectada, "Sin tasas");
  });
  EXPECT_THROW(Agrega("0101"), com::Error);
  ASSERT_EQ(grid().Filas(), 1);
  EXPECT_EQ(Texto(0, "Clave") + Texto(0, "FECHAF") + Texto(0, "Producto"), "010113/03/2026HAB1");
  EXPECT_EQ(Numero(0, "DESCUENTO_IMPORTE"), 0);
  EXPECT_TRUE(grid().celda(0, "Impuesto").EsVacio());
  EXPECT_TRUE(grid().celda(0, "Total").EsVacio());
}

TEST_F(Entrega, ALineEndsTheDayAfterItsLastNight) {
  Nueva();
  std::int32_t ancho = 0;
  pantalla.AgregaHabitacion("10/03/2026", "12/03/2026", "0101", "Una habitación de nombre muy largo", ancho);
  EXPECT_EQ(Texto(0, "FECHAI"), "10/03/2026");
  EXPECT_EQ(Texto(0, "FECHAF"), "13/03/2026");
  EXPECT_EQ(ancho, escritorio.AnchoTexto(pantalla, "Una habitación de nombre muy largo"));
  const std::int32_t antes = ancho;
  pantalla.AgregaHabitacion("10/03/2026", "10/03/2026", "0102", "Corto", ancho);
  EXPECT_EQ(ancho, antes);
  EXPECT_EQ(grid().fila(), 1);
  EXPECT_THROW(Agrega("0101' OR '1'='1"), com::Error);
  EXPECT_EQ(grid().Filas(), 2);
}

}  // namespace
