// Dates as seconds: pauses that grow, claims that run out.
#pragma once

#include <cstdint>

#include "platform/com/fecha.h"

namespace autonomo {

constexpr std::int64_t kSegundosDia = 86400;

// Since the dates' own first day; only differences mean anything.
constexpr std::int64_t Segundos(com::Fecha f) { return f.dia * kSegundosDia + f.segundo; }
constexpr com::Fecha MasSegundos(com::Fecha f, std::int64_t segundos) {
  const std::int64_t s = Segundos(f) + segundos;
  return {static_cast<std::int32_t>(s / kSegundosDia), static_cast<std::int32_t>(s % kSegundosDia)};
}

}  // namespace autonomo
