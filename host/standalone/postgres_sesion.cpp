#include "host/standalone/postgres_sesion.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <map>
#include <set>
#include <utility>

#include "host/standalone/integridad.h"
#include "host/standalone/postgres.h"
#include "host/standalone/red.h"
#include "platform/ado/celda.h"
#include "platform/com/texto.h"
#include "platform/com/variant.h"
#include "schema/guardas.h"

namespace autonomo {
namespace {

using com::error::kAjena;
using com::error::kArgumento;
using com::error::kBaseDatos;

constexpr const char* kComoSeEscribe = "se escribe postgresql://usuario@servidor/base";
// Seconds until a server that does not answer is given up.
constexpr const char* kEsperaDeConexion = "10";

std::string DelEntorno(const char* nombre) {
  const char* valor = std::getenv(nombre);
  return valor == nullptr ? "" : valor;
}

struct LiberaOpciones {
  void operator()(PQconninfoOption* o) const { PQconninfoFree(o); }
};

// What the address says, by the client library's own words. Its text is in no message: it may hold a password.
std::map<std::string, std::string> LeeDireccion(const std::string& direccion) {
  char* error = nullptr;
  const std::unique_ptr<PQconninfoOption, LiberaOpciones> opciones(
      EsDireccion(direccion) ? PQconninfoParse(direccion.c_str(), &error) : nullptr);
  PQfreemem(error);
  if (opciones == nullptr)
    throw com::Error(kArgumento, std::string("La dirección de la base de datos no se entiende: ") + kComoSeEscribe);
  std::map<std::string, std::string> dice;
  for (const PQconninfoOption* o = opciones.get(); o->keyword != nullptr; ++o)
    if (o->val != nullptr) dice[o->keyword] = o->val;
  if (dice.contains("password") || dice.contains("sslpassword"))
    throw com::Error(kArgumento,
                     "La contraseña de la base de datos no se escribe en la dirección, donde otros la leen: use el "
                     "archivo ~/.pgpass, un servicio o la variable PGPASSWORD, o escríbala cuando se le pida");
  return dice;
}

bool PareceDireccion(const std::string& texto) {
  const std::string plegado = com::Plegado(com::Recorta(texto));
  const std::string postgres = com::Plegado("postgres"), contrasena = com::Plegado("password=");
  const auto tiene = [&](std::string_view parte) { return plegado.find(parte) != std::string::npos; };
  return tiene("://") || tiene(contrasena) || (plegado.starts_with(postgres) && tiene(":"));
}

bool EsDeAqui(const std::string& servidor) {
  return servidor.empty() || servidor.starts_with('/') || servidor.starts_with('@') || EsDeEsteEquipo(servidor);
}

// What the client library makes of the address with services, environment and defaults: the options that it would
// connect with. One whose value it does not know keeps it from doing so.
std::map<std::string, std::string> Resuelve(const std::string& direccion) {
  const char* const claves[] = {"dbname", "channel_binding", nullptr};
  const char* const valores[] = {direccion.c_str(), "ninguno de los que hay", nullptr};
  const std::unique_ptr<PGconn, decltype(&PQfinish)> c(PQconnectStartParams(claves, valores, 1), &PQfinish);
  const std::unique_ptr<PQconninfoOption, LiberaOpciones> opciones(PQconninfo(c.get()));
  std::map<std::string, std::string> hay;
  for (const PQconninfoOption* o = opciones.get(); o != nullptr && o->keyword != nullptr; ++o)
    if (o->val != nullptr) hay[o->keyword] = o->val;
  return hay;
}

std::vector<std::string> PorComas(const std::string& texto) {
  std::vector<std::string> partes(1);
  for (const char c : texto) {
    if (c == ',') {
      partes.emplace_back();
    } else {
      partes.back() += c;
    }
  }
  return partes;
}

// The servers that these options lead to, each by what is connected to: an address stands before a name.
std::vector<std::string> Servidores(std::map<std::string, std::string>& opciones) {
  std::vector<std::string> nombres = PorComas(opciones["host"]), numeros = PorComas(opciones["hostaddr"]);
  nombres.resize(std::max(nombres.size(), numeros.size()));
  for (std::size_t i = 0; i < numeros.size(); ++i)
    if (!numeros[i].empty()) nombres[i] = numeros[i];
  return nombres;
}

// Whether this machine holds certificates of authorities for servers.
bool HayAutoridad(const std::string& rootcert) {
  return !rootcert.empty() || access((DelEntorno("HOME") + "/.postgresql/root.crt").c_str(), R_OK) == 0;
}

}  // namespace

bool EsDireccion(std::string_view texto) {
  return texto.starts_with("postgresql://") || texto.starts_with("postgres://");
}

void RevisaDireccion(const std::string& direccion) { LeeDireccion(direccion); }

void RevisaHotel(const std::string& hotel) {
  if (EsDireccion(hotel) || PareceDireccion(hotel)) RevisaDireccion(hotel);
}

com::Error ErrorDePerdida(std::string_view sentencia, bool enTransaccion) {
  const char* guardado = enTransaccion ? "No se guardó nada: lo capturado sigue en la pantalla; vuelva" : "Vuelva";
  return {kBaseDatos,
          std::string("Se perdió la conexión con el servidor de la base de datos. ") + guardado +
              " a intentarlo en un momento",
          std::string(sentencia)};
}

SesionPostgres::SesionPostgres(const OpcionesConexion& opciones) : SesionPostgres(opciones, SoloMira()) {
  PreparaEsquema();
  AplicaAlcance();
}

SesionPostgres::SesionPostgres(const OpcionesConexion& opciones, SoloMira /*mira*/) : opciones_(opciones) {
  DecideCifrado(LeeDireccion(opciones.conexion));
  Enlaza();
  LeeRoles();
}

// Off this machine always encrypted; the server's certificate is checked, name and all, where an authority to check it
// by has been put in place. A server as it comes from its package has a certificate that nobody signed: asking for one
// that can be checked would leave most hotels without encryption, since they would turn all of it off.
//
// Who says how, in the address, the service or the environment, is listened to. "prefer" is what the client library
// takes when nobody does.
void SesionPostgres::DecideCifrado(const std::map<std::string, std::string>& dice) {
  auto opciones = Resuelve(opciones_.conexion);
  const std::vector<std::string> servidores = Servidores(opciones);
  const auto ajeno = std::ranges::find_if_not(servidores, EsDeAqui);
  const std::string usuario = opciones["user"];
  quien_ = (usuario.empty() ? "" : usuario + " en ") + (ajeno == servidores.end() ? "esta máquina" : *ajeno);
  const std::string modo = opciones["sslmode"];
  cifra_ = !dice.contains("sslmode") && DelEntorno("PGSSLMODE").empty() && (modo.empty() || modo == "prefer");
  if (cifra_ && ajeno != servidores.end()) sslmode_ = HayAutoridad(opciones["sslrootcert"]) ? "verify-full" : "require";
}

VersionesDelServidor VersionesDe(ConexionDeMotor& abierta) {
  const ado::RecordsetPtr rs = abierta.Directa(
      "SELECT current_setting('server_version') AS Servidor, MAX(Ev_Version) AS Esquema FROM Esquema_Version");
  return {ado::Celda(*rs, 0), ado::CeldaEntero(*rs, 1)};
}

VersionesDelServidor SesionPostgres::VersionesDe(const OpcionesConexion& opciones) {
  SesionPostgres sesion(opciones, SoloMira{});
  const char* servidor = PQparameterStatus(sesion.manija(), "server_version");
  return {servidor == nullptr ? "" : servidor, sesion.Version()};
}

// Calls the server with that password, "" none: what comes back may be no connection.
SesionPostgres::Manija SesionPostgres::Marca(const std::string& contrasena) const {
  std::vector<const char*> claves, valores;
  // What the address says itself stands.
  for (const auto& [clave, valor] : std::initializer_list<std::pair<const char*, const char*>>{
           {"client_encoding", "UTF8"},
           {"application_name", "reservas"},
           {"connect_timeout", kEsperaDeConexion},
           {"keepalives_idle", "10"},
           {"keepalives_interval", "5"},
           {"keepalives_count", "3"},
           {"tcp_user_timeout", "15000"},
           {"sslmode", sslmode_.c_str()},
           {"password", contrasena.c_str()},
           {"dbname", opciones_.conexion.c_str()},
       }) {
    if (*valor == '\0') continue;
    claves.push_back(clave);
    valores.push_back(valor);
  }
  claves.push_back(nullptr);
  valores.push_back(nullptr);
  return Manija(PQconnectdbParams(claves.data(), valores.data(), 1));
}

// Asks for the password when the server wants one and none of the usual places holds it.
void SesionPostgres::Enlaza() {
  for (bool corrige = false;; corrige = true) {
    c_ = Marca(contrasena_);
    if (PQstatus(c_.get()) == CONNECTION_OK) break;
    const bool falta = PQconnectionNeedsPassword(c_.get()) != 0,
               mala = corrige && PQconnectionUsedPassword(c_.get()) != 0;
    if (!opciones_.pideContrasena || !(falta || mala)) throw ErrorDeConexion(PQerrorMessage(c_.get()));
    const auto dada = opciones_.pideContrasena((mala ? "La contraseña no es correcta. " : "") +
                                               ("Contraseña de la base de datos de " + quien_));
    if (!dada || dada->empty()) throw ErrorDeConexion(PQerrorMessage(c_.get()));
    contrasena_ = *dada;
  }
  // A name of this machine that leads to another one, by whatever its tables of names say.
  const char* adonde = PQhostaddr(c_.get());
  if (cifra_ && adonde != nullptr && !EsDeAqui(adonde) && PQsslInUse(c_.get()) == 0 && PQgssEncInUse(c_.get()) == 0) {
    c_.reset();
    throw com::Error(kBaseDatos, "La conexión con el servidor de la base de datos, " + quien_ +
                                     ", salió de esta máquina sin cifrar: escriba en la dirección el nombre del "
                                     "servidor");
  }
  PQsetNoticeReceiver(
      c_.get(), [](void*, const PGresult*) {}, nullptr);
  ++cual_;
  // A plan for any values takes a state for a third of the rows and a range of dates for all of history: after a few
  // runs of a prepared statement the server would go over to it. And a hotel's tables lie in memory, where a row that
  // an index finds costs no more than one that is passed by; or else it reads all lines for a month's.
  Corre("SET lock_timeout = " + std::to_string(opciones_.esperaMs) +
        "; SET datestyle = 'ISO, YMD'; SET plan_cache_mode = force_custom_plan; SET random_page_cost = 1.1");
}

void SesionPostgres::Conecta() {
  Enlaza();
  AplicaAlcance();
  for (const std::string& turno : turnos_) PideTurno(turno);
}

bool SesionPostgres::Viva() {
  // A server that has gone has told so, or has closed the line: it lies there to be read.
  pollfd linea{PQsocket(c_.get()), POLLIN, 0};
  while (PQstatus(c_.get()) == CONNECTION_OK && poll(&linea, 1, 0) > 0) {
    if (PQconsumeInput(c_.get()) == 0) break;
  }
  return PQstatus(c_.get()) == CONNECTION_OK;
}

Resultado SesionPostgres::Revisa(PGresult* resultado, const std::string& sql) {
  Resultado r(resultado);
  if (PQstatus(c_.get()) != CONNECTION_OK) throw ErrorDePerdida(sql, false);
  const auto estado = PQresultStatus(r.get());
  if (estado != PGRES_COMMAND_OK && estado != PGRES_TUPLES_OK) throw ErrorDe(r.get(), sql);
  return r;
}

// Of two nights that the constraint kept apart its detail tells room and nights. Whose the other one is another session
// is asked: this one may be in a transaction that does not see it.
com::Error SesionPostgres::ErrorDe(const PGresult* resultado, std::string_view sentencia) {
  com::Error error = ErrorPostgres(resultado, sentencia);
  const auto choque = NochesEnChoque(resultado);
  if (!choque) return error;
  const Manija otra = Marca(contrasena_);
  const std::string consulta =
      "SELECT rtrim(lower($1::rango_clave)), "
      "to_char(GREATEST(lower($2::daterange), lower($3::daterange)), 'DD/MM/YYYY'), vendida.Rs_Folio, "
      "EXISTS (SELECT FROM Reservacion_Detalle linea WHERE linea.Rs_Folio = vendida.Rs_Folio "
      "AND linea.Hb_Cve_Habitacion = lower($1::rango_clave) "
      "AND noches(linea.Rsd_Fecha_Inicio, linea.Rsd_Fecha_Fin) = Nv_Noches) "
      "FROM Noche_Vendida vendida WHERE Nv_Habitacion = $1::rango_clave AND Nv_Noches = $3::daterange";
  const char* const valores[] = {choque->habitacion.c_str(), choque->nuevas.c_str(), choque->vendidas.c_str()};
  const Resultado r(PQexecParams(otra.get(), consulta.c_str(), 3, nullptr, valores, nullptr, nullptr, 0));
  if (PQntuples(r.get()) == 0) return error;  // gone by now, or nobody may be asked
  const auto campo = [&](int cual) { return std::string(PQgetvalue(r.get(), 0, cual)); };
  const std::string vana =
      campo(3) == "t" ? "" : ", que ya no la tiene: quien cuida la base corre reservas-base revisa";
  return {error.Numero(),
          "La habitación " + campo(0) + " ya está reservada la noche del " + campo(1) + " por la reservación " +
              com::RecortaDerecha(campo(2)) + vana,
          std::string(sentencia)};
}

Resultado SesionPostgres::Corre(const std::string& sql) { return Revisa(PQexec(c_.get(), sql.c_str()), sql); }

Resultado SesionPostgres::Corre(const std::string& sql, const std::vector<const char*>& valores) {
  return Revisa(PQexecParams(c_.get(), sql.c_str(), static_cast<int>(valores.size()), nullptr, valores.data(), nullptr,
                             nullptr, 0),
                sql);
}

bool SesionPostgres::PideTurno(const std::string& nombre) {
  const Resultado r = Corre("SELECT pg_try_advisory_lock(208, hashtext($1))", {nombre.c_str()});
  return *PQgetvalue(r.get(), 0, 0) == 't';
}

bool SesionPostgres::TomaTurno(const std::string& nombre) {
  const bool mio = PideTurno(nombre);
  if (mio) turnos_.push_back(nombre);
  return mio;
}

// Puts back guards that somebody has dropped, disabled or changed, and with them what they keep.
void SesionPostgres::PoneGuardas() {
  const Resultado hay = Corre(
      "SELECT tgname, pg_get_triggerdef(pg_trigger.oid, true) FROM pg_trigger "
      "INNER JOIN pg_class ON pg_class.oid = tgrelid "
      "WHERE NOT tgisinternal AND tgenabled IN ('O', 'A') AND relnamespace = current_schema()::regnamespace "
      "UNION ALL SELECT proname, prosrc FROM pg_proc WHERE pronamespace = current_schema()::regnamespace");
  std::multimap<std::string, std::string> dicen;
  for (int i = 0; i < PQntuples(hay.get()); ++i)
    dicen.emplace(PQgetvalue(hay.get(), i, 0), PQgetvalue(hay.get(), i, 1));
  // A function is kept as the text between its marks, a trigger as the server would write it.
  const auto dice = [](const esquema::Objeto& o) {
    if (o.clase == esquema::Objeto::Clase::Guarda) return com::Minusculas(o.sql);
    const std::size_t desde = o.sql.find("$$") + 2;
    return o.sql.substr(desde, o.sql.rfind("$$") - desde);
  };
  std::vector<std::string> faltan;
  std::string sentencias;
  for (const esquema::Objeto& o : esquema::Guardas(esquema::Motor::PostgreSQL)) {
    using Clase = esquema::Objeto::Clase;
    if (o.clase != Clase::Guarda && o.clase != Clase::Funcion) continue;
    const auto [desde, hasta] = dicen.equal_range(com::Minusculas(o.nombre));
    const std::string debe = dice(o);
    if (std::any_of(desde, hasta, [&](const auto& h) {
          return (o.clase == Clase::Guarda ? com::Minusculas(h.second) : h.second) == debe;
        }))
      continue;
    faltan.push_back(o.nombre);
    sentencias += esquema::Reemplaza(o.sql, "CREATE TRIGGER", "CREATE OR REPLACE TRIGGER") + ";\n";
  }
  if (faltan.empty()) return;
  try {
    Corre("BEGIN; SELECT pg_advisory_xact_lock(207, 0);" + sentencias + std::string(esquema::kDetieneNoches) + ";" +
          std::string(esquema::kOlvidaNoches) + ";" + std::string(esquema::kApartaNoches));
    PoneRoles();  // a function that is made anew runs with its caller's rights until then
    Corre("COMMIT");
  } catch (const com::Error& e) {
    PQclear(PQexec(c_.get(), "ROLLBACK"));
    throw com::Error(e.Numero(),
                     FaltabanGuardas(faltan) +
                         "Este usuario no las puede poner otra vez: avise a quien cuida la base de datos. " +
                         e.Descripcion());
  }
  avisos_.push_back(GuardasPuestas(faltan));
}

// What an earlier version's database lacks: columns first, on which indexes and functions may rest. Its functions and
// guards become those of today.
void SesionPostgres::PoneAlDia() {
  std::set<std::string> hay;
  const auto lee = [&](const std::string& sql) {
    const Resultado r = Corre(sql);
    for (int i = 0; i < PQntuples(r.get()); ++i) hay.insert(PQgetvalue(r.get(), i, 0));
  };
  lee("SELECT relname FROM pg_class WHERE pg_table_is_visible(oid) "
      "UNION SELECT relname || '.' || attname FROM pg_class INNER JOIN pg_attribute ON attrelid = pg_class.oid "
      "WHERE pg_table_is_visible(pg_class.oid) AND NOT attisdropped "
      "UNION SELECT typname FROM pg_type WHERE pg_type_is_visible(oid) "
      "UNION SELECT collname FROM pg_collation WHERE pg_collation_is_visible(oid) "
      "UNION SELECT oprname FROM pg_operator WHERE pg_operator_is_visible(oid) AND oprleft = 'bpchar'::regtype");
  const auto esta = [&](std::string_view nombre) { return hay.contains(com::Minusculas(std::string(nombre))); };
  for (const esquema::Tabla& tabla : esquema::Tablas()) {
    if (!esta(tabla.nombre)) continue;
    for (const esquema::Columna& columna : tabla.columnas) {
      if (!esta(std::string(tabla.nombre) + "." + std::string(columna.nombre)))
        Corre(esquema::AgregaColumna(esquema::Motor::PostgreSQL, tabla, columna));
    }
  }
  const Resultado guardas =
      Corre("SELECT tgname, tgrelid::regclass FROM pg_trigger WHERE NOT tgisinternal AND pg_table_is_visible(tgrelid)");
  std::map<std::string, std::string> tablaDe;
  for (int i = 0; i < PQntuples(guardas.get()); ++i)
    tablaDe[PQgetvalue(guardas.get(), i, 0)] = PQgetvalue(guardas.get(), i, 1);
  for (const esquema::Objeto& o : esquema::Objetos(esquema::Motor::PostgreSQL)) {
    using Clase = esquema::Objeto::Clase;
    if (o.clase == Clase::Guarda) {
      const auto suya = tablaDe.find(com::Minusculas(o.nombre));
      if (suya != tablaDe.end()) Corre("DROP TRIGGER " + o.nombre + " ON " + suya->second);
    } else if (o.clase != Clase::Funcion && esta(o.nombre)) {
      continue;
    }
    Corre(o.sql);
  }
}

int SesionPostgres::Numero(const char* sql) { return com::CLng(PQgetvalue(Corre(sql).get(), 0, 0)); }

int SesionPostgres::Version() {
  if (Numero("SELECT COUNT(to_regclass('esquema_version'))") == 0) return 0;
  return Numero("SELECT COALESCE(MAX(Ev_Version), 0) FROM Esquema_Version");
}

// Of two programs that meet at an empty database the second finds the schema made.
void SesionPostgres::PreparaEsquema() {
  if (Version() == esquema::kVersion) {
    PoneGuardas();
    PreparaRoles();  // why not is told when they are needed
    return;
  }
  Corre("BEGIN; SET LOCAL lock_timeout = '1min'; SELECT pg_advisory_xact_lock(207, 0)");
  try {
    const int tiene = Version();
    if (tiene > esquema::kVersion)
      throw com::Error(kAjena, "La base de datos la creó una versión más nueva de este programa");
    if (tiene == 0) {
      constexpr const char* kObjetos =
          "SELECT COUNT(*) FROM pg_class WHERE relkind IN ('r', 'p', 'v', 'm', 'f') "
          "AND relnamespace = COALESCE(current_schema(), 'pg_catalog')::regnamespace "
          "AND oid NOT IN (SELECT objid FROM pg_depend WHERE classid = 'pg_class'::regclass AND deptype = 'e')";
      if (Numero(kObjetos) > 0)
        throw com::Error(kAjena, "La base de datos del servidor no es de reservaciones: ya tiene otras tablas");
      if (!opciones_.crea) throw com::Error(kBaseDatos, "En la base de datos del servidor no hay ningún hotel");
      for (const std::string& sentencia : esquema::Ddl(esquema::Motor::PostgreSQL)) Corre(sentencia);
    } else if (tiene < esquema::kVersion) {
      try {
        PoneAlDia();
      } catch (const com::Error& e) {
        throw com::Error(
            e.Numero(),
            "La base de datos es de una versión anterior de este programa y no se pudo poner al día; quedó "
            "como estaba. " +
                e.Descripcion(),
            e.Sentencia());
      }
    }
    if (tiene < esquema::kVersion) PoneRoles();
    if (tiene < esquema::kVersion)
      Corre("INSERT INTO Esquema_Version (Ev_Version, Ev_Fecha) VALUES (" + std::to_string(esquema::kVersion) +
            ", LOCALTIMESTAMP(0))");
    Corre("COMMIT");
  } catch (const com::Error&) {
    PQclear(PQexec(c_.get(), "ROLLBACK"));
    throw;
  }
}

}  // namespace autonomo
