#include "desktop/raton_grid.h"

#include <QAction>
#include <QMenu>
#include <QMouseEvent>
#include <string>

#include "desktop/guarda.h"
#include "desktop/vista_grid.h"

namespace vista {

namespace {

// A row by its key and which of the rows with that key it is, a column by its key: they outlive a load. Without a
// column: the row's header.
struct Senas {
  std::string clave;
  int repeticion = 0;
  std::string columna;
};

Senas SenasDe(const controles::Grid& grid, LugarGrid lugar) {
  Senas senas{grid.Texto(lugar.fila, 0), 0, lugar.columna < 0 ? "" : grid.columna(lugar.columna).clave};
  for (int f = 0; f < lugar.fila; ++f) senas.repeticion += grid.Texto(f, 0) == senas.clave ? 1 : 0;
  return senas;
}

// Where it stands now; nothing when it is gone.
std::optional<LugarGrid> Busca(const controles::Grid& grid, const Senas& senas) {
  const int columna = senas.columna.empty() ? -1 : grid.IndiceColumna(senas.columna);
  if (columna < 0 && !senas.columna.empty()) return std::nullopt;
  int repeticion = senas.repeticion;
  for (int f = 0; f < grid.Filas(); ++f) {
    if (grid.Texto(f, 0) == senas.clave && repeticion-- == 0) return LugarGrid{f, columna};
  }
  return std::nullopt;
}

}  // namespace

void RatonGrid::Pulsa(int fila, int columna) {
  controles::Grid& grid = vista_.grid();
  senalada_ = -1;
  if (!grid.enabled() || fila >= grid.Filas() || columna >= grid.NumColumnas()) return;
  arrastre_.reset();
  if (!vista_.TomaFoco()) return;
  Corre([&] { grid.ClicCelda(fila, columna); });
  if (!EsTablero(grid) || fila >= grid.Filas() || columna >= grid.NumColumnas()) return;
  const PistasGrid& pistas = vista_.pistas();
  const int marcada = grid.IndiceEstilo(pistas.marcada), libre = grid.IndiceEstilo(pistas.libre);
  const int estilo = grid.estilo(fila, columna);
  if (marcada >= 0 && (estilo == marcada || estilo == libre)) arrastre_ = estilo == marcada;
}

void RatonGrid::PulsaFila(int fila) {
  controles::Grid& grid = vista_.grid();
  // Below the last row the header tells -1.
  if (!grid.enabled() || !vista_.TomaFoco() || fila < 0 || fila >= grid.Filas()) return;
  Corre([&] { grid.SeleccionaFila(fila); });
  if (EsTablero(grid) || !vista_.contexto().interactivo || fila >= grid.Filas() || grid.fila() != fila) return;
  Corre([&] { grid.formulario().Enfoca(grid); });  // the line itself, not the date laid over its cell
  vista_.modelo().Sincroniza();
  senalada_ = fila;
  vista_.Refresca();
}

void RatonGrid::Arrastra(int fila, int columna) {
  if (!arrastre_ || EsFija(columna)) return;
  controles::Grid& grid = vista_.grid();
  const int quiere = grid.IndiceEstilo(*arrastre_ ? vista_.pistas().libre : vista_.pistas().marcada);
  Corre([&] {
    while (fila == grid.fila() && columna != grid.columna() && columna < grid.NumColumnas()) {
      const int c = grid.columna() + (columna > grid.columna() ? 1 : -1);
      if (grid.estilo(fila, c) == quiere) {
        grid.ClicCelda(fila, c);
      } else {
        grid.VaA(fila, c);
      }
      if (c != grid.columna()) return;  // held
    }
  });
}

void RatonGrid::PideMenu(QWidget& donde, const QPoint& punto) {
  const controles::Grid& grid = vista_.grid();
  if (EsTablero(grid) || !vista_.contexto().interactivo || !vista_.TomaFoco()) return;
  const auto lugar = vista_.LugarEn(donde, punto);
  const int fila = lugar ? lugar->fila : -1;
  if (fila >= 0) PulsaFila(fila);
  if (fila >= 0 && grid.fila() != fila) return;  // held in another line
  auto* menu = new QMenu(vista_.widget());
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setObjectName(QStringLiteral("renglon"));
  const auto ofrece = [&](const QString& titulo, bool puede, const std::function<void()>& hace) {
    QAction* accion = menu->addAction(titulo);
    accion->setEnabled(puede);
    QObject::connect(accion, &QAction::triggered, vista_.widget(), hace);
  };
  const PistasGrid& pistas = vista_.pistas();
  ofrece(pistas.agregar + QStringLiteral("\tIns"), PuedeAgregar(grid), [this] { vista_.AgregaRenglon(); });
  ofrece(pistas.quitar + QStringLiteral("\tCtrl+Supr"), fila >= 0 && PuedeQuitar(grid),
         [this, fila] { vista_.QuitaRenglon(fila); });
  menu->popup(donde.mapToGlobal(punto));
}

std::function<void()> RatonGrid::Blanco(QWidget& donde, const QMouseEvent& evento) {
  const controles::Grid& grid = vista_.grid();
  vista_.modelo().Sincroniza();
  const auto lugar = vista_.LugarEn(donde, evento.position().toPoint());
  if (!lugar) return nullptr;
  if (lugar->fila < 0 || lugar->fila >= grid.Filas() || evento.button() != Qt::LeftButton) return [] {};
  return [this, senas = SenasDe(grid, *lugar)] {
    const auto ahora = Busca(vista_.grid(), senas);
    if (!ahora) return;
    if (ahora->columna < 0) return PulsaFila(ahora->fila);
    Pulsa(ahora->fila, ahora->columna);
  };
}

}  // namespace vista
