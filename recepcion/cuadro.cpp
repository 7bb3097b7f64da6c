#include "recepcion/cuadro.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <utility>

#include "host/contract/estados.h"
#include "host/contract/estados_legibles.h"
#include "platform/com/error.h"
#include "platform/com/variant.h"
#include "platform/regional/regional.h"
#include "publico/publico.h"
#include "recepcion/alojamiento.h"
#include "recepcion/lectura.h"

namespace recepcion {

namespace {

constexpr std::string_view kHabitaciones =
    "SELECT HB.Hb_Cve_Habitacion, HB.Hb_Descripcion, TH.Th_Descripcion, HB.Th_Cve_Tipo_Habitacion FROM Habitacion HB "
    "LEFT JOIN Tipo_Habitacion TH ON TH.Th_Cve_Tipo_Habitacion = HB.Th_Cve_Tipo_Habitacion "
    "WHERE HB.Es_Cve_Estado <> 'BA' ORDER BY HB.Hb_Cve_Habitacion";
constexpr std::string_view kQueSeLee =
    "SELECT D.Hb_Cve_Habitacion, D.Rs_Folio, D.Rsd_Fecha_Inicio, D.Rsd_Fecha_Fin, R.Es_Cve_Estado, R.Mn_Cve_Moneda, "
    "H.Cl_Razon_Social_1 AS Huesped, C.Cl_Razon_Social_1 AS Cliente, "
    "(SELECT SUM(T.Rsd_Precio_Neto_Importe) FROM Reservacion_Detalle T WHERE T.Rs_Folio = R.Rs_Folio) AS Total, "
    "D.Rsd_Id, R.Fecha_Ult_Modif FROM ";
constexpr std::string_view kSusNombres =
    "LEFT JOIN Cliente H ON H.Cl_Cve_Cliente = R.Rs_Huesped LEFT JOIN Cliente C ON C.Cl_Cve_Cliente = "
    "R.Cl_Cve_Cliente ";
// CROSS JOIN keeps the order that the indexes serve: rooms first, then their lines from the first night on.
constexpr std::string_view kLineas =
    "WHERE D.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion AND R.Rs_Folio = D.Rs_Folio AND R.Es_Cve_Estado <> 'CA' "
    "AND D.Rsd_Fecha_Fin > '?' AND D.Rsd_Fecha_Inicio < '?'";
// Lines that ended before the first night, and whose guests stay over it.
constexpr std::string_view kLineasPasadas =
    "WHERE CI.Es_Cve_Estado NOT IN ('CA','CE') AND CI.Ci_Salida > '?' AND CI.Ci_Llegada < '?' "
    "AND CID.Ci_Folio = CI.Ci_Folio AND D.Hb_Cve_Habitacion = CID.Hb_Cve_Habitacion AND D.Rsd_Fecha_Fin <= '?' "
    "AND D.Rsd_Fecha_Fin > CI.Ci_Llegada AND D.Rsd_Fecha_Inicio < CI.Ci_Salida AND R.Rs_Folio = D.Rs_Folio "
    "AND R.Es_Cve_Estado <> 'CA'";
// In no order: one by folio would have the database walk through all stays that there ever were.
constexpr std::string_view kEstancias =
    "SELECT CID.Hb_Cve_Habitacion, CI.Ci_Folio, CI.Ci_Llegada, CI.Ci_Salida FROM Check_In CI "
    "INNER JOIN Check_In_Detalle CID ON CID.Ci_Folio = CI.Ci_Folio "
    "WHERE CI.Es_Cve_Estado NOT IN ('CA','CE') AND CI.Ci_Salida > '?' AND CI.Ci_Llegada < '?'";
constexpr std::string_view kBloqueos =
    "SELECT Hb_Cve_Habitacion, Hbb_Fecha_Inicio, Hbb_Fecha_Fin FROM Habitacion_Bloqueo WHERE Es_Cve_Estado = 'AC' AND "
    "Hbb_Fecha_Fin >= '?' AND Hbb_Fecha_Inicio < '?'";

std::string DelAl(const Barra& b) {
  return " del " + regional::FechaCorta(b.inicio) + " al " + regional::FechaCorta(UltimoDia(b));
}

// A line as it was read, and its bar, which its guests' stays may make longer.
struct Linea {
  Barra barra;
  Noches noches;
  bool viva = true;  // of a reservation that holds its nights
};

// A room's lines, and what else holds it.
struct Habitada {
  std::vector<Linea> lineas;
  std::vector<Barra> otras;
};

Linea LineaDe(const ado::Recordset& rs) {
  Linea l;
  Barra& b = l.barra;
  b.folio = Celda(rs, 1);
  b.inicio = CeldaDia(rs, 2);
  b.fin = CeldaDia(rs, 3);
  b.estado = com::Mayusculas(Celda(rs, 4));
  b.moneda = Celda(rs, 5);
  b.huesped = Celda(rs, 6).empty() ? Celda(rs, 7) : Celda(rs, 6);
  b.total = CeldaNumero(rs, 8);
  b.linea = static_cast<int>(CeldaNumero(rs, 9));
  b.modificada = ado::CeldaFecha(rs, 10);
  l.noches = {b.inicio, b.fin};
  l.viva = b.estado != anfitrion::estado::kCerrada;
  return l;
}

void Agrega(Habitada& habitacion, Linea linea) {
  const auto misma = [&](const Linea& l) {
    return l.barra.folio == linea.barra.folio && l.barra.linea == linea.barra.linea;
  };
  if (std::ranges::none_of(habitacion.lineas, misma)) habitacion.lineas.push_back(std::move(linea));
}

// A stay on the bar of the line that it belongs to; both hold the room. One without a line has a bar of its own.
void AgregaEstancia(Habitada& habitacion, Barra estancia) {
  Linea* suya = nullptr;
  std::optional<int> cerca;
  for (Linea& l : habitacion.lineas) {
    const auto lejos = Lejania(l.noches, {estancia.inicio, estancia.fin});
    if (!lejos || (cerca && *cerca <= *lejos)) continue;
    cerca = lejos;
    suya = &l;
  }
  if (suya == nullptr || !suya->viva) return habitacion.otras.push_back(std::move(estancia));
  Barra& b = suya->barra;
  b.enCasa = true;
  b.inicio = std::min(b.inicio, estancia.inicio);
  b.fin = std::max(b.fin, estancia.fin);
}

// What holds the room on the period's nights.
std::vector<Barra> BarrasDe(Habitada habitacion, const Noches& periodo) {
  std::vector<Barra> barras;
  for (Linea& l : habitacion.lineas) {
    if (l.viva && SeTocan({l.barra.inicio, l.barra.fin}, periodo)) barras.push_back(std::move(l.barra));
  }
  std::ranges::move(habitacion.otras, std::back_inserter(barras));
  return barras;
}

}  // namespace

std::string EstadoDe(const Barra& barra) {
  if (barra.clase == Barra::Clase::Bloqueo) return "Bloqueada";
  if (barra.enCasa) return "En casa";
  return std::string(anfitrion::estado::PalabraDe(barra.estado));
}

com::Fecha UltimoDia(const Barra& barra) {
  return barra.clase == Barra::Clase::Bloqueo ? com::MasDias(barra.fin, -1) : barra.fin;
}

std::string QuienLaTiene(const Barra& barra) {
  std::string texto;
  if (!barra.folio.empty()) texto = "Reservación " + barra.folio + ", ";
  if (!barra.huesped.empty()) texto += barra.huesped + ", ";
  return texto + EstadoDe(barra) + ", " + regional::FechaCorta(barra.inicio) + " – " +
         regional::FechaCorta(UltimoDia(barra));
}

void Cuadro::Abre() {
  Abre(desde_ == com::Fecha{} ? com::SoloFecha(publico::Utilerias().FechaServidor()) : desde_, noches_);
}

void Cuadro::Abre(com::Fecha desde, int noches) {
  if (noches < kNochesMinimas || noches > kNochesMaximas) {
    throw com::Error(com::error::kArgumento, "El cuadro muestra de " + std::to_string(kNochesMinimas) + " a " +
                                                 std::to_string(kNochesMaximas) + " noches");
  }
  const com::Fecha hoy = com::SoloFecha(publico::Utilerias().FechaServidor());
  Lee(DelAnfitrion(), desde, noches);
  hoy_ = hoy;
}

void Cuadro::Lee(const Fuente& fuente, com::Fecha desde, int noches) {
  const com::Fecha dia = com::SoloFecha(desde);
  std::vector<Habitacion> habitaciones = LeeHabitaciones(fuente);
  std::vector<std::vector<Barra>> porFila = LeeBarras(fuente, habitaciones, dia, noches);
  // All was read: a failure before leaves what is shown as it was, rooms and bars of one reading.
  desde_ = dia;
  noches_ = noches;
  habitaciones_ = std::move(habitaciones);
  barras_.clear();
  primeras_.clear();
  for (std::size_t f = 0; f < porFila.size(); ++f) {
    primeras_.push_back(barras_.size());
    std::ranges::stable_sort(porFila[f], {}, &Barra::inicio);
    for (Barra& b : porFila[f]) {
      b.fila = static_cast<int>(f);
      barras_.push_back(std::move(b));
    }
  }
  primeras_.push_back(barras_.size());
}

std::vector<Habitacion> Cuadro::LeeHabitaciones(const Fuente& fuente) {
  std::vector<Habitacion> habitaciones;
  const ado::RecordsetPtr rs = Ejecuta(fuente, ado::TextoSQL(kHabitaciones));
  for (; !rs->Eof(); rs->MoveNext())
    habitaciones.push_back({Celda(*rs, 0), Celda(*rs, 1), Celda(*rs, 2), Celda(*rs, 3)});
  return habitaciones;
}

std::vector<std::vector<Barra>> Cuadro::LeeBarras(const Fuente& fuente, const std::vector<Habitacion>& habitaciones,
                                                  com::Fecha dia, int noches) {
  const Noches periodo{dia, com::MasDias(dia, noches)};
  const std::string primera = fuente.dia(periodo.inicio), ultima = fuente.dia(periodo.fin);
  std::map<std::string, int> filas;
  for (std::size_t f = 0; f < habitaciones.size(); ++f) {
    filas[com::Plegado(habitaciones[f].clave)] = static_cast<int>(f);
  }
  std::vector<Habitada> porFila(habitaciones.size());
  // Calls toma with each row and its room, but for those that are withdrawn.
  const auto lee = [&](const ado::TextoSQL& sql, const auto& toma) {
    const ado::RecordsetPtr rs = Ejecuta(fuente, sql);
    for (; !rs->Eof(); rs->MoveNext()) {
      const auto fila = filas.find(com::Plegado(Celda(*rs, 0)));
      if (fila != filas.end()) toma(porFila[static_cast<std::size_t>(fila->second)], *rs);
    }
  };
  const auto agregaLinea = [](Habitada& habitacion, const ado::Recordset& rs) { Agrega(habitacion, LineaDe(rs)); };
  ado::TextoSQL lineas(kQueSeLee), pasadas(kQueSeLee);
  lineas.Agrega("Habitacion HB CROSS JOIN Reservacion_Detalle D CROSS JOIN Reservacion R ").Agrega(kSusNombres);
  lee(lineas.Agrega(kLineas, {primera, ultima}), agregaLinea);
  pasadas.Agrega("Check_In CI CROSS JOIN Check_In_Detalle CID CROSS JOIN Reservacion_Detalle D ");
  pasadas.Agrega("CROSS JOIN Reservacion R ").Agrega(kSusNombres);
  lee(pasadas.Agrega(kLineasPasadas, {primera, primera, primera}), agregaLinea);
  lee(ado::TextoSQL(kEstancias, {primera, ultima}), [](Habitada& habitacion, const ado::Recordset& rs) {
    Barra b;
    b.clase = Barra::Clase::Estancia;
    b.enCasa = true;
    b.huesped = "Estancia " + Celda(rs, 1);
    b.inicio = CeldaDia(rs, 2);
    b.fin = CeldaDia(rs, 3);
    AgregaEstancia(habitacion, b);
  });
  lee(ado::TextoSQL(kBloqueos, {primera, ultima}), [](Habitada& habitacion, const ado::Recordset& rs) {
    Barra b;
    b.clase = Barra::Clase::Bloqueo;
    b.inicio = CeldaDia(rs, 1);
    b.fin = com::MasDias(CeldaDia(rs, 2), 1);
    habitacion.otras.push_back(b);
  });
  std::vector<std::vector<Barra>> barras;
  barras.reserve(porFila.size());
  for (Habitada& habitacion : porFila) barras.push_back(recepcion::BarrasDe(std::move(habitacion), periodo));
  return barras;
}

std::pair<std::size_t, std::size_t> Cuadro::BarrasDe(int fila) const {
  if (fila < 0 || static_cast<std::size_t>(fila) >= habitaciones_.size()) return {0, 0};
  return {primeras_[static_cast<std::size_t>(fila)], primeras_[static_cast<std::size_t>(fila) + 1]};
}

int Cuadro::FilaDe(const std::string& habitacion) const {
  for (std::size_t f = 0; f < habitaciones_.size(); ++f) {
    if (com::IgualSinCaja(habitaciones_[f].clave, habitacion)) return static_cast<int>(f);
  }
  return -1;
}

const Barra* Cuadro::En(int fila, com::Fecha noche, const std::string& fuera) const {
  const auto [desde, hasta] = BarrasDe(fila);
  for (std::size_t b = desde; b < hasta; ++b) {
    const bool suya = !fuera.empty() && com::IgualSinCaja(barras_[b].folio, fuera);
    if (!suya && barras_[b].inicio <= noche && noche < barras_[b].fin) return &barras_[b];
  }
  return nullptr;
}

bool Cuadro::Libre(int fila, com::Fecha desde, com::Fecha hasta) const {
  for (com::Fecha noche = desde; noche < hasta; noche = com::MasDias(noche, 1)) {
    if (En(fila, noche) != nullptr) return false;
  }
  return true;
}

void Cuadro::AbreBarra(int fila, com::Fecha noche) const {
  const Barra* barra = En(fila, noche);
  if (barra == nullptr) {
    throw com::Error(com::error::kArgumento, "La habitación está libre la noche del " + regional::FechaCorta(noche));
  }
  AbreBarra(*barra);
}

void Cuadro::AbreBarra(const Barra& barra) const {
  if (barra.folio.empty()) {
    const std::string que = barra.clase == Barra::Clase::Bloqueo ? "Un bloqueo" : barra.huesped;
    throw com::Error(com::error::kArgumento, que + DelAl(barra) + " no tiene reservación");
  }
  if (alAbrir) alAbrir(barra.folio);
}

void Cuadro::Reserva(int fila, com::Fecha desde, com::Fecha hasta) const {
  if (fila < 0 || static_cast<std::size_t>(fila) >= habitaciones_.size() || desde >= hasta) {
    throw com::Error(com::error::kArgumento, "Faltan la habitación o las noches por reservar");
  }
  const std::string& clave = habitaciones_[static_cast<std::size_t>(fila)].clave;
  for (com::Fecha noche = desde; noche < hasta; noche = com::MasDias(noche, 1)) {
    if (const Barra* b = En(fila, noche)) {
      const std::string quien = b->folio.empty() ? b->huesped : "reservación " + b->folio + ", " + b->huesped;
      throw com::Error(com::error::kArgumento, "La habitación " + clave + " no está libre la noche del " +
                                                   regional::FechaCorta(noche) + ": " + EstadoDe(*b) + DelAl(*b) +
                                                   (quien.empty() ? "" : ", " + quien));
    }
  }
  if (alReservar) alReservar(clave, desde, hasta);
}

}  // namespace recepcion
