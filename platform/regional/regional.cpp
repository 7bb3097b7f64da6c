#include "platform/regional/regional.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <utility>

#include "platform/com/cifras.h"
#include "platform/com/texto.h"

namespace regional {
namespace {

Ajustes& EnVigor() {
  static Ajustes ajustes;
  return ajustes;
}

// What a number format asks for.
struct Formato {
  bool moneda = false;
  bool miles = false;
  bool porciento = false;
  std::size_t enteros = 0;         // least whole digits
  std::size_t decimales = 0;       // always shown
  std::size_t decimalesTotal = 0;  // shown when not zero
};

Formato LeeFormato(std::string_view texto) {
  Formato f;
  bool trasPunto = false;
  for (const char c : texto) {
    switch (c) {
      case '$':
        f.moneda = true;
        break;
      case ',':
        f.miles = true;
        break;
      case '.':
        trasPunto = true;
        break;
      case '%':
        f.porciento = true;
        break;
      case '0':
        if (trasPunto) {
          f.decimales = ++f.decimalesTotal;
        } else {
          ++f.enteros;
        }
        break;
      case '#':
        if (trasPunto) ++f.decimalesTotal;
        break;
      default:
        break;
    }
  }
  return f;
}

std::string ConSeparadores(std::string_view enteros, char separador) {
  std::string s;
  for (std::size_t i = 0; i < enteros.size(); ++i) {
    if (i > 0 && (enteros.size() - i) % 3 == 0) s.push_back(separador);
    s.push_back(enteros[i]);
  }
  return s;
}

std::string Escribe(double valor, const Formato& f) {
  const double redondo = com::Redondea(f.porciento ? valor * 100 : valor, static_cast<int>(f.decimalesTotal));
  if (!std::isfinite(redondo)) return com::CStr(com::Variant(redondo));
  // Not printf: it would follow the process locale.
  char texto[400];
  const auto fin = std::to_chars(std::begin(texto), std::end(texto), std::fabs(redondo), std::chars_format::fixed,
                                 static_cast<int>(f.decimalesTotal));
  const std::string_view todo(texto, static_cast<std::size_t>(fin.ptr - texto));
  const auto punto = std::min(todo.find('.'), todo.size());
  std::string enteros(todo.substr(0, punto));
  std::string decimales(punto < todo.size() ? todo.substr(punto + 1) : std::string_view());
  while (decimales.size() > f.decimales && decimales.back() == '0') decimales.pop_back();
  if (enteros == "0" && f.enteros == 0) enteros.clear();
  if (enteros.size() < f.enteros) enteros.insert(0, f.enteros - enteros.size(), '0');
  const Ajustes& a = Actual();
  std::string s = redondo < 0 ? "-" : "";
  if (f.moneda) s += a.simboloMoneda;
  s += f.miles ? ConSeparadores(enteros, a.separadorMiles) : enteros;
  if (!decimales.empty()) s += a.separadorDecimal + decimales;
  if (f.porciento) s += '%';
  return s;
}

}  // namespace

const Ajustes& Actual() { return EnVigor(); }
void Fija(Ajustes ajustes) { EnVigor() = std::move(ajustes); }

std::string FechaCorta(com::Fecha f) {
  const com::Civil c = com::ACivil(f);
  const char s = Actual().separadorFecha;
  std::string texto;
  com::AgregaCifras(texto, c.dia, 2);
  com::AgregaCifras(texto += s, c.mes, 2);
  com::AgregaCifras(texto += s, c.anio, 4);
  return texto;
}

std::string TextoFecha(com::Fecha f) {
  std::string texto = FechaCorta(f);
  if (f.segundo == 0) return texto;
  const com::Civil c = com::ACivil(f);
  com::AgregaCifras(texto += ' ', c.hora, 2);
  com::AgregaCifras(texto += ':', c.minuto, 2);
  com::AgregaCifras(texto += ':', c.segundo, 2);
  return texto;
}

std::string Moneda(double importe, int decimales) {
  const auto n = static_cast<std::size_t>(std::clamp(decimales, 0, 9));
  return Escribe(importe, {.moneda = true, .miles = true, .enteros = 1, .decimales = n, .decimalesTotal = n});
}

std::string ConFormato(const com::Variant& valor, std::string_view formato) {
  if (valor.EsVacio() || valor.EsNulo() || valor.EsObjeto()) return {};
  if (formato.empty()) return com::CStr(valor);
  if (valor.EsNumero()) return Escribe(com::CDbl(valor), LeeFormato(formato));
  std::string texto = com::CStr(valor);
  if (!valor.EsTexto()) return texto;
  const auto numero = com::NumeroDe(texto);
  return numero ? Escribe(*numero, LeeFormato(formato)) : texto;
}

std::string ConMascara(std::string_view texto, std::string_view mascara) {
  if (!com::SoloDigitos(texto) || texto.size() >= mascara.size()) return std::string(texto);
  return std::string(mascara.size() - texto.size(), '0') + std::string(texto);
}

}  // namespace regional
