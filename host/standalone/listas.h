// Lists of what the host has recorded, with their filter.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/standalone/conexion.h"

namespace autonomo {

// What is empty filters nothing.
struct FiltroLista {
  std::string folio;  // as typed: with or without its zeros
  std::string usuario;
  std::optional<com::Fecha> dia;
};

// Rows that a list reads at most; it says so when there are more.
inline constexpr std::size_t kMasRenglones = 1000;

struct EntradaDeBitacora {
  com::Fecha fecha;
  std::string usuario, folio, texto;
};
// The change log, the last entry first.
std::vector<EntradaDeBitacora> LeeBitacora(Conexion& conexion, const FiltroLista& filtro);

// "WHERE ..." of the filter on these columns, "" for an empty one, and the values of its marks.
std::string CondicionDe(Conexion& conexion, const FiltroLista& filtro, std::string_view folio, std::string_view usuario,
                        std::string_view fecha, Conexion::Parametros& valores);

}  // namespace autonomo
