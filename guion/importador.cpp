#include "guion/importador.h"

#include <algorithm>
#include <charconv>

#include "guion/catalogo.h"
#include "guion/muestra.h"
#include "host/contract/mensajes.h"
#include "host/standalone/conexion.h"
#include "platform/com/error.h"

namespace guion {

namespace mensaje = anfitrion::mensaje;
using controles::Accion;

namespace {

// Reference of an imported booking: this and its id.
constexpr std::string_view kReferencia = "IMP-";
constexpr int kCritico = 16;

template <class T>
T& Toma(controles::Formulario& formulario, const char* nombre) {
  auto* control = dynamic_cast<T*>(formulario.Busca(nombre));
  if (control == nullptr) {
    throw com::Error(com::error::kElemento, formulario.nombre() + " no tiene el control " + nombre);
  }
  return *control;
}

std::string TextoDe(const ado::Recordset& rs, const char* columna) {
  const com::Variant& valor = rs.Fields(columna).Value();
  return com::RecortaDerecha(com::TextoDe(valor));
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
  const int libre = grid.IndiceEstilo("DISPONIBLE");
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
  return m.caja.estilo == kCritico && m.caja.id != mensaje::kGuardarReservacion.id &&
         m.caja.id != mensaje::kGuardarDetalle.id;
}

bool EsPregunta(const MensajeVisto& m) { return (m.caja.estilo & 7) != 0; }

void RevisaFallas(const std::string& que, const std::vector<MensajeVisto>& mensajes) {
  for (const MensajeVisto& m : mensajes) {
    if (EsFalla(m)) throw com::Error(com::error::kBaseDatos, que + ": " + m.caja.texto + " (" + m.caja.id + ")");
  }
}

// A message up to its first colon, without the names between quotes: the same for every room and date.
std::string SinLoQueCambia(const std::string& mensaje) {
  std::string texto;
  bool entreComillas = false;
  for (const char c : mensaje) {
    if (c == ':' && !entreComillas) break;
    if (c == '\'') entreComillas = !entreComillas;
    const bool blanco = c == ' ' || c == '\r' || c == '\n' || c == '\'';
    if (entreComillas || (blanco && texto.ends_with(' '))) continue;
    texto += blanco ? ' ' : c;
  }
  return com::Recorta(texto);
}

// The message that refused the booking, without what changes from one to the next.
std::string Motivo(const ReservaCsv& reserva, const MensajeVisto& m) {
  std::string texto = SinLoQueCambia(m.caja.texto);
  if (m.caja.id == mensaje::kNadaMarcado.id) texto += reserva.noches == 0 ? " (sin noches)" : " (ninguna libre)";
  return m.caja.id + " " + texto;
}

}  // namespace

Importador::Importador(autonomo::Anfitrion& anfitrion, Rechazadas& rechazadas)
    : anfitrion_(anfitrion), rechazadas_(rechazadas), escritorio_(respuestas_, manos_) {
  componente_.Abre(anfitrion_.Padre());
}

ResumenImportacion Importador::Importa(const std::vector<ReservaCsv>& reservas, const Progreso& progreso) {
  resumen_ = {};
  resumen_.leidas = static_cast<int>(reservas.size());
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
    const std::string id = TextoDe(*rs, "Rs_Referencia").substr(kReferencia.size());
    const auto reserva = porId.find(id);
    if (reserva == porId.end()) continue;
    const std::string folio = TextoDe(*rs, "Rs_Folio");
    if (com::CDate(rs->Fields("Rs_Fecha").Value()).dia != reserva->second->captura.dia ||
        com::CDate(rs->Fields("Rs_Llegada").Value()).dia != reserva->second->llegada.dia) {
      throw com::Error(com::error::kArgumento, "La base ya tiene importada la reserva " + id +
                                                   " con otras fechas (folio " + folio + "); ¿viene de otro archivo?");
    }
    guardadas_[id] = {folio, com::IgualSinCaja(TextoDe(*rs, "Es_Cve_Estado"), "CA")};
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
    const bool guardada = guardadas_.contains(reservas[eventos[i].reserva].id);
    if (eventos[i].cancelacion) {
      resumen_.yaCanceladas += guardada ? 1 : 0;
    } else {
      ++(guardada ? resumen_.yaGuardadas : resumen_.yaRechazadas);
    }
  }
}

void Importador::CompletaImpresion(const std::string& folio) {
  const ado::RecordsetPtr rs =
      anfitrion_.conexion()->Consulta("SELECT COUNT(*) AS Cantidad FROM Impreso WHERE Ip_Clave = ?", {folio});
  if (com::CLng(rs->Fields("Cantidad").Value()) > 0) return;
  AbreFolio(folio);
  manos_.Accion(Toma<controles::ScreenToolbar>(pantalla(), "Controles"), Accion::Correo);
  manos_.Accion(Toma<controles::ScreenToolbar>(pantalla(), "Controles"), Accion::Limpiar);
  RevisaFallas("La reservación " + folio + " no se pudo imprimir", respuestas_.TomaVistos());
}

// --- a capture -------------------------------------------------------------------------------------------------------

void Importador::Captura(const ReservaCsv& reserva) {
  auto& barra = Toma<controles::ScreenToolbar>(pantalla(), "Controles");
  ++resumen_.intentadas;
  manos_.Accion(barra, Accion::Nuevo);
  if (CapturaEncabezado(reserva)) {
    escritorio_.AlAbrirModal([&](controles::Formulario&) { MarcaEnTablero(reserva); });
    manos_.Tecla(pantalla(), controles::tecla::kF6, 0);
    if (Toma<controles::Grid>(pantalla(), "ssReservaciones").Filas() > 0) {
      CapturaRenglon(reserva);
      manos_.Accion(barra, Accion::Aceptar);
    }
  }
  const bool guardada = !barra.EnEdicion();
  const std::vector<MensajeVisto> mensajes = respuestas_.TomaVistos();
  RevisaFallas("La reserva " + reserva.id + " no se pudo capturar", mensajes);
  if (guardada) {
    ++resumen_.guardadas;
    guardadas_[reserva.id] = {};
    return;
  }
  Rechaza(reserva, mensajes);
  manos_.Accion(barra, Accion::Limpiar);
}

// False when the screen does not take the dates.
bool Importador::CapturaEncabezado(const ReservaCsv& reserva) {
  auto& huesped = Toma<controles::LookupField>(pantalla(), "txtHuesped");
  manos_.Texto(huesped, kHuespedImportado);
  manos_.Confirma(huesped);
  auto& formaPago = Toma<controles::LookupField>(pantalla(), "txtForma_Pago");
  manos_.Texto(formaPago, kFormaPagoImportada);
  manos_.Confirma(formaPago);
  manos_.Texto(Toma<controles::LookupField>(pantalla(), "txtReferencia"), std::string(kReferencia) + reserva.id);
  auto& llegada = Toma<controles::DateField>(pantalla(), "dpFecha_llegada");
  auto& salida = Toma<controles::DateField>(pantalla(), "dpFecha_salida");
  const com::Fecha diaSalida = com::MasDias(reserva.llegada, reserva.noches);
  manos_.PonFecha(llegada, reserva.llegada);
  if (llegada.valor() != reserva.llegada) return false;
  manos_.PonFecha(salida, diaSalida);
  return salida.valor() == diaSalida;
}

void Importador::MarcaEnTablero(const ReservaCsv& reserva) {
  auto& tipo = Toma<controles::LookupField>(tablero(), "txtTipo_Habitacion");
  auto& grid = Toma<controles::Grid>(tablero(), "ssDisponibilidad");
  auto& barra = Toma<controles::ScreenToolbar>(tablero(), "Controles");
  if (tipo.text() != reserva.tipo) {
    manos_.Texto(tipo, reserva.tipo);
    manos_.Confirma(tipo);
  }
  if (Toma<controles::LookupField>(tablero(), "txtNTipo_Habitacion").text().empty()) {
    throw com::Error(com::error::kArgumento, "El tablero no conoce el tipo de habitación " + reserva.tipo);
  }
  manos_.Clic(Toma<controles::Opcion>(tablero(), "opHabitacion"));
  if (const int fila = FilaLibre(grid); fila >= 0) manos_.SeleccionaFila(grid, fila);
  manos_.Accion(barra, Accion::Aceptar);
  if (tablero().visible()) manos_.Accion(barra, Accion::Cancelar);
}

void Importador::CapturaRenglon(const ReservaCsv& reserva) {
  auto& grid = Toma<controles::Grid>(pantalla(), "ssReservaciones");
  const auto celda = [&](const char* clave, const std::string& valor) {
    manos_.Celda(grid, 0, grid.IndiceColumna(clave), valor);
  };
  celda("Adultos", std::to_string(reserva.adultos));
  if (reserva.menores > 0) celda("Menores", std::to_string(reserva.menores));
  if (reserva.infantes > 0) celda("Infantes", std::to_string(reserva.infantes));
  if (reserva.tarifa > 0) celda("Precio", Importe(reserva));
}

void Importador::Rechaza(const ReservaCsv& reserva, const std::vector<MensajeVisto>& mensajes) {
  std::string motivo = "la pantalla no la guardó", todos;
  for (const MensajeVisto& m : mensajes) {
    if (EsPregunta(m)) continue;
    motivo = Motivo(reserva, m);
    todos += (todos.empty() ? "" : " | ") + m.caja.id + " " + m.caja.texto;
  }
  rechazadas_.Agrega(reserva, motivo, todos);
  ++resumen_.rechazadas[motivo];
}

// --- a cancellation --------------------------------------------------------------------------------------------------

void Importador::AbreFolio(const std::string& folio) {
  auto& campo = Toma<controles::LookupField>(pantalla(), "txtFolio");
  manos_.Texto(campo, folio);
  manos_.Confirma(campo);
}

void Importador::Cancela(const ReservaCsv& reserva) {
  const auto guardada = guardadas_.find(reserva.id);
  if (guardada == guardadas_.end()) return;  // it was refused
  if (guardada->second.folio.empty()) {
    const ado::RecordsetPtr rs = anfitrion_.conexion()->Consulta(
        "SELECT Rs_Folio FROM Reservacion WHERE Rs_Referencia = ?", {std::string(kReferencia) + reserva.id});
    guardada->second.folio = TextoDe(*rs, "Rs_Folio");
  }
  AbreFolio(guardada->second.folio);
  auto& barra = Toma<controles::ScreenToolbar>(pantalla(), "Controles");
  const std::string que = "La reserva " + reserva.id + " (folio " + guardada->second.folio + ") no se pudo cancelar";
  if (!barra.Ofrece(Accion::Eliminar)) {
    RevisaFallas(que, respuestas_.TomaVistos());
    throw com::Error(com::error::kBaseDatos, que + ": la pantalla no lo permite");
  }
  manos_.Accion(barra, Accion::Eliminar);
  RevisaFallas(que, respuestas_.TomaVistos());
  guardada->second.cancelada = true;
  ++resumen_.canceladas;
}

}  // namespace guion
