#include "desktop/vista_previa.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QProcess>
#include <QProcessEnvironment>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/archivos.h"
#include "desktop/dialogos.h"
#include "desktop/estilo.h"
#include "host/standalone/pliego.h"
#include "host/standalone/proceso.h"
#include "platform/com/error.h"

namespace vista {

namespace {

// All pages, one under the other.
class Hojas : public QWidget {
 public:
  explicit Hojas(const QString& html) : pliego_(html) {
    setFixedSize(kAncho + 2 * kAire, pliego_.Paginas() * (kAlto + kAire) + kAire);
  }
  const autonomo::Pliego& pliego() const { return pliego_; }
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
      p.scale(kVista / autonomo::kFinura, kVista / autonomo::kFinura);
      pliego_.Pinta(p, pagina);
      p.restore();
    }
  }

 private:
  static constexpr double kVista = 0.75;  // of the real size
  static constexpr int kAire = 12;
  static constexpr int kAncho = static_cast<int>(autonomo::kAnchoHoja * kVista),
                       kAlto = static_cast<int>(autonomo::kAltoHoja * kVista);
  autonomo::Pliego pliego_;
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
      : QDialog(padre), html_(html), nombre_(nombre), hojas_(new Hojas(html)), zona_(new ZonaHojas(this)) {
    Presenta(*this, nombre, "impreso");
    auto* caja = new QVBoxLayout(this);
    for (const QString& aviso : avisos) caja->addWidget(CreaAviso(aviso));
    zona_->setObjectName(QStringLiteral("hojas"));
    zona_->setWidget(hojas_);
    zona_->setAlignment(Qt::AlignCenter);
    zona_->setMinimumSize(QSize(hojas_->width() + 24, 420).boundedTo(screen()->availableSize() * 6 / 10));
    caja->addWidget(zona_);
    caja->addLayout(CreaPie());
    connect(zona_->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { DiPagina(); });
    // As much of a page as the screen has room for.
    const int alto = std::min(hojas_->height() + 120, screen()->availableGeometry().height() * 85 / 100);
    AjustaAPantalla(*this, {std::max(sizeHint().width(), hojas_->width() + kAlLado), alto});
    DiPagina();
    zona_->setFocus();
  }

 private:
  QLabel* CreaAviso(const QString& texto) {
    auto* rotulo = new QLabel(QStringLiteral("⚠ ") + texto, this);
    rotulo->setObjectName(QStringLiteral("aviso"));
    rotulo->setTextFormat(Qt::PlainText);
    rotulo->setWordWrap(true);
    QPalette tinta = rotulo->palette();
    tinta.setColor(QPalette::WindowText, Colores().peligro);
    rotulo->setPalette(tinta);
    return rotulo;
  }

  // Which page is seen, and the buttons.
  QLayout* CreaPie() {
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
    pie->addWidget(botones);
    return pie;
  }

  void DiPagina() {
    const int medio = zona_->verticalScrollBar()->value() + zona_->viewport()->height() / 2;
    const int pagina = hojas_->PaginaEn(medio);
    const QString nombre = hojas_->pliego().NombrePagina(pagina);
    if (cual_->text() == nombre) return;
    cual_->setText(nombre);
    zona_->setAccessibleName(QStringLiteral("Vista previa, ") + nombre);
    zona_->setAccessibleDescription(hojas_->pliego().Texto(pagina));
  }

  void Falla(const std::string& texto) { Avisa(texto, caja::kCritico, this, "Impresión"); }

  bool Escribe(const QString& ruta) {
    try {
      autonomo::EscribePdf(html_, nombre_, ruta);
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
  QLabel* cual_ = nullptr;
};

}  // namespace

void AbreEnVisor(const QString& ruta, QObject* duenio, const std::function<void()>& sinVisor) {
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
  QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
  for (const char* variable : autonomo::kVariablesSecretas) entorno.remove(QLatin1String(variable));
  abridor->setProcessEnvironment(entorno);
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

}  // namespace vista
