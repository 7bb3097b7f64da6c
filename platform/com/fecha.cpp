#include "platform/com/fecha.h"

#include <chrono>
#include <cmath>

#include "platform/com/cifras.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"

namespace com {
namespace {

constexpr int kAnioMinimo = 100, kAnioMaximo = 9999;
// Days from 1899-12-30 to 1970-01-01, where the calendar of the standard library begins to count.
constexpr int kDiasOrigen = 25569;

std::chrono::year_month_day DiaCivil(int anio, int mes, int dia) { return std::chrono::year(anio) / mes / dia; }

bool EsValida(int anio, int mes, int dia, int hora, int minuto, int segundo) {
  return anio >= kAnioMinimo && anio <= kAnioMaximo && mes >= 1 && mes <= 12 && dia >= 1 && dia <= 31 &&
         DiaCivil(anio, mes, dia).ok() && hora >= 0 && hora < 24 && minuto >= 0 && minuto < 60 && segundo >= 0 &&
         segundo < 60;
}

// Day number of a valid day.
std::int32_t NumeroDeDia(int anio, int mes, int dia) {
  const auto dias = std::chrono::sys_days(DiaCivil(anio, mes, dia)).time_since_epoch().count();
  return static_cast<std::int32_t>(dias) + kDiasOrigen;
}

std::chrono::sys_days DiaDelSistema(Fecha f) { return std::chrono::sys_days(std::chrono::days(f.dia - kDiasOrigen)); }

// Reads exactly n digits.
bool LeeDigitos(std::string_view& texto, std::size_t n, int& valor) {
  if (texto.size() < n) return false;
  valor = 0;
  for (std::size_t i = 0; i < n; ++i) {
    if (!EsDigito(texto[i])) return false;
    valor = valor * 10 + (texto[i] - '0');
  }
  texto.remove_prefix(n);
  return true;
}

bool Come(std::string_view& texto, char c) {
  if (texto.empty() || texto.front() != c) return false;
  texto.remove_prefix(1);
  return true;
}

}  // namespace

Fecha FechaDe(int anio, int mes, int dia, int hora, int minuto, int segundo) {
  if (!EsValida(anio, mes, dia, hora, minuto, segundo)) {
    throw Error(error::kTipos, "No coinciden los tipos: la fecha no existe en el calendario");
  }
  return {NumeroDeDia(anio, mes, dia), hora * 3600 + minuto * 60 + segundo};
}

Civil ACivil(Fecha f) {
  const std::chrono::year_month_day dia(DiaDelSistema(f));
  Civil c;
  c.anio = static_cast<int>(dia.year());
  c.mes = static_cast<int>(static_cast<unsigned>(dia.month()));
  c.dia = static_cast<int>(static_cast<unsigned>(dia.day()));
  c.hora = f.segundo / 3600;
  c.minuto = f.segundo / 60 % 60;
  c.segundo = f.segundo % 60;
  return c;
}

double ADiasCom(Fecha f) {
  const double fraccion = static_cast<double>(f.segundo) / kSegundosDia;
  return f.dia >= 0 ? f.dia + fraccion : f.dia - fraccion;
}

Fecha DeDiasCom(double dias) {
  // 01/01/0100 and the last second of 31/12/9999.
  if (!(dias > -657435.0 && dias < 2958466.0)) {
    throw Error(error::kDesbordamiento, "La fecha queda fuera del calendario");
  }
  const double entero = std::trunc(dias);
  Fecha f;
  f.dia = static_cast<std::int32_t>(entero);
  f.segundo = static_cast<std::int32_t>(std::lround(std::fabs(dias - entero) * kSegundosDia));
  if (f.segundo == kSegundosDia) {
    f.dia += 1;
    f.segundo = 0;
  }
  return f;
}

int DiaSemana(Fecha f) { return static_cast<int>(std::chrono::weekday(DiaDelSistema(f)).iso_encoding()); }

std::string AIso(Fecha f) {
  const Civil c = ACivil(f);
  std::string texto;
  AgregaCifras(texto, c.anio, 4);
  AgregaCifras(texto += '-', c.mes, 2);
  AgregaCifras(texto += '-', c.dia, 2);
  if (f.segundo == 0) return texto;
  AgregaCifras(texto += ' ', c.hora, 2);
  AgregaCifras(texto += ':', c.minuto, 2);
  AgregaCifras(texto += ':', c.segundo, 2);
  return texto;
}

std::optional<Fecha> DeIso(std::string_view texto) {
  int anio = 0, mes = 0, dia = 0, hora = 0, minuto = 0, segundo = 0;
  if (!LeeDigitos(texto, 4, anio) || !Come(texto, '-') || !LeeDigitos(texto, 2, mes) || !Come(texto, '-') ||
      !LeeDigitos(texto, 2, dia)) {
    return std::nullopt;
  }
  if (!texto.empty()) {
    if (!Come(texto, ' ') && !Come(texto, 'T')) return std::nullopt;
    if (!LeeDigitos(texto, 2, hora) || !Come(texto, ':') || !LeeDigitos(texto, 2, minuto)) return std::nullopt;
    if (!texto.empty() && (!Come(texto, ':') || !LeeDigitos(texto, 2, segundo))) return std::nullopt;
    if (!texto.empty()) return std::nullopt;
  }
  if (!EsValida(anio, mes, dia, hora, minuto, segundo)) return std::nullopt;
  return Fecha{NumeroDeDia(anio, mes, dia), hora * 3600 + minuto * 60 + segundo};
}

}  // namespace com
