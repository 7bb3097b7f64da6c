// The guest in one step: a search over all clients, a new one who is not there, who may be the same person, and what
// the hotel knows of his stays. What is chosen is typed in the reservation screen by whoever shows the search.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/com/fecha.h"
#include "recepcion/hoy.h"
#include "recepcion/pasos.h"
#include "recepcion/plano.h"

namespace recepcion {

struct Persona {
  std::string clave, nombre, telefono, correo;
};
// A client who may be the one about to be entered.
struct Parecida {
  Persona persona;
  std::string motivo;  // "mismo teléfono", "mismo correo", "nombre parecido"
};
// The last reservation that counts (hoy.h) whose guest arrived today or before.
struct UltimaEstancia {
  std::string folio;
  com::Fecha llegada, salida;
  std::vector<std::string> habitaciones;
  std::string notas;
};
// What is typed in the reservation for the person that was chosen.
struct Toma {
  std::string clave;
  std::string formaPago;   // of the guest's latest reservation, but for a card; "" none
  std::string habitacion;  // of the last stay, when it is taken over
  std::string notas;       // likewise
};

class Huespedes {
 public:
  // direccionValida: whether a text is a mail address.
  Huespedes(SinAcento sinAcento, bool (*direccionValida)(const std::string&));

  // Reads the clients, for the screen's field txtHuesped or txtCliente; the search is emptied. estancia: that of
  // the capture, none outside one. Database failures raise com::Error, here and below.
  void Abre(const std::string& campo, const std::optional<EstanciaCaptada>& estancia);
  // Clients whose words begin with all words of the text, in any order, by name; "" finds all. A number of four digits
  // or more is found anywhere in a telephone. The first of them is pointed at.
  void Busca(const std::string& texto);
  // Points at a row: reads his reservations and last stay; -1 at none. com::Error kArgumento for a row that is not
  // there.
  void Senala(int fila);

  const std::string& campo() const { return campo_; }
  const std::string& busqueda() const { return busqueda_; }
  std::size_t total() const { return total_; }                        // clients that fit
  const std::vector<Persona>& hallados() const { return hallados_; }  // the first of them
  int senalado() const { return senalado_; }
  // Of the person pointed at: reservations as guest or client, the last to arrive first.
  const std::vector<Fila>& reservaciones() const { return reservaciones_; }
  const std::optional<UltimaEstancia>& ultima() const { return ultima_; }
  // Opens one of them. com::Error kArgumento for one that is not there.
  void AbreReservacion(int fila) const;
  // The room that can be taken over from the last stay, "" none; when it is held on nights of the capture, ocupada says
  // which and by whom.
  std::string HabitacionDeSiempre(std::string& ocupada) const;
  // Takes the person pointed at. com::Error kArgumento when there is none, and for a room that is held.
  void Elige(bool conHabitacion, bool conNotas);

  // A new client out of what was searched for: name, telephone or mail, and the next key.
  [[nodiscard]] Persona Propuesta() const;
  // Who has the same telephone or mail, or nearly the same name.
  [[nodiscard]] std::vector<Parecida> ParecidasA(const Persona& nueva) const;
  // Stores a new client and points at him alone. aunqueParezca: also when there are similar ones; without it they are
  // given back and nothing is stored. An empty key is the next one. com::Error kArgumento for data that cannot stand,
  // kRestriccion for a key that exists (somebody took it meanwhile): the clients are read anew, so that the next key
  // and who is similar are right.
  [[nodiscard]] std::vector<Parecida> Crea(const Persona& nueva, bool aunqueParezca);
  // Points at the client of the key alone, as if it had been searched for.
  void SenalaClave(const std::string& clave);

  // Set by whoever shows the search.
  std::function<void(const std::string& folio)> alAbrir;
  std::function<void(const std::string& campo, const Toma& toma)> alElegir;

  static constexpr std::size_t kLimite = 100;  // rows of a search

 private:
  struct Entrada {
    Persona persona;
    std::string palabras;  // each after a blank
    std::string plano;     // the name's words in order of the alphabet
    std::string digitos;   // of the telephone
    std::string correo;    // plain
    bool deBaja = false;   // withdrawn: not offered, but its key is taken
  };

  void Lee();
  Entrada EntradaDe(const Persona& persona) const;
  Persona Revisada(const Persona& nueva) const;
  void Inserta(const Persona& persona);
  std::string SiguienteClave() const;

  SinAcento sinAcento_;
  bool (*direccionValida_)(const std::string&);
  std::string campo_, busqueda_;
  std::optional<EstanciaCaptada> estancia_;
  std::vector<Entrada> entradas_;  // by plain name
  std::size_t total_ = 0;
  std::vector<Persona> hallados_;
  int senalado_ = -1;
  std::vector<Fila> reservaciones_;
  std::optional<UltimaEstancia> ultima_;
};

// A client's reservations, the last to arrive first.
[[nodiscard]] std::vector<Fila> ReservacionesDe(const std::string& cliente);
// Nothing for a client who has not been here.
[[nodiscard]] std::optional<UltimaEstancia> UltimaEstanciaDe(const std::string& huesped, com::Fecha hoy);
// A name typed in small letters or in capitals alone, as names are written; any other as it is.
[[nodiscard]] std::string NombrePropio(const std::string& escrito);

}  // namespace recepcion
