// The orders of the front desk around the screens.
#include <charconv>

#include "guion/interprete.h"
#include "platform/com/error.h"

namespace guion {

namespace {

[[noreturn]] void Error(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

int FilaDe(const std::string& palabra) {
  int fila = 0;
  const char* fin = palabra.data() + palabra.size();
  const auto [hasta, error] = std::from_chars(palabra.data(), fin, fila);
  if (error != std::errc{} || hasta != fin) Error("«" + palabra + "» no es un número");
  return fila;
}

}  // namespace

// What is captured is thrown away, as the toolbar's Clear does; a person is asked first.
void Interprete::AbreReservacion(const std::string& folio) {
  controles::Formulario& pantalla = piezas_.componente.formulario();
  controles::ScreenToolbar& barra = BarraDe(pantalla);
  if (barra.EnEdicion()) piezas_.manos.Accion(barra, controles::Accion::Limpiar);
  controles::Control* campo = pantalla.Busca("txtFolio");
  if (campo == nullptr) Error("La pantalla no tiene folio");
  piezas_.manos.Texto(*campo, folio);
  piezas_.manos.Confirma(*campo);
}

void Interprete::Hoy(const Palabras& p) {
  ExigeSinModal();
  static_cast<void>(Activo());
  if (p.size() == 1) return piezas_.manos.AbreHoy(hoy_);
  if (p.size() == 2) Error("Se escribe: hoy [lista NOMBRE | busca TEXTO | abre FILA]");
  if (hoy_.dia().fecha == com::Fecha{}) Error("El día no está a la vista; use la orden «hoy»");
  if (p[1] == "lista") {
    const auto lista = recepcion::ListaDe(p[2]);
    if (!lista) Error("No existe la lista «" + p[2] + "»");
    return piezas_.manos.EligeLista(hoy_, *lista);
  }
  if (p[1] == "busca") return piezas_.manos.BuscaEnHoy(hoy_, p[2]);
  if (p[1] == "abre") return piezas_.manos.AbreFila(hoy_, FilaDe(p[2]));
  Error("No existe «hoy " + p[1] + "»");
}

}  // namespace guion
