#include "availability/sentencias.h"

namespace kv207::sentencias {

namespace {

// Restricts a count to one row.
ado::TextoSQL DeLaFila(ModoVista modo, std::string_view clave) {
  return {modo == ModoVista::PorTipo ? "   HB.Th_Cve_Tipo_Habitacion = '?'" : "   HB.Hb_Cve_Habitacion = '?'", {clave}};
}

// Leaves one reservation out; "" none.
ado::TextoSQL SinFolio(const std::string& folio) {
  return folio.empty() ? ado::TextoSQL() : ado::TextoSQL("   RS.Rs_Folio <> '?' AND ", {folio});
}

// Rooms of a stay in progress never count as reserved.
const ado::TextoSQL& SinEstanciaEnCurso() {
  static const ado::TextoSQL condicion(
      " HB.Hb_Cve_Habitacion NOT IN (SELECT Hb_Cve_Habitacion FROM Check_In_Detalle "
      " INNER JOIN Check_In ON Check_In_Detalle.Ci_Folio = Check_In.Ci_Folio "
      "WHERE Es_Cve_Estado = 'AC') AND ");
  return condicion;
}

}  // namespace

void ArmaTotales(ado::TextoSQL& sql, ModoVista modo) {
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
  if (filtros.grupo) w.Agrega(" AND HB.Ghb_Cve_Grupo_Habitacion = '?' ", {*filtros.grupo});
  if (filtros.area) w.Agrega(" AND HB.Ah_Cve_Area_Habitacion = '?' ", {*filtros.area});
  if (filtros.tipo) w.Agrega(" AND HB.Th_Cve_Tipo_Habitacion = '?' ", {*filtros.tipo});
  return w;
}

void ArmaFilas(ado::TextoSQL& sql, ModoVista modo, const ado::TextoSQL& condicion) {
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
        " INNER JOIN Habitacion HB ON THb.Th_Cve_Tipo_Habitacion = HB.Th_Cve_Tipo_Habitacion "
        " INNER JOIN Producto PR ON THb.Pr_Cve_Producto = PR.Pr_Cve_Producto "
        " INNER JOIN Producto_Precio PRp ON PR.Pr_Cve_Producto = PRp.Pr_Cve_Producto "
        " WHERE ?",
        {condicion});
    return;
  }
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
      " INNER JOIN Tipo_Habitacion THb ON HB.Th_Cve_Tipo_Habitacion = THb.Th_Cve_Tipo_Habitacion "
      " INNER JOIN Producto PR ON THb.Pr_Cve_Producto = PR.Pr_Cve_Producto "
      " INNER JOIN Producto_Precio PRp ON PR.Pr_Cve_Producto = PRp.Pr_Cve_Producto "
      " WHERE ?",
      {condicion});
}

void ArmaReservaciones(ado::TextoSQL& sql, const Criterio& criterio, std::string_view clave, std::string_view noche) {
  sql.Agrega(
      "SELECT COUNT(RSd.Hb_Cve_Habitacion)AS Cantidad "
      "FROM Reservacion RS "
      "   INNER JOIN Reservacion_Detalle RSd ON RSd.Rs_Folio = RS.Rs_Folio "
      "   INNER JOIN Habitacion HB on RSd.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion "
      "   INNER JOIN Tipo_Habitacion THb ON HB.Th_Cve_Tipo_Habitacion = THb.Th_Cve_Tipo_Habitacion "
      "WHERE ? AND ?"
      "   (RS.Es_Cve_Estado NOT IN ('CA','CE')) AND ?AND ?"
      " '? 23:59' BETWEEN  RSd.Rsd_Fecha_Inicio  AND RSd.Rsd_Fecha_Fin ",
      {criterio.condicion, SinFolio(criterio.folioExcluido), DeLaFila(criterio.modo, clave), SinEstanciaEnCurso(),
       noche});
}

void ArmaEstancias(ado::TextoSQL& sql, const Criterio& criterio, std::string_view clave, std::string_view noche) {
  sql.Agrega(
      "SELECT COUNT(CId.Hb_Cve_Habitacion)AS Cantidad "
      "FROM Check_In CI "
      "   INNER JOIN Check_In_Detalle CId ON CId.Ci_Folio = CI.Ci_Folio "
      "   INNER JOIN Habitacion HB on CId.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion "
      "   INNER JOIN Tipo_Habitacion THb ON HB.Th_Cve_Tipo_Habitacion = THb.Th_Cve_Tipo_Habitacion "
      "WHERE ? AND CI.Es_Cve_Estado NOT IN ('CE','CA') AND ?AND "
      " '? 23:59' BETWEEN  CI.Ci_Llegada  AND CI.Ci_Salida ",
      {criterio.condicion, DeLaFila(criterio.modo, clave), noche});
}

void ArmaBloqueos(ado::TextoSQL& sql, const Criterio& criterio, std::string_view clave, std::string_view noche) {
  sql.Agrega(criterio.modo == ModoVista::PorTipo
                 ? "SELECT COUNT(HBb.Hb_Cve_Habitacion) AS Cantidad "
                   "FROM Habitacion_Bloqueo HBb "
                   "   INNER JOIN Habitacion HB on HBb.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion "
                   "WHERE HBb.Es_Cve_Estado = 'AC' AND "
                   "   HB.Th_Cve_Tipo_Habitacion = '?'AND "
                   " '?' BETWEEN  HBb.Hbb_Fecha_Inicio AND HBb.Hbb_Fecha_Fin "
                 : "SELECT COUNT(HBb.Hb_Cve_Habitacion) AS Cantidad "
                   "FROM Habitacion_Bloqueo HBb "
                   "   INNER JOIN Habitacion HB on HBb.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion "
                   "WHERE HBb.Es_Cve_Estado = 'AC' AND "
                   "   HB.Hb_Cve_Habitacion = '?' AND "
                   " '?' BETWEEN  HBb.Hbb_Fecha_Inicio AND HBb.Hbb_Fecha_Fin ",
             {clave, noche});
}

// The joins stand in the order from the few to the many, and CROSS JOIN keeps it where the engine has no statistics:
// rooms, then their lines from the first night on; stays from the first night on, then their rooms. A room's type is
// joined where the row is the type: every row by room has one.

void ArmaReservacionesDelRango(ado::TextoSQL& sql, const Criterio& criterio, std::string_view primera,
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
  // The lower bound of the state says nothing new; with it the index of folio and state serves, and no reservation is
  // read.
  sql.Agrega(
      "RSd.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion AND RS.Rs_Folio = RSd.Rs_Folio AND ? AND ?"
      " RS.Es_Cve_Estado NOT IN ('CA','CE') AND RS.Es_Cve_Estado >= '' AND ?"
      " RSd.Rsd_Fecha_Fin >= '? 23:59' AND RSd.Rsd_Fecha_Inicio <= '? 23:59' ",
      {criterio.condicion, SinFolio(criterio.folioExcluido), SinEstanciaEnCurso(), primera, ultima});
}

void ArmaEstanciasDelRango(ado::TextoSQL& sql, const Criterio& criterio, std::string_view primera,
                           std::string_view ultima) {
  sql.Agrega(criterio.modo == ModoVista::PorTipo
                 ? "SELECT THb.Th_Cve_Tipo_Habitacion AS CLAVE, CI.Ci_Llegada AS INICIO, CI.Ci_Salida AS FIN "
                   "FROM Check_In CI CROSS JOIN Check_In_Detalle CId CROSS JOIN Habitacion HB "
                   "CROSS JOIN Tipo_Habitacion THb "
                   "WHERE THb.Th_Cve_Tipo_Habitacion = HB.Th_Cve_Tipo_Habitacion AND "
                 : "SELECT HB.Hb_Cve_Habitacion AS CLAVE, CI.Ci_Llegada AS INICIO, CI.Ci_Salida AS FIN "
                   "FROM Check_In CI CROSS JOIN Check_In_Detalle CId CROSS JOIN Habitacion HB "
                   "WHERE ");
  sql.Agrega(
      "CId.Ci_Folio = CI.Ci_Folio AND HB.Hb_Cve_Habitacion = CId.Hb_Cve_Habitacion AND ?"
      " AND CI.Es_Cve_Estado NOT IN ('CE','CA')"
      " AND CI.Ci_Salida >= '? 23:59' AND CI.Ci_Llegada <= '? 23:59' ",
      {criterio.condicion, primera, ultima});
}

void ArmaBloqueosDelRango(ado::TextoSQL& sql, const Criterio& criterio, std::string_view primera,
                          std::string_view ultima) {
  sql.Agrega(criterio.modo == ModoVista::PorTipo
                 ? "SELECT THb.Th_Cve_Tipo_Habitacion AS CLAVE, HBb.Hbb_Fecha_Inicio AS INICIO, "
                   "HBb.Hbb_Fecha_Fin AS FIN "
                   "FROM Tipo_Habitacion THb CROSS JOIN Habitacion HB CROSS JOIN Habitacion_Bloqueo HBb "
                   "WHERE HB.Th_Cve_Tipo_Habitacion = THb.Th_Cve_Tipo_Habitacion AND "
                 : "SELECT HB.Hb_Cve_Habitacion AS CLAVE, HBb.Hbb_Fecha_Inicio AS INICIO, HBb.Hbb_Fecha_Fin AS FIN "
                   "FROM Habitacion HB CROSS JOIN Habitacion_Bloqueo HBb "
                   "WHERE ");
  sql.Agrega(
      "HBb.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion AND HBb.Es_Cve_Estado = 'AC'"
      " AND HBb.Hbb_Fecha_Fin >= '?' AND HBb.Hbb_Fecha_Inicio <= '?' ",
      {primera, ultima});
}

}  // namespace kv207::sentencias
