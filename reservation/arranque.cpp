// The reservation screen's load, activation, layout, form keys and unload.
#include "availability/frmDisponibilidad.h"
#include "platform/com/error.h"
#include "publico/publico.h"
#include "reservation/frmKV207.h"

namespace kv207 {

namespace parametro = anfitrion::parametro;
namespace permiso = anfitrion::permiso;

namespace {

// A parameter that was never stored, or stored empty, is false.
bool LeeBooleano(const anfitrion::Parametro& parametro) {
  const com::Variant valor = publico::LeeParametro(parametro);
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
  publico::Sistema().ForzarMayusculas(LeeBooleano(parametro::kMayusculas));
  txtCliente.formato(publico::LeeTexto(parametro::kFormatoCliente));
  txtHuesped.formato(publico::LeeTexto(parametro::kFormatoCliente));
  txtForma_Pago.formato(publico::LeeTexto(parametro::kFormatoFormaPago));
  PuedeCambiarFecha = TienePermiso(permiso::kFecha);
  PuedeCambiarDescuento = TienePermiso(permiso::kDescuento);
  PuedeCambiarPrecio = TienePermiso(permiso::kPrecio);
  BloqueaTipoCambio = TienePermiso(permiso::kTipoCambio);
  MonedaLocal = publico::LeeTexto(parametro::kMonedaLocal);
  MonedaDefault = MonedaLocal;
  txtMoneda.text(MonedaLocal);
  PermiteSobreventa = LeeBooleano(parametro::kSobreventa);
  DiasReservacion = com::CInt(publico::LeeParametro(parametro::kDiasReservacion));
  FormatoHabitacion = publico::LeeTexto(parametro::kFormatoHabitacion);
  SucursalDefault = publico::LeeTexto(parametro::kSucursal);
  ClienteWeb = publico::LeeTexto(parametro::kClienteWeb);
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
