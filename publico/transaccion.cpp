#include "publico/transaccion.h"

#include "publico/publico.h"

namespace kv207 {

void TransaccionBD::Comienza() {
  publico::Sistema().ObtenConexion()->BeginTrans();
  abierta_ = true;
}

void TransaccionBD::Confirma(const std::string& folio, const char* hecho) {
  try {
    publico::Sistema().ObtenConexion()->CommitTrans();
  } catch (const com::Error& e) {
    if (e.Numero() == com::error::kEnDuda)
      quedo_ = "La reservación " + folio + " puede haber quedado " + hecho + ": búsquela antes de repetirlo.";
    throw;
  }
  abierta_ = false;
  quedo_ = "La reservación " + folio + " ya quedó " + hecho + ".";
}

void TransaccionBD::Deshace() {
  if (!abierta_) return;
  publico::Sistema().ObtenConexion()->RollbackTrans();
  abierta_ = false;
}

void TransaccionBD::Abandona() noexcept {
  for (int intento = 0; abierta_ && intento < 2; ++intento) {
    try {
      Deshace();
    } catch (...) {  // the failure that led here is the one to report
    }
  }
  abierta_ = false;
}

}  // namespace kv207
