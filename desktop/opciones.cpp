#include "desktop/opciones.h"

#include <QDir>
#include <QFileInfo>
#include <optional>
#include <vector>

#include "desktop/ajustes.h"
#include "desktop/vista.h"
#include "guion/opciones.h"
#include "host/standalone/postgres.h"
#include "host/standalone/version.h"
#include "platform/com/error.h"

namespace vista {

namespace {

Tema TemaDe(const std::string& nombre) {
  if (nombre == "claro") return Tema::Claro;
  if (nombre == "oscuro") return Tema::Oscuro;
  if (nombre == "sistema") return Tema::Sistema;
  throw MalUso{"No existe el tema " + nombre};
}

// Where the command line names no hotel.
void EligeBase(autonomo::Opciones& anfitrion) {
  const std::string propio = ajustes::HotelPropio();
  if (autonomo::EsDireccion(propio) || (!propio.empty() && QFileInfo::exists(Q(propio)))) {
    return FijaHotel(anfitrion.base, propio);
  }
  anfitrion.base.ruta = BaseDelUsuario();
  if (!QFileInfo::exists(Q(anfitrion.base.ruta))) anfitrion.demo = true;
}

}  // namespace

void FijaHotel(autonomo::OpcionesConexion& base, const std::string& hotel) {
  const bool direccion = autonomo::EsDireccion(hotel);
  base.conexion = direccion ? hotel : "";
  base.ruta = direccion ? autonomo::OpcionesConexion().ruta : hotel;
}

std::string BaseDelUsuario() {
  const QString ruta = Q(guion::RutaBaseDelUsuario());
  const QString carpeta = QFileInfo(ruta).path();
  if (!QDir().mkpath(carpeta)) {
    throw com::Error(com::error::kSoloLectura, "No se puede crear la carpeta de datos " + carpeta.toStdString() +
                                                   ". Revise los permisos o indique otra base con --base.");
  }
  return ruta.toStdString();
}

OpcionesPrograma LeeOpcionesPrograma(const std::vector<std::string>& argumentos, std::string& texto) {
  OpcionesPrograma opciones;
  try {
    std::vector<guion::Opcion> propias = guion::OpcionesDeAnfitrion();
    propias.push_back({"tema", true});
    propias.push_back({"guion", true});
    const guion::Argumentos leidos(argumentos, propias, 0);
    if (leidos.PideAyuda()) {
      texto = kUso;
      return opciones;
    }
    opciones.anfitrion = guion::LeeAnfitrion(leidos);
    opciones.guion = leidos.Valor("guion");
    // A script finds the same empty database with and without windows.
    opciones.anfitrion.sinSobreventa = !opciones.guion;
    opciones.tema = TemaDe(leidos.Valor("tema").value_or("sistema"));
    opciones.registro = leidos.Valor("registro");
    if (!leidos.Hay("base") && !leidos.Hay("conexion") && !opciones.guion) EligeBase(opciones.anfitrion);
    if (leidos.PideVersion()) texto = autonomo::TextoVersionPreguntando("reservas", opciones.anfitrion.base.Nombre());
  } catch (const com::Error& e) {
    if (e.Numero() == com::error::kArgumento) throw MalUso{e.Descripcion()};
    throw;
  }
  return opciones;
}

}  // namespace vista
