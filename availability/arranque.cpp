// The board's load, activation, layout, form keys, accept, cancel and price list.
#include <exception>
#include <utility>

#include "availability/frmDisponibilidad.h"
#include "publico/avisos.h"
#include "publico/columnas.h"
#include "publico/controles.h"
#include "publico/publico.h"

namespace kv207 {

namespace mensaje = anfitrion::mensaje;
namespace parametro = anfitrion::parametro;

namespace {

struct ColorEstado {
  std::int32_t color = 0;
  bool dado = false;  // by the host
};

// Colour of a host parameter, which is shown as it is given; the design colour when the parameter is missing or no
// number.
ColorEstado LeeColor(const anfitrion::Parametro& parametro, std::int32_t diseno) {
  const com::Variant valor = publico::LeeParametro(parametro);
  if (valor.EsVacio() || valor.EsNulo() || (valor.EsTexto() && com::Recorta(com::CStr(valor)).empty())) return {diseno};
  try {
    return {com::CLng(valor), true};
  } catch (const com::Error&) {
    return {diseno};
  }
}

// A step of the layout that does not fit is skipped.
template <class Paso>
void Intenta(Paso&& paso) {
  try {
    paso();
  } catch (const com::Error&) {  // the control keeps its size
  }
}

}  // namespace

void frmDisponibilidad::Form_Load() {
  RestauraDiseno();
  MensajeError.clear();
  AplicaColores();
  txtGrupo_Habitacion.formato(publico::LeeTexto(parametro::kFormatoGrupo));
  txtArea.formato(publico::LeeTexto(parametro::kFormatoArea));
  txtTipo_Habitacion.formato(publico::LeeTexto(parametro::kFormatoTipo));
  publico::Utilerias().LimpiaGrupo(*this, grupo::kCaptura);
  publico::Utilerias().HabilitaGrupo(*this, grupo::kCaptura);
  opTipoHabitacion.Selecciona();
  ssDisponibilidad.visible(col::kClave, true);
  PintaLeyenda();
  HaySeleccion = false;
  FolioExcluido.clear();
}

// A form that loads anew begins as designed, without running the handlers of a view change.
void frmDisponibilidad::RestauraDiseno() {
  ConservarVista = false;
  OpcionesActivas = false;
  auto alElegir = std::exchange(opTipoHabitacion.Click, {});
  opTipoHabitacion.Selecciona();
  opTipoHabitacion.Click = std::move(alElegir);
  frFrame.enabled(true);
  ssDisponibilidad.titulo(col::kNombre, "Tipo/Habitación");
  ssDisponibilidad.QuitaTodas();
  QuitarColumnasDias();
  NumeroDias = 0;
  NumeroFilas = 0;
}

void frmDisponibilidad::AplicaColores() {
  const ColorEstado bloqueado = LeeColor(parametro::kColorBloqueado, kFondoBloqueado);
  const ColorEstado disponible = LeeColor(parametro::kColorDisponible, kFondoDisponible);
  const ColorEstado ocupado = LeeColor(parametro::kColorOcupado, kFondoOcupado);
  const ColorEstado reservado = LeeColor(parametro::kColorReservado, kFondoReservado);
  ColorBloqueado = bloqueado.color;
  ColorDisponible = disponible.color;
  ColorOcupado = ocupado.color;
  ColorReservado = reservado.color;
  ssDisponibilidad.DefineEstilo(NombreEstado(EstadoCelda::Disponible), ColorDisponible, disponible.dado);
  ssDisponibilidad.DefineEstilo(NombreEstado(EstadoCelda::Bloqueado), ColorBloqueado, bloqueado.dado);
  ssDisponibilidad.DefineEstilo(NombreEstado(EstadoCelda::Ocupado), ColorOcupado, ocupado.dado);
  ssDisponibilidad.DefineEstilo(NombreEstado(EstadoCelda::Reservado), ColorReservado, reservado.dado);
}

// A swatch shows its style's colour.
void frmDisponibilidad::PintaLeyenda() {
  const auto pinta = [this](controles::Etiqueta& muestra, EstadoCelda estado) {
    const int i = ssDisponibilidad.IndiceEstilo(NombreEstado(estado));
    const controles::Estilo& estilo = ssDisponibilidad.Estilos()[static_cast<std::size_t>(i)];
    muestra.color(estilo.fondo, estilo.dado);
  };
  pinta(lbColorDisponible, EstadoCelda::Disponible);
  pinta(lblColorReservado, EstadoCelda::Reservado);
  pinta(lblColorOcupado, EstadoCelda::Ocupado);
  pinta(lblColorBloqueado, EstadoCelda::Bloqueado);
  lblColorReservando.color(kFondoOcupando);
}

void frmDisponibilidad::Form_Activate() { Controles.Activa(false); }

void frmDisponibilidad::Form_Resize() {
  Intenta([this] { frFrame.width(width() - 2 * frFrame.left()); });
  Intenta([this] { ssDisponibilidad.width(width() - 2 * ssDisponibilidad.left()); });
  Intenta([this] { ssDisponibilidad.height(height() - ssDisponibilidad.top() - 100 - frColores.height()); });
  Intenta([this] { frColores.width(width() - 2 * frColores.left()); });
  Intenta([this] { frColores.top(ssDisponibilidad.top() + ssDisponibilidad.height() + 50); });
}

void frmDisponibilidad::Form_KeyUp(int codigo, int) {
  if (codigo == controles::tecla::kEsc) Controles_Cancelar();
}

void frmDisponibilidad::Controles_Aceptar() {
  ActualizarSeleccion();
  if (HaySeleccion) {
    Oculta();
  } else {
    Avisa(*this, mensaje::kNadaMarcado);
  }
}

void frmDisponibilidad::Controles_Cancelar() {
  HaySeleccion = false;
  Oculta();
}

void frmDisponibilidad::cmdPrecios_Click() { publico::Hotel().MuestraPrecios(com::CDate(txtDEL.valor())); }

}  // namespace kv207
