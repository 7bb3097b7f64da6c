// Replays a hotel's bookings on the reservation screen, event by event in date order, as a clerk would have captured
// and cancelled them.
//
// What is done shows in the database alone: a stored booking carries its id as reference, in the transaction that
// stores it. Everything before the last event that left something in the database is done too, stored or refused. So an
// import that was interrupted, at whatever moment, goes on with the event after that one and ends as if nothing had
// happened.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "guion/componente.h"
#include "guion/escritorio_guion.h"
#include "guion/manos_modelos.h"
#include "guion/rechazadas.h"
#include "guion/reservas_csv.h"
#include "host/standalone/anfitrion.h"

namespace guion {

struct ResumenImportacion {
  int leidas = 0;                         // rows of the file
  int guardadas = 0, canceladas = 0;      // in this run
  int yaGuardadas = 0, yaCanceladas = 0;  // found done
  int yaRechazadas = 0;                   // refused by an earlier run; unreadable rows too
  int intentadas = 0;                     // bookings captured on the screen in this run, stored or not
  std::map<std::string, int> rechazadas;  // by reason, in this run; unreadable rows too
};

class Importador {
 public:
  // hechos and total count events.
  using Progreso = std::function<void(std::size_t hechos, std::size_t total)>;

  // The host's classes must be registered, and its hotel prepared (catalogo.h).
  Importador(autonomo::Anfitrion& anfitrion, Rechazadas& rechazadas);

  // The bad rows go to the refused ones first. A booking that cannot be captured or cancelled joins them, whatever went
  // wrong with it, as long as the database takes writes. com::Error kArgumento when the database holds bookings of
  // another file under the same ids; whatever the database raises (the run can be started again).
  ResumenImportacion Importa(const ReservasCsv& archivo, const Progreso& progreso);

 private:
  struct Guardada {
    std::string folio;
    bool cancelada = false;
  };

  // What came of some steps on the screen.
  struct Intento {
    std::string motivo;    // the last message without what changes from one booking to the next; "" none
    std::string mensajes;  // all that were shown
    bool falla = false;    // one of them tells a failure, as opposed to a refusal of the screen or of its store
  };
  Intento Intenta(const std::function<void()>& pasos);

  void LeeGuardadas(const std::vector<ReservaCsv>& reservas);
  // Number of events that need no second look.
  std::size_t EventosHechos(const std::vector<ReservaCsv>& reservas, const std::vector<Evento>& eventos) const;
  void CuentaHechos(const std::vector<ReservaCsv>& reservas, const std::vector<Evento>& eventos, std::size_t hechos);
  // A stored booking whose confirmation was not printed any more gets it now.
  void CompletaImpresion(const std::string& folio);

  void Captura(const ReservaCsv& reserva);
  // What a clerk types and presses for a new booking.
  void CapturaEnPantalla(const ReservaCsv& reserva);
  bool CapturaEncabezado(const ReservaCsv& reserva);
  void CapturaRenglon(const ReservaCsv& reserva);
  // False when the board does not know the type.
  bool MarcaEnTablero(const ReservaCsv& reserva);
  void Cancela(const ReservaCsv& reserva);
  void AbreFolio(const std::string& folio);
  void Rechaza(int linea, const std::vector<std::string>& campos, const std::string& motivo,
               const std::string& mensajes);
  // A failure that is no refusal is the booking's own only while the database takes writes; else it ends the run.
  void ExigeBase(const std::string& falla);

  controles::Formulario& pantalla() { return componente_.formulario(); }
  controles::Formulario& tablero() { return componente_.tablero(); }
  controles::ScreenToolbar& barra();  // the reservation screen's

  autonomo::Anfitrion& anfitrion_;
  Rechazadas& rechazadas_;
  Respuestas respuestas_;
  ManosModelos manos_;
  EscritorioGuion escritorio_;
  Componente componente_;
  std::map<std::string, Guardada> guardadas_;  // by id of the booking
  ResumenImportacion resumen_;
};

}  // namespace guion
