// What stands between the services and the engine's connection, for every engine alike:
//
// - Nobody's work is overwritten. It sees which reservation a statement of the screens loads, with its version
//   (visto.h); a save and a change of state act on that version, inside their transaction. What the clerk is told when
//   another one was there before her stands in cambio_ajeno.h.
// - No lock is held while a person thinks. A transaction that is let go is rolled back in the engine; its writes are
//   kept and run again, with their checks, when it goes on.
// - No deadlock is shown: a transaction that the engine undid because of another one is run again in the same way.
#pragma once

#include <memory>

#include "host/standalone/conexion.h"

namespace autonomo {

std::shared_ptr<Conexion> Vigila(std::shared_ptr<ConexionDeMotor> motor);

}  // namespace autonomo
