#include "host/standalone/servidor_correo.h"

#include <QStandardPaths>
#include <cstdlib>

#include "host/standalone/archivo_privado.h"
#include "host/standalone/parametros.h"
#include "host/standalone/red.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/com/variant.h"

namespace autonomo {

namespace {

using Cifrado = ServidorCorreo::Cifrado;

[[noreturn]] void Rechaza(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

constexpr char kSecreto[] = "la contraseña del correo";

Cifrado CifradoDe(const std::string& seguridad, bool local) {
  if (seguridad == "TLS") return Cifrado::Tls;
  if (seguridad == "STARTTLS") return Cifrado::StartTls;
  if (seguridad == "NINGUNA") return Cifrado::Ninguno;
  return local ? Cifrado::SiSePuede : Cifrado::StartTls;
}

int PuertoUsual(Cifrado cifrado) {
  constexpr int kEntrega = 587, kCifrado = 465, kServidores = 25;
  if (cifrado == Cifrado::Tls) return kCifrado;
  return cifrado == Cifrado::StartTls ? kEntrega : kServidores;
}

}  // namespace

std::string RutaContrasena() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString() + "/reservas/correo";
}

std::string LeeContrasenaDeCorreo(const std::optional<std::string>& archivo) {
  if (archivo) return LineaPrivada(*archivo, kSecreto);
  if (const char* valor = std::getenv("RESERVAS_CORREO_CONTRASENA"); valor != nullptr && *valor != '\0') return valor;
  const std::string ruta = RutaContrasena();
  return LeePrivado(ruta, kSecreto) ? LineaPrivada(ruta, kSecreto) : std::string();
}

std::optional<ServidorCorreo> LeeServidor(Conexion& conexion, const std::string& contrasena) {
  const auto valor = [&](std::string_view clave) {
    std::string texto = com::Recorta(ValorParametro(conexion, clave));
    if (const std::string motivo = MotivoIlegible(*BuscaParametro(clave), texto); !motivo.empty()) Rechaza(motivo);
    return texto;
  };
  ServidorCorreo s;
  s.servidor = valor(anfitrion::parametro::kCorreoServidor.clave);
  if (s.servidor.empty()) return std::nullopt;
  const bool local = EsDeEsteEquipo(s.servidor);
  s.cifrado = CifradoDe(valor(anfitrion::parametro::kCorreoSeguridad.clave), local);
  s.puerto = com::CLng(valor(anfitrion::parametro::kCorreoPuerto.clave));
  if (s.puerto <= 0) s.puerto = PuertoUsual(s.cifrado);
  s.certificados = valor(anfitrion::parametro::kCorreoCertificados.clave);
  s.verifica = !local || !s.certificados.empty();
  s.remitente = valor(anfitrion::parametro::kCorreoRemitente.clave);
  s.nombre = valor(anfitrion::parametro::kNombreHotel.clave);
  if (s.remitente.empty()) Rechaza("Falta el parámetro CORREO_REMITENTE: la dirección de la que salen los correos");
  s.usuario = valor(anfitrion::parametro::kCorreoUsuario.clave);
  if (s.usuario.empty()) return s;
  s.contrasena = contrasena;
  if (contrasena.empty())
    Rechaza("Falta la contraseña de " + s.usuario + " en el servidor de correo: póngala en " + RutaContrasena() +
            " (chmod 600)");
  if (!local && s.cifrado == Cifrado::Ninguno)
    Rechaza("CORREO_SEGURIDAD dice NINGUNA: la contraseña no se manda sin cifrar a otro equipo");
  return s;
}

}  // namespace autonomo
