#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>
#include <vector>

#include "platform/com/cadena.h"
#include "platform/com/error.h"
#include "platform/com/variant.h"
#include "tests/comun/error_de.h"

namespace {

using pruebas::ErrorDe;

using com::Fecha;
using com::FechaDe;
using com::Variant;

// Number of the Error that the call raises; 0 when it raises none.
TEST(Conversiones, NumeroDeTexto) {
  const std::vector<std::pair<const char*, double>> buenos = {
      {"$1,234.50", 1234.5}, {" 12 ", 12}, {"-3", -3},  {"-$1,234.50", -1234.5}, {"$-5", -5},   {"+7", 7},
      {".5", 0.5},           {"5.", 5},    {"0", 0},    {"1,234,567", 1234567},  {"1e3", 1000}, {"1.5E-2", 0.015},
      {"0012", 12},          {"- 4", -4},  {"$ 10", 10}};
  for (const auto& [texto, numero] : buenos) EXPECT_EQ(com::CDbl(texto), numero) << texto;
  for (const char* malo : {"",    " ",    "abc", "1.2.3", "1,23", "12,34,567", "1,,234", ",123", "$",   "-",
                           "--3", "-$-3", "1 2", "10%",   ".",    "1e",        "0x10",   "NaN",  "inf", "10/03/2026"}) {
    EXPECT_EQ(ErrorDe([&] { com::CDbl(malo); }), com::error::kTipos) << malo;
  }
  EXPECT_EQ(ErrorDe([] { com::CDbl("1e999"); }), com::error::kDesbordamiento);
  EXPECT_EQ(com::CDbl("1e-999"), 0);
}

TEST(Conversiones, CadaTipoANumero) {
  EXPECT_EQ(com::CDbl(Variant()), 0);
  EXPECT_EQ(com::CDbl(true), -1);
  EXPECT_EQ(com::CDbl(Variant(FechaDe(2026, 3, 10, 12))), 46091.5);
  EXPECT_EQ(ErrorDe([] { com::CDbl(Variant::Null()); }), com::error::kUsoDeNulo);
  EXPECT_EQ(ErrorDe([] { com::CDbl(Variant(com::Ptr<com::Desconocido>())); }), com::error::kTipos);
}

TEST(Conversiones, EnterosRedondeanALaParYVigilanSuRango) {
  EXPECT_EQ(com::CInt(0.5), 0);
  EXPECT_EQ(com::CInt(1.5), 2);
  EXPECT_EQ(com::CInt(2.5), 2);
  EXPECT_EQ(com::CLng(-1.5), -2);
  EXPECT_EQ(com::CLng("2.5"), 2);
  EXPECT_EQ(com::CInt(32767.4), 32767);
  EXPECT_EQ(com::CInt(-32768.5), -32768);
  EXPECT_EQ(ErrorDe([] { com::CInt(32767.5); }), com::error::kDesbordamiento);
  EXPECT_EQ(ErrorDe([] { com::CInt(-32769); }), com::error::kDesbordamiento);
  EXPECT_EQ(com::CLng(2147483647.0), 2147483647);
  EXPECT_EQ(ErrorDe([] { com::CLng(2147483648.0); }), com::error::kDesbordamiento);
}

TEST(Conversiones, Booleanos) {
  for (const char* si : {"true", "VERDADERO", " Verdadero ", "1", "-1", "0.5"}) EXPECT_TRUE(com::CBool(si)) << si;
  for (const char* no : {"False", "falso", "0", "0.0"}) EXPECT_FALSE(com::CBool(no)) << no;
  EXPECT_FALSE(com::CBool(Variant()));
  EXPECT_TRUE(com::CBool(2));
  EXPECT_EQ(ErrorDe([] { com::CBool("si"); }), com::error::kTipos);
  EXPECT_EQ(ErrorDe([] { com::CBool(Variant::Null()); }), com::error::kUsoDeNulo);
}

TEST(Conversiones, Fechas) {
  const Fecha dia = FechaDe(2026, 3, 10);
  EXPECT_EQ(com::CDate("10/03/2026"), dia);
  EXPECT_EQ(com::CDate("2026-03-10"), dia);
  EXPECT_EQ(com::CDate(" 1/2/2026 "), FechaDe(2026, 2, 1));
  EXPECT_EQ(com::CDate("10/03/2026 23:59"), FechaDe(2026, 3, 10, 23, 59));
  EXPECT_EQ(com::CDate("10/03/2026 07:08:09"), FechaDe(2026, 3, 10, 7, 8, 9));
  EXPECT_EQ(com::CDate("2026-03-10T07:08:09"), FechaDe(2026, 3, 10, 7, 8, 9));
  EXPECT_EQ(com::CDate(46091), dia);
  EXPECT_EQ(com::CDate(46091.25), FechaDe(2026, 3, 10, 6));
  EXPECT_EQ(com::CDate(Variant()), FechaDe(1899, 12, 30));
  for (const char* malo : {"", "30/02/2026", "31/04/2026", "29/02/2025", "03/13/2026", "10/03/26", "10/03", "hoy",
                           "10-3", "2026-3-10", "10/03/2026 24:00", "10/03/2026 7:8", "10/03/2026x", "46091"}) {
    EXPECT_EQ(ErrorDe([&] { com::CDate(malo); }), com::error::kTipos) << malo;
  }
  EXPECT_EQ(ErrorDe([] { com::CDate(2958466.0); }), com::error::kDesbordamiento);
  EXPECT_EQ(ErrorDe([] { com::CDate(Variant::Null()); }), com::error::kUsoDeNulo);
}

TEST(Conversiones, Textos) {
  const std::vector<std::pair<Variant, const char*>> casos = {{Variant(), ""},
                                                              {116.0, "116"},
                                                              {104.4, "104.4"},
                                                              {0.1 + 0.2, "0.3"},
                                                              {-0.05, "-0.05"},
                                                              {1234567.5, "1234567.5"},
                                                              {0.0, "0"},
                                                              {-0.0, "0"},
                                                              {123456789012345.0, "123456789012345"},
                                                              {1e15, "1E+15"},
                                                              {1.5e20, "1.5E+20"},
                                                              {1e-20, "1E-20"},
                                                              {0.000001, "0.000001"},
                                                              {7, "7"},
                                                              {FechaDe(2026, 3, 5), "05/03/2026"},
                                                              {FechaDe(2026, 3, 5, 9, 8, 7), "05/03/2026 09:08:07"},
                                                              {true, "Verdadero"}};
  for (const auto& [valor, texto] : casos) EXPECT_EQ(com::CStr(valor), texto);
  EXPECT_EQ(ErrorDe([] { com::CStr(Variant::Null()); }), com::error::kUsoDeNulo);
}

TEST(Conversiones, Difieren) {
  EXPECT_FALSE(com::Difieren(Variant::Null(), "x"));
  EXPECT_FALSE(com::Difieren(1, Variant::Null()));
  EXPECT_FALSE(com::Difieren(1, 1.0));
  EXPECT_FALSE(com::Difieren("1.0", 1));
  EXPECT_TRUE(com::Difieren("1.0", "1"));
  EXPECT_TRUE(com::Difieren("x", 1));
  EXPECT_TRUE(com::Difieren("a", "A"));
  EXPECT_FALSE(com::Difieren(Variant(), 0));
  EXPECT_FALSE(com::Difieren(Variant(), ""));
  EXPECT_FALSE(com::Difieren(FechaDe(2026, 3, 5), "05/03/2026"));
  EXPECT_TRUE(com::Difieren(FechaDe(2026, 3, 5), FechaDe(2026, 3, 5, 1)));
}

TEST(Conversiones, RedondeaMitadesDecimalesALaPar) {
  const std::vector<std::tuple<double, int, double>> casos = {
      {2.675, 2, 2.68}, {1.005, 2, 1.00},  {6.54 * 6, 2, 39.24}, {2.665, 2, 2.66},    {-2.675, 2, -2.68},
      {0.5, 0, 0},      {1.5, 0, 2},       {2.5, 0, 2},          {0.05, 1, 0},        {0.15, 1, 0.2},
      {9.995, 2, 10},   {99.9999, 2, 100}, {0.004, 2, 0},        {0.006, 2, 0.01},    {1234567.125, 2, 1234567.12},
      {14.4, 4, 14.4},  {1e17, 2, 1e17},   {0.0051, 2, 0.01},    {1.0 / 3, 4, 0.3333}};
  for (const auto& [valor, decimales, redondo] : casos) {
    EXPECT_EQ(com::Redondea(valor, decimales), redondo) << valor << " a " << decimales;
  }
  EXPECT_FALSE(std::signbit(com::Redondea(-0.001, 2)));
}

TEST(Conversiones, TextosEnMayusculasYBlancos) {
  EXPECT_EQ(com::Recorta("  a b  "), "a b");
  EXPECT_EQ(com::Recorta("   "), "");
  EXPECT_EQ(com::RecortaDerecha(" 04  "), " 04");
  EXPECT_TRUE(com::IgualSinCaja("Rs_Folio", "RS_FOLIO"));
  for (const char* otro : {"a", "abc", "aé"}) EXPECT_FALSE(com::IgualSinCaja("ab", otro)) << otro;
  // Broken sequences stay as they stand.
  EXPECT_EQ(com::Mayusculas("a\xC3(\xE2\x82"), "A\xC3(\xE2\x82");
}

// Every day from 1600 to 2400, against a calendar counted by hand.
TEST(FechaCivil, CadaDiaIdaYVuelta) {
  constexpr int kDias[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  std::int32_t esperado = FechaDe(1600, 1, 1).dia;
  int semana = 6;  // 01/01/1600 was a Saturday
  for (int anio = 1600; anio <= 2400; ++anio) {
    const bool bisiesto = (anio % 4 == 0 && anio % 100 != 0) || anio % 400 == 0;
    for (int mes = 1; mes <= 12; ++mes) {
      for (int dia = 1; dia <= kDias[mes - 1] + (mes == 2 && bisiesto ? 1 : 0); ++dia) {
        const Fecha f = FechaDe(anio, mes, dia);
        const com::Civil c = com::ACivil(f);
        ASSERT_EQ(f.dia, esperado++);
        ASSERT_TRUE(c.anio == anio && c.mes == mes && c.dia == dia) << com::AIso(f);
        ASSERT_EQ(com::DiaSemana(f), semana);
        semana = semana % 7 + 1;
      }
    }
  }
  EXPECT_EQ(FechaDe(1899, 12, 30).dia, 0);
  EXPECT_EQ(FechaDe(1970, 1, 1).dia, 25569);
}

TEST(FechaCivil, LimitesYFechasCom) {
  EXPECT_EQ(FechaDe(100, 1, 1).dia, -657434);
  EXPECT_EQ(FechaDe(9999, 12, 31).dia, 2958465);
  EXPECT_EQ(ErrorDe([] { FechaDe(99, 12, 31); }), com::error::kTipos);
  EXPECT_EQ(ErrorDe([] { FechaDe(2026, 2, 29); }), com::error::kTipos);
  EXPECT_EQ(ErrorDe([] { FechaDe(2026, 0, 1); }), com::error::kTipos);
  EXPECT_EQ(ErrorDe([] { FechaDe(2026, 1, 1, 0, 60); }), com::error::kTipos);
  // Before the origin the time still counts forward within its day.
  const Fecha antes = FechaDe(1899, 12, 28, 6);
  EXPECT_EQ(com::ADiasCom(antes), -2.25);
  EXPECT_EQ(com::DeDiasCom(-2.25), antes);
  for (const int segundo : {0, 1, 43199, 86399}) {
    const Fecha f{46091, segundo};
    EXPECT_EQ(com::DeDiasCom(com::ADiasCom(f)), f);
  }
  EXPECT_EQ(com::DeDiasCom(46091.9999999), FechaDe(2026, 3, 11));
}

TEST(FechaCivil, Iso) {
  EXPECT_EQ(com::AIso(FechaDe(2026, 3, 5)), "2026-03-05");
  EXPECT_EQ(com::AIso(FechaDe(2026, 3, 5, 0, 0, 1)), "2026-03-05 00:00:01");
  EXPECT_EQ(com::DeIso("2026-03-05 10:20"), FechaDe(2026, 3, 5, 10, 20));
  for (const char* malo : {"2026-02-30", "2026-03-05 ", "2026-03-05 1:00", "2026-03-05 10:20:", "2026-03-05 10:20:30x",
                           "2026/03/05", "026-03-05"}) {
    EXPECT_FALSE(com::DeIso(malo)) << malo;
  }
}

TEST(Cadenas, CadaAsaTieneSuTexto) {
  const std::size_t antes = com::Cadena::EnUso();
  {
    com::Cadena a("Habitación"), b(a), vacia;
    EXPECT_EQ(com::Cadena::EnUso(), antes + 2);
    b = "otra";
    EXPECT_EQ(a.Texto(), "Habitación");
    com::Cadena c(std::move(b));
    EXPECT_EQ(c.Texto(), "otra");
    a = a.Texto();
    EXPECT_EQ(a.Texto(), "Habitación");
    vacia = c;
    c = "";
    EXPECT_EQ(vacia.Texto(), "otra");
    EXPECT_EQ(com::Cadena::EnUso(), antes + 2);
  }
  EXPECT_EQ(com::Cadena::EnUso(), antes);
}

}  // namespace
