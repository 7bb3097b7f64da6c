#include "host/contract/mensajes.h"

namespace anfitrion::mensaje {

const std::vector<DatosMensaje>& Todos() {
  static const std::vector<DatosMensaje> todos = {
      kColumnasTablero, kCargaTablero, kAbrirTablero, kSinProducto, kSinDias, kSinMoneda, kTipoCambioCero,
      kSinHuesped, kSinFormaPago, kSinDisponibilidad, kSinHabitaciones, kGuardarReservacion, kInicioAntesDeLlegada,
      kFinDespuesDeSalida, kExcesoAlGuardar, kTotalNegativo, kGuardarDetalle, kNadaQueReservar, kPlantillaAlGuardar,
      kCorreoAlGuardar, kAceptar, kPlantillaAlConfirmar, kCorreoAlConfirmar, kConfirmar, kEliminar, kPlantillaCorreo,
      kCorreo, kRegistro, kReactivar, kLlegadaAntesDeCaptura, kSalidaAntesDeLlegada, kSinPersonasConfiguradas,
      kExcesoDePersonas, kCambioGrid, kPrecioSinHuesped, kPrecioFallido, kNoExiste, kCargar, kDatosTarjeta, kSinBanco,
      kSinTarjeta, kSinCodigo, kHabitacionInexistente, kBuscaHabitacion, kAuditoriaAntes, kAuditoriaDespues,
      kAuditoriaCompara, kTotalizar, kPreguntaCorreoAlGuardar, kPreguntaCorreoAlConfirmar, kPreguntaCorreo,
      kPreguntaEliminarHabitacion, kNadaMarcado, kCargaPorHabitacion, kCargaPorTipo, kCargaArea, kCargaGrupo,
      kCargaTipo, kPreguntaPerderMarcas,
  };
  return todos;
}

}  // namespace anfitrion::mensaje
