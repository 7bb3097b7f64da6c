// The clerk's hands at the windows of the front desk.
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <utility>

#include "desktop/guarda.h"
#include "desktop/manos_qt.h"
#include "desktop/ventana_cifras.h"
#include "desktop/ventana_cotizacion.h"
#include "desktop/ventana_cuadro.h"
#include "desktop/ventana_explicacion.h"
#include "desktop/ventana_hoy.h"
#include "desktop/ventana_huesped.h"
#include "platform/com/error.h"

namespace vista {

void ManosQt::HazAlFrente(const std::function<void()>& accion) {
  ConFallas([&] {
    accion();
    QApplication::processEvents();
  });
}

std::vector<QDialog*> ManosQt::Mostrador() const {
  std::vector<QDialog*> ventanas;
  for (QDialog* ventana : {hoy_.data(), cuadro_.data(), cotizacion_.data(), huesped_.data(), cliente_.data(),
                           explicacion_.data(), cifras_.data()}) {
    if (ventana != nullptr) ventanas.push_back(ventana);
  }
  return ventanas;
}

void ManosQt::Alza(QDialog& ventana) const {
  for (QDialog* otra : Mostrador()) {
    if (otra != &ventana) otra->hide();
  }
  ventana.show();
}

// --- the front desk's day

// It stays open until the clerk turns to something else.
VentanaHoy& ManosQt::HoyALaVista(recepcion::Hoy& hoy) {
  if (!hoy_) hoy_ = new VentanaHoy(hoy, escritorio_.contexto(), escritorio_.Frente());
  Alza(*hoy_);
  return static_cast<VentanaHoy&>(*hoy_);
}

void ManosQt::AbreHoy(recepcion::Hoy& hoy) {
  HazAlFrente([&] {
    if (!hoy_) {
      HoyALaVista(hoy);  // it reads the day
    } else {
      EnviaTecla(&HoyALaVista(hoy), Qt::Key_F5);
    }
  });
}

void ManosQt::EligeLista(recepcion::Hoy& hoy, recepcion::Lista lista) {
  HazAlFrente([&] {
    auto* listas = HoyALaVista(hoy).findChild<QTabBar*>(QStringLiteral("listas"));
    EnviaClic(listas, listas->tabRect(static_cast<int>(lista)).center());
  });
}

void ManosQt::BuscaEnHoy(recepcion::Hoy& hoy, const std::string& texto) {
  HazAlFrente([&] {
    auto* linea = HoyALaVista(hoy).findChild<QLineEdit*>(QStringLiteral("busca"));
    PreparaTexto(linea, true);
    EnviaTexto(linea, Q(texto));
  });
}

void ManosQt::AbreFila(recepcion::Hoy& hoy, int fila) {
  HazAlFrente([&] {
    VentanaHoy& ventana = HoyALaVista(hoy);
    auto* filas = ventana.findChild<QTableWidget*>(QStringLiteral("filas"));
    if (fila < 0 || fila >= filas->rowCount()) return hoy.AbreFila(fila);  // says why not
    filas->selectRow(fila);
    EnviaTecla(filas, Qt::Key_Return);
    if (ventana.isVisible()) throw com::Error(com::error::kArgumento, ventana.Nota().toStdString());
    hoy.AbreFila(ventana.Elegida());
  });
}

// --- the tape chart

VentanaCuadro& ManosQt::CuadroALaVista(recepcion::Cuadro& cuadro) {
  if (!cuadro_) cuadro_ = new VentanaCuadro(cuadro, escritorio_.Frente());
  Alza(*cuadro_);
  return static_cast<VentanaCuadro&>(*cuadro_);
}

void ManosQt::MuestraCuadro(recepcion::Cuadro& cuadro, com::Fecha desde, int noches) {
  HazAlFrente([&] { CuadroALaVista(cuadro).Muestra(desde, noches); });
}

void ManosQt::AbreBarra(recepcion::Cuadro& cuadro, int fila, com::Fecha noche) {
  HazAlFrente([&] {
    VentanaCuadro& ventana = CuadroALaVista(cuadro);
    const recepcion::Barra* barra = cuadro.En(fila, noche);
    if (barra == nullptr || barra->folio.empty()) return cuadro.AbreBarra(fila, noche);  // says why not
    QApplication::processEvents();                                                       // it has its size
    ventana.tabla().Descubre(fila);
    EnviaClic(ventana.tabla().viewport(), ventana.tabla().ZonaBarra(*barra).center());
    if (!ventana.isVisible()) cuadro.AbreBarra(ventana.eleccion().barra);
  });
}

void ManosQt::ReservaNoches(recepcion::Cuadro& cuadro, int fila, com::Fecha desde, com::Fecha hasta) {
  HazAlFrente([&] {
    VentanaCuadro& ventana = CuadroALaVista(cuadro);
    const bool enVista = desde >= cuadro.desde() && hasta <= com::MasDias(cuadro.desde(), cuadro.noches());
    if (!enVista || desde >= hasta || !cuadro.Libre(fila, desde, hasta)) return cuadro.Reserva(fila, desde, hasta);
    QApplication::processEvents();
    ventana.tabla().Descubre(fila);
    QWidget* donde = ventana.tabla().viewport();
    const QRect primera = ventana.tabla().ZonaNoche(fila, desde);
    const QRect ultima = ventana.tabla().ZonaNoche(fila, com::MasDias(hasta, -1));
    EnviaArrastre(donde, primera.topRight() + QPoint(-3, primera.height() / 2),
                  ultima.topRight() + QPoint(-2, ultima.height() - 2));
    const VentanaCuadro::Eleccion& elegida = ventana.eleccion();
    if (!ventana.isVisible()) cuadro.Reserva(elegida.fila, elegida.desde, elegida.hasta);
  });
}

// --- a quote

VentanaCotizacion& ManosQt::CotizacionALaVista(recepcion::Cotizacion& cotizacion) {
  if (!cotizacion_) cotizacion_ = new VentanaCotizacion(cotizacion, escritorio_.Frente());
  Alza(*cotizacion_);
  return static_cast<VentanaCotizacion&>(*cotizacion_);
}

void ManosQt::Cotiza(recepcion::Cotizacion& cotizacion, const recepcion::Pedido& pedido) {
  HazAlFrente([&] { CotizacionALaVista(cotizacion).Pide(pedido); });
}

void ManosQt::ReservaOferta(recepcion::Cotizacion& cotizacion, int oferta) {
  HazAlFrente([&] {
    if (oferta < 0 || oferta >= static_cast<int>(cotizacion.ofertas().size())) return cotizacion.Reserva(oferta);
    VentanaCotizacion& ventana = CotizacionALaVista(cotizacion);
    auto* ofertas = ventana.findChild<QTableWidget*>(QStringLiteral("ofertas"));
    ofertas->selectRow(oferta);
    EnviaTecla(ofertas, Qt::Key_Return);
    cotizacion.Reserva(ventana.Elegida());
  });
}

void ManosQt::Explica(const std::vector<recepcion::CuentaExplicada>& explicaciones) {
  HazAlFrente([&] {
    delete explicacion_;
    explicacion_ = new VentanaExplicacion(explicaciones, 0, escritorio_.Frente());
    Alza(*explicacion_);
  });
}

// --- the guest

// A new one for each search: it shows what the model holds when it is made.
VentanaHuesped& ManosQt::HuespedALaVista(recepcion::Huespedes& huespedes) {
  if (!huesped_) huesped_ = new VentanaHuesped(huespedes, escritorio_.Frente());
  Alza(*huesped_);
  return static_cast<VentanaHuesped&>(*huesped_);
}

void ManosQt::AbreHuespedes(recepcion::Huespedes& huespedes, const std::string& campo,
                            const std::optional<recepcion::EstanciaCaptada>& estancia) {
  HazAlFrente([&] {
    huespedes.Abre(campo, estancia);
    delete huesped_;
    huesped_.clear();
    HuespedALaVista(huespedes);
  });
}

void ManosQt::BuscaHuesped(recepcion::Huespedes& huespedes, const std::string& texto) {
  HazAlFrente([&] {
    auto* linea = HuespedALaVista(huespedes).findChild<QLineEdit*>(QStringLiteral("busca"));
    PreparaTexto(linea, true);
    EnviaTexto(linea, Q(texto));
  });
}

void ManosQt::SenalaHuesped(recepcion::Huespedes& huespedes, int fila) {
  HazAlFrente([&] {
    auto* personas = HuespedALaVista(huespedes).findChild<QTableWidget*>(QStringLiteral("personas"));
    if (fila < 0 || fila >= personas->rowCount()) return huespedes.Senala(fila);  // says why not
    personas->selectRow(fila);
  });
}

void ManosQt::EligeHuesped(recepcion::Huespedes& huespedes, bool conHabitacion, bool conNotas) {
  HazAlFrente([&] {
    if (huespedes.senalado() < 0) return huespedes.Elige(conHabitacion, conNotas);  // says why not
    VentanaHuesped& ventana = HuespedALaVista(huespedes);
    ventana.Muestra();
    for (const auto& [nombre, quiere] : {std::pair("con_habitacion", conHabitacion), {"con_notas", conNotas}}) {
      auto* casilla = ventana.findChild<QCheckBox*>(QLatin1String(nombre));
      if (casilla->isVisible() && casilla->isEnabled() && casilla->isChecked() != quiere) {
        EnviaClic(casilla, QPoint(8, casilla->height() / 2));
      }
    }
    EnviaTecla(ventana.findChild<QTableWidget*>(QStringLiteral("personas")), Qt::Key_Return);
    // A room that is held cannot be ticked: the model says so.
    huespedes.Elige(conHabitacion, ventana.ConNotas());
  });
}

void ManosQt::AbreVisita(recepcion::Huespedes& huespedes, int fila) {
  HazAlFrente([&] {
    VentanaHuesped& ventana = HuespedALaVista(huespedes);
    auto* visitas = ventana.findChild<QTableWidget*>(QStringLiteral("visitas"));
    if (fila < 0 || fila >= visitas->rowCount()) return huespedes.AbreReservacion(fila);  // says why not
    visitas->selectRow(fila);
    visitas->setFocus();
    EnviaTecla(visitas, Qt::Key_Return);
    huespedes.AbreReservacion(ventana.Visita());
  });
}

std::vector<recepcion::Parecida> ManosQt::CreaHuesped(recepcion::Huespedes& huespedes, const recepcion::Persona& nueva,
                                                      bool aunqueParezca) {
  std::vector<recepcion::Parecida> parecidas;
  HazAlFrente([&] {
    delete cliente_;
    auto* ventana = new VentanaClienteNuevo(huespedes, escritorio_.Frente());
    cliente_ = ventana;
    Alza(*ventana);
    for (const auto& [nombre, texto] : {std::pair("nombre", nueva.nombre),
                                        {"telefono", nueva.telefono},
                                        {"correo", nueva.correo},
                                        {"clave", nueva.clave}}) {
      auto* linea = ventana->findChild<QLineEdit*>(QLatin1String(nombre));
      PreparaTexto(linea, true);
      EnviaTexto(linea, Q(texto));
    }
    EnviaTecla(ventana->findChild<QLineEdit*>(QStringLiteral("nombre")), Qt::Key_Return,
               aunqueParezca ? Qt::ControlModifier : Qt::NoModifier);
    if (!ventana->isVisible()) return;
    parecidas = ventana->parecidas();
    if (parecidas.empty() || !ventana->Pregunta()) {
      throw com::Error(com::error::kArgumento, ventana->Nota().toStdString());
    }
  });
  return parecidas;
}

// --- the figures

void ManosQt::MuestraCifras(recepcion::Cifras& cifras, const recepcion::PedidoCifras& pedido) {
  HazAlFrente([&] {
    if (!cifras_) cifras_ = new VentanaCifras(cifras, escritorio_.Frente());
    Alza(*cifras_);
    static_cast<VentanaCifras&>(*cifras_).Pide(pedido);
  });
}

}  // namespace vista
