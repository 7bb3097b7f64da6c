#include "platform/com/variant.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <limits>

#include "platform/com/cifras.h"
#include "platform/regional/regional.h"

namespace com {
namespace {

// Significant digits that a double shows in decimal notation.
constexpr int kCifras = 15;

[[noreturn]] void FallaTipos(const Variant& v, const char* destino) {
  std::string que;
  if (const auto* texto = std::get_if<std::string>(&v.Contenido())) que = ": «" + *texto + "» no es " + destino;
  throw Error(error::kTipos, "No coinciden los tipos" + que);
}

[[noreturn]] void FallaNulo() { throw Error(error::kUsoDeNulo, "Uso no válido de Null"); }

bool Come(std::string_view& s, std::string_view prefijo) {
  if (prefijo.empty() || !s.starts_with(prefijo)) return false;
  s.remove_prefix(prefijo.size());
  return true;
}

void SaltaBlancos(std::string_view& s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
}

std::string_view SinBlancos(std::string_view s) {
  SaltaBlancos(s);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

// Whole digits with or without group separators; groups after the first have three digits. Appends the digits.
bool LeeEnteros(std::string_view& s, char miles, std::string& cifras) {
  std::size_t grupo = 0;
  bool agrupado = false;
  while (!s.empty()) {
    if (EsDigito(s.front())) {
      cifras.push_back(s.front());
      ++grupo;
    } else if (s.front() == miles && grupo > 0 && (agrupado ? grupo == 3 : grupo <= 3)) {
      agrupado = true;
      grupo = 0;
    } else {
      break;
    }
    s.remove_prefix(1);
  }
  return !agrupado || grupo == 3;
}

bool LeeExponente(std::string_view& s, std::string& cifras) {
  if (s.empty() || (s.front() != 'e' && s.front() != 'E')) return true;
  cifras.push_back('e');
  s.remove_prefix(1);
  if (!s.empty() && (s.front() == '+' || s.front() == '-')) {
    if (s.front() == '-') cifras.push_back('-');
    s.remove_prefix(1);
  }
  if (s.empty() || !EsDigito(s.front())) return false;
  while (!s.empty() && EsDigito(s.front())) {
    cifras.push_back(s.front());
    s.remove_prefix(1);
  }
  return true;
}

double NumeroDeVariant(const Variant& v, const char* destino) {
  const auto& c = v.Contenido();
  if (v.EsVacio()) return 0;
  if (v.EsNulo()) FallaNulo();
  if (const auto* d = std::get_if<double>(&c)) return *d;
  if (const auto* i = std::get_if<std::int32_t>(&c)) return *i;
  if (const auto* b = std::get_if<bool>(&c)) return *b ? -1 : 0;
  if (const auto* f = std::get_if<Fecha>(&c)) return ADiasCom(*f);
  if (const auto* s = std::get_if<std::string>(&c)) {
    if (const auto n = NumeroDe(*s)) {
      if (std::isinf(*n)) throw Error(error::kDesbordamiento, "«" + *s + "» es un número demasiado grande");
      return *n;
    }
  }
  FallaTipos(v, destino);
}

template <class Entero>
Entero EnteroDeVariant(const Variant& v) {
  const double redondo = std::nearbyint(NumeroDeVariant(v, "un número"));
  if (!(redondo >= std::numeric_limits<Entero>::min() && redondo <= std::numeric_limits<Entero>::max())) {
    const bool grande = redondo > 0;
    const double limite = grande ? std::numeric_limits<Entero>::max() : std::numeric_limits<Entero>::min();
    throw Error(error::kDesbordamiento,
                "El número " + CStr(Variant(redondo)) +
                    (grande ? " es demasiado grande: el máximo es " : " es demasiado pequeño: el mínimo es ") +
                    CStr(Variant(limite)));
  }
  return static_cast<Entero>(redondo);
}

// The decimal digits of |valor| (kCifras of them) and the power of ten of the first.
struct Decimal {
  std::string cifras;
  int exponente = 0;
};

Decimal ADecimal(double valor) {
  // "d.dddddddddddddde+xx"
  char texto[40];
  const auto fin =
      std::to_chars(std::begin(texto), std::end(texto), std::fabs(valor), std::chars_format::scientific, kCifras - 1);
  const std::string_view todo(texto, static_cast<std::size_t>(fin.ptr - texto));
  const auto e = todo.find('e');
  Decimal d;
  for (const char c : todo.substr(0, e)) {
    if (EsDigito(c)) d.cifras.push_back(c);
  }
  for (const char c : todo.substr(e + 2)) d.exponente = d.exponente * 10 + (c - '0');
  if (todo[e + 1] == '-') d.exponente = -d.exponente;
  return d;
}

double DeDecimal(const Decimal& d, bool negativo) {
  const std::string texto = d.cifras + "e" + std::to_string(d.exponente - static_cast<int>(d.cifras.size()) + 1);
  double valor = 0;
  std::from_chars(texto.data(), texto.data() + texto.size(), valor);
  return negativo ? -valor : valor;
}

std::string TextoDeNumero(double valor) {
  if (valor == 0) return "0";
  if (!std::isfinite(valor)) return std::isnan(valor) ? "NaN" : (valor < 0 ? "-Inf" : "Inf");
  Decimal d = ADecimal(valor);
  while (d.cifras.size() > 1 && d.cifras.back() == '0') d.cifras.pop_back();
  const int n = static_cast<int>(d.cifras.size());
  const char punto = regional::Actual().separadorDecimal;
  std::string s = valor < 0 ? "-" : "";
  if (d.exponente >= kCifras || d.exponente - n + 1 < -kCifras) {
    s += d.cifras.substr(0, 1);
    if (n > 1) s += punto + d.cifras.substr(1);
    s += d.exponente < 0 ? "E-" : "E+";
    AgregaCifras(s, static_cast<std::uint32_t>(std::abs(d.exponente)), 2);
    return s;
  }
  if (d.exponente < 0) return s + "0" + punto + std::string(static_cast<std::size_t>(-d.exponente - 1), '0') + d.cifras;
  const int enteras = d.exponente + 1;
  if (n <= enteras) return s + d.cifras + std::string(static_cast<std::size_t>(enteras - n), '0');
  return s + d.cifras.substr(0, static_cast<std::size_t>(enteras)) + punto +
         d.cifras.substr(static_cast<std::size_t>(enteras));
}

// Number of 1 to maximo digits.
bool LeeParte(std::string_view& s, std::size_t minimo, std::size_t maximo, int& valor) {
  std::size_t n = 0;
  valor = 0;
  while (n < maximo && n < s.size() && EsDigito(s[n])) {
    valor = valor * 10 + (s[n] - '0');
    ++n;
  }
  s.remove_prefix(n);
  return n >= minimo;
}

// "hh:mm" or "hh:mm:ss".
bool LeeHora(std::string_view& s, int& hora, int& minuto, int& segundo) {
  if (!LeeParte(s, 1, 2, hora) || !Come(s, ":") || !LeeParte(s, 2, 2, minuto)) return false;
  return !Come(s, ":") || LeeParte(s, 2, 2, segundo);
}

}  // namespace

std::optional<double> NumeroDe(std::string_view texto) {
  const auto& ajustes = regional::Actual();
  std::string_view s = SinBlancos(texto);
  bool negativo = false, conSigno = false;
  const auto signo = [&] {
    if (conSigno || s.empty() || (s.front() != '-' && s.front() != '+')) return;
    conSigno = true;
    negativo = s.front() == '-';
    s.remove_prefix(1);
    SaltaBlancos(s);
  };
  signo();
  if (Come(s, ajustes.simboloMoneda)) {
    SaltaBlancos(s);
    signo();
  }
  std::string cifras;
  if (!LeeEnteros(s, ajustes.separadorMiles, cifras)) return std::nullopt;
  if (!s.empty() && s.front() == ajustes.separadorDecimal) {
    s.remove_prefix(1);
    cifras.push_back('.');
    while (!s.empty() && EsDigito(s.front())) {
      cifras.push_back(s.front());
      s.remove_prefix(1);
    }
  }
  if (cifras.empty() || cifras == ".") return std::nullopt;
  if (!LeeExponente(s, cifras) || !s.empty()) return std::nullopt;
  double valor = 0;
  const auto r = std::from_chars(cifras.data(), cifras.data() + cifras.size(), valor);
  // Too large is infinite (the conversion to a number reports the overflow), too small is zero.
  if (r.ec == std::errc::result_out_of_range) {
    const bool conExponente = cifras.find('e') != std::string::npos;
    const bool pequenio = conExponente ? cifras.find("e-") != std::string::npos : cifras[0] == '0' || cifras[0] == '.';
    valor = pequenio ? 0 : std::numeric_limits<double>::infinity();
  }
  return negativo ? -valor : valor;
}

std::optional<Fecha> FechaDeTexto(std::string_view texto) {
  std::string_view s = SinBlancos(texto);
  if (const auto iso = DeIso(s)) return iso;
  const char separador = regional::Actual().separadorFecha;
  const std::string_view corta(&separador, 1);
  int anio = 0, mes = 0, dia = 0, hora = 0, minuto = 0, segundo = 0;
  const auto corte = [&] { return Come(s, "/") || Come(s, corta); };
  if (!LeeParte(s, 1, 2, dia) || !corte() || !LeeParte(s, 1, 2, mes) || !corte() || !LeeParte(s, 4, 4, anio)) {
    return std::nullopt;
  }
  if (!s.empty()) {
    if (s.front() != ' ') return std::nullopt;
    SaltaBlancos(s);
    if (!LeeHora(s, hora, minuto, segundo) || !s.empty()) return std::nullopt;
  }
  try {
    return FechaDe(anio, mes, dia, hora, minuto, segundo);
  } catch (const Error&) {
    return std::nullopt;
  }
}

double CDbl(const Variant& v) { return NumeroDeVariant(v, "un número"); }
std::int16_t CInt(const Variant& v) { return EnteroDeVariant<std::int16_t>(v); }
std::int32_t CLng(const Variant& v) { return EnteroDeVariant<std::int32_t>(v); }

bool CBool(const Variant& v) {
  if (const auto* s = std::get_if<std::string>(&v.Contenido())) {
    const std::string palabra = Minusculas(SinBlancos(*s));
    if (palabra == "true" || palabra == "verdadero") return true;
    if (palabra == "false" || palabra == "falso") return false;
  }
  return NumeroDeVariant(v, "verdadero ni falso") != 0;
}

Fecha CDate(const Variant& v) {
  if (const auto* f = std::get_if<Fecha>(&v.Contenido())) return *f;
  if (const auto* s = std::get_if<std::string>(&v.Contenido())) {
    if (const auto f = FechaDeTexto(*s)) return *f;
    FallaTipos(v, "una fecha");
  }
  return DeDiasCom(NumeroDeVariant(v, "una fecha"));
}

std::string TextoDe(const Variant& v) { return v.EsNulo() ? std::string() : CStr(v); }

std::string CStr(const Variant& v) {
  const auto& c = v.Contenido();
  if (v.EsVacio()) return {};
  if (v.EsNulo()) FallaNulo();
  if (const auto* s = std::get_if<std::string>(&c)) return *s;
  if (const auto* i = std::get_if<std::int32_t>(&c)) return std::to_string(*i);
  if (const auto* d = std::get_if<double>(&c)) return TextoDeNumero(*d);
  if (const auto* f = std::get_if<Fecha>(&c)) return regional::TextoFecha(*f);
  if (const auto* b = std::get_if<bool>(&c)) return *b ? "Verdadero" : "Falso";
  FallaTipos(v, "un texto");
}

bool Difieren(const Variant& a, const Variant& b) {
  if (a.EsNulo() || b.EsNulo()) return false;
  if (a.EsObjeto() || b.EsObjeto()) return !(a == b);
  if (a.EsFecha() && b.EsFecha()) return !(a == b);
  const auto esCantidad = [](const Variant& v) { return v.EsNumero() || std::holds_alternative<bool>(v.Contenido()); };
  if (esCantidad(a) || esCantidad(b)) {
    const Variant& otro = esCantidad(a) ? b : a;
    if (const auto* s = std::get_if<std::string>(&otro.Contenido()); s == nullptr || NumeroDe(*s)) {
      return CDbl(a) != CDbl(b);
    }
  }
  return CStr(a) != CStr(b);
}

double Redondea(double valor, int decimales) {
  if (valor == 0 || !std::isfinite(valor)) return valor;
  Decimal d = ADecimal(valor);
  const int quedan = d.exponente + 1 + decimales;
  if (quedan >= kCifras) return valor;
  if (quedan < 0) return 0;
  const auto corte = static_cast<std::size_t>(quedan);
  const std::string resto = d.cifras.substr(corte);
  const bool mitad = resto[0] == '5' && resto.find_first_not_of('0', 1) == std::string::npos;
  const bool impar = corte > 0 && (d.cifras[corte - 1] - '0') % 2 != 0;
  const bool sube = mitad ? impar : resto[0] >= '5';
  // A leading zero takes the carry.
  d.cifras = "0" + d.cifras.substr(0, corte);
  if (sube) {
    std::size_t i = corte;
    while (d.cifras[i] == '9') d.cifras[i--] = '0';
    ++d.cifras[i];
  }
  d.exponente += 1;
  const double redondo = DeDecimal(d, valor < 0);
  return redondo == 0 ? 0 : redondo;
}

}  // namespace com
