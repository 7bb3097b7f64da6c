#include "host/standalone/nombres.h"

#include <algorithm>

#include "platform/com/variant.h"
#include "schema/esquema.h"

namespace autonomo {

NombresDeTabla RevisaNombres(std::string_view tabla, const std::vector<std::string>& columnas) {
  const esquema::Tabla* t = esquema::BuscaTabla(tabla);
  if (t == nullptr) throw com::Error(com::error::kArgumento, "La tabla " + std::string(tabla) + " no existe");
  NombresDeTabla nombres{std::string(t->nombre), {}};
  for (const std::string& columna : columnas) {
    const auto c = std::find_if(t->columnas.begin(), t->columnas.end(), [&](const esquema::Columna& candidata) {
      return com::IgualSinCaja(candidata.nombre, columna);
    });
    if (c == t->columnas.end()) {
      throw com::Error(com::error::kArgumento, "La tabla " + nombres.tabla + " no tiene la columna " + columna);
    }
    nombres.columnas.emplace_back(c->nombre);
  }
  return nombres;
}

}  // namespace autonomo
