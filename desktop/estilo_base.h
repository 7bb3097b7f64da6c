// How the program's inputs, buttons, boxes of choice and scroll bars are drawn, below the style sheet.
#pragma once

class QStyle;

namespace vista {

// For QApplication::setStyle, which owns it.
QStyle* CreaEstiloBase();

}  // namespace vista
