#include "host/standalone/vigilante.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <iterator>
#include <list>
#include <optional>
#include <thread>
#include <type_traits>

#include "host/contract/servicios.h"
#include "host/standalone/documento.h"
#include "host/standalone/palabras.h"
#include "host/standalone/visto.h"
#include "platform/ado/celda.h"
#include "platform/regional/regional.h"

namespace autonomo {

namespace {

// Reservations whose loaded version is kept; a screen shows one at a time.
constexpr std::size_t kVistas = 16;
// Entries of the change log that a refusal lists, newest last, and bytes of each.
constexpr std::size_t kEntradas = 5, kLargoEntrada = 600;

// How often a transaction that met another one is run again.
constexpr int kIntentos = 5;

constexpr std::string_view kCarga = "SELECT Reservacion.*";
constexpr std::string_view kCambioDeEstado = "UPDATE Reservacion SET";
constexpr std::string_view kAsignaEstado = "Es_Cve_Estado = '";

// A reservation as a screen loaded it.
struct Vista {
  std::string folio;
  std::int32_t version = 0;
  std::int32_t bitacora = 0;  // last entry of its change log
  ado::TextoSQL carga;        // the statement that shows it
  Imagen imagen;
};

// A write of the open transaction, to be run again.
struct Escritura {
  enum class Modo { Pantalla, Propia, Directa };
  Modo modo;
  ado::TextoSQL texto;
  Conexion::Parametros parametros;
};

// States from which the screens change a reservation, and what the change is called.
struct CambioDeEstado {
  std::string_view a;
  std::vector<std::string_view> desde;
  const char* verbo;
};
const CambioDeEstado kCambios[] = {
    {esquema::kConfirmada, {esquema::kActiva}, "confirmar"},
    {esquema::kCancelada, {esquema::kActiva, esquema::kConfirmada}, "cancelar"},
    {esquema::kActiva, {esquema::kCancelada}, "reactivar"},
};

// The last value of a statement of the screens: the folio in those that load or change a reservation.
std::string UltimoValor(const ado::TextoSQL& s) {
  if (s.Valores().empty()) return {};
  const ado::Tramo t = s.Valores().back();
  return com::Recorta(s.Texto().substr(t.inicio, t.fin - t.inicio));
}

// "09/03/2026 10:30:15, LUPITA: TEXT"
std::string Entrada(const com::Variant& fecha, const std::string& usuario, std::string texto) {
  while (!texto.empty() && static_cast<unsigned char>(texto.back()) <= ' ') texto.pop_back();
  if (texto.size() > kLargoEntrada) {
    texto = texto.substr(0, BytesEnteros(texto, kLargoEntrada)) + "…";
  }
  const std::string cuando = fecha.EsNulo() ? std::string() : regional::TextoFecha(com::CDate(fecha)) + ", ";
  return cuando + usuario + ": " + texto + "\r\n";
}

// A view as text: version, last entry and the image's fields, each part ended by kFin.
constexpr char kFin = '\x1f';

std::string EnTexto(const Vista& vista) {
  std::string texto = std::to_string(vista.version) + kFin + std::to_string(vista.bitacora) + kFin;
  for (const auto& [nombre, valor] : vista.imagen) texto += nombre + kFin + valor + kFin;
  return texto;
}

// A text that is none leaves a version that no reservation has.
void DeTexto(const std::string& texto, Vista& vista) {
  std::vector<std::string> partes;
  for (std::size_t desde = 0, fin = 0; (fin = texto.find(kFin, desde)) != std::string::npos; desde = fin + 1) {
    partes.push_back(texto.substr(desde, fin - desde));
  }
  const auto numero = [&](std::size_t i) -> std::int32_t {
    std::int32_t n = -1;
    if (i < partes.size()) std::from_chars(partes[i].data(), partes[i].data() + partes[i].size(), n);
    return n;
  };
  vista.version = numero(0);
  if (vista.version < 0) return;
  vista.bitacora = numero(1);
  vista.imagen.clear();
  for (std::size_t i = 2; i + 1 < partes.size(); i += 2) vista.imagen.emplace_back(partes[i], partes[i + 1]);
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
    } else if (const Vista* vista = Busca(UltimoValor(sentencia))) {
      Recuerda(LeeVista(vista->folio, vista->carga));
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
        if (const Vista* vista = Busca(folio)) escritas.push_back(LeeVista(folio, vista->carga));
      }
      motor_->CommitTrans();
    });
    Termina();
    for (Vista& vista : escritas) Recuerda(std::move(vista));
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
    const Vista* vista = Busca(folio);
    if (tratada || vista == nullptr) return {};
    Aparta(folio);
    Vista ahora = LeeVista(folio, vista->carga);
    std::string texto;
    if (ahora.version != vista->version) {
      ahora.imagen = ImagenDe(*motor_->Execute(ahora.carga));
      texto = "La reservación " + folio + " cambió después de que usted la abrió.\r\n" + Historia(*vista) +
              Diferencias(vista->imagen, ahora.imagen);
      Recuerda(std::move(ahora));
    }
    if (texto.empty() && EnTransaccion()) tratadas_.push_back(folio);
    return texto;
  }

  std::string LoVisto(const std::string& folio) override {
    const Vista* vista = Busca(com::Recorta(folio));
    return vista == nullptr ? std::string() : EnTexto(*vista);
  }

  void RetomaLoVisto(const std::string& folio, const std::string& visto) override {
    if (Vista* vista = Busca(com::Recorta(folio))) DeTexto(visto, *vista);
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

  static com::Error Vencida(const std::string& sentencia) {
    return {com::error::kOcupada,
            "Otro programa guardó al mismo tiempo. No se guardó nada y lo capturado sigue en la pantalla: vuelva a "
            "intentarlo",
            sentencia};
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
      return e.modo == Escritura::Modo::Pantalla && e.texto.Texto().starts_with(kCambioDeEstado);
    };
    if (std::ranges::any_of(escrituras_, seRevisaSola)) return;
    for (const std::string& folio : tratadas) {
      const std::string ajeno = CambioAjeno(folio);
      if (ajeno.empty()) continue;
      throw com::Error(com::error::kOcupada, ajeno +
                                                 "No se guardó nada y lo capturado sigue en la pantalla. Si vuelve a "
                                                 "pedirlo, se hará con la reservación como está ahora");
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
    if (e.texto.Texto().starts_with(kCambioDeEstado)) RevisaCambioDeEstado(e.texto);
    return motor_->Execute(e.texto);
  }

  // --- versions

  Vista* Busca(const std::string& folio) {
    const auto it = std::ranges::find_if(vistas_, [&](const Vista& v) { return com::IgualSinCaja(v.folio, folio); });
    return it == vistas_.end() ? nullptr : &*it;
  }

  void Recuerda(Vista vista) {
    std::erase_if(vistas_, [&](const Vista& v) { return com::IgualSinCaja(v.folio, vista.folio); });
    vistas_.push_front(std::move(vista));
    if (vistas_.size() > kVistas) vistas_.pop_back();
  }

  // Version and last entry of the change log; without the image.
  Vista LeeVista(const std::string& folio, const ado::TextoSQL& carga) {
    const ado::RecordsetPtr version =
        motor_->Consulta("SELECT Rv_Version FROM Reservacion_Version WHERE Rs_Folio = ?", {folio});
    const ado::RecordsetPtr bitacora = motor_->Consulta(
        "SELECT MAX(Bt_Id) FROM Bitacora WHERE Bt_Modulo = ? AND Bt_Clave = ?", {anfitrion::kModulo, folio});
    return {folio, version->Eof() ? 0 : ado::CeldaEntero(*version, 0), ado::CeldaEntero(*bitacora, 0), carga, {}};
  }

  // The version is read before what it stands for: a change in between is told once too often, never missed.
  ado::RecordsetPtr Muestra(const ado::TextoSQL& carga) {
    carga.Verifica();
    Vista vista = LeeVista(UltimoValor(carga), carga);
    ado::RecordsetPtr filas = motor_->Execute(carga);
    vista.imagen = ImagenDe(*filas);
    Recuerda(std::move(vista));
    return filas;
  }

  // Until the end of the transaction nobody else writes the reservation. The embedded engine has one writer anyway.
  void Aparta(const std::string& folio) {
    if (motor_->Motor() == esquema::Motor::Sqlite || !motor_->EnTransaccion()) return;
    motor_->Consulta("UPDATE Reservacion_Version SET Rv_Version = Rv_Version WHERE Rs_Folio = ?", {folio});
  }

  // Who changed it, when and what, from its change log; without an entry, who wrote it last.
  std::string Historia(const Vista& vista) {
    std::vector<std::string> entradas;
    const ado::RecordsetPtr log = motor_->Consulta(
        "SELECT Bt_Fecha, Bt_Usuario, Bt_Texto FROM Bitacora WHERE Bt_Modulo = ? AND Bt_Clave = ? AND Bt_Id > ? "
        "ORDER BY Bt_Id",
        {anfitrion::kModulo, vista.folio, vista.bitacora});
    for (; !log->Eof(); log->MoveNext()) {
      entradas.push_back(
          Entrada(log->Fields(0).Value(), com::TextoDe(log->Fields(1).Value()), com::TextoDe(log->Fields(2).Value())));
    }
    if (entradas.empty()) {
      const ado::RecordsetPtr sello =
          motor_->Consulta("SELECT Fecha_Ult_Modif, Oper_Ult_Modif FROM Reservacion WHERE Rs_Folio = ?", {vista.folio});
      if (sello->Eof()) return "Ya no existe.\r\n";
      const std::string usuario = com::TextoDe(sello->Fields(1).Value());
      return Entrada(sello->Fields(0).Value(), usuario.empty() ? "(sin usuario)" : usuario, "última modificación");
    }
    std::string texto;
    const std::size_t desde = entradas.size() > kEntradas ? entradas.size() - kEntradas : 0;
    for (std::size_t i = desde; i < entradas.size(); ++i) texto += entradas[i];
    return texto;
  }

  // Refuses a change of state on another version than the one seen, or from a state that it does not start from.
  void RevisaCambioDeEstado(const ado::TextoSQL& sentencia) {
    const std::string folio = UltimoValor(sentencia);
    const std::size_t lugar = sentencia.Texto().rfind(kAsignaEstado);
    if (folio.empty() || lugar == std::string::npos) return;
    const std::string nuevo = sentencia.Texto().substr(lugar + kAsignaEstado.size(), 2);
    const auto* cambio = std::ranges::find(kCambios, std::string_view(nuevo), &CambioDeEstado::a);
    if (cambio == std::end(kCambios)) return;
    Aparta(folio);
    const std::string ajeno = CambioAjeno(folio);
    const ado::RecordsetPtr actual =
        motor_->Consulta("SELECT Es_Cve_Estado FROM Reservacion WHERE Rs_Folio = ?", {folio});
    const auto rechaza = [](const std::string& texto) { throw com::Error(com::error::kRestriccion, texto); };
    if (actual->Eof()) rechaza("La reservación " + folio + " ya no existe");
    const std::string estado = com::Recorta(com::TextoDe(actual->Fields(0).Value()));
    const bool permitido =
        std::ranges::any_of(cambio->desde, [&](std::string_view desde) { return com::IgualSinCaja(estado, desde); });
    if (!permitido) {
      rechaza(ajeno + "La reservación " + folio + " está " + com::Minusculas(EstadoLegible(estado)) + ": no se puede " +
              cambio->verbo);
    }
    if (!ajeno.empty())
      rechaza(ajeno + "No se hizo nada. Si vuelve a pedirlo, se hará con la reservación como está ahora");
  }

  std::shared_ptr<ConexionDeMotor> motor_;
  std::list<Vista> vistas_;  // seen last first
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
