#include "guion/opciones.h"

#include <termios.h>

#include <QStandardPaths>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>

#include "guion/palabras.h"
#include "host/standalone/archivo_privado.h"
#include "host/standalone/postgres.h"
#include "host/standalone/postgres_reloj.h"
#include "host/standalone/usuarios.h"
#include "platform/com/error.h"

namespace guion {

const char* const kUsoGuion =
    "Uso: reservas-guion [--base RUTA.db | --conexion DIRECCION] [--demo] [--ahora AAAA-MM-DDTHH:MM[:SS]] [--usuario "
    "LOGIN]\n"
    "                    [--por-celda] [--registro ARCHIVO] [GUION]\n"
    "\n"
    "  --base RUTA.db     base SQLite; se crea vacía si no existe (sin ella, una base en memoria)\n"
    "  --conexion DIRECCION  base PostgreSQL, postgresql://usuario@servidor/base; la contraseña sale de ~/.pgpass,\n"
    "                     PGPASSWORD o un servicio, o se pide\n"
    "  --demo             llena una base vacía con el hotel de demostración\n"
    "  --ahora FECHA      fija el reloj del servidor\n"
    "  --usuario LOGIN    usuario del sistema\n"
    "  --contrasena-de ARCHIVO  archivo con la contraseña del usuario, donde el hotel la pide; sin ella, la de la\n"
    "                     variable RESERVAS_CONTRASENA\n"
    "  --por-celda        el tablero pregunta celda por celda\n"
    "  GUION              archivo de órdenes, una por línea; - es la entrada estándar\n"
    "  --registro ARCHIVO  diario de fallas y escrituras; sin ella, el de la carpeta de estado del usuario\n"
    "  --version          versión, motor, esquema y base\n"
    "  -h, --help, --ayuda  esta ayuda\n";

namespace {

// What stands between the first quotes of the toolkit's text.
std::string Nombrada(const QString& texto) { return texto.section(QLatin1Char('\''), 1, 1).toStdString(); }

}  // namespace

std::optional<std::string> PideEnLaTerminal(const std::string& pregunta) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> abierta(std::fopen("/dev/tty", "r+"), std::fclose);
  std::FILE* terminal = abierta.get();
  if (terminal == nullptr) return std::nullopt;
  termios antes{};
  std::optional<std::string> respuesta;
  if (tcgetattr(fileno(terminal), &antes) == 0) {
    termios callada = antes;
    callada.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(fileno(terminal), TCSAFLUSH, &callada);
    std::array<char, 256> linea{};
    const bool preguntada = std::fputs((pregunta + ": ").c_str(), terminal) >= 0 && std::fflush(terminal) == 0;
    if (preguntada && std::fgets(linea.data(), linea.size(), terminal) != nullptr)
      respuesta = std::string(linea.data(), std::strcspn(linea.data(), "\n"));
    tcsetattr(fileno(terminal), TCSAFLUSH, &antes);
    static_cast<void>(std::fputs("\n", terminal));  // what is written next begins a line
  }
  return respuesta;
}

void UsoErroneo(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

Argumentos::Argumentos(const std::vector<std::string>& argumentos, const std::vector<Opcion>& opciones, int sueltos) {
  QStringList textos{QString()};
  for (const std::string& a : argumentos) textos << QString::fromStdString(a);
  lector_.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
  lector_.addOption(
      QCommandLineOption(QStringList{QStringLiteral("ayuda"), QStringLiteral("help"), QStringLiteral("h")}));
  lector_.addOption(QCommandLineOption(QStringLiteral("version")));
  lector_.addOption({QStringLiteral("registro"), {}, QStringLiteral("valor")});
  for (const Opcion& o : opciones) {
    lector_.addOption({QString::fromUtf8(o.nombre), {}, o.conValor ? QStringLiteral("valor") : QString()});
  }
  const bool bien = lector_.parse(textos);
  if (PideAyuda() || PideVersion()) return;
  // Before any word is written anywhere: an address holds no password.
  for (const std::string& suelto : Sueltos()) autonomo::RevisaHotel(suelto);
  const QStringList desconocidas = lector_.unknownOptionNames();
  if (!desconocidas.isEmpty()) UsoErroneo("No existe la opción --" + desconocidas.front().toStdString());
  if (!bien) UsoErroneo("No se entiende " + Nombrada(lector_.errorText()) + ": le falta o le sobra el valor");
  for (const QString& nombre : lector_.optionNames()) {
    const QStringList valores = lector_.values(nombre);
    if (!valores.isEmpty() && valores.back().isEmpty()) UsoErroneo("Falta el valor de --" + nombre.toStdString());
  }
  if (Sueltos().size() > static_cast<std::size_t>(sueltos)) {
    UsoErroneo("Sobra «" + Sueltos()[static_cast<std::size_t>(sueltos)] + "»");
  }
}

std::optional<std::string> Argumentos::Valor(const char* nombre) const {
  if (!Hay(nombre)) return std::nullopt;
  return lector_.value(QString::fromUtf8(nombre)).toStdString();
}

std::vector<std::string> Argumentos::Sueltos() const {
  std::vector<std::string> sueltos;
  for (const QString& a : lector_.positionalArguments()) sueltos.push_back(a.toStdString());
  return sueltos;
}

bool PideTexto(std::string_view argumento) {
  return argumento == "--ayuda" || argumento == "--help" || argumento == "-h" || argumento == "--version";
}

std::string RutaBaseDelUsuario() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation).toStdString() + "/reservas/hotel.db";
}

std::string LeeContrasenaDeUsuario(const std::optional<std::string>& archivo) {
  const char* ambiente = std::getenv("RESERVAS_CONTRASENA");
  if (!archivo && ambiente == nullptr) {
    UsoErroneo("Falta la contraseña: póngala en la variable RESERVAS_CONTRASENA, o en un archivo con --contrasena-de");
  }
  if (archivo) return autonomo::LineaPrivada(*archivo, "la contraseña");
  const std::string contrasena = ambiente;
  return contrasena.substr(0, contrasena.find_first_of("\r\n"));
}

std::function<std::string(autonomo::Conexion&)> Identifica(const std::string& usuario,
                                                           const std::optional<std::string>& archivo) {
  return [usuario, archivo](autonomo::Conexion& conexion) {
    const autonomo::Acceso acceso =
        autonomo::Accede(conexion, usuario, LeeContrasenaDeUsuario(archivo), autonomo::RelojDe(conexion).Ahora());
    if (!acceso.Bien()) throw com::Error(com::error::kArgumento, acceso.motivo + " (" + usuario + ")");
    return acceso.usuario;
  };
}

void DiceAvisos(const char* programa, autonomo::ConexionDeMotor& conexion) {
  for (const std::string& aviso : conexion.TomaAvisos()) std::cerr << programa << ": " << aviso << '\n';
}

std::vector<Opcion> OpcionesDeAnfitrion() {
  return {{"base", true},    {"conexion", true},      {"demo"},     {"ahora", true},
          {"usuario", true}, {"contrasena-de", true}, {"por-celda"}};
}

autonomo::OpcionesConexion LeeBase(const Argumentos& argumentos) {
  autonomo::OpcionesConexion base;
  if (argumentos.Hay("base") && argumentos.Hay("conexion")) UsoErroneo("--base y --conexion no se usan juntas");
  base.ruta = argumentos.Valor("base").value_or(base.ruta);
  if (autonomo::EsDireccion(base.ruta)) UsoErroneo("Una dirección de PostgreSQL se da con --conexion");
  autonomo::RevisaHotel(base.ruta);
  base.conexion = argumentos.Valor("conexion").value_or("");
  if (!base.conexion.empty()) autonomo::RevisaDireccion(base.conexion);
  base.pideContrasena = PideEnLaTerminal;
  return base;
}

autonomo::Opciones LeeAnfitrion(const Argumentos& argumentos) {
  autonomo::Opciones opciones;
  opciones.base = LeeBase(argumentos);
  opciones.base.leeConjuntos = !argumentos.Hay("por-celda");
  opciones.demo = argumentos.Hay("demo");
  opciones.usuario = argumentos.Valor("usuario").value_or(opciones.usuario);
  opciones.identifica = Identifica(opciones.usuario, argumentos.Valor("contrasena-de"));
  if (const auto ahora = argumentos.Valor("ahora")) opciones.ahora = MomentoDe(*ahora);
  return opciones;
}

}  // namespace guion
