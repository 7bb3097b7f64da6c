// The search over all reservations: an index in memory, read once and kept up to date.
//
// The index holds what is looked for (names, telephones and mails of guest and client, folio, rooms, reference),
// arrival and departure. What a found reservation says is read from the database by whoever shows it. Each search first
// asks how often reservations have changed, whoever changed them (Reservacion_Version), and reads again those that did;
// a client's changed data are found after Relee.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/ado/ado.h"
#include "platform/com/fecha.h"
#include "recepcion/periodo.h"

namespace recepcion {

struct Hallazgo {
  std::optional<Periodo> periodo;   // the days that were read in the text
  std::size_t total = 0;            // reservations that fit
  std::vector<std::string> folios;  // the first of them
};

class Indice {
 public:
  explicit Indice(SinAcento sinAcento) : sinAcento_(sinAcento) {}

  // Reads a further part of the reservations; false when all are there. For idle moments: some 20 ms a part. Database
  // failures raise com::Error, here and below.
  bool Adelanta();
  // Clients' data anew, and what changed; nothing before the first search.
  void Relee();

  // The reservations whose words begin with all words of the text, in any order; a number of four digits or more is
  // found anywhere in a telephone, a whole one with and without its country's code. Days find the stays that touch
  // them. Those that arrive from the first of these days on (without days: from today on) come first, the next one
  // first; then the earlier ones, the last one first; cancelled and closed ones at the end. limite: most folios given.
  // A text without words finds nothing.
  Hallazgo Busca(std::string_view texto, com::Fecha hoy, std::size_t limite);

  std::size_t Reservaciones() const { return entradas_.size(); }

 private:
  struct Entrada {
    std::string folio;
    std::string palabras;  // of the reservation's own, each after a blank
    com::Fecha llegada, salida;
    std::size_t huesped = 0, cliente = 0;  // in clientes_
    double version = 0;
    bool libera = false;  // holds no room: cancelled or closed
  };
  struct Cliente {
    std::string palabras;
    std::string telefono;  // digits
  };
  struct Consulta;

  // All of them, or the one of a key.
  void LeeClientes(const std::string& clave = {});
  std::size_t ClienteDe(const std::string& clave);
  // Takes the reservations of a record set, in folio order, a row for each room; gives by how much their changes grew.
  double Toma(ado::Recordset& filas);
  void Agrega(const ado::Recordset& fila, Entrada& entrada);
  void PonAlDia();
  void Vacia();

  SinAcento sinAcento_;
  std::vector<Entrada> entradas_;
  std::unordered_map<std::string, std::size_t> porFolio_;
  std::vector<Cliente> clientes_{1};  // the first stands for none
  std::unordered_map<std::string, std::size_t> porClave_;
  std::string ultimo_;  // folio up to which all are read
  bool empezado_ = false, completo_ = false;
  double versiones_ = 0;  // changes of all reservations when they were read
  com::Fecha ultimoCambio_;
};

}  // namespace recepcion
