// Hands one mail to a mail server.
#pragma once

#include <string>

#include "host/standalone/bandeja.h"

namespace autonomo {

struct ServidorCorreo {
  enum class Cifrado {
    Ninguno,
    SiSePuede,  // STARTTLS where the server offers it
    StartTls,
    Tls  // from the start
  };
  std::string servidor;  // name or address
  int puerto = 0;
  Cifrado cifrado = Cifrado::StartTls;
  bool verifica = true;             // the server shows a certificate of its own name, signed by who is trusted
  std::string certificados;         // file of the trusted; "" the system's
  std::string usuario, contrasena;  // "" without login
  std::string remitente, nombre;    // address and name that mails come from
};

// A try takes two minutes at most. Any thread. mensaje: as ArmaMensaje gives it. What cannot even be tried, as with a
// server whose name is none, is SinServidor too, not an error.
[[nodiscard]] ResultadoEnvio EntregaCorreo(const ServidorCorreo& servidor, const std::string& para,
                                           const std::string& mensaje);

}  // namespace autonomo
