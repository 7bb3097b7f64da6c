// A stored reservation as mails and printed formats show it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/standalone/conexion.h"
#include "platform/com/fecha.h"

namespace autonomo {

struct RenglonDocumento {
  std::string habitacion;   // key
  std::string descripcion;  // type and room
  com::Fecha inicio, fin;
  int adultos = 0, menores = 0, infantes = 0;
  double total = 0;      // tax included, whole cents
  double impuestos = 0;  // part of it
};

struct Documento {
  std::string hotel;  // parameter HT_NOMBRE
  std::string folio;
  std::string estado;
  com::Fecha captura, llegada, salida;
  std::string claveCliente, cliente;  // who pays: the client, or the guest when there is none
  std::string correo;                 // the payer's mail address
  std::string claveHuesped, huesped;
  std::string moneda;
  std::string referencia, comentario, notas;
  std::vector<RenglonDocumento> renglones;  // in line order
};

// Nothing when the reservation does not exist. A client, room or type that is missing leaves its name empty.
std::optional<Documento> LeeDocumento(Conexion& conexion, const std::string& folio);

// A state code as it is read: "Activa", "Confirmada"...; a code that a reservation cannot have comes back as it is.
std::string EstadoLegible(const std::string& estado);

// What a reservation's letter is, by its state: it confirms one that stands, tells the cancellation of a cancelled one,
// and is a copy for any other.
struct Carta {
  std::string nombre;   // "Confirmación"
  std::string titulo;   // "Confirmación de reservación"
  std::string mensaje;  // its first sentence
};
Carta CartaDe(const std::string& estado);

// Values of the fields {titulo} {mensaje} {folio} {estado} {hotel} {huesped} {cliente} {captura} {llegada} {salida}
// {noches} {habitaciones} {subtotal} {impuestos} {total} {moneda} {referencia} {comentario} {notas} {notas_rotuladas}
// {renglones}. {notas_rotuladas} is "Notas: " and the notes, nothing without any. {habitaciones} lists the rooms in one
// line, {renglones} has one row a room line.
using Campos = std::map<std::string, std::string, std::less<>>;
Campos CamposDe(const Documento& documento);
// Replaces each {field}; braces around anything else stay as they are, and values are not looked into again.
std::string Rellena(std::string_view plantilla, const Campos& campos);
// The fields that a template names, each once: those above, and whatever else stands in braces on one line with a
// letter in it, but for a style sheet's rules.
struct CamposNombrados {
  std::vector<std::string> conocidos, ajenos;  // "{folio}"
};
CamposNombrados NombradosEn(std::string_view plantilla);
// "tiene campos que no existen: {foliio}, {dia}".
std::string DichoDeAjenos(const std::vector<std::string>& ajenos);

}  // namespace autonomo
