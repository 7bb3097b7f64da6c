// The statements of the reservation screen. Each builder appends its text to the given buffer and stands beside the
// code that runs it. Keys go in as typed; dates as Utilerias.FechaSQL or FechaHoraSQL give them.
#pragma once

#include <string_view>

#include "platform/ado/texto_sql.h"

namespace kv207 {

// --- carga.cpp ---
// Header, lines, rooms, types, products and prices of a reservation, one row a line.
void ArmaCargaReservacion(ado::TextoSQL& sql, std::string_view folio);

// --- bitacora.cpp ---
// Header before and after a save, and its lines.
void ArmaEncabezadoAntes(ado::TextoSQL& sql, std::string_view folio);
void ArmaEncabezadoDespues(ado::TextoSQL& sql, std::string_view folio);
void ArmaDetalleImagen(ado::TextoSQL& sql, std::string_view folio);

// --- acciones.cpp ---
// State changes. ahora: date and time of the change.
void ArmaConfirmacion(ado::TextoSQL& sql, std::string_view usuario, std::string_view ahora, std::string_view folio);
void ArmaCancelacion(ado::TextoSQL& sql, std::string_view usuario, std::string_view ahora, std::string_view folio);
void ArmaReactivacion(ado::TextoSQL& sql, std::string_view usuario, std::string_view ahora, std::string_view folio);

// --- tarjeta.cpp ---
// Banco, Numero, Vencimiento, Codigo of a reservation's own card, and of a client's.
void ArmaTarjetaReservacion(ado::TextoSQL& sql, std::string_view folio);
void ArmaTarjetaCliente(ado::TextoSQL& sql, std::string_view cliente);

// --- habitacion.cpp: the room of a line ---
// Product, sales unit and most persons of a room from the board.
void ArmaProductoDeHabitacion(ado::TextoSQL& sql, std::string_view habitacion);
// Name and most persons of a typed room, and its product.
void ArmaBuscaHabitacion(ado::TextoSQL& sql, std::string_view habitacion);
void ArmaBuscaProducto(ado::TextoSQL& sql, std::string_view habitacion);

// --- renglones.cpp: the room lines ---
// Persons that a room's type includes and admits.
void ArmaLimitePersonas(ado::TextoSQL& sql, std::string_view habitacion);

// --- guardar.cpp: card data of a saved reservation ---
void ArmaBorraTarjeta(ado::TextoSQL& sql, std::string_view folio);
void ArmaInsertaTarjeta(ado::TextoSQL& sql, std::string_view folio, std::string_view banco, std::string_view numero,
                        std::string_view codigo, std::string_view vencimiento);
void ArmaActualizaTarjetaCliente(ado::TextoSQL& sql, std::string_view cliente, std::string_view banco,
                                 std::string_view numero, std::string_view codigo, std::string_view vencimiento);

// --- valida_disponibilidad.cpp: what holds a room on a night ---
void ArmaBloqueo(ado::TextoSQL& sql, std::string_view habitacion, std::string_view fecha);
void ArmaOcupacion(ado::TextoSQL& sql, std::string_view habitacion, std::string_view fecha);
// folioPropio: the reservation that does not clash with itself, "" none.
void ArmaOtraReservacion(ado::TextoSQL& sql, std::string_view habitacion, std::string_view fecha,
                         std::string_view folioPropio);

}  // namespace kv207
