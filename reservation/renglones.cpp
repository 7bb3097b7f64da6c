// The room-line grid: what is checked when a cell is left, the date pop-up, the keys.
#include "reservation/renglones.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

#include "host/contract/pantallas.h"
#include "platform/regional/regional.h"
#include "publico/avisos.h"
#include "publico/columnas.h"
#include "publico/publico.h"
#include "reservation/frmKV207.h"
#include "reservation/sentencias.h"
#include "reservation/tasacion.h"

namespace kv207 {

namespace mensaje = anfitrion::mensaje;
namespace tecla = controles::tecla;

// --- rules ---

bool CeldaVacia(const com::Variant& celda) {
  return celda.EsVacio() || celda.EsNulo() || (celda.EsTexto() && com::CStr(celda).empty());
}

com::Fecha FechaDeCelda(const com::Variant& celda) {
  if (CeldaVacia(celda)) {
    throw com::Error(com::error::kTipos, "No coinciden los tipos: falta una fecha de la habitación");
  }
  return com::CDate(celda);
}

std::optional<com::Fecha> FechaSiLaHay(const com::Variant& celda) {
  try {
    return FechaDeCelda(celda);
  } catch (const com::Error&) {  // no date in the cell
    return std::nullopt;
  }
}

std::int16_t PersonasDeCelda(const com::Variant& celda) {
  if (CeldaVacia(celda)) return 0;
  const std::int16_t personas = com::CInt(celda);
  if (personas < 0) throw com::Error(com::error::kArgumento, "El número de personas no puede ser negativo");
  return personas;
}

int PersonasDelRenglon(const controles::Grid& grid, int fila) {
  int personas = 0;
  for (const std::string_view columna : {col::kAdultos, col::kMenores, col::kInfantes}) {
    personas += PersonasDeCelda(grid.celda(fila, columna));
  }
  return personas;
}

std::string TextoDelRenglon(const controles::Grid& grid, std::string_view columna) {
  return com::CStr(grid.celda(grid.fila(), columna));
}

void PonEnRenglon(controles::Grid& grid, std::string_view columna, const com::Variant& valor) {
  grid.celda(grid.fila(), columna, valor);
}

com::Fecha AjustaInicio(std::optional<com::Fecha> inicio, std::optional<com::Fecha> fin, com::Fecha llegada,
                        com::Fecha salida) {
  if (!inicio || inicio->dia < llegada.dia || inicio->dia > salida.dia) inicio = llegada;
  if (fin && inicio->dia == fin->dia) inicio = llegada;
  return com::SoloFecha(*inicio);
}

com::Fecha AjustaFin(std::optional<com::Fecha> inicio, std::optional<com::Fecha> fin, com::Fecha llegada,
                     com::Fecha salida) {
  if (!fin || fin->dia < llegada.dia || fin->dia > salida.dia) fin = salida;
  if (inicio && inicio->dia >= fin->dia) fin = salida;
  return com::SoloFecha(*fin);
}

ImportesRenglon RederivaImportes(ImportesRenglon renglon, bool porImporte) {
  const double base = (renglon.precio + renglon.personaExtra) / (1 + renglon.impuesto);
  if (porImporte) renglon.descuento = base == 0 ? 0 : renglon.descuentoImporte * 100 / base;
  if (!porImporte || base == 0) renglon.descuentoImporte = renglon.descuento / 100 * base;
  const double neto = base - renglon.descuento / 100 * base;
  renglon.impuestoImporte = com::Redondea(renglon.impuesto * neto, 4);
  renglon.total = com::Redondea(neto + renglon.impuestoImporte, 2);
  return renglon;
}

// --- statements ---

void ArmaLimitePersonas(ado::TextoSQL& sql, std::string_view habitacion) {
  sql.Agrega(
      "SELECT TH.Th_Cve_Tipo_Habitacion as Clave, "
      "   TH.Th_Descripcion as Descripcion, "
      "   TH.Th_Num_Personas, "
      "   TH.Th_Num_Personas_Maximo "
      "FROM Tipo_Habitacion TH "
      "   INNER JOIN Habitacion HB ON TH.Th_Cve_Tipo_Habitacion = HB.Th_Cve_Tipo_Habitacion "
      "WHERE HB.Hb_Cve_Habitacion = '?' ",
      {habitacion});
}

namespace {

constexpr int kTamanioCatalogo = 100;

// A current line, in a column that the clerk may type in.
bool SePuedeEditar(const controles::Grid& grid) {
  return grid.fila() >= 0 && grid.columna() >= 0 && !grid.columna(grid.columna()).bloqueada;
}

bool EsPersonas(std::string_view columna) {
  return columna == col::kAdultos || columna == col::kMenores || columna == col::kInfantes;
}

bool EsImporte(std::string_view columna) {
  return columna == col::kPrecioExtra || columna == col::kPrecio || columna == col::kDescuento ||
         columna == col::kDescuentoImporte;
}

bool EsFecha(std::string_view columna) { return columna == col::kInicio || columna == col::kFin; }

// Takes the name and what goes with the room of the current line from the catalogue; false when it is not there.
bool HallaHabitacion(frmKV207& formulario) {
  controles::Grid& grid = formulario.ssReservaciones;
  std::int32_t ancho = grid.columna(col::kNombre).ancho;
  bool hallada = false;
  formulario.Busca_Habitacion(ancho, hallada);
  if (hallada && ancho > grid.columna(col::kNombre).ancho) grid.ancho(col::kNombre, ancho);
  return hallada;
}

// Columns that the user's rights open.
void AplicaPermisos(frmKV207& formulario) {
  controles::Grid& grid = formulario.ssReservaciones;
  for (const std::string_view columna : {col::kPrecio, col::kPrecioExtra}) {
    grid.bloqueada(columna, !formulario.PuedeCambiarPrecio);
  }
  for (const std::string_view columna : {col::kDescuento, col::kDescuentoImporte}) {
    grid.bloqueada(columna, !formulario.PuedeCambiarDescuento);
  }
}

// --- leaving a cell; tecleada: the clerk typed in it since entering it. A line whose amounts no longer fit the header
// counts as typed ---

void SaleDeClave(frmKV207& formulario, bool& cancela) {
  controles::Grid& grid = formulario.ssReservaciones;
  if (TextoDelRenglon(grid, col::kClave).empty() || !TextoDelRenglon(grid, col::kNombre).empty()) return;
  if (HallaHabitacion(formulario)) return;
  formulario.LimpiaRenglon();
  cancela = true;
}

void SaleDeFecha(frmKV207& formulario, bool tecleada) {
  controles::Grid& grid = formulario.ssReservaciones;
  const std::string columna = grid.ClaveColumna();
  if (CeldaVacia(grid.celda(grid.fila(), columna))) return;
  const auto inicio = FechaSiLaHay(grid.celda(grid.fila(), col::kInicio));
  const auto fin = FechaSiLaHay(grid.celda(grid.fila(), col::kFin));
  const com::Fecha llegada = formulario.dpFecha_llegada.valor(), salida = formulario.dpFecha_salida.valor();
  const bool esInicio = columna == col::kInicio;
  const com::Fecha ajustada =
      esInicio ? AjustaInicio(inicio, fin, llegada, salida) : AjustaFin(inicio, fin, llegada, salida);
  const auto& actual = esInicio ? inicio : fin;
  if (!tecleada && actual && actual->dia == ajustada.dia) {
    formulario.PoneAlDia(grid.fila());
    return;
  }
  PonEnRenglon(grid, columna, ajustada);
  formulario.CalculaImportes(false);
}

// A line without guests costs nothing.
void PonRenglonSinHuespedes(frmKV207& formulario) {
  controles::Grid& grid = formulario.ssReservaciones;
  formulario.OlvidaPrecio(grid.fila());
  for (const std::string_view columna : {col::kPrecio, col::kDescuentoImporte, col::kImpuestoImporte, col::kTotal}) {
    PonEnRenglon(grid, columna, regional::Moneda(0));
  }
  PonEnRenglon(grid, col::kDescuento, 0.0);
}

void SaleDePersonas(frmKV207& formulario, bool tecleada) {
  controles::Grid& grid = formulario.ssReservaciones;
  const std::string habitacion = TextoDelRenglon(grid, col::kClave);
  if (habitacion.empty()) return;
  const bool vacia = CeldaVacia(grid.celda(grid.fila(), grid.columna()));
  if (vacia) grid.celda(grid.fila(), grid.columna(), 0);
  const int personas = PersonasDelRenglon(grid, grid.fila());
  if (personas == 0) {
    PonRenglonSinHuespedes(formulario);
    return;
  }
  ArmaLimitePersonas(publico::NuevaSentencia(), habitacion);
  const ado::RecordsetPtr tipo = publico::Ejecuta();
  const std::string nombre = TextoDelRenglon(grid, col::kNombre);
  if (tipo->Eof() || tipo->Fields("Th_Num_Personas_Maximo").Value().EsNulo()) {
    Avisa(
        formulario, mensaje::kSinPersonasConfiguradas,
        std::string(mensaje::kSinPersonasConfiguradas.texto) + nombre + " no tiene configurado el número de personas");
  } else if (personas > com::CDbl(tipo->Fields("Th_Num_Personas_Maximo").Value())) {
    Avisa(
        formulario, mensaje::kExcesoDePersonas,
        std::string(mensaje::kExcesoDePersonas.texto) + nombre + "\r\n es mayor al máximo de personas que se permiten");
  } else if (tecleada || vacia) {
    formulario.CalculaImportes(false);
  } else {
    formulario.PoneAlDia(grid.fila());
  }
}

void SaleDeImporte(frmKV207& formulario, bool tecleada) {
  controles::Grid& grid = formulario.ssReservaciones;
  if (TextoDelRenglon(grid, col::kClave).empty()) return;
  const bool vacia = CeldaVacia(grid.celda(grid.fila(), grid.columna()));
  if (vacia) grid.celda(grid.fila(), grid.columna(), 0.0);
  if (!tecleada && !vacia) return;
  DerivaImportes(grid, grid.fila(), grid.ClaveColumna() == col::kDescuentoImporte);
  const bool completo = formulario.CalculaRenglon(grid.fila(), true);
  formulario.AnotaAcuerdo(grid.fila(), !completo, true);
}

// --- date pop-up ---

void MuestraFecha(frmKV207& formulario) {
  constexpr int kMargenMarco = 10, kMargenCampo = 33;  // twips
  const controles::Grid& grid = formulario.ssReservaciones;
  const controles::Lugar celda = grid.LugarCelda(grid.fila(), grid.columna());
  formulario.pcFecha.left(celda.left + grid.left());
  formulario.pcFecha.top(celda.top + grid.top());
  formulario.pcFecha.width(celda.width + kMargenMarco);
  formulario.pcFecha.height(celda.height + kMargenMarco);
  formulario.pcFecha.visible(true);
  formulario.Enfoca(formulario.dpFechaGrid);
  formulario.dpFechaGrid.width(formulario.pcFecha.width() + kMargenCampo);
  formulario.dpFechaGrid.height(formulario.pcFecha.height() + kMargenCampo);
  const auto fecha = FechaSiLaHay(grid.celda(grid.fila(), grid.columna()));
  formulario.dpFechaGrid.valor(com::SoloFecha(fecha ? *fecha : publico::Utilerias().FechaServidor()));
  formulario.ColumnaFechaActiva = grid.ClaveColumna();
}

// Takes the room of the current line from the catalogue; a cancelled search blanks the line.
void EligeHabitacion(frmKV207& formulario) {
  controles::Grid& grid = formulario.ssReservaciones;
  const com::Variant clave = publico::Utilerias().BuscaEnCatalogo("Habitacion", kTamanioCatalogo, "", com::Variant());
  PonEnRenglon(grid, col::kClave, clave);
  if (CeldaVacia(clave)) return formulario.LimpiaRenglon();
  if (HallaHabitacion(formulario)) return;
  PonEnRenglon(grid, col::kClave, "");
  formulario.LimpiaRenglon();
}

bool EsCifra(int caracter) { return caracter >= '0' && caracter <= '9'; }

}  // namespace

// --- columns ---

void frmKV207::ssReservaciones_InitColumnProps() { AplicaPermisos(*this); }

void frmKV207::BloqueaColumnas() {
  for (int c = 0; c < ssReservaciones.NumColumnas(); ++c) {
    if (ssReservaciones.columna(c).visible) ssReservaciones.bloqueada(c, true);
  }
}

void frmKV207::DesbloqueaColumnas() {
  for (int c = 0; c < ssReservaciones.NumColumnas(); ++c) {
    if (ssReservaciones.columna(c).visible) ssReservaciones.bloqueada(c, false);
  }
  for (const std::string_view columna : {col::kNombre, col::kImpuestoImporte, col::kTotal}) {
    ssReservaciones.bloqueada(columna, true);
  }
  AplicaPermisos(*this);
}

// --- cells ---

void frmKV207::ssReservaciones_BeforeRowColChange(bool& cancela) {
  if (!SePuedeEditar(ssReservaciones)) return;
  const std::string columna = ssReservaciones.ClaveColumna();
  const bool tecleada = ssReservaciones.Tecleada();
  const com::Variant total = ssReservaciones.celda(ssReservaciones.fila(), col::kTotal);
  if (columna == col::kClave) {
    SaleDeClave(*this, cancela);
  } else if (EsFecha(columna)) {
    SaleDeFecha(*this, tecleada);
  } else if (EsPersonas(columna)) {
    SaleDePersonas(*this, tecleada);
  } else if (EsImporte(columna)) {
    SaleDeImporte(*this, tecleada);
  }
  // Where nothing was typed the grid does not complete the line by itself.
  if (!tecleada && ssReservaciones.celda(ssReservaciones.fila(), col::kTotal) != total) Totalizar();
}

void frmKV207::ssReservaciones_RowColChange() {
  const bool conFecha = foco() == &ssReservaciones && SePuedeEditar(ssReservaciones) &&
                        EsFecha(ssReservaciones.ClaveColumna()) &&
                        !TextoDelRenglon(ssReservaciones, col::kClave).empty();
  if (conFecha) {
    MuestraFecha(*this);
  } else {
    OcultaFecha();
  }
}

void frmKV207::ssReservaciones_Change() {
  if (!SePuedeEditar(ssReservaciones)) return;
  Atrapa(*this, mensaje::kCambioGrid, [&] {
    OcultaFecha();
    if (ssReservaciones.ClaveColumna() != col::kClave) return;
    LimpiaRenglon();
    if (TextoDelRenglon(ssReservaciones, col::kClave).empty()) ssReservaciones.QuitaFila(ssReservaciones.fila());
  });
}

// --- keys ---

void frmKV207::ssReservaciones_KeyDown(int codigo, int) {
  if (codigo == tecla::kEnter) publico::Utilerias().EnviaTeclas("\t");
}

void frmKV207::ssReservaciones_KeyPress(int& caracter) {
  if (!SePuedeEditar(ssReservaciones)) return;
  const std::string columna = ssReservaciones.ClaveColumna();
  const bool conPunto = columna == col::kPrecio || columna == col::kPrecioExtra || columna == col::kDescuento;
  bool pasa = caracter != tecla::kEnter;
  if (EsPersonas(columna) || conPunto) {
    pasa = EsCifra(caracter) || caracter == tecla::kRetroceso || (conPunto && caracter == '.');
  }
  if (!pasa) caracter = 0;
}

void frmKV207::ssReservaciones_KeyUp(int codigo, int) {
  if (!SePuedeEditar(ssReservaciones)) return;
  if (codigo == tecla::kF2 && ssReservaciones.ClaveColumna() == col::kClave) {
    EligeHabitacion(*this);
    // Nothing was typed, so the grid does not complete the line by itself.
    ssReservaciones_RowCommitted();
  } else if (codigo == tecla::kF3) {
    if (!Padre) throw com::Error(com::error::kSinObjeto, "La variable de objeto no está establecida: Padre");
    const com::Variant argumentos[] = {anfitrion::pantalla::kHabitaciones};
    Padre->Llama("Ejecutar", argumentos);
  }
}

// --- rows ---

void frmKV207::ssReservaciones_BeforeDelete(bool& cancela, bool& pregunta) {
  pregunta = false;
  cancela = !Controles.EnEdicion() || Avisa(*this, mensaje::kPreguntaEliminarHabitacion) == controles::kNo;
}

// The date pop-up lay over a cell of a line that is gone, or that has moved.
void frmKV207::ssReservaciones_AfterDelete(bool& muestraError) {
  muestraError = false;
  const bool enLaFecha = foco() == &dpFechaGrid;
  OcultaFecha();
  if (enLaFecha) Enfoca(ssReservaciones);
}

void frmKV207::ssReservaciones_RowCommitted() {
  ssReservaciones.Update();
  Totalizar();
}

void frmKV207::ssReservaciones_UpdateError(int& codigoError) { codigoError = 0; }

}  // namespace kv207
