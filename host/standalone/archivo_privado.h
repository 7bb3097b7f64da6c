// Files with a secret or a guest in them: for their owner alone.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace autonomo {

// The file's bytes; nothing when there is no such file. que: the secret, as "la llave de las tarjetas". com::Error
// kSoloLectura for a file that cannot be read, or that others than its owner may read.
[[nodiscard]] std::optional<std::string> LeePrivado(const std::string& ruta, const std::string& que);

// The first line of such a file, which must be there: kSoloLectura otherwise.
[[nodiscard]] std::string LineaPrivada(const std::string& ruta, const std::string& que);

// Writes a file that its owner alone may read, also where it replaces one that others could. What it held is kept until
// the new content is whole on the disk; a device is written to. com::Error kSoloLectura, with the system's reason, when
// it cannot be written: nothing half-made is left.
void EscribePrivado(const std::string& ruta, std::string_view contenido);

}  // namespace autonomo
