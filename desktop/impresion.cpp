#include "desktop/impresion.h"

#include <QAbstractTextDocumentLayout>
#include <QDesktopServices>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPushButton>
#include <QScrollArea>
#include <QTextDocument>
#include <QUrl>
#include <QVBoxLayout>

#include "desktop/archivos.h"
#include "desktop/dialogos.h"
#include "desktop/vista.h"
#include "host/standalone/fabricas.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"

namespace vista {

const char* const kFinFormatoHtml = ".HTML";

namespace {

// Letter at 96 dots an inch, with margins of three quarters of an inch.
constexpr int kPpp = 96, kAnchoHoja = 816, kAltoHoja = 1056, kMargen = 72;

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

void Prepara(QTextDocument& documento, const QString& html) {
  QFont letra(QStringLiteral("Helvetica"));
  letra.setStyleHint(QFont::SansSerif);
  letra.setPointSizeF(10);
  documento.setDefaultFont(letra);
  documento.setDocumentMargin(0);
  documento.setHtml(html);
}

// First page, for the preview.
QImage Hoja(const QString& html, double escala) {
  QImage imagen(static_cast<int>(kAnchoHoja * escala), static_cast<int>(kAltoHoja * escala), QImage::Format_RGB32);
  imagen.fill(Qt::white);
  QTextDocument documento;
  Prepara(documento, html);
  documento.setTextWidth(kAnchoHoja - 2 * kMargen);
  QPainter p(&imagen);
  p.scale(escala, escala);
  p.translate(kMargen, kMargen);
  QAbstractTextDocumentLayout::PaintContext contexto;
  contexto.palette.setColor(QPalette::Text, Qt::black);
  contexto.clip = QRectF(0, 0, kAnchoHoja - 2 * kMargen, kAltoHoja - 2 * kMargen);
  p.setClipRect(contexto.clip);
  documento.documentLayout()->draw(&p, contexto);
  return imagen;
}

class Impreso : public QDialog {
 public:
  Impreso(const QString& html, const QString& nombre, QWidget* padre) : QDialog(padre), html_(html), nombre_(nombre) {
    setWindowTitle(nombre);
    setObjectName(QStringLiteral("impreso"));
    setWindowModality(padre == nullptr ? Qt::ApplicationModal : Qt::WindowModal);
    auto* caja = new QVBoxLayout(this);
    auto* hoja = new QLabel(this);
    constexpr double kVista = 0.75;
    QImage imagen = Hoja(html, kVista * devicePixelRatioF());
    imagen.setDevicePixelRatio(devicePixelRatioF());
    hoja->setPixmap(QPixmap::fromImage(imagen));
    hoja->setAccessibleName(QStringLiteral("Vista previa de la confirmación"));
    auto* zona = new QScrollArea(this);
    zona->setWidget(hoja);
    zona->setAlignment(Qt::AlignCenter);
    zona->setMinimumSize(static_cast<int>(kAnchoHoja * kVista) + 24, 480);
    caja->addWidget(zona);
    auto* botones = new QDialogButtonBox(this);
    QPushButton* abre = botones->addButton(QStringLiteral("&Abrir en el visor"), QDialogButtonBox::ActionRole);
    QPushButton* guarda = botones->addButton(QStringLiteral("&Guardar como…"), QDialogButtonBox::ActionRole);
    botones->addButton(QStringLiteral("&Cerrar"), QDialogButtonBox::RejectRole);
    abre->setDefault(true);
    connect(abre, &QPushButton::clicked, this, [this] { Abre(); });
    connect(guarda, &QPushButton::clicked, this, [this] { Guarda(); });
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
    caja->addWidget(botones);
  }

 private:
  void Falla(const std::string& texto) {
    controles::CajaMensaje aviso;
    aviso.texto = texto;
    aviso.estilo = 16;
    aviso.titulo = "Impresión";
    CajaAviso(aviso, this).Pregunta();
  }

  bool Escribe(const QString& ruta) {
    try {
      EscribePdf(html_, nombre_, ruta);
      return true;
    } catch (const com::Error& e) {
      Falla(e.Descripcion());
      return false;
    }
  }

  void Abre() {
    const QString ruta = QDir::temp().filePath(nombre_ + QStringLiteral(".pdf"));
    if (!Escribe(ruta)) return;
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(ruta))) {
      Falla("No hay un visor de PDF instalado. El documento quedó en " + ruta.toStdString());
    }
  }

  void Guarda() {
    const QString ruta = PreguntaRutaPdf(QStringLiteral("Guardar la confirmación"), nombre_, this);
    if (!ruta.isEmpty() && Escribe(ruta)) accept();
  }

  QString html_, nombre_;
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
    Impreso(html, QStringLiteral("Confirmación ") + Q(documento->folio), frente_()).exec();
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
<span style="font-size:11pt; color:#566275">Confirmación de reservación</span></td>
<td align="right"><span style="font-size:9pt; color:#566275">FOLIO</span><br>
<span style="font-size:16pt; font-weight:600">{folio}</span><br>
<span style="font-size:9pt; color:#566275">{estado} · capturada el {captura}</span></td>
</tr></table>
<hr>
<p style="margin-top:14px">Estimado(a) <b>{huesped}</b>:</p>
<p>Su reservación quedó registrada con los datos siguientes.</p>
<table width="100%" cellspacing="0" cellpadding="6" style="margin-top:10px">
<tr bgcolor="#f3f5f8">
<td><span style="color:#566275; font-size:9pt">LLEGADA</span><br><b>{llegada}</b></td>
<td><span style="color:#566275; font-size:9pt">SALIDA</span><br><b>{salida}</b></td>
<td><span style="color:#566275; font-size:9pt">NOCHES</span><br><b>{noches}</b></td>
<td><span style="color:#566275; font-size:9pt">CLIENTE</span><br><b>{cliente}</b></td>
</tr></table>
<table width="100%" cellspacing="0" cellpadding="5" style="margin-top:18px">
<tr bgcolor="#1f5fbf" style="color:#ffffff">
<td><b>Habitación</b></td><td><b>Descripción</b></td><td><b>Del</b></td><td><b>Al</b></td>
<td align="center"><b>Personas</b></td><td align="right"><b>Importe</b></td></tr>
{renglones}
</table>
<hr>
<table width="100%" cellspacing="0" cellpadding="3">
<tr><td align="right" width="80%">Subtotal</td><td align="right">{subtotal}</td></tr>
<tr><td align="right">Impuestos</td><td align="right">{impuestos}</td></tr>
<tr><td align="right"><b>Total {moneda}</b></td><td align="right"><b>{total}</b></td></tr>
</table>
<p style="margin-top:16px">{notas}</p>
</body></html>)");
}

QString PlantillaDe(autonomo::Conexion& conexion, const std::string& formato) {
  const auto rs =
      conexion.Consulta("SELECT Fm_Contenido FROM Formato WHERE Fm_Cve_Formato = ?", {formato + kFinFormatoHtml});
  if (!rs->Eof() && !rs->Fields(0).Value().EsNulo()) {
    const QString propia = Q(com::CStr(rs->Fields(0).Value()));
    if (!propia.trimmed().isEmpty()) return propia;
  }
  return PlantillaIncluida();
}

QString LlenaPlantilla(const QString& plantilla, const autonomo::Documento& documento) {
  autonomo::Campos campos = autonomo::CamposDe(documento);
  for (auto& [nombre, valor] : campos) valor = Segura(valor).toStdString();
  QString filas;
  for (const auto& r : documento.renglones) filas += FilaDe(r);
  campos["renglones"] = filas.toStdString();
  return Q(autonomo::Rellena(plantilla.toStdString(), campos));
}

void EscribePdf(const QString& html, const QString& titulo, const QString& ruta) {
  QFile archivo(ruta);
  const auto falla = [&] {
    throw com::Error(com::error::kSoloLectura,
                     "No se puede escribir " + ruta.toStdString() + ": " + archivo.errorString().toStdString());
  };
  if (!archivo.open(QIODevice::WriteOnly)) falla();
  QPdfWriter pdf(&archivo);
  pdf.setTitle(titulo);
  pdf.setCreator(QStringLiteral("reservas"));
  pdf.setPageSize(QPageSize(QPageSize::Letter));
  pdf.setPageMargins(QMarginsF(0.75, 0.75, 0.75, 0.75), QPageLayout::Inch);
  pdf.setResolution(kPpp * 10);
  QTextDocument documento;
  documento.documentLayout()->setPaintDevice(&pdf);
  Prepara(documento, html);
  documento.setPageSize(pdf.pageLayout().paintRectPixels(pdf.resolution()).size());
  documento.print(&pdf);
  // A full disk shows when the last of it is written.
  if (!archivo.flush() || archivo.error() != QFile::NoError) falla();
}

void InstalaImpresion(autonomo::Anfitrion& anfitrion, std::function<QWidget*()> frente) {
  com::RegistraClase(anfitrion::kClaseImpresion, [&anfitrion, frente] {
    return com::Ptr<com::Desconocido>(new ServicioImpresion(anfitrion, frente));
  });
}

}  // namespace vista
