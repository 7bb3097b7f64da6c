#include "schema/roles.h"

#include <initializer_list>
#include <string>
#include <tuple>
#include <utility>

#include "platform/ado/literal.h"
#include "schema/esquema.h"
#include "schema/guardas.h"

namespace esquema {
namespace {

// What PoneRoles makes; a server with another one gets it made anew.
constexpr std::string_view kVersionRoles = "2";
// The longest name that the server takes, bytes.
constexpr std::size_t kLargoNombre = 63;

std::string Entre(char comilla, std::string_view texto) { return comilla + ado::Literal(texto, comilla) + comilla; }
std::string Literal(std::string_view texto) { return Entre('\'', texto); }

constexpr std::string_view kRoles = R"(DO $roles$ BEGIN
  IF to_regrole({'recepcion}) IS NULL THEN CREATE ROLE {recepcion}; END IF;
  IF to_regrole({'tarjetas}) IS NULL THEN CREATE ROLE {tarjetas}; END IF;
  IF to_regrole({'administra}) IS NULL THEN CREATE ROLE {administra}; END IF;
  IF to_regrole({'usuarios}) IS NULL THEN CREATE ROLE {usuarios}; END IF;
END $roles$;
GRANT {recepcion}, {tarjetas}, {administra}, {usuarios} TO CURRENT_USER WITH ADMIN OPTION;
GRANT {recepcion} TO {tarjetas}, {administra};
DROP SCHEMA IF EXISTS kv207_mostrador, kv207_bitacora, kv207_usuarios CASCADE;
CREATE SCHEMA kv207_mostrador;
CREATE SCHEMA kv207_bitacora;
CREATE SCHEMA kv207_usuarios;
COMMENT ON SCHEMA kv207_mostrador IS {'version};
)";

// --- what is hidden
//
// As the program hides it (host/standalone/llave.h): of a number the last four, which a sealed one carries at its end.
// Whatever is written back as it was shown keeps what is there: in the row itself, in the row of the reservation that
// the same transaction has just deleted, or in its client's.

constexpr std::string_view kOcultas = R"(
CREATE FUNCTION kv207_mostrador.numero_oculto(marca bpchar) RETURNS bpchar LANGUAGE sql IMMUTABLE AS $$
  SELECT (CASE WHEN t = '' THEN '' ELSE '************' || CASE
            WHEN t LIKE '{kv1:%' THEN COALESCE(substring(t FROM ':([^:]{4})\}$'), '')
            WHEN length(t) > 8 THEN right(t, 4) ELSE '' END END)::bpchar
  FROM (SELECT rtrim(COALESCE(marca, '')::text COLLATE "C") AS t) marcas
$$;
CREATE FUNCTION kv207_mostrador.codigo_oculto(marca bpchar) RETURNS bpchar LANGUAGE sql IMMUTABLE AS $$
  SELECT (CASE WHEN COALESCE(marca, '')::text COLLATE "C" = '' THEN '' ELSE '***' END)::bpchar
$$;
CREATE FUNCTION kv207_mostrador.exige_escrito(numero bpchar, codigo bpchar) RETURNS void LANGUAGE plpgsql AS $$
BEGIN
  IF numero::text COLLATE "C" LIKE '***%' OR codigo::text COLLATE "C" LIKE '***%' THEN
    RAISE EXCEPTION 'Escriba completo el dato de la tarjeta: no se conoce el que se ocultó'
      USING ERRCODE = 'integrity_constraint_violation';
  END IF;
END $$;
CREATE FUNCTION kv207_mostrador.huella() RETURNS text LANGUAGE sql STABLE SECURITY DEFINER
SET search_path = {esquema}, pg_temp AS $$
  SELECT substring(marca::text COLLATE "C" FROM '^\{kv1:.:([0-9a-f]+):')
  FROM (SELECT Cl_Tarjeta_Numero AS marca FROM Cliente UNION ALL SELECT Rdt_Numero FROM Reservacion_Datos_Tarjeta
        UNION ALL SELECT Cl_Tarjeta_Codigo_Seguridad FROM Cliente
        UNION ALL SELECT Rdt_Codigo_Seguridad FROM Reservacion_Datos_Tarjeta) marcas
  WHERE marca::text COLLATE "C" LIKE '{kv1:%' LIMIT 1
$$;

CREATE FUNCTION kv207_mostrador.cambia_cliente() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER
SET search_path = {esquema}, pg_temp AS $$
DECLARE antes Cliente;
BEGIN
  IF TG_OP = 'DELETE' THEN
    DELETE FROM Cliente WHERE Cl_Cve_Cliente = OLD.Cl_Cve_Cliente;
    RETURN OLD;
  END IF;
  IF TG_OP = 'UPDATE' THEN
    SELECT * INTO antes FROM Cliente WHERE Cl_Cve_Cliente = OLD.Cl_Cve_Cliente FOR UPDATE;
    IF NOT FOUND THEN RETURN NULL; END IF;
    IF NEW.Cl_Tarjeta_Numero = kv207_mostrador.numero_oculto(antes.Cl_Tarjeta_Numero) THEN
      NEW.Cl_Tarjeta_Numero := antes.Cl_Tarjeta_Numero;
    END IF;
    IF NEW.Cl_Tarjeta_Codigo_Seguridad = kv207_mostrador.codigo_oculto(antes.Cl_Tarjeta_Codigo_Seguridad) THEN
      NEW.Cl_Tarjeta_Codigo_Seguridad := antes.Cl_Tarjeta_Codigo_Seguridad;
    END IF;
  END IF;
  PERFORM kv207_mostrador.exige_escrito(NEW.Cl_Tarjeta_Numero, NEW.Cl_Tarjeta_Codigo_Seguridad);
  IF TG_OP = 'INSERT' THEN
    INSERT INTO Cliente ({columnas Cliente}) VALUES ({nuevas Cliente});
  ELSE
    UPDATE Cliente SET ({columnas Cliente}) = ({nuevas Cliente}) WHERE Cl_Cve_Cliente = OLD.Cl_Cve_Cliente;
  END IF;
  RETURN NEW;
END $$;

CREATE TABLE kv207_mostrador.Retirada (Rs_Folio bpchar COLLATE {esquema}.espanol, Numero bpchar, Codigo bpchar);
CREATE FUNCTION kv207_mostrador.olvida_retirada() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER
SET search_path = {esquema}, pg_temp AS $$
BEGIN
  DELETE FROM kv207_mostrador.Retirada WHERE Rs_Folio = NEW.Rs_Folio;
  RETURN NULL;
END $$;
CREATE CONSTRAINT TRIGGER Olvida AFTER INSERT ON kv207_mostrador.Retirada DEFERRABLE INITIALLY DEFERRED
  FOR EACH ROW EXECUTE FUNCTION kv207_mostrador.olvida_retirada();

CREATE FUNCTION kv207_mostrador.cambia_tarjeta() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER
SET search_path = {esquema}, pg_temp AS $$
DECLARE antes record;
BEGIN
  IF TG_OP <> 'INSERT' THEN
    INSERT INTO kv207_mostrador.Retirada
      SELECT Rs_Folio, Rdt_Numero, Rdt_Codigo_Seguridad FROM Reservacion_Datos_Tarjeta
      WHERE Rs_Folio = OLD.Rs_Folio FOR UPDATE;
    IF NOT FOUND THEN RETURN NULL; END IF;
  END IF;
  IF TG_OP = 'DELETE' THEN
    DELETE FROM Reservacion_Datos_Tarjeta WHERE Rs_Folio = OLD.Rs_Folio;
    RETURN OLD;
  END IF;
  FOR antes IN
    SELECT Numero, Codigo FROM kv207_mostrador.Retirada WHERE Rs_Folio = NEW.Rs_Folio
    UNION ALL
    SELECT Cl_Tarjeta_Numero, Cl_Tarjeta_Codigo_Seguridad
      FROM Reservacion INNER JOIN Cliente ON Cliente.Cl_Cve_Cliente = Reservacion.Cl_Cve_Cliente
      WHERE Rs_Folio = NEW.Rs_Folio
  LOOP
    IF NEW.Rdt_Numero = kv207_mostrador.numero_oculto(antes.Numero) THEN NEW.Rdt_Numero := antes.Numero; END IF;
    IF NEW.Rdt_Codigo_Seguridad = kv207_mostrador.codigo_oculto(antes.Codigo) THEN
      NEW.Rdt_Codigo_Seguridad := antes.Codigo;
    END IF;
  END LOOP;
  PERFORM kv207_mostrador.exige_escrito(NEW.Rdt_Numero, NEW.Rdt_Codigo_Seguridad);
  IF TG_OP = 'INSERT' THEN
    INSERT INTO Reservacion_Datos_Tarjeta ({columnas Reservacion_Datos_Tarjeta})
      VALUES ({nuevas Reservacion_Datos_Tarjeta});
    RETURN NEW;
  END IF;
  -- A code alone is no change of the reservation.
  UPDATE Reservacion_Datos_Tarjeta SET Rdt_Codigo_Seguridad = NEW.Rdt_Codigo_Seguridad WHERE Rs_Folio = OLD.Rs_Folio;
  UPDATE Reservacion_Datos_Tarjeta SET ({columnas Reservacion_Datos_Tarjeta}) = ({nuevas Reservacion_Datos_Tarjeta})
  WHERE Rs_Folio = OLD.Rs_Folio
    AND ({columnas Reservacion_Datos_Tarjeta}) IS DISTINCT FROM ({nuevas Reservacion_Datos_Tarjeta});
  RETURN NEW;
END $$;
)";

constexpr std::string_view kBitacora = R"(
CREATE VIEW kv207_bitacora.Bitacora AS SELECT * FROM {esquema}.Bitacora;
CREATE FUNCTION kv207_bitacora.anota() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER
SET search_path = {esquema}, pg_temp AS $$
BEGIN
  INSERT INTO Bitacora (Bt_Modulo, Bt_Clave, Bt_Texto, Bt_Usuario, Bt_Fecha)
    VALUES (NEW.Bt_Modulo, NEW.Bt_Clave, NEW.Bt_Texto, NEW.Bt_Usuario, NEW.Bt_Fecha);
  RETURN NEW;
END $$;
CREATE TRIGGER Anota INSTEAD OF INSERT ON kv207_bitacora.Bitacora
  FOR EACH ROW EXECUTE FUNCTION kv207_bitacora.anota();
)";

// Of what is kept of a password the session works out the last part from the others: they say how, and with what salt.
constexpr std::string_view kContrasenas = R"(
CREATE VIEW kv207_usuarios.Usuario AS SELECT {columnas Usuario} FROM {esquema}.Usuario;
CREATE FUNCTION kv207_usuarios.es_suya(quien bpchar, resumen text) RETURNS boolean LANGUAGE sql STABLE SECURITY DEFINER
SET search_path = {esquema}, pg_temp AS $$
  SELECT EXISTS (SELECT FROM Usuario
                 WHERE Us_Cve_Usuario = quien AND Us_Contrasena::text COLLATE "C" = resumen COLLATE "C")
$$;
)";

// Who administers the hotel need not be one who may give roles. A user's own role stays in usuarios while it has no
// rights, so that it can be given them again.
constexpr std::string_view kAjusta = R"(
CREATE FUNCTION kv207_mostrador.rol_suyo(usuario text) RETURNS name LANGUAGE sql STABLE
SET search_path = pg_catalog, pg_temp AS $$
  SELECT rolname FROM pg_roles
  WHERE rolname = lower(usuario) AND rolcanlogin AND NOT rolsuper
    AND oid <> (SELECT nspowner FROM pg_namespace WHERE nspname = 'kv207_mostrador')
    AND EXISTS (SELECT FROM pg_auth_members WHERE member = pg_roles.oid
                  AND roleid IN (to_regrole({'recepcion}), to_regrole({'tarjetas}), to_regrole({'administra}),
                                 to_regrole({'usuarios})))
$$;
CREATE FUNCTION kv207_mostrador.ajusta_rol(usuario text, entra boolean, tarjetas boolean, administra boolean)
RETURNS boolean LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog, pg_temp AS $$
DECLARE suyo name := kv207_mostrador.rol_suyo(usuario); rol text; toca boolean;
BEGIN
  IF suyo IS NULL THEN RETURN false; END IF;
  FOR rol, toca IN VALUES ({'nombre usuarios}, true), ({'nombre recepcion}, entra),
                          ({'nombre tarjetas}, entra AND tarjetas), ({'nombre administra}, entra AND administra) LOOP
    IF toca THEN
      EXECUTE format('GRANT %I TO %I', rol, suyo);
    ELSE
      EXECUTE format('REVOKE %I FROM %I', rol, suyo);
    END IF;
  END LOOP;
  RETURN true;
END $$;
REVOKE EXECUTE ON FUNCTION kv207_mostrador.ajusta_rol FROM PUBLIC;
GRANT EXECUTE ON FUNCTION kv207_mostrador.ajusta_rol TO {administra};
)";

constexpr std::string_view kDerechos = R"(
GRANT USAGE ON SCHEMA {esquema}, kv207_mostrador, kv207_bitacora, kv207_usuarios TO {recepcion};
GRANT SELECT ON ALL TABLES IN SCHEMA {esquema} TO {recepcion};
REVOKE ALL ON Cliente, Reservacion_Datos_Tarjeta, Usuario FROM {recepcion};
REVOKE UPDATE (Us_Fallas, Us_Espera) ON Usuario FROM {recepcion};
GRANT SELECT, INSERT, UPDATE ON kv207_mostrador.Cliente TO {recepcion};
GRANT SELECT, INSERT, UPDATE, DELETE ON kv207_mostrador.Reservacion_Datos_Tarjeta TO {recepcion};
GRANT SELECT, INSERT ON kv207_bitacora.Bitacora TO {recepcion};
GRANT INSERT, UPDATE, DELETE ON Reservacion, Reservacion_Detalle, Habitacion_Bloqueo, Check_In, Check_In_Detalle,
  Correo_Salida, Impreso, Folio_Consecutivo TO {recepcion};
GRANT UPDATE ON Reservacion_Version TO {recepcion};
GRANT SELECT, UPDATE (Us_Fallas, Us_Espera) ON kv207_usuarios.Usuario TO {recepcion};
GRANT SELECT, INSERT, UPDATE ON Cliente TO {tarjetas};
GRANT SELECT, INSERT, UPDATE, DELETE ON Reservacion_Datos_Tarjeta TO {tarjetas};
GRANT DELETE ON kv207_mostrador.Cliente TO {administra};
GRANT SELECT ON Usuario TO {administra};
GRANT INSERT, UPDATE, DELETE ON {administradas} TO {administra};
)";

// Of the passwords, which stand behind "$", all but what the last part is worked out from.
std::string OcultaContrasena(std::string_view columna) {
  std::string nombre(columna);
  if (!nombre.ends_with("_Contrasena")) return nombre;
  return "regexp_replace(" + nombre + "::text COLLATE \"C\", '[^$]*$', '')::bpchar AS " + nombre;
}

// Of the card's columns, how each is hidden.
std::string Oculta(std::string_view columna) {
  std::string nombre(columna);
  if (nombre.ends_with("_Numero")) return "kv207_mostrador.numero_oculto(" + nombre + ") AS " + nombre;
  if (nombre.ends_with("_Codigo_Seguridad")) return "kv207_mostrador.codigo_oculto(" + nombre + ") AS " + nombre;
  return nombre;
}

// Each column as `como` writes it.
std::string Columnas(std::string_view tabla, std::string (*como)(std::string_view)) {
  std::string s;
  for (const Columna& c : BuscaTabla(tabla)->columnas) s += (s.empty() ? "" : ", ") + como(c.nombre);
  return s;
}
std::string TalCual(std::string_view columna) { return std::string(columna); }
std::string Nueva(std::string_view columna) { return "NEW." + std::string(columna); }

// With the columns' defaults, which a view does not take from its table.
std::string Vista(const std::string& tabla, const std::string& cambia) {
  const std::string vista = "kv207_mostrador." + tabla;
  std::string s = "CREATE VIEW " + vista + " AS SELECT " + Columnas(tabla, Oculta) + " FROM {esquema}." + tabla + ";\n";
  for (const Columna& c : BuscaTabla(tabla)->columnas) {
    if (const std::string_view omision = Omision(c); !omision.empty())
      s.append("ALTER VIEW " + vista + " ALTER " + std::string(c.nombre) + " SET").append(omision).append(";\n");
  }
  return s + "CREATE TRIGGER Cambia INSTEAD OF INSERT OR UPDATE OR DELETE ON " + vista +
         " FOR EACH ROW EXECUTE FUNCTION kv207_mostrador." + cambia + "();\n";
}

// The catalogues and what the hotel is set up with.
std::string Administradas() {
  std::string s;
  for (const Tabla& t : Tablas()) {
    if (t.nombre == "Cliente" || t.nombre == "Reservacion_Datos_Tarjeta" || t.nombre == "Bitacora" ||
        t.nombre == "Reservacion_Version")
      continue;
    s += (s.empty() ? "" : ", ") + std::string(t.nombre);
  }
  return s;
}

}  // namespace

std::string Citado(std::string_view nombre) { return Entre('"', nombre); }

Roles RolesDe(std::string_view base) {
  const auto nombre = [&](std::string_view rol) {
    std::string s = "kv207_" + std::string(rol) + "_" + std::string(base);
    // One that would be cut off keeps its end, where such names differ.
    return s.size() <= kLargoNombre ? s : s.substr(0, 20) + s.substr(s.size() - (kLargoNombre - 20));
  };
  return {nombre("recepcion"), nombre("tarjetas"), nombre("administra"), nombre("usuarios")};
}

std::string PoneRoles(const Roles& roles, std::string_view esquema) {
  std::string s = std::string(kRoles) + std::string(kOcultas) + Vista("Cliente", "cambia_cliente") +
                  Vista("Reservacion_Datos_Tarjeta", "cambia_tarjeta") + std::string(kBitacora) +
                  std::string(kContrasenas) + std::string(kAjusta) + std::string(kDerechos);
  for (const char* funcion :
       {"sobreventa_linea", "sobreventa_reservacion", "sobreventa_parametro", "version_reservacion"})
    s += "ALTER FUNCTION " + std::string(funcion) + " SECURITY DEFINER SET search_path = {esquema}, pg_temp;\n";
  for (const auto& [clave, valor] : std::initializer_list<std::pair<std::string_view, std::string>>{
           {"{esquema}", Citado(esquema)},
           {"{recepcion}", Citado(roles.recepcion)},
           {"{tarjetas}", Citado(roles.tarjetas)},
           {"{administra}", Citado(roles.administra)},
           {"{usuarios}", Citado(roles.usuarios)},
           {"{'recepcion}", Literal(Citado(roles.recepcion))},
           {"{'tarjetas}", Literal(Citado(roles.tarjetas))},
           {"{'administra}", Literal(Citado(roles.administra))},
           {"{'usuarios}", Literal(Citado(roles.usuarios))},
           {"{'nombre recepcion}", Literal(roles.recepcion)},
           {"{'nombre tarjetas}", Literal(roles.tarjetas)},
           {"{'nombre administra}", Literal(roles.administra)},
           {"{'nombre usuarios}", Literal(roles.usuarios)},
           {"{'version}", Literal(kVersionRoles)},
           {"{administradas}", Administradas()},
           {"{columnas Usuario}", Columnas("Usuario", OcultaContrasena)},
           {"{columnas Cliente}", Columnas("Cliente", TalCual)},
           {"{nuevas Cliente}", Columnas("Cliente", Nueva)},
           {"{columnas Reservacion_Datos_Tarjeta}", Columnas("Reservacion_Datos_Tarjeta", TalCual)},
           {"{nuevas Reservacion_Datos_Tarjeta}", Columnas("Reservacion_Datos_Tarjeta", Nueva)},
       })
    s = Reemplaza(std::move(s), clave, valor);
  return s;
}

std::string EsContrasenaDe(std::string_view usuario, std::string_view resumen) {
  return "SELECT kv207_usuarios.es_suya(" + Literal(usuario) + ", " + Literal(resumen) + ") AS Es";
}

std::string HayRoles(const Roles& roles) {
  std::string s =
      "SELECT obj_description(to_regnamespace('kv207_mostrador'), 'pg_namespace') = " + Literal(kVersionRoles);
  // A database that came from elsewhere under a name that another one had finds that one's roles, which may do nothing
  // in it.
  for (const auto& [rol, tabla, derecho] : {std::tuple(roles.recepcion, "kv207_bitacora.bitacora", "INSERT"),
                                            std::tuple(roles.tarjetas, "reservacion_datos_tarjeta", "SELECT"),
                                            std::tuple(roles.administra, "parametro", "UPDATE")})
    s += " AND has_table_privilege(to_regrole(" + Literal(Citado(rol)) + ")::oid, to_regclass('" + tabla +
         "')::oid, '" + derecho + "')";
  s += " AND to_regrole(" + Literal(Citado(roles.usuarios)) + ") IS NOT NULL";
  return s;
}

}  // namespace esquema
