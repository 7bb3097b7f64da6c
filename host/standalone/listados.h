// What the host records, as tables of typed cells for spreadsheets and paper.
#pragma once

#include <string>
#include <vector>

#include "host/standalone/bandeja.h"
#include "host/standalone/listas.h"
#include "platform/listado/listado.h"

namespace autonomo {

// A text without its empty lines, each line without blanks that are too many.
std::string SinLineasVacias(const std::string& texto);

listado::Listado ListadoDe(const std::vector<EntradaDeBitacora>& entradas);
listado::Listado ListadoDe(const std::vector<CorreoEnBandeja>& correos);
// Who may enter, and what each may do; no passwords.
listado::Listado ListadoDeUsuarios(Conexion& conexion);

}  // namespace autonomo
