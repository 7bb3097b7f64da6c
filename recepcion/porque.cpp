#include "recepcion/porque.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "availability/frmDisponibilidad.h"
#include "platform/com/texto.h"
#include "platform/regional/regional.h"
#include "publico/columnas.h"
#include "recepcion/cuadro.h"

namespace recepcion {

namespace {

using kv207::frmDisponibilidad;
using kv207::kColumnasFijas;

constexpr std::size_t kQuienes = 6;  // holders told of a room type
constexpr const char* kEnSuLugar = "En su lugar: ";
constexpr int kNochesLejos = 14;  // how far off another night is looked for

// The hotel about a night of the board, as far as the stay reaches.
struct Vista {
  Cuadro cuadro;
  std::string excluido;  // folio that counts as free
  com::Fecha noche{}, desde{}, hasta{};

  const Barra* Tiene(int fila, com::Fecha dia) const { return cuadro.En(fila, dia, excluido); }
  bool Libre(int fila, com::Fecha primera, com::Fecha fin) const {
    for (com::Fecha dia = primera; dia < fin; dia = com::MasDias(dia, 1)) {
      if (Tiene(fila, dia) != nullptr) return false;
    }
    return true;
  }
  const Habitacion& De(int fila) const { return cuadro.habitaciones()[static_cast<std::size_t>(fila)]; }
  int Filas() const { return static_cast<int>(cuadro.habitaciones().size()); }
};

// The stay's nights where the chart holds them all, else those about the night alone; and some more on both sides.
Vista Abre(const frmDisponibilidad& tablero, com::Fecha noche) {
  const controles::Grid& grid = tablero.ssDisponibilidad;
  Vista v;
  v.noche = noche;
  v.excluido = tablero.FolioExcluido;
  v.desde = com::SoloFecha(grid.columna(kColumnasFijas).fecha.value_or(noche));
  v.hasta = com::MasDias(v.desde, grid.NumColumnas() - kColumnasFijas);
  if (com::DiasEntre(v.desde, v.hasta) + 2 * kNochesLejos > kNochesMaximas) {
    v.desde = noche;
    v.hasta = com::MasDias(noche, 1);
  }
  v.cuadro.Abre(com::MasDias(v.desde, -kNochesLejos), com::DiasEntre(v.desde, v.hasta) + 2 * kNochesLejos);
  return v;
}

std::string Nombre(const Habitacion& h) { return h.clave + (h.tipo.empty() ? "" : " (" + h.tipo + ")"); }

// The rows, those of the type first and the nearest first.
std::vector<int> PorCercania(const Vista& v, int fila) {
  std::vector<int> filas;
  for (int f = 0; f < v.Filas(); ++f) {
    if (f != fila) filas.push_back(f);
  }
  const auto lejos = [&](int f) {
    return std::pair{!com::IgualSinCaja(v.De(f).claveTipo, v.De(fila).claveTipo), std::abs(f - fila)};
  };
  std::ranges::stable_sort(filas, {}, lejos);
  return filas;
}

// A room for the whole stay, else one for the night, else the nearest night of this room.
std::string EnLugarDe(const Vista& v, int fila) {
  const std::vector<int> otras = PorCercania(v, fila);
  const auto halla = [&](com::Fecha desde, com::Fecha hasta) -> std::optional<int> {
    const auto it = std::ranges::find_if(otras, [&](int f) { return v.Libre(f, desde, hasta); });
    return it == otras.end() ? std::nullopt : std::optional(*it);
  };
  const bool varias = com::DiasEntre(v.desde, v.hasta) > 1;
  if (const auto f = halla(v.desde, v.hasta)) {
    return kEnSuLugar + Nombre(v.De(*f)) + (varias ? ", libre toda la estancia" : ", libre esa noche");
  }
  if (const auto f = halla(v.noche, com::MasDias(v.noche, 1)))
    return kEnSuLugar + Nombre(v.De(*f)) + ", libre esa noche";
  for (int n = 1; n <= kNochesLejos; ++n) {
    for (const com::Fecha dia : {com::MasDias(v.noche, n), com::MasDias(v.noche, -n)}) {
      if (dia >= v.cuadro.hoy() && v.Tiene(fila, dia) == nullptr) {
        return kEnSuLugar + v.De(fila).clave + ", libre la noche del " + regional::FechaCorta(dia);
      }
    }
  }
  return {};
}

Explicacion DeHabitacion(const Vista& v, const std::string& clave, const std::string& nombre) {
  const std::string titulo = clave + " " + nombre + ", " + regional::FechaCorta(v.noche) + ": ";
  const int fila = v.cuadro.FilaDe(clave);
  if (fila < 0) return {titulo + "la habitación está de baja", {}, {}};
  if (v.Tiene(fila, v.noche) == nullptr) return {titulo + "ya está libre; el tablero se leyó antes", {}, {}};
  Explicacion e{titulo + "no está libre", {}, EnLugarDe(v, fila)};
  const auto [desde, hasta] = v.cuadro.BarrasDe(fila);
  for (std::size_t b = desde; b < hasta; ++b) {
    const Barra& barra = v.cuadro.barras()[b];
    const bool excluida = !v.excluido.empty() && com::IgualSinCaja(barra.folio, v.excluido);
    if (!excluida && barra.inicio <= v.noche && v.noche < barra.fin) e.quienes.push_back(QuienLaTiene(barra));
  }
  return e;
}

Explicacion DeTipo(const Vista& v, const std::string& tipo, const std::string& nombre) {
  Explicacion e;
  std::vector<std::string> libres;
  std::string otro;
  std::size_t total = 0, ocupadas = 0;
  for (int f = 0; f < v.Filas(); ++f) {
    const bool suya = com::IgualSinCaja(v.De(f).claveTipo, tipo);
    const Barra* quien = v.Tiene(f, v.noche);
    if (!suya && quien == nullptr && otro.empty()) otro = kEnSuLugar + Nombre(v.De(f)) + ", libre esa noche";
    if (!suya) continue;
    ++total;
    if (quien == nullptr) {
      libres.push_back(v.De(f).clave);
    } else if (++ocupadas <= kQuienes) {
      e.quienes.push_back(v.De(f).clave + ": " + QuienLaTiene(*quien));
    }
  }
  if (ocupadas == 0) return {};
  if (ocupadas > kQuienes) e.quienes.push_back("y " + std::to_string(ocupadas - kQuienes) + " más");
  e.titulo = nombre + ", " + regional::FechaCorta(v.noche) + ": " + std::to_string(libres.size()) + " de " +
             std::to_string(total) + (libres.size() == 1 ? " libre" : " libres");
  for (std::size_t i = 0; i < libres.size() && i < kQuienes; ++i) {
    e.alternativa += (i == 0 ? "Libres: " : ", ") + libres[i];
  }
  if (libres.size() > kQuienes) e.alternativa += "…";
  if (libres.empty()) e.alternativa = otro;
  return e;
}

}  // namespace

Explicacion PorQue(const controles::Formulario& tablero, int fila, int columna) {
  const auto* suyo = dynamic_cast<const frmDisponibilidad*>(&tablero);
  if (suyo == nullptr) return {};
  const controles::Grid& grid = suyo->ssDisponibilidad;
  if (fila < 0 || fila >= grid.Filas() || columna < kColumnasFijas || columna >= grid.NumColumnas()) return {};
  const auto noche = grid.columna(columna).fecha;
  if (!noche) return {};
  const std::string clave = com::RecortaDerecha(grid.Texto(fila, kv207::col::kClave)),
                    nombre = grid.Texto(fila, kv207::col::kNombre);
  if (suyo->Modo() == kv207::ModoVista::PorTipo) return DeTipo(Abre(*suyo, com::SoloFecha(*noche)), clave, nombre);
  const int estilo = grid.estilo(fila, columna);
  for (const kv207::EstadoCelda estado : {kv207::EstadoCelda::Disponible, kv207::EstadoCelda::Ocupando}) {
    if (estilo == grid.IndiceEstilo(kv207::NombreEstado(estado))) return {};
  }
  return DeHabitacion(Abre(*suyo, com::SoloFecha(*noche)), clave, nombre);
}

std::string EnLineas(const Explicacion& explicacion) {
  std::string texto = explicacion.titulo;
  for (const std::string& quien : explicacion.quienes) texto += "\n" + quien;
  if (!explicacion.alternativa.empty()) texto += "\n" + explicacion.alternativa;
  return texto;
}

}  // namespace recepcion
