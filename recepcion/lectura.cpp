#include "recepcion/lectura.h"

#include "platform/com/variant.h"
#include "publico/publico.h"

namespace recepcion {

Fuente DelAnfitrion() {
  return {[] { return publico::Sistema().ObtenConexion(); }, DiaSql};
}

Fuente FuenteDe(ado::ConnectionPtr conexion) {
  return {[conexion = std::move(conexion)] { return conexion; }, com::AIso};
}

ado::RecordsetPtr Ejecuta(const Fuente& fuente, const ado::TextoSQL& sql) { return fuente.conexion()->Execute(sql); }

ado::RecordsetPtr Ejecuta(const ado::TextoSQL& sql) { return publico::Sistema().ObtenConexion()->Execute(sql); }

std::string DiaSql(com::Fecha dia) { return publico::Utilerias().FechaSQL(com::SoloFecha(dia)); }

std::string Celda(const ado::Recordset& rs, std::size_t columna) {
  return com::RecortaDerecha(com::TextoDe(rs.Fields(columna).Value()));
}

com::Fecha CeldaDia(const ado::Recordset& rs, std::size_t columna) {
  const com::Variant valor = rs.Fields(columna).Value();
  return valor.EsNulo() ? com::Fecha{} : com::SoloFecha(com::CDate(valor));
}

double CeldaNumero(const ado::Recordset& rs, std::size_t columna) {
  const com::Variant valor = rs.Fields(columna).Value();
  return valor.EsNulo() ? 0 : com::CDbl(valor);
}

}  // namespace recepcion
