// Which event of the board runs which handler, in screen order.
#include "availability/frmDisponibilidad.h"

namespace kv207 {

void frmDisponibilidad::ConectaEventos() {
  Load = [this] { Form_Load(); };
  Activate = [this] { Form_Activate(); };
  Resize = [this] { Form_Resize(); };
  KeyUp = [this](int codigo, int mayus) { Form_KeyUp(codigo, mayus); };

  Controles.Aceptar = [this](bool) { Controles_Aceptar(); };
  Controles.Cancelar = [this] { Controles_Cancelar(); };

  txtGrupo_Habitacion.Change = [this] { txtGrupo_Habitacion_Change(); };
  txtGrupo_Habitacion.Enter = [this] { txtGrupo_Habitacion_Enter(); };
  txtArea.Change = [this] { txtArea_Change(); };
  txtArea.Enter = [this] { txtArea_Enter(); };
  txtTipo_Habitacion.Change = [this] { txtTipo_Habitacion_Change(); };
  txtTipo_Habitacion.Enter = [this] { txtTipo_Habitacion_Enter(); };
  opTipoHabitacion.Click = [this] { opTipoHabitacion_Click(); };
  opHabitacion.Click = [this] { opHabitacion_Click(); };
  cmdPrecios.Click = [this] { cmdPrecios_Click(); };

  ssDisponibilidad.Click = [this] { ssDisponibilidad_Click(); };
  ssDisponibilidad.SelChange = [this](int tipo) { ssDisponibilidad_SelChange(tipo); };
  ssDisponibilidad.RowLoaded = [this] { ssDisponibilidad_RowLoaded(); };
  // Once the form has loaded.
  ssDisponibilidad.InitColumnProps = [this] { ssDisponibilidad_RowLoaded(); };
  ssDisponibilidad.KeyDown = [this](int codigo, int mayus) { ssDisponibilidad_KeyDown(codigo, mayus); };
  ssDisponibilidad.KeyPress = [this](int& caracter) { ssDisponibilidad_KeyPress(caracter); };
}

}  // namespace kv207
