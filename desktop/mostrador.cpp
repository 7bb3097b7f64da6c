#include "desktop/mostrador.h"

#include "desktop/dialogos.h"
#include "desktop/escritorio_qt.h"
#include "desktop/ventana_cotizacion.h"
#include "desktop/ventana_cuadro.h"
#include "desktop/ventana_hoy.h"
#include "host/standalone/letras.h"
#include "platform/com/error.h"
#include "recepcion/pasos.h"

namespace vista {

Mostrador::Mostrador(EscritorioQt& escritorio) : escritorio_(escritorio), hoy_(autonomo::SinAcentos) {
  hoy_.alAbrir = [this](const std::string& folio) { AbreReservacion(folio); };
  cuadro_.alAbrir = hoy_.alAbrir;
  cuadro_.alReservar = [this](const std::string& habitacion, com::Fecha desde, com::Fecha hasta) {
    Reserva({desde, hasta, 0, 0, 0, ""}, {{habitacion, desde, hasta}});
  };
  cotizacion_.alReservar = [this](const recepcion::Pedido& pedido, const std::vector<recepcion::Tramo>& tramos) {
    Reserva(pedido, tramos);
  };
}

// Whoever keeps her capture finds the window again as she left it.
void Mostrador::AbreHoy() {
  VentanaHoy ventana(hoy_, escritorio_.contexto(), escritorio_.Frente());
  for (;;) {
    const int salida = Atiende(ventana);
    escritorio_.VuelveAlFrente();
    if (salida == VentanaHoy::kCierra) return;
    if (salida == VentanaHoy::kCuadro) return AbreCuadro();
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
    const auto& [fila, desde, hasta] = ventana.eleccion();
    if (salida == VentanaCuadro::kAbre) return cuadro_.AbreBarra(fila, desde);
    return cuadro_.Reserva(fila, desde, hasta);
  }
}

void Mostrador::AbreCotizacion() {
  VentanaCotizacion ventana(cotizacion_, escritorio_.Frente());
  for (;;) {
    const int salida = Atiende(ventana);
    escritorio_.VuelveAlFrente();
    if (salida != QDialog::Accepted) return;
    if (DejaCaptura()) return cotizacion_.Reserva(ventana.Elegida());
  }
}

bool Mostrador::DejaCaptura() {
  const controles::Formulario* principal = escritorio_.Principal();
  return principal == nullptr || !EnCaptura(*principal) || escritorio_.Pulsa(controles::Accion::Limpiar);
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
  if (!dice.empty()) Avisa(dice, 64, escritorio_.Frente(), "Reponer habitaciones");
}

// Clear first: it also forgets what was marked on the board before.
void Mostrador::Reserva(const recepcion::Pedido& pedido, const std::vector<recepcion::Tramo>& tramos) {
  controles::Formulario* principal = escritorio_.Principal();
  if (principal == nullptr || !escritorio_.Pulsa(controles::Accion::Limpiar)) return;
  if (!escritorio_.Pulsa(controles::Accion::Nuevo)) return;
  if (!pedido.moneda.empty()) recepcion::TecleaMoneda(*principal, pedido.moneda);
  if (!recepcion::TecleaEstancia(*principal, pedido.llegada, pedido.salida)) return;
  escritorio_.AlAbrirModal([&](controles::Formulario& tablero) {
    const std::string motivo = recepcion::MarcaTramos(tablero, pedido.llegada, tramos);
    if (motivo.empty()) return;
    Avisa("No se pudieron marcar las noches:\r\n" + motivo + "\r\nElija otra habitación en el tablero, o ciérrelo.", 48,
          escritorio_.Frente(), "Disponibilidad");
  });
  principal->PulsaTecla(controles::tecla::kF6);
  escritorio_.AlAbrirModal(nullptr);
}

void Mostrador::AbreReservacion(const std::string& folio) {
  controles::Formulario* principal = escritorio_.Principal();
  if (principal == nullptr || !DejaCaptura()) return;
  static_cast<void>(recepcion::TecleaFolio(*principal, folio));
}

}  // namespace vista
