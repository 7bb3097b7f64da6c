#include "guion/opciones.h"

#include "platform/com/error.h"

namespace guion {

const char* const kUsoGuion =
    "Uso: reservas-guion [--base RUTA.db] [--demo] [--ahora AAAA-MM-DDTHH:MM[:SS]] [--usuario LOGIN]\n"
    "                    [--por-celda] [GUION]\n"
    "\n"
    "  --base RUTA.db     base SQLite; se crea vacía si no existe (sin ella, una base en memoria)\n"
    "  --demo             llena una base vacía con el hotel de demostración\n"
    "  --ahora FECHA      fija el reloj del servidor\n"
    "  --usuario LOGIN    usuario del sistema\n"
    "  --por-celda        el tablero pregunta celda por celda\n"
    "  GUION              archivo de órdenes, una por línea; - es la entrada estándar\n"
    "  -h, --help, --ayuda  esta ayuda\n"
    "\n"
    "Sólo se abren bases SQLite: --conexion CADENA, la de otros motores, se rechaza.\n";

namespace {

[[noreturn]] void UsoErroneo(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

}  // namespace

bool PideAyuda(std::string_view argumento) {
  return argumento == "--ayuda" || argumento == "--help" || argumento == "-h";
}

OpcionesGuion LeeOpciones(const std::vector<std::string>& argumentos) {
  OpcionesGuion opciones;
  bool conBase = false, conConexion = false, conGuion = false;
  for (std::size_t i = 0; i < argumentos.size(); ++i) {
    const std::string& opcion = argumentos[i];
    const auto valor = [&]() -> const std::string& {
      if (i + 1 >= argumentos.size() || argumentos[i + 1].empty()) UsoErroneo("Falta el valor de " + opcion);
      return argumentos[++i];
    };
    if (opcion == "--base") {
      opciones.anfitrion.base.ruta = valor();
      conBase = true;
    } else if (opcion == "--conexion") {
      opciones.anfitrion.base.conexion = valor();
      conConexion = true;
    } else if (opcion == "--demo") {
      opciones.anfitrion.demo = true;
    } else if (opcion == "--ahora") {
      const std::string& texto = valor();
      opciones.anfitrion.ahora = com::DeIso(texto);
      if (!opciones.anfitrion.ahora) UsoErroneo("«" + texto + "» no es una fecha AAAA-MM-DDTHH:MM[:SS]");
    } else if (opcion == "--usuario") {
      opciones.anfitrion.usuario = valor();
    } else if (opcion == "--por-celda") {
      opciones.anfitrion.base.leeConjuntos = false;
    } else if (PideAyuda(opcion)) {
      opciones.ayuda = true;
    } else if (opcion.starts_with("-") && opcion != "-") {
      UsoErroneo("No existe la opción " + opcion);
    } else if (conGuion) {
      UsoErroneo("Sobra «" + opcion + "»");
    } else {
      opciones.guion = opcion;
      conGuion = true;
    }
  }
  if (conBase && conConexion) UsoErroneo("--base y --conexion no se usan juntas");
  return opciones;
}

}  // namespace guion
