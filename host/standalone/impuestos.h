// Taxes of a room line: the rate in force and the breakdown of an amount.
#pragma once

#include <string>

#include "host/contract/servicios.h"
#include "host/standalone/conexion.h"

namespace autonomo {

inline constexpr double kImporteMaximo = 999'999'999;  // of a price or of a line

// Fills the results of a line's breakdown from its factors.
//
// Forward (total is 0): from the gross amount in precioNeto (tax included, undiscounted), the discount and then the
// global discount. Backward (total is not 0): from the line total, which already holds both discounts and the tax.
//
// In both directions, to double precision:
//   descuentoImporte = descuentoFactor x list amount before tax,
//   precioDescontadoImporte = taxable base, impuestoImporte = impuestoFactor x base, total = base + tax.
// precioLista is the undiscounted amount with tax, precioListaImporte without; precioDescontado and precioNeto the
// discounted amount with tax. All are amounts of the whole line, not rounded.
//
// Backward from a total that a discount of exactly 100 % cannot have left, the base itself is taken as the list amount.
void Desglosa(anfitrion::Desglose& d);

// Tax factor (0.16 = 16 %) of a product at a branch: the branch's own, else that of any branch, else 0. The client
// makes no difference here.
double TasaDeImpuesto(Conexion& conexion, const std::string& sucursal, const std::string& producto);

}  // namespace autonomo
