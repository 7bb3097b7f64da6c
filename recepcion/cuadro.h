// The tape chart: rooms by nights, and what holds them.
//
// A bar is a reservation's line, a stay or a block. A reservation that is cancelled or closed has none. A stay is one
// bar with the line that it belongs to (alojamiento.h): the reservation's folio and guest, the nights of both, for both
// hold the room. A bar lies from the middle of its first day to the middle of the day on which it ends.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/com/fecha.h"
#include "recepcion/lectura.h"

namespace recepcion {

struct Barra {
  enum class Clase { Reservacion, Estancia, Bloqueo };
  Clase clase = Clase::Reservacion;
  int fila = 0;       // of the room
  std::string folio;  // of the reservation, "" without one
  std::string huesped;
  std::string estado;  // code of the reservation
  bool enCasa = false;
  com::Fecha inicio, fin;  // nights from inicio on, up to the one before fin
  double total = 0;        // of the whole reservation, tax included: nothing that was paid is kept here
  std::string moneda;
  int linea = 0;          // of the reservation
  com::Fecha modificada;  // when the reservation was changed last; none for a stay or a block
};

struct Habitacion {
  std::string clave, nombre, tipo;
  std::string claveTipo;
};

inline constexpr int kNochesMinimas = 7, kNochesMaximas = 60;

class Cuadro {
 public:
  // Reads the nights from that day on; com::Error kArgumento for a number out of range, and database failures, which
  // leave the chart as it was.
  void Abre(com::Fecha desde, int noches);
  // Reads any number of nights from any source, for lists that nobody looks at; today is not set.
  void Lee(const Fuente& fuente, com::Fecha desde, int noches);
  // The same nights anew; the first time two weeks from today.
  void Abre();

  com::Fecha desde() const { return desde_; }
  int noches() const { return noches_; }
  com::Fecha hoy() const { return hoy_; }
  const std::vector<Habitacion>& habitaciones() const { return habitaciones_; }
  // By room, then first night.
  const std::vector<Barra>& barras() const { return barras_; }
  // The bars of a room: positions of the first and behind the last.
  std::pair<std::size_t, std::size_t> BarrasDe(int fila) const;
  // Row of a room; -1 when there is none of that key.
  int FilaDe(const std::string& habitacion) const;
  // What holds the room that night, beside the reservation of that folio; null when it is free.
  const Barra* En(int fila, com::Fecha noche, const std::string& fuera = {}) const;
  // The room is free on all nights from desde up to the one before hasta.
  bool Libre(int fila, com::Fecha desde, com::Fecha hasta) const;

  // Opens a bar's reservation, of one bar or the first that holds the room that night; starts a New for nights of a
  // room. com::Error kArgumento, with what holds them, when that cannot be.
  void AbreBarra(const Barra& barra) const;
  void AbreBarra(int fila, com::Fecha noche) const;
  void Reserva(int fila, com::Fecha desde, com::Fecha hasta) const;
  // Set by whoever shows the chart.
  std::function<void(const std::string& folio)> alAbrir;
  std::function<void(const std::string& habitacion, com::Fecha desde, com::Fecha hasta)> alReservar;

 private:
  static std::vector<Habitacion> LeeHabitaciones(const Fuente& fuente);
  // By room, in no order.
  static std::vector<std::vector<Barra>> LeeBarras(const Fuente& fuente, const std::vector<Habitacion>& habitaciones,
                                                   com::Fecha dia, int noches);

  com::Fecha desde_, hoy_;
  int noches_ = 14;
  std::vector<Habitacion> habitaciones_;
  std::vector<Barra> barras_;
  std::vector<std::size_t> primeras_;  // of each room in barras_, and the end
};

// What a bar stands for, in words: state, or what it is.
[[nodiscard]] std::string EstadoDe(const Barra& barra);
// The day on which it ends as it is read: a block's is its last night, the others' that of the departure.
[[nodiscard]] com::Fecha UltimoDia(const Barra& barra);
// "Reservación 0000000016, Ana López, Activa, 09/03/2026 – 11/03/2026", "Bloqueada, 09/03/2026 – 10/03/2026".
[[nodiscard]] std::string QuienLaTiene(const Barra& barra);

}  // namespace recepcion
