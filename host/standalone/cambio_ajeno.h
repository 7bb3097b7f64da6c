// What a clerk is told when another one changed the reservation that she works on, and what she asked for is not done.
#pragma once

#include <string>
#include <string_view>

#include "host/standalone/visto.h"
#include "platform/com/error.h"

namespace autonomo {

// Who changed it since it was seen, when and what, as its change log has it, and the fields that differ. folio: as the
// clerk asked for it; ahora: what is there now.
std::string TextoCambioAjeno(ConexionDeMotor& motor, const std::string& folio, const Vista& vista, const Imagen& ahora);

// The engine undid the transaction because of another one, as often as it is run again.
com::Error Vencida(const std::string& sentencia);
// ajeno: what another one has changed since the save was checked, as TextoCambioAjeno gives it.
com::Error GuardadoSobreOtro(const std::string& ajeno);

// Whether a change to that state code is one that the screens make.
bool EsPasoDeEstado(std::string_view nuevo);
// nuevo: such a code; ajeno: what another one changed since the clerk saw it, "" nothing. com::Error kRestriccion, as
// the clerk is told it, when the reservation is gone, when its state does not lead there, or when there is such a
// change.
void ExigePasoDeEstado(ConexionDeMotor& motor, const std::string& folio, std::string_view nuevo,
                       const std::string& ajeno);

}  // namespace autonomo
