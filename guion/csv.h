// Comma-separated files with a header line: read whole, checked, written field by field.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace guion {

struct RegistroCsv {
  int linea = 0;  // where it begins in the file, from 1
  std::vector<std::string> campos;
};

// Reads a file with exactly these columns. Fields may stand in double quotes (doubled inside). com::Error kArgumento,
// its text beginning with "file:line: ", for a file that cannot be read, other columns, a record with more or fewer
// fields, an open quote, or text that is not UTF-8.
std::vector<RegistroCsv> LeeCsv(const std::string& ruta, const std::vector<std::string>& columnas);

// The same for a file's bytes.
std::vector<RegistroCsv> DivideCsv(const std::string& ruta, std::string_view contenido,
                                   const std::vector<std::string>& columnas);

// One record as a line of a file, its end included. Line breaks inside a field become " / ".
std::string LineaCsv(const std::vector<std::string>& campos);

// Error kArgumento with file and line before the reason.
[[noreturn]] void RechazaLinea(const std::string& ruta, int linea, const std::string& motivo);

}  // namespace guion
