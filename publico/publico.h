// Publico: the process-wide objects of the component and its one text buffer for SQL statements.
#pragma once

#include "host/contract/servicios.h"
#include "platform/ado/texto_sql.h"

namespace publico {

// Creates Sistema and Utilerias; nothing when they exist. Error kClase when the host has not registered them. Also
// gives the lookup fields their way to the database.
void Arranca();
bool Arrancado();

// Error kSinObjeto before start-up.
anfitrion::Sistema& Sistema();
anfitrion::Utilerias& Utilerias();

// Exists while the reservation screen is loaded; Error kSinObjeto otherwise.
anfitrion::Hotel& Hotel();
void CreaHotel();
void LiberaHotel();

// The buffer in which every screen builds its statements, emptied by NuevaSentencia.
ado::TextoSQL& Sql();
ado::TextoSQL& NuevaSentencia();
// Runs the buffer on the connection just fetched.
ado::RecordsetPtr Ejecuta();

// For tests: forgets the process-wide objects, so that another host can be used.
void Olvida();

}  // namespace publico
