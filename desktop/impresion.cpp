#include "desktop/impresion.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPageSize>
#include <QPaintEvent>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSaveFile>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "desktop/archivos.h"
#include "desktop/dialogos.h"
#include "desktop/estilo.h"
#include "desktop/vista.h"
#include "host/standalone/fabricas.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"

namespace vista {

const char* const kFinFormatoHtml = ".HTML";

namespace {

// Letter at 96 dots an inch, with margins of three quarters of an inch.
constexpr int kPpp = 96, kAnchoHoja = 816, kAltoHoja = 1056, kMargen = 72;
// Points a pixel that a page is laid out in.
constexpr int kFinura = 10;

QString Segura(const std::string& texto) {
  return Q(texto)
      .toHtmlEscaped()
      .replace(QStringLiteral("\r\n"), QStringLiteral("<br>"))
      .replace(QLatin1Char('\n'), QStringLiteral("<br>"));
}

QString FilaDe(const autonomo::RenglonDocumento& r) {
  const auto celda = [](const QString& texto, const char* alinea = "left") {
    return QStringLiteral("<td align=\"%1\">%2</td>").arg(QLatin1String(alinea), texto);
  };
  const int personas = r.adultos + r.menores + r.infantes;
  return QStringLiteral("<tr>") + celda(Segura(r.habitacion)) + celda(Segura(r.descripcion)) +
         celda(Segura(regional::FechaCorta(r.inicio))) + celda(Segura(regional::FechaCorta(r.fin))) +
         celda(QString::number(personas), "center") + celda(Segura(regional::Moneda(r.total)), "right") +
         QStringLiteral("</tr>");
}

// A confirmation laid out in pages of letter size. Layout is measured for the printer, so that the preview breaks lines
// and pages where the print does.
class Pliego {
 public:
  explicit Pliego(const QString& html) : medida_(&nada_) {
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
    double fondo = 0;
    for (QTextBlock b = documento_.begin(); b.isValid(); b = b.next()) {
      const bool raya = b.blockFormat().hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth);
      if (!raya && b.text().trimmed().isEmpty()) continue;
      fondo = std::max(fondo, documento_.documentLayout()->blockBoundingRect(b).bottom());
    }
    paginas_ = std::clamp(static_cast<int>(std::ceil(fondo / documento_.pageSize().height())), 1,
                          std::max(1, documento_.pageCount()));
  }

  // Up to the last page that shows something.
  int Paginas() const { return paginas_; }
  // What a page says, for who cannot see it.
  QString Texto(int pagina) const {
    QStringList lineas;
    for (QTextBlock b = documento_.begin(); b.isValid(); b = b.next()) {
      const double arriba = documento_.documentLayout()->blockBoundingRect(b).top();
      const QString linea = b.text().replace(QChar::LineSeparator, QLatin1Char(' ')).trimmed();
      if (!linea.isEmpty() && static_cast<int>(arriba / documento_.pageSize().height()) == pagina) lineas << linea;
    }
    return lineas.join(QLatin1Char('\n'));
  }

  // Draws a page, counted from 0; the painter stands on the sheet's corner and counts kFinura points a pixel.
  void Pinta(QPainter& p, int pagina) const {
    const QSizeF caja = documento_.pageSize();
    QAbstractTextDocumentLayout::PaintContext contexto;
    contexto.palette.setColor(QPalette::Text, Qt::black);
    contexto.clip = QRectF(QPointF(0, pagina * caja.height()), caja);
    p.save();
    p.translate(kMargen * kFinura, kMargen * kFinura - pagina * caja.height());
    p.setClipRect(contexto.clip);
    documento_.documentLayout()->draw(&p, contexto);
    p.restore();
    if (Paginas() == 1) return;
    p.save();
    QFont letra = documento_.defaultFont();
    letra.setPixelSize(kPie * kFinura);
    p.setFont(letra);
    p.setPen(QColor(0x56, 0x62, 0x75));
    p.drawText(QRect(0, (kAltoHoja - kMargen) * kFinura, kAnchoHoja * kFinura, kMargen * kFinura / 2),
               Qt::AlignHCenter | Qt::AlignBottom, NombrePagina(pagina));
    p.restore();
  }

  QString NombrePagina(int pagina) const { return QStringLiteral("Página %1 de %2").arg(pagina + 1).arg(Paginas()); }

 private:
  // Highest and lowest point of a row's texts, over all pages.
  std::pair<double, double> ExtremosDe(const QTextTable& tabla, int fila) const {
    const auto* trazo = documento_.documentLayout();
    double arriba = std::numeric_limits<double>::max(), abajo = 0;
    for (int c = 0; c < tabla.columns(); ++c) {
      const QTextTableCell celda = tabla.cellAt(fila, c);
      arriba = std::min(arriba, trazo->blockBoundingRect(celda.firstCursorPosition().block()).top());
      abajo = std::max(abajo, trazo->blockBoundingRect(celda.lastCursorPosition().block()).bottom());
    }
    return {arriba, abajo};
  }

  // A row that a page's end would cut goes on to the next page: the row before it takes what is left of the page, but
  // for less than a line. So does the last line with the totals that close a table with captions: totals are never
  // alone on a page.
  void NoPartasFilas(QTextTable& tabla) {
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

  static constexpr int kPie = 11;  // letters of the page number, pixels
  QBuffer nada_;
  QPdfWriter medida_;
  QTextDocument documento_;
  int paginas_ = 1;
};

// All pages, one under the other.
class Hojas : public QWidget {
 public:
  explicit Hojas(const QString& html) : pliego_(html) {
    setFixedSize(kAncho + 2 * kAire, pliego_.Paginas() * (kAlto + kAire) + kAire);
  }
  const Pliego& pliego() const { return pliego_; }
  static int Arriba(int pagina) { return kAire + pagina * (kAlto + kAire); }
  // Page at a height of the widget.
  int PaginaEn(int y) const { return std::clamp((y - kAire / 2) / (kAlto + kAire), 0, pliego_.Paginas() - 1); }

 protected:
  void paintEvent(QPaintEvent* evento) override {
    QPainter p(this);
    for (int pagina = 0; pagina < pliego_.Paginas(); ++pagina) {
      const QRect hoja(kAire, Arriba(pagina), kAncho, kAlto);
      if (!hoja.intersects(evento->rect())) continue;
      p.fillRect(hoja, Qt::white);
      p.save();
      p.translate(hoja.topLeft());
      p.scale(kVista / kFinura, kVista / kFinura);
      pliego_.Pinta(p, pagina);
      p.restore();
    }
  }

 private:
  static constexpr double kVista = 0.75;  // of the real size
  static constexpr int kAire = 12;
  static constexpr int kAncho = static_cast<int>(kAnchoHoja * kVista), kAlto = static_cast<int>(kAltoHoja * kVista);
  Pliego pliego_;
};

// Scrolls over the pages with the keyboard too, and shows that it has it.
class ZonaHojas : public QScrollArea {
 public:
  explicit ZonaHojas(QWidget* padre) : QScrollArea(padre) {
    setFocusPolicy(Qt::StrongFocus);
    setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain));
    setLineWidth(2);
    Orla(false);
  }

 protected:
  void keyPressEvent(QKeyEvent* evento) override {
    if (evento->key() == Qt::Key_Home) return verticalScrollBar()->triggerAction(QScrollBar::SliderToMinimum);
    if (evento->key() == Qt::Key_End) return verticalScrollBar()->triggerAction(QScrollBar::SliderToMaximum);
    QScrollArea::keyPressEvent(evento);
  }
  void focusInEvent(QFocusEvent* evento) override {
    QScrollArea::focusInEvent(evento);
    Orla(true);
  }
  void focusOutEvent(QFocusEvent* evento) override {
    QScrollArea::focusOutEvent(evento);
    Orla(false);
  }

 private:
  void Orla(bool enfocada) {
    QPalette colores = palette();
    colores.setColor(QPalette::WindowText, enfocada ? Colores().acento : Colores().borde);
    setPalette(colores);
  }
};

class Impreso : public QDialog {
 public:
  Impreso(const QString& html, const QString& nombre, const QStringList& avisos, QWidget* padre)
      : QDialog(padre), html_(html), nombre_(nombre) {
    setWindowTitle(nombre);
    setObjectName(QStringLiteral("impreso"));
    setWindowModality(padre == nullptr ? Qt::ApplicationModal : Qt::WindowModal);
    auto* caja = new QVBoxLayout(this);
    for (const QString& aviso : avisos) {
      auto* rotulo = new QLabel(QStringLiteral("⚠ ") + aviso, this);
      rotulo->setObjectName(QStringLiteral("aviso"));
      rotulo->setTextFormat(Qt::PlainText);
      rotulo->setWordWrap(true);
      QPalette tinta = rotulo->palette();
      tinta.setColor(QPalette::WindowText, Colores().peligro);
      rotulo->setPalette(tinta);
      caja->addWidget(rotulo);
    }
    hojas_ = new Hojas(html);
    zona_ = new ZonaHojas(this);
    zona_->setObjectName(QStringLiteral("hojas"));
    zona_->setWidget(hojas_);
    zona_->setAlignment(Qt::AlignCenter);
    zona_->setMinimumSize(QSize(hojas_->width() + 24, 420).boundedTo(screen()->availableSize() * 6 / 10));
    caja->addWidget(zona_);
    auto* pie = new QHBoxLayout;
    cual_ = new QLabel(this);
    cual_->setObjectName(QStringLiteral("pagina"));
    pie->addWidget(cual_);
    auto* botones = new QDialogButtonBox(this);
    QPushButton* abre = botones->addButton(QStringLiteral("&Abrir en el visor"), QDialogButtonBox::ActionRole);
    QPushButton* guarda = botones->addButton(QStringLiteral("&Guardar como…"), QDialogButtonBox::ActionRole);
    botones->addButton(QStringLiteral("&Cerrar"), QDialogButtonBox::RejectRole);
    abre->setDefault(true);
    connect(abre, &QPushButton::clicked, this, [this] { Abre(); });
    connect(guarda, &QPushButton::clicked, this, [this] { Guarda(); });
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(zona_->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { DiPagina(); });
    pie->addWidget(botones);
    caja->addLayout(pie);
    // As much of a page as the screen has room for.
    const int alto = std::min(hojas_->height() + 120, screen()->availableGeometry().height() * 85 / 100);
    AjustaAPantalla(*this, {std::max(sizeHint().width(), hojas_->width() + kAlLado), alto});
    DiPagina();
    zona_->setFocus();
  }

 private:
  void DiPagina() {
    const int medio = zona_->verticalScrollBar()->value() + zona_->viewport()->height() / 2;
    const int pagina = hojas_->PaginaEn(medio);
    const QString nombre = hojas_->pliego().NombrePagina(pagina);
    if (cual_->text() == nombre) return;
    cual_->setText(nombre);
    zona_->setAccessibleName(QStringLiteral("Vista previa, ") + nombre);
    zona_->setAccessibleDescription(hojas_->pliego().Texto(pagina));
  }

  void Falla(const std::string& texto) { Avisa(texto, 16, this, "Impresión"); }

  bool Escribe(const QString& ruta) {
    try {
      EscribePdf(html_, nombre_, ruta);
      return true;
    } catch (const com::Error& e) {
      Falla(e.Descripcion());
      return false;
    }
  }

  // Only the clerk may read the file: it names a guest.
  void Abre() {
    static const QTemporaryDir carpeta;  // gone with the program
    if (!carpeta.isValid()) return Falla(carpeta.errorString().toStdString());
    const QString ruta = carpeta.filePath(nombre_ + QStringLiteral(".pdf"));
    if (!Escribe(ruta)) return;
    AbreEnVisor(ruta, this, [this, ruta] {
      Falla("No hay un programa que muestre documentos PDF. El documento quedó en " + ruta.toStdString() +
            "\nInstale un visor de PDF, o use «Guardar como…» para llevarlo a otro equipo.");
    });
  }

  void Guarda() {
    const QString ruta = PreguntaRutaPdf(QStringLiteral("Guardar ") + nombre_, nombre_, this);
    if (!ruta.isEmpty() && Escribe(ruta)) accept();
  }

  static constexpr int kAlLado = 48;  // scroll bar and margins, pixels
  QString html_, nombre_;
  Hojas* hojas_;
  ZonaHojas* zona_;
  QLabel* cual_;
};

class ServicioImpresion : public com::Objeto<anfitrion::Impresion> {
 public:
  ServicioImpresion(autonomo::Anfitrion& host, std::function<QWidget*()> frente)
      : host_(host), propio_(autonomo::CreaImpresion(host)), frente_(std::move(frente)) {}

  void ImprimeFormato(const std::string& formato, const std::string& clave, const std::string& e1, int c1, int c2,
                      const std::string& e2) override {
    propio_->ImprimeFormato(formato, clave, e1, c1, c2, e2);
    const auto documento = autonomo::LeeDocumento(*host_.conexion(), clave);
    if (!documento) return;
    const QString html = LlenaPlantilla(PlantillaDe(*host_.conexion(), formato), *documento);
    const QStringList avisos = ProblemasDePlantilla(*host_.conexion(), formato);
    const QString nombre = Q(autonomo::CartaDe(documento->estado).nombre + " " + documento->folio);
    Impreso(html, nombre, avisos, frente_()).exec();
    if (QWidget* frente = frente_()) frente->activateWindow();
  }

 private:
  autonomo::Anfitrion& host_;
  com::Ptr<anfitrion::Impresion> propio_;
  std::function<QWidget*()> frente_;
};

}  // namespace

QString PlantillaIncluida() {
  return QString::fromUtf8(R"(<html><body style="color:#1b2433">
<table width="100%" cellspacing="0" cellpadding="0"><tr>
<td><span style="font-size:20pt; font-weight:600">{hotel}</span><br>
<span style="font-size:11pt; color:#566275">{titulo}</span></td>
<td align="right"><span style="font-size:9pt; color:#566275">FOLIO</span><br>
<span style="font-size:16pt; font-weight:600">{folio}</span><br>
<span style="font-size:9pt; color:#566275">{estado} · capturada el {captura}</span></td>
</tr></table>
<hr>
<p style="margin-top:14px">Estimado(a) <b>{huesped}</b>:</p>
<p>{mensaje}</p>
<table width="100%" cellspacing="0" cellpadding="6" style="margin-top:10px">
<tr bgcolor="#f3f5f8">
<td><span style="color:#566275; font-size:9pt">LLEGADA</span><br><b>{llegada}</b></td>
<td><span style="color:#566275; font-size:9pt">SALIDA</span><br><b>{salida}</b></td>
<td><span style="color:#566275; font-size:9pt">NOCHES</span><br><b>{noches}</b></td>
<td><span style="color:#566275; font-size:9pt">CLIENTE</span><br><b>{cliente}</b></td>
</tr></table>
<table width="100%" cellspacing="0" cellpadding="5" style="margin-top:18px">
<thead><tr bgcolor="#1f5fbf" style="color:#ffffff">
<td width="12%"><b>Habitación</b></td><td width="37%"><b>Descripción</b></td><td width="12%"><b>Del</b></td>
<td width="12%"><b>Al</b></td><td width="12%" align="center"><b>Personas</b></td>
<td width="15%" align="right"><b>Importe</b></td></tr></thead>
{renglones}
<tr><td colspan="5" align="right" style="border-top:1px solid #8894a6">Subtotal<br>Impuestos<br><b>Total {moneda}</b></td>
<td align="right" style="border-top:1px solid #8894a6">{subtotal}<br>{impuestos}<br><b>{total}</b></td></tr>
</table>
<p style="margin-top:16px">{notas_rotuladas}</p>
</body></html>)");
}

namespace {

// Nothing when the hotel has no template of its own.
std::optional<QString> PlantillaPropia(autonomo::Conexion& conexion, const std::string& formato) {
  const auto rs =
      conexion.Consulta("SELECT Fm_Contenido FROM Formato WHERE Fm_Cve_Formato = ?", {formato + kFinFormatoHtml});
  if (rs->Eof()) return std::nullopt;
  return Q(com::TextoDe(rs->Fields(0).Value()));
}

bool SeVe(const QString& html) {
  QTextDocument documento;
  documento.setHtml(html);
  return !documento.toPlainText().trimmed().isEmpty();
}

}  // namespace

QString PlantillaDe(autonomo::Conexion& conexion, const std::string& formato) {
  const auto propia = PlantillaPropia(conexion, formato);
  return propia && SeVe(*propia) ? *propia : PlantillaIncluida();
}

QStringList ProblemasDePlantilla(autonomo::Conexion& conexion, const std::string& formato) {
  const auto propia = PlantillaPropia(conexion, formato);
  if (!propia) return {};
  const QString cual = QStringLiteral("El formato de impresión ") + Q(formato + kFinFormatoHtml);
  if (propia->trimmed().isEmpty()) return {cual + QStringLiteral(" está vacío; se usó el del programa.")};
  if (!SeVe(*propia)) return {cual + QStringLiteral(" no muestra ningún texto; se usó el del programa.")};
  static const QRegularExpression campo(QStringLiteral(R"(\{([A-Za-z_]+)\})"));
  const autonomo::Campos conocidos = autonomo::CamposDe({});
  QStringList ajenos;
  int llenados = 0;
  for (auto i = campo.globalMatch(*propia); i.hasNext();) {
    const auto hallado = i.next();
    if (conocidos.contains(hallado.captured(1).toStdString())) {
      ++llenados;
    } else if (!ajenos.contains(hallado.captured(0))) {
      ajenos << hallado.captured(0);
    }
  }
  QStringList problemas;
  if (!ajenos.isEmpty())
    problemas << cual + QStringLiteral(" tiene campos que no existen: ") + ajenos.join(QStringLiteral(", "));
  if (llenados == 0) problemas << cual + QStringLiteral(" no tiene ningún campo: no dice de qué reservación es.");
  return problemas;
}

QString LlenaPlantilla(const QString& plantilla, const autonomo::Documento& documento) {
  autonomo::Campos campos = autonomo::CamposDe(documento);
  for (auto& [nombre, valor] : campos) valor = Segura(valor).toStdString();
  QString filas;
  for (const auto& r : documento.renglones) filas += FilaDe(r);
  campos["renglones"] = filas.toStdString();
  return Q(autonomo::Rellena(plantilla.toStdString(), campos));
}

namespace {

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

}  // namespace

void EscribePdf(const QString& html, const QString& titulo, const QString& ruta) {
  const QByteArray pdf = Pdf(html, titulo);
  const auto falla = [&](const QFileDevice& archivo) {
    throw com::Error(com::error::kSoloLectura,
                     "No se puede escribir " + ruta.toStdString() + ": " + archivo.errorString().toStdString());
  };
  // A device is written to; a file keeps what it held until the new document is whole.
  if (const QFileInfo destino(ruta); destino.exists() && !destino.isFile()) {
    QFile aparato(ruta);
    if (!aparato.open(QIODevice::WriteOnly) || aparato.write(pdf) != pdf.size() || !aparato.flush()) falla(aparato);
    return;
  }
  QSaveFile archivo(ruta);
  if (!archivo.open(QIODevice::WriteOnly)) falla(archivo);
  // It names a guest: its owner's alone, also where it replaces one that others could read.
  archivo.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
  if (archivo.write(pdf) != pdf.size() || !archivo.commit()) falla(archivo);
}

void AbreEnVisor(const QString& ruta, QObject* duenio, std::function<void()> sinVisor) {
#ifdef Q_OS_LINUX
  // The desktop's opener says only at its end whether a viewer was found. It outlives the dialog.
  auto* abridor = new QProcess(QCoreApplication::instance());
  QObject::connect(abridor, &QProcess::finished, abridor, &QObject::deleteLater);
  QObject::connect(abridor, &QProcess::finished, duenio, [sinVisor](int codigo, QProcess::ExitStatus) {
    // Its own codes: no such file, no program, the program failed. Others are the viewer's.
    if (codigo >= 2 && codigo <= 4) sinVisor();
  });
  QObject::connect(abridor, &QProcess::errorOccurred, duenio, [sinVisor, abridor](QProcess::ProcessError error) {
    if (error != QProcess::FailedToStart) return;
    abridor->deleteLater();
    sinVisor();
  });
  abridor->setStandardOutputFile(QProcess::nullDevice());
  abridor->setStandardErrorFile(QProcess::nullDevice());
  abridor->start(QStringLiteral("xdg-open"), {ruta});
#else
  Q_UNUSED(duenio);
  if (!QDesktopServices::openUrl(QUrl::fromLocalFile(ruta))) sinVisor();
#endif
}

std::unique_ptr<QDialog> CreaVistaPrevia(const QString& html, const QString& nombre, const QStringList& avisos,
                                         QWidget* padre) {
  return std::make_unique<Impreso>(html, nombre, avisos, padre);
}

com::Inscripcion InstalaImpresion(autonomo::Anfitrion& anfitrion, std::function<QWidget*()> frente) {
  return com::RegistraClase(anfitrion::kClaseImpresion, [&anfitrion, frente] {
    return com::Ptr<com::Desconocido>(new ServicioImpresion(anfitrion, frente));
  });
}

}  // namespace vista
