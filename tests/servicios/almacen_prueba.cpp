// The reservation store: what a save leaves in the database.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/servicios/hotel_prueba.h"

namespace autonomo {
namespace {

using pruebas::Dia;
using pruebas::EncabezadoDe;
using pruebas::GuardaUna;
using pruebas::HotelChico;
using pruebas::RenglonDe;

class Almacen : public testing::Test, public HotelChico {
 protected:
  bool Encabezado(const std::string& folio = "") {
    hotel->Encabezado(EncabezadoDe(folio, "2026-03-10", "2026-03-12"));
    return hotel->GuardaReservacion();
  }
  bool Renglon(const anfitrion::DatosDetalle& l, bool puedeCambiarPrecio = true) {
    hotel->Detalle(l);
    return hotel->GuardaDetalle(puedeCambiarPrecio);
  }
  double Importe(const std::string& columna, int id = 1) {
    return com::CDbl(Celda("SELECT " + columna + " FROM Reservacion_Detalle WHERE Rsd_Id = ?", {id}));
  }
};

TEST_F(Almacen, NuevaConFolioYTodosSusDatos) {
  base().BeginTrans();
  anfitrion::DatosReservacion e = EncabezadoDe("", "2026-03-10", "2026-03-12");
  e.cliente = "0000000002";
  e.moneda = "USD";
  e.tipoCambio = 17.25;
  e.referencia = "R-1";
  e.comentario = "No fumar";
  e.notas = "Línea 1\nO'Higgins";
  hotel->Encabezado(e);
  ASSERT_TRUE(hotel->GuardaReservacion()) << hotel->ErrorHotel();
  EXPECT_EQ(hotel->Encabezado().folio.Texto(), "0000000001");
  ASSERT_TRUE(Renglon(RenglonDe("0101", "2026-03-10", "2026-03-12", 2320)));
  base().CommitTrans();

  const ado::RecordsetPtr rs = base().Consulta("SELECT * FROM Reservacion");
  ASSERT_EQ(rs->RecordCount(), 1);
  const auto v = [&](const char* columna) { return rs->Fields(columna).Value(); };
  EXPECT_EQ(v("Rs_Fecha"), com::Variant(com::SoloFecha(Dia(pruebas::kHoy))));  // a day, without the time of capture
  EXPECT_EQ(v("Rs_Llegada"), com::Variant(Dia("2026-03-10")));
  EXPECT_EQ(v("Rs_Salida"), com::Variant(Dia("2026-03-12")));
  EXPECT_EQ(com::CStr(v("Cl_Cve_Cliente")), "0000000002");
  EXPECT_EQ(com::CStr(v("Rs_Huesped")), "0000000001");
  EXPECT_EQ(com::CStr(v("Mn_Cve_Moneda")), "USD");
  EXPECT_EQ(com::CDbl(v("Rs_Tipo_Cambio")), 17.25);
  EXPECT_EQ(com::CStr(v("Sc_Cve_Sucursal")), "0001");
  EXPECT_EQ(com::CStr(v("Fp_Cve_Forma_Pago")), "0001");
  EXPECT_EQ(com::CStr(v("Rs_Referencia")), "R-1");
  EXPECT_EQ(com::CStr(v("Rs_Comentario")), "No fumar");
  EXPECT_EQ(com::CStr(v("Rs_Notas")), "Línea 1\nO'Higgins");
  EXPECT_EQ(com::CStr(v("Es_Cve_Estado")), "AC");
  EXPECT_EQ(com::CStr(v("Oper_Ult_Modif")), "RECEPCION");
  EXPECT_EQ(v("Fecha_Ult_Modif"), com::Variant(Dia(pruebas::kHoy)));
  EXPECT_EQ(com::CStr(v("Oper_Baja")), "");
  EXPECT_TRUE(v("Fecha_Baja").EsNulo());
}

TEST_F(Almacen, ImportesDerivadosPorElMismoDesglose) {
  base().BeginTrans();
  ASSERT_TRUE(Encabezado());
  anfitrion::DatosDetalle l = RenglonDe("0101", "2026-03-10", "2026-03-12", 0);
  l.adultos = 3;
  l.menores = 1;
  l.infantes = 2;
  l.personasExtra = 2;
  l.precio = 2320;
  l.precioPersonasExtra = 580;
  l.descuentoFactor = 0.10;
  l.total = 2610;
  ASSERT_TRUE(Renglon(l)) << hotel->ErrorHotel();
  base().CommitTrans();

  // What the screen shows for that total and discount.
  double lista = 0, listaImporte = 0, df = 0.10, descuento = 0, descontado = 0, base6 = 0, gf = 0, global = 0, t = 0.16,
         impuesto = 0, neto = 2610, total = 2610;
  hotel->CalculaImpuestos(lista, listaImporte, df, descuento, descontado, base6, gf, global, t, impuesto, neto, total);
  EXPECT_EQ(Importe("Rsd_Cantidad"), 2);
  EXPECT_EQ(Importe("Rsd_Adultos"), 3);
  EXPECT_EQ(Importe("Rsd_Menores"), 1);
  EXPECT_EQ(Importe("Rsd_Infantes"), 2);
  EXPECT_EQ(Importe("Rsd_Cantidad_Personas_Extra"), 2);
  EXPECT_EQ(Importe("Rsd_Precio"), 2320);
  EXPECT_EQ(Importe("Rsd_Precio_Personas_Extra"), 580);
  EXPECT_EQ(Importe("Rsd_Precio_Lista"), lista);
  EXPECT_EQ(Importe("Rsd_Precio_Lista_Importe"), listaImporte);
  EXPECT_EQ(Importe("Rsd_Descuento_Factor"), 0.10);
  EXPECT_EQ(Importe("Rsd_Descuento_Importe"), descuento);
  EXPECT_EQ(Importe("Rsd_Precio_Descontado"), descontado);
  EXPECT_EQ(Importe("Rsd_Precio_Descontado_Importe"), base6);
  EXPECT_EQ(Importe("Rsd_Impuesto_Factor"), 0.16);
  EXPECT_EQ(Importe("Rsd_Impuesto_Importe"), impuesto);
  EXPECT_EQ(Importe("Rsd_Precio_Neto"), neto);
  EXPECT_EQ(Importe("Rsd_Precio_Neto_Importe"), 2610);
  EXPECT_NEAR(listaImporte, 2500, 1e-9);
  EXPECT_NEAR(descuento, 250, 1e-9);
}

TEST_F(Almacen, EdicionReemplazaRenglonesYConservaEstado) {
  const std::string folio = GuardaUna(host, "0101", "2026-03-10", "2026-03-12", 2320);
  base().Consulta("UPDATE Reservacion SET Es_Cve_Estado = 'CO' WHERE Rs_Folio = ?", {folio});
  for (int vez = 0; vez < 2; ++vez) {
    base().BeginTrans();
    ASSERT_TRUE(Encabezado(folio));
    // The own old line is no obstacle: the same room and nights again, and a second room.
    ASSERT_TRUE(Renglon(RenglonDe("0101", "2026-03-10", "2026-03-12", 2000))) << hotel->ErrorHotel();
    ASSERT_TRUE(Renglon(RenglonDe("0102", "2026-03-10", "2026-03-11", 1000))) << hotel->ErrorHotel();
    base().CommitTrans();
  }
  EXPECT_EQ(hotel->Encabezado().folio.Texto(), folio);
  EXPECT_EQ(Cuenta("Reservacion"), 1);
  EXPECT_EQ(com::CStr(Celda("SELECT Es_Cve_Estado FROM Reservacion")), "CO");
  const ado::RecordsetPtr rs = base().Consulta(
      "SELECT Rsd_Id, Hb_Cve_Habitacion, Rsd_Precio_Neto_Importe FROM Reservacion_Detalle ORDER BY Rsd_Id");
  ASSERT_EQ(rs->RecordCount(), 2);
  EXPECT_EQ(com::CLng(rs->Fields(0).Value()), 1);
  EXPECT_EQ(com::CStr(rs->Fields(1).Value()), "0101");
  EXPECT_EQ(com::CDbl(rs->Fields(2).Value()), 2000);
  rs->MoveNext();
  EXPECT_EQ(com::CLng(rs->Fields(0).Value()), 2);
}

// As the screen shows it: what was sold before the rate changed keeps its tax, a new line has today's; another branch
// has its own.
TEST_F(Almacen, UnRenglonConservaElImpuestoConQueSeVendio) {
  const std::string folio = GuardaUna(host, "0101", "2026-03-10", "2026-03-12", 1160);
  host.Impuesto("", "HAB1", 0.10);
  host.Impuesto("0002", "HAB1", 0.08);
  const auto guarda = [&](const char* sucursal) {
    base().BeginTrans();
    anfitrion::DatosReservacion e = EncabezadoDe(folio, "2026-03-10", "2026-03-12");
    e.sucursal = sucursal;
    hotel->Encabezado(e);
    EXPECT_TRUE(hotel->GuardaReservacion()) << hotel->ErrorHotel();
    EXPECT_TRUE(Renglon(RenglonDe("0102", "2026-03-10", "2026-03-12", 1100))) << hotel->ErrorHotel();
    EXPECT_TRUE(Renglon(RenglonDe("0101", "2026-03-10", "2026-03-11", 580))) << hotel->ErrorHotel();
    EXPECT_TRUE(Renglon(RenglonDe("0101", "2026-03-11", "2026-03-12", 580))) << hotel->ErrorHotel();
    base().CommitTrans();
  };
  guarda("0001");
  EXPECT_NEAR(Importe("Rsd_Impuesto_Importe", 1), 100, 1e-9);
  EXPECT_NEAR(Importe("Rsd_Impuesto_Importe", 2), 80, 1e-9);
  EXPECT_NEAR(Importe("Rsd_Impuesto_Factor", 3), 0.16, 1e-9);
  guarda("0002");
  EXPECT_NEAR(Importe("Rsd_Impuesto_Factor", 2), 0.08, 1e-9);
}

TEST_F(Almacen, SoloSeEditanActivasYConfirmadas) {
  const std::string folio = GuardaUna(host, "0101", "2026-03-10", "2026-03-12", 2320);
  for (const char* estado : {"CA", "CE", "AP"}) {
    base().Consulta("UPDATE Reservacion SET Es_Cve_Estado = ? WHERE Rs_Folio = ?", {estado, folio});
    base().BeginTrans();
    EXPECT_FALSE(Encabezado(folio)) << estado;
    EXPECT_NE(hotel->ErrorHotel().find(folio), std::string::npos);
    base().RollbackTrans();
  }
  base().BeginTrans();
  EXPECT_FALSE(Encabezado("0000000077"));
  EXPECT_EQ(hotel->ErrorHotel(), "La reservación 0000000077 no existe");
  base().RollbackTrans();
  EXPECT_EQ(Cuenta("Reservacion_Detalle"), 1);
}

TEST_F(Almacen, FoliosSinHuecosNiRepetidos) {
  EXPECT_EQ(GuardaUna(host, "0101", "2026-03-10", "2026-03-12", 100), "0000000001");
  base().BeginTrans();
  ASSERT_TRUE(Encabezado());
  EXPECT_EQ(hotel->Encabezado().folio.Texto(), "0000000002");
  base().RollbackTrans();
  EXPECT_EQ(GuardaUna(host, "0101", "2026-03-12", "2026-03-14", 100), "0000000002");
  // Folios that came from elsewhere are passed over, also a long run of them.
  for (int i = 3; i <= 40; ++i) {
    const std::string n = std::to_string(i);
    base().Consulta("INSERT INTO Reservacion (Rs_Folio) VALUES (?)", {std::string(10 - n.size(), '0') + n});
  }
  EXPECT_EQ(GuardaUna(host, "0101", "2026-03-14", "2026-03-15", 100), "0000000041");
  EXPECT_EQ(GuardaUna(host, "0101", "2026-03-15", "2026-03-16", 100), "0000000042");
  host.Parametro("HT_FORMATO_FOLIO", "000");
  EXPECT_EQ(GuardaUna(host, "0101", "2026-03-16", "2026-03-17", 100), "043");
}

TEST_F(Almacen, RenglonesQueSeRechazan) {
  base().BeginTrans();
  EXPECT_FALSE(Renglon(RenglonDe("0101", "2026-03-10", "2026-03-12", 100)));  // no header yet
  ASSERT_TRUE(Encabezado());
  const auto rechaza = [&](const anfitrion::DatosDetalle& l) {
    EXPECT_FALSE(Renglon(l));
    return hotel->ErrorHotel();
  };
  EXPECT_EQ(rechaza(RenglonDe("0999", "2026-03-10", "2026-03-12", 100)), "La habitación 0999 no existe");
  EXPECT_EQ(rechaza(RenglonDe("0109", "2026-03-10", "2026-03-12", 100)), "La habitación 0109 está de baja");
  EXPECT_EQ(rechaza(RenglonDe("0101", "2026-03-10", "2026-03-10", 100)),
            "La habitación 0101 no se puede guardar: la fecha final debe ser posterior a la fecha inicial");
  EXPECT_EQ(rechaza(RenglonDe("0101", "2026-03-10", "2026-03-12", -0.01)),
            "La habitación 0101 no se puede guardar: el importe total es menor a cero");
  EXPECT_EQ(rechaza(RenglonDe("0101", "2026-03-10", "2026-03-12", std::numeric_limits<double>::quiet_NaN())),
            "La habitación 0101 no se puede guardar: tiene un importe que no es un número");
  anfitrion::DatosDetalle cara = RenglonDe("0101", "2026-03-10", "2026-03-12", 100);
  cara.precio = 1e15;
  EXPECT_EQ(rechaza(cara),
            "La habitación 0101 no se puede guardar: su importe es demasiado grande: el máximo es 999,999,999");
  // After refusals the numbering has no holes and the error is gone.
  ASSERT_TRUE(Renglon(RenglonDe("0101", "2026-03-10", "2026-03-12", 100)));
  EXPECT_EQ(hotel->ErrorHotel(), "");
  base().CommitTrans();
  EXPECT_EQ(com::CLng(Celda("SELECT Rsd_Id FROM Reservacion_Detalle")), 1);

  base().BeginTrans();
  base().Directa("DELETE FROM Producto_Precio");
  ASSERT_TRUE(Encabezado());
  EXPECT_EQ(rechaza(RenglonDe("0101", "2026-04-10", "2026-04-12", 100)),
            "La habitación 0101 no se puede guardar: su producto no tiene precio de lista y la reservación no se "
            "podría abrir");
  base().RollbackTrans();
}

TEST_F(Almacen, SinDerechoDePrecioNadaSeRegala) {
  base().BeginTrans();
  ASSERT_TRUE(Encabezado());
  const anfitrion::DatosDetalle gratis = RenglonDe("0101", "2026-03-10", "2026-03-12", 0);
  EXPECT_FALSE(Renglon(gratis, false));
  EXPECT_EQ(hotel->ErrorHotel(), "La habitación 0101 no tiene precio; vuelva a capturar las personas para calcularlo");
  // A whole discount on a priced line, the right to set prices, and a rate of 0 are all in order.
  anfitrion::DatosDetalle descontada = RenglonDe("0101", "2026-03-10", "2026-03-11", 0);
  descontada.precio = 1160;
  descontada.descuentoFactor = 1;
  EXPECT_TRUE(Renglon(descontada, false)) << hotel->ErrorHotel();
  EXPECT_TRUE(Renglon(RenglonDe("0102", "2026-03-10", "2026-03-11", 0), true)) << hotel->ErrorHotel();
  host.Tarifa("0001", 0, 0, 0);
  EXPECT_TRUE(Renglon(RenglonDe("0101", "2026-03-11", "2026-03-12", 0), false)) << hotel->ErrorHotel();
  base().RollbackTrans();
}

// Whoever edits a reservation afterwards keeps the nights that were given away, and gives none away.
TEST_F(Almacen, LasCortesiasPasanEnLasEdicionesDeCualquiera) {
  const std::string folio = GuardaUna(host, "0101", "2026-03-10", "2026-03-13", 0);
  base().BeginTrans();
  ASSERT_TRUE(Encabezado(folio));
  EXPECT_TRUE(Renglon(RenglonDe("0101", "2026-03-10", "2026-03-12", 0), false)) << hotel->ErrorHotel();
  EXPECT_FALSE(Renglon(RenglonDe("0102", "2026-03-10", "2026-03-12", 0), false));
  EXPECT_FALSE(Renglon(RenglonDe("0101", "2026-03-12", "2026-03-14", 0), false));
  // Another reservation of the same store object has none.
  ASSERT_TRUE(Encabezado());
  EXPECT_FALSE(Renglon(RenglonDe("0101", "2026-03-10", "2026-03-12", 0), false));
  base().RollbackTrans();
}

TEST_F(Almacen, LaBaseRechazaVenderDosVecesUnaNoche) {
  const std::string folio = GuardaUna(host, "0101", "2026-03-10", "2026-03-12", 100);
  std::string error;
  EXPECT_EQ(GuardaUna(host, "0101", "2026-03-09", "2026-03-11", 100, &error), "");
  EXPECT_EQ(error, "La habitación 0101 ya está reservada la noche del 10/03/2026 por la reservación " + folio);
  EXPECT_EQ(Cuenta("Reservacion"), 1);
  EXPECT_NE(GuardaUna(host, "0101", "2026-03-12", "2026-03-13", 100), "");  // the day of departure is free
  host.Parametro("HT_OVER_BOOKING", "1");
  EXPECT_NE(GuardaUna(host, "0101", "2026-03-09", "2026-03-11", 100, &error), "") << error;
}

TEST_F(Almacen, FallasDeLaBaseSonErrores) {
  EXPECT_THROW(Encabezado(), com::Error);  // outside a transaction a header could be left without lines
  EXPECT_EQ(Cuenta("Reservacion"), 0);
  base().BeginTrans();
  ASSERT_TRUE(Encabezado());
  base().Directa("DROP TABLE Reservacion_Detalle");
  EXPECT_THROW(Renglon(RenglonDe("0101", "2026-03-10", "2026-03-12", 100)), com::Error);
  base().RollbackTrans();
}

}  // namespace
}  // namespace autonomo
