// The outbox: mails are written to the database and sent from there later, so that none is lost and none goes out for a
// reservation that was rolled back.
#pragma once

#include <string>
#include <vector>

#include "host/standalone/conexion.h"

namespace autonomo {

struct ResultadoCorreo {
  bool aceptado = false;
  std::string error;  // why not; empty when there is no such template
};

// Puts the mail of a reservation in the outbox (bandeja.h), inside the caller's transaction when one is open. Subject,
// body and the attached letter are filled in now: the mail tells what is stored with it. Refused: no such reservation,
// no address or one that is none, fields that do not exist. consulta and usuario are kept with the mail.
[[nodiscard]] ResultadoCorreo EncolaCorreo(Conexion& conexion, const std::string& folio, const std::string& plantilla,
                                           const std::string& consulta, const std::string& usuario, com::Fecha ahora);

// Whether the text is one recipient's address: a mailbox, "@" and a domain of two names or more, in plain letters,
// digits and the signs that stand unquoted in them.
[[nodiscard]] bool DireccionValida(const std::string& direccion);
// The addresses of a text with commas or semicolons between them, without blanks; those that are empty left out.
std::vector<std::string> SeparaDirecciones(const std::string& texto);

}  // namespace autonomo
