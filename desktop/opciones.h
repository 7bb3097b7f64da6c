// The command line of the program `reservas`, and the database that it means.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "desktop/estilo.h"
#include "host/standalone/anfitrion.h"

namespace vista {

inline constexpr const char* kUso =
    "Uso: reservas [--base RUTA.db | --conexion DIRECCION] [--demo] [--ahora AAAA-MM-DDTHH:MM[:SS]] [--usuario LOGIN]\n"
    "              [--por-celda] [--tema claro|oscuro|sistema] [--guion GUION] [--registro ARCHIVO]\n"
    "\n"
    "  --base RUTA.db     base SQLite; se crea vacía si no existe. Sin ella se abre el último hotel que se eligió en "
    "el\n"
    "                     menú, o la base del usuario, que la primera vez se llena con el hotel de demostración\n"
    "  --conexion DIRECCION  base PostgreSQL, postgresql://usuario@servidor/base; la contraseña sale de ~/.pgpass,\n"
    "                     PGPASSWORD o un servicio, o se pide\n"
    "  --demo             llena una base vacía con el hotel de demostración\n"
    "  --ahora FECHA      fija el reloj del servidor\n"
    "  --usuario LOGIN    usuario del sistema\n"
    "  --contrasena-de ARCHIVO  con --guion, archivo con la contraseña del usuario; sin ella, la de la variable\n"
    "                     RESERVAS_CONTRASENA\n"
    "  --por-celda        el tablero pregunta celda por celda\n"
    "  --tema TEMA        colores claros, oscuros o los del sistema\n"
    "  --guion GUION      un guion maneja las ventanas; - es la entrada estándar\n"
    "  --registro ARCHIVO diario de fallas y escrituras; sin ella, el de la carpeta de estado del usuario\n"
    "  --version          versión, motor, esquema y base\n"
    "  -h, --help, --ayuda  esta ayuda\n";

struct OpcionesPrograma {
  autonomo::Opciones anfitrion;
  std::optional<std::string> guion;
  std::optional<std::string> registro;
  Tema tema = Tema::Sistema;
  bool elegido = false;  // the hotel was chosen in the menu: it is the one that opens next time
};

// Arguments that the program does not take, in words.
struct MalUso {
  std::string motivo;
};

// Texto takes what was asked for instead of the program: its usage or its version. MalUso for arguments that it does
// not take; com::Error for a database folder that cannot be made.
OpcionesPrograma LeeOpcionesPrograma(const std::vector<std::string>& argumentos, std::string& texto);

// Makes the connection one to the hotel, the path of a file or a server's address.
void FijaHotel(autonomo::OpcionesConexion& base, const std::string& hotel);

// Path of the database in the user's data folder; the folder is made. com::Error kSoloLectura when it cannot be.
std::string BaseDelUsuario();

}  // namespace vista
