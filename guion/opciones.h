// Command line of the programs that run scripts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/standalone/anfitrion.h"

namespace guion {

struct OpcionesGuion {
  autonomo::Opciones anfitrion;
  std::string guion = "-";  // "-": standard input
  bool ayuda = false;
};

extern const char* const kUsoGuion;

// Whether an argument asks for the usage, in Spanish or as it is customary elsewhere.
bool PideAyuda(std::string_view argumento);

// Without the program's name. Error kArgumento for wrong usage.
OpcionesGuion LeeOpciones(const std::vector<std::string>& argumentos);

}  // namespace guion
