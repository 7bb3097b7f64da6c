// The connection on the real schema: statements of both screens, values, literals, errors, transactions.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "availability/sentencias.h"
#include "host/standalone/traductor.h"
#include "reservation/sentencias.h"
#include "tests/host/base_prueba.h"

namespace {

using namespace com::error;
using pruebas::BasePrueba;
using pruebas::ErrorDe;
using pruebas::Uno;

class ConexionPrueba : public pruebas::EnCadaMotor {
 protected:
  std::shared_ptr<autonomo::Conexion> c = Abre();
};
EN_CADA_MOTOR(ConexionPrueba);

class ConexionSqlitePrueba : public BasePrueba {
 protected:
  std::shared_ptr<autonomo::Conexion> c = Abre();
};

// Every statement of both screens, with keys and dates of the demo hotel.
std::vector<ado::TextoSQL> SentenciasDePantalla() {
  using namespace kv207;
  namespace s = kv207::sentencias;
  const std::string folio = "0000000001", cuarto = "0101", dia = "2026-03-10", ahora = "2026-03-09 10:30:00";
  std::vector<ado::TextoSQL> todas;
  const auto agrega = [&](const auto& arma) { arma(todas.emplace_back()); };
  agrega([&](auto& q) { ArmaCargaReservacion(q, folio); });
  agrega([&](auto& q) { ArmaEncabezadoAntes(q, folio); });
  agrega([&](auto& q) { ArmaEncabezadoDespues(q, folio); });
  agrega([&](auto& q) { ArmaDetalleImagen(q, folio); });
  agrega([&](auto& q) { ArmaConfirmacion(q, "ANA", ahora, folio); });
  agrega([&](auto& q) { ArmaCancelacion(q, "ANA", ahora, folio); });
  agrega([&](auto& q) { ArmaReactivacion(q, "ANA", ahora, folio); });
  agrega([&](auto& q) { ArmaTarjetaReservacion(q, folio); });
  agrega([&](auto& q) { ArmaTarjetaCliente(q, "0000000001"); });
  agrega([&](auto& q) { ArmaProductoDeHabitacion(q, cuarto); });
  agrega([&](auto& q) { ArmaBuscaHabitacion(q, cuarto); });
  agrega([&](auto& q) { ArmaBuscaProducto(q, cuarto); });
  agrega([&](auto& q) { ArmaLimitePersonas(q, cuarto); });
  agrega([&](auto& q) { ArmaBorraTarjeta(q, folio); });
  agrega([&](auto& q) { ArmaInsertaTarjeta(q, folio, "Banco", "4111", "123", dia); });
  agrega([&](auto& q) { ArmaActualizaTarjetaCliente(q, "0000000001", "Banco", "4111", "123", dia); });
  agrega([&](auto& q) { ArmaBloqueo(q, cuarto, dia); });
  agrega([&](auto& q) { ArmaOcupacion(q, cuarto, dia); });
  agrega([&](auto& q) { ArmaOtraReservacion(q, cuarto, dia, folio); });
  agrega([&](auto& q) { ArmaOtraReservacion(q, cuarto, dia, ""); });
  for (const auto modo : {ModoVista::PorTipo, ModoVista::PorHabitacion}) {
    const s::Criterio criterio{modo, s::Condicion(modo, {"01", "01", "0001"}), folio};
    agrega([&](auto& q) { s::ArmaTotales(q, modo); });
    agrega([&](auto& q) { s::ArmaFilas(q, modo, criterio.condicion); });
    agrega([&](auto& q) { s::ArmaReservaciones(q, criterio, cuarto, dia); });
    agrega([&](auto& q) { s::ArmaEstancias(q, criterio, cuarto, dia); });
    agrega([&](auto& q) { s::ArmaBloqueos(q, criterio, cuarto, dia); });
    agrega([&](auto& q) { s::ArmaReservacionesDelRango(q, criterio, dia, dia); });
    agrega([&](auto& q) { s::ArmaEstanciasDelRango(q, criterio, dia, dia); });
    agrega([&](auto& q) { s::ArmaBloqueosDelRango(q, criterio, dia, dia); });
  }
  return todas;
}

TEST_P(ConexionPrueba, CorrenLasSentenciasDeLasPantallas) {
  for (const auto& s : esquema::HotelDemo("2026-03-09")) c->Execute(s);
  // One that can be confirmed, then cancelled, then reactivated.
  c->Directa("UPDATE Reservacion SET Es_Cve_Estado = 'AC' WHERE Rs_Folio = '0000000001'");
  for (const auto& s : SentenciasDePantalla()) {
    EXPECT_NO_THROW(c->Execute(s)) << s.Texto();
    for (const auto motor : {esquema::Motor::PostgreSQL, esquema::Motor::SqlServer})
      EXPECT_NO_THROW(autonomo::Traduce(s.Texto(), motor)) << s.Texto();
    // Only what the engine spells or orders differently changes.
    const auto dice = [&](const char* que) { return s.Texto().find(que) != std::string::npos; };
    const bool cambia = dice("+") || dice("ISNULL") || dice("INNER JOIN Check_In_Detalle");
    const std::string traducida = autonomo::Traduce(s.Texto(), esquema::Motor::Sqlite).texto;
    EXPECT_EQ(traducida == s.Texto(), !cambia) << traducida;
  }
}

TEST_F(ConexionSqlitePrueba, ElDetalleSeBuscaPorSuIndiceEnCadaCuenta) {
  for (const auto& s : SentenciasDePantalla()) {
    if (s.Texto().find("COUNT(") == std::string::npos || s.Texto().find("BETWEEN") == std::string::npos) continue;
    std::string plan;
    for (auto r = c->Directa("EXPLAIN QUERY PLAN " + s.Texto()); !r->Eof(); r->MoveNext())
      plan += com::CStr(r->Fields("detail").Value()) + "\n";
    EXPECT_EQ(plan.find("SCAN"), std::string::npos) << s.Texto() << "\n" << plan;
  }
}

// --- SQL Server

// A run of literals at a quote of the source, which is left behind it.
std::string Literales(const std::string& fuente, std::size_t& i) {
  std::string texto;
  while (i < fuente.size() && fuente[i] == '"') {
    for (++i; i < fuente.size() && fuente[i] != '"'; ++i) {
      if (fuente[i] == '\\') ++i;
      texto += fuente[i];
    }
    i = std::min(fuente.find_first_not_of(" \n", i + 1), fuente.size());
  }
  return texto;
}

// The host's own statements as they stand in the sources: runs of literals that begin like one and are not put together
// with something else.
std::vector<std::string> SentenciasDelAnfitrion() {
  std::vector<std::string> todas;
  for (const char* carpeta : {"host/standalone", "guion", "desktop"}) {
    for (const auto& entrada : std::filesystem::directory_iterator(std::string(RAIZ "/") + carpeta)) {
      const std::string nombre = entrada.path().filename();
      if (entrada.path().extension() != ".cpp" || nombre.starts_with("postgres") || nombre == "integridad.cpp")
        continue;
      std::ifstream archivo(entrada.path());
      const std::string fuente{std::istreambuf_iterator<char>(archivo), {}};
      for (std::size_t i = fuente.find('"'); i < fuente.size(); i = fuente.find('"', i)) {
        const std::size_t antes = fuente.find_last_not_of(" \n", i - 1);
        const std::string texto = Literales(fuente, i);
        const bool sentencia = std::ranges::any_of(std::vector{"SELECT ", "INSERT ", "UPDATE ", "DELETE "},
                                                   [&](const char* s) { return texto.starts_with(s); });
        const bool entera = fuente[antes] != '+' && i < fuente.size() && fuente[i] != '+' && !texto.ends_with("SET");
        if (sentencia && entera) todas.push_back(texto);
      }
    }
  }
  return todas;
}

// Each statement's text for it is read by a parser that is not ours.
TEST_F(BasePrueba, LoQueIriaASqlServerLoLeeOtro) {
  std::vector<std::string> todas = SentenciasDelAnfitrion();
  EXPECT_GT(todas.size(), 80U);
  for (const auto& s : SentenciasDePantalla()) todas.push_back(s.Texto());
  const std::string archivo = (carpeta / "sentencias").string();
  std::ofstream salida(archivo);
  for (const auto& s : todas)
    salida << autonomo::Traduce(s, esquema::Motor::SqlServer, {.admitePreguntas = true}).texto << '\n';
  salida.close();
  const std::string orden = "/usr/bin/python3 " RAIZ "/tests/host/sqlserver.py " + archivo + " 2>&1";
  // NOLINTNEXTLINE(cert-env33-c): the order is ours, whole
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> lector(popen(orden.c_str(), "r"), pclose);
  std::string dice;
  for (int c = std::fgetc(lector.get()); c != EOF; c = std::fgetc(lector.get())) dice += static_cast<char>(c);
  EXPECT_EQ(dice, std::to_string(todas.size()) + "\n");
}

// --- values

TEST_P(ConexionPrueba, LosValoresLleganConSuTipo) {
  c->Execute(
      "INSERT INTO Reservacion (Rs_Folio, Rs_Fecha, Rs_Llegada, Rs_Salida, Rs_Tipo_Cambio, Fecha_Baja) "
      "VALUES ('1', '2026-03-10', '2026-03-11 15:00', '2026-03-12 00:00:00', 17, NULL)");
  const auto r = c->Execute(
      "SELECT Rs_Fecha, rs_llegada, Rs_Salida, Rs_Tipo_Cambio, Fecha_Baja, Rs_Llegada AS Entra, "
      "ISNULL(Fecha_Baja,GETDATE()) as Vence, LEN(Rs_Folio) AS N, Rs_Notas, Es_Cve_Estado, 3000000000 AS Grande "
      "FROM Reservacion");
  const com::Fecha dia = com::FechaDe(2026, 3, 10), tarde = com::FechaDe(2026, 3, 11, 15);
  EXPECT_EQ(r->Fields("Rs_Fecha").Value(), com::Variant(dia));
  EXPECT_EQ(r->Fields("Rs_Llegada").Value(), com::Variant(tarde));
  EXPECT_EQ(r->Fields("Rs_Salida").Value(), com::Variant(com::FechaDe(2026, 3, 12)));
  EXPECT_EQ(r->Fields("Rs_Tipo_Cambio").Value(), com::Variant(17.0));
  EXPECT_TRUE(r->Fields("Fecha_Baja").Value().EsNulo());
  EXPECT_EQ(r->Fields("Entra").Value(), com::Variant(tarde));
  EXPECT_EQ(r->Fields("Vence").Value(), com::Variant(com::FechaDe(2026, 3, 9, 10, 30, 15)));
  EXPECT_EQ(r->Fields("N").Value(), com::Variant(1));
  EXPECT_EQ(r->Fields("Rs_Notas").Value(), com::Variant(""));
  EXPECT_EQ(r->Fields("Es_Cve_Estado").Value(), com::Variant("AC"));
  EXPECT_EQ(r->Fields("Grande").Value(), com::Variant(3e9));
}

TEST_P(ConexionPrueba, LosParametrosSeLigan) {
  const std::string insert =
      "INSERT INTO Reservacion (Rs_Folio, Rs_Fecha, Fecha_Baja, Rs_Tipo_Cambio, Rs_Notas) VALUES (?, ?, ?, ?, 'a?')";
  c->Consulta(insert, {"it's", com::FechaDe(2026, 3, 10, 8), com::Variant::Null(), 17.5});
  const auto r = c->Consulta(
      "SELECT Rs_Folio, Rs_Fecha, Rs_Notas FROM Reservacion WHERE Rs_Folio = ? AND Rs_Tipo_Cambio > ?", {"IT'S ", 17});
  ASSERT_FALSE(r->Eof());
  EXPECT_EQ(r->Fields(1).Value(), com::Variant(com::FechaDe(2026, 3, 10, 8)));
  EXPECT_EQ(r->Fields(2).Value(), com::Variant("a?"));
  // Nothing of a refused run stays bound.
  const std::string baja = "UPDATE Reservacion SET Fecha_Baja = ? WHERE Rs_Folio <> ?";
  EXPECT_EQ(ErrorDe([&] { c->Consulta(baja, {com::FechaDe(2026, 3, 11)}); }).Numero(), kSentencia);
  c->Consulta(baja, {com::Variant::Null(), ""});
  EXPECT_TRUE(c->Consulta("SELECT Fecha_Baja FROM Reservacion")->Fields(0).Value().EsNulo());
  EXPECT_EQ(ErrorDe([&] { c->Consulta(insert, {"2"}); }).Numero(), kSentencia);
  EXPECT_EQ(ErrorDe([&] { c->Consulta(insert, {"2", 1, 1, 1, 1}); }).Numero(), kSentencia);
  EXPECT_EQ(Uno(*c, "SELECT COUNT(*) FROM Reservacion"), "1");
}

TEST_P(ConexionPrueba, LosTextosComparanComoEnElServidor) {
  c->Execute("INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1) VALUES ('a1', 'Álvaro Núñez ')");
  for (const char* condicion :
       {"Cl_Razon_Social_1 = 'ÁLVARO NÚÑEZ'", "Cl_Cve_Cliente IN ('A1  ')",
        "ISNULL(Cl_Razon_Social_1,'') = 'álvaro núñez'", "LOWER(Cl_Razon_Social_1) = 'Álvaro NÚÑEZ'",
        "Cl_Razon_Social_1 LIKE '%núñ%'", "LEN(Cl_Razon_Social_1) = 12", "Cl_Razon_Social_1 <> 'Alvaro Nunez'",
        "UPPER(Cl_Correo + 'é') = 'É'"})
    EXPECT_EQ(c->Execute(std::string("SELECT 1 FROM Cliente WHERE ") + condicion)->RecordCount(), 1) << condicion;
  EXPECT_EQ(ErrorDe([&] { c->Execute("INSERT INTO Cliente (Cl_Cve_Cliente) VALUES ('A1 ')"); }).Numero(), kRestriccion);
}

// The server's LIKE, sets and all: each text that a pattern takes, whether the pattern is a literal, a value or a
// column.
TEST_P(ConexionPrueba, LikeTomaLosMismosTextosEnCadaMotor) {
  const std::vector<std::string> textos{"",        "Muñoz",  "MUNOZ",   "nube", "Ñandú", "oca",   "Ángel",
                                        "Hotel 5", "a]b",    "a-b",     "a^b",  "[x]",   "100%",  "a_b",
                                        "c:\\d",   "día\nb", "(x|y).*", "b  ",  "Šimek", "日本 5"};
  for (std::size_t i = 0; i < textos.size(); ++i)
    c->Consulta("INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1) VALUES (?, ?)",
                {std::to_string(100 + i), textos[i]});
  const std::vector<std::pair<std::string, std::string>> casos{
      {"%", "Muñoz,MUNOZ,nube,Ñandú,oca,Ángel,Hotel 5,a]b,a-b,a^b,[x],100%,a_b,c:\\d,día\nb,(x|y).*,b  ,Šimek,日本 5,"},
      {"[m-n]u%", "Muñoz,MUNOZ,nube,"},
      {"mu[ñ]oz", "Muñoz,"},
      {"mu[n-o]oz", "Muñoz,MUNOZ,"},
      {"[^a-n]%", "Ñandú,oca,[x],100%,(x|y).*,Šimek,日本 5,"},
      {"[ñ-o]%", "Ñandú,oca,"},
      {"[a]%", "a]b,a-b,a^b,a_b,"},
      {"[á]%", "Ángel,"},
      {"[A-C]%", "Ángel,a]b,a-b,a^b,a_b,c:\\d,b  ,"},
      {"%[0-9]", "Hotel 5,日本 5,"},
      {"%[^0-9]", "Muñoz,MUNOZ,nube,Ñandú,oca,Ángel,a]b,a-b,a^b,[x],100%,a_b,c:\\d,día\nb,(x|y).*,b  ,Šimek,"},
      {"a[]]b", "a]b,"},
      {"a[-^]b", "a-b,a^b,"},
      {"a[^^]b", "a]b,a-b,a_b,"},
      {"a[_]b", "a_b,"},
      {"a_b", "a]b,a-b,a^b,a_b,"},
      {"100[%]", "100%,"},
      {"[[]x]", "[x],"},
      {"c:\\[d]", "c:\\d,"},
      {"[c]:\\_", "c:\\d,"},
      {"día_[b]", "día\nb,"},
      {"[(]x|y).*", "(x|y).*,"},
      {"(x|y).[*]", "(x|y).*,"},
      {"[b]", ""},
      {"[b] _", "b  ,"},
      {"[a", ""},
      {"%[x", ""},
      {"%[]", ""},
      {"[z-a]%", ""},
      {"[本-日]%", ""},
      {"[š]%", "Šimek,"},
  };
  const auto toma = [&](const ado::RecordsetPtr& r) {
    std::string tomados;
    for (; !r->Eof(); r->MoveNext())
      if (const auto t = com::TextoDe(r->Fields(0).Value()); !t.empty()) tomados += t + ",";
    return tomados;
  };
  const std::string lee = "SELECT Cl_Razon_Social_1 FROM Cliente WHERE Cl_Razon_Social_1 ";
  for (const auto& [patron, tomados] : casos) {
    EXPECT_EQ(toma(c->Execute(lee + "LIKE '" + patron + "' ORDER BY Cl_Cve_Cliente")), tomados) << patron;
    EXPECT_EQ(toma(c->Consulta(lee + "LIKE ? + '' ORDER BY Cl_Cve_Cliente", {patron})), tomados) << patron;
    const int todos = static_cast<int>(textos.size());
    EXPECT_EQ(c->Execute(lee + "NOT LIKE '" + patron + "'")->RecordCount(),
              todos - c->Execute(lee + "LIKE '" + patron + "'")->RecordCount())
        << patron;
  }
  c->Execute("UPDATE Cliente SET Cl_Correo = '[m-n]u%'");
  EXPECT_EQ(toma(c->Execute(lee + "LIKE Cl_Correo ORDER BY Cl_Cve_Cliente")), "Muñoz,MUNOZ,nube,");
}

// --- literals

TEST_P(ConexionPrueba, CualquierLiteralLlegaComoEs) {
  const std::vector<std::string> textos{"",         "O'Hara",   "''",
                                        "'",        "?",        "a;DROP TABLE Cliente",
                                        "-- x",     "/*",       "GETDATE()",
                                        "100% [x]", "\x01\x02", "línea\r\notra",
                                        "日本 🏨",   "\\'",      std::string(100000, 'x')};
  for (std::size_t i = 0; i < textos.size(); ++i) {
    std::string doble;
    for (const char x : textos[i]) doble.append(x == '\'' ? 2 : 1, x);
    c->Execute("INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES ('" + std::to_string(i) + "','" + doble + "')");
    const auto r = c->Execute("SELECT Pm_Valor FROM Parametro WHERE Pm_Clave = '" + std::to_string(i) +
                              "' AND Pm_Valor='" + doble + "'");
    ASSERT_EQ(r->RecordCount(), 1) << textos[i];
    EXPECT_EQ(r->Fields(0).Value(), com::Variant(textos[i]));
  }
  // One engine keeps a character zero, the other refuses it; neither stores half the text.
  std::string insert = "INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES ('cero','a?b')";
  insert[insert.find('?')] = '\0';
  const bool guarda = GetParam() == esquema::Motor::Sqlite;
  EXPECT_EQ(ErrorDe([&] { c->Execute(insert); }).Numero(), guarda ? 0 : kTipos);
  EXPECT_EQ(c->Execute("SELECT Pm_Valor FROM Parametro WHERE Pm_Clave = 'cero'")->RecordCount(), guarda ? 1 : 0);
}

// The mark of a literal in a template is no way to a statement without one.
TEST_P(ConexionPrueba, UnaSentenciaConMarcasNoSeHacePasarPorPlantilla) {
  c->Execute("SELECT 1 FROM Cliente WHERE Cl_Correo = 'a'");
  for (const char* s : {"SELECT 1 FROM Cliente WHERE Cl_Correo = \x01", "SELECT 1 FROM Cliente WHERE Cl_Correo = \x02",
                        "SELECT 1 FROM Cliente WHERE Cl_Correo = ?"})
    EXPECT_EQ(ErrorDe([&] { c->Execute(s); }).Numero(), kSentencia) << s;
}

TEST_P(ConexionPrueba, UnaComillaEnUnaClaveNuncaSeEjecuta) {
  c->Execute("INSERT INTO Cliente (Cl_Cve_Cliente) VALUES ('1')");
  for (const char* clave : {"x' OR '1'='1", "x'; DELETE FROM Cliente --", "'", "x' OR Cl_Cve_Cliente <> '"}) {
    const ado::TextoSQL s("DELETE FROM Cliente WHERE Cl_Cve_Cliente = '?'", {clave});
    const auto e = ErrorDe([&] { c->Execute(s); });
    EXPECT_EQ(e.Numero(), kSentencia) << clave;
    EXPECT_EQ(e.Sentencia(), s.Texto());
  }
  EXPECT_EQ(Uno(*c, "SELECT COUNT(*) FROM Cliente"), "1");
}

// More templates than are kept: those that left come back as they were.
TEST_P(ConexionPrueba, LasPlantillasQueSalenVuelven) {
  for (int vuelta = 0; vuelta < 2; ++vuelta)
    for (int i = 0; i < 600; ++i) {
      const std::string n = std::to_string(i);
      EXPECT_EQ(c->Execute("SELECT " + n + " AS C" + n + ", 'v" + n + "' AS T")->Fields("C" + n).Value(),
                com::Variant(i));
    }
}

TEST_P(ConexionPrueba, UnaTablaQueCambiaSeLeeConSusColumnas) {
  const auto antes = c->Execute("SELECT * FROM Moneda")->Nombres().size();
  c->Directa("ALTER TABLE Moneda ADD COLUMN Mn_Simbolo TEXT DEFAULT '$'");
  c->Execute("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('MXN')");
  const auto r = c->Execute("SELECT * FROM Moneda");
  EXPECT_EQ(r->Nombres().size(), antes + 1);
  EXPECT_EQ(r->Fields("Mn_Simbolo").Value(), com::Variant("$"));
}

// --- errors

TEST_P(ConexionPrueba, LosErroresDicenQuePasoYLlevanLaSentencia) {
  struct Caso {
    const char* sentencia;
    int numero;
    const char* descripcion;
  };
  for (const auto& [sentencia, numero, descripcion] : std::vector<Caso>{
           {"SELECT 1 FROM Nada", kBaseDatos, "No existe la tabla Nada"},
           {"SELECT Nada FROM Cliente", kBaseDatos, "No existe la columna Nada"},
           {"SELECT Rs_Folio FROM Reservacion, Reservacion_Detalle", kBaseDatos, "Columna ambigua: Rs_Folio"},
           {"INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('USD')", kRestriccion,
            "Ya existe un registro con la misma clave: Moneda.Mn_Cve_Moneda"},
           {"INSERT INTO Moneda (Mn_Descripcion) VALUES ('x')", kRestriccion,
            "Falta un valor obligatorio: Moneda.Mn_Cve_Moneda"},
           {"SELECT OBJECT_ID('x')", kSentencia, "Línea 1, columna 8: no se admite la función OBJECT_ID"},
       }) {
    c->Execute("DELETE FROM Moneda");
    c->Execute("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('USD')");
    const auto e = ErrorDe([&, sentencia = sentencia] { c->Execute(sentencia); });
    EXPECT_EQ(e.Numero(), numero) << sentencia;
    EXPECT_EQ(e.Descripcion(), descripcion);
    EXPECT_EQ(e.Sentencia(), sentencia);
  }
}

TEST_P(ConexionPrueba, LaSentenciaDelProbadorSeTraduceOCorreComoEs) {
  c->Directa("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('MXN')");
  EXPECT_EQ(com::CDate(c->Directa("SELECT GETDATE() AS Hoy")->Fields("Hoy").Value()),
            com::FechaDe(2026, 3, 9, 10, 30, 15));
  EXPECT_EQ(Uno(*c, "SELECT Mn_Cve_Moneda FROM Moneda LIMIT 1"), "MXN");
  EXPECT_EQ(ErrorDe([&] { c->Directa("DELETE FROM Moneda; DELETE FROM Cliente"); }).Numero(), kSentencia);
  EXPECT_EQ(Uno(*c, "SELECT COUNT(*) FROM Moneda"), "1");
}

// --- transactions

TEST_P(ConexionPrueba, LasTransaccionesNoSeAnidanYDeshacen) {
  EXPECT_EQ(ErrorDe([&] { c->CommitTrans(); }).Numero(), kTransaccion);
  EXPECT_EQ(ErrorDe([&] { c->RollbackTrans(); }).Numero(), kTransaccion);
  c->BeginTrans();
  EXPECT_TRUE(c->EnTransaccion());
  EXPECT_EQ(ErrorDe([&] { c->BeginTrans(); }).Numero(), kTransaccion);
  c->Execute("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('MXN')");
  // A failed statement is undone alone; the transaction goes on.
  EXPECT_EQ(
      ErrorDe([&] { c->Execute("INSERT INTO Moneda (Mn_Cve_Moneda) SELECT 'USD' UNION ALL SELECT 'mxn'"); }).Numero(),
      kRestriccion);
  EXPECT_EQ(Uno(*c, "SELECT COUNT(*) FROM Moneda"), "1");
  c->RollbackTrans();
  EXPECT_FALSE(c->EnTransaccion());
  EXPECT_EQ(Uno(*c, "SELECT COUNT(*) FROM Moneda"), "0");
}

TEST_F(ConexionSqlitePrueba, TrasUnDiscoLlenoNadaQuedaAMedias) {
  const auto archivo = Abre();
  const int paginas = com::CLng(archivo->Directa("PRAGMA page_count")->Fields(0).Value());
  archivo->Directa("PRAGMA max_page_count=" + std::to_string(paginas + 5));
  archivo->BeginTrans();
  archivo->Execute("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('MXN')");
  const auto e = ErrorDe([&] {
    archivo->Execute("INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES ('x','" + std::string(100000, 'x') + "')");
  });
  EXPECT_EQ(e.Numero(), kLlena);
  EXPECT_EQ(e.Descripcion(), "No hay espacio en el disco para la base de datos");
  // The engine has undone the transaction: what comes later must not be stored on its own.
  EXPECT_EQ(ErrorDe([&] { archivo->Execute("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('USD')"); }).Numero(),
            kTransaccion);
  EXPECT_EQ(ErrorDe([&] { archivo->CommitTrans(); }).Numero(), kTransaccion);
  archivo->RollbackTrans();
  EXPECT_EQ(Uno(*archivo, "SELECT COUNT(*) FROM Moneda"), "0");
  archivo->Execute("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('USD')");
  EXPECT_EQ(Uno(*Abre(), "SELECT COUNT(*) FROM Moneda"), "1");
}

}  // namespace
