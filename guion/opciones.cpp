#include "guion/opciones.h"

#include "platform/com/error.h"

namespace guion {

const char* const kUsoGuion =
    "Uso: reservas-guion [--base RUTA.db] [--demo] [--ahora AAAA-MM-DDTHH:MM[:SS]] [--usuario LOGIN]\n"
    "                    [--por-celda] [--registro ARCHIVO] [GUION]\n"
    "\n"
    "  --base RUTA.db     base SQLite; se crea vacía si no existe (sin ella, una base en memoria)\n"
    "  --demo             llena una base vacía con el hotel de demostración\n"
    "  --ahora FECHA      fija el reloj del servidor\n"
    "  --usuario LOGIN    usuario del sistema\n"
    "  --por-celda        el tablero pregunta celda por celda\n"
    "  GUION              archivo de órdenes, una por línea; - es la entrada estándar\n"
    "  --registro ARCHIVO  diario de fallas y escrituras; sin ella, el de la carpeta de estado del usuario\n"
    "  --version          versión, motor, esquema y base\n"
    "  -h, --help, --ayuda  esta ayuda\n"
    "\n"
    "Sólo se abren bases SQLite: --conexion CADENA, la de otros motores, se rechaza.\n";

namespace {

[[noreturn]] void UsoErroneo(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

// What stands between the first quotes of the toolkit's text.
std::string Nombrada(const QString& texto) { return texto.section(QLatin1Char('\''), 1, 1).toStdString(); }

}  // namespace

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

std::vector<Opcion> OpcionesDeAnfitrion() {
  return {{"base", true}, {"conexion", true}, {"demo"}, {"ahora", true}, {"usuario", true}, {"por-celda"}};
}

autonomo::Opciones LeeAnfitrion(const Argumentos& argumentos) {
  autonomo::Opciones opciones;
  if (argumentos.Hay("base") && argumentos.Hay("conexion")) UsoErroneo("--base y --conexion no se usan juntas");
  opciones.base.ruta = argumentos.Valor("base").value_or(opciones.base.ruta);
  opciones.base.conexion = argumentos.Valor("conexion").value_or("");
  opciones.base.leeConjuntos = !argumentos.Hay("por-celda");
  opciones.demo = argumentos.Hay("demo");
  opciones.usuario = argumentos.Valor("usuario").value_or(opciones.usuario);
  if (const auto ahora = argumentos.Valor("ahora")) {
    opciones.ahora = com::DeIso(*ahora);
    if (!opciones.ahora) UsoErroneo("«" + *ahora + "» no es una fecha AAAA-MM-DDTHH:MM[:SS]");
  }
  return opciones;
}

}  // namespace guion
