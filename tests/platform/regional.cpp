#include "platform/regional/regional.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/controls/metrica.h"

namespace {

using com::FechaDe;
using com::Variant;

TEST(Regional, Moneda) {
  const std::vector<std::pair<double, const char*>> casos = {
      {1234.5, "$1,234.50"},      {-1234.5, "-$1,234.50"}, {0, "$0.00"},     {-0.001, "$0.00"},
      {1000000, "$1,000,000.00"}, {999.995, "$1,000.00"},  {2.665, "$2.66"}, {2.675, "$2.68"}};
  for (const auto& [importe, texto] : casos) EXPECT_EQ(regional::Moneda(importe), texto);
  EXPECT_EQ(regional::Moneda(1234.5, 0), "$1,234");
  EXPECT_EQ(regional::Moneda(0.123456789, 9), "$0.123456789");
}

TEST(Regional, FormatosDelGrid) {
  struct Caso {
    Variant valor;
    const char* formato;
    const char* texto;
  };
  const std::vector<Caso> casos = {{1234.5, "$#,##0.0000#####", "$1,234.5000"},
                                   {1234.123456789, "$#,##0.0000#####", "$1,234.123456789"},
                                   {-0.5, "$#,##0.00#######", "-$0.50"},
                                   {10, "#,##0.00#######", "10.00"},
                                   {33.3333333, "#,##0.00#######", "33.3333333"},
                                   {1234.5, "#########0.00#######", "1234.50"},
                                   {0.16, "#,##0.00#######%", "16.00%"},
                                   {"0.16", "#,##0.00#######%", "16.00%"},
                                   {"dato", "#,##0.00#######%", "dato"},
                                   {7, "0000", "0007"},
                                   {116.0, "", "116"},
                                   {Variant(), "#,##0.00", ""},
                                   {Variant::Null(), "", ""},
                                   {FechaDe(2026, 3, 5), "", "05/03/2026"}};
  for (const auto& c : casos) EXPECT_EQ(regional::ConFormato(c.valor, c.formato), c.texto) << c.formato;
}

TEST(Regional, LaMascaraSoloRellenaNumeros) {
  EXPECT_EQ(regional::ConMascara("12", "0000"), "0012");
  EXPECT_EQ(regional::ConMascara("12345", "0000"), "12345");
  for (const char* igual : {"", "A1", "-1", "1.5", " 1", "%"}) EXPECT_EQ(regional::ConMascara(igual, "0000"), igual);
  EXPECT_EQ(regional::ConMascara("12", ""), "12");
}

TEST(Regional, OtrosAjustesValenTambienAlLeer) {
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): what it is a copy of changes below
  const regional::Ajustes antes = regional::Actual();
  regional::Fija({.simboloMoneda = "€", .separadorMiles = '.', .separadorDecimal = ',', .separadorFecha = '-'});
  EXPECT_EQ(regional::Moneda(1234.5), "€1.234,50");
  EXPECT_EQ(com::CDbl("€1.234,50"), 1234.5);
  EXPECT_EQ(com::CStr(FechaDe(2026, 3, 5)), "05-03-2026");
  EXPECT_EQ(com::CDate("05-03-2026"), FechaDe(2026, 3, 5));
  regional::Fija(antes);
}

TEST(Metrica, AnchosFijosYAcentosComoSuBase) {
  EXPECT_EQ(controles::AnchoTextoEstandar(""), 0);
  EXPECT_EQ(controles::AnchoTextoEstandar("Habitación"), controles::AnchoTextoEstandar("Habitacion"));
  EXPECT_EQ(controles::AnchoTextoEstandar("Ñandú"), controles::AnchoTextoEstandar("Nandu"));
  EXPECT_GT(controles::AnchoTextoEstandar("WWW"), controles::AnchoTextoEstandar("iii"));
  // A name of a board row: about as wide as it is on paper at 8.25 points.
  const int ancho = controles::AnchoTextoEstandar("SENCILLA / 0101");
  EXPECT_GT(ancho, 1000);
  EXPECT_LT(ancho, 1600);
}

}  // namespace
