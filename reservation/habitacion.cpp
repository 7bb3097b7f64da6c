// How a room line gets its room: handed over from the board, looked up by a typed key, taken away again.
#include <algorithm>
#include <string>
#include <string_view>

#include "platform/regional/regional.h"
#include "publico/avisos.h"
#include "publico/columnas.h"
#include "publico/publico.h"
#include "reservation/frmKV207.h"
#include "reservation/renglones.h"
#include "reservation/sentencias.h"

namespace kv207 {

namespace mensaje = anfitrion::mensaje;

// --- statements ---

void ArmaProductoDeHabitacion(ado::TextoSQL& sql, std::string_view habitacion) {
  sql.Agrega(
      "SELECT "
      "   Producto.Pr_Cve_Producto, "
      "   Producto.Pr_Unidad_Venta, "
      "   Tipo_Habitacion.Th_Num_Personas_Maximo "
      "FROM Habitacion "
      "   INNER JOIN Tipo_Habitacion ON Tipo_Habitacion.Th_Cve_Tipo_Habitacion = "
      "Habitacion.Th_Cve_Tipo_Habitacion "
      "   INNER JOIN Producto ON Producto.Pr_Cve_Producto = Tipo_Habitacion.Pr_Cve_Producto "
      "WHERE Habitacion.Hb_Cve_Habitacion = '?'",
      {habitacion});
}

void ArmaBuscaHabitacion(ado::TextoSQL& sql, std::string_view habitacion) {
  sql.Agrega(
      "SELECT HB.Hb_Cve_Habitacion, "
      "   THb.Th_Descripcion + ' / ' + HB.Hb_Descripcion AS DESCRIPCION, "
      "   THb.Th_Num_Personas_Maximo as MAX "
      "FROM Habitacion HB "
      "   INNER JOIN Tipo_Habitacion THb ON HB.Th_Cve_Tipo_Habitacion = THb.Th_Cve_Tipo_Habitacion "
      "WHERE HB.Hb_Cve_Habitacion = '?' AND"
      "   HB.Es_Cve_Estado <> 'BA'",
      {habitacion});
}

void ArmaBuscaProducto(ado::TextoSQL& sql, std::string_view habitacion) {
  sql.Agrega(
      "SELECT PR.Pr_Cve_Producto, "
      "   PR.Pr_Unidad_venta "
      "FROM Tipo_Habitacion THb "
      "   INNER JOIN Producto PR ON THb.Pr_Cve_Producto = PR.Pr_Cve_Producto "
      "   INNER JOIN Habitacion HB ON HB.Th_Cve_Tipo_Habitacion=THb.Th_Cve_Tipo_Habitacion "
      "WHERE HB.Hb_Cve_Habitacion='?'",
      {habitacion});
}

namespace {

// Tax factor of the current line's product.
double TasaImpuesto(const frmKV207& formulario) {
  const auto calculo =
      publico::CreaServicio<anfitrion::CalculoImpuesto>(anfitrion::kClaseCalculoImpuesto, "CalculoImpuesto");
  return calculo->TasaImpuesto(formulario.txtSucursal.text(), formulario.ClaveCliente(),
                               TextoDelRenglon(formulario.ssReservaciones, col::kProducto));
}

// Amounts of a line that costs nothing yet; impuesto gives its tax factor.
template <class Impuesto>
void PonSinImportes(controles::Grid& grid, Impuesto&& impuesto) {
  for (const std::string_view columna : {col::kPrecio, col::kPrecioExtra, col::kDescuento, col::kDescuentoImporte}) {
    PonEnRenglon(grid, columna, 0.0);
  }
  PonEnRenglon(grid, col::kImpuesto, impuesto());
  for (const std::string_view columna : {col::kImpuestoImporte, col::kTotal}) PonEnRenglon(grid, columna, 0.0);
}

void PonSinPersonas(controles::Grid& grid) {
  for (const std::string_view columna : {col::kAdultos, col::kMenores, col::kInfantes}) {
    PonEnRenglon(grid, columna, 0);
  }
}

std::int32_t AnchoNecesario(const controles::Formulario& formulario, std::string_view nombre, std::int32_t ancho) {
  return std::max(ancho, controles::EscritorioActual().AnchoTexto(formulario, nombre));
}

}  // namespace

// --- lines ---

void frmKV207::AgregaHabitacion(const std::string& primera, const std::string& ultima, const std::string& clave,
                                const std::string& nombre, std::int32_t& ancho) {
  ArmaProductoDeHabitacion(publico::NuevaSentencia(), clave);
  const ado::RecordsetPtr producto = publico::Ejecuta();
  if (producto->Eof()) {
    Avisa(*this, mensaje::kSinProducto);
    return;
  }
  ssReservaciones.AgregaFila();
  PonEnRenglon(ssReservaciones, col::kClave, clave);
  PonEnRenglon(ssReservaciones, col::kNombre, nombre);
  PonEnRenglon(ssReservaciones, col::kInicio, primera);
  PonEnRenglon(ssReservaciones, col::kFin, com::MasDias(com::CDate(ultima), 1));
  PonSinPersonas(ssReservaciones);
  PonEnRenglon(ssReservaciones, col::kProducto, producto->Fields("Pr_Cve_Producto").Value());
  PonEnRenglon(ssReservaciones, col::kUnidad, producto->Fields("Pr_Unidad_Venta").Value());
  PonEnRenglon(ssReservaciones, col::kPersonasMax, producto->Fields("Th_Num_Personas_Maximo").Value());
  PonSinImportes(ssReservaciones, [this] { return TasaImpuesto(*this); });
  ancho = AnchoNecesario(*this, nombre, ancho);
}

void frmKV207::Busca_Habitacion(std::int32_t& ancho, bool& hallada) {
  hallada = false;
  Atrapa(*this, mensaje::kBuscaHabitacion, [&] {
    controles::Grid& grid = ssReservaciones;
    const std::string clave = regional::ConMascara(TextoDelRenglon(grid, col::kClave), FormatoHabitacion);
    ArmaBuscaHabitacion(publico::NuevaSentencia(), clave);
    const ado::RecordsetPtr habitacion = publico::Ejecuta();
    if (habitacion->Eof()) {
      Avisa(*this, mensaje::kHabitacionInexistente);
      return;
    }
    OlvidaPrecio(grid.fila());
    PonEnRenglon(grid, col::kClave, clave);
    PonEnRenglon(grid, col::kNombre, habitacion->Fields("DESCRIPCION").Value());
    PonEnRenglon(grid, col::kInicio, com::SoloFecha(dpFecha_llegada.valor()));
    PonEnRenglon(grid, col::kFin, com::SoloFecha(dpFecha_salida.valor()));
    PonEnRenglon(grid, col::kPersonasMax, habitacion->Fields("MAX").Value());
    PonSinPersonas(grid);
    ArmaBuscaProducto(publico::NuevaSentencia(), clave);
    const ado::RecordsetPtr producto = publico::Ejecuta();
    const bool conProducto = !producto->Eof();
    PonEnRenglon(grid, col::kProducto, conProducto ? producto->Fields("Pr_Cve_Producto").Value() : "");
    PonEnRenglon(grid, col::kUnidad, conProducto ? producto->Fields("Pr_Unidad_venta").Value() : "");
    PonSinImportes(grid, [this] { return TasaImpuesto(*this); });
    ancho = AnchoNecesario(*this, TextoDelRenglon(grid, col::kNombre), ancho);
    hallada = true;
  });
}

void frmKV207::LimpiaRenglon() {
  if (ssReservaciones.fila() < 0) return;
  OlvidaPrecio(ssReservaciones.fila());
  for (const std::string_view columna : {col::kNombre, col::kProducto, col::kUnidad}) {
    PonEnRenglon(ssReservaciones, columna, "");
  }
  PonSinPersonas(ssReservaciones);
  PonSinImportes(ssReservaciones, [] { return 0.0; });
}

}  // namespace kv207
