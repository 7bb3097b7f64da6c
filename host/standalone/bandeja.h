// The outbox: its rows, who may take one to send it, and what becomes of it.
//
// A sender takes a row by a conditional update with a mark of its own, so that of two senders one has it; what it then
// learns is written only while the row still carries that mark. A sender that dies leaves its row taken: nobody knows
// whether that mail went out, and nobody sends it again but a person who says so.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/standalone/conexion.h"
#include "host/standalone/listas.h"

namespace autonomo {

// Values of Cs_Estado.
namespace correo {
inline constexpr std::string_view kPendiente = "PENDIENTE",  // waits for its next try
    kEnviando = "ENVIANDO",                                  // taken by a sender
    kEnviado = "ENVIADO",                                    // accepted by the server
    kIncierto = "INCIERTO",                                  // nobody knows whether the server accepted it
    kRechazado = "RECHAZADO",                                // refused by the server for good
    kVencido = "VENCIDO";                                    // waited too long to be still of use
}  // namespace correo

struct CorreoNuevo {
  std::string folio, plantilla, consulta, para, asunto, cuerpo;
  std::string adjunto;  // attached letter as HTML; "" none
  std::string usuario;
  com::Fecha fecha;
};
void Encola(Conexion& conexion, const CorreoNuevo& correo);

struct CorreoEnBandeja {
  std::int32_t id = 0;
  std::string folio, para, asunto, estado, usuario;
  std::string error;  // what the last try said
  std::int32_t intentos = 0;
  com::Fecha fecha;  // when it was queued, or asked for again
  std::optional<com::Fecha> proximo, enviado;
  bool operator==(const CorreoEnBandeja&) const = default;
};
// The last ones first, at most kMasRenglones of them.
std::vector<CorreoEnBandeja> LeeBandeja(Conexion& conexion, const FiltroLista& filtro);
// The state in words: "En espera; se intenta otra vez a las 10:35 (1 intento): El servidor no contesta".
std::string EstadoEnPalabras(const CorreoEnBandeja& correo);

// Whether sending it again would change anything: not of one that waits for its first try, or is being sent.
bool SeEnviaOtraVez(const CorreoEnBandeja& correo);
// Puts a mail back to be sent, whatever became of it. com::Error kArgumento when there is no such mail, or it is being
// sent right now.
void EnviaOtraVez(Conexion& conexion, std::int32_t id, com::Fecha ahora);

// --- for senders

// Pause after that many tries, in seconds: one minute, doubling up to an hour.
int PausaTras(std::int32_t intentos);
struct CorreoVencido {
  std::string para, asunto;
  std::string error;  // what the last try said
};
struct PorEnviarAhora {
  std::vector<std::int32_t> ids;        // oldest first
  std::vector<CorreoVencido> vencidos;  // became kVencido just now
};
// Mails to try now, and those that waited for three days: these become kVencido, and one sender alone is given each.
// Those whose sender has died become kIncierto. quien: mark of this sender's round, its alone.
PorEnviarAhora PorEnviar(Conexion& conexion, const std::string& quien, com::Fecha ahora);

struct CorreoTomado {
  std::int32_t id = 0;
  std::int32_t intentos = 0;  // this one counted
  std::string folio, para, asunto, cuerpo, adjunto;
  com::Fecha fecha;
};
// Takes a mail that waits; nothing when another sender was first. quien: mark of this sender's try, its alone.
[[nodiscard]] std::optional<CorreoTomado> Toma(Conexion& conexion, std::int32_t id, const std::string& quien,
                                               com::Fecha ahora);

enum class Desenlace {
  Enviado,
  Luego,        // the server said "later" of this mail
  SinServidor,  // it cannot be reached, or takes no mail at all
  Nunca,        // it refused this mail
  Incierto      // it may have taken it
};
struct ResultadoEnvio {
  Desenlace desenlace = Desenlace::Luego;
  std::string error;  // in Spanish; "" when it was sent
};
// Puts off a mail that waits, as a try that did not come about.
void Aplaza(Conexion& conexion, std::int32_t id, const std::string& error, com::Fecha ahora);
// Writes down what became of a mail that was taken.
void Anota(Conexion& conexion, const CorreoTomado& correo, const std::string& quien, const ResultadoEnvio& resultado,
           com::Fecha ahora);

}  // namespace autonomo
