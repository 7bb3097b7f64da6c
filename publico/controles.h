// Names of the screens, and of those of their controls that others ask for: the front desk, scripts, views.
#pragma once

namespace kv207 {

namespace forma {
inline constexpr const char *kReservacion = "frmKV207", *kTablero = "frmDisponibilidad";
}  // namespace forma

namespace control {

inline constexpr const char* kBarra = "Controles";  // of both

// The reservation screen's.
inline constexpr const char* kFolio = "txtFolio";
inline constexpr const char* kFecha = "dpFecha";  // of the capture
inline constexpr const char* kSucursal = "txtSucursal";
inline constexpr const char *kCliente = "txtCliente", *kFichaCliente = "cmdCliente";
inline constexpr const char *kHuesped = "txtHuesped", *kNombreHuesped = "txtNHuesped", *kFichaHuesped = "cmdHuesped";
inline constexpr const char* kFormaPago = "txtForma_Pago";
inline constexpr const char *kMoneda = "txtMoneda", *kTipoCambio = "txtTipoCambio";
inline constexpr const char *kLlegada = "dpFecha_llegada", *kSalida = "dpFecha_salida", *kDias = "txtDias";
inline constexpr const char* kReferencia = "txtReferencia";
inline constexpr const char *kNotas = "txtNotas", *kEditaNotas = "cmdNotas";
inline constexpr const char* kTarjeta = "frTarjeta";  // the frame of the card's fields
inline constexpr const char* kAbreTablero = "cmdDisponibilidad";
inline constexpr const char* kRenglones = "ssReservaciones";
inline constexpr const char *kTotales = "frTotales", *kSubTotal = "txtSubTotal", *kImpuestos = "txtImpuestos",
                            *kTotal = "txtTotal";

// The board's.
inline constexpr const char *kGrupo = "txtGrupo_Habitacion", *kArea = "txtArea";
inline constexpr const char *kTipo = "txtTipo_Habitacion", *kNombreTipo = "txtNTipo_Habitacion";
inline constexpr const char* kPorHabitacion = "opHabitacion";
inline constexpr const char* kPrecios = "cmdPrecios";
inline constexpr const char* kNoches = "ssDisponibilidad";

}  // namespace control

// Field groups, by the numbers that the host's LimpiaGrupo and HabilitaGrupo take.
namespace grupo {
inline constexpr int kCaptura = 1;  // what may change in an edit; on the board, the filters
inline constexpr int kFijos = 2;    // what a capture settles
inline constexpr int kTarjeta = 4;  // the card's
}  // namespace grupo

}  // namespace kv207
