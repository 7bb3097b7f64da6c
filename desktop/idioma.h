// What a clerk needs to read the screen, embedded in the program: the toolkit's own texts in Spanish (menus of the
// fields, file dialog) and a font for systems that have none.
#pragma once

#include <QApplication>

namespace vista {

// Texts and numbers in Spanish; where the system offers no font, the embedded one. Before the style is applied.
void InstalaIdioma(QApplication& app);

}  // namespace vista
