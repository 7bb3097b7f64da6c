// The confirmation e-mail of a reservation.
#pragma once

#include <string>

#include "host/contract/mensajes.h"
#include "host/contract/parametros.h"
#include "platform/controls/formulario.h"

namespace kv207 {

// Host parameters that name the template and the query of a mail.
struct PlantillaCorreo {
  anfitrion::Parametro plantilla, consulta;
};
// After a save and from the mail button.
inline constexpr PlantillaCorreo kPlantillaReservacion{anfitrion::parametro::kPlantillaReservacion,
                                                       anfitrion::parametro::kConsultaReservacion};
// When a reservation is confirmed.
inline constexpr PlantillaCorreo kPlantillaConfirmada{anfitrion::parametro::kPlantillaConfirmada,
                                                      anfitrion::parametro::kConsultaConfirmada};

// Sends it. False when the host could not: then sinPlantilla, followed by the template's code, or fallido with the
// host's reason has been shown. Failures of the host calls themselves are raised.
bool EnviaCorreo(const controles::Formulario& formulario, const std::string& folio, const PlantillaCorreo& correo,
                 const anfitrion::DatosMensaje& sinPlantilla, const anfitrion::DatosMensaje& fallido);

}  // namespace kv207
