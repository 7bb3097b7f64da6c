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

TEST_F(Guardar, TheHeaderIsCheckedInOrder) {
  host.Parametro("FIN_MONEDA_LOCAL", "");
  Abre();
  Pulsa(Accion::Nuevo);
  pantalla.txtDias.valor(com::Variant());
  AceptaSinGuardar({"ERR-ID:7500005|48|Vormalix|Debe especificar una cantidad de días"});
  EXPECT_EQ(pantalla.foco(), &pantalla.txtDias);
  pantalla.txtDias.valor(1);
  AceptaSinGuardar({"ERR-ID:7500006|48|Vormalix|Debe especificar una moneda"});
  EXPECT_EQ(pantalla.foco(), &pantalla.txtMoneda);
  pantalla.Enfoca(pantalla.txtDias);
  Campo(pantalla.txtMoneda, "USD");
  pantalla.txtTipoCambio.valor(0);
  AceptaSinGuardar({"ERR-ID:7500007|48|Vormalix|El tipo de cambio no puede ser menor o igual a 0"});
  EXPECT_EQ(pantalla.foco(), &pantalla.txtMoneda);
  pantalla.txtTipoCambio.valor(17.5);
  AceptaSinGuardar({"ERR-ID:7500008|48|Vormalix|Debe especificar un huésped"});
  EXPECT_EQ(pantalla.foco(), &pantalla.txtHuesped);
  Campo(pantalla.txtHuesped, "1");
  AceptaSinGuardar({"ERR-ID:7500009|48|Vormalix|Debe especificar una forma de pago"});
  EXPECT_EQ(pantalla.foco(), &pantalla.txtForma_Pago);
  Campo(pantalla.txtForma_Pago, "1");
  AceptaSinGuardar({"ERR-ID:7500010|48|Controles_Aceptar()|Debe especificar al menos una habitación para reservar"});
  EXPECT_EQ(pantalla.foco(), &grid());
  EXPECT_EQ(Cuantas("BeginTrans"), 0);
}

TEST_F(Guardar, ACardPaymentNeedsItsData) {
  Nueva();
  Linea("0101", 2);
  PagaConTarjeta();
  pantalla.txtTarjeta.Teclea("");
  AceptaSinGuardar({"ERR-ID:7500042|48|Atención|Debe especificar un número de tarjeta"});
  EXPECT_EQ(pantalla.foco(), &pantalla.txtTarjeta);
  EXPECT_EQ(Cuantas("BeginTrans"), 0);
}

TEST_F(Guardar, ANewReservationIsStoredPrintedAndCleared) {
  Nueva();
  Campo(pantalla.txtMoneda, "USD");
  pantalla.txtReferencia.Teclea("Expo");
  pantalla.txtComentario.Teclea("Piso alto");
  pantalla.txtNotas.Teclea("Llega tarde");
  Linea("0101", 2);
  Linea("0201", 3);
  const double total = Pie(pantalla.txtTotal);
  conexion->sentencias.clear();
  Acepta();
  EXPECT_EQ(Cuantas("BeginTrans"), 1);
  EXPECT_EQ(Cuantas("CommitTrans"), 1);
  EXPECT_EQ(Cuantas("RollbackTrans"), 0);
  EXPECT_EQ(Cuantas("Tarjeta"), 0);
  EXPECT_EQ(Celda("SELECT Rs_Fecha || '|' || Rs_Llegada || '|' || Rs_Salida || '|' || Sc_Cve_Sucursal || '|' || "
                  "Cl_Cve_Cliente || '|' || Rs_Huesped || '|' || Mn_Cve_Moneda || '|' || Rs_Tipo_Cambio || '|' || "
                  "Fp_Cve_Forma_Pago || '|' || Rs_Referencia || '|' || Rs_Comentario || '|' || Rs_Notas || '|' || "
                  "Es_Cve_Estado FROM Reservacion"),
            "2026-03-09|2026-03-10|2026-03-12|0001|0000000001|0000000001|USD|17.5|0001|Expo|Piso alto|Llega tarde|AC");
  EXPECT_EQ(Celda("SELECT group_concat(Hb_Cve_Habitacion || ' ' || Rsd_Fecha_Inicio || ' ' || Rsd_Fecha_Fin || ' ' || "
                  "Rsd_Adultos || ' ' || Rsd_Cantidad_Personas_Extra, ', ') FROM Reservacion_Detalle"),
            "0101 2026-03-10 2026-03-12 2 0, 0201 2026-03-10 2026-03-12 3 1");
  EXPECT_NEAR(com::CDbl(Sql("SELECT SUM(Rsd_Precio_Neto_Importe) FROM Reservacion_Detalle")->Fields(0).Value()), total,
              1e-6);
  EXPECT_TRUE(host.Bitacora().empty());
  ASSERT_EQ(host.Impresiones().size(), 1u);
  EXPECT_EQ(host.Impresiones()[0].formato, "HT0001");
  EXPECT_EQ(host.Impresiones()[0].clave, Celda("SELECT Rs_Folio FROM Reservacion"));
  EXPECT_TRUE(host.Correos().empty());

  // The screen is clear; the next new reservation proposes this one's currency.
  EXPECT_EQ(grid().Filas(), 0);
  EXPECT_EQ(pantalla.txtHuesped.text(), "");
  EXPECT_EQ(pantalla.foco(), &pantalla.txtFolio);
  EXPECT_EQ(pantalla.MonedaDefault, "USD");
  Pulsa(Accion::Nuevo);
  EXPECT_EQ(pantalla.txtMoneda.text(), "USD");
}

TEST_F(Guardar, YesSendsTheMailAndPrintsNothing) {
  host.Plantilla("PL16", "Reservación {folio}", "Gracias, {huesped}");
  host.Direccion("0000000001", "ana@ejemplo.mx");
  const auto guarda = [this](const char* habitacion) {
    Nueva();
    Linea(habitacion, 2);
    escritorio.Olvida();
    escritorio.Responde(kPreguntaCorreo, controles::kSi);
    Pulsa(Accion::Aceptar);
    EXPECT_FALSE(pantalla.Controles.EnEdicion());
    EXPECT_EQ(grid().Filas(), 0) << "cleared whatever became of the mail";
  };
  guarda("0101");
  EXPECT_EQ(Vistos(escritorio), Cajas{kCajaPregunta});
  ASSERT_EQ(host.Correos().size(), 1u);
  EXPECT_EQ(host.Correos()[0].clave, Celda("SELECT Rs_Folio FROM Reservacion"));
  EXPECT_EQ(host.Correos()[0].plantilla, "PL16");
  EXPECT_EQ(host.Correos()[0].consulta, "EMAIL_RESERVACION");

  host.FallaCorreo("Servidor de correo apagado");
  guarda("0102");
  EXPECT_EQ(Vistos(escritorio), (Cajas{kCajaPregunta, "ERR-ID:7500020|16|Atención|Servidor de correo apagado"}));
  host.Parametro("PL_MAIL_RESERVACION_HOTEL", "PL99");
  host.FallaCorreo("");
  guarda("0201");
  EXPECT_EQ(Vistos(escritorio),
            (Cajas{kCajaPregunta,
                   "ERR-ID:7500019|16|Atención|Imposible enviar correo, verifique la plantilla de email: PL99"}));
  EXPECT_EQ(Celda("SELECT COUNT(*) FROM Reservacion"), "3");
  EXPECT_TRUE(host.Impresiones().empty());
}

TEST_F(Guardar, LinesOutsideTheStayOverTheLimitOrBelowZeroAreRefused) {
  Nueva();
  Linea("0102", 1);
  const int fila = Linea("0101", 2);
  const auto pon = [&](const char* columna, const com::Variant& valor) {
    const com::Variant antes = grid().celda(fila, columna);
    grid().celda(fila, columna, valor);
    return antes;
  };
  // Lines without a key are not validated, yet checked before they are stored.
  pon("Clave", "");
  com::Variant antes = pon("FECHAI", Dia(2026, 3, 9));
  AceptaSinGuardar(
      {"ERR-ID:7500013|48|Vormalix|La fecha inicial de reservación de la habitación no puede ser menor a "
       "la fecha de llegada"});
  EXPECT_EQ(pantalla.foco(), &grid());
  EXPECT_EQ(grid().fila(), fila);
  pon("FECHAI", antes);
  antes = pon("FECHAF", Dia(2026, 3, 13));
  AceptaSinGuardar(
      {"ERR-ID:7500014|48|Vormalix|La fecha final de reservación de la habitación no puede ser mayor a la "
       "fecha de salida"});
  pon("FECHAF", antes);
  pon("Clave", "0101");
  pon("Infantes", 2);
  AceptaSinGuardar({"ERR-ID:7500015|48|Vormalix|El númeor de personas excede el máximo para la habitación: 3"});
  pon("Infantes", 1);  // as many as the room admits
  pon("Total", -0.5);
  AceptaSinGuardar(
      {"ERR-ID:7500016|48|Vormalix|El importe total de la habitación 'Sencilla / Vista al mar' no puede ser "
       "menor a cero"});
  pon("Total", -1.0);
  Acepta();
  EXPECT_EQ(Celda("SELECT group_concat(Hb_Cve_Habitacion) FROM Reservacion_Detalle"), "0102");
}

TEST_F(Guardar, AReservationOfPassedOverLinesIsRolledBack) {
  Nueva();
  Linea("0101", 2);
  grid().celda(0, "Total", -1.0);
  conexion->sentencias.clear();
  AceptaSinGuardar(
      {"ERR-ID:7500018|48|Vormalix|No puede hacer una reservación sin especificar la(s) habitación(es) y "
       "persona (s) a reservar"});
  EXPECT_EQ(pantalla.foco(), &grid());
  EXPECT_EQ(Cuantas("RollbackTrans"), 1);
}

TEST_F(Guardar, RefusalsOfTheStoreShowItsText) {
  InsertaReservacion("0000000077", {"0101"});
  Carga("0000000077");
  Pulsa(Accion::Editar);
  // Finished elsewhere in the meantime.
  Sql("UPDATE Reservacion SET Es_Cve_Estado = 'AP'");
  AceptaSinGuardar({"ERR-ID:7500012|16|Vormalix|La reservación 0000000077 está en estado AP y no se puede modificar"});
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
  Acepta();

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
  EXPECT_EQ(Cuantas("RollbackTrans"), 0);
  EXPECT_FALSE(pantalla.Controles.EnEdicion()) << "it cannot be saved twice";
}

TEST_F(Guardar, AnEditReplacesTheLinesAndIsAudited) {
  InsertaReservacion("0000000077", {"0101", "0102"});
  Carga("0000000077");
  Pulsa(Accion::Editar);
  Acepta();
  EXPECT_TRUE(host.Bitacora().empty()) << "nothing changed";

  Carga("0000000077");
  Pulsa(Accion::Editar);
  ASSERT_TRUE(Teclea(0, "Adultos", "1"));
  escritorio.Responde("ERR-ID:7500054", controles::kSi);
  ASSERT_TRUE(grid().Borra(1));
  Acepta();
  EXPECT_EQ(Celda("SELECT group_concat(Hb_Cve_Habitacion || ' ' || Rsd_Adultos) FROM Reservacion_Detalle"), "0101 1");
  EXPECT_EQ(Celda("SELECT COUNT(*) FROM Reservacion"), "1");
  ASSERT_EQ(host.Bitacora().size(), 1u);
  EXPECT_EQ(host.Bitacora()[0].modulo, "RESERVACION");
  EXPECT_EQ(host.Bitacora()[0].clave, "0000000077");
  EXPECT_NE(host.Bitacora()[0].texto.find("0102"), std::string::npos);
  // An edit leaves what the next new reservation proposes alone.
  EXPECT_EQ(pantalla.FechaCaptura, com::FechaDe(2026, 3, 9, 10, 30));
}

TEST_F(Guardar, AFailingAuditUndoesTheSaveAndOnlyItsOwnReportIsShown) {
  InsertaReservacion("0000000077", {"0101"});
  Carga("0000000077");
  Pulsa(Accion::Editar);
  ASSERT_TRUE(Teclea(0, "Adultos", "1"));
  conexion->Falla("FROM Reservacion  WHERE");
  const std::string antes = Contenido();
  escritorio.Olvida();
  Pulsa(Accion::Aceptar);
  EXPECT_EQ(escritorio.Ids(), (Cajas{"ERR-ID:7500048", "ERR-ID:7500049"}));
  EXPECT_EQ(Contenido(), antes);
  EXPECT_TRUE(pantalla.Controles.EnEdicion());
  EXPECT_FALSE(host.conexion()->EnTransaccion());
  Acepta();
}

TEST_F(Guardar, TheCardOfAnyClientIsTheClients) {
  Nueva();
  Linea("0101", 2);
  PagaConTarjeta();
  Acepta();
  const auto tarjeta = [this](const std::string& cliente) {
    return Celda(
        "SELECT Cl_Tarjeta_Credito || '|' || Cl_Tarjeta_Banco || '|' || Cl_Tarjeta_Numero || '|' || "
        "Cl_Tarjeta_Codigo_Seguridad || '|' || Cl_Tarjeta_Vencimiento FROM Cliente WHERE Cl_Cve_Cliente = '" +
        cliente + "'");
  };
  EXPECT_EQ(tarjeta("0000000001"), "SI|Banco Verde|5222|987|2028-06-30");  // the guest pays
  Nueva();
  Campo(pantalla.txtCliente, "2");
  Linea("0102", 2);
  PagaConTarjeta();
  pantalla.txtCodigo.Teclea("111");
  Acepta();
  EXPECT_EQ(tarjeta("0000000002"), "SI|Banco Verde|5222|111|2028-06-30");
  EXPECT_EQ(tarjeta("0000000001"), "SI|Banco Verde|5222|987|2028-06-30");
  EXPECT_EQ(Celda("SELECT COUNT(*) FROM Reservacion_Datos_Tarjeta"), "0");
}

TEST_F(Guardar, TheWebClientsCardIsTheReservations) {
  host.Parametro("HT_CLIENTE_RESERVACION_WEB", "0000000009");
  Nueva();
  Campo(pantalla.txtCliente, "9");
  Linea("0101", 2);
  PagaConTarjeta();
  conexion->sentencias.clear();
  Acepta();
  const std::string folio = Celda("SELECT Rs_Folio FROM Reservacion");
  EXPECT_EQ(Cuantas("DELETE FROM Reservacion_Datos_Tarjeta WHERE Rs_Folio = '" + folio + "' "), 1);
  EXPECT_EQ(Cuantas("INSERT INTO Reservacion_Datos_Tarjeta(   Rs_Folio,   Rdt_Banco,   Rdt_Numero,   "
                    "Rdt_Codigo_Seguridad,   Rdt_Vencimiento)VALUES ('" +
                    folio + "','Banco Verde ','5222 ','987','2028-06-30')"),
            1);
  EXPECT_EQ(Cuantas("UPDATE Cliente"), 0);
  EXPECT_EQ(Celda("SELECT '<' || Rdt_Banco || '><' || Rdt_Numero || '><' || Rdt_Codigo_Seguridad || '>' FROM "
                  "Reservacion_Datos_Tarjeta"),
            "<Banco Verde ><5222 ><987>");

  // Saved again, it replaces its own row.
  Carga(folio);
  Pulsa(Accion::Editar);
  pantalla.txtCodigo.Teclea("333");
  Acepta();
  EXPECT_EQ(Celda("SELECT group_concat(Rdt_Codigo_Seguridad) FROM Reservacion_Datos_Tarjeta"), "333");
}

TEST_F(Guardar, OverBookingIsRefusedOrNotAsTheHotelSays) {
  host.Parametro("HT_OVER_BOOKING", "0");
  InsertaReservacion("0000000077", {"0101"});
  Nueva();
  Linea("0101", 2);
  AceptaSinGuardar(
      {"ERR-ID:7500010|48|Controles_Aceptar()|la habitación 'Sencilla / Vista al mar'\r\nestá reservado "
       "para la fecha: 10/03/2026"});
  EXPECT_EQ(pantalla.foco(), &grid());
  Pulsa(Accion::Limpiar);
  pantalla.Descarga();
  host.Parametro("HT_OVER_BOOKING", "1");
  Nueva();
  Linea("0101", 2);
  Acepta();
  EXPECT_EQ(Celda("SELECT COUNT(*) FROM Reservacion"), "2");
}

}  // namespace
