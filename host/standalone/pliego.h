// A confirmation laid out in pages of letter size, on the screen, on paper and as a PDF. Needs a QGuiApplication, of
// any platform; any thread may lay out its own.
#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QPdfWriter>
#include <QString>
#include <QTextDocument>
#include <utility>

class QPainter;
class QTextTable;

namespace autonomo {

// Letter at 96 dots an inch.
inline constexpr int kAnchoHoja = 816, kAltoHoja = 1056;
// Points a pixel that a page is laid out in.
inline constexpr int kFinura = 10;

// Layout is measured for the printer, so that the preview breaks lines and pages where the print does.
class Pliego {
 public:
  explicit Pliego(const QString& html);

  // Up to the last page that shows something.
  int Paginas() const { return paginas_; }
  // What a page says, for who cannot see it.
  QString Texto(int pagina) const;
  // Draws a page, counted from 0; the painter stands on the sheet's corner and counts kFinura points a pixel.
  void Pinta(QPainter& p, int pagina) const;
  QString NombrePagina(int pagina) const;

 private:
  void Dispone(const QString& html);
  int CuentaPaginas() const;
  // Highest and lowest point of a row's texts, over all pages.
  std::pair<double, double> ExtremosDe(const QTextTable& tabla, int fila) const;
  // A row that a page's end would cut goes on to the next page: the row before it takes what is left of the page, but
  // for less than a line. So does the last line with the totals that close a table with captions: totals are never
  // alone on a page.
  void NoPartasFilas(QTextTable& tabla);
  void PintaPie(QPainter& p, int pagina) const;

  QBuffer nada_;
  QPdfWriter medida_;
  QTextDocument documento_;
  int paginas_ = 1;
};

// The filled template as a PDF of letter size; pages are numbered when there are several.
QByteArray Pdf(const QString& html, const QString& titulo);
// Writes it to a file, as EscribePrivado does.
void EscribePdf(const QString& html, const QString& titulo, const QString& ruta);

}  // namespace autonomo
