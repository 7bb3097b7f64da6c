// Loading a stored reservation by its folio.
#include <algorithm>

#include "host/contract/estados.h"
#include "publico/avisos.h"
#include "publico/columnas.h"
#include "publico/publico.h"
#include "reservation/frmKV207.h"
#include "reservation/sentencias.h"
#include "reservation/tarjeta.h"

namespace kv207 {

namespace estado = anfitrion::estado;
namespace mensaje = anfitrion::mensaje;

namespace {

// Database columns that go into the grid as they are.
struct Correspondencia {
  const char* columna;
  std::string_view celda;
};
constexpr Correspondencia kCeldas[] = {
    {"Rsd_Fecha_Inicio", col::kInicio},
    {"Rsd_Fecha_Fin", col::kFin},
    {"Rsd_Adultos", col::kAdultos},
    {"Rsd_Menores", col::kMenores},
    {"Rsd_Infantes", col::kInfantes},
    {"Rsd_Cantidad_Personas_Extra", col::kPersonasExtra},
    {"Th_Num_Personas_Maximo", col::kPersonasMax},
    {"Pr_Cve_Producto", col::kProducto},
    {"Rsd_Precio", col::kPrecio},
    {"Rsd_Descuento_Importe", col::kDescuentoImporte},
    {"Rsd_Impuesto_Factor", col::kImpuesto},
    {"Rsd_Impuesto_Importe", col::kImpuestoImporte},
    {"Rsd_Precio_Neto", col::kPrecioNeto},
    {"Pr_Unidad_Venta", col::kUnidad},
    {"Rsd_Precio_Personas_Extra", col::kPrecioExtra},
    {"Rsd_Precio_Lista", col::kPrecioLista},
    {"Rsd_Precio_Lista_Importe", col::kPrecioListaImporte},
    {"Rsd_Precio_Descontado", col::kPrecioDescontado},
    {"Rsd_Precio_Descontado_Importe", col::kPrecioDescontadoImporte},
};

}  // namespace

void ArmaCargaReservacion(ado::TextoSQL& sql, std::string_view folio) {
  sql.Agrega(
      "SELECT Reservacion.*, Reservacion_Detalle.*, "
      "  Habitacion.Hb_Descripcion,"
      "  Tipo_Habitacion.Pr_Cve_Producto, "
      "  Tipo_Habitacion.Th_Descripcion, "
      "  Tipo_Habitacion.Th_Num_Personas_Maximo, "
      "  Producto.Pr_Descripcion, "
      "  Producto.Pr_Unidad_Venta, "
      "  Producto_Precio.Pp_Precio_1 "
      "From Reservacion "
      "   INNER JOIN Reservacion_Detalle ON Reservacion.Rs_Folio = Reservacion_Detalle.Rs_Folio "
      "   INNER JOIN Habitacion ON Reservacion_Detalle.Hb_Cve_Habitacion = Habitacion.Hb_Cve_Habitacion "
      "   INNER JOIN Tipo_Habitacion ON Habitacion.Th_Cve_Tipo_Habitacion = "
      "Tipo_Habitacion.Th_Cve_Tipo_Habitacion "
      "   INNER JOIN Producto ON Tipo_Habitacion.Pr_Cve_Producto = Producto.Pr_Cve_Producto "
      "   INNER JOIN Producto_Precio ON Producto_Precio.Pr_Cve_Producto = Producto.Pr_Cve_Producto "
      "WHERE Reservacion.Rs_Folio= '?'",
      {folio});
}

void frmKV207::txtFolio_Enter() {
  if (!Controles.EnEdicion() && !txtFolio.text().empty()) CargaReservacion();
}

bool frmKV207::CargaReservacion() {
  CargaCompleta = false;
  Atrapa(*this, mensaje::kCargar, [&] {
    txtFolio.text(publico::Utilerias().FormateaFolio(txtFolio.text()));
    txtFolio.Refresca();
    const std::string folio = txtFolio.text();
    ArmaCargaReservacion(publico::NuevaSentencia(), folio);
    const ado::RecordsetPtr filas = publico::Ejecuta();
    if (filas->Eof()) {
      Avisa(*this, mensaje::kNoExiste);
      Enfoca(txtFolio);
      filas->Close();
      return;
    }
    CargaBarra(folio, *filas);
    CargaEncabezado(*filas);
    CargaTarjeta(folio);
    CargaRenglones(*filas);
    filas->Close();
    const std::int32_t noches = com::DiasEntre(dpFecha_llegada.valor(), dpFecha_salida.valor());
    if (noches > 0) txtDias.valor(noches);  // no nights typed: the lines stay, in an edit's second reading too
    BloqueaColumnas();
    Totalizar();
    CargaCompleta = true;
  });
  return CargaCompleta;
}

void frmKV207::CargaBarra(const std::string& folio, const ado::Recordset& filas) {
  Controles.CargaClave(folio);
  Controles.ClaveActual(folio);
  Controles.PermiteAccion6(true);
  Controles.PermiteAccion1(true);
  Controles.PermiteAccion2(true);
  Controles.TituloConfirmar("");
  const std::string guardado = TextoDe(filas.Fields("Es_Cve_Estado").Value());
  const std::string codigo = com::Mayusculas(guardado);
  if (codigo == estado::kActiva || codigo == estado::kConfirmada) {
    Controles.PermiteAccion5(true);
    Controles.PermiteAccion4(true);
    // Offered for the code exactly as the store writes it.
    if (guardado == estado::kActiva) Controles.TituloConfirmar("Confirmar");
  } else if (codigo == estado::kCerrada || codigo == estado::kAplicada) {
    Controles.PermiteAccion5(false);
    Controles.PermiteAccion4(false);
  } else if (codigo == estado::kCancelada) {
    Controles.PermiteReactivar(true);
    Controles.PermiteAccion5(false);
    Controles.PermiteAccion4(false);
  }
}

void frmKV207::CargaEncabezado(const ado::Recordset& filas) {
  const auto valor = [&filas](const char* columna) { return filas.Fields(columna).Value(); };
  dpFecha.valor(com::CDate(valor("Rs_Fecha")));
  dpFecha_llegada.valor(com::CDate(valor("Rs_Llegada")));
  dpFecha_salida.valor(com::CDate(valor("Rs_Salida")));
  txtMoneda.text(TextoDe(valor("Mn_Cve_Moneda")));
  txtTipoCambio.valor(com::CDbl(valor("Rs_Tipo_Cambio")));
  txtSucursal.text(TextoDe(valor("Sc_Cve_Sucursal")));
  txtCliente.text(TextoDe(valor("Cl_Cve_Cliente")));
  txtReferencia.text(TextoDe(valor("Rs_Referencia")));
  txtComentario.text(TextoDe(valor("Rs_Comentario")));
  txtForma_Pago.text(TextoDe(valor("Fp_Cve_Forma_Pago")));
  txtNotas.text(TextoDe(valor("Rs_Notas")));
  txtHuesped.text(TextoDe(valor("Rs_Huesped")));
}

void frmKV207::CargaTarjeta(const std::string& folio) {
  TipoFormaPago = LeeTipoFormaPago(txtForma_Pago.text());
  if (!EsTarjeta(TipoFormaPago)) return;
  if (!txtNCliente.text().empty()) {
    Datos_Tarjeta(txtCliente.text(), folio);
  } else if (!txtNHuesped.text().empty()) {
    Datos_Tarjeta(txtHuesped.text(), folio);
  }
  frTarjeta.visible(true);
}

void frmKV207::CargaRenglones(ado::Recordset& filas) {
  controles::Grid::Pausa pausa(ssReservaciones);
  VaciaRenglones();
  UltimoRenglon = 0;
  int ancho = 0;
  for (; !filas.Eof(); filas.MoveNext()) {
    const auto valor = [&filas](const char* columna) { return filas.Fields(columna).Value(); };
    const int fila = ssReservaciones.AgregaFila();
    const std::string nombre = TextoDe(valor("Th_Descripcion")) + " / " + TextoDe(valor("Hb_Descripcion"));
    ssReservaciones.celda(fila, col::kClave, valor("Hb_Cve_Habitacion"));
    ssReservaciones.celda(fila, col::kNombre, nombre);
    for (const Correspondencia& c : kCeldas) ssReservaciones.celda(fila, c.celda, valor(c.columna));
    ssReservaciones.celda(fila, col::kDescuento, com::CDbl(valor("Rsd_Descuento_Factor")) * 100);
    ssReservaciones.celda(fila, col::kGlobalFactor, 0);
    ssReservaciones.celda(fila, col::kGlobalImporte, 0);
    ssReservaciones.celda(fila, col::kTotal, com::Redondea(com::CDbl(valor("Rsd_Precio_Neto_Importe")), 2));
    ssReservaciones.celda(fila, col::kId, ++UltimoRenglon);
    ssReservaciones.Update();
    AnotaAcuerdo(fila, false, false);
    ancho = std::max(ancho, controles::EscritorioActual().AnchoTexto(*this, nombre));
  }
  ssReservaciones.ancho(col::kNombre, ancho + 200);
  ssReservaciones.MuevePrimera();
  pausa.Termina();
}

}  // namespace kv207
