// Reads a script's orders, carries them out through the clerk's hands and answers each with one JSON object.
#pragma once

#include <functional>
#include <istream>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "guion/componente.h"
#include "guion/json.h"
#include "guion/lineas.h"
#include "guion/manos.h"
#include "guion/respuestas.h"
#include "guion/vigilados.h"
#include "host/standalone/hotel_nuevo.h"
#include "platform/listado/listado.h"
#include "recepcion/borrador.h"
#include "recepcion/encargo.h"

namespace guion {

class Interprete {
 public:
  // What the orders act on; all must outlive the interpreter.
  struct Piezas {
    autonomo::Anfitrion& anfitrion;
    Vigilancia& vigilancia;
    Respuestas& respuestas;
    Manos& manos;
    Componente& componente;
  };
  using Palabras = std::vector<std::string>;  // the order's name first

  // salida gets the answers, errores one line "name:line: why" for each order that was not ok.
  Interprete(const Piezas& piezas, std::ostream& salida, std::ostream& errores);

  // Carries out the orders to the end of the script; gives the number of those that were not ok. nombre stands for the
  // script in error lines. com::Error kBaseDatos when the answers cannot be written.
  int Corre(std::istream& entrada, const std::string& nombre);

  // For a desktop's MuestraModal: answers the order that opened the form, then carries out orders until the form is
  // hidden. The order that hid it is answered once the screen that opened it has done its part. When the script ends
  // before, the form is cancelled.
  void AtiendeModal(controles::Formulario& formulario);

 private:
  struct Respuesta {
    int linea = 0;
    std::string orden;
    bool ok = true;
    std::string error;
    std::optional<Json> valor;
    std::optional<bool> retenida;
    bool contestada = false;
  };
  struct DatosOrden {
    const char* nombre;
    std::size_t minimo, maximo;  // words after the name
    const char* uso;
    void (Interprete::*hace)(const Palabras& p);
  };
  static const std::vector<DatosOrden>& Ordenes();

  // --- interprete.cpp: the loop and its answers
  void Bucle(const std::function<bool()>& sigue);
  // Takes the next order into actual_ and palabras_; false at the end of the script.
  bool LeeOrden();
  void Atiende();
  void Ejecuta(const Palabras& p);
  void Rechaza(const std::string& motivo);
  void Contesta();
  Json DuenaDe(const controles::CajaMensaje& caja) const;
  Json Mensajes();

  // --- interprete.cpp: what the orders' words stand for
  controles::Formulario& Activo() const;
  controles::Formulario& FormularioDe(const std::string& nombre) const;
  // A control by its name on the active form, or by form and name.
  controles::Control& ControlDe(const std::string& nombre) const;
  // The same, for something that the user does to it: its form must be the active one.
  controles::Control& ControlActivo(const std::string& nombre) const;
  controles::Grid& GridDe(controles::Formulario& formulario) const;
  // The room lines, the board: their form must be the active one.
  controles::Grid& Renglones() const;
  controles::Grid& Tablero() const;
  controles::ScreenToolbar& BarraDe(controles::Formulario& formulario) const;
  void ExigeSinModal() const;

  // --- ordenes.cpp: one member for each order
  void Parametro(const Palabras& p);
  void Permiso(const Palabras& p);
  void Cambio(const Palabras& p);
  void Impuesto(const Palabras& p);
  void Tarifa(const Palabras& p);
  void Plantilla(const Palabras& p);
  void Direccion(const Palabras& p);
  void Ahora(const Palabras& p);
  void Abre(const Palabras& p);
  void Cierra(const Palabras& p);
  void Texto(const Palabras& p);
  void Enter(const Palabras& p);
  void Campo(const Palabras& p);
  void Fecha(const Palabras& p);
  void Clic(const Palabras& p);
  void Tecla(const Palabras& p);
  void Accion(const Palabras& p);
  void Celda(const Palabras& p);
  void Ve(const Palabras& p);
  void Borra(const Palabras& p);
  void Marca(const Palabras& p);
  void MarcaFila(const Palabras& p);
  void Tamano(const Palabras& p);
  void Responde(const Palabras& p);
  void Muestra(const Palabras& p);
  void Lista(const Palabras& p);
  void Reenvia(const Palabras& p);
  // --- ordenes_hotel.cpp: a hotel from nothing
  void Hotel(const Palabras& p);
  // --- ordenes_recepcion.cpp: the front desk around the screens
  void Hoy(const Palabras& p);
  void Cuadro(const Palabras& p);
  void Cotiza(const Palabras& p);
  void Cifras(const Palabras& p);
  void Exporta(const Palabras& p);
  void Agenda(const Palabras& p);
  void Parte(const Palabras& p);
  listado::Listado ListadoDe(const std::string& que);
  void Borrador(const Palabras& p);
  void Repone(const Palabras& p);
  void PorQue(const Palabras& p);
  void Huesped(const Palabras& p);
  void Explica(const Palabras& p);
  void TomaHuesped(const std::string& campo, const recepcion::Toma& toma);
  void Reserva(const recepcion::Pedido& pedido, const std::vector<recepcion::Tramo>& tramos);
  bool Pulsa(controles::Accion accion) const;  // of the reservation screen's toolbar; raises when it cannot
  void AbreReservacion(const std::string& folio);
  // com::Error kArgumento before the order that shows it.
  const recepcion::Hoy& DiaALaVista() const;
  const recepcion::Cuadro& CuadroALaVista() const;
  const recepcion::Cifras& CifrasALaVista() const;
  void Sql(const Palabras& p);
  void Falla(const Palabras& p);
  void FallaGrid(const Palabras& p);
  void Foto(const Palabras& p);
  Json ValorDe(const std::string& que);

  Piezas piezas_;
  std::ostream& salida_;
  std::ostream& errores_;
  std::istream* entrada_ = nullptr;
  std::string nombre_;
  int linea_ = 0;
  int fallidas_ = 0;
  int modales_ = 0;
  Respuesta actual_;
  autonomo::HotelNuevo hotelNuevo_;
  recepcion::Hoy hoy_;
  recepcion::Cuadro cuadro_;
  recepcion::Cotizacion cotizacion_;
  recepcion::Cifras cifras_;
  std::string parte_;  // as text
  recepcion::RenglonesQuitados quitados_;
  std::string borrador_;  // as text; "" none
  recepcion::Huespedes huespedes_;
  std::vector<recepcion::Parecida> parecidas_;  // to whom the last new client was similar
  recepcion::Encargo encargo_;
  // What the order does on the board once it is there.
  std::function<void(controles::Formulario&)> pasosDelTablero_;
  Linea partes_;
};

}  // namespace guion
