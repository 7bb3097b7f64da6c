// Users with passwords. A hotel in which nobody has one asks for none; with the first one everybody needs one.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/standalone/conexion.h"

namespace autonomo {

struct Usuario {
  std::string clave, nombre;
  bool deBaja = false;
  bool operator==(const Usuario&) const = default;
};
// A user as an administrator is shown her.
struct FichaUsuario {
  Usuario usuario;
  std::vector<std::string> derechos;  // DerechosDe
  bool operator==(const FichaUsuario&) const = default;
};
// Of one that is not there an empty one.
FichaUsuario FichaDe(Conexion& conexion, const std::string& usuario);

std::vector<Usuario> Usuarios(Conexion& conexion);
// Rights of screen "KV207" that the user has, by their keys.
std::vector<std::string> DerechosDe(Conexion& conexion, const std::string& usuario);
[[nodiscard]] bool PideContrasena(Conexion& conexion);

// Why a password is not taken; "" it is. At least eight characters.
[[nodiscard]] std::string MotivoContrasena(const std::string& contrasena);
// Somebody who is active, has a password and was granted CHCONF.
[[nodiscard]] bool HayQuienAdministre(Conexion& conexion);
// Does what changes users or rights, whole or not at all, one program after the other; the roles in the server follow.
// com::Error kArgumento when in a hotel with passwords nobody would be left who may configure it.
void CambiaDerechos(Conexion& conexion, const std::function<void()>& cambia);

// Stores the user, new or not, with these rights of the list Derechos and no other of it; without a password the old
// one stays. com::Error kArgumento for a login or password that cannot be taken, a new user without one, and when
// nobody would be left who may configure the hotel, and when she is no longer as she was shown, if vista says how.
void GuardaUsuario(Conexion& conexion, const Usuario& usuario, const std::optional<std::string>& contrasena,
                   const std::vector<std::string>& derechos, const FichaUsuario* vista = nullptr);

// Seconds of a clock that nobody sets, the same in all programs of this computer until it is started again; only
// differences mean anything.
std::int64_t Latido();

struct Acceso {
  std::string usuario;  // as it is stored
  std::string motivo;   // why not, for the clerk; "" may enter
  bool Bien() const { return motivo.empty(); }
};
// Whether the password is the user's. From the third wrong one on the user waits, longer each time, up to a quarter of
// an hour, in whatever program she tries again. Errors of Consulta.
//
// With a server the waits are told by ahora, its clock (RelojDe). A file has no clock but the desk's, which whoever
// waits may set: there they are told by latido alone. One that would last for longer than it did when it began, as when
// the computer was started again, begins anew. The limit: a file taken to a computer that has been on for longer has no
// waits to be kept to there; but whoever can take it needs no password to read it.
[[nodiscard]] Acceso Accede(Conexion& conexion, const std::string& usuario, const std::string& contrasena,
                            com::Fecha ahora, std::int64_t latido = Latido());

}  // namespace autonomo
