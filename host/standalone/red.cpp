#include "host/standalone/red.h"

#include <arpa/inet.h>

#include <algorithm>
#include <optional>

#include "platform/com/texto.h"

namespace autonomo {

namespace {

std::optional<in_addr> DireccionV4(const std::string& texto) {
  in_addr direccion{};
  if (inet_pton(AF_INET, texto.c_str(), &direccion) != 1) return std::nullopt;
  return direccion;
}

std::optional<in6_addr> DireccionV6(const std::string& texto) {
  in6_addr direccion{};
  if (inet_pton(AF_INET6, texto.c_str(), &direccion) != 1) return std::nullopt;
  return direccion;
}

// Letters of other alphabets too: names may have them.
bool VaEnNombre(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || com::EsDigito(c) || c == '-' || c == '_' || c == '.' ||
         static_cast<unsigned char>(c) > 0x7F;
}

}  // namespace

bool EsNombreDeEquipo(const std::string& texto) {
  if (DireccionV6(texto)) return true;
  return !texto.empty() && texto.front() != '.' && texto.find("..") == std::string::npos &&
         std::all_of(texto.begin(), texto.end(), VaEnNombre);
}

bool EsDeEsteEquipo(const std::string& equipo) {
  if (const auto v4 = DireccionV4(equipo)) return ntohl(v4->s_addr) == INADDR_LOOPBACK;
  if (const auto v6 = DireccionV6(equipo)) return IN6_IS_ADDR_LOOPBACK(&*v6);
  return com::IgualSinCaja(equipo, "localhost");
}

}  // namespace autonomo
