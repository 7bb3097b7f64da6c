#include "guion/archivos.h"

#include <cerrno>
#include <cstdio>
#include <memory>

#include "host/standalone/motivo_archivo.h"
#include "platform/com/error.h"

namespace guion {

namespace {

[[noreturn]] void NoSeLee(const std::string& ruta, int motivo) {
  throw com::Error(com::error::kArgumento,
                   ruta + ": no se puede leer el archivo (" + autonomo::MotivoAlLeer(motivo) + ")");
}

}  // namespace

std::string LeeArchivo(const std::string& ruta) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> archivo(std::fopen(ruta.c_str(), "rb"), std::fclose);
  if (!archivo) NoSeLee(ruta, errno);
  std::string contenido;
  char bloque[65536];
  while (const std::size_t n = std::fread(bloque, 1, sizeof bloque, archivo.get())) contenido.append(bloque, n);
  if (std::ferror(archivo.get()) != 0) NoSeLee(ruta, errno);
  return contenido;
}

std::string ConArchivo(const std::string& ruta, const std::string& texto) {
  return texto.find(ruta) == std::string::npos ? ruta + ": " + texto : texto;
}

}  // namespace guion
