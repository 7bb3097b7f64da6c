// The rules that the database itself keeps, whoever writes: no room sold twice, a version for each reservation.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "schema/esquema.h"

namespace esquema {

// Functions and triggers, after the tables.
std::vector<Objeto> Guardas(Motor motor);

// --- nights that PostgreSQL keeps as sold (guardas.cpp)
// Enter them anew from the lines, in this order: nobody sells meanwhile, what was kept goes, what is sold is kept.
inline constexpr std::string_view kDetieneNoches = "LOCK TABLE Noche_Vendida IN EXCLUSIVE MODE";
inline constexpr std::string_view kOlvidaNoches = "DELETE FROM Noche_Vendida";
inline constexpr std::string_view kApartaNoches = R"(INSERT INTO Noche_Vendida (Rs_Folio, Nv_Habitacion, Nv_Noches)
    SELECT linea.Rs_Folio, rango_clave(linea.Hb_Cve_Habitacion, linea.Hb_Cve_Habitacion, '[]'),
           noches(linea.Rsd_Fecha_Inicio, linea.Rsd_Fecha_Fin)
    FROM Reservacion_Detalle linea
      INNER JOIN Reservacion
        ON Reservacion.Rs_Folio = linea.Rs_Folio AND Reservacion.Es_Cve_Estado NOT IN ('CA', 'CE')
    WHERE NOT hay_sobreventa() AND NOT isempty(noches(linea.Rsd_Fecha_Inicio, linea.Rsd_Fecha_Fin))
    ON CONFLICT DO NOTHING)";
// Gives the nights that are kept without a live line that holds them, and so are refused for nothing: room, first
// night and the one after the last as DD/MM/YYYY, folio.
inline constexpr std::string_view kNochesSinRenglon = R"(
  SELECT rtrim(lower(Nv_Habitacion)) AS Habitacion, to_char(lower(Nv_Noches), 'DD/MM/YYYY') AS Desde,
         to_char(upper(Nv_Noches), 'DD/MM/YYYY') AS Hasta, vendida.Rs_Folio AS Folio
  FROM Noche_Vendida vendida
  WHERE NOT hay_sobreventa() AND NOT EXISTS (
    SELECT FROM Reservacion_Detalle linea
      INNER JOIN Reservacion ON Reservacion.Rs_Folio = linea.Rs_Folio AND Es_Cve_Estado NOT IN ('CA', 'CE')
    WHERE linea.Rs_Folio = vendida.Rs_Folio AND linea.Hb_Cve_Habitacion = lower(Nv_Habitacion)
      AND noches(linea.Rsd_Fecha_Inicio, linea.Rsd_Fecha_Fin) = Nv_Noches)
  ORDER BY 1, lower(Nv_Noches))";

// --- what the statements of this folder are made with
// s with each `clave` replaced.
std::string Reemplaza(std::string s, std::string_view clave, std::string_view valor);
// " DEFAULT ..." of a column that an insert does not name; "" none.
std::string_view Omision(const Columna& c);

}  // namespace esquema
