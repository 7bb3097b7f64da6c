// What the user does to a grid: moves, rows appended and deleted, typing; with the events that it raises.
#include <algorithm>
#include <utility>

#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/controls/formulario.h"
#include "platform/controls/grid.h"

namespace controles {
namespace {

[[noreturn]] void FallaTamanio(const std::string& nombre, const char* motivo) {
  throw com::Error(com::error::kTamanio, nombre + " " + motivo);
}

}  // namespace

// --- moves

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

// --- typing

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
