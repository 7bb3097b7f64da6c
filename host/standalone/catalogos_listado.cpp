// The catalogues as tables of typed cells.
#include <map>

#include "host/standalone/catalogos.h"

namespace autonomo {

namespace {

listado::Clase ClaseDe(TipoCampo tipo) {
  switch (tipo) {
    case TipoCampo::Entero:
      return listado::Clase::Entero;
    case TipoCampo::Dinero:
      return listado::Clase::Importe;
    case TipoCampo::Fraccion:
      return listado::Clase::PorCiento;
    case TipoCampo::Fecha:
      return listado::Clase::Fecha;
    default:
      return listado::Clase::Texto;
  }
}

}  // namespace

std::string_view EstadoDe(const Catalogo& catalogo, const FilaCatalogo& fila) {
  if (catalogo.todoEsLlave) return fila.deBaja ? "Levantado" : "En vigor";
  return fila.deBaja ? "De baja" : "";
}

listado::Listado ListadoDe(Conexion& conexion, const Catalogo& catalogo) {
  listado::Listado lista{std::string(catalogo.titulo), "", {}, {}};
  std::vector<std::map<std::string, std::string>> nombres;
  for (const CampoCatalogo& campo : catalogo.campos) {
    lista.columnas.push_back({std::string(campo.titulo), ClaseDe(campo.tipo)});
    auto& suyos = nombres.emplace_back();
    if (campo.tipo != TipoCampo::Referencia) continue;
    for (const auto& [clave, nombre] : LeeReferencia(conexion, campo.referencia)) suyos[clave] = nombre;
  }
  if (catalogo.conEstado) lista.columnas.push_back({"Estado"});
  for (const FilaCatalogo& fila : LeeCatalogo(conexion, catalogo)) {
    auto& celdas = lista.filas.emplace_back();
    for (std::size_t i = 0; i < catalogo.campos.size(); ++i) {
      if (lista.columnas[i].clase != listado::Clase::Texto) {
        celdas.push_back(fila.valores[i]);
        continue;
      }
      std::string texto = TextoDe(catalogo.campos[i], fila.valores[i]);
      if (const auto nombre = nombres[i].find(texto); nombre != nombres[i].end()) texto += " " + nombre->second;
      celdas.emplace_back(texto.empty() ? std::string(catalogo.campos[i].vacio) : texto);
    }
    if (catalogo.conEstado) celdas.emplace_back(EstadoDe(catalogo, fila));
  }
  return lista;
}

}  // namespace autonomo
