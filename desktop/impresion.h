// Printed confirmations: an HTML template of the hotel, filled with a stored reservation, as a PDF of letter size.
#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <string>

#include "host/standalone/anfitrion.h"
#include "host/standalone/documento.h"

namespace vista {

// The template that is used when table Formato has no row with the format's code and this ending ("HT0001.HTML").
extern const char* const kFinFormatoHtml;
QString PlantillaIncluida();

// The template of a format: the hotel's own, or the included one where the hotel has none or it shows nothing.
QString PlantillaDe(autonomo::Conexion& conexion, const std::string& formato);
// What is wrong with the hotel's own template, a sentence each: empty, fields that do not exist, none at all.
QStringList ProblemasDePlantilla(autonomo::Conexion& conexion, const std::string& formato);
// Fills a template. Fields are those of autonomo::CamposDe, safe for HTML, lines kept; {renglones} gives one table row
// a room line: room, description, first night, departure, persons, amount.
QString LlenaPlantilla(const QString& plantilla, const autonomo::Documento& documento);
// Writes the filled template as a PDF of letter size; pages are numbered when there are several. com::Error
// kSoloLectura when the file cannot be written; what it held is kept then.
void EscribePdf(const QString& html, const QString& titulo, const QString& ruta);
// Opens a file in the system's viewer. sinVisor runs, while the owner lives, when there is none.
void AbreEnVisor(const QString& ruta, QObject* duenio, std::function<void()> sinVisor);
// The preview of all pages, with buttons to open and save. avisos: remarks shown above it.
std::unique_ptr<QDialog> CreaVistaPrevia(const QString& html, const QString& nombre, const QStringList& avisos,
                                         QWidget* padre);

// Puts a print service before the host's own: the host records the print, and the confirmation is shown with a preview,
// to be opened in the system's viewer or saved, while the entry lasts. frente: window that the dialog belongs to.
[[nodiscard]] com::Inscripcion InstalaImpresion(autonomo::Anfitrion& anfitrion, std::function<QWidget*()> frente);

}  // namespace vista
