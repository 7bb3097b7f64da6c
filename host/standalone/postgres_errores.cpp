#include "host/standalone/postgres_errores.h"

#include <algorithm>

#include "host/standalone/conexion.h"
#include "host/standalone/palabras.h"
#include "host/standalone/registro.h"
#include "platform/com/texto.h"

namespace autonomo {
namespace {

using namespace com::error;

// What the description of a category ends with.
enum class Cola { Nada, Mensaje, Nombre, Columnas };

// What the server says by its code (SQLSTATE), whole or by its first two letters; the longest stands first.
struct Categoria {
  std::string_view codigo;
  const char* texto;  // null: the server's own
  int numero;
  Cola cola = Cola::Nada;
};
constexpr const char* kEspera = "La base de datos está ocupada por otro programa";
constexpr Categoria kCategorias[] = {
    {"23000", nullptr, kRestriccion},  // raised by a guard
    {"23505", "Ya existe un registro con la misma clave: ", kRestriccion, Cola::Columnas},
    {"23502", "Falta un valor obligatorio: ", kRestriccion, Cola::Columnas},
    {"23P01", "La habitación ya está reservada alguna de esas noches", kRestriccion},
    {"23", "El valor no cumple una regla de la base de datos", kRestriccion},
    {"40001", kEspera, kChoque},
    {"40P01", kEspera, kChoque},
    {"55P03", kEspera, kOcupada},
    {"57014", "La base de datos tardó demasiado en contestar", kOcupada},
    {"25006", "La base de datos es de solo lectura", kSoloLectura},
    {"25P02", "La base de datos deshizo la transacción por una falla anterior", kTransaccion},
    {"42501", "El usuario de la base de datos no tiene permiso para hacerlo", kSoloLectura, Cola::Mensaje},
    {"42P01", "No existe la tabla ", kBaseDatos, Cola::Nombre},
    {"42703", "No existe la columna ", kBaseDatos, Cola::Nombre},
    {"42702", "Columna ambigua: ", kBaseDatos, Cola::Nombre},
    {"42601", "La base de datos no entiende la sentencia", kSentencia, Cola::Mensaje},
    {"22021", "El texto tiene caracteres que la base de datos no admite", kTipos},
    {"22", "Un valor no es del tipo de su columna", kTipos, Cola::Mensaje},
    {"53100", "No hay espacio en el disco para la base de datos", kLlena},
    {"53", "El servidor de la base de datos no tiene más recursos; espere un momento", kBaseDatos},
};

const Categoria* BuscaCategoria(std::string_view codigo) {
  const auto* it = std::ranges::find_if(kCategorias, [&](const Categoria& c) { return codigo.starts_with(c.codigo); });
  return it == std::end(kCategorias) ? nullptr : it;
}

// The server's own words, in its language, behind the sentence that says what they are about.
std::string Palabras(std::string_view texto) {
  std::string linea = com::Recorta(texto);
  std::ranges::replace(linea, '\n', ' ');
  return ": «" + linea + "»";
}

std::string Campo(const PGresult* resultado, int cual) {
  const char* valor = PQresultErrorField(resultado, cual);
  return valor == nullptr ? "" : valor;
}

// What stands between the first quotes of the server's message, without the alias before a column.
std::string Citado(const std::string& mensaje) {
  for (const auto& [abre, cierra] : {std::pair<std::string_view, std::string_view>{"\"", "\""}, {"«", "»"}}) {
    const std::size_t desde = mensaje.find(abre);
    if (desde == std::string::npos) continue;
    const std::size_t hasta = mensaje.find(cierra, desde + abre.size());
    if (hasta == std::string::npos) continue;
    const std::string nombre = mensaje.substr(desde + abre.size(), hasta - desde - abre.size());
    return nombre.substr(nombre.rfind('.') + 1);
  }
  return {};
}

// "Tabla.Columna, Tabla.Columna": from the column that is missing, or from the key in the detail's first parentheses.
// The values behind it are a guest's.
std::string Columnas(const PGresult* resultado, std::string_view sentencia) {
  std::string nombres = Campo(resultado, PG_DIAG_COLUMN_NAME);
  if (nombres.empty()) {
    const std::string detalle = Campo(resultado, PG_DIAG_MESSAGE_DETAIL);
    const std::size_t abre = detalle.find('('), cierra = detalle.find(')');
    if (abre == std::string::npos || cierra == std::string::npos) return Campo(resultado, PG_DIAG_CONSTRAINT_NAME);
    nombres = detalle.substr(abre + 1, cierra - abre - 1);
  }
  const std::string tabla = NombreDe(Campo(resultado, PG_DIAG_TABLE_NAME), sentencia);
  std::string texto;
  for (std::size_t desde = 0; desde < nombres.size();) {
    const std::size_t hasta = std::min(nombres.find(", ", desde), nombres.size());
    texto += (texto.empty() ? "" : ", ") + tabla + "." + NombreDe(nombres.substr(desde, hasta - desde), sentencia);
    desde = hasta + 2;
  }
  return texto;
}

bool IgualLetra(char a, char b) {
  const auto baja = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return baja(a) == baja(b);
}

// Why no connection came about, by the words of the library or the server, which speak English or Spanish.
struct Causa {
  std::string_view ingles, espanol;
  const char* texto;
};
// The first that fits counts.
constexpr Causa kCausas[] = {
    {"password authentication failed", "autentificación password falló",
     "La contraseña o el usuario de la base de datos no son correctos"},
    {"no password supplied", "no se ha proporcionado", "Falta la contraseña de la base de datos"},
    {"does not match host name", "no coincide con el nombre",
     "El certificado del servidor de la base de datos es de otro servidor: quizá la dirección está mal escrita"},
    {"certificate verify failed", "verificación de certificado",
     "El certificado del servidor de la base de datos no vale: venció, todavía no empieza a valer o no lo firmó la "
     "autoridad que esta máquina conoce. Avise a quien cuida el servidor"},
    {"root certificate", "certificado raíz",
     "Falta en esta máquina el certificado de la autoridad que firma el del servidor (sslrootcert)"},
    {"certificate", "certificado", "El certificado del servidor de la base de datos no vale"},
    {"does not support SSL", "no soporta SSL",
     "El servidor de la base de datos no cifra la conexión, y sin cifrar no se trabaja con otra máquina"},
    {"pg_hba.conf", "pg_hba.conf", "El servidor de la base de datos no admite a este usuario desde esta máquina"},
    {"not permitted to log in", "no tiene permitido", "El usuario no puede entrar en el servidor de la base de datos"},
    {"too many connections", "demasiadas conexiones",
     "El servidor de la base de datos no admite más conexiones de este usuario o a esta base"},
    {"permission denied for database", "permiso denegado a la base",
     "El usuario no tiene permiso para esa base de datos"},
    {"not currently accepting connections", "no acepta conexiones", "La base de datos no admite conexiones ahora"},
    {"role \"", "el rol", "El usuario no existe en el servidor de la base de datos"},
    {"database \"", "la base de datos «", "La base de datos no existe en el servidor"},
    {"could not translate host name", "no se pudo traducir el nombre",
     "No se encuentra el servidor de la base de datos"},
    {"definition of service", "servicio", "El servicio no está en el archivo de servicios de esta máquina"},
    {"too many clients", "demasiados clientes", "El servidor de la base de datos no admite más conexiones ahora"},
    {"starting up", "está iniciándose", "El servidor de la base de datos está arrancando; espere un momento"},
    {"recovery mode", "en modo de recuperación",
     "El servidor de la base de datos se está recuperando; espere un momento"},
    {"shutting down", "se está apagando", "El servidor de la base de datos se está apagando"},
    {"Network is unreachable", "red es inaccesible", "No hay red hasta el servidor de la base de datos"},
    {"No route to host", "No hay ruta", "No hay red hasta el servidor de la base de datos"},
    {"invalid port number", "número de puerto no válido",
     "La dirección de la base de datos no está bien escrita: el puerto"},
    {"invalid sslmode", "sslmode no es válido", "La dirección de la base de datos no está bien escrita: sslmode"},
    {"invalid connection option", "opción de conexión no válida",
     "La dirección de la base de datos no está bien escrita: tiene una opción que no existe"},
    {"server closed the connection", "cerró la conexión",
     "No se pudo conectar con el servidor de la base de datos: cortó la conexión"},
    {"Is the server running", "¿Está el servidor en ejecución",
     "No se pudo conectar con el servidor de la base de datos: puede estar apagado; vuelva a intentarlo en un "
     "momento"},
    {"Connection refused", "Conexión rehusada",
     "No se pudo conectar con el servidor de la base de datos: puede estar apagado; vuelva a intentarlo en un "
     "momento"},
    {"timeout expired", "tiempo de espera",
     "No se pudo conectar con el servidor de la base de datos: no contesta; vuelva a intentarlo en un momento"},
};

}  // namespace

std::string CodigoDe(const PGresult* resultado) { return Campo(resultado, PG_DIAG_SQLSTATE); }

// The detail, in whatever language: "(columns)=(room, nights) ... (columns)=(room, nights)". A room's text is quoted
// where it holds what ends a range.
std::optional<NochesQueChocan> NochesEnChoque(const PGresult* resultado) {
  if (CodigoDe(resultado) != "23P01") return std::nullopt;
  const std::string detalle = Campo(resultado, PG_DIAG_MESSAGE_DETAIL);
  std::size_t i = 0;
  const auto rango = [&](std::string_view antes, char cierre) -> std::string {
    const std::size_t desde = detalle.find(antes, i);
    if (desde == std::string::npos) return {};
    const std::size_t inicio = desde + antes.size();
    bool citado = false;
    for (i = inicio; i < detalle.size(); ++i) {
      if (detalle[i] == '\\') {
        ++i;
      } else if (detalle[i] == '"') {
        citado = !citado;
      } else if (!citado && detalle[i] == cierre) {
        return detalle.substr(inicio, ++i - inicio);
      }
    }
    return {};
  };
  NochesQueChocan n;
  n.habitacion = rango(")=(", ']');
  n.nuevas = rango(", ", ')');
  rango(")=(", ']');
  n.vendidas = rango(", ", ')');
  if (n.vendidas.empty()) return std::nullopt;
  return n;
}

com::Error ErrorPostgres(const PGresult* resultado, std::string_view sentencia) {
  const std::string mensaje = Campo(resultado, PG_DIAG_MESSAGE_PRIMARY);
  const std::string codigo = CodigoDe(resultado);
  registro::AnotaMotor(codigo);
  const Categoria* categoria = BuscaCategoria(codigo);
  const std::string original(sentencia);
  if (categoria == nullptr)
    return {kBaseDatos, "La base de datos no pudo ejecutar la sentencia" + Palabras(mensaje), original};
  if (categoria->texto == nullptr) return {categoria->numero, mensaje, original};
  std::string texto = categoria->texto;
  switch (categoria->cola) {
    case Cola::Mensaje:
      texto += Palabras(mensaje);
      break;
    case Cola::Nombre:
      texto += NombreDe(Citado(mensaje), sentencia);
      break;
    case Cola::Columnas:
      texto += Columnas(resultado, sentencia);
      break;
    case Cola::Nada:
      break;
  }
  return {categoria->numero, texto, original};
}

com::Error ErrorDeConexion(const std::string& mensaje) {
  for (const Causa& causa : kCausas) {
    if (mensaje.find(causa.ingles) == std::string::npos && mensaje.find(causa.espanol) == std::string::npos) continue;
    return {kBaseDatos, causa.texto};
  }
  return {kBaseDatos, "No se pudo conectar con el servidor de la base de datos" + Palabras(mensaje)};
}

std::string NombreDe(std::string_view plegado, std::string_view sentencia) {
  if (const esquema::Tabla* tabla = esquema::BuscaTabla(plegado)) return std::string(tabla->nombre);
  const esquema::Columna* columna = esquema::BuscaColumna(plegado);
  for (auto desde = sentencia.begin();;) {
    const auto it = std::search(desde, sentencia.end(), plegado.begin(), plegado.end(), IgualLetra);
    if (it == sentencia.end()) break;
    const auto fin = it + static_cast<std::ptrdiff_t>(plegado.size());
    const bool entera =
        (it == sentencia.begin() || !EsDeNombre(*(it - 1))) && (fin == sentencia.end() || !EsDeNombre(*fin));
    const bool alias =
        it - sentencia.begin() >= 3 && *(it - 1) == ' ' && IgualLetra(*(it - 2), 's') && IgualLetra(*(it - 3), 'a');
    if (entera && (alias || columna == nullptr)) return {it, fin};
    desde = fin;
  }
  return std::string(columna == nullptr ? plegado : columna->nombre);
}

}  // namespace autonomo
