// The reservation screen as designed: places in twips, captions, lookups, grid columns, field groups, labels; and its
// fields for support tools.
#include "reservation/frmKV207.h"

#include "host/contract/pantallas.h"
#include "platform/com/error.h"
#include "publico/columnas.h"
#include "publico/controles.h"
#include "publico/publico.h"

namespace kv207 {

namespace {

using controles::Accion;
using controles::Alineacion;
using controles::Clase;
using controles::DateField;
using controles::DisenoLookup;
using controles::LookupField;
using controles::Lugar;
using controles::TipoColumna;

constexpr int kAncho = 15000, kAlto = 9600;
constexpr int kAltoCampo = 330;

// Header rows: two columns of fields under the toolbar.
constexpr int Renglon(int n) { return 720 + 420 * n; }
constexpr Lugar Campo(int left, int renglon, int width) { return {left, Renglon(renglon), width, kAltoCampo}; }
// A key at the left, its name beside it, its button at the end.
constexpr Lugar Clave(int renglon) { return Campo(1500, renglon, 1740); }
constexpr Lugar Nombre(int renglon) { return Campo(3300, renglon, 3660); }
constexpr Lugar Boton(int renglon) { return Campo(7020, renglon, 330); }
constexpr Lugar EnMarco(int left, int top, int width) { return {left, top, width, kAltoCampo}; }

constexpr int kTopTarjeta = 330, kTopTotales = 60;

DisenoLookup DisenoFolio() {
  DisenoLookup diseno;
  diseno.idconsulta = "RESERVACION";
  return diseno;
}

DisenoLookup DisenoClave(const char* idconsulta, const char* sql, LookupField& nombre, const char* transaccion) {
  DisenoLookup diseno;
  diseno.idconsulta = idconsulta;
  diseno.sql = sql;
  diseno.sql_control_resultado = &nombre;
  diseno.transaccion = transaccion;
  diseno.esclave = true;
  diseno.mayusculas = true;
  return diseno;
}

DisenoLookup DisenoCliente(LookupField& nombre) {
  return DisenoClave("CLIENTE",
                     "SELECT Cl_Razon_Social_1 FROM Cliente WHERE CL_Cve_Cliente= '?' AND Es_Cve_Estado <> 'BA'",
                     nombre, anfitrion::pantalla::kClientes);
}

DisenoLookup DisenoNombre() {
  DisenoLookup diseno;
  diseno.locked = true;
  return diseno;
}

DisenoLookup DisenoNumero(bool locked = false) {
  DisenoLookup diseno;
  diseno.tipo = controles::TipoDato::Numero;
  diseno.locked = locked;
  return diseno;
}

constexpr const char* kMoneda4 = "$#,##0.0000#####";
constexpr const char* kMoneda2 = "$#,##0.00#######";
constexpr bool kBloqueada = true, kLibre = false;
constexpr int kOculta = 0;

// One column of the room lines; ancho kOculta hides it.
struct DatosColumna {
  std::string_view clave;
  const char* titulo;
  TipoColumna tipo;
  const char* formato;
  int ancho;
  bool bloqueada;
};

// clang-format off
constexpr DatosColumna kColumnas[] = {
    {col::kClave,                   "Clave",                     TipoColumna::Texto,  "",       1164,    kLibre},
    {col::kNombre,                  "Habitación",                TipoColumna::Texto,  "",       1746,    kBloqueada},
    {col::kInicio,                  "Fecha inicial",             TipoColumna::Fecha,  "",       2117,    kLibre},
    {col::kFin,                     "Fecha final",               TipoColumna::Fecha,  "",       2037,    kLibre},
    {col::kAdultos,                 "Adultos",                   TipoColumna::Entero, "",       1455,    kLibre},
    {col::kMenores,                 "Menores",                   TipoColumna::Entero, "",       1508,    kLibre},
    {col::kInfantes,                "Infantes",                  TipoColumna::Entero, "",       1482,    kLibre},
    {col::kProducto,                "Producto",                  TipoColumna::Texto,  "",       kOculta, kLibre},
    {col::kPersonasExtra,           "No. P. Extra",              TipoColumna::Entero, "",       kOculta, kLibre},
    {col::kPrecio,                  "P. Habitación",             TipoColumna::Doble,  kMoneda4, 2302,    kBloqueada},
    {col::kPrecioLista,             "Precio_Lista",              TipoColumna::Doble,  kMoneda4, kOculta, kLibre},
    {col::kPrecioListaImporte,      "Precio_lista_importe",      TipoColumna::Doble,  kMoneda4, kOculta, kLibre},
    {col::kPrecioDescontado,        "Precio_descontado",         TipoColumna::Doble,  kMoneda4, kOculta, kLibre},
    {col::kPrecioDescontadoImporte, "Precio_Descontado_Importe", TipoColumna::Doble,  kMoneda4, kOculta, kLibre},
    {col::kPrecioExtra,             "P. Extra",                  TipoColumna::Doble,  kMoneda4, 2302,    kBloqueada},
    {col::kDescuento,               "% Descuento",               TipoColumna::Doble,  "#,##0.00#######", 2302,    kBloqueada},
    {col::kDescuentoImporte,        "Descuento",                 TipoColumna::Doble,  kMoneda2, 2302,    kBloqueada},
    {col::kGlobalFactor,            "Descuento_Global_Factor",   TipoColumna::Doble,  "",       kOculta, kLibre},
    {col::kGlobalImporte,           "Descuento_Global_Importe",  TipoColumna::Doble,  kMoneda4, kOculta, kLibre},
    {col::kImpuesto,                "Impuesto",                  TipoColumna::Texto,  "#,##0.00#######%", kOculta, kLibre},
    {col::kImpuestoImporte,         "Impuesto",                  TipoColumna::Doble,  kMoneda2, 2302,    kBloqueada},
    {col::kUnidad,                  "Unidad",                    TipoColumna::Texto,  "",       kOculta, kLibre},
    {col::kPrecioNeto,              "Precio_Neto",               TipoColumna::Doble,  kMoneda4, kOculta, kLibre},
    {col::kTotal,                   "Total",                     TipoColumna::Doble,  kMoneda2, 2302,    kBloqueada},
    {col::kPersonasMax,             "PersonasMax",               TipoColumna::Entero, "",       kOculta, kLibre},
    {col::kId,                      "Id",                        TipoColumna::Texto,  "",       kOculta, kLibre},
};
// clang-format on

// Numbers stand at the right, texts and dates at the left, the line number in the middle; captions of dates and numbers
// are centred, those of texts stand as their column.
controles::Columna ColumnaDe(const DatosColumna& d) {
  const bool numero = d.tipo == TipoColumna::Entero || d.tipo == TipoColumna::Doble;
  controles::Columna c;
  c.clave = d.clave;
  c.titulo = d.titulo;
  c.tipo = d.tipo;
  c.formato = d.formato;
  c.ancho = d.ancho;
  c.visible = d.ancho != kOculta;
  c.bloqueada = d.bloqueada;
  c.alineacion = numero ? Alineacion::Derecha : c.clave == col::kId ? Alineacion::Centro : Alineacion::Izquierda;
  c.alineacionTitulo = d.tipo == TipoColumna::Texto ? c.alineacion : Alineacion::Centro;
  return c;
}

std::vector<controles::Columna> ColumnasReservacion() {
  std::vector<controles::Columna> columnas;
  for (const DatosColumna& d : kColumnas) columnas.push_back(ColumnaDe(d));
  return columnas;
}

}  // namespace

frmKV207::frmKV207(frmDisponibilidad& tablero)
    : Formulario(forma::kReservacion, "Reservaciones", kAncho, kAlto),
      Controles(*this, control::kBarra, {0, 0, kAncho, 600},
                {Accion::Nuevo, Accion::Editar, Accion::Aceptar, Accion::Limpiar, Accion::Confirmar, Accion::Eliminar,
                 Accion::Reactivar, Accion::Correo, Accion::Registro, Accion::Cerrar}),
      txtFolio(*this, control::kFolio, Campo(1500, 0, 1800), DisenoFolio()),
      dpFecha(*this, control::kFecha, Campo(4260, 0, 1680)),
      txtSucursal(*this, control::kSucursal, Clave(1)),
      txtCliente(*this, control::kCliente, Clave(2), DisenoCliente(txtNCliente)),
      txtNCliente(*this, "txtNCliente", Nombre(2), DisenoNombre()),
      cmdCliente(*this, control::kFichaCliente, Boton(2), "…"),
      txtHuesped(*this, control::kHuesped, Clave(3), DisenoCliente(txtNHuesped)),
      txtNHuesped(*this, control::kNombreHuesped, Nombre(3), DisenoNombre()),
      cmdHuesped(*this, control::kFichaHuesped, Boton(3), "…"),
      txtForma_Pago(*this, control::kFormaPago, Clave(4),
                    DisenoClave("FORMA_PAGO",
                                "SELECT Fp_Descripcion  FROM Forma_Pago WHERE Fp_Cve_Forma_Pago='?' AND "
                                "Es_Cve_Estado <> 'BA'",
                                txtNForma_Pago, anfitrion::pantalla::kFormasPago)),
      txtNForma_Pago(*this, "txtNForma_Pago", Nombre(4), DisenoNombre()),
      txtMoneda(
          *this, control::kMoneda, Clave(5),
          DisenoClave("MONEDA", "SELECT Mn_Descripcion FROM  Moneda WHERE Mn_Cve_Moneda='?' AND Es_Cve_Estado <>'BA'",
                      txtNMoneda, anfitrion::pantalla::kMonedas)),
      txtNMoneda(*this, "txtNMoneda", Campo(3300, 5, 1620), DisenoNombre()),
      txtTipoCambio(*this, control::kTipoCambio, Campo(5880, 5, 1470), DisenoNumero()),
      dpFecha_llegada(*this, control::kLlegada, Campo(8850, 0, 1680)),
      dpFecha_salida(*this, control::kSalida, Campo(11400, 0, 1680)),
      txtDias(*this, control::kDias, Campo(13980, 0, 840), DisenoNumero()),
      txtReferencia(*this, control::kReferencia, Campo(8850, 1, 5970)),
      txtComentario(*this, "txtComentario", Campo(8850, 2, 5970)),
      txtNotas(*this, control::kNotas, {8850, Renglon(3), 5580, 2 * 420 + kAltoCampo}),
      cmdNotas(*this, control::kEditaNotas, Campo(14490, 3, 330), "…"),
      frTarjeta(*this, control::kTarjeta, {180, 3270, 11900, 780}, "Datos de la tarjeta"),
      txtBanco(*this, "txtBanco", EnMarco(780, kTopTarjeta, 1860)),
      txtTarjeta(*this, "txtTarjeta", EnMarco(3540, kTopTarjeta, 2280)),
      txtCodigo(*this, "txtCodigo", EnMarco(6660, kTopTarjeta, 900)),
      dpVencimiento(*this, "dpVencimiento", EnMarco(8340, kTopTarjeta, 1680)),
      chkMostrarCodigo(*this, "chkMostrarCodigo", EnMarco(10140, kTopTarjeta, 1710), "Mostrar código"),
      cmdDisponibilidad(*this, control::kAbreTablero, {12300, 3450, 2520, 450}, "[F6] Disponibilidad"),
      ssReservaciones(*this, control::kRenglones, {180, 4170, 14640, 4770}, ColumnasReservacion()),
      pcFecha(*this, "pcFecha", {180, 4455, 2127, 265}),
      dpFechaGrid(*this, "dpFechaGrid", {0, 0, 2160, 298}),
      frTotales(*this, control::kTotales, {6180, 9040, 8640, 660}),
      txtSubTotal(*this, control::kSubTotal, EnMarco(960, kTopTotales, 1800), DisenoNumero(true)),
      txtImpuestos(*this, control::kImpuestos, EnMarco(3900, kTopTotales, 1800), DisenoNumero(true)),
      txtTotal(*this, control::kTotal, EnMarco(6480, kTopTotales, 2040), DisenoNumero(true)),
      tablero_(tablero) {
  DisenaGrupos();
  DisenaContenedores();
  DisenaDescripciones();
  DisenaEtiquetas();
  for (LookupField* total : {&txtSubTotal, &txtImpuestos, &txtTotal}) total->formato("$#,##0.00");
  RestauraDiseno();
  ConectaEventos();
}

// Names go with their keys.
void frmKV207::DisenaGrupos() {
  controles::Control* const deCaptura[] = {&txtSucursal,   &txtCliente,      &txtNCliente,    &txtHuesped,
                                           &txtNHuesped,   &txtForma_Pago,   &txtNForma_Pago, &txtMoneda,
                                           &txtNMoneda,    &dpFecha_llegada, &dpFecha_salida, &txtDias,
                                           &txtReferencia, &txtComentario,   &txtNotas};
  for (controles::Control* c : deCaptura) c->grupo(grupo::kCaptura);
  controles::Control* const fijos[] = {&dpFecha, &txtTipoCambio, &txtSubTotal, &txtImpuestos, &txtTotal};
  for (controles::Control* c : fijos) c->grupo(grupo::kFijos);
  controles::Control* const deTarjeta[] = {&txtBanco, &txtTarjeta, &txtCodigo, &dpVencimiento, &chkMostrarCodigo};
  for (controles::Control* c : deTarjeta) c->grupo(grupo::kTarjeta);
}

void frmKV207::DisenaContenedores() {
  controles::Control* const tarjeta[] = {&txtBanco, &txtTarjeta, &txtCodigo, &dpVencimiento, &chkMostrarCodigo};
  for (controles::Control* c : tarjeta) c->contenedor(frTarjeta);
  dpFechaGrid.contenedor(pcFecha);
  controles::Control* const totales[] = {&txtSubTotal, &txtImpuestos, &txtTotal};
  for (controles::Control* c : totales) c->contenedor(frTotales);
  // Only what the clerk fills in stops the Tab key.
  controles::Control* const sinParada[] = {&txtNCliente,    &cmdCliente,   &txtNHuesped, &cmdHuesped,
                                           &txtNForma_Pago, &txtNMoneda,   &cmdNotas,    &dpFechaGrid,
                                           &txtSubTotal,    &txtImpuestos, &txtTotal};
  for (controles::Control* c : sinParada) c->tabStop(false);
}

void frmKV207::DisenaDescripciones() {
  const std::pair<controles::Control*, const char*> descripciones[] = {
      {&txtFolio, "Folio de la reservación"},
      {&dpFecha, "Fecha de captura"},
      {&txtSucursal, "Sucursal"},
      {&txtCliente, "Cliente que paga"},
      {&txtNCliente, "Nombre del cliente"},
      {&cmdCliente, "Ficha del cliente"},
      {&txtHuesped, "Huésped"},
      {&txtNHuesped, "Nombre del huésped"},
      {&cmdHuesped, "Ficha del huésped"},
      {&txtForma_Pago, "Forma de pago"},
      {&txtNForma_Pago, "Nombre de la forma de pago"},
      {&txtMoneda, "Moneda"},
      {&txtNMoneda, "Nombre de la moneda"},
      {&txtTipoCambio, "Tipo de cambio"},
      {&dpFecha_llegada, "Fecha de llegada"},
      {&dpFecha_salida, "Fecha de salida"},
      {&txtDias, "Número de noches"},
      {&txtReferencia, "Referencia"},
      {&txtComentario, "Comentario"},
      {&txtNotas, "Notas, F2 abre el editor"},
      {&cmdNotas, "Editor de notas"},
      {&frTarjeta, "Datos de la tarjeta"},
      {&txtBanco, "Banco emisor"},
      {&txtTarjeta, "Número de tarjeta"},
      {&txtCodigo, "Código de seguridad"},
      {&dpVencimiento, "Vencimiento de la tarjeta"},
      {&chkMostrarCodigo, "Mostrar el código de seguridad"},
      {&cmdDisponibilidad, "Disponibilidad de habitaciones, F6"},
      {&ssReservaciones, "Habitaciones de la reservación"},
      {&dpFechaGrid, "Fecha de la habitación"},
      {&frTotales, "Totales"},
      {&txtSubTotal, "Subtotal sin impuestos"},
      {&txtImpuestos, "Impuestos"},
      {&txtTotal, "Total con impuestos"},
  };
  for (const auto& [control, texto] : descripciones) control->descripcion(texto);
}

// A label's key is the name of the field that it stands for.
void frmKV207::DisenaEtiquetas() {
  constexpr int kAltoEtiqueta = 255, kBajada = 45;
  struct DatosEtiqueta {
    controles::Control* campo;
    int left, width;
    const char* caption;
  };
  const DatosEtiqueta datos[] = {
      {&txtFolio, 180, 1260, "Folio:"},
      {&dpFecha, 3480, 720, "Fecha:"},
      {&txtSucursal, 180, 1260, "Sucursal:"},
      {&txtCliente, 180, 1260, "Cliente:"},
      {&txtHuesped, 180, 1260, "Huésped:"},
      {&txtForma_Pago, 180, 1260, "Forma de pago:"},
      {&txtMoneda, 180, 1260, "Moneda:"},
      {&txtTipoCambio, 4920, 930, "T. cambio:"},
      {&dpFecha_llegada, 7650, 1140, "Llegada:"},
      {&dpFecha_salida, 10650, 720, "Salida:"},
      {&txtDias, 13200, 750, "Noches:"},
      {&txtReferencia, 7650, 1140, "Referencia:"},
      {&txtComentario, 7650, 1140, "Comentario:"},
      {&txtNotas, 7650, 1140, "Notas:"},
      {&txtBanco, 120, 630, "Banco:"},
      {&txtTarjeta, 2760, 750, "Número:"},
      {&txtCodigo, 5940, 690, "Código:"},
      {&dpVencimiento, 7680, 630, "Vence:"},
      {&txtSubTotal, 60, 870, "Subtotal:"},
      {&txtImpuestos, 2880, 990, "Impuestos:"},
      {&txtTotal, 5820, 630, "Total:"},
  };
  for (const DatosEtiqueta& d : datos) {
    const std::string nombre = "lbl" + d.campo->nombre().substr(d.campo->nombre().starts_with("dp") ? 2 : 3);
    const Lugar lugar{d.left, d.campo->top() + kBajada, d.width, kAltoEtiqueta};
    auto etiqueta = std::make_unique<controles::Etiqueta>(*this, nombre, lugar, d.caption, d.campo->nombre());
    if (d.campo->contenedor() != nullptr) etiqueta->contenedor(*d.campo->contenedor());
    etiquetas_.push_back(std::move(etiqueta));
  }
}

void frmKV207::RestauraDiseno() {
  Controles.Reinicia();
  Controles.TituloConfirmar("");
  Controles.PermiteAccion1(false);
  Controles.PermiteAccion2(false);
  Controles.PermiteAccion4(false);
  Controles.PermiteAccion5(false);
  Controles.PermiteAccion6(false);
  Controles.PermiteReactivar(false);
  for (controles::Control* c : controles()) {
    // The typed value raises nothing.
    if (auto* campo = controles::Como<LookupField>(c)) campo->valor("");
    if (auto* fecha = controles::Como<DateField>(c)) fecha->valor({});
  }
  txtNotas.text("");
  chkMostrarCodigo.value(false);
  txtCodigo.passwordChar("*");
  BloqueaEntradas();
  txtFolio.enabled(true);
  frTarjeta.visible(false);
  pcFecha.visible(false);
  ssReservaciones.QuitaTodas();
  for (const DatosColumna& d : kColumnas) {
    ssReservaciones.ancho(d.clave, d.ancho);
    ssReservaciones.bloqueada(d.clave, d.bloqueada);
  }
  TipoFormaPago.clear();
  TarjetaCargada = false;
  CargaCompleta = false;
  UltimoRenglon = 0;
  MensajeDisponibilidad.clear();
  ColumnaFechaActiva.clear();
}

// Names and totals are locked by design and stay readable; the card's code can be shown at any time.
void frmKV207::BloqueaEntradas() {
  for (controles::Control* c : controles()) {
    if (c->grupo() == 0) continue;
    auto* fecha = controles::Como<DateField>(c);
    const auto* campo = controles::Como<LookupField>(c);
    const bool entrada = fecha != nullptr || c->clase() == Clase::CampoNotas || (campo != nullptr && !campo->locked());
    if (entrada) c->enabled(false);
    if (fecha != nullptr) fecha->editable(false);
  }
}

std::vector<std::pair<std::string, com::Variant>> frmKV207::Campos() const {
  return {{"FormatoHabitacion", FormatoHabitacion},
          {"MonedaLocal", MonedaLocal},
          {"MonedaDefault", MonedaDefault},
          {"SucursalDefault", SucursalDefault},
          {"ClienteWeb", ClienteWeb},
          {"PermiteSobreventa", PermiteSobreventa},
          {"DiasReservacion", std::int32_t{DiasReservacion}},
          {"FechaCaptura", FechaCaptura},
          {"PuedeCambiarFecha", PuedeCambiarFecha},
          {"PuedeCambiarDescuento", PuedeCambiarDescuento},
          {"PuedeCambiarPrecio", PuedeCambiarPrecio},
          {"BloqueaTipoCambio", BloqueaTipoCambio},
          {"TipoFormaPago", TipoFormaPago},
          {"TarjetaCargada", TarjetaCargada},
          {"UltimoRenglon", UltimoRenglon},
          {"MensajeDisponibilidad", MensajeDisponibilidad},
          {"ColumnaFechaActiva", ColumnaFechaActiva}};
}

std::string frmKV207::Transaccion() const {
  if (!Padre) throw com::Error(com::error::kSinObjeto, "La variable de objeto no está establecida: Padre");
  return publico::Utilerias().ResuelveTransaccion(com::CStr(Padre->Lee("Transaccion")), anfitrion::kProducto);
}

}  // namespace kv207
