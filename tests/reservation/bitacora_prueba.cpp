// The change text of a saved reservation.
#include "reservation/bitacora.h"

#include <gtest/gtest.h>

#include "tests/comun/hotel_prueba.h"

namespace {

using com::FechaDe;
using com::Variant;
using kv207::ImagenEncabezado;
using kv207::ImagenRenglon;
using kv207::TextoCambioDetalle;
using kv207::TextoCambioEncabezado;

ImagenEncabezado Encabezado() {
  return {FechaDe(2024, 3, 10), FechaDe(2024, 3, 12), "0001", "MXN", "0001", "0000000001", "0000000002"};
}

ImagenRenglon Renglon(const char* habitacion) {
  return {habitacion, FechaDe(2024, 3, 10), FechaDe(2024, 3, 12), 2, 0, 0, 0, 1000.0, 0.0, 1160.0};
}

TEST(TextoCambioEncabezado, ListsWhatDiffersInItsOrder) {
  ImagenEncabezado despues = Encabezado();
  EXPECT_EQ(TextoCambioEncabezado(Encabezado(), despues), "");
  despues = {FechaDe(2024, 3, 11), FechaDe(2024, 3, 13, 9), "0002", "USD", "0004", "0000000003", "0000000004"};
  EXPECT_EQ(TextoCambioEncabezado(Encabezado(), despues),
            "CAMBIO LA RESERVACION:   ANTES    ->    DESPUES    \r\n"
            "- FECHA DE LLEGADA:  10/03/2024 -> 11/03/2024\r\n"
            "- FECHA DE SALIDA: 12/03/2024 -> 13/03/2024 09:00:00\r\n"
            "- SUCURSAL:    0001 -> 0002\r\n"
            "- MONEDA:  MXN -> USD\r\n"
            "- FORMA DE PAGO:    0001 -> 0004\r\n"
            "- HUESPED: 0000000001 -> 0000000003\r\n"
            "- CLIENTE: 0000000002 -> 0000000004\r\n"
            "\r\n");
}

TEST(TextoCambioEncabezado, NullIsNoChangeOfAValueButFailsInADate) {
  ImagenEncabezado despues = Encabezado();
  despues.sucursal = Variant::Null();
  EXPECT_EQ(TextoCambioEncabezado(Encabezado(), despues), "");
  EXPECT_EQ(TextoCambioEncabezado(despues, Encabezado()), "");
  despues.llegada = Variant::Null();
  EXPECT_THROW(static_cast<void>(TextoCambioEncabezado(Encabezado(), despues)), com::Error);
}

TEST(TextoCambioDetalle, ListsEveryWatchedColumnOfARoom) {
  const ImagenRenglon despues{"0101", FechaDe(2024, 3, 11), FechaDe(2024, 3, 14), 3, 1, 2, 1, 1234.5, 99.999, -20.0};
  EXPECT_EQ(TextoCambioDetalle({Renglon("0101")}, {despues}),
            "CAMBIO EL DETALLE DE LA RESERVACION:    ANTES    ->    DESPUES    \r\n"
            " la habitación 0101\r\n"
            "- FECHA DE INICIO:  10/03/2024 -> 11/03/2024\r\n"
            "- FECHA FIN:    12/03/2024 -> 14/03/2024\r\n"
            "- ADULTOS:  2 -> 3\r\n"
            "- MENORES:  0 -> 1\r\n"
            "- INFANTES: 0 -> 2\r\n"
            "- CANTIDAD DE PERSONAS EXTRA:   0 -> 1\r\n"
            "- PRECIO:   $1,000.00 -> $1,234.50\r\n"
            "- PRECIO DE PERSONAS EXTRA: $0.00 -> $100.00\r\n"
            "- PRECIO NETO IMPORTE:  $1,160.00 -> -$20.00\r\n"
            "\r\n\r\n");
}

TEST(TextoCambioDetalle, TellsRemovalsAndIgnoresAdditions) {
  EXPECT_EQ(TextoCambioDetalle({}, {Renglon("0101")}), "");
  EXPECT_EQ(TextoCambioDetalle({Renglon("0101")}, {Renglon("0102")}),
            "DETALLE DE LA RESERVACION:    ANTES    ->    DESPUES    \r\n"
            " la habitación 0101 ha sido removida de la reservación \r\n\r\n\r\n");
  // A change beside a removal takes the other heading.
  ImagenRenglon tres = Renglon("0102");
  tres.adultos = 3;
  EXPECT_EQ(TextoCambioDetalle({Renglon("0101"), Renglon("0102")}, {tres}),
            "CAMBIO EL DETALLE DE LA RESERVACION:    ANTES    ->    DESPUES    \r\n"
            " la habitación 0101 ha sido removida de la reservación \r\n\r\n"
            " la habitación 0102\r\n- ADULTOS:  2 -> 3\r\n\r\n\r\n");
}

TEST(TextoCambioDetalle, ComparesEveryLineOfARoomWithTheFirstOneAfterwards) {
  ImagenRenglon otra = Renglon("0101");
  otra.adultos = 1;
  const std::string texto = TextoCambioDetalle({Renglon("0101"), otra}, {Renglon("0101"), otra});
  EXPECT_EQ(texto.find("- ADULTOS:  2"), std::string::npos);
  EXPECT_NE(texto.find("- ADULTOS:  1 -> 2"), std::string::npos);
}

TEST(TextoCambioDetalle, NullOfAMatchedRoomFailsOfAnotherOneDoesNot) {
  ImagenRenglon nula = Renglon("0101");
  nula.precio = Variant::Null();
  EXPECT_THROW(static_cast<void>(TextoCambioDetalle({nula}, {Renglon("0101")})), com::Error);
  EXPECT_NE(TextoCambioDetalle({nula}, {Renglon("0102")}), "");
  ImagenRenglon sinFecha = Renglon("0101");
  sinFecha.inicio = Variant::Null();
  EXPECT_EQ(TextoCambioDetalle({sinFecha}, {Renglon("0101")}), "");
}

class Auditoria : public pruebas::HotelPrueba {
 protected:
  // Images before and after the statements; whether the analysis succeeded.
  bool Analiza(const std::vector<std::string>& cambios) {
    kv207::frmKV207::Imagen antes, despues;
    pantalla.Resevacion_Antes("0000000077", antes);
    for (const std::string& cambio : cambios) Sql(cambio);
    pantalla.Resevacion_Despues("0000000077", despues);
    bool ok = false;
    pantalla.Analizar_Reservacion("0000000077", antes, despues, ok);
    return ok;
  }
};

TEST_F(Auditoria, WritesOneEntryForTheFolio) {
  InsertaReservacion("0000000077", {"0101", "0102"});
  EXPECT_TRUE(
      Analiza({"UPDATE Reservacion SET Rs_Comentario = 'x', Rs_Notas = 'y', Rs_Referencia = 'z', Rs_Fecha = "
               "'2026-03-02' WHERE Rs_Folio = '0000000077'"}));
  EXPECT_TRUE(host.Bitacora().empty());

  EXPECT_TRUE(Analiza({"UPDATE Reservacion SET Rs_Llegada = '2026-03-11' WHERE Rs_Folio = '0000000077'",
                       "DELETE FROM Reservacion_Detalle WHERE Hb_Cve_Habitacion = '0102'"}));
  ASSERT_EQ(host.Bitacora().size(), 1U);
  EXPECT_EQ(host.Bitacora()[0].modulo, "RESERVACION");
  EXPECT_EQ(host.Bitacora()[0].clave, "0000000077");
  EXPECT_EQ(host.Bitacora()[0].texto,
            "CAMBIO LA RESERVACION:   ANTES    ->    DESPUES    \r\n"
            "- FECHA DE LLEGADA:  10/03/2026 -> 11/03/2026\r\n\r\n"
            "DETALLE DE LA RESERVACION:    ANTES    ->    DESPUES    \r\n"
            " la habitación 0102 ha sido removida de la reservación \r\n\r\n\r\n");
}

}  // namespace
