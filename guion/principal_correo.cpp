// reservas-correo: delivers a hotel's outbox to its mail server, as a service or once.
#include <pthread.h>

#include <QFileInfo>
#include <QGuiApplication>
#include <csignal>
#include <iostream>
#include <memory>
#include <optional>

#include "guion/opciones.h"
#include "guion/palabras.h"
#include "guion/parte_diario.h"
#include "host/standalone/cartero.h"
#include "host/standalone/proceso.h"
#include "host/standalone/registro.h"
#include "host/standalone/servidor_correo.h"
#include "host/standalone/version.h"
#include "platform/com/error.h"

namespace {

constexpr const char* kUso =
    "Uso: reservas-correo [--base RUTA.db | --conexion DIRECCION] [--contrasena ARCHIVO] [--una-vez]\n"
    "                     [--ahora AAAA-MM-DDTHH:MM[:SS]] [--registro ARCHIVO]\n"
    "\n"
    "Entrega la bandeja de salida al servidor de correo que dicen los parámetros CORREO_... del hotel, hasta que se\n"
    "le pide terminar (SIGTERM).\n"
    "\n"
    "  --base RUTA.db        base SQLite, que ya existe; sin ella, la del usuario\n"
    "  --conexion DIRECCION  base en un servidor: postgresql://usuario@servidor/base\n"
    "  --contrasena ARCHIVO  archivo con la contraseña del servidor, que solo su dueño puede leer; sin ella, la\n"
    "                        variable RESERVAS_CORREO_CONTRASENA o el archivo ~/.config/reservas/correo\n"
    "  --una-vez             envía lo que toca ahora, dice cuánto y termina: 1 si algo no salió\n"
    "  --ahora FECHA         fija el reloj\n"
    "  --registro ARCHIVO    diario de fallas y escrituras; sin ella, el de la carpeta de estado del usuario\n"
    "  --version             versión, motor, esquema y base\n"
    "  -h, --help, --ayuda   esta ayuda\n";

constexpr const char* kPrograma = "reservas-correo";

struct Opciones {
  autonomo::Cartero::Opciones cartero;
  bool unaVez = false;
};

Opciones LeeOpciones(const guion::Argumentos& argumentos) {
  Opciones o;
  o.cartero.base = guion::LeeBase(argumentos);
  if (!argumentos.Hay("base")) o.cartero.base.ruta = guion::RutaBaseDelUsuario();
  o.cartero.contrasena = argumentos.Valor("contrasena");
  o.cartero.antes = guion::ParteDeCadaDia();
  o.unaVez = argumentos.Hay("una-vez");
  if (const auto ahora = argumentos.Valor("ahora")) o.cartero.reloj.Fija(guion::MomentoDe(*ahora));
  o.cartero.base.crea = false;
  o.cartero.avisa = [](const std::string& aviso) { std::cerr << kPrograma << ": " << aviso << std::endl; };
  return o;
}

// A service with a wrong path ends at once.
void ExigeBase(const autonomo::OpcionesConexion& base) {
  if (base.conexion.empty() && !QFileInfo::exists(QString::fromStdString(base.ruta)))
    throw com::Error(com::error::kArgumento, "No existe la base " + base.ruta);
}

int UnaVez(const autonomo::Cartero::Opciones& opciones) {
  const auto conexion = autonomo::AbreConexion(opciones.base, opciones.reloj);
  guion::DiceAvisos(kPrograma, *conexion);
  const auto servidor = autonomo::LeeServidor(*conexion, autonomo::LeeContrasenaDeCorreo(opciones.contrasena));
  if (!servidor) throw com::Error(com::error::kArgumento, "Falta el parámetro CORREO_SERVIDOR");
  if (const int cuantos = guion::EnviaParteDelDia(conexion, opciones.reloj.Ahora()); cuantos > 0)
    std::cout << "Partes del día: " << cuantos << ".\n";
  const autonomo::Ronda ronda = autonomo::Reparte(*conexion, opciones.reloj, *servidor, [] { return true; });
  std::cout << "Enviados: " << ronda.enviados << ". Para otro intento: " << ronda.pendientes
            << ". Con problemas: " << ronda.fallidos << ".\n";
  if (!ronda.falla.empty()) std::cerr << kPrograma << ": " << ronda.falla << '\n';
  return ronda.pendientes + ronda.fallidos == 0 ? guion::kTodoBien : guion::kConFallas;
}

// Until it is told to end. Signals are blocked in every thread, and waited for here.
int Servicio(const autonomo::Cartero::Opciones& opciones) {
  sigset_t fin;
  sigemptyset(&fin);
  for (const int senal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&fin, senal);
  pthread_sigmask(SIG_BLOCK, &fin, nullptr);
  autonomo::Cartero cartero(opciones);
  int cual = 0;
  sigwait(&fin, &cual);
  return guion::kTodoBien;
}

}  // namespace

int main(int argc, char** argv) {
  autonomo::ProtegeMemoria();
  qputenv("QT_QPA_PLATFORM", "offscreen");  // letters are drawn, not shown
  const QGuiApplication aplicacion(argc, argv);
  Opciones opciones;
  std::optional<std::string> registro;
  try {
    const guion::Argumentos argumentos(
        {argv + 1, argv + argc},
        {{"base", true}, {"conexion", true}, {"contrasena", true}, {"una-vez"}, {"ahora", true}}, 0);
    if (argumentos.PideAyuda()) {
      std::cout << kUso;
      return guion::kTodoBien;
    }
    opciones = LeeOpciones(argumentos);
    if (argumentos.PideVersion()) {
      std::cout << autonomo::TextoVersionPreguntando(kPrograma, opciones.cartero.base.Nombre());
      return guion::kTodoBien;
    }
    registro = argumentos.Valor("registro");
  } catch (const com::Error& e) {
    std::cerr << kPrograma << ": " << e.Descripcion() << "\n\n" << kUso;
    return guion::kUsoErroneo;
  }
  autonomo::registro::Sesion sesion;
  try {
    ExigeBase(opciones.cartero.base);
    sesion.Comienza(kPrograma, opciones.cartero.base.Nombre(), registro);
    return opciones.unaVez ? UnaVez(opciones.cartero) : Servicio(opciones.cartero);
  } catch (const std::exception& e) {
    autonomo::registro::AnotaFalla(e);
    std::cerr << kPrograma << ": " << e.what() << '\n';
    return guion::kConFallas;
  }
}
