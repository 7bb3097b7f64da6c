// The availability board: rooms or room types against nights, each cell with its state and the number of free rooms.
//
// Controls in tab order, screen fields, then handlers (control_Event) and procedures, grouped as the files that hold
// them. eventos.cpp lists which event runs which handler.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "availability/tablero.h"
#include "host/contract/mensajes.h"
#include "host/contract/servicios.h"
#include "platform/controls/barra.h"
#include "platform/controls/control.h"
#include "platform/controls/formulario.h"
#include "platform/controls/grid.h"

namespace kv207 {

// What a row of the board is: a room type, or a room. Only rooms can be marked.
enum class ModoVista { PorTipo, PorHabitacion };

// States by night (0 the first) and board row.
class MatrizEstados {
 public:
  // All cells occupied, so that none can be marked before it was counted. Error kSubindice for a negative size.
  void Dimensiona(int dias, int filas);
  [[nodiscard]] int Dias() const { return dias_; }
  [[nodiscard]] int Filas() const { return filas_; }
  [[nodiscard]] bool Tiene(int dia, int fila) const { return dia >= 0 && dia < dias_ && fila >= 0 && fila < filas_; }
  // Only for cells that it has.
  EstadoCelda& operator()(int dia, int fila) { return celdas_[Indice(dia, fila)]; }
  EstadoCelda operator()(int dia, int fila) const { return celdas_[Indice(dia, fila)]; }
  // Every marked cell is free again.
  void QuitaMarcas();
  // Some cell among the first nights and rows is in that state.
  [[nodiscard]] bool Contiene(EstadoCelda estado, int dias, int filas) const;

 private:
  std::size_t Indice(int dia, int fila) const {
    return static_cast<std::size_t>(fila) * static_cast<std::size_t>(dias_) + static_cast<std::size_t>(dia);
  }

  int dias_ = 0, filas_ = 0;
  std::vector<EstadoCelda> celdas_;
};

// Design colours of the states, 0x00BBGGRR, and of a marked cell.
inline constexpr std::int32_t kFondoOcupado = 0x000000FF, kFondoDisponible = 0x0000FF00, kFondoBloqueado = 0x00C0C0C0,
                              kFondoOcupando = 0x00008000, kFondoReservado = 0x00808000;

class TotalesTablero;  // ocupacion.h

class frmDisponibilidad : public controles::Formulario {
 public:
  frmDisponibilidad();

  std::vector<std::pair<std::string, com::Variant>> Campos() const override;

  // --- controls, in tab order ----------------------------------------------------------------------------------------
  controles::ScreenToolbar Controles;  // Aceptar, Cancelar
  controles::Marco frFrame;            // filters
  controles::Etiqueta lblDEL, lblAL, lblGrupo, lblArea, lblTipo, lblVerPor;
  controles::LookupField txtDEL;                // first night
  controles::LookupField txtAL;                 // departure day
  controles::LookupField txtGrupo_Habitacion;   // room group, "%" all
  controles::LookupField txtNGrupo_Habitacion;  // its name
  controles::LookupField txtArea;               // area, "%" all
  controles::LookupField txtNArea;              // its name
  controles::LookupField txtTipo_Habitacion;    // room type, "%" all
  controles::LookupField txtNTipo_Habitacion;   // its name
  controles::Opcion opTipoHabitacion;           // view by room type
  controles::Opcion opHabitacion;               // view by room
  controles::Boton cmdPrecios;                  // price list of the first night
  controles::Grid ssDisponibilidad;             // Clave, Nombre, one column a night
  controles::Marco frColores;                   // legend
  controles::Etiqueta lblDisponible, lbColorDisponible;
  controles::Etiqueta lblOcupado, lblColorOcupado;
  controles::Etiqueta lblBloqueado, lblColorBloqueado;
  controles::Etiqueta lblReservado, lblColorReservado;
  controles::Etiqueta lblReservando, lblColorReservando;

  // --- screen fields -------------------------------------------------------------------------------------------------
  std::string MensajeError;      // of the last failed load or column build
  std::string FolioExcluido;     // reservation being edited, "" none
  bool HaySeleccion = false;     // some cell is marked; once the board is hidden: the marks were accepted
  bool ConservarVista = false;   // loads keep the view; else they go back to the one by type
  bool OpcionesActivas = false;  // choosing the room view loads the board
  std::int32_t NumeroDias = 0;   // nights that columns were asked for
  std::int32_t NumeroFilas = 0;  // rows that the last load wrote, also one that failed on the way
  std::int32_t ColorBloqueado = 0, ColorDisponible = 0, ColorOcupado = 0, ColorReservado = 0;  // 0x00BBGGRR
  MatrizEstados Estados;

  [[nodiscard]] ModoVista Modo() const { return opHabitacion.value() ? ModoVista::PorHabitacion : ModoVista::PorTipo; }

  // --- arranque.cpp: load, activation, layout, keys, accept, cancel, prices
  void Form_Load();
  void Form_Activate();
  void Form_Resize();
  void Form_KeyUp(int codigo, int mayus);
  void Controles_Aceptar();
  void Controles_Cancelar();
  void cmdPrecios_Click();  // the host's errors

  // --- carga.cpp: occupancy
  // Rows, counts and states of all cells for the nights from txtDEL to txtAL, with the filters and the view in force;
  // takes every mark away. False with MensajeError set; the filters then stay disabled until a load succeeds.
  [[nodiscard]] bool CargarDatos();

  // --- columnas.cpp: day columns, styles, marks
  // iDias day columns, in place of those that are there, for the nights from txtDEL on; to be called before a load for
  // as many nights. False with MensajeError set.
  [[nodiscard]] bool Agregar_Columnas(std::int32_t iDias);
  void QuitarColumnasDias();
  // Gives every cell the style of its state, and looks for marks.
  void PintarCeldas();
  // HaySeleccion as the states have it.
  void ActualizarSeleccion();
  // Marks the current cell when it is free, or takes its mark away. MarcarFila: the marks of the current row when it
  // has some, else marks its free nights. Nothing by type, or on a row that no load has written.
  void MarcarCelda();
  void MarcarFila();
  void ssDisponibilidad_Click();
  void ssDisponibilidad_SelChange(int tipo);
  void ssDisponibilidad_RowLoaded();
  void ssDisponibilidad_KeyDown(int codigo, int mayus);
  void ssDisponibilidad_KeyPress(int& caracter);

  // --- filtros.cpp: filters and view mode
  void txtGrupo_Habitacion_Change();
  void txtGrupo_Habitacion_Enter();
  void txtArea_Change();
  void txtArea_Enter();
  void txtTipo_Habitacion_Change();
  void txtTipo_Habitacion_Enter();
  void opHabitacion_Click();
  void opTipoHabitacion_Click();

 private:
  void ConectaEventos();  // eventos.cpp
  void RestauraDiseno();  // arranque.cpp
  void AplicaColores();
  void PintaLeyenda();
  [[nodiscard]] bool LlenaTablero();  // carga.cpp
  void LlenaFilas(ModoVista modo, int dias, const TotalesTablero& totales);
  // The first nights, as their day columns say; Error kSubindice when there are fewer columns.
  [[nodiscard]] std::vector<com::Fecha> Noches(int dias) const;
  [[nodiscard]] ado::TextoSQL Condicion(ModoVista modo) const;
  [[nodiscard]] bool PuedeMarcar() const;  // columnas.cpp
  void PonEstado(int dia, int fila, EstadoCelda estado);
  // filtros.cpp
  void CambiaCodigo(controles::LookupField& codigo, controles::LookupField& nombre, const char* todos);
  void ConfirmaCodigo(controles::LookupField& codigo, controles::LookupField& nombre, const char* todos,
                      const anfitrion::DatosMensaje& mensaje);
};

}  // namespace kv207
