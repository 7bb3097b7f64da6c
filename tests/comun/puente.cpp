#include "tests/comun/puente.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace pruebas {
namespace {

sockaddr_un En(const std::string& carpeta, const std::string& puerto) {
  sockaddr_un donde{};
  donde.sun_family = AF_UNIX;
  const std::string ruta = carpeta + "/.s.PGSQL." + puerto;
  std::strncpy(donde.sun_path, ruta.c_str(), sizeof donde.sun_path - 1);
  return donde;
}

// What there is to be read; "" at the end of the connection.
std::string Lee(int enchufe) {
  std::array<char, 65536> bytes{};
  const auto n = recv(enchufe, bytes.data(), bytes.size(), 0);
  return n > 0 ? std::string(bytes.data(), static_cast<std::size_t>(n)) : std::string();
}

bool Escribe(int enchufe, const std::string& bytes) {
  return send(enchufe, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
}

}  // namespace

Puente::Puente(const std::string& direccion) : puerta_(socket(AF_UNIX, SOCK_STREAM, 0)) {
  std::string plantilla = (std::filesystem::temp_directory_path() / "kv207-puente-XXXXXX").string();
  carpeta_ = mkdtemp(plantilla.data());
  const std::size_t desde = direccion.rfind('=') + 1;
  servidor_ = direccion.substr(desde);
  puerto_ = servidor_.substr(servidor_.rfind('-') + 1);
  direccion_ = direccion.substr(0, desde) + carpeta_.string();
  const sockaddr_un aqui = En(carpeta_.string(), puerto_);
  if (bind(puerta_, reinterpret_cast<const sockaddr*>(&aqui), sizeof aqui) != 0 || listen(puerta_, 8) != 0)
    throw std::runtime_error("there is no bridge to the server");
  hilo_ = std::thread([this] { Atiende(); });
}

Puente::~Puente() {
  termina_ = true;
  hilo_.join();
  close(puerta_);
  std::filesystem::remove_all(carpeta_);
}

void Puente::Corta(const std::string& texto, Lado antesDe) {
  const std::lock_guard cierra(candado_);
  antesDe_ = antesDe;
  corte_ = texto;
}

void Puente::Cuenta(const std::string& mensaje) {
  ++viajes_;
  if (mensaje.find("BEGIN ISOLATION") != std::string::npos) abierta_ = 0;
  ++abierta_;
  if (mensaje.find("COMMIT") != std::string::npos && mensaje.find("COMMITTED") == std::string::npos)
    enTransaccion_ = abierta_;
}

bool Puente::EsElCorte(const std::string& mensaje) {
  const std::lock_guard cierra(candado_);
  const bool es = corte_ && !mensaje.empty() && mensaje.find(*corte_) != std::string::npos;
  if (es) corte_.reset();
  return es;
}

// One client at a time.
void Puente::Atiende() {
  while (!termina_) {
    pollfd espera{puerta_, POLLIN, 0};
    if (poll(&espera, 1, 20) <= 0) continue;
    const int cliente = accept(puerta_, nullptr, nullptr);
    if (abierto_) Pasa(cliente);
    close(cliente);
  }
}

void Puente::Pasa(int cliente) {
  const int servidor = socket(AF_UNIX, SOCK_STREAM, 0);
  const sockaddr_un alla = En(servidor_, puerto_);
  bool pasa = connect(servidor, reinterpret_cast<const sockaddr*>(&alla), sizeof alla) == 0;
  bool pregunta = false, corta = false;
  while (pasa && !termina_) {
    std::array<pollfd, 2> espera{{{cliente, POLLIN, 0}, {servidor, POLLIN, 0}}};
    if (poll(espera.data(), espera.size(), 20) <= 0) continue;
    if (espera[0].revents != 0) {
      const std::string bytes = Lee(cliente);
      corta = EsElCorte(bytes);
      pasa = !bytes.empty() && !(corta && antesDe_ == Lado::Servidor) && Escribe(servidor, bytes);
      if (!pregunta) Cuenta(bytes);
      pregunta = true;
    }
    if (pasa && espera[1].revents != 0) {
      const std::string bytes = Lee(servidor);
      pasa = !bytes.empty() && !corta && Escribe(cliente, bytes);
      pregunta = false;
    }
  }
  close(servidor);
}

}  // namespace pruebas
