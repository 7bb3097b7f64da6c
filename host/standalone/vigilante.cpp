#include "host/standalone/vigilante.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <thread>
#include <type_traits>

#include "host/standalone/cambio_ajeno.h"
#include "host/standalone/palabras.h"
#include "host/standalone/visto.h"

namespace autonomo {

namespace {

// How often a transaction that met another one is run again.
constexpr int kIntentos = 5;

constexpr std::string_view kCarga = "SELECT Reservacion.*";
constexpr std::string_view kCambioDeEstado = "UPDATE Reservacion SET";
constexpr std::string_view kAsignaEstado = "Es_Cve_Estado = '";

// A write of the open transaction, to be run again.
struct Escritura {
  enum class Modo { Pantalla, Propia, Directa };
  Modo modo;
  ado::TextoSQL texto;
  Conexion::Parametros parametros;
};

// The last value of a statement of the screens: the folio in those that load or change a reservation.
std::string UltimoValor(const ado::TextoSQL& s) {
  if (s.Valores().empty()) return {};
  const ado::Tramo t = s.Valores().back();
  return com::Recorta(s.Texto().substr(t.inicio, t.fin - t.inicio));
}

// Whether the statement of a screen is to move a reservation to another state; it may store something else.
bool CambiaEstado(const ado::TextoSQL& s) {
  return s.Texto().starts_with(kCambioDeEstado) && s.Texto().find(kAsignaEstado) != std::string::npos;
}

class ConexionVigilada final : public Conexion {
 public:
  explicit ConexionVigilada(std::shared_ptr<ConexionDeMotor> motor) : motor_(std::move(motor)) {}

  ado::RecordsetPtr Execute(const ado::TextoSQL& sentencia) override {
    const std::string& texto = sentencia.Texto();
    if (SoloLee(texto)) {
      ReanudaParaLeer();
      const bool muestra = !EnTransaccion() && texto.starts_with(kCarga) && !sentencia.Valores().empty();
      return Insiste([&] { return muestra ? Muestra(sentencia) : motor_->Execute(sentencia); });
    }
    Reanuda();
    ado::RecordsetPtr filas = Insiste([&] { return Escribe({Escritura::Modo::Pantalla, sentencia, {}}); });
    if (motor_->EnTransaccion()) {
      escrituras_.push_back({Escritura::Modo::Pantalla, sentencia, {}});
    } else if (const Vista* vista = vistas_.Busca(UltimoValor(sentencia))) {
      vistas_.Recuerda(LeeVista(*motor_, vista->folio, vista->carga));
    }
    return filas;
  }
  using ado::Connection::Execute;

  ado::RecordsetPtr Consulta(std::string_view sentencia, const Parametros& parametros) override {
    if (SoloLee(sentencia)) {
      ReanudaParaLeer();
      return Insiste([&] { return motor_->Consulta(sentencia, parametros); });
    }
    Reanuda();
    ado::RecordsetPtr filas = Insiste([&] { return motor_->Consulta(sentencia, parametros); });
    if (motor_->EnTransaccion()) {
      escrituras_.push_back({Escritura::Modo::Propia, ado::TextoSQL(sentencia), parametros});
    }
    return filas;
  }

  ado::RecordsetPtr Directa(std::string_view sentencia) override {
    if (SoloLee(sentencia)) {
      ReanudaParaLeer();
      return Insiste([&] { return motor_->Directa(sentencia); });
    }
    Reanuda();
    const bool dentro = motor_->EnTransaccion();
    ado::RecordsetPtr filas = Insiste([&] { return motor_->Directa(sentencia); });
    if (!motor_->EnTransaccion()) {
      Termina();
    } else if (dentro) {
      escrituras_.push_back({Escritura::Modo::Directa, ado::TextoSQL(sentencia), {}});
    }
    return filas;
  }

  void BeginTrans() override {
    if (suelta_) throw com::Error(com::error::kTransaccion, "Ya hay una transacción abierta");
    motor_->BeginTrans();
  }
  void CommitTrans() override {
    Reanuda();
    // What this connection wrote, it has seen.
    std::vector<Vista> escritas;
    Insiste([&] {
      escritas.clear();
      for (const std::string& folio : tratadas_) {
        if (const Vista* vista = vistas_.Busca(folio)) escritas.push_back(LeeVista(*motor_, folio, vista->carga));
      }
      motor_->CommitTrans();
    });
    Termina();
    for (Vista& vista : escritas) vistas_.Recuerda(std::move(vista));
    if (alTerminarTransaccion) alTerminarTransaccion(true);
  }
  void RollbackTrans() override {
    if (!suelta_) motor_->RollbackTrans();
    Termina();
    if (alTerminarTransaccion) alTerminarTransaccion(false);
  }
  bool EnTransaccion() const override { return suelta_ || motor_->EnTransaccion(); }

  void Suelta() override {
    if (!suelta_ && motor_->EnTransaccion()) {
      motor_->RollbackTrans();
      suelta_ = true;
    }
    ++preguntas_;
  }
  void Retoma() override { --preguntas_; }

  std::string CambioAjeno(const std::string& pedido) override {
    const std::string folio = com::Recorta(pedido);
    Reanuda();
    const bool tratada = std::ranges::find(tratadas_, folio) != tratadas_.end();
    const Vista* vista = vistas_.Busca(folio);
    if (tratada || vista == nullptr) return {};
    Aparta(folio);
    Vista ahora = LeeVista(*motor_, folio, vista->carga);
    std::string texto;
    if (ahora.version != vista->version) {
      ahora.imagen = ImagenDe(*motor_->Execute(ahora.carga));
      texto = TextoCambioAjeno(*motor_, folio, *vista, ahora.imagen);
      vistas_.Recuerda(std::move(ahora));
    }
    if (texto.empty() && EnTransaccion()) tratadas_.push_back(folio);
    return texto;
  }

  std::string LoVisto(const std::string& folio) override {
    const Vista* vista = vistas_.Busca(com::Recorta(folio));
    return vista == nullptr ? std::string() : EnTexto(*vista);
  }

  void RetomaLoVisto(const std::string& folio, const std::string& visto) override {
    if (Vista* vista = vistas_.Busca(com::Recorta(folio))) DeTexto(visto, *vista);
  }

  bool LeeConjuntos() const override { return motor_->LeeConjuntos(); }
  esquema::Motor Motor() const override { return motor_->Motor(); }
  bool TomaTurno(const std::string& trabajo) override { return motor_->TomaTurno(trabajo); }
  void EsperaTurno(const std::string& trabajo) override {
    Reanuda();
    Insiste([&] { motor_->EsperaTurno(trabajo); });
  }
  std::vector<std::string> TomaAvisos() override { return motor_->TomaAvisos(); }
  RolesDeLaBase& roles() override { return motor_->roles(); }

 private:
  // --- transactions that met another one

  // Runs what talks to the engine. When the engine has undone the transaction because of another one, its writes are
  // run again with their checks, and then this.
  template <class Accion>
  std::invoke_result_t<Accion> Insiste(Accion accion) {
    for (int intento = 1;; ++intento) {
      try {
        return accion();
      } catch (const com::Error& e) {
        if (e.Numero() != kChoque) throw;
        if (intento == kIntentos) throw Vencida(e.Sentencia());
      }
      if (motor_->EnTransaccion()) Rehace(intento);
    }
  }

  void Rehace(int intento) {
    motor_->RollbackTrans();
    suelta_ = true;
    // Two that undo one another would meet again.
    std::this_thread::sleep_for(std::chrono::milliseconds(intento * (5 + static_cast<int>(getpid() % 20))));
    try {
      Reanuda();
    } catch (const com::Error& e) {
      // A folio that another reservation got meanwhile, a room that was sold: what was done before no longer holds.
      if (e.Numero() != com::error::kRestriccion) throw;
      throw com::Error(com::error::kRestriccion, Vencida({}).Descripcion() + " (" + e.Descripcion() + ")",
                       e.Sentencia());
    }
  }

  // --- transactions that were let go

  void ReanudaParaLeer() {
    if (preguntas_ == 0) Reanuda();
  }

  void Reanuda() {
    if (!suelta_) return;
    if (fallida_) throw com::Error(com::error::kTransaccion, "La transacción no se pudo reanudar");
    const std::vector<std::string> tratadas = tratadas_;
    for (int intento = 1;; ++intento) {
      motor_->BeginTrans();
      suelta_ = false;
      tratadas_.clear();
      try {
        RevisaOtraVez(tratadas);
        for (const Escritura& escritura : escrituras_) Escribe(escritura);
        return;
      } catch (const com::Error& e) {
        motor_->RollbackTrans();
        suelta_ = true;
        if (e.Numero() == kChoque && intento < kIntentos) continue;
        fallida_ = true;  // until the caller rolls it back
        if (e.Numero() == kChoque) throw Vencida(e.Sentencia());
        throw;
      }
    }
  }

  // What a save was checked for held in the transaction that is gone: another may have saved since. A change of state
  // is checked by its own statement.
  void RevisaOtraVez(const std::vector<std::string>& tratadas) {
    const auto seRevisaSola = [](const Escritura& e) {
      return e.modo == Escritura::Modo::Pantalla && CambiaEstado(e.texto);
    };
    if (std::ranges::any_of(escrituras_, seRevisaSola)) return;
    for (const std::string& folio : tratadas) {
      const std::string ajeno = CambioAjeno(folio);
      if (ajeno.empty()) continue;
      throw GuardadoSobreOtro(ajeno);
    }
  }

  void Termina() {
    suelta_ = fallida_ = false;
    escrituras_.clear();
    tratadas_.clear();
  }

  ado::RecordsetPtr Escribe(const Escritura& e) {
    switch (e.modo) {
      case Escritura::Modo::Propia:
        return motor_->Consulta(e.texto.Texto(), e.parametros);
      case Escritura::Modo::Directa:
        return motor_->Directa(e.texto.Texto());
      case Escritura::Modo::Pantalla:
        break;
    }
    e.texto.Verifica();
    if (CambiaEstado(e.texto)) RevisaCambioDeEstado(e.texto);
    return motor_->Execute(e.texto);
  }

  // --- versions

  // The version is read before what it stands for: a change in between is told once too often, never missed.
  ado::RecordsetPtr Muestra(const ado::TextoSQL& carga) {
    carga.Verifica();
    Vista vista = LeeVista(*motor_, UltimoValor(carga), carga);
    ado::RecordsetPtr filas = motor_->Execute(carga);
    vista.imagen = ImagenDe(*filas);
    vistas_.Recuerda(std::move(vista));
    return filas;
  }

  // Until the end of the transaction nobody else writes the reservation. The embedded engine has one writer anyway.
  void Aparta(const std::string& folio) {
    if (motor_->Motor() == esquema::Motor::Sqlite || !motor_->EnTransaccion()) return;
    motor_->Consulta("UPDATE Reservacion_Version SET Rv_Version = Rv_Version WHERE Rs_Folio = ?", {folio});
  }

  // Refuses a change of state on another version than the one seen, or from a state that it does not start from.
  void RevisaCambioDeEstado(const ado::TextoSQL& sentencia) {
    const std::string folio = UltimoValor(sentencia);
    const std::size_t lugar = sentencia.Texto().rfind(kAsignaEstado);
    if (folio.empty()) return;
    const std::string nuevo = sentencia.Texto().substr(lugar + kAsignaEstado.size(), 2);
    if (!EsPasoDeEstado(nuevo)) return;
    Aparta(folio);
    const std::string ajeno = CambioAjeno(folio);
    ExigePasoDeEstado(*motor_, folio, nuevo, ajeno);
  }

  std::shared_ptr<ConexionDeMotor> motor_;
  Vistas vistas_;
  std::vector<Escritura> escrituras_;
  std::vector<std::string> tratadas_;  // folios whose version was checked in this transaction
  int preguntas_ = 0;                  // questions that stand
  bool suelta_ = false;                // the transaction is open for the caller, not in the engine
  bool fallida_ = false;               // and cannot go on
};

}  // namespace

std::shared_ptr<Conexion> Vigila(std::shared_ptr<ConexionDeMotor> motor) {
  return std::make_shared<ConexionVigilada>(std::move(motor));
}

}  // namespace autonomo
