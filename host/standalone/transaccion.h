// A group of writes that happens whole or not at all.
#pragma once

#include <string_view>

#include "host/standalone/conexion.h"

namespace autonomo {

// Joins the transaction that the caller has open; without one it begins its own, which the destructor rolls back unless
// Concluye ran.
class Transaccion {
 public:
  explicit Transaccion(Conexion& conexion);
  ~Transaccion();
  Transaccion(const Transaccion&) = delete;
  Transaccion& operator=(const Transaccion&) = delete;
  // Commits the own transaction; in a joined one the caller commits.
  void Concluye();

 private:
  Conexion& conexion_;
  bool propia_;
};

// Whether the statement gives a row.
bool Hay(Conexion& conexion, std::string_view sentencia, const Conexion::Parametros& parametros);

}  // namespace autonomo
