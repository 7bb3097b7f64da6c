// Unbound data grid: columns with their properties, rows of cells, a current cell, named cell styles, and the events of
// the user's moves and edits. What a program does to the grid raises nothing; what the user does, through the members
// marked "user", raises the events.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/com/fecha.h"
#include "platform/com/variant.h"
#include "platform/controls/control.h"

namespace controles {

enum class TipoColumna { Texto, Fecha, Entero, Doble };
enum class Alineacion { Izquierda, Centro, Derecha };

struct Columna {
  std::string clave{};
  std::string titulo{};
  TipoColumna tipo = TipoColumna::Texto;
  std::string formato{};  // number format, see regional::ConFormato
  int ancho = 0;          // twips
  bool visible = true;
  bool bloqueada = false;
  Alineacion alineacion = Alineacion::Izquierda;
  Alineacion alineacionTitulo = Alineacion::Izquierda;
  std::optional<com::Fecha> fecha{};  // day that the column stands for, for day columns
};

// A named cell style. Colours are 0x00BBGGRR. dado: the hotel's own colour, shown exactly as it is; a designed one may
// be toned.
struct Estilo {
  std::string nombre;
  std::int32_t fondo = 0x00FFFFFF;
  bool dado = false;
};

// Every grid begins with a row's key and its name, which views keep in sight.
inline constexpr int kColumnaNombre = 1, kColumnasFijas = 2;

// What changed, for the view: one cell, one row, everything, the columns, or the current cell.
enum class CambioGrid { Celda, Fila, Todo, Columnas, Actual };

class Grid : public Control {
 public:
  static constexpr Clase kClase = Clase::Grid;
  Grid(Formulario& formulario, std::string nombre, Lugar lugar, std::vector<Columna> columnas = {});

  // --- columns -------------------------------------------------------------------------------------------------------
  [[nodiscard]] int NumColumnas() const { return static_cast<int>(columnas_.size()); }
  [[nodiscard]] const Columna& columna(int indice) const;              // Error kSubindice
  [[nodiscard]] const Columna& columna(std::string_view clave) const;  // case-sensitive; Error kElemento
  [[nodiscard]] int IndiceColumna(std::string_view clave) const;       // -1 when there is none
  void AgregaColumna(Columna columna);                                 // at the end; rows get an empty cell
  void QuitaColumna(int indice);
  void ancho(std::string_view clave, int twips);  // Error kTamanio when negative
  void bloqueada(int indice, bool v);
  void bloqueada(std::string_view clave, bool v) { bloqueada(IndiceObligado(clave), v); }
  void visible(std::string_view clave, bool v);
  void titulo(std::string_view clave, std::string v);
  using Control::visible;

  // --- rows and cells ------------------------------------------------------------------------------------------------
  [[nodiscard]] int Filas() const { return static_cast<int>(filas_.size()); }
  // Appends an empty row and makes it current (the column stays); gives its index.
  int AgregaFila();
  void QuitaFila(int fila);  // Error kSubindice
  void QuitaTodas();
  // Bookmark of a row: its own while rows come and go, and never given to another one.
  [[nodiscard]] int Marcador(int fila) const;
  // Value as the column's type holds it. Rows from 0; Error kSubindice / kElemento.
  [[nodiscard]] const com::Variant& celda(int fila, int columna) const;
  [[nodiscard]] const com::Variant& celda(int fila, std::string_view clave) const {
    return celda(fila, IndiceObligado(clave));
  }
  // Texts that can be read as the column's type are converted to it, and empty ones are Empty except in text columns;
  // others are kept as they are. In text columns numbers and dates become texts. NULL is Empty.
  void celda(int fila, int columna, const com::Variant& valor);
  void celda(int fila, std::string_view clave, const com::Variant& valor) { celda(fila, IndiceObligado(clave), valor); }
  // Text as shown (the column's format applied).
  [[nodiscard]] std::string Texto(int fila, int columna) const;
  [[nodiscard]] std::string Texto(int fila, std::string_view clave) const { return Texto(fila, IndiceObligado(clave)); }

  // --- styles --------------------------------------------------------------------------------------------------------
  // Defines a style or changes its colour.
  void DefineEstilo(std::string_view nombre, std::int32_t fondo, bool dado = false);
  [[nodiscard]] const std::vector<Estilo>& Estilos() const { return estilos_; }
  // Index into Estilos, -1 none.
  [[nodiscard]] int estilo(int fila, int columna) const;
  // Error kElemento for an unknown style.
  void estilo(int fila, int columna, std::string_view nombre);
  void estilo(int fila, int columna, int indice);
  [[nodiscard]] int IndiceEstilo(std::string_view nombre) const;

  // --- current cell --------------------------------------------------------------------------------------------------
  [[nodiscard]] int fila() const { return fila_; }    // -1 when there is no row
  [[nodiscard]] int columna() const { return col_; }  // -1 when no column is current
  [[nodiscard]] std::string ClaveColumna() const;     // key of the current column, "" when none
  // By program: no events.
  void fila(int v);           // Error kSubindice
  void columnaActual(int v);  // -1 none; Error kSubindice
  void MuevePrimera() {
    if (Filas() > 0) fila(0);
  }
  // The user typed in the current cell since entering it.
  [[nodiscard]] bool Tecleada() const { return tecleada_; }
  // What the user typed there, as typed; nothing when the cell shows its value.
  const std::optional<std::string>& Edicion() const { return edicion_; }

  // --- geometry ------------------------------------------------------------------------------------------------------
  static constexpr int kAltoFila = 255, kAltoTitulos = 285;  // twips
  // Place of a cell, in twips from the grid's corner, with nothing scrolled away. Error kSubindice.
  [[nodiscard]] Lugar LugarCelda(int fila, int columna) const;

  // --- redraw --------------------------------------------------------------------------------------------------------
  // While it lives the view is not told of changes. Termina tells it once, and raises RowLoaded when rows were appended
  // since the last time; it raises what they raise, with the grid told of changes again. A pause that a failure ends
  // tells the view too, but drops what that raises: the first failure is the one to report. A pause within another does
  // nothing.
  class Pausa {
   public:
    explicit Pausa(Grid& grid);
    Pausa(const Pausa&) = delete;
    Pausa& operator=(const Pausa&) = delete;
    ~Pausa();
    void Termina();

   private:
    Grid& grid_;
    bool viva_;
    [[maybe_unused]] int fallas_;  // failures under way when the pause began
  };
  // Tells the view that everything may have changed, and raises RowLoaded like the end of a pause.
  void Refresca();

  // Commits the pending edit of the current row (no event).
  void Update() { pendiente_ = false; }
  [[nodiscard]] bool Pendiente() const { return pendiente_; }

  // --- user ----------------------------------------------------------------------------------------------------------
  // Goes to a cell: leaves the current one (BeforeRowColChange, which may hold the user), commits the row's pending
  // edit when the cell was typed in or the row changes, enters the new cell (RowColChange). False when held. Error
  // kSubindice for a cell that does not exist, kElemento for a hidden column.
  bool VaA(int fila, int columna);
  // Types a text into the current cell (replacing it) and raises Change. Error kTamanio when the column is locked, the
  // grid disabled, or there is no current cell.
  void Teclea(const std::string& texto);
  // Leaves the current cell without entering another: checks as VaA, then commits the row when it has a pending edit.
  // False when held.
  bool Deja();
  // Appends a row as the user does and goes to its first visible, unlocked cell. False when held in the current cell.
  // A row appended so and left without anything written in it goes away again. Error kTamanio when the grid is disabled
  // or has no cell to type in.
  bool NuevaFila();
  // Deletes a row: BeforeDelete may cancel; then AfterDelete and, for the new contents, RowCommitted. False when
  // cancelled.
  bool Borra(int fila);
  // Next or previous visible cell in reading order (Tab); false at the end of the grid or when held.
  bool Siguiente(int paso = 1);
  // Key events that reach the grid: KeyDown, then KeyPress for characters (Enter and Backspace among them), then KeyUp.
  // Between KeyDown and KeyUp Tab moves on (past the end: leaves the grid), the arrows move, Ctrl+Supr deletes the row.
  // A KeyPress that leaves its argument 0 swallows the character. An accepted character is typed: the first one since
  // entering the cell replaces its content, the others are appended; Backspace removes the last one. In a cell that
  // cannot be typed in it does nothing.
  void PulsaTecla(int codigo, int mayus = 0) {
    TeclaAbajo(codigo, mayus);
    TeclaArriba(codigo, mayus);
  }
  void TeclaAbajo(int codigo, int mayus = 0);
  void TeclaArriba(int codigo, int mayus = 0);
  void PulsaCaracter(char32_t caracter);
  // Mouse click on a cell: goes to it, then raises Click. Selecting a row header: goes to it, then SelChange(2).
  void ClicCelda(int fila, int columna);
  void SeleccionaFila(int fila);

  // --- events --------------------------------------------------------------------------------------------------------
  std::function<void()> InitColumnProps;                  // once the form has loaded: run-time locks
  std::function<void(bool& cancela)> BeforeRowColChange;  // leaving the current cell
  std::function<void()> RowColChange;                     // a cell was entered
  std::function<void()> Change;                           // the user typed in the current cell
  std::function<void()> RowCommitted;                     // a completed change of a line: typed cell left, row deleted
  std::function<void(int& codigoError)> UpdateError;      // committing a row failed; 0 shows nothing
  std::function<void(bool& cancela, bool& pregunta)> BeforeDelete;
  std::function<void(bool& muestraError)> AfterDelete;
  std::function<void(int codigo, int mayus)> KeyDown;
  std::function<void(int& caracter)> KeyPress;
  std::function<void(int codigo, int mayus)> KeyUp;
  std::function<void()> Click;
  std::function<void(int tipo)> SelChange;  // 2: whole row
  std::function<void()> RowLoaded;          // rows were loaded for display

  // Slot of the view; fila and columna are -1 where they do not apply.
  std::function<void(CambioGrid cambio, int fila, int columna)> alCambiar;
  // Slot of tests: called before each change that a program makes to rows, cells or the set of columns; may raise.
  std::function<void()> antesDeCambiar;

 private:
  struct Celda {
    com::Variant valor;
    std::int8_t estilo = -1;
  };
  struct Posicion {
    int fila, columna;
  };
  int IndiceObligado(std::string_view clave) const;
  void RevisaColumna(int columna) const;
  void RevisaFila(int fila) const;
  void RevisaCelda(int fila, int columna) const;
  bool HayActual() const { return fila_ >= 0 && col_ >= 0; }
  bool SePuedeTeclear() const;
  com::Variant Convierte(int columna, const com::Variant& valor) const;
  void Toca();
  void Cambia(CambioGrid cambio, int fila = -1, int columna = -1);
  void Coloca(int fila, int columna);
  void PonFila();
  void QuitaFilaDe(int fila);
  // Runs the leave check and commits the row when it is left; false when held.
  bool Sale(bool dejaFila);
  void Compromete();
  void AvisaFilasCargadas();
  int PrimeraColumnaVisible(bool escribible) const;
  int ColumnaVisible(int desde, int paso) const;
  // Nothing at the end of the grid.
  std::optional<Posicion> CeldaSiguiente(int paso) const;

  std::vector<Columna> columnas_;
  std::vector<std::vector<Celda>> filas_;
  std::vector<int> marcadores_;  // of the rows
  int ultimoMarcador_ = 0;
  std::vector<Estilo> estilos_;
  int fila_ = -1, col_ = -1;
  bool tecleada_ = false, pendiente_ = false, redraw_ = true;
  bool saliendo_ = false;               // a leave check is running
  bool filasNuevas_ = false;            // rows were appended since RowLoaded was raised
  bool intacta_ = false;                // the current row was appended by the user and nothing is written in it
  std::optional<std::string> edicion_;  // what the user typed in the current cell, before conversion
};

}  // namespace controles
