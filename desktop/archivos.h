// Where the user wants a file.
#pragma once

#include <QString>

class QWidget;

namespace vista {

// Asks where a PDF is to be saved; gives its path, which ends in .pdf, or "" when the user wants none.
// nombre: proposed file name, without the ending.
QString PreguntaRutaPdf(const QString& titulo, const QString& nombre, QWidget* padre);

// The same for a hotel's file, to be opened or made; carpeta: where the list begins.
QString PreguntaRutaHotel(bool nuevo, const QString& carpeta, QWidget* padre);
// The same for a CSV file to be read.
QString PreguntaRutaCsv(const QString& titulo, QWidget* padre);

}  // namespace vista
