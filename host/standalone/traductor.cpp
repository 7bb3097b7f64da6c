#include "host/standalone/traductor.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "host/standalone/palabras.h"
#include "platform/com/error.h"
#include "platform/com/variant.h"

namespace autonomo {
namespace {

using esquema::Motor;

// --- tokens

enum class Clase {
  Palabra,
  Nombre,
  Numero,
  Literal,
  Pregunta,
  Comparacion,
  Suma,
  Aritmetica,
  Coma,
  Punto,
  Abre,
  Cierra,
  Fin
};

struct Ficha {
  Clase clase;
  std::size_t inicio, fin;  // bytes of the statement
  std::string texto;        // upper-case for words and names, as it stands for signs
};

struct Signo {
  std::string_view texto;
  Clase clase;
};
// Longest first.
constexpr std::array kSignos{
    Signo{"<>", Clase::Comparacion}, Signo{"<=", Clase::Comparacion}, Signo{">=", Clase::Comparacion},
    Signo{"!=", Clase::Comparacion}, Signo{"=", Clase::Comparacion},  Signo{"<", Clase::Comparacion},
    Signo{">", Clase::Comparacion},  Signo{"+", Clase::Suma},         Signo{"-", Clase::Aritmetica},
    Signo{"*", Clase::Aritmetica},   Signo{"/", Clase::Aritmetica},   Signo{"%", Clase::Aritmetica},
    Signo{",", Clase::Coma},         Signo{".", Clase::Punto},        Signo{"(", Clase::Abre},
    Signo{")", Clase::Cierra},       Signo{";", Clase::Fin},          Signo{"?", Clase::Pregunta},
};
// What begins like a sign and is not one here.
constexpr std::array<std::string_view, 5> kSignosAjenos{"--", "/*", "==", "<<", ">>"};

// Words of the language that it knows. With a parenthesis right after: whether that is a group, not a call.
struct Palabra {
  std::string_view texto;
  bool antesDeGrupo;
};
constexpr std::array kPalabras{
    Palabra{"SELECT", true},  Palabra{"DISTINCT", true}, Palabra{"ALL", true},     Palabra{"TOP", false},
    Palabra{"FROM", true},    Palabra{"WHERE", true},    Palabra{"GROUP", false},  Palabra{"BY", true},
    Palabra{"HAVING", true},  Palabra{"ORDER", false},   Palabra{"ASC", false},    Palabra{"DESC", false},
    Palabra{"INNER", false},  Palabra{"LEFT", false},    Palabra{"RIGHT", false},  Palabra{"FULL", false},
    Palabra{"OUTER", false},  Palabra{"CROSS", false},   Palabra{"JOIN", true},    Palabra{"ON", true},
    Palabra{"AS", false},     Palabra{"AND", true},      Palabra{"OR", true},      Palabra{"NOT", true},
    Palabra{"IN", true},      Palabra{"EXISTS", true},   Palabra{"BETWEEN", true}, Palabra{"LIKE", true},
    Palabra{"IS", false},     Palabra{"NULL", false},    Palabra{"CASE", true},    Palabra{"WHEN", true},
    Palabra{"THEN", true},    Palabra{"ELSE", true},     Palabra{"END", false},    Palabra{"UNION", true},
    Palabra{"INSERT", false}, Palabra{"INTO", false},    Palabra{"VALUES", true},  Palabra{"UPDATE", false},
    Palabra{"SET", false},    Palabra{"DELETE", false},
};

// Words that mean something to SQL Server or to one of the engines, and that it does not translate.
constexpr std::array<std::string_view, 75> kPalabrasAjenas{
    "ALTER",
    "ANALYZE",
    "ANY",
    "APPLY",
    "ATTACH",
    "BACKUP",
    "BEGIN",
    "BULK",
    "CAST",
    "COLLATE",
    "COMMIT",
    "COMPUTE",
    "CONFLICT",
    "CONVERT",
    "CREATE",
    "CURRENT",
    "CURRENT_DATE",
    "CURRENT_TIME",
    "CURRENT_TIMESTAMP",
    "CURRENT_USER",
    "DBCC",
    "DECLARE",
    "DENY",
    "DETACH",
    "DROP",
    "ESCAPE",
    "EXCEPT",
    "EXEC",
    "EXECUTE",
    "EXPLAIN",
    "FETCH",
    "FOR",
    "FREETEXT",
    "GLOB",
    "GRANT",
    "IF",
    "ILIKE",
    "INDEXED",
    "INTERSECT",
    "ISNULL",
    "KILL",
    "LIMIT",
    "MATCH",
    "MERGE",
    "NATURAL",
    "NOTNULL",
    "OFFSET",
    "OPENQUERY",
    "OPENROWSET",
    "OPTION",
    "OUTPUT",
    "OVER",
    "PERCENT",
    "PIVOT",
    "PRAGMA",
    "PRINT",
    "RAISERROR",
    "REGEXP",
    "REINDEX",
    "REPLACE",
    "RETURN",
    "RETURNING",
    "REVOKE",
    "ROLLBACK",
    "SAVE",
    "SHUTDOWN",
    "SIMILAR",
    "SOME",
    "TRUNCATE",
    "UNPIVOT",
    "USING",
    "VACUUM",
    "WAITFOR",
    "WHILE",
    "WITH",
};

// --- functions

enum class Valor { Desconocido, Texto, Numero, Fecha, DelPrimero };

// Text that stands for the function's name and for its closing parenthesis.
struct Forma {
  std::string_view nombre;
  std::string_view cierre = ")";
};

struct Funcion {
  std::string_view nombre;
  std::size_t minimo, maximo;  // arguments
  Valor valor;
  Forma sqlite, postgres, sqlServer;  // empty name: as it stands
};
constexpr std::size_t kCuantos = 64;
constexpr std::array kFunciones{
    Funcion{"COUNT", 1, 1, Valor::Numero, {}, {}, {}},
    Funcion{"SUM", 1, 1, Valor::Numero, {}, {}, {}},
    Funcion{"AVG", 1, 1, Valor::Numero, {}, {}, {}},
    Funcion{"MIN", 1, 1, Valor::DelPrimero, {}, {}, {}},
    Funcion{"MAX", 1, 1, Valor::DelPrimero, {}, {}, {}},
    Funcion{"ISNULL", 2, 2, Valor::DelPrimero, {"IFNULL"}, {"COALESCE"}, {}},
    Funcion{"COALESCE", 2, kCuantos, Valor::DelPrimero, {}, {}, {}},
    Funcion{"NULLIF", 2, 2, Valor::DelPrimero, {}, {}, {}},
    Funcion{"UPPER", 1, 1, Valor::Texto, {}, {}, {}},
    Funcion{"LOWER", 1, 1, Valor::Texto, {}, {}, {}},
    Funcion{"LTRIM", 1, 1, Valor::Texto, {}, {}, {}},
    Funcion{"RTRIM", 1, 1, Valor::Texto, {}, {}, {}},
    Funcion{"SUBSTRING", 3, 3, Valor::Texto, {"SUBSTR"}, {}, {}},
    // The server does not count blanks at the end.
    Funcion{"LEN", 1, 1, Valor::Numero, {"LENGTH(RTRIM", "))"}, {"LENGTH(RTRIM", "))"}, {}},
    Funcion{"ABS", 1, 1, Valor::Numero, {}, {}, {}},
    Funcion{"ROUND", 2, 2, Valor::Numero, {}, {}, {}},
    Funcion{"GETDATE", 0, 0, Valor::Fecha, {}, {}, {}},
};

const Funcion* BuscaFuncion(std::string_view nombre) {
  const auto it = std::ranges::find(kFunciones, nombre, &Funcion::nombre);
  return it == kFunciones.end() ? nullptr : &*it;
}

// --- what else the engines spell differently

struct Dialecto {
  Forma Funcion::*forma;
  std::string_view ahora;       // the clock's value
  std::string_view concatena;   // text + text
  std::string_view like;        // LIKE, case-blind
  std::string_view trasPatron;  // put after the pattern of a LIKE
  bool limitaAlFinal;           // TOP n is LIMIT n at the end of the select
  bool omiteFromInto;           // DELETE without FROM and INSERT without INTO
  // Rows without an order of their own come in the order of their tables' keys, as the statement names the tables: so
  // they come from the embedded engine, and a clerk's lines and rooms stay where they were.
  bool ordenaPorLlaves;
  // Put after a function's value where it is compared: it has no column's collation.
  std::string_view comparaTexto, comparaFecha;
  // A table of rows of all years whose INNER JOIN keeps the written order. The embedded engine knows nothing of how
  // many rows a range of dates has: it would look up every stay that a room ever had, rather than those of the night.
  std::string_view juntaEnOrden;
};

constexpr Dialecto kSqlite{
    &Funcion::sqlite,  "?", "||", "LIKE", "", true, false, false, " COLLATE ESPANOL", " COLLATE FECHA",
    "CHECK_IN_DETALLE"};
constexpr Dialecto kPostgres{&Funcion::postgres, "CAST(? AS timestamp)", "||", "ILIKE",
                             // The columns' collation knows no LIKE; and the backslash is a character like others.
                             " COLLATE \"es-x-icu\" ESCAPE ''", true, false, true, "::bpchar", "", ""};
constexpr Dialecto kSqlServer{
    &Funcion::sqlServer, "CAST(? AS datetime)", "+", "LIKE", "", false, true, false, "", "", ""};

const Dialecto& DialectoDe(Motor motor) {
  switch (motor) {
    case Motor::PostgreSQL:
      return kPostgres;
    case Motor::SqlServer:
      return kSqlServer;
    case Motor::Sqlite:
      break;
  }
  return kSqlite;
}

// --- lexer

[[noreturn]] void Rechaza(std::string_view sentencia, std::size_t byte, const std::string& que) {
  throw com::Error(com::error::kSentencia, Lugar(sentencia, byte) + que, std::string(sentencia));
}

bool EsBlanco(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

class Lector {
 public:
  Lector(std::string_view s, ModoTraduccion modo) : s_(s), modo_(modo) {}

  std::vector<Ficha> Lee() {
    std::vector<Ficha> fichas;
    for (;;) {
      while (i_ < s_.size() && EsBlanco(s_[i_])) ++i_;
      if (i_ == s_.size()) return fichas;
      fichas.push_back(Una());
    }
  }

 private:
  Ficha Una() {
    const char c = s_[i_];
    if (c == '\'') return LeeLiteral();
    if (EsInicioDeNombre(c)) return LeeNombre();
    if (EsDigito(c) || (c == '.' && i_ + 1 < s_.size() && EsDigito(s_[i_ + 1]))) return LeeNumero();
    return LeeSigno();
  }

  // Takes the text up to `fin`.
  Ficha Toma(Clase clase, std::size_t fin) {
    Ficha f{clase, i_, fin, std::string(s_.substr(i_, fin - i_))};
    i_ = fin;
    return f;
  }

  Ficha LeeLiteral() {
    std::size_t fin = i_;
    do {
      fin = s_.find('\'', fin + 1);
      if (fin == std::string_view::npos) Rechaza(s_, i_, "el texto no tiene comilla final");
      ++fin;
    } while (fin < s_.size() && s_[fin] == '\'');
    return Toma(Clase::Literal, fin);
  }

  Ficha LeeNombre() {
    std::size_t fin = i_;
    while (fin < s_.size() && EsDeNombre(s_[fin])) ++fin;
    Ficha f = Toma(Clase::Nombre, fin);
    f.texto = com::Mayusculas(f.texto);
    const bool palabra = std::ranges::find(kPalabras, f.texto, &Palabra::texto) != kPalabras.end();
    if (palabra) f.clase = Clase::Palabra;
    if (!palabra && i_ < s_.size() && s_[i_] == '\'')
      Rechaza(s_, f.inicio, "no se admite el prefijo de texto " + f.texto);
    return f;
  }

  Ficha LeeNumero() {
    const auto digitos = [this](std::size_t k) {
      while (k < s_.size() && EsDigito(s_[k])) ++k;
      return k;
    };
    std::size_t fin = digitos(i_);
    if (fin < s_.size() && s_[fin] == '.') fin = digitos(fin + 1);
    if (fin < s_.size() && (s_[fin] == 'e' || s_[fin] == 'E')) {
      std::size_t k = fin + 1;
      if (k < s_.size() && (s_[k] == '+' || s_[k] == '-')) ++k;
      if (digitos(k) > k) fin = digitos(k);
    }
    if (fin < s_.size() && EsDeNombre(s_[fin])) Rechaza(s_, i_, "número mal escrito");
    return Toma(Clase::Numero, fin);
  }

  Ficha LeeSigno() {
    const std::string_view resto = s_.substr(i_);
    for (const auto& ajeno : kSignosAjenos)
      if (resto.starts_with(ajeno)) Rechaza(s_, i_, "no se admite " + std::string(ajeno));
    for (const auto& signo : kSignos) {
      if (!resto.starts_with(signo.texto)) continue;
      if (signo.clase == Clase::Pregunta && !modo_.admitePreguntas) break;
      return Toma(signo.clase, i_ + signo.texto.size());
    }
    const bool visible = s_[i_] > ' ' && s_[i_] < 0x7F;
    Rechaza(s_, i_,
            visible ? "no se admite el signo " + std::string(1, s_[i_]) : "no se admite un carácter de control");
  }

  std::string_view s_;
  ModoTraduccion modo_;
  std::size_t i_ = 0;
};

// --- translator

// Half-open range of tokens.
struct Rango {
  std::size_t desde, hasta;
};

struct Cambio {
  std::size_t inicio, fin;  // bytes of the statement that are replaced
  std::string texto;
  int lugar = 0;  // order among those at one place
};
constexpr int kLugarDeOrden = 1, kLugarDeLimite = 2;

class Traductor {
 public:
  Traductor(std::string_view s, Motor motor, ModoTraduccion modo)
      : s_(s), d_(DialectoDe(motor)), modo_(modo), f_(Lector(s, modo).Lee()) {}

  Traduccion Hace() {
    Empareja();
    RevisaInstruccion();
    if (d_.ordenaPorLlaves) OrdenaPorLlaves();
    for (std::size_t i = 0; i < f_.size(); ++i) RevisaYCambia(i);
    for (std::size_t i = 0; i < f_.size(); ++i) Opera(i);
    AnotaFechas();
    return {Escribe(), std::move(parametros_), std::move(fechas_)};
  }

 private:
  // --- structure

  // Fills the partner of each parenthesis; takes an ending semicolon for what it is and refuses what follows one.
  void Empareja() {
    if (!f_.empty() && f_.back().clase == Clase::Fin) f_.pop_back();
    if (f_.empty()) Rechaza(s_, 0, "la sentencia está vacía");
    pareja_.assign(f_.size(), 0);
    std::vector<std::size_t> abiertas;
    for (std::size_t i = 0; i < f_.size(); ++i) {
      if (f_[i].clase == Clase::Fin) Rechaza(s_, f_[i].inicio, "no se admite una segunda sentencia");
      if (f_[i].clase == Clase::Abre) abiertas.push_back(i);
      if (f_[i].clase != Clase::Cierra) continue;
      if (abiertas.empty()) Rechaza(s_, f_[i].inicio, "paréntesis sin abrir");
      pareja_[i] = abiertas.back();
      pareja_[abiertas.back()] = i;
      abiertas.pop_back();
    }
    if (!abiertas.empty()) Rechaza(s_, f_[abiertas.back()].inicio, "paréntesis sin cerrar");
  }

  bool Es(std::size_t i, Clase clase) const { return i < f_.size() && f_[i].clase == clase; }
  bool EsPalabra(std::size_t i, std::string_view texto) const { return Es(i, Clase::Palabra) && f_[i].texto == texto; }
  bool EsAlguna(std::size_t i, std::initializer_list<std::string_view> textos) const {
    return Es(i, Clase::Palabra) && std::ranges::find(textos, std::string_view(f_[i].texto)) != textos.end();
  }
  [[noreturn]] void RechazaFicha(std::size_t i, const std::string& que) const { Rechaza(s_, f_[i].inicio, que); }

  // Token after the group or call that begins at i, else the next one.
  std::size_t Salta(std::size_t i) const { return Es(i, Clase::Abre) ? pareja_[i] + 1 : i + 1; }

  // One statement of a known kind, without another behind it.
  void RevisaInstruccion() {
    constexpr std::array<std::string_view, 4> kInstrucciones{"SELECT", "INSERT", "UPDATE", "DELETE"};
    const auto instruccion = [&](std::size_t i) {
      return Es(i, Clase::Palabra) && std::ranges::find(kInstrucciones, f_[i].texto) != kInstrucciones.end();
    };
    if (!instruccion(0)) RechazaFicha(0, "no se admite la instrucción " + f_[0].texto);
    const bool inserta = EsPalabra(0, "INSERT"), consulta = EsPalabra(0, "SELECT");
    for (std::size_t i = 1; i < f_.size(); ++i) {
      const bool lugarDeSelect =
          EsPalabra(i, "SELECT") && (inserta || Es(i - 1, Clase::Abre) || EsAlguna(i - 1, {"UNION", "ALL"}));
      if (instruccion(i) && !lugarDeSelect) RechazaFicha(i, "no se admite una segunda sentencia");
      if (EsPalabra(i, "INTO") && consulta) RechazaFicha(i, "no se admite SELECT INTO");
    }
    if (consulta || inserta) return;
    // The target's rows alone: a join in an UPDATE or DELETE means another thing to each engine.
    const std::size_t desde = EsPalabra(0, "DELETE") && EsPalabra(1, "FROM") ? 2 : 1;
    for (std::size_t i = desde; i < f_.size(); i = Salta(i))
      if (EsAlguna(i, {"FROM", "JOIN"})) RechazaFicha(i, "no se admite " + f_[i].texto + " en " + f_[0].texto);
  }

  // --- order of rows

  void OrdenaPorLlaves() {
    if (!EsPalabra(0, "SELECT")) return;
    std::size_t desde = 0;
    for (std::size_t i = 1; i < f_.size(); i = Salta(i)) {
      if (EsAlguna(i, {"ORDER", "GROUP", "UNION"})) return;
      if (desde == 0 && EsPalabra(i, "FROM")) desde = i;
    }
    if (desde == 0 || Resume(desde)) return;
    const std::string orden = EsPalabra(1, "DISTINCT") ? ColumnasDeLista(desde) : LlavesDeTablas(desde);
    if (!orden.empty()) Cambia(f_.back().fin, f_.back().fin, " ORDER BY " + orden, kLugarDeOrden);
  }

  // Whether the select list before `from` makes one row of many.
  bool Resume(std::size_t from) const {
    for (std::size_t i = 1; i < from; ++i) {
      if (!Es(i, Clase::Nombre) || !Es(i + 1, Clase::Abre)) continue;
      for (const std::string_view f : {"COUNT", "SUM", "AVG", "MIN", "MAX"})
        if (f_[i].texto == f) return true;
    }
    return false;
  }

  // "1, 2, 3"; nothing when the list has a star.
  std::string ColumnasDeLista(std::size_t from) const {
    std::string orden = "1";
    int n = 1;
    for (std::size_t i = 2; i < from; i = Salta(i)) {
      if (Es(i, Clase::Coma)) orden += ", " + std::to_string(++n);
      if (Es(i, Clase::Aritmetica) && f_[i].texto == "*" && !EsBinario(i)) return {};
    }
    return orden;
  }

  std::string LlavesDeTablas(std::size_t from) const {
    std::string orden;
    for (std::size_t i = from; i < f_.size() && !EsPalabra(i, "WHERE"); i = Salta(i)) {
      if (!EsAlguna(i, {"FROM", "JOIN"}) && !Es(i, Clase::Coma)) continue;
      const esquema::Tabla* tabla = Es(i + 1, Clase::Nombre) ? esquema::BuscaTabla(f_[i + 1].texto) : nullptr;
      if (tabla == nullptr || (tabla->llave.empty() && tabla->indices.empty())) continue;
      const std::size_t alias = EsPalabra(i + 2, "AS") ? i + 3 : i + 2;
      const std::string nombre = Es(alias, Clase::Nombre) ? f_[alias].texto : std::string(tabla->nombre);
      for (const std::string_view columna : tabla->llave.empty() ? tabla->indices.front() : tabla->llave)
        orden += (orden.empty() ? "" : ", ") + nombre + "." + std::string(columna);
    }
    return orden;
  }

  // --- token by token

  void RevisaYCambia(std::size_t i) {
    switch (f_[i].clase) {
      case Clase::Palabra:
        return CambiaPalabra(i);
      case Clase::Nombre:
        return CambiaNombre(i);
      case Clase::Literal:
        if (modo_.literalesSonParametros) {
          Cambia(f_[i].inicio, f_[i].fin, "?");
          parametros_.push_back(Origen::Literal);
        }
        return;
      case Clase::Pregunta:
        parametros_.push_back(Origen::Pregunta);
        return;
      default:
        return;
    }
  }

  void CambiaPalabra(std::size_t i) {
    const auto& palabra = *std::ranges::find(kPalabras, f_[i].texto, &Palabra::texto);
    if (Es(i + 1, Clase::Abre) && !palabra.antesDeGrupo) {
      RechazaFicha(i, (palabra.texto == "TOP" ? "solo se admite un número después de " : "no se admite la función ") +
                          f_[i].texto);
    }
    if (palabra.texto == "TOP") return CambiaTop(i);
    if (palabra.texto == "INNER" && Es(i + 2, Clase::Nombre) && f_[i + 2].texto == d_.juntaEnOrden)
      Cambia(f_[i].inicio, f_[i].fin, "CROSS");
    if (palabra.texto == "LIKE" && d_.like != "LIKE") CambiaLike(i);
    if (i == 0 && !d_.omiteFromInto) {
      if (palabra.texto == "DELETE" && Es(1, Clase::Nombre)) Cambia(f_[0].fin, f_[0].fin, " FROM");
      if (palabra.texto == "INSERT" && Es(1, Clase::Nombre)) Cambia(f_[0].fin, f_[0].fin, " INTO");
    }
  }

  void CambiaLike(std::size_t i) {
    Cambia(f_[i].inicio, f_[i].fin, std::string(d_.like));
    std::size_t fin = FinDe(i + 1);
    while (Es(fin, Clase::Suma)) fin = FinDe(fin + 1);
    fin = std::min(fin, f_.size());
    Cambia(f_[fin - 1].fin, f_[fin - 1].fin, std::string(d_.trasPatron));
  }

  // TOP n goes to the end of its select.
  void CambiaTop(std::size_t i) {
    const bool lugar = i > 0 && EsAlguna(i - 1, {"SELECT", "DISTINCT", "ALL"});
    if (!lugar || !Es(i + 1, Clase::Numero)) RechazaFicha(i, "solo se admite un número después de TOP");
    if (!d_.limitaAlFinal) return;
    std::size_t fin = i;
    while (fin < f_.size() && !Es(fin, Clase::Cierra)) {
      if (EsPalabra(fin, "UNION")) RechazaFicha(i, "no se admite TOP con UNION");
      fin = Salta(fin);
    }
    Cambia(f_[i].inicio, f_[i + 2 < f_.size() ? i + 2 : i + 1].inicio, "");
    const std::size_t byte = fin < f_.size() ? f_[fin].inicio : f_.back().fin;
    Cambia(byte, byte, " LIMIT " + f_[i + 1].texto, kLugarDeLimite);
  }

  bool EsTablaDeInsert(std::size_t i) const { return i > 0 && EsAlguna(i - 1, {"INTO", "INSERT"}); }

  void CambiaNombre(std::size_t i) {
    const bool llamada = Es(i + 1, Clase::Abre) && !EsTablaDeInsert(i);
    const Funcion* funcion = llamada ? BuscaFuncion(f_[i].texto) : nullptr;
    if (llamada && (funcion == nullptr || Es(i - 1, Clase::Punto)))
      RechazaFicha(i, "no se admite la función " + f_[i].texto);
    if (!llamada && std::ranges::find(kPalabrasAjenas, f_[i].texto) != kPalabrasAjenas.end())
      RechazaFicha(i, "no se admite la palabra " + f_[i].texto);
    if (funcion != nullptr) CambiaFuncion(i, *funcion);
  }

  void CambiaFuncion(std::size_t i, const Funcion& funcion) {
    const std::size_t abre = i + 1, cierra = pareja_[abre];
    const std::size_t argumentos = Argumentos(abre).size();
    if (argumentos < funcion.minimo || argumentos > funcion.maximo)
      RechazaFicha(i, "número de argumentos de la función " + f_[i].texto);
    if (funcion.nombre == "GETDATE") {
      Cambia(f_[i].inicio, f_[cierra].fin, std::string(d_.ahora));
      parametros_.push_back(Origen::Ahora);
      return;
    }
    const Forma& forma = funcion.*d_.forma;
    if (!forma.nombre.empty()) Cambia(f_[i].inicio, f_[i].fin, std::string(forma.nombre));
    const std::string cierre = std::string(forma.cierre).append(Comparacion(i, cierra));
    if (cierre != ")") Cambia(f_[cierra].inicio, f_[cierra].fin, cierre);
  }

  // Collation that a call needs where its value is compared.
  std::string_view Comparacion(std::size_t desde, std::size_t cierra) const {
    const auto compara = [&](std::size_t i) {
      return Es(i, Clase::Comparacion) || EsAlguna(i, {"IN", "NOT", "BETWEEN", "LIKE"});
    };
    if (!compara(cierra + 1) && !(desde > 0 && compara(desde - 1))) return "";
    switch (ValorDe({desde, cierra + 1})) {
      case Valor::Texto:
        return d_.comparaTexto;
      case Valor::Fecha:
        return d_.comparaFecha;
      default:
        return "";
    }
  }

  // --- values and operators

  // Ranges of the arguments of a call whose parenthesis opens at `abre`.
  std::vector<Rango> Argumentos(std::size_t abre) const {
    const std::size_t cierra = pareja_[abre];
    std::vector<Rango> r;
    if (cierra == abre + 1) return r;
    std::size_t desde = abre + 1;
    for (std::size_t i = desde; i < cierra; i = Salta(i)) {
      if (!Es(i, Clase::Coma)) continue;
      r.push_back({desde, i});
      desde = i + 1;
    }
    r.push_back({desde, cierra});
    return r;
  }

  bool TerminaOperando(std::size_t i) const {
    switch (f_[i].clase) {
      case Clase::Nombre:
      case Clase::Numero:
      case Clase::Literal:
      case Clase::Pregunta:
      case Clase::Cierra:
        return true;
      default:
        return EsAlguna(i, {"END", "NULL"});
    }
  }
  bool EsOperador(std::size_t i) const { return Es(i, Clase::Suma) || Es(i, Clase::Aritmetica); }
  // An operator between two operands: neither a sign, nor the star of COUNT(*) or "*".
  bool EsBinario(std::size_t i) const { return EsOperador(i) && i > 0 && i + 1 < f_.size() && TerminaOperando(i - 1); }

  // First token of the operand that ends at `fin`.
  std::size_t PrincipioDe(std::size_t fin) const {
    std::size_t i = fin;
    if (Es(i, Clase::Cierra)) {
      i = pareja_[i];
      if (i > 0 && Es(i - 1, Clase::Nombre)) --i;
    } else if (EsPalabra(i, "END")) {
      for (std::size_t casos = 1; casos > 0 && i > 0;) {
        --i;
        casos += EsPalabra(i, "END") ? 1U : 0U;
        casos -= EsPalabra(i, "CASE") ? 1U : 0U;
      }
    } else if (Es(i, Clase::Nombre)) {
      while (i > 1 && Es(i - 1, Clase::Punto) && Es(i - 2, Clase::Nombre)) i -= 2;
    }
    return i;
  }

  // Token after the operand that begins at `desde`.
  std::size_t FinDe(std::size_t desde) const {
    std::size_t i = desde;
    while (i < f_.size() && EsOperador(i)) ++i;
    if (i >= f_.size()) return i;
    if (Es(i, Clase::Abre)) return pareja_[i] + 1;
    if (Es(i, Clase::Nombre)) {
      while (Es(i + 1, Clase::Punto) && i + 2 < f_.size()) i += 2;
      return Es(i + 1, Clase::Abre) ? pareja_[i + 1] + 1 : i + 1;
    }
    if (EsPalabra(i, "CASE")) {
      for (std::size_t casos = 1; casos > 0 && i + 1 < f_.size();) {
        ++i;
        casos += EsPalabra(i, "CASE") ? 1U : 0U;
        casos -= EsPalabra(i, "END") ? 1U : 0U;
      }
    }
    return i + 1;
  }

  // Value of one operand.
  Valor ValorDeOperando(Rango r) const {
    while (r.desde < r.hasta && EsOperador(r.desde)) ++r.desde;
    if (r.desde >= r.hasta) return Valor::Desconocido;
    const Ficha& primera = f_[r.desde];
    switch (primera.clase) {
      case Clase::Literal:
        return Valor::Texto;
      case Clase::Numero:
        return Valor::Numero;
      case Clase::Abre:
        return ValorDe({r.desde + 1, pareja_[r.desde]});
      case Clase::Nombre:
        break;
      default:
        return Valor::Desconocido;
    }
    if (Es(r.desde + 1, Clase::Abre)) {
      const Funcion* funcion = BuscaFuncion(primera.texto);
      if (funcion == nullptr) return Valor::Desconocido;
      if (funcion->valor != Valor::DelPrimero) return funcion->valor;
      const auto argumentos = Argumentos(r.desde + 1);
      return argumentos.empty() ? Valor::Desconocido : ValorDe(argumentos.front());
    }
    return ValorDeColumna(f_[r.hasta - 1].texto);
  }

  static Valor ValorDeColumna(std::string_view nombre) {
    const auto* columna = esquema::BuscaColumna(nombre);
    if (columna == nullptr) return Valor::Desconocido;
    switch (columna->tipo) {
      case esquema::Tipo::Clave:
      case esquema::Tipo::Texto:
      case esquema::Tipo::Nota:
        return Valor::Texto;
      case esquema::Tipo::Entero:
      case esquema::Tipo::Numero:
      case esquema::Tipo::Dinero:
      case esquema::Tipo::Factor:
        return Valor::Numero;
      case esquema::Tipo::Fecha:
      case esquema::Tipo::FechaHora:
        return Valor::Fecha;
    }
    return Valor::Desconocido;
  }

  // Value of an expression of operands and arithmetic: text before date before number.
  Valor ValorDe(Rango r) const {
    Valor valor = Valor::Desconocido;
    for (std::size_t i = r.desde; i < r.hasta;) {
      const std::size_t fin = FinDe(i);
      const Valor uno = fin <= r.hasta ? ValorDeOperando({i, fin}) : Valor::Desconocido;
      if (uno == Valor::Texto || valor == Valor::Desconocido || (uno == Valor::Fecha && valor == Valor::Numero))
        valor = uno == Valor::Desconocido ? valor : uno;
      if (fin < r.hasta && !EsOperador(fin)) return Valor::Desconocido;
      i = fin + 1;
    }
    return valor;
  }

  // Checks the operands of a binary operator; the first "+" of a chain decides for the whole chain.
  void Opera(std::size_t i) {
    if (!EsBinario(i)) return;
    const std::size_t principio = PrincipioDe(i - 1);
    if (!Es(i, Clase::Suma)) {
      if (!Es(i + 1, Clase::Coma)) OperaNumeros(i, {principio, i}, {i + 1, FinDe(i + 1)});
      return;
    }
    if (principio > 0 && EsBinario(principio - 1) && Es(principio - 1, Clase::Suma)) return;
    std::vector<std::size_t> sumas;
    std::vector<Rango> operandos{{principio, i}};
    std::size_t fin = i;
    while (Es(fin, Clase::Suma)) {
      sumas.push_back(fin);
      operandos.push_back({fin + 1, FinDe(fin + 1)});
      fin = operandos.back().hasta;
    }
    const bool conOtros = (principio > 0 && EsBinario(principio - 1)) || Es(fin, Clase::Aritmetica);
    Suma(sumas, operandos, conOtros);
  }

  void OperaNumeros(std::size_t i, Rango izquierda, Rango derecha) {
    for (const Rango r : {izquierda, derecha}) {
      const Valor valor = ValorDeOperando(r);
      if (valor == Valor::Fecha) RechazaFicha(i, "no se admite la aritmética con fechas");
      if (valor == Valor::Texto) RechazaFicha(i, "no se admite la aritmética con textos");
    }
  }

  void Suma(const std::vector<std::size_t>& sumas, const std::vector<Rango>& operandos, bool conOtros) {
    bool texto = false, numero = false;
    for (const auto& r : operandos) {
      const Valor valor = ValorDeOperando(r);
      if (valor == Valor::Fecha) RechazaFicha(sumas.front(), "no se admite la aritmética con fechas");
      texto = texto || valor == Valor::Texto;
      numero = numero || valor == Valor::Numero;
    }
    if (texto && (numero || conOtros)) RechazaFicha(sumas.front(), "no se admite la suma de textos con números");
    if (!texto && !numero && !conOtros) RechazaFicha(sumas.front(), "no se sabe si la suma es de textos o de números");
    if (!texto || d_.concatena == "+") return;
    for (const std::size_t i : sumas) Cambia(f_[i].inicio, f_[i].fin, std::string(d_.concatena));
  }

  // --- select list

  void AnotaFechas() {
    if (!EsPalabra(0, "SELECT")) return;
    std::size_t desde = 1, i = 1;
    for (; i < f_.size() && !EsPalabra(i, "FROM"); i = Salta(i)) {
      if (!Es(i, Clase::Coma)) continue;
      AnotaFecha({desde, i});
      desde = i + 1;
    }
    AnotaFecha({desde, i});
  }

  void AnotaFecha(Rango r) {
    if (r.desde < r.hasta && EsPalabra(r.desde, "DISTINCT")) ++r.desde;
    if (r.hasta - r.desde < 2 || !Es(r.hasta - 1, Clase::Nombre) || Es(r.hasta - 2, Clase::Punto)) return;
    const std::string_view alias = s_.substr(f_[r.hasta - 1].inicio, f_[r.hasta - 1].fin - f_[r.hasta - 1].inicio);
    r.hasta -= EsPalabra(r.hasta - 2, "AS") ? 2 : 1;
    if (r.desde < r.hasta && ValorDe(r) == Valor::Fecha) fechas_.emplace_back(alias);
  }

  // --- output

  void Cambia(std::size_t inicio, std::size_t fin, std::string texto, int lugar = 0) {
    cambios_.push_back({inicio, fin, std::move(texto), lugar});
  }

  std::string Escribe() {
    std::ranges::stable_sort(cambios_, {}, [](const Cambio& c) { return std::pair(c.inicio, c.lugar); });
    std::string salida;
    std::size_t hasta = 0;
    for (const auto& c : cambios_) {
      salida.append(s_.substr(hasta, c.inicio - hasta)).append(c.texto);
      hasta = c.fin;
    }
    return salida.append(s_.substr(hasta));
  }

  std::string_view s_;
  const Dialecto& d_;
  ModoTraduccion modo_;
  std::vector<Ficha> f_;
  std::vector<std::size_t> pareja_;
  std::vector<Cambio> cambios_;
  std::vector<Origen> parametros_;
  std::vector<std::string> fechas_;
};

}  // namespace

std::string Lugar(std::string_view sentencia, std::size_t byte) {
  const std::string_view antes = sentencia.substr(0, byte);
  const auto linea = std::count(antes.begin(), antes.end(), '\n') + 1;
  const std::size_t columna = com::LargoUtf8(antes.substr(antes.rfind('\n') + 1)) + 1;
  return "Línea " + std::to_string(linea) + ", columna " + std::to_string(columna) + ": ";
}

Traduccion Traduce(std::string_view sentencia, Motor motor, ModoTraduccion modo) {
  return Traductor(sentencia, motor, modo).Hace();
}

}  // namespace autonomo
