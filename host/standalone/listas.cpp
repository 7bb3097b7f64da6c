#include "host/standalone/listas.h"

#include "host/standalone/parametros.h"
#include "platform/ado/celda.h"
#include "platform/com/texto.h"
#include "platform/com/variant.h"
#include "platform/regional/regional.h"

namespace autonomo {

std::string CondicionDe(Conexion& conexion, const FiltroLista& filtro, std::string_view folio, std::string_view usuario,
                        std::string_view fecha, Conexion::Parametros& valores) {
  std::string condicion;
  const auto agrega = [&](std::string_view columna, const char* signo, com::Variant valor) {
    condicion += (condicion.empty() ? " WHERE " : " AND ") + std::string(columna) + signo;
    valores.push_back(std::move(valor));
  };
  if (const std::string clave = com::Recorta(filtro.folio); !clave.empty())
    agrega(folio, " = ?", regional::ConMascara(clave, MascaraDeFolio(conexion)));
  if (const std::string login = com::Recorta(filtro.usuario); !login.empty()) agrega(usuario, " = ?", login);
  if (filtro.dia) {
    agrega(fecha, " >= ?", com::SoloFecha(*filtro.dia));
    agrega(fecha, " < ?", com::MasDias(com::SoloFecha(*filtro.dia), 1));
  }
  return condicion;
}

std::vector<EntradaDeBitacora> LeeBitacora(Conexion& conexion, const FiltroLista& filtro) {
  Conexion::Parametros valores;
  const std::string condicion = CondicionDe(conexion, filtro, "Bt_Clave", "Bt_Usuario", "Bt_Fecha", valores);
  const ado::RecordsetPtr rs = conexion.Consulta("SELECT TOP " + std::to_string(kMasRenglones) +
                                                     " Bt_Fecha, Bt_Usuario, Bt_Clave, Bt_Texto FROM Bitacora" +
                                                     condicion + " ORDER BY Bt_Id DESC",
                                                 valores);
  std::vector<EntradaDeBitacora> entradas;
  for (; !rs->Eof(); rs->MoveNext()) {
    entradas.push_back({ado::CeldaFecha(*rs, 0), ado::Celda(*rs, 1), ado::Celda(*rs, 2), ado::Celda(*rs, 3)});
  }
  return entradas;
}

}  // namespace autonomo
