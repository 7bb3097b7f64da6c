// How this hotel's mails leave: the parameters of the mail server, and its password, which no database holds.
#pragma once

#include <optional>
#include <string>

#include "host/standalone/conexion.h"
#include "host/standalone/smtp.h"

namespace autonomo {

// The password of the mail server: the first line of the file, the variable RESERVAS_CORREO_CONTRASENA, or the first
// line of the user's own file (RutaContrasena). "" when there is none of them. com::Error kSoloLectura for a file that
// cannot be read, or that others than its owner may read.
std::string LeeContrasenaDeCorreo(const std::optional<std::string>& archivo);
// "~/.config/reservas/correo", with the user's folder in full.
std::string RutaContrasena();

// Nothing while CORREO_SERVIDOR is empty. contrasena: as LeeContrasenaDeCorreo gives it. com::Error kArgumento, naming
// the parameter, for what cannot be: no sender, a value that cannot be read, a user without password, a password in
// clear to another machine.
std::optional<ServidorCorreo> LeeServidor(Conexion& conexion, const std::string& contrasena);

}  // namespace autonomo
