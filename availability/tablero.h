// Names of the board: the states of its cells, which are its grid's styles, where its nights begin, and what a filter
// holds that hides nothing.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/controls/grid.h"

namespace kv207 {

// State of a cell: the index of its style in the grid.
enum class EstadoCelda : std::int8_t { Ocupado = 0, Disponible = 1, Bloqueado = 2, Ocupando = 3, Reservado = 4 };

// Names of the styles, by state.
inline constexpr std::array<std::string_view, 5> kEstilos{"OCUPADO", "DISPONIBLE", "Bloqueado", "OCUPANDO",
                                                          "Reservado"};
constexpr std::string_view NombreEstado(EstadoCelda estado) { return kEstilos[static_cast<std::size_t>(estado)]; }

// Columns before the first night.
using controles::kColumnasFijas;

// Code of a filter that lets everything through.
inline constexpr const char* kTodosLosCodigos = "%";

}  // namespace kv207
