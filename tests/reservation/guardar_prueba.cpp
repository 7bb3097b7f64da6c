// Saving a reservation on the real database: checks, refusals that leave the tables as they were, what is stored.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/reservation/renglones_comun.h"

namespace {

using controles::Accion;
using pruebas::Cajas;
using pruebas::Vistos;

constexpr const char* kPreguntaCorreo = "ERR-ID:7500051";
const std::string kCajaPregunta = "ERR-ID:7500051|292|Vormalix|¿Desea enviar emaiñ de confirmación?";

class Guardar : public pruebas::RenglonesPrueba {
 protected:
  // All rows that a save may write.
  std::string Contenido() {
    std::string todo;
    for (const char* tabla : {"Reservacion", "Reservacion_Detalle", "Reservacion_Datos_Tarjeta", "Cliente"}) {
      const ado::RecordsetPtr filas = Sql(std::string("SELECT * FROM ") + tabla);
      for (; !filas->Eof(); filas->MoveNext()) {
        todo += tabla;
        for (std::size_t c = 0; c < filas->Nombres().size(); ++c) {
          const com::Variant v = filas->Fields(c).Value();
          todo += "|" + (v.EsNulo() ? std::string("(nulo)") : com::CStr(v));
        }
        todo += "\n";
      }
    }
    return todo + "bitácora " + std::to_string(host.Bitacora().size());
  }
  // Accepts; the save must be refused with these messages, keep the edit and leave the database as it was.
  void AceptaSinGuardar(const Cajas& cajas) {
    const std::string antes = Contenido();
    escritorio.Olvida();
    Pulsa(Accion::Aceptar);
    EXPECT_EQ(Vistos(escritorio), cajas);
    EXPECT_EQ(escritorio.Mensajes().back().detalle, "");
    EXPECT_TRUE(pantalla.Controles.EnEdicion());
    EXPECT_FALSE(host.conexion()->EnTransaccion());
    EXPECT_EQ(Contenido(), antes);
  }
  // Accepts and answers No to the mail question.
  void Acepta() {
    escritorio.Olvida();
    escritorio.Responde(kPreguntaCorreo, controles::kNo);
    Pulsa(Accion::Aceptar);
    EXPECT_EQ(Vistos(escritorio), Cajas{kCajaPregunta});
    EXPECT_FALSE(pantalla.Controles.EnEdicion());
  }
  int Cuantas(const std::string& texto) {
    return static_cast<int>(std::count_if(conexion->sentencias.begin(), conexion->sentencias.end(),
                                          [&](const std::string& s) { return s.find(texto) != std::string::npos; }));
  }
  // A payment by card with its data.
  void PagaConTarjeta() {
    Campo(pantalla.txtForma_Pago, "4");
    pantalla.txtBanco.Teclea("Banco Verde");
    pantalla.txtTarjeta.Teclea("5222");
    pantalla.txtCodigo.Teclea("987");
    pantalla.dpVencimiento.Fija(Dia(2028, 6, 30));
  }
};

TEST_F(Guardar, RefusalsOfTheStoreShowItsText) {
  InsertaReservacion("0000000077", {"0101"});
  Carga("0000000077");
  Pulsa(Accion::Editar);
  // Finished elsewhere in the meantime.
  Sql("UPDATE Reservacion SET Es_Cve_Estado = 'AP'");
  AceptaSinGuardar(
      {"ERR-ID:7500012|16|Vormalix|La reservación 0000000077 cambió después de que usted la abrió.\r\n"
       "(sin usuario): última modificación\r\n- Estado: Activa -> Aplicada\r\n"
       "La reservación 0000000077 está en estado AP y no se puede modificar"});
  Pulsa(Accion::Limpiar);

  Nueva();
  Linea("0102", 2);
  for (const char* columna : {"Precio", "Total"}) grid().celda(0, columna, 0.0);
  AceptaSinGuardar(
      {"ERR-ID:7500017|16|Vormalix|La habitación 0102 no tiene precio; vuelva a capturar las personas para "
       "calcularlo"});
}

// What is stored was priced under what is stored: otherwise the clerk sees the new amounts first.
TEST_F(Guardar, LinesPricedUnderAnotherHeaderAreToldBeforeTheyAreStored) {
  const std::string caja =
      "ERR-ID:7500010|48|Controles_Aceptar()|Los importes de las habitaciones se calcularon de nuevo con el huésped, "
      "la "
      "moneda y el tipo de cambio de la reservación.\r\nRevise el total y vuelva a aceptar.";
  host.Permiso("CHPR02", true);
  Nueva();
  Campo(pantalla.txtHuesped, "");
  Linea("0101", 2);
  Campo(pantalla.txtHuesped, "1");
  AceptaSinGuardar({caja});
  EXPECT_EQ(pantalla.foco(), &grid());
  EXPECT_EQ(Pie(pantalla.txtTotal), 2320);
  const com::Fecha captura = pantalla.dpFecha.valor();
  pantalla.FechaCaptura = {};
  Acepta();
  EXPECT_EQ(pantalla.FechaCaptura, captura) << "proposed for the next";

  // A rate typed and not confirmed; another guest, under whom the hotel's price is the same.
  Nueva();
  Campo(pantalla.txtMoneda, "USD");
  Linea("0102", 2);
  pantalla.txtTipoCambio.Teclea("20");
  AceptaSinGuardar({caja});
  EXPECT_EQ(Texto(0, "Total"), "116");
  Campo(pantalla.txtHuesped, "2");
  Acepta();
  EXPECT_EQ(Celda("SELECT group_concat(Rsd_Precio_Neto_Importe, ' ') FROM Reservacion_Detalle"), "2320.0 116.0");

  // Given away by who may, and kept by who may not.
  Nueva();
  Linea("0201", 2);
  ASSERT_TRUE(Teclea(0, "Precio", "0"));
  Acepta();
  pantalla.Descarga();
  host.Permiso("CHPR02", false);
  Carga(Celda("SELECT MAX(Rs_Folio) FROM Reservacion"));
  Pulsa(Accion::Editar);
  pantalla.txtComentario.Teclea("Cortesía");
  Acepta();
  EXPECT_EQ(Celda("SELECT Rs_Comentario FROM Reservacion WHERE Rs_Folio = (SELECT MAX(Rs_Folio) FROM Reservacion)"),
            "Cortesía");
}

TEST_F(Guardar, AnEditThatDoesNotShowEveryLineLosesNone) {
  InsertaReservacion("0000000077", {"0101", "0201"});
  Sql("DELETE FROM Producto_Precio WHERE Pr_Cve_Producto = 'HAB2'");
  Carga("77");
  ASSERT_EQ(pantalla.ssReservaciones.Filas(), 1);
  Pulsa(Accion::Editar);
  Pulsa(Accion::Aceptar);
  EXPECT_EQ(escritorio.Ids(), std::vector<std::string>{"ERR-ID:7500012"});
  EXPECT_EQ(Celda("SELECT COUNT(*) FROM Reservacion_Detalle"), "2");
}

TEST_F(Guardar, UnexpectedFailuresRollBackAndAreReportedOnce) {
  Nueva();
  Linea("0101", 2);
  PagaConTarjeta();
  // A refusal whose roll-back fails is an unexpected failure too.
  grid().celda(0, "Total", -0.5);
  conexion->Falla("RollbackTrans");
  AceptaSinGuardar({"ERR-ID:7500021|16|Controles_Aceptar()|falla inyectada"});
  grid().celda(0, "Total", 2320.0);
  for (const char* donde : {"BeginTrans", "UPDATE Cliente", "CommitTrans"}) {
    SCOPED_TRACE(donde);
    conexion->Falla(donde);
    AceptaSinGuardar({"ERR-ID:7500021|16|Controles_Aceptar()|falla inyectada"});
  }
  // A value that leaves its literal is refused like any failure.
  pantalla.txtTarjeta.Teclea("52'; DELETE FROM Reservacion --");
  const std::string antes = Contenido();
  escritorio.Olvida();
  Pulsa(Accion::Aceptar);
  EXPECT_EQ(escritorio.Ids(), Cajas{"ERR-ID:7500021"});
  EXPECT_EQ(Contenido(), antes);
  pantalla.txtTarjeta.Teclea("5222");
  grid().celda(0, "Adultos", "dos");
  AceptaSinGuardar({"ERR-ID:7500010|48|Controles_Aceptar()|" + [&] {
    bool ok = false;
    pantalla.Valida_Disponibilidad(ok);
    return pantalla.MensajeDisponibilidad;
  }()});
  grid().celda(0, "Adultos", 2);
  Acepta();
}

TEST_F(Guardar, AFailureAfterTheCommitIsReportedAndTheReservationStays) {
  Nueva();
  Linea("0101", 2);
  const auto sinImpresora = com::RegistraClase(anfitrion::kClaseImpresion, []() -> com::Ptr<com::Desconocido> {
    throw com::Error(com::error::kInyectada, "Sin impresora");
  });
  conexion->sentencias.clear();
  escritorio.Responde(kPreguntaCorreo, controles::kNo);
  Pulsa(Accion::Aceptar);
  EXPECT_EQ(Vistos(escritorio), (Cajas{kCajaPregunta, "ERR-ID:7500021|16|Controles_Aceptar()|Sin impresora"}));
  EXPECT_EQ(Celda("SELECT COUNT(*) FROM Reservacion"), "1");
  EXPECT_EQ(escritorio.Mensajes()[1].detalle, "La reservación 0000000001 ya quedó guardada.");
  EXPECT_EQ(Cuantas("RollbackTrans"), 0);
  EXPECT_FALSE(pantalla.Controles.EnEdicion()) << "it cannot be saved twice";

  // A commit that nobody answered.
  Nueva();
  Linea("0102", 2);
  conexion->Falla("CommitTrans", com::error::kEnDuda);
  escritorio.Olvida();
  Pulsa(Accion::Aceptar);
  EXPECT_EQ(escritorio.Ids(), Cajas{"ERR-ID:7500021"});
  EXPECT_EQ(escritorio.Mensajes()[0].detalle,
            "La reservación 0000000002 puede haber quedado guardada: búsquela antes de repetirlo.");
  EXPECT_TRUE(pantalla.Controles.EnEdicion());
}

}  // namespace
