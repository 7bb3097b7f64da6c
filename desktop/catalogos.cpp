#include "desktop/catalogos.h"

#include <algorithm>

#include "host/standalone/correo.h"
#include "host/standalone/parametros.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"
#include "schema/esquema.h"

namespace vista {

namespace {

using enum TipoCampo;
constexpr bool kLlave = true, kObligatorio = true;

// clang-format off
const std::vector<Catalogo>& Todos() {
  static const std::vector<Catalogo> catalogos{
      {"Cliente", "Clientes",
       {{"Cl_Cve_Cliente", "Clave", Clave, kLlave, kObligatorio},
        {"Cl_Razon_Social_1", "Nombre", Texto, false, kObligatorio},
        {"Cl_Telefono", "Teléfono"},
        {"Cl_Correo", "Correo electrónico", Correo}},
       true, "", "FTO_CLIENTE"},
      {"Forma_Pago", "Formas de pago",
       {{"Fp_Cve_Forma_Pago", "Clave", Clave, kLlave, kObligatorio},
        {"Fp_Descripcion", "Descripción", Texto, false, kObligatorio},
        {"Fp_Tipo", "Tipo", Clave, false, false, "", "04 pide los datos de la tarjeta"}},
       true, "", "FTO_FORMA_PAGO"},
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
       true, "", "FTO_HABITACION"},
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
       true, "", "FTO_TIPO_HABITACION"},
      {"Grupo_Habitacion", "Grupos",
       {{"Ghb_Cve_Grupo_Habitacion", "Clave", Clave, kLlave, kObligatorio},
        {"Ghb_Descripcion", "Descripción", Texto, false, kObligatorio}},
       true, "", "FTO_GRUPO_HABITACION"},
      {"Area_Habitacion", "Áreas",
       {{"Ah_Cve_Area_Habitacion", "Clave", Clave, kLlave, kObligatorio},
        {"Ah_Descripcion", "Descripción", Texto, false, kObligatorio}},
       true, "", "FTO_AREA"},
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
        {"Pe_Pantalla", "Pantalla", Clave, kLlave, kObligatorio, "", "KV207"},
        {"Pe_Opcion", "Opción", Clave, kLlave, kObligatorio, "", "CHFECHA, CHPR02, CHDS02, CHTC01 o CHCONF"}}},
      {"Plantilla", "Plantillas de correo",
       {{"Pt_Cve_Plantilla", "Clave", Clave, kLlave, kObligatorio},
        {"Pt_Asunto", "Asunto", Texto, false, kObligatorio},
        {"Pt_Cuerpo", "Cuerpo", Nota}}},
      {"Formato", "Formatos de impresión",
       {{"Fm_Cve_Formato", "Clave", Clave, kLlave, kObligatorio, "", "HT0001.HTML es la confirmación"},
        {"Fm_Descripcion", "Descripción"},
        {"Fm_Contenido", "Contenido", Nota}}},
  };
  return catalogos;
}
// clang-format on

struct Pantalla {
  std::string_view codigo;
  std::vector<std::string_view> tablas;
};
const std::vector<Pantalla>& Pantallas() {
  static const std::vector<Pantalla> pantallas{
      {"CA014", {"Cliente"}},
      {"CA016", {"Forma_Pago"}},
      {"CA039", {"Moneda", "Tipo_Cambio"}},
      {"CA153",
       {"Habitacion", "Habitacion_Bloqueo", "Tipo_Habitacion", "Grupo_Habitacion", "Area_Habitacion", "Producto",
        "Producto_Precio", "Tarifa", "Impuesto"}},
      {"CONFIG", {"Permiso", "Sucursal", "Plantilla", "Formato"}},
  };
  return pantallas;
}

std::string Lista(const Catalogo& c, std::string_view separador, const char* sufijo) {
  std::string lista;
  for (const CampoCatalogo& campo : c.campos) {
    if (!lista.empty()) lista += separador;
    lista += std::string(campo.columna) + sufijo;
  }
  return lista;
}

// Condition that finds a row, and the values in it: the key, and with `entera` what tells rows of one key apart.
std::string Condicion(const Catalogo& c, const std::vector<com::Variant>& fila, bool entera,
                      autonomo::Conexion::Parametros& valores) {
  std::string condicion;
  for (std::size_t i = 0; i < c.campos.size(); ++i) {
    if (!c.campos[i].llave && !(entera && c.campos[i].columna == c.distingue)) continue;
    condicion += (condicion.empty() ? "" : " AND ") + std::string(c.campos[i].columna);
    condicion += fila[i].EsNulo() ? " IS NULL" : " = ?";
    if (!fila[i].EsNulo()) valores.push_back(fila[i]);
  }
  return condicion;
}

bool Existe(autonomo::Conexion& conexion, const Catalogo& c, const std::vector<com::Variant>& valores, bool entera) {
  autonomo::Conexion::Parametros llave;
  const std::string condicion = Condicion(c, valores, entera, llave);
  const std::string sentencia =
      "SELECT " + std::string(c.campos.front().columna) + " FROM " + std::string(c.tabla) + " WHERE " + condicion;
  return !conexion.Consulta(sentencia, llave)->Eof();
}

// Why a text does not fit in its column; "" it does.
std::string RevisaTexto(const CampoCatalogo& campo, const std::string& texto) {
  const std::string titulo(campo.titulo);
  const esquema::Columna* columna = esquema::BuscaColumna(campo.columna);
  if (columna == nullptr || columna->tipo == esquema::Tipo::Nota) return {};
  const bool clave = columna->tipo == esquema::Tipo::Clave;
  const std::size_t admite = clave ? esquema::kLargoClave : esquema::kLargoTexto;
  const std::size_t letras = com::LargoUtf8(texto);
  if (letras > admite) {
    return "«" + titulo + "» admite " + std::to_string(admite) + " caracteres y lleva " + std::to_string(letras);
  }
  // The screens look keys up between apostrophes, and % stands for all of them.
  if (clave && campo.tipo == Clave && texto.find_first_of("'%") != std::string::npos)
    return "«" + titulo + "» no admite apóstrofos ni el signo %";
  return {};
}

// Why a number cannot stand in its column; "" it can.
std::string RevisaNumero(const CampoCatalogo& campo, double numero, double escrito) {
  constexpr double kMaximo = 999'999'999;
  const std::string titulo = "«" + std::string(campo.titulo) + "»";
  if (numero < 0) return titulo + " no puede ser negativo";
  if (numero > kMaximo) return titulo + " es demasiado grande: el máximo es 999,999,999";
  if (numero != escrito) return titulo + " lleva un número entero";
  if (campo.tipo == Factor && numero == 0) return titulo + " debe ser mayor que cero";
  if (campo.tipo == Fraccion && numero >= 1) return titulo + " debe ser menor que 100";
  return {};
}

// "16" or "16 %" as 0.16. Below 1 it must say so: who writes 0.16 means 16 %.
std::string LeePorCiento(const std::string& titulo, std::string texto, com::Variant& valor) {
  const bool conSigno = texto.ends_with('%');
  if (conSigno) texto = com::Recorta(std::string_view(texto).substr(0, texto.size() - 1));
  const double porciento = com::CDbl(texto);
  if (!conSigno && porciento > 0 && porciento < 1)
    return "«" + titulo + "» va en por ciento: 16 es 16 %; si es menor que uno, escríbalo con el signo: " + texto +
           " %";
  valor = porciento / 100;
  return {};
}

// Reads one typed text; a reason when it cannot be.
std::string Lee(const CampoCatalogo& campo, const std::string& texto, com::Variant& valor) {
  const std::string titulo(campo.titulo);
  if (texto.empty()) {
    if (campo.obligatorio) return "Falta «" + titulo + "»";
    valor = campo.tipo == Fecha ? com::Variant::Null() : EsNumero(campo) ? com::Variant(0) : com::Variant("");
    return {};
  }
  try {
    switch (campo.tipo) {
      case Entero:
        valor = com::CLng(texto);
        break;
      case Dinero:
      case Factor:
        valor = com::CDbl(texto);
        break;
      case Fraccion:
        if (std::string motivo = LeePorCiento(titulo, texto, valor); !motivo.empty()) return motivo;
        break;
      case Fecha:
        valor = com::SoloFecha(com::CDate(texto));
        break;
      case Correo:
        if (!autonomo::DireccionValida(texto))
          return "«" + titulo + "» no es una dirección de correo, como ana@hotel.com: " + texto;
        valor = texto;
        return RevisaTexto(campo, texto);
      case Dias:
        if (texto.find_first_not_of("1234567") != std::string::npos)
          return "«" + titulo + "» lleva cifras: 1 lunes a 7 domingo";
        [[fallthrough]];
      default:
        valor = texto;
        return RevisaTexto(campo, texto);
    }
  } catch (const com::Error&) {
    return "«" + titulo + "» no admite «" + texto + "»";
  }
  if (campo.tipo == Fecha) return {};
  return RevisaNumero(campo, com::CDbl(valor), campo.tipo == Entero ? com::CDbl(texto) : com::CDbl(valor));
}

// A room type includes somebody, and not more than it admits.
std::string RevisaPersonas(const Catalogo& c, const std::vector<com::Variant>& valores) {
  const auto valorDe = [&](std::string_view columna) {
    const auto campo =
        std::find_if(c.campos.begin(), c.campos.end(), [&](const CampoCatalogo& k) { return k.columna == columna; });
    return com::CLng(valores[static_cast<std::size_t>(campo - c.campos.begin())]);
  };
  if (c.tabla != "Tipo_Habitacion") return {};
  const std::int32_t incluidas = valorDe("Th_Num_Personas"), maximo = valorDe("Th_Num_Personas_Maximo");
  if (maximo < 1) return "«Máximo de personas» debe ser al menos 1";
  if (incluidas > maximo) return "«Personas incluidas» es mayor que «Máximo de personas»";
  return {};
}

// Where a row has two dates, they are the first and the last day.
std::string RevisaFechas(const Catalogo& c, const std::vector<com::Variant>& valores) {
  const CampoCatalogo* desde = nullptr;
  com::Variant primera;
  for (std::size_t i = 0; i < c.campos.size(); ++i) {
    if (c.campos[i].tipo != Fecha || valores[i].EsNulo()) continue;
    if (desde != nullptr && com::CDate(valores[i]) < com::CDate(primera))
      return "«" + std::string(desde->titulo) + "» es posterior a «" + std::string(c.campos[i].titulo) + "»";
    desde = &c.campos[i];
    primera = valores[i];
  }
  return {};
}

// Title of the first catalogue with a row that names this one; "" none.
std::string UsadaEn(autonomo::Conexion& conexion, const Catalogo& c, const FilaCatalogo& fila) {
  for (const Catalogo& otro : Todos()) {
    for (const CampoCatalogo& campo : otro.campos) {
      if (campo.referencia != c.tabla) continue;
      const std::string columna(campo.columna);
      const std::string sentencia =
          "SELECT " + columna + " FROM " + std::string(otro.tabla) + " WHERE " + columna + " = ?";
      if (!conexion.Consulta(sentencia, {fila.valores.front()})->Eof()) return std::string(otro.titulo);
    }
  }
  return {};
}

// Products of the room types that are offered and branches where none of them pays a tax, not even one of 0.
std::string SinImpuesto(autonomo::Conexion& conexion) {
  const auto rs = conexion.Consulta(
      "SELECT DISTINCT T.Pr_Cve_Producto, S.Sc_Cve_Sucursal, S.Sc_Descripcion FROM Tipo_Habitacion T, Sucursal S "
      "WHERE T.Es_Cve_Estado <> 'BA' AND S.Es_Cve_Estado <> 'BA' AND NOT EXISTS (SELECT I.Pr_Cve_Producto FROM "
      "Impuesto I WHERE I.Pr_Cve_Producto = T.Pr_Cve_Producto AND (I.Sc_Cve_Sucursal = S.Sc_Cve_Sucursal OR "
      "I.Sc_Cve_Sucursal = '')) ORDER BY T.Pr_Cve_Producto, S.Sc_Cve_Sucursal");
  std::string texto;
  for (; !rs->Eof(); rs->MoveNext()) {
    texto += "\r\n" + com::CStr(rs->Fields(0).Value()) + " en " + com::CStr(rs->Fields(1).Value()) + " " +
             com::CStr(rs->Fields(2).Value());
  }
  return texto.empty() ? texto : "Sin renglón en «Impuestos» se venden sin impuesto:" + texto;
}

// Live reservations of the room on the nights of a block, the first and the last included.
std::string ReservadasEn(autonomo::Conexion& conexion, const std::vector<com::Variant>& bloqueo) {
  const auto rs = conexion.Consulta(
      "SELECT R.Rs_Folio, D.Rsd_Fecha_Inicio, D.Rsd_Fecha_Fin FROM Reservacion_Detalle D INNER JOIN Reservacion R "
      "ON R.Rs_Folio = D.Rs_Folio WHERE D.Hb_Cve_Habitacion = ? AND R.Es_Cve_Estado <> 'CA' AND "
      "R.Es_Cve_Estado <> 'CE' AND D.Rsd_Fecha_Fin > ? AND D.Rsd_Fecha_Inicio <= ? ORDER BY D.Rsd_Fecha_Inicio",
      {bloqueo[0], bloqueo[1], bloqueo[2]});
  std::string texto;
  for (; !rs->Eof(); rs->MoveNext()) {
    texto += "\r\nFolio " + com::CStr(rs->Fields(0).Value()) + ", del " +
             regional::FechaCorta(com::CDate(rs->Fields(1).Value())) + " al " +
             regional::FechaCorta(com::CDate(rs->Fields(2).Value()));
  }
  return texto.empty() ? texto : "El bloqueo quedó guardado, pero cae sobre reservaciones vivas:" + texto;
}

}  // namespace

std::string Advertencia(autonomo::Conexion& conexion, const Catalogo& c, const std::vector<com::Variant>& valores) {
  if (c.tabla == "Habitacion_Bloqueo") return ReservadasEn(conexion, valores);
  const bool vende = c.tabla == "Tipo_Habitacion" || c.tabla == "Sucursal" || c.tabla == "Impuesto";
  return vende ? SinImpuesto(conexion) : std::string();
}

std::vector<const Catalogo*> CatalogosDe(std::string_view codigo) {
  std::vector<const Catalogo*> catalogos;
  for (const Pantalla& p : Pantallas()) {
    if (!com::IgualSinCaja(p.codigo, codigo)) continue;
    for (const std::string_view tabla : p.tablas) catalogos.push_back(BuscaCatalogo(tabla));
  }
  return catalogos;
}

const Catalogo* BuscaCatalogo(std::string_view tabla) {
  const auto& todos = Todos();
  const auto c = std::find_if(todos.begin(), todos.end(), [&](const Catalogo& k) { return k.tabla == tabla; });
  return c == todos.end() ? nullptr : &*c;
}

std::vector<FilaCatalogo> LeeCatalogo(autonomo::Conexion& conexion, const Catalogo& c) {
  const std::string sentencia = "SELECT " + Lista(c, ", ", "") + (c.conEstado ? ", Es_Cve_Estado" : "") + " FROM " +
                                std::string(c.tabla) + " ORDER BY " + std::string(c.campos.front().columna);
  std::vector<FilaCatalogo> filas;
  const auto rs = conexion.Consulta(sentencia);
  for (; !rs->Eof(); rs->MoveNext()) {
    FilaCatalogo fila;
    for (std::size_t i = 0; i < c.campos.size(); ++i) fila.valores.push_back(rs->Fields(i).Value());
    if (c.conEstado) {
      const com::Variant& estado = rs->Fields(c.campos.size()).Value();
      const std::string codigo = com::RecortaDerecha(com::TextoDe(estado));
      fila.deBaja =
          c.todoEsLlave ? !com::IgualSinCaja(codigo, esquema::kActiva) : com::IgualSinCaja(codigo, esquema::kBaja);
    }
    filas.push_back(std::move(fila));
  }
  return filas;
}

std::vector<std::pair<std::string, std::string>> LeeReferencia(autonomo::Conexion& conexion, std::string_view tabla) {
  std::vector<std::pair<std::string, std::string>> filas;
  const Catalogo* c = BuscaCatalogo(tabla);
  if (c == nullptr) return filas;
  for (const FilaCatalogo& fila : LeeCatalogo(conexion, *c)) {
    if (!fila.deBaja)
      filas.emplace_back(TextoDe(c->campos[0], fila.valores[0]), TextoDe(c->campos[1], fila.valores[1]));
  }
  return filas;
}

std::string Valida(const Catalogo& c, const std::vector<std::string>& textos, std::string_view mascara,
                   std::vector<com::Variant>& valores) {
  valores.clear();
  for (std::size_t i = 0; i < c.campos.size(); ++i) {
    const CampoCatalogo& campo = c.campos[i];
    std::string texto = campo.tipo == Nota ? textos[i] : com::Recorta(textos[i]);
    if (campo.tipo == Clave) texto = com::Mayusculas(texto);
    if (campo.tipo == Clave && campo.llave && i == 0) texto = regional::ConMascara(texto, mascara);
    com::Variant valor;
    std::string motivo = Lee(campo, texto, valor);
    if (!motivo.empty()) return motivo;
    valores.push_back(std::move(valor));
  }
  const std::string motivo = RevisaPersonas(c, valores);
  return motivo.empty() ? RevisaFechas(c, valores) : motivo;
}

std::string MascaraDe(autonomo::Conexion& conexion, const Catalogo& c) {
  if (c.mascara.empty()) return {};
  return autonomo::ValorParametro(conexion, c.mascara);
}

std::string SiguienteClave(autonomo::Conexion& conexion, const Catalogo& c) {
  constexpr std::size_t kCifras = 15;  // what a number holds exactly
  const std::string clave(c.campos.front().columna);
  std::int64_t ultima = 0;
  const auto rs = conexion.Consulta("SELECT " + clave + " FROM " + std::string(c.tabla));
  for (; !rs->Eof(); rs->MoveNext()) {
    const std::string texto = com::Recorta(com::CStr(rs->Fields(0).Value()));
    if (texto.empty() || texto.size() > kCifras || texto.find_first_not_of("0123456789") != std::string::npos) continue;
    ultima = std::max<std::int64_t>(ultima, std::stoll(texto));
  }
  return regional::ConMascara(std::to_string(ultima + 1), MascaraDe(conexion, c));
}

bool EsNumero(const CampoCatalogo& campo) {
  return campo.tipo == Entero || campo.tipo == Dinero || campo.tipo == Factor || campo.tipo == Fraccion;
}

std::string TextoDe(const CampoCatalogo& campo, const com::Variant& valor) {
  constexpr int kDecimalesPorCiento = 8;
  if (valor.EsNulo() || valor.EsVacio()) return {};
  if (campo.tipo == Fraccion) return com::CStr(com::Redondea(com::CDbl(valor) * 100, kDecimalesPorCiento)) + " %";
  if (campo.tipo == Dinero) return regional::ConFormato(valor, "#,##0.00");
  if (campo.tipo == Fecha && valor.EsFecha()) return regional::FechaCorta(com::CDate(valor));
  return com::RecortaDerecha(com::CStr(valor));
}

void Inserta(autonomo::Conexion& conexion, const Catalogo& c, std::vector<com::Variant> valores) {
  if (!c.consecutivo.empty()) {
    const auto rs = conexion.Consulta("SELECT MAX(" + std::string(c.consecutivo) + ") FROM " + std::string(c.tabla));
    const com::Variant ultimo = rs->Eof() ? com::Variant::Null() : rs->Fields(0).Value();
    for (std::size_t i = 0; i < c.campos.size(); ++i) {
      if (c.campos[i].columna == c.consecutivo) valores[i] = ultimo.EsNulo() ? 1 : com::CLng(ultimo) + 1;
    }
  } else if (Existe(conexion, c, valores, false)) {
    throw com::Error(com::error::kRestriccion,
                     !c.repetida.empty() ? std::string(c.repetida)
                                         : "Ya existe una fila con esa clave en «" + std::string(c.titulo) + "»");
  }
  std::string marcas;
  for (std::size_t i = 0; i < c.campos.size(); ++i) marcas += i == 0 ? "?" : ", ?";
  const std::string estado = c.conEstado ? ", Es_Cve_Estado" : "";
  if (c.conEstado) {
    marcas += ", ?";
    valores.emplace_back(std::string(esquema::kActiva));
  }
  const std::string sentencia =
      "INSERT INTO " + std::string(c.tabla) + " (" + Lista(c, ", ", "") + estado + ") VALUES (" + marcas + ")";
  conexion.Consulta(sentencia, valores);
}

void Cambia(autonomo::Conexion& conexion, const Catalogo& c, const FilaCatalogo& antes,
            std::vector<com::Variant> valores) {
  if (!Existe(conexion, c, antes.valores, true)) {
    throw com::Error(com::error::kRestriccion,
                     "Esa fila de «" + std::string(c.titulo) + "» ya no existe: alguien la cambió o la quitó");
  }
  for (std::size_t i = 0; i < c.campos.size(); ++i) {
    if (c.campos[i].llave && !c.todoEsLlave) valores[i] = antes.valores[i];
  }
  autonomo::Conexion::Parametros parametros(valores.begin(), valores.end());
  const std::string condicion = Condicion(c, antes.valores, true, parametros);
  const std::string sentencia =
      "UPDATE " + std::string(c.tabla) + " SET " + Lista(c, ", ", " = ?") + " WHERE " + condicion;
  conexion.Consulta(sentencia, parametros);
}

void Retira(autonomo::Conexion& conexion, const Catalogo& c, const FilaCatalogo& fila) {
  if (!c.conEstado) {
    if (const std::string donde = UsadaEn(conexion, c, fila); !donde.empty())
      throw com::Error(com::error::kRestriccion, "No se puede quitar: se usa en «" + donde + "»");
  }
  autonomo::Conexion::Parametros parametros;
  const std::string_view retirada = c.todoEsLlave ? esquema::kCancelada : esquema::kBaja;
  if (c.conEstado) parametros.emplace_back(std::string(fila.deBaja ? esquema::kActiva : retirada));
  const std::string condicion = Condicion(c, fila.valores, true, parametros);
  const std::string tabla(c.tabla);
  const std::string sentencia = c.conEstado ? "UPDATE " + tabla + " SET Es_Cve_Estado = ? WHERE " + condicion
                                            : "DELETE FROM " + tabla + " WHERE " + condicion;
  conexion.Consulta(sentencia, parametros);
}

}  // namespace vista
