// A hotel from nothing: what its owner says of it, as it is typed, checked part by part, and written whole or not at
// all.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/standalone/anfitrion.h"

namespace autonomo {

// A room type and its rooms ("101-125, 201, 301A"); prices of a night. One without any text is not there.
struct TipoNuevo {
  std::string nombre, incluidas, maximo, precio, adultoExtra, menorExtra, habitaciones;
};
// One without any text is not there.
struct UsuarioNuevo {
  std::string clave, nombre, contrasena;
};

// Texts as they are typed.
struct HotelNuevo {
  std::string nombre, sucursal;
  std::string moneda = "MXN", nombreMoneda = "Peso mexicano";
  std::string divisa, nombreDivisa, tipoCambio;  // a second currency, what one unit of it costs; "" none
  std::string impuesto = "16";                   // per cent
  bool conImpuesto = true;                       // the prices hold it already
  std::vector<TipoNuevo> tipos;
  std::vector<UsuarioNuevo> usuarios;  // the first administers the hotel; none: it asks for no passwords
};

enum class ParteHotel { Hotel, Tipos, Habitaciones, Usuarios };
inline constexpr ParteHotel kPartesHotel[] = {ParteHotel::Hotel, ParteHotel::Tipos, ParteHotel::Habitaciones,
                                              ParteHotel::Usuarios};

// What is wrong, for whoever typed it, and where: a member's name, and of a type or user its position.
struct Reparo {
  std::string motivo, campo;
  int fila = -1;
};
[[nodiscard]] std::optional<Reparo> Revisa(const HotelNuevo& hotel, ParteHotel parte);

// Neither rooms nor types nor branches nor reservations: nobody has set a hotel up here.
bool SinHotel(Conexion& conexion);

// Writes the hotel, without over-booking, with the usual payment forms, mails and letter, and lets its first user work
// on in it. com::Error kArgumento for what Revisa finds, kRestriccion when there is a hotel already; nothing half done.
void CreaHotel(Anfitrion& anfitrion, const HotelNuevo& hotel);

// What CreaHotel would make, a line each: "12 habitaciones Doble, de la 101 a la 112, a $1,250.00".
std::vector<std::string> ResumenDe(const HotelNuevo& hotel);

}  // namespace autonomo
