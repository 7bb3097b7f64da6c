#include "host/standalone/motivo_archivo.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace autonomo {

std::string MotivoDeArchivo(int error) {
  struct Motivo {
    int error;
    const char* texto;
  };
  static constexpr std::array kMotivos{
      Motivo{ENOSPC, "el disco está lleno"},
      Motivo{EDQUOT, "el disco está lleno"},
      Motivo{EFBIG, "el archivo es demasiado grande"},
      Motivo{EACCES, "no hay permiso"},
      Motivo{EPERM, "no hay permiso"},
      Motivo{ENOENT, "la carpeta no existe"},
      Motivo{ENOTDIR, "la carpeta no existe"},
      Motivo{EISDIR, "es una carpeta"},
      Motivo{ENAMETOOLONG, "el nombre es demasiado largo"},
      Motivo{EROFS, "ese disco es de solo lectura"},
      Motivo{EIO, "el disco falló"},
      Motivo{EMFILE, "hay demasiados archivos abiertos"},
      Motivo{ENFILE, "hay demasiados archivos abiertos"},
      Motivo{ELOOP, "es un enlace que no lleva a ningún archivo"},
  };
  const auto* motivo = std::ranges::find(kMotivos, error, &Motivo::error);
  return motivo == kMotivos.end() ? "falla " + std::to_string(error) + " del sistema" : motivo->texto;
}

std::string MotivoAlLeer(int error) {
  return error == ENOENT || error == ENOTDIR ? "el archivo no existe" : MotivoDeArchivo(error);
}

}  // namespace autonomo
