#include "recepcion/renglones.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/com/variant.h"
#include "platform/controls/barra.h"
#include "platform/regional/regional.h"
#include "publico/captura.h"
#include "publico/controles.h"
#include "recepcion/cuadro.h"
#include "recepcion/explicacion.h"

namespace recepcion {

namespace {

using controles::Grid;
namespace col = kv207::col;
namespace control = kv207::control;

constexpr double kCentavo = 0.005;

bool MismoImporte(double a, double b) { return std::abs(a - b) < kCentavo; }

bool Acordado(const controles::Formulario& principal, int fila) {
  const publico::OrigenPrecio origen = OrigenDelPrecio(principal, fila);
  return origen == publico::OrigenPrecio::Acordado || origen == publico::OrigenPrecio::Guardado;
}

std::string TextoDe(const Grid& grid, int fila, std::string_view columna) {
  const com::Variant& valor = grid.celda(fila, columna);
  return valor.EsFecha() ? regional::FechaCorta(com::CDate(valor)) : com::RecortaDerecha(com::TextoDe(valor));
}

// 0 for what is no number.
double ImporteDe(const Grid& grid, int fila, std::string_view columna) {
  try {
    return com::CDbl(grid.celda(fila, columna));
  } catch (const com::Error&) {
    return 0;
  }
}

std::optional<com::Fecha> DiaDe(const std::string& texto) {
  try {
    return com::SoloFecha(com::CDate(com::Variant(texto)));
  } catch (const com::Error&) {
    return std::nullopt;
  }
}

Renglon LeeRenglon(const controles::Formulario& principal, const Grid& grid, int fila) {
  Renglon r;
  for (const auto& [columna, dato] : kTextosDeRenglon) r.*dato = TextoDe(grid, fila, columna);
  for (const auto& [columna, dato] : kImportesDeRenglon) r.*dato = ImporteDe(grid, fila, columna);
  r.acordado = Acordado(principal, fila);
  return r;
}

bool MismaHabitacion(const Renglon& a, const Renglon& b) { return com::IgualSinCaja(a.habitacion, b.habitacion); }
bool MismasNoches(const Renglon& a, const Renglon& b) { return a.inicio == b.inicio && a.fin == b.fin; }

// For each wanted line the one of the others that stands for it, -1 none: of its room, of its nights too where there is
// one.
std::vector<int> Empareja(const std::vector<Renglon>& quiere, const std::vector<Renglon>& hay) {
  std::vector<int> pares(quiere.size(), -1);
  std::set<int> tomados;
  const auto toma = [&](const auto& cabe) {
    for (std::size_t q = 0; q < quiere.size(); ++q) {
      for (int h = 0; pares[q] < 0 && h < static_cast<int>(hay.size()); ++h) {
        if (!tomados.contains(h) && cabe(quiere[q], hay[static_cast<std::size_t>(h)])) tomados.insert(pares[q] = h);
      }
    }
  };
  toma([](const Renglon& a, const Renglon& b) { return MismaHabitacion(a, b) && MismasNoches(a, b); });
  toma(MismaHabitacion);
  return pares;
}

// Goes to a cell and types; false when the column is locked or the screen holds the user elsewhere.
bool Escribe(Grid& grid, int fila, std::string_view columna, const std::string& texto) {
  const int c = grid.IndiceColumna(columna);
  if (c < 0 || fila >= grid.Filas() || !grid.columna(c).visible || grid.columna(c).bloqueada) return false;
  grid.formulario().Enfoca(grid);
  if (!grid.VaA(fila, c)) return false;
  grid.formulario().Enfoca(grid);  // the cell itself, not the date laid over it
  grid.Teclea(texto);
  return true;
}

// An emptied room takes the line away.
void Quita(Grid& grid, int fila) {
  if (grid.columna(col::kClave).bloqueada) return;
  static_cast<void>(Escribe(grid, fila, col::kClave, ""));
}

// A discount was typed as the shorter of its two numbers; the whole price has no amount on the screen.
void EscribeDescuento(Grid& grid, int fila, const Renglon& r) {
  const std::string porciento = com::CStr(com::Variant(r.descuento)),
                    importe = com::CStr(com::Variant(r.descuentoImporte));
  const bool enPorciento = r.descuentoImporte == 0 || porciento.size() <= importe.size();
  static_cast<void>(
      Escribe(grid, fila, enPorciento ? col::kDescuento : col::kDescuentoImporte, enPorciento ? porciento : importe));
}

// An agreed price over the hotel's.
void EscribeAcuerdo(controles::Formulario& principal, Grid& grid, int fila, const Renglon& r) {
  const auto importe = [&](std::string_view columna) { return ImporteDe(grid, fila, columna); };
  const auto escribe = [&](std::string_view columna, double valor) {
    static_cast<void>(Escribe(grid, fila, columna, com::CStr(com::Variant(valor))));
    static_cast<void>(grid.Deja());
  };
  if (!MismoImporte(importe(col::kPrecio), r.precio)) escribe(col::kPrecio, r.precio);
  if (!MismoImporte(importe(col::kPrecioExtra), r.personaExtra)) escribe(col::kPrecioExtra, r.personaExtra);
  if (!MismoImporte(importe(col::kDescuentoImporte), r.descuentoImporte) ||
      !MismoImporte(importe(col::kDescuento), r.descuento)) {
    EscribeDescuento(grid, fila, r);
    static_cast<void>(grid.Deja());
  }
  if (!Acordado(principal, fila)) escribe(col::kPrecio, r.precio);
}

// What differs in a line whose room is there.
void Completa(controles::Formulario& principal, Grid& grid, int fila, const Renglon& r) {
  for (const auto& [columna, dato] : kTextosDeRenglon) {
    const std::string& texto = r.*dato;
    const bool seTeclea = columna != col::kClave && columna != col::kNombre && !texto.empty();
    if (seTeclea && TextoDe(grid, fila, columna) != texto) static_cast<void>(Escribe(grid, fila, columna, texto));
  }
  static_cast<void>(grid.Deja());
  if (r.acordado) return EscribeAcuerdo(principal, grid, fila, r);
  if (!Acordado(principal, fila)) return;
  // The hotel's price: what a line of a stored reservation gets when its persons are typed.
  static_cast<void>(Escribe(grid, fila, col::kAdultos, r.adultos));
  static_cast<void>(grid.Deja());
}

void Agrega(controles::Formulario& principal, Grid& grid, const Renglon& r) {
  if (grid.columna(col::kClave).bloqueada || !grid.NuevaFila()) return;
  const int fila = grid.Filas() - 1;
  if (!Escribe(grid, fila, col::kClave, r.habitacion)) return;
  const bool hallada = grid.VaA(fila, grid.IndiceColumna(col::kAdultos));
  if (!hallada) return Quita(grid, fila);
  Completa(principal, grid, fila, r);
}

std::vector<Renglon> LeeTodos(const controles::Formulario& principal, const Grid& grid) {
  std::vector<Renglon> todos;
  todos.reserve(static_cast<std::size_t>(grid.Filas()));
  for (int fila = 0; fila < grid.Filas(); ++fila) todos.push_back(LeeRenglon(principal, grid, fila));
  return todos;
}

std::string Personas(const std::string& cuantas, const char* una, const char* varias) {
  if (cuantas.empty() || cuantas == "0") return {};
  return ", " + cuantas + (cuantas == "1" ? una : varias);
}

struct Falta {
  std::size_t cual;  // of the wanted lines
  bool fuera;        // the screen has no line of that room for it
  std::string dice;
};

// What of these lines the screen does not hold.  Amounts of the lines named are not compared.
std::vector<Falta> Faltan(const controles::Formulario& principal, const std::vector<Renglon>& renglones,
                          const std::set<std::size_t>& aOtroPrecio = {}) {
  std::vector<Falta> faltan;
  const std::vector<Renglon> hay = LeeRenglones(principal);
  const std::vector<int> pares = Empareja(renglones, hay);
  for (std::size_t i = 0; i < renglones.size(); ++i) {
    const Renglon& r = renglones[i];
    const Renglon* h = pares[i] < 0 ? nullptr : &hay[static_cast<std::size_t>(pares[i])];
    const bool iguales = h != nullptr && MismasNoches(*h, r) && h->adultos == r.adultos && h->menores == r.menores &&
                         h->infantes == r.infantes && (aOtroPrecio.contains(i) || MismoImporte(h->total, r.total));
    if (iguales) continue;
    faltan.push_back(
        {i, h == nullptr, "Habitación " + EnPalabras(r) + (h == nullptr ? "" : "; ahora " + EnPalabras(*h))});
  }
  return faltan;
}

// --- lines that were taken away

struct Noches {
  com::Fecha desde{}, hasta{};  // the day of departure
  bool operator==(const Noches&) const = default;
};

Noches EstanciaDe(const controles::Formulario& principal) {
  const auto dia = [&](const char* campo) {
    const auto* fecha = controles::Como<controles::DateField>(principal.Busca(campo));
    return fecha == nullptr ? com::Fecha{} : com::SoloFecha(fecha->valor());
  };
  return {dia(control::kLlegada), dia(control::kSalida)};
}

// First and last day of the lines.
Noches DiasDe(const std::vector<Renglon>& renglones) {
  std::optional<com::Fecha> primero, ultimo;
  for (const Renglon& r : renglones) {
    if (const auto dia = DiaDe(r.inicio); dia && (!primero || *dia < *primero)) primero = dia;
    if (const auto dia = DiaDe(r.fin); dia && (!ultimo || *dia > *ultimo)) ultimo = dia;
  }
  return {primero.value_or(com::Fecha{}), ultimo.value_or(com::Fecha{})};
}

// The nights that a line may have in the stay, the best first: those of the stay where it began or ended with the
// lines, else its own.
std::vector<Noches> NochesEn(const Noches& estancia, const Renglon& r, const Noches& lineas) {
  const com::Fecha inicio = DiaDe(r.inicio).value_or(lineas.desde), fin = DiaDe(r.fin).value_or(lineas.hasta);
  const Noches suyas{std::max(inicio, estancia.desde), std::min(fin, estancia.hasta)};
  std::vector<Noches> noches{
      {inicio == lineas.desde ? estancia.desde : suyas.desde, fin == lineas.hasta ? estancia.hasta : suyas.hasta}};
  if (noches.front() != suyas) noches.push_back(suyas);
  std::erase_if(noches, [](const Noches& n) { return n.desde >= n.hasta; });
  return noches;
}

bool Incluye(const std::vector<Renglon>& renglones, const Renglon& r, const Noches& n) {
  return std::ranges::any_of(renglones, [&](const Renglon& otro) {
    const auto inicio = DiaDe(otro.inicio), fin = DiaDe(otro.fin);
    return MismaHabitacion(otro, r) && inicio && fin && *inicio < n.hasta && n.desde < *fin;
  });
}

std::string FolioDe(const controles::Formulario& principal) {
  const auto* folio = controles::Como<controles::LookupField>(principal.Busca(control::kFolio));
  return folio == nullptr ? "" : folio->text();
}

// Why the room is not free on these nights for the reservation of this folio; "" when it is.
std::string Ocupada(const Renglon& r, const Noches& n, const std::string& folio) {
  Cuadro cuadro;
  for (com::Fecha dia = n.desde; dia < n.hasta; dia = com::MasDias(dia, kNochesMaximas)) {
    const int noches = std::min(com::DiasEntre(dia, n.hasta), kNochesMaximas);
    cuadro.Abre(dia, std::max(noches, kNochesMinimas));
    const int fila = cuadro.FilaDe(r.habitacion);
    if (fila < 0) return "está de baja";
    for (int i = 0; i < noches; ++i) {
      if (const Barra* b = cuadro.En(fila, com::MasDias(dia, i), folio)) return QuienLaTiene(*b);
    }
  }
  return {};
}

// Where a line may come back, or why it may not; both where it may on its own nights only.
struct Lugar {
  std::optional<Noches> noches;
  std::string motivo;
  bool yaEsta = false;
};

Lugar LugarDe(const Renglon& r, const std::vector<Noches>& posibles, const std::vector<Renglon>& hay,
              const std::string& folio) {
  Lugar lugar;
  if (posibles.empty()) lugar.motivo = "no tiene noches en la estancia";
  for (const Noches& n : posibles) {
    lugar.yaEsta = Incluye(hay, r, n);
    const std::string ocupada = lugar.yaEsta ? "la tiene otro renglón" : Ocupada(r, n, folio);
    if (ocupada.empty()) {
      lugar.noches = n;
      break;
    }
    if (lugar.motivo.empty()) lugar.motivo = "no está libre: " + ocupada;
  }
  return lugar;
}

}  // namespace

std::string EnPalabras(const Renglon& r) {
  std::string texto = r.habitacion;
  if (!r.nombre.empty()) texto += " " + r.nombre;
  if (!r.inicio.empty()) texto += ", " + r.inicio + " – " + r.fin;
  texto += Personas(r.adultos, " adulto", " adultos") + Personas(r.menores, " menor", " menores") +
           Personas(r.infantes, " infante", " infantes");
  return texto + ", " + regional::Moneda(r.total) + (r.acordado ? " (precio acordado)" : "");
}

std::vector<Renglon> LeeRenglones(const controles::Formulario& principal) {
  const auto* grid = principal.Primero<Grid>();
  std::vector<Renglon> renglones;
  if (grid != nullptr) renglones = LeeTodos(principal, *grid);
  std::erase_if(renglones, [](const Renglon& r) { return r.habitacion.empty(); });
  return renglones;
}

void TecleaRenglones(controles::Formulario& principal, const std::vector<Renglon>& renglones) {
  auto* grid = principal.Primero<Grid>();
  if (grid == nullptr) return;
  std::vector<int> pares = Empareja(renglones, LeeTodos(principal, *grid));
  for (int fila = grid->Filas() - 1; fila >= 0; --fila) {
    if (std::ranges::find(pares, fila) == pares.end()) Quita(*grid, fila);
  }
  pares = Empareja(renglones, LeeTodos(principal, *grid));
  // What a handler does not trap keeps one line out, not the others.
  const auto intenta = [](const auto& teclea) {
    try {
      teclea();
    } catch (const com::Error&) {  // seen by whoever compares the lines afterwards
    }
  };
  for (std::size_t i = 0; i < renglones.size(); ++i) {
    if (pares[i] >= 0) intenta([&] { Completa(principal, *grid, pares[i], renglones[i]); });
  }
  for (std::size_t i = 0; i < renglones.size(); ++i) {
    if (pares[i] < 0) intenta([&] { Agrega(principal, *grid, renglones[i]); });
  }
}

std::vector<std::string> RenglonesQueFaltan(const controles::Formulario& principal,
                                            const std::vector<Renglon>& renglones) {
  std::vector<std::string> dice;
  for (const Falta& f : Faltan(principal, renglones)) dice.push_back(f.dice);
  return dice;
}

void RenglonesQuitados::Vigila(controles::Formulario& principal) {
  auto* captura = dynamic_cast<publico::Captura*>(&principal);
  if (captura == nullptr) return;
  captura->alEmpezar = [estado = estado_] { *estado = {}; };
  captura->antesDeQuitarRenglones = [estado = estado_, &principal] {
    std::vector<Renglon> ahora = LeeRenglones(principal);
    if (ahora.empty()) return;
    if (estado->pedidos) std::ranges::move(estado->renglones, std::back_inserter(ahora));
    estado->renglones = std::move(ahora);
  };
}

std::vector<std::string> RenglonesQuitados::Repone(controles::Formulario& principal) {
  const auto* barra = principal.Primero<controles::ScreenToolbar>();
  if (barra == nullptr || !barra->EnEdicion() || renglones().empty()) {
    throw com::Error(com::error::kArgumento,
                     "No hay habitaciones que reponer: se guardan las que quita un cambio de noches, mientras dura la "
                     "captura");
  }
  const Noches estancia = EstanciaDe(principal), lineas = DiasDe(renglones());
  std::vector<Renglon> quiere = LeeRenglones(principal), siguen;
  std::vector<std::string> dice;
  const auto di = [&](const Renglon& r, const std::string& que) {
    dice.push_back("Habitación " + EnPalabras(r) + ": " + que);
  };
  std::map<std::size_t, Renglon> vuelven;  // as they were, by their place among the wanted ones
  std::set<std::size_t> aOtroPrecio;
  for (const Renglon& antes : renglones()) {
    const Lugar lugar = LugarDe(antes, NochesEn(estancia, antes, lineas), quiere, FolioDe(principal));
    if (lugar.yaEsta) continue;
    if (!lugar.motivo.empty())
      di(antes, (lugar.noches ? "vuelve con sus noches; con la estancia " : "") + lugar.motivo);
    if (!lugar.noches) {
      siguen.push_back(antes);
      continue;
    }
    Renglon r = antes;
    r.inicio = regional::FechaCorta(lugar.noches->desde);
    r.fin = regional::FechaCorta(lugar.noches->hasta);
    if (!MismasNoches(r, antes)) aOtroPrecio.insert(quiere.size());
    if (r.acordado && !MismasNoches(r, antes)) {
      r.acordado = false;
      di(antes, "el precio acordado era por otras noches");
    }
    vuelven[quiere.size()] = antes;
    quiere.push_back(r);
  }
  if (!vuelven.empty()) TecleaRenglones(principal, quiere);
  for (const Falta& f : Faltan(principal, quiere, aOtroPrecio)) {
    if (!f.fuera) {
      dice.push_back(f.dice);
      continue;
    }
    di(quiere[f.cual], "la pantalla no la admitió");
    if (vuelven.contains(f.cual)) siguen.push_back(vuelven[f.cual]);
  }
  *estado_ = {std::move(siguen), true};
  return dice;
}

}  // namespace recepcion
