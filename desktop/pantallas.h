// The host's own screens on the desktop: catalogues, client record, price list, record viewer.
#pragma once

#include <QString>
#include <functional>
#include <string>

#include "desktop/editor_catalogos.h"
#include "host/standalone/anfitrion.h"

class QWidget;

namespace vista {

class EscritorioQt;

// Offers all of them under the names that the host opens them by. abre opens a stored reservation.
void RegistraPantallas(EscritorioQt& escritorio, autonomo::Anfitrion& anfitrion,
                       const std::function<void(const std::string& folio)>& abre);

// Search dialog over the stored reservations, the last to arrive first; the chosen folio, "" when cancelled.
std::string BuscaReservacion(autonomo::Conexion& conexion, EscritorioQt& escritorio);
// The configuration, for a user who has the right; says so to another.
void AbreConfiguracion(autonomo::Anfitrion& anfitrion, QWidget* padre, const HojaInicial& hoja = {});
// A client's data and reservations; folio of the one that is to be opened, "" none.
std::string MuestraCliente(autonomo::Conexion& conexion, const std::string& clave, QWidget* padre);
// What a night in each room type costs.
void MuestraPrecios(autonomo::Conexion& conexion, com::Fecha noche, QWidget* padre);
}  // namespace vista
