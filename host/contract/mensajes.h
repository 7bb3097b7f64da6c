// All messages of the two screens: identifier, style, caption and text. Handlers refer to them by name.
#pragma once

#include <string_view>
#include <vector>

#include "platform/controls/caja.h"

namespace anfitrion {

// texto is what the message shows, or what it begins with; "" where the text comes from elsewhere (an error's
// description, the board's MensajeError, a text of the host).
struct DatosMensaje {
  std::string_view id;
  int estilo;  // as in controles::CajaMensaje
  std::string_view titulo;
  std::string_view texto;
};

namespace mensaje {
namespace caja = controles::caja;
// clang-format off
inline constexpr DatosMensaje kColumnasTablero{"ERR-ID:7500001", caja::kCritico, "cmdDisponibilidad_Click()",
    ""};
inline constexpr DatosMensaje kCargaTablero{"ERR-ID:7500002", caja::kCritico, "cmdDisponibilidad_Click()",
    ""};
inline constexpr DatosMensaje kAbrirTablero{"ERR-ID:7500003", caja::kCritico, "cmdDisponibilidad_Click()",
    ""};
inline constexpr DatosMensaje kSinProducto{"ERR-ID:7500004", caja::kInforme, "Imposible agregar la habitación",
    "No se encontró un producto relacionado al tipo de habitación"};
inline constexpr DatosMensaje kSinDias{"ERR-ID:7500005", caja::kAviso, "Vormalix",
    "Debe especificar una cantidad de días"};
inline constexpr DatosMensaje kSinMoneda{"ERR-ID:7500006", caja::kAviso, "Vormalix",
    "Debe especificar una moneda"};
inline constexpr DatosMensaje kTipoCambioCero{"ERR-ID:7500007", caja::kAviso, "Vormalix",
    "El tipo de cambio no puede ser menor o igual a 0"};
inline constexpr DatosMensaje kSinHuesped{"ERR-ID:7500008", caja::kAviso, "Vormalix",
    "Debe especificar un huésped"};
inline constexpr DatosMensaje kSinFormaPago{"ERR-ID:7500009", caja::kAviso, "Vormalix",
    "Debe especificar una forma de pago"};
inline constexpr DatosMensaje kSinDisponibilidad{"ERR-ID:7500010", caja::kAviso, "Controles_Aceptar()",
    ""};
inline constexpr DatosMensaje kSinHabitaciones{"ERR-ID:7500011", caja::kAviso, "Vormalix",
    "No hay habitaciones para grabar"};
inline constexpr DatosMensaje kGuardarReservacion{"ERR-ID:7500012", caja::kCritico, "Vormalix",
    ""};
inline constexpr DatosMensaje kInicioAntesDeLlegada{"ERR-ID:7500013", caja::kAviso, "Vormalix",
    "La fecha inicial de reservación de la habitación no puede ser menor a la fecha de llegada"};
inline constexpr DatosMensaje kFinDespuesDeSalida{"ERR-ID:7500014", caja::kAviso, "Vormalix",
    "La fecha final de reservación de la habitación no puede ser mayor a la fecha de salida"};
inline constexpr DatosMensaje kExcesoAlGuardar{"ERR-ID:7500015", caja::kAviso, "Vormalix",
    "El númeor de personas excede el máximo para la habitación: "};
inline constexpr DatosMensaje kTotalNegativo{"ERR-ID:7500016", caja::kAviso, "Vormalix",
    "El importe total de la habitación '"};
inline constexpr DatosMensaje kGuardarDetalle{"ERR-ID:7500017", caja::kCritico, "Vormalix",
    ""};
inline constexpr DatosMensaje kNadaQueReservar{"ERR-ID:7500018", caja::kAviso, "Vormalix",
    "No puede hacer una reservación sin especificar la(s) habitación(es) y persona (s) a reservar"};
inline constexpr DatosMensaje kPlantillaAlGuardar{"ERR-ID:7500019", caja::kCritico, "Atención",
    "Imposible enviar correo, verifique la plantilla de email: "};
inline constexpr DatosMensaje kCorreoAlGuardar{"ERR-ID:7500020", caja::kCritico, "Atención",
    ""};
inline constexpr DatosMensaje kAceptar{"ERR-ID:7500021", caja::kCritico, "Controles_Aceptar()",
    ""};
inline constexpr DatosMensaje kPlantillaAlConfirmar{"ERR-ID:7500022", caja::kCritico, "Atención",
    "Imposible enviar correo, verifique la plantilla de email: "};
inline constexpr DatosMensaje kCorreoAlConfirmar{"ERR-ID:7500023", caja::kCritico, "Atención",
    ""};
inline constexpr DatosMensaje kConfirmar{"ERR-ID:7500024", caja::kCritico, "Controles_B1Click()",
    ""};
inline constexpr DatosMensaje kEliminar{"ERR-ID:7500025", caja::kCritico, "Controles_Eliminar()",
    ""};
inline constexpr DatosMensaje kPlantillaCorreo{"ERR-ID:7500026", caja::kCritico, "Atención",
    "Imposible enviar correo, verifique la plantilla de email: "};
inline constexpr DatosMensaje kCorreo{"ERR-ID:7500027", caja::kCritico, "Atención",
    ""};
inline constexpr DatosMensaje kRegistro{"ERR-ID:7500028", caja::kCritico, "Vormalix",
    ""};
inline constexpr DatosMensaje kReactivar{"ERR-ID:7500029", caja::kCritico, "Controles_Reactivar()",
    ""};
inline constexpr DatosMensaje kLlegadaAntesDeCaptura{"ERR-ID:7500030", caja::kAviso, "Fecha",
    "Debe seleccionar una fecha mayor a la fecha de captura"};
inline constexpr DatosMensaje kSalidaAntesDeLlegada{"ERR-ID:7500032", caja::kAviso, "Fecha",
    "Debe seleccionar una fecha mayor a: "};
inline constexpr DatosMensaje kSinPersonasConfiguradas{"ERR-ID:7500033", caja::kAviso, "Vormalix",
    "La habitación: "};
inline constexpr DatosMensaje kExcesoDePersonas{"ERR-ID:7500034", caja::kAviso, "Vormalix",
    "El númeor de personas capturadas para la habitación: "};
inline constexpr DatosMensaje kCambioGrid{"ERR-ID:7500035", caja::kCritico, "ssReservaciones_Change()",
    ""};
inline constexpr DatosMensaje kPrecioSinHuesped{"ERR-ID:7500036", caja::kAviso, "CalculaImportes()",
    "Debe especificar un huésped válido"};
inline constexpr DatosMensaje kPrecioFallido{"ERR-ID:7500037", caja::kAviso, "Vormalix",
    ""};
inline constexpr DatosMensaje kNoExiste{"ERR-ID:7500038", caja::kInforme, "",
    "La reservación especificada no existe"};
inline constexpr DatosMensaje kCargar{"ERR-ID:7500039", caja::kCritico, "txtFolio_Enter()",
    ""};
inline constexpr DatosMensaje kDatosTarjeta{"ERR-ID:7500040", caja::kCritico, "Datos_Tarjeta()",
    ""};
inline constexpr DatosMensaje kSinBanco{"ERR-ID:7500041", caja::kAviso, "Atención",
    "Debe especificar un banco"};
inline constexpr DatosMensaje kSinTarjeta{"ERR-ID:7500042", caja::kAviso, "Atención",
    "Debe especificar un número de tarjeta"};
inline constexpr DatosMensaje kSinCodigo{"ERR-ID:7500043", caja::kAviso, "Atención",
    "Debe especificar un código de seguridad"};
inline constexpr DatosMensaje kHabitacionInexistente{"ERR-ID:7500045", caja::kAviso, "Vormalix",
    "La habitación no existe o está de baja"};
inline constexpr DatosMensaje kBuscaHabitacion{"ERR-ID:7500046", caja::kCritico, "Busca_Habitacion()",
    ""};
inline constexpr DatosMensaje kAuditoriaAntes{"ERR-ID:7500047", caja::kCritico, "Resevacion_Antes()",
    ""};
inline constexpr DatosMensaje kAuditoriaDespues{"ERR-ID:7500048", caja::kCritico, "Resevacion_Despues()",
    ""};
inline constexpr DatosMensaje kAuditoriaCompara{"ERR-ID:7500049", caja::kCritico, "Analizar_Reservacion()",
    ""};
inline constexpr DatosMensaje kTotalizar{"ERR-ID:7500050", caja::kCritico, "Totalizar()",
    ""};
inline constexpr DatosMensaje kPreguntaCorreoAlGuardar{"ERR-ID:7500051",
    caja::kPregunta | caja::kSiNo | caja::kSegundo, "Vormalix",
    "¿Desea enviar emaiñ de confirmación?"};
inline constexpr DatosMensaje kPreguntaCorreoAlConfirmar{"ERR-ID:7500052",
    caja::kPregunta | caja::kAceptarCancelar | caja::kSegundo, "Vormalix",
    "¿Desea enviar email de confirmación?"};
inline constexpr DatosMensaje kPreguntaCorreo{"ERR-ID:7500053",
    caja::kPregunta | caja::kSiNo | caja::kSegundo, "Vormalix",
    "¿Desea envuar email de confirmación??"};
inline constexpr DatosMensaje kPreguntaEliminarHabitacion{"ERR-ID:7500054",
    caja::kInforme | caja::kSiNo | caja::kSegundo, "Vormalix",
    "¿Está seguro de eliminar la habitación seleccionada?"};
inline constexpr DatosMensaje kNadaMarcado{"ERR-ID:7500055", caja::kAviso, "Vormalix",
    "Debe seleccionar al menos una habitación"};
inline constexpr DatosMensaje kCargaPorHabitacion{"ERR-ID:7500056", caja::kCritico, "opHabitacion_Click()",
    ""};
inline constexpr DatosMensaje kCargaPorTipo{"ERR-ID:7500057", caja::kCritico, "opTipoHabitacion_Click()",
    ""};
inline constexpr DatosMensaje kCargaArea{"ERR-ID:7500058", caja::kCritico, "txtArea_Enter()",
    ""};
inline constexpr DatosMensaje kCargaGrupo{"ERR-ID:7500059", caja::kCritico, "txtGrupo_Habitacion_Enter()",
    ""};
inline constexpr DatosMensaje kCargaTipo{"ERR-ID:7500060", caja::kCritico, "txtTipo_Habitacion_Enter()",
    ""};
inline constexpr DatosMensaje kPreguntaPerderMarcas{"ERR-ID:7500061",
    caja::kAviso | caja::kSiNo | caja::kSegundo, "Confirmación",
    "Los datos especificados previamente se perderan\r\n¿Desea continuar?"};
// clang-format on

// Every message, in numeric order.
const std::vector<DatosMensaje>& Todos();
}  // namespace mensaje

}  // namespace anfitrion
