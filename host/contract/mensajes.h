// All messages of the two screens: identifier, style, caption and text. Handlers refer to them by name.
#pragma once

#include <string_view>
#include <vector>

namespace anfitrion {

// texto is what the message shows, or what it begins with; "" where the text comes from elsewhere (an error's
// description, the board's MensajeError, a text of the host).
struct DatosMensaje {
  std::string_view id;
  int estilo;
  std::string_view titulo;
  std::string_view texto;
};

namespace mensaje {
// clang-format off
inline constexpr DatosMensaje kColumnasTablero{"ERR-ID:7500001", 16, "cmdDisponibilidad_Click()",
    ""};
inline constexpr DatosMensaje kCargaTablero{"ERR-ID:7500002", 16, "cmdDisponibilidad_Click()",
    ""};
inline constexpr DatosMensaje kAbrirTablero{"ERR-ID:7500003", 16, "cmdDisponibilidad_Click()",
    ""};
inline constexpr DatosMensaje kSinProducto{"ERR-ID:7500004", 64, "Imposible agregar la habitación",
    "No se encontró un producto relacionado al tipo de habitación"};
inline constexpr DatosMensaje kSinDias{"ERR-ID:7500005", 48, "Vormalix",
    "Debe especificar una cantidad de días"};
inline constexpr DatosMensaje kSinMoneda{"ERR-ID:7500006", 48, "Vormalix",
    "Debe especificar una moneda"};
inline constexpr DatosMensaje kTipoCambioCero{"ERR-ID:7500007", 48, "Vormalix",
    "El tipo de cambio no puede ser menor o igual a 0"};
inline constexpr DatosMensaje kSinHuesped{"ERR-ID:7500008", 48, "Vormalix",
    "Debe especificar un huésped"};
inline constexpr DatosMensaje kSinFormaPago{"ERR-ID:7500009", 48, "Vormalix",
    "Debe especificar una forma de pago"};
inline constexpr DatosMensaje kSinDisponibilidad{"ERR-ID:7500010", 48, "Controles_Aceptar()",
    ""};
inline constexpr DatosMensaje kSinHabitaciones{"ERR-ID:7500011", 48, "Vormalix",
    "No hay habitaciones para grabar"};
inline constexpr DatosMensaje kGuardarReservacion{"ERR-ID:7500012", 16, "Vormalix",
    ""};
inline constexpr DatosMensaje kInicioAntesDeLlegada{"ERR-ID:7500013", 48, "Vormalix",
    "La fecha inicial de reservación de la habitación no puede ser menor a la fecha de llegada"};
inline constexpr DatosMensaje kFinDespuesDeSalida{"ERR-ID:7500014", 48, "Vormalix",
    "La fecha final de reservación de la habitación no puede ser mayor a la fecha de salida"};
inline constexpr DatosMensaje kExcesoAlGuardar{"ERR-ID:7500015", 48, "Vormalix",
    "El númeor de personas excede el máximo para la habitación: "};
inline constexpr DatosMensaje kTotalNegativo{"ERR-ID:7500016", 48, "Vormalix",
    "El importe total de la habitación '"};
inline constexpr DatosMensaje kGuardarDetalle{"ERR-ID:7500017", 16, "Vormalix",
    ""};
inline constexpr DatosMensaje kNadaQueReservar{"ERR-ID:7500018", 48, "Vormalix",
    "No puede hacer una reservación sin especificar la(s) habitación(es) y persona (s) a reservar"};
inline constexpr DatosMensaje kPlantillaAlGuardar{"ERR-ID:7500019", 16, "Atención",
    "Imposible enviar correo, verifique la plantilla de email: "};
inline constexpr DatosMensaje kCorreoAlGuardar{"ERR-ID:7500020", 16, "Atención",
    ""};
inline constexpr DatosMensaje kAceptar{"ERR-ID:7500021", 16, "Controles_Aceptar()",
    ""};
inline constexpr DatosMensaje kPlantillaAlConfirmar{"ERR-ID:7500022", 16, "Atención",
    "Imposible enviar correo, verifique la plantilla de email: "};
inline constexpr DatosMensaje kCorreoAlConfirmar{"ERR-ID:7500023", 16, "Atención",
    ""};
inline constexpr DatosMensaje kConfirmar{"ERR-ID:7500024", 16, "Controles_B1Click()",
    ""};
inline constexpr DatosMensaje kEliminar{"ERR-ID:7500025", 16, "Controles_Eliminar()",
    ""};
inline constexpr DatosMensaje kPlantillaCorreo{"ERR-ID:7500026", 16, "Atención",
    "Imposible enviar correo, verifique la plantilla de email: "};
inline constexpr DatosMensaje kCorreo{"ERR-ID:7500027", 16, "Atención",
    ""};
inline constexpr DatosMensaje kRegistro{"ERR-ID:7500028", 16, "Vormalix",
    ""};
inline constexpr DatosMensaje kReactivar{"ERR-ID:7500029", 16, "Controles_Reactivar()",
    ""};
inline constexpr DatosMensaje kLlegadaAntesDeCaptura{"ERR-ID:7500030", 48, "Fecha",
    "Debe seleccionar una fecha mayor a la fecha de captura"};
inline constexpr DatosMensaje kSalidaAntesDeLlegada{"ERR-ID:7500032", 48, "Fecha",
    "Debe seleccionar una fecha mayor a: "};
inline constexpr DatosMensaje kSinPersonasConfiguradas{"ERR-ID:7500033", 48, "Vormalix",
    "La habitación: "};
inline constexpr DatosMensaje kExcesoDePersonas{"ERR-ID:7500034", 48, "Vormalix",
    "El númeor de personas capturadas para la habitación: "};
inline constexpr DatosMensaje kCambioGrid{"ERR-ID:7500035", 16, "ssReservaciones_Change()",
    ""};
inline constexpr DatosMensaje kPrecioSinHuesped{"ERR-ID:7500036", 48, "CalculaImportes()",
    "Debe especificar un huésped válido"};
inline constexpr DatosMensaje kPrecioFallido{"ERR-ID:7500037", 48, "Vormalix",
    ""};
inline constexpr DatosMensaje kNoExiste{"ERR-ID:7500038", 64, "",
    "La reservación especificada no existe"};
inline constexpr DatosMensaje kCargar{"ERR-ID:7500039", 16, "txtFolio_Enter()",
    ""};
inline constexpr DatosMensaje kDatosTarjeta{"ERR-ID:7500040", 16, "Datos_Tarjeta()",
    ""};
inline constexpr DatosMensaje kSinBanco{"ERR-ID:7500041", 48, "Atención",
    "Debe especificar un banco"};
inline constexpr DatosMensaje kSinTarjeta{"ERR-ID:7500042", 48, "Atención",
    "Debe especificar un número de tarjeta"};
inline constexpr DatosMensaje kSinCodigo{"ERR-ID:7500043", 48, "Atención",
    "Debe especificar un código de seguridad"};
inline constexpr DatosMensaje kHabitacionInexistente{"ERR-ID:7500045", 48, "Vormalix",
    "La habitación no existe o está de baja"};
inline constexpr DatosMensaje kBuscaHabitacion{"ERR-ID:7500046", 16, "Busca_Habitacion()",
    ""};
inline constexpr DatosMensaje kAuditoriaAntes{"ERR-ID:7500047", 16, "Resevacion_Antes()",
    ""};
inline constexpr DatosMensaje kAuditoriaDespues{"ERR-ID:7500048", 16, "Resevacion_Despues()",
    ""};
inline constexpr DatosMensaje kAuditoriaCompara{"ERR-ID:7500049", 16, "Analizar_Reservacion()",
    ""};
inline constexpr DatosMensaje kTotalizar{"ERR-ID:7500050", 16, "Totalizar()",
    ""};
inline constexpr DatosMensaje kPreguntaCorreoAlGuardar{"ERR-ID:7500051", 292, "Vormalix",
    "¿Desea enviar emaiñ de confirmación?"};
inline constexpr DatosMensaje kPreguntaCorreoAlConfirmar{"ERR-ID:7500052", 289, "Vormalix",
    "¿Desea enviar email de confirmación?"};
inline constexpr DatosMensaje kPreguntaCorreo{"ERR-ID:7500053", 292, "Vormalix",
    "¿Desea envuar email de confirmación??"};
inline constexpr DatosMensaje kPreguntaEliminarHabitacion{"ERR-ID:7500054", 324, "Vormalix",
    "¿Está seguro de eliminar la habitación seleccionada?"};
inline constexpr DatosMensaje kNadaMarcado{"ERR-ID:7500055", 48, "Vormalix",
    "Debe seleccionar al menos una habitación"};
inline constexpr DatosMensaje kCargaPorHabitacion{"ERR-ID:7500056", 16, "opHabitacion_Click()",
    ""};
inline constexpr DatosMensaje kCargaPorTipo{"ERR-ID:7500057", 16, "opTipoHabitacion_Click()",
    ""};
inline constexpr DatosMensaje kCargaArea{"ERR-ID:7500058", 16, "txtArea_Enter()",
    ""};
inline constexpr DatosMensaje kCargaGrupo{"ERR-ID:7500059", 16, "txtGrupo_Habitacion_Enter()",
    ""};
inline constexpr DatosMensaje kCargaTipo{"ERR-ID:7500060", 16, "txtTipo_Habitacion_Enter()",
    ""};
inline constexpr DatosMensaje kPreguntaPerderMarcas{"ERR-ID:7500061", 308, "Confirmación",
    "Los datos especificados previamente se perderan\r\n¿Desea continuar?"};
// clang-format on

// Every message, in numeric order.
const std::vector<DatosMensaje>& Todos();
}  // namespace mensaje

}  // namespace anfitrion
