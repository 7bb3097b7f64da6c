// The record viewer: one stored row in words, and what the change log says of it.
#pragma once

#include <QString>
#include <string>
#include <utility>
#include <vector>

#include "host/standalone/conexion.h"

class QWidget;

namespace vista {

// What a row holds, by the names that the screens give its columns: states in words, keys with their names. Columns
// that have no such name stand under their own. Empty when there is no such row; com::Error kArgumento for a table or
// column that does not exist.
std::vector<std::pair<QString, QString>> DatosDeRegistro(autonomo::Conexion& conexion, const std::string& tabla,
                                                         const std::string& columna, const std::string& clave);
void MuestraRegistro(autonomo::Conexion& conexion, const std::string& tabla, const std::string& columna,
                     const std::string& clave, QWidget* padre);

}  // namespace vista
