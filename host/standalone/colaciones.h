// What SQLite lacks to compare and convert as the screens' statements expect: two collations and a few functions.
#pragma once

#include <string_view>

struct sqlite3;

namespace autonomo {

// Order of texts: case-blind (accented Latin letters too), accents told apart, blanks at the end ignored. A letter with
// an accent sorts right after the texts that differ from it only by the accent; "ñ" is a letter of its own after "n".
// Negative, 0 or positive.
int ComparaEspanol(std::string_view a, std::string_view b);

// Order of date texts: "AAAA-MM-DD", "AAAA-MM-DD HH:MM" and "AAAA-MM-DD HH:MM:SS" (blank or T between); a time or its
// seconds that are missing are zero. Other texts sort by their bytes. Negative, 0 or positive.
int ComparaFecha(std::string_view a, std::string_view b);

// The server's LIKE: "%", "_", "[a-z]", "[^a-z]"; letters compare as in ComparaEspanol.
bool Parecido(std::string_view texto, std::string_view patron);

// Registers on a connection the collations ESPANOL and FECHA, UPPER, LOWER and LIKE for accented letters, and
// rechaza(text), which makes the statement fail as a broken constraint with that text. com::Error kBaseDatos.
void RegistraColaciones(sqlite3* base);

}  // namespace autonomo
