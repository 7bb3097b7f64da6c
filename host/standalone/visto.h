// What a clerk saw of a reservation: its version and its fields, kept until they are compared with what is there then.
#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <utility>
#include <vector>

#include "host/standalone/conexion.h"
#include "platform/ado/texto_sql.h"

namespace autonomo {

// Fields of a loaded reservation and its rooms, by the name that a clerk knows.
using Imagen = std::vector<std::pair<std::string, std::string>>;

// From the record set of the screen's load; empty without rows.
Imagen ImagenDe(ado::Recordset& filas);
// One line for each field or room that differs, "- NOMBRE: ANTES -> DESPUÉS".
std::string Diferencias(const Imagen& antes, const Imagen& despues);

// A reservation as a screen loaded it.
struct Vista {
  std::string folio;
  std::int32_t version = 0;   // 0 for one that does not exist
  std::int32_t bitacora = 0;  // last entry of its change log
  ado::TextoSQL carga;        // the statement that shows it
  Imagen imagen;
};
// As it is now, without the image.
Vista LeeVista(ConexionDeMotor& motor, const std::string& folio, const ado::TextoSQL& carga);

// Version, last entry and image as text that another session can take up.
std::string EnTexto(const Vista& vista);
// Takes them from it. A text that is none leaves a version that no reservation has.
void DeTexto(const std::string& texto, Vista& vista);

// What a connection has shown of some reservations. Long ago does not count: a screen shows one at a time.
class Vistas {
 public:
  // By folio, case-blind; null when nothing of it is kept.
  Vista* Busca(const std::string& folio);
  // In place of what was kept of the same one.
  void Recuerda(Vista vista);

 private:
  std::list<Vista> vistas_;  // seen last first
};

}  // namespace autonomo
