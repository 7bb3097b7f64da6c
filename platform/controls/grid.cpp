// The grid's columns, rows, cells and styles, as a program sees and changes them.
#include "platform/controls/grid.h"

#include <algorithm>
#include <cassert>
#include <exception>
#include <utility>

#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/controls/formulario.h"
#include "platform/regional/regional.h"

namespace controles {
namespace {

[[noreturn]] void FallaSubindice(const std::string& nombre) {
  throw com::Error(com::error::kSubindice, "Subíndice fuera del intervalo en " + nombre);
}

}  // namespace

Grid::Grid(Formulario& formulario, std::string nombre, Lugar lugar, std::vector<Columna> columnas)
    : Control(formulario, Clase::Grid, std::move(nombre), lugar), columnas_(std::move(columnas)) {}

// --- columns

const Columna& Grid::columna(int indice) const {
  RevisaColumna(indice);
  return columnas_[static_cast<std::size_t>(indice)];
}

const Columna& Grid::columna(std::string_view clave) const { return columna(IndiceObligado(clave)); }

int Grid::IndiceColumna(std::string_view clave) const {
  for (std::size_t i = 0; i < columnas_.size(); ++i) {
    if (columnas_[i].clave == clave) return static_cast<int>(i);
  }
  return -1;
}

int Grid::IndiceObligado(std::string_view clave) const {
  const int indice = IndiceColumna(clave);
  if (indice < 0) {
    throw com::Error(com::error::kElemento, "La columna «" + std::string(clave) + "» no existe en " + nombre());
  }
  return indice;
}

void Grid::AgregaColumna(Columna columna) {
  Toca();
  columnas_.push_back(std::move(columna));
  for (auto& fila : filas_) fila.emplace_back();
  Cambia(CambioGrid::Columnas);
}

void Grid::QuitaColumna(int indice) {
  RevisaColumna(indice);
  Toca();
  columnas_.erase(columnas_.begin() + indice);
  for (auto& fila : filas_) fila.erase(fila.begin() + indice);
  if (col_ == indice) Coloca(fila_, -1);
  if (col_ > indice) --col_;
  Cambia(CambioGrid::Columnas);
}

void Grid::ancho(std::string_view clave, int twips) {
  const int i = IndiceObligado(clave);
  if (twips < 0) throw com::Error(com::error::kTamanio, nombre() + " no admite columnas de ancho negativo");
  columnas_[static_cast<std::size_t>(i)].ancho = twips;
  Cambia(CambioGrid::Columnas, -1, i);
}

void Grid::bloqueada(int indice, bool v) {
  RevisaColumna(indice);
  columnas_[static_cast<std::size_t>(indice)].bloqueada = v;
  Cambia(CambioGrid::Columnas, -1, indice);
}

void Grid::visible(std::string_view clave, bool v) {
  const int i = IndiceObligado(clave);
  columnas_[static_cast<std::size_t>(i)].visible = v;
  Cambia(CambioGrid::Columnas, -1, i);
}

void Grid::titulo(std::string_view clave, std::string v) {
  const int i = IndiceObligado(clave);
  columnas_[static_cast<std::size_t>(i)].titulo = std::move(v);
  Cambia(CambioGrid::Columnas, -1, i);
}

// --- rows and cells

int Grid::AgregaFila() {
  Toca();
  PonFila();
  const int nueva = Filas() - 1;
  Coloca(nueva, col_);
  Cambia(CambioGrid::Fila, nueva);
  return nueva;
}

void Grid::QuitaFila(int fila) {
  RevisaFila(fila);
  Toca();
  QuitaFilaDe(fila);
}

void Grid::QuitaTodas() {
  if (filas_.empty()) return;
  Toca();
  filas_.clear();
  marcadores_.clear();
  pendiente_ = false;
  Coloca(-1, -1);
  Cambia(CambioGrid::Todo);
}

int Grid::Marcador(int fila) const {
  RevisaFila(fila);
  return marcadores_[static_cast<std::size_t>(fila)];
}

void Grid::PonFila() {
  filas_.emplace_back(columnas_.size());
  marcadores_.push_back(++ultimoMarcador_);
  filasNuevas_ = true;
}

void Grid::QuitaFilaDe(int fila) {
  filas_.erase(filas_.begin() + fila);
  marcadores_.erase(marcadores_.begin() + fila);
  if (fila == fila_) {
    // Its edit is gone with it; the row that takes its place is current.
    pendiente_ = false;
    Coloca(std::min(fila, Filas() - 1), filas_.empty() ? -1 : col_);
  } else if (fila < fila_) {
    --fila_;
  }
  Cambia(CambioGrid::Todo);
}

const com::Variant& Grid::celda(int fila, int columna) const {
  RevisaCelda(fila, columna);
  return filas_[static_cast<std::size_t>(fila)][static_cast<std::size_t>(columna)].valor;
}

void Grid::celda(int fila, int columna, const com::Variant& valor) {
  RevisaCelda(fila, columna);
  Toca();
  filas_[static_cast<std::size_t>(fila)][static_cast<std::size_t>(columna)].valor = Convierte(columna, valor);
  if (fila == fila_) {
    intacta_ = false;
    if (columna == col_) edicion_.reset();
  }
  Cambia(CambioGrid::Celda, fila, columna);
}

com::Variant Grid::Convierte(int columna, const com::Variant& valor) const {
  const TipoColumna tipo = columnas_[static_cast<std::size_t>(columna)].tipo;
  if (tipo == TipoColumna::Entero && std::holds_alternative<std::int32_t>(valor.Contenido())) return valor;
  if (valor.EsNulo()) return {};
  if (valor.EsVacio() || valor.EsObjeto()) return valor;
  if (tipo == TipoColumna::Texto) return valor.EsTexto() ? valor : com::Variant(com::CStr(valor));
  if (valor.EsTexto()) {
    const auto& texto = std::get<std::string>(valor.Contenido());
    if (texto.empty()) return {};
    if (tipo == TipoColumna::Fecha) {
      const auto fecha = com::FechaDeTexto(texto);
      return fecha ? com::Variant(*fecha) : valor;
    }
    const auto numero = com::NumeroDe(texto);
    if (!numero) return valor;
    if (tipo == TipoColumna::Doble) return *numero;
  } else if (tipo != TipoColumna::Entero || !valor.EsNumero()) {
    return valor;
  }
  try {
    return com::CLng(valor);
  } catch (const com::Error&) {
    return valor;
  }
}

std::string Grid::Texto(int fila, int columna) const {
  return regional::ConFormato(celda(fila, columna), columnas_[static_cast<std::size_t>(columna)].formato);
}

// --- styles

void Grid::DefineEstilo(std::string_view nombre, std::int32_t fondo, bool dado) {
  const int i = IndiceEstilo(nombre);
  if (i >= 0) {
    estilos_[static_cast<std::size_t>(i)].fondo = fondo;
    estilos_[static_cast<std::size_t>(i)].dado = dado;
  } else {
    estilos_.push_back({std::string(nombre), fondo, dado});
  }
  Cambia(CambioGrid::Todo);
}

int Grid::IndiceEstilo(std::string_view nombre) const {
  for (std::size_t i = 0; i < estilos_.size(); ++i) {
    if (estilos_[i].nombre == nombre) return static_cast<int>(i);
  }
  return -1;
}

int Grid::estilo(int fila, int columna) const {
  RevisaCelda(fila, columna);
  return filas_[static_cast<std::size_t>(fila)][static_cast<std::size_t>(columna)].estilo;
}

void Grid::estilo(int fila, int columna, std::string_view nombre) {
  const int i = IndiceEstilo(nombre);
  if (i < 0) {
    throw com::Error(com::error::kElemento,
                     "El estilo «" + std::string(nombre) + "» no existe en " + Control::nombre());
  }
  estilo(fila, columna, i);
}

void Grid::estilo(int fila, int columna, int indice) {
  RevisaCelda(fila, columna);
  if (indice < -1 || indice >= static_cast<int>(estilos_.size())) FallaSubindice(nombre());
  auto& actual = filas_[static_cast<std::size_t>(fila)][static_cast<std::size_t>(columna)].estilo;
  if (actual == indice) return;
  actual = static_cast<std::int8_t>(indice);
  Cambia(CambioGrid::Celda, fila, columna);
}

// --- current cell

std::string Grid::ClaveColumna() const { return col_ < 0 ? std::string() : columna(col_).clave; }

void Grid::fila(int v) {
  RevisaFila(v);
  Coloca(v, col_);
}

void Grid::columnaActual(int v) {
  if (v != -1) RevisaColumna(v);
  Coloca(fila_, v);
}

// Makes a cell current without events.
void Grid::Coloca(int fila, int columna) {
  if (fila != fila_) intacta_ = false;
  fila_ = fila;
  col_ = columna;
  tecleada_ = false;
  edicion_.reset();
  Cambia(CambioGrid::Actual, fila, columna);
}

Lugar Grid::LugarCelda(int fila, int columna) const {
  RevisaCelda(fila, columna);
  int izquierda = 0;
  for (int c = 0; c < columna; ++c) {
    const Columna& anterior = this->columna(c);
    if (anterior.visible) izquierda += anterior.ancho;
  }
  return {izquierda, kAltoTitulos + fila * kAltoFila, this->columna(columna).ancho, kAltoFila};
}

// --- redraw

Grid::Pausa::Pausa(Grid& grid)
    : grid_(grid), viva_(std::exchange(grid.redraw_, false)), fallas_(std::uncaught_exceptions()) {}

Grid::Pausa::~Pausa() {
  assert((!viva_ || std::uncaught_exceptions() > fallas_) && "Termina was not called");
  try {
    Termina();
  } catch (...) {  // the failure that ends the pause is the one to report
  }
}

void Grid::Pausa::Termina() {
  if (!std::exchange(viva_, false)) return;
  grid_.redraw_ = true;
  grid_.Refresca();
}

void Grid::Refresca() {
  Cambia(CambioGrid::Todo);
  AvisaFilasCargadas();
}

void Grid::AvisaFilasCargadas() {
  if (!std::exchange(filasNuevas_, false)) return;
  if (RowLoaded) RowLoaded();
}

void Grid::Toca() {
  if (antesDeCambiar) antesDeCambiar();
}

void Grid::Cambia(CambioGrid cambio, int fila, int columna) {
  if (redraw_ && alCambiar) alCambiar(cambio, fila, columna);
}

void Grid::RevisaColumna(int columna) const {
  if (columna < 0 || columna >= NumColumnas()) FallaSubindice(nombre());
}

void Grid::RevisaFila(int fila) const {
  if (fila < 0 || fila >= Filas()) FallaSubindice(nombre());
}

void Grid::RevisaCelda(int fila, int columna) const {
  RevisaFila(fila);
  RevisaColumna(columna);
}

}  // namespace controles
