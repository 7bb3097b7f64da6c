// The rows of catalogues that a hotel begins with, whoever makes it: its owner, a list of rooms, the importer.
#pragma once

#include <string_view>

#include "host/standalone/conexion.h"

namespace autonomo {

// How a row comes into a catalogue, in service: its values in the order of the statement, the key first.
struct Alta {
  std::string_view inserta;
  std::string_view busca;  // gives a row when that key is there
};

namespace alta {

inline constexpr Alta kMoneda{"INSERT INTO Moneda (Mn_Cve_Moneda, Mn_Descripcion, Es_Cve_Estado) VALUES (?, ?, 'AC')",
                              "SELECT Mn_Cve_Moneda FROM Moneda WHERE Mn_Cve_Moneda = ?"};
inline constexpr Alta kFormaPago{
    "INSERT INTO Forma_Pago (Fp_Cve_Forma_Pago, Fp_Descripcion, Fp_Tipo, Es_Cve_Estado) VALUES (?, ?, ?, 'AC')",
    "SELECT Fp_Cve_Forma_Pago FROM Forma_Pago WHERE Fp_Cve_Forma_Pago = ?"};
inline constexpr Alta kPrecio{"INSERT INTO Producto_Precio (Pr_Cve_Producto, Pp_Precio_1) VALUES (?, ?)",
                              "SELECT Pr_Cve_Producto FROM Producto_Precio WHERE Pr_Cve_Producto = ?"};
// Key, name, persons included, most persons, product.
inline constexpr Alta kTipo{
    "INSERT INTO Tipo_Habitacion (Th_Cve_Tipo_Habitacion, Th_Descripcion, Th_Num_Personas, Th_Num_Personas_Maximo, "
    "Pr_Cve_Producto, Es_Cve_Estado) VALUES (?, ?, ?, ?, ?, 'AC')",
    "SELECT Th_Cve_Tipo_Habitacion FROM Tipo_Habitacion WHERE Th_Cve_Tipo_Habitacion = ?"};
inline constexpr Alta kGrupo{
    "INSERT INTO Grupo_Habitacion (Ghb_Cve_Grupo_Habitacion, Ghb_Descripcion, Es_Cve_Estado) VALUES (?, ?, 'AC')",
    "SELECT Ghb_Cve_Grupo_Habitacion FROM Grupo_Habitacion WHERE Ghb_Cve_Grupo_Habitacion = ?"};
inline constexpr Alta kArea{
    "INSERT INTO Area_Habitacion (Ah_Cve_Area_Habitacion, Ah_Descripcion, Es_Cve_Estado) VALUES (?, ?, 'AC')",
    "SELECT Ah_Cve_Area_Habitacion FROM Area_Habitacion WHERE Ah_Cve_Area_Habitacion = ?"};
// Key, name, type, group, area.
inline constexpr Alta kHabitacion{
    "INSERT INTO Habitacion (Hb_Cve_Habitacion, Hb_Descripcion, Th_Cve_Tipo_Habitacion, Ghb_Cve_Grupo_Habitacion, "
    "Ah_Cve_Area_Habitacion, Es_Cve_Estado) VALUES (?, ?, ?, ?, ?, 'AC')",
    "SELECT Hb_Cve_Habitacion FROM Habitacion WHERE Hb_Cve_Habitacion = ?"};

}  // namespace alta

// Writes the row; errors of Consulta, here and below.
void DaDeAlta(Conexion& conexion, const Alta& alta, const Conexion::Parametros& valores);
// Where there is none with that key.
void DaDeAltaSiFalta(Conexion& conexion, const Alta& alta, const Conexion::Parametros& valores);

}  // namespace autonomo
