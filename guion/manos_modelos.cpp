#include "guion/manos_modelos.h"

#include "guion/lineas.h"
#include "guion/usable.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"

namespace guion {

namespace {

[[noreturn]] void NoSirve(const controles::Control& control, const char* motivo) {
  throw com::Error(com::error::kArgumento, "«" + control.nombre() + "» " + motivo);
}

// An edit that was begun is finished before the clerk turns to something else.
void TerminaEdicion(controles::Formulario& formulario, const controles::Control* destino) {
  auto* grid = controles::Como<controles::Grid>(formulario.foco());
  if (grid == nullptr || grid == destino) return;
  if ((grid->Tecleada() || grid->Pendiente()) && !grid->Deja()) RechazaSalida(*grid);
}

}  // namespace

std::string LoQueAcepta(controles::Grid& grid, const std::string& texto) {
  if (!grid.KeyPress) return texto;
  std::string aceptado;
  for (const char32_t c : CodigosDe(texto)) {
    int codigo = static_cast<int>(c);
    grid.KeyPress(codigo);
    if (codigo != 0) com::AgregaUtf8(aceptado, static_cast<char32_t>(codigo));
  }
  return aceptado;
}

void ManosModelos::Enfoca(controles::Control& control) {
  TerminaEdicion(control.formulario(), &control);
  control.formulario().Enfoca(control);
}

void ManosModelos::Texto(controles::Control& control, const std::string& texto) {
  RevisaEntrada(control);
  Enfoca(control);
  if (auto* campo = controles::Como<controles::LookupField>(&control)) return campo->Teclea(texto);
  if (auto* notas = controles::Como<controles::CampoNotas>(&control)) return notas->Teclea(texto);
  NoSirve(control, "no es un campo de texto");
}

void ManosModelos::Confirma(controles::Control& control) {
  RevisaEntrada(control);
  Enfoca(control);
  control.formulario().PulsaTecla(controles::tecla::kEnter);
}

void ManosModelos::PonFecha(controles::DateField& control, com::Fecha fecha) {
  RevisaEntrada(control);
  Enfoca(control);
  control.Fija(fecha);
}

void ManosModelos::Clic(controles::Control& control) {
  RevisaUsable(control);
  Enfoca(control);
  if (auto* boton = controles::Como<controles::Boton>(&control)) return boton->Pulsa();
  if (auto* casilla = controles::Como<controles::Casilla>(&control)) return casilla->Pulsa();
  if (auto* opcion = controles::Como<controles::Opcion>(&control)) return opcion->Pulsa();
  NoSirve(control, "no es un botón, una opción ni una casilla");
}

void ManosModelos::Tecla(controles::Formulario& formulario, int codigo, int mayus) {
  formulario.PulsaTecla(codigo, mayus);
}

void ManosModelos::Caracter(controles::Formulario& formulario, char32_t caracter) {
  formulario.PulsaCaracter(caracter);
}

void ManosModelos::Accion(controles::ScreenToolbar& barra, controles::Accion accion) {
  RevisaUsable(barra);
  if (!controles::Abandona(accion)) TerminaEdicion(barra.formulario(), nullptr);
  barra.Pulsa(accion);
}

bool ManosModelos::Celda(controles::Grid& grid, int fila, int columna, const std::string& valor) {
  RevisaUsable(grid);
  RevisaCeldaEscribible(grid, fila, columna);
  Enfoca(grid);
  if (fila < 0) {
    if (!grid.NuevaFila()) return false;
    fila = grid.Filas() - 1;
  }
  if (!grid.VaA(fila, columna)) return false;
  grid.formulario().Enfoca(grid);  // the cell itself, not what the screen may have laid over it
  const std::string aceptado = LoQueAcepta(grid, valor);
  if (valor.empty() || !aceptado.empty()) grid.Teclea(aceptado);
  return grid.Deja();
}

bool ManosModelos::Ve(controles::Grid& grid, int fila, int columna) {
  RevisaUsable(grid);
  RevisaCelda(grid, fila, columna);
  Enfoca(grid);
  return grid.VaA(fila, columna);
}

bool ManosModelos::Borra(controles::Grid& grid, int fila) {
  RevisaUsable(grid);
  Enfoca(grid);
  return grid.Borra(fila);
}

void ManosModelos::ClicCelda(controles::Grid& grid, int fila, int columna) {
  RevisaUsable(grid);
  RevisaCelda(grid, fila, columna);
  Enfoca(grid);
  grid.ClicCelda(fila, columna);
}

void ManosModelos::SeleccionaFila(controles::Grid& grid, int fila) {
  RevisaUsable(grid);
  Enfoca(grid);
  grid.SeleccionaFila(fila);
}

void ManosModelos::Tamano(controles::Formulario& formulario, int ancho, int alto) {
  formulario.Redimensiona(ancho, alto);
}

void ManosModelos::Foto(controles::Formulario&, const std::string&) {
  throw com::Error(com::error::kArgumento, "Sin ventanas no hay nada que fotografiar; use reservas --guion");
}

}  // namespace guion
