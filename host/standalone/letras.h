// Letters of every alphabet, from ICU: the one table of case for the component and for the database's comparisons.
#pragma once

namespace autonomo {

// Gives the component its table of letters (com::FijaLetras). May be called again.
void UsaLetrasUnicode();

// The letter without its accents ("é" gives "e", "Ǻ" gives "A"); a letter that stands by itself gives itself.
char32_t SinAcentos(char32_t letra);

// The same for texts that are searched: 0 for an accent behind its letter and for what is not seen, "-" for a dash, a
// blank for every other sign that is neither letter nor digit. "º" gives "o".
char32_t LetraBuscada(char32_t letra);

}  // namespace autonomo
