#include "reservation/correo.h"

#include "publico/avisos.h"
#include "publico/publico.h"

namespace kv207 {

bool EnviaCorreo(const controles::Formulario& formulario, const std::string& folio, const PlantillaCorreo& correo,
                 const anfitrion::DatosMensaje& sinPlantilla, const anfitrion::DatosMensaje& fallido) {
  const std::string plantilla = publico::LeeTexto(correo.plantilla);
  const std::string consulta = publico::LeeTexto(correo.consulta);
  if (publico::Utilerias().EnviaCorreo(anfitrion::kModulo, folio, plantilla, consulta, 0, "", "")) return true;
  const std::string motivo = publico::Utilerias().ErrorCorreo();
  if (motivo.empty()) {
    Avisa(formulario, sinPlantilla, std::string(sinPlantilla.texto) + plantilla);
  } else {
    Avisa(formulario, fallido, motivo);
  }
  return false;
}

}  // namespace kv207
