// Entries of the catalogues' and the configuration's editors, one widget for each kind of value.
#pragma once

#include <QLineEdit>
#include <QString>
#include <QWidget>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/standalone/catalogos.h"

namespace vista {

// A widget and the text that stands in it, as Valida and the parameters read it.
struct Entrada {
  QWidget* widget = nullptr;
  std::function<std::string()> texto;
};

// Line of text; numbers stand at the right.
Entrada EntradaTexto(const QString& texto, const QString& ayuda, bool numero, QWidget* padre);
// Several lines.
Entrada EntradaNota(const QString& texto, QWidget* padre);
// Date as clerks type it, with the calendar (F4); the arrows go a day on or back.
Entrada EntradaFecha(const QString& texto, const QString& ayuda, QWidget* padre);
// One of a list of key and what is read; texto is the chosen key. A text that is not among them is offered too.
using Opciones = std::vector<std::pair<std::string, std::string>>;
Entrada EntradaLista(const QString& texto, const Opciones& opciones, QWidget* padre);
// Colour, typed as #RRGGBB or chosen; texto is 0x00BBGGRR as a whole number, "" for none.
Entrada EntradaColor(const QString& texto, QWidget* padre);

// A colour 0x00BBGGRR, written as a whole number, in the form #RRGGBB; the text itself when it is none.
QString ColorLegible(const std::string& valor);
// The same as a swatch for a list.
QColor ColorDe(const std::string& valor);

}  // namespace vista
