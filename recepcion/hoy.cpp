#include "recepcion/hoy.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <unordered_map>
#include <utility>

#include "availability/ocupacion.h"
#include "host/contract/estados.h"
#include "platform/com/error.h"
#include "publico/publico.h"
#include "recepcion/alojamiento.h"
#include "recepcion/lectura.h"

namespace recepcion {

namespace {

constexpr std::array<std::string_view, kListas> kNombres{"llegadas", "salidas", "encasa", "nollegaron"};
constexpr std::array<std::string_view, kListas> kTitulos{"Llegadas", "Salidas", "En casa", "No llegaron"};

// --- reservations and their rooms

enum Columna : std::size_t {
  kFolio,
  kLlegada,
  kSalida,
  kEstado,
  kReferencia,
  kHuesped,
  kCliente,
  kHabitacion,
  kAdultos,
  kMenores,
  kInfantes,
  kInicio,
  kFin
};
// One row a line. Who has no guest is known by who pays.
constexpr std::string_view kReservaciones =
    "SELECT R.Rs_Folio, R.Rs_Llegada, R.Rs_Salida, R.Es_Cve_Estado, R.Rs_Referencia, "
    "H.Cl_Razon_Social_1 AS Huesped, C.Cl_Razon_Social_1 AS Cliente, "
    "D.Hb_Cve_Habitacion, D.Rsd_Adultos, D.Rsd_Menores, D.Rsd_Infantes, D.Rsd_Fecha_Inicio, D.Rsd_Fecha_Fin "
    "FROM Reservacion R "
    "LEFT JOIN Reservacion_Detalle D ON D.Rs_Folio = R.Rs_Folio "
    "LEFT JOIN Cliente H ON H.Cl_Cve_Cliente = R.Rs_Huesped "
    "LEFT JOIN Cliente C ON C.Cl_Cve_Cliente = R.Cl_Cve_Cliente WHERE ";
constexpr std::string_view kEnOrden = " ORDER BY R.Rs_Llegada, R.Rs_Folio, D.Rsd_Id";
constexpr std::string_view kTocanElDia = "R.Rs_Salida >= '?' AND R.Rs_Llegada <= '? 23:59' AND R.Es_Cve_Estado <> 'CA'";
// Of them those that ended before the day, with a line that a stay of these meets. CROSS JOIN keeps the order that the
// indexes serve.
constexpr std::string_view kAcabaron =
    "R.Rs_Salida < '?' AND R.Es_Cve_Estado <> 'CA' AND R.Rs_Folio IN (SELECT D.Rs_Folio FROM Check_In CI "
    "CROSS JOIN Check_In_Detalle CID CROSS JOIN Reservacion_Detalle D WHERE CID.Ci_Folio = CI.Ci_Folio "
    "AND D.Hb_Cve_Habitacion = CID.Hb_Cve_Habitacion AND D.Rsd_Fecha_Fin < '?' AND D.Rsd_Fecha_Fin > CI.Ci_Llegada "
    "AND D.Rsd_Fecha_Inicio < CI.Ci_Salida AND ";
constexpr std::string_view kEstancias =
    "SELECT CI.Ci_Folio, CI.Ci_Llegada, CI.Ci_Salida, CID.Hb_Cve_Habitacion, CI.Es_Cve_Estado FROM Check_In CI "
    "INNER JOIN Check_In_Detalle CID ON CID.Ci_Folio = CI.Ci_Folio WHERE ";
constexpr std::string_view kEstanciasDelDia =
    "CI.Es_Cve_Estado <> 'CA' AND CI.Ci_Salida >= '?' AND CI.Ci_Llegada <= '? 23:59'";
constexpr std::string_view kEstanciasPasadas = "CI.Es_Cve_Estado <> 'CA' AND CI.Ci_Salida > '?' AND CI.Ci_Salida < '?'";
constexpr std::string_view kAlgunaEstancia = "SELECT TOP 1 Ci_Folio FROM Check_In WHERE Es_Cve_Estado <> 'CA'";
constexpr std::string_view kTipos =
    "SELECT Th_Cve_Tipo_Habitacion, Th_Descripcion FROM Tipo_Habitacion WHERE Es_Cve_Estado <> 'BA' "
    "ORDER BY Th_Cve_Tipo_Habitacion";

void AgregaHabitacion(std::string& habitaciones, const std::string& clave) {
  // A room comes twice when its stay is two lines.
  if (clave.empty() || ("," + habitaciones + ",").find("," + clave + ",") != std::string::npos) return;
  habitaciones += (habitaciones.empty() ? "" : ",") + clave;
}

// With a blank after each comma.
std::string Espaciadas(const std::string& habitaciones) {
  std::string texto;
  for (const char c : habitaciones) texto.append(1, c).append(c == ',' ? " " : "");
  return texto;
}

struct Linea {
  std::string habitacion;  // folded
  Noches noches;
  int personas = 0;
  bool alojada = false;  // a stay belongs to it
};

struct Reservacion {
  Fila fila;
  std::vector<Linea> lineas;
  bool viva = true;     // neither cancelled nor closed
  bool enCasa = false;  // who has arrived has not left
};

std::vector<Reservacion> Junta(ado::Recordset& rs) {
  std::vector<Reservacion> reservaciones;
  for (; !rs.Eof(); rs.MoveNext()) {
    const std::string folio = Celda(rs, kFolio);
    if (reservaciones.empty() || reservaciones.back().fila.folio != folio) {
      Reservacion& nueva = reservaciones.emplace_back();
      nueva.fila.folio = folio;
      nueva.fila.llegada = CeldaDia(rs, kLlegada);
      nueva.fila.salida = CeldaDia(rs, kSalida);
      nueva.fila.estado = com::Mayusculas(Celda(rs, kEstado));
      nueva.fila.referencia = Celda(rs, kReferencia);
      nueva.fila.huesped = Celda(rs, kHuesped);
      if (nueva.fila.huesped.empty()) nueva.fila.huesped = Celda(rs, kCliente);
      nueva.viva = nueva.fila.estado != anfitrion::estado::kCerrada;
    }
    const std::string habitacion = Celda(rs, kHabitacion);
    if (habitacion.empty()) continue;
    Reservacion& suya = reservaciones.back();
    AgregaHabitacion(suya.fila.habitaciones, habitacion);
    suya.lineas.push_back(
        {com::Plegado(habitacion),
         {CeldaDia(rs, kInicio), CeldaDia(rs, kFin)},
         static_cast<int>(CeldaNumero(rs, kAdultos) + CeldaNumero(rs, kMenores) + CeldaNumero(rs, kInfantes)),
         false});
  }
  return reservaciones;
}

int PersonasDe(const std::vector<Linea>& lineas, com::Fecha noche) {
  int personas = 0;
  for (const Linea& l : lineas) {
    if (l.noches.inicio <= noche && noche < l.noches.fin) personas += l.personas;
  }
  return personas;
}

// On the night with the most of them.
int MasPersonas(const std::vector<Linea>& lineas) {
  int mas = 0;
  for (const Linea& l : lineas) mas = std::max({mas, l.personas, PersonasDe(lineas, l.noches.inicio)});
  return mas;
}

// --- stays

struct Estancia {
  std::string folio, habitaciones;
  Noches noches;
  bool cerrada = false;  // its guests have left
  bool tieneReservacion = false;
};

std::vector<Estancia> LeeEstancias(const Fuente& fuente, std::string_view cuales, com::Fecha desde, com::Fecha hasta) {
  ado::TextoSQL sql(kEstancias);
  sql.Agrega(cuales, {fuente.dia(desde), fuente.dia(hasta)});
  const ado::RecordsetPtr rs = Ejecuta(fuente, sql);
  // Put in order here: asked for an order by folio, the database would walk through all stays that there ever were.
  std::map<std::string, Estancia> porFolio;
  for (; !rs->Eof(); rs->MoveNext()) {
    const std::string folio = Celda(*rs, 0);
    const auto [suya, nueva] = porFolio.try_emplace(folio);
    if (nueva) {
      const bool cerrada = com::IgualSinCaja(Celda(*rs, 4), anfitrion::estado::kCerrada);
      suya->second = {folio, "", {CeldaDia(*rs, 1), CeldaDia(*rs, 2)}, cerrada, false};
    }
    AgregaHabitacion(suya->second.habitaciones, Celda(*rs, 3));
  }
  std::vector<Estancia> estancias;
  estancias.reserve(porFolio.size());
  for (auto& [folio, estancia] : porFolio) estancias.push_back(std::move(estancia));
  return estancias;
}

std::vector<std::string> Separa(const std::string& habitaciones) {
  std::vector<std::string> claves;
  for (std::size_t i = 0; i < habitaciones.size();) {
    const std::size_t fin = std::min(habitaciones.find(',', i), habitaciones.size());
    claves.push_back(com::Plegado(habitaciones.substr(i, fin - i)));
    i = fin + 1;
  }
  return claves;
}

struct LineaDe {
  Reservacion* reservacion;
  Linea* linea;
};
using PorHabitacion = std::unordered_map<std::string, std::vector<LineaDe>>;

PorHabitacion LineasPorHabitacion(std::vector<Reservacion>& reservaciones) {
  PorHabitacion lineas;
  for (Reservacion& r : reservaciones) {
    for (Linea& l : r.lineas) lineas[l.habitacion].push_back({&r, &l});
  }
  return lineas;
}

// The reservation's guests leave when the last of its stays in progress ends; those of closed ones have left.
void Aloja(Reservacion& r, const Estancia& estancia) {
  Fila& fila = r.fila;
  const bool manda = !fila.llego || (!estancia.cerrada && !r.enCasa);
  if (manda || estancia.cerrada != r.enCasa) {
    fila.salida = manda ? estancia.noches.fin : std::max(fila.salida, estancia.noches.fin);
    fila.estancia = estancia.folio;
  }
  r.enCasa = r.enCasa || !estancia.cerrada;
  fila.llego = true;
}

// Gives each line the stays that belong to it (alojamiento.h), room by room.
void ReparteEstancias(const PorHabitacion& lineas, std::vector<Estancia>& estancias) {
  for (Estancia& estancia : estancias) {
    for (const std::string& clave : Separa(estancia.habitaciones)) {
      const auto deHabitacion = lineas.find(clave);
      if (deHabitacion == lineas.end()) continue;
      const LineaDe* suya = nullptr;
      std::optional<int> cerca;
      for (const LineaDe& l : deHabitacion->second) {
        const auto lejos = Lejania(l.linea->noches, estancia.noches);
        if (!lejos || (cerca && *cerca <= *lejos)) continue;
        cerca = lejos;
        suya = &l;
      }
      if (suya == nullptr) continue;
      estancia.tieneReservacion = true;
      suya->linea->alojada = true;
      Aloja(*suya->reservacion, estancia);
    }
  }
}

// Who changes rooms stays: a line without a stay that begins on the day on which the stays end goes on with them.
// A closed stay that was to end later ended before: nobody knows when.
void SigueEnOtra(Reservacion& r, com::Fecha dia) {
  if (!r.enCasa && r.fila.salida > dia) return;
  const auto sigue = [&](const Linea& l) {
    return !l.alojada && l.noches.inicio == r.fila.salida && l.noches.fin > l.noches.inicio;
  };
  for (auto l = std::ranges::find_if(r.lineas, sigue); l != r.lineas.end(); l = std::ranges::find_if(r.lineas, sigue)) {
    r.fila.salida = l->noches.fin;
    r.enCasa = true;
  }
}

void AgregaLasQueAcabaron(const Fuente& fuente, com::Fecha dia, const ado::TextoSQL& deEstancias,
                          std::vector<Reservacion>& reservaciones) {
  ado::TextoSQL sql(kReservaciones);
  const std::string texto = fuente.dia(dia);
  sql.Agrega(kAcabaron, {texto, texto}).Agrega(deEstancias).Agrega(")").Agrega(kEnOrden);
  for (Reservacion& r : Junta(*Ejecuta(fuente, sql))) {
    const auto misma = [&](const Reservacion& otra) { return otra.fila.folio == r.fila.folio; };
    if (std::ranges::none_of(reservaciones, misma)) reservaciones.push_back(std::move(r));
  }
}

// Nothing tells yet that its guests came.
bool Falta(const Reservacion& r, com::Fecha dia) { return r.viva && !r.fila.llego && r.fila.salida >= dia; }

// The stays of the day, and those that ended before it of the reservations that have none on the day: their guests were
// here and left, or changed rooms. Gives both, and the reservations that ended before the day and whose guests they
// are.
std::vector<Estancia> AlojaHuespedes(const Fuente& fuente, com::Fecha dia, std::vector<Reservacion>& reservaciones) {
  const std::string texto = fuente.dia(dia);
  std::vector<Estancia> estancias = LeeEstancias(fuente, kEstanciasDelDia, dia, dia);
  AgregaLasQueAcabaron(fuente, dia, ado::TextoSQL(kEstanciasDelDia, {texto, texto}), reservaciones);
  ReparteEstancias(LineasPorHabitacion(reservaciones), estancias);

  com::Fecha primera = dia;
  for (const Reservacion& r : reservaciones) {
    if (Falta(r, dia)) primera = std::min(primera, r.fila.llegada);
  }
  if (primera == dia) return estancias;
  std::vector<Estancia> pasadas = LeeEstancias(fuente, kEstanciasPasadas, primera, dia);
  const PorHabitacion lineas = LineasPorHabitacion(reservaciones);
  const auto esDeQuienFalta = [&](const Estancia& e) {
    return std::ranges::any_of(Separa(e.habitaciones), [&](const std::string& clave) {
      const auto suyas = lineas.find(clave);
      return suyas != lineas.end() && std::ranges::any_of(suyas->second, [&](const LineaDe& l) {
               return Falta(*l.reservacion, dia) && SeTocan(l.linea->noches, e.noches);
             });
    });
  };
  std::erase_if(pasadas, [&](const Estancia& e) { return !esDeQuienFalta(e); });
  if (pasadas.empty()) return estancias;
  ado::TextoSQL folios("CI.Ci_Folio IN (");
  for (const Estancia& e : pasadas) folios.Agrega(&e == &pasadas.front() ? "'?'" : ", '?'", {Literal(e.folio)});
  AgregaLasQueAcabaron(fuente, dia, folios.Agrega(")"), reservaciones);
  ReparteEstancias(LineasPorHabitacion(reservaciones), pasadas);
  std::ranges::move(pasadas, std::back_inserter(estancias));
  return estancias;
}

// --- free rooms

std::vector<LibresDeTipo> LeeLibres(com::Fecha dia) {
  std::vector<com::Fecha> noches;
  noches.reserve(kNochesLibres);
  for (int n = 0; n < kNochesLibres; ++n) noches.push_back(com::MasDias(dia, n));
  const kv207::sentencias::Criterio criterio{kv207::ModoVista::PorTipo,
                                             kv207::sentencias::Condicion(kv207::ModoVista::PorTipo, {}), ""};
  kv207::sentencias::ArmaTotales(publico::NuevaSentencia(), kv207::ModoVista::PorTipo);
  const kv207::TotalesTablero totales(*publico::Ejecuta());
  const auto lector = publico::Sistema().ObtenConexion()->LeeConjuntos() ? kv207::LeePorConjuntos(criterio, noches)
                                                                         : kv207::LeePorCelda(criterio, noches);
  std::vector<LibresDeTipo> libres;
  const ado::RecordsetPtr tipos = Ejecuta(ado::TextoSQL(kTipos));
  for (; !tipos->Eof(); tipos->MoveNext()) {
    const std::string clave = com::TextoDe(tipos->Fields(0).Value());
    LibresDeTipo tipo{com::RecortaDerecha(clave), Celda(*tipos, 1), totales.De(clave), {}};
    if (tipo.total == 0) continue;  // a type without rooms
    lector->Fila(clave);
    for (int n = 0; n < kNochesLibres; ++n) {
      tipo.noches.push_back(kv207::CalculaCelda(kv207::ModoVista::PorTipo, tipo.total, lector->Noche(n)).libres);
    }
    libres.push_back(std::move(tipo));
  }
  return libres;
}

// --- lists

void Pon(Dia& dia, Lista lista, const Fila& fila, int personas) {
  Fila& puesta = dia.listas[static_cast<std::size_t>(lista)].emplace_back(fila);
  puesta.habitaciones = Espaciadas(fila.habitaciones);
  puesta.personas = personas;
}

// Who has arrived: leaves today, left today, or sleeps here.
void ReparteEstadia(Dia& dia, const Reservacion& r) {
  const com::Fecha salida = r.fila.salida;
  // Who stays longer than booked is as many as on the last night that was.
  const auto personas = [&](com::Fecha noche) {
    const int suyas = PersonasDe(r.lineas, noche);
    return suyas > 0 ? suyas : MasPersonas(r.lineas);
  };
  if (salida == dia.fecha) Pon(dia, Lista::Salidas, r.fila, personas(com::MasDias(dia.fecha, -1)));
  if (salida > dia.fecha && r.enCasa) Pon(dia, Lista::EnCasa, r.fila, personas(dia.fecha));
}

void Reparte(Dia& dia, Reservacion& r) {
  namespace estado = anfitrion::estado;
  Fila& fila = r.fila;
  const bool deAntes = fila.llegada < dia.fecha, termino = fila.salida < dia.fecha;
  if (fila.llego) {
    SigueEnOtra(r, dia.fecha);
  } else if (!r.viva || termino) {
    return;
  } else if (fila.estado == estado::kAplicada || (!dia.llevaEstancias && deAntes)) {
    fila.llego = r.enCasa = true;
  }
  if (r.viva && fila.llegada == dia.fecha) Pon(dia, Lista::Llegadas, fila, MasPersonas(r.lineas));
  if (fila.llego) return ReparteEstadia(dia, r);
  if (deAntes && (fila.estado == estado::kActiva || fila.estado == estado::kConfirmada)) {
    Pon(dia, Lista::NoLlegaron, fila, MasPersonas(r.lineas));
  }
}

}  // namespace

std::string_view NombreDe(Lista lista) { return kNombres[static_cast<std::size_t>(lista)]; }
std::string_view TituloDe(Lista lista) { return kTitulos[static_cast<std::size_t>(lista)]; }

std::optional<Lista> ListaDe(std::string_view nombre) {
  const auto lugar = std::ranges::find(kNombres, nombre);
  if (lugar == kNombres.end()) return std::nullopt;
  return static_cast<Lista>(lugar - kNombres.begin());
}

std::vector<Fila> LeeFilas(const std::vector<std::string>& folios) {
  if (folios.empty()) return {};
  ado::TextoSQL sql(kReservaciones);
  sql.Agrega("R.Rs_Folio IN (");
  for (const std::string& folio : folios) {
    sql.Agrega(&folio == &folios.front() ? "'?'" : ", '?'", {Literal(folio)});
  }
  sql.Agrega(")").Agrega(kEnOrden);
  std::map<std::string, Fila> leidas;
  for (Reservacion& r : Junta(*Ejecuta(sql))) {
    r.fila.habitaciones = Espaciadas(r.fila.habitaciones);
    r.fila.personas = MasPersonas(r.lineas);
    leidas[r.fila.folio] = std::move(r.fila);
  }
  std::vector<Fila> filas;
  for (const std::string& folio : folios) {
    if (const auto leida = leidas.find(folio); leida != leidas.end()) filas.push_back(std::move(leida->second));
  }
  return filas;
}

Dia LeeDia(com::Fecha fecha) {
  Dia dia = LeeListas(DelAnfitrion(), fecha);
  dia.libres = LeeLibres(dia.fecha);
  return dia;
}

Dia LeeListas(const Fuente& fuente, com::Fecha fecha) {
  Dia dia;
  dia.fecha = com::SoloFecha(fecha);
  dia.llevaEstancias = !Ejecuta(fuente, ado::TextoSQL(kAlgunaEstancia))->Eof();
  ado::TextoSQL sql(kReservaciones);
  const std::string texto = fuente.dia(dia.fecha);
  sql.Agrega(kTocanElDia, {texto, texto}).Agrega(kEnOrden);
  std::vector<Reservacion> reservaciones = Junta(*Ejecuta(fuente, sql));
  std::vector<Estancia> estancias;
  if (dia.llevaEstancias) estancias = AlojaHuespedes(fuente, dia.fecha, reservaciones);
  std::ranges::stable_sort(reservaciones, {}, [](const Reservacion& r) { return r.fila.llegada; });
  for (Reservacion& r : reservaciones) Reparte(dia, r);
  for (const Estancia& e : estancias) {
    if (e.tieneReservacion) continue;
    Reservacion sin;
    sin.fila.estancia = e.folio;
    sin.fila.habitaciones = e.habitaciones;
    sin.fila.llegada = e.noches.inicio;
    Aloja(sin, e);
    ReparteEstadia(dia, sin);
  }
  return dia;
}

// --- Hoy

void Hoy::Abre() {
  dia_ = LeeDia(publico::Utilerias().FechaServidor());
  indice_.Relee();
  if (!busqueda_.empty()) Busca(busqueda_);
}

bool Hoy::Prepara() { return indice_.Adelanta(); }

void Hoy::Elige(Lista lista) {
  lista_ = lista;
  Busca("");
}

void Hoy::Busca(const std::string& texto) {
  busqueda_ = texto;
  hallazgo_ = {};
  halladas_.clear();
  if (com::Recorta(texto).empty()) return;
  hallazgo_ = indice_.Busca(texto, dia_.fecha, kLimite);
  halladas_ = LeeFilas(hallazgo_.folios);
  for (Fila& fila : halladas_) {
    const Fila* hoy = DelDia(fila.folio);
    if (hoy == nullptr) continue;
    fila.estancia = hoy->estancia;
    fila.llego = hoy->llego;
  }
}

const Fila* Hoy::DelDia(const std::string& folio) const {
  for (const Lista lista : {Lista::EnCasa, Lista::Salidas, Lista::Llegadas}) {
    const std::vector<Fila>& filas = dia_.listas[static_cast<std::size_t>(lista)];
    const auto suya = std::ranges::find(filas, folio, &Fila::folio);
    if (suya != filas.end()) return &*suya;
  }
  return nullptr;
}

const std::vector<Fila>& Hoy::filas() const {
  return com::Recorta(busqueda_).empty() ? dia_.listas[static_cast<std::size_t>(lista_)] : halladas_;
}

void Hoy::AbreFila(int fila) const {
  if (fila < 0 || static_cast<std::size_t>(fila) >= filas().size()) {
    throw com::Error(com::error::kArgumento, "No hay un renglón " + std::to_string(fila));
  }
  const Fila& elegida = filas()[static_cast<std::size_t>(fila)];
  if (elegida.folio.empty()) {
    throw com::Error(com::error::kArgumento, "La estancia " + elegida.estancia + " no tiene reservación");
  }
  if (alAbrir) alAbrir(elegida.folio);
}

}  // namespace recepcion
