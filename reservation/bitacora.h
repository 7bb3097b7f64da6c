// The change text of a saved reservation: what a clerk changed, field by field, from two images of the stored rows.
#pragma once

#include <string>
#include <vector>

#include "platform/ado/ado.h"
#include "platform/com/variant.h"

namespace kv207 {

// Header columns that are watched, as stored.
struct ImagenEncabezado {
  com::Variant llegada, salida, sucursal, moneda, formaPago, huesped, cliente;
};
// Columns of a room line that are watched, as stored.
struct ImagenRenglon {
  com::Variant habitacion, inicio, fin, adultos, menores, infantes, personasExtra, precio, precioPersonasExtra,
      precioNetoImporte;
};

// First row of a header image; the record set must not be past its end.
[[nodiscard]] ImagenEncabezado LeeImagenEncabezado(const ado::Recordset& encabezado);
// All rows of a detail image, from the first one on.
[[nodiscard]] std::vector<ImagenRenglon> LeeImagenDetalle(ado::Recordset& detalle);

// Texts with their heading, "" when nothing that is watched has changed. A NULL on either side of a value is no change;
// a NULL date of the header, count or amount raises Error kUsoDeNulo.
[[nodiscard]] std::string TextoCambioEncabezado(const ImagenEncabezado& antes, const ImagenEncabezado& despues);
// A room's lines are each compared with the first line that the room has afterwards. Rooms that were added give no
// text.
[[nodiscard]] std::string TextoCambioDetalle(const std::vector<ImagenRenglon>& antes,
                                             const std::vector<ImagenRenglon>& despues);

}  // namespace kv207
