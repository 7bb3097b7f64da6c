// One transaction on the host's connection, and the trap of the handlers that have one.
#pragma once

#include <optional>
#include <string>

#include "platform/controls/formulario.h"
#include "publico/avisos.h"

namespace kv207 {

// Begins, commits, and makes sure that what was begun and not committed is rolled back. The connection is fetched anew
// for each call.
class TransaccionBD {
 public:
  TransaccionBD() = default;
  TransaccionBD(const TransaccionBD&) = delete;
  TransaccionBD& operator=(const TransaccionBD&) = delete;
  ~TransaccionBD() { Abandona(); }

  // The connection's errors; nothing is open then.
  void Comienza();
  // Commits. folio, hecho: which reservation, and what was done to it in Spanish ("guardada"), for Quedo. The
  // connection's errors; the transaction is still to be rolled back then.
  void Confirma(const std::string& folio, const char* hecho);
  // Rolls back what is open; nothing when nothing is. The connection's errors; it is still to be rolled back then.
  void Deshace();
  // Rolls back on the way out of a failure, trying a second time when the first one fails; never raises.
  void Abandona() noexcept;
  // What the commit leaves in the database, for a clerk who is told of a failure: "" before it, and of one that failed;
  // otherwise that it is stored, or that nobody knows.
  const std::string& Quedo() const { return quedo_; }

 private:
  bool abierta_ = false;
  std::string quedo_;
};

// Atrapa for a body that is given its transaction, which a failure rolls back. A failure behind the commit undoes
// nothing: its report says so below its text.
template <class Cuerpo>
bool AtrapaTransaccion(const controles::Formulario& formulario, const anfitrion::DatosMensaje& mensaje,
                       Cuerpo&& cuerpo) {
  TransaccionBD transaccion;
  std::optional<controles::ConDetalle> detalle;
  return Atrapa(
      formulario, mensaje, [&] { cuerpo(transaccion); },
      [&] {
        transaccion.Abandona();
        detalle.emplace(transaccion.Quedo());
      });
}

}  // namespace kv207
