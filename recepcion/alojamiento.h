// Which line of a reservation a stay fulfils: nothing that is stored says it, its room and nights do.
#pragma once

#include <optional>

#include "platform/com/fecha.h"

namespace recepcion {

// From inicio on, up to the one before fin.
struct Noches {
  com::Fecha inicio, fin;
};

[[nodiscard]] bool SeTocan(const Noches& a, const Noches& b);

// How far a stay is from a line of its room; none when they share no night. It belongs to the nearest line, of equals
// to the first: one that begins with it, else the last one to begin before it (somebody came late), else the next one
// to begin (somebody came early). So who stays longer than booked keeps his own line, whoever is to have the room then.
[[nodiscard]] std::optional<int> Lejania(const Noches& linea, const Noches& estancia);

}  // namespace recepcion
