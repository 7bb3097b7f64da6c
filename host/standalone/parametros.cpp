#include "host/standalone/parametros.h"

#include "platform/com/variant.h"

namespace autonomo {

std::optional<std::string> LeeParametro(Conexion& conexion, std::string_view clave) {
  const ado::RecordsetPtr rs = conexion.Consulta("SELECT Pm_Valor FROM Parametro WHERE Pm_Clave = ?", {clave});
  if (rs->Eof() || rs->Fields(0).Value().EsNulo()) return std::nullopt;
  return com::CStr(rs->Fields(0).Value());
}

bool EsMonedaLocal(Conexion& conexion, const std::string& moneda) {
  const std::string clave = com::Recorta(moneda);
  return !clave.empty() &&
         com::IgualSinCaja(clave, com::Recorta(LeeParametro(conexion, "FIN_MONEDA_LOCAL").value_or("")));
}

std::string MascaraDeFolio(Conexion& conexion) {
  return LeeParametro(conexion, "HT_FORMATO_FOLIO").value_or("0000000000");
}

}  // namespace autonomo
