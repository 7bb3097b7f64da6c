// Answers that a script prepares for the questions to come, and the messages that were shown. A window's own message
// boxes use the same queue and the same recorder.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/controls/formulario.h"

namespace guion {

struct MensajeVisto {
  controles::CajaMensaje caja;
  int respuesta = 0;
  bool enTransaccion = false;  // others waited for the answer
};

class Respuestas {
 public:
  // Answer for the next message with that identifier ("ERR-ID:7500051", or its number alone). com::Error kArgumento for
  // an identifier that no message has, and for an answer that no button gives.
  void Prepara(const std::string& id, int respuesta);
  void PreparaNotas(std::string texto) { notas_.push_back(std::move(texto)); }
  void PreparaCatalogo(std::string clave) { catalogo_.push_back(std::move(clave)); }

  // Answer for a box that is about to be shown: the prepared one, which is used up, or the default button. A prepared
  // answer that the box has no button for gives the default button and a complaint.
  int Decide(const controles::CajaMensaje& caja);
  // A box has been answered.
  void Anota(const controles::CajaMensaje& caja, int respuesta) {
    vistos_.push_back({caja, respuesta, enTransaccion && enTransaccion()});
  }
  // Whether a transaction is open.
  std::function<bool()> enTransaccion;
  // What the next notes editor gives; the text itself when nothing was prepared.
  std::string Notas(const std::string& texto);
  // What the next catalogue search gives; "" (cancelled) when nothing was prepared.
  std::string Catalogo();

  // The messages since the last call, oldest first.
  std::vector<MensajeVisto> TomaVistos() { return std::exchange(vistos_, {}); }
  // Complaint since the last call, if any.
  std::optional<std::string> TomaQueja() { return std::exchange(queja_, std::nullopt); }

 private:
  std::map<std::string, std::deque<int>> preparadas_;
  std::deque<std::string> notas_, catalogo_;
  std::vector<MensajeVisto> vistos_;
  std::optional<std::string> queja_;
};

// Whether a box of that style has the button.
[[nodiscard]] bool TieneBoton(int estilo, int respuesta);

}  // namespace guion
