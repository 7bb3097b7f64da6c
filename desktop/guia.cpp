#include "desktop/guia.h"

#include <QToolButton>

#include "component/nombres.h"
#include "desktop/dialogos.h"
#include "desktop/velo.h"
#include "desktop/vista_barra.h"
#include "desktop/vista_grid.h"
#include "platform/com/texto.h"
#include "platform/controls/grid.h"
#include "publico/columnas.h"
#include "recepcion/cuadro.h"
#include "recepcion/pasos.h"

namespace vista {

namespace control = kv207::control;
using controles::Accion;

namespace {

constexpr int kNoches = 2;
constexpr const char* kHuesped = "1";
constexpr const char* kFormaPago = "1";
constexpr const char* kAdultos = "2";

}  // namespace

Guia::~Guia() { Quita(); }

void Guia::Empieza() {
  if (viva_ || escritorio_.Principal() == nullptr) return;
  if (EnCaptura(Principal()) && !escritorio_.Pulsa(Accion::Limpiar)) return;
  if (!EligeHabitacion()) return;
  CreaPasos();
  actual_ = 0;
  viva_ = true;
  Muestra();
}

bool Guia::EligeHabitacion() {
  recepcion::Cuadro cuadro;
  cuadro.Abre();
  llegada_ = com::MasDias(cuadro.hoy(), 1);
  salida_ = com::MasDias(llegada_, kNoches);
  for (int fila = 0; fila < static_cast<int>(cuadro.habitaciones().size()); ++fila) {
    if (!cuadro.Libre(fila, llegada_, salida_)) continue;
    habitacion_ = cuadro.habitaciones()[static_cast<std::size_t>(fila)].clave;
    return true;
  }
  return false;
}

void Guia::CreaPasos() {
  const auto campo = [this](const char* nombre) { return [this, nombre] { return ZonaDe(nombre); }; };
  const auto boton = [this](Accion accion) { return [this, accion] { return ZonaDe(accion); }; };
  const auto teclea = [this](const char* nombre, const char* texto) {
    return [this, nombre, texto] { Teclea(nombre, texto); };
  };
  const auto nada = [] {};
  pasos_ = {
      {QStringLiteral(
           "Suena el teléfono: alguien quiere una habitación por dos noches, desde mañana. En este recorrido "
           "el programa captura la reservación por usted, con los botones y campos de siempre. Puede "
           "saltarlo cuando quiera: no queda nada a medias."),
       nullptr, nada},
      {QStringLiteral("Con Nuevo (Ctrl+N) empieza una reservación."), boton(Accion::Nuevo), [this] { Comienza(); }},
      {QStringLiteral("Quién se hospeda: se escribe su clave, o parte de su nombre para buscarlo, y Enter. Quien llama "
                      "es el huésped 1."),
       campo(control::kHuesped), teclea(control::kHuesped, kHuesped)},
      {QStringLiteral("Cómo va a pagar. La 1 es efectivo; F2 enseña las demás."), campo(control::kFormaPago),
       teclea(control::kFormaPago, kFormaPago)},
      {QStringLiteral(
           "La llegada y, a su lado, la salida: mañana, por dos noches. Se escribe 15/3, sólo el día, o +3."),
       campo(control::kLlegada),
       // Dates that were not taken show on the board, where the nights cannot be marked.
       [this] { static_cast<void>(recepcion::TecleaEstancia(Principal(), llegada_, salida_)); }},
      {QStringLiteral("El tablero (F6) dice qué habitaciones están libres esas noches."), campo(control::kAbreTablero),
       [this] { AbreTablero(); }},
      {QStringLiteral("Cada renglón es una habitación y cada columna una noche; lo verde está libre. Se marcan las dos "
                      "noches con un clic, o con Espacio, y se acepta (Ctrl+Enter)."),
       [this] { return ZonaDeNoches(); }, [this] { MarcaNoches(); }, true},
      {QStringLiteral("La habitación ya es un renglón de la reservación. Falta cuántos adultos, menores e infantes "
                      "llegan: son dos adultos."),
       [this] { return ZonaDeAdultos(); }, [this] { CapturaAdultos(); }},
      {QStringLiteral("Con eso tiene precio, y aquí está el total con impuestos, para decirlo por teléfono."),
       campo(control::kTotal), nada},
      {QStringLiteral(
           "Aceptar (Ctrl+Enter) la guarda. Se pregunta si se manda la confirmación por correo: conteste No y "
           "la verá impresa; se cierra con Esc."),
       boton(Accion::Aceptar), [this] { Acepta(); }},
      {QStringLiteral("Listo. Lo demás del hotel está aquí (F10), y con una tecla: F5 el día, con la búsqueda de "
                      "cualquier reservación; F7 el cuadro de habitaciones; F8 cotizar. Ctrl+O vuelve a abrir la "
                      "última. El recorrido se repite en Ayuda."),
       [this] { return ZonaDelMenu(); }, nada},
  };
}

Ventana* Guia::VentanaDelPaso() const {
  return escritorio_.ventana(pasos_[actual_].enTablero && tablero_ != nullptr ? *tablero_ : Principal());
}

void Guia::Muestra() {
  if (actual_ >= pasos_.size()) {
    viva_ = false;
    return DejaSinCaptura();
  }
  const Paso& paso = pasos_[actual_];
  Ventana* ventana = VentanaDelPaso();
  if (ventana == nullptr) {
    viva_ = false;
    return;
  }
  const QString cuenta = QStringLiteral("%1 de %2").arg(actual_ + 1).arg(pasos_.size());
  const QRect hueco = paso.donde ? paso.donde().intersected(ventana->rect()) : QRect();
  velo_ = new Velo(*ventana, hueco, paso.texto, cuenta, actual_ + 1 == pasos_.size());
  velo_->alSeguir = [this] { Sigue(); };
  velo_->alSaltar = [this] { Salta(); };
}

// The step that opens the board waits in it until it is hidden; the one over the board leaves what comes next to it.
void Guia::Sigue() {
  Quita();
  const Paso& paso = pasos_[actual_];
  const bool enTablero = paso.enTablero;
  ++actual_;
  paso.hace();
  if (enTablero) return;
  if (!viva_) return DejaSinCaptura();
  Muestra();
}

void Guia::Salta() {
  Quita();
  viva_ = false;
  if (tablero_ == nullptr) return DejaSinCaptura();
  // Whoever opened it takes the capture away once it is hidden.
  if (auto* barra = tablero_->Primero<controles::ScreenToolbar>()) barra->Pulsa(Accion::Cancelar);
}

void Guia::Quita() {
  if (!velo_) return;
  velo_->hide();
  velo_->deleteLater();
  velo_ = nullptr;
}

// What stands there was typed by the tour: nobody is asked.
void Guia::DejaSinCaptura() {
  if (escritorio_.Principal() == nullptr) return;
  if (EnCaptura(Principal())) Principal().Primero<controles::ScreenToolbar>()->Pulsa(Accion::Limpiar);
  if (Ventana* ventana = escritorio_.ventana(Principal())) ventana->SigueFoco();
}

// --- where

QRect Guia::ZonaDe(const char* control) const {
  const controles::Control* suyo = Principal().Busca(control);
  Ventana* ventana = escritorio_.ventana(Principal());
  const Vista* vista = suyo == nullptr ? nullptr : ventana->vista(*suyo);
  if (vista == nullptr) return {};
  return {vista->widget()->mapTo(ventana, QPoint()), vista->widget()->size()};
}

QRect Guia::ZonaDe(Accion accion) const {
  Ventana* ventana = escritorio_.ventana(Principal());
  auto* vista = Como<VistaBarra>(ventana->vista(*Principal().Primero<controles::ScreenToolbar>()));
  QToolButton* boton = vista == nullptr ? nullptr : vista->boton(accion);
  return boton == nullptr ? QRect() : QRect(boton->mapTo(ventana, QPoint()), boton->size());
}

QRect Guia::ZonaDelMenu() const {
  Ventana* ventana = escritorio_.ventana(Principal());
  auto* boton = ventana->findChild<QToolButton*>(QStringLiteral("menu"));
  return boton == nullptr ? QRect() : QRect(boton->mapTo(ventana, QPoint()), boton->size());
}

QRect Guia::ZonaDeCeldas(controles::Formulario& forma, int fila, int desde, int hasta) const {
  Ventana* ventana = escritorio_.ventana(forma);
  auto* vista = Como<VistaGrid>(ventana->vista(*forma.Primero<controles::Grid>()));
  if (vista == nullptr || fila < 0) return {};
  QRect zona;
  for (int columna = desde; columna <= hasta; ++columna) zona = zona.united(vista->ZonaCelda(fila, columna));
  return zona.isEmpty() ? zona : QRect(vista->widget()->mapTo(ventana, zona.topLeft()), zona.size());
}

QRect Guia::ZonaDeNoches() const {
  constexpr int kPrimera = kv207::kColumnasFijas;
  return ZonaDeCeldas(*tablero_, FilaEnTablero(), kPrimera, kPrimera + kNoches - 1);
}

QRect Guia::ZonaDeAdultos() const {
  const int columna = Principal().Primero<controles::Grid>()->IndiceColumna(kv207::col::kAdultos);
  return ZonaDeCeldas(Principal(), 0, columna, columna);
}

// --- what is done, as a user does it

void Guia::Comienza() {
  escritorio_.Pulsa(Accion::Limpiar);
  escritorio_.Pulsa(Accion::Nuevo);
}

void Guia::Teclea(const char* campo, const std::string& texto) const {
  auto* suyo = controles::Como<controles::LookupField>(Principal().Busca(campo));
  if (suyo == nullptr || !suyo->PuedeEnfocarse()) return;
  Principal().Enfoca(*suyo);
  suyo->Teclea(texto);
  Principal().PulsaTecla(controles::tecla::kEnter);
}

void Guia::AbreTablero() {
  escritorio_.AlAbrirModal(nullptr, [this](controles::Formulario& tablero) {
    tablero_ = &tablero;
    // By rooms, as it is told.
    if (auto* porHabitacion = controles::Como<controles::Opcion>(tablero.Busca(control::kPorHabitacion))) {
      tablero.Enfoca(*porHabitacion);
      porHabitacion->Pulsa();
    }
    Muestra();
  });
  Principal().PulsaTecla(controles::tecla::kF6);
  escritorio_.AlAbrirModal(nullptr, nullptr);
  tablero_ = nullptr;
  // It did not come up, and has said why; or it was closed.
  if (!pasos_[actual_].enTablero) return;
  Quita();
  viva_ = false;
}

void Guia::MarcaNoches() {
  const std::string motivo = recepcion::MarcaTramos(*tablero_, llegada_, {{habitacion_, llegada_, salida_}});
  if (motivo.empty()) return;
  Avisa(motivo + "\r\nEl recorrido termina aquí.", caja::kAviso, escritorio_.Frente());
  Salta();
}

int Guia::FilaEnTablero() const {
  const auto* grid = tablero_->Primero<controles::Grid>();
  for (int fila = 0; fila < grid->Filas(); ++fila) {
    if (com::IgualSinCaja(com::RecortaDerecha(grid->Texto(fila, kv207::col::kClave)), habitacion_)) return fila;
  }
  return -1;
}

void Guia::CapturaAdultos() const {
  auto* grid = Principal().Primero<controles::Grid>();
  if (grid->Filas() == 0 || !grid->VaA(0, grid->IndiceColumna(kv207::col::kAdultos))) return;
  Principal().Enfoca(*grid);
  grid->Teclea(kAdultos);
  grid->Deja();
}

// A refusal has said why.
void Guia::Acepta() {
  if (!escritorio_.Pulsa(Accion::Aceptar) || EnCaptura(Principal())) viva_ = false;
}

}  // namespace vista
