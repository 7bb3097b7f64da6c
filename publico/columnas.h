// Column keys of the screens' grids, spelt as hosts and scripts know them. The board has Clave and Nombre, then a
// column a night; the others are those of the room lines, where amounts are of the line's whole stay, in the
// reservation's currency.
#pragma once

#include <string_view>

namespace kv207::col {

inline constexpr std::string_view kClave = "Clave";    // room or room type
inline constexpr std::string_view kNombre = "Nombre";  // its description

inline constexpr std::string_view kInicio = "FECHAI", kFin = "FECHAF";  // first day, day of departure
inline constexpr std::string_view kAdultos = "Adultos", kMenores = "Menores", kInfantes = "Infantes";
inline constexpr std::string_view kProducto = "Producto", kUnidad = "Unidad";
inline constexpr std::string_view kPersonasExtra = "NUM_PERSONAS_EXTRA";  // persons who cost extra
inline constexpr std::string_view kPersonasMax = "PersonasMax";           // persons that the room's type admits
inline constexpr std::string_view kPrecio = "Precio";                     // tax included, without the extra persons
inline constexpr std::string_view kPrecioExtra = "PERSONA_EXTRA";         // of the extra persons, tax included
// Of the host's breakdown (anfitrion::Desglose), which says what each is.
inline constexpr std::string_view kPrecioLista = "Precio_Lista", kPrecioListaImporte = "Precio_Lista_Importe";
inline constexpr std::string_view kPrecioDescontado = "Precio_Descontado",
                                  kPrecioDescontadoImporte = "Precio_Descontado_Importe";
inline constexpr std::string_view kGlobalFactor = "Descuento_Global_Factor",
                                  kGlobalImporte = "Descuento_Global_Importe";
inline constexpr std::string_view kPrecioNeto = "Precio_Neto";
inline constexpr std::string_view kDescuento = "Descuento";                 // per cent
inline constexpr std::string_view kDescuentoImporte = "DESCUENTO_IMPORTE";  // before tax
inline constexpr std::string_view kImpuesto = "Impuesto";                   // factor, 0.16 for 16 %
inline constexpr std::string_view kImpuestoImporte = "IMPUESTO_IMPORTE";    // after discount
inline constexpr std::string_view kTotal = "Total";                         // after discount, tax included, 2 decimals
inline constexpr std::string_view kId = "ID";                               // number of a line that was read

}  // namespace kv207::col
