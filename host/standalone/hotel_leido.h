// What was typed of a new hotel, read for its checks (hotel_nuevo.cpp) and for writing it (hotel_alta.cpp). com::Error
// kArgumento, naming the title, for a text that cannot be what it is to be.
#pragma once

#include <optional>
#include <string>

#include "host/standalone/hotel_nuevo.h"

namespace autonomo::leido {

// Without outer blanks.
std::string Texto(const std::string& texto);
// The same, of one that must be there and fit its column.
std::string Obligado(const char* titulo, const std::string& texto);
// In capitals.
std::string ClaveMoneda(const char* titulo, const std::string& texto);
// From 0 up to kImporteMaximo.
double Importe(const char* titulo, const std::string& texto);

// Nothing was typed of it. The number of persons alone is a proposal.
bool SinTexto(const TipoNuevo& t);
bool SinTexto(const UsuarioNuevo& u);

struct TipoLeido {
  std::string nombre;
  int incluidas = 0, maximo = 0;
  std::optional<double> precio;  // nothing: to be said later
  double adultoExtra = 0, menorExtra = 0;
};

// Where an error belongs: set before each step, so that whoever traps it knows the field.
struct Sitio {
  const char* campo = "";
  int fila = -1;
};

TipoLeido LeeTipo(const TipoNuevo& t, Sitio& sitio);

// The mask of the hotel's room keys, which are as on the doors; where numbers have more digits than others, with the
// zeros that keep them in order.
std::string MascaraDeHabitacion(const HotelNuevo& hotel);

}  // namespace autonomo::leido
