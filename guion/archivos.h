// Whole files.
#pragma once

#include <string>

namespace guion {

// The file's bytes. com::Error kArgumento "file: why" when it cannot be read.
std::string LeeArchivo(const std::string& ruta);

}  // namespace guion
