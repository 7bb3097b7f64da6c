#include "host/standalone/permisos.h"

#include "host/contract/servicios.h"
#include "host/standalone/transaccion.h"

namespace autonomo {

bool TienePermiso(Conexion& conexion, const std::string& usuario, const std::string& pantalla,
                  const std::string& opcion) {
  return Hay(conexion, "SELECT Pe_Opcion FROM Permiso WHERE Pe_Usuario = ? AND Pe_Pantalla = ? AND Pe_Opcion = ?",
             {usuario, pantalla, opcion});
}

bool PuedeConfigurar(Conexion& conexion, const std::string& usuario) {
  return TienePermiso(conexion, usuario, anfitrion::kPantalla, kPermisoConfiguracion) ||
         !Hay(conexion, "SELECT Pe_Opcion FROM Permiso WHERE Pe_Pantalla = ? AND Pe_Opcion = ?",
              {anfitrion::kPantalla, kPermisoConfiguracion});
}

}  // namespace autonomo
