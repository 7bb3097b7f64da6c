// What all orders of a script share: what they act on, what their words stand for, the answer of the order at work.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "guion/componente.h"
#include "guion/json.h"
#include "guion/manos.h"
#include "guion/palabras.h"
#include "guion/respuestas.h"
#include "guion/vigilados.h"

namespace guion {

using Palabras = std::vector<std::string>;  // of an order, its name first

// All must outlive the interpreter.
struct Piezas {
  autonomo::Anfitrion& anfitrion;
  Vigilancia& vigilancia;
  Respuestas& respuestas;
  Manos& manos;
  Componente& componente;
};

struct Respuesta {
  int linea = 0;
  std::string orden;
  bool ok = true;
  std::string error;
  std::optional<Json> valor;
  std::optional<bool> retenida;
  bool contestada = false;
};

// One order of the language.
struct Orden {
  const char* nombre;
  std::size_t minimo, maximo;  // words after the name
  const char* uso;             // its form, for whoever wrote it otherwise
  std::function<void(const Palabras& p)> hace;
};

// The same as a row of a group's table.
template <class Grupo>
struct DatosOrden {
  const char* nombre;
  std::size_t minimo, maximo;
  const char* uso;
  void (Grupo::*hace)(const Palabras& p);
};
// grupo must outlive the orders.
template <class Grupo, std::size_t N>
std::vector<Orden> Enlaza(Grupo& grupo, const DatosOrden<Grupo> (&filas)[N]) {
  std::vector<Orden> ordenes;
  for (const DatosOrden<Grupo>& d : filas) {
    ordenes.push_back(
        {d.nombre, d.minimo, d.maximo, d.uso, [&grupo, hace = d.hace](const Palabras& p) { (grupo.*hace)(p); }});
  }
  return ordenes;
}

// An order that cannot be carried out: com::Error kArgumento.
[[noreturn]] void Error(const std::string& motivo);

// The day that a word says, without a time; as FechaDe.
com::Fecha DiaDe(const std::string& palabra);

struct Alcance {
  explicit Alcance(const Piezas& suyas) : piezas(suyas) {}

  Piezas piezas;
  // The order at work. While a board is up the orders that act on it take the place of the one that opened it, and what
  // happens once it is hidden belongs to the one that hid it.
  Respuesta actual{};
  int modales = 0;  // boards that orders act on now

  // Error kSinObjeto before "abre".
  controles::Formulario& Activo() const;
  controles::Formulario& FormularioDe(const std::string& nombre) const;
  // A control by its name on the active form, or by form and name.
  controles::Control& ControlDe(const std::string& nombre) const;
  // The same, for something that the user does to it: its form must be the active one.
  controles::Control& ControlActivo(const std::string& nombre) const;
  controles::Grid& GridDe(controles::Formulario& formulario) const;
  // The room lines, the board: their form must be the active one.
  controles::Grid& Renglones() const;
  controles::Grid& Tablero() const;
  controles::ScreenToolbar& BarraDe(controles::Formulario& formulario) const;
  // A button of the reservation screen's toolbar; true, since it raises when it cannot act.
  bool Pulsa(controles::Accion accion) const;
  // For orders that a board in the way does not let act.
  void ExigeSinModal() const;
  // The screen is open, and no board in its way.
  void ExigePantalla() const;
};

}  // namespace guion
