// The file of refused bookings: one line each (the fields as they stand in the bookings file, reason, messages, line in
// the bookings file), on the disk before the import goes on.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace guion {

class Rechazadas {
 public:
  // Reads what an earlier run has left in the file. com::Error kArgumento for a file that is something else.
  explicit Rechazadas(std::string ruta);
  ~Rechazadas();
  Rechazadas(const Rechazadas&) = delete;
  Rechazadas& operator=(const Rechazadas&) = delete;

  // Creates the file, or goes on where it ends; a last line that was cut off is removed. com::Error kBaseDatos when it
  // cannot be written.
  void Abre();
  // Appends a row of the bookings file with the reason and the messages shown. Returns once the line is on the disk;
  // false, and nothing done, when that row of that line stands in the file. Abre goes before.
  bool Agrega(int linea, const std::vector<std::string>& campos, const std::string& motivo,
              const std::string& mensajes);

 private:
  void LeeExistente();
  [[noreturn]] void NoSeEscribe() const;
  void Escribe(const std::string& texto);

  std::string ruta_;
  int archivo_ = -1;
  std::size_t entero_ = 0;       // bytes of whole lines that an earlier run has left
  std::set<std::string> filas_;  // fields and line of each row that stands in the file
};

}  // namespace guion
