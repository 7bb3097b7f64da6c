#include "bench/pantallas.h"

#include "bench/hotel.h"
#include "bench/sqlite.h"
#include "host/standalone/postgres.h"
#include "publico/publico.h"

namespace banco {

namespace {

autonomo::Opciones OpcionesDe(const std::string& hotel, bool leeConjuntos) {
  autonomo::Opciones opciones;
  (autonomo::EsDireccion(hotel) ? opciones.base.conexion : opciones.base.ruta) = hotel;
  opciones.base.leeConjuntos = leeConjuntos;
  opciones.ahora = Hoy();
  return opciones;
}

void Campo(controles::LookupField& campo, const std::string& texto) {
  campo.Teclea(texto);
  campo.Confirma();
}

}  // namespace

int EscritorioMudo::Mensaje(const controles::CajaMensaje& caja) {
  if (caja.id != anfitrion::mensaje::kPreguntaCorreoAlGuardar.id) {
    Falla(caja.id + " " + caja.titulo + ": " + caja.texto);
  }
  pregunta = std::chrono::steady_clock::now();
  return controles::kNo;
}

Sesion::Sesion(const std::string& hotel, bool leeConjuntos) : host_(OpcionesDe(hotel, leeConjuntos)) {
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

void Captura(kv207::frmKV207& pantalla, const std::vector<std::string>& habitaciones, com::Fecha llegada) {
  pantalla.Controles.Pulsa(controles::Accion::Nuevo);
  Campo(pantalla.txtHuesped, "0000000001");
  Campo(pantalla.txtForma_Pago, "0001");
  pantalla.dpFecha_llegada.Fija(llegada);
  pantalla.dpFecha_salida.Fija(com::MasDias(llegada, 2));
  controles::Grid& grid = pantalla.ssReservaciones;
  for (const std::string& habitacion : habitaciones) {
    grid.NuevaFila();
    for (const auto& [columna, texto] : {std::pair{"Clave", habitacion.c_str()}, std::pair{"Adultos", "2"}}) {
      grid.VaA(grid.fila(), grid.IndiceColumna(columna));
      grid.Teclea(texto);
      grid.Deja();
    }
  }
}

com::Fecha LlegadaLejana(int n) { return com::MasDias(Hoy(), 400 + 2 * n); }

void CargaFolio(kv207::frmKV207& pantalla, const std::string& folio) {
  pantalla.txtFolio.Teclea("");
  Campo(pantalla.txtFolio, folio);
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
