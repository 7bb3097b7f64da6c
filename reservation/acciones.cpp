// Toolbar actions: new, edit, clear, close, the state changes of a stored reservation, mail, print, record viewer.
// Which button each of the toolbar's numbered permissions offers stands in platform/controls/barra.h.
#include "availability/frmDisponibilidad.h"
#include "platform/com/error.h"
#include "publico/avisos.h"
#include "publico/controles.h"
#include "publico/publico.h"
#include "publico/transaccion.h"
#include "reservation/correo.h"
#include "reservation/fechas.h"
#include "reservation/frmKV207.h"
#include "reservation/sentencias.h"

namespace kv207 {

namespace mensaje = anfitrion::mensaje;

namespace {

// Who changes a reservation, and when.
struct Sello {
  std::string ahora;  // as SQL text
  std::string usuario;
};

Sello SelloActual() {
  anfitrion::Utilerias& utilerias = publico::Utilerias();
  Sello sello;
  sello.ahora = utilerias.FechaHoraSQL(utilerias.FechaServidor());
  sello.usuario = publico::Sistema().UsuarioActual();
  return sello;
}

}  // namespace

void ArmaConfirmacion(ado::TextoSQL& sql, std::string_view usuario, std::string_view ahora, std::string_view folio) {
  sql.Agrega(
      "UPDATE Reservacion SET "
      "   Oper_Ult_Modif = '?', "
      "   Fecha_Ult_Modif= '?', "
      "   Es_Cve_Estado = 'CO' "
      "WHERE Rs_Folio = '?'",
      {usuario, ahora, folio});
}

void ArmaCancelacion(ado::TextoSQL& sql, std::string_view usuario, std::string_view ahora, std::string_view folio) {
  sql.Agrega(
      "UPDATE Reservacion SET "
      "Oper_Ult_Modif = '?', "
      "Fecha_Ult_Modif = '?', "
      "Oper_Baja = '?', "
      "Fecha_Baja= '?', "
      "Es_Cve_Estado = 'CA' "
      "WHERE Rs_Folio = '?'",
      {usuario, ahora, usuario, ahora, folio});
}

void ArmaReactivacion(ado::TextoSQL& sql, std::string_view usuario, std::string_view ahora, std::string_view folio) {
  sql.Agrega(
      "UPDATE Reservacion SET "
      "Oper_Ult_Modif = '?', "
      "Fecha_Ult_Modif = '?', "
      "Oper_Baja = '', "
      "Fecha_Baja= NULL, "
      "Es_Cve_Estado = 'AC' "
      "WHERE Rs_Folio = '?'",
      {usuario, ahora, folio});
}

void frmKV207::Controles_Nuevo() {
  LimpiaGrupos();
  for (const int g : {grupo::kCaptura, grupo::kFijos, grupo::kTarjeta}) publico::Utilerias().HabilitaGrupo(*this, g);
  // Opened by the currency alone.
  txtTipoCambio.enabled(false);
  txtFolio.text("");
  txtFolio.enabled(false);
  Controles.PermiteAccion5(false);
  Controles.PermiteAccion4(false);
  Controles.PermiteAccion1(false);
  Controles.PermiteReactivar(false);
  Controles.TituloConfirmar("");
  // The rate that is proposed is that of the day captured last, although the field then shows today.
  dpFecha.valor(FechaCaptura);
  txtMoneda.text(MonedaDefault.empty() ? MonedaLocal : MonedaDefault);
  MuestraTipoCambio();
  dpFecha.valor(publico::Utilerias().FechaServidor());
  Enfoca(dpFecha);
  dpFecha.editable(PuedeCambiarFecha);
  dpFecha_llegada.valor(LlegadaPropuesta(dpFecha.valor(), DiasReservacion));
  dpFecha_salida.valor(com::MasDias(dpFecha_llegada.valor(), 1));
  // As if typed: what txtDias_Change takes away belongs to the capture before.
  txtDias.text(com::Variant(std::int32_t{com::DiasEntre(dpFecha_llegada.valor(), dpFecha_salida.valor())}));
  tablero_.ConservarVista = false;
  VaciaRenglones();
  UltimoRenglon = 0;
  txtSucursal.text(SucursalDefault);
  DesbloqueaColumnas();
  TarjetaCargada = false;
  TipoFormaPago.clear();
  if (alEmpezar) alEmpezar();
}

void frmKV207::Controles_Editar() {
  // Accepting a reservation that was read in part only would store that part.
  const bool completa = CargaCompleta || (CargaReservacion() && Controles.PermiteAccion4());
  if (!completa) return Controles.ConcluyeAceptar();  // out of the edit that the toolbar has begun
  publico::Utilerias().HabilitaGrupo(*this, grupo::kCaptura);
  txtFolio.enabled(false);
  dpFecha_llegada.editable(true);
  dpFecha_salida.editable(true);
  Controles.TituloConfirmar("");
  Controles.PermiteAccion5(false);
  Controles.PermiteAccion4(false);
  Controles.PermiteAccion1(false);
  Controles.PermiteReactivar(false);
  DesbloqueaColumnas();
  if (frTarjeta.visible()) publico::Utilerias().HabilitaGrupo(*this, grupo::kTarjeta);
  MuestraTipoCambio();
  if (alEmpezar) alEmpezar();
}

void frmKV207::Controles_Limpiar() {
  LimpiaGrupos();
  Controles.PermiteAccion5(false);
  Controles.PermiteAccion4(false);
  Controles.PermiteAccion1(false);
  Controles.PermiteReactivar(false);
  Controles.PermiteAccion2(false);
  dpFecha_llegada.editable(false);
  dpFecha_salida.editable(false);
  txtFolio.text("");
  txtFolio.enabled(true);
  Enfoca(txtFolio);
  Controles.TituloConfirmar("");
  VaciaRenglones();
  UltimoRenglon = 0;
  tablero_.HaySeleccion = false;
  TarjetaCargada = false;
}

void frmKV207::Controles_Cerrar() { Descarga(); }

void frmKV207::Controles_B1Click() {
  const auto cuerpo = [&](TransaccionBD& transaccion) {
    const Sello sello = SelloActual();
    const std::string folio = txtFolio.text();
    transaccion.Comienza();
    ArmaConfirmacion(publico::NuevaSentencia(), sello.usuario, sello.ahora, folio);
    publico::Ejecuta();
    publico::Utilerias().RegistraBitacora(anfitrion::kModulo, folio, anfitrion::kBitacoraConfirma);
    // The mail is part of the confirmation: one that fails undoes it.
    if (Avisa(*this, mensaje::kPreguntaCorreoAlConfirmar) == controles::kAceptar &&
        !EnviaCorreo(*this, folio, kPlantillaConfirmada, mensaje::kPlantillaAlConfirmar, mensaje::kCorreoAlConfirmar)) {
      transaccion.Deshace();
      return;
    }
    transaccion.Confirma(folio, "confirmada");
    Controles_Limpiar();
  };
  AtrapaTransaccion(*this, mensaje::kConfirmar, cuerpo);
}

void frmKV207::Controles_Eliminar() {
  const auto cuerpo = [&](TransaccionBD& transaccion) {
    const Sello sello = SelloActual();
    const std::string folio = txtFolio.text();
    Controles.TituloConfirmar("");
    transaccion.Comienza();
    ArmaCancelacion(publico::NuevaSentencia(), sello.usuario, sello.ahora, folio);
    publico::Ejecuta();
    publico::Utilerias().RegistraBitacora(anfitrion::kModulo, folio, anfitrion::kBitacoraCancela);
    transaccion.Confirma(folio, "cancelada");
    Controles_Limpiar();
  };
  AtrapaTransaccion(*this, mensaje::kEliminar, cuerpo);
}

void frmKV207::Controles_Reactivar() {
  const auto cuerpo = [&](TransaccionBD& transaccion) {
    const Sello sello = SelloActual();
    const std::string folio = txtFolio.text();
    transaccion.Comienza();
    ArmaReactivacion(publico::NuevaSentencia(), sello.usuario, sello.ahora, folio);
    publico::Ejecuta();
    publico::Utilerias().RegistraBitacora(anfitrion::kModulo, folio, anfitrion::kBitacoraReactiva);
    transaccion.Confirma(folio, "reactivada");
    Controles_Limpiar();
  };
  AtrapaTransaccion(*this, mensaje::kReactivar, cuerpo);
}

void frmKV207::Controles_Correo() {
  const std::string folio = txtFolio.text();
  if (Avisa(*this, mensaje::kPreguntaCorreo) == controles::kSi) {
    EnviaCorreo(*this, folio, kPlantillaReservacion, mensaje::kPlantillaCorreo, mensaje::kCorreo);
  } else {
    Imprime(folio);
  }
}

void frmKV207::Imprime(const std::string& folio) {
  const auto impresion = publico::CreaServicio<anfitrion::Impresion>(anfitrion::kClaseImpresion, "Impresion");
  const std::string formato = publico::LeeTexto(anfitrion::parametro::kFormatoImpresion);
  impresion->ImprimeFormato(formato, folio, "", 0, 0, "");
}

void frmKV207::Controles_Registro() {
  Atrapa(*this, mensaje::kRegistro, [&] {
    const auto visor = publico::CreaServicio<anfitrion::VisorRegistro>(anfitrion::kClaseVisorRegistro, "VisorRegistro");
    visor->MuestraRegistro("Reservacion", "Rs_Folio", com::CStr(txtFolio.valor()), "", "", "", "");
  });
}

}  // namespace kv207
