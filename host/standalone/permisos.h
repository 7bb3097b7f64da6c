// Option rights of the users.
#pragma once

#include <string>
#include <vector>

#include "host/contract/parametros.h"
#include "host/standalone/conexion.h"

namespace autonomo {

// Right to open the configuration: parameters, rights, branches, templates, formats.
inline constexpr const char* kPermisoConfiguracion = anfitrion::permiso::kConfiguracion;

// Rights of screen "KV207", as users are given them.
struct Derecho {
  const char* opcion;
  const char* nombre;
};
const std::vector<Derecho>& Derechos();

// Why a login cannot stand in a statement or a key column; "" it can.
[[nodiscard]] std::string MotivoUsuario(const std::string& usuario);

[[nodiscard]] bool TienePermiso(Conexion& conexion, const std::string& usuario, const std::string& pantalla,
                                const std::string& opcion);
// Whether the user may open the configuration: who was granted CHCONF; and where users have no passwords everybody
// while nobody was, so that a new database can be set up.
[[nodiscard]] bool PuedeConfigurar(Conexion& conexion, const std::string& usuario);

// Right to read card numbers and codes in clear; likewise everybody's without passwords while nobody was granted it.
inline constexpr const char* kPermisoTarjetas = anfitrion::permiso::kTarjetas;
[[nodiscard]] bool PuedeVerTarjetas(Conexion& conexion, const std::string& usuario);

// What the user's rights let her do in the database itself.
[[nodiscard]] Alcance AlcanceDe(Conexion& conexion, const std::string& usuario);

// Whether the user was granted CHCONF.
[[nodiscard]] bool Administra(Conexion& conexion, const std::string& usuario);

}  // namespace autonomo
