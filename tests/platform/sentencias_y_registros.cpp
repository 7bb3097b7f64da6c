#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/ado/ado.h"
#include "platform/ado/celda.h"
#include "platform/com/error.h"
#include "tests/comun/error_de.h"

namespace {

using pruebas::ErrorDe;

using ado::TextoSQL;
using com::Variant;

int Verifica(const TextoSQL& sentencia) {
  try {
    sentencia.Verifica();
  } catch (const com::Error& e) {
    EXPECT_EQ(e.Sentencia(), sentencia.Texto());
    EXPECT_NE(e.Descripcion().find("Comilla sin cerrar"), std::string::npos);
    return e.Numero();
  }
  return 0;
}

TEST(TextoSql, UnValorNuncaSaleDeSuLiteral) {
  struct Caso {
    const char* antes;
    const char* valor;
    const char* despues;
    bool bueno;
  };
  const std::vector<Caso> casos = {
      {"x = '", "0001", "'", true},
      {"x = '", "", "'", true},
      {"x = '", "O''Brien", "'", true},
      {"x = '", "''", "'", true},
      {"x = '", "''''a''", "'", true},
      {"x = '", "--;/*", "'", true},
      {"x = 'folio ", "7", " 23:59'", true},
      {"x = 'it''s ", "7", "'", true},
      {"x = '' + '", "7", "'", true},
      {"x = '", "'", "'", false},
      {"x = '", "O'Brien", "'", false},
      {"x = '", "' OR 1=1 --", "'", false},
      {"x = '", "'''", "'", false},
      {"x = '", "a'", "'", false},
      {"x = '", "' + '", "'", false},
      {"x = '", "a'' OR b''' --", "'", false},
      {"x = ", "7", "", false},
      {"x = '' + ", "7", "", false},
      {"x = 'a''", "''", "'", true},
      {"x = ''", "a", "'", false},
      {"x = ''", " OR 1=1", "", false},
      {"x = ''", "a", "''", false},
      {"x = '", "7", "", false},
      {"x = '", "7", "''", false},
  };
  for (const Caso& c : casos) {
    const TextoSQL sql(std::string(c.antes) + "?" + c.despues, {c.valor});
    EXPECT_EQ(Verifica(sql), c.bueno ? 0 : com::error::kSentencia) << sql.Texto();
  }
}

TEST(TextoSql, LosValoresConservanSuSitioAlUnirTextos) {
  TextoSQL condicion("a = '?'", {"x"});
  TextoSQL sql("SELECT 1 WHERE ? AND b = '?'", {condicion, "O'Brien"});
  EXPECT_EQ(sql.Texto(), "SELECT 1 WHERE a = 'x' AND b = 'O'Brien'");
  ASSERT_EQ(sql.Valores().size(), 2U);
  EXPECT_EQ(sql.Texto().substr(sql.Valores()[0].inicio, 1), "x");
  EXPECT_EQ(sql.Texto().substr(sql.Valores()[1].inicio, sql.Valores()[1].fin - sql.Valores()[1].inicio), "O'Brien");
  EXPECT_EQ(Verifica(sql), com::error::kSentencia);
  sql.Limpia();
  EXPECT_TRUE(sql.Vacio());
  EXPECT_EQ(Verifica(sql), 0);
  condicion.Agrega(condicion);
  EXPECT_EQ(condicion.Texto(), "a = 'x'a = 'x'");
  EXPECT_EQ(Verifica(condicion), 0);
}

TEST(TextoSql, CadaLugarTieneSuParte) {
  EXPECT_EQ(TextoSQL("a = '?' AND b = '?'", {"¿x?", "y"}).Texto(), "a = '¿x?' AND b = 'y'");
  EXPECT_EQ(TextoSQL("a = '¿x?'").Texto(), "a = '¿x?'");
  EXPECT_EQ(ErrorDe([] { TextoSQL("a = '?'", {}); }), com::error::kSentencia);
  EXPECT_EQ(ErrorDe([] { TextoSQL("a = '?'", {"x", "y"}); }), com::error::kSentencia);
}

TEST(TextoSql, UnFragmentoSoloTambienSeRevisa) {
  EXPECT_EQ(Verifica(TextoSQL("SELECT 'a''b', ''")), 0);
  EXPECT_EQ(Verifica(TextoSQL("SELECT 'abierto")), com::error::kSentencia);
}

// Two halves that each break their literal and together close it again.
TEST(TextoSql, DosValoresQueSeCompensan) {
  const TextoSQL sql("UPDATE t SET a = '?' WHERE b = '?'", {"x' --", "' OR 'a'='a"});
  EXPECT_EQ(Verifica(sql), com::error::kSentencia);
}

std::shared_ptr<const ado::Recordset::Columnas> Columnas(std::vector<std::string> nombres) {
  return std::make_shared<const ado::Recordset::Columnas>(std::move(nombres));
}

TEST(Registros, SeLeenHaciaAdelante) {
  ado::Recordset rs(Columnas({"Clave", "Cantidad", "clave"}), {"A", 1, "otra", "B", Variant::Null(), "más"});
  EXPECT_EQ(rs.RecordCount(), 2);
  EXPECT_EQ(com::CStr(rs.Fields("CLAVE").Value()), "A");
  EXPECT_EQ(rs.Fields("cantidad").Name(), "Cantidad");
  rs.MoveNext();
  EXPECT_TRUE(rs.Fields("Cantidad").Value().EsNulo());
  EXPECT_FALSE(rs.Eof());
  rs.MoveNext();
  EXPECT_TRUE(rs.Eof());
  EXPECT_EQ(ErrorDe([&] { rs.Fields("Clave"); }), com::error::kSubindice);
  rs.MoveNext();
  rs.MoveFirst();
  EXPECT_EQ(com::CStr(rs.Fields(0).Value()), "A");
}

TEST(Registros, LoQuePuedeEstarVacio) {
  const com::Fecha momento = com::FechaDe(2026, 3, 9, 10, 30);
  const Variant nada = Variant::Null();
  ado::Recordset rs(Columnas({"Clave", "Cantidad", "Momento"}), {" A  ", 2.6, momento, nada, nada, nada});
  EXPECT_EQ(ado::Celda(rs, 0), " A");
  EXPECT_EQ(ado::CeldaNumero(rs, "cantidad"), 2.6);
  EXPECT_EQ(ado::CeldaEntero(rs, 1), 3);
  EXPECT_EQ(ado::CeldaFecha(rs, 2), momento);
  rs.MoveNext();
  EXPECT_EQ(ado::Celda(rs, "clave"), "");
  EXPECT_EQ(ado::CeldaNumero(rs, 1), 0);
  EXPECT_EQ(ado::CeldaEntero(rs, "Cantidad"), 0);
  EXPECT_EQ(ado::CeldaFecha(rs, "Momento"), com::Fecha{});
}

TEST(Registros, Fallas) {
  ado::Recordset rs(Columnas({"a"}), {1});
  EXPECT_EQ(ErrorDe([&] { rs.Fields("b"); }), com::error::kElemento);
  EXPECT_EQ(ErrorDe([&] { rs.Fields(1); }), com::error::kElemento);
  rs.Close();
  rs.Close();
  EXPECT_EQ(ErrorDe([&] { static_cast<void>(rs.Eof()); }), com::error::kCerrado);
  EXPECT_EQ(ErrorDe([&] { rs.Fields("a"); }), com::error::kCerrado);
  EXPECT_EQ(ErrorDe([&] { rs.MoveFirst(); }), com::error::kCerrado);
  ado::Recordset vacio(Columnas({}), {});
  EXPECT_TRUE(vacio.Eof());
  EXPECT_EQ(vacio.RecordCount(), 0);
  EXPECT_EQ(ErrorDe([&] { ado::Recordset(Columnas({"a", "b"}), {1}); }), com::error::kArgumento);
}

}  // namespace
