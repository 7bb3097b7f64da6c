// Rights in a PostgreSQL server. A hotel has roles there; a session takes the one that fits its user, and a user's
// own role may be a member of them:
//
// - recepcion works with reservations. Card data reach it hidden, through views of a schema that stands before the
//   tables' own; what is hidden may be written back and stands for what was there. It adds to the change log by a
//   function alone, and cannot change catalogues, parameters, rights or users. Of a password it sees what one needs to
//   work out what is kept of it, and asks a function whether that is it.
// - tarjetas also reads and writes card data; administra also changes the others. Both are recepcion as well.
// - usuarios gives no right: its members are the roles of this hotel's users, those of withdrawn ones too.
//
// The guards' functions run with their owner's rights, so that nobody else needs rights to what they keep.
#pragma once

#include <string>
#include <string_view>

namespace esquema {

struct Roles {
  std::string recepcion, tarjetas, administra, usuarios;
};
// Their names: roles are the whole server's, so a database has its own.
Roles RolesDe(std::string_view base);

// Schemas of the views: that hide card data; that keep the change log from being changed; that hide passwords.
inline constexpr const char* kMostrador = "kv207_mostrador";
inline constexpr const char* kEsquemaBitacora = "kv207_bitacora";
inline constexpr const char* kEsquemaUsuarios = "kv207_usuarios";

// Statements that make roles, views and functions, and give the rights. esquema: the tables' own schema. An owner of
// the tables who may make roles runs them in a transaction.
std::string PoneRoles(const Roles& roles, std::string_view esquema);
// Gives one row, true: nothing of it is missing.
std::string HayRoles(const Roles& roles);

// Gives the fingerprint of the key that cards are sealed with, NULL without any, to whom they are hidden.
inline constexpr const char* kHuellaDeTarjetas = "SELECT kv207_mostrador.huella() AS Huella";

// Gives a row, true or false: whether that text is what is kept of the user's password. For a session that is shown no
// more of it than its beginning.
std::string EsContrasenaDe(std::string_view usuario, std::string_view resumen);

// A name as a statement takes it.
std::string Citado(std::string_view nombre);

}  // namespace esquema
