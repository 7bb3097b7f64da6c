// Why the system refused a file, in words for whoever works here.
#pragma once

#include <string>

namespace autonomo {

// Of an errno of making or writing a file, whose folder is what may be missing; "falla N del sistema" of one that has
// no words here.
std::string MotivoDeArchivo(int error);
// Of one of opening or reading it.
std::string MotivoAlLeer(int error);

}  // namespace autonomo
