#include "recepcion/periodo.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/com/error.h"

namespace recepcion {

namespace {

constexpr std::array<std::string_view, 12> kMeses{"ENERO",      "FEBRERO", "MARZO",     "ABRIL",
                                                  "MAYO",       "JUNIO",   "JULIO",     "AGOSTO",
                                                  "SEPTIEMBRE", "OCTUBRE", "NOVIEMBRE", "DICIEMBRE"};
constexpr std::array<std::string_view, 7> kDias{"LUNES",   "MARTES", "MIERCOLES", "JUEVES",
                                                "VIERNES", "SABADO", "DOMINGO"};
constexpr int kDiasAtras = 30;  // how long ago a day without a year may be

using Texto = std::string_view;

std::optional<int> Numero(Texto palabra) {
  int n = 0;
  const auto [hasta, error] = std::from_chars(palabra.data(), palabra.data() + palabra.size(), n);
  const bool entero = error == std::errc{} && hasta == palabra.data() + palabra.size() && palabra.size() <= 4;
  return entero ? std::optional(n) : std::nullopt;
}

// 1 to 12 for a month's name or its first letters, three at least; 0 for another word.
int Mes(Texto palabra) {
  if (palabra == "SET" || palabra == "SETIEMBRE") return 9;
  for (std::size_t m = 0; m < kMeses.size(); ++m) {
    if (palabra.size() >= 3 && kMeses[m].starts_with(palabra)) return static_cast<int>(m) + 1;
  }
  return 0;
}

std::optional<com::Fecha> Dia(int anio, int mes, int dia) {
  try {
    return com::FechaDe(anio, mes, dia);
  } catch (const com::Error&) {  // no such day
    return std::nullopt;
  }
}

// A day of which the year, and of the first of two the month, may be missing (0).
struct Parcial {
  int dia = 0, mes = 0, anio = 0;
};

// Reads from the front of the words; what was read is gone from them.
class Lector {
 public:
  Lector(const std::vector<std::string>& palabras, std::size_t desde, com::Fecha hoy)
      : palabras_(palabras), i_(desde), hoy_(hoy) {}

  std::size_t posicion() const { return i_; }

  std::optional<Periodo> Lee() {
    for (const auto lee :
         {&Lector::LeeCercano, &Lector::LeeSemanaOMes, &Lector::LeeDiaDeSemana, &Lector::LeeDias, &Lector::LeeMes}) {
      const std::size_t antes = i_;
      if (const auto periodo = (this->*lee)()) return periodo;
      i_ = antes;
    }
    return std::nullopt;
  }

 private:
  Texto Actual(std::size_t mas = 0) const { return i_ + mas < palabras_.size() ? Texto(palabras_[i_ + mas]) : Texto(); }
  bool Toma(std::initializer_list<Texto> palabras) {
    std::size_t n = 0;
    for (const Texto p : palabras) {
      if (Actual(n++) != p) return false;
    }
    i_ += palabras.size();
    return true;
  }
  Periodo UnDia(int dias) const { return {com::MasDias(hoy_, dias), com::MasDias(hoy_, dias)}; }

  std::optional<Periodo> LeeCercano() {
    if (Toma({"HOY"})) return UnDia(0);
    if (Toma({"PASADO", "MANANA"})) return UnDia(2);
    if (Toma({"MANANA"})) return UnDia(1);
    if (Toma({"AYER"})) return UnDia(-1);
    if (Toma({"ANTIER"}) || Toma({"ANTEAYER"}) || Toma({"ANTES", "DE", "AYER"})) return UnDia(-2);
    return std::nullopt;
  }

  // 0 this one, 1 the next, -1 the last; nothing for a word that says no such thing.
  std::optional<int> LeeCual() {
    if (Toma({"ESTE"}) || Toma({"ESTA"})) return 0;
    if (Toma({"PROXIMO"}) || Toma({"PROXIMA"})) return 1;
    if (Toma({"QUE", "VIENE"}) || Toma({"SIGUIENTE"})) return 1;
    if (Toma({"PASADO"}) || Toma({"PASADA"}) || Toma({"ULTIMO"}) || Toma({"ULTIMA"})) return -1;
    return std::nullopt;
  }

  std::optional<Periodo> LeeSemanaOMes() {
    static_cast<void>(Toma({"LA"}) || Toma({"EL"}));
    std::optional<int> cual = LeeCual();
    const bool fin = Toma({"FIN", "DE", "SEMANA"}) || Toma({"FINDE"});
    const bool semana = !fin && Toma({"SEMANA"});
    const bool mes = !fin && !semana && Toma({"MES"});
    if (!fin && !semana && !mes) return std::nullopt;
    if (!cual) cual = LeeCual();
    if (!cual && !fin) return std::nullopt;
    const int n = cual.value_or(0);
    const com::Fecha lunes = com::MasDias(hoy_, 1 - com::DiaSemana(hoy_) + 7 * n);
    if (semana) return Periodo{lunes, com::MasDias(lunes, 6)};
    if (fin) return Periodo{com::MasDias(lunes, 4), com::MasDias(lunes, 6)};
    const com::Civil c = com::ACivil(hoy_);
    const int meses = c.anio * 12 + c.mes - 1 + n;
    return MesEntero(meses / 12, meses % 12 + 1);
  }

  std::optional<Periodo> LeeDiaDeSemana() {
    static_cast<void>(Toma({"EL"}));
    const std::optional<int> cual = LeeCual();
    const auto dia = std::ranges::find(kDias, Actual());
    if (dia == kDias.end()) return std::nullopt;
    ++i_;
    const int faltan = (static_cast<int>(dia - kDias.begin()) + 1 - com::DiaSemana(hoy_) + 7) % 7;
    if (cual == -1) return UnDia(faltan == 0 ? -7 : faltan - 7);
    return UnDia(cual == 1 && faltan == 0 ? 7 : faltan);
  }

  static std::optional<Periodo> MesEntero(int anio, int mes) {
    const auto primero = Dia(anio, mes, 1), siguiente = Dia(mes == 12 ? anio + 1 : anio, mes % 12 + 1, 1);
    if (!primero || !siguiente) return std::nullopt;
    return Periodo{*primero, com::MasDias(*siguiente, -1)};
  }

  std::optional<Periodo> LeeMes() {
    const bool en = Toma({"EN"});
    const Texto nombre = Actual();
    const int mes = Mes(nombre);
    if (mes == 0) return std::nullopt;
    ++i_;
    const int anio = LeeAnio();
    if (anio != 0) return MesEntero(anio, mes);
    if (!en && nombre != kMeses[static_cast<std::size_t>(mes) - 1]) return std::nullopt;  // "mar" begins many a name
    const auto fin = Completa({28, mes, 0});
    return fin ? MesEntero(com::ACivil(*fin).anio, mes) : std::nullopt;
  }

  int LeeAnio() {
    const std::size_t antes = i_;
    static_cast<void>(Toma({"DE"}) || Toma({"DEL"}));
    const auto n = Numero(Actual());
    if (n && *n >= 1900 && *n <= 9998 && Actual().size() == 4) {
      ++i_;
      return *n;
    }
    i_ = antes;
    return 0;
  }

  // "12", "12 mar", "12 de marzo de 2026", "12/03", "12/03/26", "2026-03-12".
  std::optional<Parcial> LeeParcial() {
    const Texto palabra = Actual();
    if (const auto iso = com::DeIso(palabra); iso && palabra.size() == 10) {
      ++i_;
      const com::Civil c = com::ACivil(*iso);
      return Parcial{c.dia, c.mes, c.anio};
    }
    if (const auto barra = palabra.find('/'); barra != Texto::npos) return LeeConBarras(palabra, barra);
    const auto dia = Numero(palabra);
    if (!dia || *dia < 1 || *dia > 31 || palabra.size() > 2) return std::nullopt;
    ++i_;
    const std::size_t antes = i_;
    static_cast<void>(Toma({"DE"}));
    const int mes = Mes(Actual());
    if (mes == 0) {
      i_ = antes;
      return Parcial{*dia, 0, 0};
    }
    ++i_;
    return Parcial{*dia, mes, LeeAnio()};
  }

  std::optional<Parcial> LeeConBarras(Texto palabra, std::size_t barra) {
    const auto otra = palabra.find('/', barra + 1);
    const auto dia = Numero(palabra.substr(0, barra));
    const auto mes = Numero(palabra.substr(barra + 1, otra == Texto::npos ? Texto::npos : otra - barra - 1));
    auto anio = std::optional(0);
    if (otra != Texto::npos) {
      anio = Numero(palabra.substr(otra + 1));
      if (anio && palabra.size() - otra == 3) *anio += 2000;
      if (anio && *anio < 1900) return std::nullopt;
    }
    if (!dia || !mes || !anio) return std::nullopt;
    ++i_;
    return Parcial{*dia, *mes, *anio};
  }

  std::optional<com::Fecha> Completa(const Parcial& p) const {
    if (p.anio != 0) return Dia(p.anio, p.mes, p.dia);
    const int esteAnio = com::ACivil(hoy_).anio;
    for (int anio = esteAnio - 1; anio <= esteAnio + 8; ++anio) {  // 29 February comes every eight years at worst
      const auto dia = Dia(anio, p.mes, p.dia);
      if (dia && com::DiasEntre(hoy_, *dia) >= -kDiasAtras) return dia;
    }
    return std::nullopt;
  }

  std::optional<Periodo> LeeDias() {
    static_cast<void>(Toma({"DEL"}) || Toma({"DESDE"}) || Toma({"EL"}));
    auto primero = LeeParcial();
    if (!primero) return std::nullopt;
    const std::size_t antes = i_;
    if (Toma({"AL"}) || Toma({"A"}) || Toma({"HASTA"}) || Toma({"-"})) {
      const auto ultimo = LeeParcial();
      if (ultimo && ultimo->mes != 0) return LeeEntre(*primero, *ultimo);
      i_ = antes;
    }
    const auto dia = primero->mes == 0 ? std::nullopt : Completa(*primero);
    return dia ? std::optional(Periodo{*dia, *dia}) : std::nullopt;
  }

  // The first day has the second's month and year where it has none.
  std::optional<Periodo> LeeEntre(Parcial primero, const Parcial& ultimo) const {
    const auto hasta = Completa(ultimo);
    if (primero.mes == 0) primero.mes = ultimo.mes;
    const bool sinAnio = primero.anio == 0;
    if (sinAnio && hasta) primero.anio = com::ACivil(*hasta).anio;
    auto desde = primero.anio == 0 ? std::nullopt : Completa(primero);
    if (sinAnio && desde && hasta && *desde > *hasta) {  // "28 dic al 3 ene"
      --primero.anio;
      desde = Completa(primero);
    }
    if (!desde || !hasta || *desde > *hasta) return std::nullopt;
    return Periodo{*desde, *hasta};
  }

  const std::vector<std::string>& palabras_;
  std::size_t i_;
  com::Fecha hoy_;
};

bool EsFecha(Texto pedazo) {
  return std::ranges::all_of(pedazo, [](char c) { return (c >= '0' && c <= '9') || c == '/' || c == '-'; });
}

// The text at its blanks: dates in digits stay whole, "12-15" are two days, all else is cut into words.
std::vector<std::string> Pedazos(const std::string& plano) {
  std::vector<std::string> pedazos;
  for (std::size_t i = 0; i < plano.size();) {
    const std::size_t fin = std::min(plano.find(' ', i), plano.size());
    const std::string pedazo = plano.substr(i, fin - i);
    i = fin + 1;
    const bool fecha = EsFecha(pedazo);
    const auto guion = pedazo.find('-');
    if (fecha && guion != std::string::npos && !com::DeIso(pedazo) && pedazo.size() > 1) {
      pedazos.push_back(pedazo.substr(0, guion));
      pedazos.emplace_back("-");
      pedazos.push_back(pedazo.substr(guion + 1));
    } else if (fecha && !pedazo.empty()) {
      pedazos.push_back(pedazo);
    } else {
      for (std::string& palabra : Palabras(pedazo)) pedazos.push_back(std::move(palabra));
    }
  }
  return pedazos;
}

}  // namespace

TextoLeido LeeTexto(std::string_view texto, com::Fecha hoy, SinAcento sinAcento) {
  const std::string plano = Plano(texto, sinAcento);
  TextoLeido leido;
  leido.todas = Palabras(plano);
  const std::vector<std::string> pedazos = Pedazos(plano);
  for (std::size_t i = 0; i < pedazos.size();) {
    if (!leido.periodo) {
      Lector lector(pedazos, i, com::SoloFecha(hoy));
      if ((leido.periodo = lector.Lee())) {
        i = lector.posicion();
        continue;
      }
    }
    for (std::string& palabra : Palabras(pedazos[i])) leido.resto.push_back(std::move(palabra));
    ++i;
  }
  return leido;
}

}  // namespace recepcion
