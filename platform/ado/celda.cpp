#include "platform/ado/celda.h"

namespace ado {

namespace {

std::string Texto(const Field& campo) { return com::RecortaDerecha(com::TextoDe(campo.Value())); }
double Numero(const Field& campo) { return campo.Value().EsNulo() ? 0 : com::CDbl(campo.Value()); }
std::int32_t Entero(const Field& campo) { return campo.Value().EsNulo() ? 0 : com::CLng(campo.Value()); }
com::Fecha Fecha(const Field& campo) { return campo.Value().EsNulo() ? com::Fecha{} : com::CDate(campo.Value()); }

}  // namespace

std::string Celda(const Recordset& rs, std::size_t columna) { return Texto(rs.Fields(columna)); }
std::string Celda(const Recordset& rs, std::string_view columna) { return Texto(rs.Fields(columna)); }
double CeldaNumero(const Recordset& rs, std::size_t columna) { return Numero(rs.Fields(columna)); }
double CeldaNumero(const Recordset& rs, std::string_view columna) { return Numero(rs.Fields(columna)); }
std::int32_t CeldaEntero(const Recordset& rs, std::size_t columna) { return Entero(rs.Fields(columna)); }
std::int32_t CeldaEntero(const Recordset& rs, std::string_view columna) { return Entero(rs.Fields(columna)); }
com::Fecha CeldaFecha(const Recordset& rs, std::size_t columna) { return Fecha(rs.Fields(columna)); }
com::Fecha CeldaFecha(const Recordset& rs, std::string_view columna) { return Fecha(rs.Fields(columna)); }

}  // namespace ado
