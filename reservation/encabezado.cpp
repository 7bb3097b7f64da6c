// Header fields of the reservation: what their changes and confirmations do.
#include <algorithm>

#include "availability/frmDisponibilidad.h"
#include "platform/com/texto.h"
#include "publico/controles.h"
#include "publico/publico.h"
#include "reservation/fechas.h"
#include "reservation/frmKV207.h"
#include "reservation/tarjeta.h"

namespace kv207 {

namespace {

constexpr int kCliente = 1;      // kind of record that MuestraCliente shows
constexpr int kAnchoNotas = 50;  // characters a line

// The card shown was another client's.
void OlvidaTarjeta(frmKV207& f) {
  f.TarjetaCargada = false;
  publico::Utilerias().LimpiaGrupo(f, grupo::kTarjeta);
  if (EsTarjeta(f.TipoFormaPago)) publico::Utilerias().HabilitaGrupo(f, grupo::kTarjeta);
}

}  // namespace

void frmKV207::txtFolio_Change() {
  Controles.ClaveActual("");
  if (Controles.EnEdicion()) return;
  Controles.PermiteAccion5(false);
  Controles.PermiteAccion4(false);
  Controles.PermiteReactivar(false);
  Controles.PermiteAccion2(false);
  Controles.PermiteAccion1(false);
  LimpiaGrupos();
  UltimoRenglon = 0;
  // A reservation without a branch leaves its lines behind: no branch has changed.
  if (ssReservaciones.Filas() > 0) VaciaRenglones();
}

void frmKV207::LimpiaGrupos() {
  for (const int g : {grupo::kCaptura, grupo::kFijos, grupo::kTarjeta}) publico::Utilerias().LimpiaGrupo(*this, g);
  BloqueaEntradas();
}

void frmKV207::txtCliente_Change() { OlvidaTarjeta(*this); }

// Typing empties the name before this runs: a name that is there came with its key, by the program.
void frmKV207::txtHuesped_Change() {
  if (Controles.EnEdicion() && txtNHuesped.text().empty()) OlvidaTarjeta(*this);
}

void frmKV207::txtForma_Pago_Change() {
  publico::Utilerias().LimpiaGrupo(*this, grupo::kTarjeta);
  frTarjeta.visible(false);
  TarjetaCargada = false;
  TipoFormaPago.clear();
}

void frmKV207::txtForma_Pago_Enter() {
  TipoFormaPago = LeeTipoFormaPago(txtForma_Pago.text());
  if (!EsTarjeta(TipoFormaPago)) return;
  if (!TarjetaCargada) {
    if (!txtNCliente.text().empty()) {
      Datos_Tarjeta(txtCliente.text(), "");
    } else if (!txtNHuesped.text().empty()) {
      Datos_Tarjeta(txtHuesped.text(), "");
    }
  }
  frTarjeta.visible(true);
  publico::Utilerias().HabilitaGrupo(*this, grupo::kTarjeta);
}

void frmKV207::txtMoneda_Enter() {
  MuestraTipoCambio();
  SigueMoneda();
}

void frmKV207::txtTipoCambio_Enter() { SigueMoneda(); }

void frmKV207::MuestraTipoCambio() {
  const std::string& moneda = txtMoneda.text();
  if (moneda.empty()) return;
  txtTipoCambio.valor(publico::Utilerias().TipoCambio(moneda, dpFecha.valor()));
  txtTipoCambio.enabled(moneda != MonedaLocal && !BloqueaTipoCambio);
}

void frmKV207::txtSucursal_Change() { VaciaRenglones(); }

void frmKV207::txtDias_Change() {
  // An emptied field waits for a number; accepting without one is refused there.
  if (!Controles.EnEdicion() || txtDias.text().empty()) return;
  const com::Fecha llegada = dpFecha_llegada.valor();
  const auto olvidaEstancia = [this] {
    tablero_.HaySeleccion = false;
    tablero_.ConservarVista = false;
    if (antesDeQuitarRenglones) antesDeQuitarRenglones();
    VaciaRenglones();
  };
  std::int32_t noches = 0;
  try {
    noches = NochesTecleadas(txtDias.valor(), llegada);
  } catch (const com::Error&) {
    olvidaEstancia();  // the marks and lines were for another number of nights
    throw;
  }
  dpFecha_salida.valor(com::MasDias(llegada, std::max(noches, 1)));
  if (noches == 0) txtDias.valor(1);
  olvidaEstancia();
  ExigeEstanciaPosible(noches);
}

void frmKV207::VaciaRenglones() {
  OcultaFecha();
  ssReservaciones.QuitaTodas();
  precios_.clear();
  precioPerdido_.clear();
  importesSinDecir_ = false;
  for (controles::LookupField* total : {&txtSubTotal, &txtImpuestos, &txtTotal}) total->valor(0);
}

void frmKV207::txtNotas_KeyDown(int codigo, int) {
  if (codigo != controles::tecla::kF2) return;
  cmdNotas_Click();
  txtNotas.cursor(static_cast<int>(com::LargoUtf8(txtNotas.text())));
}

void frmKV207::cmdNotas_Click() {
  txtNotas.text(publico::Utilerias().EditaNotas(anfitrion::kModulo, txtNotas.text(), kAnchoNotas));
  Enfoca(txtNotas);
}

void frmKV207::cmdCliente_Click() {
  if (txtNCliente.text().empty()) return;
  publico::Hotel().MuestraCliente(txtCliente.text(), kCliente, txtFolio.text());
}

void frmKV207::cmdHuesped_Click() {
  if (txtNHuesped.text().empty()) return;
  publico::Hotel().MuestraCliente(txtHuesped.text(), kCliente, txtFolio.text());
}

void frmKV207::chkMostrarCodigo_Click() { txtCodigo.passwordChar(chkMostrarCodigo.value() ? "" : "*"); }

std::string frmKV207::ClaveCliente() const {
  return txtNCliente.text().empty() ? txtHuesped.text() : txtCliente.text();
}

}  // namespace kv207
