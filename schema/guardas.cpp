#include "schema/guardas.h"

namespace esquema {
namespace {

// --- guard against selling a room twice
//
// In force while the parameter HT_OVER_BOOKING is stored with a value that means false to the screen: empty, zero in
// any spelling, or the word. A line holds the nights from its start to the day before its end; times of day do not
// count. Only live reservations hold rooms. Each guard looks at the lines that a write made live (`propia`) and refuses
// at the first night that another line (`otra`) already holds.

std::string Reemplaza(std::string s, std::string_view clave, std::string_view valor) {
  for (std::size_t i = s.find(clave); i != std::string::npos; i = s.find(clave, i + valor.size()))
    s.replace(i, clave.size(), valor);
  return s;
}

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

// --- versions
//
// Every write to a reservation, its rooms or its card moves its version on. Two statements, not one with a conflict
// clause: the clause of the statement that fires a trigger would stand in its place.

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
constexpr std::string_view kConVersion[] = {"Reservacion", "Reservacion_Detalle", "Reservacion_Datos_Tarjeta"};

std::vector<Objeto> VersionesSqlite() {
  std::vector<Objeto> guardas;
  for (const std::string_view tabla : kConVersion) {
    for (const Suceso& suceso : kSucesos) {
      const std::string nombre = "Version_" + std::string(suceso.nombre) + "_" + std::string(tabla);
      std::string s = Reemplaza(std::string(kVersionSqlite), "{nombre}", nombre);
      s = Reemplaza(s, "{suceso}", suceso.sql);
      s = Reemplaza(s, "{tabla}", tabla);
      s = Reemplaza(s, "{folios}", suceso.folios);
      guardas.push_back({Objeto::Clase::Guarda, nombre, Reemplaza(s, "{folio}", suceso.folio)});
    }
  }
  return guardas;
}

// --- PostgreSQL

// Looks at every line of the folio that was written. Writers of one room wait for one another at the lock, and the
// query behind it sees what the other has committed.
constexpr std::string_view kGuardaPostgres = R"(CREATE FUNCTION sobreventa() RETURNS trigger LANGUAGE plpgsql AS $$
DECLARE choque record;
BEGIN
  IF NOT EXISTS (SELECT 1 FROM Parametro
                 WHERE Pm_Clave = 'HT_OVER_BOOKING' AND LOWER(BTRIM(Pm_Valor, ' 0.+-')) IN ('', 'false', 'falso')) THEN
    RETURN NULL;
  END IF;
  PERFORM pg_advisory_xact_lock(207, hashtext(clave))
  FROM (SELECT DISTINCT LOWER(RTRIM(Hb_Cve_Habitacion)) AS clave FROM Reservacion_Detalle
        WHERE Rs_Folio = NEW.Rs_Folio ORDER BY clave) habitaciones;
  SELECT propia.Hb_Cve_Habitacion AS habitacion, otra.Rs_Folio AS folio,
         GREATEST(propia.Rsd_Fecha_Inicio::date, otra.Rsd_Fecha_Inicio::date) AS noche
  INTO choque
  FROM Reservacion_Detalle propia
    INNER JOIN Reservacion_Detalle otra
      ON otra.Hb_Cve_Habitacion = propia.Hb_Cve_Habitacion AND otra.ctid <> propia.ctid
    INNER JOIN Reservacion suya
      ON suya.Rs_Folio = propia.Rs_Folio AND suya.Es_Cve_Estado NOT IN ('CA', 'CE')
    INNER JOIN Reservacion ajena
      ON ajena.Rs_Folio = otra.Rs_Folio AND ajena.Es_Cve_Estado NOT IN ('CA', 'CE')
  WHERE propia.Rs_Folio = NEW.Rs_Folio
    AND GREATEST(propia.Rsd_Fecha_Inicio::date, otra.Rsd_Fecha_Inicio::date)
      < LEAST(propia.Rsd_Fecha_Fin::date, otra.Rsd_Fecha_Fin::date)
  ORDER BY noche, folio LIMIT 1;
  IF FOUND THEN
    RAISE EXCEPTION USING ERRCODE = 'integrity_constraint_violation',
      MESSAGE = 'La habitación ' || choque.habitacion || ' ya está reservada la noche del '
                || TO_CHAR(choque.noche, 'DD/MM/YYYY')
                || CASE WHEN choque.folio = NEW.Rs_Folio THEN ' en esta misma reservación'
                        ELSE ' por la reservación ' || choque.folio END;
  END IF;
  RETURN NULL;
END $$)";

// Takes the row of the reservation's version, so that writers of one reservation wait for one another.
constexpr std::string_view kVersionPostgres =
    R"(CREATE FUNCTION version_reservacion() RETURNS trigger LANGUAGE plpgsql AS $$
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
  std::vector<Objeto> guardas{
      {Objeto::Clase::Otro, "sobreventa", std::string(kGuardaPostgres)},
      Guarda("Sobreventa_Linea",
             "AFTER INSERT OR UPDATE OF Rs_Folio, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin "
             "ON Reservacion_Detalle FOR EACH ROW EXECUTE FUNCTION sobreventa()"),
      Guarda("Sobreventa_Reservacion",
             "AFTER INSERT OR UPDATE OF Rs_Folio, Es_Cve_Estado ON Reservacion "
             "FOR EACH ROW EXECUTE FUNCTION sobreventa()"),
      {Objeto::Clase::Otro, "version_reservacion", std::string(kVersionPostgres)},
  };
  for (const std::string_view tabla : kConVersion) {
    guardas.push_back(
        Guarda("Version_" + std::string(tabla), "AFTER INSERT OR UPDATE OR DELETE ON " + std::string(tabla) +
                                                    " FOR EACH ROW EXECUTE FUNCTION version_reservacion()"));
  }
  return guardas;
}

}  // namespace

std::vector<Objeto> Guardas(Motor motor) {
  switch (motor) {
    case Motor::Sqlite: {
      std::vector<Objeto> guardas = SobreventaSqlite();
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
