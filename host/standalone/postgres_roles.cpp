// The part of a session that its rights in the server are (schema/roles.h).
#include "host/standalone/postgres_sesion.h"
#include "platform/com/texto.h"

namespace autonomo {

void SesionPostgres::LeeRoles() {
  const Resultado r = Corre("SELECT current_schema(), current_setting('search_path'), session_user");
  esquema_ = PQgetisnull(r.get(), 0, 0) != 0 ? "public" : PQgetvalue(r.get(), 0, 0);
  camino_ = PQgetvalue(r.get(), 0, 1);
  propio_ = PQgetvalue(r.get(), 0, 2);
  roles_ = esquema::RolesDe(PQdb(c_.get()));
}

std::string SesionPostgres::Literal(const std::string& texto) const {
  char* citado = PQescapeLiteral(c_.get(), texto.data(), texto.size());
  if (citado == nullptr) throw com::Error(com::error::kArgumento, "El texto no se puede escribir en una sentencia");
  std::string literal = citado;
  PQfreemem(citado);
  return literal;
}

// A user with all rights works with those of the role that connected.
void SesionPostgres::AplicaAlcance() {
  const std::string rol = alcance_.tarjetas && alcance_.administra ? ""
                          : alcance_.tarjetas                      ? roles_.tarjetas
                          : alcance_.administra                    ? roles_.administra
                                                                   : roles_.recepcion;
  if (rol.empty()) {
    Corre("SET ROLE NONE");
  } else {
    Corre("SELECT set_config('role', CASE WHEN pg_has_role(session_user, to_regrole(" + Literal(esquema::Citado(rol)) +
          "), 'MEMBER') THEN " + Literal(rol) + " ELSE 'none' END, false)");
  }
  const auto puede = [&](const char* tabla, const char* derecho) {
    return "COALESCE(has_table_privilege(to_regclass(" +
           Literal(esquema::Citado(esquema_) + "." + com::Minusculas(tabla)) + "), '" + derecho + "'), true)";
  };
  const auto vistas = [](const std::string& esquema, const std::string& puedeSin) {
    return "CASE WHEN NOT " + puedeSin + " AND to_regnamespace('" + esquema + "') IS NOT NULL THEN '" + esquema +
           "' END";
  };
  const std::string ve = puede("Reservacion_Datos_Tarjeta", "SELECT");
  const Resultado r = Corre("SELECT set_config('search_path', concat_ws(', ', " + vistas(esquema::kMostrador, ve) +
                            ", " + vistas(esquema::kEsquemaBitacora, puede("Bitacora", "INSERT")) + ", " +
                            vistas(esquema::kEsquemaUsuarios, puede("Usuario", "SELECT")) + ", " + Literal(camino_) +
                            "), false), " + ve);
  ocultaTarjetas_ = *PQgetvalue(r.get(), 0, 1) == 'f';
}

void SesionPostgres::Limita(const Alcance& alcance) {
  alcance_ = alcance;
  AplicaAlcance();
}

std::string SesionPostgres::SinRoles(const com::Error& e) const {
  return "Los derechos de cada usuario los cuida el programa, pero no también el servidor: " + propio_ +
         " no puede hacer los roles que eso pide (" + e.Descripcion() +
         "). Si los quiere también en el servidor, quien lo administra corre ALTER ROLE " + esquema::Citado(propio_) +
         " CREATEROLE y después se corre reservas-base usuario.";
}

std::string SesionPostgres::PreparaRoles() {
  try {
    if (*PQgetvalue(Corre(esquema::HayRoles(roles_)).get(), 0, 0) == 't') return {};
    Corre("BEGIN; SELECT pg_advisory_xact_lock(207, 0)");
    Corre(esquema::PoneRoles(roles_, esquema_));
    Corre("COMMIT");
    return {};
  } catch (const com::Error& e) {
    PQclear(PQexec(c_.get(), "ROLLBACK"));
    return SinRoles(e);
  }
}

// In the transaction that makes the schema, which goes on without them.
void SesionPostgres::PoneRoles() {
  Corre("SAVEPOINT roles");
  try {
    Corre(esquema::PoneRoles(roles_, esquema_));
    Corre("RELEASE SAVEPOINT roles");
  } catch (const com::Error& e) {
    Corre("ROLLBACK TO SAVEPOINT roles");
    avisos_.push_back(SinRoles(e));
  }
}

// The password goes to the server as what it would keep of it.
void SesionPostgres::AdmiteRol(const std::string& usuario, const std::string& contrasena) {
  const std::string rol = com::Minusculas(com::Recorta(usuario));
  if (rol == propio_)
    throw com::Error(com::error::kArgumento, "El rol " + rol + " del servidor es el dueño de la base: use otra clave");
  if (PQntuples(Corre("SELECT FROM pg_roles WHERE rolname = $1", {rol.c_str()}).get()) == 0) {
    char* cifrada = PQencryptPasswordConn(c_.get(), contrasena.c_str(), rol.c_str(), nullptr);
    if (cifrada == nullptr) throw com::Error(com::error::kBaseDatos, "El servidor no dice cómo guarda las contraseñas");
    const std::string guardada = cifrada;
    PQfreemem(cifrada);
    Corre("CREATE ROLE " + esquema::Citado(rol) + " LOGIN PASSWORD " + Literal(guardada));
  }
  Corre("GRANT " + esquema::Citado(roles_.recepcion) + " TO " + esquema::Citado(rol));
}

std::string SesionPostgres::SentenciaAjustaRol(const std::string& usuario, const Alcance& alcance) const {
  const auto si = [](bool valor) { return valor ? ", true" : ", false"; };
  return "SELECT kv207_mostrador.ajusta_rol(" + Literal(com::Recorta(usuario)) + si(alcance.entra) +
         si(alcance.tarjetas) + si(alcance.administra) + ")";
}

}  // namespace autonomo
