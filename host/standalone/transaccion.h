// A group of writes that happens whole or not at all.
#pragma once

#include <string_view>

#include "host/standalone/conexion.h"

namespace autonomo {

// Joins the transaction that the caller has open; without one it begins its own, which the destructor rolls back unless
// Concluye ran.
class Transaccion {
 public:
  explicit Transaccion(ConexionDeMotor& conexion);
  ~Transaccion();
  Transaccion(const Transaccion&) = delete;
  Transaccion& operator=(const Transaccion&) = delete;
  // Commits the own transaction; in a joined one the caller commits.
  void Concluye();

 private:
  ConexionDeMotor& conexion_;
  bool propia_;
};

// While it lives, a person is asked: the open transaction holds no lock.
class SinBloqueo {
 public:
  explicit SinBloqueo(Conexion& conexion) : conexion_(conexion) { conexion_.Suelta(); }
  ~SinBloqueo() { conexion_.Retoma(); }
  SinBloqueo(const SinBloqueo&) = delete;
  SinBloqueo& operator=(const SinBloqueo&) = delete;

 private:
  Conexion& conexion_;
};

// Whether the statement gives a row.
bool Hay(Conexion& conexion, std::string_view sentencia, const Conexion::Parametros& parametros);

}  // namespace autonomo
