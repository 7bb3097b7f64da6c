#include "recepcion/lectura.h"

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

com::Fecha CeldaDia(const ado::Recordset& rs, std::size_t columna) {
  return com::SoloFecha(ado::CeldaFecha(rs, columna));
}

}  // namespace recepcion
