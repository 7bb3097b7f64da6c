// Reads a script's orders, has each carried out by the group that it belongs to and answers it with one JSON object.
#pragma once

#include <functional>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

#include "guion/alcance.h"
#include "guion/lineas.h"
#include "guion/ordenes_anfitrion.h"
#include "guion/ordenes_captura.h"
#include "guion/ordenes_hotel.h"
#include "guion/ordenes_pantalla.h"
#include "guion/ordenes_recepcion.h"

namespace guion {

class Interprete {
 public:
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
  void Bucle(const std::function<bool()>& sigue);
  // Takes the next order into the answer at work and partes_; false at the end of the script.
  bool LeeOrden();
  void Atiende();
  void Ejecuta(const Palabras& p);
  void Rechaza(const std::string& motivo);
  void Contesta();
  Json DuenaDe(const controles::CajaMensaje& caja) const;
  Json Mensajes();
  // Of the order "muestra": each group knows some names, the screens all others.
  Json ValorDe(const std::string& que);

  Alcance alcance_;
  OrdenesAnfitrion anfitrion_{alcance_};
  OrdenesHotel hotel_{alcance_};
  OrdenesPantalla pantalla_{alcance_};
  OrdenesCaptura captura_{alcance_};
  OrdenesRecepcion recepcion_{alcance_};
  std::vector<Orden> ordenes_;
  std::ostream& salida_;
  std::ostream& errores_;
  std::istream* entrada_ = nullptr;
  std::string nombre_;
  int linea_ = 0;
  int fallidas_ = 0;
  Linea partes_;
};

}  // namespace guion
