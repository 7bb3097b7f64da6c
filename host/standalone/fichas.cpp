#include "host/standalone/fichas.h"

#include <algorithm>
#include <array>

#include "host/standalone/palabras.h"
#include "platform/com/error.h"
#include "platform/com/variant.h"

namespace autonomo {

namespace {

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

bool EsBlanco(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

class Lector {
 public:
  Lector(std::string_view s, bool admitePreguntas) : s_(s), admitePreguntas_(admitePreguntas) {}

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
    if (com::EsDigito(c) || (c == '.' && i_ + 1 < s_.size() && com::EsDigito(s_[i_ + 1]))) return LeeNumero();
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
    const bool palabra = BuscaPalabra(f.texto) != nullptr;
    if (palabra) f.clase = Clase::Palabra;
    if (!palabra && i_ < s_.size() && s_[i_] == '\'')
      Rechaza(s_, f.inicio, "no se admite el prefijo de texto " + f.texto);
    return f;
  }

  Ficha LeeNumero() {
    const auto digitos = [this](std::size_t k) {
      while (k < s_.size() && com::EsDigito(s_[k])) ++k;
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
      if (signo.clase == Clase::Pregunta && !admitePreguntas_) break;
      return Toma(signo.clase, i_ + signo.texto.size());
    }
    const bool visible = s_[i_] > ' ' && s_[i_] < 0x7F;
    Rechaza(s_, i_,
            visible ? "no se admite el signo " + std::string(1, s_[i_]) : "no se admite un carácter de control");
  }

  std::string_view s_;
  bool admitePreguntas_;
  std::size_t i_ = 0;
};

}  // namespace

const Palabra* BuscaPalabra(std::string_view texto) {
  const auto it = std::ranges::find(kPalabras, texto, &Palabra::texto);
  return it == kPalabras.end() ? nullptr : &*it;
}

bool EsPalabraAjena(std::string_view texto) {
  return std::ranges::find(kPalabrasAjenas, texto) != kPalabrasAjenas.end();
}

std::vector<Ficha> LeeFichas(std::string_view sentencia, bool admitePreguntas) {
  return Lector(sentencia, admitePreguntas).Lee();
}

std::string Lugar(std::string_view sentencia, std::size_t byte) {
  const std::string_view antes = sentencia.substr(0, byte);
  const auto linea = std::count(antes.begin(), antes.end(), '\n') + 1;
  const std::size_t columna = com::LargoUtf8(antes.substr(antes.rfind('\n') + 1)) + 1;
  return "Línea " + std::to_string(linea) + ", columna " + std::to_string(columna) + ": ";
}

void Rechaza(std::string_view sentencia, std::size_t byte, const std::string& que) {
  throw com::Error(com::error::kSentencia, Lugar(sentencia, byte) + que, std::string(sentencia));
}

}  // namespace autonomo
