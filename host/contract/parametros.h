// The hotel's parameters and the users' rights, by name.
#pragma once

namespace anfitrion {

// What Sistema::LeeParametro is asked for. tipo: "T" text, "B" Boolean, "N" number, "" the caller converts. defecto
// holds while no value is stored.
struct Parametro {
  const char* clave;
  const char* tipo;
  const char* defecto;
};

namespace parametro {
inline constexpr Parametro kMayusculas{"CAT_FORZAR_MAYUSCULAS", "", ""};
inline constexpr Parametro kMonedaLocal{"FIN_MONEDA_LOCAL", "", ""};
inline constexpr Parametro kSobreventa{"HT_OVER_BOOKING", "B", "1"};
inline constexpr Parametro kDiasReservacion{"HT_DIAS_RESERVACION", "N", "1"};
inline constexpr Parametro kMaximoNoches{"HT_MAXIMO_NOCHES", "N", "366"};
inline constexpr Parametro kSucursal{"HT_SUCURSAL_DEFAULT", "T", "0001"};
inline constexpr Parametro kClienteWeb{"HT_CLIENTE_RESERVACION_WEB", "T", ""};
// Zero-fill masks of keys.
inline constexpr Parametro kFormatoCliente{"FTO_CLIENTE", "T", "0000000000"};
inline constexpr Parametro kFormatoFormaPago{"FTO_FORMA_PAGO", "T", "0000"};
inline constexpr Parametro kFormatoHabitacion{"FTO_HABITACION", "T", "0000"};
inline constexpr Parametro kFormatoTipo{"FTO_TIPO_HABITACION", "T", "0000"};
inline constexpr Parametro kFormatoGrupo{"FTO_GRUPO_HABITACION", "T", "0000"};
inline constexpr Parametro kFormatoArea{"FTO_AREA", "T", "0000"};
// Colours of the board's states, 0x00BBGGRR as a whole number; empty for the board's own.
inline constexpr Parametro kColorDisponible{"HT_COLOR_DISPONIBLE", "", ""};
inline constexpr Parametro kColorOcupado{"HT_COLOR_OCUPADO", "", ""};
inline constexpr Parametro kColorReservado{"HT_COLOR_RESERVADO", "", ""};
inline constexpr Parametro kColorBloqueado{"HT_COLOR_BLOQUEADO", "", ""};
// Print format, and template and query of the two mails.
inline constexpr Parametro kFormatoImpresion{"FTO_IMP_RESERVACION", "T", "HT0001"};
inline constexpr Parametro kPlantillaReservacion{"PL_MAIL_RESERVACION_HOTEL", "T", "PL16"};
inline constexpr Parametro kConsultaReservacion{"PL_MAIL_RESERVACION_HOTEL_CONSULTA", "T", "EMAIL_RESERVACION"};
inline constexpr Parametro kPlantillaConfirmada{"PL_MAIL_RESERVACION_HOTEL_CONFIRMADA", "T", "PL17"};
inline constexpr Parametro kConsultaConfirmada{"PL_MAIL_RESERVACION_HOTEL_CONFIRMADA_CONSULTA", "T",
                                               "RESERVACION_EMAIL_CONFIRMADA"};
// Read by the host alone.
inline constexpr Parametro kNombreHotel{"HT_NOMBRE", "T", "Hotel"};
inline constexpr Parametro kDemostracion{"HT_DEMOSTRACION", "B", "0"};
inline constexpr Parametro kFormatoFolio{"HT_FORMATO_FOLIO", "T", "0000000000"};
inline constexpr Parametro kRespaldoCarpeta{"HT_RESPALDO_CARPETA", "T", "respaldos"};
inline constexpr Parametro kRespaldoDias{"HT_RESPALDO_DIAS", "N", "14"};
inline constexpr Parametro kBloqueoMinutos{"HT_BLOQUEO_MINUTOS", "N", "15"};
// Delivery of mails.
inline constexpr Parametro kCorreoServidor{"CORREO_SERVIDOR", "T", ""};
inline constexpr Parametro kCorreoPuerto{"CORREO_PUERTO", "N", "0"};
inline constexpr Parametro kCorreoSeguridad{"CORREO_SEGURIDAD", "T", ""};
inline constexpr Parametro kCorreoCertificados{"CORREO_CERTIFICADOS", "T", ""};
inline constexpr Parametro kCorreoUsuario{"CORREO_USUARIO", "T", ""};
inline constexpr Parametro kCorreoRemitente{"CORREO_REMITENTE", "T", ""};
// The day's report by mail: addresses with commas between them, and the hour from which it leaves.
inline constexpr Parametro kParteCorreos{"PARTE_CORREOS", "T", ""};
inline constexpr Parametro kParteHora{"PARTE_HORA", "N", "22"};
}  // namespace parametro

// Options of Sistema::TienePermiso.
namespace permiso {
inline constexpr const char* kFecha = "CHFECHA";         // capture date
inline constexpr const char* kDescuento = "CHDS02";      // discounts of a line
inline constexpr const char* kPrecio = "CHPR02";         // prices of a line
inline constexpr const char* kTipoCambio = "CHTC01";     // takes the exchange rate away from the user
inline constexpr const char* kConfiguracion = "CHCONF";  // the host's own set-up
inline constexpr const char* kTarjetas = "CHTARJ";       // card numbers and codes in clear
}  // namespace permiso

}  // namespace anfitrion
