// reservas-base: what whoever looks after a hotel's database does with it.
#include <QCoreApplication>
#include <iostream>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "guion/archivos.h"
#include "guion/opciones.h"
#include "host/standalone/proceso.h"
#include "host/standalone/registro.h"
#include "host/standalone/respaldo.h"
#include "host/standalone/version.h"
#include "platform/com/error.h"

namespace {

constexpr const char* kUso =
    "Uso: reservas-base ORDEN HOTEL [...]\n"
    "\n"
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
constexpr int kTodoBien = 0, kConFallas = 1, kUsoErroneo = 2;

[[noreturn]] void UsoErroneo(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

std::string Cuanto(const autonomo::Respaldo& r) {
  return std::to_string(r.reservaciones) + " reservaciones, " + std::to_string(r.filas) + " renglones en total";
}

// --- the orders; palabras: what follows the order's name

using Palabras = std::vector<std::string>;

int Respalda(const Palabras& palabras, const guion::Argumentos& argumentos) {
  const std::string& hotel = palabras[0];
  const autonomo::OpcionesRespaldo opciones{.sustituye = argumentos.Hay("sustituye")};
  const auto r = palabras.size() > 1 ? autonomo::Respalda(hotel, palabras[1], opciones)
                                     : autonomo::RespaldaEnSuCarpeta(hotel, autonomo::Momento(), opciones);
  std::cout << "Copia hecha y revisada: " << r.ruta << " (" << Cuanto(r) << ")\n";
  return kTodoBien;
}

int Repone(const Palabras& palabras, const guion::Argumentos&) {
  const std::string& hotel = palabras[0];
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
  return kTodoBien;
}

struct Orden {
  const char* nombre;
  std::size_t minimo, maximo;  // words after it
  int (*corre)(const Palabras&, const guion::Argumentos&);
};

constexpr Orden kOrdenes[] = {{"respalda", 1, 2, Respalda}, {"repone", 1, 2, Repone}};

const Orden& BuscaOrden(const Palabras& sueltos) {
  if (sueltos.empty()) UsoErroneo("Falta la orden");
  for (const Orden& orden : kOrdenes) {
    if (sueltos[0] != orden.nombre) continue;
    if (sueltos.size() - 1 < orden.minimo) UsoErroneo("A la orden " + sueltos[0] + " le falta con qué archivo");
    if (sueltos.size() - 1 > orden.maximo) UsoErroneo("Sobra «" + sueltos[orden.maximo + 1] + "»");
    return orden;
  }
  UsoErroneo("No existe la orden " + sueltos[0]);
}

int Corre(const Orden& orden, const Palabras& palabras, const guion::Argumentos& argumentos) {
  autonomo::registro::Sesion sesion;
  try {
    sesion.Comienza(kPrograma, palabras[0], argumentos.Valor("registro"));
    return orden.corre(palabras, argumentos);
  } catch (const std::exception& e) {
    autonomo::registro::AnotaFalla(e);
    std::cerr << kPrograma << ": " << guion::ConArchivo(palabras[0], e.what()) << '\n';
    return kConFallas;
  }
}

}  // namespace

int main(int argc, char** argv) {
  autonomo::ProtegeMemoria();
  const QCoreApplication aplicacion(argc, argv);
  try {
    const guion::Argumentos argumentos({argv + 1, argv + argc}, {{"sustituye"}}, 3);
    if (argumentos.PideAyuda()) {
      std::cout << kUso;
      return kTodoBien;
    }
    Palabras palabras = argumentos.Sueltos();
    if (argumentos.PideVersion()) {
      std::cout << autonomo::TextoVersion(kPrograma, palabras.size() > 1 ? palabras[1] : "");
      return kTodoBien;
    }
    const Orden& orden = BuscaOrden(palabras);
    palabras.erase(palabras.begin());
    return Corre(orden, palabras, argumentos);
  } catch (const com::Error& e) {
    std::cerr << kPrograma << ": " << e.Descripcion() << "\n\n" << kUso;
    return kUsoErroneo;
  }
}
