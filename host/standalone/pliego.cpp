#include "host/standalone/pliego.h"

#include <QAbstractTextDocumentLayout>
#include <QPageSize>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextTable>
#include <algorithm>
#include <cmath>
#include <limits>

#include "host/standalone/archivo_privado.h"

namespace autonomo {

namespace {

constexpr int kPpp = 96, kMargen = 72;  // dots an inch; three quarters of an inch on all sides

}  // namespace

Pliego::Pliego(const QString& html) : medida_(&nada_) { Dispone(html); }

void Pliego::Dispone(const QString& html) {
  medida_.setResolution(kPpp * kFinura);
  QFont letra(QStringLiteral("Helvetica"));
  letra.setStyleHint(QFont::SansSerif);
  letra.setPointSizeF(10);
  documento_.documentLayout()->setPaintDevice(&medida_);
  documento_.setDefaultFont(letra);
  documento_.setDocumentMargin(0);
  QTextOption renglones;
  renglones.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  documento_.setDefaultTextOption(renglones);
  documento_.setHtml(html);
  documento_.setPageSize(QSizeF(kAnchoHoja - 2 * kMargen, kAltoHoja - 2 * kMargen) * kFinura);
  for (QTextFrame* marco : documento_.rootFrame()->childFrames()) {
    if (auto* tabla = qobject_cast<QTextTable*>(marco)) NoPartasFilas(*tabla);
  }
  paginas_ = CuentaPaginas();
}

int Pliego::CuentaPaginas() const {
  double fondo = 0;
  for (QTextBlock b = documento_.begin(); b.isValid(); b = b.next()) {
    const bool raya = b.blockFormat().hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth);
    if (!raya && b.text().trimmed().isEmpty()) continue;
    fondo = std::max(fondo, documento_.documentLayout()->blockBoundingRect(b).bottom());
  }
  return std::clamp(static_cast<int>(std::ceil(fondo / documento_.pageSize().height())), 1,
                    std::max(1, documento_.pageCount()));
}

QString Pliego::Texto(int pagina) const {
  QStringList lineas;
  for (QTextBlock b = documento_.begin(); b.isValid(); b = b.next()) {
    const double arriba = documento_.documentLayout()->blockBoundingRect(b).top();
    const QString linea = b.text().replace(QChar::LineSeparator, QLatin1Char(' ')).trimmed();
    if (!linea.isEmpty() && static_cast<int>(arriba / documento_.pageSize().height()) == pagina) lineas << linea;
  }
  return lineas.join(QLatin1Char('\n'));
}

void Pliego::Pinta(QPainter& p, int pagina) const {
  const QSizeF caja = documento_.pageSize();
  QAbstractTextDocumentLayout::PaintContext contexto;
  contexto.palette.setColor(QPalette::Text, Qt::black);
  contexto.clip = QRectF(QPointF(0, pagina * caja.height()), caja);
  p.save();
  p.translate(kMargen * kFinura, kMargen * kFinura - pagina * caja.height());
  p.setClipRect(contexto.clip);
  documento_.documentLayout()->draw(&p, contexto);
  p.restore();
  if (Paginas() > 1) PintaPie(p, pagina);
}

void Pliego::PintaPie(QPainter& p, int pagina) const {
  constexpr int kPie = 11;  // letters of the page number, pixels
  p.save();
  QFont letra = documento_.defaultFont();
  letra.setPixelSize(kPie * kFinura);
  p.setFont(letra);
  p.setPen(QColor(0x56, 0x62, 0x75));
  p.drawText(QRect(0, (kAltoHoja - kMargen) * kFinura, kAnchoHoja * kFinura, kMargen * kFinura / 2),
             static_cast<int>(Qt::AlignHCenter) | static_cast<int>(Qt::AlignBottom), NombrePagina(pagina));
  p.restore();
}

QString Pliego::NombrePagina(int pagina) const {
  return QStringLiteral("Página %1 de %2").arg(pagina + 1).arg(Paginas());
}

std::pair<double, double> Pliego::ExtremosDe(const QTextTable& tabla, int fila) const {
  const auto* trazo = documento_.documentLayout();
  double arriba = std::numeric_limits<double>::max(), abajo = 0;
  for (int c = 0; c < tabla.columns(); ++c) {
    const QTextTableCell celda = tabla.cellAt(fila, c);
    arriba = std::min(arriba, trazo->blockBoundingRect(celda.firstCursorPosition().block()).top());
    abajo = std::max(abajo, trazo->blockBoundingRect(celda.lastCursorPosition().block()).bottom());
  }
  return {arriba, abajo};
}

void Pliego::NoPartasFilas(QTextTable& tabla) {
  constexpr int kMenosDeUnaLinea = 10;  // pixels
  const double alto = documento_.pageSize().height();
  const int titulos = tabla.format().headerRowCount();
  for (int f = titulos + 1; f < tabla.rows(); ++f) {
    const bool conTotales = titulos > 0 && f == tabla.rows() - 2;
    const double arriba = ExtremosDe(tabla, f).first;
    const double abajo = ExtremosDe(tabla, conTotales ? f + 1 : f).second;
    const double fin = (std::floor(arriba / alto) + 1) * alto;
    const double sobra = (fin - arriba) / kFinura - kMenosDeUnaLinea;
    if (abajo <= fin || abajo - arriba > alto / 2 || sobra <= tabla.format().cellPadding()) continue;
    for (int c = 0; c < tabla.columns(); ++c) {
      QTextTableCell celda = tabla.cellAt(f - 1, c);
      if (celda.column() != c) continue;  // a cell over several columns
      QTextTableCellFormat formato = celda.format().toTableCellFormat();
      formato.setBottomPadding(sobra);
      celda.setFormat(formato);
    }
  }
}

QByteArray Pdf(const QString& html, const QString& titulo) {
  QBuffer salida;
  salida.open(QIODevice::WriteOnly);
  QPdfWriter pdf(&salida);
  pdf.setTitle(titulo);
  pdf.setCreator(QStringLiteral("reservas"));
  pdf.setPageSize(QPageSize(QPageSize::Letter));
  pdf.setPageMargins(QMarginsF());
  pdf.setResolution(kPpp * kFinura);
  const Pliego pliego(html);
  QPainter p(&pdf);
  for (int pagina = 0; pagina < pliego.Paginas(); ++pagina) {
    if (pagina > 0) pdf.newPage();
    pliego.Pinta(p, pagina);
  }
  p.end();
  return salida.data();
}

void EscribePdf(const QString& html, const QString& titulo, const QString& ruta) {
  const QByteArray pdf = Pdf(html, titulo);
  EscribePrivado(ruta.toStdString(), {pdf.constData(), static_cast<std::size_t>(pdf.size())});
}

}  // namespace autonomo
