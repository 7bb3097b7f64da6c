// Where the user wants a file.
#pragma once

#include <QString>

class QWidget;

namespace vista {

// Asks where a PDF is to be saved; gives its path, which ends in .pdf, or "" when the user wants none.
// nombre: proposed file name, without the ending.
QString PreguntaRutaPdf(const QString& titulo, const QString& nombre, QWidget* padre);

}  // namespace vista
