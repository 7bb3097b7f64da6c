// The translator: all targets side by side, text that stays as it is, and what is refused with its place.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/standalone/traductor.h"
#include "platform/com/error.h"

namespace {

using autonomo::Origen;
using autonomo::Traduce;
using esquema::Motor;

struct Caso {
  const char *original, *sqlite, *postgres, *sqlServer;
};

const std::vector<Caso> kCasos{
    {"SELECT Rdt_Banco as Banco,  ISNULL(Rdt_Vencimiento,GETDATE()) as Vencimiento FROM Reservacion_Datos_Tarjeta",
     "SELECT Rdt_Banco as Banco,  IFNULL(Rdt_Vencimiento,?) as Vencimiento FROM Reservacion_Datos_Tarjeta",
     "SELECT Rdt_Banco as Banco,  COALESCE(Rdt_Vencimiento,CAST(? AS timestamp)) as Vencimiento FROM "
     "Reservacion_Datos_Tarjeta ORDER BY Reservacion_Datos_Tarjeta.Rs_Folio",
     "SELECT Rdt_Banco as Banco,  ISNULL(Rdt_Vencimiento,CAST(? AS datetime)) as Vencimiento FROM "
     "Reservacion_Datos_Tarjeta"},
    {"SELECT THb.Th_Descripcion + ' / ' + HB.Hb_Descripcion AS DESCRIPCION FROM Habitacion HB",
     "SELECT THb.Th_Descripcion || ' / ' || HB.Hb_Descripcion AS DESCRIPCION FROM Habitacion HB",
     "SELECT THb.Th_Descripcion || ' / ' || HB.Hb_Descripcion AS DESCRIPCION FROM Habitacion HB "
     "ORDER BY HB.Hb_Cve_Habitacion",
     "SELECT THb.Th_Descripcion + ' / ' + HB.Hb_Descripcion AS DESCRIPCION FROM Habitacion HB"},
    // Text columns alone, in groups, calls and cases.
    {"SELECT (Cl_Correo+Cl_Telefono)+UPPER( Cl_Correo ) FROM Cliente",
     "SELECT (Cl_Correo||Cl_Telefono)||UPPER( Cl_Correo ) FROM Cliente",
     "SELECT (Cl_Correo||Cl_Telefono)||UPPER( Cl_Correo ) FROM Cliente ORDER BY Cliente.Cl_Cve_Cliente",
     "SELECT (Cl_Correo+Cl_Telefono)+UPPER( Cl_Correo ) FROM Cliente"},
    {"SELECT ISNULL(Cl_Correo,'')+CASE WHEN Es_Cve_Estado='BA' THEN '*' ELSE '' END FROM Cliente",
     "SELECT IFNULL(Cl_Correo,'')||CASE WHEN Es_Cve_Estado='BA' THEN '*' ELSE '' END FROM Cliente",
     "SELECT COALESCE(Cl_Correo,'')||CASE WHEN Es_Cve_Estado='BA' THEN '*' ELSE '' END FROM Cliente "
     "ORDER BY Cliente.Cl_Cve_Cliente",
     "SELECT ISNULL(Cl_Correo,'')+CASE WHEN Es_Cve_Estado='BA' THEN '*' ELSE '' END FROM Cliente"},
    {"UPDATE Folio_Consecutivo SET Fc_Serie = 'R' + Fc_Serie, Fc_Ultimo = Fc_Ultimo + 1 * -2",
     "UPDATE Folio_Consecutivo SET Fc_Serie = 'R' || Fc_Serie, Fc_Ultimo = Fc_Ultimo + 1 * -2",
     "UPDATE Folio_Consecutivo SET Fc_Serie = 'R' || Fc_Serie, Fc_Ultimo = Fc_Ultimo + 1 * -2",
     "UPDATE Folio_Consecutivo SET Fc_Serie = 'R' + Fc_Serie, Fc_Ultimo = Fc_Ultimo + 1 * -2"},
    // A function's value has no column's collation: it gets one where it is compared.
    {"SELECT 1 FROM Cliente WHERE ISNULL(Cl_Correo,'') = 'A' AND LEN(Cl_Correo)>3",
     "SELECT 1 FROM Cliente WHERE IFNULL(Cl_Correo,'') COLLATE ESPANOL = 'A' AND LENGTH(RTRIM(Cl_Correo))>3",
     "SELECT 1 FROM Cliente WHERE COALESCE(Cl_Correo,'')::bpchar = 'A' AND LENGTH(RTRIM(Cl_Correo))>3 "
     "ORDER BY Cliente.Cl_Cve_Cliente",
     "SELECT 1 FROM Cliente WHERE ISNULL(Cl_Correo,'') = 'A' AND LEN(Cl_Correo)>3"},
    {"SELECT 1 FROM Reservacion WHERE '2026-03-10' < ISNULL(Fecha_Baja, Rs_Fecha)",
     "SELECT 1 FROM Reservacion WHERE '2026-03-10' < IFNULL(Fecha_Baja, Rs_Fecha) COLLATE FECHA",
     "SELECT 1 FROM Reservacion WHERE '2026-03-10' < COALESCE(Fecha_Baja, Rs_Fecha) ORDER BY Reservacion.Rs_Folio",
     "SELECT 1 FROM Reservacion WHERE '2026-03-10' < ISNULL(Fecha_Baja, Rs_Fecha)"},
    // Rows without an order: one that the server would choose anew each time is given; none to a row that sums up.
    {"SELECT DISTINCT TOP 9 a, b FROM Reservacion RS JOIN Reservacion_Detalle AS RSd ON 1=1 WHERE a LIKE 'x' + b",
     "SELECT DISTINCT a, b FROM Reservacion RS JOIN Reservacion_Detalle AS RSd ON 1=1 WHERE a LIKE 'x' || b LIMIT 9",
     "SELECT DISTINCT a, b FROM Reservacion RS JOIN Reservacion_Detalle AS RSd ON 1=1 WHERE a ~@ ('x' || b) "
     "ORDER BY 1, 2 LIMIT 9",
     "SELECT DISTINCT TOP 9 a, b FROM Reservacion RS JOIN Reservacion_Detalle AS RSd ON 1=1 WHERE a LIKE 'x' + b"},
    {"SELECT RS.*, (SELECT 1) FROM Reservacion RS, Reservacion_Detalle WHERE ISNULL(a,0) IN (SELECT MAX(b) FROM c)",
     "SELECT RS.*, (SELECT 1) FROM Reservacion RS, Reservacion_Detalle WHERE IFNULL(a,0) IN (SELECT MAX(b) FROM c)",
     "SELECT RS.*, (SELECT 1) FROM Reservacion RS, Reservacion_Detalle WHERE COALESCE(a,0) IN (SELECT MAX(b) FROM c) "
     "ORDER BY RS.Rs_Folio, Reservacion_Detalle.Rs_Folio, Reservacion_Detalle.Rsd_Id",
     "SELECT RS.*, (SELECT 1) FROM Reservacion RS, Reservacion_Detalle WHERE ISNULL(a,0) IN (SELECT MAX(b) FROM c)"},
    {"SELECT ISNULL(MAX(Bt_Id),0) FROM Bitacora", "SELECT IFNULL(MAX(Bt_Id),0) FROM Bitacora",
     "SELECT COALESCE(MAX(Bt_Id),0) FROM Bitacora", "SELECT ISNULL(MAX(Bt_Id),0) FROM Bitacora"},
    {"SELECT TOP 3 Rs_Folio FROM Reservacion ORDER BY Rs_Folio;",
     "SELECT Rs_Folio FROM Reservacion ORDER BY Rs_Folio LIMIT 3;",
     "SELECT Rs_Folio FROM Reservacion ORDER BY Rs_Folio LIMIT 3;",
     "SELECT TOP 3 Rs_Folio FROM Reservacion ORDER BY Rs_Folio;"},
    {"SELECT a FROM (SELECT DISTINCT TOP 2 Rs_Folio AS a FROM Reservacion) x",
     "SELECT a FROM (SELECT DISTINCT Rs_Folio AS a FROM Reservacion LIMIT 2) x",
     "SELECT a FROM (SELECT DISTINCT Rs_Folio AS a FROM Reservacion LIMIT 2) x",
     "SELECT a FROM (SELECT DISTINCT TOP 2 Rs_Folio AS a FROM Reservacion) x"},
    {"DELETE Reservacion WHERE Rs_Referencia NOT LIKE 'x%'",
     "DELETE FROM Reservacion WHERE Rs_Referencia NOT LIKE 'x%'",
     "DELETE FROM Reservacion WHERE Rs_Referencia !~@ 'x%'", "DELETE Reservacion WHERE Rs_Referencia NOT LIKE 'x%'"},
    {"SELECT COUNT(*) FROM Check_In C Inner Join Check_In_Detalle D ON D.Ci_Folio = C.Ci_Folio",
     "SELECT COUNT(*) FROM Check_In C CROSS Join Check_In_Detalle D ON D.Ci_Folio = C.Ci_Folio",
     "SELECT COUNT(*) FROM Check_In C Inner Join Check_In_Detalle D ON D.Ci_Folio = C.Ci_Folio",
     "SELECT COUNT(*) FROM Check_In C Inner Join Check_In_Detalle D ON D.Ci_Folio = C.Ci_Folio"},
    {"insert Parametro(Pm_Clave) values('a')", "insert INTO Parametro(Pm_Clave) values('a')",
     "insert INTO Parametro(Pm_Clave) values('a')", "insert Parametro(Pm_Clave) values('a')"},
};

TEST(Traductor, CadaMotorRecibeSuTexto) {
  for (const auto& c : kCasos) {
    EXPECT_EQ(Traduce(c.original, Motor::Sqlite).texto, c.sqlite);
    EXPECT_EQ(Traduce(c.original, Motor::PostgreSQL).texto, c.postgres);
    EXPECT_EQ(Traduce(c.original, Motor::SqlServer).texto, c.sqlServer);
  }
}

// Blanks, case, texts and everything that the engines share come out byte for byte.
TEST(Traductor, LoQueNoNecesitaNadaQuedaIgual) {
  const std::vector<std::string> iguales{
      "SELECT  *\n\tFrom Reservacion ",
      "SELECT Reservacion.*, COUNT(*)AS Cantidad FROM Reservacion GROUP BY Rs_Folio HAVING COUNT( * )>1",
      ("SELECT TH.Th_Num_Personas_Maximo as MAX FROM Tipo_Habitacion TH WHERE TH.Es_Cve_Estado NOT IN ('CA','CE')AND "
       "1=1"),
      ("SELECT 'GETDATE() + [x] -- @y; ''ISNULL(a)''' AS Descripción FROM Cliente WHERE Cl_Correo<>''AND Cl_Correo IS "
       "NOT NULL"),
      "SELECT -1 + 2.5 - .5 * 3e2 / 4 % 5, SUM(Rsd_Precio * Rsd_Cantidad) + 1 FROM Reservacion_Detalle",
      "UPDATE Reservacion SET Oper_Baja = '', Fecha_Baja= NULL WHERE Rs_Folio = '1'",
      "INSERT INTO Parametro(Pm_Clave, Pm_Valor)VALUES ('a b ','c')",
      "SELECT a FROM x UNION ALL SELECT b FROM y WHERE EXISTS(SELECT 1 FROM z) OR NOT(a BETWEEN 1 AND 2)",
  };
  for (const auto& s : iguales)
    for (const auto motor : {Motor::Sqlite, Motor::SqlServer}) EXPECT_EQ(Traduce(s, motor).texto, s);
}

TEST(Traductor, LosLiteralesYPreguntasSonParametrosEnSuOrden) {
  const auto t =
      Traduce("SELECT GETDATE() AS Hoy, 'a''b' FROM Cliente WHERE Cl_Correo = ? AND Cl_Telefono IN ('x','y')",
              Motor::Sqlite, {.literalesSonParametros = true, .admitePreguntas = true});
  EXPECT_EQ(t.texto, "SELECT ? AS Hoy, ? FROM Cliente WHERE Cl_Correo = ? AND Cl_Telefono IN (?,?)");
  EXPECT_EQ(t.parametros,
            (std::vector{Origen::Ahora, Origen::Literal, Origen::Pregunta, Origen::Literal, Origen::Literal}));
}

TEST(Traductor, SabeQueAliasSonFechas) {
  const auto t = Traduce(
      "SELECT DISTINCT Rs_Llegada AS L, MAX(RS.Rs_Salida) S, ISNULL(Fecha_Baja,GETDATE())as B, Rs_Folio AS F, "
      "COUNT(Rs_Fecha) AS N FROM Reservacion RS",
      Motor::Sqlite);
  EXPECT_EQ(t.fechas, (std::vector<std::string>{"L", "S", "B"}));
}

struct Rechazo {
  const char *sentencia, *descripcion;
};

const std::vector<Rechazo> kRechazos{
    {"", "Línea 1, columna 1: la sentencia está vacía"},
    {"EXEC sp_who", "Línea 1, columna 1: no se admite la instrucción EXEC"},
    {"DROP TABLE Cliente", "Línea 1, columna 1: no se admite la instrucción DROP"},
    {"SELECT DATEDIFF(day,a,b) FROM t", "Línea 1, columna 8: no se admite la función DATEDIFF"},
    {"SELECT 'ñandú',\n  dbo.LEN(a) FROM t", "Línea 2, columna 7: no se admite la función LEN"},
    {"SELECT 'ñ', CONVERT(char,a) FROM t", "Línea 1, columna 13: no se admite la función CONVERT"},
    {"SELECT LEFT(a,2) FROM t", "Línea 1, columna 8: no se admite la función LEFT"},
    {"SELECT ISNULL(a) FROM t", "Línea 1, columna 8: número de argumentos de la función ISNULL"},
    {"SELECT GETDATE(1) FROM t", "Línea 1, columna 8: número de argumentos de la función GETDATE"},
    {"SELECT a FROM t WHERE a ISNULL", "Línea 1, columna 25: no se admite la palabra ISNULL"},
    {"SELECT a FROM t LIMIT 1", "Línea 1, columna 17: no se admite la palabra LIMIT"},
    {"SELECT a FROM t WITH (NOLOCK)", "Línea 1, columna 17: no se admite la función WITH"},
    {"SELECT a INTO b FROM t", "Línea 1, columna 10: no se admite SELECT INTO"},
    {"SELECT [a] FROM t", "Línea 1, columna 8: no se admite el signo ["},
    {"SELECT \"a\" FROM t", "Línea 1, columna 8: no se admite el signo \""},
    {"SELECT @a", "Línea 1, columna 8: no se admite el signo @"},
    {"SELECT a||b FROM t", "Línea 1, columna 9: no se admite el signo |"},
    {"SELECT a FROM t WHERE b = ?", "Línea 1, columna 27: no se admite el signo ?"},
    {"SELECT a FROM t WHERE b = \x01", "Línea 1, columna 27: no se admite un carácter de control"},
    {"SELECT a -- b", "Línea 1, columna 10: no se admite --"},
    {"SELECT a /* b */", "Línea 1, columna 10: no se admite /*"},
    {"SELECT a; DELETE FROM t", "Línea 1, columna 9: no se admite una segunda sentencia"},
    {"SELECT a FROM t DELETE FROM t", "Línea 1, columna 17: no se admite una segunda sentencia"},
    {"SELECT a FROM t SELECT b FROM t", "Línea 1, columna 17: no se admite una segunda sentencia"},
    {"SELECT a FROM t WHERE b = 'c", "Línea 1, columna 27: el texto no tiene comilla final"},
    {"SELECT N'a'", "Línea 1, columna 8: no se admite el prefijo de texto N"},
    {"SELECT 12a", "Línea 1, columna 8: número mal escrito"},
    {"SELECT (a FROM t", "Línea 1, columna 8: paréntesis sin cerrar"},
    {"SELECT a) FROM t", "Línea 1, columna 9: paréntesis sin abrir"},
    {"SELECT TOP (3) a FROM t", "Línea 1, columna 8: solo se admite un número después de TOP"},
    {"SELECT TOP 3 a FROM t UNION SELECT b FROM u", "Línea 1, columna 8: no se admite TOP con UNION"},
    {"UPDATE a SET b = 1 FROM c", "Línea 1, columna 20: no se admite FROM en UPDATE"},
    {"DELETE a FROM a INNER JOIN b ON 1=1", "Línea 1, columna 10: no se admite FROM en DELETE"},
    // Sums whose meaning is not certain, or differs between the engines.
    {"SELECT x + y FROM t", "Línea 1, columna 10: no se sabe si la suma es de textos o de números"},
    {"SELECT Rs_Folio + 1 FROM t", "Línea 1, columna 17: no se admite la suma de textos con números"},
    {"SELECT 2 * Rsd_Id + 'a' FROM t", "Línea 1, columna 19: no se admite la suma de textos con números"},
    {"SELECT Rs_Fecha + 1 FROM t", "Línea 1, columna 17: no se admite la aritmética con fechas"},
    {"SELECT GETDATE() - 1", "Línea 1, columna 18: no se admite la aritmética con fechas"},
    {"SELECT Rs_Folio * 2 FROM t", "Línea 1, columna 17: no se admite la aritmética con textos"},
};

TEST(Traductor, RechazaConLugarYConstruccion) {
  for (const auto& r : kRechazos) {
    try {
      ADD_FAILURE() << r.sentencia << " -> " << Traduce(r.sentencia, Motor::Sqlite).texto;
    } catch (const com::Error& e) {
      EXPECT_EQ(e.Numero(), com::error::kSentencia);
      EXPECT_EQ(e.Descripcion(), r.descripcion);
      EXPECT_EQ(e.Sentencia(), r.sentencia);
    }
  }
}

}  // namespace
