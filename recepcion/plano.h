// Texts as a search compares them: without case and accents, cut into words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace recepcion {

// Gives a letter or digit without its accents ("é" gives "e"), 0 for an accent that stands behind its letter, "-" for a
// dash, "'" for what is typed as an apostrophe and a blank for every other sign; the host's, which knows every
// alphabet. ASCII is not asked for.
using SinAcento = char32_t (*)(char32_t);

// Letters without case and accents (ASCII ones in capitals); of the other signs those of ASCII stay, the others become
// what sinAcento gives.
[[nodiscard]] std::string Plano(std::string_view texto, SinAcento sinAcento);
[[nodiscard]] bool EsDePalabra(char c);
// The words of a plain text: runs of letters and digits. "ana.lopez@x.mx" has four.
[[nodiscard]] std::vector<std::string> Palabras(std::string_view plano);
// A plain text without the apostrophes inside its words: "O'HARA" gives "OHARA", as it is typed in a hurry.
[[nodiscard]] std::string SinApostrofos(std::string_view plano);
// The words that a text is found by: its own, and where apostrophes part some, those without them.
[[nodiscard]] std::vector<std::string> PalabrasBuscadas(std::string_view plano);
// A key without the zeros before it, "0" for nothing but zeros.
[[nodiscard]] std::string_view SinCeros(std::string_view clave);

// The digits of a text, in order.
[[nodiscard]] std::string Digitos(std::string_view texto);
// Whether a word that is searched for may stand inside a telephone: four digits or more, and nothing else.
[[nodiscard]] bool EsParteDeTelefono(std::string_view palabra);
// Whether digits are enough for a telephone.
[[nodiscard]] bool EsTelefono(std::string_view digitos);
// Whether both are the same telephone, with and without the code of a country; false when either is none.
[[nodiscard]] bool MismoTelefono(std::string_view digitos, std::string_view otros);
// Whether a telephone's digits are those of another or hold them, likewise.
[[nodiscard]] bool TieneTelefono(std::string_view digitos, std::string_view otros);

}  // namespace recepcion
