#include "host/standalone/archivo_privado.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "host/standalone/motivo_archivo.h"
#include "platform/com/error.h"

namespace autonomo {
namespace {

[[noreturn]] void Rechaza(const std::string& ruta, const std::string& que, const char* motivo) {
  throw com::Error(com::error::kSoloLectura, "El archivo de " + que + " (" + ruta + ") " + motivo);
}

}  // namespace

// What was looked at is what is read: one descriptor for both.
std::optional<std::string> LeePrivado(const std::string& ruta, const std::string& que) {
  const int archivo = open(ruta.c_str(), O_RDONLY | O_CLOEXEC);
  if (archivo < 0 && errno == ENOENT) return std::nullopt;
  struct stat datos {};
  const bool visto = archivo >= 0 && fstat(archivo, &datos) == 0;
  const bool ajeno = visto && (datos.st_mode & (S_IRWXG | S_IRWXO)) != 0;
  std::string contenido;
  std::array<char, 4096> bytes{};
  ssize_t leidos = visto && !ajeno ? 1 : 0;
  while (leidos > 0) {
    leidos = read(archivo, bytes.data(), bytes.size());
    if (leidos > 0) contenido.append(bytes.data(), static_cast<std::size_t>(leidos));
  }
  if (archivo >= 0) close(archivo);
  if (!visto || leidos < 0) Rechaza(ruta, que, "no se puede leer");
  if (ajeno) Rechaza(ruta, que, "lo pueden leer otros usuarios del equipo: déjelo solo para el suyo (chmod 600)");
  return contenido;
}

std::string LineaPrivada(const std::string& ruta, const std::string& que) {
  const auto contenido = LeePrivado(ruta, que);
  if (!contenido) Rechaza(ruta, que, "no existe");
  return contenido->substr(0, contenido->find_first_of("\r\n"));
}

namespace {

bool EscribeTodo(int archivo, std::string_view contenido) {
  while (!contenido.empty()) {
    const ssize_t escritos = write(archivo, contenido.data(), contenido.size());
    if (escritos < 0 && errno == EINTR) continue;
    if (escritos < 0) return false;
    contenido.remove_prefix(static_cast<std::size_t>(escritos));
  }
  return true;
}

// Where a link leads; the path itself when it leads nowhere.
std::string Destino(const std::string& ruta) {
  std::error_code mal;
  const std::filesystem::path destino = std::filesystem::canonical(ruta, mal);
  return mal ? ruta : destino.string();
}

}  // namespace

void EscribePrivado(const std::string& ruta, std::string_view contenido) {
  const auto falla = [&](int error) {
    throw com::Error(com::error::kSoloLectura, "No se puede escribir " + ruta + ": " + MotivoDeArchivo(error));
  };
  const std::string destino = Destino(ruta);
  struct stat datos {};
  const bool aparato = stat(destino.c_str(), &datos) == 0 && !S_ISREG(datos.st_mode);
  std::string nueva = destino + ".XXXXXX";
  const int archivo = aparato ? open(destino.c_str(), O_WRONLY | O_CLOEXEC) : mkostemp(nueva.data(), O_CLOEXEC);
  if (archivo < 0) {
    const int error = errno;
    // A folder that is there and takes no files.
    const std::filesystem::path carpeta = std::filesystem::path(destino).parent_path();
    falla(error == ENOENT && stat(carpeta.empty() ? "." : carpeta.c_str(), &datos) == 0 ? EACCES : error);
  }
  const bool escrito = EscribeTodo(archivo, contenido) && (aparato || fsync(archivo) == 0);
  int error = escrito ? 0 : errno;
  if (close(archivo) != 0 && error == 0) error = errno;
  if (!aparato && error == 0 && rename(nueva.c_str(), destino.c_str()) != 0) error = errno;
  if (error == 0) return;
  if (!aparato) unlink(nueva.c_str());
  falla(error);
}

}  // namespace autonomo
