#include "availability/ocupacion.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "publico/publico.h"

namespace kv207 {

namespace {

constexpr std::int32_t kUltimoMinuto = (23 * 60 + 59) * 60;  // 23:59, seconds of the day

std::string ClaveComparable(std::string_view clave) { return com::Plegado(com::RecortaDerecha(clave)); }

com::Fecha FechaDe(const com::Variant& valor) {
  const auto* fecha = std::get_if<com::Fecha>(&valor.Contenido());
  return fecha != nullptr ? *fecha : com::CDate(valor);
}

class LectorPorCelda : public LectorOcupacion {
 public:
  LectorPorCelda(sentencias::Criterio criterio, const std::vector<com::Fecha>& noches)
      : criterio_(std::move(criterio)) {
    noches_.reserve(noches.size());
    for (const com::Fecha noche : noches) noches_.push_back(publico::Utilerias().FechaSQL(noche));
  }

  void Fila(const std::string& clave) override { clave_ = clave; }

  Ocupacion Noche(int dia) override {
    const std::string& noche = noches_[static_cast<std::size_t>(dia)];
    Ocupacion ocupacion;
    sentencias::ArmaReservaciones(publico::NuevaSentencia(), criterio_, clave_, noche);
    ocupacion.reservaciones = Cantidad();
    sentencias::ArmaEstancias(publico::NuevaSentencia(), criterio_, clave_, noche);
    ocupacion.estancias = Cantidad();
    sentencias::ArmaBloqueos(publico::NuevaSentencia(), criterio_, clave_, noche);
    ocupacion.bloqueos = Cantidad();
    return ocupacion;
  }

 private:
  static int Cantidad() { return com::CLng(publico::Ejecuta()->Fields("Cantidad").Value()); }

  sentencias::Criterio criterio_;
  std::vector<std::string> noches_;  // as the statements write them
  std::string clave_;
};

class LectorPorConjuntos : public LectorOcupacion {
 public:
  LectorPorConjuntos(sentencias::Criterio criterio, std::vector<com::Fecha> noches)
      : criterio_(std::move(criterio)), noches_(std::move(noches)) {
    if (noches_.empty()) return;
    const auto [primera, ultima] = std::minmax_element(noches_.begin(), noches_.end());
    primera_ = publico::Utilerias().FechaSQL(*primera);
    ultima_ = publico::Utilerias().FechaSQL(*ultima);
    // Reservations and stays hold the night's last minute, blocks the start of the day.
    Cuenta(sentencias::ArmaReservacionesDelRango, kUltimoMinuto, &Ocupacion::reservaciones);
    Cuenta(sentencias::ArmaEstanciasDelRango, kUltimoMinuto, &Ocupacion::estancias);
    Cuenta(sentencias::ArmaBloqueosDelRango, 0, &Ocupacion::bloqueos);
  }

  void Fila(const std::string& clave) override {
    fila_ = nullptr;
    if (noches_.empty()) return;
    const auto hallada = filas_.find(ComoLiteral(clave));
    if (hallada != filas_.end()) fila_ = &cuentas_[hallada->second];
  }

  Ocupacion Noche(int dia) override { return fila_ == nullptr ? Ocupacion{} : fila_[dia]; }

 private:
  using Sentencia = void (*)(ado::TextoSQL&, const sentencias::Criterio&, std::string_view, std::string_view);

  // Adds one source's intervals to the counts of their rows.
  void Cuenta(Sentencia sentencia, std::int32_t segundo, int Ocupacion::*cuenta) {
    sentencia(publico::NuevaSentencia(), criterio_, primera_, ultima_);
    const ado::RecordsetPtr rs = publico::Ejecuta();
    const std::size_t clave = rs->Indice("CLAVE"), inicio = rs->Indice("INICIO"), fin = rs->Indice("FIN");
    for (; !rs->Eof(); rs->MoveNext()) {
      const com::Fecha desde = FechaDe(rs->Fields(inicio).Value());
      const com::Fecha hasta = FechaDe(rs->Fields(fin).Value());
      Ocupacion* fila = FilaDe(rs->Fields(clave).Value());
      for (std::size_t d = 0; d < noches_.size(); ++d) {
        const com::Fecha momento{noches_[d].dia, segundo};
        if (desde <= momento && momento <= hasta) ++(fila[d].*cuenta);
      }
    }
  }

  // Counts of the row of a key, made when it is new.
  Ocupacion* FilaDe(const com::Variant& valor) {
    const auto* texto = std::get_if<std::string>(&valor.Contenido());
    const std::string otra = texto == nullptr ? com::CStr(valor) : std::string();
    const std::string& clave = texto == nullptr ? otra : *texto;
    if (ultimaFila_ == filas_.end() || ultimaFila_->first != clave) {
      ultimaFila_ = filas_.try_emplace(clave, cuentas_.size()).first;
      if (ultimaFila_->second == cuentas_.size()) cuentas_.resize(cuentas_.size() + noches_.size());
    }
    return &cuentas_[ultimaFila_->second];
  }

  // The key as the database would read it between the quotes of the counts; Error kSentencia, as their execution raises
  // it, for a key that leaves them.
  std::string ComoLiteral(const std::string& clave) const {
    if (clave.find('\'') == std::string::npos) return clave;
    ado::TextoSQL& sql = publico::NuevaSentencia();
    sentencias::ArmaReservaciones(sql, criterio_, clave, primera_);
    sql.Verifica();
    std::string leida;
    for (std::size_t i = 0; i < clave.size(); ++i) {
      leida += clave[i];
      if (clave[i] == '\'') ++i;  // a pair stands for one quote
    }
    return leida;
  }

  sentencias::Criterio criterio_;
  std::vector<com::Fecha> noches_;
  std::string primera_, ultima_;
  std::unordered_map<std::string, std::size_t> filas_;  // row key -> its first night in cuentas_
  std::unordered_map<std::string, std::size_t>::iterator ultimaFila_ = filas_.end();
  std::vector<Ocupacion> cuentas_;
  const Ocupacion* fila_ = nullptr;
};

}  // namespace

CeldaTablero CalculaCelda(ModoVista modo, int total, const Ocupacion& ocupacion) {
  CeldaTablero celda{total, EstadoCelda::Disponible};
  const auto resta = [&celda](int cantidad, EstadoCelda estado) {
    if (cantidad <= 0) return;
    celda.libres -= cantidad;
    celda.estado = estado;
  };
  resta(ocupacion.reservaciones, EstadoCelda::Reservado);
  resta(ocupacion.estancias, EstadoCelda::Ocupado);
  resta(ocupacion.bloqueos, EstadoCelda::Bloqueado);
  if (modo == ModoVista::PorTipo && celda.libres > 0) celda.estado = EstadoCelda::Disponible;
  if (celda.libres < std::numeric_limits<std::int16_t>::min() ||
      celda.libres > std::numeric_limits<std::int16_t>::max()) {
    throw com::Error(com::error::kDesbordamiento, "Son demasiadas habitaciones para contarlas en el tablero");
  }
  return celda;
}

TotalesTablero::TotalesTablero(ado::Recordset& filas) {
  const std::size_t clave = filas.Indice("CLAVE"), total = filas.Indice("Total");
  for (; !filas.Eof(); filas.MoveNext()) {
    const com::Variant& valor = filas.Fields(clave).Value();
    if (!valor.EsNulo()) totales_[ClaveComparable(com::CStr(valor))] = com::CLng(filas.Fields(total).Value());
  }
}

int TotalesTablero::De(std::string_view clave) const {
  const auto hallado = totales_.find(ClaveComparable(clave));
  return hallado == totales_.end() ? 0 : hallado->second;
}

std::unique_ptr<LectorOcupacion> LeePorCelda(sentencias::Criterio criterio, const std::vector<com::Fecha>& noches) {
  return std::make_unique<LectorPorCelda>(std::move(criterio), noches);
}

std::unique_ptr<LectorOcupacion> LeePorConjuntos(sentencias::Criterio criterio, const std::vector<com::Fecha>& noches) {
  return std::make_unique<LectorPorConjuntos>(std::move(criterio), noches);
}

}  // namespace kv207
