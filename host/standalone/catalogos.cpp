#include "host/standalone/catalogos.h"

#include <algorithm>

#include "host/contract/servicios.h"
#include "host/standalone/parametros.h"
#include "platform/com/variant.h"

namespace autonomo {

namespace pantalla = anfitrion::pantalla;
namespace parametro = anfitrion::parametro;

namespace {

using enum TipoCampo;
constexpr bool kLlave = true, kObligatorio = true;

struct Pantalla {
  std::string_view codigo;
  std::vector<std::string_view> tablas;
};
const std::vector<Pantalla>& Pantallas() {
  static const std::vector<Pantalla> pantallas{
      {pantalla::kClientes, {"Cliente"}},
      {pantalla::kFormasPago, {"Forma_Pago"}},
      {pantalla::kMonedas, {"Moneda", "Tipo_Cambio"}},
      {pantalla::kHabitaciones,
       {"Habitacion", "Habitacion_Bloqueo", "Tipo_Habitacion", "Grupo_Habitacion", "Area_Habitacion", "Producto",
        "Producto_Precio", "Tarifa", "Impuesto"}},
      {pantalla::kConfiguracion, {"Permiso", "Sucursal", "Plantilla", "Formato"}},
  };
  return pantallas;
}

}  // namespace

// clang-format off
const std::vector<Catalogo>& Catalogos() {
  static const std::vector<Catalogo> catalogos{
      {"Cliente", "Clientes",
       {{"Cl_Cve_Cliente", "Clave", Clave, kLlave, kObligatorio},
        {"Cl_Razon_Social_1", "Nombre", Texto, false, kObligatorio},
        {"Cl_Telefono", "Teléfono"},
        {"Cl_Correo", "Correo electrónico", Correo}},
       true, "", parametro::kFormatoCliente.clave},
      {"Forma_Pago", "Formas de pago",
       {{"Fp_Cve_Forma_Pago", "Clave", Clave, kLlave, kObligatorio},
        {"Fp_Descripcion", "Descripción", Texto, false, kObligatorio},
        {"Fp_Tipo", "Tipo", Clave, false, false, "", "04 pide los datos de la tarjeta"}},
       true, "", parametro::kFormatoFormaPago.clave},
      {"Moneda", "Monedas",
       {{"Mn_Cve_Moneda", "Clave", Clave, kLlave, kObligatorio},
        {"Mn_Descripcion", "Descripción", Texto, false, kObligatorio}},
       true},
      {"Tipo_Cambio", "Tipos de cambio",
       {{"Mn_Cve_Moneda", "Moneda", Referencia, kLlave, kObligatorio, "Moneda"},
        {"Tc_Fecha", "Desde", Fecha, kLlave, kObligatorio},
        {"Tc_Tasa", "Moneda local por unidad", Factor, false, kObligatorio}}},
      {"Habitacion", "Habitaciones",
       {{"Hb_Cve_Habitacion", "Clave", Clave, kLlave, kObligatorio},
        {"Hb_Descripcion", "Descripción", Texto, false, kObligatorio},
        {"Th_Cve_Tipo_Habitacion", "Tipo", Referencia, false, kObligatorio, "Tipo_Habitacion"},
        {"Ghb_Cve_Grupo_Habitacion", "Grupo", Referencia, false, kObligatorio, "Grupo_Habitacion"},
        {"Ah_Cve_Area_Habitacion", "Área", Referencia, false, kObligatorio, "Area_Habitacion"}},
       true, "", parametro::kFormatoHabitacion.clave},
      {"Habitacion_Bloqueo", "Bloqueos",
       {{"Hb_Cve_Habitacion", "Habitación", Referencia, kLlave, kObligatorio, "Habitacion"},
        {"Hbb_Fecha_Inicio", "Desde", Fecha, kLlave, kObligatorio, "", "primera noche"},
        {"Hbb_Fecha_Fin", "Hasta", Fecha, kLlave, kObligatorio, "", "última noche, incluida"}},
       true, "", "", "", "Esa habitación ya tiene ese bloqueo", true},
      {"Tipo_Habitacion", "Tipos de habitación",
       {{"Th_Cve_Tipo_Habitacion", "Clave", Clave, kLlave, kObligatorio},
        {"Th_Descripcion", "Descripción", Texto, false, kObligatorio},
        {"Th_Num_Personas", "Personas incluidas", Entero, false, kObligatorio},
        {"Th_Num_Personas_Maximo", "Máximo de personas", Entero, false, kObligatorio},
        {"Pr_Cve_Producto", "Producto", Referencia, false, kObligatorio, "Producto"}},
       true, "", parametro::kFormatoTipo.clave},
      {"Grupo_Habitacion", "Grupos",
       {{"Ghb_Cve_Grupo_Habitacion", "Clave", Clave, kLlave, kObligatorio},
        {"Ghb_Descripcion", "Descripción", Texto, false, kObligatorio}},
       true, "", parametro::kFormatoGrupo.clave},
      {"Area_Habitacion", "Áreas",
       {{"Ah_Cve_Area_Habitacion", "Clave", Clave, kLlave, kObligatorio},
        {"Ah_Descripcion", "Descripción", Texto, false, kObligatorio}},
       true, "", parametro::kFormatoArea.clave},
      {"Producto", "Productos",
       {{"Pr_Cve_Producto", "Clave", Clave, kLlave, kObligatorio},
        {"Pr_Descripcion", "Descripción", Texto, false, kObligatorio},
        {"Pr_Unidad_Venta", "Unidad de venta"}}},
      {"Producto_Precio", "Precios de lista",
       {{"Pr_Cve_Producto", "Producto", Referencia, kLlave, kObligatorio, "Producto"},
        {"Pp_Precio_1", "Precio por noche", Dinero, false, kObligatorio, "", "con impuestos; se usa donde no hay tarifa"}},
       false, "", "", "Pp_Precio_1", "Ese producto ya tiene precio de lista: edite su fila"},
      {"Tarifa", "Tarifas",
       {{"Tf_Id", "Número", Entero, kLlave},
        {"Th_Cve_Tipo_Habitacion", "Tipo", Referencia, false, kObligatorio, "Tipo_Habitacion"},
        {"Tf_Inicio", "Desde", Fecha, false, false, "", "vacía: desde siempre"},
        {"Tf_Fin", "Hasta", Fecha, false, false, "", "última noche; vacía: sin término"},
        {"Tf_Dias", "Días", Dias, false, false, "", "1 lunes a 7 domingo; vacío: todos"},
        {"Tf_Precio", "Precio por noche", Dinero, false, kObligatorio, "", "con impuestos"},
        {"Tf_Adulto_Extra", "Adulto extra", Dinero},
        {"Tf_Menor_Extra", "Menor extra", Dinero}},
       false, "Tf_Id"},
      {"Impuesto", "Impuestos",
       {{"Sc_Cve_Sucursal", "Sucursal", Referencia, kLlave, false, "Sucursal", "", "Todas las sucursales"},
        {"Pr_Cve_Producto", "Producto", Referencia, kLlave, kObligatorio, "Producto"},
        {"Im_Factor", "Por ciento", Fraccion, false, kObligatorio, "", "16 es 16 %"}}},
      {"Sucursal", "Sucursales",
       {{"Sc_Cve_Sucursal", "Clave", Clave, kLlave, kObligatorio, "", "0001 si HT_SUCURSAL_DEFAULT no dice otra"},
        {"Sc_Descripcion", "Descripción", Texto, false, kObligatorio}},
       true},
      {"Permiso", "Permisos",
       {{"Pe_Usuario", "Usuario", Clave, kLlave, kObligatorio},
        {"Pe_Pantalla", "Pantalla", Clave, kLlave, kObligatorio, "", anfitrion::kPantalla},
        {"Pe_Opcion", "Opción", Clave, kLlave, kObligatorio, "", "CHFECHA, CHPR02, CHDS02, CHTC01, CHCONF o CHTARJ"}}},
      {"Plantilla", "Plantillas de correo",
       {{"Pt_Cve_Plantilla", "Clave", Clave, kLlave, kObligatorio},
        {"Pt_Asunto", "Asunto", Texto, false, kObligatorio},
        {"Pt_Cuerpo", "Cuerpo", Nota},
        {"Pt_Formato", "Formato adjunto", Texto, false, false, "",
         "Formato de impresión que va con el correo como PDF (HT0001 es la confirmación); vacío, ninguno"}}},
      {"Formato", "Formatos de impresión",
       {{"Fm_Cve_Formato", "Clave", Clave, kLlave, kObligatorio, "", "HT0001.HTML es la confirmación"},
        {"Fm_Descripcion", "Descripción"},
        {"Fm_Contenido", "Contenido", Nota}}},
  };
  return catalogos;
}
// clang-format on

std::vector<const Catalogo*> CatalogosDe(std::string_view codigo) {
  std::vector<const Catalogo*> catalogos;
  for (const Pantalla& p : Pantallas()) {
    if (!com::IgualSinCaja(p.codigo, codigo)) continue;
    for (const std::string_view tabla : p.tablas) catalogos.push_back(BuscaCatalogo(tabla));
  }
  return catalogos;
}

std::string_view PantallaDe(std::string_view tabla) {
  for (const Pantalla& p : Pantallas()) {
    if (std::ranges::find(p.tablas, tabla) != p.tablas.end()) return p.codigo;
  }
  return pantalla::kConfiguracion;
}

const Catalogo* BuscaCatalogo(std::string_view tabla) {
  const auto& todos = Catalogos();
  const auto c = std::find_if(todos.begin(), todos.end(), [&](const Catalogo& k) { return k.tabla == tabla; });
  return c == todos.end() ? nullptr : &*c;
}

}  // namespace autonomo
