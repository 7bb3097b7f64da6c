#include "host/standalone/usuarios.h"

#include <sodium.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <optional>
#include <string_view>

#include "host/contract/servicios.h"
#include "host/standalone/permisos.h"
#include "host/standalone/segundos.h"
#include "host/standalone/transaccion.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/com/variant.h"
#include "schema/esquema.h"
#include "schema/roles.h"

namespace autonomo {
namespace {

constexpr std::size_t kLargoMenor = 8;
constexpr int kFallasLibres = 2, kPrimeraEspera = 5, kMayorEspera = 900;  // the waits in seconds
// What a password costs to try: 19 MiB and two passes, some 30 ms on a desk of its own.
constexpr unsigned long long kVueltas = 2;
constexpr std::size_t kMemoria = std::size_t{19} << 20U;
constexpr char kNoEntra[] = "El usuario o la contraseña no son correctos";
constexpr char kEspere[] = "Demasiados intentos: espere ";

[[noreturn]] void Rechaza(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

void Prepara() {
  if (sodium_init() < 0) throw com::Error(com::error::kBaseDatos, "No se pudo preparar la protección de contraseñas");
}

// argon2id, with its salt and its cost in the text.
std::string Resumen(const std::string& contrasena) {
  Prepara();
  std::array<char, crypto_pwhash_STRBYTES> texto{};
  if (crypto_pwhash_str_alg(texto.data(), contrasena.data(), contrasena.size(), kVueltas, kMemoria,
                            crypto_pwhash_ALG_ARGON2ID13) != 0) {
    throw com::Error(com::error::kBaseDatos, "No hay memoria para proteger la contraseña");
  }
  return texto.data();
}

// A part of the text without padding; empty for one that is no such part.
std::vector<unsigned char> DeBase64(std::string_view texto) {
  std::vector<unsigned char> bytes(texto.size());
  std::size_t largo = 0;
  if (sodium_base642bin(bytes.data(), bytes.size(), texto.data(), texto.size(), nullptr, &largo, nullptr,
                        sodium_base64_VARIANT_ORIGINAL_NO_PADDING) != 0)
    largo = 0;
  bytes.resize(largo);
  return bytes;
}

// Takes `comienzo` off the text; false, and nothing taken, if it begins otherwise.
bool Quita(std::string_view& texto, std::string_view comienzo) {
  if (!texto.starts_with(comienzo)) return false;
  texto.remove_prefix(comienzo.size());
  return true;
}

bool QuitaNumero(std::string_view& texto, unsigned long& numero) {
  const auto [fin, error] = std::from_chars(texto.data(), texto.data() + texto.size(), numero);
  texto.remove_prefix(static_cast<std::size_t>(fin - texto.data()));
  return error == std::errc{};
}

// What a server that keeps the end of the text to itself (schema/roles.h) keeps if that is the password: worked out
// from its beginning, "$argon2id$v=19$m=KIB,t=ROUNDS,p=1$SALT$". Nothing for another beginning.
std::optional<std::string> Completa(const std::string& comienzo, const std::string& contrasena) {
  unsigned long kib = 0, vueltas = 0;
  std::string_view sal = comienzo;
  if (!Quita(sal, "$argon2id$v=19$m=") || !QuitaNumero(sal, kib) || !Quita(sal, ",t=") || !QuitaNumero(sal, vueltas) ||
      !Quita(sal, ",p=1$") || sal.empty())
    return std::nullopt;
  sal.remove_suffix(1);
  const std::vector<unsigned char> bytes = DeBase64(sal);
  std::array<unsigned char, 32> suya{};
  if (bytes.size() != crypto_pwhash_SALTBYTES ||
      crypto_pwhash(suya.data(), suya.size(), contrasena.data(), contrasena.size(), bytes.data(), vueltas,
                    std::size_t{kib} * 1024, crypto_pwhash_ALG_ARGON2ID13) != 0)
    return std::nullopt;
  std::array<char, sodium_base64_ENCODED_LEN(suya.size(), sodium_base64_VARIANT_ORIGINAL_NO_PADDING)> texto{};
  sodium_bin2base64(texto.data(), texto.size(), suya.data(), suya.size(), sodium_base64_VARIANT_ORIGINAL_NO_PADDING);
  return comienzo + texto.data();
}

bool EsSuya(Conexion& conexion, const std::string& usuario, const std::string& resumen, const std::string& contrasena) {
  Prepara();
  if (!resumen.ends_with('$'))
    return crypto_pwhash_str_verify(resumen.c_str(), contrasena.data(), contrasena.size()) == 0;
  const auto completo = Completa(resumen, contrasena);
  return completo && com::CBool(conexion.Directa(esquema::EsContrasenaDe(usuario, *completo))->Fields(0).Value());
}

int EsperaTras(int fallas) {
  if (fallas <= kFallasLibres) return 0;
  return std::min(kMayorEspera, kPrimeraEspera << std::min(fallas - kFallasLibres - 1, 10));
}

// What the waits are told by. No file is open on two computers at a time, so its desks have the same latido; kept as a
// date of the years about 1900, where no clock is.
com::Fecha RelojDeEsperas(Conexion& conexion, com::Fecha ahora, std::int64_t latido) {
  return conexion.Motor() == esquema::Motor::Sqlite ? MasSegundos({}, latido) : ahora;
}

// Seconds that are left of a wait that was that long and ends then; nothing when it was told by another clock than
// this one, and so cannot be known.
std::optional<std::int64_t> Falta(const com::Variant& hasta, int larga, com::Fecha ahora) {
  if (larga == 0) return 0;
  const auto* fecha = std::get_if<com::Fecha>(&hasta.Contenido());
  if (fecha == nullptr) return std::nullopt;
  const std::int64_t falta = Segundos(*fecha) - Segundos(ahora);
  return falta > larga ? std::nullopt : std::optional(std::max<std::int64_t>(falta, 0));
}

void GuardaEspera(Conexion& conexion, const std::string& usuario, int fallas, com::Fecha hasta) {
  conexion.Consulta("UPDATE Usuario SET Us_Fallas = ?, Us_Espera = ? WHERE Us_Cve_Usuario = ?",
                    {fallas, hasta, usuario});
}

std::string Legible(std::int64_t segundos) {
  return segundos < 120 ? std::to_string(segundos) + " segundos" : std::to_string((segundos + 59) / 60) + " minutos";
}

bool Existe(Conexion& conexion, const std::string& usuario) {
  return Hay(conexion, "SELECT Us_Cve_Usuario FROM Usuario WHERE Us_Cve_Usuario = ?", {usuario});
}

void GuardaDerechos(Conexion& conexion, const std::string& usuario, const std::vector<std::string>& derechos) {
  for (const Derecho& derecho : Derechos()) {
    conexion.Consulta("DELETE FROM Permiso WHERE Pe_Usuario = ? AND Pe_Pantalla = ? AND Pe_Opcion = ?",
                      {usuario, anfitrion::kPantalla, derecho.opcion});
    if (std::ranges::find(derechos, derecho.opcion) == derechos.end()) continue;
    conexion.Consulta("INSERT INTO Permiso (Pe_Usuario, Pe_Pantalla, Pe_Opcion) VALUES (?, ?, ?)",
                      {usuario, anfitrion::kPantalla, derecho.opcion});
  }
}

// A right that the first one is given is taken from all others, so everybody's role is looked at.
void AjustaRoles(Conexion& conexion) {
  if (conexion.Motor() != esquema::Motor::PostgreSQL) return;
  for (const Usuario& usuario : Usuarios(conexion)) {
    Alcance alcance = AlcanceDe(conexion, usuario.clave);
    alcance.entra = !usuario.deBaja;
    conexion.roles().AjustaRol(usuario.clave, alcance);
  }
}

}  // namespace

std::int64_t Latido() {
  return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::vector<Usuario> Usuarios(Conexion& conexion) {
  std::vector<Usuario> usuarios;
  const auto rs =
      conexion.Consulta("SELECT Us_Cve_Usuario, Us_Nombre, Es_Cve_Estado FROM Usuario ORDER BY Us_Cve_Usuario");
  for (; !rs->Eof(); rs->MoveNext()) {
    usuarios.push_back({com::TextoDe(rs->Fields(0).Value()), com::TextoDe(rs->Fields(1).Value()),
                        com::TextoDe(rs->Fields(2).Value()) == esquema::kBaja});
  }
  return usuarios;
}

std::vector<std::string> DerechosDe(Conexion& conexion, const std::string& usuario) {
  std::vector<std::string> derechos;
  for (const Derecho& derecho : Derechos()) {
    if (TienePermiso(conexion, usuario, anfitrion::kPantalla, derecho.opcion)) derechos.emplace_back(derecho.opcion);
  }
  return derechos;
}

bool PideContrasena(Conexion& conexion) {
  return Hay(conexion, "SELECT Us_Cve_Usuario FROM Usuario WHERE Us_Contrasena <> ''", {});
}

bool HayQuienAdministre(Conexion& conexion) {
  return Hay(conexion,
             "SELECT 1 AS Uno FROM Usuario INNER JOIN Permiso ON Pe_Usuario = Us_Cve_Usuario "
             "WHERE Es_Cve_Estado = 'AC' AND Us_Contrasena <> '' AND Pe_Pantalla = ? AND Pe_Opcion = ?",
             {anfitrion::kPantalla, kPermisoConfiguracion});
}

void CambiaDerechos(Conexion& conexion, const std::function<void()>& cambia) {
  Transaccion t(conexion);
  conexion.EsperaTurno("usuarios");
  cambia();
  if (PideContrasena(conexion) && !HayQuienAdministre(conexion)) {
    Rechaza("Debe quedar un usuario con contraseña que pueda abrir la configuración");
  }
  AjustaRoles(conexion);
  t.Concluye();
}

std::string MotivoContrasena(const std::string& contrasena) {
  return com::LargoUtf8(contrasena) >= kLargoMenor
             ? ""
             : "La contraseña lleva al menos " + std::to_string(kLargoMenor) + " caracteres";
}

FichaUsuario FichaDe(Conexion& conexion, const std::string& usuario) {
  FichaUsuario ficha;
  for (const Usuario& u : Usuarios(conexion)) {
    if (com::IgualSinCaja(u.clave, usuario)) ficha.usuario = u;
  }
  if (!ficha.usuario.clave.empty()) ficha.derechos = DerechosDe(conexion, usuario);
  return ficha;
}

void GuardaUsuario(Conexion& conexion, const Usuario& usuario, const std::optional<std::string>& contrasena,
                   const std::vector<std::string>& derechos, const FichaUsuario* vista) {
  if (const std::string motivo = MotivoUsuario(usuario.clave); !motivo.empty()) {
    Rechaza("El usuario no se puede guardar: " + motivo);
  }
  if (contrasena) {
    if (const std::string motivo = MotivoContrasena(*contrasena); !motivo.empty()) Rechaza(motivo);
  }
  const std::string resumen = contrasena ? Resumen(*contrasena) : "";  // takes its time: before the transaction
  CambiaDerechos(conexion, [&] {
    if (vista != nullptr && FichaDe(conexion, usuario.clave) != *vista) {
      Rechaza("Alguien cambió mientras tanto al usuario " + usuario.clave + ": revíselo y acepte otra vez");
    }
    if (!Existe(conexion, usuario.clave)) {
      if (!contrasena) Rechaza("Falta la contraseña");
      conexion.Consulta("INSERT INTO Usuario (Us_Cve_Usuario) VALUES (?)", {usuario.clave});
    }
    conexion.Consulta("UPDATE Usuario SET Us_Nombre = ?, Es_Cve_Estado = ? WHERE Us_Cve_Usuario = ?",
                      {usuario.nombre, usuario.deBaja ? esquema::kBaja : esquema::kActiva, usuario.clave});
    if (contrasena) {
      conexion.Consulta(
          "UPDATE Usuario SET Us_Contrasena = ?, Us_Fallas = 0, Us_Espera = NULL WHERE Us_Cve_Usuario = ?",
          {resumen, usuario.clave});
    }
    GuardaDerechos(conexion, usuario.clave, derechos);
  });
}

// A try is counted before the password is looked at, and the count is what makes others wait that come at the same
// time: so many at once are no way around the wait.
Acceso Accede(Conexion& conexion, const std::string& usuario, const std::string& contrasena, com::Fecha ahora,
              std::int64_t latido) {
  std::string propio, resumen;
  {
    Transaccion t(conexion);
    conexion.Consulta(
        "UPDATE Usuario SET Us_Fallas = Us_Fallas + 1 "
        "WHERE Us_Cve_Usuario = ? AND Es_Cve_Estado = 'AC' AND Us_Contrasena <> ''",
        {usuario});
    const auto rs = conexion.Consulta(
        "SELECT Us_Cve_Usuario, Us_Contrasena, Us_Fallas, Us_Espera FROM Usuario "
        "WHERE Us_Cve_Usuario = ? AND Es_Cve_Estado = 'AC' AND Us_Contrasena <> ''",
        {usuario});
    if (!rs->Eof()) {
      propio = com::TextoDe(rs->Fields(0).Value());
      resumen = com::TextoDe(rs->Fields(1).Value());
      const int fallas = com::CLng(rs->Fields(2).Value()), larga = EsperaTras(fallas - 1);
      const com::Fecha reloj = RelojDeEsperas(conexion, ahora, latido);
      const auto falta = Falta(rs->Fields(3).Value(), larga, reloj);
      // One that waits counts for nothing.
      if (falta && *falta > 0) return {propio, kEspere + Legible(*falta)};
      if (!falta) {
        GuardaEspera(conexion, propio, fallas - 1, MasSegundos(reloj, larga));
        t.Concluye();
        return {propio, kEspere + Legible(larga)};
      }
      GuardaEspera(conexion, propio, fallas, MasSegundos(reloj, EsperaTras(fallas)));
    }
    t.Concluye();
  }
  if (propio.empty()) {
    Resumen(contrasena);  // as long as for one who exists
    return {usuario, kNoEntra};
  }
  if (!EsSuya(conexion, propio, resumen, contrasena)) return {propio, kNoEntra};
  conexion.Consulta("UPDATE Usuario SET Us_Fallas = 0, Us_Espera = NULL WHERE Us_Cve_Usuario = ?", {propio});
  return {propio, ""};
}

}  // namespace autonomo
