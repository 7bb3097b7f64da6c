// A draft of what is captured on the reservation screen: taken every now and then, and brought back when the program
// was ended by force.
//
// A draft holds what a person can type: fields, notes and room lines. It holds no card data: number and code are kept
// nowhere but in the database, sealed.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls/barra.h"
#include "platform/controls/formulario.h"
#include "recepcion/renglones.h"

namespace recepcion {

struct CampoCaptado {
  std::string nombre;      // of the control
  std::string texto;       // as typed; a short date
  bool pendiente = false;  // typed and not confirmed
};

struct Borrador {
  std::string folio;     // of the reservation that is edited, "" for a new one
  std::string visto;     // the version that the edit started from, in the host's words
  std::string huesped;   // name, for whoever is asked
  bool tarjeta = false;  // card data had been entered
  std::vector<CampoCaptado> campos;
  // Name and text of a field that holds input which its control does not know yet, as a date half typed; "" none.
  std::string aMedias, tecleado;
  std::vector<Renglon> renglones, quitados;
};

// What the screen's capture holds; com::Error kArgumento when there is none. visto, aMedias and quitados are the
// caller's to add.
[[nodiscard]] Borrador TomaBorrador(const controles::Formulario& principal);

// A draft as text and back; com::Error kArgumento, with the reason in Spanish, for a text that is none.
[[nodiscard]] std::string EnTexto(const Borrador& borrador);
[[nodiscard]] Borrador DeTexto(std::string_view texto);

// "Reservación nueva, Ana López, 10/03/2026 – 12/03/2026, 1 habitación".
[[nodiscard]] std::string Resumen(const Borrador& borrador);
// Folio of a live reservation with the draft's guest and stay that was captured on that day or later: a new one that
// was stored just before the program ended; "" none. Database failures raise com::Error.
[[nodiscard]] std::string YaGuardada(const Borrador& borrador, com::Fecha dia);

// How the draft's capture is begun again.
struct ManosDelBorrador {
  // Presses a button of the main toolbar; false when it was not to be.
  std::function<bool(controles::Accion)> pulsa;
  // An edit has begun: what has changed since the version that it started from counts as not seen.
  std::function<void(const std::string& folio, const std::string& visto)> retoma;
};
// Begins the New or the Edit and types what differs, field by field and line by line; what was half typed is the
// caller's. Gives a text for each thing that is not as it was, but for the card (FaltaTarjeta). com::Error kArgumento,
// and nothing is begun, while something is captured and for a reservation that can no longer be edited.
[[nodiscard]] std::vector<std::string> ReponeBorrador(controles::Formulario& principal, const Borrador& borrador,
                                                      const ManosDelBorrador& manos);

// What is to be said of the card's data, which no draft holds; "" nothing was entered.
[[nodiscard]] std::string FaltaTarjeta(const Borrador& borrador);

}  // namespace recepcion
