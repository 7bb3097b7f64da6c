// Days in words.
#include "recepcion/periodo.h"

#include <gtest/gtest.h>

#include "host/standalone/letras.h"

namespace recepcion {
namespace {

// "2026-03-12..2026-03-15 words beside them", of a text read on Monday 9 March 2026.
std::string Lee(std::string_view texto) {
  const TextoLeido leido = LeeTexto(texto, com::FechaDe(2026, 3, 9, 10, 30), autonomo::SinAcentos);
  std::string dice = leido.periodo ? com::AIso(leido.periodo->desde) : "nada";
  if (leido.periodo && leido.periodo->hasta != leido.periodo->desde) dice += ".." + com::AIso(leido.periodo->hasta);
  for (const std::string& palabra : leido.resto) dice += " " + palabra;
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
      {"el miércoles pasado", "2026-03-11 PASADO"},
      {"pasado miércoles", "2026-03-04"},
      {"viernes lópez", "2026-03-13 LOPEZ"},
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
      {"12-15 mar", "2026-03-12..2026-03-15"},
      {"12/03 al 15/03/26", "2026-03-12..2026-03-15"},
      {"12/3", "2026-03-12"},
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
      {"15/03/2026 al 12/03/2026", "2026-03-12 15 03 2026 AL"},
      {"45/13/2026", "nada 45 13 2026"},
      {"55-1234-5678", "nada 55 1234 5678"},
      {"- / -- ///", "nada"},
      {"", "nada"},
  };
  for (const auto& [texto, dias] : casos) EXPECT_EQ(Lee(texto), dias) << texto;
}

}  // namespace
}  // namespace recepcion
