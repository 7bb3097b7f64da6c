#include "host/standalone/busquedas.h"

#include <algorithm>
#include <initializer_list>

#include "platform/com/error.h"
#include "platform/com/variant.h"

namespace autonomo {

namespace {

constexpr Busqueda kBusquedas[] = {
    {"Habitacion", "Habitaciones", "HB.Hb_Cve_Habitacion", "TH.Th_Descripcion + ' / ' + HB.Hb_Descripcion",
     " FROM Habitacion HB INNER JOIN Tipo_Habitacion TH ON TH.Th_Cve_Tipo_Habitacion = HB.Th_Cve_Tipo_Habitacion "
     "WHERE HB.Es_Cve_Estado <> 'BA'"},
    {"Cliente", "Clientes", "Cl_Cve_Cliente", "Cl_Razon_Social_1", " FROM Cliente WHERE Es_Cve_Estado <> 'BA'"},
    {"Forma_Pago", "Formas de pago", "Fp_Cve_Forma_Pago", "Fp_Descripcion",
     " FROM Forma_Pago WHERE Es_Cve_Estado <> 'BA'"},
    {"Moneda", "Monedas", "Mn_Cve_Moneda", "Mn_Descripcion", " FROM Moneda WHERE Es_Cve_Estado <> 'BA'"},
    {"Tipo_Habitacion", "Tipos de habitación", "Th_Cve_Tipo_Habitacion", "Th_Descripcion",
     " FROM Tipo_Habitacion WHERE Es_Cve_Estado <> 'BA'"},
    {"Grupo_Habitacion", "Grupos de habitaciones", "Ghb_Cve_Grupo_Habitacion", "Ghb_Descripcion",
     " FROM Grupo_Habitacion WHERE Es_Cve_Estado <> 'BA'"},
    {"Area_Habitacion", "Áreas", "Ah_Cve_Area_Habitacion", "Ah_Descripcion",
     " FROM Area_Habitacion WHERE Es_Cve_Estado <> 'BA'"},
    {"Sucursal", "Sucursales", "Sc_Cve_Sucursal", "Sc_Descripcion", " FROM Sucursal WHERE Es_Cve_Estado <> 'BA'"},
};

std::string Junta(std::initializer_list<std::string_view> partes) {
  std::string todo;
  for (const std::string_view parte : partes) todo += parte;
  return todo;
}

}  // namespace

const Busqueda& BusquedaDe(std::string_view nombre) {
  const auto* b = std::find_if(std::begin(kBusquedas), std::end(kBusquedas),
                               [&](const Busqueda& k) { return com::IgualSinCaja(k.nombre, nombre); });
  if (b == std::end(kBusquedas))
    throw com::Error(com::error::kArgumento, "El catálogo " + std::string(nombre) + " no existe");
  return *b;
}

std::vector<std::pair<std::string, std::string>> LeeFilas(Conexion& conexion, const Busqueda& busqueda) {
  const auto& [nombre, titulo, clave, descripcion, filas] = busqueda;
  std::vector<std::pair<std::string, std::string>> leidas;
  const ado::RecordsetPtr rs =
      conexion.Consulta(Junta({"SELECT ", clave, ", ", descripcion, " AS DESCRIPCION", filas, " ORDER BY ", clave}));
  for (; !rs->Eof(); rs->MoveNext())
    leidas.emplace_back(com::CStr(rs->Fields(0).Value()), com::CStr(rs->Fields(1).Value()));
  return leidas;
}

std::optional<std::string> NombreDe(Conexion& conexion, const Busqueda& busqueda, const std::string& clave) {
  const ado::RecordsetPtr rs = conexion.Consulta(
      Junta({"SELECT ", busqueda.descripcion, " AS DESCRIPCION", busqueda.filas, " AND ", busqueda.clave, " = ?"}),
      {clave});
  return rs->Eof() ? std::nullopt : std::optional(com::CStr(rs->Fields(0).Value()));
}

bool HayFilas(Conexion& conexion, const Busqueda& busqueda) {
  const ado::RecordsetPtr rs = conexion.Consulta(Junta({"SELECT COUNT(*) AS Cantidad", busqueda.filas}));
  return com::CLng(rs->Fields(0).Value()) > 0;
}

}  // namespace autonomo
