// The board's load: rows, free rooms and states.
#include <algorithm>
#include <exception>
#include <memory>
#include <optional>

#include "availability/frmDisponibilidad.h"
#include "availability/ocupacion.h"
#include "availability/sentencias.h"
#include "publico/columnas.h"
#include "publico/publico.h"

namespace kv207 {

namespace {

constexpr int kAnchoClave = 650;    // twips
constexpr int kMargenNombre = 200;  // twips beyond the widest name

// Key of a filter in force: one whose name is shown and that does not stand for all.
std::optional<std::string> Filtro(const controles::LookupField& codigo, const controles::LookupField& nombre) {
  if (nombre.text().empty() || codigo.text() == kTodosLosCodigos) return std::nullopt;
  return com::CStr(codigo.valor());
}

// One row of the board.
struct FilaTablero {
  std::string clave, nombre;
};

// Reads the rows statement's record set.
class LectorFilas {
 public:
  LectorFilas(ado::RecordsetPtr filas, ModoVista modo)
      : filas_(std::move(filas)),
        clave_(filas_->Indice("CLAVE")),
        descripcion_(filas_->Indice("DESCRIPCION")),
        tipo_(modo == ModoVista::PorHabitacion ? filas_->Indice("DESCRIPCION_TIPO") : clave_),
        modo_(modo) {}

  [[nodiscard]] int Cuantas() const { return filas_->RecordCount(); }

  // Nothing after the last row.
  std::optional<FilaTablero> Lee() {
    if (filas_->Eof()) return std::nullopt;
    FilaTablero fila;
    fila.clave = com::TextoDe(filas_->Fields(clave_).Value());
    fila.nombre = com::TextoDe(filas_->Fields(descripcion_).Value());
    if (modo_ == ModoVista::PorHabitacion) {
      fila.nombre = com::TextoDe(filas_->Fields(tipo_).Value()) + " / " + fila.nombre;
    }
    filas_->MoveNext();
    return fila;
  }

 private:
  ado::RecordsetPtr filas_;
  std::size_t clave_, descripcion_, tipo_;
  ModoVista modo_;
};

}  // namespace

bool frmDisponibilidad::CargarDatos() {
  try {
    if (!ConservarVista) {
      opTipoHabitacion.Selecciona();  // from the other view this loads by itself, before the load below
      OpcionesActivas = true;
    }
    frFrame.enabled(false);
    return LlenaTablero();
  } catch (const std::exception& e) {
    MensajeError = std::string("frmDisponibilidad.CargarDatos() - ") + e.what();
    return false;
  }
}

bool frmDisponibilidad::LlenaTablero() {
  const ModoVista modo = Modo();
  const int dias = com::DiasEntre(com::CDate(txtDEL.valor()), com::CDate(txtAL.valor()));
  sentencias::ArmaTotales(publico::NuevaSentencia(), modo);
  const TotalesTablero totales(*publico::Ejecuta());
  if (totales.Vacio()) {
    MensajeError = modo == ModoVista::PorTipo
                       ? "frmDisponibilidad.CargarDatos() - NO HAY TIPOS DE HABITACION EXISTENTES O ESTAN DE BAJA"
                       : "frmDisponibilidad.CargarDatos() - NO HAY HABITACIONES EXISTENTES O ESTAN DE BAJA";
    return false;
  }

  controles::Grid::Pausa pausa(ssDisponibilidad);
  LlenaFilas(modo, dias, totales);
  pausa.Termina();

  controles::EscritorioActual().ProcesaPendientes();
  ssDisponibilidad.MuevePrimera();
  HaySeleccion = false;
  frFrame.enabled(true);
  MensajeError.clear();  // a view change that ran at the start may have left one
  return true;
}

void frmDisponibilidad::LlenaFilas(ModoVista modo, int dias, const TotalesTablero& totales) {
  const sentencias::Criterio criterio{modo, Condicion(modo), FolioExcluido};
  sentencias::ArmaFilas(publico::NuevaSentencia(), modo, criterio.condicion);
  LectorFilas filas(publico::Ejecuta(), modo);

  ssDisponibilidad.ancho(col::kClave, kAnchoClave);
  ssDisponibilidad.QuitaTodas();
  NumeroFilas = 0;
  Estados.Dimensiona(NumeroDias, filas.Cuantas());
  const std::vector<com::Fecha> noches = Noches(dias);
  const bool conjuntos = publico::Sistema().ObtenConexion()->LeeConjuntos();
  const std::unique_ptr<LectorOcupacion> lector =
      conjuntos ? LeePorConjuntos(criterio, noches) : LeePorCelda(criterio, noches);

  int anchoNombre = 0;
  while (const auto fila = filas.Lee()) {
    const int r = ssDisponibilidad.AgregaFila();
    ssDisponibilidad.celda(r, 0, fila->clave);
    ssDisponibilidad.celda(r, 1, fila->nombre);
    anchoNombre = std::max(anchoNombre, controles::EscritorioActual().AnchoTexto(*this, fila->nombre));
    const int total = totales.De(fila->clave);
    lector->Fila(fila->clave);
    for (int d = 0; d < dias; ++d) {
      const CeldaTablero celda = CalculaCelda(modo, total, lector->Noche(d));
      ssDisponibilidad.celda(r, kColumnasFijas + d, celda.libres);
      PonEstado(d, r, celda.estado);
    }
    NumeroFilas = r + 1;
  }
  ssDisponibilidad.ancho(col::kNombre, anchoNombre + kMargenNombre);
}

std::vector<com::Fecha> frmDisponibilidad::Noches(int dias) const {
  if (dias > NumeroDias) {
    throw com::Error(com::error::kSubindice, "El tablero tiene menos columnas de día (" + std::to_string(NumeroDias) +
                                                 ") que noches (" + std::to_string(dias) + ")");
  }
  std::vector<com::Fecha> noches;
  noches.reserve(static_cast<std::size_t>(std::max(dias, 0)));
  for (int d = 0; d < dias; ++d) {
    noches.push_back(ssDisponibilidad.columna(kColumnasFijas + d).fecha.value());
  }
  return noches;
}

ado::TextoSQL frmDisponibilidad::Condicion(ModoVista modo) const {
  return sentencias::Condicion(modo, {Filtro(txtGrupo_Habitacion, txtNGrupo_Habitacion), Filtro(txtArea, txtNArea),
                                      Filtro(txtTipo_Habitacion, txtNTipo_Habitacion)});
}

}  // namespace kv207
