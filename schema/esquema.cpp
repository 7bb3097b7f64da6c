#include "schema/esquema.h"

#include <algorithm>
#include <unordered_map>

namespace esquema {
namespace {

using enum Tipo;

// Column names are ASCII; this is the engines' own rule for them.
char Pliega(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool MismoNombre(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, [](char x, char y) { return Pliega(x) == Pliega(y); });
}

std::string Plegado(std::string_view nombre) {
  std::string s(nombre);
  std::ranges::transform(s, s.begin(), Pliega);
  return s;
}

// --- tables of the screens

std::vector<Tabla> TablasDePantalla() {
  return {
      {"Reservacion",
       {{"Rs_Folio", Clave},
        {"Rs_Fecha", Fecha},
        {"Rs_Llegada", Fecha},
        {"Rs_Salida", Fecha},
        {"Sc_Cve_Sucursal", Clave},
        {"Cl_Cve_Cliente", Clave},
        {"Rs_Huesped", Clave},
        {"Mn_Cve_Moneda", Clave},
        {"Rs_Tipo_Cambio", Factor},
        {"Fp_Cve_Forma_Pago", Clave},
        {"Rs_Referencia", Texto},
        {"Rs_Comentario", Texto},
        {"Rs_Notas", Nota},
        {"Es_Cve_Estado", Clave},
        {"Oper_Ult_Modif", Clave},
        {"Fecha_Ult_Modif", FechaHora},
        {"Oper_Baja", Clave},
        {"Fecha_Baja", FechaHora}},
       {"Rs_Folio"},
       // Whether a folio is alive is asked for each room line; who is in the house from a day on; what has changed.
       {{"Rs_Folio", "Es_Cve_Estado"}, {"Rs_Salida", "Rs_Llegada"}, {"Fecha_Ult_Modif"}}},
      {"Reservacion_Detalle",
       {{"Rs_Folio", Clave},
        {"Rsd_Id", Entero},
        {"Hb_Cve_Habitacion", Clave},
        {"Rsd_Fecha_Inicio", Fecha},
        {"Rsd_Fecha_Fin", Fecha},
        {"Rsd_Cantidad", Numero},
        {"Rsd_Adultos", Entero},
        {"Rsd_Menores", Entero},
        {"Rsd_Infantes", Entero},
        {"Rsd_Cantidad_Personas_Extra", Entero},
        {"Rsd_Precio", Dinero},
        {"Rsd_Precio_Personas_Extra", Dinero},
        {"Rsd_Precio_Lista", Dinero},
        {"Rsd_Precio_Lista_Importe", Dinero},
        {"Rsd_Descuento_Factor", Factor},
        {"Rsd_Descuento_Importe", Dinero},
        {"Rsd_Precio_Descontado", Dinero},
        {"Rsd_Precio_Descontado_Importe", Dinero},
        {"Rsd_Impuesto_Factor", Factor},
        {"Rsd_Impuesto_Importe", Dinero},
        {"Rsd_Precio_Neto", Dinero},
        {"Rsd_Precio_Neto_Importe", Dinero}},
       // No unique key: lines may be inserted without a number.
       {},
       {{"Rs_Folio", "Rsd_Id"}, {"Hb_Cve_Habitacion", "Rsd_Fecha_Fin", "Rsd_Fecha_Inicio", "Rs_Folio"}}},
      {"Reservacion_Datos_Tarjeta",
       {{"Rs_Folio", Clave},
        {"Rdt_Banco", Texto},
        {"Rdt_Numero", Texto},
        {"Rdt_Codigo_Seguridad", Texto},
        {"Rdt_Vencimiento", Fecha}},
       {"Rs_Folio"},
       {}},
      {"Cliente",
       {{"Cl_Cve_Cliente", Clave},
        {"Cl_Razon_Social_1", Texto},
        {"Es_Cve_Estado", Clave},
        {"Cl_Tarjeta_Credito", Texto},
        {"Cl_Tarjeta_Banco", Texto},
        {"Cl_Tarjeta_Numero", Texto},
        {"Cl_Tarjeta_Codigo_Seguridad", Texto},
        {"Cl_Tarjeta_Vencimiento", Fecha},
        {"Cl_Correo", Texto},
        {"Cl_Telefono", Texto}},
       {"Cl_Cve_Cliente"},
       {{"Cl_Razon_Social_1"}}},
      {"Forma_Pago",
       {{"Fp_Cve_Forma_Pago", Clave}, {"Fp_Descripcion", Texto}, {"Fp_Tipo", Clave}, {"Es_Cve_Estado", Clave}},
       {"Fp_Cve_Forma_Pago"},
       {}},
      {"Moneda",
       {{"Mn_Cve_Moneda", Clave}, {"Mn_Descripcion", Texto}, {"Es_Cve_Estado", Clave}},
       {"Mn_Cve_Moneda"},
       {}},
      {"Habitacion",
       {{"Hb_Cve_Habitacion", Clave},
        {"Hb_Descripcion", Texto},
        {"Th_Cve_Tipo_Habitacion", Clave},
        {"Ghb_Cve_Grupo_Habitacion", Clave},
        {"Ah_Cve_Area_Habitacion", Clave},
        {"Es_Cve_Estado", Clave}},
       {"Hb_Cve_Habitacion"},
       {{"Th_Cve_Tipo_Habitacion", "Hb_Cve_Habitacion"}}},
      {"Tipo_Habitacion",
       {{"Th_Cve_Tipo_Habitacion", Clave},
        {"Th_Descripcion", Texto},
        {"Th_Num_Personas", Entero},
        {"Th_Num_Personas_Maximo", Entero},
        {"Pr_Cve_Producto", Clave},
        {"Es_Cve_Estado", Clave}},
       {"Th_Cve_Tipo_Habitacion"},
       {}},
      {"Grupo_Habitacion",
       {{"Ghb_Cve_Grupo_Habitacion", Clave}, {"Ghb_Descripcion", Texto}, {"Es_Cve_Estado", Clave}},
       {"Ghb_Cve_Grupo_Habitacion"},
       {}},
      {"Area_Habitacion",
       {{"Ah_Cve_Area_Habitacion", Clave}, {"Ah_Descripcion", Texto}, {"Es_Cve_Estado", Clave}},
       {"Ah_Cve_Area_Habitacion"},
       {}},
      {"Producto",
       {{"Pr_Cve_Producto", Clave},
        {"Pr_Descripcion", Texto},
        {"Pr_Unidad_Venta", Texto},
        {"Pr_Unidad_Control_1", Texto},
        {"Pr_Unidad_Control_2", Texto},
        {"Pr_Unidad_Costo", Texto}},
       {"Pr_Cve_Producto"},
       {}},
      // A product may have several price rows.
      {"Producto_Precio", {{"Pr_Cve_Producto", Clave}, {"Pp_Precio_1", Dinero}}, {}, {{"Pr_Cve_Producto"}}},
      {"Habitacion_Bloqueo",
       {{"Hb_Cve_Habitacion", Clave}, {"Hbb_Fecha_Inicio", Fecha}, {"Hbb_Fecha_Fin", Fecha}, {"Es_Cve_Estado", Clave}},
       {},
       {{"Hb_Cve_Habitacion", "Hbb_Fecha_Fin", "Hbb_Fecha_Inicio", "Es_Cve_Estado"}}},
      {"Check_In",
       {{"Ci_Folio", Clave}, {"Ci_Llegada", FechaHora}, {"Ci_Salida", FechaHora}, {"Es_Cve_Estado", Clave}},
       {"Ci_Folio"},
       // The second: stays of a range of nights, past most of the history. The third: whether one of a room's stays, by
       // folio, covers a night.
       {{"Es_Cve_Estado", "Ci_Folio"},
        {"Ci_Salida", "Ci_Llegada", "Es_Cve_Estado", "Ci_Folio"},
        {"Ci_Folio", "Ci_Salida", "Ci_Llegada", "Es_Cve_Estado"}}},
      {"Check_In_Detalle",
       {{"Ci_Folio", Clave}, {"Hb_Cve_Habitacion", Clave}},
       {},
       {{"Ci_Folio", "Hb_Cve_Habitacion"}, {"Hb_Cve_Habitacion", "Ci_Folio"}}},
  };
}

// --- tables of the stand-alone host

std::vector<Tabla> TablasDelAnfitrion() {
  return {
      {"Sucursal",
       {{"Sc_Cve_Sucursal", Clave}, {"Sc_Descripcion", Texto}, {"Es_Cve_Estado", Clave}},
       {"Sc_Cve_Sucursal"},
       {}},
      {"Parametro", {{"Pm_Clave", Clave}, {"Pm_Valor", Texto}}, {"Pm_Clave"}, {}},
      {"Permiso",
       {{"Pe_Usuario", Clave}, {"Pe_Pantalla", Clave}, {"Pe_Opcion", Clave}},
       {"Pe_Usuario", "Pe_Pantalla", "Pe_Opcion"},
       {}},
      {"Tipo_Cambio",
       {{"Mn_Cve_Moneda", Clave}, {"Tc_Fecha", Fecha}, {"Tc_Tasa", Factor}},
       {"Mn_Cve_Moneda", "Tc_Fecha"},
       {}},
      {"Impuesto",
       {{"Sc_Cve_Sucursal", Clave}, {"Pr_Cve_Producto", Clave}, {"Im_Factor", Factor}},
       {"Sc_Cve_Sucursal", "Pr_Cve_Producto"},
       {}},
      // Tf_Dias: digits of the weekdays, 1 Monday to 7 Sunday; empty means all.
      {"Tarifa",
       {{"Tf_Id", Entero},
        {"Th_Cve_Tipo_Habitacion", Clave},
        {"Tf_Inicio", Fecha},
        {"Tf_Fin", Fecha},
        {"Tf_Dias", Texto},
        {"Tf_Precio", Dinero},
        {"Tf_Adulto_Extra", Dinero},
        {"Tf_Menor_Extra", Dinero}},
       {"Tf_Id"},
       {{"Th_Cve_Tipo_Habitacion"}}},
      // Pt_Formato: print format that is attached to the mail as a PDF; empty none.
      {"Plantilla",
       {{"Pt_Cve_Plantilla", Clave}, {"Pt_Asunto", Texto}, {"Pt_Cuerpo", Nota}, {"Pt_Formato", Clave}},
       {"Pt_Cve_Plantilla"},
       {}},
      {"Formato",
       {{"Fm_Cve_Formato", Clave}, {"Fm_Descripcion", Texto}, {"Fm_Contenido", Nota}},
       {"Fm_Cve_Formato"},
       {}},
      // States: host/standalone/bandeja.h. Cs_Adjunto: the attached letter as HTML. Cs_Proximo: next try of a mail that
      // waits; of one that is being sent, when its sender has died.
      {"Correo_Salida",
       {{"Cs_Id", Entero},
        {"Cs_Clave", Clave},
        {"Cs_Plantilla", Clave},
        {"Cs_Consulta", Nota},
        {"Cs_Para", Texto},
        {"Cs_Asunto", Texto},
        {"Cs_Cuerpo", Nota},
        {"Cs_Estado", Texto},
        {"Cs_Fecha", FechaHora},
        {"Cs_Usuario", Clave},
        {"Cs_Adjunto", Nota},
        {"Cs_Intentos", Entero},
        {"Cs_Proximo", FechaHora},
        {"Cs_Tomado_Por", Texto},
        {"Cs_Error", Nota},
        {"Cs_Enviado", FechaHora}},
       {"Cs_Id"},
       {{"Cs_Estado"}}},
      {"Bitacora",
       {{"Bt_Id", Entero},
        {"Bt_Modulo", Clave},
        {"Bt_Clave", Clave},
        {"Bt_Texto", Nota},
        {"Bt_Usuario", Clave},
        {"Bt_Fecha", FechaHora}},
       {"Bt_Id"},
       {{"Bt_Clave"}}},
      {"Impreso",
       {{"Ip_Id", Entero}, {"Ip_Formato", Clave}, {"Ip_Clave", Clave}, {"Ip_Texto", Nota}, {"Ip_Fecha", FechaHora}},
       {"Ip_Id"},
       {}},
      {"Folio_Consecutivo", {{"Fc_Serie", Clave}, {"Fc_Ultimo", Entero}}, {"Fc_Serie"}, {}},
      // Us_Contrasena: argon2id text, "" for one who may not enter; Us_Espera: no try before, by the clock of
      // autonomo::Accede.
      {"Usuario",
       {{"Us_Cve_Usuario", Clave},
        {"Us_Nombre", Texto},
        {"Us_Contrasena", Texto},
        {"Us_Fallas", Entero},
        {"Us_Espera", FechaHora},
        {"Es_Cve_Estado", Clave}},
       {"Us_Cve_Usuario"},
       {}},
      // How often a reservation has changed, its rooms and card included; the guards count. It outlives its
      // reservation, so that a folio that comes again does not pass for what was there before.
      {"Reservacion_Version", {{"Rs_Folio", Clave}, {"Rv_Version", Entero}}, {"Rs_Folio"}, {}},
  };
}

}  // namespace

const std::vector<Tabla>& Tablas() {
  static const std::vector<Tabla> tablas = [] {
    auto todas = TablasDePantalla();
    std::ranges::move(TablasDelAnfitrion(), std::back_inserter(todas));
    return todas;
  }();
  return tablas;
}

const std::vector<Referencia>& Referencias() {
  static const std::vector<Referencia> referencias{
      {"Reservacion", "Cl_Cve_Cliente", "Cliente", "Cl_Cve_Cliente"},
      {"Reservacion", "Rs_Huesped", "Cliente", "Cl_Cve_Cliente"},
      {"Reservacion", "Mn_Cve_Moneda", "Moneda", "Mn_Cve_Moneda"},
      {"Reservacion", "Fp_Cve_Forma_Pago", "Forma_Pago", "Fp_Cve_Forma_Pago"},
      {"Reservacion", "Sc_Cve_Sucursal", "Sucursal", "Sc_Cve_Sucursal"},
      {"Reservacion_Detalle", "Rs_Folio", "Reservacion", "Rs_Folio"},
      {"Reservacion_Detalle", "Hb_Cve_Habitacion", "Habitacion", "Hb_Cve_Habitacion"},
      {"Reservacion_Datos_Tarjeta", "Rs_Folio", "Reservacion", "Rs_Folio"},
      {"Habitacion", "Th_Cve_Tipo_Habitacion", "Tipo_Habitacion", "Th_Cve_Tipo_Habitacion"},
      {"Habitacion", "Ghb_Cve_Grupo_Habitacion", "Grupo_Habitacion", "Ghb_Cve_Grupo_Habitacion"},
      {"Habitacion", "Ah_Cve_Area_Habitacion", "Area_Habitacion", "Ah_Cve_Area_Habitacion"},
      {"Habitacion_Bloqueo", "Hb_Cve_Habitacion", "Habitacion", "Hb_Cve_Habitacion"},
      {"Tipo_Habitacion", "Pr_Cve_Producto", "Producto", "Pr_Cve_Producto"},
      {"Producto_Precio", "Pr_Cve_Producto", "Producto", "Pr_Cve_Producto"},
      {"Check_In_Detalle", "Ci_Folio", "Check_In", "Ci_Folio"},
      {"Check_In_Detalle", "Hb_Cve_Habitacion", "Habitacion", "Hb_Cve_Habitacion"},
      {"Tarifa", "Th_Cve_Tipo_Habitacion", "Tipo_Habitacion", "Th_Cve_Tipo_Habitacion"},
      {"Tipo_Cambio", "Mn_Cve_Moneda", "Moneda", "Mn_Cve_Moneda"},
      {"Impuesto", "Sc_Cve_Sucursal", "Sucursal", "Sc_Cve_Sucursal"},
      {"Impuesto", "Pr_Cve_Producto", "Producto", "Pr_Cve_Producto"},
  };
  return referencias;
}

const Tabla* BuscaTabla(std::string_view nombre) {
  const auto it = std::ranges::find_if(Tablas(), [&](const Tabla& t) { return MismoNombre(t.nombre, nombre); });
  return it == Tablas().end() ? nullptr : &*it;
}

const Columna* BuscaColumna(std::string_view nombre) {
  static const auto columnas = [] {
    std::unordered_map<std::string, const Columna*> m;
    for (const auto& t : Tablas())
      for (const auto& c : t.columnas) m.emplace(Plegado(c.nombre), &c);
    return m;
  }();
  const auto it = columnas.find(Plegado(nombre));
  return it == columnas.end() ? nullptr : it->second;
}

}  // namespace esquema
