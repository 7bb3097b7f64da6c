#include "desktop/pantallas.h"

#include <QDate>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QShortcut>

#include "desktop/despues.h"
#include "desktop/dialogos.h"
#include "desktop/editor_catalogos.h"
#include "desktop/escritorio_qt.h"
#include "desktop/estilo.h"
#include "desktop/fechas.h"
#include "desktop/guarda.h"
#include "desktop/listas.h"
#include "desktop/tablas.h"
#include "desktop/visor.h"
#include "host/standalone/catalogos.h"
#include "host/standalone/documento.h"
#include "host/standalone/permisos.h"
#include "host/standalone/precios.h"
#include "platform/ado/celda.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"
#include "recepcion/huespedes.h"
#include "schema/esquema.h"

namespace vista {

namespace pantalla = anfitrion::pantalla;

std::string BuscaReservacion(autonomo::Conexion& conexion, EscritorioQt& escritorio) {
  std::vector<std::pair<std::string, std::string>> filas;
  const auto rs = conexion.Consulta(
      "SELECT R.Rs_Folio, C.Cl_Razon_Social_1, R.Rs_Llegada, R.Rs_Salida, R.Es_Cve_Estado FROM Reservacion R "
      "LEFT JOIN Cliente C ON C.Cl_Cve_Cliente = R.Rs_Huesped ORDER BY R.Rs_Llegada DESC, R.Rs_Folio DESC");
  for (; !rs->Eof(); rs->MoveNext()) {
    std::string nombre = ado::Celda(*rs, 1) + "   " + ado::Celda(*rs, 2) + " – " + ado::Celda(*rs, 3);
    if (ado::Celda(*rs, 4) == esquema::kCancelada) nombre += "   (cancelada)";
    filas.emplace_back(ado::Celda(*rs, 0), nombre);
  }
  return escritorio.EligeDeCatalogo("Reservaciones", filas);
}

std::string MuestraCliente(autonomo::Conexion& conexion, const std::string& clave, QWidget* padre) {
  const auto cliente = conexion.Consulta(
      "SELECT Cl_Razon_Social_1, Cl_Telefono, Cl_Correo, Es_Cve_Estado FROM Cliente WHERE Cl_Cve_Cliente = ?", {clave});
  Ficha ficha(QStringLiteral("Cliente ") + Q(clave), padre);
  ficha.setObjectName(QStringLiteral("cliente"));
  if (cliente->Eof()) {
    ficha.Titula(QStringLiteral("El cliente ") + Q(clave) + QStringLiteral(" no existe"));
  } else {
    ficha.Titula(Q(ado::Celda(*cliente, 0)));
    auto* datos = new QFormLayout;
    datos->addRow(QStringLiteral("Clave:"), new QLabel(Q(clave), &ficha));
    datos->addRow(QStringLiteral("Teléfono:"), new QLabel(Q(ado::Celda(*cliente, 1)), &ficha));
    datos->addRow(QStringLiteral("Correo:"), new QLabel(Q(ado::Celda(*cliente, 2)), &ficha));
    ficha.caja()->addLayout(datos);
  }
  auto* tabla = CreaTabla({QStringLiteral("Folio"), QStringLiteral("Llegada"), QStringLiteral("Salida"),
                           QStringLiteral("Habitaciones"), QStringLiteral("Estado"), QStringLiteral("Referencia")},
                          &ficha);
  tabla->setObjectName(QStringLiteral("visitas"));
  tabla->setAccessibleName(QStringLiteral("Reservaciones del cliente"));
  tabla->setToolTip(QStringLiteral("Enter o doble clic abre la reservación"));
  const std::vector<recepcion::Fila> visitas = recepcion::ReservacionesDe(clave);
  for (const recepcion::Fila& v : visitas) {
    AgregaFila(tabla,
               {Q(v.folio), Q(regional::FechaCorta(v.llegada)), Q(regional::FechaCorta(v.salida)), Q(v.habitaciones),
                Q(autonomo::EstadoLegible(v.estado)), Q(v.referencia)},
               v.estado == esquema::kCancelada);
  }
  tabla->resizeColumnsToContents();
  std::string folio;
  const auto abre = [&] {
    if (tabla->currentRow() < 0) return;
    folio = visitas[static_cast<std::size_t>(tabla->currentRow())].folio;
    ficha.accept();
  };
  QObject::connect(tabla, &QTableWidget::cellDoubleClicked, &ficha, abre);
  for (const char* tecla : {"Return", "Enter"}) {
    auto* atajo = new QShortcut(QKeySequence(QLatin1String(tecla)), tabla);
    atajo->setContext(Qt::WidgetShortcut);
    QObject::connect(atajo, &QShortcut::activated, &ficha, abre);
  }
  ficha.caja()->addWidget(tabla);
  ficha.Termina();
  AjustaAPantalla(ficha, {640, 440});
  if (!visitas.empty()) tabla->selectRow(0);
  tabla->setFocus();
  ficha.exec();
  return folio;
}

void MuestraPrecios(autonomo::Conexion& conexion, com::Fecha noche, QWidget* padre) {
  const QString dia =
      QLocale(QLocale::Spanish, QLocale::Mexico).toString(ADate(noche), QStringLiteral("dddd d 'de' MMMM 'de' yyyy"));
  const bool conNoche = noche != com::Fecha{};  // none without a stay
  Ficha ficha(conNoche ? QStringLiteral("Precios del ") + Q(regional::FechaCorta(noche)) : QStringLiteral("Precios"),
              padre);
  ficha.setObjectName(QStringLiteral("precios"));
  ficha.Titula(conNoche ? QStringLiteral("Noche del ") + dia : QStringLiteral("Sin fecha de llegada"));
  auto* tabla = CreaTabla({QStringLiteral("Tipo"), QStringLiteral("Descripción"), QStringLiteral("Personas"),
                           QStringLiteral("Precio"), QStringLiteral("Adulto extra"), QStringLiteral("Menor extra")},
                          &ficha);
  tabla->setAccessibleName(QStringLiteral("Precios por tipo de habitación"));
  const auto rs = conexion.Consulta(
      "SELECT Th_Cve_Tipo_Habitacion, Th_Descripcion, Th_Num_Personas, Pr_Cve_Producto FROM Tipo_Habitacion "
      "WHERE Es_Cve_Estado <> 'BA' ORDER BY Th_Cve_Tipo_Habitacion");
  for (; !rs->Eof(); rs->MoveNext()) {
    const auto tarifas = autonomo::LeeTarifas(conexion, ado::Celda(*rs, 0), noche, com::MasDias(noche, 1));
    const autonomo::Tarifa* tarifa = autonomo::TarifaDeNoche(tarifas, noche);
    QString precio = QStringLiteral("sin precio"), adulto, menor;
    if (tarifa != nullptr) {
      precio = Q(regional::Moneda(tarifa->precio));
      adulto = Q(regional::Moneda(tarifa->adultoExtra));
      menor = Q(regional::Moneda(tarifa->menorExtra));
    } else if (const auto lista = autonomo::LeePrecioLista(conexion, ado::Celda(*rs, 3))) {
      precio = Q(regional::Moneda(*lista));
    }
    AgregaFila(tabla, {Q(ado::Celda(*rs, 0)), Q(ado::Celda(*rs, 1)), Q(ado::Celda(*rs, 2)), precio, adulto, menor},
               false, {2, 3, 4, 5});
  }
  tabla->resizeColumnsToContents();
  ficha.caja()->addWidget(tabla);
  auto* nota = new QLabel(QStringLiteral("Por noche, con impuestos, en moneda local."), &ficha);
  Atenua(*nota);
  ficha.caja()->addWidget(nota);
  ficha.Termina();
  AjustaAPantalla(ficha, {600, 360});
  ficha.exec();
}

void AbreConfiguracion(autonomo::Anfitrion& anfitrion, QWidget* padre, const HojaInicial& hoja) {
  if (autonomo::PuedeConfigurar(*anfitrion.conexion(), anfitrion.usuario())) {
    return AbreCatalogos(*anfitrion.conexion(), pantalla::kConfiguracion, padre, hoja);
  }
  Avisa("El usuario " + anfitrion.usuario() + " no puede abrir la configuración.\r\nPida el permiso " +
            autonomo::kPermisoConfiguracion + " a quien lo tenga.",
        caja::kAviso, padre);
}

void RegistraPantallas(EscritorioQt& escritorio, autonomo::Anfitrion& anfitrion,
                       const std::function<void(const std::string& folio)>& abre) {
  const auto base = [&anfitrion]() -> autonomo::Conexion& { return *anfitrion.conexion(); };
  using Argumentos = std::vector<com::Variant>;
  for (const char* codigo : {pantalla::kClientes, pantalla::kFormasPago, pantalla::kMonedas, pantalla::kHabitaciones}) {
    escritorio.Registra(codigo,
                        [base, codigo](const Argumentos&, QWidget* padre) { AbreCatalogos(base(), codigo, padre); });
  }
  escritorio.Registra(pantalla::kConfiguracion,
                      [&anfitrion](const Argumentos&, QWidget* padre) { AbreConfiguracion(anfitrion, padre); });
  escritorio.Registra(pantalla::kBitacora,
                      [&anfitrion](const Argumentos&, QWidget* padre) { MuestraBitacora(anfitrion, padre); });
  escritorio.Registra(pantalla::kCorreos,
                      [&anfitrion](const Argumentos&, QWidget* padre) { MuestraBandeja(anfitrion, padre); });
  escritorio.Registra(pantalla::kMuestraCliente, [base, abre](const Argumentos& a, QWidget* padre) {
    const std::string folio = MuestraCliente(base(), com::CStr(a.at(0)), padre);
    // Once the button that opened the record has done its part.
    if (!folio.empty() && padre != nullptr) Despues(*padre, [abre, folio] { Corre([&] { abre(folio); }); });
  });
  escritorio.Registra(pantalla::kMuestraPrecios, [base](const Argumentos& a, QWidget* padre) {
    MuestraPrecios(base(), com::SoloFecha(com::CDate(a.at(0))), padre);
  });
  escritorio.Registra(pantalla::kMuestraRegistro, [base](const Argumentos& a, QWidget* padre) {
    MuestraRegistro(base(), com::CStr(a.at(0)), com::CStr(a.at(1)), com::CStr(a.at(2)), padre);
  });
}

}  // namespace vista
