#include "guion/importador.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

#include "component/nombres.h"
#include "guion/catalogo.h"
#include "guion/muestra.h"
#include "host/contract/estados.h"
#include "host/contract/mensajes.h"
#include "host/standalone/conexion.h"
#include "host/standalone/transaccion.h"
#include "platform/ado/celda.h"
#include "platform/com/error.h"

namespace guion {

namespace control = kv207::control;
namespace mensaje = anfitrion::mensaje;
using controles::Accion;

namespace {

// Reference of an imported booking: this and its id.
constexpr std::string_view kReferencia = "IMP-";
constexpr const char* kSeriePrueba = "IMPORTACION";

template <class T>
T& Toma(controles::Formulario& formulario, const char* nombre) {
  auto* control = controles::Como<T>(formulario.Busca(nombre));
  if (control == nullptr) {
    throw com::Error(com::error::kElemento, formulario.nombre() + " no tiene el control " + nombre);
  }
  return *control;
}

// Price of the whole stay as a clerk types it.
std::string Importe(const ReservaCsv& r) {
  char espacio[64];
  const double importe = com::Redondea(r.tarifa * r.noches, 2);
  const auto fin = std::to_chars(espacio, espacio + sizeof espacio, importe, std::chars_format::fixed, 2);
  return {espacio, fin.ptr};
}

// The first row whose cells are all free; -1 when there is none, or no night to sell.
int FilaLibre(const controles::Grid& grid) {
  const int libre = grid.IndiceEstilo(kv207::NombreEstado(kv207::EstadoCelda::Disponible));
  if (grid.NumColumnas() <= kColumnasFijas) return -1;
  for (int fila = 0; fila < grid.Filas(); ++fila) {
    int columna = kColumnasFijas;
    while (columna < grid.NumColumnas() && grid.estilo(fila, columna) == libre) ++columna;
    if (columna == grid.NumColumnas()) return fila;
  }
  return -1;
}

// A failure of the program or the database, as opposed to a refusal of the screen or of its store.
bool EsFalla(const MensajeVisto& m) {
  return m.caja.estilo == controles::caja::kCritico && m.caja.id != mensaje::kGuardarReservacion.id &&
         m.caja.id != mensaje::kGuardarDetalle.id;
}

bool EsPregunta(const MensajeVisto& m) { return (m.caja.estilo & controles::caja::kBotones) != 0; }

// A message up to its first colon, without what stands between quotes: the same for every room, date and value.
std::string SinLoQueCambia(const std::string& mensaje) {
  static const std::pair<std::string, std::string> comillas[] = {{"'", "'"}, {"«", "»"}};
  std::string texto;
  for (std::size_t i = 0; i < mensaje.size() && mensaje[i] != ':';) {
    const auto* par =
        std::ranges::find_if(comillas, [&](const auto& c) { return mensaje.compare(i, c.first.size(), c.first) == 0; });
    if (par != std::end(comillas)) {
      const std::size_t cierre = mensaje.find(par->second, i + par->first.size());
      i = cierre == std::string::npos ? mensaje.size() : cierre + par->second.size();
    }
    const char c = i < mensaje.size() ? mensaje[i++] : ' ';
    const bool blanco = c == ' ' || c == '\r' || c == '\n';
    if (!blanco || !texto.ends_with(' ')) texto += blanco ? ' ' : c;
  }
  return com::Recorta(texto);
}

[[noreturn]] void NoSeImprimio(const std::string& cual, const std::string& falla) {
  throw com::Error(com::error::kBaseDatos, "La confirmación " + cual + " no se pudo imprimir: " + falla);
}

}  // namespace

Importador::Importador(autonomo::Anfitrion& anfitrion, Rechazadas& rechazadas)
    : anfitrion_(anfitrion), rechazadas_(rechazadas), escritorio_(respuestas_, manos_) {
  componente_.Abre(anfitrion_.Padre());
}

controles::ScreenToolbar& Importador::barra() { return Toma<controles::ScreenToolbar>(pantalla(), control::kBarra); }

ResumenImportacion Importador::Importa(const ReservasCsv& archivo, const Progreso& progreso) {
  const std::vector<ReservaCsv>& reservas = archivo.reservas;
  resumen_ = {};
  resumen_.leidas = static_cast<int>(reservas.size() + archivo.malas.size());
  for (const FilaMala& mala : archivo.malas) {
    const std::string detalle = mala.motivo + (mala.texto.empty() ? "" : " | " + mala.texto);
    Rechaza(mala.linea, mala.campos, SinLoQueCambia(mala.motivo), detalle);
  }
  const std::vector<Evento> eventos = OrdenaEventos(reservas);
  LeeGuardadas(reservas);
  const std::size_t hechos = EventosHechos(reservas, eventos);
  CuentaHechos(reservas, eventos, hechos);
  if (hechos > 0 && !eventos[hechos - 1].cancelacion) {
    anfitrion_.reloj().Fija(eventos[hechos - 1].dia);
    CompletaImpresion(guardadas_.at(reservas[eventos[hechos - 1].reserva].id).folio);
  }
  for (std::size_t i = hechos; i < eventos.size(); ++i) {
    progreso(i, eventos.size());
    const ReservaCsv& reserva = reservas[eventos[i].reserva];
    anfitrion_.reloj().Fija(eventos[i].dia);
    if (eventos[i].cancelacion) {
      Cancela(reserva);
    } else {
      Captura(reserva);
    }
  }
  progreso(eventos.size(), eventos.size());
  return resumen_;
}

// --- what earlier runs have done -------------------------------------------------------------------------------------

void Importador::LeeGuardadas(const std::vector<ReservaCsv>& reservas) {
  std::map<std::string, const ReservaCsv*> porId;
  for (const ReservaCsv& r : reservas) porId[r.id] = &r;
  guardadas_.clear();
  const ado::RecordsetPtr rs = anfitrion_.conexion()->Consulta(
      "SELECT Rs_Folio, Rs_Referencia, Rs_Fecha, Rs_Llegada, Es_Cve_Estado FROM Reservacion "
      "WHERE Rs_Referencia LIKE 'IMP-%'");
  for (; !rs->Eof(); rs->MoveNext()) {
    const std::string id = ado::Celda(*rs, "Rs_Referencia").substr(kReferencia.size());
    const auto reserva = porId.find(id);
    if (reserva == porId.end()) continue;
    const std::string folio = ado::Celda(*rs, "Rs_Folio");
    if (com::CDate(rs->Fields("Rs_Fecha").Value()).dia != reserva->second->captura.dia ||
        com::CDate(rs->Fields("Rs_Llegada").Value()).dia != reserva->second->llegada.dia) {
      throw com::Error(com::error::kArgumento, "La base ya tiene importada la reserva " + id +
                                                   " con otras fechas (folio " + folio + "); ¿viene de otro archivo?");
    }
    guardadas_[id] = {folio, com::IgualSinCaja(ado::Celda(*rs, "Es_Cve_Estado"), anfitrion::estado::kCancelada)};
  }
}

std::size_t Importador::EventosHechos(const std::vector<ReservaCsv>& reservas,
                                      const std::vector<Evento>& eventos) const {
  for (std::size_t i = eventos.size(); i > 0; --i) {
    const auto guardada = guardadas_.find(reservas[eventos[i - 1].reserva].id);
    if (guardada == guardadas_.end()) continue;
    if (!eventos[i - 1].cancelacion || guardada->second.cancelada) return i;
  }
  return 0;
}

void Importador::CuentaHechos(const std::vector<ReservaCsv>& reservas, const std::vector<Evento>& eventos,
                              std::size_t hechos) {
  for (std::size_t i = 0; i < hechos; ++i) {
    const auto guardada = guardadas_.find(reservas[eventos[i].reserva].id);
    const bool hay = guardada != guardadas_.end();
    if (eventos[i].cancelacion) {
      resumen_.yaCanceladas += hay && guardada->second.cancelada ? 1 : 0;
    } else {
      ++(hay ? resumen_.yaGuardadas : resumen_.yaRechazadas);
    }
  }
}

void Importador::CompletaImpresion(const std::string& folio) {
  const ado::RecordsetPtr rs =
      anfitrion_.conexion()->Consulta("SELECT COUNT(*) AS Cantidad FROM Impreso WHERE Ip_Clave = ?", {folio});
  if (com::CLng(rs->Fields("Cantidad").Value()) > 0) return;
  const Intento intento = Intenta([&] {
    AbreFolio(folio);
    manos_.Accion(barra(), Accion::Correo);
    manos_.Accion(barra(), Accion::Limpiar);
  });
  if (intento.falla) NoSeImprimio("de la reservación " + folio, intento.mensajes);
}

// --- what the screen answers -----------------------------------------------------------------------------------------

Importador::Intento Importador::Intenta(const std::function<void()>& pasos) {
  Intento intento;
  std::string error;
  try {
    pasos();
  } catch (const com::Error& e) {
    error = e.Descripcion();
  }
  const auto agrega = [&](const std::string& motivo, const std::string& texto) {
    intento.motivo = motivo;
    intento.mensajes += (intento.mensajes.empty() ? "" : " | ") + texto;
  };
  for (const MensajeVisto& m : respuestas_.TomaVistos()) {
    intento.falla = intento.falla || EsFalla(m);
    if (!EsPregunta(m)) agrega(m.caja.id + " " + SinLoQueCambia(m.caja.texto), m.caja.id + " " + m.caja.texto);
  }
  if (!error.empty()) {
    intento.falla = true;
    agrega(SinLoQueCambia(error), error);
  }
  return intento;
}

void Importador::ExigeBase(const std::string& falla) {
  try {
    // A write that whoever captures may do, and that leaves nothing.
    autonomo::Conexion& base = *anfitrion_.conexion();
    autonomo::Transaccion t(base);
    base.Consulta("INSERT INTO Folio_Consecutivo (Fc_Serie, Fc_Ultimo) VALUES (?, ?)", {kSeriePrueba, 0});
    base.Consulta("DELETE FROM Folio_Consecutivo WHERE Fc_Serie = ?", {kSeriePrueba});
    t.Concluye();
  } catch (const com::Error& e) {
    throw com::Error(com::error::kBaseDatos, falla + ": " + e.Descripcion());
  }
}

void Importador::Rechaza(int linea, const std::vector<std::string>& campos, const std::string& motivo,
                         const std::string& mensajes) {
  if (rechazadas_.Agrega(linea, campos, motivo, mensajes)) {
    ++resumen_.rechazadas[motivo];
  } else {
    ++resumen_.yaRechazadas;
  }
}

// --- a capture -------------------------------------------------------------------------------------------------------

void Importador::Captura(const ReservaCsv& reserva) {
  ++resumen_.intentadas;
  Intento intento = Intenta([&] { CapturaEnPantalla(reserva); });
  if (!barra().EnEdicion()) {
    if (intento.falla) NoSeImprimio("de la reserva " + reserva.id, intento.mensajes);
    ++resumen_.guardadas;
    guardadas_[reserva.id] = {};
    return;
  }
  if (intento.falla) ExigeBase("La reserva " + reserva.id + " no se pudo capturar: " + intento.mensajes);
  if (intento.motivo.empty()) intento.motivo = "la pantalla no la guardó";
  if (intento.motivo.starts_with(mensaje::kNadaMarcado.id)) {
    intento.motivo += reserva.noches == 0 ? " (sin noches)" : " (ninguna libre)";
  }
  Rechaza(reserva.linea, reserva.campos, intento.motivo, intento.mensajes);
  manos_.Accion(barra(), Accion::Limpiar);
}

void Importador::CapturaEnPantalla(const ReservaCsv& reserva) {
  manos_.Accion(barra(), Accion::Nuevo);
  if (!CapturaEncabezado(reserva)) return;
  bool conocido = true;
  escritorio_.AlAbrirModal([&](controles::Formulario&) { conocido = MarcaEnTablero(reserva); });
  manos_.Tecla(pantalla(), controles::tecla::kF6, 0);
  if (!conocido) {
    throw com::Error(com::error::kArgumento, "el tablero no conoce el tipo de habitación «" + reserva.tipo + "»");
  }
  if (Toma<controles::Grid>(pantalla(), control::kRenglones).Filas() == 0) return;
  CapturaRenglon(reserva);
  manos_.Accion(barra(), Accion::Aceptar);
}

// False when the screen does not take the dates.
bool Importador::CapturaEncabezado(const ReservaCsv& reserva) {
  auto& huesped = Toma<controles::LookupField>(pantalla(), control::kHuesped);
  manos_.Texto(huesped, kHuespedImportado);
  manos_.Confirma(huesped);
  auto& formaPago = Toma<controles::LookupField>(pantalla(), control::kFormaPago);
  manos_.Texto(formaPago, kFormaPagoImportada);
  manos_.Confirma(formaPago);
  auto& campoReferencia = Toma<controles::LookupField>(pantalla(), control::kReferencia);
  const std::string referencia = std::string(kReferencia) + reserva.id;
  manos_.Texto(campoReferencia, referencia);
  if (campoReferencia.text() != referencia) {
    // Another run would not find it again.
    throw com::Error(com::error::kArgumento, "la referencia no admite el id «" + reserva.id + "»");
  }
  auto& llegada = Toma<controles::DateField>(pantalla(), control::kLlegada);
  auto& salida = Toma<controles::DateField>(pantalla(), control::kSalida);
  const com::Fecha diaSalida = com::MasDias(reserva.llegada, reserva.noches);
  manos_.PonFecha(llegada, reserva.llegada);
  if (llegada.valor() != reserva.llegada) return false;
  manos_.PonFecha(salida, diaSalida);
  return salida.valor() == diaSalida;
}

bool Importador::MarcaEnTablero(const ReservaCsv& reserva) {
  auto& tipo = Toma<controles::LookupField>(tablero(), control::kTipo);
  auto& grid = Toma<controles::Grid>(tablero(), control::kNoches);
  auto& barraTablero = Toma<controles::ScreenToolbar>(tablero(), control::kBarra);
  if (tipo.text() != reserva.tipo) {
    manos_.Texto(tipo, reserva.tipo);
    manos_.Confirma(tipo);
  }
  const bool conocido = !Toma<controles::LookupField>(tablero(), control::kNombreTipo).text().empty();
  if (conocido) {
    manos_.Clic(Toma<controles::Opcion>(tablero(), control::kPorHabitacion));
    if (const int fila = FilaLibre(grid); fila >= 0) manos_.SeleccionaFila(grid, fila);
    manos_.Accion(barraTablero, Accion::Aceptar);
  }
  if (tablero().visible()) manos_.Accion(barraTablero, Accion::Cancelar);
  return conocido;
}

void Importador::CapturaRenglon(const ReservaCsv& reserva) {
  auto& grid = Toma<controles::Grid>(pantalla(), control::kRenglones);
  const auto celda = [&](std::string_view clave, const std::string& valor) {
    manos_.Celda(grid, 0, grid.IndiceColumna(clave), valor);
  };
  celda(kv207::col::kAdultos, std::to_string(reserva.adultos));
  if (reserva.menores > 0) celda(kv207::col::kMenores, std::to_string(reserva.menores));
  if (reserva.infantes > 0) celda(kv207::col::kInfantes, std::to_string(reserva.infantes));
  if (reserva.tarifa > 0) celda(kv207::col::kPrecio, Importe(reserva));
}

// --- a cancellation --------------------------------------------------------------------------------------------------

void Importador::AbreFolio(const std::string& folio) {
  auto& campo = Toma<controles::LookupField>(pantalla(), control::kFolio);
  manos_.Texto(campo, folio);
  manos_.Confirma(campo);
}

void Importador::Cancela(const ReservaCsv& reserva) {
  const auto guardada = guardadas_.find(reserva.id);
  if (guardada == guardadas_.end()) return;  // it was refused
  if (guardada->second.folio.empty()) {
    const ado::RecordsetPtr rs = anfitrion_.conexion()->Consulta(
        "SELECT Rs_Folio FROM Reservacion WHERE Rs_Referencia = ?", {std::string(kReferencia) + reserva.id});
    guardada->second.folio = ado::Celda(*rs, "Rs_Folio");
  }
  const Intento intento = Intenta([&] {
    AbreFolio(guardada->second.folio);
    if (!barra().Ofrece(Accion::Eliminar)) {
      throw com::Error(com::error::kArgumento,
                       "la pantalla no permite cancelar el folio «" + guardada->second.folio + "»");
    }
    manos_.Accion(barra(), Accion::Eliminar);
  });
  if (!intento.falla) {
    guardada->second.cancelada = true;
    ++resumen_.canceladas;
    return;
  }
  ExigeBase("La reserva " + reserva.id + " no se pudo cancelar: " + intento.mensajes);
  Rechaza(reserva.linea, reserva.campos, "guardada sin cancelar, " + intento.motivo, intento.mensajes);
  manos_.Accion(barra(), Accion::Limpiar);
}

}  // namespace guion
