// From marked nights to room lines.
#pragma once

#include <functional>

namespace kv207 {

// Nights of a board row that are marked without a gap; both counted from 0, both included.
struct Racha {
  int primera = 0;
  int ultima = 0;
  bool operator==(const Racha&) const = default;
};

// Walks the nights of one board row and hands over every run of marked ones as soon as it has ended.
void RecorreRachas(int noches, const std::function<bool(int noche)>& marcada,
                   const std::function<void(Racha racha)>& entrega);

}  // namespace kv207
