// The letter of a reservation as HTML: a template of the hotel, filled with a stored reservation.
#pragma once

#include <QString>
#include <QStringList>
#include <string>

#include "host/standalone/documento.h"

namespace autonomo {

// The template that is used when table Formato has no row with the format's code and this ending ("HT0001.HTML").
extern const char* const kFinFormatoHtml;
QString PlantillaIncluida();

// The template of a format: the hotel's own, or the included one where the hotel has none or it shows nothing.
QString PlantillaDe(Conexion& conexion, const std::string& formato);
// What is wrong with the hotel's own template, a sentence each: empty, fields that do not exist, none at all.
QStringList ProblemasDePlantilla(Conexion& conexion, const std::string& formato);
// Fills a template. Fields are those of CamposDe, safe for HTML, lines kept; {renglones} gives one table row a room
// line: room, description, first night, departure, persons, amount.
QString LlenaPlantilla(const QString& plantilla, const Documento& documento);

}  // namespace autonomo
