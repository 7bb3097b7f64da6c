#include "recepcion/cifras.h"

#include <algorithm>
#include <optional>
#include <tuple>
#include <unordered_map>

#include "host/contract/estados.h"
#include "platform/com/error.h"
#include "platform/com/variant.h"
#include "platform/regional/regional.h"
#include "publico/publico.h"
#include "recepcion/alojamiento.h"

namespace recepcion {

namespace {

namespace estado = anfitrion::estado;

constexpr std::string_view kHabitaciones = "SELECT Hb_Cve_Habitacion, Es_Cve_Estado FROM Habitacion";
enum Columna : std::size_t {
  kHabitacion,
  kInicio,
  kFin,
  kImporte,
  kImpuesto,
  kTipoCambio,
  kEstado,
  kCaptura,
  kBaja,
  kSucursal,
  kFolio,
  kRenglon
};
constexpr std::string_view kColumnas =
    "SELECT D.Hb_Cve_Habitacion, D.Rsd_Fecha_Inicio, D.Rsd_Fecha_Fin, D.Rsd_Precio_Neto_Importe, "
    "D.Rsd_Impuesto_Importe, R.Rs_Tipo_Cambio, R.Es_Cve_Estado, R.Rs_Fecha, R.Fecha_Baja, R.Sc_Cve_Sucursal, "
    "D.Rs_Folio, D.Rsd_Id FROM ";
// Rooms first, then their lines from the first night on: CROSS JOIN keeps the order that the indexes serve.
constexpr std::string_view kLineas =
    "Habitacion HB CROSS JOIN Reservacion_Detalle D CROSS JOIN Reservacion R "
    "WHERE D.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion AND R.Rs_Folio = D.Rs_Folio "
    "AND D.Rsd_Fecha_Fin > '?' AND D.Rsd_Fecha_Inicio < '?'";
// Lines that ended before the first night, and whose guests may have stayed over it.
constexpr std::string_view kLineasPasadas =
    "Check_In CI CROSS JOIN Check_In_Detalle CID CROSS JOIN Reservacion_Detalle D CROSS JOIN Reservacion R "
    "WHERE CI.Es_Cve_Estado <> 'CA' AND CI.Ci_Salida > '?' AND CI.Ci_Llegada < '?' AND CID.Ci_Folio = CI.Ci_Folio "
    "AND D.Hb_Cve_Habitacion = CID.Hb_Cve_Habitacion AND D.Rsd_Fecha_Fin <= '?' "
    "AND D.Rsd_Fecha_Fin > CI.Ci_Llegada AND D.Rsd_Fecha_Inicio < CI.Ci_Salida AND R.Rs_Folio = D.Rs_Folio "
    "AND R.Es_Cve_Estado <> 'CA'";
constexpr std::string_view kEstancias =
    "SELECT CID.Hb_Cve_Habitacion, CI.Ci_Llegada, CI.Ci_Salida, CI.Es_Cve_Estado FROM Check_In CI "
    "INNER JOIN Check_In_Detalle CID ON CID.Ci_Folio = CI.Ci_Folio "
    "WHERE CI.Es_Cve_Estado <> 'CA' AND CI.Ci_Salida > '?' AND CI.Ci_Llegada < '?'";
constexpr std::string_view kBloqueos =
    "SELECT Hb_Cve_Habitacion, Hbb_Fecha_Inicio, Hbb_Fecha_Fin FROM Habitacion_Bloqueo WHERE Es_Cve_Estado = 'AC' AND "
    "Hbb_Fecha_Fin >= '?' AND Hbb_Fecha_Inicio < '?'";
constexpr std::string_view kSucursales =
    "SELECT Sc_Cve_Sucursal, Sc_Descripcion FROM Sucursal ORDER BY Sc_Cve_Sucursal";

// A line of a room, and of a closed reservation's the nights that the stays which belong to it held.
struct Linea {
  Noches noches;
  std::string folio;
  double renglon = 0;
  bool cancelada = false, cerrada = false;
  bool enLibros = false;  // it was, as the books stood
  bool suya = true;       // of the branch that is asked for
  double importe = 0;     // of all its nights
  std::vector<Noches> alojada;
};

// What is known of a room's night.
enum Sena : unsigned char { kEnServicio = 1, kBloqueada = 2, kAlojada = 4, kVendida = 8 };

// A period's nights, counted as the books say now, and as they stood at the end of a day before.
class Libro {
 public:
  Libro(const Fuente& fuente, com::Fecha desde, int noches, std::string sucursal, com::Fecha hoy, com::Fecha corte)
      : fuente_(fuente),
        desde_(com::SoloFecha(desde)),
        noches_(noches),
        sucursal_(std::move(sucursal)),
        hoy_(hoy),
        corte_(corte),
        cuentas_(static_cast<std::size_t>(noches)) {
    LeeHabitaciones();
    LeeBloqueos();
    LeeLineas();
    LeeEstancias();
    CuentaLineas();
    CuentaHabitaciones();
  }

  const std::vector<Cuenta>& cuentas() const { return cuentas_; }

 private:
  // Calls hace with each night of the period from inicio up to the one before fin.
  template <class Hace>
  void PorNoche(com::Fecha inicio, com::Fecha fin, Hace hace) const {
    const int hasta = std::min(com::DiasEntre(desde_, fin), noches_);
    for (int n = std::max(com::DiasEntre(desde_, inicio), 0); n < hasta; ++n) hace(static_cast<std::size_t>(n));
  }
  unsigned char& Celda_(std::size_t habitacion, std::size_t noche) {
    return senas_[habitacion * static_cast<std::size_t>(noches_) + noche];
  }
  ado::RecordsetPtr Lee(std::string_view sentencia) const {
    const std::string primera = fuente_.dia(desde_), ultima = fuente_.dia(com::MasDias(desde_, noches_));
    return Ejecuta(fuente_, ado::TextoSQL(sentencia, {primera, ultima}));
  }
  std::optional<std::size_t> HabitacionDe(const ado::Recordset& rs) const {
    const auto lugar = lugares_.find(com::Plegado(Celda(rs, 0)));
    return lugar == lugares_.end() ? std::nullopt : std::optional(lugar->second);
  }

  void LeeHabitaciones() {
    const ado::RecordsetPtr rs = Ejecuta(fuente_, ado::TextoSQL(kHabitaciones));
    std::vector<bool> enServicio;
    for (; !rs->Eof(); rs->MoveNext()) {
      lugares_.emplace(com::Plegado(Celda(*rs, 0)), enServicio.size());
      enServicio.push_back(!com::IgualSinCaja(Celda(*rs, 1), estado::kBaja));
    }
    lineas_.resize(enServicio.size());
    senas_.assign(enServicio.size() * static_cast<std::size_t>(noches_), 0);
    for (std::size_t h = 0; h < enServicio.size(); ++h) {
      if (enServicio[h])
        PorNoche(desde_, com::MasDias(desde_, noches_), [&](std::size_t n) { Celda_(h, n) = kEnServicio; });
    }
  }

  void Marca(std::size_t habitacion, com::Fecha inicio, com::Fecha fin, Sena sena) {
    PorNoche(inicio, fin, [&](std::size_t n) { Celda_(habitacion, n) |= sena; });
  }

  void LeeBloqueos() {
    const ado::RecordsetPtr rs = Lee(kBloqueos);
    for (; !rs->Eof(); rs->MoveNext()) {
      if (const auto h = HabitacionDe(*rs)) Marca(*h, CeldaDia(*rs, 1), com::MasDias(CeldaDia(*rs, 2), 1), kBloqueada);
    }
  }

  // With the lines of its room that end before the period, which a stay may belong to as well.
  void LeeLineas() {
    const std::string primera = fuente_.dia(desde_), ultima = fuente_.dia(com::MasDias(desde_, noches_));
    TomaLineas(ado::TextoSQL(kColumnas).Agrega(kLineas, {primera, ultima}));
    TomaLineas(ado::TextoSQL(kColumnas).Agrega(kLineasPasadas, {primera, primera, primera}));
    for (std::vector<Linea>& deHabitacion : lineas_) {
      std::ranges::sort(deHabitacion, {}, [](const Linea& l) { return std::tie(l.noches.inicio, l.folio, l.renglon); });
    }
  }

  void TomaLineas(const ado::TextoSQL& sql) {
    const ado::RecordsetPtr rs = Ejecuta(fuente_, sql);
    for (; !rs->Eof(); rs->MoveNext()) {
      const auto h = HabitacionDe(*rs);
      if (!h) continue;
      Linea l;
      l.noches = {CeldaDia(*rs, kInicio), CeldaDia(*rs, kFin)};
      l.folio = Celda(*rs, kFolio);
      l.renglon = CeldaNumero(*rs, kRenglon);
      const std::string como = Celda(*rs, kEstado);
      l.cancelada = com::IgualSinCaja(como, estado::kCancelada);
      l.cerrada = com::IgualSinCaja(como, estado::kCerrada);
      l.enLibros = CeldaDia(*rs, kCaptura) <= corte_ && (!l.cancelada || CeldaDia(*rs, kBaja) > corte_);
      l.suya = sucursal_.empty() || com::IgualSinCaja(Celda(*rs, kSucursal), sucursal_);
      const double cambio = CeldaNumero(*rs, kTipoCambio);
      l.importe = (CeldaNumero(*rs, kImporte) - CeldaNumero(*rs, kImpuesto)) * (cambio == 0 ? 1 : cambio);
      lineas_[*h].push_back(std::move(l));
    }
  }

  void LeeEstancias() {
    const ado::RecordsetPtr rs = Lee(kEstancias);
    for (; !rs->Eof(); rs->MoveNext()) {
      const auto h = HabitacionDe(*rs);
      if (!h) continue;
      const Noches estancia{CeldaDia(*rs, 1), CeldaDia(*rs, 2)};
      const bool cerrada = com::IgualSinCaja(Celda(*rs, 3), estado::kCerrada);
      const Noches tuvo{estancia.inicio, cerrada ? std::min(estancia.fin, hoy_) : estancia.fin};
      Marca(*h, tuvo.inicio, tuvo.fin, kAlojada);
      if (Linea* suya = LineaDe(lineas_[*h], estancia)) suya->alojada.push_back(tuvo);
    }
  }

  // The line that the stay belongs to; null none. Of those that begin together the first one is the nearest.
  static Linea* LineaDe(std::vector<Linea>& lineas, const Noches& estancia) {
    Linea* suya = nullptr;
    std::optional<int> cerca;
    const auto fin = std::ranges::lower_bound(lineas, estancia.fin, {}, [](const Linea& l) { return l.noches.inicio; });
    for (auto l = fin; l != lineas.begin();) {
      --l;
      // Lines that begin earlier still are further.
      if (suya != nullptr && suya->noches.inicio <= estancia.inicio && l->noches.inicio < suya->noches.inicio) break;
      const auto lejos = l->cancelada ? std::nullopt : Lejania(l->noches, estancia);
      if (!lejos || (cerca && *cerca < *lejos)) continue;
      cerca = lejos;
      suya = &*l;
    }
    return suya;
  }

  void CuentaLineas() {
    for (std::size_t h = 0; h < lineas_.size(); ++h) {
      for (const Linea& l : lineas_[h]) {
        const double importe = l.importe / std::max(com::DiasEntre(l.noches.inicio, l.noches.fin), 1);
        PorNoche(l.noches.inicio, l.noches.fin, [&](std::size_t n) { CuentaNoche(l, importe, h, n); });
      }
    }
  }

  void CuentaNoche(const Linea& l, double importe, std::size_t habitacion, std::size_t noche) {
    const com::Fecha dia = com::MasDias(desde_, static_cast<int>(noche));
    const auto tuvo = [&](const Noches& n) { return n.inicio <= dia && dia < n.fin; };
    if (l.cerrada && std::ranges::none_of(l.alojada, tuvo)) return;
    if (!l.cancelada) Celda_(habitacion, noche) |= kVendida;
    if (!l.suya) return;
    Cuenta& cuenta = cuentas_[noche];
    if (!l.cancelada) {
      ++cuenta.vendidas;
      if (importe == 0) ++cuenta.cortesias;
      cuenta.ingreso += importe;
    }
    if (l.enLibros) {
      ++cuenta.vendidasEntonces;
      cuenta.ingresoEntonces += importe;
    }
  }

  void CuentaHabitaciones() {
    for (std::size_t i = 0; i < senas_.size(); ++i) {
      const unsigned char sena = senas_[i];
      Cuenta& cuenta = cuentas_[i % static_cast<std::size_t>(noches_)];
      if ((sena & (kVendida | kAlojada)) != 0 || (sena & (kEnServicio | kBloqueada)) == kEnServicio)
        ++cuenta.disponibles;
      if ((sena & (kVendida | kAlojada)) == kAlojada && sucursal_.empty()) ++cuenta.sinPrecio;
    }
  }

  const Fuente& fuente_;
  com::Fecha desde_;
  int noches_;
  std::string sucursal_;
  com::Fecha hoy_, corte_;
  std::vector<Cuenta> cuentas_;
  std::unordered_map<std::string, std::size_t> lugares_;
  std::vector<unsigned char> senas_;        // by room, then night
  std::vector<std::vector<Linea>> lineas_;  // by room
};

[[noreturn]] void Rechaza(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

double Entre(double cuanto, double cuantos) { return cuantos == 0 ? 0 : cuanto / cuantos; }

// The same date a year before; nothing on 29 February.
std::optional<com::Fecha> MismaFecha(com::Fecha fecha) {
  const com::Civil c = com::ACivil(fecha);
  if (c.mes == 2 && c.dia == 29) return std::nullopt;
  return com::FechaDe(c.anio - 1, c.mes, c.dia);
}

}  // namespace

double Cuenta::Ocupacion() const { return Entre(Ocupadas(), disponibles); }
double Cuenta::Tarifa() const { return Entre(ingreso, vendidas - cortesias); }
double Cuenta::PorHabitacion() const { return Entre(ingreso, disponibles); }

Cuenta& Cuenta::operator+=(const Cuenta& otra) {
  disponibles += otra.disponibles;
  vendidas += otra.vendidas;
  cortesias += otra.cortesias;
  sinPrecio += otra.sinPrecio;
  ingreso += otra.ingreso;
  vendidasEntonces += otra.vendidasEntonces;
  vendidasAlFinal += otra.vendidasAlFinal;
  ingresoEntonces += otra.ingresoEntonces;
  ingresoAlFinal += otra.ingresoAlFinal;
  return *this;
}

com::Fecha UnAnoAntes(com::Fecha fecha) {
  const auto misma = MismaFecha(fecha);
  return misma ? *misma : *MismaFecha(com::MasDias(fecha, -1));
}

std::vector<CuentaDe> LeeCifras(const Fuente& fuente, const PedidoCifras& pedido, com::Fecha hoy) {
  const com::Fecha desde = com::SoloFecha(pedido.desde), hasta = com::SoloFecha(pedido.hasta);
  hoy = com::SoloFecha(hoy);
  const int noches = com::DiasEntre(desde, hasta) + 1;
  if (noches < 1) Rechaza("El periodo termina antes de empezar");
  if (noches > kNochesDeCifras) Rechaza("Las cifras abarcan hasta " + std::to_string(kNochesDeCifras) + " noches");
  const std::string sucursal = com::Recorta(pedido.sucursal);
  const com::Fecha antes = UnAnoAntes(desde);
  const Libro ahora(fuente, desde, noches, sucursal, hoy, hoy);
  const Libro entonces(fuente, antes, com::DiasEntre(antes, UnAnoAntes(hasta)) + 1, sucursal, hoy, UnAnoAntes(hoy));
  std::vector<CuentaDe> cuentas;
  for (int n = 0; n < noches; ++n) {
    const com::Fecha noche = com::MasDias(desde, n);
    Cuenta cuenta = ahora.cuentas()[static_cast<std::size_t>(n)];
    cuenta.vendidasEntonces = 0;
    cuenta.ingresoEntonces = 0;
    if (const auto misma = MismaFecha(noche)) {
      const Cuenta& otra = entonces.cuentas()[static_cast<std::size_t>(com::DiasEntre(antes, *misma))];
      cuenta.vendidasEntonces = otra.vendidasEntonces;
      cuenta.ingresoEntonces = otra.ingresoEntonces;
      cuenta.vendidasAlFinal = otra.vendidas;
      cuenta.ingresoAlFinal = otra.ingreso;
    }
    cuentas.push_back({noche, noche, cuenta});
  }
  return cuentas;
}

std::vector<CuentaDe> PorMes(const std::vector<CuentaDe>& noches) {
  std::vector<CuentaDe> meses;
  for (const CuentaDe& noche : noches) {
    if (meses.empty() || com::ACivil(meses.back().hasta).mes != com::ACivil(noche.desde).mes) {
      meses.push_back({noche.desde, noche.hasta, {}});
    }
    meses.back().hasta = noche.hasta;
    meses.back().cuenta += noche.cuenta;
  }
  return meses;
}

Cuenta Suma(const std::vector<CuentaDe>& cuentas) {
  Cuenta suma;
  for (const CuentaDe& c : cuentas) suma += c.cuenta;
  return suma;
}

std::vector<std::pair<std::string, std::string>> Sucursales() {
  std::vector<std::pair<std::string, std::string>> sucursales;
  const ado::RecordsetPtr rs = Ejecuta(ado::TextoSQL(kSucursales));
  for (; !rs->Eof(); rs->MoveNext()) sucursales.emplace_back(Celda(*rs, 0), Celda(*rs, 1));
  return sucursales;
}

void Cifras::Abre() {
  if (pedido_.desde != com::Fecha{}) return Abre(PedidoCifras(pedido_));
  const com::Civil c = com::ACivil(publico::Utilerias().FechaServidor());
  const com::Fecha primero = com::FechaDe(c.anio, c.mes, 1);
  const com::Fecha siguiente = c.mes == 12 ? com::FechaDe(c.anio + 1, 1, 1) : com::FechaDe(c.anio, c.mes + 1, 1);
  Abre({primero, com::MasDias(siguiente, -1), ""});
}

void Cifras::Abre(const PedidoCifras& pedido) {
  const com::Fecha hoy = com::SoloFecha(publico::Utilerias().FechaServidor());
  std::vector<CuentaDe> noches = LeeCifras(DelAnfitrion(), pedido, hoy);
  moneda_ = com::Recorta(publico::LeeTexto(anfitrion::parametro::kMonedaLocal));
  pedido_ = {com::SoloFecha(pedido.desde), com::SoloFecha(pedido.hasta), com::Recorta(pedido.sucursal)};
  hoy_ = hoy;
  meses_ = PorMes(noches);
  total_ = Suma(noches);
  noches_ = std::move(noches);
}

listado::Listado ListadoDe(const Cifras& cifras, bool porMes) {
  using enum listado::Clase;
  listado::Listado lista;
  lista.titulo = porMes ? "Cifras por mes" : "Cifras por noche";
  lista.detalle = "Del " + regional::FechaCorta(cifras.pedido().desde) + " al " +
                  regional::FechaCorta(cifras.pedido().hasta) + ", importes sin impuestos en " + cifras.moneda();
  if (!cifras.pedido().sucursal.empty()) lista.detalle += ", sucursal " + cifras.pedido().sucursal;
  lista.columnas = {{porMes ? "Mes" : "Noche", porMes ? Texto : Fecha},
                    {"Disponibles", Entero},
                    {"Vendidas", Entero},
                    {"Cortesías", Entero},
                    {"Sin reservación", Entero},
                    {"Ocupación", PorCiento},
                    {"Ingreso", Importe},
                    {"Tarifa promedio", Importe},
                    {"Por disponible", Importe},
                    {"Hace un año a estas alturas", Entero},
                    {"Hace un año al final", Entero},
                    {"Ingreso a estas alturas", Importe},
                    {"Ingreso al final", Importe}};
  const auto agrega = [&](com::Variant cuando, const Cuenta& c) {
    lista.filas.push_back({std::move(cuando), c.disponibles, c.vendidas, c.cortesias, c.sinPrecio, c.Ocupacion(),
                           c.ingreso, c.Tarifa(), c.PorHabitacion(), c.vendidasEntonces, c.vendidasAlFinal,
                           c.ingresoEntonces, c.ingresoAlFinal});
  };
  for (const CuentaDe& c : porMes ? cifras.meses() : cifras.noches()) {
    agrega(porMes ? com::Variant(com::AIso(c.desde).substr(0, 7)) : com::Variant(c.desde), c.cuenta);
  }
  agrega("Total", cifras.total());
  return lista;
}

}  // namespace recepcion
