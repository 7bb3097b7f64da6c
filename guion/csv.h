// Files of separated values with a header line: read whole, checked, written field by field.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace guion {

struct RegistroCsv {
  int linea = 0;  // where it begins in the file, from 1
  std::vector<std::string> campos;
  // Why the line is no record of the file, "" for one that is. campos then holds the line alone, as it stands (bytes
  // that are not UTF-8 as U+FFFD).
  std::string defecto;
};

// Reads a file with exactly these columns, whatever their case and accents, separated by commas, semicolons or tabs as
// they are. Fields may stand in double quotes (doubled inside); blanks around them do not count, nor do records without
// text. A line with more or fewer fields, a quote that is not closed, text after one or bytes that are not UTF-8 is a
// record with a defect; the next line is read on its own. com::Error kArgumento, its text beginning with "file:line: ",
// for a file that cannot be read, that is no UTF-8 from its first line on or that has other columns.
std::vector<RegistroCsv> LeeCsv(const std::string& ruta, const std::vector<std::string>& columnas);

// The same for a file's bytes.
std::vector<RegistroCsv> DivideCsv(const std::string& ruta, std::string_view contenido,
                                   const std::vector<std::string>& columnas);

// The records, when none has a defect; else the first one's as an error with file and line.
std::vector<RegistroCsv> SinDefectos(const std::string& ruta, std::vector<RegistroCsv> registros);

// One record as a line of a file, its end included. Line breaks inside a field become " / ".
std::string LineaCsv(const std::vector<std::string>& campos);

// Error kArgumento with file and line before the reason.
[[noreturn]] void RechazaLinea(const std::string& ruta, int linea, const std::string& motivo);

}  // namespace guion
