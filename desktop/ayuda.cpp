#include "desktop/ayuda.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QListWidget>
#include <QScrollBar>
#include <QSplitter>
#include <QTabWidget>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "component/nombres.h"
#include "desktop/dialogos.h"
#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/tablas.h"
#include "desktop/teclas.h"

namespace vista {

namespace {

namespace control = kv207::control;

struct Lugar {
  const char* objeto;    // of a window or of something in it
  const char* capitulo;  // anchor
};
constexpr Lugar kLugares[] = {
    {kv207::forma::kReservacion, "una-reservación-nueva"},
    {control::kFolio, "una-reservación-guardada"},
    {control::kCliente, "el-huésped"},
    {control::kHuesped, "el-huésped"},
    {control::kRenglones, "los-renglones"},
    {control::kTotales, "de-dónde-sale-el-total"},
    {control::kTarjeta, "las-tarjetas"},
    {"menu", "el-hotel"},
    {kv207::forma::kTablero, "el-tablero-de-disponibilidad"},
    {"precios", "el-tablero-de-disponibilidad"},
    {"hoy", "el-día"},
    {"cuadro", "el-cuadro-de-habitaciones"},
    {"cotizacion", "cotizar"},
    {"huesped", "el-huésped"},
    {"cliente_nuevo", "el-huésped"},
    {"cliente", "el-huésped"},
    {"explicacion", "de-dónde-sale-el-total"},
    {"busqueda", "una-reservación-nueva"},
    {"notas", "una-reservación-nueva"},
    {"registro", "una-reservación-guardada"},
    {"impreso", "una-reservación-guardada"},
    {"cifras", "las-cifras"},
    {"guardar", "listas-a-hojas-de-cálculo-y-pdf"},
    {"QFileDialog", "el-primer-hotel"},
    {"calendario", "calendarios-de-las-habitaciones"},
    {"parte", "el-parte-del-día"},
    {"asistente", "el-primer-hotel"},
    {"pendientes", "el-primer-hotel"},
    {"otro_hotel", "el-primer-hotel"},
    {"malas", "el-primer-hotel"},
    {"catalogos", "el-hotel"},
    {"editor_fila", "el-hotel"},
    {"bitacora", "los-correos"},
    {"correos", "los-correos"},
    {"acceso", "usuarios-y-contraseñas"},
    {"mensaje", "mensajes"},
    {"ayuda", "teclas"},
};

constexpr const char* kManual = ":/manual/manual.md";

// As links in the manual name its headings.
QString Ancla(const QString& titulo) {
  QString ancla;
  for (const QChar c : titulo.toLower()) {
    if (c.isLetterOrNumber() || c == QLatin1Char('-')) ancla += c;
    if (c.isSpace()) ancla += QLatin1Char('-');
  }
  return ancla;
}

// The manual with its pictures: those of dark windows where the colours are dark, none wider than its place.
class Hojas : public QTextBrowser {
 public:
  explicit Hojas(QWidget* padre) : QTextBrowser(padre) {
    setOpenLinks(false);
    setFont(Fuente(Letra::Normal));
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& enlace) {
      if (enlace.hasFragment()) Ve(enlace.fragment(QUrl::FullyDecoded));
    });
  }

  void Ve(const QString& ancla) {
    for (QTextBlock b = document()->begin(); b.isValid(); b = b.next()) {
      if (b.blockFormat().headingLevel() == 0 || Ancla(b.text()) != ancla) continue;
      QTextCursor cursor(b);
      setTextCursor(cursor);
      verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect(cursor).top());
      return;
    }
  }

  QVariant loadResource(int tipo, const QUrl& nombre) override {
    if (tipo != QTextDocument::ImageResource) return QTextBrowser::loadResource(tipo, nombre);
    const QString ruta = QStringLiteral(":/manual/") + nombre.path().section(QLatin1Char('/'), -2);
    QString oscura = ruta;
    oscura.replace(QStringLiteral(".png"), QStringLiteral("_oscuro.png"));
    const QImage imagen(EsOscuro() && QFile::exists(oscura) ? oscura : ruta);
    constexpr int kAncho = 640;  // pixels
    return imagen.width() <= kAncho ? imagen : imagen.scaledToWidth(kAncho, Qt::SmoothTransformation);
  }
};

class Ayuda : public QDialog {
 public:
  Ayuda(const std::vector<TeclaUsada>& teclas, QWidget* padre)
      : QDialog(padre), capitulos_(new QListWidget(this)), hojas_(new Hojas(this)) {
    Presenta(*this, QStringLiteral("Ayuda"), "ayuda");
    auto* caja = new QVBoxLayout(this);
    auto* fichas = new QTabWidget(this);
    fichas->setObjectName(QStringLiteral("fichas"));
    fichas->addTab(CreaManual(), QStringLiteral("&Manual"));
    fichas->addTab(CreaTeclas(teclas), QStringLiteral("&Teclas"));
    caja->addWidget(fichas);
    AjustaAPantalla(*this, {980, 680});
    hojas_->setFocus();
  }

  void Ve(const QString& lugar) {
    hojas_->Ve(lugar);
    Senala(lugar);
  }

 private:
  QWidget* CreaManual() {
    QFile archivo{QLatin1String(kManual)};
    const QString texto = archivo.open(QIODevice::ReadOnly) ? QString::fromUtf8(archivo.readAll()) : QString();
    hojas_->setObjectName(QStringLiteral("hojas"));
    hojas_->setAccessibleName(QStringLiteral("Manual de la recepción"));
    hojas_->setMarkdown(texto);
    capitulos_->setAccessibleName(QStringLiteral("Capítulos"));
    capitulos_->setUniformItemSizes(true);
    for (QTextBlock b = hojas_->document()->begin(); b.isValid(); b = b.next()) {
      if (b.blockFormat().headingLevel() == 0) continue;
      auto* renglon = new QListWidgetItem(b.text(), capitulos_);
      renglon->setData(Qt::UserRole, Ancla(b.text()));
    }
    connect(capitulos_, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem* renglon) {
      if (renglon != nullptr && capitulos_->hasFocus()) hojas_->Ve(renglon->data(Qt::UserRole).toString());
    });
    connect(capitulos_, &QListWidget::itemClicked, this,
            [this](const QListWidgetItem* renglon) { hojas_->Ve(renglon->data(Qt::UserRole).toString()); });
    auto* lados = new QSplitter(this);
    lados->addWidget(capitulos_);
    lados->addWidget(hojas_);
    lados->setStretchFactor(1, 1);
    lados->setSizes({230, 730});
    return lados;
  }

  QWidget* CreaTeclas(const std::vector<TeclaUsada>& teclas) {
    auto* tabla = CreaTabla({QStringLiteral("Tecla"), QStringLiteral("Qué hace"), QStringLiteral("Dónde")}, this);
    tabla->setObjectName(QStringLiteral("teclas"));
    tabla->setAccessibleName(QStringLiteral("Teclas"));
    for (const TeclaUsada& t : teclas) AgregaFila(tabla, {t.tecla, t.que, t.donde});
    tabla->resizeColumnsToContents();
    return tabla;
  }

  void Senala(const QString& lugar) {
    for (int i = 0; i < capitulos_->count(); ++i) {
      if (capitulos_->item(i)->data(Qt::UserRole).toString() == lugar) capitulos_->setCurrentRow(i);
    }
  }

  QListWidget* capitulos_;
  Hojas* hojas_;
};

}  // namespace

QString LugarDelManual(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->isWindow() ? nullptr : widget->parentWidget()) {
    const QString nombre = widget->objectName();
    for (const Lugar& lugar : kLugares) {
      if (nombre == QLatin1String(lugar.objeto)) return QString::fromUtf8(lugar.capitulo);
    }
  }
  return {};
}

QStringList CapitulosDelManual() {
  QStringList capitulos;
  QFile archivo{QLatin1String(kManual)};
  if (!archivo.open(QIODevice::ReadOnly)) return capitulos;
  for (const QString& linea : QString::fromUtf8(archivo.readAll()).split(QLatin1Char('\n'))) {
    if (linea.startsWith(QStringLiteral("## "))) capitulos << Ancla(linea.mid(3).trimmed());
  }
  return capitulos;
}

void AbreManual(const QString& lugar, const std::vector<TeclaUsada>& teclas, QWidget* padre) {
  Ayuda ayuda(teclas, padre);
  // Where things are is known once it is shown.
  ayuda.show();
  if (!lugar.isEmpty()) ayuda.Ve(lugar);
  Atiende(ayuda);
}

TeclaAyuda::TeclaAyuda(std::function<std::vector<TeclaUsada>()> teclas) : teclas_(std::move(teclas)) {
  qApp->installEventFilter(this);
}

void TeclaAyuda::Abre() {
  if (abierta_ || QApplication::activePopupWidget() != nullptr) return;
  abierta_ = true;
  QWidget* ventana = QApplication::activeWindow();
  const QWidget* foco = QApplication::focusWidget();
  // That of whose window it is, where it has none.
  QString lugar;
  for (const QWidget* w = foco != nullptr ? foco : ventana; w != nullptr && lugar.isEmpty();
       w = w->window()->parentWidget()) {
    lugar = LugarDelManual(w);
  }
  Corre([&] { AbreManual(lugar, teclas_(), ventana); });
  abierta_ = false;
}

bool TeclaAyuda::eventFilter(QObject* objeto, QEvent* evento) {
  if (evento->type() != QEvent::KeyPress || !objeto->isWidgetType()) return false;
  const auto& tecla = *static_cast<QKeyEvent*>(evento);
  if (tecla.key() != Qt::Key_F1 || !SinModificadores(tecla)) return false;
  if (!tecla.isAutoRepeat()) Abre();
  return true;
}

}  // namespace vista
