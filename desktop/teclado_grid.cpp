#include "desktop/teclado_grid.h"

#include <QApplication>
#include <QClipboard>
#include <algorithm>

#include "desktop/guarda.h"
#include "desktop/teclas.h"
#include "desktop/vista_grid.h"

namespace vista {

namespace {

bool Toda(const QKeyEvent& /*evento*/) { return true; }
template <int... teclas>
bool Es(const QKeyEvent& e) {
  return ((e.key() == teclas) || ...);
}
template <int... teclas>
bool EsSola(const QKeyEvent& e) {
  return Es<teclas...>(e) && SinModificadores(e);
}
template <QKeySequence::StandardKey orden>
bool EsOrden(const QKeyEvent& e) {
  return e.matches(orden);
}
bool EsFlecha(const QKeyEvent& e) { return Es<Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down>(e); }
bool EsFlechaConMayus(const QKeyEvent& e) { return EsFlecha(e) && e.modifiers().testFlag(Qt::ShiftModifier); }
bool EsPorQue(const QKeyEvent& e) { return Es<Qt::Key_F1>(e) && e.modifiers() == Qt::ShiftModifier; }
bool EsDelGrid(const QKeyEvent& e) { return EsFlecha(e) || Es<Qt::Key_Backspace, Qt::Key_Delete>(e); }
// No plain character.
bool TieneCodigo(const QKeyEvent& e) { return CodigoTecla(e.key()) != 0; }

}  // namespace

const TecladoGrid::Regla TecladoGrid::kReglas[] = {
    {En::Tablero, EsPorQue, &TecladoGrid::Explica, "Mayús+F1", "por qué una noche no está libre"},
    {En::Tablero, Es<Qt::Key_Space>, &TecladoGrid::MarcaNoche, "Espacio, Mayús+Espacio",
     "marcar una noche, toda la fila"},
    {En::Tablero, EsFlechaConMayus, &TecladoGrid::MarcaTramo, "Mayús+flechas", "marcar un tramo"},
    {En::Renglones, Es<Qt::Key_Escape>, &TecladoGrid::Deshace, "Esc", "dejar lo que había antes de escribir"},
    {En::Renglones, Toda, &TecladoGrid::QuitaSenalada},
    {En::Renglones, EsSola<Qt::Key_Return, Qt::Key_Enter>, &TecladoGrid::EntraAEscribir, "Enter", "celda siguiente"},
    {En::Renglones, Toda, &TecladoGrid::Respalda},
    {En::Todos, EsOrden<QKeySequence::SelectAll>, &TecladoGrid::SeleccionaTodo, "Ctrl+A",
     "seleccionar lo que hay en la celda"},
    {En::Todos, EsSola<Qt::Key_Delete, Qt::Key_Backspace>, &TecladoGrid::VaciaCelda, "Supr", "vaciar la celda"},
    {En::Todos, TieneCodigo, &TecladoGrid::OlvidaSeleccion},
    {En::Todos, EsFlecha, &TecladoGrid::EntraPrimera},
    {En::Renglones, Es<Qt::Key_Down>, &TecladoGrid::AgregaAlFinal},
    {En::Todos, Es<Qt::Key_Insert>, &TecladoGrid::Agrega, "Ins", "agregar una habitación"},
    {En::Todos, Es<Qt::Key_Home, Qt::Key_End>, &TecladoGrid::VaAlExtremo, "Inicio, Fin",
     "primera y última celda o noche"},
    {En::Todos, Es<Qt::Key_PageUp, Qt::Key_PageDown>, &TecladoGrid::VaDePagina, "RePág, AvPág", "una página"},
    {En::Todos, EsOrden<QKeySequence::Copy>, &TecladoGrid::Copia, "Ctrl+C", "copiar"},
    {En::Todos, EsOrden<QKeySequence::Paste>, &TecladoGrid::Pega, "Ctrl+V", "pegar"},
    {En::Todos, EsDelGrid, &TecladoGrid::PasaAlGrid, "Ctrl+Supr", "quitar una habitación"},
};

std::vector<TecladoGrid::Dicha> TecladoGrid::Dichas() {
  std::vector<Dicha> dichas;
  for (const Regla& r : kReglas) {
    if (r.teclas == nullptr) continue;
    const char* donde = r.en == En::Tablero ? "tablero" : r.en == En::Renglones ? "renglones" : "renglones y tablero";
    dichas.push_back({r.teclas, r.que, donde});
  }
  return dichas;
}

controles::Grid& TecladoGrid::grid() const { return vista_.grid(); }

bool TecladoGrid::Atiende(const QKeyEvent& evento) {
  const En aqui = EsTablero(grid()) ? En::Tablero : En::Renglones;
  return std::any_of(std::begin(kReglas), std::end(kReglas), [&](const Regla& regla) {
    return (regla.en == En::Todos || regla.en == aqui) && regla.es(evento) && (this->*regla.hace)(evento);
  });
}

bool TecladoGrid::Escribe(const QKeyEvent& evento) {
  const bool orden = (evento.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0;
  if (orden || evento.text().isEmpty() || !evento.text().front().isPrint()) return false;
  vista_.escritura().EntraAEscribir();
  vista_.escritura().Escribe(evento.text());
  return true;
}

// --- the board's

// Why the night is not free.
bool TecladoGrid::Explica(const QKeyEvent& /*evento*/) {
  static_cast<void>(vista_.Explica(grid().fila(), grid().columna()));
  return true;
}

// Space marks the night, Shift+Space the whole row.
bool TecladoGrid::MarcaNoche(const QKeyEvent& evento) {
  const bool mayus = evento.modifiers().testFlag(Qt::ShiftModifier);
  if (grid().columna() < 0 && grid().Filas() > 0 && !mayus) VaALaPrimera();
  const int fila = grid().fila(), columna = grid().columna();
  if (fila < 0) return true;
  Corre([&] {
    if (mayus) return grid().SeleccionaFila(fila);
    if (columna >= 0) grid().ClicCelda(fila, columna);
  });
  return true;
}

// Shift and an arrow: the night that is left and the one that is entered are marked, if they are free.
bool TecladoGrid::MarcaTramo(const QKeyEvent& evento) {
  const int abajo = Es<Qt::Key_Down>(evento) ? 1 : Es<Qt::Key_Up>(evento) ? -1 : 0;
  const int derecha = Es<Qt::Key_Right>(evento) ? 1 : Es<Qt::Key_Left>(evento) ? -1 : 0;
  const int libre = grid().IndiceEstilo(vista_.pistas().libre);
  const auto marca = [&] {
    const int f = grid().fila(), c = grid().columna();
    if (f >= 0 && c >= 0 && grid().estilo(f, c) == libre) grid().ClicCelda(f, c);
  };
  Corre([&] {
    const int f = grid().fila() + abajo, c = grid().columna() + derecha;
    if (grid().fila() < 0 || grid().columna() < 0) return;
    marca();
    if (f < 0 || f >= grid().Filas() || c < kColumnasFijas || c >= grid().NumColumnas()) return;
    if (grid().VaA(f, c)) marca();
  });
  return true;
}

// --- the lines'

bool TecladoGrid::Deshace(const QKeyEvent& /*evento*/) { return vista_.escritura().Deshace(); }

// A line taken by its number goes with Supr; any other key lets go of it.
bool TecladoGrid::QuitaSenalada(const QKeyEvent& evento) {
  const int senalada = vista_.raton().DejaSenalada();
  if (senalada < 0 || senalada != grid().fila() || !EsSola<Qt::Key_Delete>(evento)) return false;
  vista_.QuitaRenglon(senalada);
  return true;
}

bool TecladoGrid::EntraAEscribir(const QKeyEvent& /*evento*/) { return vista_.escritura().EntraAEscribir(); }

bool TecladoGrid::Respalda(const QKeyEvent& /*evento*/) {
  vista_.escritura().Respalda();
  return false;
}

// Down from the last line begins another.
bool TecladoGrid::AgregaAlFinal(const QKeyEvent& /*evento*/) {
  if (grid().fila() != grid().Filas() - 1 || !PuedeAgregar(grid()) || !vista_.contexto().interactivo) return false;
  vista_.AgregaRenglon();
  return true;
}

// --- of both

bool TecladoGrid::SeleccionaTodo(const QKeyEvent& /*evento*/) {
  vista_.escritura().SeleccionaTodo();
  vista_.tabla(grid().columna())->viewport()->update();
  return true;
}

bool TecladoGrid::VaciaCelda(const QKeyEvent& /*evento*/) { return vista_.escritura().Vacia(); }

bool TecladoGrid::OlvidaSeleccion(const QKeyEvent& /*evento*/) {
  vista_.escritura().OlvidaSeleccion();
  return false;
}

void TecladoGrid::VaALaPrimera() {
  Corre([this] {
    if (EsTablero(grid()) && grid().NumColumnas() > kColumnasFijas) {
      grid().VaA(std::max(grid().fila(), 0), kColumnasFijas);
    } else {
      grid().Siguiente();
    }
  });
}

bool TecladoGrid::EntraPrimera(const QKeyEvent& /*evento*/) {
  if (grid().columna() >= 0 || grid().Filas() == 0) return false;
  VaALaPrimera();
  return true;
}

bool TecladoGrid::Agrega(const QKeyEvent& /*evento*/) {
  vista_.AgregaRenglon();
  return true;
}

void TecladoGrid::VaA(int fila, int columna) {
  Corre([&] {
    if (fila < 0 || fila >= grid().Filas() || columna < 0 || columna >= grid().NumColumnas()) return;
    if (grid().columna(columna).visible) grid().VaA(fila, columna);
  });
}

// Home and End: the first night or cell of the row and the last one, with Ctrl of the first row and the last one.
bool TecladoGrid::VaAlExtremo(const QKeyEvent& evento) {
  if (grid().fila() < 0) return true;
  const bool inicio = evento.key() == Qt::Key_Home;
  const int paso = inicio ? 1 : -1, desde = EsTablero(grid()) ? kColumnasFijas : 0;
  int c = inicio ? desde : grid().NumColumnas() - 1;
  while (c >= 0 && c < grid().NumColumnas() && !grid().columna(c).visible) c += paso;
  const bool deTodo = evento.modifiers().testFlag(Qt::ControlModifier);
  VaA(!deTodo ? grid().fila() : inicio ? 0 : grid().Filas() - 1, c);
  return true;
}

bool TecladoGrid::VaDePagina(const QKeyEvent& evento) {
  const int pagina = vista_.FilasPorPagina();
  const int f = grid().fila() + (evento.key() == Qt::Key_PageDown ? pagina : -pagina);
  VaA(std::clamp(f, 0, std::max(0, grid().Filas() - 1)), grid().columna());
  return true;
}

bool TecladoGrid::Copia(const QKeyEvent& /*evento*/) {
  const int fila = grid().fila(), columna = grid().columna();
  if (fila >= 0 && columna >= 0) QApplication::clipboard()->setText(Q(grid().Texto(fila, columna)));
  return true;
}

bool TecladoGrid::Pega(const QKeyEvent& /*evento*/) {
  vista_.escritura().Pega(QApplication::clipboard()->text().simplified());
  return true;
}

bool TecladoGrid::PasaAlGrid(const QKeyEvent& evento) {
  Corre([&] { grid().formulario().PulsaTecla(CodigoTecla(evento.key()), MayusDe(evento.modifiers())); });
  return true;
}

}  // namespace vista
