// Days in words.
#include "recepcion/periodo.h"

#include <gtest/gtest.h>

#include "host/standalone/letras.h"

namespace recepcion {
namespace {

// "2026-03-12..2026-03-15 WORDS BESIDE THEM | the other way to understand it", of a text read on Monday 9 March 2026;
// the last way, without days, is left out where there is another.
std::string Lee(std::string_view texto) {
  std::vector<Lectura> lecturas = LeeTexto(texto, com::FechaDe(2026, 3, 9, 10, 30), autonomo::LetraBuscada);
  EXPECT_FALSE(lecturas.back().periodo) << texto;
  if (lecturas.size() > 1) lecturas.pop_back();
  std::string dice;
  for (const Lectura& l : lecturas) {
    dice += (dice.empty() ? "" : " | ") + (l.periodo ? com::AIso(l.periodo->desde) : "nada");
    if (l.periodo && l.periodo->hasta != l.periodo->desde) dice += ".." + com::AIso(l.periodo->hasta);
    for (const std::string& palabra : l.palabras) dice += " " + palabra;
  }
  return dice;
}

TEST(PeriodoPrueba, LosDiasSeDicenDeMuchasManeras) {
  autonomo::UsaLetrasUnicode();
  const std::pair<const char*, const char*> casos[] = {
      {"hoy", "2026-03-09"},
      {"MAÑANA", "2026-03-10"},
      {"pasado mañana suite", "2026-03-11 SUITE"},
      {"antes de ayer", "2026-03-07"},
      {"lunes", "2026-03-09"},
      {"próximo lunes", "2026-03-16"},
      {"el miércoles pasado", "2026-03-04"},
      {"pasado miércoles", "2026-03-04"},
      {"lunes pasado", "2026-03-02"},
      {"lunes que viene", "2026-03-16"},
      {"domingo próximo ana", "2026-03-15 ANA"},
      {"lunes pasado mañana", "2026-03-09 PASADO MANANA"},
      {"viernes lópez", "2026-03-13 LOPEZ"},
      {"sábado 14 de marzo", "2026-03-14"},
      {"Sábado, 14/03", "2026-03-14"},
      {"sabado 7", "2026-03-07 | 2026-03-14 7"},
      {"sábado 15", "2026-08-15 | 2026-03-14 15"},
      {"viernes 102", "2026-03-13 102"},
      {"esta semana", "2026-03-09..2026-03-15"},
      {"Próxima  semana", "2026-03-16..2026-03-22"},
      {"la semana que viene", "2026-03-16..2026-03-22"},
      {"fin de semana", "2026-03-13..2026-03-15"},
      {"próximo fin de semana", "2026-03-20..2026-03-22"},
      {"este mes", "2026-03-01..2026-03-31"},
      {"mes pasado", "2026-02-01..2026-02-28"},
      {"12 al 15 mar", "2026-03-12..2026-03-15"},
      {"ana del 12 al 15 de marzo de 2027", "2027-03-12..2027-03-15 ANA"},
      {"28 dic al 3 ene", "2026-12-28..2027-01-03"},
      {"28 al 3 ene", "2026-12-28..2027-01-03"},
      {"10 dic 2025 al 3 ene", "2025-12-10..2026-01-03"},
      {"28 feb al 3 de marzo de 2027", "2027-02-28..2027-03-03"},
      {"entre el 12 y el 15 de marzo", "2026-03-12..2026-03-15"},
      {"del 12 de marzo al 15", "2026-03-12..2026-03-15"},
      {"28 de marzo al 3", "2026-03-28..2026-04-03"},
      {"ana 12 al 15", "2026-03-12..2026-03-15 ANA"},
      {"5 al 8", "2026-04-05..2026-04-08"},
      {"7 al 10", "2026-03-07..2026-03-10"},
      {"del 12 al 15 del próximo mes", "2026-04-12..2026-04-15"},
      {"del viernes al domingo", "2026-03-13..2026-03-15"},
      {"de lunes a viernes", "2026-03-09..2026-03-13"},
      {"lunes pasado al viernes", "2026-03-02..2026-03-06"},
      {"viernes al 3 de abril", "2026-03-13..2026-04-03"},
      {"lunes 9 al domingo 15", "2026-03-09..2026-03-15 | 2026-03-09 9 AL DOMINGO 15"},
      {"hoy al viernes", "2026-03-09..2026-03-13"},
      {"desde ayer hasta mañana", "2026-03-08..2026-03-10"},
      {"marzo a abril", "2026-03-01..2026-04-30"},
      {"de nov a feb", "2025-11-01..2026-02-28"},
      {"hoy a marzo", "2026-03-09..2026-03-31"},
      {"12-15 mar", "2026-03-12..2026-03-15"},
      {"12/03 al 15/03/26", "2026-03-12..2026-03-15"},
      {"12/3", "2026-03-12"},
      {"12-mar", "2026-03-12"},
      {"12-mar-2027 - 15-mar-2027", "2027-03-12..2027-03-15"},
      {"marzo 12", "2026-03-12 | 2026-03-01..2026-03-31 12"},
      {"28/12-3/1", "2026-12-28..2027-01-03"},
      {"(15-03-2026)", "2026-03-15"},
      {"15.03.2026 al 2026-03-18.", "2026-03-15..2026-03-18"},
      {"1º de marzo", "2026-03-01"},
      {"1° de mayo", "2026-05-01"},
      {"primero de enero", "2027-01-01"},
      {"2026-04-01", "2026-04-01"},
      {"29 feb", "2028-02-29"},
      {"20 feb", "2026-02-20"},
      {"20 dic", "2026-12-20"},
      {"1 nov", "2026-11-01"},
      {"marzo", "2026-03-01..2026-03-31"},
      {"julio pérez", "2026-07-01..2026-07-31 PEREZ"},
      {"feb 2027", "2027-02-01..2027-02-28"},
      {"en ago", "2026-08-01..2026-08-31"},
      // No days: names, keys, days that do not exist, ranges that end before they begin.
      {"mar", "nada MAR"},
      {"102 O'Brien", "nada 102 O BRIEN"},
      {"31 feb 2026", "2026-02-01..2026-02-28 31"},
      {"15/03/2026 al 12/03/2026", "2026-03-15 AL 12 03 2026"},
      {"45/13/2026", "nada 45 13 2026"},
      {"55-1234-5678", "nada 55 1234 5678"},
      {"12-15", "nada 12 15"},
      {"15", "nada 15"},
      {"15.03", "nada 15 03"},
      {"primero", "nada PRIMERO"},
      {"- / -- ///", "nada"},
      {"", "nada"},
  };
  for (const auto& [texto, dias] : casos) EXPECT_EQ(Lee(texto), dias) << texto;
}

TEST(PeriodoPrueba, UnDiaQueNoExisteSeConoce) {
  EXPECT_EQ(DiaInexistente("ana 31/02"), "31/02");
  EXPECT_EQ(DiaInexistente("29-02-2027"), "29-02-2027");
  EXPECT_EQ(DiaInexistente("29/02 12/03 0031/44 31"), "");
}

}  // namespace
}  // namespace recepcion
