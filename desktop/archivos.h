// Where the user wants a file.
#pragma once

#include <QString>
#include <optional>
#include <vector>

class QWidget;

namespace vista {

struct TipoDeArchivo {
  QString titulo, extension;  // "Documento PDF", "pdf"
};
struct RutaElegida {
  QString ruta;  // ends in the extension of one of the kinds
  std::size_t tipo = 0;
};
// Asks where a file of one of these kinds is to be saved; nothing when the user wants none. An ending that was typed
// counts before the kind that was chosen. nombre: proposed file name, without the ending; "" none. carpeta: where the
// list begins; "" in the user's documents. anterior: what was answered last and did not do; null when it is asked
// first.
[[nodiscard]] std::optional<RutaElegida> PreguntaRuta(const QString& titulo, const QString& nombre,
                                                      const std::vector<TipoDeArchivo>& tipos, QWidget* padre,
                                                      const QString& carpeta = {},
                                                      const RutaElegida* anterior = nullptr);
// Asks where a PDF is to be saved; gives its path, which ends in .pdf, or "" when the user wants none.
// nombre: proposed file name, without the ending.
[[nodiscard]] QString PreguntaRutaPdf(const QString& titulo, const QString& nombre, QWidget* padre);

// The same for a hotel's file, to be opened or made; carpeta: where the list begins.
[[nodiscard]] QString PreguntaRutaHotel(bool nuevo, const QString& carpeta, QWidget* padre);
// The same for a CSV file to be read.
[[nodiscard]] QString PreguntaRutaCsv(const QString& titulo, QWidget* padre);

}  // namespace vista
