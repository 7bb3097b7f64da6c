// The file of refused bookings: one line each, on the disk before the import goes on.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "guion/reservas_csv.h"

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
  // Whether a line with that id stands in the file.
  bool Tiene(const std::string& id) const { return ids_.contains(id); }
  // Appends the booking with the reason and the messages shown; nothing when it stands in the file. Returns once the
  // line is on the disk. Abre goes before.
  void Agrega(const ReservaCsv& reserva, const std::string& motivo, const std::string& mensajes);

 private:
  void LeeExistente();
  [[noreturn]] void NoSeEscribe() const;
  void Escribe(const std::string& texto);

  std::string ruta_;
  int archivo_ = -1;
  std::size_t entero_ = 0;  // bytes of whole lines that an earlier run has left
  std::set<std::string> ids_;
};

}  // namespace guion
