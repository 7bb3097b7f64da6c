#include "host/standalone/permisos.h"

#include "host/contract/servicios.h"
#include "host/standalone/transaccion.h"

namespace autonomo {

bool TienePermiso(Conexion& conexion, const std::string& usuario, const std::string& pantalla,
                  const std::string& opcion) {
  return Hay(conexion, "SELECT Pe_Opcion FROM Permiso WHERE Pe_Usuario = ? AND Pe_Pantalla = ? AND Pe_Opcion = ?",
             {usuario, pantalla, opcion});
}

namespace {

// Who was granted it, and everybody while nobody was.
bool PuedeMientrasNadie(Conexion& conexion, const std::string& usuario, const char* opcion) {
  return TienePermiso(conexion, usuario, anfitrion::kPantalla, opcion) ||
         !Hay(conexion, "SELECT Pe_Opcion FROM Permiso WHERE Pe_Pantalla = ? AND Pe_Opcion = ?",
              {anfitrion::kPantalla, opcion});
}

}  // namespace

bool PuedeConfigurar(Conexion& conexion, const std::string& usuario) {
  return PuedeMientrasNadie(conexion, usuario, kPermisoConfiguracion);
}

bool PuedeVerTarjetas(Conexion& conexion, const std::string& usuario) {
  return PuedeMientrasNadie(conexion, usuario, kPermisoTarjetas);
}

}  // namespace autonomo
