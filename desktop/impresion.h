// Printed confirmations: an HTML template of the hotel (carta_html), filled with a stored reservation, as pages of
// letter size (pliego) that are looked at (vista_previa) and kept as a PDF.
#pragma once

#include <functional>

#include "desktop/vista_previa.h"
#include "host/standalone/anfitrion.h"
#include "host/standalone/carta_html.h"
#include "host/standalone/pliego.h"

namespace vista {

// Puts a print service before the host's own: the host records the print, and the confirmation is shown with a preview,
// to be opened in the system's viewer or saved, while the entry lasts. frente: window that the dialog belongs to.
[[nodiscard]] com::Inscripcion InstalaImpresion(autonomo::Anfitrion& anfitrion,
                                                const std::function<QWidget*()>& frente);

}  // namespace vista
