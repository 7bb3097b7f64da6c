#include "host/standalone/colaciones.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>

#include "host/standalone/letras.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"

namespace autonomo {
namespace {

std::string_view SinBlancosFinales(std::string_view s) {
  while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
  return s;
}

bool EsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

// Length of a common beginning of plain ASCII, eight bytes at a time. Most keys share one: the engine's searches spend
// their time here.
std::size_t ComienzoIgual(std::string_view a, std::string_view b) {
  constexpr std::uint64_t kNoAscii = 0x8080808080808080U;
  std::size_t i = 0;
  for (std::uint64_t x = 0, y = 0; i + sizeof x <= std::min(a.size(), b.size()); i += sizeof x) {
    std::memcpy(&x, a.data() + i, sizeof x);
    std::memcpy(&y, b.data() + i, sizeof y);
    if (x != y || (x & kNoAscii) != 0) break;
  }
  return i;
}

unsigned char PliegaAscii(char c) { return static_cast<unsigned char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c); }

// Takes one code point off the front; a broken sequence counts byte by byte.
char32_t TomaPunto(std::string_view& s) {
  std::size_t leidos = 0;
  const char32_t punto = com::LeeUtf8(s, leidos);
  s.remove_prefix(leidos);
  return punto;
}

// Order of a letter: the letter itself, then its accent. "ñ" is a letter of its own after "n".
struct Peso {
  std::uint32_t letra = 0, acento = 0;
};

Peso CalculaPeso(char32_t punto) {
  constexpr char32_t kEnie = 0xD1, kEnieMinuscula = 0xF1;
  const char32_t p = com::LetraPlegada(punto);
  if (p == kEnie || p == kEnieMinuscula) return {2U * U'N' + 1, 0};
  const char32_t base = com::LetraPlegada(SinAcentos(p));
  return {2U * base, base == p ? 0 : p};
}

// The weights of the Latin letters with accents are asked for most: they are worked out once.
constexpr char32_t kLatinas = 0x250;
using PesosLatinos = std::array<Peso, kLatinas>;
const PesosLatinos& LosPesosLatinos() {
  static const PesosLatinos pesos = [] {
    UsaLetrasUnicode();
    PesosLatinos p;
    for (char32_t c = 0; c < kLatinas; ++c) p[c] = CalculaPeso(c);
    return p;
  }();
  return pesos;
}

Peso PesoDe(char32_t punto) {
  if (punto < 0x80) return {2U * PliegaAscii(static_cast<char>(punto)), 0};
  return punto < kLatinas ? LosPesosLatinos()[punto] : CalculaPeso(punto);
}

int Signo(std::uint32_t a, std::uint32_t b) { return a < b ? -1 : a > b ? 1 : 0; }

// From the first byte that is not ASCII in either text on.
int ComparaConAcentos(std::string_view a, std::string_view b) {
  int acento = 0;
  while (!a.empty() && !b.empty()) {
    const Peso x = PesoDe(TomaPunto(a)), y = PesoDe(TomaPunto(b));
    if (const int letra = Signo(x.letra, y.letra); letra != 0) return letra;
    if (acento == 0) acento = Signo(x.acento, y.acento);
  }
  if (a.empty() != b.empty()) return a.empty() ? -1 : 1;
  return acento;
}

// --- LIKE

bool MismaLetra(char32_t a, char32_t b) {
  const Peso x = PesoDe(a), y = PesoDe(b);
  return x.letra == y.letra && x.acento == y.acento;
}

// Matches one code point with the set that stands after '[' and takes the set off the pattern, ']' included. Nothing
// when the set has no end.
std::optional<bool> EnConjunto(char32_t punto, std::string_view& patron) {
  const bool negado = !patron.empty() && patron.front() == '^';
  if (negado) patron.remove_prefix(1);
  bool dentro = false;
  const auto letra = PesoDe(punto).letra;
  for (bool primero = true; !patron.empty(); primero = false) {
    if (patron.front() == ']' && !primero) {
      patron.remove_prefix(1);
      return dentro != negado;
    }
    const char32_t desde = TomaPunto(patron);
    if (patron.size() > 1 && patron[0] == '-' && patron[1] != ']') {
      patron.remove_prefix(1);
      const char32_t hasta = TomaPunto(patron);
      dentro = dentro || (PesoDe(desde).letra <= letra && letra <= PesoDe(hasta).letra);
    } else {
      dentro = dentro || MismaLetra(desde, punto);
    }
  }
  return std::nullopt;
}

// --- functions

std::string_view TextoDe(sqlite3_value* v) {
  const auto* p = reinterpret_cast<const char*>(sqlite3_value_text(v));
  return p == nullptr ? std::string_view{} : std::string_view(p, static_cast<std::size_t>(sqlite3_value_bytes(v)));
}

int LlamaEspanol(void*, int na, const void* a, int nb, const void* b) {
  return ComparaEspanol({static_cast<const char*>(a), static_cast<std::size_t>(na)},
                        {static_cast<const char*>(b), static_cast<std::size_t>(nb)});
}

int LlamaFecha(void*, int na, const void* a, int nb, const void* b) {
  return ComparaFecha({static_cast<const char*>(a), static_cast<std::size_t>(na)},
                      {static_cast<const char*>(b), static_cast<std::size_t>(nb)});
}

template <std::string (*Convierte)(std::string_view)>
void LlamaCaja(sqlite3_context* contexto, int, sqlite3_value** argumentos) {
  if (sqlite3_value_type(argumentos[0]) == SQLITE_NULL) return;
  const std::string s = Convierte(TextoDe(argumentos[0]));
  sqlite3_result_text(contexto, s.data(), static_cast<int>(s.size()), SQLITE_TRANSIENT);
}

// The engine calls like(pattern, text) for "text LIKE pattern".
void LlamaParecido(sqlite3_context* contexto, int, sqlite3_value** argumentos) {
  if (sqlite3_value_type(argumentos[0]) == SQLITE_NULL || sqlite3_value_type(argumentos[1]) == SQLITE_NULL) return;
  sqlite3_result_int(contexto, Parecido(TextoDe(argumentos[1]), TextoDe(argumentos[0])) ? 1 : 0);
}

void LlamaRechaza(sqlite3_context* contexto, int, sqlite3_value** argumentos) {
  const std::string_view texto = TextoDe(argumentos[0]);
  sqlite3_result_error(contexto, texto.data(), static_cast<int>(texto.size()));
  sqlite3_result_error_code(contexto, SQLITE_CONSTRAINT);
}

struct FuncionSql {
  const char* nombre;
  int argumentos;
  int rasgos;
  void (*llama)(sqlite3_context*, int, sqlite3_value**);
};

constexpr int kPura = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
constexpr std::array kFunciones{
    FuncionSql{"upper", 1, kPura, LlamaCaja<com::Mayusculas>},
    FuncionSql{"lower", 1, kPura, LlamaCaja<com::Minusculas>},
    FuncionSql{"like", 2, kPura, LlamaParecido},
    FuncionSql{"rechaza", 1, SQLITE_UTF8 | SQLITE_INNOCUOUS, LlamaRechaza},
};

}  // namespace

int ComparaEspanol(std::string_view a, std::string_view b) {
  a = SinBlancosFinales(a);
  b = SinBlancosFinales(b);
  const std::size_t comun = std::min(a.size(), b.size());
  for (std::size_t i = ComienzoIgual(a, b); i < comun; ++i) {
    const char x = a[i], y = b[i];
    if (!EsAscii(x) || !EsAscii(y)) return ComparaConAcentos(a.substr(i), b.substr(i));
    if (x == y) continue;
    if (const int orden = PliegaAscii(x) - PliegaAscii(y); orden != 0) return orden;
  }
  return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

int ComparaFecha(std::string_view a, std::string_view b) {
  if (a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size()) == 0) return 0;
  constexpr std::string_view kMedianoche = "AAAA-MM-DD 00:00:00";
  constexpr std::size_t kDia = 10;
  if (a.size() >= kDia && b.size() >= kDia) {
    if (const int dia = std::memcmp(a.data(), b.data(), kDia); dia != 0) return dia;
  }
  a = SinBlancosFinales(a);
  b = SinBlancosFinales(b);
  const auto largo = [&](std::string_view s) {
    return s.size() < kDia ? s.size() : std::max(s.size(), kMedianoche.size());
  };
  const auto letra = [&](std::string_view s, std::size_t i) {
    const char c = i < s.size() ? s[i] : kMedianoche[i];
    return static_cast<unsigned char>(i == kDia && c == 'T' ? ' ' : c);
  };
  const std::size_t la = largo(a), lb = largo(b);
  for (std::size_t i = 0; i < std::min(la, lb); ++i)
    if (letra(a, i) != letra(b, i)) return letra(a, i) < letra(b, i) ? -1 : 1;
  return la < lb ? -1 : la > lb ? 1 : 0;
}

bool Parecido(std::string_view texto, std::string_view patron) {
  // Where to go on when a match fails: after the last "%", one letter further in the text.
  std::optional<std::string_view> trasComodin;
  std::string_view desde;
  for (;;) {
    if (!patron.empty() && patron.front() == '%') {
      patron.remove_prefix(1);
      trasComodin = patron;
      desde = texto;
      continue;
    }
    if (texto.empty()) return patron.find_first_not_of('%') == std::string_view::npos;
    bool igual = false;
    if (!patron.empty()) {
      const char32_t punto = TomaPunto(texto);
      const char32_t espera = TomaPunto(patron);
      igual = espera == '_' || (espera == '[' ? EnConjunto(punto, patron).value_or(false) : MismaLetra(punto, espera));
    }
    if (igual) continue;
    if (!trasComodin || desde.empty()) return false;
    TomaPunto(desde);
    texto = desde;
    patron = *trasComodin;
  }
}

void RegistraColaciones(sqlite3* base) {
  UsaLetrasUnicode();
  int rc = sqlite3_create_collation_v2(base, "ESPANOL", SQLITE_UTF8, nullptr, LlamaEspanol, nullptr);
  if (rc == SQLITE_OK) rc = sqlite3_create_collation_v2(base, "FECHA", SQLITE_UTF8, nullptr, LlamaFecha, nullptr);
  for (const auto& f : kFunciones) {
    if (rc != SQLITE_OK) break;
    rc =
        sqlite3_create_function_v2(base, f.nombre, f.argumentos, f.rasgos, nullptr, f.llama, nullptr, nullptr, nullptr);
  }
  if (rc != SQLITE_OK)
    throw com::Error(com::error::kBaseDatos, "No se pudieron registrar las reglas de comparación de la base de datos");
}

}  // namespace autonomo
