#include "desktop/listas.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <functional>
#include <utility>

#include "desktop/dialogos.h"
#include "desktop/entradas.h"
#include "desktop/estilo.h"
#include "desktop/exportar.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/tablas.h"
#include "desktop/vista.h"
#include "host/standalone/bandeja.h"
#include "host/standalone/listados.h"
#include "host/standalone/listas.h"
#include "host/standalone/servidor_correo.h"
#include "platform/com/error.h"
#include "platform/com/variant.h"
#include "platform/regional/regional.h"

namespace vista {

namespace {

using autonomo::FiltroLista;

// A table under the three entries of its filter. What they hold counts from the button, or Enter in one of them.
class Lista : public Ficha {
 public:
  // llena adds the rows that pass the filter.
  Lista(const QString& titulo, const QString& objeto, const QStringList& columnas,
        std::function<void(QTableWidget*, const FiltroLista&)> llena, QWidget* padre)
      : Ficha(titulo, padre), llena_(std::move(llena)) {
    setObjectName(objeto);
    auto* filtro = new QHBoxLayout;
    const auto entrada = [&](const QString& rotulo, const QString& nombre, const Entrada& e) {
      e.widget->setObjectName(nombre);
      e.widget->setAccessibleName(rotulo);
      auto* letrero = new QLabel(QLatin1Char('&') + rotulo, this);
      letrero->setBuddy(e.widget);
      filtro->addWidget(letrero);
      filtro->addWidget(e.widget);
      return e;
    };
    folio_ = entrada(QStringLiteral("Folio"), QStringLiteral("folio"), EntradaTexto({}, {}, false, this));
    usuario_ = entrada(QStringLiteral("Usuario"), QStringLiteral("usuario"), EntradaTexto({}, {}, false, this));
    dia_ = entrada(QStringLiteral("Día"), QStringLiteral("dia"), EntradaFecha({}, {}, this));
    auto* busca = new QPushButton(Icono(QStringLiteral("buscar")), QStringLiteral("&Buscar"), this);
    busca->setObjectName(QStringLiteral("buscar"));
    busca->setDefault(true);
    filtro->addWidget(busca);
    caja()->addLayout(filtro);
    connect(busca, &QPushButton::clicked, this, [this] { Busca(); });
    PonTabla(titulo, columnas);
  }

  QTableWidget* tabla() { return tabla_; }
  // What the rows in sight were filtered by.
  const FiltroLista& filtro() const { return filtro_; }

  void Busca() {
    Corre([this] {
      FiltroLista filtro;
      filtro.folio = folio_.texto();
      filtro.usuario = usuario_.texto();
      if (const std::string dia = com::Recorta(dia_.texto()); !dia.empty()) {
        try {
          filtro.dia = com::CDate(dia);
        } catch (const com::Error&) {
          cuenta_->setText(QStringLiteral("«%1» no es una fecha").arg(Q(dia)));
          dia_.widget->setFocus();
          return;
        }
      }
      filtro_ = filtro;
      Llena();
      tabla_->scrollToTop();
    });
  }

  void Dice(const QString& texto) { cuenta_->setText(texto); }

  // Fills it again by the filter that was searched for last; row and place stay.
  void Refresca() {
    const int fila = tabla_->currentRow(), lugar = tabla_->verticalScrollBar()->value();
    const QVariant llave = fila < 0 ? QVariant() : tabla_->item(fila, 0)->data(kLlave);
    Llena();
    for (int f = 0; llave.isValid() && f < tabla_->rowCount(); ++f) {
      if (tabla_->item(f, 0)->data(kLlave) == llave) tabla_->selectRow(f);
    }
    tabla_->verticalScrollBar()->setValue(lugar);
  }

  static constexpr int kLlave = Qt::UserRole;  // of a row's first cell: which row it is

 private:
  void PonTabla(const QString& titulo, const QStringList& columnas) {
    tabla_ = CreaTabla(columnas, this);
    tabla_->setAccessibleName(titulo);
    tabla_->setWordWrap(true);
    tabla_->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    caja()->addWidget(tabla_);
    cuenta_ = new QLabel(this);
    cuenta_->setObjectName(QStringLiteral("cuenta"));
    Atenua(*cuenta_);
    caja()->addWidget(cuenta_);
  }

  void Llena() {
    tabla_->setRowCount(0);
    llena_(tabla_, filtro_);
    Acomoda();
  }

  void Acomoda() {
    constexpr int kMasAncha = 240;  // pixels
    for (int f = 0; f < tabla_->rowCount(); ++f) {
      for (int c = 0; c < tabla_->columnCount(); ++c)
        tabla_->item(f, c)->setTextAlignment(Qt::AlignLeft | Qt::AlignTop);
    }
    // The last one has the rest: what is asked to fit its text would lose that once it is on the screen.
    for (int c = 0; c + 1 < tabla_->columnCount(); ++c) {
      tabla_->resizeColumnToContents(c);
      tabla_->setColumnWidth(c, std::min(kMasAncha, tabla_->columnWidth(c)));
    }
    const int n = tabla_->rowCount();
    cuenta_->setText(n == 0 ? QStringLiteral("No hay ninguno")
                     : static_cast<std::size_t>(n) < autonomo::kMasRenglones
                         ? QString::number(n) + (n == 1 ? QStringLiteral(" renglón") : QStringLiteral(" renglones"))
                         : QStringLiteral("Los últimos %1; para ver otros, filtre por folio, usuario o día").arg(n));
  }

  std::function<void(QTableWidget*, const FiltroLista&)> llena_;
  FiltroLista filtro_;
  Entrada folio_, usuario_, dia_;
  QTableWidget* tabla_ = nullptr;
  QLabel* cuenta_ = nullptr;
};

// Why no mail leaves from this machine; "" when they do.
std::string Impedimento(autonomo::Conexion& conexion) {
  try {
    if (autonomo::LeeServidor(conexion, autonomo::LeeContrasenaDeCorreo(std::nullopt))) return {};
    return "falta el parámetro CORREO_SERVIDOR";
  } catch (const com::Error& e) {
    return e.Descripcion();
  }
}

bool ConfirmaOtraVez(const autonomo::CorreoEnBandeja& correo, QWidget* padre) {
  const bool pudoLlegar = correo.estado == autonomo::correo::kEnviado || correo.estado == autonomo::correo::kIncierto;
  return Confirma("¿Enviar otra vez «" + correo.asunto + "» a " + correo.para + "?\r\n" +
                      autonomo::EstadoEnPalabras(correo) +
                      (pudoLlegar ? ". El huésped puede recibirlo dos veces." : "."),
                  caja::kPregunta, padre);
}

// Puts the buttons below the list and shows it until it is closed. lee: its rows for a file; otro: a button at their
// left, null none.
void MuestraLista(Lista& lista, const std::function<listado::Listado()>& lee, QPushButton* otro, const QSize& tamano) {
  auto* botones = new QHBoxLayout;
  if (otro != nullptr) botones->addWidget(otro);
  botones->addStretch();
  botones->addWidget(BotonExportar(&lista, lee, [&lista](const QString& texto) { lista.Dice(texto); }));
  lista.caja()->addLayout(botones);
  lista.Termina();
  AjustaAPantalla(lista, tamano);
  lista.Busca();
  lista.exec();
}

// The outbox while it is shown.
class Bandeja {
 public:
  Bandeja(autonomo::Anfitrion& anfitrion, QWidget* padre)
      : anfitrion_(anfitrion),
        conexion_(*anfitrion.conexion()),
        lista_(
            QStringLiteral("Correos"), QStringLiteral("correos"),
            {QStringLiteral("Fecha"), QStringLiteral("Usuario"), QStringLiteral("Folio"), QStringLiteral("Para"),
             QStringLiteral("Asunto"), QStringLiteral("Estado")},
            [this](QTableWidget* tabla, const FiltroLista& filtro) { Llena(*tabla, filtro); }, padre) {}
  Bandeja(const Bandeja&) = delete;
  Bandeja& operator=(const Bandeja&) = delete;

  void Muestra() {
    PonImpedimento();
    PonOtraVez();
    Mira();
    MuestraLista(lista_, [this] { return autonomo::ListadoDe(autonomo::LeeBandeja(conexion_, lista_.filtro())); },
                 otraVez_, {920, 560});
  }

 private:
  void Llena(QTableWidget& tabla, const FiltroLista& filtro) {
    correos_ = autonomo::LeeBandeja(conexion_, filtro);
    for (const auto& c : correos_) {
      AgregaFila(&tabla, {Q(regional::TextoFecha(c.fecha)), Q(c.usuario), Q(c.folio), Q(c.para), Q(c.asunto),
                          Q(autonomo::EstadoEnPalabras(c))});
      tabla.item(tabla.rowCount() - 1, 0)->setData(Lista::kLlave, c.id);
    }
  }

  void PonImpedimento() {
    const std::string motivo = Impedimento(conexion_);
    if (motivo.empty()) return;
    auto* aviso = new QLabel(QStringLiteral("⚠ Desde este equipo no sale ningún correo: ") + Q(motivo), &lista_);
    aviso->setObjectName(QStringLiteral("impedimento"));
    aviso->setWordWrap(true);
    lista_.caja()->addWidget(aviso);
  }

  void PonOtraVez() {
    otraVez_ = new QPushButton(Icono(QStringLiteral("correo")), QStringLiteral("&Enviar otra vez"), &lista_);
    otraVez_->setObjectName(QStringLiteral("otra_vez"));
    otraVez_->setAutoDefault(false);
    otraVez_->setEnabled(false);
    QObject::connect(lista_.tabla(), &QTableWidget::itemSelectionChanged, otraVez_,
                     [this] { otraVez_->setEnabled(Elegido() != nullptr && autonomo::SeEnviaOtraVez(*Elegido())); });
    QObject::connect(otraVez_, &QPushButton::clicked, &lista_, [this] { EnviaOtraVez(); });
  }

  // The mail of the chosen row; null without one.
  const autonomo::CorreoEnBandeja* Elegido() {
    const QTableWidget& tabla = *lista_.tabla();
    const bool hay = tabla.currentRow() >= 0 && !tabla.selectedItems().isEmpty();
    return hay ? &correos_[static_cast<std::size_t>(tabla.currentRow())] : nullptr;
  }

  void EnviaOtraVez() {
    if (Elegido() == nullptr) return;
    const autonomo::CorreoEnBandeja correo = *Elegido();
    if (!ConfirmaOtraVez(correo, &lista_)) return;
    Corre([&] {
      try {
        autonomo::EnviaOtraVez(conexion_, correo.id, anfitrion_.reloj().Ahora());
      } catch (const com::Error& e) {
        Avisa(e.Descripcion(), caja::kAviso, &lista_);
      }
      lista_.Refresca();
    });
  }

  // What becomes of the mails behind the clerk's back.
  void Mira() {
    constexpr int kMiradaMs = 2000;
    QObject::connect(&mirada_, &QTimer::timeout, &lista_, [this] {
      if (QApplication::activeModalWidget() != &lista_ || conexion_.EnTransaccion()) return;
      try {
        if (autonomo::LeeBandeja(conexion_, lista_.filtro()) != correos_) lista_.Refresca();
      } catch (const com::Error&) {  // what she does next says so
        mirada_.stop();
      }
    });
    mirada_.start(kMiradaMs);
  }

  autonomo::Anfitrion& anfitrion_;
  autonomo::Conexion& conexion_;
  std::vector<autonomo::CorreoEnBandeja> correos_;  // a row each
  Lista lista_;
  QPushButton* otraVez_ = nullptr;
  QTimer mirada_;
};

}  // namespace

void MuestraBitacora(autonomo::Anfitrion& anfitrion, QWidget* padre) {
  autonomo::Conexion& conexion = *anfitrion.conexion();
  Lista lista(
      QStringLiteral("Bitácora"), QStringLiteral("bitacora"),
      {QStringLiteral("Fecha"), QStringLiteral("Usuario"), QStringLiteral("Folio"), QStringLiteral("Cambio")},
      [&](QTableWidget* tabla, const FiltroLista& filtro) {
        for (const auto& e : autonomo::LeeBitacora(conexion, filtro)) {
          AgregaFila(tabla, {Q(regional::TextoFecha(e.fecha)), Q(e.usuario), Q(e.folio),
                             Q(autonomo::SinLineasVacias(e.texto))});
        }
      },
      padre);
  MuestraLista(lista, [&] { return autonomo::ListadoDe(autonomo::LeeBitacora(conexion, lista.filtro())); }, nullptr,
               {760, 560});
}

void MuestraBandeja(autonomo::Anfitrion& anfitrion, QWidget* padre) { Bandeja(anfitrion, padre).Muestra(); }

}  // namespace vista
