// Lists as files: for a spreadsheet, for paper.
#pragma once

#include <QByteArray>
#include <optional>
#include <string>
#include <string_view>

#include "platform/com/fecha.h"
#include "platform/listado/listado.h"

namespace autonomo {

// What stands at the head of each page.
struct Membrete {
  std::string hotel;
  com::Fecha fecha;  // when it was made
};

// Pages of letter size, lying where the columns need it: hotel, title and date at the head, "Página 1 de 3" at the
// foot, captions on each page. Texts are broken into lines, none is cut. Needs a QGuiApplication.
QByteArray PdfDeLista(const listado::Listado& lista, const Membrete& membrete);

// Writes the list to a file as its ending says: ".csv" in that format, or ".pdf". com::Error kArgumento for another
// ending; those of EscribePrivado.
void Exporta(const listado::Listado& lista, const Membrete& membrete, listado::FormatoCsv formato,
             const std::string& ruta);

}  // namespace autonomo
