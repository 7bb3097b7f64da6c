// The stand-alone host's database connection: runs the screens' SQL Server text on SQLite or PostgreSQL.
//
// Each statement is split into a template and its literals; the template is translated and prepared once and run again
// by binding. Record sets are read whole. Failures raise com::Error with a Spanish description by category and the
// statement.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ado/ado.h"
#include "platform/com/fecha.h"
#include "schema/esquema.h"

namespace autonomo {

// The hotel's clock: this machine's, put forward to a server's where there is one (RelojDe), or fixed by a test.
class Reloj {
 public:
  // Local date and time, whole seconds.
  com::Fecha Ahora() const;
  void Fija(com::Fecha ahora) {
    fijo_ = ahora;
    dudoso_ = false;
  }
  void Libera() { fijo_.reset(); }
  // From here on it goes by a server's clock, which is so many seconds ahead of this machine's; below 0 behind it.
  void Adelanta(std::int64_t segundos) { adelanto_ = segundos; }
  std::int64_t Adelanto() const { return adelanto_.value_or(0); }
  bool DelServidor() const { return adelanto_ && !fijo_; }
  // Whether the days before its own have really passed, for what cannot be taken back: not while it is doubted
  // (reloj_dudoso.h), nor when it was fixed at a day that is still to come.
  bool Fiable() const;
  void Duda(bool hay) { dudoso_ = hay; }

 private:
  std::optional<com::Fecha> fijo_;
  std::optional<std::int64_t> adelanto_;
  bool dudoso_ = false;
};

// Path of a database that goes with the program.
inline constexpr char kEnMemoria[] = ":memory:";

struct OpcionesConexion {
  std::string ruta = kEnMemoria;  // SQLite file, created with the empty schema when it is missing
  std::string conexion;           // address of a PostgreSQL database (postgres_sesion.h); "" SQLite
  bool crea = true;               // false: where there is no hotel yet none is made, com::Error kBaseDatos
  bool leeConjuntos = true;       // what LeeConjuntos answers
  int esperaMs = 5000;            // how long a statement waits for another program's lock
  // Whether the user may see card data in clear, asked whenever some are read; empty: may.
  std::function<bool()> veTarjetas;
  // Asks whoever works here for a password that the server wants and that is in none of the usual places; takes the
  // question's text, nothing when there is no answer. Without it such a server cannot be opened.
  std::function<std::optional<std::string>(const std::string&)> pideContrasena;

  // What the database is called in messages.
  const std::string& Nombre() const { return conexion.empty() ? ruta : conexion; }
  bool EnMemoria() const { return Nombre() == kEnMemoria; }
};

// Number of the error of a transaction that the engine undid because of another one: run again, it may well pass.
inline constexpr int kChoque = 3197;

// What a user may do in the database itself, where its engine knows rights of its own.
struct Alcance {
  bool entra = true;
  bool tarjetas = true;    // read card data
  bool administra = true;  // change catalogues, parameters, rights and users
};

// Rights in the database itself (schema/roles.h); an engine without them does nothing.
class RolesDeLaBase {
 public:
  virtual ~RolesDeLaBase() = default;
  // From here on the session may do no more than that, as far as the server has the roles for it.
  virtual void Limita(const Alcance& /*alcance*/) {}
  // Whether the server hides card data from this session. It takes what it has hidden for what was there.
  virtual bool OcultaTarjetas() const { return false; }
  // Makes the roles that Limita needs, or what they lack; why not, for whoever looks after the server, "" done.
  virtual std::string PreparaRoles() { return {}; }
  // AdmiteRol: makes a role of the server's own for a user of this hotel, with that password when there is none of her
  // name. AjustaRol: gives that role, where there is one, those rights and no more; whether there is. com::Error
  // kSoloLectura when this session may not.
  virtual bool AjustaRol(const std::string& /*usuario*/, const Alcance& /*alcance*/) { return false; }
  virtual void AdmiteRol(const std::string& /*usuario*/, const std::string& /*contrasena*/) {}
};

// What an engine offers.
class ConexionDeMotor : public ado::Connection {
 public:
  // Parameters of the host's own statements, bound to "?" in order.
  using Parametros = std::vector<com::Variant>;

  ado::RecordsetPtr Execute(const ado::TextoSQL& sentencia) override = 0;
  using ado::Connection::Execute;
  // The host's own statement: SQL Server text with "?" parameters, translated as the screens' text is.
  virtual ado::RecordsetPtr Consulta(std::string_view sentencia, const Parametros& parametros = {}) = 0;
  // A tester's statement: translated when the translator knows it, as it stands otherwise.
  virtual ado::RecordsetPtr Directa(std::string_view sentencia) = 0;
  virtual bool EnTransaccion() const = 0;
  // Called after a transaction has ended: committed or rolled back. Must not raise.
  std::function<void(bool confirmada)> alTerminarTransaccion;
  virtual esquema::Motor Motor() const = 0;
  // Takes the turn of a work that one program at a time may do, until this program ends; false when another one has
  // it. Always given for a database in memory.
  virtual bool TomaTurno(const std::string& trabajo) = 0;
  // trabajo: a plain word. Inside a transaction: waits while another one is at the same work, and keeps others waiting
  // until its end. The embedded engine's transactions do so by themselves.
  virtual void EsperaTurno(const std::string& trabajo) = 0;
  // What the clerk is to know about the database that was opened (guards put back, a check that failed behind her
  // back); each notice is given once.
  virtual std::vector<std::string> TomaAvisos() { return {}; }
  // The rights in the database, whose may be changed or limited.
  virtual RolesDeLaBase& roles() = 0;
};

// The connection of the services: the engine's, with what the host watches over (vigilante.h).
class Conexion : public ConexionDeMotor {
 public:
  // What others changed in a reservation since this connection showed it, told for the clerk; "" when nothing, or when
  // it never showed it. Told once: what is there now then counts as seen. Inside a transaction nobody else changes the
  // reservation until its end.
  virtual std::string CambioAjeno(const std::string& folio) = 0;
  // What this connection showed last of a reservation, as text that another session can take up; "" when it never
  // showed it.
  virtual std::string LoVisto(const std::string& folio) = 0;
  // Takes up what another session had been shown of a reservation that this one has shown too: what changed since then
  // is told by CambioAjeno. A text that cannot be read counts as an older version.
  virtual void RetomaLoVisto(const std::string& folio, const std::string& visto) = 0;
  // Between the two calls a person is asked: an open transaction holds no lock meanwhile. It goes on with the next
  // statement, as if it had begun there.
  virtual void Suelta() = 0;
  virtual void Retoma() = 0;
};

// Opens the database. A missing SQLite file, or an empty PostgreSQL database, gets the empty schema, whole or not at
// all. com::Error kAjena for one that is not this system's, kSoloLectura, kOcupada, kLlena, kArgumento for an address
// that is none, kBaseDatos otherwise; nothing half-written.
std::shared_ptr<Conexion> AbreConexion(const OpcionesConexion& opciones, const Reloj& reloj);

// The engine's connection alone, for work on whole tables: nobody watches over what others change.
std::shared_ptr<ConexionDeMotor> AbreMotor(const OpcionesConexion& opciones, const Reloj& reloj);

}  // namespace autonomo
