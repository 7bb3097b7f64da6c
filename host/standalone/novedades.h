// What the host did last to a reservation, for whoever works at the screens: told once it is in the database for good,
// never when it was rolled back.
#pragma once

#include <optional>
#include <string>

#include "host/standalone/conexion.h"

namespace autonomo {

struct Novedad {
  enum class Hecho { Guardada, Modificada, Confirmada, Cancelada, Reactivada, CorreoEnCola };
  Hecho hecho = Hecho::Guardada;
  std::string folio;
  std::string huesped;     // name of its guest
  bool conCorreo = false;  // a mail was queued with it

  // In Spanish ("Guardada 0000000046 · Ana López · correo en cola").
  std::string Texto() const;
};

class Novedades {
 public:
  explicit Novedades(Conexion& conexion);
  ~Novedades();
  Novedades(const Novedades&) = delete;
  Novedades& operator=(const Novedades&) = delete;

  // Something was done to a reservation; inside a transaction it counts once that commits. Of several things in one
  // transaction the last one counts.
  void Anota(Novedad::Hecho hecho, const std::string& folio);
  // What a text of the change log says about a state; nothing for other texts.
  static std::optional<Novedad::Hecho> HechoDe(const std::string& textoDeBitacora);
  // Nothing as long as nothing was done.
  const std::optional<Novedad>& Ultima() const { return ultima_; }

 private:
  Conexion& conexion_;
  std::optional<Novedad> enTransaccion_, ultima_;
};

}  // namespace autonomo
