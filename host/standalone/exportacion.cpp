#include "host/standalone/exportacion.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <vector>

#include "host/standalone/archivo_privado.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"

namespace autonomo {

namespace {

// Everything is laid out in tenths of a pixel at 96 dots an inch.
constexpr int kFino = 10, kPpp = 96;
constexpr double kLargo = 1056 * kFino, kCorto = 816 * kFino;  // letter
constexpr double kMargen = 48 * kFino, kCabeza = 64 * kFino, kPie = 24 * kFino;
constexpr double kEntre = 12 * kFino;      // between columns
constexpr double kMasAncha = 260 * kFino;  // a column that is broken into lines

QFont Letra(int pixeles, bool fuerte = false) {
  QFont letra(QStringLiteral("Helvetica"));
  letra.setStyleHint(QFont::SansSerif);
  letra.setPixelSize(pixeles * kFino);
  letra.setBold(fuerte);
  return letra;
}

class Hoja {
 public:
  Hoja(const listado::Listado& lista, const Membrete& membrete) : lista_(lista), membrete_(membrete), pdf_(&salida_) {
    salida_.open(QIODevice::WriteOnly);
    pdf_.setTitle(QString::fromStdString(lista.titulo));
    pdf_.setCreator(QStringLiteral("reservas"));
    pdf_.setResolution(kPpp * kFino);
    MideColumnas();
    const bool acostada = AnchoDeColumnas() > kCorto - 2 * kMargen;
    ancho_ = acostada ? kLargo : kCorto;
    alto_ = acostada ? kCorto : kLargo;
    pdf_.setPageLayout({QPageSize(QPageSize::Letter), acostada ? QPageLayout::Landscape : QPageLayout::Portrait, {}});
    Estrecha();
    titulos_ = Parte([&](std::size_t c) { return lista.columnas[c].titulo; }, fuerte_);
    for (const auto& fila : lista.filas) {
      filas_.push_back(Parte(
          [&](std::size_t c) {
            return listado::Texto(lista.columnas[c].clase, c < fila.size() ? fila[c] : com::Variant());
          },
          normal_));
    }
    ReparteEnPaginas();
  }

  QByteArray Pinta() {
    QPainter p(&pdf_);
    for (std::size_t pagina = 0; pagina < paginas_.size(); ++pagina) {
      if (pagina > 0) pdf_.newPage();
      PintaMarco(p, pagina);
      double y = PintaRenglon(p, titulos_, 0, titulos_.lineas, kMargen + kCabeza, fuerte_) + 3 * kFino;
      p.setPen(QPen(Qt::black, kFino));
      p.drawLine(QPointF(kMargen, y), QPointF(ancho_ - kMargen, y));
      y += 4 * kFino;
      for (const Trozo& t : paginas_[pagina]) y = PintaRenglon(p, filas_[t.fila], t.desde, t.hasta, y, normal_) + kAire;
      if (filas_.empty()) p.drawText(QPointF(kMargen, y + paso_), QStringLiteral("No hay renglones"));
    }
    p.end();
    return salida_.data();
  }

 private:
  static constexpr double kAire = 3 * kFino;
  // A row broken into lines, cell by cell.
  struct Renglon {
    std::vector<QStringList> celdas;
    int lineas = 1;
  };
  // Lines of a row that stand on one page.
  struct Trozo {
    std::size_t fila;
    int desde, hasta;
  };

  void MideColumnas() {
    const QFontMetricsF normal(normal_, &pdf_), fuerte(fuerte_, &pdf_);
    paso_ = std::ceil(normal.lineSpacing());
    for (std::size_t c = 0; c < lista_.columnas.size(); ++c) {
      double ancho = 0;
      for (const QString& palabra : QString::fromStdString(lista_.columnas[c].titulo).split(QLatin1Char(' ')))
        ancho = std::max(ancho, fuerte.horizontalAdvance(palabra));
      for (const auto& fila : lista_.filas) {
        if (c >= fila.size()) continue;
        const auto texto = QString::fromStdString(listado::Texto(lista_.columnas[c].clase, fila[c]));
        for (const QString& linea : texto.split(QLatin1Char('\n')))
          ancho = std::max(ancho, normal.horizontalAdvance(linea));
      }
      anchos_.push_back(std::min(ancho + 2 * kFino, kMasAncha));
    }
  }

  double AnchoDeColumnas() const {
    double ancho = -kEntre;
    for (const double a : anchos_) ancho += a + kEntre;
    return ancho;
  }

  // What does not fit is taken from the widest columns, down to one width for all of them.
  void Estrecha() {
    const double caben = ancho_ - 2 * kMargen - (static_cast<double>(anchos_.size()) - 1) * kEntre;
    std::vector<double> orden = anchos_;
    std::ranges::sort(orden);
    double queda = caben;
    for (std::size_t i = 0; i < orden.size(); ++i) {
      const double parejo = queda / static_cast<double>(orden.size() - i);
      if (orden[i] > parejo) {
        for (double& a : anchos_) a = std::min(a, parejo);
        return;
      }
      queda -= orden[i];
    }
  }

  template <class TextoDe>
  Renglon Parte(TextoDe textoDe, const QFont& letra) {
    Renglon renglon;
    for (std::size_t c = 0; c < lista_.columnas.size(); ++c) {
      QStringList lineas;
      QString texto = QString::fromStdString(textoDe(c));
      texto.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\t'), QLatin1Char(' '));
      for (const QString& parrafo : texto.split(QLatin1Char('\n'))) {
        QTextLayout trazo(parrafo, letra, &pdf_);
        QTextOption opcion;
        opcion.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        trazo.setTextOption(opcion);
        trazo.beginLayout();
        for (QTextLine linea = trazo.createLine(); linea.isValid(); linea = trazo.createLine()) {
          linea.setLineWidth(anchos_[c]);
          lineas << parrafo.mid(linea.textStart(), linea.textLength());
        }
        trazo.endLayout();
      }
      while (!lineas.isEmpty() && lineas.last().isEmpty()) lineas.removeLast();
      renglon.lineas = std::max(renglon.lineas, static_cast<int>(lineas.size()));
      renglon.celdas.push_back(std::move(lineas));
    }
    return renglon;
  }

  // A row goes on to the next page whole, but for one that no page holds.
  void ReparteEnPaginas() {
    const double cuerpo = alto_ - 2 * kMargen - kCabeza - kPie - titulos_.lineas * paso_ - 7 * kFino;
    const int caben = std::max(1, static_cast<int>((cuerpo - kAire) / paso_));
    paginas_.emplace_back();
    double queda = cuerpo;
    for (std::size_t f = 0; f < filas_.size(); ++f) {
      for (int desde = 0; desde < filas_[f].lineas;) {
        const int lineas = std::min(caben, filas_[f].lineas - desde);
        const double alto = lineas * paso_ + kAire;
        if (alto > queda && !paginas_.back().empty()) {
          paginas_.emplace_back();
          queda = cuerpo;
        }
        paginas_.back().push_back({f, desde, desde + lineas});
        queda -= alto;
        desde += lineas;
      }
    }
  }

  void PintaMarco(QPainter& p, std::size_t pagina) {
    const double derecha = ancho_ - 2 * kMargen;
    const auto escribe = [&](double y, const QFont& letra, Qt::Alignment lado, const QString& texto) {
      p.setFont(letra);
      p.drawText(QRectF(kMargen, y, derecha, 22 * kFino), static_cast<int>(lado | Qt::AlignVCenter), texto);
    };
    p.setPen(Qt::black);
    escribe(kMargen, Letra(12), Qt::AlignLeft, QString::fromStdString(membrete_.hotel));
    escribe(kMargen, Letra(12), Qt::AlignRight, QString::fromStdString(regional::TextoFecha(membrete_.fecha)).left(16));
    escribe(kMargen + 20 * kFino, Letra(16, true), Qt::AlignLeft, QString::fromStdString(lista_.titulo));
    escribe(kMargen + 40 * kFino, Letra(11), Qt::AlignLeft, QString::fromStdString(lista_.detalle));
    escribe(alto_ - kMargen - kPie, Letra(11), Qt::AlignHCenter,
            QStringLiteral("Página %1 de %2").arg(pagina + 1).arg(paginas_.size()));
  }

  // Gives where it ends.
  double PintaRenglon(QPainter& p, const Renglon& renglon, int desde, int hasta, double y, const QFont& letra) const {
    p.setFont(letra);
    p.setPen(Qt::black);
    double x = kMargen;
    for (std::size_t c = 0; c < renglon.celdas.size(); ++c) {
      const Qt::Alignment lado = listado::ALaDerecha(lista_.columnas[c].clase) ? Qt::AlignRight : Qt::AlignLeft;
      const int como = static_cast<int>(lado | Qt::AlignVCenter) | static_cast<int>(Qt::TextDontClip);
      for (int l = desde; l < hasta && l < renglon.celdas[c].size(); ++l) {
        p.drawText(QRectF(x, y + (l - desde) * paso_, anchos_[c], paso_), como, renglon.celdas[c][l].trimmed());
      }
      x += anchos_[c] + kEntre;
    }
    return y + (hasta - desde) * paso_;
  }

  const listado::Listado& lista_;
  const Membrete& membrete_;
  QBuffer salida_;
  QPdfWriter pdf_;
  const QFont normal_ = Letra(11), fuerte_ = Letra(11, true);
  double paso_ = 0, ancho_ = 0, alto_ = 0;
  std::vector<double> anchos_;
  Renglon titulos_;
  std::vector<Renglon> filas_;
  std::vector<std::vector<Trozo>> paginas_;
};

bool TerminaEn(const std::string& ruta, std::string_view fin) {
  return ruta.size() > fin.size() && com::IgualSinCaja(std::string_view(ruta).substr(ruta.size() - fin.size()), fin);
}

}  // namespace

QByteArray PdfDeLista(const listado::Listado& lista, const Membrete& membrete) { return Hoja(lista, membrete).Pinta(); }

void Exporta(const listado::Listado& lista, const Membrete& membrete, listado::FormatoCsv formato,
             const std::string& ruta) {
  if (TerminaEn(ruta, ".csv")) return EscribePrivado(ruta, listado::Csv(lista, formato));
  if (TerminaEn(ruta, ".pdf")) {
    const QByteArray pdf = PdfDeLista(lista, membrete);
    return EscribePrivado(ruta, {pdf.constData(), static_cast<std::size_t>(pdf.size())});
  }
  throw com::Error(com::error::kArgumento, "Se exporta a un archivo .csv o .pdf, no a " + ruta);
}

}  // namespace autonomo
