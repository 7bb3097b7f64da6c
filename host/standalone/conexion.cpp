#include "host/standalone/conexion.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <list>
#include <unordered_map>

#include "host/standalone/apertura.h"
#include "host/standalone/cifrado.h"
#include "host/standalone/plantillas.h"
#include "host/standalone/postgres.h"
#include "host/standalone/registro.h"
#include "host/standalone/sentencia.h"
#include "host/standalone/traductor.h"
#include "host/standalone/vigilante.h"

namespace autonomo {
namespace {

using com::error::kSentencia;
using com::error::kTransaccion;

// Templates kept translated and prepared; the screens and the host together have about a hundred.
constexpr std::size_t kPlantillas = 256;

struct Preparada {
  std::string plantilla;
  std::vector<Origen> parametros;
  Sentencia sentencia;
};

class ConexionSqlite final : public ConexionDeMotor {
 public:
  ConexionSqlite(const OpcionesConexion& opciones, const Reloj& reloj)
      : reloj_(reloj), leeConjuntos_(opciones.leeConjuntos), base_(opciones) {}

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
  esquema::Motor Motor() const override { return esquema::Motor::Sqlite; }
  bool TomaTurno(const std::string& trabajo) override { return base_.TomaTurno(trabajo); }
  void EsperaTurno(const std::string& /*trabajo*/) override {}
  std::vector<std::string> TomaAvisos() override { return base_.TomaAvisos(); }
  RolesDeLaBase& roles() override { return roles_; }

 private:
  using Lista = std::list<Preparada>;

  ado::RecordsetPtr EjecutaTal(std::string_view sentencia);
  ado::RecordsetPtr Ejecuta(std::string_view texto, bool conPreguntas, std::span<const com::Variant> parametros);
  // Binds the values of the statement that was split last, and runs it.
  ado::RecordsetPtr CorrePartida(Preparada& p, std::string_view texto, std::span<const com::Variant> parametros);
  Preparada& BuscaPreparada(std::string_view texto, bool conPreguntas);
  // The engine undoes a transaction by itself when, say, the disk is full: nothing may then run outside it.
  bool Deshecha() const { return enTransaccion_ && sqlite3_get_autocommit(base_.manija()) != 0; }
  void RevisaDeshecha(std::string_view texto) const;

  const Reloj& reloj_;
  bool leeConjuntos_;
  bool enTransaccion_ = false;
  BaseSqlite base_;
  RolesDeLaBase roles_;
  Lista preparadas_;  // most recently used first; closed before the database
  std::unordered_map<std::string_view, Lista::iterator> porPlantilla_;
  Partida partida_;
};

Preparada& ConexionSqlite::BuscaPreparada(std::string_view texto, bool conPreguntas) {
  if (const auto it = porPlantilla_.find(partida_.plantilla); it != porPlantilla_.end()) {
    preparadas_.splice(preparadas_.begin(), preparadas_, it->second);
    return preparadas_.front();
  }
  Traduccion t =
      Traduce(texto, esquema::Motor::Sqlite, {.literalesSonParametros = true, .admitePreguntas = conPreguntas});
  Sentencia sentencia(base_.manija(), t.texto, std::move(t.fechas), texto);
  if (preparadas_.size() == kPlantillas) {
    porPlantilla_.erase(preparadas_.back().plantilla);
    preparadas_.pop_back();
  }
  preparadas_.push_front({partida_.plantilla, std::move(t.parametros), std::move(sentencia)});
  porPlantilla_.emplace(preparadas_.front().plantilla, preparadas_.begin());
  return preparadas_.front();
}

ado::RecordsetPtr ConexionSqlite::Ejecuta(std::string_view texto, bool conPreguntas,
                                          std::span<const com::Variant> parametros) {
  RevisaDeshecha(texto);
  Parte(texto, conPreguntas, partida_);
  return CorrePartida(BuscaPreparada(texto, conPreguntas), texto, parametros);
}

ado::RecordsetPtr ConexionSqlite::CorrePartida(Preparada& p, std::string_view texto,
                                               std::span<const com::Variant> parametros) {
  std::size_t valor = 0, pregunta = 0;
  int i = 0;
  for (const Origen origen : p.parametros) {
    ++i;
    if (origen == Origen::Ahora) {
      p.sentencia.LigaCopia(i, com::AIso(reloj_.Ahora()));
      continue;
    }
    // A statement may hold the very marks of a template; it then has fewer values than the template asks for.
    if (valor == partida_.valores.size()) throw com::Error(kSentencia, "Sentencia mal escrita", std::string(texto));
    const ValorPartido& v = partida_.valores[valor++];
    if (v.pregunta) {
      if (pregunta == parametros.size()) throw com::Error(kSentencia, "Faltan parámetros", std::string(texto));
      p.sentencia.Liga(i, parametros[pregunta++]);
    } else if (v.comillas) {
      p.sentencia.LigaCopia(i, SinComillasDobles(v.texto));
    } else {
      p.sentencia.Liga(i, v.texto);
    }
  }
  if (pregunta != parametros.size()) throw com::Error(kSentencia, "Sobran parámetros", std::string(texto));
  if (!enTransaccion_ && !p.sentencia.SoloLee()) base_.RevisaArchivos();
  return p.sentencia.Corre(texto);
}

ado::RecordsetPtr ConexionSqlite::EjecutaTal(std::string_view sentencia) {
  RevisaDeshecha(sentencia);
  Preparada* preparada = nullptr;
  try {
    Parte(sentencia, false, partida_);
    preparada = &BuscaPreparada(sentencia, false);
  } catch (const com::Error& e) {
    if (e.Numero() != kSentencia) throw;
  }
  if (preparada != nullptr) return CorrePartida(*preparada, sentencia, {});
  std::string_view resto;
  Sentencia tal(base_.manija(), sentencia, {}, sentencia, &resto);
  if (!resto.empty()) throw com::Error(kSentencia, "Solo se admite una sentencia", std::string(sentencia));
  if (!enTransaccion_ && !tal.SoloLee()) base_.RevisaArchivos();
  auto r = tal.Corre(sentencia);
  enTransaccion_ = sqlite3_get_autocommit(base_.manija()) == 0;
  return r;
}

void ConexionSqlite::RevisaDeshecha(std::string_view texto) const {
  if (Deshecha())
    throw com::Error(kTransaccion, "La base de datos deshizo la transacción por una falla anterior",
                     std::string(texto));
}

void ConexionSqlite::BeginTrans() {
  if (enTransaccion_) throw com::Error(kTransaccion, "Ya hay una transacción abierta");
  base_.RevisaArchivos();
  // At once the writer: a read that becomes a write later could find that another program wrote in between.
  registro::Mide("BEGIN IMMEDIATE", [&] { Corre(base_.manija(), "BEGIN IMMEDIATE"); });
  enTransaccion_ = true;
}

void ConexionSqlite::CommitTrans() {
  if (!enTransaccion_) throw com::Error(kTransaccion, "No hay una transacción abierta");
  RevisaDeshecha("COMMIT");
  registro::Mide("COMMIT", [&] { Corre(base_.manija(), "COMMIT"); });
  enTransaccion_ = false;
  if (alTerminarTransaccion) alTerminarTransaccion(true);
}

void ConexionSqlite::RollbackTrans() {
  if (!enTransaccion_) throw com::Error(kTransaccion, "No hay una transacción abierta");
  registro::Mide("ROLLBACK", [&] {
    if (!Deshecha()) Corre(base_.manija(), "ROLLBACK");
  });
  enTransaccion_ = false;
  if (alTerminarTransaccion) alTerminarTransaccion(false);
}

}  // namespace

com::Fecha Reloj::Ahora() const {
  if (fijo_) return *fijo_;
  const auto ahora = std::chrono::system_clock::now() + std::chrono::seconds(Adelanto());
  const std::time_t t = std::chrono::system_clock::to_time_t(ahora);
  std::tm l{};
  localtime_r(&t, &l);
  return com::FechaDe(l.tm_year + 1900, l.tm_mon + 1, l.tm_mday, l.tm_hour, l.tm_min, std::min(l.tm_sec, 59));
}

bool Reloj::Fiable() const { return !dudoso_ && (!fijo_ || fijo_->dia <= Reloj().Ahora().dia); }

std::shared_ptr<ConexionDeMotor> AbreMotor(const OpcionesConexion& opciones, const Reloj& reloj) {
  if (!opciones.conexion.empty()) return AbrePostgres(opciones, reloj);
  return std::make_shared<ConexionSqlite>(opciones, reloj);
}

std::shared_ptr<Conexion> AbreConexion(const OpcionesConexion& opciones, const Reloj& reloj) {
  return Vigila(CifraTarjetas(AbreMotor(opciones, reloj), opciones, reloj));
}

}  // namespace autonomo
