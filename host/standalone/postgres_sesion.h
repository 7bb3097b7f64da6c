// A session with a PostgreSQL server: address, password, encryption, schema, and its being made again.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/standalone/conexion.h"
#include "host/standalone/postgres_errores.h"
#include "schema/roles.h"

namespace autonomo {

struct VersionesDelServidor {
  std::string servidor;  // as it calls itself
  int esquema = 0;       // of the definition that the database holds; 0 without a hotel
};

// Over a connection that is open; errors of Directa.
VersionesDelServidor VersionesDe(ConexionDeMotor& abierta);

class SesionPostgres {
 public:
  // Connects and sees to the schema. Errors of AbrePostgres.
  explicit SesionPostgres(const OpcionesConexion& opciones);

  // Changes nothing. Errors of AbrePostgres.
  static VersionesDelServidor VersionesDe(const OpcionesConexion& opciones);

  // libpq's own; changes with each new connection.
  PGconn* manija() const { return c_.get(); }
  // How many connections it has made.
  int Cual() const { return cual_; }
  // Whether the connection stands, as far as this end knows. Asks nothing of the server.
  bool Viva();
  // Makes the connection anew; com::Error kBaseDatos when it cannot be.
  void Conecta();
  // Runs statements without parameters; with parameters one statement. com::Error kBaseDatos when the connection is
  // lost, ErrorPostgres otherwise.
  Resultado Corre(const std::string& sql);
  Resultado Corre(const std::string& sql, const std::vector<const char*>& valores);
  // The error of a statement that the server refused.
  com::Error ErrorDe(const PGresult* resultado, std::string_view sentencia);
  // ConexionDeMotor::TomaAvisos.
  std::vector<std::string> TomaAvisos() { return std::exchange(avisos_, {}); }
  // Lock of this session, kept when it is made anew; false when another session has it.
  bool TomaTurno(const std::string& nombre);
  // ConexionDeMotor's of the same names.
  void Limita(const Alcance& alcance);
  bool Limitada() const { return !alcance_.tarjetas || !alcance_.administra; }
  bool OcultaTarjetas() const { return ocultaTarjetas_; }
  std::string PreparaRoles();
  void AdmiteRol(const std::string& usuario, const std::string& contrasena);
  // Gives a row: whether the user has a role that was given those rights.
  std::string SentenciaAjustaRol(const std::string& usuario, const Alcance& alcance) const;

 private:
  struct SoloMira {};
  SesionPostgres(const OpcionesConexion& opciones, SoloMira);
  struct Cierra {
    void operator()(PGconn* c) const { PQfinish(c); }
  };
  using Manija = std::unique_ptr<PGconn, Cierra>;
  void DecideCifrado(const std::map<std::string, std::string>& dice);
  Manija Marca(const std::string& contrasena) const;
  void Enlaza();
  int Numero(const char* sql);
  int Version();
  void PreparaEsquema();
  void PoneGuardas();
  void PoneAlDia();
  void LeeRoles();
  void PoneRoles();
  void AplicaAlcance();
  std::string SinRoles(const com::Error& e) const;
  std::string Literal(const std::string& texto) const;
  bool PideTurno(const std::string& nombre);
  Resultado Revisa(PGresult* resultado, const std::string& sql);

  OpcionesConexion opciones_;
  std::string sslmode_;  // "" as the address, the service or the environment say
  bool cifra_ = false;   // nobody asked for less than an encrypted line to another machine
  std::string quien_;    // user and server, for whoever is asked for a password
  std::string contrasena_;
  std::vector<std::string> turnos_, avisos_;
  Manija c_;
  int cual_ = 0;
  std::string esquema_, camino_, propio_;  // schema of the tables, path of the schemas, role that connected
  esquema::Roles roles_;
  std::string sinRoles_;  // why the roles could not be made; "" they are there
  Alcance alcance_;
  bool ocultaTarjetas_ = false;
};

// The error of a statement whose connection was lost under it; enTransaccion: and with it what was under way.
com::Error ErrorDePerdida(std::string_view sentencia, bool enTransaccion);

}  // namespace autonomo
