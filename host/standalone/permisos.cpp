#include "host/standalone/permisos.h"

#include "host/contract/servicios.h"
#include "host/standalone/transaccion.h"
#include "platform/com/texto.h"
#include "schema/esquema.h"

namespace autonomo {

const std::vector<Derecho>& Derechos() {
  namespace permiso = anfitrion::permiso;
  static const std::vector<Derecho> derechos{{permiso::kFecha, "Cambiar la fecha de captura"},
                                             {permiso::kPrecio, "Cambiar precios"},
                                             {permiso::kDescuento, "Dar descuentos"},
                                             {permiso::kTipoCambio, "Sin cambiar el tipo de cambio"},
                                             {permiso::kTarjetas, "Ver números y códigos de tarjeta"},
                                             {permiso::kConfiguracion, "Configurar el hotel y sus usuarios"}};
  return derechos;
}

std::string MotivoUsuario(const std::string& usuario) {
  if (com::Recorta(usuario).empty()) return "su clave está vacía";
  if (usuario.find('\'') != std::string::npos) return "una clave de usuario no lleva apóstrofos";
  for (std::size_t i = 0; i < usuario.size();) {
    const char32_t c = com::LeeUtf8(usuario, i);
    if (c < 0x20 || (c >= 0x7F && c < 0xA0)) return "una clave de usuario no lleva saltos de línea ni otros controles";
  }
  if (com::LargoUtf8(usuario) <= esquema::kLargoClave) return {};
  return "una clave de usuario lleva hasta " + std::to_string(esquema::kLargoClave) + " caracteres";
}

bool TienePermiso(Conexion& conexion, const std::string& usuario, const std::string& pantalla,
                  const std::string& opcion) {
  return Hay(conexion, "SELECT Pe_Opcion FROM Permiso WHERE Pe_Usuario = ? AND Pe_Pantalla = ? AND Pe_Opcion = ?",
             {usuario, pantalla, opcion});
}

namespace {

// Who was granted it; and where users have no passwords, everybody while nobody was.
bool PuedeMientrasNadie(Conexion& conexion, const std::string& usuario, const char* opcion) {
  return TienePermiso(conexion, usuario, anfitrion::kPantalla, opcion) ||
         !Hay(conexion,
              "SELECT Pe_Opcion FROM Permiso WHERE Pe_Pantalla = ? AND Pe_Opcion = ? "
              "UNION ALL SELECT Us_Cve_Usuario FROM Usuario WHERE Us_Contrasena <> ''",
              {anfitrion::kPantalla, opcion});
}

}  // namespace

bool Administra(Conexion& conexion, const std::string& usuario) {
  return TienePermiso(conexion, usuario, anfitrion::kPantalla, kPermisoConfiguracion);
}

bool PuedeConfigurar(Conexion& conexion, const std::string& usuario) {
  return PuedeMientrasNadie(conexion, usuario, kPermisoConfiguracion);
}

bool PuedeVerTarjetas(Conexion& conexion, const std::string& usuario) {
  return PuedeMientrasNadie(conexion, usuario, kPermisoTarjetas);
}

Alcance AlcanceDe(Conexion& conexion, const std::string& usuario) {
  return {.tarjetas = PuedeVerTarjetas(conexion, usuario), .administra = PuedeConfigurar(conexion, usuario)};
}

}  // namespace autonomo
