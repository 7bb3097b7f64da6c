// The board's filters and the switch between its two views.
#include "availability/frmDisponibilidad.h"
#include "publico/avisos.h"
#include "publico/columnas.h"
#include "publico/publico.h"

namespace kv207 {

namespace mensaje = anfitrion::mensaje;

namespace {

constexpr const char* kTodos = "Todos";
constexpr const char* kTodas = "Todas";

bool Vacio(const controles::LookupField& campo) { return com::CStr(campo.valor()).empty(); }

}  // namespace

// An emptied code stands for all. Written as a value, which raises nothing: no load before the code is confirmed.
void frmDisponibilidad::CambiaCodigo(controles::LookupField& codigo, controles::LookupField& nombre,
                                     const char* todos) {
  if (!Vacio(codigo)) return;
  codigo.valor(kTodosLosCodigos);
  nombre.valor(todos);
}

// Loads the board again when the code is known: the lookup has filled its name in before.
void frmDisponibilidad::ConfirmaCodigo(controles::LookupField& codigo, controles::LookupField& nombre,
                                       const char* todos, const anfitrion::DatosMensaje& mensaje) {
  if (com::CStr(codigo.valor()) == kTodosLosCodigos) nombre.valor(todos);
  if (Vacio(nombre) || Vacio(codigo)) return;
  if (!CargarDatos()) Avisa(*this, mensaje, MensajeError);
}

void frmDisponibilidad::txtGrupo_Habitacion_Change() {
  CambiaCodigo(txtGrupo_Habitacion, txtNGrupo_Habitacion, kTodos);
}

void frmDisponibilidad::txtGrupo_Habitacion_Enter() {
  ConfirmaCodigo(txtGrupo_Habitacion, txtNGrupo_Habitacion, kTodos, mensaje::kCargaGrupo);
}

void frmDisponibilidad::txtArea_Change() { CambiaCodigo(txtArea, txtNArea, kTodas); }

void frmDisponibilidad::txtArea_Enter() { ConfirmaCodigo(txtArea, txtNArea, kTodas, mensaje::kCargaArea); }

void frmDisponibilidad::txtTipo_Habitacion_Change() { CambiaCodigo(txtTipo_Habitacion, txtNTipo_Habitacion, kTodos); }

void frmDisponibilidad::txtTipo_Habitacion_Enter() {
  ConfirmaCodigo(txtTipo_Habitacion, txtNTipo_Habitacion, kTodos, mensaje::kCargaTipo);
}

void frmDisponibilidad::opHabitacion_Click() {
  if (!OpcionesActivas) return;
  ConservarVista = true;
  ssDisponibilidad.visible(col::kClave, false);
  ssDisponibilidad.titulo(col::kNombre, "Habitación");
  ssDisponibilidad.QuitaTodas();
  if (!CargarDatos()) Avisa(*this, mensaje::kCargaPorHabitacion, MensajeError);
}

void frmDisponibilidad::opTipoHabitacion_Click() {
  if (HaySeleccion) {
    if (Avisa(*this, mensaje::kPreguntaPerderMarcas) == controles::kNo) {
      OpcionesActivas = false;  // selecting the room view again must not load it
      opHabitacion.Selecciona();
      Enfoca(opHabitacion);
      return;
    }
    HaySeleccion = false;
    Estados.QuitaMarcas();  // given up, also when the load that follows fails
  }
  OpcionesActivas = true;
  ssDisponibilidad.visible(col::kClave, true);
  ssDisponibilidad.titulo(col::kNombre, "Tipo habitación");
  ssDisponibilidad.QuitaTodas();
  if (!CargarDatos()) Avisa(*this, mensaje::kCargaPorTipo, MensajeError);
}

}  // namespace kv207
