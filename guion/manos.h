// The clerk's hands: what a script does to a screen. One implementation works on the models, one on real widgets; both
// must have the same effect.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/controls/barra.h"
#include "platform/controls/control.h"
#include "platform/controls/formulario.h"
#include "platform/controls/grid.h"
#include "recepcion/cifras.h"
#include "recepcion/cotizacion.h"
#include "recepcion/cuadro.h"
#include "recepcion/explicacion.h"
#include "recepcion/hoy.h"
#include "recepcion/huespedes.h"

namespace guion {

// Every action raises com::Error when the control does not allow it (disabled, hidden, locked) and lets a handler's
// untrapped error through.
class Manos {
 public:
  virtual ~Manos() = default;
  // Replaces the text of a LookupField or CampoNotas by typing.
  virtual void Texto(controles::Control& control, const std::string& texto) = 0;
  // Confirms a field with Enter.
  virtual void Confirma(controles::Control& control) = 0;
  virtual void PonFecha(controles::DateField& control, com::Fecha fecha) = 0;
  // Clicks a button, option or check box.
  virtual void Clic(controles::Control& control) = 0;
  // Sends a key to the control that has the focus. codigo: controles::tecla; mayus: 1 Shift, 2 Ctrl.
  virtual void Tecla(controles::Formulario& formulario, int codigo, int mayus) = 0;
  virtual void Caracter(controles::Formulario& formulario, char32_t caracter) = 0;
  virtual void Accion(controles::ScreenToolbar& barra, controles::Accion accion) = 0;
  // Grid: goes to a cell, types and leaves it; fila -1 appends a row. False when the screen held the user.
  virtual bool Celda(controles::Grid& grid, int fila, int columna, const std::string& valor) = 0;
  virtual bool Ve(controles::Grid& grid, int fila, int columna) = 0;
  virtual bool Borra(controles::Grid& grid, int fila) = 0;
  virtual void ClicCelda(controles::Grid& grid, int fila, int columna) = 0;
  virtual void SeleccionaFila(controles::Grid& grid, int fila) = 0;
  // Inner size, twips.
  virtual void Tamano(controles::Formulario& formulario, int ancho, int alto) = 0;
  // Writes a picture of the window; Error kArgumento where there is nothing to see.
  virtual void Foto(controles::Formulario& formulario, const std::string& ruta) = 0;
  virtual void Enfoca(controles::Control& control) = 0;

  // --- the front desk's day: opened (again), a list chosen, a text typed in the search, a row opened
  virtual void AbreHoy(recepcion::Hoy& hoy) = 0;
  virtual void EligeLista(recepcion::Hoy& hoy, recepcion::Lista lista) = 0;
  virtual void BuscaEnHoy(recepcion::Hoy& hoy, const std::string& texto) = 0;
  virtual void AbreFila(recepcion::Hoy& hoy, int fila) = 0;
  // --- the tape chart: shown from a day on, a bar clicked, free nights dragged over
  virtual void MuestraCuadro(recepcion::Cuadro& cuadro, com::Fecha desde, int noches) = 0;
  virtual void AbreBarra(recepcion::Cuadro& cuadro, int fila, com::Fecha noche) = 0;
  // --- a quote: asked for, an offer taken
  virtual void Cotiza(recepcion::Cotizacion& cotizacion, const recepcion::Pedido& pedido) = 0;
  virtual void ReservaOferta(recepcion::Cotizacion& cotizacion, int oferta) = 0;
  virtual void ReservaNoches(recepcion::Cuadro& cuadro, int fila, com::Fecha desde, com::Fecha hasta) = 0;
  // --- the guest's search: opened for a field, a text typed, a row pointed at, taken, one of his reservations opened;
  // a new client's data typed and stored
  virtual void AbreHuespedes(recepcion::Huespedes& huespedes, const std::string& campo,
                             const std::optional<recepcion::EstanciaCaptada>& estancia) = 0;
  virtual void BuscaHuesped(recepcion::Huespedes& huespedes, const std::string& texto) = 0;
  virtual void SenalaHuesped(recepcion::Huespedes& huespedes, int fila) = 0;
  virtual void EligeHuesped(recepcion::Huespedes& huespedes, bool conHabitacion, bool conNotas) = 0;
  virtual void AbreVisita(recepcion::Huespedes& huespedes, int fila) = 0;
  // aunqueParezca: also when there are similar ones, which come back without it.
  virtual std::vector<recepcion::Parecida> CreaHuesped(recepcion::Huespedes& huespedes, const recepcion::Persona& nueva,
                                                       bool aunqueParezca) = 0;
  // --- how the amounts came about, brought before the eyes
  virtual void Explica(const std::vector<recepcion::CuentaExplicada>& explicaciones) = 0;
  // --- the figures of a period
  virtual void MuestraCifras(recepcion::Cifras& cifras, const recepcion::PedidoCifras& pedido) = 0;
};

}  // namespace guion
