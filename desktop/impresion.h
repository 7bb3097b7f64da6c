// Printed confirmations: an HTML template of the hotel, filled with a stored reservation, as a PDF of letter size.
#pragma once

#include <QString>
#include <functional>
#include <string>

#include "host/standalone/anfitrion.h"
#include "host/standalone/documento.h"

class QWidget;

namespace vista {

// The template that is used when table Formato has no row with the format's code and this ending ("HT0001.HTML").
extern const char* const kFinFormatoHtml;
QString PlantillaIncluida();

// The template of a format, the hotel's own or the included one.
QString PlantillaDe(autonomo::Conexion& conexion, const std::string& formato);
// Fills a template. Fields are those of autonomo::CamposDe, safe for HTML, lines kept; {renglones} gives one table row
// a room line: room, description, first night, departure, persons, amount.
QString LlenaPlantilla(const QString& plantilla, const autonomo::Documento& documento);
// Writes the filled template as a PDF. com::Error kSoloLectura when the file cannot be written.
void EscribePdf(const QString& html, const QString& titulo, const QString& ruta);

// Puts a print service before the host's own: the host records the print, and the confirmation is shown with a preview,
// to be opened in the system's viewer or saved. frente: window that the dialog belongs to.
void InstalaImpresion(autonomo::Anfitrion& anfitrion, std::function<QWidget*()> frente);

}  // namespace vista
