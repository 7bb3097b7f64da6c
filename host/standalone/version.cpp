#include "host/standalone/version.h"

#include <libpq-fe.h>
#include <sqlite3.h>

#include <functional>

#include "host/standalone/postgres.h"
#include "host/standalone/postgres_sesion.h"
#include "platform/com/error.h"
#include "schema/esquema.h"

namespace autonomo {

namespace {

std::string Texto(std::string_view programa, std::string_view base, const std::string& motor,
                  const std::string& esquema) {
  return std::string(programa) + " " KV207_VERSION "\nMotor: " + motor + "\nVersión del esquema: " + esquema +
         "\nBase de datos: " + std::string(base) + '\n';
}

std::string Libpq() {
  const int version = PQlibVersion();
  return "(libpq " + std::to_string(version / 10000) + "." + std::to_string(version % 10000) + ")";
}

std::string Vigente() { return std::to_string(esquema::kVersion); }

std::string EsquemaGuardado(int version) {
  if (version == 0) return "ninguna, ahí no hay ningún hotel";
  if (version == esquema::kVersion) return Vigente();
  return std::to_string(version) + "; la de este programa es la " + Vigente();
}

std::string DelServidor(std::string_view programa, std::string_view base,
                        const std::function<VersionesDelServidor()>& pregunta) {
  try {
    const VersionesDelServidor suyas = pregunta();
    // "15.6 (Debian 15.6-0)"
    const std::string servidor = suyas.servidor.substr(0, suyas.servidor.find(' '));
    return Texto(programa, base, "PostgreSQL " + servidor + " " + Libpq(), EsquemaGuardado(suyas.esquema));
  } catch (const com::Error& e) {
    return Texto(programa, base, "PostgreSQL " + Libpq() + ". No se le pudo preguntar al servidor: " + e.Descripcion(),
                 "la de este programa es la " + Vigente());
  }
}

}  // namespace

std::string TextoVersion(std::string_view programa, std::string_view base) {
  RevisaHotel(std::string(base));
  return Texto(programa, base,
               EsDireccion(base) ? "PostgreSQL " + Libpq() : std::string("SQLite ") + sqlite3_libversion(), Vigente());
}

std::string TextoVersionPreguntando(std::string_view programa, const std::string& base) {
  if (!EsDireccion(base)) return TextoVersion(programa, base);
  RevisaDireccion(base);
  OpcionesConexion opciones;
  opciones.conexion = base;
  return DelServidor(programa, base, [&] { return SesionPostgres::VersionesDe(opciones); });
}

std::string TextoVersionDe(ConexionDeMotor& abierta, std::string_view programa, const std::string& base) {
  if (abierta.Motor() != esquema::Motor::PostgreSQL) return TextoVersion(programa, base);
  return DelServidor(programa, base, [&] { return VersionesDe(abierta); });
}

}  // namespace autonomo
