#include "guion/ordenes_recepcion.h"

#include <algorithm>
#include <utility>

#include "component/nombres.h"
#include "guion/muestra.h"
#include "guion/muestra_recepcion.h"
#include "guion/parte_diario.h"
#include "guion/salidas.h"
#include "host/standalone/catalogos.h"
#include "host/standalone/correo.h"
#include "host/standalone/exportacion.h"
#include "host/standalone/letras.h"
#include "host/standalone/listados.h"
#include "host/standalone/parametros.h"
#include "recepcion/explicacion.h"
#include "recepcion/listados.h"

namespace guion {

namespace control = kv207::control;

OrdenesRecepcion::OrdenesRecepcion(Alcance& alcance)
    : alcance_(alcance),
      piezas_(alcance.piezas),
      hoy_(autonomo::LetraBuscada),
      huespedes_(autonomo::LetraBuscada, autonomo::DireccionValida) {
  recepcion::Conecta({[this](const std::string& folio) { AbreReservacion(folio); },
                      [this](const std::string& campo, const recepcion::Toma& toma) { TomaHuesped(campo, toma); },
                      [this](const recepcion::Pedido& pedido, const std::vector<recepcion::Tramo>& tramos) {
                        Reserva(pedido, tramos);
                      }},
                     hoy_, cuadro_, cotizacion_, huespedes_);
}

std::vector<Orden> OrdenesRecepcion::Ordenes() {
  static constexpr DatosOrden<OrdenesRecepcion> kOrdenes[] = {
      {"hoy", 0, 2, "hoy [lista NOMBRE | busca TEXTO | abre FILA]", &OrdenesRecepcion::Hoy},
      {"cuadro", 2, 4, "cuadro DESDE NOCHES | cuadro abre HABITACION NOCHE | cuadro reserva HABITACION LLEGADA SALIDA",
       &OrdenesRecepcion::Cuadro},
      {"cotiza", 2, 6, "cotiza LLEGADA SALIDA ADULTOS [MENORES [INFANTES [MONEDA]]] | cotiza reserva OFERTA",
       &OrdenesRecepcion::Cotiza},
      {"cifras", 2, 3, "cifras DESDE HASTA [SUCURSAL]", &OrdenesRecepcion::Cifras},
      {"exporta", 2, 3,
       "exporta hoy|cuadro|cotizacion|cifras|meses|bitacora|correos|usuarios|CATALOGO ARCHIVO.csv|ARCHIVO.pdf "
       "[comas|puntoycoma]",
       &OrdenesRecepcion::Exporta},
      {"agenda", 2, 3, "agenda HABITACION|todas ARCHIVO.ics [nombres]", &OrdenesRecepcion::Agenda},
      {"parte", 0, 1, "parte [envia | deldia | ARCHIVO.pdf | ARCHIVO.txt]", &OrdenesRecepcion::Parte},
      {"porque", 2, 2, "porque FILA NOCHE", &OrdenesRecepcion::PorQue},
      {"huesped", 0, 5,
       "huesped [cliente] | huesped busca TEXTO | ve FILA | elige [habitacion] [notas] | abre RESERVACION | "
       "nuevo|aunque CLAVE NOMBRE TELEFONO CORREO",
       &OrdenesRecepcion::Huesped},
      {"explica", 0, 1, "explica [RENGLON]", &OrdenesRecepcion::Explica},
  };
  return Enlaza(*this, kOrdenes);
}

std::optional<Json> OrdenesRecepcion::Muestra(const std::string& que) {
  if (que == "hoy") return MuestraHoy(DiaALaVista());
  if (que == "cotizacion") return MuestraCotizacion(cotizacion_);
  if (que == "cuadro") return MuestraCuadro(CuadroALaVista());
  if (que == "cifras") return MuestraCifras(CifrasALaVista());
  if (que == "parte") return parte_;
  if (que == "huesped") return MuestraHuesped(huespedes_, parecidas_);
  return std::nullopt;
}

const recepcion::Hoy& OrdenesRecepcion::DiaALaVista() const {
  if (hoy_.dia().fecha == com::Fecha{}) Error("El día no está a la vista; use la orden «hoy»");
  return hoy_;
}

const recepcion::Cuadro& OrdenesRecepcion::CuadroALaVista() const {
  if (cuadro_.desde() == com::Fecha{}) Error("El cuadro no está a la vista; use la orden «cuadro DESDE NOCHES»");
  return cuadro_;
}

const recepcion::Cifras& OrdenesRecepcion::CifrasALaVista() const {
  if (cifras_.pedido().desde == com::Fecha{}) Error("Las cifras no están a la vista; use la orden «cifras»");
  return cifras_;
}

// --- what the models hand on to the screens --------------------------------------------------------------------------

// What is captured is thrown away, as the toolbar's Clear does; a person is asked first.
void OrdenesRecepcion::AbreReservacion(const std::string& folio) {
  controles::Formulario& pantalla = piezas_.componente.formulario();
  controles::ScreenToolbar& barra = alcance_.BarraDe(pantalla);
  if (barra.EnEdicion()) piezas_.manos.Accion(barra, controles::Accion::Limpiar);
  controles::Control* campo = pantalla.Busca(control::kFolio);
  if (campo == nullptr) Error("La pantalla no tiene folio");
  piezas_.manos.Texto(*campo, folio);
  piezas_.manos.Confirma(*campo);
}

void OrdenesRecepcion::Reserva(const recepcion::Pedido& pedido, const std::vector<recepcion::Tramo>& tramos) {
  controles::Formulario& pantalla = piezas_.componente.formulario();
  const auto pulsa = [this](controles::Accion accion) { return alcance_.Pulsa(accion); };
  encargo_.Reserva(pantalla, pedido, tramos, pulsa, [&](const recepcion::Encargo::Marca& marca) {
    pasosDelTablero_ = [&](controles::Formulario& tablero) {
      const std::string motivo = marca(tablero);
      if (!motivo.empty()) alcance_.actual.valor = Json(motivo);
    };
    struct Olvida {
      std::function<void(controles::Formulario&)>& pasos;
      ~Olvida() { pasos = nullptr; }
    } const olvida{pasosDelTablero_};  // also when the board does not come up
    piezas_.manos.Tecla(pantalla, controles::tecla::kF6, 0);
  });
}

bool OrdenesRecepcion::MarcaLoPedido(controles::Formulario& tablero) {
  const auto pasos = std::exchange(pasosDelTablero_, nullptr);
  if (!pasos) return false;
  pasos(tablero);
  return true;
}

void OrdenesRecepcion::TomaHuesped(const std::string& campo, const recepcion::Toma& toma) {
  const auto pulsa = [this](controles::Accion accion) { return alcance_.Pulsa(accion); };
  if (!encargo_.TomaHuesped(piezas_.componente.formulario(), campo, toma, pulsa))
    Error("«" + campo + "» no admite una clave ahora");
}

// --- the orders ------------------------------------------------------------------------------------------------------

void OrdenesRecepcion::Hoy(const Palabras& p) {
  alcance_.ExigePantalla();
  if (p.size() == 1) return piezas_.manos.AbreHoy(hoy_);
  if (p.size() == 2) Error("Se escribe: hoy [lista NOMBRE | busca TEXTO | abre FILA]");
  static_cast<void>(DiaALaVista());
  if (p[1] == "lista") {
    const auto lista = recepcion::ListaDe(p[2]);
    if (!lista) Error("No existe la lista «" + p[2] + "»");
    return piezas_.manos.EligeLista(hoy_, *lista);
  }
  if (p[1] == "busca") return piezas_.manos.BuscaEnHoy(hoy_, p[2]);
  if (p[1] == "abre") return piezas_.manos.AbreFila(hoy_, NumeroDe<int>(p[2]));
  Error("No existe «hoy " + p[1] + "»");
}

void OrdenesRecepcion::Cuadro(const Palabras& p) {
  alcance_.ExigePantalla();
  if (p.size() == 3) return piezas_.manos.MuestraCuadro(cuadro_, DiaDe(p[1]), NumeroDe<int>(p[2]));
  static_cast<void>(CuadroALaVista());
  const int fila = cuadro_.FilaDe(p[2]);
  if (fila < 0) Error("El cuadro no tiene la habitación «" + p[2] + "»");
  if (p[1] == "abre" && p.size() == 4) return piezas_.manos.AbreBarra(cuadro_, fila, DiaDe(p[3]));
  if (p[1] == "reserva" && p.size() == 5) {
    return piezas_.manos.ReservaNoches(cuadro_, fila, DiaDe(p[3]), DiaDe(p[4]));
  }
  Error("Se escribe: cuadro DESDE NOCHES | cuadro abre HABITACION NOCHE | cuadro reserva HABITACION LLEGADA SALIDA");
}

void OrdenesRecepcion::Cotiza(const Palabras& p) {
  alcance_.ExigePantalla();
  if (p[1] == "reserva" && p.size() == 3) return piezas_.manos.ReservaOferta(cotizacion_, NumeroDe<int>(p[2]));
  if (p.size() < 4)
    Error("Se escribe: cotiza LLEGADA SALIDA ADULTOS [MENORES [INFANTES [MONEDA]]] | cotiza reserva OFERTA");
  const auto numero = [&](std::size_t i) { return p.size() > i ? NumeroDe<int>(p[i]) : 0; };
  piezas_.manos.Cotiza(cotizacion_,
                       {DiaDe(p[1]), DiaDe(p[2]), numero(3), numero(4), numero(5), p.size() > 6 ? p[6] : ""});
}

void OrdenesRecepcion::Huesped(const Palabras& p) {
  alcance_.ExigePantalla();
  guion::Manos& manos = piezas_.manos;
  if (p.size() == 1 || p[1] == "cliente") {
    parecidas_.clear();
    return manos.AbreHuespedes(huespedes_, p.size() == 1 ? control::kHuesped : control::kCliente,
                               recepcion::EstanciaEnCaptura(piezas_.componente.formulario()));
  }
  if (p[1] == "elige") {
    const auto con = [&](const char* que) { return std::find(p.begin() + 2, p.end(), que) != p.end(); };
    return manos.EligeHuesped(huespedes_, con("habitacion"), con("notas"));
  }
  if (p.size() == 3) {
    if (p[1] == "busca") return manos.BuscaHuesped(huespedes_, p[2]);
    if (p[1] == "ve") return manos.SenalaHuesped(huespedes_, NumeroDe<int>(p[2]));
    if (p[1] == "abre") return manos.AbreVisita(huespedes_, NumeroDe<int>(p[2]));
  }
  const bool aunque = p[1] == "aunque";
  if (p.size() != 6 || (!aunque && p[1] != "nuevo")) Error("No existe «huesped " + p[1] + "», o le falta algo");
  parecidas_ = manos.CreaHuesped(huespedes_, {p[2], p[3], p[4], p[5]}, aunque);
  alcance_.actual.valor = MuestraParecidas(parecidas_);
  if (!parecidas_.empty()) return;
  manos.EligeHuesped(huespedes_, false, false);
}

void OrdenesRecepcion::Explica(const Palabras& p) {
  alcance_.ExigeSinModal();
  controles::Formulario& pantalla = alcance_.Activo();
  const int fila = p.size() > 1 ? NumeroDe<int>(p[1]) : -1;
  if (p.size() > 1 && (fila < 0 || fila >= alcance_.GridDe(pantalla).Filas())) Error("No hay un renglón " + p[1]);
  const recepcion::CuentaExplicada e =
      fila < 0 ? recepcion::ExplicaTotal(pantalla) : recepcion::ExplicaRenglon(pantalla, fila);
  piezas_.manos.Explica({e});
  alcance_.actual.valor = MuestraExplicacion(e);
}

void OrdenesRecepcion::PorQue(const Palabras& p) {
  const int fila = NumeroDe<int>(p[1]), noche = NumeroDe<int>(p[2]);
  const controles::Grid& grid = alcance_.Tablero();
  if (fila < 0 || fila >= grid.Filas() || noche < 0 || kColumnasFijas + noche >= grid.NumColumnas()) {
    Error("El tablero no tiene la celda " + p[1] + ", " + p[2]);
  }
  alcance_.actual.valor = MuestraPorQue(recepcion::PorQue(piezas_.componente.tablero(), fila, kColumnasFijas + noche));
}

void OrdenesRecepcion::Cifras(const Palabras& p) {
  alcance_.ExigePantalla();
  piezas_.manos.MuestraCifras(cifras_, {DiaDe(p[1]), DiaDe(p[2]), p.size() > 3 ? p[3] : ""});
}

// --- lists as files --------------------------------------------------------------------------------------------------

listado::Listado OrdenesRecepcion::ListadoDe(const std::string& que) {
  autonomo::Conexion& conexion = *piezas_.anfitrion.conexion();
  if (que == "hoy") return recepcion::ListadoDe(DiaALaVista());
  if (que == "cuadro") return recepcion::ListadoDe(CuadroALaVista());
  if (que == "cifras" || que == "meses") return recepcion::ListadoDe(CifrasALaVista(), que == "meses");
  if (que == "cotizacion") {
    if (cotizacion_.pedido().llegada == com::Fecha{}) Error("No se ha cotizado nada; use la orden «cotiza»");
    return recepcion::ListadoDe(cotizacion_);
  }
  if (que == "bitacora") return autonomo::ListadoDe(autonomo::LeeBitacora(conexion, {}));
  if (que == "correos") return autonomo::ListadoDe(autonomo::LeeBandeja(conexion, {}));
  if (que == "usuarios") return autonomo::ListadoDeUsuarios(conexion);
  if (const autonomo::Catalogo* catalogo = autonomo::BuscaCatalogo(que))
    return autonomo::ListadoDe(conexion, *catalogo);
  Error("No hay una lista «" + que + "»");
}

void OrdenesRecepcion::Exporta(const Palabras& p) {
  listado::FormatoCsv formato = listado::kConComas;
  if (p.size() > 3 && p[3] == "puntoycoma") formato = listado::kConPuntoYComa;
  if (p.size() > 3 && p[3] != "puntoycoma" && p[3] != "comas") Error("No se separa por «" + p[3] + "»");
  const std::string hotel =
      autonomo::ValorParametro(*piezas_.anfitrion.conexion(), anfitrion::parametro::kNombreHotel.clave);
  autonomo::Exporta(ListadoDe(p[1]), {hotel, piezas_.anfitrion.reloj().Ahora()}, formato, p[2]);
}

// "todas" is no key of a room: every calendar in one.
void OrdenesRecepcion::Agenda(const Palabras& p) {
  const bool conNombres = p.size() > 3 && p[3] == "nombres";
  if (p.size() > 3 && !conNombres) Error("Se escribe: agenda HABITACION|todas ARCHIVO.ics [nombres]");
  ExportaAgenda(piezas_.anfitrion.conexion(), p[1] == "todas" ? "" : p[1], conNombres,
                piezas_.anfitrion.reloj().Ahora(), p[2]);
}

void OrdenesRecepcion::Parte(const Palabras& p) {
  const auto& conexion = piezas_.anfitrion.conexion();
  const com::Fecha ahora = piezas_.anfitrion.reloj().Ahora();
  if (p.size() > 1 && p[1] == "envia") {
    alcance_.actual.valor = EnviaParte(conexion, ahora, piezas_.anfitrion.usuario());
    return;
  }
  if (p.size() > 1 && p[1] == "deldia") {
    alcance_.actual.valor = EnviaParteDelDia(conexion, ahora);
    return;
  }
  const recepcion::Parte parte = LeeParteDe(conexion, ahora);
  parte_ = recepcion::TextoDe(parte);
  if (p.size() > 1) ExportaParte(parte, p[1]);
}

}  // namespace guion
