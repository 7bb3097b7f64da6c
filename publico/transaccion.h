// One transaction on the host's connection.
#pragma once

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
  // The connection's errors; the transaction is still to be rolled back then.
  void Confirma();
  // Rolls back what is open; nothing when nothing is. The connection's errors; it is still to be rolled back then.
  void Deshace();
  // Rolls back on the way out of a failure, trying a second time when the first one fails; never raises.
  void Abandona() noexcept;
  bool Abierta() const { return abierta_; }

 private:
  bool abierta_ = false;
};

}  // namespace kv207
