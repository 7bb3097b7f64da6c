#include "bench/pantallas.h"

#include "bench/hotel.h"
#include "bench/sqlite.h"
#include "publico/publico.h"

namespace banco {

namespace {

autonomo::Opciones OpcionesDe(const std::string& ruta, bool leeConjuntos) {
  autonomo::Opciones opciones;
  opciones.base.ruta = ruta;
  opciones.base.leeConjuntos = leeConjuntos;
  opciones.ahora = Hoy();
  return opciones;
}

}  // namespace

int EscritorioMudo::Mensaje(const controles::CajaMensaje& caja) {
  if (caja.id != anfitrion::mensaje::kPreguntaCorreoAlGuardar.id) {
    Falla(caja.id + " " + caja.titulo + ": " + caja.texto);
  }
  pregunta = std::chrono::steady_clock::now();
  return controles::kNo;
}

Sesion::Sesion(const std::string& ruta, bool leeConjuntos) : host_(OpcionesDe(ruta, leeConjuntos)) {
  controles::FijaEscritorio(&escritorio_);
  host_.RegistraClases();
  publico::Arranca();
  publico::CreaHotel();
}

Sesion::~Sesion() {
  publico::LiberaHotel();
  publico::Olvida();
  host_.QuitaClases();
  controles::FijaEscritorio(nullptr);
}

void CargaTablero(kv207::frmDisponibilidad& tablero) {
  if (!tablero.CargarDatos()) Falla(tablero.MensajeError);
}

std::unique_ptr<kv207::frmDisponibilidad> AbreTablero(kv207::ModoVista modo) {
  auto tablero = std::make_unique<kv207::frmDisponibilidad>();
  tablero->Carga();
  tablero->txtDEL.text(com::Variant(Hoy()));
  tablero->txtAL.text(com::Variant(com::MasDias(Hoy(), kNoches)));
  if (!tablero->Agregar_Columnas(kNoches)) Falla(tablero->MensajeError);
  CargaTablero(*tablero);
  if (modo == kv207::ModoVista::PorHabitacion) tablero->opHabitacion.Selecciona();
  return tablero;
}

}  // namespace banco
