// A small hotel in memory for the tests of the host's services.
#pragma once

#include <string>

#include "host/standalone/anfitrion.h"
#include "host/standalone/fabricas.h"

namespace pruebas {

// Wednesday.
inline constexpr std::string_view kHoy = "2026-03-04T10:30:00";

com::Fecha Dia(std::string_view iso);

// Two rooms of type 0001 (2 persons included, 4 at most, product HAB1, no rate), one withdrawn, clients 0000000001
// (with mail) and 0000000002 (without), payment form 0001, currencies MXN (local) and USD, tax 0.16, over-booking off.
void LlenaHotelChico(autonomo::Anfitrion& host);
// ruta: database file, or the address of a database on a server.
autonomo::Opciones OpcionesDePrueba(const std::string& ruta = ":memory:");

class HotelChico {
 public:
  HotelChico() : host(OpcionesDePrueba()), hotel(autonomo::CreaHotel(host)) { LlenaHotelChico(host); }

  autonomo::Conexion& base() { return *host.conexion(); }
  // First cell of the first row; Empty when there is no row.
  com::Variant Celda(std::string_view sentencia, const autonomo::Conexion::Parametros& parametros = {});
  int Cuenta(const std::string& tabla);

  autonomo::Anfitrion host;
  com::Ptr<anfitrion::Hotel> hotel;
};

// A header and a line as the screen fills them.
anfitrion::DatosReservacion EncabezadoDe(const std::string& folio, std::string_view llegada, std::string_view salida);
anfitrion::DatosDetalle RenglonDe(const std::string& habitacion, std::string_view inicio, std::string_view fin,
                                  double total);
// Saves a reservation of one line in a transaction of its own; its folio. "" with error filled when it is refused.
std::string GuardaUna(autonomo::Anfitrion& host, const std::string& habitacion, std::string_view inicio,
                      std::string_view fin, double total, std::string* error = nullptr);

}  // namespace pruebas
