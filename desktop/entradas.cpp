#include "desktop/entradas.h"

#include <QAction>
#include <QColorDialog>
#include <QComboBox>
#include <QKeyEvent>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QRegularExpression>

#include "desktop/calendario.h"
#include "desktop/estilo.h"
#include "desktop/fechas.h"
#include "desktop/iconos.h"
#include "desktop/vista.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"
#include "publico/publico.h"

namespace vista {

namespace {

constexpr int kAltoEntrada = 26;  // pixels
constexpr int kMuestra = 16;      // swatch, pixels

// The day that short dates are read by; the desk's own when the server's cannot be had.
com::Fecha HoyDelServidor() {
  try {
    return com::SoloFecha(publico::Utilerias().FechaServidor());
  } catch (const com::Error&) {
    return DeDate(QDate::currentDate());
  }
}

void Disena(QLineEdit* linea, const QString& texto, const QString& ayuda) {
  linea->setText(texto);
  linea->setPlaceholderText(ayuda);
  linea->setMinimumHeight(kAltoEntrada);
}

QLineEdit* Linea(const QString& texto, const QString& ayuda, QWidget* padre) {
  auto* linea = new QLineEdit(padre);
  Disena(linea, texto, ayuda);
  return linea;
}

// Opens the calendar by its keys, and goes a day on or back by the arrows.
class LineaFecha : public QLineEdit {
 public:
  using QLineEdit::QLineEdit;
  std::function<void()> alAbrir;
  std::function<void(int dias)> alAndar;

 protected:
  void keyPressEvent(QKeyEvent* evento) override {
    const bool alt = evento->modifiers().testFlag(Qt::AltModifier);
    if (evento->key() == Qt::Key_F4 || (alt && evento->key() == Qt::Key_Down)) return alAbrir();
    if (evento->key() == Qt::Key_Up) return alAndar(1);
    if (evento->key() == Qt::Key_Down) return alAndar(-1);
    QLineEdit::keyPressEvent(evento);
  }
};

// "#RRGGBB" as a whole number 0x00BBGGRR; another text stays as it is.
std::string NumeroDeColor(const QString& texto) {
  static const QRegularExpression forma(QStringLiteral("^#[0-9A-Fa-f]{6}$"));
  if (!forma.match(texto).hasMatch()) return texto.toStdString();
  const QColor c(texto);
  return std::to_string(c.red() | c.green() << 8 | c.blue() << 16);
}

}  // namespace

QColor ColorDe(const std::string& valor) {
  try {
    const std::int32_t n = com::CLng(valor);
    return {n & 0xFF, n >> 8 & 0xFF, n >> 16 & 0xFF};
  } catch (const com::Error&) {
    return {};
  }
}

QString ColorLegible(const std::string& valor) {
  const QColor c = valor.empty() ? QColor() : ColorDe(valor);
  return c.isValid() ? c.name().toUpper() : Q(valor);
}

Entrada EntradaTexto(const QString& texto, const QString& ayuda, bool numero, QWidget* padre) {
  QLineEdit* linea = Linea(texto, ayuda, padre);
  if (numero) linea->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return {linea, [linea] { return linea->text().toStdString(); }};
}

Entrada EntradaNota(const QString& texto, QWidget* padre) {
  auto* notas = new QPlainTextEdit(texto, padre);
  notas->setMinimumHeight(180);
  notas->setTabChangesFocus(true);
  return {notas, [notas] { return notas->toPlainText().toStdString(); }};
}

Entrada EntradaFecha(const QString& texto, const QString& ayuda, QWidget* padre) {
  auto* linea = new LineaFecha(padre);
  Disena(linea, texto, ayuda);
  const auto leida = [linea] { return LeeFecha(linea->text(), HoyDelServidor()); };
  const auto abre = [linea, leida] {
    const auto fecha = leida();
    MuestraCalendario(
        *linea, linea->accessibleName(), ADate(fecha.value_or(HoyDelServidor())),
        [linea](const QDate& dia) { linea->setText(Q(regional::FechaCorta(DeDate(dia)))); }, ADate(HoyDelServidor()));
  };
  QAction* boton = linea->addAction(Icono(QStringLiteral("calendario"), Colores().tenue), QLineEdit::TrailingPosition);
  boton->setToolTip(QStringLiteral("Calendario (F4)"));
  QObject::connect(boton, &QAction::triggered, linea, abre);
  linea->alAbrir = abre;
  linea->alAndar = [linea, leida](int dias) {
    const auto fecha = leida();
    if (!fecha) return;
    linea->setText(Q(regional::FechaCorta(com::MasDias(*fecha, dias))));
    linea->selectAll();
  };
  return {linea, [linea, leida] {
            const auto fecha = leida();
            return fecha ? regional::FechaCorta(*fecha) : linea->text().toStdString();
          }};
}

Entrada EntradaLista(const QString& texto, const Opciones& opciones, QWidget* padre) {
  auto* lista = new QComboBox(padre);
  lista->setMinimumHeight(kAltoEntrada);
  for (const auto& [clave, legible] : opciones) lista->addItem(Q(legible), Q(clave));
  if (!texto.isEmpty() && lista->findData(texto) < 0) lista->addItem(texto, texto);
  lista->setCurrentIndex(lista->findData(texto));
  return {lista, [lista] { return lista->currentData().toString().toStdString(); }};
}

Entrada EntradaColor(const QString& texto, QWidget* padre) {
  QLineEdit* linea = Linea(ColorLegible(texto.toStdString()), QStringLiteral("#RRGGBB; vacío: el del tablero"), padre);
  QAction* muestra = linea->addAction(QIcon(), QLineEdit::TrailingPosition);
  muestra->setToolTip(QStringLiteral("Elegir el color"));
  const auto pinta = [linea, muestra] {
    QPixmap cuadro(kMuestra, kMuestra);
    const QString dice = linea->text().trimmed();
    const QColor color = dice.isEmpty() ? QColor() : ColorDe(NumeroDeColor(dice));
    cuadro.fill(color.isValid() ? color : Colores().realce);
    muestra->setIcon(QIcon(cuadro));
  };
  pinta();
  QObject::connect(linea, &QLineEdit::textChanged, linea, pinta);
  QObject::connect(muestra, &QAction::triggered, linea, [linea] {
    const QColor antes = ColorDe(NumeroDeColor(linea->text().trimmed()));
    const QColor elegido = QColorDialog::getColor(antes.isValid() ? antes : Qt::white, linea, QStringLiteral("Color"),
                                                  QColorDialog::DontUseNativeDialog);
    if (elegido.isValid()) linea->setText(elegido.name().toUpper());
  });
  return {linea, [linea] { return NumeroDeColor(linea->text().trimmed()); }};
}

}  // namespace vista
