// The confirmation e-mail of a reservation.
#pragma once

#include <string>

#include "host/contract/mensajes.h"
#include "platform/controls/formulario.h"

namespace kv207 {

// Host parameters that name the template and the query of a mail, each with its default.
struct PlantillaCorreo {
  const char* plantilla;
  const char* plantillaDefecto;
  const char* consulta;
  const char* consultaDefecto;
};
// After a save and from the mail button.
inline constexpr PlantillaCorreo kPlantillaReservacion{"PL_MAIL_RESERVACION_HOTEL", "PL16",
                                                       "PL_MAIL_RESERVACION_HOTEL_CONSULTA", "EMAIL_RESERVACION"};
// When a reservation is confirmed.
inline constexpr PlantillaCorreo kPlantillaConfirmada{"PL_MAIL_RESERVACION_HOTEL_CONFIRMADA", "PL17",
                                                      "PL_MAIL_RESERVACION_HOTEL_CONFIRMADA_CONSULTA",
                                                      "RESERVACION_EMAIL_CONFIRMADA"};

// Sends it. False when the host could not: then sinPlantilla, followed by the template's code, or fallido with the
// host's reason has been shown. Failures of the host calls themselves are raised.
bool EnviaCorreo(const controles::Formulario& formulario, const std::string& folio, const PlantillaCorreo& correo,
                 const anfitrion::DatosMensaje& sinPlantilla, const anfitrion::DatosMensaje& fallido);

}  // namespace kv207
