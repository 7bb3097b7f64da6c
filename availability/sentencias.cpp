#include "availability/sentencias.h"

namespace kv207::sentencias {

namespace {

// Restricts a count to one row. cierre: what follows the key.
void AgregaClave(ado::TextoSQL& sql, ModoVista modo, std::string_view clave, std::string_view cierre) {
  sql.Agrega(modo == ModoVista::PorTipo ? "   HB.Th_Cve_Tipo_Habitacion = '" : "   HB.Hb_Cve_Habitacion = '");
  sql.Valor(clave).Agrega(cierre);
}

void AgregaFolioExcluido(ado::TextoSQL& sql, const std::string& folio) {
  if (!folio.empty()) sql.Agrega("   RS.Rs_Folio <> '").Valor(folio).Agrega("' AND ");
}

// Rooms of a stay in progress never count as reserved.
constexpr std::string_view kSinEstanciaEnCurso =
    " HB.Hb_Cve_Habitacion NOT IN (SELECT Hb_Cve_Habitacion FROM Check_In_Detalle "
    " INNER JOIN Check_In ON Check_In_Detalle.Ci_Folio = Check_In.Ci_Folio "
    "WHERE Es_Cve_Estado = 'AC') AND ";

}  // namespace

void Totales(ado::TextoSQL& sql, ModoVista modo) {
  if (modo == ModoVista::PorTipo) {
    sql.Agrega(
        "SELECT "
        "   Th_Cve_Tipo_Habitacion AS CLAVE, "
        "   COUNT(Hb_Cve_Habitacion) as Total "
        "FROM Habitacion "
        "WHERE Habitacion.Es_Cve_Estado <> 'BA' "
        "GROUP BY Th_Cve_Tipo_Habitacion "
        "ORDER BY Th_Cve_Tipo_Habitacion ");
    return;
  }
  sql.Agrega(
      "SELECT "
      "   Hb_Cve_Habitacion AS CLAVE, "
      "   COUNT(Hb_Cve_Habitacion) as Total "
      "FROM Habitacion "
      "WHERE Habitacion.Es_Cve_Estado <> 'BA' "
      "GROUP BY Hb_Cve_Habitacion "
      "ORDER BY Hb_Cve_Habitacion ");
}

ado::TextoSQL Condicion(ModoVista modo, const Filtros& filtros) {
  ado::TextoSQL w(modo == ModoVista::PorTipo ? " THb.Es_Cve_Estado <> 'BA' " : " HB.Es_Cve_Estado <> 'BA' ");
  if (filtros.grupo) w.Agrega(" AND HB.Ghb_Cve_Grupo_Habitacion = '").Valor(*filtros.grupo).Agrega("' ");
  if (filtros.area) w.Agrega(" AND HB.Ah_Cve_Area_Habitacion = '").Valor(*filtros.area).Agrega("' ");
  if (filtros.tipo) w.Agrega(" AND HB.Th_Cve_Tipo_Habitacion = '").Valor(*filtros.tipo).Agrega("' ");
  return w;
}

void Filas(ado::TextoSQL& sql, ModoVista modo, const ado::TextoSQL& condicion) {
  if (modo == ModoVista::PorTipo) {
    sql.Agrega(
        "SELECT "
        " DISTINCT THb.Th_Cve_Tipo_Habitacion AS CLAVE, "
        " THb.Th_Descripcion AS DESCRIPCION, "
        " THb.Pr_Cve_Producto, "
        " PR.Pr_Descripcion, "
        " PR.Pr_Unidad_Venta, "
        " PRp.Pp_Precio_1, "
        " Pr_Unidad_venta, "
        " Pr_Unidad_Control_1, "
        " Pr_Unidad_Control_2, "
        " Pr_Unidad_Costo "
        "FROM Tipo_Habitacion THb "
        " INNER JOIN Habitacion HB ON THb.Th_Cve_Tipo_Habitacion = HB.Th_Cve_Tipo_Habitacion ");
  } else {
    sql.Agrega(
        "SELECT "
        " THb.Th_Cve_Tipo_Habitacion AS CLAVE_TIPO, "
        " THb.Th_Descripcion AS DESCRIPCION_TIPO, "
        " HB.Hb_Cve_Habitacion AS CLAVE, "
        " HB.Hb_Descripcion AS DESCRIPCION, "
        " THb.Pr_Cve_Producto, "
        " PR.Pr_Descripcion, "
        " PR.Pr_Unidad_Venta, "
        " PRp.Pp_Precio_1, "
        " Pr_Unidad_venta, "
        " Pr_Unidad_Control_1, "
        " Pr_Unidad_Control_2, "
        " Pr_Unidad_Costo "
        "FROM Habitacion HB "
        " INNER JOIN Tipo_Habitacion THb ON HB.Th_Cve_Tipo_Habitacion = THb.Th_Cve_Tipo_Habitacion ");
  }
  sql.Agrega(
         " INNER JOIN Producto PR ON THb.Pr_Cve_Producto = PR.Pr_Cve_Producto "
         " INNER JOIN Producto_Precio PRp ON PR.Pr_Cve_Producto = PRp.Pr_Cve_Producto "
         " WHERE ")
      .Agrega(condicion);
}

void Reservaciones(ado::TextoSQL& sql, const Criterio& criterio, std::string_view clave, std::string_view noche) {
  sql.Agrega(
         "SELECT COUNT(RSd.Hb_Cve_Habitacion)AS Cantidad "
         "FROM Reservacion RS "
         "   INNER JOIN Reservacion_Detalle RSd ON RSd.Rs_Folio = RS.Rs_Folio "
         "   INNER JOIN Habitacion HB on RSd.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion "
         "   INNER JOIN Tipo_Habitacion THb ON HB.Th_Cve_Tipo_Habitacion = THb.Th_Cve_Tipo_Habitacion "
         "WHERE ")
      .Agrega(criterio.condicion)
      .Agrega(" AND ");
  AgregaFolioExcluido(sql, criterio.folioExcluido);
  sql.Agrega("   (RS.Es_Cve_Estado NOT IN ('CA','CE')) AND ");
  AgregaClave(sql, criterio.modo, clave, "'AND ");
  sql.Agrega(kSinEstanciaEnCurso)
      .Agrega(" '")
      .Valor(noche)
      .Agrega(" 23:59' BETWEEN  RSd.Rsd_Fecha_Inicio  AND RSd.Rsd_Fecha_Fin ");
}

void Estancias(ado::TextoSQL& sql, const Criterio& criterio, std::string_view clave, std::string_view noche) {
  sql.Agrega(
         "SELECT COUNT(CId.Hb_Cve_Habitacion)AS Cantidad "
         "FROM Check_In CI "
         "   INNER JOIN Check_In_Detalle CId ON CId.Ci_Folio = CI.Ci_Folio "
         "   INNER JOIN Habitacion HB on CId.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion "
         "   INNER JOIN Tipo_Habitacion THb ON HB.Th_Cve_Tipo_Habitacion = THb.Th_Cve_Tipo_Habitacion "
         "WHERE ")
      .Agrega(criterio.condicion)
      .Agrega(" AND CI.Es_Cve_Estado NOT IN ('CE','CA') AND ");
  AgregaClave(sql, criterio.modo, clave, "'AND ");
  sql.Agrega(" '").Valor(noche).Agrega(" 23:59' BETWEEN  CI.Ci_Llegada  AND CI.Ci_Salida ");
}

void Bloqueos(ado::TextoSQL& sql, const Criterio& criterio, std::string_view clave, std::string_view noche) {
  sql.Agrega(
      "SELECT COUNT(HBb.Hb_Cve_Habitacion) AS Cantidad "
      "FROM Habitacion_Bloqueo HBb "
      "   INNER JOIN Habitacion HB on HBb.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion "
      "WHERE HBb.Es_Cve_Estado = 'AC' AND ");
  AgregaClave(sql, criterio.modo, clave, criterio.modo == ModoVista::PorTipo ? "'AND " : "' AND ");
  sql.Agrega(" '").Valor(noche).Agrega("' BETWEEN  HBb.Hbb_Fecha_Inicio AND HBb.Hbb_Fecha_Fin ");
}

// The joins stand in the order from the few to the many, and CROSS JOIN keeps it where the engine has no statistics:
// rooms, then their lines from the first night on; stays from the first night on, then their rooms. A room's type is
// joined where the row is the type: every row by room has one.

void ReservacionesDelRango(ado::TextoSQL& sql, const Criterio& criterio, std::string_view primera,
                           std::string_view ultima) {
  sql.Agrega(criterio.modo == ModoVista::PorTipo
                 ? "SELECT THb.Th_Cve_Tipo_Habitacion AS CLAVE, RSd.Rsd_Fecha_Inicio AS INICIO, "
                   "RSd.Rsd_Fecha_Fin AS FIN "
                   "FROM Tipo_Habitacion THb CROSS JOIN Habitacion HB CROSS JOIN Reservacion_Detalle RSd "
                   "CROSS JOIN Reservacion RS "
                   "WHERE HB.Th_Cve_Tipo_Habitacion = THb.Th_Cve_Tipo_Habitacion AND "
                 : "SELECT HB.Hb_Cve_Habitacion AS CLAVE, RSd.Rsd_Fecha_Inicio AS INICIO, RSd.Rsd_Fecha_Fin AS FIN "
                   "FROM Habitacion HB CROSS JOIN Reservacion_Detalle RSd CROSS JOIN Reservacion RS "
                   "WHERE ");
  sql.Agrega("RSd.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion AND RS.Rs_Folio = RSd.Rs_Folio AND ")
      .Agrega(criterio.condicion)
      .Agrega(" AND ");
  AgregaFolioExcluido(sql, criterio.folioExcluido);
  // The bound says nothing new; with it the index of folio and state serves, and no reservation is read.
  sql.Agrega(" RS.Es_Cve_Estado NOT IN ('CA','CE') AND RS.Es_Cve_Estado >= '' AND ")
      .Agrega(kSinEstanciaEnCurso)
      .Agrega(" RSd.Rsd_Fecha_Fin >= '")
      .Valor(primera)
      .Agrega(" 23:59' AND RSd.Rsd_Fecha_Inicio <= '")
      .Valor(ultima)
      .Agrega(" 23:59' ");
}

void EstanciasDelRango(ado::TextoSQL& sql, const Criterio& criterio, std::string_view primera,
                       std::string_view ultima) {
  sql.Agrega(criterio.modo == ModoVista::PorTipo
                 ? "SELECT THb.Th_Cve_Tipo_Habitacion AS CLAVE, CI.Ci_Llegada AS INICIO, CI.Ci_Salida AS FIN "
                   "FROM Check_In CI CROSS JOIN Check_In_Detalle CId CROSS JOIN Habitacion HB "
                   "CROSS JOIN Tipo_Habitacion THb "
                   "WHERE THb.Th_Cve_Tipo_Habitacion = HB.Th_Cve_Tipo_Habitacion AND "
                 : "SELECT HB.Hb_Cve_Habitacion AS CLAVE, CI.Ci_Llegada AS INICIO, CI.Ci_Salida AS FIN "
                   "FROM Check_In CI CROSS JOIN Check_In_Detalle CId CROSS JOIN Habitacion HB "
                   "WHERE ");
  sql.Agrega("CId.Ci_Folio = CI.Ci_Folio AND HB.Hb_Cve_Habitacion = CId.Hb_Cve_Habitacion AND ")
      .Agrega(criterio.condicion)
      .Agrega(" AND CI.Es_Cve_Estado NOT IN ('CE','CA') AND CI.Ci_Salida >= '")
      .Valor(primera)
      .Agrega(" 23:59' AND CI.Ci_Llegada <= '")
      .Valor(ultima)
      .Agrega(" 23:59' ");
}

void BloqueosDelRango(ado::TextoSQL& sql, const Criterio& criterio, std::string_view primera, std::string_view ultima) {
  sql.Agrega(criterio.modo == ModoVista::PorTipo
                 ? "SELECT THb.Th_Cve_Tipo_Habitacion AS CLAVE, HBb.Hbb_Fecha_Inicio AS INICIO, "
                   "HBb.Hbb_Fecha_Fin AS FIN "
                   "FROM Tipo_Habitacion THb CROSS JOIN Habitacion HB CROSS JOIN Habitacion_Bloqueo HBb "
                   "WHERE HB.Th_Cve_Tipo_Habitacion = THb.Th_Cve_Tipo_Habitacion AND "
                 : "SELECT HB.Hb_Cve_Habitacion AS CLAVE, HBb.Hbb_Fecha_Inicio AS INICIO, HBb.Hbb_Fecha_Fin AS FIN "
                   "FROM Habitacion HB CROSS JOIN Habitacion_Bloqueo HBb "
                   "WHERE ");
  sql.Agrega("HBb.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion AND HBb.Es_Cve_Estado = 'AC' AND HBb.Hbb_Fecha_Fin >= '")
      .Valor(primera)
      .Agrega("' AND HBb.Hbb_Fecha_Inicio <= '")
      .Valor(ultima)
      .Agrega("' ");
}

}  // namespace kv207::sentencias
