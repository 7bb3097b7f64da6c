// Any bytes are read as a file of three columns, a faulty line as one that says why; and each record is read again from
// the line that it is written as.
#include <algorithm>
#include <string>
#include <vector>

#include "fuzz/exige.h"
#include "guion/csv.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  static const std::vector<std::string> columnas{"a", "b", "c"};
  std::string contenido = guion::LineaCsv(columnas);
  contenido.append(fuzz::Texto(datos, largo));
  const auto conSalto = [](const std::string& campo) { return campo.find_first_of("\r\n") != std::string::npos; };
  for (const auto& registro : guion::DivideCsv("x.csv", contenido, columnas)) {
    fuzz::Exige(registro.campos.size() == columnas.size() ||
                (!registro.defecto.empty() && registro.campos.size() == 1));
    if (!registro.defecto.empty() || std::ranges::any_of(registro.campos, conSalto)) continue;
    const auto otra = guion::DivideCsv("x.csv", guion::LineaCsv(columnas) + guion::LineaCsv(registro.campos), columnas);
    fuzz::Exige(otra.size() == 1 && otra.front().campos == registro.campos);
  }
  return 0;
}
