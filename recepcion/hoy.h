// The day at the front desk: who arrives, who leaves, who is in the house, who did not come, which rooms are free; and
// the search over all reservations.
//
// What the lists rest on. A reservation counts unless it is cancelled or closed (CA, CE). A stay is a check-in that is
// not cancelled; the guests of a closed one have left. It belongs to a reservation's line (alojamiento.h), of a closed
// reservation too, which counts as long as its guests are here. A reservation has arrived when a stay belongs to it or
// when it is applied (AP). A hotel that has never registered a check-in keeps no stays: there everyone who was to
// arrive before today has arrived, and nobody is missing.
//   arrivals    reservations whose arrival is today, arrived or not
//   departures  who has arrived and leaves or left today, as the last of the stays says, or the reservation that has
//               none; a line without a stay that begins that day is a change of room, and no departure
//   in house    who has arrived, has not left and sleeps here tonight
//   no-shows    active and confirmed reservations that were to arrive before today, do not end before today and have
//               not arrived
// Stays without a reservation are among the departures and in the house; they have no folio. Persons are those of the
// lines of a night: of tonight in the house, of last night for departures, of the fullest night elsewhere. The free
// rooms are the board's own counts by room type.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/com/fecha.h"
#include "recepcion/indice.h"
#include "recepcion/lectura.h"

namespace recepcion {

enum class Lista { Llegadas, Salidas, EnCasa, NoLlegaron };
inline constexpr std::size_t kListas = 4;
// "llegadas", "salidas", "encasa", "nollegaron": what a script calls them.
[[nodiscard]] std::string_view NombreDe(Lista lista);
[[nodiscard]] std::optional<Lista> ListaDe(std::string_view nombre);
// "Llegadas", "Salidas", "En casa", "No llegaron".
[[nodiscard]] std::string_view TituloDe(Lista lista);

struct Fila {
  std::string folio;     // of the reservation, "" for a stay without one
  std::string estancia;  // folio of the stay, "" without one
  std::string huesped;   // name
  com::Fecha llegada, salida;
  std::string habitaciones;  // "0101, 0102"
  int personas = 0;
  std::string estado;  // code of the reservation
  std::string referencia;
  bool llego = false;
};

struct LibresDeTipo {
  std::string tipo, nombre;
  int total = 0;            // rooms
  std::vector<int> noches;  // free from tonight on; below zero when more is taken than there is
};
inline constexpr int kNochesLibres = 8;  // tonight and seven more

struct Dia {
  com::Fecha fecha;
  bool llevaEstancias = false;                    // the hotel registers check-ins
  std::array<std::vector<Fila>, kListas> listas;  // by arrival, then folio
  std::vector<LibresDeTipo> libres;               // by type
};
// Reads the day through the host's connection; com::Error for database failures.
[[nodiscard]] Dia LeeDia(com::Fecha fecha);
// Its lists alone, without the free rooms.
[[nodiscard]] Dia LeeListas(const Fuente& fuente, com::Fecha fecha);
// The reservations of these folios, in their order; those that are gone are left out.
[[nodiscard]] std::vector<Fila> LeeFilas(const std::vector<std::string>& folios);

// What a person, or a script, has before the eyes: the day, and one list or what a search found.
class Hoy {
 public:
  explicit Hoy(SinAcento sinAcento) : indice_(sinAcento) {}

  // Reads the day anew, and what is searched; list and search stay.
  void Abre();
  // Part of the search's preparation, for idle moments; false when it is done.
  bool Prepara();
  // Another list; the search is emptied.
  void Elige(Lista lista);
  // "" goes back to the list.
  void Busca(const std::string& texto);

  const Dia& dia() const { return dia_; }
  Lista lista() const { return lista_; }
  const std::string& busqueda() const { return busqueda_; }
  // Of the search; empty without one.
  const Hallazgo& hallazgo() const { return hallazgo_; }
  const std::vector<Fila>& filas() const;
  // Opens the row's reservation. com::Error kArgumento for a row that is not there or has no reservation.
  void AbreFila(int fila) const;
  // Set by whoever shows the day: opens a reservation in the reservation screen.
  std::function<void(const std::string& folio)> alAbrir;

  static constexpr std::size_t kLimite = 100;  // rows of a search

 private:
  // The reservation as the day's lists have it; null when it is in none.
  const Fila* DelDia(const std::string& folio) const;

  Dia dia_;
  Lista lista_ = Lista::Llegadas;
  std::string busqueda_;
  Hallazgo hallazgo_;
  std::vector<Fila> halladas_;
  Indice indice_;
};

}  // namespace recepcion
