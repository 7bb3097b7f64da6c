// The statements of the reservation screen. Each builder appends its text to the given buffer and stands beside the
// code that runs it. Keys go in as typed; dates as Utilerias.FechaSQL or FechaHoraSQL give them.
#pragma once

#include <string_view>

#include "platform/ado/texto_sql.h"

namespace kv207 {

// --- carga.cpp
// --------------------------------------------------------------------------------------------------------- Header,
// lines, rooms, types, products and prices of a reservation, one row a line.
void ArmaCargaReservacion(ado::TextoSQL& sql, std::string_view folio);

// --- bitacora.cpp
// ------------------------------------------------------------------------------------------------------ Header before
// and after a save, and its lines.
void ArmaEncabezadoAntes(ado::TextoSQL& sql, std::string_view folio);
void ArmaEncabezadoDespues(ado::TextoSQL& sql, std::string_view folio);
void ArmaDetalleImagen(ado::TextoSQL& sql, std::string_view folio);

// --- acciones.cpp
// ------------------------------------------------------------------------------------------------------ State changes.
// ahora: date and time of the change.
void ArmaConfirmacion(ado::TextoSQL& sql, std::string_view usuario, std::string_view ahora, std::string_view folio);
void ArmaCancelacion(ado::TextoSQL& sql, std::string_view usuario, std::string_view ahora, std::string_view folio);
void ArmaReactivacion(ado::TextoSQL& sql, std::string_view usuario, std::string_view ahora, std::string_view folio);

// --- tarjeta.cpp
// ------------------------------------------------------------------------------------------------------- Banco,
// Numero, Vencimiento, Codigo of a reservation's own card, and of a client's.
void ArmaTarjetaReservacion(ado::TextoSQL& sql, std::string_view folio);
void ArmaTarjetaCliente(ado::TextoSQL& sql, std::string_view cliente);

}  // namespace kv207
