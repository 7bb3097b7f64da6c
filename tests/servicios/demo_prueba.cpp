// The demo hotel: consistent with itself on any day.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "host/standalone/impuestos.h"
#include "tests/servicios/hotel_prueba.h"

namespace autonomo {
namespace {

using pruebas::Dia;

Opciones Demo(std::string_view hoy) {
  Opciones o;
  o.demo = true;
  o.ahora = Dia(hoy);
  return o;
}

class HotelDemo : public testing::TestWithParam<const char*> {
 protected:
  HotelDemo() : host(Demo(GetParam())), base(*host.conexion()) {}
  int Cuenta(std::string_view sentencia) { return com::CLng(base.Consulta(sentencia)->Fields(0).Value()); }

  Anfitrion host;
  Conexion& base;
};

TEST_P(HotelDemo, TieneLoQueUnHotelTiene) {
  EXPECT_EQ(Cuenta("SELECT COUNT(*) AS N FROM Habitacion"), 40);
  EXPECT_EQ(Cuenta("SELECT COUNT(*) AS N FROM Tipo_Habitacion"), 6);
  EXPECT_EQ(Cuenta("SELECT COUNT(*) AS N FROM Reservacion"), 45);
  for (const char* estado : {"AC", "CO", "CA", "CE", "AP"}) {
    EXPECT_GT(com::CLng(base.Consulta("SELECT COUNT(*) AS N FROM Reservacion WHERE Es_Cve_Estado = ?", {estado})
                            ->Fields(0)
                            .Value()),
              2)
        << estado;
  }
  // Somebody arrives today, and somebody is in the house.
  EXPECT_GT(com::CLng(base.Consulta("SELECT COUNT(*) AS N FROM Reservacion WHERE Rs_Llegada = ? AND "
                                    "Es_Cve_Estado IN ('AC', 'CO')",
                                    {com::SoloFecha(Dia(GetParam()))})
                          ->Fields(0)
                          .Value()),
            2);
}

TEST_P(HotelDemo, CadaReservacionSeLee) {
  // The joined read that loads a reservation.
  EXPECT_EQ(Cuenta("SELECT COUNT(DISTINCT Reservacion.Rs_Folio) AS N FROM Reservacion "
                   "INNER JOIN Reservacion_Detalle ON Reservacion.Rs_Folio = Reservacion_Detalle.Rs_Folio "
                   "INNER JOIN Habitacion ON Reservacion_Detalle.Hb_Cve_Habitacion = Habitacion.Hb_Cve_Habitacion "
                   "INNER JOIN Tipo_Habitacion ON Habitacion.Th_Cve_Tipo_Habitacion = "
                   "Tipo_Habitacion.Th_Cve_Tipo_Habitacion "
                   "INNER JOIN Producto ON Tipo_Habitacion.Pr_Cve_Producto = Producto.Pr_Cve_Producto "
                   "INNER JOIN Producto_Precio ON Producto_Precio.Pr_Cve_Producto = Producto.Pr_Cve_Producto "
                   "INNER JOIN Cliente ON Cliente.Cl_Cve_Cliente = Reservacion.Rs_Huesped "
                   "INNER JOIN Cliente Paga ON Paga.Cl_Cve_Cliente = Reservacion.Cl_Cve_Cliente "
                   "INNER JOIN Moneda ON Moneda.Mn_Cve_Moneda = Reservacion.Mn_Cve_Moneda "
                   "INNER JOIN Forma_Pago ON Forma_Pago.Fp_Cve_Forma_Pago = Reservacion.Fp_Cve_Forma_Pago "
                   "INNER JOIN Sucursal ON Sucursal.Sc_Cve_Sucursal = Reservacion.Sc_Cve_Sucursal"),
            45);
  EXPECT_EQ(Cuenta("SELECT COUNT(*) AS N FROM Habitacion "
                   "INNER JOIN Grupo_Habitacion ON Grupo_Habitacion.Ghb_Cve_Grupo_Habitacion = "
                   "Habitacion.Ghb_Cve_Grupo_Habitacion "
                   "INNER JOIN Area_Habitacion ON Area_Habitacion.Ah_Cve_Area_Habitacion = "
                   "Habitacion.Ah_Cve_Area_Habitacion"),
            40);
}

TEST_P(HotelDemo, NadieDuermeEnUnCuartoTomado) {
  // Who holds each room and night. A reservation that is in the house and its own stay are one and the same holder.
  std::map<std::pair<std::string, int>, std::string> tomadas;
  const auto toma = [&](const ado::Recordset& rs, const std::string& quien, int masDias) {
    const std::string cuarto = com::CStr(rs.Fields("Hb_Cve_Habitacion").Value());
    const int fin = com::CDate(rs.Fields("Fin").Value()).dia + masDias;
    for (int noche = com::CDate(rs.Fields("Inicio").Value()).dia; noche < fin; ++noche) {
      const auto [lugar, nueva] = tomadas.try_emplace({cuarto, noche}, quien);
      EXPECT_TRUE(nueva || lugar->second == quien) << cuarto << " " << quien << " over " << lugar->second;
    }
  };
  const ado::RecordsetPtr lineas = base.Consulta(
      "SELECT Hb_Cve_Habitacion, Rsd_Fecha_Inicio AS Inicio, Rsd_Fecha_Fin AS Fin, Es_Cve_Estado, Reservacion.Rs_Folio "
      "FROM Reservacion_Detalle INNER JOIN Reservacion ON Reservacion.Rs_Folio = Reservacion_Detalle.Rs_Folio "
      "WHERE Es_Cve_Estado NOT IN ('CA', 'CE')");
  for (; !lineas->Eof(); lineas->MoveNext()) {
    const bool enCasa = com::CStr(lineas->Fields("Es_Cve_Estado").Value()) == "AP";
    toma(*lineas, enCasa ? "casa" : com::CStr(lineas->Fields("Rs_Folio").Value()), 0);
  }
  const ado::RecordsetPtr estancias = base.Consulta(
      "SELECT Hb_Cve_Habitacion, Ci_Llegada AS Inicio, Ci_Salida AS Fin FROM Check_In_Detalle "
      "INNER JOIN Check_In ON Check_In.Ci_Folio = Check_In_Detalle.Ci_Folio WHERE Es_Cve_Estado = 'AC'");
  EXPECT_GE(estancias->RecordCount(), 10);
  for (; !estancias->Eof(); estancias->MoveNext()) toma(*estancias, "casa", 0);
  const ado::RecordsetPtr bloqueos = base.Consulta(
      "SELECT Hb_Cve_Habitacion, Hbb_Fecha_Inicio AS Inicio, Hbb_Fecha_Fin AS Fin FROM Habitacion_Bloqueo "
      "WHERE Es_Cve_Estado = 'AC'");
  for (; !bloqueos->Eof(); bloqueos->MoveNext()) toma(*bloqueos, "bloqueo", 1);
}

TEST_P(HotelDemo, PreciosYDesglosesSonLosDelSistema) {
  const com::Ptr<anfitrion::Hotel> hotel = CreaHotel(host);
  const ado::RecordsetPtr rs = base.Consulta(
      "SELECT Reservacion_Detalle.*, Reservacion.Mn_Cve_Moneda, Reservacion.Rs_Tipo_Cambio, Reservacion.Rs_Fecha, "
      "Reservacion.Rs_Llegada, Reservacion.Rs_Salida, Tipo_Habitacion.Th_Num_Personas_Maximo "
      "FROM Reservacion_Detalle INNER JOIN Reservacion ON Reservacion.Rs_Folio = Reservacion_Detalle.Rs_Folio "
      "INNER JOIN Habitacion ON Habitacion.Hb_Cve_Habitacion = Reservacion_Detalle.Hb_Cve_Habitacion "
      "INNER JOIN Tipo_Habitacion ON Tipo_Habitacion.Th_Cve_Tipo_Habitacion = Habitacion.Th_Cve_Tipo_Habitacion");
  ASSERT_GT(rs->RecordCount(), 45);
  for (; !rs->Eof(); rs->MoveNext()) {
    const auto v = [&](const char* columna) { return rs->Fields(columna).Value(); };
    const auto num = [&](const char* columna) { return com::CDbl(v(columna)); };
    SCOPED_TRACE(com::CStr(v("Rs_Folio")) + " " + com::CStr(v("Hb_Cve_Habitacion")));
    double extra = 0;
    int cuantas = 0;
    const std::string moneda = com::CStr(v("Mn_Cve_Moneda"));
    const double precio = hotel->PrecioHabitacion(com::CStr(v("Hb_Cve_Habitacion")), com::CDate(v("Rsd_Fecha_Inicio")),
                                                  com::CDate(v("Rsd_Fecha_Fin")), com::CInt(v("Rsd_Adultos")),
                                                  com::CInt(v("Rsd_Menores")), com::CInt(v("Rsd_Infantes")), extra,
                                                  cuantas, moneda, com::CDate(v("Rs_Fecha")), num("Rs_Tipo_Cambio"));
    EXPECT_EQ(hotel->ErrorHotel(), "");
    EXPECT_EQ(num("Rsd_Precio"), precio);
    EXPECT_EQ(num("Rsd_Precio_Personas_Extra"), extra);
    EXPECT_EQ(num("Rsd_Cantidad_Personas_Extra"), cuantas);
    EXPECT_EQ(num("Rs_Tipo_Cambio"), CreaUtilerias(host)->TipoCambio(moneda, com::CDate(v("Rs_Fecha"))));
    EXPECT_LE(num("Rsd_Adultos") + num("Rsd_Menores") + num("Rsd_Infantes"), num("Th_Num_Personas_Maximo"));
    EXPECT_LE(com::CDate(v("Rs_Fecha")), com::CDate(v("Rs_Llegada")));
    EXPECT_LE(com::CDate(v("Rs_Fecha")).dia, Dia(GetParam()).dia);

    anfitrion::Desglose d;
    d.impuestoFactor = num("Rsd_Impuesto_Factor");
    d.descuentoFactor = num("Rsd_Descuento_Factor");
    d.precioNeto = d.total = num("Rsd_Precio_Neto_Importe");
    Desglosa(d);
    EXPECT_NEAR(d.total, com::Redondea((precio + extra) * (1 - d.descuentoFactor), 2), 1e-6);
    EXPECT_NEAR(num("Rsd_Precio_Lista"), d.precioLista, 1e-6);
    EXPECT_NEAR(num("Rsd_Precio_Lista_Importe"), d.precioListaImporte, 1e-6);
    EXPECT_NEAR(num("Rsd_Descuento_Importe"), d.descuentoImporte, 1e-6);
    EXPECT_NEAR(num("Rsd_Precio_Descontado"), d.precioDescontado, 1e-6);
    EXPECT_NEAR(num("Rsd_Precio_Descontado_Importe"), d.precioDescontadoImporte, 1e-6);
    EXPECT_NEAR(num("Rsd_Impuesto_Importe"), d.impuestoImporte, 1e-6);
    EXPECT_NEAR(num("Rsd_Precio_Neto"), d.precioNeto, 1e-6);
  }
}

// A plain day, a leap day, the turn of the year, high season, Friday.
INSTANTIATE_TEST_SUITE_P(Dias, HotelDemo,
                         testing::Values("2026-03-04", "2028-02-29", "2026-12-31T23:50", "2027-07-28", "2026-10-16"));

TEST(Demo, ElMismoDiaDaElMismoHotel) {
  EXPECT_EQ(esquema::HotelDemo("2026-03-04"), esquema::HotelDemo("2026-03-04"));
  EXPECT_NE(esquema::HotelDemo("2026-03-04"), esquema::HotelDemo("2026-03-05"));
  EXPECT_THROW(esquema::HotelDemo("ayer"), com::Error);
}

TEST(Demo, SiguienteFolioYDerechos) {
  Anfitrion host(Demo("2026-03-04"));
  EXPECT_EQ(pruebas::GuardaUna(host, "0312", "2026-06-01", "2026-06-02", 100), "0000000046");
  const com::Ptr<anfitrion::Sistema> sistema = CreaSistema(host);
  EXPECT_TRUE(sistema->TienePermiso("KV207", "CHPR02", ""));
  EXPECT_FALSE(sistema->TienePermiso("KV207", "CHTC01", ""));
}

TEST(Demo, SoloLlenaUnHotelVacio) {
  Anfitrion vacio(pruebas::OpcionesDePrueba());
  for (const esquema::Tabla& t : esquema::Tablas()) {
    EXPECT_EQ(
        com::CLng(vacio.conexion()->Consulta("SELECT COUNT(*) AS N FROM " + std::string(t.nombre))->Fields(0).Value()),
        0)
        << t.nombre;
  }
}

}  // namespace
}  // namespace autonomo
