// Pricing of lines and the footer.
#include <gtest/gtest.h>

#include "tests/reservation/renglones_comun.h"

namespace {

using pruebas::Cajas;
using pruebas::Vistos;

class Importes : public pruebas::RenglonesPrueba {};

TEST_F(Importes, LinesWithoutRoomOrPersonsAreLeftAlone) {
  Nueva();
  grid().AgregaFila();
  grid().celda(0, "Adultos", 2);
  grid().celda(0, "Total", 50.0);
  pantalla.CalculaImportes(false);
  EXPECT_EQ(Numero(0, "Total"), 50);
  grid().celda(0, "Nombre", "Sencilla");
  grid().celda(0, "Adultos", 0);
  pantalla.CalculaImportes(true);
  EXPECT_EQ(Numero(0, "Total"), 50);
  grid().QuitaTodas();
  pantalla.CalculaImportes(false);
  EXPECT_EQ(Vistos(escritorio), Cajas{});
}

TEST_F(Importes, TheFooterSumsResolvedLinesAndKeepsTheCurrentRow) {
  Nueva();
  struct Fila {
    const char* nombre;
    double base, factor;
  };
  for (const Fila& f : {Fila{"Uno", 100, 0.16}, Fila{"Dos", 50, 0}, Fila{"", 999, 0.16}}) {
    const int fila = grid().AgregaFila();
    grid().celda(fila, "Nombre", f.nombre);
    grid().celda(fila, "Precio_Descontado_Importe", f.base);
    grid().celda(fila, "Impuesto", f.factor);
  }
  grid().fila(1);
  pantalla.Totalizar();
  EXPECT_EQ(Pie(pantalla.txtSubTotal), 150);
  EXPECT_EQ(Pie(pantalla.txtImpuestos), 16);
  EXPECT_EQ(Pie(pantalla.txtTotal), 166);
  EXPECT_EQ(grid().fila(), 1);

  grid().celda(1, "Precio_Descontado_Importe", "mucho");
  pantalla.Totalizar();
  ASSERT_EQ(escritorio.Ids(), Cajas{"ERR-ID:7500050"});
  EXPECT_EQ(escritorio.Mensajes()[0].titulo, "Totalizar()");
  EXPECT_EQ(escritorio.Mensajes()[0].estilo, 16);
  EXPECT_FALSE(escritorio.Mensajes()[0].texto.empty());
  EXPECT_EQ(Pie(pantalla.txtTotal), 166);
  EXPECT_EQ(grid().fila(), 1);
  int avisos = 0;
  grid().alCambiar = [&](controles::CambioGrid, int, int) { ++avisos; };
  grid().celda(0, "Adultos", 1);
  EXPECT_EQ(avisos, 1) << "the grid paints again";
  grid().alCambiar = {};

  grid().QuitaTodas();
  pantalla.Totalizar();
  EXPECT_EQ(Pie(pantalla.txtSubTotal) + Pie(pantalla.txtImpuestos) + Pie(pantalla.txtTotal), 0);
}

// A host that gives a discount of its own: the screen takes the factor that comes back.
class HotelQueDescuenta : public com::Objeto<anfitrion::Hotel> {
 public:
  double PrecioHabitacion(const std::string&, com::Fecha, com::Fecha, int, int, int, double&, int&, const std::string&,
                          com::Fecha, double) override {
    return 1000;
  }
  void CalculaImpuestos(double&, double&, double& factor, double& importe, double&, double& base, double&, double&,
                        double&, double&, double&, double& total) override {
    factor = 0.25, importe = 250, base = 750, total = 750;
  }
  void Encabezado(const anfitrion::DatosReservacion&) override {}
  anfitrion::DatosReservacion Encabezado() override { return {}; }
  void Detalle(const anfitrion::DatosDetalle&) override {}
  bool GuardaReservacion() override { return false; }
  bool GuardaDetalle(bool) override { return false; }
  std::string ErrorHotel() override { return ""; }
  void MuestraPrecios(com::Fecha) override {}
  void MuestraCliente(const std::string&, int, const std::string&) override {}
};

TEST_F(Importes, ADiscountOfTheHostsOwnIsShown) {
  const auto hotel = com::RegistraClase(anfitrion::kClaseHotel,
                                        [] { return com::Ptr<com::Desconocido>(com::Crea<HotelQueDescuenta>()); });
  Nueva();
  Linea("0101", 2);
  EXPECT_EQ(Texto(0, "Descuento") + " " + Texto(0, "DESCUENTO_IMPORTE") + " " + Texto(0, "Total"), "25 250 750");
  EXPECT_EQ(Pie(pantalla.txtSubTotal), 750);
}

}  // namespace
