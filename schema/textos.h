// The mails and the letter that a hotel begins with; its own stand in Plantilla and Formato.
#pragma once

namespace esquema {

inline constexpr const char* kAsuntoReservacion = "Su reservación {folio}";
inline constexpr const char* kCuerpoReservacion =
    "Estimado(a) {huesped}:\n\nRecibimos su reservación {folio}.\n\nLlegada: {llegada}\nSalida: {salida} "
    "({noches} noches)\nHabitaciones: {habitaciones}\nTotal: {total} {moneda}\n\n{hotel}\n";
inline constexpr const char* kAsuntoConfirmada = "Reservación {folio} confirmada";
inline constexpr const char* kCuerpoConfirmada =
    "Estimado(a) {huesped}:\n\nSu reservación {folio} está confirmada. Lo esperamos el {llegada}.\n\n"
    "Habitaciones: {habitaciones}\nTotal: {total} {moneda}\n\n{hotel}\n";
inline constexpr const char* kCarta =
    "{hotel}\n{titulo}\n\nFolio: {folio}   Estado: {estado}   Captura: {captura}\n"
    "Huésped: {huesped}\nCliente: {cliente}\nLlegada: {llegada}   Salida: {salida}   Noches: {noches}\n\n"
    "{renglones}\n\nSubtotal: {subtotal}\nImpuestos: {impuestos}\nTotal: {total} "
    "{moneda}\n\n{notas_rotuladas}\n";

}  // namespace esquema
