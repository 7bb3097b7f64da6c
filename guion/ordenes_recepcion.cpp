// The orders of the front desk around the screens.
#include <algorithm>
#include <utility>

#include "component/nombres.h"
#include "guion/interprete.h"
#include "guion/muestra.h"
#include "guion/muestra_recepcion.h"
#include "guion/palabras.h"
#include "guion/parte_diario.h"
#include "guion/salidas.h"
#include "host/standalone/catalogos.h"
#include "host/standalone/exportacion.h"
#include "host/standalone/listados.h"
#include "host/standalone/parametros.h"
#include "platform/com/error.h"
#include "recepcion/borrador.h"
#include "recepcion/explicacion.h"
#include "recepcion/listados.h"
#include "recepcion/pasos.h"

namespace guion {

namespace {

namespace control = kv207::control;

[[noreturn]] void Error(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

com::Fecha DiaDe(const std::string& palabra) { return com::SoloFecha(FechaDe(palabra)); }

// What was not as before, for the answer.
Json ListaDe(const std::vector<std::string>& textos) {
  Json lista = Json::Arreglo();
  for (const std::string& texto : textos) lista.Agrega(texto);
  return lista;
}

}  // namespace

// What is captured is thrown away, as the toolbar's Clear does; a person is asked first.
void Interprete::AbreReservacion(const std::string& folio) {
  controles::Formulario& pantalla = piezas_.componente.formulario();
  controles::ScreenToolbar& barra = BarraDe(pantalla);
  if (barra.EnEdicion()) piezas_.manos.Accion(barra, controles::Accion::Limpiar);
  controles::Control* campo = pantalla.Busca(control::kFolio);
  if (campo == nullptr) Error("La pantalla no tiene folio");
  piezas_.manos.Texto(*campo, folio);
  piezas_.manos.Confirma(*campo);
}

const recepcion::Hoy& Interprete::DiaALaVista() const {
  if (hoy_.dia().fecha == com::Fecha{}) Error("El día no está a la vista; use la orden «hoy»");
  return hoy_;
}

const recepcion::Cuadro& Interprete::CuadroALaVista() const {
  if (cuadro_.desde() == com::Fecha{}) Error("El cuadro no está a la vista; use la orden «cuadro DESDE NOCHES»");
  return cuadro_;
}

const recepcion::Cifras& Interprete::CifrasALaVista() const {
  if (cifras_.pedido().desde == com::Fecha{}) Error("Las cifras no están a la vista; use la orden «cifras»");
  return cifras_;
}

void Interprete::Hoy(const Palabras& p) {
  ExigeSinModal();
  static_cast<void>(Activo());
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

bool Interprete::Pulsa(controles::Accion accion) const {
  piezas_.manos.Accion(BarraDe(piezas_.componente.formulario()), accion);
  return true;
}

void Interprete::Reserva(const recepcion::Pedido& pedido, const std::vector<recepcion::Tramo>& tramos) {
  controles::Formulario& pantalla = piezas_.componente.formulario();
  const auto abreTablero = [&](const recepcion::Encargo::Marca& marca) {
    pasosDelTablero_ = [&](controles::Formulario& tablero) {
      const std::string motivo = marca(tablero);
      if (!motivo.empty()) actual_.valor = Json(motivo);
    };
    piezas_.manos.Tecla(pantalla, controles::tecla::kF6, 0);
    pasosDelTablero_ = nullptr;
  };
  encargo_.Reserva(
      pantalla, pedido, tramos, [this](controles::Accion a) { return Pulsa(a); }, abreTablero);
}

void Interprete::TomaHuesped(const std::string& campo, const recepcion::Toma& toma) {
  controles::Formulario& pantalla = piezas_.componente.formulario();
  const bool tomado = encargo_.TomaHuesped(pantalla, campo, toma, [this](controles::Accion a) { return Pulsa(a); });
  if (!tomado) Error("«" + campo + "» no admite una clave ahora");
}

void Interprete::Explica(const Palabras& p) {
  ExigeSinModal();
  controles::Formulario& pantalla = Activo();
  const int fila = p.size() > 1 ? NumeroDe<int>(p[1]) : -1;
  if (p.size() > 1 && (fila < 0 || fila >= GridDe(pantalla).Filas())) Error("No hay un renglón " + p[1]);
  const recepcion::CuentaExplicada e =
      fila < 0 ? recepcion::ExplicaTotal(pantalla) : recepcion::ExplicaRenglon(pantalla, fila);
  piezas_.manos.Explica({e});
  actual_.valor = MuestraExplicacion(e);
}

void Interprete::Huesped(const Palabras& p) {
  ExigeSinModal();
  static_cast<void>(Activo());
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
  actual_.valor = MuestraParecidas(parecidas_);
  if (!parecidas_.empty()) return;
  manos.EligeHuesped(huespedes_, false, false);
}

void Interprete::Cotiza(const Palabras& p) {
  ExigeSinModal();
  static_cast<void>(Activo());
  if (p[1] == "reserva" && p.size() == 3) return piezas_.manos.ReservaOferta(cotizacion_, NumeroDe<int>(p[2]));
  if (p.size() < 4)
    Error("Se escribe: cotiza LLEGADA SALIDA ADULTOS [MENORES [INFANTES [MONEDA]]] | cotiza reserva OFERTA");
  const auto numero = [&](std::size_t i) { return p.size() > i ? NumeroDe<int>(p[i]) : 0; };
  piezas_.manos.Cotiza(cotizacion_,
                       {DiaDe(p[1]), DiaDe(p[2]), numero(3), numero(4), numero(5), p.size() > 6 ? p[6] : ""});
}

void Interprete::Cuadro(const Palabras& p) {
  ExigeSinModal();
  static_cast<void>(Activo());
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

// The draft that the desktop takes by itself, here when the script says so; it is kept while the program runs.
void Interprete::Borrador(const Palabras& p) {
  ExigeSinModal();
  static_cast<void>(Activo());
  controles::Formulario& pantalla = piezas_.componente.formulario();
  if (p[1] == "guarda") {
    recepcion::Borrador borrador = recepcion::TomaBorrador(pantalla);
    borrador.visto = piezas_.anfitrion.conexion()->LoVisto(borrador.folio);
    borrador.quitados = quitados_.renglones();
    borrador_ = recepcion::EnTexto(borrador);
    return;
  }
  if (p[1] != "repone" && p[1] != "olvida") Error("No existe «borrador " + p[1] + "»");
  if (borrador_.empty()) Error("No hay un borrador");
  if (p[1] == "olvida") return borrador_.clear();
  const recepcion::Borrador borrador = recepcion::DeTexto(borrador_);
  const auto pulsa = [this](controles::Accion accion) { return Pulsa(accion); };
  const auto retoma = [&](const std::string& folio, const std::string& visto) {
    piezas_.anfitrion.conexion()->RetomaLoVisto(folio, visto);
  };
  std::vector<std::string> faltan = recepcion::ReponeBorrador(pantalla, borrador, {pulsa, retoma});
  if (std::string tarjeta = recepcion::FaltaTarjeta(borrador); !tarjeta.empty()) faltan.push_back(std::move(tarjeta));
  actual_.valor = ListaDe(faltan);
  quitados_.Fija(borrador.quitados);
}

// The lines that a change of nights took away.
void Interprete::Repone(const Palabras&) {
  ExigeSinModal();
  static_cast<void>(Activo());
  actual_.valor = ListaDe(quitados_.Repone(piezas_.componente.formulario()));
}

void Interprete::PorQue(const Palabras& p) {
  const int fila = NumeroDe<int>(p[1]), noche = NumeroDe<int>(p[2]);
  const controles::Grid& grid = Tablero();
  if (fila < 0 || fila >= grid.Filas() || noche < 0 || kColumnasFijas + noche >= grid.NumColumnas()) {
    Error("El tablero no tiene la celda " + p[1] + ", " + p[2]);
  }
  actual_.valor = MuestraPorQue(recepcion::PorQue(piezas_.componente.tablero(), fila, kColumnasFijas + noche));
}

void Interprete::Cifras(const Palabras& p) {
  ExigeSinModal();
  static_cast<void>(Activo());
  piezas_.manos.MuestraCifras(cifras_, {DiaDe(p[1]), DiaDe(p[2]), p.size() > 3 ? p[3] : ""});
}

// --- lists as files

listado::Listado Interprete::ListadoDe(const std::string& que) {
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

void Interprete::Exporta(const Palabras& p) {
  listado::FormatoCsv formato = listado::kConComas;
  if (p.size() > 3 && p[3] == "puntoycoma") formato = listado::kConPuntoYComa;
  if (p.size() > 3 && p[3] != "puntoycoma" && p[3] != "comas") Error("No se separa por «" + p[3] + "»");
  const std::string hotel =
      autonomo::ValorParametro(*piezas_.anfitrion.conexion(), anfitrion::parametro::kNombreHotel.clave);
  autonomo::Exporta(ListadoDe(p[1]), {hotel, piezas_.anfitrion.reloj().Ahora()}, formato, p[2]);
}

// "todas" is no key of a room: every calendar in one.
void Interprete::Agenda(const Palabras& p) {
  const bool conNombres = p.size() > 3 && p[3] == "nombres";
  if (p.size() > 3 && !conNombres) Error("Se escribe: agenda HABITACION|todas ARCHIVO.ics [nombres]");
  ExportaAgenda(piezas_.anfitrion.conexion(), p[1] == "todas" ? "" : p[1], conNombres,
                piezas_.anfitrion.reloj().Ahora(), p[2]);
}

void Interprete::Parte(const Palabras& p) {
  const auto& conexion = piezas_.anfitrion.conexion();
  const com::Fecha ahora = piezas_.anfitrion.reloj().Ahora();
  if (p.size() > 1 && p[1] == "envia") {
    actual_.valor = EnviaParte(conexion, ahora, piezas_.anfitrion.usuario());
    return;
  }
  if (p.size() > 1 && p[1] == "deldia") {
    actual_.valor = EnviaParteDelDia(conexion, ahora);
    return;
  }
  const recepcion::Parte parte = LeeParteDe(conexion, ahora);
  parte_ = recepcion::TextoDe(parte);
  if (p.size() > 1) ExportaParte(parte, p[1]);
}

}  // namespace guion
