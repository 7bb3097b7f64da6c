#include "desktop/manos_qt.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPointer>

#include "desktop/escala.h"
#include "desktop/guarda.h"
#include "desktop/teclas.h"
#include "desktop/ventana_cifras.h"
#include "desktop/ventana_cotizacion.h"
#include "desktop/ventana_cuadro.h"
#include "desktop/ventana_explicacion.h"
#include "desktop/ventana_hoy.h"
#include "desktop/ventana_huesped.h"
#include "desktop/vista_barra.h"
#include "desktop/vista_grid.h"
#include "guion/usable.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"

namespace vista {

using controles::Clase;

namespace {

[[noreturn]] void NoSirve(const controles::Control& control, const char* motivo) {
  throw com::Error(com::error::kArgumento, "«" + control.nombre() + "» " + motivo);
}

// Puts the caret of a text widget behind its text, or selects all of it.
void PreparaTexto(QWidget* widget, bool selecciona) {
  if (auto* linea = qobject_cast<QLineEdit*>(widget)) {
    if (selecciona) return linea->selectAll();
    linea->deselect();
    linea->end(false);
  } else if (auto* notas = qobject_cast<QPlainTextEdit*>(widget)) {
    if (selecciona) return notas->selectAll();
    notas->moveCursor(QTextCursor::End);
  }
}

void Teclea(QWidget* destino, const QString& texto) {
  if (texto.isEmpty()) return EnviaTecla(destino, Qt::Key_Delete);
  EnviaTecla(destino, Qt::Key_unknown, Qt::NoModifier, texto);
}

}  // namespace

void EnviaTecla(QWidget* destino, int teclaQt, Qt::KeyboardModifiers modificadores, const QString& texto) {
  // The key may end the window.
  const QPointer<QWidget> vivo(destino);
  QKeyEvent abajo(QEvent::KeyPress, teclaQt, modificadores, texto);
  QApplication::sendEvent(destino, &abajo);
  if (!vivo) return;
  QKeyEvent arriba(QEvent::KeyRelease, teclaQt, modificadores, texto);
  QApplication::sendEvent(destino, &arriba);
}

void EnviaClic(QWidget* destino, const QPoint& donde) {
  const QPointer<QWidget> vivo(destino);
  const QPointF local(donde), global(destino->mapToGlobal(donde));
  QMouseEvent abajo(QEvent::MouseButtonPress, local, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(destino, &abajo);
  if (!vivo) return;
  QMouseEvent arriba(QEvent::MouseButtonRelease, local, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(destino, &arriba);
}

void EnviaArrastre(QWidget* destino, const QPoint& desde, const QPoint& hasta) {
  const auto envia = [&](QEvent::Type tipo, const QPoint& donde, Qt::MouseButton boton, Qt::MouseButtons pulsados) {
    QMouseEvent evento(tipo, QPointF(donde), QPointF(destino->mapToGlobal(donde)), boton, pulsados, Qt::NoModifier);
    QApplication::sendEvent(destino, &evento);
  };
  envia(QEvent::MouseButtonPress, desde, Qt::LeftButton, Qt::LeftButton);
  envia(QEvent::MouseMove, hasta, Qt::NoButton, Qt::LeftButton);
  envia(QEvent::MouseButtonRelease, hasta, Qt::LeftButton, Qt::NoButton);
}

Ventana& ManosQt::VentanaDe(const controles::Formulario& formulario) const {
  Ventana* v = escritorio_.ventana(formulario);
  if (v == nullptr) {
    throw com::Error(com::error::kArgumento, "La ventana «" + formulario.nombre() + "» no está a la vista");
  }
  return *v;
}

Vista& ManosQt::VistaDe(const controles::Control& control) const {
  Vista* v = VentanaDe(control.formulario()).vista(control);
  if (v == nullptr) NoSirve(control, "no está a la vista");
  return *v;
}

VistaGrid& ManosQt::VistaDe(const controles::Grid& grid) const {
  auto* v = Como<VistaGrid>(&VistaDe(static_cast<const controles::Control&>(grid)));
  if (v == nullptr) NoSirve(grid, "no se muestra en renglones");
  return *v;
}

void ManosQt::Haz(const std::function<void()>& accion) const {
  for (QDialog* ventana : Mostrador()) ventana->hide();
  HazAlFrente(accion);
}

void ManosQt::HazAlFrente(const std::function<void()>& accion) {
  ConFallas([&] {
    accion();
    QApplication::processEvents();
  });
}

void ManosQt::TerminaEdicion(controles::Formulario& formulario, const controles::Control* destino) const {
  if (VentanaDe(formulario).TerminaEdicion(destino)) return;
  const controles::Control* foco = formulario.foco();
  if (const auto* grid = controles::Como<controles::Grid>(foco)) guion::RechazaSalida(*grid);
  throw com::Error(com::error::kTamanio, "«" + (foco == nullptr ? formulario.nombre() : foco->nombre()) +
                                             "» tiene una fecha que no se puede leer");
}

void ManosQt::Enfoca(controles::Control& control) {
  Haz([&] {
    TerminaEdicion(control.formulario(), &control);
    control.formulario().Enfoca(control);
  });
}

void ManosQt::Texto(controles::Control& control, const std::string& texto) {
  guion::RevisaEntrada(control);
  Enfoca(control);
  if (control.clase() != Clase::LookupField && control.clase() != Clase::CampoNotas) {
    NoSirve(control, "no es un campo de texto");
  }
  Haz([&] {
    QWidget* w = VistaDe(control).foco();
    PreparaTexto(w, true);
    Teclea(w, Q(texto));
  });
}

void ManosQt::Confirma(controles::Control& control) {
  guion::RevisaEntrada(control);
  Enfoca(control);
  Tecla(control.formulario(), controles::tecla::kEnter, 0);
}

void ManosQt::PonFecha(controles::DateField& control, com::Fecha fecha) {
  guion::RevisaEntrada(control);
  Enfoca(control);
  Haz([&] {
    Vista& v = VistaDe(control);
    PreparaTexto(v.foco(), true);
    Teclea(v.foco(), Q(regional::FechaCorta(fecha)));
    v.Entrega();
  });
}

void ManosQt::Clic(controles::Control& control) {
  guion::RevisaUsable(control);
  Enfoca(control);
  if (control.clase() != Clase::Boton && control.clase() != Clase::Casilla && control.clase() != Clase::Opcion) {
    NoSirve(control, "no es un botón, una opción ni una casilla");
  }
  Haz([&] {
    QWidget* w = VistaDe(control).foco();
    EnviaClic(w, QPoint(w->height() / 2, w->height() / 2));
  });
}

void ManosQt::Tecla(controles::Formulario& formulario, int codigo, int mayus) {
  Haz([&] {
    Ventana& ventana = VentanaDe(formulario);
    controles::Control* foco = formulario.foco();
    if (foco == nullptr || !foco->PuedeEnfocarse()) {
      return EnviaTecla(&ventana, TeclaQt(codigo), ModificadoresDe(mayus));
    }
    const bool borra = codigo == controles::tecla::kSupr || codigo == controles::tecla::kRetroceso;
    if (borra && foco->clase() == Clase::DateField) return;  // it takes whole dates only
    QWidget* w = VistaDe(*foco).foco();
    // A key of a script works on the whole text, or on its end.
    PreparaTexto(w, codigo == controles::tecla::kSupr && foco->clase() == Clase::LookupField);
    const QString texto =
        foco->clase() == Clase::CampoNotas && codigo == controles::tecla::kEnter ? QStringLiteral("\r") : QString();
    EnviaTecla(w, TeclaQt(codigo), ModificadoresDe(mayus), texto);
  });
}

void ManosQt::Caracter(controles::Formulario& formulario, char32_t caracter) {
  if (caracter < 32) return Tecla(formulario, static_cast<int>(caracter), 0);
  controles::Control* foco = formulario.foco();
  // A date field takes whole dates only.
  if (foco == nullptr || !foco->PuedeEnfocarse() || foco->clase() == Clase::DateField) return;
  Haz([&] {
    QWidget* w = VistaDe(*foco).foco();
    PreparaTexto(w, false);
    EnviaTecla(w, caracter == U' ' ? Qt::Key_Space : Qt::Key_unknown, Qt::NoModifier, QString::fromUcs4(&caracter, 1));
  });
}

void ManosQt::Accion(controles::ScreenToolbar& barra, controles::Accion accion) {
  guion::RevisaUsable(barra);
  if (!controles::Abandona(accion)) TerminaEdicion(barra.formulario(), nullptr);
  if (!barra.Ofrece(accion)) return barra.Pulsa(accion);  // says why not
  Haz([&] {
    const auto* vista = Como<VistaBarra>(&VistaDe(barra));
    QToolButton* boton = vista == nullptr ? nullptr : vista->boton(accion);
    if (boton == nullptr) NoSirve(barra, "no tiene ese botón");
    EnviaClic(boton, boton->rect().center());
  });
}

void ManosQt::PulsaCelda(VistaGrid& vista, int fila, int columna) const {
  const QRect zona = vista.ZonaCelda(fila, columna);
  QWidget* tabla = vista.tabla(columna)->viewport();
  EnviaClic(tabla, tabla->mapFrom(vista.widget(), zona.center()));
}

bool ManosQt::Celda(controles::Grid& grid, int fila, int columna, const std::string& valor) {
  guion::RevisaUsable(grid);
  guion::RevisaCeldaEscribible(grid, fila, columna);
  Enfoca(grid);
  VistaGrid& vista = VistaDe(grid);
  bool libre = false;
  Haz([&] {
    if (fila < 0) {
      if (!grid.NuevaFila()) return;
      fila = grid.Filas() - 1;
    }
    PulsaCelda(vista, fila, columna);
    if (grid.fila() != fila || grid.columna() != columna) return;
    grid.formulario().Enfoca(grid);  // the cell itself, not what the screen may have laid over it
    EnviaTecla(vista.foco(), Qt::Key_A, Qt::ControlModifier);
    Teclea(vista.foco(), Q(valor));
    libre = grid.Deja();
  });
  return libre;
}

bool ManosQt::Ve(controles::Grid& grid, int fila, int columna) {
  guion::RevisaUsable(grid);
  guion::RevisaCelda(grid, fila, columna);
  Enfoca(grid);
  bool llego = false;
  // By the keyboard: a click would mark a night of the board.
  Haz([&] { llego = grid.VaA(fila, columna); });
  return llego;
}

bool ManosQt::Borra(controles::Grid& grid, int fila) {
  guion::RevisaUsable(grid);
  Enfoca(grid);
  const int antes = grid.Filas();
  Haz([&] {
    if (grid.fila() == fila) {
      EnviaTecla(VistaDe(grid).foco(), Qt::Key_Delete, Qt::ControlModifier);
    } else {
      grid.Borra(fila);
    }
  });
  return grid.Filas() < antes;
}

void ManosQt::ClicCelda(controles::Grid& grid, int fila, int columna) {
  guion::RevisaUsable(grid);
  guion::RevisaCelda(grid, fila, columna);
  Enfoca(grid);
  Haz([&] { PulsaCelda(VistaDe(grid), fila, columna); });
}

void ManosQt::SeleccionaFila(controles::Grid& grid, int fila) {
  guion::RevisaUsable(grid);
  Enfoca(grid);
  Haz([&] {
    VistaGrid& vista = VistaDe(grid);
    const QRect zona = vista.ZonaEncabezado(fila);
    if (zona.isEmpty()) return grid.SeleccionaFila(fila);  // says why not
    EnviaClic(vista.encabezadoFilas(), zona.center());
  });
}

void ManosQt::Tamano(controles::Formulario& formulario, int ancho, int alto) {
  Haz([&] { VentanaDe(formulario).FijaTamano(ancho, alto); });
}

void ManosQt::Foto(controles::Formulario& formulario, const std::string& ruta) {
  HazAlFrente([&] {
    QWidget* encima = nullptr;
    for (QDialog* ventana : Mostrador()) {
      if (ventana->isVisible()) encima = ventana;
    }
    QWidget& v = encima != nullptr ? *encima : VentanaDe(formulario);
    QApplication::processEvents();
    if (!v.grab().save(Q(ruta), "PNG")) {
      throw com::Error(com::error::kArgumento, "No se pudo escribir la imagen " + ruta);
    }
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
    Teclea(linea, Q(texto));
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
    HuespedALaVista(huespedes);
  });
}

void ManosQt::BuscaHuesped(recepcion::Huespedes& huespedes, const std::string& texto) {
  HazAlFrente([&] {
    auto* linea = HuespedALaVista(huespedes).findChild<QLineEdit*>(QStringLiteral("busca"));
    PreparaTexto(linea, true);
    Teclea(linea, Q(texto));
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
      Teclea(linea, Q(texto));
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
