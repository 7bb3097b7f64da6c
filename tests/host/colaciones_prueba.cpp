// Order of texts and dates, LIKE, and what a template takes out of a statement.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "host/standalone/colaciones.h"
#include "host/standalone/letras.h"
#include "host/standalone/plantillas.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"

namespace {

using autonomo::ComparaEspanol;
using autonomo::ComparaFecha;
using autonomo::Parecido;

int Signo(int n) { return n < 0 ? -1 : n > 0 ? 1 : 0; }

// Every pair of an ordered list compares as its positions do.
template <class Compara>
void EsperaOrden(const std::vector<std::string>& orden, Compara compara) {
  for (std::size_t i = 0; i < orden.size(); ++i)
    for (std::size_t j = 0; j < orden.size(); ++j)
      EXPECT_EQ(Signo(compara(orden[i], orden[j])), i < j ? -1 : i > j ? 1 : 0) << orden[i] << " / " << orden[j];
}

TEST(Colaciones, TextosIgualesSinCajaNiBlancosFinales) {
  const std::vector<std::vector<std::string>> iguales{{"", " ", "   "},
                                                      {"ac", "AC", "Ac  "},
                                                      {"MUÑOZ PÉREZ", "muñoz pérez "},
                                                      {"Ÿ Ž Ő Œ Ω Я", "ÿ ž ő œ ω я"},
                                                      {" a", " A"}};
  for (const auto& grupo : iguales)
    for (const auto& a : grupo)
      for (const auto& b : grupo) EXPECT_EQ(ComparaEspanol(a, b), 0) << a << " / " << b;
  // Letters that only look alike to a careless fold.
  for (const auto& [a, b] : std::vector<std::pair<std::string, std::string>>{
           {"ß", "ss"}, {"×", "÷"}, {"ı", "I"}, {"a", "á"}, {"n", "ñ"}, {" a", "a"}, {"[", "{"}, {"@", "`"}})
    EXPECT_NE(ComparaEspanol(a, b), 0) << a << " / " << b;
}

// The component's letters and the database's are the same: what the engine takes for equal has one key in memory.
TEST(Colaciones, LetrasDelComponente) {
  autonomo::UsaLetrasUnicode();
  EXPECT_EQ(com::Mayusculas("niño güero ÷ canción š ω ß"), "NIÑO GÜERO ÷ CANCIÓN Š Ω ß");
  EXPECT_EQ(com::Minusculas("ÁÉÍÓÚÑÜ × Z Š Ω"), "áéíóúñü × z š ω");
  EXPECT_TRUE(com::IgualSinCaja("Habitación", "HABITACIÓN"));
  EXPECT_FALSE(com::IgualSinCaja("Habitación", "HABITACION"));
  for (char32_t a = 1; a < 0x2000; ++a) {
    std::string letra;
    com::AgregaUtf8(letra, a);
    for (const std::string& otra : {com::Mayusculas(letra), com::Minusculas(letra), com::Plegado(letra)}) {
      EXPECT_EQ(ComparaEspanol(letra, otra) == 0, com::Plegado(letra) == com::Plegado(otra)) << letra << " / " << otra;
      EXPECT_EQ(com::IgualSinCaja(letra, otra), com::Plegado(letra) == com::Plegado(otra)) << letra << " / " << otra;
    }
  }
}

TEST(Colaciones, OrdenEspanol) {
  EsperaOrden({"", "101", "ana", "aná", "Anabel", "Ánades", "nudo", "Ñandú", "ñu", "oca", "tilo", "Último", "uña",
               "zeta", "日本"},
              ComparaEspanol);
}

TEST(Colaciones, FechasConYSinHora) {
  EsperaOrden({"", "2026-03-09 23:59:59", "2026-03-10", "2026-03-10 00:00:01", "2026-03-10 12:00", "2026-03-10 23:59",
               "2026-03-10 23:59:59", "2026-03-11", "mañana"},
              ComparaFecha);
  for (const char* igual :
       {"2026-03-10", "2026-03-10 ", "2026-03-10 00:00", "2026-03-10T00:00:00", "2026-03-10 00:00:00"})
    EXPECT_EQ(ComparaFecha("2026-03-10 00:00:00", igual), 0) << igual;
  EXPECT_EQ(ComparaFecha("", "  "), 0);
}

TEST(Colaciones, ComoElLikeDelServidor) {
  const std::vector<std::pair<std::string, std::string>> si{{"Muñoz", "MUÑ%"}, {"Muñoz", "__ñ__"},    {"", "%"},
                                                            {"aXbXc", "a%x_"}, {"Hotel 5", "%[0-9]"}, {"b", "[^a]"},
                                                            {"a]b", "a[]]b"},  {"aaab", "%ab"}};
  for (const auto& [texto, patron] : si) EXPECT_TRUE(Parecido(texto, patron)) << texto << " / " << patron;
  const std::vector<std::pair<std::string, std::string>> no{{"Munoz", "muñ%"}, {"ab", "a"},         {"a", "a_"},
                                                            {"", "_"},         {"Hotel", "%[0-9]"}, {"a", "[^a]"},
                                                            {"a", "[a"},       {"aaba", "%ab"}};
  for (const auto& [texto, patron] : no) EXPECT_FALSE(Parecido(texto, patron)) << texto << " / " << patron;
}

TEST(Plantillas, SeparaLosLiterales) {
  autonomo::Partida p;
  autonomo::Parte("a = '' AND b='it''s' AND'c'AND d = '''' OR e ='?'", false, p);
  EXPECT_EQ(p.plantilla,
            "a = \x01 AND b=\x01 AND\x01"
            "AND d = \x01 OR e =\x01");
  ASSERT_EQ(p.valores.size(), 5U);
  EXPECT_EQ(p.valores[0].texto, "");
  EXPECT_FALSE(p.valores[0].comillas);
  EXPECT_EQ(autonomo::SinComillasDobles(p.valores[1].texto), "it's");
  EXPECT_TRUE(p.valores[1].comillas);
  EXPECT_EQ(p.valores[2].texto, "c");
  EXPECT_EQ(autonomo::SinComillasDobles(p.valores[3].texto), "'");
  EXPECT_EQ(p.valores[4].texto, "?");

  autonomo::Parte("a=? AND b='?' AND c=?", true, p);
  EXPECT_EQ(p.plantilla, "a=\x02 AND b=\x01 AND c=\x02");
  ASSERT_EQ(p.valores.size(), 3U);
  EXPECT_TRUE(p.valores[0].pregunta && !p.valores[1].pregunta && p.valores[2].pregunta);

  EXPECT_THROW(autonomo::Parte("a = 'b''", false, p), com::Error);
}

}  // namespace
