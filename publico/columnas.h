// Column keys of the screens' grids. The board has Clave and Nombre, then a column a night; the others are those of the
// room lines.
#pragma once

#include <string_view>

namespace kv207::col {

inline constexpr std::string_view kClave = "Clave";    // room or room type
inline constexpr std::string_view kNombre = "Nombre";  // its description

inline constexpr std::string_view kInicio = "FECHAI", kFin = "FECHAF";
inline constexpr std::string_view kAdultos = "Adultos", kMenores = "Menores", kInfantes = "Infantes";
inline constexpr std::string_view kProducto = "Producto", kUnidad = "Unidad";
inline constexpr std::string_view kPersonasExtra = "NUM_PERSONAS_EXTRA", kPersonasMax = "PersonasMax";
inline constexpr std::string_view kPrecio = "Precio", kPrecioExtra = "PERSONA_EXTRA";
inline constexpr std::string_view kPrecioLista = "Precio_Lista", kPrecioListaImporte = "Precio_Lista_Importe";
inline constexpr std::string_view kPrecioDescontado = "Precio_Descontado",
                                  kPrecioDescontadoImporte = "Precio_Descontado_Importe";
inline constexpr std::string_view kDescuento = "Descuento";  // per cent
inline constexpr std::string_view kDescuentoImporte = "DESCUENTO_IMPORTE";
inline constexpr std::string_view kGlobalFactor = "Descuento_Global_Factor",
                                  kGlobalImporte = "Descuento_Global_Importe";
inline constexpr std::string_view kImpuesto = "Impuesto";  // factor
inline constexpr std::string_view kImpuestoImporte = "IMPUESTO_IMPORTE";
inline constexpr std::string_view kPrecioNeto = "Precio_Neto", kTotal = "Total";
inline constexpr std::string_view kId = "ID";  // line number

}  // namespace kv207::col
