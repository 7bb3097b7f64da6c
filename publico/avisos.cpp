#include "publico/avisos.h"

#include <string>

namespace kv207 {

int Avisa(const controles::Formulario& formulario, const anfitrion::DatosMensaje& mensaje) {
  return Avisa(formulario, mensaje, mensaje.texto);
}

int Avisa(const controles::Formulario& formulario, const anfitrion::DatosMensaje& mensaje, std::string_view texto) {
  return publico::Sistema().Mensaje(texto, mensaje.estilo, mensaje.titulo, formulario.ventana(), anfitrion::kPantalla,
                                    mensaje.id);
}

}  // namespace kv207
