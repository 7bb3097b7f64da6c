// Reading through the connection that the host hands out.
#pragma once

#include <functional>
#include <string>

#include "platform/ado/ado.h"
#include "platform/ado/celda.h"
#include "platform/ado/literal.h"
#include "platform/com/fecha.h"

namespace recepcion {

using ado::Celda;
using ado::CeldaNumero;
using ado::Literal;

// Where a model reads: gives the connection for a statement, and how the host behind it writes days.
struct Fuente {
  std::function<ado::ConnectionPtr()> conexion;
  std::string (*dia)(com::Fecha);
};
// The component's own: for the clerk's thread alone.
[[nodiscard]] Fuente DelAnfitrion();
// A connection of any thread's, to a database that takes days as AAAA-MM-DD.
[[nodiscard]] Fuente FuenteDe(ado::ConnectionPtr conexion);

// Runs a statement; without a source on the connection fetched for it.
ado::RecordsetPtr Ejecuta(const Fuente& fuente, const ado::TextoSQL& sql);
ado::RecordsetPtr Ejecuta(const ado::TextoSQL& sql);
// The day as the host writes it in statements.
[[nodiscard]] std::string DiaSql(com::Fecha dia);
// A column as a day (celda.h), without its time.
[[nodiscard]] com::Fecha CeldaDia(const ado::Recordset& rs, std::size_t columna);

}  // namespace recepcion
