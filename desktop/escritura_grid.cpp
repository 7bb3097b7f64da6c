#include "desktop/escritura_grid.h"

#include <QApplication>
#include <algorithm>
#include <string>
#include <utility>

#include "desktop/guarda.h"
#include "desktop/preguntas.h"
#include "platform/controls/barra.h"

namespace vista {

bool PuedeAgregar(const controles::Grid& grid) {
  if (EsTablero(grid) || !grid.enabled()) return false;
  const controles::Formulario& formulario = grid.formulario();
  if (formulario.Primero<controles::ScreenToolbar>() != nullptr && !EnCaptura(formulario)) return false;
  for (int c = 0; c < grid.NumColumnas(); ++c) {
    const auto& columna = grid.columna(c);
    if (columna.visible) return !columna.bloqueada;  // the key must be open
  }
  return false;
}

bool PuedeQuitar(const controles::Grid& grid) {
  return !EsTablero(grid) && grid.enabled() && EnCaptura(grid.formulario());
}

bool EscrituraGrid::CeldaAbierta() const {
  return grid_.fila() >= 0 && grid_.columna() >= 0 && !grid_.columna(grid_.columna()).bloqueada;
}

QString EscrituraGrid::LoQueAcepta(const QString& texto) const {
  std::u32string aceptado;
  for (const uint c : texto.toUcs4()) {
    int codigo = static_cast<int>(c);
    if (grid_.KeyPress) grid_.KeyPress(codigo);
    if (codigo >= 32) aceptado.push_back(static_cast<char32_t>(codigo));
  }
  return QString::fromUcs4(aceptado.data(), static_cast<qsizetype>(aceptado.size()));
}

void EscrituraGrid::Agrega(const QString& aceptado) {
  const bool reemplaza = std::exchange(reemplaza_, false);
  const std::string antes = reemplaza ? std::string() : grid_.Edicion().value_or(std::string());
  grid_.Teclea(antes + aceptado.toStdString());
}

void EscrituraGrid::Escribe(const QString& texto) {
  Corre([&] {
    if (grid_.Filas() == 0 && PuedeAgregar(grid_)) grid_.NuevaFila();
    Respalda();
    const auto codigos = texto.toUcs4();
    if (codigos.size() == 1 && !reemplaza_) return grid_.formulario().PulsaCaracter(codigos.front());
    if (contexto_.interactivo && !CeldaAbierta()) return QApplication::beep();
    const QString aceptado = LoQueAcepta(texto);
    reemplaza_ = reemplaza_ && !aceptado.isEmpty();
    if (!aceptado.isEmpty()) Agrega(aceptado);
  });
}

void EscrituraGrid::Pega(const QString& texto) {
  if (texto.isEmpty()) return;
  EntraAEscribir();
  Corre([&] {
    if (grid_.Filas() == 0 && PuedeAgregar(grid_)) grid_.NuevaFila();
    const QString aceptado = CeldaAbierta() ? LoQueAcepta(texto) : QString();
    if (aceptado.size() != texto.size()) return QApplication::beep();
    Respalda();
    Agrega(aceptado);
  });
}

void EscrituraGrid::SeleccionaTodo() { reemplaza_ = CeldaAbierta(); }

bool EscrituraGrid::Vacia() {
  if (!std::exchange(reemplaza_, false)) return false;
  Corre([this] { grid_.Teclea({}); });
  return true;
}

void EscrituraGrid::Respalda() {
  const int fila = grid_.fila(), columna = grid_.columna();
  if (!contexto_.interactivo || EsTablero(grid_) || grid_.Tecleada() || fila < 0 || columna < 0) return;
  respaldo_ = {fila, columna, {}};
  for (int c = 0; c < grid_.NumColumnas(); ++c) respaldo_.celdas.push_back(grid_.celda(fila, c));
}

bool EscrituraGrid::Deshace() {
  const int fila = respaldo_.fila, columna = respaldo_.columna;
  const auto& celdas = respaldo_.celdas;
  if (!grid_.Tecleada() || fila != grid_.fila() || columna != grid_.columna() ||
      static_cast<int>(celdas.size()) != grid_.NumColumnas()) {
    return false;
  }
  const bool nueva = std::all_of(celdas.begin(), celdas.end(), [](const com::Variant& v) { return v.EsVacio(); });
  Corre([&] {
    if (nueva) return grid_.Teclea({});
    for (int c = 0; c < grid_.NumColumnas(); ++c) grid_.celda(fila, c, celdas[static_cast<std::size_t>(c)]);
    grid_.columnaActual(columna);  // as just entered
  });
  return true;
}

bool EscrituraGrid::EntraAEscribir() {
  if (!contexto_.interactivo || EsTablero(grid_) || grid_.Filas() == 0 || grid_.columna() >= 0) return false;
  const int primera = grid_.IndiceColumna(contexto_.pistas.De(grid_).primera);
  if (primera < 0 || grid_.columna(primera).bloqueada || !grid_.columna(primera).visible) return false;
  Corre([&] { grid_.VaA(0, primera); });
  return grid_.columna() == primera;
}

}  // namespace vista
