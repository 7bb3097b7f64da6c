// The lists of change log and outbox, with a filter by folio, user and day.
#pragma once

#include "host/standalone/anfitrion.h"

class QWidget;

namespace vista {

void MuestraBitacora(autonomo::Anfitrion& anfitrion, QWidget* padre);
// Mails with their state in words; a chosen one can be sent again.
void MuestraBandeja(autonomo::Anfitrion& anfitrion, QWidget* padre);

}  // namespace vista
