// A mail as the server takes it: RFC 5322 headers, MIME parts, lines ended by CR LF.
#pragma once

#include <string>
#include <string_view>

#include "platform/com/fecha.h"

namespace autonomo {

struct Mensaje {
  std::string remitente, nombreRemitente;  // address; name shown with it
  std::string para;                        // address
  std::string asunto, cuerpo;              // UTF-8
  std::string identidad;                   // what stands before "@" in Message-ID: letters, digits, "." and "-"
  com::Fecha fecha;                        // local time
  std::string adjunto, nombreAdjunto;      // bytes of a PDF and its file name (letters, digits, "." and "-"); "" none
};

// Whatever stands in subject, names and body, no header comes of it but these.
std::string ArmaMensaje(const Mensaje& mensaje);

// A text as the value of a header, folded: plain ASCII as it is, other text as encoded words (RFC 2047). Control
// characters, line breaks among them, become blanks.
std::string TextoDeEncabezado(std::string_view texto);

}  // namespace autonomo
