// Files with a secret in them: for their owner alone.
#pragma once

#include <optional>
#include <string>

namespace autonomo {

// The file's bytes; nothing when there is no such file. que: the secret, as "la llave de las tarjetas". com::Error
// kSoloLectura for a file that cannot be read, or that others than its owner may read.
std::optional<std::string> LeePrivado(const std::string& ruta, const std::string& que);

// The first line of such a file, which must be there: kSoloLectura otherwise.
std::string LineaPrivada(const std::string& ruta, const std::string& que);

}  // namespace autonomo
