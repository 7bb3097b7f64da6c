// The clerk's hands on the screens' models, without a display.
#pragma once

#include "guion/manos.h"

namespace guion {

class ManosModelos : public Manos {
 public:
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
  // Leaves a grid with an unfinished edit first. Error kTamanio when its cell holds the user.
  void Enfoca(controles::Control& control) override;
  void AbreHoy(recepcion::Hoy& hoy) override { hoy.Abre(); }
  void EligeLista(recepcion::Hoy& hoy, recepcion::Lista lista) override { hoy.Elige(lista); }
  void BuscaEnHoy(recepcion::Hoy& hoy, const std::string& texto) override { hoy.Busca(texto); }
  void AbreFila(recepcion::Hoy& hoy, int fila) override { hoy.AbreFila(fila); }
  void MuestraCuadro(recepcion::Cuadro& cuadro, com::Fecha desde, int noches) override { cuadro.Abre(desde, noches); }
  void AbreBarra(recepcion::Cuadro& cuadro, int fila, com::Fecha noche) override { cuadro.AbreBarra(fila, noche); }
  void Cotiza(recepcion::Cotizacion& cotizacion, const recepcion::Pedido& pedido) override {
    cotizacion.Calcula(pedido);
  }
  void ReservaOferta(recepcion::Cotizacion& cotizacion, int oferta) override { cotizacion.Reserva(oferta); }
  void ReservaNoches(recepcion::Cuadro& cuadro, int fila, com::Fecha desde, com::Fecha hasta) override {
    cuadro.Reserva(fila, desde, hasta);
  }
  void AbreHuespedes(recepcion::Huespedes& huespedes, const std::string& campo,
                     const std::optional<recepcion::EstanciaCaptada>& estancia) override {
    huespedes.Abre(campo, estancia);
  }
  void BuscaHuesped(recepcion::Huespedes& huespedes, const std::string& texto) override { huespedes.Busca(texto); }
  void SenalaHuesped(recepcion::Huespedes& huespedes, int fila) override { huespedes.Senala(fila); }
  void EligeHuesped(recepcion::Huespedes& huespedes, bool conHabitacion, bool conNotas) override {
    huespedes.Elige(conHabitacion, conNotas);
  }
  void Explica(const std::vector<recepcion::CuentaExplicada>& /*explicaciones*/) override {}
  void AbreVisita(recepcion::Huespedes& huespedes, int fila) override { huespedes.AbreReservacion(fila); }
  std::vector<recepcion::Parecida> CreaHuesped(recepcion::Huespedes& huespedes, const recepcion::Persona& nueva,
                                               bool aunqueParezca) override {
    return huespedes.Crea(nueva, aunqueParezca);
  }
  void MuestraCifras(recepcion::Cifras& cifras, const recepcion::PedidoCifras& pedido) override { cifras.Abre(pedido); }
};

// What is left of a text typed into the current cell once the screen has swallowed the characters that it does not
// take. For every kind of hands, so that all type the same.
std::string LoQueAcepta(controles::Grid& grid, const std::string& texto);

}  // namespace guion
