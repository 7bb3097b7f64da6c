// Which event of the reservation screen runs which handler, in screen order.
#include "reservation/frmKV207.h"

namespace kv207 {

void frmKV207::ConectaEventos() {
  Load = [this] { Form_Load(); };
  Activate = [this] { Form_Activate(); };
  Resize = [this] { Form_Resize(); };
  KeyUp = [this](int codigo, int mayus) { Form_KeyUp(codigo, mayus); };
  FocusChange = [this] { Form_FocusChange(); };
  Unload = [this] { Form_Unload(); };

  Controles.Nuevo = [this] { Controles_Nuevo(); };
  Controles.Editar = [this] { Controles_Editar(); };
  Controles.Aceptar = [this](bool nuevo) { Controles_Aceptar(nuevo); };
  Controles.Limpiar = [this] { Controles_Limpiar(); };
  Controles.Cerrar = [this] { Controles_Cerrar(); };
  Controles.B1Click = [this] { Controles_B1Click(); };
  Controles.Eliminar = [this] { Controles_Eliminar(); };
  Controles.Reactivar = [this] { Controles_Reactivar(); };
  Controles.Correo = [this] { Controles_Correo(); };
  Controles.Registro = [this] { Controles_Registro(); };

  txtFolio.Change = [this] { txtFolio_Change(); };
  txtFolio.Enter = [this] { txtFolio_Enter(); };
  txtSucursal.Change = [this] { txtSucursal_Change(); };
  txtCliente.Change = [this] { txtCliente_Change(); };
  cmdCliente.Click = [this] { cmdCliente_Click(); };
  txtHuesped.Change = [this] { txtHuesped_Change(); };
  cmdHuesped.Click = [this] { cmdHuesped_Click(); };
  txtForma_Pago.Change = [this] { txtForma_Pago_Change(); };
  txtForma_Pago.Enter = [this] { txtForma_Pago_Enter(); };
  txtMoneda.Enter = [this] { txtMoneda_Enter(); };
  txtTipoCambio.Enter = [this] { txtTipoCambio_Enter(); };
  dpFecha_llegada.AlFijar = [this] { dpFecha_llegada_Set(); };
  dpFecha_salida.AlCambiar = [this] { dpFecha_salida_Change(); };
  txtDias.Change = [this] { txtDias_Change(); };
  txtNotas.KeyDown = [this](int codigo, int mayus) { txtNotas_KeyDown(codigo, mayus); };
  cmdNotas.Click = [this] { cmdNotas_Click(); };
  chkMostrarCodigo.Click = [this] { chkMostrarCodigo_Click(); };
  cmdDisponibilidad.Click = [this] { cmdDisponibilidad_Click(); };

  ssReservaciones.InitColumnProps = [this] { ssReservaciones_InitColumnProps(); };
  ssReservaciones.BeforeRowColChange = [this](bool& cancela) { ssReservaciones_BeforeRowColChange(cancela); };
  ssReservaciones.RowColChange = [this] { ssReservaciones_RowColChange(); };
  ssReservaciones.Change = [this] { ssReservaciones_Change(); };
  ssReservaciones.KeyDown = [this](int codigo, int mayus) { ssReservaciones_KeyDown(codigo, mayus); };
  ssReservaciones.KeyPress = [this](int& caracter) { ssReservaciones_KeyPress(caracter); };
  ssReservaciones.KeyUp = [this](int codigo, int mayus) { ssReservaciones_KeyUp(codigo, mayus); };
  ssReservaciones.BeforeDelete = [this](bool& cancela, bool& pregunta) {
    ssReservaciones_BeforeDelete(cancela, pregunta);
  };
  ssReservaciones.AfterDelete = [this](bool& muestraError) { ssReservaciones_AfterDelete(muestraError); };
  ssReservaciones.RowCommitted = [this] { ssReservaciones_RowCommitted(); };
  ssReservaciones.UpdateError = [this](int& codigoError) { ssReservaciones_UpdateError(codigoError); };
  dpFechaGrid.AlFijar = [this] { dpFechaGrid_Set(); };
}

}  // namespace kv207
