// How the screens report: one call for each message, one way to trap a handler's failures.
#pragma once

#include <exception>
#include <string>
#include <string_view>

#include "host/contract/mensajes.h"
#include "publico/publico.h"

namespace kv207 {

// Shows a message of the table with its own text, or with the given one, and waits; gives the answer, a
// controles::kSi, kNo, kAceptar or kCancelar as the message's style asks. The window is the form's.
int Avisa(const controles::Formulario& formulario, const anfitrion::DatosMensaje& mensaje);
int Avisa(const controles::Formulario& formulario, const anfitrion::DatosMensaje& mensaje, std::string_view texto);

// Runs a handler's body; a failure is reported once with the message's caption and identifier, and ends the handler.
// alFallar runs before the report (a roll-back); it must not raise. True when the body ended without failure.
template <class Cuerpo, class AlFallar>
bool Atrapa(const controles::Formulario& formulario, const anfitrion::DatosMensaje& mensaje, Cuerpo&& cuerpo,
            AlFallar&& alFallar) {
  try {
    cuerpo();
    return true;
  } catch (const std::exception& e) {
    const std::string descripcion = e.what();
    alFallar();
    Avisa(formulario, mensaje, descripcion);
    return false;
  }
}
template <class Cuerpo>
bool Atrapa(const controles::Formulario& formulario, const anfitrion::DatosMensaje& mensaje, Cuerpo&& cuerpo) {
  return Atrapa(formulario, mensaje, static_cast<Cuerpo&&>(cuerpo), [] {});
}

}  // namespace kv207
