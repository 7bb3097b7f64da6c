// Any line of a script is divided or refused as a bad argument, and any text can be made UTF-8.
#include <string>

#include "fuzz/exige.h"
#include "guion/lineas.h"
#include "platform/com/error.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  const std::string_view texto = fuzz::Texto(datos, largo);
  const std::string saneado = guion::Utf8Saneado(texto);
  fuzz::Exige(guion::EsUtf8(saneado) && (saneado == texto) == guion::EsUtf8(texto));
  guion::CodigosDe(saneado);
  for (std::size_t desde = 0; desde <= texto.size();) {
    const std::size_t fin = std::min(texto.find('\n', desde), texto.size());
    try {
      const guion::Linea linea = guion::DivideLinea(texto.substr(desde, fin - desde));
      fuzz::Exige(linea.texto.empty() == linea.palabras.empty());
    } catch (const com::Error& e) {
      fuzz::Exige(e.Numero() == com::error::kArgumento);
    }
    desde = fin + 1;
  }
  return 0;
}
