// The clerk's hands on real widgets: texts typed as key events, buttons and cells clicked by mouse events.
#pragma once

#include <QDialog>
#include <QPointer>

#include "desktop/escritorio_qt.h"
#include "desktop/eventos.h"
#include "guion/manos.h"

namespace vista {

class VentanaCotizacion;
class VentanaCuadro;
class VentanaHoy;
class VentanaHuesped;
class VistaGrid;

// One key event with a whole text is one stroke of typing, as an input method gives it; so a change event is raised
// once for each text, as it is for the models.
class ManosQt : public guion::Manos {
 public:
  explicit ManosQt(EscritorioQt& escritorio) : escritorio_(escritorio) {}

  void Texto(controles::Control& control, const std::string& texto) override;
  void Confirma(controles::Control& control) override;
  void PonFecha(controles::DateField& control, com::Fecha fecha) override;
  void Clic(controles::Control& control) override;
  void Tecla(controles::Formulario& formulario, int codigo, int mayus) override;
  void Caracter(controles::Formulario& formulario, char32_t caracter) override;
  void Accion(controles::ScreenToolbar& barra, controles::Accion accion) override;
  bool Celda(controles::Grid& grid, int fila, int columna, const std::string& valor) override;
  bool Ve(controles::Grid& grid, int fila, int columna) override;
  bool Borra(controles::Grid& grid, int fila) override;
  void ClicCelda(controles::Grid& grid, int fila, int columna) override;
  void SeleccionaFila(controles::Grid& grid, int fila) override;
  void Tamano(controles::Formulario& formulario, int ancho, int alto) override;
  void Foto(controles::Formulario& formulario, const std::string& ruta) override;
  void Enfoca(controles::Control& control) override;
  void AbreHoy(recepcion::Hoy& hoy) override;
  void EligeLista(recepcion::Hoy& hoy, recepcion::Lista lista) override;
  void BuscaEnHoy(recepcion::Hoy& hoy, const std::string& texto) override;
  void AbreFila(recepcion::Hoy& hoy, int fila) override;
  void MuestraCuadro(recepcion::Cuadro& cuadro, com::Fecha desde, int noches) override;
  void AbreBarra(recepcion::Cuadro& cuadro, int fila, com::Fecha noche) override;
  void Cotiza(recepcion::Cotizacion& cotizacion, const recepcion::Pedido& pedido) override;
  void ReservaOferta(recepcion::Cotizacion& cotizacion, int oferta) override;
  void ReservaNoches(recepcion::Cuadro& cuadro, int fila, com::Fecha desde, com::Fecha hasta) override;
  void AbreHuespedes(recepcion::Huespedes& huespedes, const std::string& campo,
                     const std::optional<recepcion::EstanciaCaptada>& estancia) override;
  void BuscaHuesped(recepcion::Huespedes& huespedes, const std::string& texto) override;
  void SenalaHuesped(recepcion::Huespedes& huespedes, int fila) override;
  void EligeHuesped(recepcion::Huespedes& huespedes, bool conHabitacion, bool conNotas) override;
  void Explica(const std::vector<recepcion::CuentaExplicada>& explicaciones) override;
  void AbreVisita(recepcion::Huespedes& huespedes, int fila) override;
  std::vector<recepcion::Parecida> CreaHuesped(recepcion::Huespedes& huespedes, const recepcion::Persona& nueva,
                                               bool aunqueParezca) override;
  void MuestraCifras(recepcion::Cifras& cifras, const recepcion::PedidoCifras& pedido) override;

 private:
  VentanaHoy& HoyALaVista(recepcion::Hoy& hoy);
  VentanaCuadro& CuadroALaVista(recepcion::Cuadro& cuadro);
  VentanaCotizacion& CotizacionALaVista(recepcion::Cotizacion& cotizacion);
  VentanaHuesped& HuespedALaVista(recepcion::Huespedes& huespedes);
  // Those of the front desk that are there.
  std::vector<QDialog*> Mostrador() const;
  // Shows one of them alone.
  void Alza(QDialog& ventana) const;
  Ventana& VentanaDe(const controles::Formulario& formulario) const;
  Vista& VistaDe(const controles::Control& control) const;
  VistaGrid& VistaDe(const controles::Grid& grid) const;
  void TerminaEdicion(controles::Formulario& formulario, const controles::Control* destino) const;
  // Does something to the widgets, lets what it set off come to rest, and raises what failed.
  void Haz(const std::function<void()>& accion) const;
  // The same in the windows of the front desk, which come up over the others; elsewhere they are closed first.
  static void HazAlFrente(const std::function<void()>& accion);
  void PulsaCelda(VistaGrid& vista, int fila, int columna) const;

  EscritorioQt& escritorio_;
  QPointer<QDialog> hoy_, cuadro_, cotizacion_, huesped_, cliente_, explicacion_, cifras_;  // the main window's
};

}  // namespace vista
