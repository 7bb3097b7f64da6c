// Any text is translated or refused as a statement; and the values that a statement is split into are those that its
// translation asks for, since the connection binds them one to one.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "fuzz/exige.h"
#include "host/standalone/plantillas.h"
#include "host/standalone/traductor.h"
#include "platform/com/error.h"

namespace {

void Prueba(std::string_view sentencia, esquema::Motor motor, autonomo::ModoTraduccion modo) {
  try {
    const auto traduccion = autonomo::Traduce(sentencia, motor, modo);
    if (!modo.literalesSonParametros) return;
    autonomo::Partida partida;
    autonomo::Parte(sentencia, modo.admitePreguntas, partida);
    std::size_t valores = 0;
    for (const auto origen : traduccion.parametros) valores += origen == autonomo::Origen::Ahora ? 0 : 1;
    fuzz::Exige(valores == partida.valores.size());
  } catch (const com::Error& e) {
    fuzz::Exige(e.Numero() == com::error::kSentencia);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  const std::string_view sentencia = fuzz::Texto(datos, largo);
  for (const auto motor : {esquema::Motor::Sqlite, esquema::Motor::PostgreSQL, esquema::Motor::SqlServer}) {
    Prueba(sentencia, motor, {});
    Prueba(sentencia, motor, {.literalesSonParametros = true});
    Prueba(sentencia, motor, {.literalesSonParametros = true, .admitePreguntas = true});
  }
  return 0;
}
