#include "schema/guardas.h"

#include <initializer_list>
#include <utility>

namespace esquema {

std::string Reemplaza(std::string s, std::string_view clave, std::string_view valor) {
  for (std::size_t i = s.find(clave); i != std::string::npos; i = s.find(clave, i + valor.size()))
    s.replace(i, clave.size(), valor);
  return s;
}

namespace {

// --- guard against selling a room twice
//
// In force while the parameter HT_OVER_BOOKING is stored with a value that means false to the screen: empty, zero in
// any spelling, or the word. A line holds the nights from its start to the day before its end; times of day do not
// count. Only live reservations hold rooms. Each guard looks at the lines that a write made live (`propia`) and refuses
// at the first night that another line (`otra`) already holds.

// The text is made by the refusal itself, so the error says room, night and folio. RAISE makes the statement one that
// may abort, so that the engine undoes it whole when rechaza() fails inside it.
constexpr std::string_view kGuardaSqlite = R"(CREATE TRIGGER {nombre}
AFTER {suceso}
WHEN {condicion}
  AND EXISTS (SELECT 1 FROM Parametro
              WHERE Pm_Clave = 'HT_OVER_BOOKING'
                AND TRIM(Pm_Valor, ' 0.+-') COLLATE ESPANOL IN ('', 'false', 'falso'))
BEGIN
  SELECT CASE WHEN rechaza('La habitación ' || habitacion || ' ya está reservada la noche del '
                           || strftime('%d/%m/%Y', noche)
                           || CASE WHEN folio = suyo THEN ' en esta misma reservación'
                                   ELSE ' por la reservación ' || folio END)
              THEN RAISE(ABORT, 'sobreventa') END
  FROM (SELECT propia.Hb_Cve_Habitacion AS habitacion,
               MAX(substr(propia.Rsd_Fecha_Inicio, 1, 10), substr(otra.Rsd_Fecha_Inicio, 1, 10)) AS noche,
               otra.Rs_Folio AS folio, propia.Rs_Folio AS suyo
        FROM Reservacion_Detalle propia
          INNER JOIN Reservacion_Detalle otra
            ON otra.Hb_Cve_Habitacion = propia.Hb_Cve_Habitacion
            AND otra.Rsd_Fecha_Fin > substr(propia.Rsd_Fecha_Inicio, 1, 10)
            AND otra.rowid <> propia.rowid
        WHERE {propias}
          AND MAX(substr(propia.Rsd_Fecha_Inicio, 1, 10), substr(otra.Rsd_Fecha_Inicio, 1, 10))
            < MIN(substr(propia.Rsd_Fecha_Fin, 1, 10), substr(otra.Rsd_Fecha_Fin, 1, 10))
          AND EXISTS (SELECT 1 FROM Reservacion
                      WHERE Reservacion.Rs_Folio = otra.Rs_Folio AND Es_Cve_Estado NOT IN ('CA', 'CE'))
        ORDER BY noche, folio LIMIT 1);
END)";

Objeto GuardaSqlite(std::string_view nombre, std::string_view suceso, std::string_view condicion,
                    std::string_view propias) {
  std::string s = Reemplaza(std::string(kGuardaSqlite), "{nombre}", nombre);
  s = Reemplaza(s, "{suceso}", suceso);
  s = Reemplaza(s, "{condicion}", condicion);
  return {Objeto::Clase::Guarda, std::string(nombre), Reemplaza(s, "{propias}", propias)};
}

std::vector<Objeto> SobreventaSqlite() {
  constexpr std::string_view kDeLineaViva =
      "EXISTS (SELECT 1 FROM Reservacion WHERE Rs_Folio = NEW.Rs_Folio AND Es_Cve_Estado NOT IN ('CA', 'CE'))";
  return {
      GuardaSqlite("Sobreventa_Alta_Linea", "INSERT ON Reservacion_Detalle", kDeLineaViva, "propia.rowid = NEW.rowid"),
      GuardaSqlite("Sobreventa_Cambio_Linea",
                   "UPDATE OF Rs_Folio, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin ON Reservacion_Detalle",
                   kDeLineaViva, "propia.rowid = NEW.rowid"),
      GuardaSqlite("Sobreventa_Alta_Reservacion", "INSERT ON Reservacion", "NEW.Es_Cve_Estado NOT IN ('CA', 'CE')",
                   "propia.Rs_Folio = NEW.Rs_Folio"),
      GuardaSqlite("Sobreventa_Cambio_Reservacion", "UPDATE OF Rs_Folio, Es_Cve_Estado ON Reservacion",
                   "NEW.Es_Cve_Estado NOT IN ('CA', 'CE')\n"
                   "  AND ((OLD.Es_Cve_Estado NOT IN ('CA', 'CE')) IS NOT 1 OR OLD.Rs_Folio <> NEW.Rs_Folio)",
                   "propia.Rs_Folio = NEW.Rs_Folio"),
  };
}

// The guard compares days by their texts: a day in another spelling would hold no night.
constexpr std::string_view kFechasSqlite = R"(CREATE TRIGGER {nombre}
AFTER {suceso}
WHEN strftime('%Y-%m-%d', NEW.Rsd_Fecha_Inicio) IS NOT substr(NEW.Rsd_Fecha_Inicio, 1, 10)
  OR strftime('%Y-%m-%d', NEW.Rsd_Fecha_Fin) IS NOT substr(NEW.Rsd_Fecha_Fin, 1, 10)
BEGIN
  SELECT CASE WHEN rechaza('Las fechas de la habitación ' || IFNULL(NEW.Hb_Cve_Habitacion, '')
                           || ' no se entienden: se escriben AAAA-MM-DD')
              THEN RAISE(ABORT, 'fechas') END;
END)";

std::vector<Objeto> FechasSqlite() {
  std::vector<Objeto> guardas;
  for (const auto& [nombre, suceso] :
       {std::pair<std::string_view, std::string_view>{"Fechas_Alta_Linea", "INSERT ON Reservacion_Detalle"},
        {"Fechas_Cambio_Linea", "UPDATE OF Rsd_Fecha_Inicio, Rsd_Fecha_Fin ON Reservacion_Detalle"}}) {
    const std::string sql = Reemplaza(std::string(kFechasSqlite), "{nombre}", nombre);
    guardas.push_back({Objeto::Clase::Guarda, std::string(nombre), Reemplaza(sql, "{suceso}", suceso)});
  }
  return guardas;
}

// --- versions
//
// Every write to a reservation, its rooms or its card moves its version on. A security code alone is no change: the
// system itself seals and forgets it, and nobody's work is lost by that; a clerk's card is written whole. Two
// statements, not one with a conflict clause: the clause of the statement that fires a trigger would stand in its
// place.

constexpr std::string_view kVersionSqlite = R"(CREATE TRIGGER {nombre}
AFTER {suceso} ON {tabla}
BEGIN
  UPDATE Reservacion_Version SET Rv_Version = Rv_Version + 1 WHERE Rs_Folio IN ({folios});
  INSERT INTO Reservacion_Version (Rs_Folio, Rv_Version)
    SELECT {folio}, 1 WHERE {folio} IS NOT NULL
      AND NOT EXISTS (SELECT 1 FROM Reservacion_Version WHERE Rs_Folio = {folio});
END)";

struct Suceso {
  std::string_view nombre, sql, folios, folio;
};
constexpr Suceso kSucesos[] = {
    {"Alta", "INSERT", "NEW.Rs_Folio", "NEW.Rs_Folio"},
    {"Cambio", "UPDATE", "OLD.Rs_Folio, NEW.Rs_Folio", "NEW.Rs_Folio"},
    {"Baja", "DELETE", "OLD.Rs_Folio", "OLD.Rs_Folio"},
};
struct ConVersion {
  std::string_view tabla, cambio;  // the update that counts
};
constexpr ConVersion kConVersion[] = {
    {"Reservacion", "UPDATE"},
    {"Reservacion_Detalle", "UPDATE"},
    {"Reservacion_Datos_Tarjeta", "UPDATE OF Rs_Folio, Rdt_Banco, Rdt_Numero, Rdt_Vencimiento"},
};

std::vector<Objeto> VersionesSqlite() {
  std::vector<Objeto> guardas;
  for (const auto& [tabla, cambio] : kConVersion) {
    for (const Suceso& suceso : kSucesos) {
      const std::string nombre = "Version_" + std::string(suceso.nombre) + "_" + std::string(tabla);
      std::string s = Reemplaza(std::string(kVersionSqlite), "{nombre}", nombre);
      s = Reemplaza(s, "{suceso}", suceso.sql == "UPDATE" ? cambio : suceso.sql);
      s = Reemplaza(s, "{tabla}", tabla);
      s = Reemplaza(s, "{folios}", suceso.folios);
      guardas.push_back({Objeto::Clase::Guarda, nombre, Reemplaza(s, "{folio}", suceso.folio)});
    }
  }
  return guardas;
}

// --- PostgreSQL
//
// The nights that are sold while the guard is in force stand in a table of their own, kept by triggers, where an
// exclusion constraint keeps two of them apart whatever writes, also in transactions that do not see one another. It
// cannot stand on the lines themselves: whether a line holds its nights is said by its header and by a parameter, and a
// line may well have its dates the wrong way round. Rooms stand in it as ranges of one key each, since the server
// compares ranges so without an extension that somebody would have to install.
//
// Before that, writers of one room wait for one another at a lock, and the query behind it sees what the other has
// committed: so the loser is told the night and the folio, and lines from a time when the guard was not in force count
// too.

constexpr std::string_view kRangoClave = "CREATE TYPE rango_clave AS RANGE (subtype = bpchar, collation = espanol)";

constexpr std::string_view kNocheVendida = R"(CREATE TABLE Noche_Vendida (
  Rs_Folio bpchar COLLATE espanol NOT NULL,
  Nv_Habitacion rango_clave NOT NULL,
  Nv_Noches daterange NOT NULL,
  CONSTRAINT Noche_Vendida_Una_Vez EXCLUDE USING gist (Nv_Habitacion WITH &&, Nv_Noches WITH &&)
))";

// Empty where the end is not behind the start; NULL where either is missing.
constexpr std::string_view kNoches =
    R"(CREATE OR REPLACE FUNCTION noches(inicio timestamp, fin timestamp) RETURNS daterange LANGUAGE sql IMMUTABLE STRICT AS $$
  SELECT daterange(inicio::date, GREATEST(inicio::date, fin::date))
$$)";

constexpr std::string_view kHaySobreventa =
    R"(CREATE OR REPLACE FUNCTION hay_sobreventa() RETURNS boolean LANGUAGE sql STABLE AS $$
  SELECT NOT EXISTS (SELECT 1 FROM Parametro
                     WHERE Pm_Clave = 'HT_OVER_BOOKING'
                       AND BTRIM(Pm_Valor, ' 0.+-')::bpchar COLLATE espanol IN ('', 'false', 'falso'))
$$)";

// Of the lines that hold the room on one of the nights, one that is like the line itself is that line. A room's few
// lines are looked up one by one: while a hotel is filled, the server's estimates are those of an empty one.
constexpr std::string_view kVende =
    R"(CREATE OR REPLACE FUNCTION vende(suyo bpchar, cuarto bpchar, suyas daterange) RETURNS void LANGUAGE plpgsql
SET enable_mergejoin = off SET enable_hashjoin = off SET enable_seqscan = off AS $$
DECLARE choque record;
BEGIN
  IF suyas IS NULL OR isempty(suyas) OR hay_sobreventa()
     OR NOT EXISTS (SELECT 1 FROM Reservacion WHERE Rs_Folio = suyo AND Es_Cve_Estado NOT IN ('CA', 'CE')) THEN
    RETURN;
  END IF;
  PERFORM pg_advisory_xact_lock(207, hashbpchar(cuarto));
  SELECT folio, noche INTO choque
  FROM (SELECT otra.Rs_Folio AS folio, GREATEST(lower(suyas), otra.Rsd_Fecha_Inicio::date) AS noche,
               otra.Rs_Folio = suyo AND noches(otra.Rsd_Fecha_Inicio, otra.Rsd_Fecha_Fin) = suyas
                 AND row_number() OVER (PARTITION BY otra.Rs_Folio, otra.Rsd_Fecha_Inicio::date,
                                                     otra.Rsd_Fecha_Fin::date) = 1 AS propia
        FROM Reservacion_Detalle otra
          INNER JOIN Reservacion
            ON Reservacion.Rs_Folio = otra.Rs_Folio AND Reservacion.Es_Cve_Estado NOT IN ('CA', 'CE')
        WHERE otra.Hb_Cve_Habitacion = cuarto AND otra.Rsd_Fecha_Fin > lower(suyas)
          AND noches(otra.Rsd_Fecha_Inicio, otra.Rsd_Fecha_Fin) && suyas) ocupadas
  WHERE NOT propia ORDER BY noche, folio LIMIT 1;
  IF FOUND THEN
    RAISE EXCEPTION 'La habitación % ya está reservada la noche del % %', cuarto, TO_CHAR(choque.noche, 'DD/MM/YYYY'),
      CASE WHEN choque.folio = suyo THEN 'en esta misma reservación' ELSE 'por la reservación ' || choque.folio END
      USING ERRCODE = 'integrity_constraint_violation';
  END IF;
  INSERT INTO Noche_Vendida (Rs_Folio, Nv_Habitacion, Nv_Noches)
    VALUES (suyo, rango_clave(cuarto, cuarto, '[]'), suyas);
END $$)";

constexpr std::string_view kSobreventaLinea =
    R"(CREATE OR REPLACE FUNCTION sobreventa_linea() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
  IF TG_OP <> 'INSERT' THEN
    DELETE FROM Noche_Vendida
    WHERE Rs_Folio = OLD.Rs_Folio AND Nv_Noches = noches(OLD.Rsd_Fecha_Inicio, OLD.Rsd_Fecha_Fin)
      AND Nv_Habitacion = rango_clave(OLD.Hb_Cve_Habitacion, OLD.Hb_Cve_Habitacion, '[]');
  END IF;
  IF TG_OP <> 'DELETE' THEN
    PERFORM vende(NEW.Rs_Folio, NEW.Hb_Cve_Habitacion, noches(NEW.Rsd_Fecha_Inicio, NEW.Rsd_Fecha_Fin));
  END IF;
  RETURN NULL;
END $$)";

// Only what came to life is looked at: another change of a live reservation takes no night.
constexpr std::string_view kSobreventaReservacion =
    R"(CREATE OR REPLACE FUNCTION sobreventa_reservacion() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
  IF TG_OP = 'UPDATE' THEN
    IF OLD.Rs_Folio = NEW.Rs_Folio
       AND (OLD.Es_Cve_Estado IN ('CA', 'CE')) IS NOT DISTINCT FROM (NEW.Es_Cve_Estado IN ('CA', 'CE')) THEN
      RETURN NULL;
    END IF;
  END IF;
  IF TG_OP <> 'INSERT' THEN
    DELETE FROM Noche_Vendida WHERE Rs_Folio = OLD.Rs_Folio;
  END IF;
  IF TG_OP <> 'DELETE' THEN
    PERFORM vende(NEW.Rs_Folio, linea.Hb_Cve_Habitacion, noches(linea.Rsd_Fecha_Inicio, linea.Rsd_Fecha_Fin))
    FROM (SELECT * FROM Reservacion_Detalle WHERE Rs_Folio = NEW.Rs_Folio
          ORDER BY Hb_Cve_Habitacion, Rsd_Fecha_Inicio) linea;
  END IF;
  RETURN NULL;
END $$)";

// The guard comes into force or goes: what is sold by then is entered, but for nights that are sold twice already.
std::string SobreventaParametro() {
  return R"(CREATE OR REPLACE FUNCTION sobreventa_parametro() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
  IF NOT COALESCE(OLD.Pm_Clave = 'HT_OVER_BOOKING', FALSE)
     AND NOT COALESCE(NEW.Pm_Clave = 'HT_OVER_BOOKING', FALSE) THEN
    RETURN NULL;
  END IF;
  )" + std::string(kOlvidaNoches) +
         ";\n  " + std::string(kApartaNoches) + R"(;
  RETURN NULL;
END $$)";
}

// Takes the row of the reservation's version, so that writers of one reservation wait for one another.
constexpr std::string_view kVersionPostgres =
    R"(CREATE OR REPLACE FUNCTION version_reservacion() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
  IF TG_OP = 'DELETE' OR (TG_OP = 'UPDATE' AND OLD.Rs_Folio <> NEW.Rs_Folio) THEN
    INSERT INTO Reservacion_Version (Rs_Folio, Rv_Version) VALUES (OLD.Rs_Folio, 1)
      ON CONFLICT (Rs_Folio) DO UPDATE SET Rv_Version = Reservacion_Version.Rv_Version + 1;
  END IF;
  IF TG_OP <> 'DELETE' THEN
    INSERT INTO Reservacion_Version (Rs_Folio, Rv_Version) VALUES (NEW.Rs_Folio, 1)
      ON CONFLICT (Rs_Folio) DO UPDATE SET Rv_Version = Reservacion_Version.Rv_Version + 1;
  END IF;
  RETURN NULL;
END $$)";

Objeto Guarda(const std::string& nombre, const std::string& sql) {
  return {Objeto::Clase::Guarda, nombre, "CREATE TRIGGER " + nombre + " " + sql};
}

std::vector<Objeto> GuardasPostgres() {
  std::vector<Objeto> guardas;
  for (const auto& [nombre, sql] : std::initializer_list<std::pair<const char*, std::string_view>>{
           {"rango_clave", kRangoClave},
           {"Noche_Vendida", kNocheVendida},
           {"Noche_Vendida_1", "CREATE INDEX Noche_Vendida_1 ON Noche_Vendida (Rs_Folio)"},
       }) {
    guardas.push_back({Objeto::Clase::Otro, nombre, std::string(sql)});
  }
  for (const auto& [nombre, sql] : std::initializer_list<std::pair<const char*, std::string>>{
           {"noches", std::string(kNoches)},
           {"hay_sobreventa", std::string(kHaySobreventa)},
           {"vende", std::string(kVende)},
           {"sobreventa_linea", std::string(kSobreventaLinea)},
           {"sobreventa_reservacion", std::string(kSobreventaReservacion)},
           {"sobreventa_parametro", SobreventaParametro()},
           {"version_reservacion", std::string(kVersionPostgres)},
       }) {
    guardas.push_back({Objeto::Clase::Funcion, nombre, sql});
  }
  guardas.push_back(Guarda("Sobreventa_Linea",
                           "AFTER INSERT OR DELETE OR UPDATE OF Rs_Folio, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, "
                           "Rsd_Fecha_Fin ON Reservacion_Detalle FOR EACH ROW EXECUTE FUNCTION sobreventa_linea()"));
  guardas.push_back(Guarda("Sobreventa_Reservacion",
                           "AFTER INSERT OR DELETE OR UPDATE OF Rs_Folio, Es_Cve_Estado ON Reservacion "
                           "FOR EACH ROW EXECUTE FUNCTION sobreventa_reservacion()"));
  guardas.push_back(Guarda("Sobreventa_Parametro",
                           "AFTER INSERT OR DELETE OR UPDATE ON Parametro "
                           "FOR EACH ROW EXECUTE FUNCTION sobreventa_parametro()"));
  for (const auto& [tabla, cambio] : kConVersion) {
    guardas.push_back(Guarda("Version_" + std::string(tabla),
                             "AFTER INSERT OR DELETE OR " + std::string(cambio) + " ON " + std::string(tabla) +
                                 " FOR EACH ROW EXECUTE FUNCTION version_reservacion()"));
  }
  return guardas;
}

}  // namespace

std::vector<Objeto> Guardas(Motor motor) {
  switch (motor) {
    case Motor::Sqlite: {
      std::vector<Objeto> guardas = SobreventaSqlite();
      for (Objeto& fechas : FechasSqlite()) guardas.push_back(std::move(fechas));
      for (Objeto& version : VersionesSqlite()) guardas.push_back(std::move(version));
      return guardas;
    }
    case Motor::PostgreSQL:
      return GuardasPostgres();
    case Motor::SqlServer:
      break;
  }
  return {};  // SQL Server: the back office's database, whose own rules guard it
}

}  // namespace esquema
