// What the tests of room lines, pricing, saving and hand-off share.
#pragma once

#include <string>
#include <vector>

#include "tests/comun/hotel_prueba.h"

namespace pruebas {

// Every message shown, "id|style|caption|text".
inline std::vector<std::string> Vistos(const EscritorioPrueba& escritorio) {
  std::vector<std::string> vistos;
  for (const controles::CajaMensaje& m : escritorio.Mensajes()) {
    EXPECT_EQ(m.pantalla, "KV207") << m.id;
    vistos.push_back(m.id + "|" + std::to_string(m.estilo) + "|" + m.titulo + "|" + m.texto);
  }
  return vistos;
}
using Cajas = std::vector<std::string>;

// A clerk at the room-line grid.
class RenglonesPrueba : public HotelPrueba {
 protected:
  using HotelPrueba::HotelPrueba;

  controles::Grid& grid() { return pantalla.ssReservaciones; }
  bool Ve(int fila, const char* columna) { return grid().VaA(fila, grid().IndiceColumna(columna)); }
  // Goes to a cell, types and leaves it; false when the screen held the clerk.
  bool Teclea(int fila, const char* columna, const std::string& texto) {
    if (!Ve(fila, columna)) return false;
    grid().Teclea(texto);
    return grid().Deja();
  }
  // A new line with that room and that many adults.
  int Linea(const std::string& habitacion, int adultos) {
    grid().NuevaFila();
    const int fila = grid().fila();
    Teclea(fila, "Clave", habitacion);
    if (adultos > 0) Teclea(fila, "Adultos", std::to_string(adultos));
    return fila;
  }
  double Numero(int fila, const char* columna) { return com::CDbl(grid().celda(fila, columna)); }
  std::string Texto(int fila, const char* columna) { return com::CStr(grid().celda(fila, columna)); }
  double Pie(const controles::LookupField& campo) { return com::CDbl(campo.valor()); }
};

}  // namespace pruebas
