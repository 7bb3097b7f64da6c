// Lists, calendars and the day's report as files of a person's own.
#pragma once

#include <QPushButton>
#include <functional>

#include "host/standalone/anfitrion.h"
#include "platform/listado/listado.h"

class QDialog;

namespace vista {

// Asks where a list is to go, and as what: a spreadsheet's text, in the two ways that spreadsheets of Spanish-speaking
// countries open, or a PDF; writes it. What cannot be written is told, and asked again. Gives where it lies, "" when it
// was not wanted.
QString ExportaLista(const listado::Listado& lista, QWidget* padre);
// A button of the window that exports what lista gives when it is pressed (Ctrl+E, in the window's fields too); dice is
// told where it lies.
QPushButton* BotonExportar(QWidget* ventana, std::function<listado::Listado()> lista,
                           std::function<void(const QString&)> dice);

// Asks for a room, or all, and whether guests are named; writes the calendar.
void ExportaCalendario(autonomo::Anfitrion& anfitrion, QWidget* padre);
// The day's report in a preview, from which it can be printed, saved or put into the outbox.
void MuestraParte(autonomo::Anfitrion& anfitrion, QWidget* padre);

}  // namespace vista
