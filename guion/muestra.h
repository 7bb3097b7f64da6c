// What a "muestra" order tells about the screens and about what the host recorded.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "component/nombres.h"
#include "guion/json.h"
#include "host/standalone/anfitrion.h"
#include "host/standalone/bandeja.h"
#include "host/standalone/listas.h"
#include "platform/controls/barra.h"
#include "platform/controls/control.h"
#include "platform/controls/formulario.h"
#include "platform/controls/grid.h"

namespace guion {

using kv207::kColumnasFijas;

// Text, value, switches and place (twips) of a control, and what else its kind has.
Json MuestraControl(const controles::Control& control);
// What a clerk sees of every field, box, option and frame: text, and whether it is open and shown.
Json MuestraEntradas(const controles::Formulario& formulario);
Json MuestraBarra(const controles::ScreenToolbar& barra);
// The screen's own fields.
Json MuestraCampos(const controles::Formulario& formulario);
// The room lines, all columns by key. Empty cells are null.
Json MuestraRenglones(const controles::Grid& grid);
Json MuestraColumnas(const controles::Grid& grid);
// Day columns and rows of the board with the text and the style of every cell.
Json MuestraTablero(const controles::Grid& grid);

// Rows of the lists of change log and outbox.
Json MuestraLista(const std::vector<autonomo::EntradaDeBitacora>& entradas);
Json MuestraLista(const std::vector<autonomo::CorreoEnBandeja>& correos);
// What the host has noted of its own doing, "bitacora", "correos", "impresiones", "visor" or "pantallas", oldest first,
// and "novedad", the last thing done; nothing for another name.
std::optional<Json> MuestraAnotado(autonomo::Anfitrion& anfitrion, std::string_view nombre);

}  // namespace guion
