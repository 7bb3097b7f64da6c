#include "desktop/exportar.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

#include "desktop/archivos.h"
#include "desktop/dialogos.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/vista.h"
#include "desktop/vista_previa.h"
#include "guion/parte_diario.h"
#include "guion/salidas.h"
#include "host/standalone/exportacion.h"
#include "platform/com/error.h"
#include "publico/publico.h"
#include "recepcion/cuadro.h"

namespace vista {

namespace {

const std::vector<TipoDeArchivo>& TiposDeLista() {
  static const std::vector<TipoDeArchivo> tipos{
      {QStringLiteral("Hoja de cálculo, separada por comas: México, Centroamérica"), QStringLiteral("csv")},
      {QStringLiteral("Hoja de cálculo, separada por punto y coma: España, Sudamérica"), QStringLiteral("csv")},
      {QStringLiteral("Documento PDF"), QStringLiteral("pdf")}};
  return tipos;
}

// Asks for a file until it is written, or none is wanted: "" then. What was refused is proposed again.
QString Guarda(const QString& titulo, const QString& nombre, const std::vector<TipoDeArchivo>& tipos, QWidget* padre,
               const std::function<void(const RutaElegida&)>& escribe) {
  std::optional<RutaElegida> elegida;
  while ((elegida = PreguntaRuta(titulo, nombre, tipos, padre, {}, elegida ? &*elegida : nullptr))) {
    try {
      escribe(*elegida);
      return elegida->ruta;
    } catch (const com::Error& e) {
      Avisa(e.Descripcion(), caja::kAviso, padre);
    }
  }
  return {};
}

// The list's key, wherever the keyboard is in its window: a field has a use of its own for it, and gives it up.
class AtajoExportar : public QShortcut {
 public:
  explicit AtajoExportar(QWidget* ventana) : QShortcut(QKeySequence(kTecla), ventana), ventana_(ventana) {
    setContext(Qt::WidgetWithChildrenShortcut);
    qApp->installEventFilter(this);
  }

  bool eventFilter(QObject* objeto, QEvent* evento) override {
    if (evento->type() != QEvent::ShortcutOverride || !objeto->isWidgetType()) return false;
    const auto* w = static_cast<QWidget*>(objeto);
    const bool suya = static_cast<QKeyEvent*>(evento)->keyCombination() == kTecla;
    if (!suya || (w != ventana_ && !ventana_->isAncestorOf(w))) return false;
    evento->ignore();
    return true;
  }

 private:
  static constexpr QKeyCombination kTecla{Qt::ControlModifier, Qt::Key_E};
  QWidget* ventana_;
};

}  // namespace

QString ExportaLista(const listado::Listado& lista, QWidget* padre) {
  const autonomo::Membrete membrete{publico::LeeTexto(anfitrion::parametro::kNombreHotel),
                                    publico::Utilerias().FechaServidor()};
  return Guarda(QStringLiteral("Exportar ") + Q(lista.titulo), Q(lista.titulo), TiposDeLista(), padre,
                [&](const RutaElegida& elegida) {
                  const auto formato = elegida.tipo == 1 ? listado::kConPuntoYComa : listado::kConComas;
                  autonomo::Exporta(lista, membrete, formato, elegida.ruta.toStdString());
                });
}

QPushButton* BotonExportar(QWidget* ventana, std::function<listado::Listado()> lista,
                           std::function<void(const QString&)> dice) {
  auto* boton = new QPushButton(QStringLiteral("E&xportar… (Ctrl+E)"), ventana);
  boton->setObjectName(QStringLiteral("exportar"));
  boton->setAutoDefault(false);
  QObject::connect(boton, &QPushButton::clicked, ventana, [ventana, lista = std::move(lista), dice = std::move(dice)] {
    Corre([&] {
      const QString ruta = ExportaLista(lista(), ventana);
      if (!ruta.isEmpty()) dice(QStringLiteral("Quedó en ") + QDir::toNativeSeparators(ruta));
    });
  });
  QObject::connect(new AtajoExportar(ventana), &QShortcut::activated, boton, &QPushButton::click);
  return boton;
}

void ExportaCalendario(autonomo::Anfitrion& anfitrion, QWidget* padre) {
  recepcion::Cuadro cuadro;
  cuadro.Abre();
  QDialog dialogo(padre);
  dialogo.setObjectName(QStringLiteral("calendario"));
  dialogo.setWindowTitle(QStringLiteral("Calendario de una habitación"));
  auto* caja = new QVBoxLayout(&dialogo);
  auto* forma = new QFormLayout;
  auto* habitacion = new QComboBox(&dialogo);
  habitacion->setObjectName(QStringLiteral("habitacion"));
  habitacion->addItem(QStringLiteral("Todas, en un calendario"), QString());
  for (const recepcion::Habitacion& h : cuadro.habitaciones())
    habitacion->addItem(Q(h.clave) + QLatin1Char(' ') + Q(h.nombre), Q(h.clave));
  habitacion->setCurrentIndex(habitacion->count() > 1 ? 1 : 0);
  forma->addRow(QStringLiteral("&Habitación"), habitacion);
  auto* nombres = new QCheckBox(QStringLiteral("Con los &nombres y folios de los huéspedes"), &dialogo);
  nombres->setObjectName(QStringLiteral("nombres"));
  forma->addRow(QString(), nombres);
  caja->addLayout(forma);
  auto* botones = new QDialogButtonBox(&dialogo);
  botones->addButton(QStringLiteral("&Guardar…"), QDialogButtonBox::AcceptRole)
      ->setObjectName(QStringLiteral("guardar"));
  botones->addButton(QStringLiteral("&Cancelar"), QDialogButtonBox::RejectRole);
  QObject::connect(botones, &QDialogButtonBox::accepted, &dialogo, &QDialog::accept);
  QObject::connect(botones, &QDialogButtonBox::rejected, &dialogo, &QDialog::reject);
  caja->addWidget(botones);
  if (Atiende(dialogo) != QDialog::Accepted) return;
  const QString clave = habitacion->currentData().toString();
  Guarda(QStringLiteral("Guardar el calendario"),
         clave.isEmpty() ? QStringLiteral("habitaciones") : QStringLiteral("habitacion-") + clave,
         {{QStringLiteral("Calendario"), QStringLiteral("ics")}}, padre, [&](const RutaElegida& elegida) {
           guion::ExportaAgenda(anfitrion.conexion(), clave.toStdString(), nombres->isChecked(),
                                anfitrion.reloj().Ahora(), elegida.ruta.toStdString());
         });
}

void MuestraParte(autonomo::Anfitrion& anfitrion, QWidget* padre) {
  const recepcion::Parte parte = guion::LeeParteDe(anfitrion.conexion(), anfitrion.reloj().Ahora());
  const QString nombre = QStringLiteral("Parte ") + Q(com::AIso(com::SoloFecha(parte.momento)));
  const auto vista = CreaVistaPrevia(Q(recepcion::HtmlDe(parte)), nombre, {}, padre);
  vista->setObjectName(QStringLiteral("parte"));
  vista->setWindowTitle(Q(recepcion::TituloDe(parte)));
  if (auto* botones = vista->findChild<QDialogButtonBox*>()) {
    auto* envia = botones->addButton(QStringLiteral("&Enviar por correo"), QDialogButtonBox::ActionRole);
    envia->setObjectName(QStringLiteral("enviar"));
    QObject::connect(envia, &QPushButton::clicked, vista.get(), [&] {
      try {
        const int cuantos = guion::EnviaParte(anfitrion.conexion(), anfitrion.reloj().Ahora(), anfitrion.usuario());
        Avisa("El parte quedó en la bandeja de salida para " +
                  (cuantos == 1 ? std::string("una dirección") : std::to_string(cuantos) + " direcciones"),
              caja::kInforme, vista.get());
      } catch (const com::Error& e) {
        Avisa(e.Descripcion(), caja::kAviso, vista.get());
      }
    });
  }
  vista->exec();
}

}  // namespace vista
