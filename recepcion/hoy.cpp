#include "recepcion/hoy.h"

#include <algorithm>
#include <map>
#include <unordered_map>

#include "availability/ocupacion.h"
#include "host/contract/estados.h"
#include "platform/com/error.h"
#include "publico/publico.h"
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
  kInfantes
};
// One row a room. Who has no guest is known by who pays.
constexpr std::string_view kReservaciones =
    "SELECT R.Rs_Folio, R.Rs_Llegada, R.Rs_Salida, R.Es_Cve_Estado, R.Rs_Referencia, "
    "H.Cl_Razon_Social_1 AS Huesped, C.Cl_Razon_Social_1 AS Cliente, "
    "D.Hb_Cve_Habitacion, D.Rsd_Adultos, D.Rsd_Menores, D.Rsd_Infantes FROM Reservacion R "
    "LEFT JOIN Reservacion_Detalle D ON D.Rs_Folio = R.Rs_Folio "
    "LEFT JOIN Cliente H ON H.Cl_Cve_Cliente = R.Rs_Huesped "
    "LEFT JOIN Cliente C ON C.Cl_Cve_Cliente = R.Cl_Cve_Cliente WHERE ";
constexpr std::string_view kEnOrden = " ORDER BY R.Rs_Llegada, R.Rs_Folio, D.Rsd_Id";
// Stays that touch the day.
constexpr std::string_view kEstancias =
    "SELECT CI.Ci_Folio, CI.Ci_Llegada, CI.Ci_Salida, CID.Hb_Cve_Habitacion FROM Check_In CI "
    "INNER JOIN Check_In_Detalle CID ON CID.Ci_Folio = CI.Ci_Folio "
    "WHERE CI.Es_Cve_Estado NOT IN ('CA','CE') AND CI.Ci_Salida >= '?' AND CI.Ci_Llegada <= '? 23:59' "
    "ORDER BY CI.Ci_Folio";
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

std::vector<Fila> Junta(ado::Recordset& rs) {
  std::vector<Fila> filas;
  for (; !rs.Eof(); rs.MoveNext()) {
    const std::string folio = Celda(rs, kFolio);
    if (filas.empty() || filas.back().folio != folio) {
      Fila& nueva = filas.emplace_back();
      nueva.folio = folio;
      nueva.llegada = CeldaDia(rs, kLlegada);
      nueva.salida = CeldaDia(rs, kSalida);
      nueva.estado = com::Mayusculas(Celda(rs, kEstado));
      nueva.referencia = Celda(rs, kReferencia);
      nueva.huesped = Celda(rs, kHuesped);
      if (nueva.huesped.empty()) nueva.huesped = Celda(rs, kCliente);
    }
    Fila& fila = filas.back();
    AgregaHabitacion(fila.habitaciones, Celda(rs, kHabitacion));
    fila.personas +=
        static_cast<int>(CeldaNumero(rs, kAdultos) + CeldaNumero(rs, kMenores) + CeldaNumero(rs, kInfantes));
  }
  return filas;
}

// --- stays

struct Estancia {
  std::string folio, habitaciones;
  com::Fecha llegada, salida;
  bool tieneReservacion = false;
};

std::vector<Estancia> LeeEstancias(const Fuente& fuente, com::Fecha dia) {
  const std::string texto = fuente.dia(dia);
  const ado::TextoSQL sql(kEstancias, {texto, texto});
  const ado::RecordsetPtr rs = Ejecuta(fuente, sql);
  std::vector<Estancia> estancias;
  for (; !rs->Eof(); rs->MoveNext()) {
    const std::string folio = Celda(*rs, 0);
    if (estancias.empty() || estancias.back().folio != folio) {
      estancias.push_back({folio, "", CeldaDia(*rs, 1), CeldaDia(*rs, 2)});
    }
    AgregaHabitacion(estancias.back().habitaciones, Celda(*rs, 3));
  }
  return estancias;
}

std::vector<std::string> Separa(const std::string& habitaciones) {
  std::vector<std::string> claves;
  for (std::size_t i = 0; i < habitaciones.size();) {
    const std::size_t fin = std::min(habitaciones.find(',', i), habitaciones.size());
    claves.push_back(habitaciones.substr(i, fin - i));
    i = fin + 1;
  }
  return claves;
}

// Gives each reservation the stay that has one of its rooms on one of its nights: of two such reservations the one that
// was to arrive on the stay's first day, or the first.
void ReparteEstancias(std::vector<Fila>& filas, std::vector<Estancia>& estancias) {
  std::unordered_map<std::string, std::vector<Fila*>> porHabitacion;
  for (Fila& fila : filas) {
    for (const std::string& clave : Separa(fila.habitaciones)) porHabitacion[com::Plegado(clave)].push_back(&fila);
  }
  for (Estancia& estancia : estancias) {
    Fila* suya = nullptr;
    for (const std::string& clave : Separa(estancia.habitaciones)) {
      for (Fila* fila : porHabitacion[com::Plegado(clave)]) {
        if (fila->llegada >= estancia.salida || fila->salida <= estancia.llegada) continue;
        if (suya == nullptr || (fila->llegada == estancia.llegada && suya->llegada != estancia.llegada)) suya = fila;
      }
    }
    if (suya == nullptr) continue;
    estancia.tieneReservacion = true;
    // Rooms of one reservation may be registered one by one: the last to leave counts.
    suya->salida = suya->llego ? std::max(suya->salida, estancia.salida) : estancia.salida;
    suya->estancia = estancia.folio;
    suya->llego = true;
  }
}

// --- free rooms

std::vector<LibresDeTipo> LeeLibres(com::Fecha dia) {
  std::vector<com::Fecha> noches;
  noches.reserve(kNochesLibres);
  for (int n = 0; n < kNochesLibres; ++n) noches.push_back(com::MasDias(dia, n));
  const kv207::sentencias::Criterio criterio{kv207::ModoVista::PorTipo,
                                             kv207::sentencias::Condicion(kv207::ModoVista::PorTipo, {}), ""};
  kv207::sentencias::Totales(publico::NuevaSentencia(), kv207::ModoVista::PorTipo);
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
  for (Fila& fila : Junta(*Ejecuta(sql))) {
    fila.habitaciones = Espaciadas(fila.habitaciones);
    leidas[fila.folio] = std::move(fila);
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
  sql.Agrega("R.Rs_Salida >= '?' AND R.Rs_Llegada <= '? 23:59' AND R.Es_Cve_Estado NOT IN ('CA','CE')", {texto, texto});
  sql.Agrega(kEnOrden);
  std::vector<Fila> filas = Junta(*Ejecuta(fuente, sql));
  std::vector<Estancia> estancias = LeeEstancias(fuente, dia.fecha);
  ReparteEstancias(filas, estancias);
  const auto pon = [&](Lista lista, const Fila& fila) {
    dia.listas[static_cast<std::size_t>(lista)].push_back(fila);
    dia.listas[static_cast<std::size_t>(lista)].back().habitaciones = Espaciadas(fila.habitaciones);
  };
  const auto ponEstadia = [&](const Fila& fila) {
    if (fila.salida == dia.fecha) pon(Lista::Salidas, fila);
    if (fila.salida > dia.fecha) pon(Lista::EnCasa, fila);
  };
  for (Fila& fila : filas) {
    const bool esDeAntes = fila.llegada < dia.fecha;
    fila.llego = fila.llego || fila.estado == anfitrion::estado::kAplicada || (!dia.llevaEstancias && esDeAntes);
    if (fila.llegada == dia.fecha) pon(Lista::Llegadas, fila);
    if (fila.llego) {
      ponEstadia(fila);
    } else if (esDeAntes &&
               (fila.estado == anfitrion::estado::kActiva || fila.estado == anfitrion::estado::kConfirmada)) {
      pon(Lista::NoLlegaron, fila);
    }
  }
  for (const Estancia& e : estancias) {
    if (e.tieneReservacion) continue;
    Fila fila;
    fila.estancia = e.folio;
    fila.llegada = e.llegada;
    fila.salida = e.salida;
    fila.habitaciones = e.habitaciones;
    fila.llego = true;
    ponEstadia(fila);
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
