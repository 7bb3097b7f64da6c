#include "recepcion/indice.h"

#include <algorithm>
#include <array>
#include <limits>

#include "host/contract/estados.h"
#include "platform/com/variant.h"
#include "recepcion/lectura.h"

namespace recepcion {

namespace {

constexpr int kFilasPorParte = 4000;

enum Columna : std::size_t {
  kFolio,
  kLlegada,
  kSalida,
  kEstado,
  kHuesped,
  kCliente,
  kReferencia,
  kCambio,
  kVersion,
  kHabitacion
};
constexpr std::string_view kColumnas =
    "R.Rs_Folio, R.Rs_Llegada, R.Rs_Salida, R.Es_Cve_Estado, R.Rs_Huesped, R.Cl_Cve_Cliente, R.Rs_Referencia, "
    "R.Fecha_Ult_Modif, V.Rv_Version, D.Hb_Cve_Habitacion FROM Reservacion R "
    "LEFT JOIN Reservacion_Detalle D ON D.Rs_Folio = R.Rs_Folio "
    "LEFT JOIN Reservacion_Version V ON V.Rs_Folio = R.Rs_Folio WHERE ";
constexpr std::string_view kVersiones = "SELECT SUM(Rv_Version) AS Cambios FROM Reservacion_Version";
constexpr std::string_view kClientes = "SELECT Cl_Cve_Cliente, Cl_Razon_Social_1, Cl_Telefono, Cl_Correo FROM Cliente";

void AgregaPalabras(std::string& destino, const std::string& texto, SinAcento sinAcento) {
  for (const std::string& palabra : PalabrasBuscadas(Plano(texto, sinAcento))) destino.append(1, ' ').append(palabra);
}

// A key is found with and without the zeros before it.
void AgregaClave(std::string& destino, const std::string& clave, SinAcento sinAcento) {
  AgregaPalabras(destino, clave, sinAcento);
  if (const std::string_view corta = SinCeros(clave); corta != clave) {
    AgregaPalabras(destino, std::string(corta), sinAcento);
  }
}

std::string Llave(const std::string& clave) { return com::Plegado(clave); }

double LeeVersiones() { return CeldaNumero(*Ejecuta(ado::TextoSQL(kVersiones)), 0); }

}  // namespace

// --- what is read ----------------------------------------------------------------------------------------------------

void Indice::LeeClientes(const std::string& clave) {
  ado::TextoSQL sql(kClientes);
  if (!clave.empty()) sql.Agrega(" WHERE Cl_Cve_Cliente = '?'", {Literal(clave)});
  const ado::RecordsetPtr filas = Ejecuta(sql);
  for (; !filas->Eof(); filas->MoveNext()) {
    const auto [lugar, nuevo] = porClave_.try_emplace(Llave(Celda(*filas, 0)), clientes_.size());
    if (nuevo) clientes_.emplace_back();
    Cliente& cliente = clientes_[lugar->second];
    cliente = {};
    AgregaPalabras(cliente.palabras, Celda(*filas, 1), sinAcento_);
    const std::string telefono = Celda(*filas, 2);
    AgregaPalabras(cliente.palabras, telefono, sinAcento_);
    AgregaPalabras(cliente.palabras, Celda(*filas, 3), sinAcento_);
    cliente.telefono = Digitos(telefono);
  }
}

// One who is not there yet has come since the clients were read.
std::size_t Indice::ClienteDe(const std::string& clave) {
  if (clave.empty()) return 0;
  const std::string llave = Llave(clave);
  if (!porClave_.contains(llave)) {
    LeeClientes(clave);
    if (porClave_.try_emplace(llave, clientes_.size()).second) clientes_.emplace_back();  // a key without a client
  }
  return porClave_.at(llave);
}

double Indice::Toma(ado::Recordset& filas) {
  double crecen = 0;
  Entrada* entrada = nullptr;
  for (; !filas.Eof(); filas.MoveNext()) {
    const std::string folio = Celda(filas, kFolio);
    if (entrada == nullptr || entrada->folio != folio) {
      const auto [lugar, nueva] = porFolio_.try_emplace(folio, entradas_.size());
      if (nueva) entradas_.emplace_back();
      entrada = &entradas_[lugar->second];
      crecen -= entrada->version;
      *entrada = {};
      entrada->folio = folio;
      Agrega(filas, *entrada);
      crecen += entrada->version;
    }
    AgregaClave(entrada->palabras, Celda(filas, kHabitacion), sinAcento_);
  }
  return crecen;
}

void Indice::Agrega(const ado::Recordset& fila, Entrada& entrada) {
  entrada.llegada = CeldaDia(fila, kLlegada);
  entrada.salida = CeldaDia(fila, kSalida);
  const std::string estado = Celda(fila, kEstado);
  entrada.libera = com::IgualSinCaja(estado, anfitrion::estado::kCancelada) ||
                   com::IgualSinCaja(estado, anfitrion::estado::kCerrada);
  entrada.huesped = ClienteDe(Celda(fila, kHuesped));
  entrada.cliente = ClienteDe(Celda(fila, kCliente));
  entrada.version = CeldaNumero(fila, kVersion);
  AgregaClave(entrada.palabras, entrada.folio, sinAcento_);
  AgregaPalabras(entrada.palabras, Celda(fila, kReferencia), sinAcento_);
  ultimoCambio_ = std::max(ultimoCambio_, CeldaDia(fila, kCambio));
}

bool Indice::Adelanta() {
  if (completo_) return false;
  if (!empezado_) {
    // Changes are counted first: one that comes in between is read once more, never missed.
    versiones_ = LeeVersiones();
    LeeClientes();
    empezado_ = true;
    return true;
  }
  ado::TextoSQL sql("SELECT TOP " + std::to_string(kFilasPorParte) + " ");
  sql.Agrega(kColumnas).Agrega("R.Rs_Folio > '?' ORDER BY R.Rs_Folio", {Literal(ultimo_)});
  const ado::RecordsetPtr filas = Ejecuta(sql);
  const bool hayMas = filas->RecordCount() == kFilasPorParte;
  const std::size_t antes = entradas_.size();
  static_cast<void>(Toma(*filas));
  completo_ = !hayMas || entradas_.size() == antes;
  // The last one may have further rooms beyond this part: it comes again with the next.
  if (hayMas && entradas_.size() > antes + 1) {
    porFolio_.erase(entradas_.back().folio);
    entradas_.pop_back();
  }
  if (!entradas_.empty()) ultimo_ = entradas_.back().folio;
  return !completo_;
}

void Indice::Vacia() {
  entradas_.clear();
  porFolio_.clear();
  ultimo_.clear();
  empezado_ = completo_ = false;
}

// Reservations that changed are those of the last day of changes and later. When that does not account for all changes
// (somebody removed one, or wrote without a date), all are read again.
void Indice::PonAlDia() {
  while (Adelanta()) {
  }
  const double ahora = LeeVersiones();
  if (ahora == versiones_) return;
  ado::TextoSQL sql("SELECT ");
  sql.Agrega(kColumnas);
  sql.Agrega("R.Fecha_Ult_Modif >= '?' ORDER BY R.Rs_Folio", {DiaSql(com::MasDias(ultimoCambio_, -1))});
  const double crecen = Toma(*Ejecuta(sql));
  if (versiones_ + crecen == ahora) {
    versiones_ = ahora;
    return;
  }
  Vacia();
  while (Adelanta()) {
  }
}

void Indice::Relee() {
  if (!completo_) return;  // all is still to be read
  LeeClientes();
  PonAlDia();
}

// --- the search ------------------------------------------------------------------------------------------------------

namespace {

// Digits that stand together are a telephone too, however it is cut: "+52 (55) 1234-5678". The words with such runs as
// one word each; nothing where there is none.
std::vector<std::string> ConTelefonos(const std::vector<std::string>& palabras) {
  std::vector<std::string> juntas;
  bool telefono = false;
  for (std::size_t i = 0; i < palabras.size();) {
    std::size_t fin = i;
    std::string digitos;
    while (fin < palabras.size() && com::SoloDigitos(palabras[fin])) digitos += palabras[fin++];
    if (fin - i > 1 && EsTelefono(digitos)) {
      telefono = true;
      juntas.push_back(digitos);
      i = fin;
    } else {
      juntas.push_back(palabras[i++]);
    }
  }
  return telefono ? juntas : std::vector<std::string>();
}

}  // namespace

// The ways to understand a text: days, and words of which each stands once among all ways.
struct Indice::Consulta {
  struct Palabra {
    std::string texto;
    std::vector<char> clientes;  // which ones have it
  };
  struct Manera {
    std::optional<Periodo> periodo;
    std::vector<std::size_t> palabras;
  };

  Consulta(const Indice& indice, const std::vector<Lectura>& lecturas) : indice_(indice) {
    for (const Lectura& lectura : lecturas) {
      Agrega(lectura.periodo, lectura.palabras);
      const std::vector<std::string> juntas = ConTelefonos(lectura.palabras);
      if (!juntas.empty()) Agrega(lectura.periodo, juntas);
    }
  }

  bool Cumple(const Entrada& e) const {
    return std::ranges::any_of(maneras_, [&](const Manera& m) {
      if (m.periodo && (e.llegada > m.periodo->hasta || e.salida < m.periodo->desde)) return false;
      return std::ranges::all_of(m.palabras, [&](std::size_t i) {
        const Palabra& p = palabras_[i];
        return p.clientes[e.huesped] != 0 || p.clientes[e.cliente] != 0 ||
               e.palabras.find(p.texto) != std::string::npos;
      });
    });
  }

 private:
  void Agrega(const std::optional<Periodo>& periodo, const std::vector<std::string>& buscadas) {
    Manera manera{periodo, {}};
    for (const std::string& buscada : buscadas) manera.palabras.push_back(LugarDe(buscada));
    maneras_.push_back(std::move(manera));
  }

  std::size_t LugarDe(const std::string& buscada) {
    const auto ya = std::ranges::find(palabras_, " " + buscada, &Palabra::texto);
    if (ya != palabras_.end()) return static_cast<std::size_t>(ya - palabras_.begin());
    palabras_.push_back({" " + buscada, std::vector<char>(indice_.clientes_.size(), 0)});
    Palabra& p = palabras_.back();
    const bool digitos = EsParteDeTelefono(buscada);
    for (std::size_t c = 1; c < p.clientes.size(); ++c) {
      const Cliente& cliente = indice_.clientes_[c];
      const bool tiene = cliente.palabras.find(p.texto) != std::string::npos ||
                         (digitos && (cliente.telefono.find(buscada) != std::string::npos ||
                                      TieneTelefono(cliente.telefono, buscada)));
      p.clientes[c] = tiene ? 1 : 0;
    }
    return palabras_.size() - 1;
  }

  const Indice& indice_;
  std::vector<Palabra> palabras_;
  std::vector<Manera> maneras_;
};

Hallazgo Indice::Busca(std::string_view texto, com::Fecha hoy, std::size_t limite) {
  PonAlDia();
  const std::vector<Lectura> lecturas = LeeTexto(texto, hoy, sinAcento_);
  Hallazgo hallazgo;
  const auto& dias = hallazgo.periodo = lecturas.front().periodo;
  if (lecturas.back().palabras.empty()) return hallazgo;
  const Consulta consulta(*this, lecturas);
  const com::Fecha base = dias ? dias->desde : com::SoloFecha(hoy);
  using Orden = std::array<std::int32_t, 3>;  // group, distance in days, entry
  std::vector<Orden> halladas;
  for (std::size_t i = 0; i < entradas_.size(); ++i) {
    const Entrada& e = entradas_[i];
    if (!consulta.Cumple(e)) continue;
    const int faltan = com::DiasEntre(base, e.llegada);
    halladas.push_back(
        {(e.libera ? 2 : 0) + (faltan < 0 ? 1 : 0), faltan < 0 ? -faltan : faltan, static_cast<std::int32_t>(i)});
  }
  hallazgo.total = halladas.size();
  const auto fin = halladas.begin() + static_cast<std::ptrdiff_t>(std::min(limite, halladas.size()));
  std::partial_sort(halladas.begin(), fin, halladas.end());
  for (auto h = halladas.begin(); h != fin; ++h) {
    hallazgo.folios.push_back(entradas_[static_cast<std::size_t>((*h)[2])].folio);
  }
  return hallazgo;
}

}  // namespace recepcion
