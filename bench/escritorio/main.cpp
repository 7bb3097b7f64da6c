// Speed and memory of the desktop on the hotel of 300 rooms, 30 nights, room view. Ratios are taken in this one run.
//   bench_escritorio [--hotel=FILE] [--veces=N]
#include <QApplication>
#include <QCursor>
#include <QElapsedTimer>
#include <QScreen>
#include <QScrollBar>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <utility>
#include <vector>

#include "availability/frmDisponibilidad.h"
#include "bench/hotel.h"
#include "component/nombres.h"
#include "desktop/escritorio_qt.h"
#include "desktop/estilo.h"
#include "desktop/ventana_cuadro.h"
#include "desktop/ventana_hoy.h"
#include "desktop/vista_grid.h"
#include "guion/componente.h"
#include "host/standalone/anfitrion.h"
#include "host/standalone/letras.h"

namespace {

double Mediana(int veces, const std::function<void()>& hace) {
  std::vector<double> tiempos;
  for (int i = 0; i < veces; ++i) {
    QElapsedTimer reloj;
    reloj.start();
    hace();
    tiempos.push_back(static_cast<double>(reloj.nsecsElapsed()) / 1e6);
  }
  std::nth_element(tiempos.begin(), tiempos.begin() + veces / 2, tiempos.end());
  return tiempos[static_cast<std::size_t>(veces / 2)];
}

// Peak resident memory, MB.
double Memoria() {
  std::FILE* f = std::fopen("/proc/self/status", "r");
  if (f == nullptr) return 0;
  char linea[256];
  long kb = 0;
  while (std::fgets(linea, sizeof linea, f) != nullptr) {
    if (std::strncmp(linea, "VmHWM:", 6) == 0) kb = std::strtol(linea + 6, nullptr, 10);
  }
  static_cast<void>(std::fclose(f));
  return static_cast<double>(kb) / 1024;
}

// The board as a clerk opens it: shown, painted; what is measured runs while it is up.
void AbreTablero(vista::EscritorioQt& escritorio, controles::Formulario& reservacion,
                 const std::function<void(controles::Formulario&)>& mientras) {
  vista::EscritorioQt::Piloto piloto;
  piloto.modal = [&](controles::Formulario& tablero) {
    mientras(tablero);
    tablero.PulsaTecla(controles::tecla::kEsc);
  };
  escritorio.FijaPiloto(piloto);
  reservacion.PulsaTecla(controles::tecla::kF6);
}

// Notes that a widget was painted.
class Testigo : public QObject {
 public:
  explicit Testigo(QWidget* w) { w->installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* evento) override {
    pintado = pintado || evento->type() == QEvent::Paint;
    return false;
  }
  bool pintado = false;
};

// Lets events run until the widget has been painted; the window system gathers repaints for some 5 ms.
void EsperaPintado(Testigo& testigo) {
  testigo.pintado = false;
  while (!testigo.pintado) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

QWidget* Celdas(vista::EscritorioQt& escritorio, controles::Formulario& forma, controles::Grid& grid) {
  auto& vista = dynamic_cast<vista::VistaGrid&>(*escritorio.ventana(forma)->vista(grid));
  return vista.tabla(2)->viewport();
}

// Both clocks, ms: on a machine that others use too, the processor's own time is the steadier one.
struct Instante {
  double reloj = 0, procesador = 0;
};

Instante Ahora() {
  const auto ms = [](clockid_t cual) {
    timespec t{};
    clock_gettime(cual, &t);
    return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_nsec) / 1e6;
  };
  return {ms(CLOCK_MONOTONIC), ms(CLOCK_PROCESS_CPUTIME_ID)};
}

// Notes when the board is loaded and about to be shown.
class EscritorioMedido : public vista::EscritorioQt {
 public:
  void MuestraModal(controles::Formulario& formulario) override {
    cargado = Ahora();
    EscritorioQt::MuestraModal(formulario);
  }
  Instante cargado;
};

// Times of one stretch, over many runs.
struct Tramo {
  std::vector<double> reloj, procesador;
  void Anota(const std::pair<Instante, Instante>& entre) { Anota(entre.first, entre.second); }
  void Anota(const Instante& desde, const Instante& hasta) {
    reloj.push_back(hasta.reloj - desde.reloj);
    procesador.push_back(hasta.procesador - desde.procesador);
  }
};

// What any window costs: an empty dialog of that size, kept between its showings, from show to painted.
std::pair<Instante, Instante> AbreVacia(QWidget& padre, const QSize& tamano) {
  static QWidget* ventana = nullptr;
  if (ventana == nullptr) {
    ventana = new QWidget(&padre, Qt::Dialog);
    ventana->setWindowModality(Qt::ApplicationModal);
    ventana->resize(tamano);
  }
  Testigo testigo(ventana);
  const Instante inicio = Ahora();
  ventana->show();
  ventana->raise();
  ventana->activateWindow();
  EsperaPintado(testigo);
  const Instante fin = Ahora();
  ventana->hide();
  return {inicio, fin};
}

double MedianaDe(std::vector<double> tiempos) {
  const auto medio = tiempos.begin() + static_cast<std::ptrdiff_t>(tiempos.size() / 2);
  std::nth_element(tiempos.begin(), medio, tiempos.end());
  return *medio;
}

void SinPalabreria(QtMsgType tipo, const QMessageLogContext&, const QString& texto) {
  if (tipo == QtFatalMsg) std::cerr << qPrintable(texto) << '\n';
}

// The day's window: opened, and each key of a search to its painted rows.
void MideHoy() {
  recepcion::Hoy hoy(autonomo::LetraBuscada);
  while (hoy.Prepara()) {
  }
  const vista::Contexto contexto;
  vista::VentanaHoy ventana(hoy, contexto, nullptr);
  ventana.show();
  auto* busca = ventana.findChild<QLineEdit*>(QStringLiteral("busca"));
  Testigo testigo(ventana.findChild<QTableWidget*>(QStringLiteral("filas"))->viewport());
  EsperaPintado(testigo);
  const QString texto = QStringLiteral("numero 12 mañana");
  int letras = 0;
  double peor = 0;
  const double tecla = Mediana(64, [&] {
    QElapsedTimer reloj;
    reloj.start();
    letras = letras % static_cast<int>(texto.size()) + 1;
    busca->setText(texto.left(letras));
    EsperaPintado(testigo);
    peor = std::max(peor, static_cast<double>(reloj.nsecsElapsed()) / 1e6);
  });
  std::printf("%-44s %8.1f ms, at worst %.1f ms\n", "a key of the search to its painted rows", tecla, peor);
}

// The tape chart of all rooms and two months, row by row through its window.
void MideCuadro() {
  recepcion::Cuadro cuadro;
  const double lee = Mediana(7, [&] { cuadro.Abre(banco::Hoy(), recepcion::kNochesMaximas); });
  vista::VentanaCuadro ventana(cuadro, nullptr);
  ventana.resize(1600, 900);
  ventana.show();
  Testigo testigo(ventana.tabla().viewport());
  EsperaPintado(testigo);
  QScrollBar* barra = ventana.tabla().verticalScrollBar();
  const double rueda = Mediana(101, [&] {
    barra->setValue(barra->value() + 3 > barra->maximum() ? 0 : barra->value() + 3);
    EsperaPintado(testigo);
  });
  const double pagina = Mediana(31, [&] {
    barra->setValue(barra->value() == barra->maximum() ? 0 : barra->value() + barra->pageStep());
    EsperaPintado(testigo);
  });
  const double entera = Mediana(31, [&] {
    ventana.tabla().viewport()->update();
    EsperaPintado(testigo);
  });
  std::printf("%-44s %8.1f ms\n", "tape chart of 60 nights, read", lee);
  std::printf("%-44s %8.1f ms\n", "tape chart scrolled by three rows, painted", rueda);
  std::printf("%-44s %8.1f ms\n", "tape chart scrolled by a page, painted", pagina);
  std::printf("%-44s %8.1f ms\n", "tape chart painted whole", entera);
}

struct Argumentos {
  std::string hotel = (std::filesystem::temp_directory_path() / "bench_kv207.db").string();
  int veces = 41;  // openings of the board
};

Argumentos LeeArgumentos(int argc, char** argv) {
  Argumentos a;
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--hotel=", 8) == 0) a.hotel = argv[i] + 8;
    if (std::strncmp(argv[i], "--veces=", 8) == 0)
      a.veces = std::max(1, static_cast<int>(std::strtol(argv[i] + 8, nullptr, 10)));
  }
  return a;
}

// A new reservation of the nights that the board is to show.
void EmpiezaReservacion(controles::Formulario& reservacion) {
  dynamic_cast<controles::ScreenToolbar&>(*reservacion.Busca(kv207::control::kBarra)).Pulsa(controles::Accion::Nuevo);
  auto& llegada = dynamic_cast<controles::DateField&>(*reservacion.Busca(kv207::control::kLlegada));
  auto& dias = dynamic_cast<controles::LookupField&>(*reservacion.Busca(kv207::control::kDias));
  llegada.Fija(banco::Hoy());
  dias.Teclea(std::to_string(banco::kNoches));
}

// The board, opened again and again; beside it what its load alone costs, and what any window does.
void MideAperturas(EscritorioMedido& escritorio, controles::Formulario& reservacion, kv207::frmDisponibilidad& tablero,
                   int veces) {
  // The room view first, so that every later opening keeps it.
  AbreTablero(escritorio, reservacion, [&](controles::Formulario&) { tablero.opHabitacion.Pulsa(); });

  Tramo carga, hastaCargado, hastaPintado, vacia;
  for (int i = 0; i < veces; ++i) {
    const Instante inicio = Ahora();
    AbreTablero(escritorio, reservacion, [&](controles::Formulario& t) {
      Testigo testigo(Celdas(escritorio, t, tablero.ssDisponibilidad));
      EsperaPintado(testigo);
      hastaPintado.Anota(inicio, Ahora());
    });
    hastaCargado.Anota(inicio, escritorio.cargado);
    vacia.Anota(AbreVacia(*escritorio.ventana(reservacion), escritorio.ventana(tablero)->size()));
    // What still waits to be painted is not the load's.
    for (int vuelta = 0; vuelta < 5; ++vuelta) QApplication::processEvents();
    // The same load, with the board's window out of the way.
    const Instante antes = Ahora();
    tablero.ssDisponibilidad.QuitaTodas();
    if (!tablero.Agregar_Columnas(banco::kNoches) || !tablero.CargarDatos()) {
      throw std::runtime_error(tablero.MensajeError);
    }
    carga.Anota(antes, Ahora());
  }
  const double base = MedianaDe(carga.procesador);
  for (const auto& [titulo, tramo] :
       {std::pair{"board: columns and load, no window", &carga},
        std::pair{"board: F6 to loaded, not yet shown", &hastaCargado},
        std::pair{"board: F6 to painted", &hastaPintado}, std::pair{"an empty window of its size, painted", &vacia}}) {
    const double procesador = MedianaDe(tramo->procesador);
    std::printf("%-44s %8.1f ms, processor %5.1f ms  (%.2f times the load)\n", titulo, MedianaDe(tramo->reloj),
                procesador, procesador / base);
  }
}

// A mark and a scroll step on the board that is shown.
void MideUso(EscritorioMedido& escritorio, controles::Formulario& forma, controles::Grid& grid) {
  Testigo testigo(Celdas(escritorio, forma, grid));
  EsperaPintado(testigo);
  auto& vista = dynamic_cast<vista::VistaGrid&>(*escritorio.ventana(forma)->vista(grid));
  int libre = 0;
  while (libre < grid.Filas() && grid.estilo(libre, 2) != static_cast<int>(kv207::EstadoCelda::Disponible)) ++libre;
  const double marca = Mediana(200, [&] {
    grid.ClicCelda(libre, 2);
    EsperaPintado(testigo);
  });
  std::printf("%-44s %8.2f ms\n", "a mark to its painted cell", marca);
  QScrollBar* barra = vista.tabla(2)->verticalScrollBar();
  const double corre = Mediana(200, [&] {
    barra->setValue(barra->value() >= barra->maximum() ? 0 : barra->value() + 60);
    EsperaPintado(testigo);
  });
  std::printf("%-44s %8.2f ms\n", "a scroll step, painted", corre);
}

int Mide(int argc, char** argv) {
  QElapsedTimer desdeElInicio;
  desdeElInicio.start();
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const Argumentos argumentos = LeeArgumentos(argc, argv);
  const bool habia = std::filesystem::exists(argumentos.hotel);
  banco::ConstruyeHotel(argumentos.hotel);
  qInstallMessageHandler(SinPalabreria);
  QApplication aplicacion(argc, argv);
  vista::AplicaEstilo(aplicacion, vista::Tema::Claro);
  QApplication::setQuitOnLastWindowClosed(false);

  autonomo::Opciones opciones;
  opciones.base.ruta = argumentos.hotel;
  opciones.ahora = banco::Hoy();
  autonomo::Anfitrion anfitrion(opciones);
  anfitrion.RegistraClases();
  EscritorioMedido escritorio;
  controles::FijaEscritorio(&escritorio);
  guion::Componente componente;
  componente.Abre(anfitrion.Padre());
  controles::Formulario& reservacion = componente.formulario();
  auto& tablero = dynamic_cast<kv207::frmDisponibilidad&>(componente.tablero());
  auto& renglones = dynamic_cast<controles::Grid&>(*reservacion.Busca(kv207::control::kRenglones));
  Testigo pantalla(Celdas(escritorio, reservacion, renglones));
  EsperaPintado(pantalla);
  // The clerk's hands are on the keyboard: the pointer rests below, where nothing lights up.
  QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
  if (habia) std::printf("%-44s %8.1f ms\n", "start to a painted screen", static_cast<double>(desdeElInicio.elapsed()));

  EmpiezaReservacion(reservacion);
  MideAperturas(escritorio, reservacion, tablero, argumentos.veces);
  AbreTablero(escritorio, reservacion,
              [&](controles::Formulario& t) { MideUso(escritorio, t, tablero.ssDisponibilidad); });
  MideHoy();
  MideCuadro();
  std::printf("%-44s %8.1f MB\n", "peak memory", Memoria());
  reservacion.Descarga();
  controles::FijaEscritorio(nullptr);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Mide(argc, argv);
  } catch (const std::exception& e) {
    std::cerr << "bench_escritorio: " << e.what() << '\n';
    return 1;
  }
}
