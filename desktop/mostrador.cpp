#include "desktop/mostrador.h"

#include "desktop/dialogos.h"
#include "desktop/escritorio_qt.h"
#include "desktop/ventana_cotizacion.h"
#include "desktop/ventana_cuadro.h"
#include "desktop/ventana_hoy.h"
#include "host/standalone/letras.h"
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

void Mostrador::AbreHoy() {
  VentanaHoy ventana(hoy_, escritorio_.contexto(), escritorio_.Frente());
  const int salida = Atiende(ventana);
  escritorio_.VuelveAlFrente();
  if (salida == VentanaHoy::kAbre) hoy_.AbreFila(ventana.Elegida());
  if (salida == VentanaHoy::kNueva) escritorio_.Pulsa(controles::Accion::Nuevo);
  if (salida == VentanaHoy::kCuadro) AbreCuadro();
}

void Mostrador::AbreCuadro() {
  VentanaCuadro ventana(cuadro_, escritorio_.Frente());
  const int salida = Atiende(ventana);
  escritorio_.VuelveAlFrente();
  const auto& [fila, desde, hasta] = ventana.eleccion();
  if (salida == VentanaCuadro::kAbre) cuadro_.AbreBarra(fila, desde);
  if (salida == VentanaCuadro::kReserva) cuadro_.Reserva(fila, desde, hasta);
}

void Mostrador::AbreCotizacion() {
  VentanaCotizacion ventana(cotizacion_, escritorio_.Frente());
  const int salida = Atiende(ventana);
  escritorio_.VuelveAlFrente();
  if (salida != QDialog::Accepted) return;
  cotizacion_.Reserva(ventana.Elegida());
}

// Clear first: it also forgets what was marked on the board before.
void Mostrador::Reserva(const recepcion::Pedido& pedido, const std::vector<recepcion::Tramo>& tramos) {
  controles::Formulario* principal = escritorio_.Principal();
  if (principal == nullptr || !escritorio_.Pulsa(controles::Accion::Limpiar)) return;
  if (!escritorio_.Pulsa(controles::Accion::Nuevo)) return;
  if (!pedido.moneda.empty()) recepcion::TecleaMoneda(*principal, pedido.moneda);
  if (!recepcion::TecleaEstancia(*principal, pedido.llegada, pedido.salida)) return;
  escritorio_.AlAbrirModal([&](controles::Formulario& tablero) {
    static_cast<void>(recepcion::MarcaTramos(tablero, pedido.llegada, tramos));
  });
  principal->PulsaTecla(controles::tecla::kF6);
  escritorio_.AlAbrirModal(nullptr);
}

void Mostrador::AbreReservacion(const std::string& folio) {
  controles::Formulario* principal = escritorio_.Principal();
  if (principal == nullptr) return;
  if (EnCaptura(*principal)) escritorio_.Pulsa(controles::Accion::Limpiar);
  static_cast<void>(recepcion::TecleaFolio(*principal, folio));
}

}  // namespace vista
