#include "recepcion/periodo.h"

#include <algorithm>
#include <charconv>
#include <sstream>

#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/regional/nombres.h"

namespace recepcion {

namespace {

constexpr int kDiasAtras = 30;         // how long ago a day without a year may be
constexpr int kDiasDeBusca = 8 * 366;  // 29 February comes every eight years at worst
constexpr int kPrimerAnio = 1900, kUltimoAnio = 9998;

using Texto = std::string_view;

std::optional<int> Numero(Texto palabra) {
  int n = 0;
  const auto [hasta, error] = std::from_chars(palabra.data(), palabra.data() + palabra.size(), n);
  const bool entero = error == std::errc{} && hasta == palabra.data() + palabra.size() && palabra.size() <= 4;
  return entero ? std::optional(n) : std::nullopt;
}

std::optional<com::Fecha> Dia(int anio, int mes, int dia) {
  try {
    return com::FechaDe(anio, mes, dia);
  } catch (const com::Error&) {  // no such day
    return std::nullopt;
  }
}

// --- the words

// The plain names, in the order of the regional ones.
struct Nombres {
  explicit Nombres(SinAcento sinAcento) {
    for (const Texto mes : regional::kMeses) meses.push_back(Plano(mes, sinAcento));
    for (const Texto dia : regional::kDias) dias.push_back(Plano(dia, sinAcento));
  }

  // 1 to 12 for a month's name or its first letters, three at least; 0 for another word.
  int Mes(Texto palabra) const {
    if (palabra == "SET" || palabra == "SETIEMBRE") return 9;
    for (std::size_t m = 0; m < meses.size(); ++m) {
      if (palabra.size() >= 3 && meses[m].starts_with(palabra)) return static_cast<int>(m) + 1;
    }
    return 0;
  }
  // 1 to 7 from Monday, 0 for another word.
  int DiaSemana(Texto palabra) const {
    const auto dia = std::ranges::find(dias, palabra);
    return dia == dias.end() ? 0 : static_cast<int>(dia - dias.begin()) + 1;
  }

  std::vector<std::string> meses, dias;
};

// --- a day as it was written

// What was not written of it is 0.
struct Escrito {
  int dia = 0, mes = 0, anio = 0;
  int diaSemana = 0;       // 1 Monday; next to a month it decides nothing
  bool mesEntero = false;  // the month is meant; dia is one that every month has
  bool abreviado = false;  // the month is by its first letters, which begin many a name

  // A number alone, which may be a room's.
  bool Suelto() const { return mes == 0 && diaSemana == 0; }
};

Escrito DeFecha(com::Fecha fecha) {
  const com::Civil c = com::ACivil(fecha);
  return {c.dia, c.mes, c.anio};
}

bool Es(const Escrito& e, com::Fecha fecha) {
  const com::Civil c = com::ACivil(fecha);
  return (e.dia == 0 || e.dia == c.dia) && (e.mes == 0 || e.mes == c.mes) &&
         (e.diaSemana == 0 || e.mes != 0 || e.diaSemana == com::DiaSemana(fecha));
}

// The first day from there on, or with paso -1 the last one up to there, that is as written.
std::optional<com::Fecha> Cercano(const Escrito& e, com::Fecha desde, int paso) {
  if (e.anio != 0) return Dia(e.anio, e.mes, e.dia);
  for (int i = 0; i <= kDiasDeBusca; ++i) {
    if (const com::Fecha dia = com::MasDias(desde, i * paso); Es(e, dia)) return dia;
  }
  return std::nullopt;
}
std::optional<com::Fecha> PrimeroDesde(const Escrito& e, com::Fecha desde) { return Cercano(e, desde, 1); }
std::optional<com::Fecha> UltimoHasta(const Escrito& e, com::Fecha hasta) { return Cercano(e, hasta, -1); }

// What it is taken for alone. A bare number or a weekday is the next one, both together are the nearest one; all else
// may have been a while ago.
std::optional<com::Fecha> Solo(const Escrito& e, com::Fecha hoy) {
  if (e.mes != 0) return PrimeroDesde(e, com::MasDias(hoy, -kDiasAtras));
  const auto siguiente = PrimeroDesde(e, hoy);
  if (e.dia == 0 || e.diaSemana == 0) return siguiente;
  const auto anterior = UltimoHasta(e, hoy);
  if (!siguiente || !anterior) return siguiente;
  const int hace = com::DiasEntre(*anterior, hoy);
  return hace <= kDiasAtras && hace < com::DiasEntre(hoy, *siguiente) ? anterior : siguiente;
}

std::optional<com::Fecha> FinDeMes(com::Fecha fecha) {
  const com::Civil c = com::ACivil(fecha);
  const auto siguiente = Dia(c.mes == 12 ? c.anio + 1 : c.anio, c.mes % 12 + 1, 1);
  return siguiente ? std::optional(com::MasDias(*siguiente, -1)) : std::nullopt;
}

std::optional<Periodo> Entero(const Escrito& e, com::Fecha dia) {
  if (!e.mesEntero) return Periodo{dia, dia};
  const auto fin = FinDeMes(dia);
  const com::Civil c = com::ACivil(dia);
  return fin ? std::optional(Periodo{com::MasDias(dia, 1 - c.dia), *fin}) : std::nullopt;
}

// One day is found from the other: the second from the first when the first says more, or is a weekday.
std::optional<Periodo> Entre(const Escrito& primero, const Escrito& ultimo, com::Fecha hoy) {
  const auto cuantoDice = [](const Escrito& e) { return e.anio != 0 ? 2 : e.mes != 0 ? 1 : 0; };
  const bool diaSemana = primero.mes == 0 && primero.diaSemana != 0;
  const bool otroDia = ultimo.mes == 0 && ultimo.diaSemana != 0;
  std::optional<com::Fecha> desde, hasta;
  if (cuantoDice(primero) > cuantoDice(ultimo) || diaSemana || (otroDia && primero.mes == 0)) {
    desde = Solo(primero, hoy);
    if (desde) hasta = PrimeroDesde(ultimo, otroDia ? com::MasDias(*desde, 1) : *desde);
  } else {
    hasta = Solo(ultimo, hoy);
    if (hasta) desde = UltimoHasta(primero, *hasta);
  }
  if (!desde || !hasta || *desde > *hasta) return std::nullopt;
  const auto uno = Entero(primero, *desde), otro = Entero(ultimo, *hasta);
  return uno && otro ? std::optional(Periodo{uno->desde, otro->hasta}) : std::nullopt;
}

// "12/03", "12/03/26", "15-03-2026", "15.03.2026", "2026-03-12".
std::optional<Escrito> DeCifras(Texto pedazo) {
  const std::size_t a = pedazo.find_first_of("/-.");
  if (a == Texto::npos) return std::nullopt;
  const char signo = pedazo[a];
  const std::size_t b = pedazo.find(signo, a + 1);
  if (b == Texto::npos && signo != '/') return std::nullopt;
  Texto partes[] = {pedazo.substr(0, a), pedazo.substr(a + 1, b == Texto::npos ? b : b - a - 1),
                    b == Texto::npos ? Texto() : pedazo.substr(b + 1)};
  if (partes[0].size() == 4) std::swap(partes[0], partes[2]);
  const auto dia = Numero(partes[0]), mes = Numero(partes[1]);
  auto anio = b == Texto::npos ? std::optional(0) : Numero(partes[2]);
  if (anio && partes[2].size() == 2) *anio += 2000;
  if (!dia || !mes || !anio || *dia < 1 || *dia > 31 || *mes < 1 || *mes > 12) return std::nullopt;
  if (b != Texto::npos && (*anio < kPrimerAnio || *anio > kUltimoAnio)) return std::nullopt;
  return Escrito{*dia, *mes, *anio};
}

// --- the grammar

// Reads from a place in the words. A period is a range of two days, a week, a month or a day; a day is said by its
// number, its weekday (which one, before or after it) or from today; a month may stand for its days.
class Lector {
 public:
  // conNumeros: a number alone behind a weekday or a month is its day.
  Lector(const std::vector<std::string>& palabras, const Nombres& nombres, com::Fecha hoy, bool conNumeros)
      : palabras_(palabras), nombres_(nombres), hoy_(hoy), conNumeros_(conNumeros) {}

  // The period that begins at this word, which becomes the one behind it.
  std::optional<Periodo> Lee(std::size_t& lugar) {
    i_ = lugar;
    auto periodo = Intenta(&Lector::LeeRango);
    if (!periodo) periodo = Intenta(&Lector::LeeSemanaOMes);
    if (!periodo) periodo = Intenta(&Lector::LeeUno);
    if (periodo) lugar = i_;
    return periodo;
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
  bool TomaUna(std::initializer_list<Texto> palabras) {
    return std::ranges::any_of(palabras, [&](Texto p) { return Toma({p}); });
  }
  // What was not read leaves the place where it was.
  template <typename Que>
  std::optional<Que> Intenta(std::optional<Que> (Lector::*lee)()) {
    const std::size_t antes = i_;
    std::optional<Que> leido = (this->*lee)();
    if (!leido) i_ = antes;
    return leido;
  }

  std::optional<Periodo> LeeRango() {
    const bool entre = Toma({"ENTRE"});
    if (!entre) static_cast<void>(TomaUna({"DEL", "DE", "DESDE"}));
    const auto primero = LeeExtremo();
    if (!primero) return std::nullopt;
    const bool raya = Toma({"-"});
    if (!raya && !(entre ? Toma({"Y"}) : TomaUna({"AL", "A", "HASTA"}))) return std::nullopt;
    const auto ultimo = LeeExtremo();
    // "12-15" may be anything.
    if (!ultimo || (raya && primero->Suelto() && ultimo->Suelto())) return std::nullopt;
    return Entre(*primero, *ultimo, hoy_);
  }

  std::optional<Periodo> LeeUno() {
    const bool en = Toma({"EN"});
    if (!en) static_cast<void>(TomaUna({"DEL", "DE", "DESDE"}));
    const auto e = LeeExtremo();
    if (!e || e->Suelto() || (e->abreviado && !en)) return std::nullopt;
    const auto dia = Solo(*e, hoy_);
    return dia ? Entero(*e, *dia) : std::nullopt;
  }

  std::optional<Periodo> LeeSemanaOMes() {
    static_cast<void>(TomaUna({"LA", "EL"}));
    std::optional<int> cual = LeeCual();
    const bool fin = Toma({"FIN", "DE", "SEMANA"}) || Toma({"FINDE"});
    const bool semana = !fin && Toma({"SEMANA"});
    const bool mes = !fin && !semana && Toma({"MES"});
    if (!fin && !semana && !mes) return std::nullopt;
    if (!cual) cual = LeeCual();
    if (!cual && !fin) return std::nullopt;
    if (mes) return Entero({.mesEntero = true}, DelMes(*cual));
    const com::Fecha lunes = com::MasDias(hoy_, 1 - com::DiaSemana(hoy_) + 7 * cual.value_or(0));
    return Periodo{fin ? com::MasDias(lunes, 4) : lunes, com::MasDias(lunes, 6)};
  }

  // The first day of this month (0), of the next one (1), of the last one (-1).
  com::Fecha DelMes(int cual) const {
    const com::Civil c = com::ACivil(hoy_);
    const int meses = c.anio * 12 + c.mes - 1 + cual;
    return com::FechaDe(meses / 12, meses % 12 + 1, 1);
  }

  // 0 this one, 1 the next, -1 the last; nothing for a word that says no such thing.
  std::optional<int> LeeCual() {
    if (TomaUna({"ESTE", "ESTA"})) return 0;
    if (TomaUna({"PROXIMO", "PROXIMA", "SIGUIENTE"}) || Toma({"QUE", "VIENE"})) return 1;
    if (Actual() == "PASADO" && Actual(1) == "MANANA") return std::nullopt;
    if (TomaUna({"PASADO", "PASADA", "ULTIMO", "ULTIMA"})) return -1;
    return std::nullopt;
  }

  std::optional<Escrito> LeeExtremo() {
    static_cast<void>(Toma({"EL"}));
    auto e = Intenta(&Lector::LeeCercano);
    if (!e) e = Intenta(&Lector::LeeDiaDeSemana);
    if (!e) e = Intenta(&Lector::LeeDia);
    if (!e) e = Intenta(&Lector::LeeMes);
    return e;
  }

  std::optional<Escrito> LeeCercano() {
    const auto dentro = [&](int dias) { return DeFecha(com::MasDias(hoy_, dias)); };
    if (Toma({"HOY"})) return dentro(0);
    if (Toma({"PASADO", "MANANA"})) return dentro(2);
    if (Toma({"MANANA"})) return dentro(1);
    if (Toma({"AYER"})) return dentro(-1);
    if (TomaUna({"ANTIER", "ANTEAYER"}) || Toma({"ANTES", "DE", "AYER"})) return dentro(-2);
    return std::nullopt;
  }

  // "viernes", "próximo viernes", "viernes pasado", "viernes 13", "viernes 13 de marzo".
  std::optional<Escrito> LeeDiaDeSemana() {
    std::optional<int> cual = LeeCual();
    Escrito e{.diaSemana = nombres_.DiaSemana(Actual())};
    if (e.diaSemana == 0) return std::nullopt;
    ++i_;
    if (!cual) cual = LeeCual();
    const std::size_t antes = i_;
    if (auto dia = Intenta(&Lector::LeeDia); dia && (conNumeros_ || dia->mes != 0)) {
      dia->diaSemana = e.diaSemana;
      return dia;
    }
    i_ = antes;
    if (!cual) return e;
    const int faltan = (e.diaSemana - com::DiaSemana(hoy_) + 7) % 7;
    const int dias = *cual < 0 ? (faltan == 0 ? -7 : faltan - 7) : *cual == 1 && faltan == 0 ? 7 : faltan;
    return DeFecha(com::MasDias(hoy_, dias));
  }

  // "12", "12 mar", "12-mar-2026", "12 de marzo de 2026", "primero de marzo", "15 del próximo mes", or in digits.
  std::optional<Escrito> LeeDia() {
    if (auto e = DeCifras(Actual())) {
      ++i_;
      return e;
    }
    const bool primero = TomaUna({"PRIMERO", "1O", "1ER"});
    const auto dia = primero ? std::optional(1) : Numero(Actual());
    if (!dia || *dia < 1 || *dia > 31 || (!primero && Actual().size() > 2)) return std::nullopt;
    if (!primero) ++i_;
    Escrito e{*dia};
    static_cast<void>(LeeMesDelDia(e));
    return e;
  }

  // False leaves the place where it was.
  bool LeeMesDelDia(Escrito& e) {
    const std::size_t antes = i_;
    static_cast<void>(TomaUna({"DE", "DEL", "-"}));
    e.mes = nombres_.Mes(Actual());
    if (e.mes != 0) {
      ++i_;
      e.anio = LeeAnio();
      return true;
    }
    std::optional<int> cual = LeeCual();
    if (Toma({"MES"})) {
      if (!cual) cual = LeeCual();
      if (cual) {
        const com::Civil c = com::ACivil(DelMes(*cual));
        e.mes = c.mes;
        e.anio = c.anio;
        return true;
      }
    }
    i_ = antes;
    return false;
  }

  // "marzo", "mar 2027", "marzo 12".
  std::optional<Escrito> LeeMes() {
    const Texto nombre = Actual();
    const int mes = nombres_.Mes(nombre);
    if (mes == 0) return std::nullopt;
    ++i_;
    if (const auto dia = Numero(Actual()); conNumeros_ && dia && *dia >= 1 && *dia <= 31 && Actual().size() <= 2) {
      ++i_;
      return Escrito{*dia, mes, LeeAnio()};
    }
    constexpr int kEnTodos = 28;
    Escrito e{kEnTodos, mes, LeeAnio(), 0, true};
    e.abreviado = e.anio == 0 && nombre != nombres_.meses[static_cast<std::size_t>(mes) - 1];
    return e;
  }

  int LeeAnio() {
    const std::size_t antes = i_;
    static_cast<void>(TomaUna({"DE", "DEL", "-"}));
    const auto n = Numero(Actual());
    if (n && *n >= kPrimerAnio && *n <= kUltimoAnio && Actual().size() == 4) {
      ++i_;
      return *n;
    }
    i_ = antes;
    return 0;
  }

  const std::vector<std::string>& palabras_;
  const Nombres& nombres_;
  std::size_t i_ = 0;
  com::Fecha hoy_;
  bool conNumeros_;
};

// --- the text in pieces

bool EsDeFecha(char c) { return com::EsDigito(c) || c == '/' || c == '-' || c == '.'; }

// The pieces of a run without blanks: a date in digits is one, a hyphen too, all else is cut into words.
void Corta(Texto tramo, std::vector<std::string>& pedazos) {
  while (tramo.ends_with('.') || tramo.ends_with('/')) tramo.remove_suffix(1);
  if (DeCifras(tramo)) {
    pedazos.emplace_back(tramo);
    return;
  }
  const std::size_t raya = tramo.find('-');
  if (raya != Texto::npos) {
    Corta(tramo.substr(0, raya), pedazos);
    pedazos.emplace_back("-");
    Corta(tramo.substr(raya + 1), pedazos);
    return;
  }
  std::ranges::move(Palabras(tramo), std::back_inserter(pedazos));
}

std::vector<std::string> Pedazos(Texto plano) {
  std::vector<std::string> pedazos;
  for (std::size_t i = 0; i < plano.size();) {
    std::size_t fin = i;
    while (fin < plano.size() && (EsDePalabra(plano[fin]) || EsDeFecha(plano[fin]))) ++fin;
    if (fin > i) Corta(plano.substr(i, fin - i), pedazos);
    i = fin + 1;
  }
  return pedazos;
}

Lectura LeeCon(const std::vector<std::string>& pedazos, Lector lector) {
  Lectura lectura;
  for (std::size_t i = 0; i < pedazos.size();) {
    if (!lectura.periodo && (lectura.periodo = lector.Lee(i))) continue;
    std::ranges::move(Palabras(pedazos[i++]), std::back_inserter(lectura.palabras));
  }
  return lectura;
}

}  // namespace

std::vector<Lectura> LeeTexto(std::string_view texto, com::Fecha hoy, SinAcento sinAcento) {
  std::vector<std::string> planos{Plano(texto, sinAcento)};
  if (std::string sin = SinApostrofos(planos[0]); sin != planos[0]) planos.push_back(std::move(sin));
  const Nombres nombres(sinAcento);
  std::vector<Lectura> lecturas;
  for (const std::string& plano : planos) {
    const std::vector<std::string> pedazos = Pedazos(plano);
    for (const bool conNumeros : {true, false}) {
      Lectura lectura = LeeCon(pedazos, Lector(pedazos, nombres, com::SoloFecha(hoy), conNumeros));
      if (lectura.periodo && std::ranges::find(lecturas, lectura) == lecturas.end())
        lecturas.push_back(std::move(lectura));
    }
  }
  for (const std::string& plano : planos) lecturas.push_back({std::nullopt, Palabras(plano)});
  return lecturas;
}

std::string DiaInexistente(std::string_view texto) {
  constexpr int kBisiesto = 2024;  // has every day that a year can have
  std::istringstream pedazos{std::string(texto)};
  for (std::string pedazo; pedazos >> pedazo;) {
    const auto e = DeCifras(pedazo);
    if (e && !Dia(e->anio == 0 ? kBisiesto : e->anio, e->mes, e->dia)) return pedazo;
  }
  return {};
}

}  // namespace recepcion
