#include "host/standalone/altas.h"

#include "host/standalone/transaccion.h"

namespace autonomo {

void DaDeAlta(Conexion& conexion, const Alta& alta, const Conexion::Parametros& valores) {
  conexion.Consulta(alta.inserta, valores);
}

void DaDeAltaSiFalta(Conexion& conexion, const Alta& alta, const Conexion::Parametros& valores) {
  if (!Hay(conexion, alta.busca, {valores.front()})) DaDeAlta(conexion, alta, valores);
}

}  // namespace autonomo
