#include "host/standalone/postgres.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>
#include <unordered_map>

#include "host/standalone/palabras.h"
#include "host/standalone/plantillas.h"
#include "host/standalone/postgres_sesion.h"
#include "host/standalone/postgres_valores.h"
#include "host/standalone/registro.h"
#include "host/standalone/traductor.h"
#include "platform/com/texto.h"

namespace autonomo {
namespace {

using com::error::kBaseDatos;
using com::error::kSentencia;
using com::error::kTransaccion;
using Valores = std::vector<std::optional<std::string>>;

// Templates kept translated and prepared.
constexpr std::size_t kPlantillas = 256;
// The server's answer to a prepared statement whose table has changed, among others.
constexpr std::string_view kPlanViejo = "0A000";
// And the beginning of what it says when it ends the session itself.
constexpr std::string_view kSeVa = "57P";
constexpr const char* kNumero = "SELECT pg_current_xact_id_if_assigned()";

std::string MarcaNueva() {
  std::random_device azar;
  std::string marca;
  for (int i = 0; i < 4; ++i) {
    for (auto palabra = azar(); palabra != 0; palabra /= 16) marca += "0123456789abcdef"[palabra % 16];
  }
  return marca;
}

struct Preparada {
  std::string nombre, texto;
  std::vector<Origen> parametros;
  std::shared_ptr<const ado::Recordset::Columnas> columnas;  // of its last result
  int sesion = 0;                                            // connection in which it is prepared
};

class ConexionPostgres final : public ConexionDeMotor, private RolesDeLaBase {
 public:
  ConexionPostgres(const OpcionesConexion& opciones, const Reloj& reloj)
      : reloj_(reloj),
        leeConjuntos_(opciones.leeConjuntos),
        esperaMs_(opciones.esperaMs),
        sesion_(opciones),
        marca_(MarcaNueva()) {}
  ~ConexionPostgres() override;

  ado::RecordsetPtr Execute(const ado::TextoSQL& sentencia) override {
    return registro::Mide(sentencia, [&] {
      sentencia.Verifica();
      return Ejecuta(sentencia.Texto(), false, {});
    });
  }
  ado::RecordsetPtr Consulta(std::string_view sentencia, const Parametros& parametros) override {
    return registro::Mide(sentencia, [&] { return Ejecuta(sentencia, true, parametros); });
  }
  ado::RecordsetPtr Directa(std::string_view sentencia) override {
    return registro::Mide(sentencia, [&] { return EjecutaTal(sentencia); });
  }

  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;
  bool EnTransaccion() const override { return enTransaccion_; }
  bool LeeConjuntos() const override { return leeConjuntos_; }
  esquema::Motor Motor() const override { return esquema::Motor::PostgreSQL; }
  void EsperaTurno(const std::string& trabajo) override {
    Asegura("SELECT");
    CorreTal("SELECT pg_advisory_xact_lock(209, hashtext('" + trabajo + "'))");
  }
  std::vector<std::string> TomaAvisos() override { return sesion_.TomaAvisos(); }
  bool TomaTurno(const std::string& nombre) override { return sesion_.TomaTurno(nombre); }
  RolesDeLaBase& roles() override { return *this; }
  void Limita(const Alcance& alcance) override { sesion_.Limita(alcance); }
  bool OcultaTarjetas() const override { return sesion_.OcultaTarjetas(); }
  std::string PreparaRoles() override { return sesion_.PreparaRoles(); }
  bool AjustaRol(const std::string& usuario, const Alcance& alcance) override;
  void AdmiteRol(const std::string& usuario, const std::string& contrasena) override {
    sesion_.AdmiteRol(usuario, contrasena);
  }

 private:
  // What goes to the server in one round trip, in this order.
  enum class Paso { Comienza, Salva, Prepara, Corre, Libera, Numero };

  // Whether the server knows of the transaction.
  bool Dentro() const { return enTransaccion_ && !porComenzar_; }
  void Asegura(std::string_view sentencia);
  Preparada& BuscaPreparada(std::string_view texto, bool conPreguntas);
  Valores LigaPartida(const Preparada& p, std::string_view texto, std::span<const com::Variant> parametros);
  ado::RecordsetPtr Ejecuta(std::string_view texto, bool conPreguntas, std::span<const com::Variant> parametros);
  ado::RecordsetPtr EjecutaTal(std::string_view sentencia);
  ado::RecordsetPtr CorreTal(const std::string& texto);
  Resultado CorreInsistiendo(Preparada& p, const Valores& valores, std::string_view original);
  Resultado Corre(Preparada& p, const Valores& valores, std::string_view original);
  std::vector<Paso> PasosDe(const Preparada& p) const;
  // What a round trip brought: the rows, or what the server refused. Nothing went out when the connection is gone.
  struct Vuelta {
    bool enviada = true;
    Resultado filas, falla;
  };
  Vuelta DaVuelta(Preparada& p, const Valores& valores);
  bool Envia(Paso paso, const Preparada& p, const Valores& valores);
  void Recibe(Paso paso, const PGresult* r);
  // A transaction that wrote: the server's number of it, and the one that this session leaves in Transaccion_Hecha.
  struct Escrita {
    std::string numero;
    int cuenta = 0;
  };
  enum class Final { Quedo, NoQuedo, EnCurso };
  void AnotaNumero(const PGresult* r);
  std::string Cierre();
  void AveriguaElFinal();
  Final FinalDe(const Escrita& transaccion);

  const Reloj& reloj_;
  bool leeConjuntos_;
  int esperaMs_;
  SesionPostgres sesion_;
  std::unordered_map<std::string, Preparada> preparadas_;
  std::size_t nombres_ = 0;
  Partida partida_;
  bool enTransaccion_ = false;
  bool porComenzar_ = false;       // the begin goes with the first statement
  std::string numero_;             // the server's number of the open transaction, once it has written
  const std::string marca_;        // of this session, in Transaccion_Hecha
  int cuenta_ = 0;                 // transactions that it has tried to commit
  std::optional<Escrita> enDuda_;  // one whose commit nobody answered
};

// Before a statement goes out. A connection that broke is made again, unless a transaction was under way in it.
void ConexionPostgres::Asegura(std::string_view sentencia) {
  if (Dentro()) {
    if (!sesion_.Viva()) throw ErrorDePerdida(sentencia, true);
    return;
  }
  if (!sesion_.Viva()) sesion_.Conecta();
  if (!enDuda_ || SoloLee(sentencia)) return;
  const bool quedo = FinalDe(*enDuda_) == Final::Quedo;
  enDuda_.reset();
  if (quedo)
    throw com::Error(kBaseDatos,
                     "La conexión con el servidor volvió, y lo último que aceptó antes de perderla sí quedó guardado: "
                     "búsquelo antes de capturarlo otra vez",
                     std::string(sentencia));
}

Preparada& ConexionPostgres::BuscaPreparada(std::string_view texto, bool conPreguntas) {
  if (const auto it = preparadas_.find(partida_.plantilla); it != preparadas_.end()) return it->second;
  Traduccion t =
      Traduce(texto, esquema::Motor::PostgreSQL, {.literalesSonParametros = true, .admitePreguntas = conPreguntas});
  if (preparadas_.size() == kPlantillas) {
    preparadas_.clear();
    if (sesion_.Viva()) sesion_.Corre("DEALLOCATE ALL");
  }
  Preparada p;
  p.nombre = "p" + std::to_string(++nombres_);
  p.texto = ConDolares(t.texto);
  p.parametros = std::move(t.parametros);
  return preparadas_.emplace(partida_.plantilla, std::move(p)).first->second;
}

Valores ConexionPostgres::LigaPartida(const Preparada& p, std::string_view texto,
                                      std::span<const com::Variant> parametros) {
  Valores valores;
  std::size_t valor = 0, pregunta = 0;
  for (const Origen origen : p.parametros) {
    if (origen == Origen::Ahora) {
      valores.emplace_back(com::AIso(reloj_.Ahora()));
      continue;
    }
    // A statement may hold the very marks of a template; it then has fewer values than the template asks for.
    if (valor == partida_.valores.size()) throw com::Error(kSentencia, "Sentencia mal escrita", std::string(texto));
    const ValorPartido& v = partida_.valores[valor++];
    if (!v.pregunta) {
      valores.push_back(ComoParametro(v.comillas ? SinComillasDobles(v.texto) : std::string(v.texto)));
      continue;
    }
    if (pregunta == parametros.size()) throw com::Error(kSentencia, "Faltan parámetros", std::string(texto));
    valores.push_back(ComoParametro(parametros[pregunta++]));
  }
  if (pregunta != parametros.size()) throw com::Error(kSentencia, "Sobran parámetros", std::string(texto));
  return valores;
}

ado::RecordsetPtr ConexionPostgres::Ejecuta(std::string_view texto, bool conPreguntas,
                                            std::span<const com::Variant> parametros) {
  Asegura(texto);
  Parte(texto, conPreguntas, partida_);
  Preparada& p = BuscaPreparada(texto, conPreguntas);
  const Resultado r = CorreInsistiendo(p, LigaPartida(p, texto, parametros), texto);
  return Filas(r.get(), p.columnas, texto);
}

// A server that went away without a sign is found out here. What has begun no transaction and a question are asked
// again; another write is not, since it may have happened.
Resultado ConexionPostgres::CorreInsistiendo(Preparada& p, const Valores& valores, std::string_view original) {
  const bool repetible = porComenzar_ || (!enTransaccion_ && SoloLee(p.texto));
  try {
    return Corre(p, valores, original);
  } catch (const com::Error&) {
    if (sesion_.Viva() || (enTransaccion_ && !repetible)) throw;
    if (!repetible)
      throw com::Error(
          kBaseDatos,
          "Se perdió la conexión con el servidor de la base de datos y no se sabe si se hizo lo último que "
          "se pidió: revíselo antes de repetirlo",
          std::string(original));
  }
  porComenzar_ = enTransaccion_;
  numero_.clear();
  sesion_.Conecta();
  return Corre(p, valores, original);
}

bool ConexionPostgres::Envia(Paso paso, const Preparada& p, const Valores& valores) {
  PGconn* c = sesion_.manija();
  const auto orden = [c](const char* sql) {
    return PQsendQueryParams(c, sql, 0, nullptr, nullptr, nullptr, nullptr, 0) != 0;
  };
  switch (paso) {
    case Paso::Comienza:
      return orden("BEGIN ISOLATION LEVEL READ COMMITTED");
    case Paso::Salva:
      return orden("SAVEPOINT sentencia");
    case Paso::Prepara:
      return PQsendPrepare(c, p.nombre.c_str(), p.texto.c_str(), 0, nullptr) != 0;
    case Paso::Corre: {
      std::vector<const char*> punteros;
      for (const auto& v : valores) punteros.push_back(v ? v->c_str() : nullptr);
      return PQsendQueryPrepared(c, p.nombre.c_str(), static_cast<int>(punteros.size()), punteros.data(), nullptr,
                                 nullptr, 0) != 0;
    }
    case Paso::Libera:
      return orden("RELEASE SAVEPOINT sentencia");
    case Paso::Numero:
      return orden(kNumero);
  }
  return false;
}

// A step that went well.
void ConexionPostgres::Recibe(Paso paso, const PGresult* r) {
  if (paso == Paso::Comienza) porComenzar_ = false;
  if (paso == Paso::Numero) AnotaNumero(r);
}

void ConexionPostgres::AnotaNumero(const PGresult* r) {
  if (PQntuples(r) == 1) numero_ = PQgetvalue(r, 0, 0);
}

std::vector<ConexionPostgres::Paso> ConexionPostgres::PasosDe(const Preparada& p) const {
  std::vector<Paso> pasos;
  if (porComenzar_) pasos.push_back(Paso::Comienza);
  if (enTransaccion_) pasos.push_back(Paso::Salva);
  if (p.sesion != sesion_.Cual()) pasos.push_back(Paso::Prepara);
  pasos.push_back(Paso::Corre);
  if (enTransaccion_) pasos.push_back(Paso::Libera);
  if (enTransaccion_ && numero_.empty()) pasos.push_back(Paso::Numero);
  return pasos;
}

ConexionPostgres::Vuelta ConexionPostgres::DaVuelta(Preparada& p, const Valores& valores) {
  const std::vector<Paso> pasos = PasosDe(p);
  PGconn* c = sesion_.manija();
  PQenterPipelineMode(c);
  Vuelta v;
  for (const Paso paso : pasos) v.enviada = v.enviada && Envia(paso, p, valores);
  v.enviada = v.enviada && PQpipelineSync(c) != 0;
  for (const Paso paso : pasos) {
    if (!v.enviada) break;
    Resultado r(PQgetResult(c));
    if (r == nullptr) break;
    PQclear(PQgetResult(c));  // the end of this step's results
    if (PQresultStatus(r.get()) == PGRES_FATAL_ERROR) {
      v.falla = std::move(r);
    } else if (v.falla == nullptr) {
      Recibe(paso, r.get());
      if (paso == Paso::Prepara) p.sesion = sesion_.Cual();
      if (paso == Paso::Corre) v.filas = std::move(r);
    }
  }
  if (v.enviada) PQclear(PQgetResult(c));  // the synchronisation
  PQexitPipelineMode(c);
  return v;
}

Resultado ConexionPostgres::Corre(Preparada& p, const Valores& valores, std::string_view original) {
  const bool deAntes = p.sesion == sesion_.Cual();
  Vuelta vuelta = DaVuelta(p, valores);
  const PGresult* falla = vuelta.falla.get();
  if (!vuelta.enviada || PQstatus(sesion_.manija()) != CONNECTION_OK) throw ErrorDePerdida(original, enTransaccion_);
  if (falla == nullptr) return std::move(vuelta.filas);
  if (CodigoDe(falla).starts_with(kSeVa)) throw ErrorDePerdida(original, enTransaccion_);
  if (Dentro()) sesion_.Corre("ROLLBACK TO SAVEPOINT sentencia; RELEASE SAVEPOINT sentencia");
  // One that was prepared just now has no old plan: the server means something else.
  if (CodigoDe(falla) == kPlanViejo && deAntes) {
    sesion_.Corre("DEALLOCATE " + p.nombre);
    p.sesion = 0;
    p.columnas = nullptr;
    return Corre(p, valores, original);
  }
  throw sesion_.ErrorDe(falla, original);
}

// --- a tester's statement

// A session that took the rights of its user could lay them down again: by an order to the session, and by what runs a
// text or sets a variable inside a statement. So only reads and writes of rows go to the server.
void ExigeSinSalida(std::string_view sentencia) {
  const std::string texto = com::Mayusculas(std::string(sentencia));
  const std::size_t inicio = std::min(texto.find_first_not_of(" \t\r\n"), texto.size());
  const std::size_t fin = std::min(texto.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ", inicio), texto.size());
  constexpr std::string_view kDeFilas[] = {"SELECT", "WITH", "VALUES", "INSERT", "UPDATE", "DELETE"};
  constexpr std::string_view kSalidas[] = {"SET_CONFIG", "PG_SETTINGS", "_TO_XML", "TS_STAT", "TS_REWRITE", "U&\""};
  const bool deFilas = std::ranges::find(kDeFilas, texto.substr(inicio, fin - inicio)) != std::end(kDeFilas);
  if (deFilas && std::ranges::none_of(kSalidas, [&](std::string_view s) { return texto.find(s) != std::string::npos; }))
    return;
  throw com::Error(com::error::kSoloLectura, "Con los derechos de este usuario sólo se leen y escriben renglones",
                   std::string(sentencia));
}

ado::RecordsetPtr ConexionPostgres::EjecutaTal(std::string_view sentencia) {
  if (sesion_.Limitada()) ExigeSinSalida(sentencia);
  try {
    Traduce(sentencia, esquema::Motor::PostgreSQL, {.literalesSonParametros = true});
  } catch (const com::Error& e) {
    if (e.Numero() != kSentencia) throw;
    Asegura(sentencia);
    return CorreTal(std::string(sentencia));
  }
  return Ejecuta(sentencia, false, {});
}

ado::RecordsetPtr ConexionPostgres::CorreTal(const std::string& texto) {
  if (porComenzar_) sesion_.Corre("BEGIN ISOLATION LEVEL READ COMMITTED");
  porComenzar_ = false;
  if (enTransaccion_) sesion_.Corre("SAVEPOINT sentencia");
  const auto abierta = [this] { return PQtransactionStatus(sesion_.manija()) != PQTRANS_IDLE; };
  try {
    const Resultado r = sesion_.Corre(texto, {});
    if (enTransaccion_ && abierta()) sesion_.Corre("RELEASE SAVEPOINT sentencia");
    enTransaccion_ = abierta();
    if (enTransaccion_ && numero_.empty()) AnotaNumero(sesion_.Corre(kNumero).get());
    std::shared_ptr<const ado::Recordset::Columnas> columnas;
    return Filas(r.get(), columnas, texto);
  } catch (const com::Error&) {
    if (PQstatus(sesion_.manija()) == CONNECTION_OK && enTransaccion_)
      sesion_.Corre("ROLLBACK TO SAVEPOINT sentencia; RELEASE SAVEPOINT sentencia");
    throw;
  }
}

bool ConexionPostgres::AjustaRol(const std::string& usuario, const Alcance& alcance) {
  Asegura("UPDATE");
  const auto dice = [this](const std::string& sentencia) { return com::CBool(CorreTal(sentencia)->Fields(0).Value()); };
  return dice("SELECT to_regproc('kv207_mostrador.ajusta_rol') IS NOT NULL") &&
         dice(sesion_.SentenciaAjustaRol(usuario, alcance));
}

// --- transactions

void ConexionPostgres::BeginTrans() {
  if (enTransaccion_) throw com::Error(kTransaccion, "Ya hay una transacción abierta");
  enTransaccion_ = porComenzar_ = true;
  numero_.clear();
}

void ConexionPostgres::CommitTrans() {
  if (!enTransaccion_) throw com::Error(kTransaccion, "No hay una transacción abierta");
  if (Dentro()) {
    registro::Mide("COMMIT", [&] {
      Asegura("COMMIT");
      const Resultado r(PQexec(sesion_.manija(), Cierre().c_str()));
      if (PQstatus(sesion_.manija()) != CONNECTION_OK) return AveriguaElFinal();
      if (PQresultStatus(r.get()) != PGRES_COMMAND_OK) throw ErrorPostgres(r.get(), "COMMIT");
      if (std::string_view(PQcmdStatus(r.get())) == "COMMIT") return;
      throw com::Error(kTransaccion, "La base de datos deshizo la transacción por una falla anterior");
    });
  }
  enTransaccion_ = porComenzar_ = false;
  if (alTerminarTransaccion) alTerminarTransaccion(true);
}

// The commit. A transaction that wrote leaves its mark, by which a commit that nobody answers is asked after: the
// number that the server gave it does not do, since a server that dies gives again what did not reach its disk.
std::string ConexionPostgres::Cierre() {
  if (numero_.empty()) return "COMMIT";
  const std::string cuenta = std::to_string(++cuenta_);
  return "INSERT INTO Transaccion_Hecha (Th_Sesion, Th_Cuenta) VALUES ('" + marca_ + "', " + cuenta +
         ") ON CONFLICT (Th_Sesion) DO UPDATE SET Th_Cuenta = " + cuenta + "; COMMIT";
}

// Nobody asks after it any more.
ConexionPostgres::~ConexionPostgres() {
  if (cuenta_ == 0 || enDuda_ || enTransaccion_ || !sesion_.Viva()) return;
  PQclear(PQexec(sesion_.manija(), ("DELETE FROM Transaccion_Hecha WHERE Th_Sesion = '" + marca_ + "'").c_str()));
}

// The server went away before it answered the commit: asks it how the transaction ended. Returns when it was committed.
void ConexionPostgres::AveriguaElFinal() {
  using std::chrono::steady_clock;
  if (numero_.empty()) return;  // it wrote nothing
  const auto limite = steady_clock::now() + std::chrono::milliseconds(esperaMs_);
  const Escrita ultima{numero_, cuenta_};
  for (Final final{}; steady_clock::now() < limite; std::this_thread::sleep_for(std::chrono::milliseconds(100))) {
    try {
      if (!sesion_.Viva()) sesion_.Conecta();
      final = FinalDe(ultima);
    } catch (const com::Error&) {  // not back yet
      continue;
    }
    if (final == Final::Quedo) return;
    if (final == Final::NoQuedo) throw ErrorDePerdida("COMMIT", true);
  }
  enDuda_ = ultima;
  throw com::Error(com::error::kEnDuda,
                   "Se perdió la conexión con el servidor de la base de datos mientras terminaba de guardar, y todavía "
                   "no se sabe si quedó guardado. Cuando el servidor vuelva, búsquelo antes de capturarlo otra vez",
                   "COMMIT");
}

// One that is under way no more has left its mark, or was undone.
ConexionPostgres::Final ConexionPostgres::FinalDe(const Escrita& transaccion) {
  const auto estado = [&]() -> std::string {
    try {
      const Resultado r = sesion_.Corre("SELECT pg_xact_status($1::xid8)", {transaccion.numero.c_str()});
      return PQgetvalue(r.get(), 0, 0);
    } catch (const com::Error&) {  // the server has never heard of it
      if (PQstatus(sesion_.manija()) != CONNECTION_OK) throw;
      return {};
    }
  };
  if (estado() == "in progress") return Final::EnCurso;
  const std::string cuenta = std::to_string(transaccion.cuenta);
  const Resultado marca = sesion_.Corre("SELECT FROM Transaccion_Hecha WHERE Th_Sesion = $1 AND Th_Cuenta = $2",
                                        {marca_.c_str(), cuenta.c_str()});
  return PQntuples(marca.get()) == 1 ? Final::Quedo : Final::NoQuedo;
}

void ConexionPostgres::RollbackTrans() {
  if (!enTransaccion_) throw com::Error(kTransaccion, "No hay una transacción abierta");
  const bool corre = Dentro() && PQstatus(sesion_.manija()) == CONNECTION_OK;
  enTransaccion_ = porComenzar_ = false;
  // One that fails has lost its connection, and so its transaction.
  if (corre) registro::Mide("ROLLBACK", [&] { PQclear(PQexec(sesion_.manija(), "ROLLBACK")); });
  if (alTerminarTransaccion) alTerminarTransaccion(false);
}

}  // namespace

std::shared_ptr<ConexionDeMotor> AbrePostgres(const OpcionesConexion& opciones, const Reloj& reloj) {
  return std::make_shared<ConexionPostgres>(opciones, reloj);
}

}  // namespace autonomo
