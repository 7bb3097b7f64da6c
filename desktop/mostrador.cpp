#include "desktop/mostrador.h"

#include "component/nombres.h"
#include "desktop/dialogos.h"
#include "desktop/escritorio_qt.h"
#include "desktop/ventana_cifras.h"
#include "desktop/ventana_cotizacion.h"
#include "desktop/ventana_cuadro.h"
#include "desktop/ventana_explicacion.h"
#include "desktop/ventana_hoy.h"
#include "desktop/ventana_huesped.h"
#include "host/standalone/correo.h"
#include "host/standalone/letras.h"
#include "platform/com/error.h"
#include "platform/controls/barra.h"
#include "platform/controls/grid.h"
#include "recepcion/pasos.h"

namespace vista {

namespace control = kv207::control;

Mostrador::Mostrador(EscritorioQt& escritorio)
    : escritorio_(escritorio),
      hoy_(autonomo::LetraBuscada),
      huespedes_(autonomo::LetraBuscada, autonomo::DireccionValida),
      ayuda_([&escritorio] { return TeclasDelPrograma(escritorio.contexto()); }) {
  recepcion::Conecta({[this](const std::string& folio) { AbreReservacion(folio); },
                      [this](const std::string& campo, const recepcion::Toma& toma) { TomaHuesped(campo, toma); },
                      [this](const recepcion::Pedido& pedido, const std::vector<recepcion::Tramo>& tramos) {
                        empezada_ = Reserva(pedido, tramos);
                      }},
                     hoy_, cuadro_, cotizacion_, huespedes_);
}

// Whoever keeps her capture finds the window again as she left it.
void Mostrador::AbreHoy() {
  VentanaHoy ventana(hoy_, escritorio_.contexto(), escritorio_.Frente());
  for (;;) {
    const int salida = Atiende(ventana);
    escritorio_.VuelveAlFrente();
    if (salida == VentanaHoy::kCierra) return;
    if (salida == VentanaHoy::kCuadro) return AbreCuadro();
    if (salida == VentanaHoy::kCotiza) return AbreCotizacion();
    if (!DejaCaptura()) continue;
    if (salida == VentanaHoy::kAbre) return hoy_.AbreFila(ventana.Elegida());
    static_cast<void>(escritorio_.Pulsa(controles::Accion::Nuevo));
    return;
  }
}

void Mostrador::AbreCuadro() {
  VentanaCuadro ventana(cuadro_, escritorio_.Frente());
  for (;;) {
    const int salida = Atiende(ventana);
    escritorio_.VuelveAlFrente();
    if (salida == VentanaCuadro::kCierra) return;
    if (!DejaCaptura()) continue;
    const VentanaCuadro::Eleccion& elegida = ventana.eleccion();
    if (salida == VentanaCuadro::kAbre) return cuadro_.AbreBarra(elegida.barra);
    cuadro_.Reserva(elegida.fila, elegida.desde, elegida.hasta);
    if (empezada_) return;
  }
}

void Mostrador::AbreCotizacion() {
  VentanaCotizacion ventana(cotizacion_, escritorio_.Frente());
  for (;;) {
    const int salida = Atiende(ventana);
    escritorio_.VuelveAlFrente();
    if (salida != QDialog::Accepted) return;
    if (!DejaCaptura()) continue;
    cotizacion_.Reserva(ventana.Elegida());
    if (empezada_) return;
  }
}

bool Mostrador::DejaCaptura() {
  const controles::Formulario* principal = escritorio_.Principal();
  return principal == nullptr || !EnCaptura(*principal) || escritorio_.Pulsa(controles::Accion::Limpiar);
}

QString Mostrador::AvisoDeQuitados() const {
  const controles::Formulario* principal = escritorio_.Principal();
  const std::size_t cuantas = quitados_.renglones().size();
  if (cuantas == 0 || principal == nullptr || !EnCaptura(*principal)) return {};
  return (cuantas == 1 ? QStringLiteral("El cambio de noches quitó una habitación; «Reponer habitaciones», en el menú "
                                        "Hotel, la devuelve")
                       : QStringLiteral("El cambio de noches quitó %1 habitaciones; «Reponer habitaciones», en el menú "
                                        "Hotel, las devuelve")
                             .arg(cuantas));
}

void Mostrador::ReponeHabitaciones() {
  controles::Formulario* principal = escritorio_.Principal();
  if (principal == nullptr) return;
  std::string dice;
  try {
    for (const std::string& texto : quitados_.Repone(*principal)) dice += (dice.empty() ? "" : "\r\n") + texto + ".";
  } catch (const com::Error& e) {
    dice = e.Descripcion() + ".";
  }
  if (!dice.empty()) Avisa(dice, caja::kInforme, escritorio_.Frente(), "Reponer habitaciones");
}

void Mostrador::AbreCifras() {
  VentanaCifras ventana(cifras_, escritorio_.Frente());
  Atiende(ventana);
  escritorio_.VuelveAlFrente();
}

void Mostrador::AbreTablero(controles::Formulario& principal, const recepcion::Encargo::Marca& marca) {
  std::string motivo;
  escritorio_.AlAbrirModal(
      [&](controles::Formulario& tablero) { motivo = marca(tablero); },
      [&](controles::Formulario&) {
        if (motivo.empty()) return;
        Avisa("No se pudieron marcar las noches:\r\n" + motivo + "\r\nElija otra habitación en el tablero, o ciérrelo.",
              caja::kAviso, escritorio_.Frente(), "Disponibilidad");
      });
  principal.PulsaTecla(controles::tecla::kF6);
  escritorio_.AlAbrirModal(nullptr, nullptr);
}

// With rooms, only the guest is missing.
bool Mostrador::Reserva(const recepcion::Pedido& pedido, const std::vector<recepcion::Tramo>& tramos) {
  using Llego = recepcion::Encargo::Llego;
  controles::Formulario* principal = escritorio_.Principal();
  if (principal == nullptr) return false;
  const Llego llego = encargo_.Reserva(
      *principal, pedido, tramos, [this](controles::Accion accion) { return escritorio_.Pulsa(accion); },
      [&](const recepcion::Encargo::Marca& marca) { AbreTablero(*principal, marca); });
  if (llego == Llego::SinFechas) {
    if (auto* barra = principal->Primero<controles::ScreenToolbar>()) barra->Pulsa(controles::Accion::Limpiar);
  }
  if (llego == Llego::ConHabitaciones) BuscaHuesped(control::kHuesped, "");
  return llego == Llego::SinHabitacion || llego == Llego::ConHabitaciones;
}

void Mostrador::Explica() {
  const controles::Formulario* principal = escritorio_.Principal();
  const auto* renglones = principal == nullptr ? nullptr : principal->Primero<controles::Grid>();
  if (renglones == nullptr) return;
  std::vector<recepcion::CuentaExplicada> todas;
  todas.reserve(static_cast<std::size_t>(renglones->Filas()) + 1);
  for (int fila = 0; fila < renglones->Filas(); ++fila) {
    todas.push_back(recepcion::ExplicaRenglon(*principal, fila));
  }
  todas.push_back(recepcion::ExplicaTotal(*principal));
  const bool enRenglon = principal->foco() == renglones && renglones->fila() >= 0;
  VentanaExplicacion ventana(todas, enRenglon ? static_cast<std::size_t>(renglones->fila()) : todas.size() - 1,
                             escritorio_.Frente());
  Atiende(ventana);
  escritorio_.VuelveAlFrente();
}

// --- the guest

void Mostrador::AbreHuesped() {
  const controles::Formulario* principal = escritorio_.Principal();
  if (principal == nullptr) return;
  const bool cliente = principal->foco() != nullptr && principal->foco()->nombre() == control::kCliente;
  const std::string campo = cliente ? control::kCliente : control::kHuesped;
  // What was typed there and is no key.
  const auto* clave = controles::Como<controles::LookupField>(principal->Busca(campo));
  const auto* nombre = clave == nullptr ? nullptr : clave->diseno().sql_control_resultado;
  BuscaHuesped(campo, nombre != nullptr && nombre->text().empty() ? clave->text() : "");
}

void Mostrador::BuscaHuesped(const std::string& campo, const std::string& filtro) {
  controles::Formulario* principal = escritorio_.Principal();
  if (principal == nullptr) return;
  huespedes_.Abre(campo, recepcion::EstanciaEnCaptura(*principal));
  huespedes_.Busca(filtro);
  for (;;) {
    VentanaHuesped ventana(huespedes_, escritorio_.Frente());
    const int salida = Atiende(ventana);
    escritorio_.VuelveAlFrente();
    if (salida == VentanaHuesped::kElige) return huespedes_.Elige(ventana.ConHabitacion(), ventana.ConNotas());
    if (salida == VentanaHuesped::kAbre) return huespedes_.AbreReservacion(ventana.Visita());
    if (salida != VentanaHuesped::kNuevo) return;
    VentanaClienteNuevo nuevo(huespedes_, escritorio_.Frente());
    const int hecho = Atiende(nuevo);
    escritorio_.VuelveAlFrente();
    if (hecho == VentanaClienteNuevo::kCreado) return huespedes_.Elige(false, false);
  }
}

void Mostrador::TomaHuesped(const std::string& campo, const recepcion::Toma& toma) {
  controles::Formulario* principal = escritorio_.Principal();
  if (principal == nullptr) return;
  static_cast<void>(encargo_.TomaHuesped(*principal, campo, toma,
                                         [this](controles::Accion accion) { return escritorio_.Pulsa(accion); }));
}

void Mostrador::AbreReservacion(const std::string& folio) {
  controles::Formulario* principal = escritorio_.Principal();
  if (principal == nullptr || !DejaCaptura()) return;
  static_cast<void>(recepcion::TecleaFolio(*principal, folio));
}

}  // namespace vista
