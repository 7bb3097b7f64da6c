// The board as designed: places in twips, captions, lookups, columns, styles; and its fields for support tools.
#include "availability/frmDisponibilidad.h"

#include "publico/columnas.h"
#include "publico/controles.h"

namespace kv207 {

namespace {

using controles::DisenoLookup;
using controles::LookupField;

DisenoLookup DisenoFecha() {
  DisenoLookup diseno;
  diseno.locked = true;
  diseno.tipo = controles::TipoDato::Fecha;
  return diseno;
}

DisenoLookup DisenoCodigo(const char* idconsulta, const char* sql, LookupField& nombre) {
  DisenoLookup diseno;
  diseno.idconsulta = idconsulta;
  diseno.sql = sql;
  diseno.sql_control_resultado = &nombre;
  diseno.esclave = true;
  diseno.mayusculas = true;
  diseno.largo = 4;
  diseno.text = kTodosLosCodigos;
  return diseno;
}

DisenoLookup DisenoNombre(const char* todos) {
  DisenoLookup diseno;
  diseno.locked = true;
  diseno.largo = 100;
  diseno.text = todos;
  return diseno;
}

// A label of the legend has the name of its state.
std::string ClaveLeyenda(EstadoCelda estado) { return std::string(NombreEstado(estado)); }

std::vector<controles::Columna> ColumnasFijas() {
  controles::Columna clave;
  clave.clave = col::kClave;
  clave.titulo = "Clave";
  clave.ancho = 650;
  clave.bloqueada = true;
  controles::Columna nombre;
  nombre.clave = col::kNombre;
  nombre.titulo = "Tipo/Habitación";
  nombre.ancho = 3000;
  nombre.bloqueada = true;
  return {clave, nombre};
}

}  // namespace

frmDisponibilidad::frmDisponibilidad()
    : Formulario(forma::kTablero, "Disponibilidad", 13800, 9000),
      Controles(*this, control::kBarra, {0, 0, 13800, 600}, {controles::Accion::Aceptar, controles::Accion::Cancelar},
                true),
      frFrame(*this, "frFrame", {120, 660, 13560, 1620}, "Filtros"),
      lblDEL(*this, "lblDEL", {120, 330, 700, 255}, "Del:", "DEL"),
      lblAL(*this, "lblAL", {2340, 330, 480, 255}, "Al:", "AL"),
      lblGrupo(*this, "lblGrupo", {120, 750, 700, 255}, "Grupo:", "GRUPO"),
      lblArea(*this, "lblArea", {4680, 750, 700, 255}, "Área:", "AREA"),
      lblTipo(*this, "lblTipo", {9120, 750, 700, 255}, "Tipo:", "Tipo"),
      lblVerPor(*this, "lblVerPor", {120, 1170, 800, 255}, "Ver por:", "VER_POR"),
      txtDEL(*this, "txtDEL", {840, 300, 1320, 315}, DisenoFecha()),
      txtAL(*this, "txtAL", {2820, 300, 1320, 315}, DisenoFecha()),
      txtGrupo_Habitacion(*this, control::kGrupo, {840, 720, 1020, 315},
                          DisenoCodigo("GRUPO_HABITACION",
                                       "SELECT Ghb_Descripcion  FROM Grupo_Habitacion WHERE "
                                       "Ghb_Cve_Grupo_Habitacion='?' AND Es_Cve_Estado <> 'BA'",
                                       txtNGrupo_Habitacion)),
      txtNGrupo_Habitacion(*this, "txtNGrupo_Habitacion", {1920, 720, 2580, 315}, DisenoNombre("Todos")),
      txtArea(*this, control::kArea, {5400, 720, 1020, 315},
              DisenoCodigo("AREA_HABITACION",
                           "SELECT Ah_Descripcion  FROM Area_Habitacion WHERE Ah_Cve_Area_Habitacion='?' AND "
                           "Es_Cve_Estado <> 'BA'",
                           txtNArea)),
      txtNArea(*this, "txtNArea", {6480, 720, 2460, 315}, DisenoNombre("Todas")),
      txtTipo_Habitacion(*this, control::kTipo, {9840, 720, 1020, 315},
                         DisenoCodigo("TIPO_HABITACION",
                                      "SELECT Th_Descripcion  FROM Tipo_Habitacion WHERE Th_Cve_Tipo_Habitacion='?' "
                                      "AND Es_Cve_Estado <> 'BA'",
                                      txtNTipo_Habitacion)),
      txtNTipo_Habitacion(*this, control::kNombreTipo, {10920, 720, 2520, 315}, DisenoNombre("Todos")),
      opTipoHabitacion(*this, "opTipoHabitacion", {960, 1140, 1680, 315}, "Tipo habitación", true),
      opHabitacion(*this, control::kPorHabitacion, {2700, 1140, 1380, 315}, "Habitación"),
      cmdPrecios(*this, control::kPrecios, {4680, 1125, 1800, 345}, "Ver precios"),
      ssDisponibilidad(*this, control::kNoches, {120, 2340, 13560, 5900}, ColumnasFijas()),
      frColores(*this, "frColores", {120, 8290, 13560, 660}, "Colores"),
      lblDisponible(*this, "lblDisponible", {120, 270, 1140, 255},
                    "Disponible:", ClaveLeyenda(EstadoCelda::Disponible)),
      lbColorDisponible(*this, "lbColorDisponible", {1320, 270, 480, 255}, ""),
      lblOcupado(*this, "lblOcupado", {2160, 270, 1140, 255}, "Ocupado:", ClaveLeyenda(EstadoCelda::Ocupado)),
      lblColorOcupado(*this, "lblColorOcupado", {3360, 270, 480, 255}, ""),
      lblBloqueado(*this, "lblBloqueado", {4200, 270, 1140, 255}, "Bloqueado", ClaveLeyenda(EstadoCelda::Bloqueado)),
      lblColorBloqueado(*this, "lblColorBloqueado", {5400, 270, 480, 255}, ""),
      lblReservado(*this, "lblReservado", {6240, 270, 1140, 255}, "Reservado", ClaveLeyenda(EstadoCelda::Reservado)),
      lblColorReservado(*this, "lblColorReservado", {7440, 270, 480, 255}, ""),
      lblReservando(*this, "lblReservando", {8280, 270, 1140, 255}, "Reservando", "Reservando"),
      lblColorReservando(*this, "lblColorReservando", {9480, 270, 480, 255}, ""),
      ColorBloqueado(kFondoBloqueado),
      ColorDisponible(kFondoDisponible),
      ColorOcupado(kFondoOcupado),
      ColorReservado(kFondoReservado) {
  controles::Control* const filtros[] = {&lblDEL,
                                         &lblAL,
                                         &lblGrupo,
                                         &lblArea,
                                         &lblTipo,
                                         &lblVerPor,
                                         &txtDEL,
                                         &txtAL,
                                         &txtGrupo_Habitacion,
                                         &txtNGrupo_Habitacion,
                                         &txtArea,
                                         &txtNArea,
                                         &txtTipo_Habitacion,
                                         &txtNTipo_Habitacion,
                                         &opTipoHabitacion,
                                         &opHabitacion,
                                         &cmdPrecios};
  for (controles::Control* c : filtros) c->contenedor(frFrame);
  controles::Control* const leyenda[] = {&lblDisponible, &lbColorDisponible, &lblOcupado,   &lblColorOcupado,
                                         &lblBloqueado,  &lblColorBloqueado, &lblReservado, &lblColorReservado,
                                         &lblReservando, &lblColorReservando};
  for (controles::Control* c : leyenda) c->contenedor(frColores);
  controles::Control* const deCaptura[] = {&txtGrupo_Habitacion, &txtNGrupo_Habitacion, &txtArea, &txtNArea,
                                           &txtTipo_Habitacion,  &txtNTipo_Habitacion};
  for (controles::Control* c : deCaptura) c->grupo(grupo::kCaptura);
  controles::Control* const soloLectura[] = {&txtDEL, &txtAL, &txtNGrupo_Habitacion, &txtNArea, &txtNTipo_Habitacion};
  for (controles::Control* c : soloLectura) c->tabStop(false);

  txtDEL.descripcion("Primera noche");
  txtAL.descripcion("Día de salida");
  txtGrupo_Habitacion.descripcion("Grupo de habitaciones, % para todos");
  txtNGrupo_Habitacion.descripcion("Nombre del grupo");
  txtArea.descripcion("Área, % para todas");
  txtNArea.descripcion("Nombre del área");
  txtTipo_Habitacion.descripcion("Tipo de habitación, % para todos");
  txtNTipo_Habitacion.descripcion("Nombre del tipo de habitación");
  opTipoHabitacion.descripcion("Ver por tipo de habitación");
  opHabitacion.descripcion("Ver por habitación");
  cmdPrecios.descripcion("Lista de precios de la primera noche");
  ssDisponibilidad.descripcion("Habitaciones libres por noche");

  // In the order of their codes, so that a state is the index of its style.
  ssDisponibilidad.DefineEstilo(NombreEstado(EstadoCelda::Ocupado), kFondoOcupado);
  ssDisponibilidad.DefineEstilo(NombreEstado(EstadoCelda::Disponible), kFondoDisponible);
  ssDisponibilidad.DefineEstilo(NombreEstado(EstadoCelda::Bloqueado), kFondoBloqueado);
  ssDisponibilidad.DefineEstilo(NombreEstado(EstadoCelda::Ocupando), kFondoOcupando);
  ssDisponibilidad.DefineEstilo(NombreEstado(EstadoCelda::Reservado), kFondoReservado);
  PintaLeyenda();
  ConectaEventos();
}

std::vector<std::pair<std::string, com::Variant>> frmDisponibilidad::Campos() const {
  return {
      {"MensajeError", MensajeError},     {"FolioExcluido", FolioExcluido},     {"HaySeleccion", HaySeleccion},
      {"ConservarVista", ConservarVista}, {"OpcionesActivas", OpcionesActivas}, {"NumeroDias", NumeroDias},
      {"NumeroFilas", NumeroFilas},       {"ColorBloqueado", ColorBloqueado},   {"ColorDisponible", ColorDisponible},
      {"ColorOcupado", ColorOcupado},     {"ColorReservado", ColorReservado}};
}

}  // namespace kv207
