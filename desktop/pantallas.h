// The host's own screens on the desktop: catalogues, client record, price list, record viewer.
#pragma once

#include <QString>
#include <string>

#include "host/standalone/anfitrion.h"

class QWidget;

namespace vista {

class EscritorioQt;

// Offers all of them under the names that the host opens them by.
void RegistraPantallas(EscritorioQt& escritorio, autonomo::Anfitrion& anfitrion);

// Search dialog over the stored reservations, the last to arrive first; the chosen folio, "" when cancelled.
std::string BuscaReservacion(autonomo::Conexion& conexion, EscritorioQt& escritorio);
// The list-and-edit dialog of the catalogues behind a screen code.
void AbreCatalogos(autonomo::Conexion& conexion, const std::string& codigo, QWidget* padre);
// A client's data and reservations.
void MuestraCliente(autonomo::Conexion& conexion, const std::string& clave, QWidget* padre);
// What a night in each room type costs.
void MuestraPrecios(autonomo::Conexion& conexion, com::Fecha noche, QWidget* padre);
// All columns of one row, and what the change log says about its key.
void MuestraRegistro(autonomo::Conexion& conexion, const std::string& tabla, const std::string& columna,
                     const std::string& clave, QWidget* padre);

}  // namespace vista
