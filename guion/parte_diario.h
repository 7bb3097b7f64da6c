// The day's report (recepcion/parte.h) in the outbox: by itself once a day, or by hand.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "host/standalone/conexion.h"
#include "recepcion/parte.h"

namespace guion {

// The report as things stand, read over that connection: of any thread.
recepcion::Parte LeeParteDe(const std::shared_ptr<autonomo::Conexion>& conexion, com::Fecha ahora);

// Queues the report for each address of PARTE_CORREOS; gives how many. com::Error kArgumento when there is none, or one
// that is no address.
int EnviaParte(const std::shared_ptr<autonomo::Conexion>& conexion, com::Fecha ahora, const std::string& usuario);

// Queues the report that was due last, when no program has done so yet: today's from its hour on, before that
// yesterday's, which is missing where no program ran between its hour and midnight (a report that tells when it was
// made; those of days before are not made up for). Gives for how many addresses, 0 when nothing was to be done;
// com::Error kArgumento for parameters that cannot be read. Of two programs one queues it: the outbox itself tells
// which days have theirs.
int EnviaParteDelDia(const std::shared_ptr<autonomo::Conexion>& conexion, com::Fecha ahora);

// The same for a carrier's rounds, which come every few seconds: a day that has its report is not looked up again.
std::function<void(const std::shared_ptr<autonomo::Conexion>&, com::Fecha)> ParteDeCadaDia();

}  // namespace guion
