// From the server's codes to the system's error numbers, with descriptions for the clerk.
#pragma once

#include <libpq-fe.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/com/error.h"

namespace autonomo {

struct LiberaResultado {
  void operator()(PGresult* r) const { PQclear(r); }
};
using Resultado = std::unique_ptr<PGresult, LiberaResultado>;

// SQLSTATE of a failed result; "" without one.
std::string CodigoDe(const PGresult* resultado);

// What an exclusion constraint on room and nights kept apart, as the server writes ranges.
struct NochesQueChocan {
  std::string habitacion, nuevas, vendidas;
};
// Nothing for another failure.
std::optional<NochesQueChocan> NochesEnChoque(const PGresult* resultado);

// The error of a failed result.
com::Error ErrorPostgres(const PGresult* resultado, std::string_view sentencia);

// The error of a connection that could not be made; mensaje: the client library's, in English or Spanish.
com::Error ErrorDeConexion(const std::string& mensaje);

// A column's or table's name as the schema or the statement spells it: the server folds it to small letters.
std::string NombreDe(std::string_view plegado, std::string_view sentencia);

}  // namespace autonomo
