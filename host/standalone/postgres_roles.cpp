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

// What was asked for and what holds are compared by what the session may do, whatever the reason that it may.
void SesionPostgres::Limita(const Alcance& alcance) {
  alcance_ = alcance;
  AplicaAlcance();
  const Resultado r =
      Corre("SELECT has_table_privilege(" + Literal(esquema::Citado(esquema_) + ".parametro") + ", 'UPDATE')");
  const bool administra = *PQgetvalue(r.get(), 0, 0) == 't';
  if ((alcance_.tarjetas || ocultaTarjetas_) && (alcance_.administra || !administra)) return;
  avisos_.push_back(!sinRoles_.empty() ? sinRoles_
                                       : "El servidor no limita lo que puede hacer esta sesión: " + propio_ +
                                             " no es de los roles de este hotel. Los derechos los cuida sólo el "
                                             "programa; avise a quien cuida la base de datos.");
}

std::string SesionPostgres::SinRoles(const com::Error& e) const {
  return "Los derechos de cada usuario los cuida el programa, pero no también el servidor: " + propio_ +
         " no puede hacer los roles que eso pide (" + e.Descripcion() +
         "). Si los quiere también en el servidor, quien lo administra corre ALTER ROLE " + esquema::Citado(propio_) +
         " CREATEROLE; se hacen la próxima vez que abra el hotel.";
}

std::string SesionPostgres::PreparaRoles() {
  const auto hay = [this] { return *PQgetvalue(Corre(esquema::HayRoles(roles_)).get(), 0, 0) == 't'; };
  sinRoles_.clear();
  try {
    if (hay()) return {};
    Corre("BEGIN; SELECT pg_advisory_xact_lock(207, 0)");
    if (!hay()) Corre(esquema::PoneRoles(roles_, esquema_));  // of two programs one makes them
    Corre("COMMIT");
  } catch (const com::Error& e) {
    PQclear(PQexec(c_.get(), "ROLLBACK"));
    sinRoles_ = SinRoles(e);
  }
  return sinRoles_;
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

// The password goes to the server as what it would keep of it. The server says which letters are the small ones: a name
// that it folds otherwise than this program would be nobody's.
void SesionPostgres::AdmiteRol(const std::string& usuario, const std::string& contrasena) {
  const std::string clave = com::Recorta(usuario);
  const Resultado r = Corre(
      "SELECT lower($1), to_regrole(quote_ident(lower($1))) IS NOT NULL, kv207_mostrador.rol_suyo($1) IS NOT NULL",
      {clave.c_str()});
  const std::string rol = PQgetvalue(r.get(), 0, 0);
  const bool existe = *PQgetvalue(r.get(), 0, 1) == 't', suyo = *PQgetvalue(r.get(), 0, 2) == 't';
  const auto rechaza = [](const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); };
  if (rol == propio_) rechaza("El rol " + rol + " del servidor es el dueño de la base: use otra clave");
  if (existe && !suyo)
    rechaza("En el servidor ya hay un rol " + rol +
            ", que no es de un usuario de este hotel: use otra clave. Si es de " + clave +
            ", quien administra el servidor corre antes GRANT " + esquema::Citado(roles_.usuarios) + " TO " +
            esquema::Citado(rol));
  char* cifrada = PQencryptPasswordConn(c_.get(), contrasena.c_str(), rol.c_str(), nullptr);
  if (cifrada == nullptr) throw com::Error(com::error::kBaseDatos, "El servidor no dice cómo guarda las contraseñas");
  const std::string guardada = cifrada;
  PQfreemem(cifrada);
  Corre((existe ? "ALTER ROLE " : "CREATE ROLE ") + esquema::Citado(rol) + " LOGIN PASSWORD " + Literal(guardada));
  Corre("GRANT " + esquema::Citado(roles_.usuarios) + ", " + esquema::Citado(roles_.recepcion) + " TO " +
        esquema::Citado(rol));
}

std::string SesionPostgres::SentenciaAjustaRol(const std::string& usuario, const Alcance& alcance) const {
  const auto si = [](bool valor) { return valor ? ", true" : ", false"; };
  return "SELECT kv207_mostrador.ajusta_rol(" + Literal(com::Recorta(usuario)) + si(alcance.entra) +
         si(alcance.tarjetas) + si(alcance.administra) + ")";
}

}  // namespace autonomo
