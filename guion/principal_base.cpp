// reservas-base: what whoever looks after a hotel's database does with it.
#include <QCoreApplication>
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "guion/archivos.h"
#include "guion/habitaciones_csv.h"
#include "guion/opciones.h"
#include "guion/palabras.h"
#include "guion/salidas.h"
#include "host/standalone/cambio_llave.h"
#include "host/standalone/llave.h"
#include "host/standalone/permisos.h"
#include "host/standalone/postgres.h"
#include "host/standalone/proceso.h"
#include "host/standalone/registro.h"
#include "host/standalone/respaldo.h"
#include "host/standalone/revision.h"
#include "host/standalone/transaccion.h"
#include "host/standalone/traslado.h"
#include "host/standalone/usuarios.h"
#include "host/standalone/version.h"
#include "platform/com/error.h"

namespace {

constexpr const char* kUso =
    "Uso: reservas-base ORDEN HOTEL [...]\n"
    "\n"
    "HOTEL es un archivo (HOTEL.db) o una dirección postgresql://usuario@servidor/base.\n"
    "\n"
    "  crea HOTEL         hotel nuevo, vacío y sin sobreventa\n"
    "  demo HOTEL [--ahora FECHA]\n"
    "                     hotel de demostración, alrededor de hoy o de la fecha AAAA-MM-DD\n"
    "  habitaciones HOTEL ARCHIVO.csv\n"
    "                     agrega las habitaciones del archivo, todas o ninguna; sus columnas son\n"
    "                     habitacion,descripcion,tipo,grupo,area\n"
    "  revisa HOTEL       busca daños y lo que no cuadra\n"
    "  copia HOTEL DESTINO\n"
    "                     pasa el hotel a otra base, vacía, y compara cada renglón. Mientras, nadie captura\n"
    "  usuario HOTEL LOGIN [--contrasena-de ARCHIVO] [--administra] [--servidor]\n"
    "                     le pone la contraseña del archivo, o la de la variable RESERVAS_CONTRASENA; desde la "
    "primera\n"
    "                     todos la necesitan. El primer usuario administra el hotel, los demás con --administra. Con\n"
    "                     --servidor entra además al servidor PostgreSQL con un rol suyo, que tiene ahí la misma\n"
    "                     contraseña y los mismos derechos\n"
    "  clave HOTEL        dice dónde están las llaves de las tarjetas y cuál abre las de ese hotel; con\n"
    "    --exporta ARCHIVO  copia esa llave a un archivo nuevo, para otro equipo o para guardarla\n"
    "    --importa ARCHIVO  trae las de un archivo así\n"
    "    --agrega           hace una llave, para los hoteles que aún no guardan tarjetas\n"
    "    --cambia           cifra todas las tarjetas del hotel con una llave nueva; la anterior no se borra\n"
    "  agenda HOTEL CARPETA [--nombres]\n"
    "                     escribe en la carpeta el calendario de cada habitación (0101.ics), del mes pasado a un año;\n"
    "                     sin --nombres no dice de quién son las noches. Los que no cambian no se tocan\n"
    "  respalda HOTEL.db [COPIA.db] [--sustituye]\n"
    "                     copia el hotel, también mientras se trabaja en él; sin COPIA.db, en su carpeta de "
    "respaldos.\n"
    "                     Un archivo que ya existe no se toca sin --sustituye\n"
    "  repone HOTEL.db [COPIA.db]\n"
    "                     pone una copia en el lugar del hotel; sin COPIA.db, la última buena. Lo que había queda al "
    "lado\n"
    "\n"
    "  --registro ARCHIVO  diario de fallas y escrituras; sin ella, el de la carpeta de estado del usuario\n"
    "  --version          versión, motor, esquema y base\n"
    "  -h, --help, --ayuda  esta ayuda\n"
    "\n"
    "Termina con 0 si todo salió bien, 1 si no, 2 si no se entendió la orden.\n";

constexpr const char* kPrograma = "reservas-base";

std::string Cuanto(const autonomo::Respaldo& r) {
  return std::to_string(r.reservaciones) + " reservaciones, " + std::to_string(r.filas) + " renglones en total";
}

const autonomo::Reloj kReloj;

using autonomo::EsDireccion;

// --- the orders; palabras: what follows the order's name

using Palabras = std::vector<std::string>;

autonomo::OpcionesConexion Base(const std::string& palabra) {
  autonomo::OpcionesConexion opciones;
  (EsDireccion(palabra) ? opciones.conexion : opciones.ruta) = palabra;
  opciones.pideContrasena = guion::PideEnLaTerminal;
  return opciones;
}

// A hotel that is there: a file is not made by the way.
autonomo::OpcionesConexion Existente(const std::string& palabra) {
  autonomo::OpcionesConexion opciones = Base(palabra);
  opciones.crea = false;
  return opciones;
}

// Options of a hotel that is to be made: its file is not there yet, or the server's database holds nothing.
autonomo::Opciones Nueva(const std::string& palabra) {
  std::error_code ec;
  if (!EsDireccion(palabra) && std::filesystem::exists(palabra, ec)) {
    throw com::Error(com::error::kArgumento, "Ya existe: dé otro nombre");
  }
  autonomo::Opciones opciones;
  opciones.base = Base(palabra);
  if (EsDireccion(palabra)) {
    const auto motor = autonomo::AbreMotor(opciones.base, kReloj);
    if (!autonomo::EsNueva(*motor)) {
      throw com::Error(com::error::kArgumento, "La base no está vacía: ya tiene un hotel");
    }
    guion::DiceAvisos(kPrograma, *motor);
  }
  return opciones;
}

int Crea(const Palabras& palabras, const guion::Argumentos&) {
  autonomo::Opciones opciones = Nueva(palabras[0]);
  opciones.sinSobreventa = true;
  const autonomo::Anfitrion anfitrion(opciones);
  std::cout << "Hotel vacío en " << palabras[0] << '\n';
  return guion::kTodoBien;
}

int Demo(const Palabras& palabras, const guion::Argumentos& argumentos) {
  autonomo::Opciones opciones = Nueva(palabras[0]);
  opciones.demo = true;
  if (const auto dia = argumentos.Valor("ahora")) opciones.ahora = guion::FechaDe(*dia);
  const autonomo::Anfitrion anfitrion(opciones);
  std::cout << "Hotel de demostración en " << palabras[0] << '\n';
  return guion::kTodoBien;
}

int Habitaciones(const Palabras& palabras, const guion::Argumentos&) {
  const auto conexion = autonomo::AbreConexion(Existente(palabras[0]), kReloj);
  const guion::AltaHabitaciones alta = guion::RevisaHabitaciones(*conexion, palabras[1]);
  if (!alta.malas.empty()) {
    std::cerr << guion::Dice(alta) << "\nNo se agregó ninguna habitación\n";
    return guion::kConFallas;
  }
  guion::GuardaHabitaciones(*conexion, alta);
  std::cout << "Agregadas: " << guion::Dice(alta) << '\n';
  return guion::kTodoBien;
}

// Whoever may write the hotel's file may let himself in: a forgotten password is no end. The first one with a password
// goes on with what everybody could do until then, which is then hers.
int Usuario(const Palabras& palabras, const guion::Argumentos& argumentos) {
  const std::string contrasena = guion::LeeContrasenaDeUsuario(argumentos.Valor("contrasena-de"));
  const auto conexion = autonomo::AbreConexion(Existente(palabras[0]), kReloj);
  guion::DiceAvisos(kPrograma, *conexion);
  const std::string sinRoles = conexion->roles().PreparaRoles();
  if (!sinRoles.empty()) std::cout << sinRoles << '\n';
  const bool enServidor = argumentos.Hay("servidor");
  if (enServidor && conexion->Motor() != esquema::Motor::PostgreSQL)
    throw com::Error(com::error::kArgumento, "--servidor es para un hotel en un servidor PostgreSQL");
  if (enServidor && !sinRoles.empty())
    throw com::Error(com::error::kArgumento, "Sin los roles del hotel en el servidor nadie entra a él con uno suyo");
  autonomo::FichaUsuario ficha = autonomo::FichaDe(*conexion, palabras[1]);
  if (ficha.usuario.clave.empty()) ficha.usuario.clave = palabras[1];
  ficha.usuario.deBaja = false;
  const auto puede = [&](const char* opcion) {
    if (std::ranges::find(ficha.derechos, opcion) == ficha.derechos.end()) ficha.derechos.emplace_back(opcion);
  };
  const bool primera = !autonomo::HayQuienAdministre(*conexion);
  if (primera || argumentos.Hay("administra")) puede(autonomo::kPermisoConfiguracion);
  if (primera && autonomo::PuedeVerTarjetas(*conexion, ficha.usuario.clave)) puede(autonomo::kPermisoTarjetas);
  autonomo::Transaccion t(*conexion);
  autonomo::GuardaUsuario(*conexion, ficha.usuario, contrasena, ficha.derechos);
  const std::string& clave = ficha.usuario.clave;
  std::string rol;
  if (enServidor) {
    conexion->roles().AdmiteRol(clave, contrasena);
    rol = com::RecortaDerecha(com::CStr(conexion->Consulta("SELECT LOWER(?) AS Rol", {clave})->Fields(0).Value()));
    if (!conexion->roles().AjustaRol(clave, autonomo::AlcanceDe(*conexion, clave)))
      throw com::Error(com::error::kBaseDatos, "El rol " + rol + " del servidor no tomó los derechos de " + clave);
  }
  t.Concluye();
  std::cout << "El usuario " << clave << " tiene esa contraseña"
            << (autonomo::Administra(*conexion, clave) ? " y administra el hotel\n" : "\n");
  if (enServidor)
    std::cout << "Su rol en el servidor es " << rol << " y tiene ahí la misma contraseña y los mismos derechos\n";
  return guion::kTodoBien;
}

int Revisa(const Palabras& palabras, const guion::Argumentos&) {
  int malos = 0;
  for (const autonomo::Hallazgo& hallazgo : autonomo::Revisa(Existente(palabras[0]), kReloj)) {
    std::cout << (hallazgo.mal ? "MAL   " : "bien  ") << hallazgo.texto << '\n';
    malos += hallazgo.mal ? 1 : 0;
  }
  std::cout << (malos == 0 ? std::string("La base está bien") : "Cosas por atender: " + std::to_string(malos)) << '\n';
  return malos == 0 ? guion::kTodoBien : guion::kConFallas;
}

int Copia(const Palabras& palabras, const guion::Argumentos&) {
  const auto de = autonomo::AbreMotor(Existente(palabras[0]), kReloj);
  guion::DiceAvisos(kPrograma, *de);
  // What is wrong with the destination is told with its name.
  const auto traslada = [&] {
    try {
      return autonomo::Traslada(*de, *autonomo::AbreMotor(Base(palabras[1]), kReloj));
    } catch (const com::Error& e) {
      if (EsDireccion(palabras[1]) || e.Numero() != com::error::kArgumento) throw;
      throw com::Error(e.Numero(), guion::ConArchivo(palabras[1], e.Descripcion()), e.Sentencia());
    }
  };
  std::int64_t total = 0;
  for (const auto& [tabla, filas] : traslada()) {
    total += filas;
    if (filas > 0) std::cout << std::setw(9) << filas << "  " << tabla << '\n';
  }
  std::cout << std::setw(9) << total << "  renglones copiados y comparados, de " << palabras[0] << " a " << palabras[1]
            << '\n';
  return guion::kTodoBien;
}

// --- the keys of the card data: their texts name them by fingerprint

struct Tarjetas {
  std::shared_ptr<autonomo::ConexionDeMotor> motor;
  std::string ruta = autonomo::Llave::RutaUsual();
  std::vector<autonomo::Llave> llaves = autonomo::Llave::Lee(ruta);
  autonomo::Sellos sellos = autonomo::CuentaSellos(*motor, llaves);

  bool Necesita(const autonomo::Llave& llave) const { return sellos.porLlave.contains(llave.Huella()); }
  // The fingerprint of a key that is missing; "" when none is.
  std::string Falta() const {
    for (const auto& [huella, cuantos] : sellos.porLlave) {
      if (std::ranges::find(llaves, huella, &autonomo::Llave::Huella) == llaves.end()) return huella;
    }
    return {};
  }
  void ExigeTodas() const {
    if (const std::string huella = Falta(); !huella.empty()) {
      throw com::Error(com::error::kBaseDatos, "En " + ruta + " no está la llave " + huella +
                                                   ", que abre tarjetas de este hotel: tráigala antes "
                                                   "con --importa");
    }
  }
};

std::string Datos(std::size_t cuantos) {
  return std::to_string(cuantos) + (cuantos == 1 ? " dato" : " datos") + " de tarjeta";
}

int MuestraClaves(const Tarjetas& t, const std::string&) {
  std::cout << "Archivo de llaves: " << t.ruta << (t.llaves.empty() ? ", que aún no tiene ninguna\n" : "\n");
  for (const autonomo::Llave& llave : t.llaves) {
    std::cout << "bien  Llave " << llave.Huella() << ": ";
    if (t.Necesita(llave)) {
      std::cout << "abre " << Datos(t.sellos.porLlave.at(llave.Huella())) << " de este hotel\n";
    } else {
      const bool siguiente = t.sellos.porLlave.empty() && llave == t.llaves.front();
      std::cout << (siguiente ? "la usará la primera tarjeta de este hotel\n" : "de ninguna tarjeta de este hotel\n");
    }
  }
  for (const auto& [huella, cuantos] : t.sellos.porLlave) {
    if (std::ranges::find(t.llaves, huella, &autonomo::Llave::Huella) == t.llaves.end())
      std::cout << "MAL   Llave " << huella << ": no está, y sin ella no se leen " << Datos(cuantos) << '\n';
  }
  if (t.sellos.danados > 0) std::cout << "MAL   Dañados, ninguna los abre: " << Datos(t.sellos.danados) << '\n';
  if (t.sellos.enClaro > 0) std::cout << "Sin cifrar hasta que se abra el hotel: " << Datos(t.sellos.enClaro) << '\n';
  return t.Falta().empty() && t.sellos.danados == 0 ? guion::kTodoBien : guion::kConFallas;
}

// What opens this hotel's cards, or will: not the keys of others.
int ExportaClaves(const Tarjetas& t, const std::string& archivo) {
  t.ExigeTodas();
  std::vector<autonomo::Llave> suyas;
  std::ranges::copy_if(t.llaves, std::back_inserter(suyas), [&](const auto& llave) { return t.Necesita(llave); });
  if (suyas.empty() && !t.llaves.empty()) suyas.push_back(t.llaves.front());
  if (suyas.empty()) throw com::Error(com::error::kArgumento, "Aún no hay llave que copiar: se hace con --agrega");
  autonomo::Llave::Copia(archivo, suyas);
  for (const autonomo::Llave& llave : suyas)
    std::cout << "Llave " << llave.Huella() << " copiada a " << archivo << '\n';
  std::cout << "Quien tenga ese archivo y el hotel lee las tarjetas: guárdelo aparte\n";
  return guion::kTodoBien;
}

int ImportaClaves(const Tarjetas& t, const std::string& archivo) {
  const std::vector<autonomo::Llave> traidas = autonomo::Llave::LeeCopia(archivo);
  if (!t.sellos.porLlave.empty() && std::ranges::none_of(traidas, [&](const auto& l) { return t.Necesita(l); })) {
    throw com::Error(com::error::kArgumento, "La llave de " + archivo + " no abre ninguna tarjeta de este hotel");
  }
  autonomo::Llave::Agrega(t.ruta, traidas);
  return MuestraClaves({t.motor}, {});
}

int AgregaClave(const Tarjetas& t, const std::string&) {
  autonomo::Llave::Agrega(t.ruta, {autonomo::Llave::Nueva()});
  return MuestraClaves({t.motor}, {});
}

// The new key is on disk before a card needs it, and those before stay: whatever interrupts this, each card opens.
int CambiaClave(const Tarjetas& t, const std::string&) {
  t.ExigeTodas();
  const autonomo::Llave nueva = autonomo::Llave::Nueva();
  autonomo::Llave::Agrega(t.ruta, {nueva});
  const std::size_t cuantos = autonomo::CambiaLlave(*t.motor, t.llaves, nueva);
  std::cout
      << Datos(cuantos) << " con la llave nueva, " << nueva.Huella() << ", que está en " << t.ruta
      << "\nCópiela con --exporta: la necesitan los demás equipos. La anterior sigue ahí: la necesitan las copias "
         "de respaldo de antes\n";
  return guion::kTodoBien;
}

struct AccionDeClave {
  const char* opcion;
  int (*corre)(const Tarjetas&, const std::string& archivo);
};
constexpr AccionDeClave kAccionesDeClave[] = {
    {"exporta", ExportaClaves}, {"importa", ImportaClaves}, {"agrega", AgregaClave}, {"cambia", CambiaClave}};

int Clave(const Palabras& palabras, const guion::Argumentos& argumentos) {
  const AccionDeClave* accion = nullptr;
  for (const AccionDeClave& otra : kAccionesDeClave) {
    if (!argumentos.Hay(otra.opcion)) continue;
    if (accion != nullptr) {
      throw com::Error(com::error::kArgumento,
                       std::string("--") + accion->opcion + " y --" + otra.opcion + " no se usan juntas");
    }
    accion = &otra;
  }
  const Tarjetas tarjetas{autonomo::AbreMotor(Existente(palabras[0]), kReloj)};
  guion::DiceAvisos(kPrograma, *tarjetas.motor);
  if (accion == nullptr) return MuestraClaves(tarjetas, {});
  return accion->corre(tarjetas, argumentos.Valor(accion->opcion).value_or(""));
}

// A copy is a file's; a server has its own means.
const std::string& Archivo(const std::string& palabra) {
  if (!EsDireccion(palabra)) return palabra;
  throw com::Error(com::error::kArgumento,
                   "Sólo se respaldan archivos; una base de PostgreSQL se respalda con pg_dump, o se pasa a un archivo "
                   "con la orden copia");
}

int Respalda(const Palabras& palabras, const guion::Argumentos& argumentos) {
  const std::string& hotel = Archivo(palabras[0]);
  const autonomo::OpcionesRespaldo opciones{.sustituye = argumentos.Hay("sustituye")};
  const auto r = palabras.size() > 1 ? autonomo::Respalda(hotel, palabras[1], opciones)
                                     : autonomo::RespaldaEnSuCarpeta(hotel, autonomo::Momento(), opciones);
  std::cout << "Copia hecha y revisada: " << r.ruta << " (" << Cuanto(r) << ")\n";
  return guion::kTodoBien;
}

int Repone(const Palabras& palabras, const guion::Argumentos&) {
  const std::string& hotel = Archivo(palabras[0]);
  std::optional<std::string> copia;
  if (palabras.size() > 1) copia = palabras[1];
  if (!copia) copia = autonomo::UltimaBuena(hotel);
  if (!copia) {
    throw com::Error(com::error::kBaseDatos, "No hay copias de respaldo buenas en " + autonomo::CarpetaDeCopias(hotel) +
                                                 ": diga cuál se repone");
  }
  const autonomo::Repuesto r = autonomo::Repone(hotel, *copia);
  std::cout << hotel << " es ahora la copia " << r.respaldo.ruta << " (" << Cuanto(r.respaldo) << ")\n";
  for (const std::string& apartado : r.apartados) std::cout << "Lo que había quedó en " << apartado << '\n';
  return guion::kTodoBien;
}

int EscribeAgendas(const Palabras& palabras, const guion::Argumentos& argumentos) {
  if (!std::filesystem::is_directory(palabras[1])) {
    throw com::Error(com::error::kArgumento, "La carpeta " + palabras[1] + " no existe");
  }
  const auto conexion = autonomo::AbreConexion(Existente(palabras[0]), kReloj);
  autonomo::Reloj reloj;
  if (const auto dia = argumentos.Valor("ahora")) reloj.Fija(guion::FechaDe(*dia));
  const guion::Agendas a = guion::ExportaAgendas(conexion, argumentos.Hay("nombres"), reloj.Ahora(), palabras[1]);
  std::cout << "Calendarios: " << a.habitaciones << ", cambiados: " << a.escritas << '\n';
  return guion::kTodoBien;
}

struct Orden {
  const char* nombre;
  std::size_t minimo, maximo;  // words after it
  bool registra;               // whether its statements go into the log, which copied rows would fill
  int (*corre)(const Palabras&, const guion::Argumentos&);
};

constexpr Orden kOrdenes[] = {
    {"crea", 1, 1, true, Crea},
    {"demo", 1, 1, false, Demo},
    {"revisa", 1, 1, true, Revisa},
    {"copia", 2, 2, false, Copia},
    {"usuario", 2, 2, true, Usuario},
    {"respalda", 1, 2, true, Respalda},
    {"repone", 1, 2, true, Repone},
    {"clave", 1, 1, false, Clave},
    {"habitaciones", 2, 2, true, Habitaciones},
    {"agenda", 2, 2, true, EscribeAgendas},
};

const Orden& BuscaOrden(const Palabras& sueltos) {
  if (sueltos.empty()) guion::UsoErroneo("Falta la orden");
  for (const Orden& orden : kOrdenes) {
    if (sueltos[0] != orden.nombre) continue;
    if (sueltos.size() - 1 < orden.minimo) guion::UsoErroneo("A la orden " + sueltos[0] + " le falta con qué archivo");
    if (sueltos.size() - 1 > orden.maximo) guion::UsoErroneo("Sobra «" + sueltos[orden.maximo + 1] + "»");
    return orden;
  }
  guion::UsoErroneo("No existe la orden " + sueltos[0]);
}

int Corre(const Orden& orden, const Palabras& palabras, const guion::Argumentos& argumentos) {
  autonomo::registro::Sesion sesion;
  try {
    if (orden.registra) sesion.Comienza(kPrograma, palabras[0], argumentos.Valor("registro"));
    return orden.corre(palabras, argumentos);
  } catch (const std::exception& e) {
    autonomo::registro::AnotaFalla(e);
    std::string texto = e.what();
    const bool dicho =
        std::ranges::any_of(palabras, [&](const std::string& palabra) { return texto.starts_with(palabra + ": "); });
    if (!dicho && !EsDireccion(palabras[0])) texto = guion::ConArchivo(palabras[0], texto);
    std::cerr << kPrograma << ": " << texto << '\n';
    return guion::kConFallas;
  }
}

}  // namespace

int main(int argc, char** argv) {
  autonomo::ProtegeMemoria();
  const QCoreApplication aplicacion(argc, argv);
  try {
    const guion::Argumentos argumentos({argv + 1, argv + argc},
                                       {{"sustituye"},
                                        {"nombres"},
                                        {"ahora", true},
                                        {"contrasena-de", true},
                                        {"administra"},
                                        {"servidor"},
                                        {"exporta", true},
                                        {"importa", true},
                                        {"agrega"},
                                        {"cambia"}},
                                       3);
    if (argumentos.PideAyuda()) {
      std::cout << kUso;
      return guion::kTodoBien;
    }
    Palabras palabras = argumentos.Sueltos();
    if (argumentos.PideVersion()) {
      std::cout << autonomo::TextoVersionPreguntando(kPrograma, palabras.size() > 1 ? palabras[1] : "");
      return guion::kTodoBien;
    }
    const Orden& orden = BuscaOrden(palabras);
    palabras.erase(palabras.begin());
    return Corre(orden, palabras, argumentos);
  } catch (const com::Error& e) {
    std::cerr << kPrograma << ": " << e.Descripcion() << "\n\n" << kUso;
    return guion::kUsoErroneo;
  }
}
