// Whole files.
#pragma once

#include <string>

namespace guion {

// The file's bytes. com::Error kArgumento "file: why" when it cannot be read.
std::string LeeArchivo(const std::string& ruta);

// "file: text", or the text alone when it names the file already.
std::string ConArchivo(const std::string& ruta, const std::string& texto);

}  // namespace guion
