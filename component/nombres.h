// Names by which views and scripts know parts of the screens: controls, column keys and, on the board, cell states.
#pragma once

#include "availability/tablero.h"
#include "publico/columnas.h"
#include "publico/controles.h"
