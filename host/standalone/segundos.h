// Dates as seconds: pauses that grow, claims that run out.
#pragma once

#include <cstdint>

#include "platform/com/fecha.h"

namespace autonomo {

// Since the dates' own first day; only differences mean anything.
constexpr std::int64_t Segundos(com::Fecha f) { return std::int64_t{f.dia} * com::kSegundosDia + f.segundo; }
constexpr com::Fecha MasSegundos(com::Fecha f, std::int64_t segundos) {
  const std::int64_t s = Segundos(f) + segundos;
  return {static_cast<std::int32_t>(s / com::kSegundosDia), static_cast<std::int32_t>(s % com::kSegundosDia)};
}

}  // namespace autonomo
