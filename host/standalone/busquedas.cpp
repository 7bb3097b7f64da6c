#include "host/standalone/busquedas.h"

#include <algorithm>

#include "platform/com/error.h"
#include "platform/com/variant.h"

namespace autonomo {

namespace {

constexpr Busqueda kBusquedas[] = {
    {"Habitacion", "Habitaciones",
     "SELECT HB.Hb_Cve_Habitacion, TH.Th_Descripcion + ' / ' + HB.Hb_Descripcion AS DESCRIPCION FROM Habitacion HB "
     "INNER JOIN Tipo_Habitacion TH ON TH.Th_Cve_Tipo_Habitacion = HB.Th_Cve_Tipo_Habitacion "
     "WHERE HB.Es_Cve_Estado <> 'BA' ORDER BY HB.Hb_Cve_Habitacion"},
    {"Cliente", "Clientes",
     "SELECT Cl_Cve_Cliente, Cl_Razon_Social_1 FROM Cliente WHERE Es_Cve_Estado <> 'BA' ORDER BY Cl_Cve_Cliente"},
    {"Forma_Pago", "Formas de pago",
     "SELECT Fp_Cve_Forma_Pago, Fp_Descripcion FROM Forma_Pago WHERE Es_Cve_Estado <> 'BA' "
     "ORDER BY Fp_Cve_Forma_Pago"},
    {"Moneda", "Monedas",
     "SELECT Mn_Cve_Moneda, Mn_Descripcion FROM Moneda WHERE Es_Cve_Estado <> 'BA' ORDER BY Mn_Cve_Moneda"},
    {"Tipo_Habitacion", "Tipos de habitación",
     "SELECT Th_Cve_Tipo_Habitacion, Th_Descripcion FROM Tipo_Habitacion WHERE Es_Cve_Estado <> 'BA' "
     "ORDER BY Th_Cve_Tipo_Habitacion"},
    {"Grupo_Habitacion", "Grupos de habitaciones",
     "SELECT Ghb_Cve_Grupo_Habitacion, Ghb_Descripcion FROM Grupo_Habitacion WHERE Es_Cve_Estado <> 'BA' "
     "ORDER BY Ghb_Cve_Grupo_Habitacion"},
    {"Area_Habitacion", "Áreas",
     "SELECT Ah_Cve_Area_Habitacion, Ah_Descripcion FROM Area_Habitacion WHERE Es_Cve_Estado <> 'BA' "
     "ORDER BY Ah_Cve_Area_Habitacion"},
    {"Sucursal", "Sucursales",
     "SELECT Sc_Cve_Sucursal, Sc_Descripcion FROM Sucursal WHERE Es_Cve_Estado <> 'BA' ORDER BY Sc_Cve_Sucursal"},
};

}  // namespace

const Busqueda& BusquedaDe(std::string_view nombre) {
  const auto* b = std::find_if(std::begin(kBusquedas), std::end(kBusquedas),
                               [&](const Busqueda& k) { return com::IgualSinCaja(k.nombre, nombre); });
  if (b == std::end(kBusquedas))
    throw com::Error(com::error::kArgumento, "El catálogo " + std::string(nombre) + " no existe");
  return *b;
}

std::vector<std::pair<std::string, std::string>> LeeFilas(Conexion& conexion, const Busqueda& busqueda) {
  std::vector<std::pair<std::string, std::string>> filas;
  const ado::RecordsetPtr rs = conexion.Consulta(busqueda.sentencia);
  for (; !rs->Eof(); rs->MoveNext())
    filas.emplace_back(com::CStr(rs->Fields(0).Value()), com::CStr(rs->Fields(1).Value()));
  return filas;
}

}  // namespace autonomo
