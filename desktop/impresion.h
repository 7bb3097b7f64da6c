// Printed confirmations: an HTML template of the hotel (plantilla), filled with a stored reservation, as pages of
// letter size (pliego) that are looked at (vista_previa) and kept as a PDF.
#pragma once

#include <functional>

#include "desktop/plantilla.h"
#include "desktop/pliego.h"
#include "desktop/vista_previa.h"
#include "host/standalone/anfitrion.h"

namespace vista {

// Puts a print service before the host's own: the host records the print, and the confirmation is shown with a preview,
// to be opened in the system's viewer or saved, while the entry lasts. frente: window that the dialog belongs to.
[[nodiscard]] com::Inscripcion InstalaImpresion(autonomo::Anfitrion& anfitrion, std::function<QWidget*()> frente);

}  // namespace vista
