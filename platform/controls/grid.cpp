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

[[noreturn]] void FallaTamanio(const std::string& nombre, const char* motivo) {
  throw com::Error(com::error::kTamanio, nombre + " " + motivo);
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
  if (twips < 0) FallaTamanio(nombre(), "no admite columnas de ancho negativo");
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

// --- user: moves

bool Grid::Sale(bool dejaFila) {
  // A message box of the leave check must not start the same check again.
  if (saliendo_) return false;
  if (HayActual() && BeforeRowColChange) {
    bool cancela = false;
    saliendo_ = true;
    try {
      BeforeRowColChange(cancela);
    } catch (...) {
      saliendo_ = false;
      throw;
    }
    saliendo_ = false;
    if (cancela) return false;
  }
  const bool tecleada = std::exchange(tecleada_, false);
  edicion_.reset();
  if (dejaFila && intacta_ && fila_ == Filas() - 1) {
    intacta_ = false;
    QuitaFilaDe(fila_);
  } else if (pendiente_ && (dejaFila || tecleada)) {
    Compromete();
  }
  return true;
}

void Grid::Compromete() {
  try {
    if (RowCommitted) RowCommitted();
    pendiente_ = false;
  } catch (const com::Error& e) {
    int codigo = e.Numero();
    if (UpdateError) UpdateError(codigo);
    if (codigo != 0) throw;
  }
}

bool Grid::VaA(int fila, int columna) {
  RevisaCelda(fila, columna);
  const Columna& destino = this->columna(columna);
  if (!destino.visible) {
    throw com::Error(com::error::kElemento, "La columna «" + destino.clave + "» no está visible");
  }
  if (fila == fila_ && columna == col_) return true;
  const int veces = formulario().vecesEnfocado();
  if (!Sale(fila != fila_)) return false;
  // The checks may have removed rows.
  if (fila >= Filas()) return false;
  // What the rules of the cell that is left want corrected first has the focus.
  const bool llamado = formulario().vecesEnfocado() != veces && formulario().foco() != this;
  if (!llamado) formulario().Enfoca(*this);
  Coloca(fila, columna);
  if (RowColChange) RowColChange();
  return true;
}

bool Grid::Deja() { return Sale(true); }

int Grid::ColumnaVisible(int desde, int paso) const {
  for (int c = desde; c >= 0 && c < NumColumnas(); c += paso) {
    if (columna(c).visible) return c;
  }
  return -1;
}

int Grid::PrimeraColumnaVisible(bool escribible) const {
  int c = ColumnaVisible(0, 1);
  while (c >= 0 && escribible && columna(c).bloqueada) c = ColumnaVisible(c + 1, 1);
  return c;
}

bool Grid::NuevaFila() {
  const int primera = PrimeraColumnaVisible(true);
  if (!enabled() || primera < 0) FallaTamanio(nombre(), "no admite renglones nuevos");
  if (!Sale(true)) return false;
  PonFila();
  Cambia(CambioGrid::Fila, Filas() - 1);
  formulario().Enfoca(*this);
  Coloca(Filas() - 1, primera);
  intacta_ = true;
  if (RowColChange) RowColChange();
  return true;
}

bool Grid::Borra(int fila) {
  RevisaFila(fila);
  if (fila != fila_) Coloca(fila, col_);
  bool cancela = false, pregunta = true;
  if (BeforeDelete) BeforeDelete(cancela, pregunta);
  if (cancela || fila >= Filas()) return false;
  QuitaFilaDe(fila);
  bool muestraError = true;
  if (AfterDelete) AfterDelete(muestraError);
  Compromete();
  return true;
}

std::optional<Grid::Posicion> Grid::CeldaSiguiente(int paso) const {
  if (filas_.empty()) return std::nullopt;
  const int borde = paso > 0 ? 0 : NumColumnas() - 1;
  if (!HayActual()) {
    const int columna = ColumnaVisible(borde, paso);
    if (columna < 0) return std::nullopt;
    return Posicion{std::max(fila_, 0), columna};
  }
  if (const int columna = ColumnaVisible(col_ + paso, paso); columna >= 0) return Posicion{fila_, columna};
  const int fila = fila_ + paso, columna = ColumnaVisible(borde, paso);
  if (columna < 0 || fila < 0 || fila >= Filas()) return std::nullopt;
  return Posicion{fila, columna};
}

bool Grid::Siguiente(int paso) {
  const auto celda = CeldaSiguiente(paso);
  return celda && VaA(celda->fila, celda->columna);
}

void Grid::ClicCelda(int fila, int columna) {
  if (VaA(fila, columna) && Click) Click();
}

void Grid::SeleccionaFila(int fila) {
  RevisaFila(fila);
  const int celda = col_ >= 0 && columna(col_).visible ? col_ : PrimeraColumnaVisible(false);
  if (celda >= 0 && !VaA(fila, celda)) return;
  if (SelChange) SelChange(2);
}

// --- user: typing

bool Grid::SePuedeTeclear() const { return HayActual() && enabled() && !columna(col_).bloqueada; }

void Grid::Teclea(const std::string& texto) {
  if (!HayActual()) FallaTamanio(nombre(), "no tiene una celda actual");
  if (!SePuedeTeclear()) FallaTamanio(nombre(), "no admite escribir en esta columna");
  filas_[static_cast<std::size_t>(fila_)][static_cast<std::size_t>(col_)].valor = Convierte(col_, texto);
  tecleada_ = pendiente_ = true;
  intacta_ = false;
  edicion_ = texto;
  Cambia(CambioGrid::Celda, fila_, col_);
  if (!Change) return;
  const int filas = Filas();
  Change();
  // The change may have taken the line away; that completes it too.
  if (Filas() < filas) Compromete();
}

void Grid::TeclaAbajo(int codigo, int mayus) {
  if (KeyDown) KeyDown(codigo, mayus);
  switch (codigo) {
    case tecla::kTab: {
      const int paso = (mayus & 1) != 0 ? -1 : 1;
      if (const auto celda = CeldaSiguiente(paso)) {
        VaA(celda->fila, celda->columna);
      } else if (Deja()) {
        formulario().EnfocaSiguiente(paso);
      }
      break;
    }
    case tecla::kEnter:
    case tecla::kRetroceso:
      PulsaCaracter(static_cast<char32_t>(codigo));
      break;
    case tecla::kIzquierda:
    case tecla::kDerecha: {
      const int paso = codigo == tecla::kDerecha ? 1 : -1;
      const int columna = HayActual() ? ColumnaVisible(col_ + paso, paso) : -1;
      if (columna >= 0) VaA(fila_, columna);
      break;
    }
    case tecla::kArriba:
    case tecla::kAbajo: {
      const int fila = fila_ + (codigo == tecla::kAbajo ? 1 : -1);
      if (HayActual() && fila >= 0 && fila < Filas()) VaA(fila, col_);
      break;
    }
    case tecla::kSupr:
      if (mayus == 2 && fila_ >= 0) Borra(fila_);
      break;
    default:
      break;
  }
}

void Grid::TeclaArriba(int codigo, int mayus) {
  if (KeyUp) KeyUp(codigo, mayus);
}

void Grid::PulsaCaracter(char32_t caracter) {
  int codigo = static_cast<int>(caracter);
  if (KeyPress) KeyPress(codigo);
  if (!SePuedeTeclear()) return;
  if (codigo == tecla::kRetroceso) {
    const com::Variant& actual = celda(fila_, col_);
    std::string texto = edicion_ ? *edicion_ : com::CStr(actual);
    com::QuitaUltimoUtf8(texto);
    Teclea(texto);
  } else if (codigo >= 32) {
    std::string texto = tecleada_ ? (edicion_ ? *edicion_ : com::CStr(celda(fila_, col_))) : std::string();
    com::AgregaUtf8(texto, static_cast<char32_t>(codigo));
    Teclea(texto);
  }
}

}  // namespace controles
