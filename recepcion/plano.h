// Texts as a search compares them: without case and accents, cut into words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace recepcion {

// Gives a letter without its accents ("é" gives "e"); the host's, which knows every alphabet.
using SinAcento = char32_t (*)(char32_t);

// Letters without case and accents (ASCII ones in capitals); every other sign stays.
std::string Plano(std::string_view texto, SinAcento sinAcento);
// The words of a plain text: runs of letters and digits. "ana.lopez@x.mx" has four.
std::vector<std::string> Palabras(std::string_view plano);
// A key without the zeros before it, "0" for nothing but zeros.
std::string_view SinCeros(std::string_view clave);
bool SoloDigitos(std::string_view texto);

}  // namespace recepcion
