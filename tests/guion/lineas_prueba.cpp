#include "guion/lineas.h"

#include <gtest/gtest.h>

#include "guion/json.h"
#include "guion/respuestas.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"

namespace {

using guion::DivideLinea;
using guion::Json;
using Palabras = std::vector<std::string>;

TEST(Lineas, SeDividenEnBlancosYComillas) {
  EXPECT_EQ(DivideLinea("  campo \t txtCliente  24 \r").palabras, (Palabras{"campo", "txtCliente", "24"}));
  EXPECT_EQ(DivideLinea("texto txtNotas \"dos \\\"tres\\\" \\\\ y\\nfin\" # nota").palabras,
            (Palabras{"texto", "txtNotas", "dos \"tres\" \\ y\nfin"}));
  EXPECT_EQ(DivideLinea("texto txtNotas \"\"").palabras, (Palabras{"texto", "txtNotas", ""}));
  EXPECT_EQ(DivideLinea("texto x a#b").palabras, (Palabras{"texto", "x", "a#b"}));
  EXPECT_TRUE(DivideLinea("   # sólo un comentario").palabras.empty());
  EXPECT_EQ(DivideLinea("  abre   # y un comentario").texto, "abre");
}

TEST(Lineas, UnaSentenciaSqlVaEnteraConOSinComillas) {
  const std::string sentencia = "SELECT 'a  # b' AS \"x\", 2";
  EXPECT_EQ(DivideLinea("sql " + sentencia + "  # fin").palabras, (Palabras{"sql", sentencia}));
  EXPECT_EQ(DivideLinea("sql \"SELECT 1 # 2\"").palabras, (Palabras{"sql", "SELECT 1 # 2"}));
  EXPECT_EQ(DivideLinea("muestra sql sql").palabras, (Palabras{"muestra", "sql", "sql"}));
}

TEST(Lineas, LasComillasMalPuestasSeRechazan) {
  for (const char* linea : {"texto x \"abierta", "texto x \"a\"b", R"(texto x "a\t")", R"(texto x "a\)"}) {
    EXPECT_THROW(DivideLinea(linea), com::Error) << linea;
  }
}

TEST(Lineas, SoloPasaElUtf8BienFormado) {
  for (const char* bueno : {"", "ñandú", "日本", "\xF0\x9F\x98\x80"}) EXPECT_TRUE(guion::EsUtf8(bueno)) << bueno;
  // A lone continuation, overlong forms, a surrogate, past the last code point, cut off.
  for (const char* malo :
       {"caf\xE9", "\x80", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"}) {
    EXPECT_FALSE(guion::EsUtf8(malo));
    EXPECT_TRUE(guion::EsUtf8(guion::Utf8Saneado(malo)));
  }
  const std::u32string codigos = guion::CodigosDe("aé€😀");
  EXPECT_EQ(codigos, U"aé€😀");
  std::string vuelta;
  for (const char32_t c : codigos) com::AgregaUtf8(vuelta, c);
  EXPECT_EQ(vuelta, "aé€😀");
}

TEST(JsonTexto, EscribeCadaValorEnUnaLinea) {
  EXPECT_EQ(Json("a\"\\\n\x01 ñ").Texto(), R"("a\"\\\n\u0001 ñ")");
  EXPECT_EQ(Json("\xE9").Texto(), "\"\xEF\xBF\xBD\"");
  EXPECT_EQ(Json(0.1).Texto(), "0.1");
  EXPECT_EQ(Json(3750.0).Texto(), "3750");
  EXPECT_EQ(Json(-0.0).Texto(), "0");
  EXPECT_EQ(Json(1.0 / 0.0).Texto(), "null");
  EXPECT_EQ(Json(com::FechaDe(2026, 3, 9)).Texto(), "\"2026-03-09\"");
  EXPECT_EQ(Json(com::Variant::Null()).Texto(), "null");
  EXPECT_EQ(Json(com::Variant(com::FechaDe(2026, 3, 9, 10, 5))).Texto(), "\"2026-03-09 10:05:00\"");
  EXPECT_EQ(Json::Objeto().Pon("b", true).Pon("a", Json::Arreglo({1, "x", Json()})).Texto(),
            R"({"b":true,"a":[1,"x",null]})");
}

TEST(Respuestas, SeUsanUnaVezYSoloSiLaCajaTieneElBoton) {
  guion::Respuestas respuestas;
  controles::CajaMensaje caja;
  caja.estilo = 292;
  caja.id = "ERR-ID:7500051";
  respuestas.Prepara("7500051", controles::kSi);
  EXPECT_EQ(respuestas.Decide(caja), controles::kSi);
  EXPECT_EQ(respuestas.Decide(caja), controles::kNo);
  EXPECT_FALSE(respuestas.TomaQueja());
  respuestas.Prepara("ERR-ID:7500051", controles::kAceptar);
  EXPECT_EQ(respuestas.Decide(caja), controles::kNo);
  EXPECT_TRUE(respuestas.TomaQueja());
  EXPECT_THROW(respuestas.Prepara("7500044", controles::kSi), com::Error);
  EXPECT_THROW(respuestas.Prepara("7500051", 3), com::Error);
}

}  // namespace
