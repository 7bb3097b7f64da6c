// The board's statements. Each builder appends its text to the given buffer.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "availability/frmDisponibilidad.h"
#include "platform/ado/texto_sql.h"

namespace kv207::sentencias {

// What the counts of one board have in common.
struct Criterio {
  ModoVista modo = ModoVista::PorTipo;
  ado::TextoSQL condicion;    // withdrawn rooms and filters, see Condicion
  std::string folioExcluido;  // reservation that does not count, "" none
};

// Keys that filter.
struct Filtros {
  std::optional<std::string> grupo, area, tipo;
};

// CLAVE, Total: number of rooms that are not withdrawn, by row key.
void ArmaTotales(ado::TextoSQL& sql, ModoVista modo);

// Condition of rows and counts, to follow a WHERE.
[[nodiscard]] ado::TextoSQL Condicion(ModoVista modo, const Filtros& filtros);

// CLAVE, DESCRIPCION and, by room, DESCRIPCION_TIPO of the board's rows, in the database's order.
void ArmaFilas(ado::TextoSQL& sql, ModoVista modo, const ado::TextoSQL& condicion);

// --- cell by cell ---
// Cantidad of one row on one night. noche: the night as Utilerias.FechaSQL gives it.
void ArmaReservaciones(ado::TextoSQL& sql, const Criterio& criterio, std::string_view clave, std::string_view noche);
void ArmaEstancias(ado::TextoSQL& sql, const Criterio& criterio, std::string_view clave, std::string_view noche);
void ArmaBloqueos(ado::TextoSQL& sql, const Criterio& criterio, std::string_view clave, std::string_view noche);

// --- whole sets ---
// CLAVE, INICIO, FIN of everything that takes a room of any row on some night of the range. CLAVE is spelled as in the
// rows statement. primera, ultima: first and last night as Utilerias.FechaSQL gives them.
void ArmaReservacionesDelRango(ado::TextoSQL& sql, const Criterio& criterio, std::string_view primera,
                               std::string_view ultima);
void ArmaEstanciasDelRango(ado::TextoSQL& sql, const Criterio& criterio, std::string_view primera,
                           std::string_view ultima);
void ArmaBloqueosDelRango(ado::TextoSQL& sql, const Criterio& criterio, std::string_view primera,
                          std::string_view ultima);

}  // namespace kv207::sentencias
