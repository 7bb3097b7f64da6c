// PostgreSQL through libpq. A statement takes one round trip: with the begin of its transaction, its preparation and
// the savepoint that undoes it alone when it fails.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/standalone/conexion.h"

namespace autonomo {

// Whether it looks like an address of this engine.
bool EsDireccion(std::string_view texto);
// An address "postgresql://usuario@servidor:puerto/base?opcion=valor", or "postgresql://?service=NOMBRE" for one of the
// service file. com::Error kArgumento for what is none, and for one with a password in it.
void RevisaDireccion(const std::string& direccion);
// What somebody gave as a hotel, a file's name or an address. com::Error kArgumento as RevisaDireccion, and for what
// looks like an address without being one ("POSTGRES://"): it names no file, and may hold a password. Its text is in no
// message; whoever writes it anywhere asks here before.
void RevisaHotel(const std::string& hotel);

// opciones.conexion as RevisaDireccion takes it. An empty database gets the schema, whole or not at all. com::Error
// kAjena for a database that is not this system's, kArgumento for an address with a password in it, kBaseDatos
// otherwise.
std::shared_ptr<ConexionDeMotor> AbrePostgres(const OpcionesConexion& opciones, const Reloj& reloj);

}  // namespace autonomo
