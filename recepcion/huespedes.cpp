#include "recepcion/huespedes.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <set>
#include <utility>

#include "host/contract/estados.h"
#include "host/contract/parametros.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/regional/regional.h"
#include "publico/controles.h"
#include "publico/publico.h"
#include "recepcion/alojamiento.h"
#include "recepcion/cuadro.h"
#include "recepcion/lectura.h"
#include "schema/esquema.h"

namespace recepcion {

namespace {

constexpr std::string_view kClientes =
    "SELECT Cl_Cve_Cliente, Cl_Razon_Social_1, Cl_Telefono, Cl_Correo, Es_Cve_Estado FROM Cliente";
constexpr std::string_view kReservaciones =
    "SELECT TOP 200 Rs_Folio FROM Reservacion WHERE Cl_Cve_Cliente = '?' OR Rs_Huesped = '?' "
    "ORDER BY Rs_Llegada DESC, Rs_Folio DESC";
constexpr std::string_view kPasadas =
    "SELECT TOP 50 Rs_Folio, Rs_Llegada, Rs_Salida, Rs_Notas FROM Reservacion WHERE Rs_Huesped = '?' AND "
    "Rs_Llegada <= '?' AND Es_Cve_Estado <> 'CA' ORDER BY Rs_Llegada DESC, Rs_Folio DESC";
// The stays that meet a reservation's lines, each with all lines that it meets. CROSS JOIN keeps the order that the
// indexes serve.
constexpr std::string_view kEstancias =
    "SELECT D.Hb_Cve_Habitacion, CI.Ci_Folio, CI.Ci_Llegada, CI.Ci_Salida, L.Rs_Folio, L.Rsd_Fecha_Inicio, "
    "L.Rsd_Fecha_Fin FROM Reservacion_Detalle D CROSS JOIN Check_In_Detalle CID CROSS JOIN Check_In CI "
    "CROSS JOIN Reservacion_Detalle L CROSS JOIN Reservacion R WHERE D.Rs_Folio = '?' "
    "AND CID.Hb_Cve_Habitacion = D.Hb_Cve_Habitacion AND CI.Ci_Folio = CID.Ci_Folio AND CI.Es_Cve_Estado <> 'CA' "
    "AND CI.Ci_Salida > D.Rsd_Fecha_Inicio AND CI.Ci_Llegada < D.Rsd_Fecha_Fin "
    "AND L.Hb_Cve_Habitacion = D.Hb_Cve_Habitacion AND L.Rsd_Fecha_Fin > CI.Ci_Llegada "
    "AND L.Rsd_Fecha_Inicio < CI.Ci_Salida AND R.Rs_Folio = L.Rs_Folio AND R.Es_Cve_Estado <> 'CA' "
    "ORDER BY D.Hb_Cve_Habitacion, CI.Ci_Folio, L.Rs_Folio, L.Rsd_Id";
constexpr std::string_view kHabitaciones =
    "SELECT D.Hb_Cve_Habitacion FROM Reservacion_Detalle D INNER JOIN Habitacion H ON H.Hb_Cve_Habitacion = "
    "D.Hb_Cve_Habitacion WHERE D.Rs_Folio = '?' AND H.Es_Cve_Estado <> 'BA' ORDER BY D.Rsd_Id";
constexpr std::string_view kFormaPago =
    "SELECT TOP 1 R.Fp_Cve_Forma_Pago FROM Reservacion R INNER JOIN Forma_Pago F ON F.Fp_Cve_Forma_Pago = "
    "R.Fp_Cve_Forma_Pago WHERE R.Rs_Huesped = '?' AND R.Es_Cve_Estado <> 'CA' AND F.Es_Cve_Estado <> 'BA' AND "
    "F.Fp_Tipo <> '?' ORDER BY R.Rs_Fecha DESC, R.Rs_Folio DESC";
constexpr std::string_view kInserta =
    "INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1, Cl_Telefono, Cl_Correo, Es_Cve_Estado) "
    "VALUES ('?', '?', '?', '?', 'AC')";

constexpr std::size_t kNombreLargo = 8;  // letters from which two may differ

[[noreturn]] void Rechaza(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

// Steps (a letter more, less or another) from one text to the other, counted up to limite + 1.
int Distancia(std::string_view a, std::string_view b, int limite) {
  const int largo = static_cast<int>(a.size()) - static_cast<int>(b.size());
  if (largo > limite || -largo > limite) return limite + 1;
  std::vector<int> antes(b.size() + 1), ahora(b.size() + 1);
  std::iota(antes.begin(), antes.end(), 0);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    ahora[0] = static_cast<int>(i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      ahora[j] = std::min({antes[j] + 1, ahora[j - 1] + 1, antes[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
    }
    std::swap(antes, ahora);
    if (*std::ranges::min_element(antes) > limite) return limite + 1;
  }
  return antes.back();
}

// Words in order, one blank between them: every word of the one is among the other's.
bool Contiene(const std::vector<std::string>& todas, const std::vector<std::string>& algunas) {
  return std::ranges::includes(todas, algunas);
}

bool NombreParecido(const std::string& uno, const std::string& otro) {
  constexpr int kErratas = 2;
  if (uno.empty() || otro.empty()) return false;
  if (uno == otro) return true;
  const std::vector<std::string> a = Palabras(uno), b = Palabras(otro);
  if (std::min(a.size(), b.size()) >= 2 && (Contiene(a, b) || Contiene(b, a))) return true;
  return std::min(uno.size(), otro.size()) >= kNombreLargo && Distancia(uno, otro, kErratas) <= kErratas;
}

std::string Unidas(const std::vector<std::string>& palabras) {
  std::string unidas;
  for (const std::string& p : palabras) unidas += (unidas.empty() ? "" : " ") + p;
  return unidas;
}

// The first letter, and one behind an apostrophe or a hyphen: "O'Hara", "Pérez-Luna".
std::string ConMayuscula(const std::string& palabra) {
  std::string nueva;
  bool grande = true;
  for (std::size_t i = 0; i < palabra.size();) {
    const std::size_t desde = i;
    static_cast<void>(com::LeeUtf8(palabra, i));
    const std::string letra = palabra.substr(desde, i - desde);
    nueva += grande ? com::Mayusculas(letra) : letra;
    grande = letra == "'" || letra == "-";
  }
  return nueva;
}

// The rooms that the reservation's guests slept in: those whose stays belong to it (alojamiento.h).
std::set<std::string> Dormidas(const std::string& folio) {
  std::set<std::string> dormidas;
  ado::TextoSQL sql;
  sql.Agrega(kEstancias, {Literal(folio)});
  const ado::RecordsetPtr rs = Ejecuta(sql);
  while (!rs->Eof()) {
    const std::string habitacion = Celda(*rs, 0), estancia = Celda(*rs, 1);
    const Noches noches{CeldaDia(*rs, 2), CeldaDia(*rs, 3)};
    std::string suya;
    std::optional<int> cerca;
    for (; !rs->Eof() && Celda(*rs, 0) == habitacion && Celda(*rs, 1) == estancia; rs->MoveNext()) {
      const auto lejos = Lejania({CeldaDia(*rs, 5), CeldaDia(*rs, 6)}, noches);
      if (!lejos || (cerca && *cerca <= *lejos)) continue;
      cerca = lejos;
      suya = Celda(*rs, 4);
    }
    if (suya == folio) dormidas.insert(habitacion);
  }
  return dormidas;
}

// With the rooms that are in service, those that were slept in first.
UltimaEstancia ConHabitaciones(UltimaEstancia ultima, const std::set<std::string>& dormidas) {
  ado::TextoSQL sql;
  sql.Agrega(kHabitaciones, {Literal(ultima.folio)});
  const ado::RecordsetPtr rs = Ejecuta(sql);
  for (; !rs->Eof(); rs->MoveNext()) ultima.habitaciones.push_back(Celda(*rs, 0));
  std::stable_partition(ultima.habitaciones.begin(), ultima.habitaciones.end(),
                        [&](const std::string& h) { return dormidas.contains(h); });
  return ultima;
}

bool Cabe(const std::string& texto, std::size_t largo) { return com::LargoUtf8(texto) <= largo; }

}  // namespace

Huespedes::Huespedes(SinAcento sinAcento, bool (*direccionValida)(const std::string&))
    : sinAcento_(sinAcento), direccionValida_(direccionValida), campo_(kv207::control::kHuesped) {}

// --- the clients -----------------------------------------------------------------------------------------------------

Huespedes::Entrada Huespedes::EntradaDe(const Persona& persona) const {
  Entrada e;
  e.persona = persona;
  std::vector<std::string> nombre = Palabras(Plano(persona.nombre, sinAcento_));
  for (const std::string& p : PalabrasBuscadas(Plano(persona.nombre, sinAcento_))) e.palabras += " " + p;
  const std::string clave = Plano(persona.clave, sinAcento_);
  e.palabras.append(" ").append(clave).append(" ").append(SinCeros(clave));
  for (const std::string* texto : {&persona.telefono, &persona.correo}) {
    for (const std::string& p : Palabras(Plano(*texto, sinAcento_))) e.palabras += " " + p;
  }
  std::ranges::sort(nombre);
  e.plano = Unidas(nombre);
  e.digitos = Digitos(persona.telefono);
  e.correo = Plano(persona.correo, sinAcento_);
  return e;
}

void Huespedes::Lee() {
  entradas_.clear();
  const ado::RecordsetPtr rs = Ejecuta(ado::TextoSQL(kClientes));
  entradas_.reserve(static_cast<std::size_t>(std::max(0, rs->RecordCount())));
  for (; !rs->Eof(); rs->MoveNext()) {
    entradas_.push_back(EntradaDe({Celda(*rs, 0), Celda(*rs, 1), Celda(*rs, 2), Celda(*rs, 3)}));
    entradas_.back().deBaja = com::IgualSinCaja(Celda(*rs, 4), esquema::kBaja);
  }
  std::ranges::sort(entradas_, [](const Entrada& a, const Entrada& b) {
    return a.palabras != b.palabras ? a.palabras < b.palabras : a.persona.clave < b.persona.clave;
  });
}

void Huespedes::Abre(const std::string& campo, const std::optional<EstanciaCaptada>& estancia) {
  Lee();
  campo_ = campo;
  estancia_ = estancia;
  Busca("");
}

void Huespedes::Busca(const std::string& texto) {
  busqueda_ = texto;
  total_ = 0;
  hallados_.clear();
  const std::string plano = Plano(texto, sinAcento_);
  const std::vector<std::string> palabras = Palabras(plano), juntas = Palabras(SinApostrofos(plano));
  for (const Entrada& e : entradas_) {
    const auto tiene = [&](const std::string& p) {
      return e.palabras.find(" " + p) != std::string::npos ||
             (EsParteDeTelefono(p) && e.digitos.find(p) != std::string::npos);
    };
    if (e.deBaja || (!std::ranges::all_of(palabras, tiene) && !std::ranges::all_of(juntas, tiene))) continue;
    if (++total_ <= kLimite) hallados_.push_back(e.persona);
  }
  Senala(hallados_.empty() ? -1 : 0);
}

void Huespedes::Senala(int fila) {
  if (fila < -1 || fila >= static_cast<int>(hallados_.size())) Rechaza("No hay un cliente " + std::to_string(fila));
  senalado_ = fila;
  reservaciones_.clear();
  ultima_.reset();
  if (fila < 0) return;
  const std::string& clave = hallados_[static_cast<std::size_t>(fila)].clave;
  reservaciones_ = ReservacionesDe(clave);
  ultima_ = UltimaEstanciaDe(clave, publico::Utilerias().FechaServidor());
}

void Huespedes::AbreReservacion(int fila) const {
  if (fila < 0 || fila >= static_cast<int>(reservaciones_.size())) {
    Rechaza("No hay una reservación " + std::to_string(fila));
  }
  if (alAbrir) alAbrir(reservaciones_[static_cast<std::size_t>(fila)].folio);
}

std::string Huespedes::HabitacionDeSiempre(std::string& ocupada) const {
  ocupada.clear();
  if (!ultima_ || ultima_->habitaciones.empty()) return {};
  const std::string& habitacion = ultima_->habitaciones.front();
  if (!estancia_) return habitacion;
  const auto& [llegada, salida] = estancia_->periodo;
  const int noches = com::DiasEntre(llegada, salida);
  if (noches < 1 || noches > kNochesMaximas) return habitacion;
  Cuadro cuadro;
  cuadro.Abre(llegada, std::max(noches, kNochesMinimas));
  const int fila = cuadro.FilaDe(habitacion);
  for (com::Fecha noche = llegada; fila >= 0 && noche < salida; noche = com::MasDias(noche, 1)) {
    const Barra* barra = cuadro.En(fila, noche, estancia_->folio);
    if (barra == nullptr) continue;
    ocupada = "la noche del " + regional::FechaCorta(noche);
    ocupada += barra->huesped.empty() ? " está bloqueada" : " es de " + barra->huesped;
    if (!barra->folio.empty()) ocupada += ", folio " + barra->folio;
    break;
  }
  return habitacion;
}

void Huespedes::Elige(bool conHabitacion, bool conNotas) {
  if (senalado_ < 0) Rechaza("No hay ningún cliente que elegir");
  Toma toma;
  toma.clave = hallados_[static_cast<std::size_t>(senalado_)].clave;
  if (conHabitacion) {
    std::string ocupada;
    toma.habitacion = HabitacionDeSiempre(ocupada);
    if (!ocupada.empty()) Rechaza("La habitación " + toma.habitacion + " no está libre: " + ocupada);
  }
  if (ultima_ && conNotas) toma.notas = ultima_->notas;
  if (campo_ == kv207::control::kHuesped) {
    ado::TextoSQL sql;
    sql.Agrega(kFormaPago, {Literal(toma.clave), anfitrion::tipo_pago::kTarjeta});
    if (const ado::RecordsetPtr rs = Ejecuta(sql); !rs->Eof()) toma.formaPago = Celda(*rs, 0);
  }
  if (alElegir) alElegir(campo_, toma);
}

// --- a new one -------------------------------------------------------------------------------------------------------

std::string Huespedes::SiguienteClave() const {
  constexpr std::size_t kCifras = 15;  // what a number holds exactly
  long long ultima = 0;
  for (const Entrada& e : entradas_) {
    if (com::SoloDigitos(e.persona.clave) && e.persona.clave.size() <= kCifras) {
      ultima = std::max(ultima, std::stoll(e.persona.clave));
    }
  }
  return regional::ConMascara(std::to_string(ultima + 1), publico::LeeTexto(anfitrion::parametro::kFormatoCliente));
}

Persona Huespedes::Propuesta() const {
  Persona nueva;
  nueva.clave = SiguienteClave();
  std::string nombre, telefono;
  for (std::size_t i = 0; i < busqueda_.size();) {
    const std::size_t fin = std::min(busqueda_.find(' ', i), busqueda_.size());
    const std::string parte = busqueda_.substr(i, fin - i);
    i = fin + 1;
    if (parte.empty()) continue;
    const bool numero = parte.find_first_not_of("0123456789()+-") == std::string::npos;
    std::string& suya = parte.find('@') != std::string::npos ? nueva.correo : numero ? telefono : nombre;
    suya += (suya.empty() ? "" : " ") + parte;
  }
  if (EsTelefono(Digitos(telefono))) nueva.telefono = telefono;
  nueva.nombre = NombrePropio(nombre);
  return nueva;
}

std::vector<Parecida> Huespedes::ParecidasA(const Persona& nueva) const {
  const Entrada suya = EntradaDe(nueva);
  std::array<std::vector<Parecida>, 3> grupos;
  for (const Entrada& e : entradas_) {
    if (e.deBaja) continue;
    if (MismoTelefono(e.digitos, suya.digitos)) {
      grupos[0].push_back({e.persona, "mismo teléfono"});
    } else if (!suya.correo.empty() && e.correo == suya.correo) {
      grupos[1].push_back({e.persona, "mismo correo"});
    } else if (NombreParecido(e.plano, suya.plano)) {
      grupos[2].push_back({e.persona, "nombre parecido"});
    }
  }
  constexpr std::size_t kMasParecidas = 20;
  std::vector<Parecida> parecidas;
  for (const auto& grupo : grupos) parecidas.insert(parecidas.end(), grupo.begin(), grupo.end());
  if (parecidas.size() > kMasParecidas) parecidas.resize(kMasParecidas);
  return parecidas;
}

// As it is stored. The screens look keys up between apostrophes, and % stands for all of them.
Persona Huespedes::Revisada(const Persona& nueva) const {
  Persona p{com::Mayusculas(com::Recorta(nueva.clave)), com::Recorta(nueva.nombre), com::Recorta(nueva.telefono),
            com::Recorta(nueva.correo)};
  p.clave = p.clave.empty() ? SiguienteClave()
                            : regional::ConMascara(p.clave, publico::LeeTexto(anfitrion::parametro::kFormatoCliente));
  if (p.clave.find_first_of("'%") != std::string::npos) Rechaza("La clave no admite apóstrofos ni el signo %");
  if (!Cabe(p.clave, esquema::kLargoClave)) {
    Rechaza("La clave admite " + std::to_string(esquema::kLargoClave) + " caracteres");
  }
  if (p.nombre.empty()) Rechaza("Falta el nombre");
  for (const std::string* texto : {&p.nombre, &p.telefono, &p.correo}) {
    if (!Cabe(*texto, esquema::kLargoTexto)) {
      Rechaza("Cada dato admite " + std::to_string(esquema::kLargoTexto) + " caracteres");
    }
  }
  if (!p.correo.empty() && !direccionValida_(p.correo)) {
    Rechaza("«" + p.correo + "» no es una dirección de correo, como ana@hotel.com");
  }
  return p;
}

void Huespedes::Inserta(const Persona& p) {
  const auto ocupada = [&] {
    return std::ranges::any_of(entradas_,
                               [&](const Entrada& e) { return com::IgualSinCaja(e.persona.clave, p.clave); });
  };
  const auto rechaza = [&] {
    throw com::Error(com::error::kRestriccion, "La clave " + p.clave + " ya es de otro cliente. Ahora se propone la " +
                                                   SiguienteClave() + "; revise y vuelva a guardar");
  };
  if (ocupada()) rechaza();
  ado::TextoSQL sql;
  sql.Agrega(kInserta, {Literal(p.clave), Literal(p.nombre), Literal(p.telefono), Literal(p.correo)});
  try {
    Ejecuta(sql);
  } catch (const com::Error&) {
    // Another desk may have taken the key since the clients were read.
    Lee();
    if (ocupada()) rechaza();
    throw;
  }
}

std::vector<Parecida> Huespedes::Crea(const Persona& nueva, bool aunqueParezca) {
  const Persona persona = Revisada(nueva);
  if (!aunqueParezca) {
    if (std::vector<Parecida> parecidas = ParecidasA(persona); !parecidas.empty()) return parecidas;
  }
  Inserta(persona);
  Lee();
  SenalaClave(persona.clave);
  return {};
}

void Huespedes::SenalaClave(const std::string& clave) {
  busqueda_ = clave;
  hallados_.clear();
  for (const Entrada& e : entradas_) {
    if (!e.deBaja && com::IgualSinCaja(e.persona.clave, clave)) hallados_.push_back(e.persona);
  }
  total_ = hallados_.size();
  Senala(hallados_.empty() ? -1 : 0);
}

// --- what the hotel knows of him -------------------------------------------------------------------------------------

std::vector<Fila> ReservacionesDe(const std::string& cliente) {
  ado::TextoSQL sql;
  const std::string clave = Literal(cliente);
  sql.Agrega(kReservaciones, {clave, clave});
  std::vector<std::string> folios;
  const ado::RecordsetPtr rs = Ejecuta(sql);
  for (; !rs->Eof(); rs->MoveNext()) folios.push_back(Celda(*rs, 0));
  return LeeFilas(folios);
}

std::optional<UltimaEstancia> UltimaEstanciaDe(const std::string& huesped, com::Fecha hoy) {
  ado::TextoSQL sql;
  sql.Agrega(kPasadas, {Literal(huesped), DiaSql(hoy)});
  const ado::RecordsetPtr rs = Ejecuta(sql);
  std::optional<UltimaEstancia> primera;
  for (; !rs->Eof(); rs->MoveNext()) {
    UltimaEstancia esta{Celda(*rs, 0), CeldaDia(*rs, 1), CeldaDia(*rs, 2), {}, Celda(*rs, 3)};
    const std::set<std::string> dormidas = Dormidas(esta.folio);
    if (!dormidas.empty()) return ConHabitaciones(std::move(esta), dormidas);
    if (!primera) primera = std::move(esta);
  }
  if (!primera) return std::nullopt;
  return ConHabitaciones(std::move(*primera), {});
}

std::string NombrePropio(const std::string& escrito) {
  const std::string menudas = com::Minusculas(escrito);
  if (escrito != menudas && escrito != com::Mayusculas(escrito)) return escrito;
  constexpr std::string_view kParticulas[] = {"de", "del", "la", "las", "los", "y"};
  std::string nombre;
  for (std::size_t i = 0; i < menudas.size();) {
    const std::size_t fin = std::min(menudas.find(' ', i), menudas.size());
    const std::string palabra = menudas.substr(i, fin - i);
    i = fin + 1;
    if (palabra.empty()) continue;
    const bool particula = !nombre.empty() && std::ranges::find(kParticulas, palabra) != std::end(kParticulas);
    if (!nombre.empty()) nombre += ' ';
    nombre += particula ? palabra : ConMayuscula(palabra);
  }
  return nombre;
}

}  // namespace recepcion
