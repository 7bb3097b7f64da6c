// Dates without clock or time zone: a day number and the seconds of that day.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace com {

inline constexpr std::int32_t kSegundosDia = 86400;

// dia: days since 1899-12-30 (the COM date origin), negative before it; segundo: 0 to 86399.
struct Fecha {
  std::int32_t dia = 0;
  std::int32_t segundo = 0;
  bool operator==(const Fecha&) const = default;
  constexpr std::strong_ordering operator<=>(const Fecha& otra) const {
    return dia == otra.dia ? segundo <=> otra.segundo : dia <=> otra.dia;
  }
};

// Calendar parts of a date; mes 1-12, dia 1-31, hora 0-23.
struct Civil {
  int anio = 1899, mes = 12, dia = 30, hora = 0, minuto = 0, segundo = 0;
};

// Raises Error kTipos when the parts do not name a day from 01/01/0100 to 31/12/9999 or a time of day.
Fecha FechaDe(int anio, int mes, int dia, int hora = 0, int minuto = 0, int segundo = 0);
Civil ACivil(Fecha f);

// COM date: days as a double, the fraction is the time of day.
double ADiasCom(Fecha f);
Fecha DeDiasCom(double dias);

inline Fecha SoloFecha(Fecha f) { return {f.dia, 0}; }
inline Fecha MasDias(Fecha f, int dias) { return {f.dia + dias, f.segundo}; }
// Calendar days from a to b; times of day do not count.
inline int DiasEntre(Fecha a, Fecha b) { return b.dia - a.dia; }
// 1 Monday to 7 Sunday.
int DiaSemana(Fecha f);

// "AAAA-MM-DD", followed by " HH:MM:SS" when the time is not midnight.
std::string AIso(Fecha f);
// Accepts "AAAA-MM-DD", "AAAA-MM-DD HH:MM", "AAAA-MM-DD HH:MM:SS" (blank or T between); nothing otherwise.
std::optional<Fecha> DeIso(std::string_view texto);

}  // namespace com
