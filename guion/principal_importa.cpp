// reservas-importa: brings a hotel's existing bookings in through the reservation screen.
#include <unistd.h>

#include <QCoreApplication>
#include <chrono>
#include <iomanip>
#include <iostream>
#include <optional>

#include "guion/archivos.h"
#include "guion/catalogo.h"
#include "guion/csv.h"
#include "guion/importador.h"
#include "guion/opciones.h"
#include "host/standalone/proceso.h"
#include "host/standalone/registro.h"
#include "host/standalone/version.h"
#include "platform/com/error.h"

namespace {

constexpr const char* kUso =
    "Uso: reservas-importa --base RUTA.db --habitaciones HABITACIONES.csv RESERVAS.csv [--rechazadas ARCHIVO.csv]\n"
    "                        [--conexion DIRECCION] [--estricto]\n"
    "\n"
    "Captura en la base las reservas de RESERVAS.csv, como lo haría un recepcionista. Si se interrumpe, la misma "
    "orden\n"
    "continúa donde se quedó. Lo que no se puede capturar queda en el archivo de rechazadas y lo demás sigue.\n"
    "\n"
    "  --base RUTA.db                base SQLite que las recibe; se crea si no existe\n"
    "  --conexion DIRECCION          base PostgreSQL que las recibe, en lugar de --base: "
    "postgresql://usuario@servidor/base\n"
    "  --habitaciones ARCHIVO.csv    las habitaciones del hotel, con su precio\n"
    "  --rechazadas ARCHIVO.csv      donde quedan los renglones que no se pudieron capturar, con su motivo y su "
    "línea;\n"
    "                                sin ella, RUTA.db.rechazadas.csv\n"
    "  --estricto                    no captura nada si algún renglón de RESERVAS.csv está mal: dice cuál y termina\n"
    "  --usuario LOGIN               quién importa, donde los usuarios tienen contraseña\n"
    "  --contrasena-de ARCHIVO       archivo con ella; sin ella, la de la variable RESERVAS_CONTRASENA\n"
    "  --registro ARCHIVO            diario de fallas y escrituras; sin ella, el de la carpeta de estado del usuario\n"
    "  --version                     versión, motor, esquema y base\n"
    "  -h, --help, --ayuda           esta ayuda\n";

constexpr const char* kPrograma = "reservas-importa";
constexpr const char* kUsuario = "IMPORTACION";

struct Opciones {
  autonomo::OpcionesConexion base;
  std::string habitaciones, reservas, rechazadas;
  std::string usuario = kUsuario;
  std::optional<std::string> contrasena;  // file
  bool estricto = false;
  std::optional<std::string> registro;
};

Opciones LeeOpciones(const guion::Argumentos& argumentos) {
  Opciones o;
  o.base = guion::LeeBase(argumentos);
  o.habitaciones = argumentos.Valor("habitaciones").value_or("");
  o.rechazadas = argumentos.Valor("rechazadas").value_or("");
  o.estricto = argumentos.Hay("estricto");
  o.registro = argumentos.Valor("registro");
  o.usuario = argumentos.Valor("usuario").value_or(kUsuario);
  o.contrasena = argumentos.Valor("contrasena-de");
  if (const auto sueltos = argumentos.Sueltos(); !sueltos.empty()) o.reservas = sueltos.front();
  if (!argumentos.Hay("base") && !argumentos.Hay("conexion")) guion::UsoErroneo("Falta --base");
  if (o.base.EnMemoria()) guion::UsoErroneo("--base debe ser un archivo: lo importado en memoria se perdería");
  if (o.habitaciones.empty()) guion::UsoErroneo("Falta --habitaciones");
  if (o.reservas.empty()) guion::UsoErroneo("Falta el archivo de reservas");
  if (o.rechazadas.empty() && !o.base.conexion.empty()) guion::UsoErroneo("Con --conexion falta --rechazadas");
  if (o.rechazadas.empty()) o.rechazadas = o.base.ruta + ".rechazadas.csv";
  return o;
}

// One line that is written over; only for somebody who watches.
class Avance {
 public:
  void operator()(std::size_t hechos, std::size_t total) {
    if (!terminal_ || (hechos != total && ++vueltas_ % 20 != 0)) return;
    std::cerr << '\r' << hechos << " de " << total << " eventos" << (hechos == total ? "\n" : "") << std::flush;
  }

 private:
  bool terminal_ = isatty(STDERR_FILENO) != 0;
  unsigned vueltas_ = 0;
};

void Imprime(const guion::ResumenImportacion& r, double segundos) {
  std::cout << "Leídas: " << r.leidas << "\nGuardadas: " << r.guardadas << "\nCanceladas: " << r.canceladas << '\n';
  int rechazadas = 0;
  for (const auto& [motivo, cuantas] : r.rechazadas) rechazadas += cuantas;
  std::cout << "Rechazadas: " << rechazadas << '\n';
  for (const auto& [motivo, cuantas] : r.rechazadas) std::cout << "  " << cuantas << "  " << motivo << '\n';
  if (r.yaGuardadas + r.yaCanceladas + r.yaRechazadas > 0) {
    std::cout << "De corridas anteriores: " << r.yaGuardadas << " guardadas, " << r.yaCanceladas << " canceladas, "
              << r.yaRechazadas << " rechazadas\n";
  }
  std::cout << "Reservas por segundo: " << std::fixed << std::setprecision(1)
            << (segundos > 0 ? r.intentadas / segundos : 0.0) << '\n';
}

guion::ResumenImportacion ImportaEnBase(const Opciones& opciones, const std::vector<guion::HabitacionCsv>& habitaciones,
                                        const guion::ReservasCsv& reservas, guion::Rechazadas& rechazadas) {
  autonomo::Opciones anfitrionOpciones;
  anfitrionOpciones.base = opciones.base;
  anfitrionOpciones.usuario = opciones.usuario;
  anfitrionOpciones.identifica = guion::Identifica(opciones.usuario, opciones.contrasena);
  autonomo::Anfitrion anfitrion(anfitrionOpciones);
  guion::DiceAvisos(kPrograma, *anfitrion.conexion());
  // Two imports into one base would capture every booking twice.
  if (!anfitrion.conexion()->TomaTurno("importacion"))
    throw com::Error(com::error::kOcupada, "otra importación está trabajando con esta base");
  anfitrion.RegistraClases();
  rechazadas.Abre();
  guion::PreparaHotel(anfitrion, habitaciones);

  return guion::Importador(anfitrion, rechazadas).Importa(reservas, Avance());
}

// Both files are read whole before the database is touched.
void Importa(const Opciones& opciones) {
  const auto habitaciones = guion::LeeHabitaciones(opciones.habitaciones);
  const guion::ReservasCsv reservas = guion::LeeReservas(opciones.reservas, habitaciones);
  if (opciones.estricto && !reservas.malas.empty()) {
    guion::RechazaLinea(opciones.reservas, reservas.malas[0].linea, reservas.malas[0].motivo);
  }
  guion::Rechazadas rechazadas(opciones.rechazadas);
  const auto inicio = std::chrono::steady_clock::now();
  guion::ResumenImportacion resumen;
  try {
    resumen = ImportaEnBase(opciones, habitaciones, reservas, rechazadas);
  } catch (const com::Error& e) {
    throw com::Error(e.Numero(), guion::ConArchivo(opciones.base.Nombre(), e.Descripcion()));
  }
  Imprime(resumen, std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio).count());
}

}  // namespace

int main(int argc, char** argv) {
  autonomo::ProtegeMemoria();
  const QCoreApplication aplicacion(argc, argv);
  Opciones opciones;
  try {
    const guion::Argumentos argumentos({argv + 1, argv + argc},
                                       {{"base", true},
                                        {"conexion", true},
                                        {"habitaciones", true},
                                        {"rechazadas", true},
                                        {"estricto"},
                                        {"usuario", true},
                                        {"contrasena-de", true}},
                                       1);
    if (argumentos.PideAyuda()) {
      std::cout << kUso;
      return guion::kTodoBien;
    }
    if (argumentos.PideVersion()) {
      std::cout << autonomo::TextoVersionPreguntando(
          kPrograma, argumentos.Valor("base").value_or(argumentos.Valor("conexion").value_or("")));
      return guion::kTodoBien;
    }
    opciones = LeeOpciones(argumentos);
  } catch (const com::Error& e) {
    std::cerr << kPrograma << ": " << e.Descripcion() << "\n\n" << kUso;
    return guion::kUsoErroneo;
  }
  autonomo::registro::Sesion sesion;
  try {
    sesion.Comienza(kPrograma, opciones.base.Nombre(), opciones.registro);
    Importa(opciones);
    return guion::kTodoBien;
  } catch (const std::exception& e) {
    autonomo::registro::AnotaFalla(e);
    std::cerr << kPrograma << ": " << e.what() << '\n';
    return guion::kConFallas;
  }
}
