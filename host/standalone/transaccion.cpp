#include "host/standalone/transaccion.h"

namespace autonomo {

Transaccion::Transaccion(ConexionDeMotor& conexion) : conexion_(conexion), propia_(!conexion.EnTransaccion()) {
  if (propia_) conexion_.BeginTrans();
}

Transaccion::~Transaccion() {
  if (!propia_) return;
  try {
    conexion_.RollbackTrans();
  } catch (const com::Error&) {
    // The failure that brought us here is the one to report; the database drops what was not committed.
  }
}

void Transaccion::Concluye() {
  if (!propia_) return;
  conexion_.CommitTrans();
  propia_ = false;
}

bool Hay(Conexion& conexion, std::string_view sentencia, const Conexion::Parametros& parametros) {
  return !conexion.Consulta(sentencia, parametros)->Eof();
}

}  // namespace autonomo
