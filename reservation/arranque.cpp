// The reservation screen's load, activation, layout, form keys and unload.
#include "availability/frmDisponibilidad.h"
#include "platform/com/error.h"
#include "publico/publico.h"
#include "reservation/frmKV207.h"

namespace kv207 {

namespace {

com::Variant LeeParametro(const char* clave, const char* tipo, const char* defecto) {
  return publico::Sistema().LeeParametro(clave, 0, tipo, defecto);
}

std::string LeeTexto(const char* clave, const char* tipo, const char* defecto) {
  return com::CStr(LeeParametro(clave, tipo, defecto));
}

// A parameter that was never stored, or stored empty, is false.
bool LeeBooleano(const char* clave, const char* tipo, const char* defecto) {
  const com::Variant valor = LeeParametro(clave, tipo, defecto);
  if (valor.EsTexto() && com::Recorta(com::CStr(valor)).empty()) return false;
  return com::CBool(valor);
}

bool TienePermiso(const char* opcion) {
  return publico::Sistema().TienePermiso(anfitrion::kPantalla, opcion, "No disponible");
}

// A step of the layout that does not fit is skipped.
template <class Paso>
void Intenta(Paso&& paso) {
  try {
    paso();
  } catch (const com::Error&) {  // the control keeps its place and size
  }
}

}  // namespace

void frmKV207::Form_Load() {
  RestauraDiseno();
  AplicaColores();
  publico::CreaHotel();
  try {
    CargaConfiguracion();
    tablero_.Carga();
  } catch (...) {
    publico::LiberaHotel();
    throw;
  }
  TarjetaCargada = false;
}

void frmKV207::CargaConfiguracion() {
  Controles.PermiteAccion6(true);
  publico::Sistema().ForzarMayusculas(LeeBooleano("CAT_FORZAR_MAYUSCULAS", "", ""));
  txtCliente.formato(LeeTexto("FTO_CLIENTE", "T", "0000000000"));
  txtHuesped.formato(LeeTexto("FTO_CLIENTE", "T", "0000000000"));
  txtForma_Pago.formato(LeeTexto("FTO_FORMA_PAGO", "T", "0000"));
  PuedeCambiarFecha = TienePermiso("CHFECHA");
  PuedeCambiarDescuento = TienePermiso("CHDS02");
  PuedeCambiarPrecio = TienePermiso("CHPR02");
  BloqueaTipoCambio = TienePermiso("CHTC01");
  MonedaLocal = LeeTexto("FIN_MONEDA_LOCAL", "", "");
  MonedaDefault = MonedaLocal;
  txtMoneda.text(MonedaLocal);
  PermiteSobreventa = LeeBooleano("HT_OVER_BOOKING", "B", "1");
  DiasReservacion = com::CInt(LeeParametro("HT_DIAS_RESERVACION", "N", "1"));
  FormatoHabitacion = LeeTexto("FTO_HABITACION", "T", "0000");
  SucursalDefault = LeeTexto("HT_SUCURSAL_DEFAULT", "T", "0001");
  ClienteWeb = LeeTexto("HT_CLIENTE_RESERVACION_WEB", "T", "");
  txtSucursal.text(SucursalDefault);
  FechaCaptura = publico::Utilerias().FechaServidor();
  dpFecha.valor(FechaCaptura);
}

void frmKV207::AplicaColores() {
  constexpr std::int32_t kDelFormulario = -1;
  for (const auto& etiqueta : etiquetas_) etiqueta->color(kDelFormulario);
}

void frmKV207::Form_Activate() {
  if (!Controles.EnEdicion() && txtFolio.enabled()) Enfoca(txtFolio);
}

void frmKV207::Form_Resize() {
  controles::Grid& grid = ssReservaciones;
  Intenta([&] { grid.width(width() - 2 * grid.left()); });
  Intenta([&] { grid.height(height() - grid.top() - frTotales.height()); });
  Intenta([&] { frTotales.top(grid.height() + grid.top() + 100); });
  Intenta([&] { frTotales.left(grid.width() + grid.left() - frTotales.width()); });
}

void frmKV207::Form_KeyUp(int codigo, int) {
  if (codigo == controles::tecla::kF6) {
    cmdDisponibilidad_Click();
  } else if (codigo == controles::tecla::kEsc && pcFecha.visible()) {
    OcultaFecha();
    Enfoca(ssReservaciones);
  }
}

// The date pop-up goes when the clerk turns from the room lines to something else.
void frmKV207::Form_FocusChange() {
  if (foco() != &ssReservaciones && foco() != &dpFechaGrid) OcultaFecha();
}

void frmKV207::Form_Unload() {
  tablero_.Descarga();
  publico::LiberaHotel();
}

}  // namespace kv207
