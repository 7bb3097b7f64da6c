// What a clerk needs to read the screen and this program does not bring: the toolkit's own texts in Spanish (menus of
// the fields, file dialog) and a font. What is missing, and what stands in for it.
#pragma once

#include <QApplication>
#include <QColor>
#include <QImage>
#include <QString>
#include <QStringList>

namespace vista {

// Texts and numbers in Spanish. The toolkit's translation is looked for in a folder; the program's own words stand in
// for what it lacks. Gives what to tell the user: nothing, or that there is no translation.
QString InstalaIdioma(QApplication& app, const QString& carpeta);
// Where the toolkit's translations are.
QString CarpetaDeIdiomas();

// The toolkit's text in the program's own words; empty for texts that it has no word for.
QString PalabraPropia(const char* original);

// Where no font is installed: the best font file in those folders and below them is taken. Gives what to tell the user:
// nothing, that one was found, or that no text can be drawn.
QString BuscaLetra(const QStringList& carpetas);
// Whether there is a font to draw Spanish with.
bool HayLetra();
// Folders where a system and its user keep fonts.
QStringList CarpetasDeLetras();

// Words drawn without a font: capitals and digits of straight strokes, for the one message that says that there is
// none. Lines of the text end in \n; other characters are left blank.
QImage TextoTrazado(const QString& texto, int alto, const QColor& tinta, const QColor& fondo, qreal escala);

}  // namespace vista
