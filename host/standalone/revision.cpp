#include "host/standalone/revision.h"

#include <sys/stat.h>

#include <utility>

#include "host/standalone/integridad.h"
#include "host/standalone/manija.h"
#include "host/standalone/parametros.h"
#include "host/standalone/postgres_sesion.h"
#include "host/standalone/respaldo.h"
#include "host/standalone/sentencia.h"
#include "host/standalone/transaccion.h"
#include "platform/com/error.h"
#include "platform/com/variant.h"
#include "schema/esquema.h"
#include "schema/guardas.h"

namespace autonomo {
namespace {

using Hallazgos = std::vector<Hallazgo>;

// --- the file, before it is opened to be worked in

// The first things that the engine's check finds wrong, a line each.
std::string DanoDe(sqlite3* base, const std::string& revision) {
  const std::string sql = "PRAGMA " + revision + "(5)";
  const auto filas = Sentencia(base, sql, {}, sql).Corre(sql);
  std::string dano;
  for (; !filas->Eof(); filas->MoveNext()) {
    const std::string dice = com::CStr(filas->Fields(0).Value());
    if (dice != "ok") dano += "\n    " + dice;
  }
  return dano;
}

std::string TablasAjenas(sqlite3* base) {
  constexpr std::string_view kTablas =
      "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite[_]%'";
  const auto tablas = Sentencia(base, kTablas, {}, kTablas).Corre(kTablas);
  std::string ajenas;
  for (; !tablas->Eof(); tablas->MoveNext()) {
    const std::string nombre = com::CStr(tablas->Fields(0).Value());
    if (esquema::BuscaTabla(nombre) == nullptr) ajenas += (ajenas.empty() ? "" : ", ") + nombre;
  }
  return ajenas;
}

// Gives whether it is the present one.
bool RevisaVersion(std::int64_t version, Hallazgos& h) {
  const std::string vigente = std::to_string(esquema::kVersion);
  h.push_back(
      {version > esquema::kVersion,
       "Versión del esquema: " + std::to_string(version) +
           (version < esquema::kVersion
                ? "; se pone al día a la " + vigente + " al abrirlo para trabajar, y entonces se revisa lo demás"
                : (version > esquema::kVersion ? ", y este programa conoce la " + vigente : ""))});
  return version == esquema::kVersion;
}

bool RevisaServidor(const OpcionesConexion& opciones, Hallazgos& h) {
  const int version = SesionPostgres::VersionesDe(opciones).esquema;
  if (version > 0) return RevisaVersion(version, h);
  throw com::Error(com::error::kBaseDatos, "En la base de datos del servidor no hay ningún hotel");
}

// Gives whether its definition is the present one; what is no hotel is told when it is opened.
bool RevisaArchivo(const std::string& ruta, Hallazgos& h) {
  struct stat datos {};
  if (stat(ruta.c_str(), &datos) != 0) throw com::Error(com::error::kBaseDatos, "No existe " + ruta);
  if (datos.st_size == 0) return true;
  RevisaBitacora(ruta);
  const Manija base = AbreManija(ruta, SQLITE_OPEN_READONLY);
  if (!EsHotel(base.get())) return true;
  ExigeBitacora(base.get());
  const auto version = Entero(base.get(), "PRAGMA user_version");
  // Indexes of an earlier version are ordered anew when it is brought forward.
  const std::string dano = DanoDe(base.get(), version < esquema::kVersion ? "quick_check" : "integrity_check");
  h.push_back({!dano.empty(), "Páginas e índices: " + (dano.empty() ? "sin daño" : "dañados" + dano)});
  const bool vigente = RevisaVersion(version, h);
  const std::string ajenas = TablasAjenas(base.get());
  if (!ajenas.empty()) h.push_back({false, "Tablas que no son del sistema: " + ajenas});
  return vigente;
}

// --- what it holds, on any engine

void RevisaReferencias(Conexion& base, Hallazgos& h) {
  const std::size_t antes = h.size();
  for (const auto& r : esquema::Referencias()) {
    const std::string tabla(r.tabla), columna(r.columna), otra(r.otra), llave(r.llave);
    const auto filas = base.Consulta("SELECT COUNT(*) AS Cantidad, MIN(" + columna + ") AS Ejemplo FROM " + tabla +
                                     " WHERE " + columna + " <> '' AND NOT EXISTS (SELECT 1 FROM " + otra +
                                     " o WHERE o." + llave + " = " + tabla + '.' + columna + ")");
    const double sueltas = com::CDbl(filas->Fields(0).Value());
    if (sueltas == 0) continue;
    h.push_back({true, com::CStr(com::Variant(sueltas)) + " renglones de " + tabla + " con una clave de " + otra +
                           " que no existe (" + columna + ", por ejemplo «" +
                           com::RecortaDerecha(com::CStr(filas->Fields(1).Value())) + "»)"});
  }
  if (h.size() == antes) h.push_back({false, "Claves: todas existen en su catálogo"});
}

bool AdmiteSobreventa(Conexion& base) {
  try {
    return com::CBool(ValorParametro(base, anfitrion::parametro::kSobreventa.clave));
  } catch (const com::Error&) {
    return true;
  }
}

void RevisaNoches(Conexion& base, Hallazgos& h) {
  const std::string dobles = ListaNochesDobles(*base.Directa(kNochesDobles));
  const bool admite = AdmiteSobreventa(base);
  h.push_back({!dobles.empty() && !admite, dobles.empty()
                                               ? "Noches: ninguna en dos reservaciones a la vez"
                                               : std::string("Noches en dos reservaciones a la vez") +
                                                     (admite ? ", que la sobreventa permite:" : ":") + dobles});
}

// What the server keeps as sold and no line holds is refused to everybody: it is set free.
void RevisaNochesApartadas(Conexion& base, Hallazgos& h) {
  if (base.Motor() != esquema::Motor::PostgreSQL) return;
  const auto filas = base.Directa(esquema::kNochesSinRenglon);
  if (filas->Eof()) return h.push_back({false, "Noches apartadas: todas son de un renglón"});
  std::string cuales;
  for (; !filas->Eof(); filas->MoveNext()) {
    const auto campo = [&](std::size_t cual) { return com::RecortaDerecha(com::CStr(filas->Fields(cual).Value())); };
    cuales += "\n    habitación " + campo(0) + ", del " + campo(1) + " al " + campo(2) + ", reservación " + campo(3);
  }
  h.push_back({true, "Noches apartadas que ninguna reservación tiene, y que no se podían vender:" + cuales});
  try {
    Transaccion t(base);
    for (const auto sentencia : {esquema::kDetieneNoches, esquema::kOlvidaNoches, esquema::kApartaNoches})
      base.Directa(sentencia);
    t.Concluye();
    h.push_back({false, "Esas noches ya se pueden vender"});
  } catch (const com::Error& e) {
    h.push_back({true, "Esas noches no se pudieron liberar: " + e.Descripcion()});
  }
}

void RevisaContenido(Conexion& base, Hallazgos& h) {
  for (const std::string& aviso : base.TomaAvisos()) h.push_back({true, aviso});
  RevisaReferencias(base, h);
  RevisaNoches(base, h);
  RevisaNochesApartadas(base, h);
  for (const std::string& motivo : ParametrosIlegibles(base)) h.push_back({true, motivo});
}

void RevisaCopias(const std::string& ruta, Hallazgos& h) {
  const auto copias = Copias(ruta);
  const auto buena = UltimaBuena(ruta);
  const std::string cuantas = std::to_string(copias.size()) + " en " + CarpetaDeCopias(ruta);
  h.push_back({!copias.empty() && buena != copias.front(),
               "Copias de respaldo: " + cuantas + (buena ? ", la última buena es " + *buena : "")});
}

}  // namespace

std::vector<Hallazgo> Revisa(const OpcionesConexion& opciones, const Reloj& reloj) {
  Hallazgos h;
  try {
    const bool vigente = opciones.conexion.empty() ? RevisaArchivo(opciones.ruta, h) : RevisaServidor(opciones, h);
    if (vigente) RevisaContenido(*AbreConexion(opciones, reloj), h);
    if (opciones.conexion.empty()) RevisaCopias(opciones.ruta, h);
  } catch (const com::Error& e) {
    h.push_back({true, e.Descripcion()});
  }
  return h;
}

}  // namespace autonomo
